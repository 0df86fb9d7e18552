#include "files/OutputTextFile.h"

#include "files/Platform.h"

static constexpr std::size_t g_PieceSize = 65536;   // bytes gathered before they leave

OutputTextFile::~OutputTextFile()
{
    Close();
}

bool OutputTextFile::Open(const std::string& name)
{
    Close();
    m_Failed = false;
    m_Pending.clear();
    m_Pending.reserve(g_PieceSize);
    m_Descriptor = OpenForWriting(name.c_str(), /*isAppending=*/false);
    return IsOpen();
}

void OutputTextFile::WriteOut()
{
    m_Failed = m_Failed || !WriteBytes(m_Descriptor, m_Pending.data(), m_Pending.size());
    m_Pending.clear();
}

void OutputTextFile::Write(std::string_view text)
{
    // After the first failure there is nothing to be gained from more attempts.
    if (!IsOpen() || m_Failed) return;
    if (m_Pending.size() + text.size() > g_PieceSize) WriteOut();
    if (text.size() <= g_PieceSize) m_Pending += text;
    else m_Failed = m_Failed || !WriteBytes(m_Descriptor, text.data(), text.size());
}

bool OutputTextFile::Close()
{
    if (!IsOpen()) return true;
    // What is still pending may fail only here, and what the system holds back only at the close.
    WriteOut();
    const bool isClosed = CloseDescriptor(m_Descriptor);
    m_Descriptor = -1;
    return isClosed && !m_Failed;
}
