// Any bytes as a text file, read in each encoding by lines and as a whole. The first byte chooses.

#include "files/TextFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <unistd.h>

// A file in memory, so that no disk slows the search down.
static std::string WriteMemoryFile(const std::uint8_t* pBytes, std::size_t size)
{
    static std::FILE* const pFile = std::tmpfile();
    if (!pFile || ftruncate(fileno(pFile), 0) != 0) std::abort();
    std::rewind(pFile);
    if (std::fwrite(pBytes, 1, size, pFile) != size || std::fflush(pFile) != 0) std::abort();
    return "/proc/self/fd/" + std::to_string(fileno(pFile));
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pBytes, std::size_t size)
{
    if (size == 0) return 0;
    const int choice = *pBytes;
    const std::string name = WriteMemoryFile(pBytes + 1, size - 1);
    const int flags = choice % 5 | ((choice & 0x10) != 0 ? TextFile::IgnoreBom : 0);
    const int bufferSize = (choice & 0x20) != 0 ? 7 : 0;

    TextFile file;
    std::string text;
    if (file.Open(name, TextFile::ForReading, flags, bufferSize) != 0) std::abort();
    file.ReadAll(text);
    file.Close();
    if (file.Open(name, TextFile::ForReading, flags, bufferSize) != 0) std::abort();
    while (file.ReadLine(text) == 0) {
    }
    file.Close();
    return 0;
}
