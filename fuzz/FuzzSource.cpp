// Any bytes as a source.

#include "FuzzCompile.h"

#include "semantics/Norvane.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pBytes, std::size_t size)
{
    const std::unique_ptr<CNorvane> pNorvane = LoadFuzzTarget(g_FuzzTarget);
    CompileFuzzSource(*pNorvane, std::string(reinterpret_cast<const char*>(pBytes), size));
    return 0;
}
