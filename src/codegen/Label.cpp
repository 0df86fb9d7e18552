#include "codegen/Label.h"

#include "files/Fatal.h"
#include "files/Format.h"

std::string CLabel::FormatLabel(int number)
{
    return FormatText("LABEL%04d", number);
}

std::string CLabel::NewLabel()
{
    ++m_Counter;
    return FormatLabel(m_Counter);
}

std::string CLabel::GetReturnLabel()
{
    if (!HasReturnLabel()) {
        NewLabel();
        m_ReturnLabel = m_Counter;
    }
    return FormatLabel(m_ReturnLabel);
}

std::string CLabel::PushExitLabel()
{
    m_ExitStack.push_back(m_Counter);
    return FormatLabel(m_Counter);
}

void CLabel::PopExitLabel()
{
    if (m_ExitStack.empty()) InternalFault("no exit label to take back");
    m_ExitStack.pop_back();
}

std::string CLabel::GetExitLabel() const
{
    return m_ExitStack.empty() ? "ERROR" : FormatLabel(m_ExitStack.back());
}
