#include "machine/TargetInfo.h"

#include "files/XmlDocument.h"

// Defaults run along the nodes as they do in the compiler: an absent segment takes the last size, an absent size
// the segment just read, or for the areas without one the last size.
static bool ReadArea(const CXmlNode& node, int& running, TargetArea& area)
{
    node.GetAttribute(area.name, "name");
    const bool hasSegment = area.name == "INPUT" || area.name == "OUTPUT" || area.name == "MEMORY";
    if (!hasSegment && area.name != "GLOBAL" && area.name != "RETAIN") return false;
    if (hasSegment) running = area.segment = node.GetAttributeInt("segment", running);
    running = area.size = node.GetAttributeInt("size", running);
    return true;
}

bool CTargetInfo::Load(const std::string& fileName, std::string& error)
{
    CXmlDocument document;
    if (document.Load(fileName) >= 0) return ReadDocument(document.m_Root, fileName, error);
    error = fileName + ": cannot be read as a target description";
    return false;
}

bool CTargetInfo::Read(std::string_view text, const std::string& shownName, std::string& error)
{
    CXmlDocument document;
    if (document.LoadFromString(text) >= 0) return ReadDocument(document.m_Root, shownName, error);
    error = shownName + ": cannot be read as a target description";
    return false;
}

bool CTargetInfo::ReadDocument(const CXmlNode& root, const std::string& shownName, std::string& error)
{
    const CXmlNode* pVm = root.FindChild("COMPILER\\TARGET\\VM");
    if (!pVm) {
        error = shownName + ": has no COMPILER\\TARGET\\VM";
        return false;
    }
    int running = 0;
    for (const auto& pChild : pVm->m_Children) {
        TargetArea area;
        if (pChild->m_Name == "AREA" && ReadArea(*pChild, running, area)) m_Areas.push_back(area);
        if (pChild->m_Name == "RETURNSTACK")
            m_HasNestedPrograms = pChild->GetAttributeBool("nestedprogram", true);
        if (pChild->m_Name != "PROGRAM") continue;
        TargetProgram program;
        pChild->GetAttribute(program.name, "name");
        program.initGlobal = pChild->GetAttributeBool("initglobal");
        program.initRetain = pChild->GetAttributeBool("initretain");
        m_Programs.push_back(program);
    }
    return true;
}

const TargetArea* CTargetInfo::FindArea(std::string_view name) const
{
    for (const TargetArea& area : m_Areas)
        if (area.name == name) return &area;
    return nullptr;
}
