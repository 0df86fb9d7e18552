#include "target/TargetReview.h"

#include "files/FileSystem.h"
#include "files/Format.h"
#include "files/XmlDocument.h"
#include "files/XmlEntities.h"
#include "files/XmlReview.h"
#include "frontend/ErrorHandler.h"
#include "model/Type.h"
#include "target/DataType.h"
#include "target/MemoryHandler.h"
#include "target/TargetCheck.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace
{

enum class Node   // ORDER NODES
{
    Root, Compiler, Target, Iec, Formats, DataFormat, DataType, Vm, Area, Program, ReturnStack, ParameterStack, Library
};

struct NodeRule
{
    Node parent;
    std::string_view name;
    bool canBeMany;
};

constexpr NodeRule g_Nodes[] = {   // ORDER NODES
    {Node::Root, "", false},       // the document element, whose name is free
    {Node::Root, "COMPILER", false},
    {Node::Compiler, "TARGET", false},
    {Node::Target, "IEC", false},
    {Node::Target, "COMPILER", false},
    {Node::Formats, "DATAFORMAT", false},
    {Node::DataFormat, "DATATYPE", true},
    {Node::Target, "VM", false},
    {Node::Vm, "AREA", true},
    {Node::Vm, "PROGRAM", true},
    {Node::Vm, "RETURNSTACK", false},
    {Node::Vm, "PARAMETERSTACK", false},
    {Node::Target, "LIBRARY", false},
};
static_assert(std::size(g_Nodes) == static_cast<std::size_t>(Node::Library) + 1);

// Start is the first byte of an area; Count a number of bits or bytes; Align a number of bytes to round to.
enum class Value { Text, Boolean, Number, Start, Count, Align };

struct AttributeRule
{
    Node node;
    std::string_view name;
    Value value;
};

constexpr AttributeRule g_Attributes[] = {
    {Node::Iec, "AllowedDataTypes", Value::Text},
    {Node::Iec, "PointerType", Value::Text},
    {Node::DataType, "name", Value::Text},
    {Node::DataType, "size", Value::Count},
    {Node::DataType, "align", Value::Align},
    {Node::Area, "name", Value::Text},
    {Node::Area, "segment", Value::Start},
    {Node::Area, "size", Value::Count},
    {Node::Area, "code", Value::Number},
    {Node::Program, "name", Value::Text},
    {Node::Program, "required", Value::Boolean},
    {Node::Program, "auto", Value::Boolean},
    {Node::Program, "initretain", Value::Boolean},
    {Node::Program, "initglobal", Value::Boolean},
    {Node::Program, "pou_begin", Value::Text},
    {Node::Program, "end", Value::Text},
    {Node::Program, "id", Value::Number},
    {Node::ReturnStack, "size", Value::Count},
    {Node::ReturnStack, "maxsize", Value::Count},
    {Node::ReturnStack, "calloverload", Value::Count},
    {Node::ReturnStack, "align", Value::Align},
    {Node::ReturnStack, "nestedprogram", Value::Boolean},
    {Node::ParameterStack, "size", Value::Count},
    {Node::ParameterStack, "maxsize", Value::Count},
};

struct AreaRule
{
    std::string_view name;
    bool hasStart;           // the areas that direct addresses lead into
};

constexpr AreaRule g_Areas[] = {
    {"INPUT", true},   {"OUTPUT", true}, {"MEMORY", true},    {"GLOBAL", false},
    {"RETAIN", false}, {"LOCAL", false}, {"ABSOLUTE", false},
};

constexpr std::string_view g_KindNames[] = {   // in the order of TargetFindingKind
    "reading-stops", "malformed", "undecoded-reference", "not-a-number", "number-too-large", "negative-number",
    "not-a-boolean", "unknown-data-type", "type-without-size", "unknown-pointer-type", "pointer-without-size",
    "missing-area", "repeated-area", "unnamed-program", "repeated-program", "repeated-node", "name-in-other-case",
    "library-in-section", "library-damaged", "untidy", "wrong-encoding", "missing-node", "unknown-node",
    "unknown-attribute", "stray-text", "out-of-range", "repeated-data-type", "unknown-area", "overlapping-areas",
    "repeated-code", "name-never-met",
};
static_assert(std::size(g_KindNames) == static_cast<std::size_t>(TargetFindingKind::NameNeverMet) + 1);

constexpr std::string_view g_WhiteSpace = " \t\n\v\f\r";
constexpr std::size_t g_NoOffset = std::string_view::npos;

}   // namespace

std::string_view GetName(TargetFindingKind kind)
{
    return g_KindNames[static_cast<std::size_t>(kind)];
}

static std::string_view Trim(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(g_WhiteSpace);
    if (first == g_NoOffset) return {};
    return text.substr(first, text.find_last_not_of(g_WhiteSpace) + 1 - first);
}

// A text of the file as part of a line, cut where it gets long.
static std::string Quote(std::string_view text)
{
    constexpr std::size_t longest = 40;
    std::string quoted = "\"";
    quoted += text.substr(0, longest);
    if (text.size() > longest) quoted += "...";
    return quoted + "\"";
}

// Whatever a file holds, a finding is one line of plain characters.
static std::string MakePrintable(std::string text)
{
    for (char& c : text) {
        const bool isControl = static_cast<unsigned char>(c) < ' ' || c == 0x7F;
        if (isControl) c = ' ';
        else if (static_cast<signed char>(c) < 0) c = '?';
    }
    return text;
}

static bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

static bool IsHexDigit(char c)
{
    return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

static bool IsNameCharacter(char c)
{
    return IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

static bool HasCapital(std::string_view text)
{
    return std::any_of(text.begin(), text.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
}

template <typename Test>
static bool IsWholly(std::string_view text, Test test)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), test);
}

// How a text stands to the number that is read from it.
enum class NumberForm { Number, TooLarge, NoNumber };

static NumberForm ClassifyHexadecimal(std::string_view digits)
{
    constexpr std::size_t most = 8;   // of 32 bits
    if (!IsWholly(digits, IsHexDigit)) return NumberForm::NoNumber;
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return digits.size() <= most ? NumberForm::Number : NumberForm::TooLarge;
}

static NumberForm ClassifyNumber(std::string_view value)
{
    const std::string_view text = Trim(value);
    // White space in front of the mark hides it from the reader.
    if (value.starts_with("0x")) return ClassifyHexadecimal(text.substr(2));
    std::string_view digits = text;
    const bool isNegative = digits.starts_with('-');
    if (isNegative || digits.starts_with('+')) digits.remove_prefix(1);
    if (!IsWholly(digits, IsDigit)) return NumberForm::NoNumber;

    constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();
    const std::int64_t limit = isNegative ? largest + 1 : largest;
    std::int64_t number = 0;
    for (const char c : digits) number = std::min(number * 10 + (c - '0'), limit + 1);
    return number <= limit ? NumberForm::Number : NumberForm::TooLarge;
}

static bool IsClearlyFalse(std::string_view value)
{
    for (const std::string_view word : {"", "0", "no", "false", "off"})
        if (EqualIgnoringCase(Trim(value), word)) return true;
    return false;
}

static bool IsKnownArea(std::string_view name)
{
    return std::any_of(std::begin(g_Areas), std::end(g_Areas), [name](const AreaRule& area) { return area.name == name; });
}

// The body of "&body;".
static bool IsReference(std::string_view body)
{
    if (body.starts_with("#x")) return IsWholly(body.substr(2), IsHexDigit);
    if (body.starts_with('#')) return IsWholly(body.substr(1), IsDigit);
    return IsWholly(body, IsNameCharacter) && !IsDigit(body.front());
}

namespace
{

// One review: walks the nodes that the compiler reads, notes what they hold, then looks at it group by group.
class TargetReview
{
public:
    TargetReview(CXmlDocument& target, const XmlReview& review, TargetReviewScope scope)
        : m_Target(target), m_Review(review), m_Scope(scope)
    {
    }

    std::vector<TargetFinding> Review();

private:
    using Kind = TargetFindingKind;
    using Attributes = std::array<const CXmlAttribute*, std::size(g_Attributes)>;   // by rule; null: not there

    struct Placed
    {
        std::size_t offset;
        Kind kind;
        std::string text;
    };

    void Add(Kind kind, std::size_t offset, std::string text);
    void Add(Kind kind, const CXmlNode& node, std::string text) { Add(kind, m_Review.FindNode(node), std::move(text)); }
    void Add(Kind kind, const CXmlAttribute* pAttribute, const CXmlNode& node, std::string text);

    void ReviewText();
    void ReviewDeclaredEncoding();
    void ReviewNode(const CXmlNode& node, Node id);
    void NoteNode(const CXmlNode& node, Node id);
    void ReviewAttributes(const CXmlNode& node, Node id);
    void ReviewUnknownAttribute(const CXmlAttribute& attribute, const Attributes& present, Node id);
    void ReviewValue(const CXmlAttribute& attribute, const AttributeRule& rule);
    void ReviewNumber(const CXmlAttribute& attribute, const AttributeRule& rule);
    void ReviewReferences(const CXmlAttribute& attribute);
    void ReviewChildren(const CXmlNode& node, Node id);
    void ReviewUnknownChild(const CXmlNode& child, Node parent, const std::array<int, std::size(g_Nodes)>& counts);
    void ReviewTypes();
    void ReviewFormats(const CDataType& types);
    void ReviewAllowedTypes(const CDataType& types);
    void ReviewPointerType(const CDataType& types);
    void ReviewAreas();
    void ReviewMissingAreas(const std::unordered_map<std::string, const CXmlNode*>& areas);
    void ReviewOverlaps(const std::unordered_map<std::string, const CXmlNode*>& areas);
    void ReviewPrograms();
    void ReviewProgramName(const CXmlNode& program, const std::string& name);
    void ReviewCodes(const std::vector<const CXmlNode*>& nodes, std::string_view attribute);
    void ReviewStack(const CXmlNode& stack);
    void ReviewLibrary();

    static const AttributeRule* FindRule(Node id, std::string_view name);
    static const NodeRule* FindNodeRule(Node parent, std::string_view name);
    static std::string GetNameOf(const CXmlNode& node);

    CXmlDocument& m_Target;
    const XmlReview& m_Review;
    const TargetReviewScope m_Scope;
    std::vector<Placed> m_Findings;
    std::unordered_set<std::size_t> m_FaultOffsets;   // of names that aren't meant as such
    // The nodes that the compiler reads, in the order of the file; null: there is none.
    std::vector<const CXmlNode*> m_DataTypes;
    std::vector<const CXmlNode*> m_Areas;
    std::vector<const CXmlNode*> m_Programs;
    std::vector<const CXmlNode*> m_Stacks;
    const CXmlNode* m_Iec = nullptr;
    const CXmlNode* m_Vm = nullptr;
    const CXmlNode* m_Library = nullptr;
};

}   // namespace

void TargetReview::Add(Kind kind, std::size_t offset, std::string text)
{
    if (m_Scope == TargetReviewScope::All || IsNote(kind)) m_Findings.push_back({offset, kind, std::move(text)});
}

void TargetReview::Add(Kind kind, const CXmlAttribute* pAttribute, const CXmlNode& node, std::string text)
{
    Add(kind, pAttribute ? m_Review.FindAttribute(*pAttribute) : m_Review.FindNode(node), std::move(text));
}

std::vector<TargetFinding> TargetReview::Review()
{
    ReviewText();
    if (m_Scope == TargetReviewScope::All) ReviewDeclaredEncoding();
    ReviewNode(m_Target.m_Root, Node::Root);
    if (m_Iec) ReviewTypes();
    if (m_Vm) ReviewAreas();
    ReviewPrograms();
    for (const CXmlNode* pStack : m_Stacks) ReviewStack(*pStack);
    if (m_Library) ReviewLibrary();
    const std::string missing = FindMissingTargetNode(m_Target);
    if (!missing.empty()) Add(Kind::MissingNode, g_NoOffset, "the node " + missing + " is missing");

    std::stable_sort(m_Findings.begin(), m_Findings.end(),
                     [](const Placed& a, const Placed& b) { return a.offset < b.offset; });
    std::vector<TargetFinding> findings;
    findings.reserve(m_Findings.size());
    for (Placed& found : m_Findings) {
        const XmlPosition position = m_Review.GetPosition(found.offset);
        findings.push_back({found.kind, position.line, position.column, MakePrintable(std::move(found.text))});
    }
    return findings;
}

void TargetReview::ReviewText()
{
    for (const XmlFault& fault : m_Review.GetFaults()) {
        m_FaultOffsets.insert(fault.offset);
        Kind kind = Kind::Untidy;
        if (XmlReview::IsReadOtherwise(fault.kind)) kind = Kind::Malformed;
        if (fault.kind == XmlFaultKind::ReadingStops) kind = Kind::ReadingStops;
        Add(kind, fault.offset, XmlReview::Describe(fault));
    }
}

// The file is read as UTF-8 whatever it says of itself.
void TargetReview::ReviewDeclaredEncoding()
{
    const std::string_view text = m_Review.GetText();
    const bool isAscii = std::none_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) < 0; });
    const CXmlNode* pInstruction = m_Target.m_Prolog.FindChild(g_XmlInstruction);
    if (!pInstruction || !pInstruction->m_Text.starts_with("xml")) return;
    const std::string declaration = ToLowerCase(pInstruction->m_Text);
    if (declaration.find("encoding") == std::string::npos || declaration.find("utf-8") != std::string::npos) return;
    if (isAscii && declaration.find("utf-16") == std::string::npos) return;   // all others begin with ASCII
    Add(Kind::WrongEncoding, text.find("<?"), "the file is read as UTF-8, not as it declares");
}

const AttributeRule* TargetReview::FindRule(Node id, std::string_view name)
{
    for (const AttributeRule& rule : g_Attributes)
        if (rule.node == id && rule.name == name) return &rule;
    return nullptr;
}

const NodeRule* TargetReview::FindNodeRule(Node parent, std::string_view name)
{
    for (const NodeRule& rule : g_Nodes)
        if (&rule != g_Nodes && rule.parent == parent && rule.name == name) return &rule;
    return nullptr;
}

std::string TargetReview::GetNameOf(const CXmlNode& node)
{
    std::string name;
    node.GetAttribute(name, "name");
    return name;
}

// Goes down to the nodes of the table and no deeper, however deep the file is.
void TargetReview::ReviewNode(const CXmlNode& node, Node id)
{
    NoteNode(node, id);
    ReviewAttributes(node, id);
    ReviewChildren(node, id);
    if (id != Node::Library && !node.m_Text.empty())
        Add(Kind::StrayText, node, "the text in " + node.m_Name + " isn't read");
}

void TargetReview::NoteNode(const CXmlNode& node, Node id)
{
    switch (id) {
    case Node::DataType: m_DataTypes.push_back(&node); break;
    case Node::Area: m_Areas.push_back(&node); break;
    case Node::Program: m_Programs.push_back(&node); break;
    case Node::ReturnStack:
    case Node::ParameterStack: m_Stacks.push_back(&node); break;
    case Node::Iec: m_Iec = &node; break;
    case Node::Vm: m_Vm = &node; break;
    case Node::Library: m_Library = &node; break;
    default: break;
    }
}

void TargetReview::ReviewAttributes(const CXmlNode& node, Node id)
{
    Attributes present{};
    std::vector<const CXmlAttribute*> unknown;
    for (const auto& pAttribute : node.m_Attributes) {
        const AttributeRule* pRule = FindRule(id, pAttribute->m_Name);
        if (!pRule) {
            unknown.push_back(pAttribute.get());
            continue;
        }
        const CXmlAttribute*& pFirst = present[static_cast<std::size_t>(pRule - g_Attributes)];
        if (pFirst) continue;   // the first counts, which the text's faults tell
        pFirst = pAttribute.get();
        ReviewValue(*pAttribute, *pRule);
    }
    for (const CXmlAttribute* pAttribute : unknown) ReviewUnknownAttribute(*pAttribute, present, id);
}

void TargetReview::ReviewUnknownAttribute(const CXmlAttribute& attribute, const Attributes& present, Node id)
{
    const std::string& name = attribute.m_Name;
    if (name == "xmlns" || name.find(':') != std::string::npos) return;   // of another vocabulary
    const std::size_t offset = m_Review.FindAttribute(attribute);
    if (m_FaultOffsets.contains(offset)) return;
    for (std::size_t i = 0; i < std::size(g_Attributes); ++i) {
        const AttributeRule& rule = g_Attributes[i];
        if (rule.node != id || present[i] || !EqualIgnoringCase(rule.name, name)) continue;
        Add(Kind::NameInOtherCase, offset, "the attribute " + name + " isn't read: its name is " + std::string(rule.name));
        return;
    }
    Add(Kind::UnknownAttribute, offset, "the attribute " + Quote(name) + " is unknown and isn't read");
}

void TargetReview::ReviewValue(const CXmlAttribute& attribute, const AttributeRule& rule)
{
    ReviewReferences(attribute);
    switch (rule.value) {
    case Value::Text: break;
    case Value::Boolean:
        if (!attribute.GetBool() && !IsClearlyFalse(attribute.m_Value))
            Add(Kind::NotABoolean, m_Review.FindAttribute(attribute),
                "the value " + Quote(attribute.m_Value) + " of " + attribute.m_Name + " is read as false");
        break;
    default: ReviewNumber(attribute, rule); break;
    }
}

void TargetReview::ReviewNumber(const CXmlAttribute& attribute, const AttributeRule& rule)
{
    const std::size_t offset = m_Review.FindAttribute(attribute);
    const int number = attribute.GetInt();
    const std::string value = "the value " + Quote(attribute.m_Value) + " of " + attribute.m_Name;
    const NumberForm form = ClassifyNumber(attribute.m_Value);
    if (form != NumberForm::Number) {
        const bool isTooLarge = form == NumberForm::TooLarge;
        Add(isTooLarge ? Kind::NumberTooLarge : Kind::NotANumber, offset,
            value + (isTooLarge ? " has more than 32 bits" : " isn't a number") + " and is read as " +
                std::to_string(number));
        return;
    }
    const bool isCount = rule.value == Value::Count || rule.value == Value::Align;
    if (isCount && number < 0) Add(Kind::NegativeNumber, offset, value + " is below 0");
    if (rule.value == Value::Start && number < 0) Add(Kind::OutOfRange, offset, value + " is below 0");
    if (rule.value == Value::Align && number == 0) Add(Kind::OutOfRange, offset, value + " counts as 1");
    if (rule.node == Node::DataType && rule.name == "size" && number > 1 && number % 8 != 0)
        Add(Kind::OutOfRange, offset, value + " is a number of bits that is no whole number of bytes");
}

// What the reader decodes goes from an "&" to the next ";"; what it doesn't know it keeps as it is spelled.
void TargetReview::ReviewReferences(const CXmlAttribute& attribute)
{
    std::string_view raw = m_Review.GetRawValue(attribute);
    for (;;) {
        const std::size_t start = raw.find('&');
        if (start == g_NoOffset) return;
        const std::size_t end = raw.find(';', start);
        const std::string_view piece = raw.substr(start, end == g_NoOffset ? end : end + 1 - start);
        raw.remove_prefix(start + piece.size());
        if (end != g_NoOffset && DecodeEntities(piece) != piece) continue;

        const std::string_view last = piece.substr(piece.rfind('&'));
        const bool isReference = end != g_NoOffset && IsReference(last.substr(1, last.size() - 2));
        if (isReference)
            Add(Kind::UndecodedReference, m_Review.FindAttribute(attribute),
                "the reference " + Quote(last) + " in the value of " + attribute.m_Name + " stays as it is spelled");
        else Add(Kind::Untidy, m_Review.FindAttribute(attribute), "an \"&\" by itself in the value of " + attribute.m_Name);
    }
}

static bool IsMark(const CXmlNode& node)
{
    const std::string& name = node.m_Name;
    return name == g_XmlComment || name == g_XmlInstruction || name == g_XmlCData || name == g_XmlDeclaration;
}

void TargetReview::ReviewChildren(const CXmlNode& node, Node id)
{
    std::array<int, std::size(g_Nodes)> counts{};
    std::vector<const CXmlNode*> unknown;
    for (const auto& pChild : node.m_Children) {
        if (IsMark(*pChild)) continue;
        const NodeRule* pRule = FindNodeRule(id, pChild->m_Name);
        if (!pRule) {
            unknown.push_back(pChild.get());
            continue;
        }
        const std::size_t index = static_cast<std::size_t>(pRule - g_Nodes);
        if (++counts[index] > 1 && !pRule->canBeMany)
            Add(Kind::RepeatedNode, *pChild, "a further " + pChild->m_Name + ": the first alone is read");
        else ReviewNode(*pChild, static_cast<Node>(index));
    }
    for (const CXmlNode* pChild : unknown) ReviewUnknownChild(*pChild, id, counts);
}

void TargetReview::ReviewUnknownChild(const CXmlNode& child, Node parent,
                                      const std::array<int, std::size(g_Nodes)>& counts)
{
    const std::string& name = child.m_Name;
    if (name.find(':') != std::string::npos) return;   // of another vocabulary
    if (m_FaultOffsets.contains(m_Review.FindNode(child))) return;
    for (std::size_t i = 1; i < std::size(g_Nodes); ++i) {
        const NodeRule& rule = g_Nodes[i];
        const bool isMissed = rule.canBeMany || counts[i] == 0;
        if (rule.parent != parent || !isMissed || !EqualIgnoringCase(rule.name, name)) continue;
        Add(Kind::NameInOtherCase, child, "the node " + name + " isn't read: its name is " + std::string(rule.name));
        return;
    }
    Add(Kind::UnknownNode, child, "the node " + Quote(name) + " is unknown and isn't read");
}

void TargetReview::ReviewTypes()
{
    CNamePool names;
    CDataType types(m_Target, names);   // as the compiler reads them
    types.LoadFromTarget();
    ReviewFormats(types);
    ReviewPointerType(types);
    if (m_Scope == TargetReviewScope::All) ReviewAllowedTypes(types);
}

// The elementary type of that name; null if there is none.
static const CType* FindElementary(const CDataType& types, std::string_view name)
{
    const CType* pType = types.FindType(name);
    return pType && pType->m_IsElementary ? pType : nullptr;
}

void TargetReview::ReviewFormats(const CDataType& types)
{
    std::unordered_map<const CType*, const CXmlNode*> formats;   // the last one of each type
    for (const CXmlNode* pNode : m_DataTypes) {
        const std::string name = GetNameOf(*pNode);
        const CXmlAttribute* pName = pNode->GetAttributeNode("name");
        const CType* pType = FindElementary(types, name);
        if (!pType) {
            Add(Kind::UnknownDataType, pName, *pNode,
                "no elementary type is named " + Quote(name) + ": the format is that of the known type in front of it");
            continue;
        }
        if (!formats.insert_or_assign(pType, pNode).second)
            Add(Kind::RepeatedDataType, pName, *pNode, "a further format of " + name + ": the last counts");
    }
    for (const CType* pType : types.GetTypes()) {
        const auto found = formats.find(pType);
        if (found == formats.end() || !pType->m_Allowed || pType->m_SizeBits > 0) continue;
        Add(Kind::TypeWithoutSize, found->second->GetAttributeNode("size"), *found->second,
            "the allowed type " + pType->m_Name + " has a size of " + std::to_string(pType->m_SizeBits) + " bits");
    }
}

void TargetReview::ReviewPointerType(const CDataType& types)
{
    const CXmlAttribute* pAttribute = m_Iec->GetAttributeNode("PointerType");
    const std::string name = pAttribute ? pAttribute->m_Value : std::string();
    const CType* pUsed = types.m_PointerType;
    if (!FindElementary(types, name)) {
        const std::string text = pAttribute ? "no elementary type is named " + Quote(name) : std::string("IEC has no PointerType");
        Add(Kind::UnknownPointerType, pAttribute, *m_Iec, text + ": pointers are of type " + pUsed->m_Name);
        return;
    }
    if (pUsed->m_SizeBits > 0 && pUsed->m_SizeBits % 8 == 0) return;
    Add(Kind::PointerWithoutSize, pAttribute, *m_Iec,
        "the pointer type " + name + " has a size of " + std::to_string(pUsed->m_SizeBits) + " bits");
}

// A type is allowed where its name stands anywhere in the text, so only a word without any is in vain.
void TargetReview::ReviewAllowedTypes(const CDataType& types)
{
    const CXmlAttribute* pAttribute = m_Iec->GetAttributeNode("AllowedDataTypes");
    std::string_view text = pAttribute ? std::string_view(pAttribute->m_Value) : std::string_view();
    while (!text.empty()) {
        const auto end = std::find_if_not(text.begin(), text.end(), IsNameCharacter);
        const std::string_view word = text.substr(0, static_cast<std::size_t>(end - text.begin()));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        const auto isNamed = [word](const CType* pType) {
            return pType->m_IsElementary && pType->m_Allowed && word.find(pType->m_Name) != g_NoOffset;
        };
        const std::vector<CType*>& all = types.GetTypes();
        if (word.empty() || std::any_of(all.begin(), all.end(), isNamed)) continue;
        Add(Kind::NameNeverMet, pAttribute, *m_Iec, "the word " + Quote(word) + " allows no data type");
    }
}

void TargetReview::ReviewAreas()
{
    std::unordered_map<std::string, const CXmlNode*> areas;   // the last one of each known name
    std::vector<const CXmlNode*> unknown;
    for (const CXmlNode* pNode : m_Areas) {
        const std::string name = GetNameOf(*pNode);
        if (!IsKnownArea(name)) unknown.push_back(pNode);
        else if (!areas.insert_or_assign(name, pNode).second)
            Add(Kind::RepeatedArea, *pNode, "a further area " + name + ": its values replace those in front of it");
    }
    for (const CXmlNode* pNode : unknown) {
        const std::string name = GetNameOf(*pNode);
        const std::string known = ToUpperCase(Trim(name));
        const bool isSlip = IsKnownArea(known) && !areas.contains(known);
        Add(isSlip ? Kind::NameInOtherCase : Kind::UnknownArea, pNode->GetAttributeNode("name"), *pNode,
            "the area " + Quote(name) + " isn't read" + (isSlip ? ": its name is " + known : std::string()));
    }
    ReviewMissingAreas(areas);
    if (m_Scope == TargetReviewScope::Notes) return;
    ReviewOverlaps(areas);
    std::vector<const CXmlNode*> known;
    for (const CXmlNode* pNode : m_Areas)
        if (IsKnownArea(GetNameOf(*pNode))) known.push_back(pNode);
    ReviewCodes(known, "code");
}

// Not LOCAL, whose code nothing prints, nor an area that a machine may well lack.
void TargetReview::ReviewMissingAreas(const std::unordered_map<std::string, const CXmlNode*>& areas)
{
    if (!areas.contains("GLOBAL"))
        Add(Kind::MissingArea, *m_Vm, "there is no area GLOBAL: no global variable has room");
    if (areas.contains("ABSOLUTE")) return;
    for (const AreaRule& rule : g_Areas) {
        const auto found = areas.find(std::string(rule.name));
        if (!rule.hasStart || found == areas.end() || !found->second->GetAttributeNode("code")) continue;
        Add(Kind::MissingArea, *m_Vm, "there is no area ABSOLUTE: variables at addresses have the code -1");
        return;
    }
}

void TargetReview::ReviewOverlaps(const std::unordered_map<std::string, const CXmlNode*>& areas)
{
    struct Extent
    {
        std::string_view name;
        std::int64_t start;
        std::int64_t size;
    };

    CErrorHandler errors;
    CNamePool names;
    CDataType types(m_Target, names);
    const bool substitution = true;
    CMemoryHandler memory(errors, types, substitution);   // as the compiler reads them
    memory.LoadAreas(m_Target);
    const Extent extents[] = {
        {"INPUT", memory.m_InputSegment, memory.m_InputSize},
        {"OUTPUT", memory.m_OutputSegment, memory.m_OutputSize},
        {"MEMORY", memory.m_MemorySegment, memory.m_MemorySize},
    };
    for (const Extent& area : extents)
        for (const Extent& before : extents) {
            if (&before == &area) break;
            const bool isApart = area.start + area.size <= before.start || before.start + before.size <= area.start;
            if (isApart || area.size <= 0 || before.size <= 0) continue;
            Add(Kind::OverlappingAreas, *areas.at(std::string(area.name)),
                "the area " + std::string(area.name) + " overlaps the area " + std::string(before.name));
        }
}

void TargetReview::ReviewPrograms()
{
    std::unordered_set<std::string> names;
    std::unordered_set<std::string> lowerNames;
    for (const CXmlNode* pNode : m_Programs) {
        const std::string name = GetNameOf(*pNode);
        const CXmlAttribute* pName = pNode->GetAttributeNode("name");
        if (name.empty()) {
            Add(Kind::UnnamedProgram, pName, *pNode, "a PROGRAM without a name");
            continue;
        }
        const bool isNew = names.insert(name).second;
        const bool isNewInAnyCase = lowerNames.insert(ToLowerCase(name)).second;
        if (!isNew) Add(Kind::RepeatedProgram, pName, *pNode, "a further program " + Quote(name) + ": the first counts");
        else if (!isNewInAnyCase)
            Add(Kind::NameNeverMet, pName, *pNode, "another program's name differs from " + Quote(name) + " only in case");
        ReviewProgramName(*pNode, name);
    }
    if (m_Scope == TargetReviewScope::All) ReviewCodes(m_Programs, "id");
}

void TargetReview::ReviewProgramName(const CXmlNode& program, const std::string& name)
{
    const CXmlAttribute* pName = program.GetAttributeNode("name");
    const bool isName = IsWholly(name, IsNameCharacter) && !IsDigit(name.front()) && name.find("__") == std::string::npos;
    const bool isLookedUp = program.GetAttributeBool("required") || program.GetAttributeBool("auto");
    if (!isName) Add(Kind::NameNeverMet, pName, program, "no program in a source can be named " + Quote(name));
    else if (isLookedUp && HasCapital(name))
        Add(Kind::NameNeverMet, pName, program,
            "the program " + name + " is looked for in lower case: \"required\" and \"auto\" never find it");
}

void TargetReview::ReviewCodes(const std::vector<const CXmlNode*>& nodes, std::string_view attribute)
{
    std::unordered_map<int, std::string> owners;
    for (const CXmlNode* pNode : nodes) {
        const CXmlAttribute* pCode = pNode->GetAttributeNode(attribute);
        if (!pCode || pCode->GetInt() == -1) continue;
        const auto [owner, isNew] = owners.try_emplace(pCode->GetInt(), GetNameOf(*pNode));
        if (isNew || owner->second == GetNameOf(*pNode)) continue;
        Add(Kind::RepeatedCode, pCode, *pNode,
            "the " + pCode->m_Name + " " + std::to_string(owner->first) + " is that of " + Quote(owner->second));
    }
}

void TargetReview::ReviewStack(const CXmlNode& stack)
{
    const CXmlAttribute* pSize = stack.GetAttributeNode("size");
    const CXmlAttribute* pMaximum = stack.GetAttributeNode("maxsize");
    if (pSize && pMaximum && pSize->GetInt() > pMaximum->GetInt())
        Add(Kind::OutOfRange, pSize, stack, "the size of " + stack.m_Name + " is above its maxsize");
}

namespace
{

enum class Base64Character : unsigned char { Foreign, Digit, Padding, Blank };

}   // namespace

static constexpr std::array<Base64Character, 256> MakeBase64Characters()
{
    std::array<Base64Character, 256> characters{};
    for (const char c : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"))
        characters[static_cast<unsigned char>(c)] = Base64Character::Digit;
    for (const char c : g_WhiteSpace) characters[static_cast<unsigned char>(c)] = Base64Character::Blank;
    characters['='] = Base64Character::Padding;
    return characters;
}

static constexpr std::array<Base64Character, 256> g_Base64Characters = MakeBase64Characters();

void TargetReview::ReviewLibrary()
{
    constexpr std::size_t groupLength = 4;

    for (const auto& pChild : m_Library->m_Children) {
        if (pChild->m_Name != g_XmlCData || Trim(pChild->m_Text).empty()) continue;
        Add(Kind::LibraryInSection, *m_Library, "the CDATA section in LIBRARY isn't read");
        break;
    }
    std::size_t count = 0;
    bool isPadded = false;
    for (const char c : m_Library->m_Text) {
        switch (g_Base64Characters[static_cast<unsigned char>(c)]) {
        case Base64Character::Blank: continue;
        case Base64Character::Padding: isPadded = true; break;
        case Base64Character::Digit:
            if (!isPadded) break;
            Add(Kind::LibraryDamaged, *m_Library, "what stands behind the padding in LIBRARY isn't read");
            return;
        case Base64Character::Foreign:
            Add(Kind::LibraryDamaged, *m_Library, "the character " + Quote({&c, 1}) + " in LIBRARY isn't of base64");
            return;
        }
        ++count;
    }
    if (count % groupLength != 0) Add(Kind::LibraryDamaged, *m_Library, "the last group of the base64 text in LIBRARY is cut");
}

std::vector<TargetFinding> ReviewTarget(CXmlDocument& target, const XmlReview& review, TargetReviewScope scope)
{
    return TargetReview(target, review, scope).Review();
}

// The number of bytes that the character at this place takes; 0 if it isn't UTF-8.
static std::size_t MeasureCharacter(std::string_view bytes)
{
    const unsigned char lead = static_cast<unsigned char>(bytes.front());
    if (lead < 0x80) return 1;
    const std::size_t length = lead >= 0xF5 ? 0 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
    if (bytes.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((static_cast<unsigned char>(bytes[i]) & 0xC0) != 0x80) return 0;
    return length;
}

// What the bytes show that the text no longer does. One finding at most: what follows it comes from it.
static void ReviewBytes(std::string_view bytes, std::vector<TargetFinding>& findings)
{
    constexpr TargetFindingKind kind = TargetFindingKind::WrongEncoding;
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
        findings.push_back({kind, 1, 1, "the file is UTF-16, and is read as UTF-8"});
        return;
    }
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    int line = 1;
    int column = 1;
    while (!bytes.empty()) {
        const std::size_t length = MeasureCharacter(bytes);
        if (length == 0) {
            findings.push_back({kind, line, column, "a byte that isn't UTF-8"});
            return;
        }
        if (bytes.front() == '\0') {
            if (bytes.find_first_not_of(std::string_view(" \t\r\n\0", 5)) == std::string_view::npos) return;
            findings.push_back({kind, line, column, "nothing is read from here on: a zero byte"});
            return;
        }
        ++column;
        if (bytes.front() == '\n') {
            ++line;
            column = 1;
        }
        bytes.remove_prefix(length);
    }
}

bool ReviewTargetFile(const std::string& fileName, TargetReviewScope scope, std::vector<TargetFinding>& findings)
{
    std::string bytes;
    if (!ReadWholeFile(fileName, bytes)) return false;
    CXmlDocument target;
    XmlReview review;
    target.Load(fileName, &review);   // what could be read of it is what the compiler takes
    findings.clear();
    if (scope == TargetReviewScope::All) ReviewBytes(bytes, findings);
    std::vector<TargetFinding> found = ReviewTarget(target, review, scope);
    findings.insert(findings.end(), std::make_move_iterator(found.begin()), std::make_move_iterator(found.end()));
    const auto isBefore = [](const TargetFinding& a, const TargetFinding& b) {
        if ((a.line < 0) != (b.line < 0)) return b.line < 0;
        return std::pair(a.line, a.column) < std::pair(b.line, b.column);
    };
    std::stable_sort(findings.begin(), findings.end(), isBefore);
    return true;
}
