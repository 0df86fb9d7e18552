#include "norvane/dap/MessageReader.h"

#include <algorithm>
#include <charconv>

static bool EqualsInAnyCase(std::string_view a, std::string_view b)
{
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](char x, char y) { return lower(x) == lower(y); });
}

static std::string_view TrimBlanks(std::string_view text)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r')) text.remove_suffix(1);
    return text;
}

// Heads of other names are allowed and mean nothing to us.
bool CMessageReader::ReadHeadLine(std::string_view line)
{
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos) return Fail("a line of a message's head has no colon");
    if (!EqualsInAnyCase(line.substr(0, colon), "Content-Length")) return true;
    const std::string_view number = TrimBlanks(line.substr(colon + 1));
    const std::from_chars_result end = std::from_chars(number.data(), number.data() + number.size(), m_Length);
    const bool isNumber = !number.empty() && end.ptr == number.data() + number.size();
    if (!isNumber || (end.ec != std::errc() && end.ec != std::errc::result_out_of_range))
        return Fail("Content-Length is no number");
    if (end.ec != std::errc() || m_Length > largestMessage)
        return Fail("a message of more than " + std::to_string(largestMessage) + " bytes");
    m_HasLength = true;
    return true;
}

CMessageReader::Result CMessageReader::ReadHead()
{
    for (std::size_t line = m_Begin;;) {
        const std::size_t end = m_Buffer.find('\n', line);
        const std::size_t reached = std::min(end, m_Buffer.size());
        if (reached - m_Begin > largestHead) {
            Fail("a message's head does not end");
            return Result::Broken;
        }
        if (end == std::string::npos) return Result::Incomplete;
        const std::string_view text = TrimBlanks(std::string_view(m_Buffer).substr(line, end - line));
        line = end + 1;
        if (text.empty()) {
            if (!m_HasLength) Fail("a message without Content-Length");
            m_Begin = line;
            m_IsInBody = true;
            return m_HasLength ? Result::Message : Result::Broken;
        }
        if (!ReadHeadLine(text)) return Result::Broken;
    }
}

CMessageReader::Result CMessageReader::Take(std::string& message)
{
    if (!m_Error.empty()) return Result::Broken;
    if (!m_IsInBody) {
        const Result result = ReadHead();
        if (result != Result::Message) return result;
    }
    if (m_Buffer.size() - m_Begin < m_Length) return Result::Incomplete;
    message.assign(m_Buffer, m_Begin, m_Length);
    m_Begin += m_Length;
    m_IsInBody = m_HasLength = false;
    // What is behind us goes when it is the larger part, so that each byte moves a few times at most.
    if (m_Begin >= m_Buffer.size() - m_Begin) {
        m_Buffer.erase(0, m_Begin);
        m_Begin = 0;
    }
    return Result::Message;
}

std::string FrameMessage(std::string_view text)
{
    return "Content-Length: " + std::to_string(text.size()) + "\r\n\r\n" + std::string(text);
}
