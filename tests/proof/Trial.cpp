#include "Trial.h"

#include "Writer.h"
#include "driver/CompileDriver.h"
#include "files/Print.h"
#include "files/TemporaryFiles.h"
#include "machine/Image.h"
#include "machine/Machine.h"
#include "machine/Names.h"
#include "norvane/CompilerRun.h"
#include "semantics/Norvane.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>

#include <fcntl.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

bool OptionSet::HasShortcut() const
{
    return std::find(options.begin(), options.end(), "-bs0") == options.end();
}

std::string OptionSet::ToText() const
{
    std::string text;
    for (const std::string& option : options) text += (text.empty() ? "" : " ") + option;
    return text;
}

// -b beats -o1, so that all of them are two sets.
const std::vector<OptionSet>& GetOptionSets()
{
    static const std::vector<OptionSet> sets{
        {{}},
        {{"-o1"}},
        {{"-b"}},
        {{"-bs0"}},
        {{"-cso0"}},
        {{"-fbo0"}},
        {{"-o1", "-b", "-bs0", "-cso0", "-fbo0"}},
        {{"-o1", "-bs0", "-cso0", "-fbo0"}},
    };
    return sets;
}

std::string GetProofTarget()
{
    return R"(<?xml version="1.0" encoding="utf-8"?>
<DEVICE><COMPILER><TARGET>
<IEC AllowedDataTypes="SINT,INT,DINT,USINT,UINT,UDINT,BOOL,BYTE,WORD,DWORD,REAL,LREAL" PointerType="UDINT"/>
<COMPILER><DATAFORMAT>
<DATATYPE name="BOOL" size="1" align="1"/>
<DATATYPE name="SINT" size="8" align="1"/>
<DATATYPE name="USINT" size="8" align="1"/>
<DATATYPE name="BYTE" size="8" align="1"/>
<DATATYPE name="INT" size="16" align="2"/>
<DATATYPE name="UINT" size="16" align="2"/>
<DATATYPE name="WORD" size="16" align="2"/>
<DATATYPE name="DINT" size="32" align="4"/>
<DATATYPE name="UDINT" size="32" align="4"/>
<DATATYPE name="DWORD" size="32" align="4"/>
<DATATYPE name="REAL" size="32" align="4"/>
<DATATYPE name="LREAL" size="64" align="8"/>
</DATAFORMAT></COMPILER>
<VM>
<AREA name="INPUT" segment="70000" size="100" code="1"/>
<AREA name="OUTPUT" segment="71000" size="100" code="2"/>
<AREA name="MEMORY" segment="72000" size="100" code="3"/>
<AREA name="GLOBAL" size="16384" code="4"/>
<AREA name="RETAIN" size="4096" code="5"/>
<AREA name="LOCAL" code="6"/>
<AREA name="ABSOLUTE" code="7"/>
<PROGRAM name="start" id="3" auto="1" initglobal="1" initretain="1"/>
<PROGRAM name="main" id="1"/>
<PROGRAM name="second" id="2"/>
<RETURNSTACK size="8192" maxsize="8192" calloverload="8" align="4" nestedprogram="1"/>
<PARAMETERSTACK size="1024" maxsize="1024"/>
</VM>
</TARGET></COMPILER></DEVICE>
)";
}

// ---- Files

bool WriteFile(const std::string& name, const std::string& text)
{
    std::ofstream file(name, std::ios::binary);
    file << text;
    file.close();
    return !file.fail();
}

static std::string ReadFile(const std::string& name)
{
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

CScratch::CScratch()
{
    std::error_code failure;
    std::string pattern = (std::filesystem::temp_directory_path(failure) / "prove.XXXXXX").string();
    if (failure || !mkdtemp(pattern.data()) || !WriteFile(pattern + "/target.xml", GetProofTarget())) {
        std::cerr << "prove: no folder for the sources can be made\n";
        std::exit(2);
    }
    m_Folder = pattern;
}

CScratch::~CScratch()
{
    std::error_code failure;
    std::filesystem::remove_all(m_Folder, failure);
}

void CScratch::WriteSource(const Proof& proof) const
{
    WriteFile(GetSourceName(), WriteProgram(*proof.pProgram));
}

// ---- Compiling and running

namespace
{

// The compiler's main without the start of a program. Its tables are made once, and every child has its own copy.
class CCopiedRun : public CCompilerRun
{
protected:
    int Run(const std::vector<std::string>& command, const std::string& folder, const std::string& outputName) override;
};

}   // namespace

[[noreturn]] static void RunChild(const std::vector<std::string>& command, const std::string& outputName)
{
    const int output = open(outputName.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    constexpr int cannotRun = 127;
    if (output < 0 || dup2(output, STDOUT_FILENO) < 0 || dup2(output, STDERR_FILENO) < 0) std::_Exit(cannotRun);
    const int exitStatus = CCompileDriver(g_Norvane).Run({command.begin() + 1, command.end()});
    RemoveTemporaryFiles();
    const bool isPrinted = FinishPrinting();
    std::_Exit(exitStatus == 0 && !isPrinted ? 1 : exitStatus);
}

int CCopiedRun::Run(const std::vector<std::string>& command, const std::string& folder, const std::string& outputName)
{
    std::vector<std::string> absolute = command;
    absolute.back() = folder + "/" + command.back();   // behind -o
    std::cout.flush();
    const pid_t child = fork();
    if (child < 0) return -1;
    if (child == 0) RunChild(absolute, outputName);
    int status = 0;
    if (waitpid(child, &status, 0) < 0) return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

Compiled CompileProof(const CScratch& scratch, const OptionSet& optionSet, CompileWay way)
{
    Compiled compiled;
    CCompilerRun program;
    CCopiedRun copy;
    CCompilerRun& run = way == CompileWay::Copy ? copy : program;
    if (!run.Compile({scratch.GetSourceName()}, scratch.GetTargetName(), optionSet.options, compiled.error)) return compiled;
    compiled.notes = run.GetNotes();
    const std::string name = run.GetListingName();
    compiled.listing = ReadFile(name);
    compiled.debugText = ReadFile(name.substr(0, name.size() - 4) + ".dbi");
    compiled.pImage = CImage::FromText(compiled.listing, compiled.debugText, GetProofTarget(), "program.asm", compiled.error);
    return compiled;
}

static std::string ToText(Value value, ScalarKind kind)
{
    if (!IsReal(kind)) return std::to_string(value.integer);
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.17g", value.real);
    return buffer;
}

namespace
{

struct Found
{
    const Observed* pObserved;
    NamedObject object;
};

}   // namespace

// A program's own variable that its code never names can't be found, which is no fault.
static std::string FindAll(const CNames& names, const Proof& proof, std::vector<Found>& found)
{
    for (const Observed& observed : proof.observed) {
        std::string error;
        const std::optional<NamedObject> object = names.Find(observed.name, error);
        if (object) found.push_back({&observed, *object});
        else if (!observed.isOfProgram) return error;
    }
    return {};
}

static std::string Compare(const CMachine& machine, const CNames& names, const std::vector<Found>& all,
                           const std::vector<Value>& expected, bool isStart)
{
    for (const Found& found : all) {
        if (isStart && found.pObserved->isOfProgram) continue;
        MachineValue value;
        std::string error;
        if (!names.Read(machine, found.object, value, error)) return found.pObserved->name + ": " + error;
        const Value wanted = expected[static_cast<std::size_t>(found.pObserved->slot)];
        const Value actual{value.integer, value.real};
        if (actual.integer == wanted.integer && actual.real == wanted.real) continue;
        return found.pObserved->name + " is " + ToText(actual, found.pObserved->kind) + " and must be " +
               ToText(wanted, found.pObserved->kind);
    }
    return {};
}

std::string RunProof(const CImage& image, const Proof& proof, bool hasShortcut, FrameContents frames)
{
    MachineOptions options;
    options.frames = frames;
    options.maxInstructions = 1'000'000;
    CMachine machine(image, options);
    const CNames names(image);
    std::vector<Found> found;
    const std::string missing = FindAll(names, proof, found);
    if (!missing.empty()) return missing;
    const std::vector<std::vector<Value>>& scans = hasShortcut ? proof.shortcut : proof.complete;
    for (std::size_t i = 0; i < scans.size(); ++i) {
        const RunStatus status = i == 0 ? machine.Start() : machine.RunScan();
        if (status == RunStatus::Trapped) return ToText(machine.GetTrap());
        const std::string difference = Compare(machine, names, found, scans[i], i == 0);
        if (!difference.empty()) return "scan " + std::to_string(i) + ": " + difference;
    }
    return {};
}
