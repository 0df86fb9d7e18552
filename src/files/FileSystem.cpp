#include "files/FileSystem.h"

#include "files/Platform.h"

#include <filesystem>
#include <system_error>
#include <utility>

bool ReadWholeFile(const std::string& name, std::string& bytes)
{
    const int descriptor = OpenForReading(name.c_str());
    if (descriptor < 0) return false;

    constexpr std::size_t chunkSize = 65536;
    std::string content;
    std::size_t length = 0;
    std::ptrdiff_t read = 0;
    do {
        length += static_cast<std::size_t>(read);
        content.resize(length + chunkSize);
        read = ReadBytes(descriptor, content.data() + length, chunkSize);
    } while (read > 0);
    content.resize(length);
    CloseDescriptor(descriptor);
    if (read == 0) bytes = std::move(content);
    return read == 0;
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

bool IsSamePlace(const std::string& a, const std::string& b)
{
    if (IsSameFile(a, b)) return true;
    const std::filesystem::path placeA = FollowLinks(a);
    const std::filesystem::path placeB = FollowLinks(b);
    std::error_code error;
    if (std::filesystem::exists(placeA, error) || std::filesystem::exists(placeB, error)) return false;
    return placeA.filename() == placeB.filename() &&
           (placeA == placeB || IsSameFile(GetFolder(placeA.string()), GetFolder(placeB.string())));
}

bool IsReadableFile(const std::string& name)
{
    return !IsDirectory(name) && IsAccessible(name.c_str(), false);
}

bool IsWritableFile(const std::string& name)
{
    return !IsDirectory(name) && IsAccessible(name.c_str(), true);
}

std::string FollowLinks(const std::string& name)
{
    constexpr int mostLinks = 40;   // as many as the system itself follows
    std::filesystem::path path = name;
    for (int i = 0; i < mostLinks; ++i) {
        std::error_code error;
        if (!std::filesystem::is_symlink(path, error)) break;
        const std::filesystem::path target = std::filesystem::read_symlink(path, error);
        if (error) break;
        path = target.is_absolute() ? target : path.parent_path() / target;
    }
    return path.string();
}

std::string GetFolder(const std::string& name)
{
    const std::filesystem::path folder = std::filesystem::path(name).parent_path();
    return folder.empty() ? "." : folder.string();
}

bool RemoveFile(const std::string& name)
{
    return FileExists(name) && !IsDirectory(name) && UnlinkFile(name.c_str());
}

bool ReplaceFile(const std::string& from, const std::string& to)
{
    return RenameFile(from.c_str(), to.c_str());
}
