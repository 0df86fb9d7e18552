#pragma once

// A lack of memory ends the program: one line on standard error, exit status 1, no file left that only the run needs,
// and no output touched. Nobody has to ask for success: there is either memory or no program.

// From the first allocation on, so to be called before any table is made.
void AnswerLackOfMemory();

// For memory that isn't asked for through the language. Asks for none itself.
[[noreturn]] void EndOutOfMemory();

// As long as it lives, another line and status are the answer.
class OutOfMemoryAnswer
{
public:
    OutOfMemoryAnswer(const char* szLine, int exitStatus);   // the line with its end; not owned, a constant
    ~OutOfMemoryAnswer();
    OutOfMemoryAnswer(const OutOfMemoryAnswer&) = delete;
    OutOfMemoryAnswer& operator=(const OutOfMemoryAnswer&) = delete;

private:
    const char* m_EarlierLine;
    int m_EarlierStatus;
};
