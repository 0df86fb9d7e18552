// Any bytes as the text of a firmware library, which is decoded and compiled.

#include "FuzzCompile.h"

#include "files/Base64.h"
#include "semantics/Norvane.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pBytes, std::size_t size)
{
    std::string source;
    Base64Decode(std::string_view(reinterpret_cast<const char*>(pBytes), size), source);
    const std::unique_ptr<CNorvane> pNorvane = LoadFuzzTarget(g_FuzzTarget);
    CompileFuzzSource(*pNorvane, source);
    return 0;
}
