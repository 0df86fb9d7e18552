#pragma once

#include "model/Type.h"

// STRING: its length belongs to each variable, in the declared length of its initial value.
class CTypeString : public CType
{
public:
    explicit CTypeString(std::string name);
};
