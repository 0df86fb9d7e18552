#include "report/BuildReader.h"

#include "files/FileSystem.h"
#include "machine/Image.h"
#include "report/Hash.h"
#include "report/PouCollector.h"
#include "report/TypeSizes.h"
#include "report/VariableCollector.h"

#include <algorithm>

static std::string_view TakeLine(std::string_view& rest)
{
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return line;
}

// What tells when and from where a build was made, but not what it is.
static bool IsStamp(std::string_view line)
{
    return line.starts_with("DBI FILENAME ") || line.starts_with("DBI FILETIME ") ||
           line.starts_with("DBI FILEVERSION ") || line.starts_with("DBI COMPILERBUILDNUMBER ") ||
           line.starts_with("\t\t<PROGRAM ");
}

static void HashWithoutStamps(std::string_view text, CHash& hash)
{
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        if (!IsStamp(line)) hash.Add(line);
    }
}

static BitRange GetMemberPlace(const CTypeSizes& sizes, const DebugVariable& member)
{
    return sizes.GetPlace(member, std::max(0, member.offset));
}

// Array types have entries without a size; the variables of these types tell what there is to tell.
static void AddTypes(const CDebugInfo& debugInfo, BuildFacts& facts)
{
    constexpr int pointerBytes = 4;   // of in-out members, whose places alone matter here
    const CTypeSizes sizes(debugInfo, pointerBytes);
    for (const DebugType* pType : debugInfo.GetTypes()) {
        if (!pType->isStruct && pType->sizeBits <= 0) continue;
        TypeFacts type;
        type.name = pType->name;
        type.kind = pType->isFunctionBlock ? "FUNCTION_BLOCK" : pType->isStruct ? "STRUCT" : pType->baseName;
        type.bits = pType->isStruct ? sizes.GetBytes(pType->name) * g_BitsOfByte : pType->sizeBits;
        for (const DebugVariable& member : pType->members)
            type.members.push_back({member.name, member.typeText, member.memberClass, GetMemberPlace(sizes, member)});
        facts.types.push_back(std::move(type));
    }
}

static void AddStacks(const CDebugInfo& debugInfo, const std::optional<CTargetInfo>& target, StackFacts& stacks)
{
    stacks.returnSize = debugInfo.m_ReturnStack.size;
    stacks.returnMaxSize = debugInfo.m_ReturnStack.maxSize;
    stacks.deepest = debugInfo.m_ReturnStack.maxDepth;
    stacks.nested = debugInfo.m_ReturnStack.maxNestedDepth;
    stacks.parameterSize = debugInfo.m_ParameterStack.size;
    stacks.parameterMaxSize = debugInfo.m_ParameterStack.maxSize;
    if (target) stacks.isNested = target->m_HasNestedPrograms;
}

static void FindStackTrouble(BuildFacts& facts)
{
    const StackFacts& stacks = facts.stacks;
    if (stacks.deepest > stacks.returnSize)
        facts.findings.push_back("the return stack of " + std::to_string(stacks.returnSize) +
                                 " bytes is too small: one program needs " + std::to_string(stacks.deepest));
    else if (stacks.isNested && stacks.nested > stacks.returnSize)
        facts.findings.push_back("the return stack of " + std::to_string(stacks.returnSize) +
                                 " bytes is too small for programs that interrupt each other: they need " +
                                 std::to_string(stacks.nested));
    if (std::int64_t{stacks.highestCells} * stacks.cellBytes > stacks.parameterSize)
        facts.findings.push_back("the parameter stack of " + std::to_string(stacks.parameterSize) +
                                 " bytes is too small: " + std::to_string(stacks.highestCells) + " values of " +
                                 std::to_string(stacks.cellBytes) + " bytes are on it at a time");
    if (!stacks.isBalanced)
        facts.findings.push_back("the parameter stack does not stand equally high on all ways through the code; its "
                                 "depth is that of the ways that were followed");
}

static bool ReadFacts(std::string listingText, const CDebugInfo& debugInfo, const std::optional<CTargetInfo>& target,
                      const std::string& shownName, BuildFacts& facts, std::string& error)
{
    CListing listing;
    if (!listing.Read(std::move(listingText), shownName, debugInfo, error)) return false;
    facts.listingName = shownName;
    facts.programName = debugInfo.m_ProgramName;
    facts.version = debugInfo.m_ProgramVersion;
    facts.fileTime = debugInfo.m_FileTime;
    facts.sources = debugInfo.m_Sources;
    facts.hasTarget = target.has_value();
    facts.globalSign = debugInfo.m_Signs.global;
    facts.retainSign = debugInfo.m_Signs.retain;
    facts.debugSign = debugInfo.m_Signs.debugFile;
    AddStacks(debugInfo, target, facts.stacks);
    AddTypes(debugInfo, facts);
    CVariableCollector(debugInfo, listing, target, facts).Collect();
    CPouCollector(debugInfo, listing, target, facts).Collect();
    return true;
}

bool CBuildReader::FromText(std::string listingText, std::string_view debugText, std::string_view targetText,
                            const std::string& shownName, BuildFacts& facts, std::string& error)
{
    CHash content;
    HashWithoutStamps(listingText, content);
    HashWithoutStamps(debugText, content);
    facts.contentHash = content.Get();
    CDebugInfo debugInfo;
    if (!debugInfo.Read(debugText, GetDebugFileName(shownName), error)) return false;
    std::optional<CTargetInfo> target;
    if (!targetText.empty() && !target.emplace().Read(targetText, "target description", error)) return false;
    if (!ReadFacts(std::move(listingText), debugInfo, target, shownName, facts, error)) return false;
    FindStackTrouble(facts);
    return true;
}

// "a.dbi" and "a" stand for "a.asm", and an output may have a name without an ending.
static std::string FindListing(const std::string& buildName)
{
    if (buildName.ends_with(".asm")) return buildName;
    if (buildName.ends_with(".dbi")) {
        const std::string stem = buildName.substr(0, buildName.size() - 4);
        return FileExists(stem + ".asm") ? stem + ".asm" : stem;
    }
    return FileExists(buildName + ".asm") ? buildName + ".asm" : buildName;
}

bool CBuildReader::Load(const std::string& buildName, const std::string& targetName, BuildFacts& facts,
                        std::string& error)
{
    const std::string listingName = FindListing(buildName);
    std::string listingText;
    std::string debugText;
    std::string targetText;
    const auto read = [&error](const std::string& name, std::string& text) {
        if (ReadWholeFile(name, text)) return true;
        error = name + ": cannot be read";
        return false;
    };
    if (!read(listingName, listingText)) return false;
    if (!read(GetDebugFileName(listingName), debugText)) {
        error += "; a build is what the compiler wrote, NAME.asm and NAME.dbi";
        return false;
    }
    if (!targetName.empty() && !read(targetName, targetText)) return false;
    if (!targetName.empty() && targetText.empty()) {
        error = targetName + ": cannot be read as a target description";
        return false;
    }
    return FromText(std::move(listingText), debugText, targetText, listingName, facts, error);
}

// ---- What the compiler has printed

void ReadMessages(std::string_view text, BuildFacts& facts)
{
    while (!text.empty()) {
        std::string_view line = TakeLine(text);
        if (line.ends_with('\r')) line.remove_suffix(1);
        const auto has = [line](std::string_view part) { return line.find(part) != std::string_view::npos; };
        if (has(" : note N")) facts.messages.push_back({MessageFacts::Note, std::string(line)});
        else if (has(" : warning,") || has(" warning: "))
            facts.messages.push_back({MessageFacts::Warning, std::string(line)});
        else if (has(" : error:") || has(" : error,") || has(" error: "))
            facts.messages.push_back({MessageFacts::Error, std::string(line)});
    }
}
