#pragma once

#include "files/XmlNode.h"

#include <string>
#include <string_view>

class TextFile;
class XmlReview;

// A document in memory, read from and written to a file: the target description, the debug file.
// The text in the nodes is single-byte text in the ANSI code page.
class CXmlDocument
{
public:
    virtual ~CXmlDocument() = default;

    // 0, or a negative error if the file can't be opened, is empty or can't be parsed. What was read
    // before a parse failure stays in the tree, what was there before the call doesn't.
    // A review, if one is given, is filled with the places and faults of the text, and is good as long as the
    // nodes are.
    int Load(const std::string& fileName, XmlReview* pReview = nullptr);
    int Load(TextFile& file, XmlReview* pReview = nullptr);                    // open for reading; read to its end
    int LoadFromString(std::string_view text, XmlReview* pReview = nullptr);   // of bytes in the code page in memory
    // 0 or a negative error. The earlier file is replaced only when the new text was written whole.
    int Save(const std::string& fileName);           // with line ends and tabs
    int SaveCompact(const std::string& fileName);    // without them
    void GetXml(std::string& text);                  // the compact form
    void GetFormattedXml(std::string& text);         // the other one
    void Clear();

    CXmlNode m_Root;                 // the document element
    int m_CharSize = 1;              // width of a character in the write buffer, bytes
    int m_Encoding = 4;              // of files, see TextFile: 4 is UTF-8
    CXmlNode m_Prolog;               // its children are what stands outside the document element
    int m_Indent = 0;                // of the document element; the levels below it are the writer's
    std::string m_Out;               // the text being written
    std::string m_Reserved;          // always empty
};
