#pragma once

#include "machine/Code.h"
#include "machine/Image.h"
#include "machine/Options.h"
#include "machine/Trap.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

// Runs a program scan by scan. It is a model of the controller, not the controller: docs/machine.md tells what the
// code format leaves open and what the model does there.
//
//     std::unique_ptr<CImage> pImage = CImage::Load("main.asm", "target.xml", error);
//     CMachine machine(*pImage, MachineOptions());
//     if (machine.Start() == RunStatus::Finished) machine.RunScan();
//
// A trap ends the run; it is kept as a value and no further scan runs. Nothing throws.

enum class RunStatus
{
    Finished,   // the start-up or the scan is done
    Stopped,    // the observer asked for it; Resume goes on
    Trapped     // see GetTrap
};

// Sees each instruction of the listing before it runs. Only a machine with MachineOptions::plain asks it.
class IMachineObserver
{
public:
    virtual ~IMachineObserver() = default;
    virtual bool BeforeInstruction(int instruction) = 0;   // true: stop in front of it
};

// A function in progress, or the program at the bottom.
struct MachineFrame
{
    int pou = -1;                       // position in the listing
    std::uint32_t begin = 0;            // address of its local memory
    std::uint32_t end = 0;
    const Op* pCall = nullptr;          // that it returns behind; null for a program
    std::int64_t depthBytes = 0;        // of return stack, this frame included
};

class CMachine
{
public:
    CMachine(const CImage& image, const MachineOptions& options);
    CMachine(const CMachine&) = delete;
    CMachine& operator=(const CMachine&) = delete;

    // ---- Running

    void SetObserver(IMachineObserver* pObserver) { m_pObserver = pObserver; }   // not owned; null: none
    void SetScanTime(std::int64_t microseconds) { m_ScanMicroseconds = microseconds; }
    // The program runs in the scans in which this time has passed again; 0: in each. False if there is no such one.
    bool SetTask(std::string_view program, std::int64_t microseconds);
    // With a restored retain area the initialisation of the retained variables is left out.
    void SetWarmStart() { m_IsWarmStart = true; }
    // Is told of each SYS under SystemCalls::Print: its number.
    void SetSystemPrinter(std::function<void(std::int32_t)> printer) { m_SystemPrinter = std::move(printer); }

    RunStatus Start();        // the start-up programs; does nothing when called again
    RunStatus RunScan();      // the next scan
    RunStatus Resume();       // of a start-up or scan that was stopped
    std::int64_t GetScan() const { return m_Scan; }        // scans begun, from 0
    std::int64_t GetInstructions() const;                  // that the scan in progress, or the last one, has run

    const Trap& GetTrap() const { return m_Trap; }         // behind RunStatus::Trapped
    const std::vector<std::string>& GetFindings() const { return m_Findings; }   // of MachineOptions::strict

    // ---- Where it stands, while stopped or behind a trap

    CodePosition GetPosition() const;                      // of the instruction that comes next
    std::vector<CodePosition> GetCallers() const;          // from the nearest to the program
    const std::vector<MachineFrame>& GetFrames() const { return m_Frames; }      // the program first; empty between scans
    CodePosition DescribeInstruction(int instruction) const;
    std::vector<std::string> GetStackTop(int count) const; // the topmost cells first
    // Address that the instruction, which comes next, stores to, and the bytes of it; 0 bytes if it stores nothing.
    std::uint32_t GetStoreTarget(int instruction, std::uint32_t& bytes) const;

    // ---- Memory. An address carries a bit number in its top eight bits, which only counts for BOOL.

    // False if the value doesn't lie wholly in one area or in the frame of a function in progress.
    bool Read(std::uint32_t address, ValueKind kind, MachineValue& value) const;
    bool Write(std::uint32_t address, const MachineValue& value);
    std::vector<std::uint8_t> GetRegionBytes(int region) const;
    void SetRegionBytes(int region, const std::vector<std::uint8_t>& bytes);   // as many as both have

    // How often each line mark of the listing was passed, with MachineOptions::countLines.
    const std::vector<std::int64_t>& GetLineCounts() const { return m_LineCounts; }
    bool IsPlain() const { return m_Code.isPlain; }
    const CImage& GetImage() const { return m_Image; }

private:
    RunStatus RunPrograms();
    bool BeginProgram(int program);
    RunStatus Execute();
    bool IsAccessible(std::uint32_t address, std::uint32_t bytes) const;
    bool EnterFrame(const Op& call);
    bool CheckStack(const Op& op, std::uint8_t*& top);
    bool CheckTypes(const Instruction& instruction, std::uint8_t* top);
    void FillFrame(std::uint8_t* pBegin, std::uint32_t bytes);
    void MakeTrap(TrapKind kind, const Op& op);
    std::string DescribeTrap(TrapKind kind, const Op& op, const Instruction& instruction) const;
    std::string DescribeAccess(const Op& op, const Instruction& instruction) const;
    std::vector<std::string> ReadSnapshot(int instruction) const;
    std::int64_t ReadOperand(std::uint8_t base, std::int32_t offset, ValueKind kind) const;

    const CImage& m_Image;
    MachineOptions m_Options;
    TranslatedCode m_Code;
    std::vector<std::uint8_t> m_Memory;
    std::vector<std::int64_t> m_Cells;
    std::vector<const DebugType*> m_CellTypes;       // of plain code; null: not known
    std::vector<MachineFrame> m_Frames;
    std::array<std::uint8_t*, BaseCount> m_Bases{};
    const Op* m_pNext = nullptr;                     // while stopped
    std::int64_t m_Budget = 0;                       // instructions left in this scan
    std::int64_t m_CellLimit = 0;                    // cells of the parameter stack
    std::vector<std::int64_t> m_LineCounts;
    std::vector<int> m_Queue;                        // programs of this scan
    std::size_t m_NextProgram = 0;
    std::vector<std::int64_t> m_Periods;             // of the programs, microseconds; 0: each scan
    std::int64_t m_ScanMicroseconds = 10'000;
    std::int64_t m_Scan = 0;
    std::uint64_t m_Noise = 0x9E3779B97F4A7C15u;
    bool m_IsStarted = false;
    bool m_IsWarmStart = false;
    bool m_IsTrapped = false;
    bool m_IsStopped = false;                        // in front of a probe, at m_pNext
    IMachineObserver* m_pObserver = nullptr;
    std::function<void(std::int32_t)> m_SystemPrinter;
    Trap m_Trap;
    std::vector<std::string> m_Findings;
    std::set<std::tuple<int, int, const DebugType*>> m_Reported;   // instruction, operand and what it was pushed as
};
