// Whatever is encoded decodes to itself, and any text decodes without harm.

#include "files/Base64.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pBytes, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(pBytes), size);
    std::string text;
    std::string back;
    Base64Encode(bytes, text);
    Base64Decode(text, back);
    if (back != bytes) std::abort();
    Base64EncodeStandard(bytes, text);
    Base64DecodeStandard(text, back);
    if (back != bytes) std::abort();
    Base64Decode(bytes, back);
    Base64DecodeStandard(bytes, back);
    return 0;
}
