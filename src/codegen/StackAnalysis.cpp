// What the programs reach and how deep their calls go, measured when all blocks are written and before anything of the
// debug file is: all messages come out here, and the file is only text from then on.

#include "codegen/CallTree.h"
#include "codegen/CodeGeneration.h"

#include "files/Fatal.h"
#include "files/Format.h"
#include "files/XmlNode.h"
#include "files/XmlStream.h"
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
    }
    if (const CXmlNode* pNode = target.FindChild("COMPILER\\TARGET\\VM\\PARAMETERSTACK")) {
        m_ParameterStackMaxSize = pNode->GetAttributeInt("maxsize", 2048);
        m_ParameterStackBytes = pNode->GetAttributeInt("size", 256);
        if (m_Norvane.m_ParameterStackSize > 0) m_ParameterStackBytes = m_Norvane.m_ParameterStackSize;
    }
}

// Without the target's nodes the sizes fit: nothing changes the initial values then.
void CCodeGeneration::ReportStackSizes()
{
    if (m_ReturnStackBytes > m_ReturnStackMaxSize) m_ErrorHandler->ErrReturnStackSize(m_ReturnStackMaxSize);
    if (m_ParameterStackBytes > m_ParameterStackMaxSize) m_ErrorHandler->ErrParameterStackSize(m_ParameterStackMaxSize);
}

// What one call of the POU takes from the return stack: the overload comes on top of the rounded locals.
std::int64_t CCodeGeneration::GetCallSize(const CPou& pou) const
{
    std::int64_t locals = pou.m_LocalSize;
    const std::int64_t excess = m_ReturnStackAlign > 1 ? locals % m_ReturnStackAlign : 0;
    if (excess > 0) locals += m_ReturnStackAlign - excess;
    return locals + m_CallOverload;
}

// One message for each path, in the order of the walk. Where even the deepest path below a call fits, nothing is
// looked for.
void CCodeGeneration::ReportOverflows(const CCallTree& tree, const CPou& program)
{
    CCallTreeWalk walk(*this, program);
    for (CCallTreeWalk::Step step = walk.Next(); step != CCallTreeWalk::Step::End; step = walk.Next()) {
        if (step == CCallTreeWalk::Step::Leave) continue;
        const CPou& pou = walk.GetPou();
        const std::int64_t depth = walk.GetDepth();
        // A program alone isn't compared with the stack's size. What is missing is shown as a negative number.
        if (walk.GetLevel() > 0 && depth > m_ReturnStackBytes)
            m_ErrorHandler->ErrReturnStackOverflow(m_ReturnStackBytes - depth, pou.m_Name);
        if (depth - GetCallSize(pou) + tree.GetDeepest(pou) <= m_ReturnStackBytes) walk.PassOver();
    }
}

std::vector<const CPou*> CCodeGeneration::GetPrograms() const
{
    std::vector<const CPou*> programs;
    for (const CPou* pPou : m_Norvane.m_Pous.GetPous())
        if (!pPou->IsFunction() && !pPou->IsFunctionBlock()) programs.push_back(pPou);
    return programs;
}

CCallTree CCodeGeneration::MakeCallTree() const
{
    CCallTree tree(*this);
    for (const CPou* pProgram : GetPrograms()) tree.Add(*pProgram);
    const std::string excess = tree.DescribeExcess();
    if (!excess.empty()) EndProgram(1, excess);
    return tree;
}

void CCodeGeneration::RefuseLargeCallTree()
{
    ReadStackSettings();
    MakeCallTree();
}

void CCodeGeneration::AnalyseStacks()
{
    ReadStackSettings();
    ReportStackSizes();
    const CCallTree tree = MakeCallTree();

    m_MaxNestedDepth = 0;
    m_MaxDepth = 0;
    for (const CPou* pProgram : GetPrograms()) {
        ReportOverflows(tree, *pProgram);
        m_CurrentDepth = tree.GetDeepest(*pProgram);
        m_MaxNestedDepth += m_CurrentDepth;
        m_MaxDepth = std::max(m_MaxDepth, m_CurrentDepth);
    }
    if (m_NestedProgram && m_MaxNestedDepth > m_ReturnStackBytes)
        m_ErrorHandler->WarnNestedProgramStack(m_ReturnStackBytes - m_MaxNestedDepth);
}

// <CALLTREE>...</CALLTREE>
// <RETURNSTACK maxsize="2048" size="1024" maxdepth="16" maxnesteddepth="16"/>
// <PARAMETERSTACK maxsize="2048" size="256"/>
void CCodeGeneration::WriteCallTree(XmlStream& stream) const
{
    stream.BeginElement("CALLTREE");
    for (const CPou* pProgram : GetPrograms()) {
        CCallTreeWalk walk(*this, *pProgram);
        for (CCallTreeWalk::Step step = walk.Next(); step != CCallTreeWalk::Step::End; step = walk.Next()) {
            if (step == CCallTreeWalk::Step::Enter) BeginCallElement(stream, walk.GetPou(), walk.GetDepth());
            else stream.EndElement();
            if (stream.HasFailed()) return;   // the rest of a large tree would cost its time all the same
        }
    }
    stream.EndElement();

    stream.BeginElement("RETURNSTACK");
    stream.WriteAttribute("maxsize", m_ReturnStackMaxSize);
    stream.WriteAttribute("size", m_ReturnStackBytes);
    stream.WriteAttribute("maxdepth", m_MaxDepth);
    stream.WriteAttribute("maxnesteddepth", m_MaxNestedDepth);
    stream.EndElement();
    stream.BeginElement("PARAMETERSTACK");
    stream.WriteAttribute("maxsize", m_ParameterStackMaxSize);
    stream.WriteAttribute("size", m_ParameterStackBytes);
    stream.EndElement();
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
