#include "ProgramGenerator.h"

#include "Decisions.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace
{

enum class Family
{
    Bool,
    Signed,
    Unsigned,
    Bits,
    Real,
    Structure,
    Array,
    Block      // an instance of a function block
};

struct Type;

struct Field
{
    std::string name;
    const Type* pType;
    char role = ' ';          // of a block's member: i input, o output, b in-out, a blank for its own variables
};

struct Type
{
    std::string name;
    Family family;
    const Type* pElement = nullptr;      // of an array
    int low = 0;
    int high = 0;
    std::vector<Field> fields{};         // of a structure or block

    bool IsScalar() const { return family < Family::Structure; }
};

struct Variable
{
    std::string name;
    const Type* pType;
    bool isWritable = true;
    bool isPlain = true;                 // no parameter, neither retained nor at an address: an instance may be called
};

struct Function
{
    std::string name;
    const Type* pResult;                 // null: none
    std::vector<Field> formals;
};

const Type g_Elementary[] = {
    {"BOOL", Family::Bool},     {"INT", Family::Signed},   {"DINT", Family::Signed},  {"SINT", Family::Signed},
    {"UINT", Family::Unsigned}, {"UDINT", Family::Unsigned}, {"WORD", Family::Bits},  {"BYTE", Family::Bits},
    {"DWORD", Family::Bits},    {"REAL", Family::Real},    {"LREAL", Family::Real},   {"USINT", Family::Unsigned},
};
constexpr int g_ElementaryCount = 12;

class CGenerator
{
public:
    explicit CGenerator(CDecisions& decisions) : m_Decisions(decisions) {}
    std::string Run();

private:
    int Below(int count) { return m_Decisions.Below(count); }
    template <typename Item> const Item& Pick(const std::vector<Item>& items)
    {
        return items[static_cast<std::size_t>(Below(static_cast<int>(items.size())))];
    }
    std::string NewName(std::string_view start) { return std::string(start) + std::to_string(++m_Names); }
    void Line(const std::string& text) { m_Text += std::string(static_cast<std::size_t>(m_Depth), ' ') + text + "\n"; }

    // Types and declarations.
    const Type* PickElementary() { return &g_Elementary[Below(g_ElementaryCount)]; }
    const Type* PickType();
    void DeclareType();
    std::string Declare(const Field& field, bool withValue);
    std::string Value(const Type& type);
    void DeclareGlobals();
    void DeclareBlockOfVariables(std::string_view keyword, char role, int count, std::vector<Field>& fields);
    void DeclareFunction();
    void DeclareFunctionBlock();
    void DeclareProgram();

    // What stands in bodies.
    std::string Literal(const Type& type);
    std::string Access(const Type& type, bool isWritten);
    void CollectAccesses(const std::string& text, const Type& type, const Type& wanted, bool isWritten, int depth,
                         std::vector<std::string>& found);
    std::string Subscript(const Type& array);
    std::string Expression(const Type& type, int depth);
    std::string Number(const Type& type, int depth);
    std::string Condition(int depth);
    std::string Comparison(int depth);
    std::string Call(const Function& function);
    void Statements(int count);
    void Statement();
    void Assign();
    void Copy();
    void If();
    void Case();
    void For();
    void While();
    void Repeat();
    void CallFunction();
    void CallBlock();

    CDecisions& m_Decisions;
    std::string m_Text;
    int m_Names = 0;
    int m_Depth = 0;            // of the statement being written
    int m_Loops = 0;            // around it
    int m_Budget = 0;           // statements left in this body
    std::vector<const Type*> m_Types;
    std::vector<std::unique_ptr<Type>> m_Owned;
    std::vector<Variable> m_Globals;
    std::vector<Variable> m_Locals;
    std::vector<Function> m_Functions;
};

// ---- Types

const Type* CGenerator::PickType()
{
    if (m_Types.empty() || Below(3) < 2) return PickElementary();
    return Pick(m_Types);
}

void CGenerator::DeclareType()
{
    auto pType = std::make_unique<Type>();
    pType->name = NewName("t");
    if (Below(2) == 0) {
        pType->family = Family::Structure;
        Line("TYPE " + pType->name + " : STRUCT");
        const int count = 1 + Below(5);
        for (int i = 0; i < count; ++i) {
            const Type* pMember = PickType();
            pType->fields.push_back({NewName("m"), pMember});
            Line(" " + Declare(pType->fields.back(), Below(3) == 0));
        }
        Line("END_STRUCT; END_TYPE");
    } else {
        pType->family = Family::Array;
        pType->pElement = PickType();
        pType->low = Below(3);
        pType->high = pType->low + Below(6);
        Line("TYPE " + pType->name + " : ARRAY [" + std::to_string(pType->low) + ".." + std::to_string(pType->high) +
             "] OF " + pType->pElement->name + "; END_TYPE");
    }
    m_Types.push_back(pType.get());
    m_Owned.push_back(std::move(pType));
}

// "x : INT := 5;"
std::string CGenerator::Declare(const Field& field, bool withValue)
{
    const std::string value = withValue ? Value(*field.pType) : std::string();
    return field.name + " : " + field.pType->name + (value.empty() ? "" : " := " + value) + ";";
}

// Empty for a type whose values are given by lists.
std::string CGenerator::Value(const Type& type)
{
    return type.IsScalar() ? Literal(type) : std::string();
}

std::string CGenerator::Literal(const Type& type)
{
    switch (type.family) {
    case Family::Bool: return Below(2) ? "TRUE" : "FALSE";
    case Family::Real: return std::to_string(Below(100)) + "." + std::to_string(Below(1000) + 1);
    case Family::Bits: return Below(2) ? "16#" + std::to_string(Below(100)) : "2#101";
    default: return std::to_string(1 + Below(100));
    }
}

void CGenerator::DeclareGlobals()
{
    const char* const attributes[] = {"", "", " RETAIN", " CONSTANT"};
    const char* const attribute = attributes[Below(4)];
    const bool isConstant = std::string_view(attribute) == " CONSTANT";
    Line("VAR_GLOBAL" + std::string(attribute));
    const int count = 1 + Below(5);
    for (int i = 0; i < count; ++i) {
        const Type* pType = isConstant ? PickElementary() : PickType();
        const bool isLocated = !isConstant && pType->IsScalar() && m_Decisions.OneIn(6);
        const Field field{NewName("g"), pType};
        std::string text = Declare(field, isConstant || Below(2) == 0);
        if (isLocated && pType->family == Family::Bool)
            text.insert(field.name.size(), " AT %MX" + std::to_string(Below(40)) + "." + std::to_string(Below(8)));
        Line(" " + text);
        const bool isPlain = *attribute == '\0' && text.find(" AT ") == std::string::npos;
        m_Globals.push_back({field.name, pType, !isConstant, isPlain});
    }
    Line("END_VAR");
}

// ---- POUs

void CGenerator::DeclareBlockOfVariables(std::string_view keyword, char role, int count, std::vector<Field>& fields)
{
    if (count == 0) return;
    Line(std::string(keyword));
    for (int i = 0; i < count; ++i) {
        const Type* pType = PickType();
        while (role != ' ' && pType->family == Family::Block) pType = PickElementary();
        fields.push_back({NewName("v"), pType, role});
        Line(" " + Declare(fields.back(), role == ' ' && Below(2) == 0));
        m_Locals.push_back({fields.back().name, pType, role != 'i' || pType->IsScalar(), role == ' '});
    }
    Line("END_VAR");
}

void CGenerator::DeclareFunction()
{
    Function function{NewName("f"), Below(4) ? PickElementary() : nullptr, {}};
    m_Locals.clear();
    Line("FUNCTION " + function.name + (function.pResult ? " : " + function.pResult->name : ""));
    DeclareBlockOfVariables("VAR_INPUT", 'i', 1 + Below(3), function.formals);
    DeclareBlockOfVariables("VAR_IN_OUT", 'b', Below(3), function.formals);
    DeclareBlockOfVariables("VAR_OUTPUT", 'o', Below(2), function.formals);
    std::vector<Field> own;
    DeclareBlockOfVariables("VAR", ' ', 1 + Below(4), own);
    if (function.pResult) m_Locals.push_back({function.name, function.pResult, true, false});
    m_Budget = 12;
    Statements(1 + Below(6));
    Line("END_FUNCTION");
    m_Functions.push_back(std::move(function));
}

void CGenerator::DeclareFunctionBlock()
{
    auto pType = std::make_unique<Type>();
    pType->name = NewName("fb");
    pType->family = Family::Block;
    m_Locals.clear();
    Line("FUNCTION_BLOCK " + pType->name);
    DeclareBlockOfVariables("VAR_INPUT", 'i', 1 + Below(3), pType->fields);
    DeclareBlockOfVariables("VAR_OUTPUT", 'o', 1 + Below(2), pType->fields);
    DeclareBlockOfVariables("VAR_IN_OUT", 'b', Below(2), pType->fields);
    DeclareBlockOfVariables("VAR", ' ', Below(4), pType->fields);
    m_Budget = 12;
    Statements(1 + Below(6));
    Line("END_FUNCTION_BLOCK");
    m_Types.push_back(pType.get());
    m_Owned.push_back(std::move(pType));
}

void CGenerator::DeclareProgram()
{
    m_Locals.clear();
    std::vector<Field> own;
    Line("PROGRAM main");
    DeclareBlockOfVariables("VAR", ' ', 2 + Below(5), own);
    DeclareBlockOfVariables("VAR RETAIN", 'r', Below(2), own);
    m_Budget = 30;
    Statements(3 + Below(10));
    for (const Function& function : m_Functions) {   // each is reached, so nothing is a comment
        const std::string call = Call(function);
        if (!call.empty()) Line(call + ";");
    }
    Line("END_PROGRAM");
}

// ---- Variables

std::string CGenerator::Subscript(const Type& array)
{
    const int index = array.low + Below(array.high - array.low + 1);
    if (Below(3) > 0) return "[" + std::to_string(index) + "]";
    for (const std::vector<Variable>* pList : {&m_Locals, &m_Globals})
        for (const Variable& variable : *pList)
            if (variable.isWritable && variable.pType->family == Family::Signed) return "[" + variable.name + "]";
    return "[" + std::to_string(index) + "]";
}

// All ways from a variable to something of the wanted type.
void CGenerator::CollectAccesses(const std::string& text, const Type& type, const Type& wanted, bool isWritten, int depth,
                                 std::vector<std::string>& found)
{
    if (&type == &wanted) found.push_back(text);
    if (depth == 0) return;
    if (type.family == Family::Array)
        CollectAccesses(text + Subscript(type), *type.pElement, wanted, isWritten, depth - 1, found);
    if (type.family != Family::Structure && type.family != Family::Block) return;
    for (const Field& field : type.fields) {
        const bool isOpen = type.family == Family::Structure || field.role == 'i' || (field.role == 'o' && !isWritten);
        if (isOpen) CollectAccesses(text + "." + field.name, *field.pType, wanted, isWritten, depth - 1, found);
    }
}

// A variable, member or element of the type; empty if there is none.
std::string CGenerator::Access(const Type& type, bool isWritten)
{
    std::vector<std::string> found;
    for (const std::vector<Variable>* pList : {&m_Locals, &m_Globals})
        for (const Variable& variable : *pList)
            if (variable.isWritable) CollectAccesses(variable.name, *variable.pType, type, isWritten, 3, found);
    return found.empty() ? std::string() : Pick(found);
}

// ---- Expressions. The leftmost operand is always a variable, so nothing folds into an error.

std::string CGenerator::Expression(const Type& type, int depth)
{
    if (!type.IsScalar()) return Access(type, false);
    if (type.family == Family::Bool) return Condition(depth);
    return Number(type, depth);
}

std::string CGenerator::Number(const Type& type, int depth)
{
    const std::string variable = Access(type, false);
    if (variable.empty()) return Literal(type);
    if (depth == 0) return variable;
    const auto operand = [&] { return Below(2) ? Literal(type) : "(" + Number(type, depth - 1) + ")"; };
    if (type.family == Family::Bits) {
        switch (Below(6)) {
        case 0: return variable;
        case 1: return variable + " AND " + operand();
        case 2: return variable + " OR " + operand();
        case 3: return "NOT " + variable + " XOR " + operand();
        case 4: return std::string(Below(2) ? "SHL(" : "ROR(") + variable + ", " + std::to_string(Below(9)) + ")";
        default: return std::string(Below(2) ? "SHR(" : "ROL(") + variable + ", " + Number(g_Elementary[1], 0) + ")";
        }
    }
    switch (Below(11)) {
    case 0: return variable;
    case 1: return variable + " + " + operand();
    case 2: return variable + " - " + operand();
    case 3: return variable + " * " + operand();
    case 4: return variable + " / " + operand();
    case 5: return "MAX(" + variable + ", " + operand() + ")";
    case 6: return "LIMIT(" + variable + ", " + operand() + ", " + operand() + ")";
    case 7: return "ABS(" + variable + ") - " + variable;
    case 8: return type.family == Family::Signed ? "-" + variable + " MOD " + Literal(type) : "SQRT(" + variable + ")";
    case 9:
        if (type.family != Family::Real) return "MULDIV(" + variable + ", " + operand() + ", " + Literal(type) + ")";
        return variable + " ** " + std::to_string(1 + Below(3));
    default: {
        const Type& from = *PickElementary();
        const std::string value = from.family == Family::Bool ? Comparison(0) : Access(from, false);
        return value.empty() ? variable : from.name + "_TO_" + type.name + "(" + value + ")";
    }
    }
}

std::string CGenerator::Comparison(int depth)
{
    const Type& type = g_Elementary[1 + Below(g_ElementaryCount - 1)];
    const std::string left = Access(type, false);
    if (left.empty()) {
        const std::string variable = Access(g_Elementary[0], false);
        return variable.empty() ? "TRUE" : variable;
    }
    static constexpr std::string_view operators[] = {" = ", " <> ", " < ", " > ", " <= ", " >= "};
    const std::string right = depth > 0 && Below(2) ? "(" + Number(type, depth - 1) + ")" : Literal(type);
    return left + std::string(operators[Below(6)]) + right;
}

std::string CGenerator::Condition(int depth)
{
    const std::string left = "(" + Comparison(depth) + ")";
    if (depth == 0) return left;
    switch (Below(6)) {
    case 0: return left;
    case 1: return left + " AND " + Condition(depth - 1);
    case 2: return left + " OR " + Condition(depth - 1);
    case 3: return left + " XOR " + Condition(depth - 1);
    case 4: return left == "(TRUE)" ? left : "NOT " + left + " AND " + Condition(depth - 1);
    default: return Access(g_Elementary[0], false).empty() ? left : Access(g_Elementary[0], false) + " OR TRUE";
    }
}

// Empty where a variable for an output or in-out is missing.
std::string CGenerator::Call(const Function& function)
{
    std::string text = function.name + "(";
    bool isFirst = true;
    for (const Field& formal : function.formals) {
        std::string actual;
        if (formal.role == 'i' && formal.pType->IsScalar()) actual = Expression(*formal.pType, 1);
        else actual = Access(*formal.pType, formal.role != 'i');
        if (actual.empty()) return {};
        text += (isFirst ? "" : ", ") + actual;
        isFirst = false;
    }
    return text + ")";
}

// ---- Statements

void CGenerator::Statements(int count)
{
    ++m_Depth;
    for (int i = 0; i < count && m_Budget > 0; ++i) Statement();
    Line(";");
    --m_Depth;
}

void CGenerator::Statement()
{
    --m_Budget;
    switch (Below(14)) {
    case 0: case 1: case 2: case 3: Assign(); break;
    case 4: Copy(); break;
    case 5: If(); break;
    case 6: Case(); break;
    case 7: For(); break;
    case 8: While(); break;
    case 9: Repeat(); break;
    case 10: CallFunction(); break;
    case 11: CallBlock(); break;
    case 12:
        if (m_Loops > 0) Line("IF " + Comparison(0) + " THEN EXIT; END_IF;");
        else Line("SYSTEM(" + std::to_string(Below(20)) + ");");
        break;
    default: Line("IF " + Comparison(0) + " THEN RETURN; END_IF;"); break;
    }
}

void CGenerator::Assign()
{
    const Type& type = *PickElementary();
    const std::string target = Access(type, true);
    if (!target.empty()) Line(target + " := " + Expression(type, 2) + ";");
}

void CGenerator::Copy()
{
    if (m_Types.empty()) return;
    const Type& type = *Pick(m_Types);
    if (type.family == Family::Block) return;
    const std::string target = Access(type, true);
    const std::string value = Access(type, false);
    if (!target.empty()) Line(target + " := " + value + ";");
}

void CGenerator::If()
{
    Line("IF " + Condition(1) + " THEN");
    Statements(1 + Below(2));
    for (int i = Below(3); i > 0; --i) {
        Line("ELSIF " + Condition(0) + " THEN");
        Statements(1);
    }
    if (Below(2)) {
        Line("ELSE");
        Statements(1 + Below(2));
    }
    Line("END_IF;");
}

void CGenerator::Case()
{
    const std::string selector = Access(g_Elementary[1 + Below(3)], false);
    if (selector.empty()) return;
    Line("CASE " + selector + " OF");
    const int arms = 1 + Below(4);
    for (int i = 0; i < arms; ++i) {
        const int first = 10 * i;
        Line(std::to_string(first) + (Below(2) ? ", " + std::to_string(first + 2) + ".." + std::to_string(first + 5) : "") + ":");
        Statements(1);
    }
    if (Below(2)) {
        Line("ELSE");
        Statements(1);
    }
    Line("END_CASE;");
}

void CGenerator::For()
{
    const Type& type = g_Elementary[1 + Below(3)];
    const std::string variable = Access(type, true);
    if (variable.empty()) return;
    const std::string bound = Below(2) ? std::to_string(5 + Below(5)) : Access(type, false);
    static constexpr std::string_view steps[] = {"", " BY 2", " BY 1"};
    const std::string step = Below(4) ? std::string(steps[Below(3)]) : " BY " + Access(type, false);
    Line("FOR " + variable + " := " + std::to_string(Below(4)) + " TO " + bound + step + " DO");
    ++m_Loops;
    Statements(1 + Below(2));
    --m_Loops;
    Line("END_FOR;");
}

void CGenerator::While()
{
    Line("WHILE " + Condition(1) + " DO");
    ++m_Loops;
    Statements(1 + Below(2));
    --m_Loops;
    Line("END_WHILE;");
}

void CGenerator::Repeat()
{
    Line("REPEAT");
    ++m_Loops;
    Statements(1 + Below(2));
    --m_Loops;
    Line("UNTIL " + Condition(1) + " END_REPEAT;");
}

void CGenerator::CallFunction()
{
    if (m_Functions.empty()) return;
    const Function& function = Pick(m_Functions);
    const std::string call = Call(function);
    if (call.empty()) return;
    const std::string target = function.pResult && Below(2) ? Access(*function.pResult, true) : std::string();
    Line((target.empty() ? "" : target + " := ") + call + ";");
}

void CGenerator::CallBlock()
{
    std::vector<Variable> instances;
    for (const std::vector<Variable>* pList : {&m_Locals, &m_Globals})
        for (const Variable& variable : *pList)
            if (variable.pType->family == Family::Block && variable.isPlain) instances.push_back(variable);
    if (instances.empty()) return;
    const Variable instance = Pick(instances);
    std::string parameters;
    for (const Field& field : instance.pType->fields) {
        if (field.role == ' ' || (field.role != 'b' && Below(3) == 0)) continue;
        std::string actual;
        if (field.role == 'i' && field.pType->IsScalar()) actual = Expression(*field.pType, 1);
        else actual = Access(*field.pType, field.role != 'i');
        if (actual.empty() && field.role == 'b') return;
        if (actual.empty()) continue;
        parameters += (parameters.empty() ? "" : ", ") + field.name + (field.role == 'o' ? " => " : " := ") + actual;
    }
    Line(instance.name + "(" + parameters + ");");
}

std::string CGenerator::Run()
{
    for (int i = Below(4); i > 0; --i) DeclareType();
    for (int i = 1 + Below(3); i > 0; --i) DeclareGlobals();
    for (int i = Below(6); i > 0; --i) {
        if (Below(2)) DeclareFunction();
        else DeclareFunctionBlock();
    }
    DeclareProgram();
    return std::move(m_Text);
}

}   // namespace

std::string GenerateProgram(CDecisions& decisions)
{
    return CGenerator(decisions).Run();
}
