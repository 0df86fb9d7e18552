#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// A name and a value, both as the document spells them, entities decoded.
class CXmlAttribute
{
public:
    CXmlAttribute(std::string name, std::string value) : m_Name(std::move(name)), m_Value(std::move(value)) {}
    virtual ~CXmlAttribute() = default;

    // The value as a number: decimal, or hexadecimal behind "0x" (small x); 0 if it is neither.
    int GetInt() const;
    std::int64_t GetInt64() const;
    double GetDouble() const;   // 0 if the text isn't a number
    bool GetBool() const;       // "yes", "true" and "1" in any case are true, all else is false

    std::string m_Name;
    std::string m_Value;
};

// The marks that stand in m_Name of a node that is no element.
inline constexpr std::string_view g_XmlComment = "!--";
inline constexpr std::string_view g_XmlInstruction = "?";
inline constexpr std::string_view g_XmlCData = "![CDATA[";
inline constexpr std::string_view g_XmlDeclaration = "!!!";

// One element, comment, instruction, CDATA section or declaration. A node owns its children and
// attributes; deleting or clearing a node of any depth needs no deep recursion.
class CXmlNode
{
public:
    CXmlNode() = default;
    virtual ~CXmlNode();
    CXmlNode(const CXmlNode&) = delete;
    CXmlNode& operator=(const CXmlNode&) = delete;

    // Reading. A path is child names separated by "\", each the first match; null if a part is missing.
    CXmlNode* FindChild(std::string_view path);
    const CXmlNode* FindChild(std::string_view path) const;
    // Iteration over the children of one name: the parts before the last select the node whose children
    // are walked; an empty path walks all children of this node. Null at the end.
    CXmlNode* FindFirstChild(std::string_view path);
    CXmlNode* FindNextChild();
    int CountChildren(std::string_view name = {}) const;                 // an empty name counts all
    int GetCData(std::string_view path, std::string& text) const;        // 1, or 0 if there is none
    void GetChildText(std::string& text, std::string_view path, std::string_view defaultText) const;
    CXmlAttribute* GetAttributeNode(std::string_view name);
    const CXmlAttribute* GetAttributeNode(std::string_view name) const;
    CXmlAttribute* FirstAttribute();
    CXmlAttribute* NextAttribute();                                      // null behind the last
    void GetAttribute(std::string& text, std::string_view name, std::string_view defaultText = {}) const;
    int GetAttributeInt(std::string_view name, int defaultValue = 0) const;
    std::int64_t GetAttributeInt64(std::string_view name, std::int64_t defaultValue = 0) const;
    double GetAttributeDouble(std::string_view name, double defaultValue = 0) const;
    bool GetAttributeBool(std::string_view name, bool defaultValue = false) const;

    // Writing. Setting an attribute replaces the first of that name, else appends one.
    void SetAttribute(std::string_view name, std::string_view text);
    void SetAttribute(std::string_view name, const char* text) { SetAttribute(name, std::string_view(text)); }
    void SetAttribute(std::string_view name, const std::string& text) { SetAttribute(name, std::string_view(text)); }
    void SetAttribute(std::string_view name, short value);
    void SetAttribute(std::string_view name, int value) { SetAttribute(name, static_cast<long>(value)); }
    void SetAttribute(std::string_view name, long value);
    void SetAttribute(std::string_view name, long long value);
    void SetAttribute(std::string_view name, float value);
    void SetAttribute(std::string_view name, double value);              // six digits behind the point
    void SetAttribute(std::string_view name, bool value);                // "True" or "False"
    void RemoveAttribute(std::string_view name);                         // the first of that name
    // The makers of children return the new child, the last one from then on.
    CXmlNode* AddChild(std::string_view name, std::string_view text = {});
    CXmlNode* AddChildInt(std::string_view name, long value);
    CXmlNode* AddChildCData(std::string_view name, std::string_view text);   // an element that holds a CDATA section
    CXmlNode* AddCData(std::string_view text);
    CXmlNode* AddInstruction(std::string_view text);
    void Remove();                                                       // deletes this node, if it has a parent
    void Clear();                                                        // all but the place among the siblings
    void CopyFrom(const CXmlNode* pNode);                                // deep; null clears

    int m_AttrCursor = 0;                     // position of the attribute iteration
    int m_ChildCursor = 0;                    // position of the child iteration
    std::unique_ptr<std::string> m_ChildFilter;   // name that FindNextChild looks for; null: every child
    CXmlNode* m_IterationOwner = nullptr;     // the node that holds the cursor of the current iteration
    CXmlNode* m_Parent = nullptr;             // null for the two nodes inside a document
    std::vector<std::unique_ptr<CXmlNode>> m_Children;
    std::vector<std::unique_ptr<CXmlAttribute>> m_Attributes;
    std::string m_Name;
    std::string m_Text;
};
