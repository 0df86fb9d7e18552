#include "files/XmlWriter.h"

#include "files/XmlDocument.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace
{

// An element whose children are being written.
struct OpenNode
{
    const CXmlNode* pNode;
    std::size_t nNext;                        // position of the child that comes next
};

}   // namespace

XmlWriter::XmlWriter(CXmlDocument& document, Form form, TextFile* pFile)
    : m_Document(document), m_Stream(form, document.m_Out, pFile)
{
}

bool XmlWriter::Write()
{
    if (m_Document.m_Root.m_Name.empty()) m_Document.m_Root.m_Name = "xml";
    m_Document.m_Indent = 0;
    m_Document.m_Out.clear();
    WriteProlog();
    WriteTree(m_Document.m_Root);
    return m_Stream.Finish();
}

// <!--text-->
// <?text?>
// <![CDATA[text]]>
// <text>
// Empty for an element.
static std::string GetMark(const CXmlNode& node)
{
    if (node.m_Name == g_XmlComment) return "<!--" + node.m_Text + "-->";
    if (node.m_Name == g_XmlInstruction) return "<?" + node.m_Text + "?>";
    if (node.m_Name == g_XmlCData) return "<![CDATA[" + node.m_Text + "]]>";
    if (node.m_Name == g_XmlDeclaration) return "<" + node.m_Text + ">";
    return {};
}

void XmlWriter::WriteProlog()
{
    for (const std::unique_ptr<CXmlNode>& pNode : m_Document.m_Prolog.m_Children) {
        // Kept (files): a CDATA section outside the root element isn't written.
        const std::string mark = pNode->m_Name == g_XmlCData ? std::string() : GetMark(*pNode);
        if (!mark.empty()) m_Stream.WritePrologMark(mark);
    }
}

// An element with children stays open for them, and the result is true.
bool XmlWriter::BeginNode(const CXmlNode& node)
{
    const std::string mark = GetMark(node);
    if (!mark.empty()) {
        m_Stream.WriteMark(mark);
        return false;
    }
    m_Stream.BeginElement(node.m_Name);
    for (const std::unique_ptr<CXmlAttribute>& pAttribute : node.m_Attributes)
        m_Stream.WriteAttribute(pAttribute->m_Name, pAttribute->m_Value);
    m_Stream.WriteText(node.m_Text);
    if (!node.m_Children.empty()) return true;
    m_Stream.EndElement();
    return false;
}

void XmlWriter::WriteTree(const CXmlNode& root)
{
    std::vector<OpenNode> open;
    if (BeginNode(root)) open.push_back({&root, 0});
    while (!open.empty() && !m_Stream.HasFailed()) {
        OpenNode& last = open.back();
        if (last.nNext == last.pNode->m_Children.size()) {
            m_Stream.EndElement();
            open.pop_back();
            continue;
        }
        const CXmlNode& child = *last.pNode->m_Children[last.nNext++];
        if (BeginNode(child)) open.push_back({&child, 0});
    }
}
