#include "model/PouTable.h"

#include "files/Format.h"
#include "files/XmlDocument.h"
#include "frontend/ErrorHandler.h"

#include <utility>

static constexpr std::string_view g_ProgramPath = "COMPILER\\TARGET\\VM\\PROGRAM";
static constexpr std::string_view g_NamesEnd = "-end";   // closes the list, so no program can bear this name

CPouTable::CPouTable(CErrorHandler& errors, CXmlDocument& target, CNamePool& names)
    : m_Errors(errors), m_Target(target), m_Names(names), m_Identity(names.NewIdentity())
{
}

// Of several nodes of one name the first counts.
void CPouTable::LoadProgramNames()
{
    m_ProgramNames.clear();
    m_ProgramNodes.clear();
    bool isClosed = false;
    CXmlNode* pNode = m_Target.m_Root.FindFirstChild(g_ProgramPath);
    for (; pNode; pNode = m_Target.m_Root.FindNextChild()) {
        std::string name;
        pNode->GetAttribute(name, "name");
        m_ProgramNames.push_back(name);
        isClosed = isClosed || name == g_NamesEnd;
        if (!isClosed) m_ProgramNodes.try_emplace(std::move(name), pNode);
    }
    m_ProgramNames.emplace_back(g_NamesEnd);
}

bool CPouTable::IsProgramAllowed(const CPou& pou) const
{
    return m_ProgramNodes.contains(pou.m_Name);
}

static std::string GetCodeText(const CXmlNode& node, std::string_view attribute)
{
    constexpr std::string_view lineBreak = "{cr}";
    std::string text;
    node.GetAttribute(text, attribute);
    std::size_t position = text.find(lineBreak);
    while (position != std::string::npos) {
        text.replace(position, lineBreak.size(), "\n\t");
        position = text.find(lineBreak, position);
    }
    return text;
}

static void FillProgram(CProgram& program, const CXmlNode& node)
{
    program.m_Required = node.GetAttributeBool("required");
    program.m_Auto = node.GetAttributeBool("auto");
    program.m_InitGlobal = node.GetAttributeBool("initglobal");
    program.m_InitRetain = node.GetAttributeBool("initretain");
    program.m_Begin = GetCodeText(node, "pou_begin");
    program.m_End = GetCodeText(node, "end");
    program.m_Id = node.GetAttributeInt("id", -1);
}

static bool HaveSameTypes(const CPou& a, const CPou& b)
{
    for (std::size_t i = 0; i < a.m_Parameters.size(); ++i)
        if (a.m_Parameters[i]->m_Type != b.m_Parameters[i]->m_Type) return false;
    return true;
}

static bool HaveSameCount(const CPou& a, const CPou& b)
{
    return a.m_Parameters.size() == b.m_Parameters.size();
}

int CPouTable::AddPou(std::unique_ptr<CPou> pPou)
{
    const CName& key = m_Names.Intern(pPou->m_Name).GetKey();
    CPou* pEntry = FindPouExact(key);
    if (!pEntry) return AddNew(key, std::move(pPou));
    if (!pPou->IsFunction()) return RefuseDuplicate(*pEntry, *pPou);
    std::unique_ptr<CFunction> pFunction(pPou.release()->AsFunction());
    if (CFunctionOverLoad* pSet = pEntry->AsOverload()) return AddToOverload(*pSet, std::move(pFunction));
    if (HaveSameCount(*pEntry, *pFunction) && HaveSameTypes(*pEntry, *pFunction))
        return RefuseDuplicate(*pEntry, *pFunction);
    if (!pEntry->IsFunction()) return -1;   // Kept (messages): silently
    MakeOverload(key, std::move(pFunction));
    return 1;
}

int CPouTable::AddNew(const CName& key, std::unique_ptr<CPou> pPou)
{
    if (CProgram* pProgram = pPou->AsProgram()) {
        const auto node = m_ProgramNodes.find(pProgram->m_Name);
        if (node == m_ProgramNodes.end()) {
            m_Errors.ErrProgramNotSupported(pProgram->m_Location);
            return -1;
        }
        FillProgram(*pProgram, *node->second);
    }
    const std::size_t position = m_Order.size();
    m_Order.push_back(nullptr);
    SetPosition(key, pPou.get(), position);
    m_Owned.push_back(std::move(pPou));
    return 1;
}

void CPouTable::SetPosition(const CName& key, CPou* pPou, std::size_t position)
{
    key.m_Pou.Set(m_Identity, pPou);
    pPou->m_Position = static_cast<std::int32_t>(position);
    m_Order[position] = pPou;
}

int CPouTable::RefuseDuplicate(const CPou& declaredBefore, const CPou& pou)
{
    m_Errors.ErrPouDeclared(declaredBefore, pou.m_Location);
    return -1;
}

// Kept (sources): the first member with as many parameters decides. If its types differ the function is taken, even if
// a later member is the same; and a function whose count no member has is refused without a word.
int CPouTable::AddToOverload(CFunctionOverLoad& set, std::unique_ptr<CFunction> pFunction)
{
    const CFormTree::Place place = set.GetForms().Begin(pFunction->m_Parameters.size());
    if (place == CFormTree::g_NoPlace) return -1;
    const CFunction& member = set.GetForms().GetFirst(place);
    if (HaveSameTypes(member, *pFunction)) return RefuseDuplicate(member, *pFunction);
    set.Add(std::move(pFunction));
    return 1;
}

// The set takes the place of the function that was there, and its name and location.
void CPouTable::MakeOverload(const CName& key, std::unique_ptr<CFunction> pFunction)
{
    const auto position = static_cast<std::size_t>(FindPouExact(key)->m_Position);
    std::unique_ptr<CFunction> pFirst(m_Owned[position].release()->AsFunction());
    auto pSet = std::make_unique<CFunctionOverLoad>(pFirst->m_Name, pFirst->m_Location);
    pSet->Add(std::move(pFirst));
    pSet->Add(std::move(pFunction));
    SetPosition(key, pSet.get(), position);
    m_Owned[position] = std::move(pSet);
}

CFunctionOverLoad* CPouTable::FindOverload(std::string_view name) const
{
    CPou* pPou = FindPou(name);
    return pPou ? pPou->AsOverload() : nullptr;
}

CPou* CPouTable::FindPou(std::string_view name) const
{
    const CName* pKey = m_Names.FindKey(name);
    return pKey ? FindPouExact(*pKey) : nullptr;
}

CPou* CPouTable::FindPouExact(std::string_view name) const
{
    const CName* pName = m_Names.Find(name);
    return pName ? FindPouExact(*pName) : nullptr;
}

// Kept (targets): the name is looked up as the target spells it, so one with capitals never counts as declared: it is
// reported as missing, or made and then refused as a duplicate.
std::vector<std::string> CPouTable::AddAutomaticPrograms()
{
    std::vector<std::string> missed;
    constexpr SourceLocation nowhere{-1, -1, -1, -1, "automatic declaration"};
    CXmlNode* pNode = m_Target.m_Root.FindFirstChild(g_ProgramPath);
    for (; pNode; pNode = m_Target.m_Root.FindNextChild()) {
        std::string name;
        pNode->GetAttribute(name, "name");
        if (FindPouExact(name)) continue;
        const bool isRequired = pNode->GetAttributeBool("required");
        const bool isAuto = pNode->GetAttributeBool("auto");
        const bool hasCapitals = name != ToLowerCase(name);
        if (hasCapitals && (isRequired || (isAuto && FindPou(name)))) missed.push_back(name);
        if (isRequired) {
            m_Errors.ErrProgramRequired(name);
            continue;
        }
        if (!isAuto) continue;
        auto pProgram = std::make_unique<CProgram>(std::move(name), nowhere);
        pProgram->m_Automatic = true;
        AddPou(std::move(pProgram));
    }
    return missed;
}
