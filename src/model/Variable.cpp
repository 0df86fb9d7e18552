#include "model/Variable.h"

#include "files/Format.h"
#include "model/Type.h"

#include <string_view>

std::string CVariable::GetInitText() const
{
    if (m_InitValue) return m_InitValue->GetBracketedText();
    return m_Type ? m_Type->GetInitText() : "NULL";
}

std::unique_ptr<CVariable> CVariable::Clone() const
{
    std::unique_ptr<CVariable> pClone = std::make_unique<CVariable>();
    CopyFieldsTo(*pClone);
    return pClone;
}

void CVariable::CopyFieldsTo(CVariable& copy) const
{
    copy.m_Size = m_Size;
    copy.m_DirectAddress = m_DirectAddress;
    copy.m_InitValue = CloneOrNull(m_InitValue.get());
    copy.m_Type = m_Type;
    copy.m_Offset = m_Offset;
    copy.m_BitOffset = m_BitOffset;
    copy.m_Name = m_Name;
    copy.m_Location = m_Location;
    copy.m_IsConstant = m_IsConstant;
    copy.m_IsRetain = m_IsRetain;
    copy.m_IsLocal = m_IsLocal;
    copy.m_IsOutput = m_IsOutput;
    copy.m_IsInput = m_IsInput;
    copy.m_IsInOut = m_IsInOut;
    copy.m_IsUsed = m_IsUsed;
}

// An array type knows no bounds, so its text leaves the number of elements open.
static std::string FillElementCount(std::string_view text, std::int64_t count)
{
    constexpr std::string_view mark = "${element}";
    const std::string number = FormatText("%d", static_cast<int>(count));
    std::string result;
    for (std::size_t found = text.find(mark); found != std::string_view::npos; found = text.find(mark)) {
        result += text.substr(0, found);
        result += number;
        text.remove_prefix(found + mark.size());
    }
    result += text;
    return result;
}

std::string CVariableArray::GetInitText() const
{
    const std::int64_t count = m_Index ? m_Index->GetElementCount() : 1;
    return FillElementCount(CVariable::GetInitText(), count);
}

std::unique_ptr<CVariable> CVariableArray::Clone() const
{
    std::unique_ptr<CVariableArray> pClone = std::make_unique<CVariableArray>();
    CopyFieldsTo(*pClone);
    pClone->m_Index = m_Index ? m_Index->Clone() : nullptr;
    return pClone;
}
