#include "files/FileSystem.h"

#include "files/Format.h"

#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

static bool CanOpen(const std::string& name, const char* mode)
{
    if (IsDirectory(name)) return false;
    std::FILE* pFile = std::fopen(name.c_str(), mode);
    if (!pFile) return false;
    std::fclose(pFile);
    return true;
}

bool ReadWholeFile(const std::string& name, std::string& bytes)
{
    // Opening a directory succeeds on some systems, and only its first read fails.
    if (IsDirectory(name)) return false;
    std::FILE* pFile = std::fopen(name.c_str(), "rb");
    if (!pFile) return false;

    constexpr std::size_t chunkSize = 65536;
    std::string content;
    std::size_t length = 0;
    for (;;) {
        content.resize(length + chunkSize);
        const std::size_t read = std::fread(content.data() + length, 1, chunkSize, pFile);
        length += read;
        if (read < chunkSize) break;
    }
    content.resize(length);
    const bool isComplete = std::ferror(pFile) == 0;
    std::fclose(pFile);
    if (isComplete) bytes = std::move(content);
    return isComplete;
}

bool FileExists(const std::string& name)
{
    std::error_code error;
    return std::filesystem::exists(std::filesystem::symlink_status(name, error));
}

bool IsDirectory(const std::string& name)
{
    std::error_code error;
    return std::filesystem::is_directory(name, error);
}

bool IsSpecialFile(const std::string& name)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(name, error);
    return std::filesystem::exists(status) && !std::filesystem::is_regular_file(status) &&
           !std::filesystem::is_directory(status);
}

bool IsSameFile(const std::string& a, const std::string& b)
{
    std::error_code error;
    return std::filesystem::equivalent(a, b, error);
}

bool IsReadableFile(const std::string& name)
{
    return CanOpen(name, "rb");
}

bool IsWritableFile(const std::string& name)
{
    return CanOpen(name, "r+b");
}

bool RemoveFile(const std::string& name)
{
    // An empty directory would go, too.
    if (IsDirectory(name)) return false;
    return std::remove(name.c_str()) == 0;
}

bool ReplaceFile(const std::string& from, const std::string& to)
{
    std::error_code error;
    std::filesystem::rename(from, to, error);
    return !error;
}

std::string MakeTemporaryName(const std::string& name)
{
    // The last part of a path may have 255 bytes; a longer name than this is cut, to leave room for the ending.
    constexpr std::size_t longest = 240;
    const std::size_t start = name.rfind('/') + 1;   // 0 without a directory
    const std::string begin = name.substr(0, start + longest);
    for (int number = 1;; ++number) {
        std::string candidate = begin + FormatText(".tmp%d", number);
        if (!FileExists(candidate)) return candidate;
    }
}
