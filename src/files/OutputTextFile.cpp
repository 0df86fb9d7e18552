#include "files/OutputTextFile.h"

#include "files/Platform.h"

static constexpr std::size_t g_PieceSize = 65536;   // bytes gathered before they leave

OutputTextFile::~OutputTextFile()
{
    Close();
}

void OutputTextFile::Begin()
{
    Close();
    m_Failed = false;
    m_Pending.clear();
    m_Pending.reserve(g_PieceSize);
}

bool OutputTextFile::Open(const std::string& name)
{
    Begin();
    m_Descriptor = OpenForWriting(name.c_str(), /*isAppending=*/false);
    return IsOpen();
}

void OutputTextFile::OpenText(std::string& text)
{
    Begin();
    m_pText = &text;
}

void OutputTextFile::Put(std::string_view bytes)
{
    if (m_pText) m_pText->append(bytes);
    else m_Failed = m_Failed || !WriteBytes(m_Descriptor, bytes.data(), bytes.size());
}

void OutputTextFile::WriteOut()
{
    Put(m_Pending);
    m_Pending.clear();
}

void OutputTextFile::Write(std::string_view text)
{
    // After the first failure there is nothing to be gained from more attempts.
    if (!IsOpen() || m_Failed) return;
    if (m_Pending.size() + text.size() > g_PieceSize) WriteOut();
    if (text.size() <= g_PieceSize) m_Pending += text;
    else Put(text);
}

bool OutputTextFile::Close()
{
    if (!IsOpen()) return true;
    // What is still pending may fail only here, and what the system holds back only at the close.
    WriteOut();
    const bool isClosed = m_pText || CloseDescriptor(m_Descriptor);
    m_pText = nullptr;
    m_Descriptor = -1;
    return isClosed && !m_Failed;
}
