#include "report/TypeSizes.h"

#include <algorithm>
#include <utility>

static bool IsArray(const std::string& typeText)
{
    return typeText.find('[') != std::string::npos;
}

static std::string GetElementName(const std::string& typeText)
{
    return typeText.substr(0, typeText.find('['));
}

// A structure can be computed once those of its members are. Declared in any order, they are taken from a stack.
CTypeSizes::CTypeSizes(const CDebugInfo& debugInfo, int pointerBytes)
    : m_DebugInfo(debugInfo), m_PointerBytes(pointerBytes)
{
    std::unordered_map<std::string, bool> isOpen;
    for (const DebugType* pFirst : debugInfo.GetTypes()) {
        std::vector<const DebugType*> open;
        if (pFirst->isStruct) open.push_back(pFirst);
        while (!open.empty()) {
            const DebugType& type = *open.back();
            const std::size_t before = open.size();
            const bool isFirstVisit = !std::exchange(isOpen[type.name], true);
            for (const DebugVariable& member : type.members) {
                const DebugType* pInner = isFirstVisit ? debugInfo.FindType(GetElementName(member.typeText)) : nullptr;
                if (pInner && pInner->isStruct && !isOpen.contains(pInner->name)) open.push_back(pInner);
            }
            if (open.size() > before) continue;
            m_Structures.emplace(type.name, ComputeStructure(type));
            open.pop_back();
        }
    }
}

// The end of the member that reaches furthest; nothing is added behind it.
std::int64_t CTypeSizes::ComputeStructure(const DebugType& type) const
{
    std::int64_t end = 0;
    for (const DebugVariable& member : type.members) {
        const std::int64_t bytes = GetBytes(member);
        if (bytes < 0) return -1;
        end = std::max(end, std::max(0, member.offset) + bytes);
    }
    return end;
}

std::int64_t CTypeSizes::GetBytes(const std::string& typeName) const
{
    const DebugType* pType = m_DebugInfo.FindType(typeName);
    if (!pType || pType->isText) return -1;
    if (!pType->isStruct) return GetSizeBytes(pType->kind);
    const auto found = m_Structures.find(pType->name);
    return found == m_Structures.end() ? -1 : found->second;
}

std::int64_t CTypeSizes::GetBytes(const DebugVariable& variable) const
{
    if (variable.memberClass == "InOut") return m_PointerBytes;
    if (!IsArray(variable.typeText)) return GetBytes(variable.typeText);
    const std::shared_ptr<const ArrayShape> pShape = ParseArray(variable.typeText, variable.displacement);
    return pShape ? GetArrayBytes(*pShape) : -1;
}

// Elements lie a stride apart, and behind the last one nothing is added. BOOLs lie eight to a unit, of which the last
// takes one byte; only those of the innermost array are packed.
std::int64_t CTypeSizes::GetArrayBytes(const ArrayShape& shape) const
{
    const auto countOf = [](const std::vector<ArrayShape::Dimension>& level) {
        std::int64_t count = 1;
        for (const ArrayShape::Dimension& dimension : level) count *= dimension.high - dimension.low + 1;
        return count;
    };
    std::int64_t outer = 1;
    for (std::size_t i = 0; i + 1 < shape.levels.size(); ++i) outer *= countOf(shape.levels[i]);
    const std::int64_t inner = countOf(shape.levels.back());
    const DebugType* pElement = m_DebugInfo.FindType(shape.element);
    if (!pElement) return -1;
    if (!pElement->isStruct && pElement->kind == ValueKind::Bool) {
        const std::int64_t units = outer * ((inner + g_BitsOfByte - 1) / g_BitsOfByte);
        return (units - 1) * m_DebugInfo.m_BoolAlign + 1;
    }
    const std::int64_t elementBytes = GetBytes(shape.element);
    return elementBytes < 0 ? -1 : (outer * inner - 1) * shape.levels.back().back().stride + elementBytes;
}

bool CTypeSizes::IsBit(const DebugVariable& variable) const
{
    if (IsArray(variable.typeText) || variable.memberClass == "InOut") return false;
    const DebugType* pType = m_DebugInfo.FindType(variable.typeText);
    return pType && !pType->isStruct && pType->kind == ValueKind::Bool;
}

BitRange CTypeSizes::GetPlace(const DebugVariable& variable, std::int64_t offset) const
{
    const std::int64_t begin = offset * g_BitsOfByte;
    if (IsBit(variable)) return {begin + std::max(0, variable.bit), begin + std::max(0, variable.bit) + 1};
    return {begin, begin + std::max<std::int64_t>(1, GetBytes(variable)) * g_BitsOfByte};
}
