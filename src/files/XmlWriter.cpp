#include "files/XmlWriter.h"

#include "files/TextFile.h"
#include "files/XmlDocument.h"
#include "files/XmlEntities.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace
{

constexpr std::size_t g_PieceSize = 65536;   // bytes gathered before a piece leaves

// An element whose children are being written.
struct OpenElement
{
    const CXmlNode* pNode;
    std::size_t nNext;                        // position of the child that comes next
};

}   // namespace

XmlWriter::XmlWriter(CXmlDocument& document, Form form, TextFile* pFile)
    : m_Document(document), m_Out(document.m_Out), m_Form(form), m_File(pFile)
{
}

bool XmlWriter::Write()
{
    if (m_Document.m_Root.m_Name.empty()) m_Document.m_Root.m_Name = "xml";
    m_Document.m_Indent = 0;
    m_Out.clear();
    WriteProlog();
    WriteTree(m_Document.m_Root);
    if (m_File && !m_Failed) m_Failed = m_File->WriteString(m_Out) != 0;
    if (m_File) m_Out.clear();
    m_Document.m_Indent = 0;
    return !m_Failed;
}

// The line ends outside the root element belong to the compact form, too.
void XmlWriter::WriteProlog()
{
    for (const std::unique_ptr<CXmlNode>& pNode : m_Document.m_Prolog.m_Children) {
        // Kept: a CDATA section outside the root element isn't written.
        if (pNode->m_Name == g_XmlCData || !WriteMark(*pNode)) continue;
        m_Out += "\r\n";
        PassOn();
    }
}

// <!--text-->
// <?text?>
// <![CDATA[text]]>
// <text>
bool XmlWriter::WriteMark(const CXmlNode& node)
{
    if (node.m_Name == g_XmlComment) {
        m_Out += "<!--" + node.m_Text + "-->";
        return true;
    }
    if (node.m_Name == g_XmlInstruction) {
        m_Out += "<?" + node.m_Text + "?>";
        return true;
    }
    if (node.m_Name == g_XmlCData) {
        m_Out += "<![CDATA[" + node.m_Text + "]]>";
        return true;
    }
    if (node.m_Name == g_XmlDeclaration) {
        m_Out += "<" + node.m_Text + ">";
        return true;
    }
    return false;
}

// <name attribute="value"/>
// <name>text</name>
// <name>text
// The last form leaves the element open for its children, and the result is true.
bool XmlWriter::BeginNode(const CXmlNode& node)
{
    if (WriteMark(node)) return false;
    m_Out += "<" + node.m_Name;
    for (const std::unique_ptr<CXmlAttribute>& pAttribute : node.m_Attributes) {
        m_Out += " " + pAttribute->m_Name + "=\"";
        AppendEncoded(m_Out, pAttribute->m_Value, XmlPlace::AttributeValue);
        m_Out += "\"";
    }
    if (node.m_Text.empty() && node.m_Children.empty()) {
        m_Out += "/>";
        return false;
    }
    m_Out += ">";
    AppendEncoded(m_Out, node.m_Text, XmlPlace::ElementText);
    if (node.m_Children.empty()) {
        m_Out += "</" + node.m_Name + ">";
        return false;
    }
    EndLine();
    ++m_Document.m_Indent;
    return true;
}

void XmlWriter::EndElement(const CXmlNode& node)
{
    --m_Document.m_Indent;
    BeginLine();
    m_Out += "</" + node.m_Name + ">";
}

void XmlWriter::WriteTree(const CXmlNode& root)
{
    std::vector<OpenElement> open;
    if (BeginNode(root)) open.push_back({&root, 0});
    while (!open.empty() && !m_Failed) {
        OpenElement& last = open.back();
        if (last.nNext == last.pNode->m_Children.size()) {
            EndElement(*last.pNode);
            open.pop_back();
            if (!open.empty()) EndLine();   // no line end behind the root
            continue;
        }
        const CXmlNode& child = *last.pNode->m_Children[last.nNext++];
        BeginLine();
        if (BeginNode(child)) open.push_back({&child, 0});
        else EndLine();
    }
}

void XmlWriter::BeginLine()
{
    if (m_Form == Form::Formatted) m_Out.append(static_cast<std::size_t>(m_Document.m_Indent), '\t');
}

void XmlWriter::EndLine()
{
    if (m_Form == Form::Formatted) m_Out += "\r\n";
    PassOn();
}

void XmlWriter::PassOn()
{
    if (!m_File || m_Failed || m_Out.size() < g_PieceSize) return;
    m_Failed = m_File->WriteString(m_Out) != 0;
    m_Out.clear();
}
