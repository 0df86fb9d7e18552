#pragma once

#include "model/Member.h"
#include "model/Type.h"

#include <string_view>
#include <unordered_map>
#include <vector>

class CFunctionBlock;

// A structure: members in order of declaration. Member names are kept as written and found in any case.
class CTypeStruct : public CType
{
public:
    explicit CTypeStruct(std::string name);

    std::string GetInitText() const override;

    void AddMember(std::unique_ptr<CMember> pMember);
    // The first member of the name, in any case; its position through pIndex if asked for. Null if absent.
    CMember* FindMember(std::string_view name, int* pIndex = nullptr) const;
    virtual std::unique_ptr<CTypeStruct> Clone() const;
    // The bit of a BOOL member in its byte: how many BOOL members stand directly in front of it, modulo 8.
    // 0 for other members, for the first, for arrays, and for in-out members of a function block.
    int GetBoolBit(const CMember* pMember) const;

    std::vector<std::unique_ptr<CMember>> m_Members;

protected:
    void CopyFieldsTo(CTypeStruct& copy) const;

private:
    std::unordered_map<std::string, int> m_ByName;   // first position of each lower-cased name
};

// The structure of a function block's instances. Its members are CMemberFB.
class CTypeStructFB : public CTypeStruct
{
public:
    explicit CTypeStructFB(std::string name);

    std::unique_ptr<CTypeStruct> Clone() const override;
    const CMemberFB* GetMember(int i) const { return m_Members[static_cast<std::size_t>(i)]->AsMemberFB(); }

    CFunctionBlock* m_FunctionBlock = nullptr;       // the POU that made it, not owned
};
