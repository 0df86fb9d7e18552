#pragma once

#include "norvane/dap/DebugRun.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

// A line of a debugger's view of variables.
struct VariableView
{
    std::string name;
    std::string value;
    std::string type;            // empty: not known
    std::string evaluateName;    // what finds it by itself in the same frame
    int reference = 0;           // to what lies in it; 0: nothing
    std::size_t members = 0;     // of them
    std::size_t elements = 0;    // of an array; then there are no members
};

// The variables of a stopped machine as a tree that is opened level by level. References are good until Clear.
//
// Of the variables of a program or function no more is known than the comments of its code tell: "recipe.count" there
// makes a branch "recipe" with the part "count".
class CVariableTree
{
public:
    explicit CVariableTree(const CProgramRun& program);

    void Clear() { m_Nodes.clear(); }
    std::vector<VariableView> GetScopes(const DebugFrame& frame);
    // Children from the position `first` on, at most `most`; nothing if there is no such reference.
    std::optional<std::vector<VariableView>> GetChildren(int reference, std::size_t first, std::size_t most);
    // What a name means in a frame: the POU's own variables come before the globals.
    std::optional<VariableView> Evaluate(const DebugFrame& frame, std::string_view name, std::string& error);
    // Sets a variable by its name among the children, or by a name as it is evaluated. The view of it afterwards.
    std::optional<VariableView> SetChild(int reference, const std::string& name, const std::string& value,
                                         std::string& error);
    std::optional<VariableView> SetNamed(const DebugFrame& frame, std::string_view name, const std::string& value,
                                         std::string& error);

private:
    // Where names of a POU's own variables are looked up.
    struct LocalScope
    {
        int pou = -1;                      // -1: there are none
        std::uint32_t begin = 0;           // of its memory
        std::vector<NamedObject> headed;   // that the head of a function tells of
        std::string prefix;                // of names that are evaluated: "main."
    };
    // What the comments tell of a POU's own variables, ordered for looking up what a name goes on with.
    struct Parts
    {
        std::vector<std::pair<std::string, std::string>> names;            // in lower case, and as written; sorted
        std::unordered_map<std::string, std::vector<LocalPart>> arrays;    // by what is in front of "[", lower case
    };
    struct Node
    {
        enum class Kind { Object, Branch, Area, Bytes, Programs };

        Kind kind = Kind::Object;
        NamedObject object;                // of Object
        std::string prefix;                // of Object: of evaluated names; of Branch: "recipe.phases[1]", empty: all
        LocalScope scope;                  // of Branch
        std::size_t area = 0;              // of Area and Bytes: position in m_Areas
    };
    struct Area
    {
        const char* title;
        const char* region;                // of located variables; empty for the others
        char letter;                       // "%IB0"; 0: without bytes of its own
        std::vector<const DebugVariable*> variables;
        std::size_t bytes = 0;
    };

    LocalScope MakeScope(const DebugFrame& frame) const;
    std::optional<NamedObject> FindObject(const DebugFrame& frame, std::string_view name, std::string& error) const;
    std::optional<NamedObject> FindHeaded(const LocalScope& scope, std::string_view name) const;
    std::optional<NamedObject> FindPart(const LocalScope& scope, const std::string& path, std::string& error) const;
    std::optional<NamedObject> FindChild(const Node& node, const std::string& name, std::string& error) const;
    const Parts& GetParts(int pou);
    std::vector<std::string> GetPartNames(const LocalScope& scope, const std::string& path);

    int AddNode(Node node);
    VariableView ShowObject(std::string name, std::string evaluateName, const NamedObject& object);
    VariableView ShowPart(const LocalScope& scope, const std::string& name, const std::string& path);
    VariableView ShowScope(std::string name, Node node, std::size_t members);
    std::vector<VariableView> ShowParts(const Node& node, std::size_t first, std::size_t most);
    std::vector<VariableView> ShowMembers(const Node& node, std::size_t first, std::size_t most);
    std::vector<VariableView> ShowArea(const Node& node, std::size_t first, std::size_t most);
    std::vector<VariableView> ShowBytes(const Node& node, std::size_t first, std::size_t most);
    std::vector<VariableView> ShowPrograms(std::size_t first, std::size_t most);
    std::optional<VariableView> Set(const std::string& name, const NamedObject& object, const std::string& value,
                                    std::string& error);

    const CProgramRun& m_Program;
    std::vector<Area> m_Areas;
    std::vector<Node> m_Nodes;             // a reference is a position and 1
    std::unordered_map<int, Parts> m_Parts;   // of the POUs that were looked at
};
