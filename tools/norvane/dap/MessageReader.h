#pragma once

#include <string>
#include <string_view>

// Takes a stream of bytes apart into the messages of the Debug Adapter Protocol:
//
//     Content-Length: 119\r\n
//     \r\n
//     {"seq": 1, ...
//
// Behind a head that can't be read nobody knows where the next message begins, so the stream is of no use from there.
class CMessageReader
{
public:
    enum class Result { Message, Incomplete, Broken };

    static constexpr std::size_t largestHead = 4096;            // bytes
    static constexpr std::size_t largestMessage = 16u << 20;

    void Append(std::string_view bytes) { m_Buffer.append(bytes); }
    // The next message; of a broken stream GetError tells why.
    Result Take(std::string& message);
    const std::string& GetError() const { return m_Error; }
    bool IsInside() const { return m_IsInBody || m_Begin < m_Buffer.size(); }   // of a message that isn't whole yet

private:
    Result ReadHead();
    bool ReadHeadLine(std::string_view line);
    bool Fail(std::string reason)
    {
        m_Error = std::move(reason);
        return false;
    }

    std::string m_Buffer;
    std::size_t m_Begin = 0;        // of what isn't taken yet
    std::size_t m_Length = 0;       // of the message whose head was read
    bool m_HasLength = false;
    bool m_IsInBody = false;
    std::string m_Error;
};

// A message as it is sent.
std::string FrameMessage(std::string_view text);
