#include "driver/OutputPair.h"

#include "files/FileSystem.h"
#include "files/Platform.h"

#include <utility>

OutputPair::OutputPair(std::string textName, std::string debugName)
    : m_TextName(std::move(textName)), m_DebugName(std::move(debugName))
{
}

void OutputPair::Prepare()
{
    m_IsTextReady = m_Text.Prepare(m_TextName);
    m_IsDebugReady = m_Debug.Prepare(m_DebugName);
}

OutputPair::Outcome OutputPair::Replace()
{
    // Two runs with one output name would else take turns, and leave the text of one beside the debug file of the other.
    const FolderLock lock(GetFolder(FollowLinks(m_TextName)).c_str());
    const HoldSignals hold;
    if (!m_Debug.KeepEarlier() || !m_Debug.TakePlace()) return Outcome::DebugFailed;
    if (m_Text.TakePlace()) return Outcome::Replaced;
    m_Debug.PutBack();
    return Outcome::TextFailed;
}
