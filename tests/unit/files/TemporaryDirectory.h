#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

// A directory of the test's own, empty at first and gone at its end.
class TemporaryDirectory
{
public:
    TemporaryDirectory()
    {
        std::random_device random;
        do m_Path = std::filesystem::path(testing::TempDir()) / ("norvane_" + std::to_string(random()));
        while (!std::filesystem::create_directory(m_Path));
    }
    ~TemporaryDirectory()
    {
        std::error_code error;
        std::filesystem::remove_all(m_Path, error);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    std::string Name(const std::string& name) const { return (m_Path / name).string(); }
    std::string Path() const { return m_Path.string(); }
    std::string Make(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(Name(name), std::ios::binary) << bytes;
        return Name(name);
    }
    std::string Read(const std::string& name) const
    {
        std::ifstream file(Name(name), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    std::ptrdiff_t CountEntries() const
    {
        return std::distance(std::filesystem::directory_iterator(m_Path), std::filesystem::directory_iterator());
    }

private:
    std::filesystem::path m_Path;
};
