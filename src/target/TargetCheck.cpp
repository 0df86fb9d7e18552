#include "target/TargetCheck.h"

#include "files/XmlDocument.h"

#include <string_view>

// From the outside in, so that the path reported is the outermost one that is missing.
static constexpr std::string_view g_RequiredPaths[] = {
    "COMPILER",
    "COMPILER\\TARGET",
    "COMPILER\\TARGET\\IEC",
    "COMPILER\\TARGET\\COMPILER",
    "COMPILER\\TARGET\\COMPILER\\DATAFORMAT",
    "COMPILER\\TARGET\\VM",
    "COMPILER\\TARGET\\VM\\PROGRAM",
};

std::string FindMissingTargetNode(CXmlDocument& target)
{
    for (const std::string_view path : g_RequiredPaths)
        if (!target.m_Root.FindChild(path)) return std::string(path);
    return {};
}
