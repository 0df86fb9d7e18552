#include "model/TypeArray.h"

#include <utility>

CTypeArray::CTypeArray(std::string name, CType* pElement) : CType(std::move(name)), m_Element(pElement)
{
    m_Class = Class::Array;
    m_IsError = pElement && pElement->IsError();
}

// "[(${element})" and the element's text and "]", for each level of arrays inside each other. A loop: the
// levels are as many as a source has declarations. An alias of an array isn't looked through.
std::string CTypeArray::GetInitText() const
{
    std::string text = "[(${element})";
    std::size_t levels = 1;
    const CType* pElement = m_Element;
    while (pElement && pElement->IsNotAlias() && pElement->IsArray()) {
        text += "[(${element})";
        ++levels;
        pElement = pElement->AsArray()->m_Element;
    }
    text += pElement ? pElement->GetInitText() : "NULL";
    text.append(levels, ']');
    return text;
}

std::int32_t CTypeArray::GetInnermostStride() const
{
    const CTypeArray* pArray = this;
    while (pArray->m_Element && pArray->m_Element->IsArray()) pArray = pArray->m_Element->AsArray();
    return pArray->m_Stride;
}

CTypeArrayUser::CTypeArrayUser(std::string name, CType* pElement, CType* pArrayType,
                               std::unique_ptr<CArrayOfArrayIndex> pIndex)
    : CTypeArray(std::move(name), pElement), m_Index(std::move(pIndex)), m_ElementType(pArrayType)
{
    m_Class = Class::ArrayUser;
}
