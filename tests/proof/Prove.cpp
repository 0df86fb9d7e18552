// Proves the compiler by running what it makes: see docs/proof.md.

#include "Faults.h"
#include "Proof.h"
#include "Shrink.h"
#include "Trial.h"
#include "Writer.h"
#include "machine/Image.h"

#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace
{

struct Arguments
{
    std::uint64_t first = 1;      // seed
    std::uint64_t count = 100;
    std::size_t sets = 0;         // option sets for each program; 0: all
    std::uint64_t everyAsProgram = 50;   // each such program is compiled by the program `compiler`
    std::uint64_t faults = 0;     // that many are put in and counted
    std::uint64_t atLeast = 0;    // percent of them that must be seen
    std::string folder;           // where the program of the first seed is written, shrunk if it fails
};

struct Tally
{
    std::uint64_t programs = 0;
    std::uint64_t compiles = 0;
    std::uint64_t noted = 0;      // compiles left out
    std::uint64_t discarded = 0;
    std::uint64_t failures = 0;
};

}   // namespace

static bool ReadNumber(std::string_view text, std::uint64_t& number)
{
    const std::from_chars_result end = std::from_chars(text.data(), text.data() + text.size(), number);
    return end.ec == std::errc() && end.ptr == text.data() + text.size();
}

static bool ReadArguments(int argc, char** argv, Arguments& arguments)
{
    for (int i = 1; i + 1 < argc; i += 2) {
        const std::string_view name = argv[i];
        std::uint64_t number = 0;
        if (name == "--write") {
            arguments.folder = argv[i + 1];
            continue;
        }
        if (!ReadNumber(argv[i + 1], number)) return false;
        if (name == "--first") arguments.first = number;
        else if (name == "--count") arguments.count = number;
        else if (name == "--sets") arguments.sets = number;
        else if (name == "--faults") arguments.faults = number;
        else if (name == "--at-least") arguments.atLeast = number;
        else if (name == "--process-every") arguments.everyAsProgram = number;
        else return false;
    }
    return argc % 2 == 1;
}

static bool TryOptions(const Proof& proof, const CScratch& scratch, const OptionSet& optionSet, CompileWay way, Tally& tally)
{
    ++tally.compiles;
    const Compiled compiled = CompileProof(scratch, optionSet, way);
    std::string difference = compiled.error;
    if (compiled.pImage && !compiled.notes.empty()) {
        ++tally.noted;
        if (std::getenv("PROVE_NOTES")) std::cout << "seed " << proof.seed << ": " << compiled.notes[0] << "\n";
        return true;
    }
    if (compiled.pImage) difference = RunProof(*compiled.pImage, proof, optionSet.HasShortcut());
    if (difference.empty()) return true;
    ++tally.failures;
    std::cout << "seed " << proof.seed << ", options " << optionSet.ToText() << ": " << difference << std::endl;
    return false;
}

static void TryProgram(const Proof& proof, const CScratch& scratch, const Arguments& arguments, Tally& tally)
{
    scratch.WriteSource(proof);
    const std::vector<OptionSet>& all = GetOptionSets();
    const std::size_t count = arguments.sets == 0 ? all.size() : arguments.sets;
    const bool isProgram = arguments.everyAsProgram > 0 && proof.seed % arguments.everyAsProgram == 0;
    const CompileWay way = isProgram ? CompileWay::Program : CompileWay::Copy;
    for (std::size_t i = 0; i < count; ++i)
        if (!TryOptions(proof, scratch, all[(proof.seed + i) % all.size()], way, tally)) return;
}

// Of a proof that fails, only what it needs to fail.
static void ShrinkFailure(Proof& proof)
{
    const CScratch scratch;
    for (const OptionSet& optionSet : GetOptionSets()) {
        const std::string difference = ShrinkProof(proof, scratch, optionSet);
        if (difference.empty()) continue;
        std::cout << "with options " << optionSet.ToText() << ": " << difference << "\n";
        return;
    }
}

static int WriteProof(const Arguments& arguments)
{
    Proof proof = MakeProof(arguments.first);
    ShrinkFailure(proof);
    std::error_code failure;
    std::filesystem::create_directories(arguments.folder, failure);
    const std::string folder = arguments.folder + "/";
    const bool isWritten = WriteFile(folder + "program.st", WriteProgram(*proof.pProgram)) &&
                           WriteFile(folder + "target.xml", GetProofTarget()) &&
                           WriteFile(folder + "values.csv", WriteTable(proof, true, "")) &&
                           WriteFile(folder + "values_bs0.csv", WriteTable(proof, false, "-bs0"));
    if (!isWritten) std::cerr << "prove: " << arguments.folder << " can't be written\n";
    return isWritten ? 0 : 2;
}

int main(int argc, char** argv)
{
    Arguments arguments;
    if (!ReadArguments(argc, argv, arguments)) {
        std::cerr << "usage: prove [--first SEED] [--count N] [--sets N] [--process-every N] [--write FOLDER]\n"
                     "       prove --faults N [--first SEED] [--at-least PERCENT]\n";
        return 2;
    }
    if (!arguments.folder.empty()) return WriteProof(arguments);
    if (arguments.faults > 0) return RunFaults(arguments.faults, arguments.first, arguments.atLeast);
    const CScratch scratch;
    Tally tally;
    for (std::uint64_t i = 0; i < arguments.count; ++i) {
        const Proof proof = MakeProof(arguments.first + i);
        ++tally.programs;
        tally.discarded += static_cast<std::uint64_t>(proof.discarded);
        TryProgram(proof, scratch, arguments, tally);
    }
    std::cout << tally.programs << " programs, " << tally.compiles << " compiles, " << tally.noted
              << " left out for their notes, " << tally.discarded << " made again, " << tally.failures << " failures\n";
    return tally.failures == 0 ? 0 : 1;
}
