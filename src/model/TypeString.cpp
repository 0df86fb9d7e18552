#include "model/TypeString.h"

#include <utility>

CTypeString::CTypeString(std::string name) : CType(std::move(name))
{
    m_Class = Class::String;
    m_IsElementary = false;
}
