#include "machine/DebugInfo.h"

#include "files/XmlDocument.h"

#include <algorithm>

static std::string ToLower(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

static std::string Attribute(const CXmlNode& node, std::string_view name)
{
    std::string text;
    node.GetAttribute(text, name);
    return text;
}

namespace
{

struct ElementaryType
{
    std::string_view name;
    int sizeBits;        // where the target says nothing
    char kind;           // b: BOOL, s: signed, u: unsigned, r: real
};

// The types that no target allows never lie in memory; in a cell they are 64-bit integers.
constexpr ElementaryType g_Elementary[] = {
    {"BOOL", 1, 'b'},   {"SINT", 8, 's'},   {"INT", 16, 's'},    {"DINT", 32, 's'},           {"LINT", 64, 's'},
    {"USINT", 8, 'u'},  {"UINT", 16, 'u'},  {"UDINT", 32, 'u'},  {"ULINT", 64, 'u'},          {"BYTE", 8, 'u'},
    {"WORD", 16, 'u'},  {"DWORD", 32, 'u'}, {"LWORD", 64, 'u'},  {"REAL", 32, 'r'},           {"LREAL", 64, 'r'},
    {"TIME", 64, 's'},  {"DATE", 64, 's'},  {"TIME_OF_DAY", 64, 's'}, {"DATE_AND_TIME", 64, 's'},
};

}   // namespace

static const ElementaryType* FindElementary(std::string_view name)
{
    for (const ElementaryType& type : g_Elementary)
        if (type.name == name) return &type;
    return nullptr;
}

static bool MakeKind(char kind, int sizeBits, ValueKind& result)
{
    if (kind == 'b') {
        result = ValueKind::Bool;
        return true;
    }
    if (kind == 'r') {
        result = sizeBits == 32 ? ValueKind::F32 : ValueKind::F64;
        return sizeBits == 32 || sizeBits == 64;
    }
    int step = 0;
    for (int bits = 8; bits <= 64; bits *= 2, ++step) {
        if (bits != sizeBits) continue;
        result = static_cast<ValueKind>(static_cast<int>(kind == 's' ? ValueKind::S8 : ValueKind::U8) + step);
        return true;
    }
    return false;
}

static DebugVariable ReadVariable(const CXmlNode& node)
{
    DebugVariable variable;
    variable.name = Attribute(node, "name");
    variable.typeText = Attribute(node, "datatype");
    variable.displacement = Attribute(node, "displacement");
    variable.memberClass = Attribute(node, "class");
    variable.offset = node.GetAttributeInt("offset", -1);
    variable.bit = node.GetAttributeInt("bit", -1);
    variable.isRetain = Attribute(node, "type") == "VAR_GLOBAL_RETAIN";
    variable.isConstant = node.GetAttributeBool("constant");
    return variable;
}

static void ReadStack(const CXmlNode* pNode, DebugStack& stack)
{
    if (!pNode) return;
    stack.size = pNode->GetAttributeInt("size");
    stack.maxSize = pNode->GetAttributeInt("maxsize");
    stack.maxDepth = pNode->GetAttributeInt("maxdepth");
    stack.maxNestedDepth = pNode->GetAttributeInt("maxnesteddepth");
}

// The call tree tells the depth behind each call, but neither of the two numbers that it is counted with: they are
// the first pair that explains every entry.
static void FitCallCosts(const CXmlNode* pTree, int& align, int& overload)
{
    struct Entry
    {
        std::int64_t local;
        std::int64_t cost;
    };
    std::vector<Entry> entries;
    std::vector<std::pair<const CXmlNode*, std::int64_t>> open;
    if (pTree) open.emplace_back(pTree, 0);
    while (!open.empty()) {
        const auto [pNode, depth] = open.back();
        open.pop_back();
        for (const auto& pChild : pNode->m_Children) {
            if (pChild->m_Name != "POU") continue;
            const std::int64_t childDepth = pChild->GetAttributeInt("returnstackdepth");
            entries.push_back({pChild->GetAttributeInt("local"), childDepth - depth});
            open.emplace_back(pChild.get(), childDepth);
        }
    }
    constexpr int largestAlign = 4096;
    for (int candidate = 1; candidate <= largestAlign && !entries.empty(); ++candidate) {
        const auto raised = [candidate](std::int64_t local) { return (local + candidate - 1) / candidate * candidate; };
        const std::int64_t rest = entries.front().cost - raised(entries.front().local);
        if (rest < 0 || !std::all_of(entries.begin(), entries.end(), [&](const Entry& entry) {
                return entry.cost - raised(entry.local) == rest;
            }))
            continue;
        align = candidate;
        overload = static_cast<int>(rest);
        return;
    }
}

bool CDebugInfo::Load(const std::string& fileName, std::string& error)
{
    CXmlDocument document;
    if (document.Load(fileName) >= 0) return ReadDocument(document.m_Root, fileName, error);
    error = fileName + ": cannot be read as a debug file";
    return false;
}

bool CDebugInfo::Read(std::string_view text, const std::string& shownName, std::string& error)
{
    CXmlDocument document;
    if (document.LoadFromString(text) >= 0) return ReadDocument(document.m_Root, shownName, error);
    error = shownName + ": cannot be read as a debug file";
    return false;
}

static DebugPou ReadPou(const CXmlNode& node)
{
    DebugPou pou;
    pou.name = Attribute(node, "name");
    pou.kind = Attribute(node, "type");
    pou.id = node.GetAttributeInt("id", -1);
    pou.localSize = node.GetAttributeInt("localsize");
    pou.isUsed = node.GetAttributeBool("used");
    return pou;
}

bool CDebugInfo::ReadDocument(const CXmlNode& root, const std::string& shownName, std::string& error)
{
    if (root.m_Name != "DBI") {
        error = shownName + ": cannot be read as a debug file";
        return false;
    }
    if (const CXmlNode* pInfo = root.FindChild("INFO")) {
        for (const auto& pChild : pInfo->m_Children) {
            if (pChild->m_Name == "SOURCEFILE") m_Sources.push_back(pChild->m_Text);
            if (pChild->m_Name != "PROGRAM") continue;
            m_ProgramName = Attribute(*pChild, "name");
            m_ProgramVersion = Attribute(*pChild, "version");
            m_FileTime = Attribute(*pChild, "filetime");
        }
    }
    if (const CXmlNode* pList = root.FindChild("POU_LIST")) {
        for (const auto& pChild : pList->m_Children) {
            if (pChild->m_Name != "POU") continue;
            DebugPou pou = ReadPou(*pChild);
            m_PouByName.emplace(ToLower(pou.name), m_Pous.size());
            m_Pous.push_back(std::move(pou));
        }
    }
    ReadStack(root.FindChild("RETURNSTACK"), m_ReturnStack);
    ReadStack(root.FindChild("PARAMETERSTACK"), m_ParameterStack);
    FitCallCosts(root.FindChild("CALLTREE"), m_ReturnStackAlign, m_CallOverload);
    if (const CXmlNode* pGlobals = root.FindChild("GLOBAL"))
        for (const auto& pChild : pGlobals->m_Children)
            if (pChild->m_Name == "VARIABLE") m_Globals.push_back(ReadVariable(*pChild));
    if (const CXmlNode* pAreas = root.FindChild("AREAS")) {
        m_GlobalUsed = pAreas->GetAttributeInt("globalused");
        m_RetainUsed = pAreas->GetAttributeInt("retainused");
        m_Signs.global = pAreas->GetAttributeInt("globalsign");
        m_Signs.retain = pAreas->GetAttributeInt("retainsign");
        m_Signs.debugFile = pAreas->GetAttributeInt("dbisign");
    }
    const CXmlNode* pTypes = root.FindChild("DATATYPE");
    if (pTypes && !ReadTypes(*pTypes, shownName, error)) return false;
    AddMissingTypes();
    return true;
}

bool CDebugInfo::ReadTypes(const CXmlNode& node, const std::string& shownName, std::string& error)
{
    for (const auto& pChild : node.m_Children) {
        if (pChild->m_Name != "TYPE") continue;
        DebugType type;
        type.name = Attribute(*pChild, "name");
        const std::string category = Attribute(*pChild, "type");
        type.isFunctionBlock = category == "FUNCTION_BLOCK";
        type.isStruct = type.isFunctionBlock || category == "STRUCT";
        type.baseName = type.isStruct ? type.name : Attribute(*pChild, "datatype");
        type.align = std::max(1, pChild->GetAttributeInt("align", 1));
        for (const auto& pMember : pChild->m_Children)
            if (pMember->m_Name == "MEMBER") type.members.push_back(ReadVariable(*pMember));
        type.sizeBits = pChild->GetAttributeInt("size");
        if (const ElementaryType* pElementary = FindElementary(type.baseName)) {
            if (!MakeKind(pElementary->kind, type.sizeBits, type.kind)) {
                error = shownName + ": " + type.name + " of " + std::to_string(type.sizeBits) + " bits can't be run";
                return false;
            }
            if (type.name == "BOOL") m_BoolAlign = type.align;
        }
        const auto [stored, isNew] = m_Types.emplace(type.name, std::move(type));
        if (isNew) m_TypeOrder.push_back(&stored->second);
    }
    return true;
}

// The types that the target doesn't allow, as conversions name them.
void CDebugInfo::AddMissingTypes()
{
    for (const ElementaryType& elementary : g_Elementary) {
        DebugType type;
        type.name = type.baseName = elementary.name;
        MakeKind(elementary.kind, elementary.sizeBits, type.kind);
        m_Types.emplace(type.name, std::move(type));   // keeps what the file told
    }
    DebugType text;
    text.name = text.baseName = "STRING";
    text.isText = true;
    m_Types.emplace(text.name, std::move(text));
}

const DebugType* CDebugInfo::FindType(std::string_view name) const
{
    auto found = m_Types.find(name);
    if (found == m_Types.end()) found = m_Types.find(ToLower(name));
    return found == m_Types.end() ? nullptr : &found->second;
}

const DebugPou* CDebugInfo::FindPou(std::string_view name) const
{
    const auto found = m_PouByName.find(ToLower(name));
    return found == m_PouByName.end() ? nullptr : &m_Pous[found->second];
}
