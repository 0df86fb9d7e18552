#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class CXmlAttribute;
class CXmlNode;

// Where a text isn't what a strict reader takes, though ours reads on. Those up to TextBehindRoot are read
// otherwise than they can be meant; those behind it are read as they are meant.
enum class XmlFaultKind
{
    ReadingStops,            // nothing from here on was read
    ElementLeftOpen,         // the text ends inside the element; the innermost one is named, once
    ShortClosingName,        // </AB> closes <ABC>
    JunkInClosingTag,        // </A <B/>: all up to the ">" is passed over
    JunkBehindSlash,         // <A/ b="1">: likewise
    JunkBeforeQuote,         // a=1 b="2" gives a the value 2
    ImpossibleName,          // of an element or attribute, such as `2"`: a quote, "<" or "=" stands wrong
    RepeatedAttribute,       // the first counts
    CommentInComment,        // the one in front was never closed and hides what lies between
    TagInDeclaration,        // "<!" that begins nothing known and hides a tag
    SubsetReadAsDocument,    // the first element of the text stands inside a DOCTYPE
    TextBehindRoot,          // more than comments and instructions behind the end of the root element

    BlankBehindBracket,      // < A>
    BlankInClosingTag,       // </ A>
    NoBlankBeforeAttribute,  // a="1"b="2"
    BracketInValue,          // "<" in a value, spelled out
    DashesInComment,         // "--" in a comment
    ForeignDeclaration,      // "<!" that begins nothing known
    TextInFrontOfRoot        // also a CDATA section
};

struct XmlFault
{
    XmlFaultKind kind;
    std::size_t offset;      // in the text
    std::string name;        // of the element or attribute, or the reason; may be empty
};

// Both count from 1, columns in characters; -1: not known.
struct XmlPosition
{
    int line = -1;
    int column = -1;
};

// What a text shows beside the document that was read from it: where each node and attribute stands, and
// where the text breaks the rules of XML. The parser fills it on its way and reads the same with it and
// without it. It costs one copy of the text and an entry for each node and attribute.
class XmlReview
{
public:
    bool IsFilled() const { return !m_Text.empty(); }
    std::string_view GetText() const { return m_Text; }
    const std::vector<XmlFault>& GetFaults() const { return m_Faults; }      // in the order in which they were met
    static bool IsReadOtherwise(XmlFaultKind kind) { return kind <= XmlFaultKind::TextBehindRoot; }
    static std::string Describe(const XmlFault& fault);

    // Offsets in the text, npos for what wasn't read from it; the name's first character.
    std::size_t FindNode(const CXmlNode& node) const;
    std::size_t FindAttribute(const CXmlAttribute& attribute) const;
    std::string_view GetRawValue(const CXmlAttribute& attribute) const;      // as the text spells it
    XmlPosition GetPosition(std::size_t offset) const;

    // For the parser. Ends are offsets behind the last character; all stand in the order of the text.
    void Begin(std::string_view text);
    void NoteOutsideText(std::size_t start, std::size_t end);                // no element is open
    void NoteBracket(std::size_t bracket, std::size_t construct);            // "<" and what follows the white space
    void NoteMark(std::size_t start, std::size_t contentEnd, bool isInElement);   // behind the "<"
    void NoteElement(const CXmlNode& node, std::size_t start);
    void NoteAttribute(const CXmlAttribute& attribute, std::size_t start);
    void NoteValue(const CXmlAttribute& attribute, std::size_t equalsSign, std::size_t quote, std::size_t end);
    void NoteSlash(std::size_t slash, std::size_t tagEnd);                   // the ">"
    void NoteClosingTag(const CXmlNode& node, std::size_t slash, std::size_t nameStart, std::size_t nameEnd,
                        std::size_t tagEnd);
    void NoteEnd(const CXmlNode* pOpen);                                     // of the text; null: no element is open
    void NoteRootEnd(std::size_t end);                                       // behind the root element
    void NoteStop(int result, std::size_t bracket);                          // an XmlParseResult other than 0

private:
    struct ValueRange
    {
        std::size_t nameStart;
        std::size_t valueStart;
        std::size_t valueEnd;
    };

    void Add(XmlFaultKind kind, std::size_t offset, std::string_view name = {});
    bool IsBlank(std::size_t start, std::size_t end) const;
    void ReviewComment(std::size_t start, std::size_t contentEnd);
    void ReviewDeclaration(std::size_t start, std::size_t contentEnd, bool isInElement);
    bool HasLineEndInClosingName(std::size_t bracket) const;
    std::size_t FindSubsetEnd(std::size_t start) const;

    std::string m_Text;
    std::vector<XmlFault> m_Faults;
    std::unordered_map<const CXmlNode*, std::size_t> m_Nodes;
    std::unordered_map<const CXmlAttribute*, ValueRange> m_Attributes;
    std::unordered_set<std::string_view> m_AttributeNames;   // of the tag that is being read
    std::size_t m_LastAttribute = std::string_view::npos;    // of the tag that is being read
    std::size_t m_SubsetEnd = 0;                             // behind the DOCTYPE
    bool m_RootMet = false;
    mutable std::vector<std::size_t> m_LineStarts;           // made when the first position is asked for
};
