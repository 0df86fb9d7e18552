#pragma once

#include "norvane/dap/MessageReader.h"

#include <string>
#include <string_view>

// Messages over two file descriptors, which stay the caller's.
class CChannel
{
public:
    enum class Result
    {
        Message,
        None,      // nothing came in that time
        Ended,     // between two messages
        Broken     // GetError tells why
    };

    CChannel(int input, int output) : m_Input(input), m_Output(output) {}

    // Waits at most that long for a message; -1: until there is one.
    Result Receive(std::string& message, int milliseconds);
    bool Send(std::string_view message);   // false if nobody reads any more
    const std::string& GetError() const { return m_Error; }

private:
    bool Wait(int milliseconds);           // true if there is something to read, were it the end

    int m_Input;
    int m_Output;
    CMessageReader m_Reader;
    std::string m_Error;
};
