#pragma once

#include "files/XmlStream.h"

#include <string>

class CXmlDocument;
class CXmlNode;
class TextFile;

// Tells a stream the nodes of a document in memory, in their order and without recursion. The text is built in
// m_Out of the document; with a file it leaves in pieces, since the indentation of a deep document is far
// larger than the document.
class XmlWriter
{
public:
    using Form = XmlStream::Form;

    XmlWriter(CXmlDocument& document, Form form, TextFile* pFile);

    bool Write();                             // false if the file could not take all of it

private:
    void WriteProlog();
    void WriteTree(const CXmlNode& root);
    bool BeginNode(const CXmlNode& node);

    CXmlDocument& m_Document;
    XmlStream m_Stream;
};
