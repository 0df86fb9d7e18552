#include "norvane/Findings.h"
#include "norvane/MessageCatalogue.h"
#include "norvane/Report.h"
#include "norvane/TextWidth.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <set>

using Json = nlohmann::ordered_json;

// Names and messages may hold bytes that are no UTF-8, which these formats can't.
static std::string Dump(const Json& value, int indent)
{
    return value.dump(indent, ' ', false, Json::error_handler_t::replace);
}

static Json NumberOrNull(int number, bool isKnown)
{
    return isKnown ? Json(number) : Json(nullptr);
}

static Json MakeObject(const Diagnostic& diagnostic, const std::string& program)
{
    const bool hasLine = diagnostic.line > 0;
    const bool hasColumn = hasLine && diagnostic.column > 0;
    return {{"kind", GetWord(diagnostic.severity)},
            {"program", program},
            {"id", diagnostic.id},
            {"file", diagnostic.file},
            {"line", NumberOrNull(diagnostic.line, hasLine)},
            {"column", NumberOrNull(diagnostic.column, hasColumn)},
            {"endColumn", NumberOrNull(diagnostic.endColumn, hasColumn)},
            {"message", diagnostic.text},
            {"detail", diagnostic.continuation},
            {"hint", diagnostic.hint},
            {"follows", NumberOrNull(diagnostic.cause, diagnostic.cause >= 0)}};
}

std::string FormatJson(const CFindings& findings, const std::string& program)
{
    std::string text;
    for (const Diagnostic& diagnostic : findings.m_Diagnostics) text += Dump(MakeObject(diagnostic, program), -1) + "\n";
    const Json summary = {{"kind", "summary"},
                          {"program", program},
                          {"errors", findings.Count(Severity::Error)},
                          {"warnings", findings.Count(Severity::Warning)},
                          {"notes", findings.Count(Severity::Note)}};
    return text + Dump(summary, -1) + "\n";
}

// What isn't free to stand in a URI as it is.
static std::string EncodeUri(const std::string& name)
{
    constexpr std::string_view free = "-._~/";
    std::string uri = name.starts_with('/') ? "file://" : "";
    for (const char c : name) {
        const bool isPlain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        if (isPlain || free.find(c) != std::string_view::npos) uri += c;
        else uri += fmt::format("%{:02X}", static_cast<unsigned char>(c));
    }
    return uri;
}

// Columns count characters there.
static Json MakeRegion(const Diagnostic& diagnostic, const CSourceText* pSource)
{
    Json region = {{"startLine", diagnostic.line}};
    if (diagnostic.column < 1 || !pSource) return region;
    const std::string_view line = pSource->GetLine(diagnostic.line);
    region["startColumn"] = CountCharacters(line, static_cast<std::size_t>(diagnostic.column) - 1) + 1;
    region["endColumn"] = CountCharacters(line, static_cast<std::size_t>(diagnostic.endColumn) - 1) + 1;
    return region;
}

static Json MakeLocation(const Diagnostic& diagnostic, const CFindings& findings)
{
    Json place = {{"artifactLocation", {{"uri", EncodeUri(diagnostic.file)}}}};
    if (diagnostic.line > 0) place["region"] = MakeRegion(diagnostic, findings.FindSource(diagnostic.file));
    return {{"physicalLocation", place}};
}

static std::string MakeMessage(const Diagnostic& diagnostic)
{
    std::string text = diagnostic.text;
    if (!diagnostic.continuation.empty()) text += "\n" + diagnostic.continuation;
    if (!diagnostic.hint.empty()) text += "\nHint: " + diagnostic.hint;
    return text;
}

static Json MakeRelated(const CFindings& findings, int cause)
{
    Json related = Json::array();
    for (const Diagnostic& diagnostic : findings.m_Diagnostics) {
        if (diagnostic.cause != cause || diagnostic.file.empty()) continue;
        Json location = MakeLocation(diagnostic, findings);
        location["message"] = {{"text", diagnostic.text}};
        related.push_back(std::move(location));
    }
    return related;
}

static Json MakeResult(const Diagnostic& diagnostic, const CFindings& findings)
{
    Json result = Json::object();
    if (!diagnostic.id.empty()) result["ruleId"] = diagnostic.id;
    result["level"] = GetWord(diagnostic.severity);
    result["message"] = {{"text", MakeMessage(diagnostic)}};
    result["locations"] = Json::array();
    if (!diagnostic.file.empty()) result["locations"].push_back(MakeLocation(diagnostic, findings));
    return result;
}

// What each message says, with its places left open.
static Json MakeRules(const std::set<std::string>& used)
{
    Json rules = Json::array();
    for (const std::string& id : used) {
        Json rule = {{"id", id}};
        for (const MessageCatalogue::Entry& entry : MessageCatalogue::GetEntries())
            if (entry.id == id) rule["shortDescription"] = {{"text", std::string(entry.forms.front())}};
        rules.push_back(std::move(rule));
    }
    return rules;
}

static Json MakeRun(const CFindings& findings, bool showsAll)
{
    Json results = Json::array();
    std::set<std::string> used;
    int index = 0;
    for (const Diagnostic& diagnostic : findings.m_Diagnostics) {
        const int own = index++;
        if (diagnostic.cause >= 0 && !showsAll) continue;
        Json result = MakeResult(diagnostic, findings);
        Json related = showsAll ? Json::array() : MakeRelated(findings, own);
        if (!related.empty()) result["relatedLocations"] = std::move(related);
        results.push_back(std::move(result));
        if (!diagnostic.id.empty()) used.insert(diagnostic.id);
    }
    const Json driver = {{"name", "norvane"}, {"rules", MakeRules(used)}};
    return {{"tool", {{"driver", driver}}}, {"columnKind", "unicodeCodePoints"}, {"results", std::move(results)}};
}

std::string FormatSarif(const std::vector<const CFindings*>& runs, bool showsAll)
{
    Json array = Json::array();
    for (const CFindings* pFindings : runs) array.push_back(MakeRun(*pFindings, showsAll));
    const Json document = {
        {"$schema", "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json"},
        {"version", "2.1.0"},
        {"runs", std::move(array)}};
    constexpr int indent = 2;
    return Dump(document, indent) + "\n";
}
