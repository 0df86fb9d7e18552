#include "files/OutputTextFile.h"

#include "files/FileSystem.h"

OutputTextFile::~OutputTextFile()
{
    Close();
}

bool OutputTextFile::Open(const std::string& name)
{
    Close();
    m_Failed = false;
    if (IsDirectory(name)) return false;
    m_Handle = std::fopen(name.c_str(), "wb");
    if (!m_Handle) return false;

    constexpr std::size_t bufferSize = 65536;
    std::setvbuf(m_Handle, nullptr, _IOFBF, bufferSize);
    return true;
}

void OutputTextFile::Write(std::string_view text)
{
    // After the first failure there is nothing to be gained from more attempts.
    if (!m_Handle || m_Failed) return;
    m_Failed = std::fwrite(text.data(), 1, text.size(), m_Handle) != text.size();
}

bool OutputTextFile::Close()
{
    if (!m_Handle) return true;
    // What the buffer still holds may fail only here.
    const bool isClosed = std::fclose(m_Handle) == 0;
    m_Handle = nullptr;
    return isClosed && !m_Failed;
}
