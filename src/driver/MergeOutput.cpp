// The copy of the temporary assembler text into the final file. What no program reaches becomes comments:
// it takes no room in the machine, and nothing is lost to a reader.

#include "codegen/BlockExtents.h"
#include "codegen/TextPieces.h"
#include "files/Fatal.h"
#include "files/Format.h"
#include "files/OutputTextFile.h"
#include "files/Platform.h"
#include "files/TemporaryFiles.h"
#include "model/PouTable.h"
#include "semantics/Norvane.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <limits>
#include <vector>

static constexpr std::string_view g_LabelStart = "FUNCTION_";
static constexpr std::string_view g_PouEnd = "\tDBI POU_END";
static constexpr std::string_view g_CommentStart = ";;\t";
static constexpr std::string_view g_UnusedMark = ";;\tNot used\n";

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

// A name that the table lacks counts as used.
static bool IsUnusedLabel(const CPouTable& pous, std::string_view line)
{
    const CPou* pPou = FindLabelledPou(pous, line);
    return pPou && !pPou->m_Used;
}

// What the label says counts, not who has written it: a function may be called as another one's second form is. Few
// names leave that open.
static bool IsUnused(const CPouTable& pous, const BlockExtent& block)
{
    if (block.form == 0 && block.pPou->m_Name.find("__") == std::string::npos) return !block.pPou->m_Used;
    const std::string line = MakeText(g_LabelStart, FunctionLabel{block.pPou->m_Name, block.form}, ':');
    return IsFunctionLabel(line) && IsUnusedLabel(pous, line);
}

namespace
{

// The temporary text on its way to the final one, by positions in it.
class TextCopy
{
public:
    explicit TextCopy(OutputTextFile& file) : m_File(file), m_Window(g_WindowSize) {}
    ~TextCopy();

    bool Open(const std::string& name);
    // Each goes on to the given position or to the text's end.
    void CopyTo(std::int64_t end);
    void CommentTo(std::int64_t end);     // from the start of a line on
    bool HasFailed() const { return m_HasFailed; }

private:
    static constexpr std::size_t g_WindowSize = 65536;

    std::string_view Read(std::int64_t end);
    void WriteComments(std::string_view text);

    OutputTextFile& m_File;
    std::vector<char> m_Window;
    int m_Descriptor = -1;
    std::int64_t m_Position = 0;
    bool m_IsAtLineStart = true;
    bool m_HasFailed = false;
};

}   // namespace

TextCopy::~TextCopy()
{
    if (m_Descriptor >= 0) CloseDescriptor(m_Descriptor);
}

bool TextCopy::Open(const std::string& name)
{
    m_Descriptor = OpenForReading(name.c_str());
    return m_Descriptor >= 0;
}

// As much as the window takes; empty behind the last piece and behind a failure.
std::string_view TextCopy::Read(std::int64_t end)
{
    const std::int64_t size = std::min<std::int64_t>(end - m_Position, g_WindowSize);
    if (m_HasFailed || size <= 0) return {};
    const std::ptrdiff_t count = ReadBytes(m_Descriptor, m_Window.data(), static_cast<std::size_t>(size));
    m_HasFailed = count < 0;
    if (count <= 0) return {};
    m_Position += count;
    return {m_Window.data(), static_cast<std::size_t>(count)};
}

void TextCopy::CopyTo(std::int64_t end)
{
    for (std::string_view text = Read(end); !text.empty(); text = Read(end)) m_File.Write(text);
}

void TextCopy::CommentTo(std::int64_t end)
{
    m_IsAtLineStart = true;
    for (std::string_view text = Read(end); !text.empty(); text = Read(end)) WriteComments(text);
}

void TextCopy::WriteComments(std::string_view text)
{
    while (!text.empty()) {
        if (m_IsAtLineStart) m_File.Write(g_CommentStart);
        const std::size_t lineEnd = text.find('\n');
        m_IsAtLineStart = lineEnd != std::string_view::npos;
        const std::size_t size = m_IsAtLineStart ? lineEnd + 1 : text.size();
        m_File.Write(text.substr(0, size));
        text.remove_prefix(size);
    }
}

// Our own text ends with a line end and holds no line that only looks like a label, so whole pieces can be copied.
static bool MergePieces(const std::vector<BlockExtent>& unused, const std::string& temporaryName,
                        const std::string& outputName)
{
    OutputTextFile file;
    TextCopy copy(file);
    if (!copy.Open(temporaryName) || !file.Open(outputName)) return false;
    for (const BlockExtent& block : unused) {
        copy.CopyTo(block.begin);
        file.Write(g_UnusedMark);
        copy.CommentTo(block.end);
    }
    copy.CopyTo(std::numeric_limits<std::int64_t>::max());
    const bool isClosed = file.Close();
    return isClosed && !copy.HasFailed();
}

// Whatever looks like a label is one, whoever has written it.
static bool MergeLines(const CPouTable& pous, const std::string& temporaryName, const std::string& outputName)
{
    std::ifstream temporary(temporaryName, std::ios::binary);
    OutputTextFile file;
    if (!temporary || !file.Open(outputName)) return false;

    bool isInside = false;
    bool isUnused = false;
    for (std::string line; std::getline(temporary, line);) {
        if (IsFunctionLabel(line)) {
            isInside = true;
            isUnused = IsUnusedLabel(pous, line);
            if (isUnused) file.Write(g_UnusedMark);
        }
        if (isUnused) file.Write(g_CommentStart);
        file.Write(line);
        file.Write("\n");
        if (isInside && line == g_PouEnd) isInside = isUnused = false;
    }
    const bool isClosed = file.Close();
    return isClosed && !temporary.bad();
}

bool CNorvane::MergeOutput(const std::string& temporaryName, const std::string& outputName)
{
    const CBlockExtents& blocks = m_Code.m_Blocks;
    if (!blocks.DoLinesAgree()) return MergeLines(m_Pous, temporaryName, outputName);

    std::vector<BlockExtent> unused;
    std::copy_if(blocks.GetBlocks().begin(), blocks.GetBlocks().end(), std::back_inserter(unused),
                 [this](const BlockExtent& block) { return IsUnused(m_Pous, block); });
    // A device is no temporary file, and another file system can't be renamed to: there it is copied.
    if (unused.empty() && MoveTemporaryFile(temporaryName, outputName)) return true;
    return MergePieces(unused, temporaryName, outputName);
}
