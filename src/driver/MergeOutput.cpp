// The copy of the temporary assembler text into the final file. What no program reaches becomes comments:
// it takes no room in the machine, and nothing is lost to a reader.

#include "files/Fatal.h"
#include "files/Format.h"
#include "files/OutputTextFile.h"
#include "model/PouTable.h"
#include "semantics/Norvane.h"

#include <fstream>

static constexpr std::string_view g_LabelStart = "FUNCTION_";
static constexpr std::string_view g_PouEnd = "\tDBI POU_END";
static constexpr std::string_view g_CommentStart = ";;\t";

static bool IsFunctionLabel(std::string_view line)
{
    return line.starts_with(g_LabelStart) && line != "FUNCTION___GlobalInitialization__:" &&
           line != "FUNCTION___RetainInitialization__:";
}

// Where the number of an overloaded form begins, "__2" at the end; npos for a name without one. The last "__" counts: a
// name may end in "_" itself, so that a second form of "f_" is "f___1".
static std::size_t FindFormNumber(std::string_view name)
{
    constexpr std::string_view separator = "__";
    const std::size_t position = name.rfind(separator);
    if (position == std::string_view::npos || position == 0) return std::string_view::npos;
    const std::string_view number = name.substr(position + separator.size());
    const bool isNumber = !number.empty() && number.find_first_not_of("0123456789") == std::string_view::npos;
    return isNumber ? position : std::string_view::npos;
}

// The POU that a label line names: "FUNCTION_name:" or "FUNCTION_name__2:", the number being that of the form
// in its overload set. Null if the table has none.
static const CPou* FindLabelledPou(const CPouTable& pous, std::string_view line)
{
    std::string name(line.substr(g_LabelStart.size()));
    std::erase(name, ':');
    const std::size_t separator = FindFormNumber(name);
    const bool isNumbered = separator != std::string::npos;
    const std::int32_t number = isNumbered ? ToInt(std::string_view(name).substr(separator + 2)) : 0;
    if (isNumbered) name.erase(separator);

    if (const CFunctionOverLoad* pOverload = pous.FindOverload(name)) {
        const auto index = static_cast<std::size_t>(number);
        if (index >= pOverload->m_Functions.size()) InternalFault("a label's number is beyond its overload set");
        return pOverload->m_Functions[index].get();
    }
    return pous.FindPou(name);
}

bool CNorvane::MergeOutput(const std::string& temporaryName, const std::string& outputName)
{
    std::ifstream temporary(temporaryName, std::ios::binary);
    OutputTextFile file;
    if (!temporary || !file.Open(outputName)) return false;

    bool isInside = false;
    bool isUnused = false;
    for (std::string line; std::getline(temporary, line);) {
        if (IsFunctionLabel(line)) {
            const CPou* pPou = FindLabelledPou(m_Pous, line);
            isInside = true;
            isUnused = pPou && !pPou->m_Used;   // a name that the table lacks counts as used
            if (isUnused) file.Write(";;\tNot used\n");
        }
        if (isUnused) file.Write(g_CommentStart);
        file.Write(line);
        file.Write("\n");
        if (isInside && line == g_PouEnd) isInside = isUnused = false;
    }
    const bool isClosed = file.Close();
    return isClosed && !temporary.bad();
}
