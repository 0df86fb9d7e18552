#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class TextFile;

// The one place that knows how a document looks as text. It is told the elements in the order of the text and
// forgets them: what it holds is the text that is still on its way and one entry for each open element, so
// that the memory for a document is bounded by its depth, however long it is.
//
//     <root>
//         <leaf attribute="value"/>
//         <other>text</other>
//     </root>
//
// An element is begun; takes its attributes, then its text, then its children, each of these if it has any;
// and is ended. Attributes are written as they come: nothing looks for a name that was there before. A stream
// writes one document and is done with it.
class XmlStream
{
public:
    enum class Form { Formatted, Compact };      // with or without line ends and tabs inside the root

    // The text is appended to `out`. With a file it leaves from there in pieces, which may begin and end
    // anywhere; without one it stays. Both belong to the caller and outlive the stream.
    XmlStream(Form form, std::string& out, TextFile* pFile);

    void BeginElement(std::string_view name);    // the name must stay where it is until the element ends
    void WriteAttribute(std::string_view name, std::string_view value);
    void WriteAttribute(std::string_view name, const char* value) { WriteAttribute(name, std::string_view(value)); }
    void WriteAttribute(std::string_view name, std::int32_t value) { WriteAttribute(name, std::int64_t{value}); }
    void WriteAttribute(std::string_view name, std::int64_t value);
    void WriteAttribute(std::string_view name, bool value);              // "True" or "False"
    void WriteText(std::string_view text);       // an empty one is none
    void EndElement();
    // A comment or another mark, with its brackets: a child of the open element; or the document itself.
    void WriteMark(std::string_view mark);
    // A mark in front of the root. Its line end belongs to the compact form, too.
    void WritePrologMark(std::string_view mark);

    // Passes on what the file hasn't got yet. False if it could not take all.
    bool Finish();
    bool HasFailed() const { return m_Failed; }  // nothing reaches the file any more

private:
    // How far the text of an open element has come.
    enum class Stage { InTag, BehindText, BehindChild };
    struct OpenElement
    {
        std::string_view name;
        Stage stage = Stage::InTag;
    };

    void BeginChild();
    void EndChild();
    void CloseTag(OpenElement& element);
    void BreakLine();
    void PassOn();

    Form m_Form;
    std::string& m_Out;                          // not owned
    TextFile* m_File;                            // not owned; null: the text stays in m_Out
    std::vector<OpenElement> m_Open;             // from the root inwards
    bool m_Failed = false;
};
