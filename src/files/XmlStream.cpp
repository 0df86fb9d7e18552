#include "files/XmlStream.h"

#include "files/TextFile.h"
#include "files/XmlEntities.h"

#include <cassert>
#include <charconv>
#include <iterator>

static constexpr std::size_t g_PieceSize = 65536;   // bytes gathered before a piece leaves

XmlStream::XmlStream(Form form, std::string& out, TextFile* pFile) : m_Form(form), m_Out(out), m_File(pFile) {}

// <name
void XmlStream::BeginElement(std::string_view name)
{
    BeginChild();
    m_Out += '<';
    m_Out += name;
    m_Open.push_back({name});
}

//  name="value"
void XmlStream::WriteAttribute(std::string_view name, std::string_view value)
{
    assert(!m_Open.empty() && m_Open.back().stage == Stage::InTag && "attributes stand in the start tag");
    m_Out += ' ';
    m_Out += name;
    m_Out += "=\"";
    AppendEncoded(m_Out, value, XmlPlace::AttributeValue);
    m_Out += '"';
}

void XmlStream::WriteAttribute(std::string_view name, std::int64_t value)
{
    char digits[20];   // the longest: "-9223372036854775808"
    const std::to_chars_result result = std::to_chars(std::begin(digits), std::end(digits), value);
    WriteAttribute(name, std::string_view(digits, static_cast<std::size_t>(result.ptr - digits)));
}

void XmlStream::WriteAttribute(std::string_view name, bool value)
{
    WriteAttribute(name, value ? "True" : "False");
}

void XmlStream::WriteText(std::string_view text)
{
    assert(!m_Open.empty() && m_Open.back().stage != Stage::BehindChild && "text stands in front of the children");
    if (text.empty()) return;
    CloseTag(m_Open.back());
    AppendEncoded(m_Out, text, XmlPlace::ElementText);
}

// <name/>
// <name>text</name>
// </name>                     on a line of its own, behind children
void XmlStream::EndElement()
{
    assert(!m_Open.empty() && "an element that is ended has begun");
    const OpenElement element = m_Open.back();
    m_Open.pop_back();
    if (element.stage == Stage::InTag) {
        m_Out += "/>";
    } else {
        if (element.stage == Stage::BehindChild && m_Form == Form::Formatted) m_Out.append(m_Open.size(), '\t');
        m_Out += "</";
        m_Out += element.name;
        m_Out += '>';
    }
    EndChild();
}

void XmlStream::WriteMark(std::string_view mark)
{
    BeginChild();
    m_Out += mark;
    EndChild();
}

void XmlStream::WritePrologMark(std::string_view mark)
{
    m_Out += mark;
    m_Out += "\r\n";
    PassOn();
}

void XmlStream::CloseTag(OpenElement& element)
{
    if (element.stage == Stage::InTag) m_Out += '>';
    element.stage = Stage::BehindText;
}

// The first child stands on a line of its own like all others: the element's start tag, or its text, ends there.
void XmlStream::BeginChild()
{
    if (m_Open.empty()) return;
    OpenElement& parent = m_Open.back();
    if (parent.stage != Stage::BehindChild) {
        CloseTag(parent);
        BreakLine();
        parent.stage = Stage::BehindChild;
    }
    if (m_Form == Form::Formatted) m_Out.append(m_Open.size(), '\t');
}

// No line end behind the root.
void XmlStream::EndChild()
{
    if (!m_Open.empty()) BreakLine();
}

void XmlStream::BreakLine()
{
    if (m_Form == Form::Formatted) m_Out += "\r\n";
    PassOn();
}

void XmlStream::PassOn()
{
    if (!m_File || m_Out.size() < g_PieceSize) return;
    if (!m_Failed) m_Failed = m_File->WriteString(m_Out) != 0;
    m_Out.clear();
}

bool XmlStream::Finish()
{
    if (!m_File) return true;
    if (!m_Failed) m_Failed = m_File->WriteString(m_Out) != 0;
    m_Out.clear();
    return !m_Failed;
}
