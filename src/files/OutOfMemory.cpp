#include "files/OutOfMemory.h"

#include "files/Platform.h"
#include "files/TemporaryFiles.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

static const char* g_Line = "out of memory\n";
static int g_ExitStatus = 1;

void AnswerLackOfMemory()
{
    std::set_new_handler(EndOutOfMemory);
}

void EndOutOfMemory()
{
    constexpr int standardError = 2;
    std::fflush(stdout);
    WriteBytes(standardError, g_Line, std::strlen(g_Line));
    RemoveTemporaryFiles();
    std::_Exit(g_ExitStatus);
}

OutOfMemoryAnswer::OutOfMemoryAnswer(const char* szLine, int exitStatus)
    : m_EarlierLine(g_Line), m_EarlierStatus(g_ExitStatus)
{
    g_Line = szLine;
    g_ExitStatus = exitStatus;
}

OutOfMemoryAnswer::~OutOfMemoryAnswer()
{
    g_Line = m_EarlierLine;
    g_ExitStatus = m_EarlierStatus;
}
