#include "files/FileReplacement.h"

#include "files/FileSystem.h"
#include "files/Platform.h"
#include "files/TemporaryFiles.h"

FileReplacement::~FileReplacement()
{
    if (!m_EarlierName.empty()) RemoveTemporaryFile(m_EarlierName);
    if (!m_IsDirect) RemoveTemporaryFile(m_WorkName);
}

bool FileReplacement::Prepare(const std::string& name)
{
    if (name.empty() || IsDirectory(name)) return false;
    m_IsDirect = IsSpecialFile(name);
    m_FinalName = m_IsDirect ? name : FollowLinks(name);
    if (FileExists(m_FinalName) && !IsWritableFile(m_FinalName)) return false;
    m_WorkName = m_IsDirect ? name : MakeTemporaryFile(m_FinalName, GetFileMode(m_FinalName.c_str()));
    return !m_WorkName.empty();
}

bool FileReplacement::KeepEarlier()
{
    if (m_IsDirect || !FileExists(m_FinalName)) return true;
    m_EarlierName = MakeTemporaryLink(m_FinalName);
    if (!m_EarlierName.empty()) return true;
    // Not every file system has second names. Then the earlier file has to make way for a moment.
    std::string moved = MakeTemporaryFile(m_FinalName, GetFileMode(m_FinalName.c_str()));
    if (moved.empty() || !RenameFile(m_FinalName.c_str(), moved.c_str())) return false;
    m_EarlierName.swap(moved);
    m_IsEarlierMoved = true;
    return true;
}

bool FileReplacement::TakePlace()
{
    if (m_IsDirect) return true;
    const HoldSignals hold;
    if (RenameFile(m_WorkName.c_str(), m_FinalName.c_str())) {
        ForgetTemporaryFile(m_WorkName);
        return true;
    }
    RemoveTemporaryFile(m_WorkName);
    if (m_IsEarlierMoved) PutBack();
    return false;
}

void FileReplacement::PutBack()
{
    if (m_IsDirect) return;
    const HoldSignals hold;
    if (m_EarlierName.empty()) {
        UnlinkFile(m_FinalName.c_str());
        return;
    }
    const char* szEarlier = m_EarlierName.c_str();
    const char* szFinal = m_FinalName.c_str();
    // If it can't go back it stays under its second name, which is better than lost.
    if (!RenameFile(szEarlier, szFinal)) RenameFile(szEarlier, szFinal);
    ForgetTemporaryFile(m_EarlierName);
}
