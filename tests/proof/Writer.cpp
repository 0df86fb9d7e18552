#include "Writer.h"

#include <cstdio>
#include <string_view>

namespace
{

// How an operator is written, and how tightly it binds; 0: as a function.
struct OperatorRow
{
    std::string_view text;
    int strength;
};

constexpr int g_UnaryStrength = 8;
constexpr int g_AtomStrength = 10;

constexpr OperatorRow g_Operators[] = {   // ORDER OPERATOR
    {"", g_AtomStrength},
    {"", g_AtomStrength},
    {"", g_AtomStrength},
    {"", g_AtomStrength},
    {"-", g_UnaryStrength},
    {"NOT ", g_UnaryStrength},
    {"ABS", 0},
    {"SQRT", 0},
    {" + ", 6},
    {" - ", 6},
    {" * ", 7},
    {" / ", 7},
    {" MOD ", 7},
    {" ** ", 9},
    {" AND ", 3},
    {" OR ", 1},
    {" XOR ", 2},
    {" = ", 4},
    {" <> ", 4},
    {" < ", 5},
    {" <= ", 5},
    {" > ", 5},
    {" >= ", 5},
    {"MIN", 0},
    {"MAX", 0},
    {"LIMIT", 0},
    {"MULDIV", 0},
    {"SHL", 0},
    {"SHR", 0},
    {"ROL", 0},
    {"ROR", 0},
};

class CWriter
{
public:
    std::string Write(const Program& program);
    std::string Text(const Expression& expression);

private:
    void Line(const std::string& text) { m_Text += std::string(static_cast<std::size_t>(m_Depth), ' ') + text + "\n"; }
    std::string List(const std::vector<Expression>& expressions);
    std::string Operand(const Expression& expression, int strength);
    std::string Text(const Path& path);
    std::string TypeText(const Type& type);
    std::string Literal(Value value, ScalarKind kind);
    std::string Initial(const Type& type, const std::vector<Value>& values);
    std::string Declaration(const Variable& variable);
    void DeclareType(const Type& type);
    void DeclareVariables(std::string_view keyword, const std::vector<const Variable*>& variables);
    void DeclareGlobals(const Program& program);
    void DeclareLocals(const Function& function);
    void WriteFunction(const Function& function);
    void WriteList(const std::vector<Statement>& statements);
    void WriteStatement(const Statement& statement);
    void WriteIf(const Statement& statement);
    void WriteCase(const Statement& statement);
    void WriteFor(const Statement& statement);
    void WriteBlockCall(const Statement& statement);

    std::string m_Text;
    int m_Depth = 0;
};

// ---- Expressions

std::string CWriter::List(const std::vector<Expression>& expressions)
{
    std::string text;
    for (const Expression& expression : expressions) text += (text.empty() ? "" : ", ") + Text(expression);
    return text;
}

static int GetStrength(const Expression& expression)
{
    const int strength = g_Operators[static_cast<int>(expression.op)].strength;
    return strength == 0 ? g_AtomStrength : strength;
}

std::string CWriter::Operand(const Expression& expression, int strength)
{
    const std::string text = Text(expression);
    return GetStrength(expression) < strength ? "(" + text + ")" : text;
}

std::string CWriter::Text(const Expression& expression)
{
    const OperatorRow& row = g_Operators[static_cast<int>(expression.op)];
    switch (expression.op) {
    case Operator::Literal: return expression.text.starts_with('-') ? "(" + expression.text + ")" : expression.text;
    case Operator::Access: return Text(expression.path);
    case Operator::Call: return expression.pFunction->name + "(" + List(expression.operands) + ")";
    case Operator::Cast:
        return std::string(GetName(expression.operands[0].kind)) + "_TO_" + std::string(GetName(expression.kind)) + "(" +
               Text(expression.operands[0]) + ")";
    default: break;
    }
    if (row.strength == 0) return std::string(row.text) + "(" + List(expression.operands) + ")";
    if (row.strength == g_UnaryStrength)
        return std::string(row.text) + Operand(expression.operands[0], g_UnaryStrength + 1);
    return Operand(expression.operands[0], row.strength) + std::string(row.text) +
           Operand(expression.operands[1], row.strength + 1);
}

std::string CWriter::Text(const Path& path)
{
    std::string text = path.pVariable->name;
    for (const Step& step : path.steps)
        text += step.pMember ? "." + step.pMember->name : "[" + List(step.subscripts) + "]";
    return text;
}

// ---- Declarations

std::string CWriter::TypeText(const Type& type)
{
    if (!type.name.empty()) return type.name;
    if (type.IsScalar()) return std::string(GetName(type.kind));
    std::string bounds;
    for (const Bounds& dimension : type.dimensions)
        bounds += (bounds.empty() ? "" : ", ") + std::to_string(dimension.low) + ".." + std::to_string(dimension.high);
    return "ARRAY [" + bounds + "] OF " + TypeText(*type.pElement);
}

std::string CWriter::Literal(Value value, ScalarKind kind)
{
    if (IsBool(kind)) return value.integer ? "TRUE" : "FALSE";
    if (!IsReal(kind)) return std::to_string(value.integer);
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%f", value.real);
    return buffer;
}

// " := 5", " := [1, 3(2)]"; runs of a value are written with their length.
std::string CWriter::Initial(const Type& type, const std::vector<Value>& values)
{
    if (values.empty()) return {};
    if (type.IsScalar()) return " := " + Literal(values[0], type.kind);
    std::string text;
    for (std::size_t i = 0; i < values.size();) {
        std::size_t end = i + 1;
        while (end < values.size() && values[end] == values[i]) ++end;
        const std::string literal = Literal(values[i], type.pElement->kind);
        text += text.empty() ? "" : ", ";
        text += end - i == 1 ? literal : std::to_string(end - i) + "(" + literal + ")";
        i = end;
    }
    return " := [" + text + "]";
}

std::string CWriter::Declaration(const Variable& variable)
{
    const std::string address = variable.address.empty() ? "" : " AT " + variable.address;
    return variable.name + address + " : " + TypeText(*variable.pType) + Initial(*variable.pType, variable.initial) + ";";
}

void CWriter::DeclareType(const Type& type)
{
    if (type.form == Type::Form::Array) {
        Type unnamed = type;
        unnamed.name.clear();
        Line("TYPE " + type.name + " : " + TypeText(unnamed) + "; END_TYPE");
        return;
    }
    Line("TYPE " + type.name + " : STRUCT");
    for (const Member& member : type.members)
        Line(" " + member.name + " : " + TypeText(*member.pType) + Initial(*member.pType, member.initial) + ";");
    Line("END_STRUCT; END_TYPE");
}

void CWriter::DeclareVariables(std::string_view keyword, const std::vector<const Variable*>& variables)
{
    if (variables.empty()) return;
    Line(std::string(keyword));
    for (const Variable* pVariable : variables) Line(" " + Declaration(*pVariable));
    Line("END_VAR");
}

void CWriter::DeclareGlobals(const Program& program)
{
    std::vector<const Variable*> constants;
    std::vector<const Variable*> retained;
    std::vector<const Variable*> plain;
    for (const Variable& variable : program.globals) {
        if (variable.isConstant) constants.push_back(&variable);
        else if (variable.isRetain) retained.push_back(&variable);
        else if (variable.pType->form != Type::Form::Block) plain.push_back(&variable);
    }
    DeclareVariables("VAR_GLOBAL CONSTANT", constants);
    DeclareVariables("VAR_GLOBAL RETAIN", retained);
    DeclareVariables("VAR_GLOBAL", plain);
}

void CWriter::DeclareLocals(const Function& function)
{
    struct Block
    {
        Role role;
        bool isRetain;
        std::string_view keyword;
    };
    static constexpr Block blocks[] = {{Role::Input, false, "VAR_INPUT"},
                                       {Role::Output, false, "VAR_OUTPUT"},
                                       {Role::InOut, false, "VAR_IN_OUT"},
                                       {Role::Own, false, "VAR"},
                                       {Role::Own, true, "VAR RETAIN"}};
    for (const Block& block : blocks) {
        std::vector<const Variable*> variables;
        for (const Variable& variable : function.variables)
            if (variable.role == block.role && variable.isRetain == block.isRetain) variables.push_back(&variable);
        DeclareVariables(block.keyword, variables);
    }
}

// ---- Statements

void CWriter::WriteList(const std::vector<Statement>& statements)
{
    ++m_Depth;
    if (statements.empty()) Line(";");
    for (const Statement& statement : statements) WriteStatement(statement);
    --m_Depth;
}

void CWriter::WriteIf(const Statement& statement)
{
    for (std::size_t i = 0; i < statement.arms.size(); ++i) {
        Line((i == 0 ? "IF " : "ELSIF ") + Text(statement.arms[i].condition) + " THEN");
        WriteList(statement.arms[i].body);
    }
    if (statement.hasElse) {
        Line("ELSE");
        WriteList(statement.body);
    }
    Line("END_IF;");
}

void CWriter::WriteCase(const Statement& statement)
{
    Line("CASE " + Text(statement.value) + " OF");
    for (const Arm& arm : statement.arms) {
        std::string labels;
        for (const CaseLabel& label : arm.labels) {
            labels += (labels.empty() ? "" : ", ") + std::to_string(label.low);
            if (label.high != label.low) labels += ".." + std::to_string(label.high);
        }
        Line(labels + ":");
        WriteList(arm.body);
    }
    if (statement.hasElse) {
        Line("ELSE");
        WriteList(statement.body);
    }
    Line("END_CASE;");
}

void CWriter::WriteFor(const Statement& statement)
{
    Line("FOR " + Text(statement.target) + " := " + Text(statement.value) + " TO " + Text(statement.bound) +
         (statement.hasStep ? " BY " + Text(statement.step) : "") + " DO");
    WriteList(statement.body);
    Line("END_FOR;");
}

void CWriter::WriteBlockCall(const Statement& statement)
{
    std::string text;
    for (const Argument& argument : statement.arguments)
        text += (text.empty() ? "" : ", ") + argument.pMember->name +
                (argument.pMember->role == Role::Output ? " => " : " := ") + Text(argument.actual);
    Line(Text(statement.target) + "(" + text + ");");
}

void CWriter::WriteStatement(const Statement& statement)
{
    switch (statement.kind) {
    case Statement::Kind::Assign: Line(Text(statement.target) + " := " + Text(statement.value) + ";"); break;
    case Statement::Kind::Copy: Line(Text(statement.target) + " := " + Text(statement.source) + ";"); break;
    case Statement::Kind::If: WriteIf(statement); break;
    case Statement::Kind::Case: WriteCase(statement); break;
    case Statement::Kind::For: WriteFor(statement); break;
    case Statement::Kind::While:
        Line("WHILE " + Text(statement.value) + " DO");
        WriteList(statement.body);
        Line("END_WHILE;");
        break;
    case Statement::Kind::Repeat:
        Line("REPEAT");
        WriteList(statement.body);
        Line("UNTIL " + Text(statement.value) + " END_REPEAT;");
        break;
    case Statement::Kind::Exit: Line("EXIT;"); break;
    case Statement::Kind::Return: Line("RETURN;"); break;
    case Statement::Kind::CallFunction: Line(Text(statement.value) + ";"); break;
    case Statement::Kind::CallBlock: WriteBlockCall(statement); break;
    }
}

void CWriter::WriteFunction(const Function& function)
{
    static constexpr std::string_view keywords[] = {"FUNCTION", "FUNCTION_BLOCK", "PROGRAM"};
    const std::string keyword(keywords[static_cast<int>(function.form)]);
    Line(keyword + " " + function.name + (function.pResult ? " : " + TypeText(*function.pResult) : ""));
    DeclareLocals(function);
    WriteList(function.body);
    Line("END_" + keyword);
}

// A block's global instances follow directly behind it: whatever uses them comes later.
std::string CWriter::Write(const Program& program)
{
    for (const Type* pType : program.declaredTypes) DeclareType(*pType);
    DeclareGlobals(program);
    for (const Function& function : program.functions) {
        WriteFunction(function);
        if (!function.pBlock) continue;
        std::vector<const Variable*> instances;
        for (const Variable& variable : program.globals)
            if (variable.pType == function.pBlock) instances.push_back(&variable);
        DeclareVariables("VAR_GLOBAL", instances);
    }
    return std::move(m_Text);
}

}   // namespace

std::string WriteProgram(const Program& program)
{
    return CWriter().Write(program);
}
