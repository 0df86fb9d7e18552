#pragma once

#include "frontend/SourceLocation.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

class CPou;

enum class Note
{
#define NOTE(number, name, text) name = number,
#include "frontend/Notes.def"
#undef NOTE
};

// What the compiler tells about code that does something else than its source says. Such code is wanted as it
// stands, since outside programs rely on it; a note says where it is. Notes go to standard error and change
// neither the outputs nor the exit status.
//
// They are drawn while a POU is parsed and generated, and belong to it: those of a POU that ends up as a comment
// are not printed. Those drawn between POUs (global variables, types, what follows the last source) belong to none
// and always count. One place draws the same note once; without a place, a file does for each subject.
class CNotes
{
public:
    // At a place in a source. The subject, where the note has one, stands for {} in its text.
    void Add(Note note, const SourceLocation& where, std::string_view subject = {});
    // The same, but counting whatever becomes of the POU in which it is drawn.
    void AddOutsidePou(Note note, const SourceLocation& where, std::string_view subject = {});
    // In a file that is no source: a line and a column from 1, or 0 for none.
    void AddInFile(Note note, std::string_view file, int line, int column, std::string_view subject = {});
    // About the target description, without a place in it.
    void AddInTarget(Note note, std::string_view subject = {}) { AddInFile(note, m_TargetFile, 0, 0, subject); }

    // What was drawn since the last call belongs to this POU; null: to none.
    void EndPou(const CPou* pPou);
    bool IsEmpty() const { return m_Notes.empty(); }

    // The lines of all notes that count, those in other files first, then in the order of the sources and of their
    // places: "a.st(3,5) : note N5: ...\n". The marks of used POUs must be set.
    std::string GetPrintedLines(const std::vector<std::string>& sourceFiles) const;

    static std::string_view GetText(Note note);

    std::string m_TargetFile;   // name of the target description as the user gave it

private:
    struct Entry
    {
        Note note;
        std::string file;
        int line;               // 0: no place
        int column;
        std::string subject;
        const CPou* pPou;       // not owned; null: of none
        bool isSource;
        bool isOutsidePou = false;
    };

    std::vector<Entry> m_Notes;
    std::size_t m_FirstOfPou = 0;      // from here on the notes wait for EndPou
};
