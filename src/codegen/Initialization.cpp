// Initial values as code: the two generated functions for global and retain variables, and the stores for any
// one variable, which the frames of functions and programs use for locals. All memory counts as zero at the
// start, so a zero writes nothing.
//
// The spellings of the PUSH and POP lines differ between plain variables, members with a value of their
// structure's initialiser, members with their own default, and array elements. All four are wanted.

#include "codegen/CodeGeneration.h"
#include "codegen/Counting.h"
#include "codegen/RealText.h"
#include "codegen/TextPieces.h"
#include "files/Format.h"
#include "frontend/ErrorHandler.h"
#include "frontend/Notes.h"
#include "model/ArrayIndex.h"
#include "model/InitValue.h"
#include "model/Member.h"
#include "model/Type.h"
#include "model/TypeArray.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"
#include "semantics/Norvane.h"
#include "target/MemoryHandler.h"

#include <algorithm>

// ------------------------------------------------------------------------------------------------------
// Members and elements.

namespace
{

// Above this nobody waits for a variable's code any more.
constexpr std::int64_t g_MostStores = 1'000'000;

// A structure or array whose parts are being walked. Structures can be declared one inside the other as deep
// as a source is long, so the walk keeps its frames itself instead of recursing.
struct InitFrame
{
    const CTypeStruct* pStruct = nullptr;         // one of these two is set
    const CTypeArray* pArray = nullptr;
    const CArrayOfArrayIndex* pIndex = nullptr;   // of an array, null if it has no bounds
    int level = 0;                                // of that index
    const CInitValue* pInit = nullptr;            // null: the defaults of the parts count
    bool isOfType = false;                        // pInit belongs to a type, and stays as long: or it is null
    std::int64_t offset = 0;                      // bytes in the area
    std::size_t nameLength = 0;                   // how much of the walk's name belongs to this frame
    std::int64_t stores = 0;                      // written for it so far
    std::int64_t next = 0;                        // the part that comes next
    int bit = 0;                                  // the running bit of a structure's scalars
    bool losesDefault = false;                    // a part doesn't start with what it should

    // Of arrays only.
    std::int64_t count = 0;                       // elements
    std::int64_t stride = 0;                      // bytes
    std::size_t nextEntry = 0;                    // of the initialiser
    const CInitValue* pElementInit = nullptr;     // of the elements up to runEnd
    std::int64_t runEnd = 0;
    std::int64_t storesBeforeElement = 0;         // when the last element was entered
};

using StoreCounts = std::map<std::pair<const CTypeStruct*, const CInitValue*>, std::int64_t>;
using LosingStructs = std::set<std::pair<const CTypeStruct*, const CInitValue*>>;

// Writes the stores of one structure or array variable, or only counts them. The two differ in how often parts
// that are alike are looked at: the count takes the first for all. What is written otherwise than the source says draws
// a note at the variable.
class CInitWalk
{
public:
    // Without a text it counts.
    CInitWalk(CCodeGeneration& code, CNotes& notes, StoreCounts& counts, LosingStructs& losing,
              const CVariable& variable, TextBuffer* pText)
        : m_Code(code), m_Notes(notes), m_Counts(counts), m_Losing(losing), m_Variable(variable), m_Text(pText)
    {
    }

    std::int64_t Run();   // the number of stores

private:
    void Enter(const CType* pType, std::int64_t offset, const CArrayOfArrayIndex* pIndex, int level,
               const CInitValue* pInit, bool isOfType);
    void EnterStruct(const CTypeStruct* pStruct, std::int64_t offset, const CInitValue* pInit, bool isOfType);
    void EnterArray(const CTypeArray* pArray, std::int64_t offset, const CArrayOfArrayIndex* pIndex, int level,
                    const CInitValue* pInit, bool isOfType);
    void LeaveFrame();
    void AddStores(std::int64_t count);
    void StepStruct();
    void StepArray();
    bool FitsItsSlot(const CMember& member) const;
    void WriteScalarMember(InitFrame& frame, const CMember& member, std::int64_t offset);
    void PassOverAlikeElements(InitFrame& frame) const;
    void CountScalarElements(const CInitArray& init, std::int64_t count);
    void WriteScalarElements(const CTypeArray& array, const CInitArray& init, std::int64_t offset, std::int64_t count,
                             std::int64_t stride);
    void WriteElement(const CType& type, std::string_view value, std::int64_t position, std::optional<int> bit,
                      std::int64_t element);
    void AppendStore(const CType& type, std::int64_t offset, std::optional<int> bit);
    void Draw(Note note);
    void TakeLostDefault();
    void NoteReal(const CType& type, const CInitValue* pValue);
    void NoteBoolElement(const CType& type, std::int64_t element, std::int64_t distance, int bit);

    CCodeGeneration& m_Code;
    CNotes& m_Notes;
    StoreCounts& m_Counts;            // of values that belong to types; not owned
    LosingStructs& m_Losing;          // those of them with a part that loses its default; not owned
    const CVariable& m_Variable;
    std::uint32_t m_DrawnNotes = 0;   // a bit for each note's number: all stand at the variable, so one of a kind does
    TextBuffer* m_Text;               // not owned; null: the stores are only counted
    std::int64_t m_Stores = 0;
    std::string m_Name;               // of the part being walked; a frame cuts it back to its own length
    std::vector<InitFrame> m_Frames;
};

}   // namespace

static const CInitArray* AsInitArray(const CInitValue* pInit)
{
    return pInit && pInit->IsArray() ? static_cast<const CInitArray*>(pInit) : nullptr;
}

// What the structure's initialiser says of the member; null if nothing, or if it is no structure's.
static const CInitValue* FindMemberInit(const CInitValue* pInit, const CMember& member)
{
    return pInit && pInit->IsStruct() ? static_cast<const CInitStruct*>(pInit)->Find(member.m_Name) : nullptr;
}

static bool TakesWholeBytes(const CType& type)
{
    return type.m_SizeBits == -1 || type.m_SizeBits % 8 == 0;
}

std::int64_t CInitWalk::Run()
{
    m_Name = m_Variable.m_Name;
    Enter(m_Variable.m_Type, m_Variable.m_Offset, m_Variable.GetIndex(), 0, m_Variable.m_InitValue.get(),
          /*isOfType=*/false);
    while (!m_Frames.empty()) {
        if (m_Frames.back().pStruct) StepStruct();
        else StepArray();
    }
    return m_Stores;
}

// To the part that is being walked; behind the last one to the variable.
void CInitWalk::AddStores(std::int64_t count)
{
    std::int64_t& stores = m_Frames.empty() ? m_Stores : m_Frames.back().stores;
    stores = AddCounts(stores, count);
}

void CInitWalk::LeaveFrame()
{
    const InitFrame& frame = m_Frames.back();
    const std::int64_t stores = frame.stores;
    const bool losesDefault = frame.losesDefault;
    if (frame.pStruct && frame.isOfType) {
        m_Counts.insert_or_assign({frame.pStruct, frame.pInit}, stores);
        if (losesDefault) m_Losing.insert({frame.pStruct, frame.pInit});
    }
    m_Frames.pop_back();
    AddStores(stores);
    if (losesDefault && !m_Frames.empty()) m_Frames.back().losesDefault = true;
}

// About the part being walked, at the variable.
void CInitWalk::Draw(Note note)
{
    const std::uint32_t bit = std::uint32_t{1} << static_cast<int>(note);
    if (!m_Text || (m_DrawnNotes & bit)) return;
    m_DrawnNotes |= bit;
    m_Notes.Add(note, m_Variable.m_Location, m_Name);
}

// The part being walked, or one in it, doesn't start with what it should. A structure remembers it: one that writes
// nothing isn't walked a second time.
void CInitWalk::TakeLostDefault()
{
    if (!m_Frames.empty()) m_Frames.back().losesDefault = true;
    Draw(Note::DefaultNotWritten);
}

void CInitWalk::NoteReal(const CType& type, const CInitValue* pValue)
{
    if (pValue && pValue->IsReal() && !SurvivesSixDecimals(pValue->GetDouble(), type.GetBaseType()->m_SizeBits))
        Draw(Note::RealPrinted);
}

void CInitWalk::Enter(const CType* pType, std::int64_t offset, const CArrayOfArrayIndex* pIndex, int level,
                      const CInitValue* pInit, bool isOfType)
{
    isOfType = isOfType || !pInit;
    if (const CTypeStruct* pStruct = pType->AsStruct()) EnterStruct(pStruct, offset, pInit, isOfType);
    else if (const CTypeArray* pArray = pType->AsArray()) EnterArray(pArray, offset, pIndex, level, pInit, isOfType);
}

void CInitWalk::EnterStruct(const CTypeStruct* pStruct, std::int64_t offset, const CInitValue* pInit, bool isOfType)
{
    // What a type's own value makes it always makes: structures that hold each other many times over are counted
    // once and not once for each place, and where they write nothing they aren't walked again.
    const StoreCounts::const_iterator known = isOfType ? m_Counts.find({pStruct, pInit}) : m_Counts.end();
    if (known != m_Counts.end() && (!m_Text || known->second == 0)) {
        AddStores(known->second);
        if (m_Losing.contains({pStruct, pInit})) TakeLostDefault();
        return;
    }
    InitFrame frame;
    frame.pStruct = pStruct;
    frame.pInit = pInit;
    frame.isOfType = isOfType;
    frame.offset = offset;
    frame.nameLength = m_Name.size();
    m_Frames.push_back(frame);
}

void CInitWalk::EnterArray(const CTypeArray* pArray, std::int64_t offset, const CArrayOfArrayIndex* pIndex, int level,
                           const CInitValue* pInit, bool isOfType)
{
    const CArrayIndex* pBounds = pIndex ? pIndex->GetLevel(level) : nullptr;
    const std::int64_t count = pBounds ? pBounds->GetProduct() : 1;
    if (!pArray->m_Element) return;
    const CInitArray* pValues = AsInitArray(pInit);
    if (!IsAggregate(pArray->m_Element) && !m_Text) {
        if (pValues) CountScalarElements(*pValues, count);
        return;
    }
    const std::int64_t stride = pBounds ? m_Code.GetElementStride(pArray, pIndex, level, -1) : 0;
    if (!IsAggregate(pArray->m_Element)) {
        // Elements have no defaults here: without an initialiser nothing is written, whatever their number.
        if (pValues) WriteScalarElements(*pArray, *pValues, offset, count, stride);
        return;
    }
    InitFrame frame;
    frame.pArray = pArray;
    frame.pIndex = pIndex;
    frame.level = level;
    frame.pInit = pInit;
    frame.isOfType = isOfType;
    frame.offset = offset;
    frame.nameLength = m_Name.size();
    frame.count = count;
    frame.stride = stride;
    m_Frames.push_back(frame);
}

// An in-out member is a pointer in the instance. A value that is wider than that would be written over the
// members behind it, and every call sets the pointer anyway.
bool CInitWalk::FitsItsSlot(const CMember& member) const
{
    if (!member.IsInOut()) return true;
    return !IsAggregate(member.m_Type) && member.m_Type->m_SizeBits <= m_Code.m_PointerType->m_SizeBits;
}

void CInitWalk::StepStruct()
{
    InitFrame& frame = m_Frames.back();
    m_Name.resize(frame.nameLength);
    if (frame.next == static_cast<std::int64_t>(frame.pStruct->m_Members.size())) {
        LeaveFrame();
        return;
    }
    const CMember& member = *frame.pStruct->m_Members[static_cast<std::size_t>(frame.next++)];
    if (!member.m_Type || (IsAggregate(member.m_Type) && !FitsItsSlot(member))) return;
    m_Name += '.';
    m_Name += member.m_Name;
    const std::int64_t offset = frame.offset + member.m_Offset;
    if (!IsAggregate(member.m_Type)) {
        WriteScalarMember(frame, member, offset);
        return;
    }
    // Kept (code): the structure's initialiser doesn't reach an array member, which has its own value only.
    const CInitValue* pGiven = FindMemberInit(frame.pInit, member);
    const bool isReached = pGiven && member.m_Type->IsStruct();
    if (pGiven && !isReached && !IsSameInit(pGiven, member.m_InitValue.get())) TakeLostDefault();
    const CInitValue* pInit = isReached ? pGiven : member.m_InitValue.get();
    const bool isOfType = isReached ? frame.isOfType : true;
    Enter(member.m_Type, offset, member.m_Index.get(), 0, pInit, isOfType);   // may move the frames: `frame` ends here
}

//	PUSH(INT)	5
//	POP(INT) 	[global+4];s.a
// and for a member's own default
//	PUSH(INT) 	5
//	POP(INT) 	[global+4];s.a
void CInitWalk::WriteScalarMember(InitFrame& frame, const CMember& member, std::int64_t offset)
{
    // Kept (code): the running bit counts the members that fill no byte and is not the member's bit number; members
    // that are structures or arrays leave it alone.
    const CType& type = *member.m_Type;
    const bool isWhole = type.m_SizeBits % 8 == 0;
    const int bit = isWhole ? 0 : frame.bit;
    const std::optional<int> storedBit = isWhole ? std::optional<int>() : bit;
    frame.bit = isWhole ? 0 : (frame.bit + type.m_SizeBits) % 8;

    // With an initialiser only what it names is set; the member's own default doesn't come in then.
    const CInitValue* pValue = frame.pInit ? FindMemberInit(frame.pInit, member) : member.m_InitValue.get();
    if (frame.pInit && !pValue && !IsBlank(member.m_InitValue.get())) TakeLostDefault();
    const std::string value = pValue ? pValue->GetText(false) : std::string();
    if (value.empty() || !FitsItsSlot(member)) return;
    ++frame.stores;
    if (!m_Text) return;
    if (type.IsBool() && bit != frame.pStruct->GetBoolBit(&member)) Draw(Note::OtherBit);
    NoteReal(type, pValue);
    m_Code.m_Blocks.NoteForeignText(value);   // a text's bytes come as they are
    m_Text->Append("\tPUSH", TypeSuffix{type.m_Name}, frame.pInit ? "\t" : " \t", value, '\n');
    AppendStore(type, offset, storedBit);
}

//	POP(BOOL) 	[global+4].3;s.b
void CInitWalk::AppendStore(const CType& type, std::int64_t offset, std::optional<int> bit)
{
    m_Text->Append("\tPOP", TypeSuffix{type.m_Name}, " \t", MemoryPlace{m_Code.m_Area, offset, bit}, ';', m_Name, '\n');
}

// Elements of one value write alike: if the last one wrote nothing, the others of its run won't either. Where
// stores are only counted, they are as many for each.
void CInitWalk::PassOverAlikeElements(InitFrame& frame) const
{
    const std::int64_t ofEach = frame.stores - frame.storesBeforeElement;
    const std::int64_t alike = std::min(frame.runEnd, frame.count) - frame.next;
    if (alike <= 0 || (m_Text && ofEach > 0)) return;
    frame.stores = AddCounts(frame.stores, MultiplyCounts(ofEach, alike));
    frame.next += alike;
}

// One element that is a structure or an array itself.
void CInitWalk::StepArray()
{
    InitFrame& frame = m_Frames.back();
    m_Name.resize(frame.nameLength);
    // Inner arrays of BOOL have no distance from each other, so all lie on top of the first.
    if (frame.next > 1 && frame.stride == 0 && frame.stores > frame.storesBeforeElement) Draw(Note::BoolArray);
    if (frame.next > 0) PassOverAlikeElements(frame);
    if (frame.next >= frame.count) {
        LeaveFrame();
        return;
    }
    const CInitArray* pValues = AsInitArray(frame.pInit);
    while (pValues && frame.next >= frame.runEnd && frame.nextEntry < pValues->m_Elements.size()) {
        frame.pElementInit = pValues->m_Elements[frame.nextEntry].get();
        frame.runEnd += pValues->m_Repeats[frame.nextEntry];
        ++frame.nextEntry;
    }
    if (frame.next >= frame.runEnd) {   // behind the last value, where the defaults of the element type count
        frame.pElementInit = nullptr;
        frame.runEnd = frame.count;
    }
    const std::int64_t element = frame.next++;
    frame.storesBeforeElement = frame.stores;
    m_Name += "[" + std::to_string(element) + "]";
    Enter(frame.pArray->m_Element, frame.offset + element * frame.stride, frame.pIndex, frame.level + 1,
          frame.pElementInit, frame.isOfType);   // may move the frames: `frame` ends here
}

void CInitWalk::CountScalarElements(const CInitArray& init, std::int64_t count)
{
    std::int64_t runEnd = 0;
    std::int64_t element = 0;
    for (std::size_t entry = 0; entry < init.m_Elements.size() && element < count; ++entry) {
        runEnd = runEnd + init.m_Repeats[entry];
        const std::int64_t end = std::min(runEnd, count);
        if (end <= element) continue;
        const CInitValue* pValue = init.m_Elements[entry].get();
        if (pValue && !pValue->GetText(false).empty()) AddStores(end - element);
        element = end;
    }
}

// Elements without a value need no look; of those with an empty text only the running bit counts. The position
// of elements that fill no byte moves on by the stride with each element that starts a byte.
void CInitWalk::WriteScalarElements(const CTypeArray& array, const CInitArray& init, std::int64_t offset,
                                    std::int64_t count, std::int64_t stride)
{
    const CType& type = *array.m_Element;
    const bool isWhole = TakesWholeBytes(type);
    const int size = type.m_SizeBits;
    std::int64_t position = offset;
    std::int64_t runEnd = 0;
    std::int64_t element = 0;
    int bit = 0;
    for (std::size_t entry = 0; entry < init.m_Elements.size() && element < count; ++entry) {
        runEnd = runEnd + init.m_Repeats[entry];
        const CInitValue* pValue = init.m_Elements[entry].get();
        const std::string value = pValue ? pValue->GetText(false) : std::string();
        const std::int64_t end = std::min(runEnd, count);
        if (isWhole && value.empty()) element = std::max(element, end);
        if (element < end && !value.empty()) NoteReal(type, pValue);
        for (; element < end; ++element) {
            if (isWhole) {
                if (value.empty()) continue;
                if (type.IsBool()) NoteBoolElement(type, element, element * stride, 0);
                WriteElement(type, value, offset + element * stride, {}, element);
                continue;
            }
            const int reached = bit + size;
            if ((reached == 1 && element != 0) || (size > 1 && reached > 7)) position += stride;
            if (!value.empty()) {
                NoteBoolElement(type, element, position - offset, bit);
                WriteElement(type, value, position, bit, element);
            }
            bit = reached % 8;
        }
    }
}

// A bit of an array is looked for eight to a unit of the type's alignment.
void CInitWalk::NoteBoolElement(const CType& type, std::int64_t element, std::int64_t distance, int bit)
{
    constexpr int bitsInByte = 8;
    const bool isFound = distance == element / bitsInByte * type.GetPlacingAlign() && bit == element % bitsInByte;
    if (!isFound) Draw(Note::BoolArray);
}

//	PUSH(INT) 	7
//	POP(INT) 	[global+2];a[1]
void CInitWalk::WriteElement(const CType& type, std::string_view value, std::int64_t position,
                             std::optional<int> bit, std::int64_t element)
{
    const std::size_t nameLength = m_Name.size();
    m_Name += "[" + std::to_string(element) + "]";
    m_Code.m_Blocks.NoteForeignText(value);
    m_Text->Append("\tPUSH", TypeSuffix{type.m_Name}, " \t", value, '\n');
    AddStores(1);
    AppendStore(type, position, bit);
    m_Name.resize(nameLength);
}

// ------------------------------------------------------------------------------------------------------
// Variables.

//	PUSH(SINT)	97		;a
//	POP(SINT)	[global+4]
// for each byte. No end is written: the zeros of the area end a text that is shorter than its variable.
void CCodeGeneration::GenerateStringInit(const CVariable* pVariable, TextBuffer& text) const
{
    if (!pVariable->m_InitValue) return;
    const std::string value = pVariable->m_InitValue->GetText(false);
    std::int64_t offset = pVariable->m_Offset;
    for (const char c : value) {
        text.Append("\tPUSH(SINT)\t", static_cast<signed char>(c), "\t\t;", c, '\n');
        text.Append("\tPOP(SINT)\t", MemoryPlace{m_Area, offset}, '\n');
        offset += pVariable->m_Type->GetPlacingAlign();
    }
}

std::int64_t CCodeGeneration::CountInitialStores(const CVariable* pVariable)
{
    return CInitWalk(*this, m_Norvane.m_Notes, m_StoreCounts, m_LosingStructs, *pVariable, nullptr).Run();
}

void CCodeGeneration::GenerateVariableInit(const CVariable* pVariable, TextBuffer& text)
{
    const CType* pType = pVariable->m_Type;
    if (!pType) return;
    // Nobody reads the memory of a constant whose uses are replaced by the value. It has no place, or, packed among
    // the BOOLs, one that may be too narrow for it: a store would spoil its neighbours. At an address of its own
    // others may look at it.
    if (m_MemoryHandler->IsSubstituted(pVariable) && pVariable->m_DirectAddress.empty()) return;
    if (pType->IsAggregate()) {
        if (CountInitialStores(pVariable) > g_MostStores)
            EndGeneration(pVariable->m_Location, FormatText("more than %lld elements of ", static_cast<long long>(g_MostStores)) +
                                                     pVariable->m_Name + " have an initial value to be written");
        CInitWalk(*this, m_Norvane.m_Notes, m_StoreCounts, m_LosingStructs, *pVariable, &text).Run();
        return;
    }
    if (pType->IsString()) {
        GenerateStringInit(pVariable, text);
        return;
    }
    const std::string value = pVariable->m_InitValue ? pVariable->m_InitValue->GetText(false) : std::string();
    if (value.empty()) return;
    const CInitValue& init = *pVariable->m_InitValue;
    if (init.IsReal() && !SurvivesSixDecimals(init.GetDouble(), pType->m_SizeBits))
        m_Norvane.m_Notes.Add(Note::RealPrinted, pVariable->m_Location);
    text.Append("\tPUSH\t", TypeSuffix{pType->m_Name}, '\t', value, '\n');
    text.Append("\tPOP\t", OperandOf(pVariable), '\n');
}

// ------------------------------------------------------------------------------------------------------
// The two functions.

std::vector<const CVariable*> CCodeGeneration::GetVariablesToInitialize(bool isRetain) const
{
    std::vector<const CVariable*> variables;
    const auto take = [&](const std::vector<CVariable*>& list) {
        for (const CVariable* pVariable : list) {
            if (pVariable->m_IsRetain == isRetain && !m_MemoryHandler->IsSubstituted(pVariable))
                variables.push_back(pVariable);
        }
    };
    if (isRetain) take(m_MemoryHandler->m_LocalVariables);
    take(m_MemoryHandler->m_GlobalVariables);
    return variables;
}

//		;Variable (1024): x (INT,VAR_GLOBAL AT MW0)
void CCodeGeneration::WriteInitialization(std::string_view name, std::string_view title, bool isRetain)
{
    if (m_ErrorHandler->GetErrorCount() > 0) return;
    const std::vector<const CVariable*> variables = GetVariablesToInitialize(isRetain);

    TextBuffer& text = m_Text;
    text.Append('\n');
    text.Append(";------------------------------------------------------------------------\n");
    text.Append("; FUNCTION: ", name, '\n');
    text.Append(";          Automatically created by compiler.\n");
    text.Append("; ------------------------------------------------------------------------\n");
    text.Append("FUNCTION_", name, ":\n");
    text.Append('\n');
    text.Append("\tLOCALDATA 0\n");
    text.Append('\n');
    text.Append("\t;", title, " variable initialization\n");
    // Kept (code): the list of the retain variables has this heading too.
    text.Append("\n\t;Global Variable List---------------------------------\n");
    for (const CVariable* pVariable : variables) {
        const std::string_view typeName = pVariable->m_Type ? pVariable->m_Type->m_Name : std::string_view();
        text.Append("\t\t;Variable (", pVariable->m_Offset, "): ", pVariable->m_Name);
        text.Append(" (", typeName, ',', GetVarBlockName(pVariable));
        if (!pVariable->m_DirectAddress.empty()) text.Append(" AT ", pVariable->m_DirectAddress);
        text.Append(")\n");
        FlushLarge(text);
    }
    for (const CVariable* pVariable : variables) {
        m_Area = GetAreaPrefix(pVariable);
        GenerateVariableInit(pVariable, text);
        FlushLarge(text);
    }
    text.Append("\n\tRTS");
    text.Append('\n');
    FlushText();
}

void CCodeGeneration::WriteGlobalInitialization()
{
    WriteInitialization("__GlobalInitialization__", "Global", /*isRetain=*/false);
}

void CCodeGeneration::WriteRetainInitialization()
{
    WriteInitialization("__RetainInitialization__", "Retain", /*isRetain=*/true);
}

// Their offsets come from the global area, and their instructions name the retain area: there they lie over the
// retained variables of POUs, and nobody has looked whether they fit.
void CCodeGeneration::NoteRetainedGlobals() const
{
    if (!m_MemoryHandler->IsPacking()) return;
    for (const CVariable* pVariable : m_MemoryHandler->m_GlobalVariables) {
        const bool hasPlace = pVariable->m_Size != -1 && !m_MemoryHandler->IsSubstituted(pVariable);
        if (!pVariable->m_IsRetain || !hasPlace || !pVariable->m_DirectAddress.empty()) continue;
        m_Norvane.m_Notes.Add(Note::RetainInGlobal, pVariable->m_Location, pVariable->m_Name);
    }
}
