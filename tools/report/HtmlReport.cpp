#include "report/HtmlReport.h"

#include "report/ReportPage.h"
#include "report/Wording.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>

using Json = nlohmann::json;

// Text of the user's, within elements and attributes.
static std::string Escape(std::string_view text)
{
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&': escaped += "&amp;"; break;
        case '<': escaped += "&lt;"; break;
        case '>': escaped += "&gt;"; break;
        case '"': escaped += "&quot;"; break;
        case '\'': escaped += "&#39;"; break;
        default: escaped += c;
        }
    }
    return escaped;
}

std::string CHtmlReport::Render()
{
    AddHead();
    AddFindings();
    AddAreas();
    AddStacks();
    AddDrawn();
    AddUnused();
    AddMessages();
    AddOrigin();
    AddFacts();
    return std::move(m_Text);
}

void CHtmlReport::AddHead()
{
    // Nothing is fetched from anywhere; the policy has the browser see to it.
    m_Text += fmt::format("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                          "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
                          "<meta name=\"color-scheme\" content=\"light dark\">\n"
                          "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
                          "style-src 'unsafe-inline'; script-src 'unsafe-inline'\">\n<title>{0}</title>\n"
                          "<style>\n{1}</style>\n</head>\n<body>\n<header>\n<h1>{0}</h1>\n"
                          "<p class=\"sub\">{2}, version {3}</p>\n<nav aria-label=\"Sections\">"
                          "<a href=\"#memory\">Memory</a> <a href=\"#stacks\">Stacks</a> <a href=\"#maps\">Maps</a> "
                          "<a href=\"#variables\">Variables</a> <a href=\"#pous\">POUs</a> <a href=\"#calls\">Calls</a> "
                          "<a href=\"#messages\">Messages</a> <a href=\"#origin\">Origin</a></nav>\n</header>\n<main>\n",
                          Escape(m_Facts.programName), g_PageStyle, Escape(m_Facts.listingName),
                          Escape(m_Facts.version));
}

void CHtmlReport::AddFindings()
{
    if (m_Facts.findings.empty()) return;
    m_Text += "<section id=\"findings\" class=\"alert\">\n<h2>Look at this</h2>\n<ul>\n";
    for (const std::string& finding : m_Facts.findings) m_Text += "<li>" + Escape(finding) + "</li>\n";
    m_Text += "</ul>\n</section>\n";
}

void CHtmlReport::AddAreas()
{
    m_Text += "<section id=\"memory\">\n<h2>Memory</h2>\n";
    if (!m_Facts.hasTarget)
        m_Text += "<p class=\"hint\">The sizes of the areas stand in the target description, which was not given "
                  "(<code>-i</code>).</p>\n";
    m_Text += "<div class=\"wide\"><table class=\"sums\">\n<thead><tr><th scope=\"col\">Area</th>"
              "<th scope=\"col\" class=\"n\">Size</th><th scope=\"col\" class=\"n\">Used</th>"
              "<th scope=\"col\" class=\"n\">Free</th><th scope=\"col\">Bytes used</th></tr></thead>\n<tbody>\n";
    for (const AreaFacts& area : m_Facts.areas) AddArea(area);
    m_Text += "</tbody></table></div>\n</section>\n";
}

// A bar that is full at 100 percent, with the share in words beside it.
static std::string MakeBar(std::int64_t used, std::int64_t size)
{
    if (size <= 0) return {};
    const double share = 100.0 * static_cast<double>(used) / static_cast<double>(size);
    return fmt::format("<span class=\"bar{}\"><span style=\"width:{:.1f}%\"></span></span> {}",
                       share > 90 ? " full" : "", std::clamp(share, 0.0, 100.0), GetShareText(used, size));
}

void CHtmlReport::AddArea(const AreaFacts& area)
{
    if (area.entries.empty() && area.size <= 0 && area.counted <= 0) return;
    const std::int64_t used = area.UsedBytes();
    const bool isKnown = area.size >= 0;
    m_Text += fmt::format("<tr data-area=\"{0}\"><th scope=\"row\">{0}</th><td class=\"n\">{1}</td><td class=\"n\">{2}"
                          "</td><td class=\"n\">{3}</td><td>{4}</td></tr>\n",
                          Escape(area.name), isKnown ? std::to_string(area.size) : "?", used,
                          isKnown ? std::to_string(area.size - used) : "?",
                          // Local memory is made as large as it has to be.
                          area.kind == AreaKind::Local ? std::string() : MakeBar(used, area.size));
}

// ---- Stacks

void CHtmlReport::AddStackRow(const ProgramFacts& program)
{
    const StackFacts& stacks = m_Facts.stacks;
    const PouFacts& pou = m_Facts.pous[static_cast<std::size_t>(program.pou)];
    m_Text += fmt::format("<tr><th scope=\"row\">{}</th><td class=\"n\">{}</td><td class=\"n\">{}</td><td>{}</td>"
                          "<td class=\"path\">{}</td></tr>\n",
                          Escape(pou.name), pou.depthBytes, stacks.returnSize - pou.depthBytes,
                          MakeBar(pou.depthBytes, stacks.returnSize), Escape(GetPathText(m_Facts, program.path)));
}

void CHtmlReport::AddStacks()
{
    const StackFacts& stacks = m_Facts.stacks;
    constexpr std::string_view heads =
        "<th scope=\"col\" class=\"n\">Left</th><th scope=\"col\">Share</th><th scope=\"col\">{}</th></tr></thead>\n<tbody>\n";
    m_Text += fmt::format("<section id=\"stacks\">\n<h2>Stacks</h2>\n<h3>Return stack</h3>\n<p>{} bytes. The deepest "
                          "program needs {}, all programs together {}{}.</p>\n"
                          "<div class=\"wide\"><table id=\"return-stack\"><thead><tr><th scope=\"col\">Program</th>"
                          "<th scope=\"col\" class=\"n\">Bytes</th>",
                          stacks.returnSize, stacks.deepest, stacks.nested,
                          stacks.isNested ? ", as they can interrupt each other" : ", but they don't interrupt each other");
    m_Text += fmt::format(fmt::runtime(heads), "Deepest path, bytes of each call");
    for (const ProgramFacts& program : m_Facts.programs) AddStackRow(program);
    m_Text += fmt::format("</tbody></table></div>\n<h3>Parameter stack</h3>\n<p>{} bytes, room for {} values of {} bytes. "
                          "The compiler looks at its size only; the depth was found by following the code.</p>\n"
                          "<div class=\"wide\"><table id=\"parameter-stack\"><thead><tr><th scope=\"col\">Program</th>"
                          "<th scope=\"col\" class=\"n\">Values</th>",
                          stacks.parameterSize, stacks.parameterSize / stacks.cellBytes, stacks.cellBytes);
    m_Text += fmt::format(fmt::runtime(heads), "Highest in");
    for (const ProgramFacts& program : m_Facts.programs) {
        const PouFacts& pou = m_Facts.pous[static_cast<std::size_t>(program.pou)];
        const std::int64_t bytes = std::int64_t{pou.highestCells} * stacks.cellBytes;
        m_Text += fmt::format("<tr><th scope=\"row\">{}</th><td class=\"n\">{}</td><td class=\"n\">{}</td><td>{}</td>"
                              "<td class=\"path\">{}{}</td></tr>\n",
                              Escape(pou.name), pou.highestCells, (stacks.parameterSize - bytes) / stacks.cellBytes,
                              MakeBar(bytes, stacks.parameterSize), Escape(GetCellPathText(m_Facts, program.cellPath)),
                              program.cellPlace.empty() ? "" : ", " + Escape(program.cellPlace));
    }
    m_Text += "</tbody></table></div>\n</section>\n";
}

// ---- What the script draws

void CHtmlReport::AddDrawn()
{
    m_Text += "<noscript><p class=\"alert\">The maps, the tables of variables and POUs and the call tree are drawn by a "
              "script of this page. Without it, <code>norvane report --format text</code> has them all.</p></noscript>\n";
    struct Drawn
    {
        const char* id;
        const char* title;
    };
    for (const Drawn& section : {Drawn{"maps", "Maps"}, {"variables", "Variables"}, {"pous", "POUs"}, {"calls", "Calls"}})
        m_Text += fmt::format("<section id=\"{}\">\n<h2>{}</h2>\n</section>\n", section.id, section.title);
}

void CHtmlReport::AddUnused()
{
    std::string rows;
    for (const PouFacts& pou : m_Facts.pous)
        if (!pou.isUsed)
            rows += fmt::format("<li>{} <b>{}</b>, {}</li>\n", pou.kind, Escape(pou.name), Escape(GetSourceText(pou)));
    m_Text += "<section id=\"unused\">\n<h2>No program reaches</h2>\n";
    m_Text += rows.empty() ? "<p>Every POU is reached by a program.</p>\n" : "<ul>\n" + rows + "</ul>\n";
    m_Text += "</section>\n";
}

void CHtmlReport::AddMessages()
{
    constexpr const char* classes[] = {"error", "warning", "note"};   // as MessageFacts::Kind
    m_Text += "<section id=\"messages\">\n<h2>Messages of the compiler</h2>\n";
    m_Text += m_Facts.messages.empty() ? "<p>None were given (<code>--messages</code>).</p>\n" : "<ul class=\"lines\">\n";
    for (const MessageFacts& message : m_Facts.messages)
        m_Text += fmt::format("<li class=\"{}\">{}</li>\n", classes[message.kind], Escape(message.text));
    m_Text += m_Facts.messages.empty() ? "</section>\n" : "</ul>\n</section>\n";
}

void CHtmlReport::AddOrigin()
{
    m_Text += fmt::format("<section id=\"origin\">\n<h2>Origin</h2>\n<dl>\n<dt>Listing</dt><dd>{}</dd>\n<dt>Program</dt>"
                          "<dd>{}</dd>\n<dt>Version</dt><dd>{}</dd>\n<dt>File time</dt><dd>{}</dd>\n<dt>Checksums</dt><dd>"
                          "global {}, retain {}, debug file {}</dd>\n<dt>Sources</dt>\n",
                          Escape(m_Facts.listingName), Escape(m_Facts.programName), Escape(m_Facts.version),
                          Escape(m_Facts.fileTime), m_Facts.globalSign, m_Facts.retainSign, m_Facts.debugSign);
    for (const std::string& source : m_Facts.sources) m_Text += "<dd>" + Escape(source) + "</dd>\n";
    m_Text += "</dl>\n</section>\n</main>\n";
}

// ---- The facts that the script draws from: rows without names for what stands in them, since there are many. The
// script names the columns in the same order. ORDER FACTS

static Json MakeAreaFacts(const AreaFacts& area)
{
    constexpr const char* kinds[] = {"global", "retain", "input", "output", "memory", "located", "local"};   // ORDER AREA
    return Json{{"name", area.name},       {"kind", kinds[static_cast<int>(area.kind)]},
                {"begin", area.begin},     {"size", area.size},
                {"used", area.UsedBytes()}, {"end", std::max(area.endByte, area.HasAddresses() ? 0 : area.counted)},
                {"overlaps", area.overlaps}, {"entries", area.entries}};
}

static Json MakeVariableFacts(const VariableFacts& variable)
{
    const int flags = (variable.isRetain ? 1 : 0) | (variable.isConstant ? 2 : 0) | (variable.isLocated ? 4 : 0) |
                      (variable.isFromCode ? 8 : 0);
    return Json::array({variable.name, variable.owner, variable.typeText, variable.area, variable.place.begin,
                        variable.place.end, flags, variable.uses, variable.address, variable.overlaps,
                        variable.overlapping});
}

static Json MakePouFacts(const PouFacts& pou)
{
    return Json::array({pou.name, pou.kind, pou.fileName, pou.line, pou.instructions, pou.localBytes, pou.frameBytes,
                        pou.depthBytes, pou.highestCells, pou.isUsed, pou.callees, pou.callers, pou.deepestCallee});
}

void CHtmlReport::AddFacts()
{
    Json json;
    json["areas"] = Json::array();
    for (const AreaFacts& area : m_Facts.areas) json["areas"].push_back(MakeAreaFacts(area));
    json["variables"] = Json::array();
    for (const VariableFacts& variable : m_Facts.variables) json["variables"].push_back(MakeVariableFacts(variable));
    json["pous"] = Json::array();
    for (const PouFacts& pou : m_Facts.pous) json["pous"].push_back(MakePouFacts(pou));
    json["programs"] = Json::array();
    for (const ProgramFacts& program : m_Facts.programs) json["programs"].push_back(program.pou);
    json["valueBytes"] = m_Facts.stacks.cellBytes;
    const std::string text = json.dump(-1, ' ', false, Json::error_handler_t::replace);
    m_Text += "<script type=\"application/json\" id=\"facts\">";
    for (const char c : text) {   // no name ends the script element
        if (c == '<') m_Text += "\\u003c";
        else m_Text += c;
    }
    m_Text += fmt::format("</script>\n<script>\n{}</script>\n</body>\n</html>\n", g_PageScript);
}
