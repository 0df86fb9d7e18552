#include "report/JsonReport.h"

#include "report/Wording.h"

#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;

static std::string GetPouName(const BuildFacts& facts, int pou)
{
    return facts.pous[static_cast<std::size_t>(pou)].name;
}

static Json MakeNames(const BuildFacts& facts, const std::vector<int>& pous)
{
    Json names = Json::array();
    for (const int pou : pous) names.push_back(GetPouName(facts, pou));
    return names;
}

static Json MakeArea(const AreaFacts& area)
{
    Json json{{"name", area.name}, {"used", area.UsedBytes()}, {"taken", area.takenBytes}, {"spareBits", area.spareBits},
              {"overlaps", area.overlaps}};
    if (area.size >= 0) {
        json["size"] = area.size;
        json["free"] = area.size - area.UsedBytes();
    }
    if (area.counted >= 0) json["counted"] = area.counted;
    if (area.HasAddresses()) json["begin"] = area.begin;
    Json gaps = Json::array();
    for (const BitRange& gap : area.gaps)
        gaps.push_back(Json{{"offset", gap.begin / g_BitsOfByte}, {"bytes", gap.Bits() / g_BitsOfByte}});
    json["gaps"] = std::move(gaps);
    return json;
}

static Json MakeVariable(const BuildFacts& facts, const VariableFacts& variable)
{
    Json json{{"name", GetFullName(variable)}, {"type", variable.typeText}};
    if (variable.area >= 0) {
        json["area"] = facts.areas[static_cast<std::size_t>(variable.area)].name;
        json["offset"] = variable.place.begin / g_BitsOfByte;
        if (variable.place.Bits() % g_BitsOfByte != 0) json["bit"] = variable.place.begin % g_BitsOfByte;
        json["bits"] = variable.place.Bits();
    }
    if (!variable.address.empty()) json["at"] = variable.address;
    json["retain"] = variable.isRetain;
    json["constant"] = variable.isConstant;
    json["located"] = variable.isLocated;
    json["fromCode"] = variable.isFromCode;
    json["uses"] = variable.uses;
    Json overlapping = Json::array();
    for (const int other : variable.overlapping)
        overlapping.push_back(GetFullName(facts.variables[static_cast<std::size_t>(other)]));
    if (variable.overlaps > 0) json["overlaps"] = std::move(overlapping);
    return json;
}

static Json MakePou(const BuildFacts& facts, const PouFacts& pou)
{
    Json json{{"name", pou.name}, {"kind", pou.kind}, {"used", pou.isUsed}, {"instructions", pou.instructions},
              {"local", pou.localBytes}, {"frame", pou.frameBytes}, {"stack", pou.depthBytes},
              {"values", pou.highestCells}, {"calls", MakeNames(facts, pou.callees)}};
    if (!pou.fileName.empty()) {
        json["file"] = pou.fileName;
        json["line"] = pou.line;
    }
    if (pou.id >= 0) json["id"] = pou.id;
    return json;
}

static Json MakeProgram(const BuildFacts& facts, const ProgramFacts& program)
{
    const PouFacts& pou = facts.pous[static_cast<std::size_t>(program.pou)];
    const std::int64_t cellBytes = std::int64_t{pou.highestCells} * facts.stacks.cellBytes;
    return Json{{"name", pou.name},
                {"returnStack", {{"bytes", pou.depthBytes},
                                 {"left", facts.stacks.returnSize - pou.depthBytes},
                                 {"path", MakeNames(facts, program.path)}}},
                {"parameterStack", {{"values", pou.highestCells},
                                    {"bytes", cellBytes},
                                    {"left", facts.stacks.parameterSize - cellBytes},
                                    {"path", MakeNames(facts, program.cellPath)},
                                    {"at", program.cellPlace}}}};
}

static Json MakeStacks(const StackFacts& stacks)
{
    return Json{{"return", {{"size", stacks.returnSize},
                            {"maxSize", stacks.returnMaxSize},
                            {"deepest", stacks.deepest},
                            {"nested", stacks.nested},
                            {"addsUp", stacks.isNested}}},
                {"parameter", {{"size", stacks.parameterSize},
                               {"maxSize", stacks.parameterMaxSize},
                               {"valueBytes", stacks.cellBytes},
                               {"highest", stacks.highestCells},
                               {"balanced", stacks.isBalanced}}}};
}

static Json MakeMessages(const BuildFacts& facts)
{
    constexpr const char* kinds[] = {"error", "warning", "note"};   // as MessageFacts::Kind
    Json messages = Json::array();
    for (const MessageFacts& message : facts.messages)
        messages.push_back(Json{{"kind", kinds[message.kind]}, {"text", message.text}});
    return messages;
}

std::string RenderJsonReport(const BuildFacts& facts)
{
    Json json{{"listing", facts.listingName}, {"program", facts.programName}, {"version", facts.version},
              {"fileTime", facts.fileTime}, {"sources", facts.sources}};
    json["checksums"] = Json{{"global", facts.globalSign}, {"retain", facts.retainSign}, {"dbi", facts.debugSign}};
    json["findings"] = facts.findings;
    Json areas = Json::array();
    for (const AreaFacts& area : facts.areas) areas.push_back(MakeArea(area));
    json["areas"] = std::move(areas);
    json["stacks"] = MakeStacks(facts.stacks);
    Json programs = Json::array();
    for (const ProgramFacts& program : facts.programs) programs.push_back(MakeProgram(facts, program));
    json["programs"] = std::move(programs);
    Json pous = Json::array();
    for (const PouFacts& pou : facts.pous) pous.push_back(MakePou(facts, pou));
    json["pous"] = std::move(pous);
    Json variables = Json::array();
    for (const VariableFacts& variable : facts.variables) variables.push_back(MakeVariable(facts, variable));
    json["variables"] = std::move(variables);
    json["messages"] = MakeMessages(facts);
    constexpr int indent = 1;
    return json.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n";
}
