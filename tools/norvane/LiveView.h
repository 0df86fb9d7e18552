#pragma once

#include "machine/ValueKind.h"

#include <cstdint>
#include <string>
#include <vector>

#include <termios.h>

// Watched values in place on a terminal, with the keys that steer the run. The terminal is as it was when the object is
// gone, also after an interrupt from the keyboard, which counts as "q".
class CLiveView
{
public:
    enum class Key { None, Pause, Step, Quit };

    explicit CLiveView(std::vector<std::string> names) : m_Names(std::move(names)) {}
    ~CLiveView();
    CLiveView(const CLiveView&) = delete;
    CLiveView& operator=(const CLiveView&) = delete;

    bool Open();   // false if standard input or output is no terminal
    void Show(std::int64_t scan, const std::vector<MachineValue>& values, bool isPaused);
    // Waits at most that long for a key; -1: until there is one.
    Key WaitForKey(int milliseconds);

private:
    std::vector<std::string> m_Names;
    std::vector<MachineValue> m_Last;
    termios m_Before{};
    bool m_IsOpen = false;
};
