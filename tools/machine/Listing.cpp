#include "machine/Listing.h"

#include "files/FileSystem.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <bit>
#include <optional>

namespace
{

struct MnemonicText
{
    Mnemonic mnemonic;
    std::string_view text;
};

constexpr MnemonicText g_MnemonicTexts[] = {   // ORDER MNEMONIC
    {Mnemonic::Push, "PUSH"},          {Mnemonic::PushMemory, "PUSH"},     {Mnemonic::PushAddress, "PUSH&"},
    {Mnemonic::PushThrough, "PUSH*"},  {Mnemonic::PushIndirect, "PUSHI"},  {Mnemonic::Drop, "POP"},
    {Mnemonic::PopMemory, "POP"},      {Mnemonic::PopThrough, "POP*"},     {Mnemonic::PopAddress, "POP&"},    {Mnemonic::PopIndirect, "POPI"},
    {Mnemonic::Dup, "DUP"},            {Mnemonic::Memcpy, "MEMCPY"},       {Mnemonic::Add, "ADD"},
    {Mnemonic::Sub, "SUB"},            {Mnemonic::Mul, "MUL"},             {Mnemonic::Div, "DIV"},
    {Mnemonic::Mod, "MOD"},            {Mnemonic::And, "AND"},             {Mnemonic::Or, "OR"},
    {Mnemonic::Xor, "XOR"},            {Mnemonic::Min, "MIN"},             {Mnemonic::Max, "MAX"},
    {Mnemonic::Pow, "POW"},            {Mnemonic::Powr, "POWR"},           {Mnemonic::MulDiv, "MULDIV"},
    {Mnemonic::Shl, "SHL"},            {Mnemonic::Shr, "SHR"},             {Mnemonic::Rol, "ROL"},
    {Mnemonic::Ror, "ROR"},            {Mnemonic::Neg, "NEG"},             {Mnemonic::Abs, "ABS"},
    {Mnemonic::Sqrt, "SQRT"},          {Mnemonic::Not, "NOT"},             {Mnemonic::CmpEq, "CMP EQ"},
    {Mnemonic::CmpNe, "CMP NE"},       {Mnemonic::CmpLt, "CMP LT"},        {Mnemonic::CmpLe, "CMP LE"},
    {Mnemonic::CmpGt, "CMP GT"},       {Mnemonic::CmpGe, "CMP GE"},        {Mnemonic::Convert, "TO_"},
    {Mnemonic::Jmp, "JMP"},            {Mnemonic::Jc, "JC"},               {Mnemonic::Jnc, "JNC"},
    {Mnemonic::Jsr, "JSR"},            {Mnemonic::Rts, "RTS"},             {Mnemonic::Case, "CASE"},
    {Mnemonic::CaseRange, "CASER"},    {Mnemonic::Sys, "SYS"},             {Mnemonic::Address, "ADDRESS"},
    {Mnemonic::AddressBit, "ADDRESSBIT"}, {Mnemonic::LocalData, "LOCALDATA"}, {Mnemonic::LocalSet, "LOCALSET"},
    {Mnemonic::Nop, "NOP"},
};

constexpr std::string_view g_FunctionPrefix = "FUNCTION_";
constexpr std::string_view g_ProgramPrefix = "PROGRAM_";

}   // namespace

std::string_view GetMnemonicText(Mnemonic mnemonic)
{
    return g_MnemonicTexts[static_cast<int>(mnemonic)].text;
}

static bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

static std::string_view Trim(std::string_view text)
{
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

// Walks through the operands of one line.
class CLineScanner
{
public:
    explicit CLineScanner(std::string_view text) : m_Rest(text) {}

    void SkipBlanks()
    {
        while (!m_Rest.empty() && IsBlank(m_Rest.front())) m_Rest.remove_prefix(1);
    }
    bool Accept(std::string_view text)
    {
        SkipBlanks();
        if (!m_Rest.starts_with(text)) return false;
        m_Rest.remove_prefix(text.size());
        return true;
    }
    bool IsAtEnd()
    {
        SkipBlanks();
        return m_Rest.empty();
    }
    char Peek()
    {
        SkipBlanks();
        return m_Rest.empty() ? '\0' : m_Rest.front();
    }
    // Up to a blank or the end.
    std::string_view TakeWord()
    {
        SkipBlanks();
        std::size_t length = 0;
        while (length < m_Rest.size() && !IsBlank(m_Rest[length])) ++length;
        const std::string_view word = m_Rest.substr(0, length);
        m_Rest.remove_prefix(length);
        return word;
    }
    bool TakeInteger(std::int64_t& value)
    {
        SkipBlanks();
        const std::from_chars_result end = std::from_chars(m_Rest.data(), m_Rest.data() + m_Rest.size(), value);
        if (end.ec != std::errc()) return false;
        m_Rest.remove_prefix(static_cast<std::size_t>(end.ptr - m_Rest.data()));
        return true;
    }
    bool TakeInt(int& value)
    {
        std::int64_t wide = 0;
        if (!TakeInteger(wide) || wide != static_cast<std::int32_t>(wide)) return false;
        value = static_cast<std::int32_t>(wide);
        return true;
    }
    // "(INT)": the name between the parentheses.
    bool TakeSuffix(std::string_view& name)
    {
        if (!Accept("(")) return false;
        const std::size_t end = m_Rest.find(')');
        if (end == std::string_view::npos) return false;
        name = m_Rest.substr(0, end);
        m_Rest.remove_prefix(end + 1);
        return true;
    }

private:
    std::string_view m_Rest;
};

class CListingReader
{
public:
    CListingReader(CListing& listing, const CDebugInfo& debugInfo) : m_Listing(listing), m_DebugInfo(debugInfo) {}

    bool Read();

    std::string m_Error;
    int m_Line = 0;

private:
    struct PendingJump
    {
        int instruction;
        std::string label;
        int line;
    };

    bool ReadLine(std::string_view line);
    bool ReadComment(std::string_view comment);
    bool ReadVariableComment(std::string_view comment);
    void ReadHeaderComment(std::string_view comment);
    bool ReadMark(CLineScanner scanner);
    bool ReadEntryLabel(std::string_view label);
    bool ReadLabel(std::string_view label);
    bool ReadInstruction(std::string_view text);
    bool ReadOperands(std::string_view mnemonic, CLineScanner& scanner, Instruction& instruction);
    bool ReadPush(char form, CLineScanner& scanner, Instruction& instruction);
    bool ReadConstant(CLineScanner& scanner, Instruction& instruction);
    bool ReadConversion(std::string_view text, CLineScanner& scanner, Instruction& instruction);
    bool ReadType(CLineScanner& scanner, const DebugType*& pType);
    bool ReadMemoryOperand(CLineScanner& scanner, Instruction& instruction);
    bool ReadJump(CLineScanner& scanner, Instruction& instruction);
    bool Resolve();
    void Finish();
    bool Fail(std::string reason)
    {
        m_Error = std::move(reason);
        return false;
    }

    CListing& m_Listing;
    const CDebugInfo& m_DebugInfo;
    std::unordered_map<std::string, int> m_Labels;   // of jumps: the instruction behind
    std::vector<PendingJump> m_Jumps;
    bool m_HasMark = false;                          // a line mark is in force
    bool m_HasHeader = false;                        // the last header waits for its entry label
};

bool CListing::Load(const std::string& fileName, const CDebugInfo& debugInfo, std::string& error)
{
    std::string text;
    if (!ReadWholeFile(fileName, text)) {
        error = fileName + ": cannot be read";
        return false;
    }
    return Read(std::move(text), fileName, debugInfo, error);
}

bool CListing::Read(std::string text, const std::string& shownName, const CDebugInfo& debugInfo, std::string& error)
{
    m_Text = std::move(text);
    CListingReader reader(*this, debugInfo);
    if (reader.Read()) return true;
    error = shownName + "(" + std::to_string(reader.m_Line) + "): " + reader.m_Error;
    return false;
}

const ListingPou* CListing::FindPou(std::string_view label) const
{
    const int index = FindPouIndex(label);
    return index < 0 ? nullptr : &m_Pous[static_cast<std::size_t>(index)];
}

int CListing::FindPouIndex(std::string_view label) const
{
    const auto found = m_PouByLabel.find(std::string(label));
    return found == m_PouByLabel.end() ? -1 : found->second;
}

std::string_view CListing::GetComment(const Instruction& instruction) const
{
    const char* begin = instruction.text.data() + instruction.text.size();
    const char* textEnd = m_Text.data() + m_Text.size();
    const char* end = std::find(begin, textEnd, '\n');
    const char* semicolon = std::find(begin, end, ';');
    return semicolon == end ? std::string_view() : Trim(std::string_view(semicolon + 1, end));
}

bool CListingReader::Read()
{
    std::string_view rest = m_Listing.m_Text;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        ++m_Line;
        if (!ReadLine(rest.substr(0, end))) return false;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return Resolve();
}

bool CListingReader::ReadLine(std::string_view line)
{
    // An unused POU stands behind ";;\t" and is no more than any other comment.
    const std::size_t semicolon = line.find(';');
    const std::string_view text = Trim(line.substr(0, semicolon));
    if (text.empty()) return semicolon == std::string_view::npos || ReadComment(line.substr(semicolon + 1));

    if (text.starts_with("DBI ")) return ReadMark(CLineScanner(text.substr(4)));
    if (text.ends_with(':')) {
        const std::string_view label = text.substr(0, text.size() - 1);
        const bool isEntry = label.starts_with(g_FunctionPrefix) || label.starts_with(g_ProgramPrefix);
        return isEntry && !IsBlank(line.front()) ? ReadEntryLabel(label) : ReadLabel(label);
    }
    return ReadInstruction(text);
}

bool CListingReader::ReadComment(std::string_view comment)
{
    if (comment.starts_with("Variable (")) return ReadVariableComment(comment.substr(10));
    if (comment.starts_with(";\tNot used")) m_HasHeader = false;
    if (comment.starts_with(" FUNCTION") || comment.starts_with(" PROGRAM")) ReadHeaderComment(comment.substr(1));
    return true;
}

// ; FUNCTION: name__1,	 file a.st,	 line 3
void CListingReader::ReadHeaderComment(std::string_view comment)
{
    const std::size_t colon = comment.find(": ");
    const std::size_t file = comment.find(",\t file ");
    const std::size_t line = comment.rfind(",\t line ");
    if (colon == std::string_view::npos || file == std::string_view::npos || line == std::string_view::npos) return;
    constexpr std::size_t labelLength = 8;   // of ",\t file " and ",\t line "
    if (file < colon + 2 || line < file + labelLength) return;
    ListingHeader header;
    header.kind = comment.substr(0, colon);
    header.name = comment.substr(colon + 2, file - colon - 2);
    header.fileName = comment.substr(file + labelLength, line - file - labelLength);
    CLineScanner(comment.substr(line + labelLength)).TakeInt(header.line);
    m_Listing.m_Headers.push_back(std::move(header));
    m_HasHeader = true;
}

//		;Variable (0): x ((INT),VAR_INPUT)
//		;Variable (1024): x (INT,VAR_GLOBAL AT MW0)
bool CListingReader::ReadVariableComment(std::string_view comment)
{
    CLineScanner scanner(comment);
    ListingVariable variable;
    if (!scanner.TakeInt(variable.offset) || !scanner.Accept("):")) return true;
    variable.name = scanner.TakeWord();
    const std::size_t open = comment.rfind(" (");
    const std::size_t comma = comment.rfind(',');
    const std::size_t close = comment.rfind(')');
    if (open == std::string_view::npos || comma == std::string_view::npos || comma < open || close < comma) return true;
    std::string_view type = comment.substr(open + 2, comma - open - 2);
    if (type.starts_with('(') && type.ends_with(')')) type = type.substr(1, type.size() - 2);
    variable.typeName = type;
    variable.block = comment.substr(comma + 1, close - comma - 1);
    if (variable.block.find(" AT ") != std::string::npos) m_Listing.m_LocatedGlobals[variable.name] = true;
    if (!m_Listing.m_Pous.empty()) m_Listing.m_Pous.back().variables.push_back(std::move(variable));
    return true;
}

bool CListingReader::ReadMark(CLineScanner scanner)
{
    if (scanner.Accept("POU_BEGIN") || scanner.Accept("POU_END")) {
        m_HasMark = false;
        return true;
    }
    if (scanner.Accept("FILENAME") || scanner.Accept("FILETIME") || scanner.Accept("FILEVERSION") ||
        scanner.Accept("COMPILERBUILDNUMBER"))
        return true;
    LineMark mark;
    if (!scanner.Accept("FILE") || !scanner.TakeInt(mark.file) || !scanner.Accept("LINE") ||
        !scanner.TakeInt(mark.line) || !scanner.IsAtEnd())
        return Fail("unknown DBI line");
    mark.instruction = static_cast<int>(m_Listing.m_Instructions.size());
    m_Listing.m_Marks.push_back(mark);
    m_HasMark = true;
    return true;
}

bool CListingReader::ReadEntryLabel(std::string_view label)
{
    ListingPou pou;
    pou.first = static_cast<int>(m_Listing.m_Instructions.size());
    if (label.starts_with(g_ProgramPrefix)) {
        pou.kind = ListingPou::Program;
        pou.name = label.substr(g_ProgramPrefix.size());
    } else {
        pou.name = label.substr(g_FunctionPrefix.size());
        const bool isGenerated = pou.name == "__GlobalInitialization__" || pou.name == "__RetainInitialization__";
        pou.kind = isGenerated ? ListingPou::Initialization : ListingPou::Function;
    }
    if (!m_Listing.m_Pous.empty()) m_Listing.m_Pous.back().end = pou.first;
    if (m_HasHeader && m_Listing.m_Headers.back().name == pou.name)
        m_Listing.m_Headers.back().pou = static_cast<int>(m_Listing.m_Pous.size());
    m_HasHeader = false;
    if (!m_Listing.m_PouByLabel.emplace(label, static_cast<int>(m_Listing.m_Pous.size())).second)
        return Fail("label " + std::string(label) + " stands twice");
    m_Listing.m_Pous.push_back(std::move(pou));
    m_HasMark = false;
    return true;
}

// A label without a name comes of a condition that is always false in front of ELSIF. Several may stand in one text,
// so a jump to it has no target.
bool CListingReader::ReadLabel(std::string_view label)
{
    if (label.empty()) return true;
    const int next = static_cast<int>(m_Listing.m_Instructions.size());
    if (!m_Labels.emplace(label, next).second) return Fail("label " + std::string(label) + " stands twice");
    return true;
}

bool CListingReader::ReadInstruction(std::string_view text)
{
    if (m_Listing.m_Pous.empty()) return Fail("an instruction in front of the first entry label: " + std::string(text));
    Instruction instruction;
    instruction.text = text;
    instruction.line = m_Line;
    instruction.pou = static_cast<int>(m_Listing.m_Pous.size()) - 1;
    instruction.mark = m_HasMark ? static_cast<int>(m_Listing.m_Marks.size()) - 1 : -1;

    std::size_t length = 0;
    while (length < text.size() && ((text[length] >= 'A' && text[length] <= 'Z') || text[length] == '_')) ++length;
    CLineScanner scanner(text.substr(length));
    if (!ReadOperands(text.substr(0, length), scanner, instruction)) {
        if (m_Error.empty()) m_Error = "unknown instruction: " + std::string(text);
        return false;
    }
    if (!scanner.IsAtEnd()) return Fail("unknown instruction: " + std::string(text));
    m_Listing.m_Instructions.push_back(instruction);
    return true;
}

static std::optional<Mnemonic> FindPlainMnemonic(std::string_view text)
{
    for (int i = static_cast<int>(Mnemonic::Add); i <= static_cast<int>(Mnemonic::Not); ++i)
        if (g_MnemonicTexts[i].text == text) return g_MnemonicTexts[i].mnemonic;
    return {};
}

bool CListingReader::ReadOperands(std::string_view mnemonic, CLineScanner& scanner, Instruction& instruction)
{
    ListingPou& pou = m_Listing.m_Pous.back();
    if (mnemonic == "PUSH" || mnemonic == "POP") {
        if (scanner.Accept("&")) {
            if (mnemonic == "PUSH") return ReadPush('&', scanner, instruction);
            instruction.mnemonic = Mnemonic::PopAddress;
            return ReadType(scanner, instruction.pType) && ReadMemoryOperand(scanner, instruction);
        }
        if (scanner.Accept("*")) {
            if (mnemonic == "PUSH") return ReadPush('*', scanner, instruction);
            instruction.mnemonic = Mnemonic::PopThrough;
            return ReadType(scanner, instruction.pType) && ReadMemoryOperand(scanner, instruction);
        }
        if (mnemonic == "PUSH") return ReadPush(' ', scanner, instruction);
        if (!ReadType(scanner, instruction.pType)) return false;
        instruction.mnemonic = scanner.IsAtEnd() ? Mnemonic::Drop : Mnemonic::PopMemory;
        return scanner.IsAtEnd() || ReadMemoryOperand(scanner, instruction);
    }
    if (mnemonic == "PUSHI" || mnemonic == "POPI" || mnemonic == "DUP") {
        instruction.mnemonic = mnemonic == "PUSHI"  ? Mnemonic::PushIndirect
                               : mnemonic == "POPI" ? Mnemonic::PopIndirect
                                                    : Mnemonic::Dup;
        return ReadType(scanner, instruction.pType);
    }
    if (const std::optional<Mnemonic> plain = FindPlainMnemonic(mnemonic)) {
        instruction.mnemonic = *plain;
        return ReadType(scanner, instruction.pType);
    }
    if (mnemonic == "CMP") {
        for (int i = static_cast<int>(Mnemonic::CmpEq); i <= static_cast<int>(Mnemonic::CmpGe); ++i) {
            if (!scanner.Accept(g_MnemonicTexts[i].text.substr(4))) continue;
            instruction.mnemonic = g_MnemonicTexts[i].mnemonic;
            return ReadType(scanner, instruction.pType);
        }
        return false;
    }
    if (mnemonic.starts_with("TO_")) return ReadConversion(mnemonic.substr(3), scanner, instruction);
    if (mnemonic == "JMP" || mnemonic == "JC" || mnemonic == "JNC" || mnemonic == "JSR") {
        instruction.mnemonic = mnemonic == "JMP"  ? Mnemonic::Jmp
                               : mnemonic == "JC" ? Mnemonic::Jc
                               : mnemonic == "JNC" ? Mnemonic::Jnc
                                                   : Mnemonic::Jsr;
        return ReadJump(scanner, instruction);
    }
    if (mnemonic == "RTS" || mnemonic == "NOP") {
        instruction.mnemonic = mnemonic == "RTS" ? Mnemonic::Rts : Mnemonic::Nop;
        return true;
    }
    if (mnemonic == "MEMCPY" || mnemonic == "SYS") {
        instruction.mnemonic = mnemonic == "SYS" ? Mnemonic::Sys : Mnemonic::Memcpy;
        return scanner.TakeInteger(instruction.number);
    }
    if (mnemonic == "CASE" || mnemonic == "CASER") {
        instruction.mnemonic = mnemonic == "CASE" ? Mnemonic::Case : Mnemonic::CaseRange;
        if (!ReadType(scanner, instruction.pType) || !scanner.TakeInteger(instruction.number)) return false;
        if (mnemonic == "CASER" && !scanner.TakeInteger(instruction.high)) return false;
        return ReadJump(scanner, instruction);
    }
    if (mnemonic == "ADDRESS" || mnemonic == "ADDRESSBIT") {
        instruction.mnemonic = mnemonic == "ADDRESS" ? Mnemonic::Address : Mnemonic::AddressBit;
        return ReadType(scanner, instruction.pType) && scanner.TakeInteger(instruction.stride) &&
               scanner.TakeInteger(instruction.number) && scanner.TakeInteger(instruction.high);
    }
    if (mnemonic == "LOCALDATA") {
        instruction.mnemonic = Mnemonic::LocalData;
        if (!scanner.TakeInteger(instruction.number)) return false;
        pou.memoryBytes = static_cast<std::int32_t>(instruction.number);
        return instruction.number >= 0;
    }
    if (mnemonic == "LOCALSET") {
        instruction.mnemonic = Mnemonic::LocalSet;
        if (!scanner.TakeInt(pou.id)) return false;
        // The bytes stand in the comment: "LOCALSET 1 ; 4 bytes size".
        CLineScanner bytes(m_Listing.GetComment(instruction));
        if (!bytes.TakeInteger(instruction.number) || !bytes.Accept("bytes")) return Fail("LOCALSET without its bytes");
        pou.memoryBytes = static_cast<std::int32_t>(instruction.number);
        return instruction.number >= 0;
    }
    return false;
}

bool CListingReader::ReadPush(char form, CLineScanner& scanner, Instruction& instruction)
{
    if (form != ' ') {
        instruction.mnemonic = form == '&' ? Mnemonic::PushAddress : Mnemonic::PushThrough;
        return ReadType(scanner, instruction.pType) && ReadMemoryOperand(scanner, instruction);
    }
    if (scanner.Peek() != '(') {   // one character: its code
        instruction.mnemonic = Mnemonic::Push;
        instruction.pType = m_DebugInfo.FindType("SINT");
        return scanner.TakeInteger(instruction.number);
    }
    if (!ReadType(scanner, instruction.pType)) return false;
    if (scanner.Peek() == '[') {
        instruction.mnemonic = Mnemonic::PushMemory;
        return ReadMemoryOperand(scanner, instruction);
    }
    return ReadConstant(scanner, instruction);
}

bool CListingReader::ReadConstant(CLineScanner& scanner, Instruction& instruction)
{
    instruction.mnemonic = Mnemonic::Push;
    const std::string text(scanner.TakeWord());
    const ValueKind kind = instruction.pType->kind;
    char* pEnd = nullptr;
    if (IsReal(kind)) {
        MachineValue value{kind, 0, std::strtod(text.c_str(), &pEnd)};
        instruction.number = ToCell(value);
        return !text.empty() && *pEnd == '\0';
    }
    // An integer may come in the form of a real where the source gave one: towards zero then.
    std::int64_t number = 0;
    const std::from_chars_result end = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || end.ec != std::errc()) return false;
    if (*end.ptr == '.') std::strtod(end.ptr, &pEnd);
    else pEnd = const_cast<char*>(end.ptr);
    instruction.number = FromCell(number, kind).integer;
    return *pEnd == '\0';
}

//	TO_REAL (INT)
bool CListingReader::ReadConversion(std::string_view text, CLineScanner& scanner, Instruction& instruction)
{
    instruction.mnemonic = Mnemonic::Convert;
    instruction.pToType = m_DebugInfo.FindType(text);
    if (!instruction.pToType || instruction.pToType->isStruct) return Fail("unknown type " + std::string(text));
    return ReadType(scanner, instruction.pType);
}

bool CListingReader::ReadType(CLineScanner& scanner, const DebugType*& pType)
{
    std::string_view name;
    if (!scanner.TakeSuffix(name)) return false;
    pType = m_DebugInfo.FindType(name);
    if (pType && !pType->isStruct) return true;
    return Fail("unknown type " + std::string(name));
}

// [local+12].3
bool CListingReader::ReadMemoryOperand(CLineScanner& scanner, Instruction& instruction)
{
    if (!scanner.Accept("[")) return false;
    if (scanner.Accept("local+")) instruction.area = MemoryArea::Local;
    else if (scanner.Accept("global+")) instruction.area = MemoryArea::Global;
    else if (scanner.Accept("retain+")) instruction.area = MemoryArea::Retain;
    else instruction.area = MemoryArea::Absolute;
    if (!scanner.TakeInt(instruction.offset) || !scanner.Accept("]")) return false;
    return !scanner.Accept(".") || scanner.TakeInt(instruction.bit);
}

bool CListingReader::ReadJump(CLineScanner& scanner, Instruction& instruction)
{
    static_cast<void>(instruction);   // its target is known at the end of the text only
    m_Jumps.push_back(
        {static_cast<int>(m_Listing.m_Instructions.size()), std::string(scanner.TakeWord()), m_Line});
    return true;
}

bool CListingReader::Resolve()
{
    if (!m_Listing.m_Pous.empty()) m_Listing.m_Pous.back().end = static_cast<int>(m_Listing.m_Instructions.size());
    for (const PendingJump& jump : m_Jumps) {
        Instruction& instruction = m_Listing.m_Instructions[static_cast<std::size_t>(jump.instruction)];
        if (instruction.mnemonic == Mnemonic::Jsr) {
            const int pou = m_Listing.FindPouIndex(jump.label);
            instruction.target = pou < 0 ? -1 : m_Listing.m_Pous[static_cast<std::size_t>(pou)].first;
            continue;
        }
        const auto found = m_Labels.find(jump.label);
        const ListingPou& pou = m_Listing.m_Pous[static_cast<std::size_t>(instruction.pou)];
        const bool isInside = found != m_Labels.end() && found->second >= pou.first && found->second < pou.end;
        instruction.target = isInside ? found->second : -1;
    }
    Finish();
    return true;
}

void CListingReader::Finish()
{
    const int count = static_cast<int>(m_Listing.m_Instructions.size());
    for (const auto& [name, target] : m_Labels) m_Listing.m_LabelTargets.push_back(target);
    std::vector<int>& targets = m_Listing.m_LabelTargets;
    std::sort(targets.begin(), targets.end());
    targets.erase(std::unique(targets.begin(), targets.end()), targets.end());
    for (Instruction& instruction : m_Listing.m_Instructions)
        if (instruction.target >= count) instruction.target = -1;   // nothing stands behind the label

    for (ListingPou& pou : m_Listing.m_Pous) {
        // LOCALDATA asks for one byte where there are none; the return stack counts what there is.
        pou.localBytes = pou.memoryBytes;
        const DebugPou* pDebugPou = m_DebugInfo.FindPou(pou.name);
        const bool isBlock = pDebugPou && pDebugPou->kind == "FUNCTION_BLOCK";
        if (pou.kind == ListingPou::Function && !isBlock && pou.variables.empty()) pou.localBytes = 0;
    }
}
