// The program organisation units: what begins, finishes and leaves the scope of one.

#include "semantics/Norvane.h"

#include "files/Print.h"
#include "model/Member.h"
#include "model/Pou.h"
#include "model/Type.h"
#include "model/TypeAny.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"

// A function without variable blocks leaves the list as it finds it; the next POU begins with an empty one.
void CNorvane::BeginPou(int kind)
{
    m_Notes.EndPou(nullptr);   // what types and global variables have drawn since the last POU is of none
    m_PouKind = kind;
    if (kind == FUNCTION || kind == FUNCTION_BLOCK) m_Parameters.clear();
}

void CNorvane::EndPouKind()
{
    m_PouKind = 0;
}

// The child of that kind between the name and the statements; null if the POU has none.
static CNode* FindPart(const CNode* pNode, int kind)
{
    for (int i = 1; i + 1 < pNode->GetChildCount(); ++i)
        if (pNode->Child(i)->nKind == kind) return pNode->Child(i);
    return nullptr;
}

void CNorvane::TakeParameters(CPou& pou)
{
    pou.m_Parameters = std::move(m_Parameters);
    m_Parameters.clear();
    pou.m_ParameterCount = static_cast<std::int32_t>(pou.m_Parameters.size());
}

// ---- Functions.

CNode* CNorvane::MakeReturnType(CNode* pNode, CType* pType)
{
    pNode->pType = pType ? pType : m_DataTypes.m_ErrorType;
    pNode->pName = &m_Names.Intern(pNode->pType->m_Name);
    return pNode;
}

// The function's result is a local variable of the function's name.
void CNorvane::AddReturnVariable(const CName& name, CNode* pReturnType)
{
    CType* pType = pReturnType->pType ? pReturnType->pType : m_DataTypes.m_ErrorType;
    auto pVariable = std::make_unique<CVariable>();
    pVariable->m_Name = name.GetText();
    pVariable->m_Type = pType->GetBaseType();
    if (pType->m_IsAlias && pType->m_InitValue) pVariable->m_InitValue = pType->m_InitValue->Clone();
    pReturnType->pVariable = pVariable.get();
    m_LocalSymbols.Add(std::move(pVariable));
}

// FUNCTION: name, [RETURN_TYPE], [VAR_BLOCK], statements.
void CNorvane::AddFunction(CNode* pNode)
{
    auto pFunction = std::make_unique<CFunction>(std::string(pNode->Child(0)->GetName()), pNode->location);
    const CNode* pReturnType = FindPart(pNode, RETURN_TYPE);
    if (FindPart(pNode, VAR_BLOCK)) TakeParameters(*pFunction);
    if (pReturnType) {
        pFunction->m_ReturnType = pReturnType->pType;
        pFunction->m_ReturnVariable = pReturnType->pVariable;
    }

    CTypeAny* pAny = nullptr;
    const int usesAny = CheckAnyParameters(*pFunction, pAny);
    if (usesAny == -1) return;
    CFunction* pDeclared = pFunction.get();
    if (usesAny == 1) {
        pNode->SetPou(pDeclared);
        pDeclared->m_Used = true;   // its code stays in the output, since the table doesn't have it; so do its notes
        m_AnyFunctions.push_back(std::move(pFunction));   // no call finds it, but its tree refers to it
        return;
    }
    const bool isTaken = m_Pous.AddPou(std::move(pFunction)) == 1;
    // Nothing uses such a function, so the note can't depend on its being used.
    if (!isTaken || pDeclared->m_IsHidden)
        m_Notes.AddOutsidePou(Note::UnreachableForm, pNode->location, pNode->Child(0)->GetName());
    if (!isTaken) return;
    pNode->SetPou(pDeclared);
    if (pReturnType && pReturnType->pType && pReturnType->pType->IsAggregate())
        m_Errors.ErrReturnsStruct(pReturnType->location);
}

// 1 with the one ANY type that the function uses, 0 if it uses none, -1 if it mixes several.
int CNorvane::CheckAnyParameters(CFunction& function, CTypeAny*& pAny)
{
    std::vector<CType*> types;
    for (const std::unique_ptr<CVariable>& pParameter : function.m_Parameters) types.push_back(pParameter->m_Type);
    types.push_back(function.m_ReturnType);

    pAny = nullptr;
    for (CType* pType : types) {
        CTypeAny* pFound = pType ? pType->AsAny() : nullptr;
        if (!pFound) continue;
        if (pAny && pAny != pFound) {
            // Wanted (messages): a line of its own, and no error is counted.
            Print("type ANY must be of the same type\n");
            return -1;
        }
        pAny = pFound;
    }
    return pAny ? 1 : 0;
}

// ---- Function blocks.

static std::unique_ptr<CMember> MakeMember(const CVariable& variable)
{
    auto pMember = std::make_unique<CMemberFB>(variable.m_Name, variable.m_Type);
    if (variable.m_InitValue) pMember->m_InitValue = variable.m_InitValue->Clone();
    if (variable.GetIndex()) pMember->m_Index = variable.GetIndex()->Clone();
    pMember->m_IsOutput = variable.m_IsOutput;
    pMember->m_IsInOut = variable.m_IsInOut;
    pMember->m_IsInput = variable.m_IsInput;
    return pMember;
}

// From here on the block's name is that of a type, and instances are variables of a structure type.
void CNorvane::AddFunctionBlock(CNode* pNode)
{
    auto pBlock = std::make_unique<CFunctionBlock>(std::string(pNode->Child(0)->GetName()), pNode->location);
    TakeParameters(*pBlock);
    CFunctionBlock* pDeclared = pBlock.get();
    if (m_Pous.AddPou(std::move(pBlock)) != 1) return;
    pNode->SetPou(pDeclared);

    auto pType = std::make_unique<CTypeStructFB>(pDeclared->m_Name);
    for (const std::unique_ptr<CVariable>& pVariable : pDeclared->m_Parameters)
        pType->AddMember(MakeMember(*pVariable));
    pType->m_FunctionBlock = pDeclared;
    pDeclared->m_Type = pType.get();
    m_DataTypes.AddType(std::move(pType));
}

// ---- Programs.

void CNorvane::AddProgram(CNode* pNode)
{
    auto pProgram = std::make_unique<CProgram>(std::string(pNode->Child(0)->GetName()), pNode->location);
    CProgram* pDeclared = pProgram.get();
    if (m_Pous.AddPou(std::move(pProgram)) == 1) pNode->SetPou(pDeclared);
}

// The mark by which a program knows that its initial values have been written.
void CNorvane::AddProgramInit()
{
    auto pVariable = std::make_unique<CVariable>();
    pVariable->m_Name = "__ProgramInit";
    pVariable->m_Type = m_DataTypes.m_IntType;
    m_LocalSymbols.Add(std::move(pVariable));
}

// The memory handler's list goes first, since it points into the table. Trees and functions keep their
// pointers too; nobody follows those once the POU's text has been written.
void CNorvane::EndPouScope()
{
    m_Memory.ClearLocalVariables();
    m_LocalSymbols.Clear();
    m_ExternalVariables.clear();
}
