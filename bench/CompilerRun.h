#pragma once

#include <string>
#include <vector>

// What a compile has cost: instructions of the program itself where the system counts them, which is the same in every
// run, else its processor time.
struct CompileCost
{
    double instructions = 0;    // 0: not counted
    double seconds = 0;         // user and system

    double Get() const { return instructions > 0 ? instructions : seconds; }
};

// One whole compile of sources by the compiler's executable, in a scratch folder of its own, for a
// target with room for large programs. Owns the folder.
class CompilerRun
{
public:
    explicit CompilerRun(const std::vector<std::string>& sources);
    ~CompilerRun();
    CompilerRun(const CompilerRun&) = delete;
    CompilerRun& operator=(const CompilerRun&) = delete;

    // Runs it once. Ends the program where the compile doesn't succeed.
    CompileCost Measure() const;

private:
    [[noreturn]] void Execute() const;

    std::string m_Folder;
    std::vector<std::string> m_Command;
};
