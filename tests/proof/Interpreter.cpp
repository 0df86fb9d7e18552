#include "Interpreter.h"

#include <algorithm>
#include <array>
#include <cmath>

static constexpr int g_StepsPerScan = 20'000;

CInterpreter::CInterpreter(const Program& program, bool hasShortcut) : m_Program(program), m_HasShortcut(hasShortcut)
{
    m_Memory.resize(static_cast<std::size_t>(program.slots));
    for (const Variable& variable : program.globals) Initialise(variable);
    for (const Function& function : program.functions) {
        if (function.form != Function::Form::Program) continue;
        for (const Variable& variable : function.variables) Initialise(variable);
    }
}

void CInterpreter::Initialise(const Variable& variable)
{
    std::vector<Value> values;
    AppendInitial(*variable.pType, variable.initial, values);
    std::copy(values.begin(), values.end(), m_Memory.begin() + variable.slot);
}

bool CInterpreter::Spend()
{
    if (--m_Budget < 0) m_IsSound = false;
    return m_IsSound;
}

// ---- Places

std::size_t CInterpreter::BaseOf(const Variable& variable) const
{
    std::size_t slot = static_cast<std::size_t>(variable.slot);
    if (variable.place == Place::Frame) slot += m_Frame;
    if (variable.place == Place::Instance) slot += m_Instance;
    return variable.isByReference ? static_cast<std::size_t>(m_Memory[slot].integer) : slot;
}

std::size_t CInterpreter::Locate(const Path& path)
{
    std::size_t slot = BaseOf(*path.pVariable);
    for (const Step& step : path.steps) {
        if (step.pMember) {
            slot += static_cast<std::size_t>(step.pMember->slot);
            continue;
        }
        std::int64_t index = 0;
        for (std::size_t i = 0; i < step.subscripts.size(); ++i) {
            const Bounds& dimension = step.pArray->dimensions[i];
            const std::int64_t subscript = Evaluate(step.subscripts[i]).integer;
            if (subscript < dimension.low || subscript > dimension.high) m_IsSound = false;
            index = index * dimension.Count() + subscript - dimension.low;
        }
        if (!m_IsSound) return slot;
        slot += static_cast<std::size_t>(index * step.pArray->pElement->slots);
    }
    return slot;
}

// ---- Expressions

Value CInterpreter::EvaluateLogic(const Expression& expression)
{
    const bool isAnd = expression.op == Operator::And;
    const Value left = Evaluate(expression.operands[0]);
    if (m_HasShortcut && (left.integer != 0) != isAnd) return left;
    const Value right = Evaluate(expression.operands[1]);
    return ComputeBinary(expression.op, left, right, ScalarKind::Bool);
}

Value CInterpreter::EvaluateOperands(const Expression& expression)
{
    std::array<Value, 3> values;   // no operator has more
    const std::size_t count = expression.operands.size();
    for (std::size_t i = 0; i < count; ++i) values[i] = Evaluate(expression.operands[i]);
    if (!m_IsSound) return {};
    const ScalarKind kind = expression.operands[0].kind;
    switch (expression.op) {
    case Operator::Cast: return Convert(values[0], kind, expression.kind);
    case Operator::Negate:
    case Operator::Not:
    case Operator::Abs:
    case Operator::Sqrt: return ComputeUnary(expression.op, values[0], kind);
    case Operator::Power: return ComputePower(values[0], kind, values[1], expression.operands[1].kind);
    case Operator::MulDiv: return ComputeMulDiv(values[0], values[1], values[2], kind);
    case Operator::ShiftLeft:
    case Operator::ShiftRight:
    case Operator::RotateLeft:
    case Operator::RotateRight: return ComputeShift(expression.op, values[0], values[1].integer, kind);
    case Operator::Limit:
        return ComputeBinary(Operator::Min, ComputeBinary(Operator::Max, values[0], values[1], kind), values[2], kind);
    default: break;
    }
    Value result = values[0];   // MIN and MAX take more than two
    for (std::size_t i = 1; i < count; ++i) result = ComputeBinary(expression.op, result, values[i], kind);
    return result;
}

Value CInterpreter::Evaluate(const Expression& expression)
{
    if (!Spend()) return {};
    switch (expression.op) {
    case Operator::Literal: return expression.value;
    case Operator::Access: return m_Memory[Locate(expression.path)];
    case Operator::Call: return Call(expression);
    case Operator::And:
    case Operator::Or:
        if (IsBool(expression.kind)) return EvaluateLogic(expression);
        break;
    default: break;
    }
    const Value result = EvaluateOperands(expression);
    if (IsReal(expression.kind) && !std::isfinite(result.real)) m_IsSound = false;
    return result;
}

// ---- Calls

CInterpreter::Flow CInterpreter::Enter(const std::vector<Statement>& body)
{
    const Flow flow = RunList(body);
    return flow == Flow::Return ? Flow::Next : flow;
}

// Arguments are evaluated from the left, each completely, before the frame exists. Of a structure or array that is only
// its place: the function copies it at its start, with what the arguments behind it have done to it.
Value CInterpreter::Call(const Expression& expression)
{
    const Function& function = *expression.pFunction;
    std::vector<Value> arguments;
    for (std::size_t i = 0; i < expression.operands.size(); ++i) {
        const Variable& formal = function.variables[i];
        const Expression& actual = expression.operands[i];
        const bool isPlace = formal.isByReference || !formal.pType->IsScalar();
        arguments.push_back(isPlace ? Value{static_cast<std::int64_t>(Locate(actual.path)), 0} : Evaluate(actual));
    }
    std::vector<Value> frame;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const Variable& formal = function.variables[i];
        if (formal.isByReference || formal.pType->IsScalar()) {
            frame.push_back(arguments[i]);
            continue;
        }
        const auto from = m_Memory.begin() + arguments[i].integer;
        frame.insert(frame.end(), from, from + formal.pType->slots);
    }
    for (std::size_t i = expression.operands.size(); i < function.variables.size(); ++i)
        AppendInitial(*function.variables[i].pType, function.variables[i].initial, frame);

    const std::size_t caller = m_Frame;
    const std::size_t end = m_Memory.size();
    m_Frame = end;
    m_Memory.insert(m_Memory.end(), frame.begin(), frame.end());
    Enter(function.body);
    Value result;
    for (const Variable& variable : function.variables)
        if (variable.role == Role::Result) result = m_Memory[end + static_cast<std::size_t>(variable.slot)];
    m_Memory.resize(end);
    m_Frame = caller;
    return result;
}

void CInterpreter::CallBlock(const Statement& statement)
{
    const std::size_t instance = Locate(statement.target);
    for (const Argument& argument : statement.arguments) {
        const Member& member = *argument.pMember;
        const std::size_t to = instance + static_cast<std::size_t>(member.slot);
        if (member.role == Role::InOut) {
            m_Memory[to] = {static_cast<std::int64_t>(Locate(argument.actual.path)), 0};
        } else if (member.role == Role::Input && member.pType->IsScalar()) {
            m_Memory[to] = Evaluate(argument.actual);
        } else if (member.role == Role::Input) {
            const std::size_t from = Locate(argument.actual.path);
            for (std::size_t k = 0; k < static_cast<std::size_t>(member.pType->slots); ++k)
                m_Memory[to + k] = m_Memory[from + k];
        }
    }
    const std::size_t caller = m_Instance;
    m_Instance = instance;
    Enter(statement.target.pType->pFunction->body);
    m_Instance = caller;
    for (const Argument& argument : statement.arguments) {
        const Member& member = *argument.pMember;
        if (member.role != Role::Output) continue;
        const std::size_t from = instance + static_cast<std::size_t>(member.slot);
        const std::size_t to = Locate(argument.actual.path);
        for (std::size_t k = 0; k < static_cast<std::size_t>(member.pType->slots); ++k) m_Memory[to + k] = m_Memory[from + k];
    }
}

// ---- Statements

CInterpreter::Flow CInterpreter::RunList(const std::vector<Statement>& statements)
{
    for (const Statement& statement : statements) {
        if (!Spend()) return Flow::Stop;
        ++statement.runs;
        const Flow flow = RunStatement(statement);
        if (!m_IsSound) return Flow::Stop;
        if (flow != Flow::Next) return flow;
    }
    return Flow::Next;
}

CInterpreter::Flow CInterpreter::RunIf(const Statement& statement)
{
    for (const Arm& arm : statement.arms)
        if (IsTrue(arm.condition)) return RunList(arm.body);
    return RunList(statement.body);
}

// EXIT leaves a CASE as it leaves a loop.
CInterpreter::Flow CInterpreter::RunCase(const Statement& statement)
{
    const std::int64_t selector = Evaluate(statement.value).integer;
    const std::vector<Statement>* pBody = &statement.body;
    for (const Arm& arm : statement.arms)
        for (const CaseLabel& label : arm.labels)
            if (selector >= label.low && selector <= label.high) pBody = &arm.body;
    const Flow flow = RunList(*pBody);
    return flow == Flow::Exit ? Flow::Next : flow;
}

// Bound and step are asked for in front of each pass.
bool CInterpreter::IsPast(const Statement& statement)
{
    const std::int64_t step = statement.hasStep ? Evaluate(statement.step).integer : 1;
    const std::int64_t counter = m_Memory[Locate(statement.target)].integer;
    const std::int64_t bound = Evaluate(statement.bound).integer;
    return step == 0 || (step > 0 ? counter > bound : counter < bound);
}

CInterpreter::Flow CInterpreter::RunFor(const Statement& statement)
{
    const ScalarKind kind = statement.target.pType->kind;
    m_Memory[Locate(statement.target)] = Evaluate(statement.value);
    while (!IsPast(statement)) {
        const Flow flow = RunList(statement.body);
        if (flow == Flow::Exit) return Flow::Next;
        if (flow != Flow::Next) return flow;
        const Value step = statement.hasStep ? Evaluate(statement.step) : Value{1, 0};
        Value& counter = m_Memory[Locate(statement.target)];
        counter = ComputeBinary(Operator::Add, counter, step, kind);
        if (!Spend()) return Flow::Stop;
    }
    return Flow::Next;
}

CInterpreter::Flow CInterpreter::RunLoop(const Statement& statement)
{
    const bool isRepeat = statement.kind == Statement::Kind::Repeat;
    while (isRepeat || IsTrue(statement.value)) {
        const Flow flow = RunList(statement.body);
        if (flow == Flow::Exit) return Flow::Next;
        if (flow != Flow::Next) return flow;
        if (isRepeat && IsTrue(statement.value)) return Flow::Next;
        if (!Spend()) return Flow::Stop;
    }
    return Flow::Next;
}

CInterpreter::Flow CInterpreter::RunStatement(const Statement& statement)
{
    switch (statement.kind) {
    case Statement::Kind::Assign: {
        const Value value = Evaluate(statement.value);   // before the target's subscripts
        m_Memory[Locate(statement.target)] = value;
        return Flow::Next;
    }
    case Statement::Kind::Copy: {
        const std::size_t from = Locate(statement.source);
        const std::size_t to = Locate(statement.target);
        for (std::size_t k = 0; k < static_cast<std::size_t>(statement.target.pType->slots); ++k)
            m_Memory[to + k] = m_Memory[from + k];
        return Flow::Next;
    }
    case Statement::Kind::If: return RunIf(statement);
    case Statement::Kind::Case: return RunCase(statement);
    case Statement::Kind::For: return RunFor(statement);
    case Statement::Kind::While:
    case Statement::Kind::Repeat: return RunLoop(statement);
    case Statement::Kind::Exit: return Flow::Exit;
    case Statement::Kind::Return: return Flow::Return;
    case Statement::Kind::CallFunction: Evaluate(statement.value); return Flow::Next;
    case Statement::Kind::CallBlock: CallBlock(statement); return Flow::Next;
    }
    return Flow::Next;
}

bool CInterpreter::RunScan()
{
    m_Budget = g_StepsPerScan;
    for (const Function& function : m_Program.functions)
        if (function.form == Function::Form::Program) Enter(function.body);
    return m_IsSound;
}
