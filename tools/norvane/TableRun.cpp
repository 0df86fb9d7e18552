#include "norvane/TableRun.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

// Most mismatches whose writers are looked for: each costs a look at every instruction.
constexpr std::size_t g_MostWatched = 32;

bool CTableRun::Unable(const std::string& reason)
{
    m_Failures.push_back(reason);
    return false;
}

static std::string Where(const CTestTable& table, int line)
{
    return table.m_FileName + "(" + std::to_string(line) + ")";
}

bool CTableRun::Prepare(bool countLines)
{
    std::string error;
    ProgramArguments program;
    program.files = m_Table.m_Programs;
    program.target = m_Table.m_Target;
    program.compilerOptions = m_Table.m_Options;
    m_pImage = LoadProgram(program, PrintNote, error);
    if (!m_pImage) return Unable(m_Table.m_FileName + ": " + error);
    m_Arguments.options.countLines = countLines;
    m_Arguments.scanTime = m_Table.m_ScanTime;
    m_Arguments.tasks = m_Table.m_Tasks;
    m_pMachine = std::make_unique<CMachine>(*m_pImage, m_Arguments.options);
    m_pNames = std::make_unique<CNames>(*m_pImage);
    if (!ConfigureMachine(*m_pMachine, m_Arguments, error)) return Unable(m_Table.m_FileName + ": " + error);
    for (const std::string& text : m_Table.m_Columns) {
        Column column;
        column.isScan = text == "scan";
        column.isExpected = text.starts_with('?');
        if (!column.isScan) {
            const std::string name = text.substr(column.isExpected ? 1 : 0);
            const std::optional<NamedObject> object = m_pNames->Find(name, error);
            if (!object) return Unable(m_Table.m_FileName + ": " + error);
            if (!object->IsScalar()) return Unable(m_Table.m_FileName + ": " + name + ": is no single value");
            column.object = *object;
        }
        m_Columns.push_back(std::move(column));
    }
    return true;
}

bool CTableRun::SetValues(CMachine& machine, const TableRow& row)
{
    for (std::size_t i = 0; i < m_Columns.size(); ++i) {
        const Column& column = m_Columns[i];
        if (column.isScan || column.isExpected || row.cells[i].empty()) continue;
        MachineValue value;
        std::string error;
        if (!ParseValue(row.cells[i], column.object.pType->kind, value, error))
            return Unable(Where(m_Table, row.line) + ": " + column.object.name + ": " + error);
        if (!m_pNames->Write(machine, column.object, value, error)) return Unable(Where(m_Table, row.line) + ": " + error);
    }
    return true;
}

// "1.5~0.01": within a hundredth. False, with the reason, if the cell is no value.
static bool Meets(const std::string& cell, const MachineValue& found, bool& meets, std::string& error)
{
    MachineValue expected;
    const std::size_t tilde = cell.find('~');
    if (!IsReal(found.kind) || tilde == std::string::npos) {
        if (!ParseValue(cell, found.kind, expected, error)) return false;
        meets = expected == found;
        return true;
    }
    MachineValue tolerance;
    if (!ParseValue(cell.substr(0, tilde), ValueKind::F64, expected, error) ||
        !ParseValue(cell.substr(tilde + 1), ValueKind::F64, tolerance, error))
        return false;
    meets = std::fabs(found.real - expected.real) <= tolerance.real;   // not-a-number meets nothing
    return true;
}

bool CTableRun::CheckCell(const TableRow& row, std::size_t column)
{
    const NamedObject& object = m_Columns[column].object;
    MachineValue found;
    std::string error;
    bool meets = false;
    if (!m_pNames->Read(*m_pMachine, object, found, error)) return Unable(Where(m_Table, row.line) + ": " + error);
    if (!Meets(row.cells[column], found, meets, error))
        return Unable(Where(m_Table, row.line) + ": " + object.name + ": " + error);
    ++m_Checks;
    if (meets) return true;
    m_Mismatches.push_back({column, row.scan, m_Failures.size()});
    m_Failures.push_back(fmt::format("{}: scan {}: {}: expected {}, found {}", Where(m_Table, row.line), row.scan,
                                     object.name, row.cells[column], ToText(found)));
    return true;
}

CTableRun::Result CTableRun::Run(LineCoverage* pCoverage)
{
    if (!Prepare(pCoverage != nullptr)) return Result::Unable;
    RunStatus status = m_pMachine->Start();
    for (const TableRow& row : m_Table.m_Rows) {
        // Scans that no row tells of run with what is set.
        while (status == RunStatus::Finished && m_pMachine->GetScan() < row.scan - 1) status = m_pMachine->RunScan();
        if (status != RunStatus::Finished) break;
        if (!SetValues(*m_pMachine, row)) return Result::Unable;
        status = m_pMachine->RunScan();
        if (status != RunStatus::Finished) break;
        for (std::size_t i = 0; i < m_Columns.size(); ++i)
            if (m_Columns[i].isExpected && !row.cells[i].empty() && !CheckCell(row, i)) return Result::Unable;
    }
    m_Scans = m_pMachine->GetScan();
    if (pCoverage) AddCoverage(*pCoverage);
    FindWriters();
    if (status == RunStatus::Trapped)
        m_Failures.push_back(fmt::format("{}: scan {}: {}", m_Table.m_FileName, m_Scans, ToText(m_pMachine->GetTrap())));
    for (const std::string& finding : m_pMachine->GetFindings()) m_Failures.push_back(finding);
    return m_Failures.empty() ? Result::Passed : Result::Failed;
}

// ---- Which line wrote a variable last: the table runs once more, slowly, and every store is looked at.

namespace
{

struct WatchedPlace
{
    std::uint32_t address = 0;   // with bit number
    std::uint32_t bytes = 0;
    bool isBit = false;
    int writer = -1;             // instruction of the last store
};

class CStoreWatcher : public IMachineObserver
{
public:
    CStoreWatcher(const CMachine& machine, std::vector<WatchedPlace>& places) : m_Machine(machine), m_Places(places) {}

    bool BeforeInstruction(int instruction) override
    {
        std::uint32_t bytes = 0;
        const std::uint32_t address = m_Machine.GetStoreTarget(instruction, bytes);
        if (bytes == 0) return false;
        const bool isBitStore = m_Machine.GetImage()
                                    .m_Listing.m_Instructions[static_cast<std::size_t>(instruction)]
                                    .mnemonic != Mnemonic::Memcpy;
        for (WatchedPlace& place : m_Places) {
            const std::uint32_t begin = address & g_AddressMask;
            const std::uint32_t watched = place.address & g_AddressMask;
            if (begin >= watched + place.bytes || watched >= begin + bytes) continue;
            // Eight BOOLs share a byte; only a store of this one counts.
            if (place.isBit && isBitStore && bytes == 1 && address != place.address) continue;
            place.writer = instruction;
        }
        return false;
    }

private:
    const CMachine& m_Machine;
    std::vector<WatchedPlace>& m_Places;
};

}   // namespace

void CTableRun::FindWriters()
{
    if (m_Mismatches.empty()) return;
    if (m_Mismatches.size() > g_MostWatched) m_Mismatches.resize(g_MostWatched);
    MachineOptions options = m_Arguments.options;
    options.plain = true;
    CMachine machine(*m_pImage, options);
    std::string error;
    if (!ConfigureMachine(machine, m_Arguments, error)) return;
    std::vector<WatchedPlace> places;
    for (const Mismatch& mismatch : m_Mismatches) {
        WatchedPlace place;
        const NamedObject& object = m_Columns[mismatch.column].object;
        if (m_pNames->GetAddress(*m_pMachine, object, place.address, error))
            place.bytes = static_cast<std::uint32_t>(GetSizeBytes(object.pType->kind));
        place.isBit = object.pType->kind == ValueKind::Bool;
        places.push_back(place);
    }
    CStoreWatcher watcher(machine, places);
    machine.SetObserver(&watcher);
    RunStatus status = machine.Start();
    std::size_t next = 0;
    for (const TableRow& row : m_Table.m_Rows) {
        while (status == RunStatus::Finished && machine.GetScan() < row.scan - 1) status = machine.RunScan();
        if (status != RunStatus::Finished || !SetValues(machine, row)) return;
        status = machine.RunScan();
        for (; next < m_Mismatches.size() && m_Mismatches[next].scan == row.scan; ++next) {
            std::string& failure = m_Failures[m_Mismatches[next].failure];
            const CodePosition position = machine.DescribeInstruction(places[next].writer);
            if (places[next].writer < 0) failure += "; no line has written it";
            else if (position.file.empty()) failure += "; written last by the initial values of " + position.pou;
            else failure += fmt::format("; written last at {}({})", position.file, position.line);
        }
    }
}

// Lines of POUs that no program reaches aren't in the listing and don't count.
void CTableRun::AddCoverage(LineCoverage& coverage) const
{
    const std::vector<std::int64_t>& counts = m_pMachine->GetLineCounts();
    const std::vector<LineMark>& marks = m_pImage->m_Listing.m_Marks;
    std::map<std::pair<int, int>, std::int64_t> most;   // several marks of a line count as the one passed most often
    for (std::size_t i = 0; i < marks.size(); ++i) {
        std::int64_t& count = most[{marks[i].file, marks[i].line}];
        count = std::max(count, counts[i]);
    }
    for (const auto& [place, count] : most) coverage[m_pImage->GetSourceName(place.first)][place.second] += count;
}
