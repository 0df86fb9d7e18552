#include "norvane/LiveView.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>

#include <poll.h>
#include <unistd.h>

static volatile std::sig_atomic_t g_IsInterrupted = 0;

static void NoteInterrupt(int)
{
    g_IsInterrupted = 1;
}

bool CLiveView::Open()
{
    if (!isatty(STDIN_FILENO) || !isatty(STDOUT_FILENO) || tcgetattr(STDIN_FILENO, &m_Before) != 0) return false;
    struct sigaction action = {};
    action.sa_handler = NoteInterrupt;   // no SA_RESTART: the wait for a key ends
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    termios raw = m_Before;
    raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    raw.c_cc[VMIN] = 0;
    raw.c_cc[VTIME] = 0;
    if (tcsetattr(STDIN_FILENO, TCSANOW, &raw) != 0) return false;
    m_IsOpen = true;
    fmt::print("\x1b[?25l\x1b[2J");   // no cursor, an empty screen
    return true;
}

CLiveView::~CLiveView()
{
    if (!m_IsOpen) return;
    fmt::print("\x1b[?25h");
    std::fflush(stdout);
    tcsetattr(STDIN_FILENO, TCSANOW, &m_Before);
}

void CLiveView::Show(std::int64_t scan, const std::vector<MachineValue>& values, bool isPaused)
{
    std::size_t width = 0;
    for (const std::string& name : m_Names) width = std::max(width, name.size());
    std::string text = fmt::format("\x1b[Hscan {}{}\x1b[K\n", scan, isPaused ? "  paused" : "");
    for (std::size_t i = 0; i < values.size(); ++i) {
        const bool isChanged = i < m_Last.size() && !(m_Last[i] == values[i]);
        text += fmt::format("{:<{}}  {}{}{}\x1b[K\n", m_Names[i], width, isChanged ? "\x1b[1m" : "", ToText(values[i]),
                            isChanged ? "\x1b[0m" : "");
    }
    text += "space: pause or go on   s: one scan   q: end\x1b[K\n\x1b[J";
    m_Last = values;
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

CLiveView::Key CLiveView::WaitForKey(int milliseconds)
{
    if (g_IsInterrupted) return Key::Quit;
    pollfd input{STDIN_FILENO, POLLIN, 0};
    const int count = poll(&input, 1, milliseconds);
    if (count < 0) return errno == EINTR && !g_IsInterrupted ? Key::None : Key::Quit;
    if (count == 0) return Key::None;
    char key = 0;
    if (read(STDIN_FILENO, &key, 1) != 1) return Key::Quit;   // the terminal is gone
    if (key == ' ') return Key::Pause;
    if (key == 's') return Key::Step;
    return key == 'q' ? Key::Quit : Key::None;
}
