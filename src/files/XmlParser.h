#pragma once

#include <cstddef>
#include <string_view>

class CXmlDocument;
class CXmlNode;
class XmlReview;

// What ended a parse early; the numbers are those that the construct was given.
enum XmlParseResult : int
{
    XmlParsed = 0,                   // also where the text ends in the middle of an element
    XmlEndBehindBracket = 1,
    XmlEndInElementName = 2,
    XmlEndInTag = 3,
    XmlEndBeforeTagEnd = 4,
    XmlEndInAttributeName = 5,
    XmlEndBehindAttributeName = 6,
    XmlNoEqualsSign = 7,
    XmlNoQuote = 8,
    XmlQuoteNotClosed = 9,
    XmlEndInClosingTag = 10,
    XmlEndInClosingName = 11,
    XmlWrongClosingName = 12,
    XmlCDataNotClosed = 13,
    XmlCommentNotClosed = 15,
    XmlInstructionNotClosed = 17,
    XmlDeclarationNotClosed = 18
};

// Reads one document from a text that outlives the parser, up to the end of its root element or the first
// zero byte. It goes down into elements by keeping the open one, not by recursion, and looks at each byte
// a fixed number of times. What it read before a fault stays in the document. A review, if one is given, is told
// of places and of breaches of the form; it changes nothing in what is read.
class XmlParser
{
public:
    XmlParser(CXmlDocument& document, std::string_view text, XmlReview* pReview = nullptr);

    int Parse();                     // an XmlParseResult

private:
    struct MarkForm;

    int ParseConstructs();
    int ParseConstruct();
    int ParseMark(const MarkForm& form);
    int ParseStartTag();
    int ParseAttributes(CXmlNode& node, bool& bClosed);
    int ParseAttribute(CXmlNode& node);
    int ParseClosingTag();
    void AddMark(std::string_view name, std::string_view text);
    void AddText(std::string_view raw);
    void OrderProlog();

    bool IsAtEnd() const { return m_Cursor >= m_Text.size(); }
    void SkipWhiteSpace();
    // Moves the cursor to the next of these characters; false, and at the end, if there is none.
    bool MoveTo(std::string_view characters);
    bool MoveBehind(char c);

    CXmlDocument& m_Document;
    std::string_view m_Text;
    std::size_t m_Cursor = 0;
    XmlReview* m_Review = nullptr;   // not owned; null: nobody wants to know
    CXmlNode* m_Element = nullptr;   // the innermost open element; null outside the root element
    bool m_RootClosed = false;
    std::size_t m_CommentCount = 0;  // comments among the nodes of the prolog
};
