#include "norvane/dap/DebugSession.h"

#include "norvane/dap/LaunchArguments.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <optional>

using Json = nlohmann::json;

constexpr int g_Thread = 1;                        // the only one: the cycle of the scans
constexpr std::size_t g_MostChildren = 10'000;     // where the client doesn't say how many it wants

// ---- The table of requests

struct CDebugSession::Command
{
    std::string_view name;
    unsigned states;                               // bits, in which it is possible. ORDER STATE
    void (CDebugSession::*pAnswer)(const Json&);
};

namespace
{

enum : unsigned   // ORDER STATE
{
    InFresh = 1,
    InInitialized = 2,
    InLoaded = 4,
    InRunning = 8,
    InStopped = 16,
    InEnded = 32,
    InSession = InLoaded | InRunning | InStopped | InEnded,
    Always = InFresh | InInitialized | InSession
};

}   // namespace

const CDebugSession::Command CDebugSession::s_Commands[] = {
    {"initialize", InFresh, &CDebugSession::Initialize},
    {"launch", InInitialized, &CDebugSession::Launch},
    {"setBreakpoints", InSession, &CDebugSession::SetBreakpoints},
    {"setExceptionBreakpoints", InSession, &CDebugSession::SetExceptionBreakpoints},
    {"configurationDone", InLoaded, &CDebugSession::ConfigurationDone},
    {"loadedSources", InSession, &CDebugSession::LoadedSources},
    {"breakpointLocations", InSession, &CDebugSession::BreakpointLocations},
    {"threads", InSession, &CDebugSession::Threads},
    {"continue", InStopped, &CDebugSession::Continue},
    {"next", InStopped, &CDebugSession::Next},
    {"stepIn", InStopped, &CDebugSession::StepIn},
    {"stepOut", InStopped, &CDebugSession::StepOut},
    {"nextScan", InRunning | InStopped, &CDebugSession::NextScan},
    {"pause", InRunning | InStopped, &CDebugSession::Pause},
    {"stackTrace", InStopped, &CDebugSession::StackTrace},
    {"scopes", InStopped, &CDebugSession::Scopes},
    {"variables", InStopped, &CDebugSession::Variables},
    {"setVariable", InStopped, &CDebugSession::SetVariable},
    {"setExpression", InStopped, &CDebugSession::SetExpression},
    {"evaluate", InStopped, &CDebugSession::Evaluate},
    {"exceptionInfo", InStopped, &CDebugSession::ExceptionInfo},
    {"terminate", InSession, &CDebugSession::Terminate},
    {"disconnect", Always, &CDebugSession::Disconnect},
};

// ---- What a request brings. Members that are missing and members of the wrong type are alike.

static std::optional<std::int64_t> GetInteger(const Json& object, const char* name)
{
    const auto found = object.find(name);
    if (found == object.end() || !found->is_number_integer()) return {};
    const bool isTooLarge = found->is_number_unsigned() && found->get<std::uint64_t>() > INT64_MAX;
    return isTooLarge ? std::nullopt : std::optional(found->get<std::int64_t>());
}

static std::optional<std::string> GetText(const Json& object, const char* name)
{
    const auto found = object.find(name);
    if (found == object.end() || !found->is_string()) return {};
    return found->get<std::string>();
}

static bool GetFlag(const Json& object, const char* name, bool standard)
{
    const auto found = object.find(name);
    return found == object.end() || !found->is_boolean() ? standard : found->get<bool>();
}

// The member if it is an object, else an empty one.
static const Json& GetObject(const Json& object, const char* name)
{
    static const Json none = Json::object();
    const auto found = object.find(name);
    return found == object.end() || !found->is_object() ? none : *found;
}

// Deeper than any request goes, and far less than what would exhaust the stack.
static bool IsTooDeep(const std::string& text)
{
    constexpr int most = 64;
    int depth = 0;
    bool isInText = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (isInText && c == '\\') ++i;
        else if (c == '"') isInText = !isInText;
        else if (!isInText && (c == '{' || c == '[') && ++depth > most) return true;
        else if (!isInText && (c == '}' || c == ']')) --depth;
    }
    return false;
}

// ---- The conversation

int CDebugSession::Run()
{
    while (!m_IsOver) {
        if (m_State == State::Running) AdvanceProgram();
        std::string text;
        switch (m_Channel.Receive(text, m_State == State::Running ? m_Wait : -1)) {
        case CChannel::Result::Message: TakeMessage(text); break;
        case CChannel::Result::None: break;
        case CChannel::Result::Ended: m_IsOver = true; break;
        case CChannel::Result::Broken:
            fmt::print(stderr, "norvane: debug: {}\n", m_Channel.GetError());
            m_Status = g_ExitUnable;
            m_IsOver = true;
            break;
        }
    }
    return m_Status;
}

void CDebugSession::TakeMessage(const std::string& text)
{
    m_Request = 0;
    m_Command.clear();
    m_IsAnswered = false;
    if (IsTooDeep(text)) return Refuse("the message is nested too deeply");
    const Json message = Json::parse(text, nullptr, /*allow_exceptions=*/false);
    if (!message.is_object()) return Refuse("the message is no JSON object");
    m_Request = GetInteger(message, "seq").value_or(0);
    m_Command = GetText(message, "command").value_or("");
    if (GetText(message, "type") != "request") return Refuse("the message is no request");
    Dispatch(m_Command, GetObject(message, "arguments"));
    if (!m_IsAnswered) Refuse("there is no answer");
}

void CDebugSession::Dispatch(const std::string& command, const Json& arguments)
{
    constexpr const char* reasons[] = {   // ORDER STATE
        "in front of initialize", "in front of launch",         "in front of configurationDone",
        "while the program runs", "while the program is stopped", "behind the end of the program",
    };
    const std::size_t state = static_cast<std::size_t>(m_State);
    for (const Command& entry : s_Commands) {
        if (entry.name != command) continue;
        if (entry.states & (1u << state)) (this->*entry.pAnswer)(arguments);
        else Refuse(command + " is not possible " + reasons[state]);
        return;
    }
    Refuse("unknown command: " + command);
}

// Texts of sources may be of any encoding; what isn't UTF-8 is replaced.
void CDebugSession::Send(Json message)
{
    message["seq"] = ++m_Sequence;
    if (m_Channel.Send(message.dump(-1, ' ', false, Json::error_handler_t::replace))) return;
    m_IsOver = true;
}

void CDebugSession::SendEvent(const std::string& event, Json body)
{
    Send({{"type", "event"}, {"event", event}, {"body", std::move(body)}});
}

void CDebugSession::SendOutput(const std::string& category, const std::string& text)
{
    SendEvent("output", {{"category", category}, {"output", text + "\n"}});
}

void CDebugSession::Answer(Json body)
{
    m_IsAnswered = true;
    Json message = {{"type", "response"}, {"request_seq", m_Request}, {"command", m_Command}, {"success", true}};
    if (!body.empty()) message["body"] = std::move(body);
    Send(std::move(message));
}

void CDebugSession::Refuse(const std::string& reason)
{
    m_IsAnswered = true;
    const Json error = {{"id", 1}, {"format", "{reason}"}, {"variables", {{"reason", reason}}}, {"showUser", true}};
    Send({{"type", "response"},
          {"request_seq", m_Request},
          {"command", m_Command},
          {"success", false},
          {"message", reason},
          {"body", {{"error", error}}}});
}

// ---- Beginning

void CDebugSession::Initialize(const Json& arguments)
{
    m_FirstLine = GetFlag(arguments, "linesStartAt1", true) ? 1 : 0;
    m_FirstColumn = GetFlag(arguments, "columnsStartAt1", true) ? 1 : 0;
    m_State = State::Initialized;
    Answer({{"supportsConfigurationDoneRequest", true},
            {"supportsEvaluateForHovers", true},
            {"supportsSetVariable", true},
            {"supportsSetExpression", true},
            {"supportsExceptionInfoRequest", true},
            {"supportsDelayedStackTraceLoading", true},
            {"supportsLoadedSourcesRequest", true},
            {"supportsBreakpointLocationsRequest", true},
            {"supportsTerminateRequest", true},
            {"exceptionBreakpointFilters", Json::array()}});
}

void CDebugSession::Launch(const Json& arguments)
{
    DebugSettings settings;
    std::vector<std::string> unknown;
    std::string error;
    if (!ReadLaunchArguments(arguments, settings, unknown, error)) return Refuse("launch: " + error);
    for (const std::string& name : unknown) SendOutput("console", "launch: there is no argument " + name);
    m_pRun = std::make_unique<CDebugRun>(std::move(settings));
    if (!m_pRun->Prepare([this](const std::string& note) { SendOutput("console", note); }, error)) {
        m_pRun.reset();
        return Refuse(error);
    }
    m_pRun->m_Program.m_pMachine->SetSystemPrinter(
        [this](std::int32_t number) { SendOutput("stdout", fmt::format("SYS {}", number)); });
    m_pTree = std::make_unique<CVariableTree>(m_pRun->m_Program);
    m_State = State::Loaded;
    Answer();
    SendEvent("initialized", Json::object());   // breakpoints may come
}

void CDebugSession::ConfigurationDone(const Json&)
{
    Answer();
    SendEvent("thread", {{"reason", "started"}, {"threadId", g_Thread}});
    m_IsEntry = m_pRun->m_Settings.stopOnEntry;
    Go(m_IsEntry ? CStepper::Goal::Statement : CStepper::Goal::None);
}

// ---- Breakpoints

int CDebugSession::FromClientLine(std::int64_t line) const
{
    return static_cast<int>(std::clamp<std::int64_t>(line, 0, INT32_MAX - 1) + 1 - m_FirstLine);
}

Json CDebugSession::ShowSource(const std::string& file) const
{
    return {{"name", std::filesystem::path(file).filename().string()}, {"path", file}};
}

Json CDebugSession::MakeBreakpoint(int file, int line, std::vector<Breakpoint>& set)
{
    Breakpoint& breakpoint = set.emplace_back();
    breakpoint.id = ++m_LastBreakpoint;
    breakpoint.line = file < 0 ? -1 : m_pRun->m_pLines->FindLine(file, line);
    Json shown = {{"id", breakpoint.id}, {"verified", breakpoint.line >= 0}};
    if (breakpoint.line < 0) {
        shown["line"] = ToClientLine(line);
        shown["message"] = file < 0 ? "this is no source of the program" : "no line with code follows";
        return shown;
    }
    breakpoint.instructions = m_pRun->m_pLines->GetInstructions(file, breakpoint.line);
    shown["line"] = ToClientLine(breakpoint.line);
    shown["source"] = ShowSource(m_pRun->GetFileName(file));
    return shown;
}

// The whole set of one source.
void CDebugSession::SetBreakpoints(const Json& arguments)
{
    const Json& source = GetObject(arguments, "source");
    const std::optional<std::string> path = GetText(source, "path");
    const int file = m_pRun->FindFile(path ? *path : GetText(source, "name").value_or(""));
    const auto wanted = arguments.find("breakpoints");
    std::vector<Breakpoint> set;
    Json shown = Json::array();
    if (wanted != arguments.end() && wanted->is_array()) {
        for (const Json& entry : *wanted) {
            const std::optional<std::int64_t> line = entry.is_object() ? GetInteger(entry, "line") : std::nullopt;
            if (!line) return Refuse("setBreakpoints: a breakpoint has no line");
            shown.push_back(MakeBreakpoint(file, FromClientLine(*line), set));
        }
    }
    m_Breakpoints[file] = std::move(set);
    UpdateBreakpoints();
    Answer({{"breakpoints", std::move(shown)}});
}

void CDebugSession::UpdateBreakpoints()
{
    std::vector<int> instructions;
    for (const auto& [file, set] : m_Breakpoints)
        for (const Breakpoint& breakpoint : set)
            instructions.insert(instructions.end(), breakpoint.instructions.begin(), breakpoint.instructions.end());
    m_pRun->m_pStepper->SetBreakpoints(instructions);
}

void CDebugSession::SetExceptionBreakpoints(const Json&)
{
    Answer();   // a trap stops in any case
}

void CDebugSession::BreakpointLocations(const Json& arguments)
{
    const std::optional<std::int64_t> first = GetInteger(arguments, "line");
    if (!first) return Refuse("breakpointLocations: there is no line");
    const int line = FromClientLine(*first);
    const int last = FromClientLine(GetInteger(arguments, "endLine").value_or(*first));
    const int file = m_pRun->FindFile(GetText(GetObject(arguments, "source"), "path").value_or(""));
    Json shown = Json::array();
    for (const int number : m_pRun->m_pLines->GetLines(file, line, last))
        shown.push_back({{"line", ToClientLine(number)}});
    Answer({{"breakpoints", std::move(shown)}});
}

void CDebugSession::LoadedSources(const Json&)
{
    Json sources = Json::array();
    const int count = static_cast<int>(m_pRun->m_Program.m_pImage->m_DebugInfo.m_Sources.size());
    for (int file = 0; file < count; ++file) sources.push_back(ShowSource(m_pRun->GetFileName(file)));
    Answer({{"sources", std::move(sources)}});
}

// ---- Running

void CDebugSession::Threads(const Json&)
{
    Answer({{"threads", Json::array({{{"id", g_Thread}, {"name", "scans"}}})}});
}

void CDebugSession::Go(CStepper::Goal goal)
{
    m_pTree->Clear();
    m_Stack.clear();
    m_pRun->Go(goal);
    m_State = State::Running;
    m_Wait = 0;
}

void CDebugSession::Continue(const Json&)
{
    Answer({{"allThreadsContinued", true}});
    Go(CStepper::Goal::None);
}

void CDebugSession::Next(const Json&)
{
    Answer();
    Go(CStepper::Goal::Over);
}

void CDebugSession::StepIn(const Json&)
{
    Answer();
    Go(CStepper::Goal::Into);
}

void CDebugSession::StepOut(const Json&)
{
    Answer();
    Go(CStepper::Goal::Out);
}

// Runs to the end of this scan and stops in front of the next one; in front of a scan, this is the scan.
void CDebugSession::NextScan(const Json&)
{
    Answer();
    // The client doesn't know that this request lets the program go on.
    if (m_State == State::Stopped) SendEvent("continued", {{"threadId", g_Thread}, {"allThreadsContinued", true}});
    Go(CStepper::Goal::None);
    m_pRun->StopAtScanEnd();
}

void CDebugSession::Pause(const Json&)
{
    Answer();
    if (m_State == State::Stopped) return;
    if (m_pRun->IsBetweenScans()) return Stop("pause");
    m_IsPausing = true;
    m_pRun->Go(CStepper::Goal::Statement);
}

void CDebugSession::AdvanceProgram()
{
    const CDebugRun::Event event = m_pRun->Advance();
    m_Wait = event == CDebugRun::Event::Waiting ? m_pRun->GetWaitMilliseconds() : 0;
    Note(event);
}

void CDebugSession::Note(CDebugRun::Event event)
{
    switch (event) {
    case CDebugRun::Event::Slice:
    case CDebugRun::Event::Waiting: break;
    case CDebugRun::Event::Breakpoint: Stop("breakpoint"); break;
    case CDebugRun::Event::Goal: Stop(m_IsEntry ? "entry" : m_IsPausing ? "pause" : "step"); break;
    case CDebugRun::Event::ScanEnd: Stop("step", fmt::format("in front of scan {}", m_pRun->GetNextScan())); break;
    case CDebugRun::Event::Trap:
        m_IsTrapped = true;
        m_ProgramStatus = g_ExitFailed;
        SendOutput("stderr", ToText(m_pRun->m_Program.m_pMachine->GetTrap()));
        Stop("exception", m_pRun->m_Program.m_pMachine->GetTrap().reason);
        break;
    case CDebugRun::Event::End: End(); break;
    case CDebugRun::Event::Failure:
        SendOutput("stderr", m_pRun->GetError());
        m_ProgramStatus = g_ExitUnable;
        End();
        break;
    }
}

void CDebugSession::Stop(const std::string& reason, const std::string& description)
{
    m_State = State::Stopped;
    m_IsEntry = m_IsPausing = false;
    m_Stack = m_pRun->GetStack();
    Json body = {{"reason", reason}, {"threadId", g_Thread}, {"allThreadsStopped", true}};
    if (!description.empty()) body["description"] = body["text"] = description;
    if (reason == "breakpoint") {
        const int instruction = m_pRun->m_Program.m_pMachine->GetPosition().instruction;
        Json hit = Json::array();
        for (const auto& [file, set] : m_Breakpoints)
            for (const Breakpoint& breakpoint : set)
                if (std::find(breakpoint.instructions.begin(), breakpoint.instructions.end(), instruction) !=
                    breakpoint.instructions.end())
                    hit.push_back(breakpoint.id);
        body["hitBreakpointIds"] = std::move(hit);
    }
    SendEvent("stopped", std::move(body));
}

// ---- Looking around while stopped

void CDebugSession::StackTrace(const Json& arguments)
{
    const std::size_t count = m_Stack.size();
    const std::int64_t first = std::max<std::int64_t>(0, GetInteger(arguments, "startFrame").value_or(0));
    const std::int64_t levels = GetInteger(arguments, "levels").value_or(0);
    const std::size_t most = levels <= 0 ? count : static_cast<std::size_t>(levels);
    Json frames = Json::array();
    for (std::size_t i = static_cast<std::size_t>(first); i < count && frames.size() < most; ++i) {
        const DebugFrame& frame = m_Stack[i];
        Json shown = {{"id", i + 1}, {"name", frame.name}, {"line", 0}, {"column", 0}};
        if (!frame.file.empty()) {
            shown["source"] = ShowSource(frame.file);
            shown["line"] = ToClientLine(frame.line);
            shown["column"] = m_FirstColumn;
        }
        frames.push_back(std::move(shown));
    }
    Answer({{"stackFrames", std::move(frames)}, {"totalFrames", count}});
}

const DebugFrame* CDebugSession::FindFrame(const Json& arguments) const
{
    const std::int64_t id = GetInteger(arguments, "frameId").value_or(1);
    if (id < 1 || id > static_cast<std::int64_t>(m_Stack.size())) return nullptr;
    return &m_Stack[static_cast<std::size_t>(id) - 1];
}

Json CDebugSession::ShowView(const VariableView& view) const
{
    Json shown = {{"name", view.name}, {"value", view.value}, {"variablesReference", view.reference}};
    if (!view.type.empty()) shown["type"] = view.type;
    if (!view.evaluateName.empty()) shown["evaluateName"] = view.evaluateName;
    if (view.reference > 0) shown[view.elements > 0 ? "indexedVariables" : "namedVariables"] =
                                view.elements > 0 ? view.elements : view.members;
    return shown;
}

void CDebugSession::Scopes(const Json& arguments)
{
    const DebugFrame* pFrame = FindFrame(arguments);
    if (!pFrame) return Refuse("scopes: there is no such frame");
    Json scopes = Json::array();
    for (const VariableView& view : m_pTree->GetScopes(*pFrame)) {
        Json shown = {{"name", view.name},
                      {"variablesReference", view.reference},
                      {"namedVariables", view.members},
                      {"expensive", false}};
        if (view.name == "Locals" || view.name == "Instance") shown["presentationHint"] = "locals";
        scopes.push_back(std::move(shown));
    }
    Answer({{"scopes", std::move(scopes)}});
}

void CDebugSession::Variables(const Json& arguments)
{
    const std::optional<std::int64_t> reference = GetInteger(arguments, "variablesReference");
    const std::int64_t start = std::max<std::int64_t>(0, GetInteger(arguments, "start").value_or(0));
    const std::int64_t count = std::max<std::int64_t>(0, GetInteger(arguments, "count").value_or(0));
    const std::size_t most = count == 0 ? g_MostChildren : static_cast<std::size_t>(count);
    std::optional<std::vector<VariableView>> views;
    if (reference && *reference > 0 && *reference <= INT32_MAX)
        views = m_pTree->GetChildren(static_cast<int>(*reference), static_cast<std::size_t>(start), most);
    if (!views) return Refuse("variables: there is no such reference");
    Json shown = Json::array();
    for (const VariableView& view : *views) shown.push_back(ShowView(view));
    Answer({{"variables", std::move(shown)}});
}

// ---- Values

static std::string Trim(const std::string& text)
{
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    if (begin == std::string::npos) return {};
    return text.substr(begin, text.find_last_not_of(" \t\r\n") - begin + 1);
}

void CDebugSession::SetVariable(const Json& arguments)
{
    const std::optional<std::int64_t> reference = GetInteger(arguments, "variablesReference");
    const std::optional<std::string> name = GetText(arguments, "name");
    const std::optional<std::string> value = GetText(arguments, "value");
    if (!reference || *reference < 1 || *reference > INT32_MAX || !name || !value)
        return Refuse("setVariable: expected variablesReference, name and value");
    std::string error;
    const std::optional<VariableView> view =
        m_pTree->SetChild(static_cast<int>(*reference), *name, Trim(*value), error);
    if (!view) return Refuse(error);
    Answer(ShowView(*view));
}

void CDebugSession::SetExpression(const Json& arguments)
{
    const DebugFrame* pFrame = FindFrame(arguments);
    const std::optional<std::string> name = GetText(arguments, "expression");
    const std::optional<std::string> value = GetText(arguments, "value");
    if (!pFrame || !name || !value) return Refuse("setExpression: expected expression, value and a frame");
    std::string error;
    const std::optional<VariableView> view = m_pTree->SetNamed(*pFrame, Trim(*name), Trim(*value), error);
    if (!view) return Refuse(error);
    Answer(ShowView(*view));
}

// A name, and at the prompt also "name := value".
void CDebugSession::Evaluate(const Json& arguments)
{
    const DebugFrame* pFrame = FindFrame(arguments);
    const std::optional<std::string> expression = GetText(arguments, "expression");
    if (!pFrame || !expression) return Refuse("evaluate: expected an expression, and a frame that exists");
    const std::size_t assigns = expression->find(":=");
    const bool isAssignment = assigns != std::string::npos && GetText(arguments, "context") == "repl";
    std::string error;
    const std::optional<VariableView> view =
        isAssignment ? m_pTree->SetNamed(*pFrame, Trim(expression->substr(0, assigns)),
                                         Trim(expression->substr(assigns + 2)), error)
                     : m_pTree->Evaluate(*pFrame, Trim(*expression), error);
    if (!view) return Refuse(error);
    Json shown = ShowView(*view);
    shown["result"] = shown["value"];
    Answer(std::move(shown));
}

void CDebugSession::ExceptionInfo(const Json&)
{
    if (!m_IsTrapped) return Refuse("exceptionInfo: no trap was drawn");
    const Trap& trap = m_pRun->m_Program.m_pMachine->GetTrap();
    Answer({{"exceptionId", GetTrapName(trap.kind)},
            {"description", trap.reason},
            {"breakMode", "always"},
            {"details", {{"message", trap.reason}, {"stackTrace", ToText(trap)}}}});
}

// ---- The end

// The values are whole behind a scan only.
void CDebugSession::KeepRetained()
{
    if (!m_pRun || m_State == State::Ended || m_pRun->m_Settings.run.retainName.empty()) return;
    std::string error = "the retained variables are not kept: the program was ended within a scan";
    const bool isWhole = !m_IsTrapped && m_pRun->m_Program.m_pMachine->GetFrames().empty();
    if (!isWhole || !m_pRun->m_Program.SaveRetained(error)) SendOutput("stderr", error);
}

void CDebugSession::End()
{
    if (m_State == State::Ended) return;
    const CMachine& machine = *m_pRun->m_Program.m_pMachine;
    for (const std::string& finding : machine.GetFindings()) SendOutput("stderr", finding);
    if (!machine.GetFindings().empty()) m_ProgramStatus = std::max(m_ProgramStatus, g_ExitFailed);
    SendOutput("console", fmt::format("{} scan(s) run", machine.GetScan()));
    KeepRetained();
    m_State = State::Ended;
    SendEvent("thread", {{"reason", "exited"}, {"threadId", g_Thread}});
    SendEvent("exited", {{"exitCode", m_ProgramStatus}});
    SendEvent("terminated", Json::object());
}

void CDebugSession::Terminate(const Json&)
{
    Answer();
    End();
}

void CDebugSession::Disconnect(const Json&)
{
    KeepRetained();
    m_IsOver = true;
    Answer();
}
