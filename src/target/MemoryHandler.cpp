#include "target/MemoryHandler.h"

#include "files/XmlDocument.h"
#include "model/Type.h"
#include "model/Variable.h"
#include "target/DataType.h"

#include <string_view>

CMemoryHandler::CMemoryHandler(CErrorHandler& errors, CDataType& dataTypes, const bool& constantSubstitution)
    : m_Errors(errors), m_DataTypes(dataTypes), m_ConstantSubstitution(constantSubstitution)
{
}

// Which fields an AREA node of the target fills; null for what it doesn't have.
struct AreaFields
{
    using Field = std::int32_t CMemoryHandler::*;

    std::string_view name;
    Field segment;
    Field size;
    Field code;
};

static constexpr AreaFields g_Areas[] = {
    {"INPUT", &CMemoryHandler::m_InputSegment, &CMemoryHandler::m_InputSize, &CMemoryHandler::m_InputCode},
    {"OUTPUT", &CMemoryHandler::m_OutputSegment, &CMemoryHandler::m_OutputSize, &CMemoryHandler::m_OutputCode},
    {"MEMORY", &CMemoryHandler::m_MemorySegment, &CMemoryHandler::m_MemorySize, &CMemoryHandler::m_MemoryCode},
    {"GLOBAL", nullptr, &CMemoryHandler::m_GlobalSize, &CMemoryHandler::m_GlobalCode},
    {"RETAIN", nullptr, &CMemoryHandler::m_RetainSize, &CMemoryHandler::m_RetainCode},
    {"LOCAL", nullptr, nullptr, &CMemoryHandler::m_LocalCode},
    {"ABSOLUTE", nullptr, nullptr, &CMemoryHandler::m_AbsoluteCode},
};

static const AreaFields* FindArea(std::string_view name)
{
    for (const AreaFields& area : g_Areas)
        if (area.name == name) return &area;
    return nullptr;
}

// Kept (targets): an absent size is the segment just read, or the size of the area before where there is none, and an
// absent segment is the size of the area before; target files rely on these defaults.
void CMemoryHandler::LoadAreas(CXmlDocument& target)
{
    std::int32_t running = 0;
    CXmlNode* pNode = target.m_Root.FindFirstChild("COMPILER\\TARGET\\VM\\AREA");
    for (; pNode; pNode = target.m_Root.FindNextChild()) {
        std::string name;
        pNode->GetAttribute(name, "name");
        const AreaFields* pArea = FindArea(name);
        if (!pArea) continue;

        this->*pArea->code = pNode->GetAttributeInt("code", -1);
        if (!pArea->size) continue;
        std::int32_t sizeDefault = running;
        if (pArea->segment) {
            this->*pArea->segment = pNode->GetAttributeInt("segment", running);
            sizeDefault = this->*pArea->segment;
        }
        running = pNode->GetAttributeInt("size", sizeDefault);
        this->*pArea->size = running;
    }
}

void CMemoryHandler::AddVariable(CVariable* pVariable)
{
    std::vector<CVariable*>& list = pVariable->m_IsLocal ? m_LocalVariables : m_GlobalVariables;
    list.push_back(pVariable);
}

void CMemoryHandler::ClearLocalVariables()
{
    m_LocalVariables.clear();
}

bool CMemoryHandler::IsSubstituted(const CVariable* pVariable) const
{
    if (!m_ConstantSubstitution || !pVariable->m_IsConstant || pVariable->IsParameter()) return false;
    return !pVariable->IsArray() && !BaseOf(pVariable->m_Type)->IsStruct();
}

std::int32_t CMemoryHandler::GetPointerSlotSize() const
{
    const CType* pPointer = m_DataTypes.m_PointerType;
    const std::int32_t align = AlignOf(pPointer);
    const std::int32_t bytes = pPointer->m_SizeBits / 8;
    std::int64_t slot = align;
    if (bytes > align) slot = (std::int64_t{bytes} + align - 1) / align * align;
    return static_cast<std::int32_t>(slot);
}
