// What a name is at the moment the scanner meets it. Declarations enter the tables while parsing goes on, so
// the same word can be an identifier in one line and a type in the next.

#include "semantics/Norvane.h"

#include "frontend/Scanner.h"
#include "model/Type.h"

// Elementary types, whose names are upper case. A type that the target refuses is handed out all the same.
int CNorvane::LookupTypeName(const CName& name, CType*& pType)
{
    pType = m_DataTypes.FindType(name);
    return pType && pType->m_Allowed ? TYPE_IDENTIFIER : NEW_ID;
}

int CNorvane::ClassifyName(const CName& name, YYSTYPE& value)
{
    if (CCastFunction* pCast = m_CastFunctions.Find(name)) {
        value.pCast = pCast;
        return CAST_FUNCTION_CALL;
    }
    if (name.HasTwoUnderscores()) m_Errors.ErrTwoUnderscores();   // the name stays usable
    value.pType = m_DataTypes.FindUserType(name);
    return value.pType ? TYPE_IDENTIFIER : NEW_ID;
}

CVariable* CNorvane::FindVariable(const CName& name) const
{
    if (CVariable* pVariable = m_LocalSymbols.Find(name)) return pVariable;
    return m_GlobalSymbols.Find(name);
}

CVariable* CNorvane::FindVariable(std::string_view name) const
{
    if (CVariable* pVariable = m_LocalSymbols.Find(name)) return pVariable;
    return m_GlobalSymbols.Find(name);
}
