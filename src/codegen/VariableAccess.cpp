// Reading, writing and addressing variables: everything that depends on where a variable lives. What these
// functions append ends without a line end, which callers add.

#include "codegen/CodeGeneration.h"

#include "codegen/TextPieces.h"
#include "files/Fatal.h"
#include "files/Format.h"
#include "frontend/ErrorHandler.h"
#include "frontend/Node.h"
#include "model/ArrayIndex.h"
#include "model/Member.h"
#include "model/Pou.h"
#include "model/Type.h"
#include "model/TypeArray.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"
#include "semantics/Norvane.h"
#include "semantics/Wrapping.h"
#include "target/MemoryHandler.h"

#include <algorithm>

// A subscript list whose value only the machine knows.
struct CCodeGeneration::RuntimeSubscript
{
    const CNode* pList;
    const CArrayOfArrayIndex* pIndex;
    const CType* pArrayType;
    int level;
};

// An access path from its root variable to where it ends, all constant parts added up.
struct CCodeGeneration::AccessPath
{
    const CVariable* pVariable;
    std::int64_t offsetBytes;                   // in the area; run-time subscripts count as 0
    const CType* pType;                         // at the end; an alias stays one
    std::string text;                           // for the comment: "s.a[2]"
    int bit = 0;                                // of a BOOL element or member in its byte
    const CArrayOfArrayIndex* pIndex;           // of the array that the next subscripts belong to
    int level = 0;                              // and their level in it
    const CTypeArray* pLastArray = nullptr;     // that the last subscripts go into
    std::vector<RuntimeSubscript> subscripts{}; // in order
    bool missesBits = false;                    // of a BOOL array: they lie somewhere else

    bool EndsInBool() const { return pType && pType->IsBool(); }
    bool HasBoolElements() const { return pLastArray && pLastArray->m_Element && pLastArray->m_Element->IsBool(); }
};

static bool HasSteps(const CNode* pNode)
{
    return pNode->GetChildCount() > 1;
}

static int ToOffset(std::int64_t offsetBytes)
{
    return static_cast<std::int32_t>(offsetBytes);
}

// ---- Members of the function block being generated

// The member that the variable became; null outside a function block and for a variable of somebody else.
const CMember* CCodeGeneration::FindCurrentFbMember(const CVariable* pVariable, int& position) const
{
    if (!m_CurrentFb || !pVariable->m_IsLocal) return nullptr;
    const CFunctionBlock* pFb = m_CurrentFb->AsFunctionBlock();
    if (!pFb || !pFb->m_Type) return nullptr;
    return pFb->m_Type->FindMember(pVariable->m_Name, &position);
}

// The slot behind the instance pointer in which the frame has put the member's address.
std::int64_t CCodeGeneration::GetSlotOffset(int position) const
{
    const std::int64_t slotNumber = std::int64_t{position} + 1;   // behind the slot of the instance
    return slotNumber * m_MemoryHandler->GetPointerSlotSize();
}

//	PUSH(UDINT) [local+8]	;&x         the slot
//	PUSH*(INT) [local+8]	;x          through it; the tab in front is the caller's
void CCodeGeneration::GenerateFbMemberAccess(const CNode* pNode, FbAccessForm form, TextBuffer& text)
{
    const CVariable* pVariable = pNode->pVariable;
    int position = 0;
    const CMember* pMember = pVariable ? FindCurrentFbMember(pVariable, position) : nullptr;
    if (!pMember) InternalFault("a variable is no member of the function block being generated");

    switch (form) {
    case FbAccessForm::Push: text.Append("\tPUSH"); break;
    case FbAccessForm::Pop: text.Append("\tPOP"); break;
    case FbAccessForm::PushThrough: text.Append("PUSH*"); break;
    case FbAccessForm::PopThrough: text.Append("POP*"); break;
    default: break;
    }
    const bool isValue = form != FbAccessForm::Push && !IsAggregate(pMember->m_Type);
    text.Append(isValue ? SuffixOf(pMember->m_Type) : PointerSuffix());
    text.Append(" [local+", GetSlotOffset(position), isValue ? "]\t;" : "]\t;&", pVariable->m_Name);
}

void CCodeGeneration::GenerateFbScalar(const CNode* pNode, AccessMode mode, TextBuffer& text)
{
    if (mode == AccessMode::Address) {
        GenerateFbMemberAccess(pNode, FbAccessForm::Push, text);
        return;
    }
    constexpr int firstThroughForm = 3;   // ORDER ACCESS
    text.Append('\t');
    GenerateFbMemberAccess(pNode, static_cast<FbAccessForm>(static_cast<int>(mode) + firstThroughForm), text);
}

// ---- Walking a path

void CCodeGeneration::EnterMember(const CNode* pStep, AccessPath& path)
{
    const CTypeStruct* pStruct = path.pType ? path.pType->AsStruct() : nullptr;
    const CMember* pMember = pStruct ? pStruct->FindMember(pStep->GetName()) : nullptr;
    if (!pMember) InternalFault("the path " + path.text + "." + std::string(pStep->GetName()) + " has no such member");

    path.offsetBytes = WrapAdd(path.offsetBytes, pMember->m_Offset);
    path.level = 0;
    path.pType = pMember->m_Type;
    if (path.pType && path.pType->IsArray()) path.pIndex = pMember->m_Index.get();
    if (path.EndsInBool()) path.bit = pStruct->GetBoolBit(pMember);
    path.text += '.';
    path.text += pStep->GetName();
}

// Inner arrays of BOOL have no distance from each other: behind the first one there is nothing to be found.
static bool IsInnerBoolArray(const CTypeArray& array)
{
    const CType* pElement = array.m_Element;
    if (!pElement || !pElement->IsArray() || array.GetInnermostStride() != 0) return false;
    while (const CTypeArray* pInner = pElement ? pElement->AsArray() : nullptr) pElement = pInner->m_Element;
    return pElement && pElement->IsBool();
}

// Where it is the machine that takes the subscript, it may be any of the bounds.
static bool MayLeaveFirstElement(std::int64_t element, const CArrayOfArrayIndex* pIndex, int level)
{
    if (element >= 0) return element > 0;
    const CArrayIndex* pBounds = pIndex ? pIndex->GetLevel(level) : nullptr;
    return pBounds && pBounds->GetProduct() > 1;
}

void CCodeGeneration::EnterElement(const CNode* pStep, AccessPath& path)
{
    const CType* pArrayType = path.pType;
    const CTypeArray* pArray = pArrayType ? pArrayType->AsArray() : nullptr;
    if (!pArray) InternalFault("the path " + path.text + " has subscripts and is no array");

    std::int64_t element = EvalLinearIndex(pStep, path.pIndex, path.level);
    if (IsInnerBoolArray(*pArray) && MayLeaveFirstElement(element, path.pIndex, path.level)) path.missesBits = true;
    if (element < 0) {
        path.subscripts.push_back({pStep, path.pIndex, pArrayType, path.level});
        element = 0;
    }
    path.pLastArray = pArray;
    path.pType = pArray->m_Element;
    constexpr int bitsInByte = 8;
    std::int64_t add = 0;
    if (path.EndsInBool()) {
        path.bit = static_cast<int>(element % bitsInByte);
        add = WrapMul(element / bitsInByte, path.pType->GetPlacingAlign());
    } else {
        add = WrapMul(GetElementStride(pArrayType, path.pIndex, path.level, -1), element);
    }
    path.offsetBytes = WrapAdd(path.offsetBytes, add);
    ++path.level;
    path.text += '[';
    path.text += std::to_string(ToOffset(element));
    path.text += ']';
}

// Of a path that ends in a bit of an array all subscripts count bits, those of arrays of something else too.
bool CCodeGeneration::StepsOverBytesToBits(const AccessPath& path)
{
    const auto countsBytes = [](const RuntimeSubscript& subscript) {
        const CTypeArray* pArray = subscript.pArrayType->AsArray();
        return !pArray->m_Element || !pArray->m_Element->IsBool();
    };
    return path.HasBoolElements() && std::any_of(path.subscripts.begin(), path.subscripts.end(), countsBytes);
}

CCodeGeneration::AccessPath CCodeGeneration::WalkPath(const CNode* pNode)
{
    const CVariable* pVariable = pNode->pVariable;
    AccessPath path{.pVariable = pVariable,
                    .offsetBytes = pVariable->m_Offset,
                    .pType = pVariable->m_Type,
                    .text = pVariable->m_Name,
                    .pIndex = pVariable->GetIndex()};
    for (int i = 1; i < pNode->GetChildCount(); ++i) {
        const CNode* pStep = pNode->Child(i);
        if (pStep->nKind == NEW_ID) EnterMember(pStep, path);
        else if (pStep->nKind == EXP_LIST) EnterElement(pStep, path);
    }
    if (StepsOverBytesToBits(path)) path.missesBits = true;
    return path;
}

// ---- The access

namespace
{

struct AccessWords
{
    std::string_view mnemonic;     // with its tab
    std::string_view star;         // "*": through the pointer that memory holds; "&": its address
    bool asPointer = false;        // the suffix is the pointer type's
};

}   // namespace

static AccessWords GetAccessWords(const CNode* pNode, AccessMode mode)
{
    const CVariable* pVariable = pNode->pVariable;
    const bool isPointer = pVariable->IsHeldByPointer() && !IsAggregate(pVariable->m_Type);
    AccessWords words{"\tPUSH", isPointer ? "*" : "", pNode->bThroughInOut};
    switch (mode) {
    case AccessMode::Read: break;
    case AccessMode::Write: words.mnemonic = "\tPOP"; break;
    case AccessMode::Address:
        // The address of what a parameter points at is the pointer itself: this is how it is passed on.
        if (isPointer) words.asPointer = true;
        words.star = isPointer ? "" : "&";
        break;
    case AccessMode::ReadThrough:
        words.star = "*";
        words.asPointer = false;
        break;
    }
    return words;
}

// What an address in a direct variable's place, or a value that stands where a variable is needed, ends in.
void CCodeGeneration::ReportNoVariable(const CNode* pNode)
{
    if (pNode->nKind == DIRECT_VARIABLE) {
        m_ErrorHandler->ErrInvalidAddress(pNode->location);
        return;
    }
    const CType* pType = pNode->pType ? pNode->pType : m_Norvane.m_DataTypes.m_ErrorType;
    m_ErrorHandler->ErrCannotAssign(pType, pNode->location);
}

bool CCodeGeneration::GenerateVariableAccess(const CNode* pNode, AccessMode mode, TextBuffer& text)
{
    const CVariable* pVariable = pNode->pVariable;
    if (!pNode->IsVariableAccess() || !pVariable) {
        ReportNoVariable(pNode);
        return false;
    }
    const bool isFbMember = m_CurrentFb && pVariable->m_IsLocal;
    if (isFbMember && !IsAggregate(pVariable->m_Type)) {
        GenerateFbScalar(pNode, mode, text);
        return false;
    }
    const AccessPath path = WalkPath(pNode);
    if (path.missesBits) m_Norvane.m_Notes.Add(Note::BoolArray, pNode->location, pVariable->m_Name);
    const bool isPointer = isFbMember || (HasSteps(pNode) && pVariable->IsHeldByPointer());
    const bool isThrough = isPointer ? GeneratePointerAccess(pNode, path, mode, text)
                                     : GenerateDirectAccess(pNode, path, mode, text);
    if (isThrough && mode == AccessMode::Address) m_Norvane.m_Notes.Add(Note::ValueForAddress, pNode->location);
    return isThrough;
}

// The variable holds a pointer to the data, so the place is computed at run time.
//
//	PUSH(UDINT) [local+8]	;&s
//	PUSH(UDINT)	4
//	ADD(UDINT)
//	PUSHI(INT)
bool CCodeGeneration::GeneratePointerAccess(const CNode* pNode, const AccessPath& path, AccessMode mode,
                                            TextBuffer& text)
{
    if (m_CurrentFb) GenerateFbMemberAccess(pNode, FbAccessForm::Push, text);
    else text.Append("\tPUSH", OperandOf(path.pVariable));

    const TypeSuffix pointer = PointerSuffix();
    const std::int64_t distance = WrapSub(path.offsetBytes, path.pVariable->m_Offset);
    if (distance > 0 || path.bit > 0) {
        text.Append("\n\tPUSH", pointer, '\t', PackedOffset{distance, path.bit}, '\n');
        text.Append("\tADD", pointer);
    }
    text.Append('\n');

    const AccessWords words = GetAccessWords(pNode, mode);
    if (!path.subscripts.empty()) {
        text.Append("\t;runtime array address\n");
        GenerateRuntimeSubscripts(path, text);
    } else if (mode == AccessMode::Address && m_CurrentFb) {
        return false;   // the address is on the stack; the line is closed already, so an empty one follows
    }
    // Kept (code): without a function block an address is asked for in vain, the value comes in its place.
    text.Append(words.mnemonic, 'I', SuffixOf(pNode->pType));
    return true;
}

//	PUSH*(BOOL)	[local+4].0	;done
bool CCodeGeneration::GenerateDirectAccess(const CNode* pNode, const AccessPath& path, AccessMode mode,
                                           TextBuffer& text)
{
    const CVariable* pVariable = path.pVariable;
    const std::string_view area = GetAreaPrefix(pVariable);
    AccessWords words = GetAccessWords(pNode, mode);
    if (!path.subscripts.empty()) {
        GenerateRuntimeBase(path, area, text);
        GenerateRuntimeSubscripts(path, text);
        text.Append(words.mnemonic, 'I', SuffixOf(pNode->pType));
        return true;
    }

    // Kept (code): where a parameter is wanted as a whole, the place of its pointer comes instead.
    if (mode == AccessMode::Address && pVariable->IsHeldByPointer() && IsAggregate(pVariable->m_Type))
        m_Norvane.m_Notes.Add(Note::PointerCopied, pNode->location, pVariable->m_Name);
    if (IsAggregate(pNode->pType) && !pNode->bThroughInOut && !pVariable->IsHeldByPointer()) words.star = "&";
    MemoryPlace place{area, ToOffset(path.offsetBytes)};
    if (pVariable->m_Type && pVariable->m_Type->IsBool()) place.bit = pVariable->m_BitOffset;
    else if (IsAggregate(pVariable->m_Type) && path.EndsInBool()) place.bit = path.bit;
    const TypeSuffix suffix = words.asPointer ? PointerSuffix() : SuffixOf(path.pType);
    text.Append(words.mnemonic, words.star, suffix, '\t', place, "\t;", path.text);
    return false;
}

//	;runtime array address
//	PUSH&(INT)[local+12]	;&x[0]
//
// Kept (code): no tab in front of the bracket here.
void CCodeGeneration::GenerateRuntimeBase(const AccessPath& path, std::string_view area, TextBuffer& text)
{
    constexpr int bitsInByte = 8;
    std::int64_t offsetBytes = path.offsetBytes;
    std::optional<int> bit;
    if (path.EndsInBool() && path.HasBoolElements()) {
        bit = 0;
    } else if (path.EndsInBool()) {   // a member of an element
        bit = path.bit % bitsInByte;
        offsetBytes = WrapAdd(offsetBytes, path.bit / bitsInByte);
    }
    text.Append("\t;runtime array address\n");
    text.Append("\tPUSH&", SuffixOf(path.pType), MemoryPlace{area, ToOffset(offsetBytes), bit}, "\t;&", path.text, '\n');
}

//	PUSH(INT)	[global+0]	;i
//	ADDRESS(INT) 2 1 5
//
// Kept (code): the elements of the path's last array decide for all subscripts whether strides count bits.
void CCodeGeneration::GenerateRuntimeSubscripts(const AccessPath& path, TextBuffer& text)
{
    const std::string_view mnemonic = path.HasBoolElements() ? "\tADDRESSBIT" : "\tADDRESS";
    for (const RuntimeSubscript& subscript : path.subscripts) {
        const CArrayIndex* pBounds = subscript.pIndex->GetLevel(subscript.level);
        const int count = subscript.pList->GetChildCount();
        for (int i = 0; i < count; ++i) {
            CNode* pExpression = subscript.pList->Child(i);
            const CIndex& bounds = pBounds->m_Dimensions[static_cast<std::size_t>(i)];
            const std::int64_t stride =
                GetElementStride(subscript.pArrayType, subscript.pIndex, subscript.level, count == 1 ? -1 : i);
            if (count > 1 && MissesElements(subscript, i))
                m_Norvane.m_Notes.Add(Note::NestedSubscripts, subscript.pList->location);
            GenerateNode(pExpression, text);
            text.Append(mnemonic, SuffixOf(pExpression), ' ', ToOffset(stride), ' ', bounds.m_Low, ' ', bounds.m_High, '\n');
        }
    }
}

// ---- Positions and distances in arrays

std::int64_t CCodeGeneration::EvalLinearIndex(const CNode* pList, const CArrayOfArrayIndex* pIndex, int level)
{
    const int count = pList->GetChildCount();
    const CArrayIndex* pBounds = pIndex ? pIndex->GetLevel(level) : nullptr;
    if (count == 0 || !pBounds || pBounds->GetDimensionCount() < count)
        InternalFault("subscripts don't fit the dimensions of their array");

    std::vector<std::int64_t> distances;   // from the low bounds
    for (int i = 0; i < count; ++i) {
        std::int32_t value = 0;
        if (m_Norvane.EvalIntegerExpression(pList->Child(i), value) != 1) return -1;
        distances.push_back(std::int64_t{value} - pBounds->m_Dimensions[static_cast<std::size_t>(i)].m_Low);
    }

    // Row by row: the last dimension runs fastest.
    std::int64_t element = distances.back();
    std::int64_t factor = 1;
    for (int i = count - 2; i >= 0; --i) {
        factor = WrapMul(factor, pBounds->GetSize(i + 1));
        element = WrapAdd(element, WrapMul(factor, distances[static_cast<std::size_t>(i)]));
    }
    return element;
}

// Product of the sizes of the dimensions behind the given one; 1 where there is no such level.
static std::int64_t GetInnerProduct(const CArrayIndex* pBounds, int dimension)
{
    std::int64_t product = 1;
    const int count = pBounds ? pBounds->GetDimensionCount() : 0;
    for (int i = dimension + 1; i < count; ++i) product = WrapMul(product, pBounds->GetSize(i));
    return product;
}

// Elements of the innermost array that one step covers: in elements that are arrays, all that the deeper
// levels hold; of several dimensions, those behind the one stepped in.
static std::int64_t CountCoveredElements(bool isNested, const CArrayOfArrayIndex* pIndex, int level, int dimension)
{
    if (!pIndex) return 1;
    // Kept (code): several dimensions are those of the first level.
    if (!isNested) return dimension == -1 ? 1 : GetInnerProduct(pIndex->GetLevel(0), dimension);

    std::int64_t product = 1;
    for (int l = level + 1; l < pIndex->GetLevelCount(); ++l) {
        // Kept (code): the dimensions behind the one stepped in are those of the next level.
        const int from = l == level + 1 ? dimension : -1;
        product = WrapMul(product, GetInnerProduct(pIndex->GetLevel(l), from));
    }
    return product;
}

// How many of them one step really goes over.
static std::int64_t CountElementsBehind(const CArrayOfArrayIndex* pIndex, int level, int dimension)
{
    std::int64_t product = GetInnerProduct(pIndex->GetLevel(level), dimension);
    for (int l = level + 1; l < pIndex->GetLevelCount(); ++l)
        product = WrapMul(product, GetInnerProduct(pIndex->GetLevel(l), -1));
    return product;
}

// A dimension of one element has no second one to be missed.
bool CCodeGeneration::MissesElements(const RuntimeSubscript& subscript, int dimension)
{
    const CArrayOfArrayIndex* pIndex = subscript.pIndex;
    if (pIndex->GetSize(subscript.level, dimension) < 2) return false;
    const CType* pElement = subscript.pArrayType->AsArray()->m_Element;
    const std::int64_t covered =
        CountCoveredElements(pElement && pElement->IsArray(), pIndex, subscript.level, dimension);
    return covered != CountElementsBehind(pIndex, subscript.level, dimension);
}

std::int64_t CCodeGeneration::GetElementStride(const CType* pArrayType, const CArrayOfArrayIndex* pIndex, int level,
                                               int dimension) const
{
    const CTypeArray* pArray = pArrayType ? pArrayType->AsArray() : nullptr;
    if (!pArray) InternalFault("a distance between elements is asked for where there is no array");
    const CType* pElement = pArray->m_Element;
    const std::int64_t elements = CountCoveredElements(pElement && pElement->IsArray(), pIndex, level, dimension);
    if (pElement && pElement->IsBool()) return elements;   // bits
    return WrapMul(pArray->GetInnermostStride(), elements);
}

// ---- Sizes of copies

// Kept (code): a member behind the subscripts counts as a level if the path ends with it.
int CCodeGeneration::CountIndexLevels(const CNode* pNode)
{
    const int count = pNode->GetChildCount();
    if (count == 0) return 0;
    int position = 1;
    while (position < count - 1 && pNode->Child(position)->nKind == EXP_LIST) ++position;
    return std::min(position, count - 1);
}

// Bytes of a structure. An alias was made before the layout was known, so the type behind it is asked.
std::int64_t CCodeGeneration::GetStructSize(const CType* pType)
{
    constexpr int bitsInByte = 8;
    CType* pStruct = const_cast<CType*>(pType)->AsStruct();
    if (pStruct->m_SizeBits == -1) m_MemoryHandler->ComputeLayout(pStruct, nullptr, 0);
    return pStruct->m_SizeBits / bitsInByte;
}

// Bytes that a function block call copies between a structure or array member and the value given for it.
std::int64_t CCodeGeneration::GetCopySize(const CMember* pMember, const CNode* pValue)
{
    if (pMember->m_Type->IsStruct()) return GetStructSize(pMember->m_Type);
    if (!pValue->pVariable) return 0;   // reported where the value is reached
    const std::int32_t valueBytes = m_MemoryHandler->ComputeAccessSize(pValue);
    if (!pMember->m_Index) return valueBytes;
    // Different element counts draw no more than a warning for an input or output: never copy beyond the member.
    return std::min(valueBytes, m_MemoryHandler->ComputeLayout(pMember->m_Type, pMember->m_Index.get(), 0));
}
