#include "files/XmlParser.h"

#include "files/XmlDocument.h"
#include "files/XmlEntities.h"
#include "files/XmlReview.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace
{

constexpr std::string_view g_WhiteSpace = " \t\r\n";
constexpr std::string_view g_ElementNameEnd = " \t\r\n/>";
constexpr std::string_view g_AttributeNameEnd = "= \t\r\n/>";
constexpr std::string_view g_ClosingNameEnd = " >";   // Kept (targets): other white space counts as part of the name

}   // namespace

// A construct that is no element: how it begins behind "<", how it ends, and what it becomes.
struct XmlParser::MarkForm
{
    std::string_view start;
    std::string_view end;
    std::string_view name;
    bool bKeepStart;      // the text of the node begins with `start`
    int nResult;          // if the end is missing
};

XmlParser::XmlParser(CXmlDocument& document, std::string_view text, XmlReview* pReview)
    : m_Document(document), m_Text(text.substr(0, text.find('\0'))), m_Review(pReview)
{
    if (m_Review) m_Review->Begin(m_Text);
}

int XmlParser::Parse()
{
    const int result = ParseConstructs();
    OrderProlog();
    return result;
}

int XmlParser::ParseConstructs()
{
    while (!m_RootClosed) {
        const std::size_t bracket = m_Text.find('<', m_Cursor);
        // Wanted (targets): elements that the end of the text leaves open are no fault.
        if (bracket == std::string_view::npos) {
            if (m_Review) m_Review->NoteEnd(m_Element);
            return XmlParsed;
        }
        if (m_Element) AddText(m_Text.substr(m_Cursor, bracket - m_Cursor));
        else if (m_Review) m_Review->NoteOutsideText(m_Cursor, bracket);
        m_Cursor = bracket + 1;
        const bool isClosing = m_Element && !IsAtEnd() && m_Text[m_Cursor] == '/';
        const int result = isClosing ? ParseClosingTag() : ParseConstruct();
        if (result != XmlParsed) {
            if (m_Review) m_Review->NoteStop(result, bracket);
            return result;
        }
    }
    if (m_Review) m_Review->NoteRootEnd(m_Cursor);
    return XmlParsed;
}

int XmlParser::ParseConstruct()
{
    constexpr MarkForm forms[] = {   // the longer starts first
        {"![CDATA[", "]]>", g_XmlCData, false, XmlCDataNotClosed},
        {"!--", "-->", g_XmlComment, false, XmlCommentNotClosed},
        {"?", "?>", g_XmlInstruction, false, XmlInstructionNotClosed},
        // The first ">" ends a declaration, so one with an internal subset ends early.
        {"!", ">", g_XmlDeclaration, true, XmlDeclarationNotClosed},
    };

    const std::size_t bracket = m_Cursor - 1;
    SkipWhiteSpace();
    if (IsAtEnd()) return XmlEndBehindBracket;
    if (m_Review) m_Review->NoteBracket(bracket, m_Cursor);
    for (const MarkForm& form : forms)
        if (m_Text.substr(m_Cursor).starts_with(form.start)) return ParseMark(form);
    return ParseStartTag();
}

int XmlParser::ParseMark(const MarkForm& form)
{
    const std::size_t content = m_Cursor + form.start.size();
    const std::size_t end = m_Text.find(form.end, content);
    if (end == std::string_view::npos) return form.nResult;
    if (m_Review) m_Review->NoteMark(m_Cursor, end, m_Element != nullptr);
    const std::size_t start = form.bKeepStart ? m_Cursor : content;
    AddMark(form.name, m_Text.substr(start, end - start));
    m_Cursor = end + form.end.size();
    return XmlParsed;
}

void XmlParser::AddMark(std::string_view name, std::string_view text)
{
    if (!m_Element && name == g_XmlComment) ++m_CommentCount;
    CXmlNode& parent = m_Element ? *m_Element : m_Document.m_Prolog;
    parent.AddChild(name, text);
}

// Kept (files): the comments outside the root element come first, the last of them leading; all else follows in
// its order. Done at the end, since putting each comment in front would cost their number squared.
void XmlParser::OrderProlog()
{
    std::vector<std::unique_ptr<CXmlNode>>& nodes = m_Document.m_Prolog.m_Children;
    std::vector<std::unique_ptr<CXmlNode>> ordered(nodes.size());
    std::size_t nextComment = m_CommentCount;   // counted down
    std::size_t nextOther = m_CommentCount;
    for (std::unique_ptr<CXmlNode>& pNode : nodes) {
        const std::size_t place = pNode->m_Name == g_XmlComment ? --nextComment : nextOther++;
        ordered[place] = std::move(pNode);
    }
    nodes = std::move(ordered);
}

int XmlParser::ParseStartTag()
{
    const std::size_t start = m_Cursor;
    if (!MoveTo(g_ElementNameEnd)) return XmlEndInElementName;
    const std::string_view name = m_Text.substr(start, m_Cursor - start);
    CXmlNode* pNode = m_Element ? m_Element->AddChild(name) : &m_Document.m_Root;
    if (!m_Element) pNode->m_Name = name;
    if (m_Review) m_Review->NoteElement(*pNode, start);

    bool bClosed = false;
    const int result = ParseAttributes(*pNode, bClosed);
    if (result != XmlParsed) return result;
    if (!bClosed) m_Element = pNode;
    else if (!m_Element) m_RootClosed = true;
    return XmlParsed;
}

int XmlParser::ParseAttributes(CXmlNode& node, bool& bClosed)
{
    for (;;) {
        SkipWhiteSpace();
        if (IsAtEnd()) return XmlEndInTag;
        if (m_Text[m_Cursor] == '/') {
            const std::size_t slash = m_Cursor;
            bClosed = true;
            if (!MoveBehind('>')) return XmlEndBeforeTagEnd;
            if (m_Review) m_Review->NoteSlash(slash, m_Cursor - 1);
            return XmlParsed;
        }
        if (m_Text[m_Cursor] == '>') {
            ++m_Cursor;
            return XmlParsed;
        }
        const int result = ParseAttribute(node);
        if (result != XmlParsed) return result;
    }
}

int XmlParser::ParseAttribute(CXmlNode& node)
{
    const std::size_t nameStart = m_Cursor;
    if (!MoveTo(g_AttributeNameEnd)) return XmlEndInAttributeName;
    std::string name(m_Text.substr(nameStart, m_Cursor - nameStart));
    // Entered before its value is known: a fault in the value leaves it empty. Repeated names are let in.
    node.m_Attributes.push_back(std::make_unique<CXmlAttribute>(std::move(name), std::string()));
    CXmlAttribute& attribute = *node.m_Attributes.back();
    if (m_Review) m_Review->NoteAttribute(attribute, nameStart);

    SkipWhiteSpace();
    if (IsAtEnd()) return XmlEndBehindAttributeName;
    if (m_Text[m_Cursor] != '=') return XmlNoEqualsSign;
    const std::size_t equalsSign = m_Cursor;
    // Junk between the equals sign and the quote is tolerated.
    if (!MoveTo("'\"")) return XmlNoQuote;
    const std::size_t valueStart = m_Cursor + 1;
    const std::size_t valueEnd = m_Text.find(m_Text[m_Cursor], valueStart);
    if (valueEnd == std::string_view::npos) return XmlQuoteNotClosed;
    attribute.m_Value = DecodeEntities(m_Text.substr(valueStart, valueEnd - valueStart));
    if (m_Review) m_Review->NoteValue(attribute, equalsSign, valueStart - 1, valueEnd);
    m_Cursor = valueEnd + 1;
    return XmlParsed;
}

int XmlParser::ParseClosingTag()
{
    const std::size_t slash = m_Cursor++;
    SkipWhiteSpace();
    if (IsAtEnd()) return XmlEndInClosingTag;
    const std::size_t start = m_Cursor;
    if (!MoveTo(g_ClosingNameEnd)) return XmlEndInClosingName;
    // Wanted (targets): the closing name need only be the beginning of the element's, so </ab> closes <abc>.
    const std::size_t end = m_Cursor;
    if (!m_Element->m_Name.starts_with(m_Text.substr(start, end - start))) return XmlWrongClosingName;
    if (!MoveBehind('>')) return XmlEndBeforeTagEnd;
    if (m_Review) m_Review->NoteClosingTag(*m_Element, slash, start, end, m_Cursor - 1);
    m_Element = m_Element->m_Parent;
    m_RootClosed = m_Element == nullptr;
    return XmlParsed;
}

// Line ends inside the text and all bytes beyond plain ASCII go, which lets base64 text be wrapped.
void XmlParser::AddText(std::string_view raw)
{
    const std::size_t start = raw.find_first_not_of(g_WhiteSpace);
    if (start == std::string_view::npos) return;
    std::string text;
    for (const char c : raw.substr(start))
        if (c >= 0x20 && c <= 0x7E) text.push_back(c);
    text.erase(text.find_last_not_of(' ') + 1);
    m_Element->m_Text += DecodeEntities(text);
}

void XmlParser::SkipWhiteSpace()
{
    m_Cursor = std::min(m_Text.find_first_not_of(g_WhiteSpace, m_Cursor), m_Text.size());
}

bool XmlParser::MoveTo(std::string_view characters)
{
    m_Cursor = std::min(m_Text.find_first_of(characters, m_Cursor), m_Text.size());
    return !IsAtEnd();
}

bool XmlParser::MoveBehind(char c)
{
    if (!MoveTo(std::string_view(&c, 1))) return false;
    ++m_Cursor;
    return true;
}
