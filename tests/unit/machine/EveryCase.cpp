// All programs of the case suite are compiled with the compiler itself and read: a form of instruction that the reader
// doesn't know fails here, and so does a suite that no longer draws each of them.

#include "unit/machine/MachineTest.h"

#include <cstdlib>
#include <filesystem>
#include <set>

#include <unistd.h>

namespace fs = std::filesystem;

TEST(MachineReader, KnowsWhatTheCompilerWrites)
{
    const fs::path scratch = fs::path(testing::TempDir()) / ("norvane_forms_" + std::to_string(getpid()));
    std::set<Mnemonic> drawn;
    int programs = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(CASES_FOLDER)) {
        if (entry.path().filename() != "main.st" || !entry.is_regular_file()) continue;
        // Targets that put texts around their programs which are no instructions.
        if (entry.path().parent_path().parent_path().filename() == "xml") continue;
        fs::remove_all(scratch);
        fs::create_directories(scratch);
        fs::copy_file(fs::path(CASES_FOLDER) / "target.xml", scratch / "target.xml");
        for (const fs::directory_entry& file : fs::directory_iterator(entry.path().parent_path()))
            if (file.is_regular_file())
                fs::copy_file(file.path(), scratch / file.path().filename(), fs::copy_options::overwrite_existing);
        const std::string folder = scratch.string();
        for (const char* options : {"", "-o1", "-b -bs0", "-cso0 -fbo0"}) {
            const std::string command =
                "cd '" + folder + "' && " COMPILER " main.st -i target.xml -o p.asm " + options + " > /dev/null 2>&1";
            if (std::system(command.c_str()) != 0 || !fs::exists(scratch / "p.asm")) continue;
            std::string error;
            const std::unique_ptr<CImage> pImage = CImage::Load((scratch / "p.asm").string(), "", error);
            // A target whose types have sizes of its own may have some that no machine can hold.
            if (!pImage && error.ends_with("can't be run")) continue;
            EXPECT_TRUE(pImage) << entry.path() << " " << options << ": " << error;
            if (!pImage) continue;
            ++programs;
            for (const Instruction& instruction : pImage->m_Listing.m_Instructions) drawn.insert(instruction.mnemonic);
        }
    }
    fs::remove_all(scratch);
    EXPECT_GT(programs, 400);
    for (int i = 0; i < static_cast<int>(Mnemonic::Nop); ++i)
        EXPECT_TRUE(drawn.contains(static_cast<Mnemonic>(i)))
            << GetMnemonicText(static_cast<Mnemonic>(i)) << " is drawn by no case";
}
