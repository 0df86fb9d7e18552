#include "files/XmlNode.h"

#include "files/Format.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <utility>

namespace
{

constexpr char g_PathSeparator = '\\';
constexpr std::string_view g_HexMark = "0x";

}   // namespace

static std::string_view WithoutLeadingWhiteSpace(std::string_view text)
{
    const std::size_t start = text.find_first_not_of(" \t\n\v\f\r");
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

// Decimal number at the start of the text, the nearest 64-bit value if it is too large.
static std::int64_t ScanDecimal(std::string_view text)
{
    text = WithoutLeadingWhiteSpace(text);
    if (text.starts_with('+')) text.remove_prefix(1);
    std::int64_t value = 0;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc::result_out_of_range) return value;
    return text.starts_with('-') ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
}

static int HexDigitOf(char c)
{
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Hexadecimal number as scanf reads one: white space, a sign and a second mark may stand in front. Digits
// beyond 64 bits push the first ones out.
static std::uint64_t ScanHexadecimal(std::string_view text)
{
    text = WithoutLeadingWhiteSpace(text);
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) text.remove_prefix(1);
    if (text.starts_with("0x") || text.starts_with("0X")) text.remove_prefix(g_HexMark.size());
    std::uint64_t value = 0;
    for (const char c : text) {
        const int digit = HexDigitOf(c);
        if (digit < 0) break;
        value = value << 4 | static_cast<std::uint64_t>(digit);
    }
    return isNegative ? 0 - value : value;
}

int CXmlAttribute::GetInt() const
{
    const int value = ToInt(m_Value);
    if (value != 0 || !m_Value.starts_with(g_HexMark)) return value;
    const std::uint64_t scanned = ScanHexadecimal(std::string_view(m_Value).substr(g_HexMark.size()));
    return static_cast<int>(static_cast<std::uint32_t>(scanned));
}

std::int64_t CXmlAttribute::GetInt64() const
{
    const std::int64_t value = ScanDecimal(m_Value);
    if (value != 0 || !m_Value.starts_with(g_HexMark)) return value;
    return static_cast<std::int64_t>(ScanHexadecimal(std::string_view(m_Value).substr(g_HexMark.size())));
}

double CXmlAttribute::GetDouble() const
{
    return std::strtod(m_Value.c_str(), nullptr);
}

bool CXmlAttribute::GetBool() const
{
    return EqualIgnoringCase(m_Value, "yes") || EqualIgnoringCase(m_Value, "true") || m_Value == "1";
}

// Deletes nodes and all below them: each gives its children to the list before it goes, so that no
// destructor ever finds any.
static void DeleteNodes(std::vector<std::unique_ptr<CXmlNode>>& nodes)
{
    while (!nodes.empty()) {
        const std::unique_ptr<CXmlNode> pNode = std::move(nodes.back());
        nodes.pop_back();
        std::move(pNode->m_Children.begin(), pNode->m_Children.end(), std::back_inserter(nodes));
        pNode->m_Children.clear();
    }
}

CXmlNode::~CXmlNode()
{
    DeleteNodes(m_Children);
}

// The first part of the path, which keeps the rest; false behind the last part.
static bool TakePart(std::string_view& path, std::string_view& part, bool& bMore)
{
    if (!bMore) return false;
    const std::size_t end = path.find(g_PathSeparator);
    part = path.substr(0, end);
    bMore = end != std::string_view::npos;
    path.remove_prefix(bMore ? end + 1 : path.size());
    return true;
}

static const CXmlNode* FindChildOfName(const CXmlNode* pNode, std::string_view name)
{
    for (const std::unique_ptr<CXmlNode>& pChild : pNode->m_Children)
        if (pChild->m_Name == name) return pChild.get();
    return nullptr;
}

const CXmlNode* CXmlNode::FindChild(std::string_view path) const
{
    if (path.empty()) return nullptr;
    const CXmlNode* pNode = this;
    std::string_view part;
    for (bool bMore = true; pNode && TakePart(path, part, bMore);) pNode = FindChildOfName(pNode, part);
    return pNode;
}

CXmlNode* CXmlNode::FindChild(std::string_view path)
{
    return const_cast<CXmlNode*>(std::as_const(*this).FindChild(path));
}

CXmlNode* CXmlNode::FindFirstChild(std::string_view path)
{
    path.remove_prefix(std::min(path.find_first_not_of(' '), path.size()));
    const std::size_t separator = path.rfind(g_PathSeparator);
    const bool isBelow = separator != std::string_view::npos;
    m_IterationOwner = isBelow ? FindChild(path.substr(0, separator)) : this;
    if (!m_IterationOwner) return nullptr;

    const std::string_view name = isBelow ? path.substr(separator + 1) : path;
    m_IterationOwner->m_ChildFilter = name.empty() ? nullptr : std::make_unique<std::string>(name);
    m_IterationOwner->m_ChildCursor = 0;
    return FindNextChild();
}

CXmlNode* CXmlNode::FindNextChild()
{
    CXmlNode* pOwner = m_IterationOwner;
    if (!pOwner) return nullptr;
    while (pOwner->m_ChildCursor < static_cast<int>(pOwner->m_Children.size())) {
        CXmlNode* pChild = pOwner->m_Children[static_cast<std::size_t>(pOwner->m_ChildCursor++)].get();
        if (!pOwner->m_ChildFilter || pChild->m_Name == *pOwner->m_ChildFilter) return pChild;
    }
    return nullptr;
}

int CXmlNode::CountChildren(std::string_view name) const
{
    if (name.empty()) return static_cast<int>(m_Children.size());
    const auto hasName = [name](const std::unique_ptr<CXmlNode>& pChild) { return pChild->m_Name == name; };
    return static_cast<int>(std::count_if(m_Children.begin(), m_Children.end(), hasName));
}

int CXmlNode::GetCData(std::string_view path, std::string& text) const
{
    const CXmlNode* pNode = path.empty() ? this : FindChild(path);
    const CXmlNode* pSection = pNode ? FindChildOfName(pNode, g_XmlCData) : nullptr;
    if (!pSection) return 0;
    text = pSection->m_Text;
    return 1;
}

void CXmlNode::GetChildText(std::string& text, std::string_view path, std::string_view defaultText) const
{
    const CXmlNode* pNode = FindChild(path);
    text = pNode ? std::string_view(pNode->m_Text) : defaultText;
}

const CXmlAttribute* CXmlNode::GetAttributeNode(std::string_view name) const
{
    for (const std::unique_ptr<CXmlAttribute>& pAttribute : m_Attributes)
        if (pAttribute->m_Name == name) return pAttribute.get();
    return nullptr;
}

CXmlAttribute* CXmlNode::GetAttributeNode(std::string_view name)
{
    return const_cast<CXmlAttribute*>(std::as_const(*this).GetAttributeNode(name));
}

CXmlAttribute* CXmlNode::FirstAttribute()
{
    m_AttrCursor = 0;
    return NextAttribute();
}

CXmlAttribute* CXmlNode::NextAttribute()
{
    if (m_AttrCursor >= static_cast<int>(m_Attributes.size())) return nullptr;
    return m_Attributes[static_cast<std::size_t>(m_AttrCursor++)].get();
}

void CXmlNode::GetAttribute(std::string& text, std::string_view name, std::string_view defaultText) const
{
    const CXmlAttribute* pAttribute = GetAttributeNode(name);
    text = pAttribute ? std::string_view(pAttribute->m_Value) : defaultText;
}

int CXmlNode::GetAttributeInt(std::string_view name, int defaultValue) const
{
    const CXmlAttribute* pAttribute = GetAttributeNode(name);
    return pAttribute ? pAttribute->GetInt() : defaultValue;
}

std::int64_t CXmlNode::GetAttributeInt64(std::string_view name, std::int64_t defaultValue) const
{
    const CXmlAttribute* pAttribute = GetAttributeNode(name);
    return pAttribute ? pAttribute->GetInt64() : defaultValue;
}

double CXmlNode::GetAttributeDouble(std::string_view name, double defaultValue) const
{
    const CXmlAttribute* pAttribute = GetAttributeNode(name);
    return pAttribute ? pAttribute->GetDouble() : defaultValue;
}

bool CXmlNode::GetAttributeBool(std::string_view name, bool defaultValue) const
{
    const CXmlAttribute* pAttribute = GetAttributeNode(name);
    return pAttribute ? pAttribute->GetBool() : defaultValue;
}

void CXmlNode::SetAttribute(std::string_view name, std::string_view text)
{
    CXmlAttribute* pAttribute = GetAttributeNode(name);
    if (pAttribute) pAttribute->m_Value = text;
    else m_Attributes.push_back(std::make_unique<CXmlAttribute>(std::string(name), std::string(text)));
}

void CXmlNode::SetAttribute(std::string_view name, short value)
{
    SetAttribute(name, FormatText("%hd", value));
}

void CXmlNode::SetAttribute(std::string_view name, long value)
{
    SetAttribute(name, FormatText("%ld", value));
}

void CXmlNode::SetAttribute(std::string_view name, long long value)
{
    SetAttribute(name, FormatText("%lld", value));
}

void CXmlNode::SetAttribute(std::string_view name, float value)
{
    SetAttribute(name, static_cast<double>(value));
}

void CXmlNode::SetAttribute(std::string_view name, double value)
{
    SetAttribute(name, FormatReal(value));
}

void CXmlNode::SetAttribute(std::string_view name, bool value)
{
    SetAttribute(name, value ? "True" : "False");
}

void CXmlNode::RemoveAttribute(std::string_view name)
{
    const auto hasName = [name](const auto& pAttribute) { return pAttribute->m_Name == name; };
    const auto found = std::find_if(m_Attributes.begin(), m_Attributes.end(), hasName);
    if (found == m_Attributes.end()) return;
    // An iteration under way goes on with the attribute that it would have come to.
    if (found - m_Attributes.begin() < m_AttrCursor) --m_AttrCursor;
    m_Attributes.erase(found);
}

CXmlNode* CXmlNode::AddChild(std::string_view name, std::string_view text)
{
    m_Children.push_back(std::make_unique<CXmlNode>());
    CXmlNode* pChild = m_Children.back().get();
    pChild->m_Parent = this;
    pChild->m_Name = name;
    pChild->m_Text = text;
    return pChild;
}

CXmlNode* CXmlNode::AddChildInt(std::string_view name, long value)
{
    return AddChild(name, FormatText("%ld", value));
}

CXmlNode* CXmlNode::AddChildCData(std::string_view name, std::string_view text)
{
    CXmlNode* pChild = AddChild(name);
    pChild->AddCData(text);
    return pChild;
}

CXmlNode* CXmlNode::AddCData(std::string_view text)
{
    return AddChild(g_XmlCData, text);
}

CXmlNode* CXmlNode::AddInstruction(std::string_view text)
{
    return AddChild(g_XmlInstruction, text);
}

static bool IsBelow(const CXmlNode* pNode, const CXmlNode* pAncestor)
{
    for (pNode = pNode->m_Parent; pNode; pNode = pNode->m_Parent)
        if (pNode == pAncestor) return true;
    return false;
}

// Ends the iterations of this node and of those above it whose owner lies below this node and is about to go.
static void EndIterationsBelow(CXmlNode* pNode)
{
    for (CXmlNode* pHolder = pNode; pHolder; pHolder = pHolder->m_Parent)
        if (pHolder->m_IterationOwner && IsBelow(pHolder->m_IterationOwner, pNode)) pHolder->m_IterationOwner = nullptr;
}

void CXmlNode::Remove()
{
    Clear();
    if (!m_Parent) return;
    for (CXmlNode* pHolder = m_Parent; pHolder; pHolder = pHolder->m_Parent)
        if (pHolder->m_IterationOwner == this) pHolder->m_IterationOwner = nullptr;

    CXmlNode* pParent = m_Parent;
    const auto isThis = [this](const std::unique_ptr<CXmlNode>& pChild) { return pChild.get() == this; };
    const auto found = std::find_if(pParent->m_Children.begin(), pParent->m_Children.end(), isThis);
    if (found == pParent->m_Children.end()) return;
    if (found - pParent->m_Children.begin() < pParent->m_ChildCursor) --pParent->m_ChildCursor;
    pParent->m_Children.erase(found);   // this node is gone from here on
}

void CXmlNode::Clear()
{
    EndIterationsBelow(this);
    DeleteNodes(m_Children);
    m_Attributes.clear();
    m_Name.clear();
    m_Text.clear();
    m_AttrCursor = 0;
    m_ChildCursor = 0;
}

static void CopyAttributes(CXmlNode& target, const CXmlNode& source)
{
    const std::size_t reused = std::min(target.m_Attributes.size(), source.m_Attributes.size());
    target.m_Attributes.resize(reused);
    for (std::size_t i = 0; i < reused; ++i) *target.m_Attributes[i] = *source.m_Attributes[i];
    for (std::size_t i = reused; i < source.m_Attributes.size(); ++i)
        target.m_Attributes.push_back(std::make_unique<CXmlAttribute>(*source.m_Attributes[i]));
}

// Gives the node that many children, those that it has first; surplus ones go.
static void SetChildCount(CXmlNode& node, std::size_t count)
{
    std::vector<std::unique_ptr<CXmlNode>> surplus;
    for (; node.m_Children.size() > count; node.m_Children.pop_back())
        surplus.push_back(std::move(node.m_Children.back()));
    DeleteNodes(surplus);
    while (node.m_Children.size() < count) node.AddChild({});
}

static void CopyTree(CXmlNode* pTarget, const CXmlNode* pSource)
{
    std::vector<std::pair<CXmlNode*, const CXmlNode*>> open = {{pTarget, pSource}};
    while (!open.empty()) {
        const auto [pCopy, pOriginal] = open.back();
        open.pop_back();
        pCopy->m_Name = pOriginal->m_Name;
        pCopy->m_Text = pOriginal->m_Text;
        pCopy->m_AttrCursor = 0;
        pCopy->m_ChildCursor = 0;
        pCopy->m_IterationOwner = nullptr;
        CopyAttributes(*pCopy, *pOriginal);
        SetChildCount(*pCopy, pOriginal->m_Children.size());
        for (std::size_t i = 0; i < pOriginal->m_Children.size(); ++i)
            open.emplace_back(pCopy->m_Children[i].get(), pOriginal->m_Children[i].get());
    }
}

void CXmlNode::CopyFrom(const CXmlNode* pNode)
{
    if (pNode == this) return;
    if (!pNode) {
        Clear();
        return;
    }
    EndIterationsBelow(this);
    if (!IsBelow(this, pNode) && !IsBelow(pNode, this)) {
        CopyTree(this, pNode);
        return;
    }
    // One lies inside the other: the copy would change its own source.
    CXmlNode copy;
    CopyTree(&copy, pNode);
    CopyTree(this, &copy);
}
