#include "codegen/Label.h"

#include "files/Fatal.h"

char* Label::Write(char* p) const
{
    if (IsNone()) return p;
    p = WritePart(p, "LABEL");
    constexpr int leastOfFourDigits = 1000;
    for (int least = leastOfFourDigits; number < least && least > 1; least /= 10) *p++ = '0';
    return WritePart(p, number);
}

Label CLabel::DrawReturn()
{
    if (!HasReturnLabel()) m_ReturnLabel = Draw().number;
    return {m_ReturnLabel};
}

Label CLabel::FindExit() const
{
    return m_ExitStack.empty() ? Label{} : Label{m_ExitStack.back()};
}

std::string CLabel::FormatLabel(int number)
{
    return MakeText(Label{number});
}

std::string CLabel::NewLabel()
{
    return MakeText(Draw());
}

std::string CLabel::GetReturnLabel()
{
    return MakeText(DrawReturn());
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
    const Label label = FindExit();
    return label.IsNone() ? "ERROR" : MakeText(label);
}
