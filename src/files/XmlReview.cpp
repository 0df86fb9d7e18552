#include "files/XmlReview.h"

#include "files/XmlNode.h"
#include "files/XmlParser.h"

#include <algorithm>

namespace
{

constexpr std::string_view g_WhiteSpace = " \t\r\n";
constexpr std::size_t g_NoOffset = std::string_view::npos;
constexpr std::string_view g_LineEndReason = "a line end or tab behind a closing name";

}   // namespace

// The names of XML, with all characters beyond ASCII let in.
static bool IsNameStart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' || static_cast<signed char>(c) < 0;
}

static bool IsNameCharacter(char c)
{
    return IsNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

static bool IsPossibleName(std::string_view name)
{
    return !name.empty() && IsNameStart(name.front()) && std::all_of(name.begin(), name.end(), IsNameCharacter);
}

static std::string_view GetStopReason(int result)
{
    switch (result) {
    case XmlEndBehindBracket: return "a \"<\" at the end of the text";
    case XmlEndInElementName:
    case XmlEndInTag:
    case XmlEndBeforeTagEnd: return "a tag without its \">\"";
    case XmlEndInAttributeName:
    case XmlEndBehindAttributeName: return "the text ends in an attribute";
    case XmlNoEqualsSign: return "an attribute without \"=\"; a quote in front of it may be missing";
    case XmlNoQuote: return "an attribute without a value in quotes";
    case XmlQuoteNotClosed: return "a value whose closing quote is missing";
    case XmlEndInClosingTag:
    case XmlEndInClosingName: return "the text ends in a closing tag";
    case XmlWrongClosingName: return "a closing name that isn't that of the open element";
    case XmlCDataNotClosed: return "a CDATA section that isn't closed";
    case XmlCommentNotClosed: return "a comment that isn't closed";
    case XmlInstructionNotClosed: return "an instruction that isn't closed";
    case XmlDeclarationNotClosed: return "a declaration that isn't closed";
    default: return "";
    }
}

std::string XmlReview::Describe(const XmlFault& fault)
{
    switch (fault.kind) {
    case XmlFaultKind::ReadingStops: return "nothing is read from here on: " + fault.name;
    case XmlFaultKind::ElementLeftOpen: return "the element " + fault.name + " is never closed";
    case XmlFaultKind::ShortClosingName: return "the closing name isn't " + fault.name + ", which it closes";
    case XmlFaultKind::JunkInClosingTag: return "what stands behind the closing name " + fault.name + " isn't read";
    case XmlFaultKind::JunkBehindSlash: return "what stands between \"/\" and the next \">\" isn't read";
    case XmlFaultKind::JunkBeforeQuote:
        return "what stands between \"" + fault.name + "=\" and the next quote isn't read";
    case XmlFaultKind::ImpossibleName: return "no name can be \"" + fault.name + "\"; a quote or bracket stands wrong";
    case XmlFaultKind::RepeatedAttribute: return "the attribute " + fault.name + " stands twice; the first counts";
    case XmlFaultKind::CommentInComment: return "the comment hides the beginning of another one; it isn't closed before";
    case XmlFaultKind::TagInDeclaration: return "\"<!\" begins neither comment nor section here, and hides a tag";
    case XmlFaultKind::SubsetReadAsDocument: return "what the DOCTYPE holds is read as the document";
    case XmlFaultKind::TextBehindRoot: return "what stands behind the end of the document element isn't read";
    case XmlFaultKind::BlankBehindBracket: return "white space behind \"<\"";
    case XmlFaultKind::BlankInClosingTag: return "white space in front of the closing name " + fault.name;
    case XmlFaultKind::NoBlankBeforeAttribute: return "no white space in front of the attribute " + fault.name;
    case XmlFaultKind::BracketInValue: return "\"<\" in the value of the attribute " + fault.name;
    case XmlFaultKind::DashesInComment: return "\"--\" in a comment";
    case XmlFaultKind::ForeignDeclaration: return "\"<!\" begins neither comment nor section here";
    case XmlFaultKind::TextInFrontOfRoot: return "text in front of the document element";
    }
    return {};
}

std::size_t XmlReview::FindNode(const CXmlNode& node) const
{
    const auto found = m_Nodes.find(&node);
    return found == m_Nodes.end() ? g_NoOffset : found->second;
}

std::size_t XmlReview::FindAttribute(const CXmlAttribute& attribute) const
{
    const auto found = m_Attributes.find(&attribute);
    return found == m_Attributes.end() ? g_NoOffset : found->second.nameStart;
}

std::string_view XmlReview::GetRawValue(const CXmlAttribute& attribute) const
{
    const auto found = m_Attributes.find(&attribute);
    if (found == m_Attributes.end()) return attribute.m_Value;
    const ValueRange& range = found->second;
    return GetText().substr(range.valueStart, range.valueEnd - range.valueStart);
}

XmlPosition XmlReview::GetPosition(std::size_t offset) const
{
    if (offset > m_Text.size() || m_Text.empty()) return {};
    if (m_LineStarts.empty()) {
        m_LineStarts.push_back(0);
        for (std::size_t i = m_Text.find('\n'); i != g_NoOffset; i = m_Text.find('\n', i + 1))
            m_LineStarts.push_back(i + 1);
    }
    const auto next = std::upper_bound(m_LineStarts.begin(), m_LineStarts.end(), offset);
    const std::size_t lineStart = *std::prev(next);
    return {static_cast<int>(next - m_LineStarts.begin()), static_cast<int>(offset - lineStart) + 1};
}

void XmlReview::Begin(std::string_view text)
{
    *this = XmlReview();
    m_Text = text;
}

void XmlReview::Add(XmlFaultKind kind, std::size_t offset, std::string_view name)
{
    m_Faults.push_back({kind, offset, std::string(name)});
}

bool XmlReview::IsBlank(std::size_t start, std::size_t end) const
{
    return std::min(m_Text.find_first_not_of(g_WhiteSpace, start), m_Text.size()) >= end;
}

// What is left of a DOCTYPE that the reader ended early is no text.
void XmlReview::NoteOutsideText(std::size_t start, std::size_t end)
{
    start = std::max(start, m_SubsetEnd);
    if (IsBlank(start, end)) return;
    Add(XmlFaultKind::TextInFrontOfRoot, m_Text.find_first_not_of(g_WhiteSpace, start));
}

void XmlReview::NoteBracket(std::size_t bracket, std::size_t construct)
{
    if (construct != bracket + 1 && bracket >= m_SubsetEnd) Add(XmlFaultKind::BlankBehindBracket, bracket);
}

void XmlReview::NoteMark(std::size_t start, std::size_t contentEnd, bool isInElement)
{
    if (start < m_SubsetEnd) return;
    const std::string_view mark = GetText().substr(start);
    if (mark.starts_with("!--")) ReviewComment(start, contentEnd);
    else if (mark.starts_with("![CDATA[")) {
        if (!isInElement) Add(XmlFaultKind::TextInFrontOfRoot, start - 1);
    } else if (mark.starts_with("!")) ReviewDeclaration(start, contentEnd, isInElement);
}

void XmlReview::ReviewComment(std::size_t start, std::size_t contentEnd)
{
    constexpr std::size_t markLength = 3;
    const std::size_t contentStart = start + markLength;
    const std::string_view content = GetText().substr(contentStart, contentEnd - contentStart);
    const std::size_t inner = content.find("<!--");
    const std::size_t dashes = content.find("--");
    if (inner != g_NoOffset) Add(XmlFaultKind::CommentInComment, start - 1);
    else if (dashes != g_NoOffset) Add(XmlFaultKind::DashesInComment, contentStart + dashes);
}

void XmlReview::ReviewDeclaration(std::size_t start, std::size_t contentEnd, bool isInElement)
{
    const std::string_view content = GetText().substr(start, contentEnd - start);
    if (!isInElement && content.starts_with("!DOCTYPE")) {
        m_SubsetEnd = FindSubsetEnd(start);
        return;
    }
    const bool hidesTag = content.find('<') != g_NoOffset;
    Add(hidesTag ? XmlFaultKind::TagInDeclaration : XmlFaultKind::ForeignDeclaration, start - 1);
}

// Behind the ">" that ends the DOCTYPE by the rules of XML: outside quotes, comments and brackets. The end of
// the text if there is none.
std::size_t XmlReview::FindSubsetEnd(std::size_t start) const
{
    int depth = 0;
    std::size_t i = start;
    const auto moveBehind = [this, &i](std::string_view end) {
        const std::size_t found = m_Text.find(end, i + 1);
        i = found == g_NoOffset ? m_Text.size() : found + end.size();
    };
    while (i < m_Text.size()) {
        const char c = m_Text[i];
        if (c == '"' || c == '\'') {
            moveBehind({&c, 1});
            continue;
        }
        if (GetText().substr(i).starts_with("<!--")) {
            moveBehind("-->");
            continue;
        }
        if (GetText().substr(i).starts_with("<?")) {
            moveBehind("?>");
            continue;
        }
        if (c == '[') ++depth;
        if (c == ']') --depth;
        ++i;
        if (c == '>' && depth <= 0) return i;
    }
    return i;
}

void XmlReview::NoteElement(const CXmlNode& node, std::size_t start)
{
    m_Nodes.emplace(&node, start);
    std::unordered_set<std::string_view>().swap(m_AttributeNames);   // to clear it costs what the largest tag had
    m_LastAttribute = g_NoOffset;
    if (!m_RootMet && start < m_SubsetEnd) Add(XmlFaultKind::SubsetReadAsDocument, start);
    m_RootMet = true;
    if (!IsPossibleName(node.m_Name)) Add(XmlFaultKind::ImpossibleName, start, node.m_Name);
}

void XmlReview::NoteAttribute(const CXmlAttribute& attribute, std::size_t start)
{
    m_LastAttribute = start;
    m_Attributes.emplace(&attribute, ValueRange{start, start, start});
    const std::string_view name = GetText().substr(start, attribute.m_Name.size());
    if (!IsPossibleName(name)) Add(XmlFaultKind::ImpossibleName, start, name);
    else if (!m_AttributeNames.insert(name).second) Add(XmlFaultKind::RepeatedAttribute, start, name);
    if (start > 0 && !IsBlank(start - 1, start)) Add(XmlFaultKind::NoBlankBeforeAttribute, start, name);
}

void XmlReview::NoteValue(const CXmlAttribute& attribute, std::size_t equalsSign, std::size_t quote, std::size_t end)
{
    ValueRange& range = m_Attributes[&attribute];
    range.valueStart = quote + 1;
    range.valueEnd = end;
    if (!IsBlank(equalsSign + 1, quote)) Add(XmlFaultKind::JunkBeforeQuote, range.nameStart, attribute.m_Name);
    const std::size_t bracket = GetText().substr(0, end).find('<', range.valueStart);
    if (bracket != g_NoOffset) Add(XmlFaultKind::BracketInValue, bracket, attribute.m_Name);
}

void XmlReview::NoteSlash(std::size_t slash, std::size_t tagEnd)
{
    if (slash + 1 != tagEnd) Add(XmlFaultKind::JunkBehindSlash, slash);
}

void XmlReview::NoteClosingTag(const CXmlNode& node, std::size_t slash, std::size_t nameStart, std::size_t nameEnd,
                               std::size_t tagEnd)
{
    if (nameStart != slash + 1) Add(XmlFaultKind::BlankInClosingTag, nameStart, node.m_Name);
    if (nameEnd - nameStart != node.m_Name.size()) Add(XmlFaultKind::ShortClosingName, slash + 1, node.m_Name);
    if (!IsBlank(nameEnd, tagEnd)) Add(XmlFaultKind::JunkInClosingTag, slash + 1, node.m_Name);
}

void XmlReview::NoteEnd(const CXmlNode* pOpen)
{
    if (pOpen) Add(XmlFaultKind::ElementLeftOpen, FindNode(*pOpen), pOpen->m_Name);
}

void XmlReview::NoteRootEnd(std::size_t end)
{
    for (;;) {
        end = m_Text.find_first_not_of(g_WhiteSpace, end);
        if (end == g_NoOffset) return;
        const std::string_view rest = GetText().substr(end);
        const bool isComment = rest.starts_with("<!--");
        const bool isInstruction = rest.starts_with("<?");
        const std::string_view mark = isComment ? "-->" : "?>";
        const std::size_t markStart = isComment || isInstruction ? rest.find(mark, isComment ? 4 : 2) : g_NoOffset;
        if (markStart == g_NoOffset) break;
        end += markStart + mark.size();
    }
    Add(XmlFaultKind::TextBehindRoot, end);
}

// XML lets it stand there, but the reader takes it for a part of the name.
bool XmlReview::HasLineEndInClosingName(std::size_t bracket) const
{
    const std::size_t start = std::min(m_Text.find_first_not_of(g_WhiteSpace, bracket + 2), m_Text.size());
    const std::string_view name = GetText().substr(start);
    return name.substr(0, name.find_first_of(" >")).find_first_of("\t\r\n") != g_NoOffset;
}

// The place is the attribute where one is to blame, otherwise the construct that couldn't be read.
void XmlReview::NoteStop(int result, std::size_t bracket)
{
    const bool isInAttribute = result == XmlEndBehindAttributeName || result == XmlNoEqualsSign ||
                               result == XmlNoQuote || result == XmlQuoteNotClosed;
    const bool isKnown = isInAttribute && m_LastAttribute != g_NoOffset;
    const std::size_t offset = isKnown ? m_LastAttribute : bracket;
    while (!m_Faults.empty() && m_Faults.back().offset == offset) m_Faults.pop_back();   // one fault, one line
    const bool isLineEnd = result == XmlWrongClosingName && HasLineEndInClosingName(bracket);
    Add(XmlFaultKind::ReadingStops, offset, isLineEnd ? g_LineEndReason : GetStopReason(result));
}
