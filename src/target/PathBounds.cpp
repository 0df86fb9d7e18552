#include "target/PathBounds.h"

#include "frontend/Node.h"
#include "model/Member.h"
#include "model/Type.h"
#include "model/TypeArray.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"

PathBounds FollowPath(const CNode* pNode)
{
    const CType* pType = pNode->pVariable->m_Type;
    PathBounds bounds{pNode->pVariable->GetIndex(), 0};
    for (int i = 1; i < pNode->GetChildCount() && pType; ++i) {
        const CNode* pStep = pNode->Child(i);
        if (pStep->nKind == EXP_LIST) {
            const CTypeArray* pArray = pType->AsArray();
            pType = pArray ? pArray->m_Element : nullptr;
            ++bounds.level;
            continue;
        }
        const CTypeStruct* pStruct = pType->AsStruct();
        const CMember* pMember = pStruct ? pStruct->FindMember(pStep->GetName()) : nullptr;
        bounds = PathBounds{pMember ? pMember->m_Index.get() : nullptr, 0};
        pType = pMember ? pMember->m_Type : nullptr;
    }
    return bounds;
}
