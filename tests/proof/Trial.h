#pragma once

#include "Proof.h"
#include "machine/Options.h"

#include <memory>
#include <string>
#include <vector>

class CImage;

// The options that a proof is compiled with.
struct OptionSet
{
    std::vector<std::string> options;

    bool HasShortcut() const;
    std::string ToText() const;   // "-o1 -fbo0"; empty without any
};

const std::vector<OptionSet>& GetOptionSets();
std::string GetProofTarget();     // a target description, with room for all that the generator makes

// A folder of one's own for sources and targets, deleted at the end.
class CScratch
{
public:
    CScratch();
    ~CScratch();
    CScratch(const CScratch&) = delete;
    CScratch& operator=(const CScratch&) = delete;

    std::string GetSourceName() const { return m_Folder + "/program.st"; }
    std::string GetTargetName() const { return m_Folder + "/target.xml"; }
    void WriteSource(const Proof& proof) const;

private:
    std::string m_Folder;
};

// What came of compiling one.
struct Compiled
{
    std::unique_ptr<CImage> pImage;      // null: see error
    std::string listing;                 // text of the two outputs
    std::string debugText;
    std::vector<std::string> notes;      // not empty: no proof
    std::string error;
};

// Each compile is a process: the program `compiler` itself, or a copy of this process, which has the compiler in it and
// saves the start of a program.
enum class CompileWay { Program, Copy };

Compiled CompileProof(const CScratch& scratch, const OptionSet& optionSet, CompileWay way);

// Runs all scans and compares all that is observed behind each. Empty, or the first difference or trap. Noise in the
// frames shows a local that nobody has written.
std::string RunProof(const CImage& image, const Proof& proof, bool hasShortcut, FrameContents frames = FrameContents::Noise);

bool WriteFile(const std::string& name, const std::string& text);
