// What the programs reach and how deep their calls go, measured when all blocks are written.

#include "codegen/CodeGeneration.h"

#include "files/Format.h"
#include "files/XmlNode.h"
#include "frontend/ErrorHandler.h"
#include "model/Pou.h"
#include "model/PouTable.h"
#include "semantics/Norvane.h"
#include "target/MemoryHandler.h"

#include <algorithm>

// The settings of the target stand in for the initial values only where its node exists, and the values of
// absent attributes aren't the initial ones. An option has no effect without the node.
void CCodeGeneration::ReadStackSettings()
{
    CXmlNode& target = m_Norvane.m_Target.m_Root;
    if (const CXmlNode* pNode = target.FindChild("COMPILER\\TARGET\\VM\\RETURNSTACK")) {
        m_ReturnStackBytes = pNode->GetAttributeInt("size", 1024);
        m_ReturnStackMaxSize = pNode->GetAttributeInt("maxsize", 2048);
        m_CallOverload = pNode->GetAttributeInt("calloverload", 8);
        m_ReturnStackAlign = pNode->GetAttributeInt("align", 1);
        m_NestedProgram = pNode->GetAttributeBool("nestedprogram", true);
        if (m_Norvane.m_ReturnStackSize > 0) m_ReturnStackBytes = m_Norvane.m_ReturnStackSize;
        if (m_ReturnStackBytes > m_ReturnStackMaxSize) m_ErrorHandler->ErrReturnStackSize(m_ReturnStackMaxSize);
    }
    if (const CXmlNode* pNode = target.FindChild("COMPILER\\TARGET\\VM\\PARAMETERSTACK")) {
        m_ParameterStackMaxSize = pNode->GetAttributeInt("maxsize", 2048);
        m_ParameterStackBytes = pNode->GetAttributeInt("size", 256);
        if (m_Norvane.m_ParameterStackSize > 0) m_ParameterStackBytes = m_Norvane.m_ParameterStackSize;
        if (m_ParameterStackBytes > m_ParameterStackMaxSize)
            m_ErrorHandler->ErrParameterStackSize(m_ParameterStackMaxSize);
    }
}

// What one call of the POU takes from the return stack: the overload comes on top of the rounded locals.
std::int64_t CCodeGeneration::GetCallSize(const CPou* pPou) const
{
    std::int64_t locals = pPou->m_LocalSize;
    const std::int64_t excess = m_ReturnStackAlign > 1 ? locals % m_ReturnStackAlign : 0;
    if (excess > 0) locals += m_ReturnStackAlign - excess;
    return locals + m_CallOverload;
}

// <POU name="main" local="6" returnstackdepth="16">
static CXmlNode* AddTreeElement(CXmlNode* pParent, const CPou* pPou, std::int64_t depth)
{
    CXmlNode* pElement = pParent->AddChild("POU");
    pElement->SetAttribute("name", ShowControlCharacters(pPou->m_Name));
    pElement->SetAttribute("local", pPou->m_LocalSize);
    pElement->SetAttribute("returnstackdepth", depth);
    return pElement;
}

namespace
{

// A POU whose callees are being walked.
struct OpenCall
{
    CXmlNode* pElement;
    const CPou* pPou;
    std::int64_t nDepth;          // bytes on the return stack inside it
    std::size_t nNext;            // position of the callee that comes next
};

}   // namespace

// Callers first and callees in order of first call, so that elements and messages come in that order. A POU
// stands once for each path that leads to it. There are no cycles: only what is declared above can be called.
void CCodeGeneration::WalkCallees(CXmlNode* pParent, const CPou* pPou, std::int64_t base)
{
    std::vector<OpenCall> open = {{pParent, pPou, base, 0}};
    while (!open.empty()) {
        OpenCall& caller = open.back();
        if (caller.nNext == caller.pPou->m_Callees.size()) {
            open.pop_back();
            continue;
        }
        CPou* pCallee = caller.pPou->m_Callees[caller.nNext++];
        const std::int64_t depth = caller.nDepth + GetCallSize(pCallee);
        CXmlNode* pElement = AddTreeElement(caller.pElement, pCallee, depth);
        m_CurrentDepth = std::max(m_CurrentDepth, depth);
        // The message shows what is missing as a negative number.
        if (depth > m_ReturnStackBytes)
            m_ErrorHandler->ErrReturnStackOverflow(m_ReturnStackBytes - depth, pCallee->m_Name);
        pCallee->m_Used = true;
        open.push_back({pElement, pCallee, depth, 0});
    }
}

// A program alone isn't compared with the stack's size, and it isn't marked as used: nobody asks.
void CCodeGeneration::WalkProgram(CXmlNode* pCallTree, const CPou* pProgram)
{
    m_CurrentDepth = GetCallSize(pProgram);
    CXmlNode* pElement = AddTreeElement(pCallTree, pProgram, m_CurrentDepth);
    WalkCallees(pElement, pProgram, m_CurrentDepth);
    m_MaxNestedDepth += m_CurrentDepth;
    m_MaxDepth = std::max(m_MaxDepth, m_CurrentDepth);
}

// <CALLTREE>...</CALLTREE>
// <RETURNSTACK maxsize="2048" size="1024" maxdepth="16" maxnesteddepth="16"/>
// <PARAMETERSTACK maxsize="2048" size="256"/>
void CCodeGeneration::WriteCallTree(CXmlNode& root)
{
    CXmlNode* pCallTree = root.AddChild("CALLTREE");
    m_MaxNestedDepth = 0;
    m_MaxDepth = 0;
    ReadStackSettings();
    for (const CPou* pPou : m_Norvane.m_Pous.GetPous())
        if (!pPou->IsFunction() && !pPou->IsFunctionBlock()) WalkProgram(pCallTree, pPou);
    if (m_NestedProgram && m_MaxNestedDepth > m_ReturnStackBytes)
        m_ErrorHandler->WarnNestedProgramStack(m_ReturnStackBytes - m_MaxNestedDepth);

    CXmlNode* pReturnStack = root.AddChild("RETURNSTACK");
    pReturnStack->SetAttribute("maxsize", m_ReturnStackMaxSize);
    pReturnStack->SetAttribute("size", m_ReturnStackBytes);
    pReturnStack->SetAttribute("maxdepth", m_MaxDepth);
    pReturnStack->SetAttribute("maxnesteddepth", m_MaxNestedDepth);
    CXmlNode* pParameterStack = root.AddChild("PARAMETERSTACK");
    pParameterStack->SetAttribute("maxsize", m_ParameterStackMaxSize);
    pParameterStack->SetAttribute("size", m_ParameterStackBytes);
}

// The used bytes are the cursors as they stand: a last byte that isn't full doesn't count.
std::string CCodeGeneration::GetStatistics() const
{
    const CMemoryHandler& memory = *m_MemoryHandler;
    std::string text = "======== Statistics ========\n";
    AppendFormat(text, "Global variable (%d bytes): used %d bytes\n", memory.m_GlobalSize, memory.m_GlobalBytes);
    AppendFormat(text, "Retain variable (%d bytes): used %d bytes\n", memory.m_RetainSize, memory.m_RetainBytes);
    AppendFormat(text, "Stack (%d bytes): max depth %lld bytes, max nested depth %lld bytes\n", m_ReturnStackBytes,
                 static_cast<long long>(m_MaxDepth), static_cast<long long>(m_MaxNestedDepth));
    text += "============================\n";
    return text;
}
