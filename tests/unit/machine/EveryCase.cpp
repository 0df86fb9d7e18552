// All programs of the case suite are compiled with the compiler itself and read: a form of instruction that the reader
// doesn't know fails here, and so does a suite that no longer draws each of them. Each program is then run both ways,
// fused and instruction by instruction: they must end in the same traps and the same bytes.

#include "unit/machine/MachineTest.h"

#include <cstdlib>
#include <filesystem>
#include <set>

#include <unistd.h>

namespace fs = std::filesystem;

static void ExpectBothWaysAlike(const CImage& image)
{
    MachineOptions fused;
    fused.maxInstructions = 100'000;
    fused.startUp = StartUp::Every;
    MachineOptions plain = fused;
    plain.plain = true;
    CMachine first(image, fused);
    CMachine second(image, plain);
    RunStatus status = RunStatus::Finished;
    for (int scan = 0; scan < 3 && status == RunStatus::Finished; ++scan) {
        status = first.RunScan();
        ASSERT_EQ(static_cast<int>(status), static_cast<int>(second.RunScan()))
            << ToText(first.GetTrap()) << "\n" << ToText(second.GetTrap());
    }
    if (status == RunStatus::Trapped) {
        EXPECT_EQ(first.GetTrap().reason, second.GetTrap().reason);
        EXPECT_EQ(first.GetTrap().asmLine, second.GetTrap().asmLine);
    }
    for (std::size_t i = 0; i < image.m_Regions.size(); ++i)
        EXPECT_EQ(first.GetRegionBytes(static_cast<int>(i)), second.GetRegionBytes(static_cast<int>(i)))
            << image.m_Regions[i].name;
}

TEST(MachineReader, KnowsWhatTheCompilerWrites)
{
    const fs::path scratch = fs::path(testing::TempDir()) / ("norvane_forms_" + std::to_string(getpid()));
    std::set<Mnemonic> drawn;
    int programs = 0;
    std::size_t cases = 0;
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
        // Without options, and with the sets in turn.
        constexpr const char* sets[] = {"-o1", "-b -bs0", "-cso0 -fbo0"};
        for (const char* options : {"", sets[cases++ % std::size(sets)]}) {
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
            SCOPED_TRACE(entry.path().string() + " " + options);
            ExpectBothWaysAlike(*pImage);
            for (const Instruction& instruction : pImage->m_Listing.m_Instructions) drawn.insert(instruction.mnemonic);
        }
    }
    fs::remove_all(scratch);
    EXPECT_GT(programs, 300);
    for (int i = 0; i < static_cast<int>(Mnemonic::Nop); ++i)
        EXPECT_TRUE(drawn.contains(static_cast<Mnemonic>(i)))
            << GetMnemonicText(static_cast<Mnemonic>(i)) << " is drawn by no case";
}
