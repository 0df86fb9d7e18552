// What no map may do, whatever the program: two variables in one place without an AT; another place than the listing's
// addresses; another sum than the debug file's.

#include "unit/report/ReportTest.h"

#include "Decisions.h"
#include "ProgramGenerator.h"

#include <algorithm>
#include <sstream>

namespace
{

struct NamedAddress      // as a line of the listing shows it
{
    std::string pou;
    bool isProgram = false;
    std::string area;    // "global", "retain", "local" or "" of an address
    std::int64_t bit = 0;
    std::string root;
    std::string line;
};

}   // namespace

// Read from the text by itself, not with the reader that the facts come from.
static std::vector<NamedAddress> ReadAddresses(const std::string& listing)
{
    std::vector<NamedAddress> addresses;
    std::istringstream stream(listing);
    std::string pou;
    bool isProgram = false;
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with("PROGRAM_") || line.starts_with("FUNCTION_")) {
            isProgram = line.starts_with("PROGRAM_");
            pou = line.substr(line.find('_') + 1);
            pou.pop_back();
        }
        const std::size_t semicolon = line.find(';');
        const std::size_t open = line.find('[');
        if (open == std::string::npos || semicolon == std::string::npos || open > semicolon) continue;
        NamedAddress address{pou, isProgram, "", 0, "", line};
        std::size_t position = open + 1;
        for (const char* area : {"global+", "retain+", "local+"})
            if (line.compare(position, std::string(area).size(), area) == 0) {
                address.area = std::string(area).substr(0, std::string(area).size() - 1);
                position += std::string(area).size();
            }
        std::size_t used = 0;
        address.bit = std::stoll(line.substr(position), &used) * 8;
        if (line.compare(position + used, 2, "].") == 0) address.bit += std::stoll(line.substr(position + used + 2));
        std::string name = line.substr(semicolon + 1);
        name.erase(0, name.find_first_not_of(" \t&"));
        address.root = name.substr(0, name.find_first_of(".["));
        addresses.push_back(address);
    }
    return addresses;
}

static bool Holds(const BuildFacts& facts, const VariableFacts& variable, const NamedAddress& address)
{
    if (variable.area < 0 || variable.name != address.root) return false;
    if (!variable.owner.empty() && variable.owner != address.pou) return false;
    const AreaFacts& area = facts.areas[static_cast<std::size_t>(variable.area)];
    const char* name = area.kind == AreaKind::Global   ? "global"
                       : area.kind == AreaKind::Retain ? "retain"
                       : area.kind == AreaKind::Local  ? "local"
                                                       : "";
    return address.area == name && address.bit >= variable.place.begin && address.bit < variable.place.end;
}

static void ExpectAddressesOf(const CTestBuild& build, int& checked)
{
    for (const NamedAddress& address : ReadAddresses(build.Read("p.asm"))) {
        if (address.area == "local" && !address.isProgram) continue;   // a frame that comes and goes
        const bool isHeld = std::any_of(
            build.m_Facts.variables.begin(), build.m_Facts.variables.end(),
            [&](const VariableFacts& variable) { return Holds(build.m_Facts, variable, address); });
        EXPECT_TRUE(isHeld) << address.line;
        ++checked;
    }
}

// Each pair, without the order that the facts are made with.
static void ExpectNoOverlaps(const BuildFacts& facts, std::int64_t& overlaps)
{
    std::vector<std::int64_t> counted(facts.variables.size(), 0);
    for (std::size_t i = 0; i < facts.variables.size(); ++i) {
        for (std::size_t k = i + 1; k < facts.variables.size(); ++k) {
            const VariableFacts& a = facts.variables[i];
            const VariableFacts& b = facts.variables[k];
            const bool overlap = a.area >= 0 && a.area == b.area && a.place.begin < b.place.end &&
                                 b.place.begin < a.place.end;
            if (!overlap) continue;
            ++counted[i];
            ++counted[k];
            ++overlaps;
            EXPECT_TRUE(a.isLocated && b.isLocated) << a.name << " and " << b.name;
        }
    }
    for (std::size_t i = 0; i < facts.variables.size(); ++i)
        EXPECT_EQ(facts.variables[i].overlaps, counted[i]) << facts.variables[i].name;
}

static void ExpectSums(const BuildFacts& facts)
{
    const AreaFacts& global = *facts.FindArea(AreaKind::Global);
    EXPECT_GE(global.endByte, global.counted);       // a byte of bits alone isn't counted
    EXPECT_LE(global.endByte, global.counted + 1);
    const AreaFacts& retain = *facts.FindArea(AreaKind::Retain);
    EXPECT_LE(retain.endByte, retain.counted + 1);   // what the code doesn't name may lie behind
    std::int64_t deepest = 0;
    std::int64_t sum = 0;
    for (const ProgramFacts& program : facts.programs) {
        const PouFacts& pou = facts.pous[static_cast<std::size_t>(program.pou)];
        deepest = std::max(deepest, pou.depthBytes);
        sum += pou.depthBytes;
        std::int64_t path = 0;
        for (const int step : program.path) path += facts.pous[static_cast<std::size_t>(step)].frameBytes;
        EXPECT_EQ(path, pou.depthBytes);
    }
    EXPECT_EQ(deepest, facts.stacks.deepest);
    EXPECT_EQ(sum, facts.stacks.nested);
}

static void TryPrograms(const std::string& options, int first)
{
    constexpr int programs = 60;
    int compiled = 0;
    int checked = 0;
    std::int64_t overlaps = 0;
    for (int seed = first; seed < first + programs; ++seed) {
        CDecisions decisions(static_cast<std::uint64_t>(seed));
        const CTestBuild build(GenerateProgram(decisions), options);
        if (!build.m_IsCompiled) continue;   // an area that overflows
        SCOPED_TRACE("seed " + std::to_string(seed));
        ASSERT_TRUE(build.m_IsLoaded) << build.m_Error;
        ++compiled;
        ExpectNoOverlaps(build.m_Facts, overlaps);
        ExpectAddressesOf(build, checked);
        ExpectSums(build.m_Facts);
    }
    EXPECT_GT(compiled, programs / 2);
    EXPECT_GT(checked, programs * 20);
    testing::Test::RecordProperty("addresses", checked);
    testing::Test::RecordProperty("overlaps", static_cast<int>(overlaps));
}

TEST(ReportRandomMaps, PlainLayout) { TryPrograms("", 1); }
TEST(ReportRandomMaps, CompatibleLayout) { TryPrograms("-b -cso0", 1001); }
TEST(ReportRandomMaps, EveryMemberOfBlocks) { TryPrograms("-fbo0 -bs0", 2001); }
