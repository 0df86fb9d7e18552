#include "frontend/SourceWindow.h"

#include "files/Fatal.h"
#include "files/OutOfMemory.h"
#include "files/Platform.h"

#include <cstring>
#include <string_view>
#include <utility>

static constexpr std::size_t g_WindowSize = 65536;
static constexpr std::string_view g_ReadFailed = "input in flex scanner failed";
static constexpr const char* g_NoBuffer = "out of dynamic memory in yy_create_buffer()\n";
static constexpr int g_ScannerFaultStatus = 2;

bool CSourceWindow::Open(const std::string& name, std::string* pCopy)
{
    Close();
    m_Descriptor = OpenForReading(name.c_str());
    if (m_Descriptor < 0) return false;
    m_pCopy = pCopy;
    return true;
}

void CSourceWindow::SetText(std::string text)
{
    Close();
    m_Text = std::move(text);
    m_Begin = m_Text.data();
    m_End = m_Begin + m_Text.size();
}

void CSourceWindow::CloseFile()
{
    if (m_Descriptor >= 0) CloseDescriptor(m_Descriptor);
    m_Descriptor = -1;
}

void CSourceWindow::Close()
{
    CloseFile();
    m_IsReturnPending = false;
    m_pCopy = nullptr;
    m_Text = std::string();
    m_Begin = m_End = m_Text.data();
}

// Drops each CR in front of an LF, in place; the bytes that are left.
static std::size_t JoinLineEnds(char* pBytes, std::size_t count)
{
    char* const pEnd = pBytes + count;
    char* pKept = static_cast<char*>(std::memchr(pBytes, '\r', count));
    if (!pKept) return count;
    for (const char* p = pKept; p != pEnd; ++p)
        if (*p != '\r' || p + 1 == pEnd || p[1] != '\n') *pKept++ = *p;
    return static_cast<std::size_t>(pKept - pBytes);
}

// Bytes of the file, for which there is room; 0 at its end.
std::size_t CSourceWindow::Read(char* pBytes, std::size_t room)
{
    const std::ptrdiff_t result = ReadBytes(m_Descriptor, pBytes, room);
    if (result < 0) EndProgram(g_ScannerFaultStatus, g_ReadFailed);
    const std::size_t count = static_cast<std::size_t>(result);
    if (m_pCopy) {
        const char* pZero = static_cast<const char*>(std::memchr(pBytes, '\0', count));
        m_pCopy->append(pBytes, pZero ? static_cast<std::size_t>(pZero - pBytes) : count);
        if (pZero) m_pCopy = nullptr;
    }
    return count;
}

void CSourceWindow::Fill(std::ptrdiff_t enough)
{
    constexpr std::size_t zeroByte = 1;
    const std::size_t wanted = static_cast<std::size_t>(enough);
    std::size_t size = static_cast<std::size_t>(m_End - m_Begin);
    if (!m_Window) {
        const OutOfMemoryAnswer answer(g_NoBuffer, g_ScannerFaultStatus);
        m_WindowSize = wanted + g_WindowSize + zeroByte;
        m_Window = std::make_unique_for_overwrite<char[]>(m_WindowSize);
    }
    std::memmove(m_Window.get(), m_Begin, size);
    while (size < wanted && !IsAtEnd()) {
        // A CR that was read last is looked at together with what follows it.
        if (m_IsReturnPending) m_Window[size] = '\r';
        const std::size_t pending = m_IsReturnPending ? 1 : 0;
        const std::size_t read = Read(&m_Window[size + pending], m_WindowSize - zeroByte - size - pending);
        std::size_t count = JoinLineEnds(&m_Window[size], read + pending);
        if (read == 0) CloseFile();
        m_IsReturnPending = !IsAtEnd() && count > 0 && m_Window[size + count - 1] == '\r';
        if (m_IsReturnPending) --count;
        size += count;
    }
    m_Window[size] = '\0';
    m_Begin = m_Window.get();
    m_End = m_Begin + size;
}
