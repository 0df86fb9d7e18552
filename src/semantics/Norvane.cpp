#include "semantics/Norvane.h"

#include "model/ArrayIndex.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"

CNorvane g_Norvane;

// The members are made in the order of their declarations: each is given only what stands above it. The code
// generator gets the whole compiler and keeps no more than its address until the first source is read.
CNorvane::CNorvane()
    : m_DataTypes(m_Target, m_Names), m_Memory(m_Errors, m_DataTypes, m_ConstantSubstitution),
      m_GlobalSymbols(m_Memory, m_Names, Scope::Global), m_LocalSymbols(m_Memory, m_Names, Scope::Local),
      m_Pous(m_Errors, m_Target, m_Names), m_CastFunctions(m_Names), m_Code(*this)
{
}

CNorvane::~CNorvane() = default;
