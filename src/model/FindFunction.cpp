// Which function a call means. Overloads are told apart by the exact types of the actual parameters: nothing
// is converted, and a literal, having no type, can't choose.

#include "model/PouTable.h"

#include "frontend/ErrorHandler.h"
#include "frontend/Node.h"
#include "model/Type.h"

namespace
{

enum class OverloadMatch { Match, NoMatch, Untyped, Failed };

}   // namespace

// Goes through the positions until one settles the question; pStopped is then the actual that has no type.
static OverloadMatch MatchOverload(const CFunction& function, const CNode& parameters, const CNode*& pStopped)
{
    if (function.m_Parameters.size() != parameters.m_Children.size()) return OverloadMatch::NoMatch;
    for (std::size_t i = 0; i < parameters.m_Children.size(); ++i) {
        const CNode* pActual = parameters.m_Children[i];
        if (pActual->nKind == ERROR_ || (pActual->pType && pActual->pType->IsError())) return OverloadMatch::Failed;
        if (!pActual->pType) {
            pStopped = pActual;
            return OverloadMatch::Untyped;
        }
        if (!IsSameType(pActual->pType, function.m_Parameters[i]->m_Type)) return OverloadMatch::NoMatch;
    }
    return OverloadMatch::Match;
}

static CPou* ChooseOverload(const CFunctionOverLoad& set, std::string_view name, const SourceLocation& location,
                            const CNode& parameters, CErrorHandler& errors)
{
    for (const std::unique_ptr<CFunction>& pFunction : set.m_Functions) {
        const CNode* pStopped = nullptr;
        switch (MatchOverload(*pFunction, parameters, pStopped)) {
        case OverloadMatch::Match: return pFunction.get();
        case OverloadMatch::NoMatch: break;
        case OverloadMatch::Failed: return nullptr;
        case OverloadMatch::Untyped: errors.ErrOverloadType(pStopped->location); return nullptr;
        }
    }
    errors.ErrFunctionNotDeclared(name, location);
    return nullptr;
}

CPou* CPouTable::FindFunction(const CName& name, const SourceLocation& location, CNode* pParameters) const
{
    if (pParameters && pParameters->pType && pParameters->pType->IsError()) return nullptr;
    CPou* pPou = FindPou(name.GetText());
    if (pPou && pPou->IsProgram()) return pPou;
    CFunctionOverLoad* pSet = pPou ? pPou->AsOverload() : nullptr;
    if (pSet && pParameters) return ChooseOverload(*pSet, name.GetText(), location, *pParameters, m_Errors);
    if (pPou && !pSet && pPou->IsFunction()) return pPou;
    m_Errors.ErrFunctionNotDeclared(name.GetText(), location);
    return nullptr;
}
