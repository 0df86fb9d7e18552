// Names, types and blocks: what a declaration enters where. Nothing is deferred. Each reduction of the parser
// calls in here at once, so a name can be used below its declaration only.

#include "semantics/Norvane.h"

#include "model/Member.h"
#include "model/Type.h"
#include "model/TypeArray.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"

static std::unique_ptr<CArrayOfArrayIndex> CloneOrNull(const CArrayOfArrayIndex* pIndex)
{
    return pIndex ? pIndex->Clone() : nullptr;
}

// ---- Blocks.

struct BlockBit
{
    int token;
    int flag;
};

static constexpr BlockBit g_BlockBits[] = {
    {VAR, InVar},
    {VAR_INPUT, InVarInput},
    {VAR_OUTPUT, InVarOutput},
    {VAR_IN_OUT, InVarInOut},
    {VAR_GLOBAL, InVarGlobal},
    {VAR_EXTERNAL, InVarExternal},
    {TYPE_USER, InType},
    {STRUCT_TYPE_USER, InStruct},
};

static int GetBlockBit(int token)
{
    for (const BlockBit& entry : g_BlockBits)
        if (entry.token == token) return entry.flag;
    return 0;
}

// Two attributes can only be CONSTANT and RETAIN, in either order.
static int GetAttributeBits(const CNode* pAttributes)
{
    if (!pAttributes || pAttributes->GetChildCount() == 0) return 0;
    if (pAttributes->GetChildCount() > 1) return WithConstant | WithRetain;
    return pAttributes->Child(0)->nKind == RETAIN ? WithRetain : WithConstant;
}

void CNorvane::BeginVarBlock(int token, const CNode* pAttributes)
{
    m_VarBlockFlags = GetBlockBit(token);
    if (m_VarBlockFlags == InStruct) {
        // Its names are known already, but they are read off the finished tree.
        m_StructInProgress = std::make_unique<CTypeStruct>("tmp");
        return;
    }
    m_VarBlockFlags |= GetAttributeBits(pAttributes);
}

void CNorvane::EndVarBlock()
{
    m_VarBlockFlags = 0;
}

bool CNorvane::IsInterfaceBlock() const
{
    return (m_VarBlockFlags & (InVarInput | InVarOutput | InVarInOut)) != 0;
}

// A function block's private variables join too: they become members of its instances.
bool CNorvane::JoinsParameters() const
{
    if (m_PouKind == FUNCTION) return IsInterfaceBlock();
    return m_PouKind == FUNCTION_BLOCK && !(m_VarBlockFlags & InVarGlobal);
}

// ---- Names.

// A whole list of names is read before the first of them is entered, so "a, a : INT" isn't noticed here.
CNode* CNorvane::MakeDeclaredIdentifier(const CName& name, const SourceLocation& location)
{
    CNode* pNode = m_Nodes.MakeNode(IDENTIFIER, location);
    pNode->pName = &name;
    const bool isGlobal = (m_VarBlockFlags & InVarGlobal) != 0;

    // Locals are there for a global block only if the POU in front of it was given up. Both are reported.
    const CVariable* pLocal = m_LocalSymbols.Find(name);
    if (pLocal) m_Errors.ErrVariableDeclared(*pLocal, location);
    const CVariable* pGlobal = isGlobal ? m_GlobalSymbols.Find(name) : nullptr;
    if (pGlobal) m_Errors.ErrVariableDeclared(*pGlobal, location);

    if (pLocal || pGlobal) pNode->nKind = ERROR_;
    return pNode;
}

void CNorvane::SetDirectAddress(CNode* pList, const CName& address)
{
    for (CNode* pName : pList->m_Children) pName->SetDirect(&address);
}

// ---- The central declarator.

// What is declared follows from the block: members in STRUCT, renamed types in TYPE, else variables.
void CNorvane::AddVariables(CNode* pList, CType* pType, const CInitValue* pInit)
{
    if (!pType) pType = m_DataTypes.m_ErrorType;
    pList->pName = &m_Names.Intern(pType->m_Name);
    if (m_VarBlockFlags & InStruct) AddMembers(pList, pType, pInit);
    else if (m_VarBlockFlags & InType) AddAliases(pList, pType, pInit);
    else AddBlockVariables(pList, pType, pInit);

    // Also where no name was left to take them, the ranges belong to this declaration only.
    m_ArrayPending = false;
    m_PendingIndex.reset();
}

// Kept (addresses): a member that is there already is reported and added all the same, and of several names of one
// array declaration only the first owns the bounds.
void CNorvane::AddMembers(CNode* pList, CType* pType, const CInitValue* pInit)
{
    if (pType->IsAny()) m_Errors.ErrAnyNotAllowed(pList->location);
    if (!m_StructInProgress) return;
    const CTypeArrayUser* pUser = pType->AsArrayUser();
    const bool isArray = m_ArrayPending;
    for (const CNode* pName : pList->m_Children) {
        if (m_StructInProgress->FindMember(pName->GetName()))
            m_Errors.ErrMemberDeclared(pName->GetName(), pName->location);

        auto pMember = std::make_unique<CMember>(std::string(pName->GetName()), pType);
        pMember->m_InitValue = CloneOrNull(pInit);
        if (m_ArrayPending) {
            pMember->m_Index = std::move(m_PendingIndex);
            m_ArrayPending = false;
        } else if (isArray) {
            m_Notes.Add(Note::OnlyFirstIsArray, pName->location, pName->GetName());
        }
        if (pUser) {
            pMember->m_Index = CloneOrNull(pUser->m_Index.get());
            pMember->m_Type = pUser->m_ElementType;
            if (!pInit) pMember->m_InitValue = CloneOrNull(pType->m_InitValue.get());
        } else if (!pInit && pType->m_IsAlias && !IsBlank(pType->m_InitValue.get())) {
            m_Notes.Add(Note::ValueDropped, pName->location, pName->GetName());   // unlike a variable, it doesn't take it
        }
        m_StructInProgress->AddMember(std::move(pMember));
    }
}

void CNorvane::AddAliases(CNode* pList, CType* pType, const CInitValue* pInit)
{
    if (pType->IsAny()) m_Errors.ErrAnyNotAllowed(pList->location);
    for (const CNode* pName : pList->m_Children) m_DataTypes.AddAlias(pName->GetName(), pType, pInit);
}

void CNorvane::AddBlockVariables(CNode* pList, CType* pType, const CInitValue* pInit)
{
    if (m_PouKind == PROGRAM && IsInterfaceBlock()) {
        m_Errors.ErrProgramParameters(pList->location);
        return;
    }
    if (pType->IsAny() && !IsInterfaceBlock()) m_Errors.ErrAnyNotAllowed(pList->location);
    for (CNode* pName : pList->m_Children)
        if (pName->nKind != ERROR_) AddVariable(pName, pType, pInit);
}

// The order of the steps is the order of their messages, name by name.
void CNorvane::AddVariable(CNode* pName, CType*& pType, const CInitValue* pInit)
{
    const CInitValue* pValue = pInit;
    std::unique_ptr<CVariable> pVariable = MakeBlockVariable(pType, pValue);
    pVariable->m_Name = pName->GetName();
    pVariable->m_Location = pName->location;
    pName->pType = pVariable->m_Type;
    pName->pVariable = pVariable.get();

    if (pName->GetDirect()) PlaceAtAddress(*pVariable, pName);
    if (pInit && JoinsParameters()) WarnInitialisedParameter(pName->location);
    pVariable->m_InitValue = CloneOrNull(pValue);
    pName->SetInit(m_Nodes.KeepValue(CloneOrNull(pValue)));
    if (m_VarBlockFlags & InVarExternal) NoteExternal(*pVariable);
    EnterVariable(std::move(pVariable));
}

// The name means the global, which starts with its own value and is what its own declaration says.
void CNorvane::NoteExternal(const CVariable& variable)
{
    const CVariable* pGlobal = m_GlobalSymbols.Find(variable.m_Name);
    const bool areArrays = pGlobal && variable.IsArray() && pGlobal->IsArray();   // each declaration makes its own type
    if (pGlobal && !areArrays && !IsSameType(variable.m_Type, pGlobal->m_Type))
        m_Notes.Add(Note::OtherGlobal, variable.m_Location, variable.m_Name);
    const CInitValue* pGlobalValue = pGlobal ? pGlobal->m_InitValue.get() : nullptr;
    if (!IsSameInit(variable.m_InitValue.get(), pGlobalValue) && variable.m_InitValue)
        m_Notes.Add(Note::ValueDropped, variable.m_Location, variable.m_Name);
}

// A variable of the open block and the type, and in pInit the value that it starts with: of a type that the
// user named the type's default where none is given, of any other none.
// Kept (sources): an array type with bounds gives them to the variable and is the plain array type from then on, so in
// "a, b : t" only a has bounds, and only a the type's default.
std::unique_ptr<CVariable> CNorvane::MakeBlockVariable(CType*& pType, const CInitValue*& pInit)
{
    const CTypeArrayUser* pUser = pType->AsArrayUser();
    std::unique_ptr<CVariable> pVariable;
    if (m_ArrayPending || pUser) {
        auto pArray = std::make_unique<CVariableArray>();
        pArray->m_Index = CloneOrNull(pUser ? pUser->m_Index.get() : m_PendingIndex.get());
        pVariable = std::move(pArray);
    } else {
        pVariable = std::make_unique<CVariable>();
    }
    if (!pInit && (pUser || pType->m_IsAlias)) pInit = pType->m_InitValue.get();
    if (pUser) pType = pUser->m_ElementType;

    pVariable->m_Type = pType->GetBaseType();
    pVariable->m_IsConstant = (m_VarBlockFlags & WithConstant) != 0;
    pVariable->m_IsRetain = (m_VarBlockFlags & WithRetain) != 0;
    pVariable->m_IsLocal = (m_VarBlockFlags & InVarGlobal) == 0;
    pVariable->m_IsInput = (m_VarBlockFlags & InVarInput) != 0;
    pVariable->m_IsOutput = (m_VarBlockFlags & InVarOutput) != 0;
    pVariable->m_IsInOut = (m_VarBlockFlags & InVarInOut) != 0;
    return pVariable;
}

// An input may stand at an address. A refused address is reported there, and the variable is declared anyway.
void CNorvane::PlaceAtAddress(CVariable& variable, const CNode* pName)
{
    if (variable.IsHeldByPointer()) m_Errors.ErrDirectAsFormal(pName->location);
    variable.m_DirectAddress = pName->GetDirect()->GetText();
    m_Memory.SetDirectAddress(&variable, pName->location, /*checkAlignment=*/true);
    // Inside the block a variable is a member of the instance, which lies somewhere else.
    if (m_PouKind == FUNCTION_BLOCK) m_Notes.Add(Note::AddressIgnored, pName->location, variable.m_Name);
}

// The value is kept in any case.
void CNorvane::WarnInitialisedParameter(const SourceLocation& where)
{
    if (m_PouKind == FUNCTION) m_Errors.WarnActualInitialized(where);
    else if (m_VarBlockFlags & InVarInOut) m_Errors.WarnUselessAssignment(where);
}

void CNorvane::EnterVariable(std::unique_ptr<CVariable> pVariable)
{
    std::unique_ptr<CVariable> pParameter = JoinsParameters() ? pVariable->Clone() : nullptr;
    // An external is entered nowhere, so that the name goes on meaning the global.
    if (m_VarBlockFlags & InVarExternal) m_ExternalVariables.push_back(std::move(pVariable));
    else if (pVariable->m_IsLocal) m_LocalSymbols.Add(std::move(pVariable));
    else m_GlobalSymbols.Add(std::move(pVariable));
    if (pParameter) m_Parameters.push_back(std::move(pParameter));
}

// ---- Structures.

// STRUCT: child 0 is the list of names. Each name has a type of its own, the last one the original.
void CNorvane::RegisterStruct(CNode* pNode)
{
    std::unique_ptr<CTypeStruct> pStruct = std::move(m_StructInProgress);
    if (!pStruct) return;
    const CNode* pList = pNode->Child(0);
    const int count = pList->GetChildCount();
    for (int i = 0; i < count; ++i) {
        std::unique_ptr<CTypeStruct> pType = i + 1 < count ? pStruct->Clone() : std::move(pStruct);
        pType->m_Name = pList->Child(i)->GetName();
        m_DataTypes.AddType(std::move(pType));
    }
}
