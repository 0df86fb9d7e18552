#pragma once

#include <string>

class CXmlDocument;
class CXmlNode;
class TextFile;

// Writes a document as text, element by element and without recursion. The text is built in m_Out of the
// document; with a file it leaves in pieces, since the indentation of a deep document is far larger than
// the document.
class XmlWriter
{
public:
    enum class Form { Formatted, Compact };   // with or without line ends and tabs inside the tree

    XmlWriter(CXmlDocument& document, Form form, TextFile* pFile);

    bool Write();                             // false if the file could not take all of it

private:
    void WriteProlog();
    void WriteTree(const CXmlNode& root);
    bool WriteMark(const CXmlNode& node);
    bool BeginNode(const CXmlNode& node);
    void EndElement(const CXmlNode& node);
    void BeginLine();
    void EndLine();
    void PassOn();

    CXmlDocument& m_Document;
    std::string& m_Out;
    Form m_Form;
    TextFile* m_File;                         // null: the text stays in m_Out
    bool m_Failed = false;
};
