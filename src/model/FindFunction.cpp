// Which function a call means. Overloads are told apart by the exact types of the actual parameters: nothing
// is converted, and a literal, having no type, can't choose.

#include "model/PouTable.h"

#include "frontend/ErrorHandler.h"
#include "frontend/Node.h"
#include "model/Type.h"

static bool HasFailed(const CNode& actual)
{
    return actual.nKind == ERROR_ || (actual.pType && actual.pType->IsError());
}

// Goes along the actual parameters for as long as a form fits them. An untyped one stops the search, whichever of the
// forms that fit so far would be meant.
static CPou* ChooseOverload(const CFormTree& forms, std::string_view name, const SourceLocation& location,
                            const CNode& parameters, CErrorHandler& errors)
{
    CFormTree::Place place = forms.Begin(parameters.m_Children.size());
    for (const CNode* pActual : parameters.m_Children) {
        if (place == CFormTree::g_NoPlace) break;
        if (HasFailed(*pActual)) return nullptr;
        if (!pActual->pType) {
            errors.ErrOverloadType(pActual->location);
            return nullptr;
        }
        place = forms.Step(place, pActual->pType);
    }
    if (place != CFormTree::g_NoPlace) return &forms.GetFirst(place);
    errors.ErrFunctionNotDeclared(name, location);
    return nullptr;
}

CPou* CPouTable::FindFunction(const CName& name, const SourceLocation& location, CNode* pParameters) const
{
    if (pParameters && pParameters->pType && pParameters->pType->IsError()) return nullptr;
    CPou* pPou = FindPou(name);
    if (pPou && pPou->IsProgram()) return pPou;
    CFunctionOverLoad* pSet = pPou ? pPou->AsOverload() : nullptr;
    if (pSet && pParameters) return ChooseOverload(pSet->GetForms(), name.GetText(), location, *pParameters, m_Errors);
    if (pPou && !pSet && pPou->IsFunction()) return pPou;
    m_Errors.ErrFunctionNotDeclared(name.GetText(), location);
    return nullptr;
}
