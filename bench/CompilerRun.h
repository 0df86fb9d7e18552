#pragma once

#include <string>

// One whole compile of a source text by the compiler's executable, in a scratch folder of its own, for a
// target with room for large programs. Owns the folder.
class CompilerRun
{
public:
    explicit CompilerRun(const std::string& source);
    ~CompilerRun();
    CompilerRun(const CompilerRun&) = delete;
    CompilerRun& operator=(const CompilerRun&) = delete;

    // Processor time of one run in seconds. Ends the program where the compile doesn't succeed.
    double MeasureSeconds() const;

private:
    std::string m_Folder;
};
