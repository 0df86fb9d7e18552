#pragma once

#include "norvane/dap/Channel.h"
#include "norvane/dap/DebugRun.h"
#include "norvane/dap/VariableTree.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

// One session of the Debug Adapter Protocol: answers requests one by one and, between them, lets the program run a
// slice at a time. Whatever comes in, each request gets one response.
class CDebugSession
{
public:
    explicit CDebugSession(CChannel& channel) : m_Channel(channel) {}

    int Run();   // until the client is gone; an exit status

private:
    using Json = nlohmann::json;

    // ORDER STATE
    enum class State
    {
        Fresh,         // nothing but "initialize" is possible
        Initialized,   // ... "launch"
        Loaded,        // breakpoints are set until "configurationDone"
        Running,
        Stopped,
        Ended          // the program; the client is still there
    };
    struct Command;    // an entry of the table of requests
    struct Breakpoint
    {
        int id = 0;
        int line = 0;                      // where it really is
        std::vector<int> instructions;     // none if it is nowhere
    };

    static const Command s_Commands[];

    void TakeMessage(const std::string& text);
    void Dispatch(const std::string& command, const Json& arguments);
    void AdvanceProgram();
    void Note(CDebugRun::Event event);

    void Initialize(const Json& arguments);
    void Launch(const Json& arguments);
    void SetBreakpoints(const Json& arguments);
    void SetExceptionBreakpoints(const Json& arguments);
    void ConfigurationDone(const Json& arguments);
    void LoadedSources(const Json& arguments);
    void BreakpointLocations(const Json& arguments);
    void Threads(const Json& arguments);
    void Continue(const Json& arguments);
    void Next(const Json& arguments);
    void StepIn(const Json& arguments);
    void StepOut(const Json& arguments);
    void NextScan(const Json& arguments);
    void Pause(const Json& arguments);
    void StackTrace(const Json& arguments);
    void Scopes(const Json& arguments);
    void Variables(const Json& arguments);
    void SetVariable(const Json& arguments);
    void SetExpression(const Json& arguments);
    void Evaluate(const Json& arguments);
    void ExceptionInfo(const Json& arguments);
    void Terminate(const Json& arguments);
    void Disconnect(const Json& arguments);

    void Go(CStepper::Goal goal);
    void Stop(const std::string& reason, const std::string& description = {});
    void End();
    void KeepRetained();
    void UpdateBreakpoints();
    Json MakeBreakpoint(int file, int line, std::vector<Breakpoint>& set);
    const DebugFrame* FindFrame(const Json& arguments) const;   // the innermost by default; null if there is no such
    Json ShowSource(const std::string& file) const;
    Json ShowView(const VariableView& view) const;
    std::int64_t ToClientLine(int line) const { return line - 1 + m_FirstLine; }
    int FromClientLine(std::int64_t line) const;

    void Send(Json message);
    void SendEvent(const std::string& event, Json body);
    void SendOutput(const std::string& category, const std::string& text);
    void Answer(Json body = Json::object());
    void Refuse(const std::string& reason);

    CChannel& m_Channel;
    State m_State = State::Fresh;
    bool m_IsOver = false;
    int m_Status = 0;                      // of this process
    int m_ProgramStatus = 0;               // of the program that is debugged
    std::int64_t m_Sequence = 0;           // of the last message sent
    std::int64_t m_Request = 0;            // number of the request that is answered
    std::string m_Command;                 // its name
    bool m_IsAnswered = false;
    std::int64_t m_FirstLine = 1;          // as the client counts
    std::int64_t m_FirstColumn = 1;

    std::unique_ptr<CDebugRun> m_pRun;     // from "launch" on
    std::unique_ptr<CVariableTree> m_pTree;
    std::vector<DebugFrame> m_Stack;       // while stopped, the innermost first
    std::map<int, std::vector<Breakpoint>> m_Breakpoints;   // by file
    int m_LastBreakpoint = 0;              // the identifier given last
    bool m_IsTrapped = false;
    bool m_IsEntry = false;                // the next stop is the one at the entry
    bool m_IsPausing = false;              // ... the one that was asked for
    int m_Wait = 0;                        // milliseconds to the next look at the program
};
