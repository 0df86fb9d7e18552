#pragma once

#include "norvane/ProgramRun.h"
#include "norvane/dap/LineTable.h"
#include "norvane/dap/Stepper.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// How a debugger wants a program run.
struct DebugSettings
{
    RunSettings run;
    bool stopOnEntry = false;
    bool isRealTime = true;         // a scan begins when the last one is as long ago as the scan time says
};

// A POU in progress. Between scans there is one without a frame, in front of the first program.
struct DebugFrame
{
    MachineFrame frame;             // its pou is -1 between scans
    std::string name;               // "FUNCTION_BLOCK timer"
    std::string file;               // empty: no line mark was passed
    int line = 0;
    bool hasBegun = false;          // its first line mark was passed
};

// The run of a program under a debugger, a slice at a time.
class CDebugRun
{
public:
    enum class Event
    {
        Slice,       // goes on
        Waiting,     // for the time of the next scan
        Breakpoint,
        Goal,        // of a step or a pause
        ScanEnd,     // as StopAtScanEnd has asked for
        Trap,
        End,         // all scans have run
        Failure      // of a value that is set: GetError tells why
    };

    explicit CDebugRun(DebugSettings settings) : m_Settings(std::move(settings)), m_Program(m_Settings.run) {}

    bool Prepare(const std::function<void(const std::string&)>& note, std::string& error);

    void Go(CStepper::Goal goal);   // what Advance is to look out for
    void StopAtScanEnd() { m_StopsAtScanEnd = true; }
    Event Advance();
    int GetWaitMilliseconds() const;

    bool IsBetweenScans() const { return m_Phase == Phase::Between; }
    std::int64_t GetNextScan() const { return m_Program.m_pMachine->GetScan() + 1; }
    std::vector<DebugFrame> GetStack() const;     // the innermost first; never empty while stopped
    std::string GetFileName(int file) const;      // of a source, absolute where the file can be found
    int FindFile(const std::string& path) const;  // -1 if no source is meant
    const std::string& GetError() const { return m_Error; }

    DebugSettings m_Settings;
    CProgramRun m_Program;
    std::unique_ptr<CLineTable> m_pLines;
    std::unique_ptr<CStepper> m_pStepper;

private:
    enum class Phase { Fresh, StartUp, Between, Scan, Trapped, Over };
    using Clock = std::chrono::steady_clock;

    Event BeginScan();
    Event Conclude(RunStatus status);
    bool HasNextScan() const;
    DebugFrame DescribeFrame(const MachineFrame& frame, std::size_t height, int instruction) const;
    DebugFrame DescribeScanBegin() const;

    std::vector<std::string> m_FileNames;
    Phase m_Phase = Phase::Fresh;
    bool m_StopsAtScanEnd = false;
    Clock::time_point m_Due;        // of the next scan
    std::string m_Error;
};
