// The bytes decide what a generated program looks like; it must compile without an error.

#include "Decisions.h"
#include "FuzzCompile.h"
#include "ProgramGenerator.h"

#include "frontend/Error.h"
#include "semantics/Norvane.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pBytes, std::size_t size)
{
    if (size == 0) return 0;
    const std::unique_ptr<CNorvane> pNorvane = LoadFuzzTarget(g_FuzzTarget);
    const std::uint8_t options = *pBytes;
    pNorvane->m_ConstantSubstitution = (options & 1) == 0;
    pNorvane->m_FbOptimisation = (options & 2) == 0;
    pNorvane->m_BooleanShortcut = (options & 4) == 0;
    pNorvane->m_Memory.m_CompatibleLayout = (options & 8) != 0;
    pNorvane->m_Memory.m_OptimiseMemory = (options & 16) != 0;
    CDecisions decisions(pBytes + 1, size - 1);
    const std::string source = GenerateProgram(decisions);
    CompileFuzzSource(*pNorvane, source);
    for (const auto& pError : pNorvane->m_Errors.m_ErrorList) {
        std::fprintf(stderr, "%s%s", source.c_str(), pError->GetPrintedLine().c_str());
        std::abort();
    }
    return 0;
}
