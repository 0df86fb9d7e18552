#include "norvane/dap/Channel.h"

#include <cerrno>

#include <poll.h>
#include <unistd.h>

bool CChannel::Wait(int milliseconds)
{
    pollfd input{m_Input, POLLIN, 0};
    return poll(&input, 1, milliseconds) > 0;
}

CChannel::Result CChannel::Receive(std::string& message, int milliseconds)
{
    for (;;) {
        const CMessageReader::Result result = m_Reader.Take(message);
        if (result == CMessageReader::Result::Message) return Result::Message;
        if (result == CMessageReader::Result::Broken) {
            m_Error = m_Reader.GetError();
            return Result::Broken;
        }
        if (!Wait(milliseconds)) return Result::None;
        char bytes[65536];
        const ssize_t count = read(m_Input, bytes, sizeof bytes);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) {
            if (!m_Reader.IsInside()) return Result::Ended;
            m_Error = "the input ends in the middle of a message";
            return Result::Broken;
        }
        m_Reader.Append({bytes, static_cast<std::size_t>(count)});
    }
}

bool CChannel::Send(std::string_view message)
{
    const std::string framed = FrameMessage(message);
    std::string_view rest = framed;
    while (!rest.empty()) {
        const ssize_t count = write(m_Output, rest.data(), rest.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        rest.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}
