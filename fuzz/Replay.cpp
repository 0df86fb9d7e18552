// Runs a fuzz target on the files named, or on all of the folders named: for compilers that have no fuzzer of their own,
// and for the suite. Says how many it ran; none is a failure.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pBytes, std::size_t size);

namespace fs = std::filesystem;

static int g_Count = 0;

static void RunFile(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    ++g_Count;
}

int main(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        if (!fs::is_directory(argv[i])) {
            RunFile(argv[i]);
            continue;
        }
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(argv[i]))
            if (entry.is_regular_file()) RunFile(entry.path());
    }
    std::fprintf(stderr, "%d inputs\n", g_Count);
    return g_Count > 0 ? 0 : 1;
}
