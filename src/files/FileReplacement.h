#pragma once

#include <string>

// A file that is written aside and takes its place in one step when it is whole, so that whatever happens leaves the
// earlier file or the new one. The rules for all files that are made this way:
// - The file that a link leads to is replaced, and the link stays one; where it leads nowhere, that file is made.
// - An earlier file hands its permission bits on. One that may not be written to is not replaced.
// - A device or a pipe is written as it is, since it can't be replaced. A directory is refused.
class FileReplacement
{
public:
    FileReplacement() = default;
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    // Makes the private file in the directory of the final one; false if that can't be or if there is no right to
    // the final file.
    bool Prepare(const std::string& name);
    // What to write to: the private file, or the device or pipe itself.
    const std::string& GetWorkName() const { return m_WorkName; }

    // Makes sure that PutBack can bring the earlier file back. Only behind this may TakePlace be taken back.
    bool KeepEarlier();
    // Once the file is written and closed. False: the earlier file is there as before, the private one is gone.
    bool TakePlace();
    // Undoes TakePlace, as far as the system lets us.
    void PutBack();

private:
    std::string m_FinalName;
    std::string m_WorkName;
    std::string m_EarlierName;         // the earlier file's second name; empty: not made
    bool m_IsDirect = false;           // a device or a pipe: there is nothing to rename
    bool m_IsEarlierMoved = false;     // it has lost its first name, since it could get no second one
};
