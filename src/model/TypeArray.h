#pragma once

#include "model/ArrayIndex.h"
#include "model/Type.h"

// An array type is its element type and its number of dimensions; the bounds belong to each variable.
class CTypeArray : public CType
{
public:
    CTypeArray(std::string name, CType* pElement);

    std::string GetInitText() const override;  // with "${element}" in place of the element count

    // The stride of the innermost array reached through element types that are arrays; -1 unknown.
    std::int32_t GetInnermostStride() const;

    CType* m_Element;                          // not owned, as declared: aliases are not resolved
    std::int32_t m_Stride = -1;                // bytes from one element to the next; -1 unknown, 0 for BOOL
};

// An array type that a TYPE body named: it carries bounds. A variable of it takes a copy of the bounds
// and the plain array type.
class CTypeArrayUser : public CTypeArray
{
public:
    // pElement is the element as declared, pArrayType the plain array type of the variables.
    CTypeArrayUser(std::string name, CType* pElement, CType* pArrayType,
                   std::unique_ptr<CArrayOfArrayIndex> pIndex);

    std::unique_ptr<CArrayOfArrayIndex> m_Index;
    CType* m_ElementType;                      // the type that a variable of this type takes
};
