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
static void ReadStackSettings(CCodeGeneration& code, CNorvane& norvane)
{
    CXmlNode& target = norvane.m_Target.m_Root;
    if (const CXmlNode* pNode = target.FindChild("COMPILER\\TARGET\\VM\\RETURNSTACK")) {
        code.m_ReturnStackBytes = pNode->GetAttributeInt("size", 1024);
        code.m_ReturnStackMaxSize = pNode->GetAttributeInt("maxsize", 2048);
        code.m_CallOverload = pNode->GetAttributeInt("calloverload", 8);
        code.m_ReturnStackAlign = pNode->GetAttributeInt("align", 1);
        code.m_NestedProgram = pNode->GetAttributeBool("nestedprogram", true);
        if (norvane.m_ReturnStackSize > 0) code.m_ReturnStackBytes = norvane.m_ReturnStackSize;
    }
    if (const CXmlNode* pNode = target.FindChild("COMPILER\\TARGET\\VM\\PARAMETERSTACK")) {
        code.m_ParameterStackMaxSize = pNode->GetAttributeInt("maxsize", 2048);
        code.m_ParameterStackBytes = pNode->GetAttributeInt("size", 256);
        if (norvane.m_ParameterStackSize > 0) code.m_ParameterStackBytes = norvane.m_ParameterStackSize;
    }
}

// Without the target's nodes the sizes fit: nothing changes the initial values then.
static void ReportStackSizes(const CCodeGeneration& code, CErrorHandler& errors)
{
    if (code.m_ReturnStackBytes > code.m_ReturnStackMaxSize) errors.ErrReturnStackSize(code.m_ReturnStackMaxSize);
    if (code.m_ParameterStackBytes > code.m_ParameterStackMaxSize)
        errors.ErrParameterStackSize(code.m_ParameterStackMaxSize);
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
static void ReportOverflows(const CCodeGeneration& code, CErrorHandler& errors, const CCallTree& tree,
                            const CPou& program)
{
    CCallTreeWalk walk(code, program);
    for (CCallTreeWalk::Step step = walk.Next(); step != CCallTreeWalk::Step::End; step = walk.Next()) {
        if (step == CCallTreeWalk::Step::Leave) continue;
        const CPou& pou = walk.GetPou();
        const std::int64_t depth = walk.GetDepth();
        // A program alone isn't compared with the stack's size. What is missing is shown as a negative number.
        if (walk.GetLevel() > 0 && depth > code.m_ReturnStackBytes)
            errors.ErrReturnStackOverflow(code.m_ReturnStackBytes - depth, pou.m_Name);
        if (depth - code.GetCallSize(pou) + tree.GetDeepest(pou) <= code.m_ReturnStackBytes) walk.PassOver();
    }
}

static std::vector<const CPou*> GetPrograms(const CNorvane& norvane)
{
    std::vector<const CPou*> programs;
    for (const CPou* pPou : norvane.m_Pous.GetPous())
        if (!pPou->IsFunction() && !pPou->IsFunctionBlock()) programs.push_back(pPou);
    return programs;
}

// A tree too large to be written ends the run.
static CCallTree MakeCallTree(const CCodeGeneration& code, const CNorvane& norvane)
{
    CCallTree tree(code);
    for (const CPou* pProgram : GetPrograms(norvane)) tree.Add(*pProgram);
    const std::string excess = tree.DescribeExcess();
    if (!excess.empty()) EndProgram(1, excess);
    return tree;
}

void CCodeGeneration::RefuseLargeCallTree()
{
    ReadStackSettings(*this, m_Norvane);
    MakeCallTree(*this, m_Norvane);
}

void CCodeGeneration::AnalyseStacks()
{
    ReadStackSettings(*this, m_Norvane);
    ReportStackSizes(*this, *m_ErrorHandler);
    const CCallTree tree = MakeCallTree(*this, m_Norvane);

    m_MaxNestedDepth = 0;
    m_MaxDepth = 0;
    for (const CPou* pProgram : GetPrograms(m_Norvane)) {
        ReportOverflows(*this, *m_ErrorHandler, tree, *pProgram);
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
    for (const CPou* pProgram : GetPrograms(m_Norvane)) {
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
