#include "frontend/Node.h"

#include "files/Fatal.h"
#include "files/Format.h"
#include "files/OutputTextFile.h"
#include "model/InitValue.h"

#include <algorithm>
#include <new>
#include <string>
#include <vector>

// The array left behind is lost until the arena is reset; all those of one list are no longer than the last.
void CNodeList::reserve(std::size_t capacity)
{
    if (capacity <= m_Capacity) return;
    CNode** const pNodes = static_cast<CNode**>(m_pArena->Allocate(capacity * sizeof(CNode*)));
    std::copy(begin(), end(), pNodes);
    m_pNodes = pNodes;
    m_Capacity = static_cast<std::uint32_t>(capacity);
}

NodeExtras& CNode::MakeExtras()
{
    if (!m_pExtras) m_pExtras = new (m_Children.GetArena().Allocate(sizeof(NodeExtras))) NodeExtras;
    return *m_pExtras;
}

void CNode::FailWithoutChild()
{
    InternalFault("a syntax tree node has no child of that number");
}

bool CNode::ComparesTruths() const
{
    return IsComparison(nKind) && Child(0)->IsBooleanLiteral() && Child(1)->IsBooleanLiteral();
}

// A node on the way down and the child that comes next.
struct OpenNode
{
    const CNode* pNode;
    std::size_t nextChild = 0;
};

static bool IsNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

static std::string GetElementName(int kind)
{
    if (kind == 0) return {};   // a call that could not be built
    std::string name = GetOperatorText(kind);
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
}

// An operator can't be an element's name: it goes into an attribute of an element "Node".
static bool NeedsGenericForm(std::string_view name)
{
    return name.empty() || !std::all_of(name.begin(), name.end(), IsNameCharacter);
}

static std::string EscapeAngles(std::string_view name)
{
    std::string text;
    for (const char c : name) {
        if (c == '<') text += "&lt;";
        else if (c == '>') text += "&gt;";
        else text += c;
    }
    return text;
}

static void AppendAttribute(std::string& text, std::string_view key, std::string_view value)
{
    text += ' ';
    text += key;
    text += "=\"";
    text += value;   // as it is: the dump has never escaped values
    text += '"';
}

static void AppendNameAttributes(const CNode& node, std::string& text)
{
    if (!node.pName) return;
    AppendAttribute(text, "name", node.GetName());
    if (node.GetInit()) AppendAttribute(text, "value", node.GetInit()->GetText(true));
    if (node.GetDirect()) AppendAttribute(text, "direct", node.GetDirect()->GetText());
}

static void AppendAttributes(const CNode& node, std::string& text)
{
    switch (node.nKind) {
    case IMM_INTEGER:
        AppendAttribute(text, "value", FormatText("%lld", static_cast<long long>(node.nValue)));
        break;
    case IMM_REAL: AppendAttribute(text, "value", FormatReal(node.GetReal())); break;
    case IDENTIFIER: AppendNameAttributes(node, text); break;
    case STR_DIR: AppendAttribute(text, "value", node.GetString()); break;
    case LIST_ID: AppendNameAttributes(node, text); break;
    case RETURN_TYPE: AppendNameAttributes(node, text); break;
    case FUNCTION_CALL: AppendAttribute(text, "name", node.GetName()); break;
    default: break;
    }
}

static std::string GetStartLine(const CNode& node)
{
    const std::string name = GetElementName(node.nKind);
    // Kept (files): the blank in front.
    if (NeedsGenericForm(name)) return " <Node name=\"" + EscapeAngles(name) + "\">\n";
    std::string text = "<" + name;
    AppendAttributes(node, text);
    return text + ">\n";
}

static std::string GetEndLine(const CNode& node)
{
    const std::string name = GetElementName(node.nKind);
    if (NeedsGenericForm(name)) return "</Node>\n";
    return "</" + name + ">\n";
}

void CNode::WriteXml(OutputTextFile& file) const
{
    std::vector<OpenNode> path;
    file.Write(GetStartLine(*this));
    path.push_back({this});
    while (!path.empty()) {
        OpenNode& open = path.back();
        if (open.nextChild == open.pNode->m_Children.size()) {
            file.Write(GetEndLine(*open.pNode));
            path.pop_back();
            continue;
        }
        const CNode* pChild = open.pNode->m_Children[open.nextChild];
        ++open.nextChild;
        if (!pChild) continue;
        file.Write(GetStartLine(*pChild));
        path.push_back({pChild});   // ends the life of `open`
    }
}
