#include "Generator.h"

#include "Decisions.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace
{

const Type* GetScalarType(ScalarKind kind)
{
    static const std::vector<Type> types = [] {
        std::vector<Type> made(g_ScalarKinds);
        for (int i = 0; i < g_ScalarKinds; ++i) made[static_cast<std::size_t>(i)].kind = static_cast<ScalarKind>(i);
        return made;
    }();
    return &types[static_cast<std::size_t>(kind)];
}

// A counter that runs around the statement, with what it may hold.
struct OpenLoop
{
    const Variable* pCounter;
    Bounds range;
};

// Variables of loops: written by their loops only.
struct Counter
{
    const Variable* pCounter;
    const Variable* pLimit = nullptr;   // made when a loop asks for one
    const Variable* pStep = nullptr;
};

// What a path is wanted for.
struct Wish
{
    ScalarKind kind = ScalarKind::Bool;
    bool isWritten = false;
    bool needsAddress = false;   // no subscript that is only known at run time, nothing behind a parameter
};

class CProofGenerator
{
public:
    explicit CProofGenerator(std::uint64_t seed) : m_Decisions(seed) {}
    std::unique_ptr<Program> Run();

private:
    int Below(int count) { return m_Decisions.Below(count); }
    bool OneIn(int count) { return m_Decisions.OneIn(count); }
    int Between(int low, int high) { return low + Below(high - low + 1); }
    template <class Item> const Item& Pick(const std::vector<Item>& items)
    {
        return items[static_cast<std::size_t>(Below(static_cast<int>(items.size())))];
    }
    std::string NewName(std::string_view start) { return std::string(start) + std::to_string(++m_Names); }

    // Declarations.
    void PickKinds();
    ScalarKind PickKind() { return Pick(m_Kinds); }
    ScalarKind PickSigned() { return Pick(m_SignedKinds); }
    Type& NewType(Type::Form form);
    const Type* NewArray(const Type* pElement, std::vector<Bounds> dimensions, const std::string& name);
    Bounds NewBounds(int most);
    const Type* InlineArray(int dimensions, int most);
    void DeclareStructure();
    void DeclareNamedArray();
    const Type* PickAggregate();
    std::vector<Value> InitialValues(const Type& type, bool isMember);
    int AnyInteger(ScalarKind kind);
    Value AnyValue(ScalarKind kind);
    Variable& AddGlobal(const Type* pType);
    void DeclareConstants();
    void DeclareGlobals();
    void DeclareLocated();
    Variable& AddVariable(std::string_view start, const Type* pType, Role role);
    void AddParameters(Role role, int count, int aggregatesIn);
    const Variable* AddGuarded(const Type* pType);
    Counter& FreeCounter(Bounds range);
    bool IsCounting(const Variable& variable) const;
    void BeginFunction(Function::Form form, std::string_view name);
    void DeclareFunction();
    void DeclareBlock();
    void DeclareInstances(const Type* pBlock);
    void DeclareProgram(const std::string& name, int statements);
    void InitialiseLocals();
    void InitialiseLeaves(const Path& path);

    // Places.
    bool Reaches(const Type& type, const Wish& wish) const;
    bool IsOpen(const Member& member, const Type& owner, bool isWritten) const;
    bool HasBitArray(const Type& type) const;
    void Descend(Path& path, const Wish& wish, int depth);
    Expression Subscript(Bounds bounds, bool isConstant, int depth);
    bool IsUsable(const Variable& variable, const Wish& wish) const;
    bool FindPath(const Wish& wish, Path& path, int depth);
    bool FindWhole(const Type& type, bool isWritten, Path& path);

    // Expressions.
    Expression Literal(ScalarKind kind);
    Expression Number(int value, ScalarKind kind);
    Expression RealNumber(const char* text, ScalarKind kind);
    Expression Access(const Path& path);
    Expression Leaf(ScalarKind kind, bool mayBeImmediate, int depth = 1);
    Expression Make(Operator op, ScalarKind kind, std::vector<Expression> operands);
    Expression Evaluated(ScalarKind kind, int depth, bool mayBeImmediate);
    Expression Integer(ScalarKind kind, int depth);
    Expression Bits(ScalarKind kind, int depth);
    Expression Real(ScalarKind kind, int depth);
    Expression Condition(int depth);
    Expression Comparison(int depth);
    Expression Binary(Operator op, ScalarKind kind, int depth);
    Expression Quotient(Operator op, ScalarKind kind, int depth);
    Expression Divisor(ScalarKind kind);
    Expression Small(ScalarKind kind, int count);
    Expression Extremes(ScalarKind kind, int depth);
    Expression Limited(ScalarKind kind, int depth);
    Expression Power(ScalarKind kind, int depth);
    Expression Shift(ScalarKind kind, int depth);
    Expression CastTo(ScalarKind kind, int depth);
    bool Call(const Function& function, int depth, Expression& call);
    bool CallTo(ScalarKind kind, int depth, Expression& call);
    bool Actual(const Variable& formal, int depth, Expression& actual);
    Expression Stored(ScalarKind kind, int depth);

    // Statements.
    void Add(Statement statement) { m_pList->push_back(std::move(statement)); }
    void Statements(std::vector<Statement>& list, int count, int depth);
    void AddStatement(int depth);
    Statement AssignTo(const Path& target, Expression value);
    Expression Combined(const Path& target, Expression value);
    Expression Accumulated(const Path& target, int depth);
    void AddAssign(int depth);
    void AddCopy();
    void AddIf(int depth);
    void AddCase(int depth);
    void AddFor(int depth);
    void AddCondLoop(int depth, bool isRepeat);
    void AddBody(Statement& statement, OpenLoop loop, int count, int depth);
    void AddArrayLoop();
    std::vector<Statement> OpenLoops(const Type& array, bool mayGoDown, Step& step);
    void CloseLoops(std::vector<Statement> loops, std::vector<Statement> body);
    void AddEscape();
    void AddFunctionCall();
    void CallFunctionNow(const Function& function);
    void AddBlockCall();
    bool CallInstance(const Path& instance);
    Path PathTo(const Variable& variable) { return {&variable, {}, variable.pType}; }
    Statement MakeFor(const Variable& counter, Bounds range, bool isDown);
    void FoldPath(const Path& path);
    void FoldScalar(const Path& path);
    void FoldVariables(const std::deque<Variable>& variables);

    CDecisions m_Decisions;
    std::unique_ptr<Program> m_pProgram = std::make_unique<Program>();
    std::vector<ScalarKind> m_Kinds;
    std::vector<ScalarKind> m_SignedKinds;
    bool m_HasSmallReferences = true;     // parameters by reference of types smaller than a pointer
    Function* m_pFunction = nullptr;      // being made
    std::vector<Statement>* m_pList = nullptr;
    std::vector<OpenLoop> m_Loops;
    std::vector<Counter> m_Counters;      // of the function
    const Variable* m_pSum = nullptr;
    int m_Names = 0;
    int m_Cases = 0;                      // CASE statements around the place, from the innermost loop on
    bool m_MayCall = true;
    bool m_AreLocalsReady = true;         // a function's locals are written before they are read
    std::vector<const Function*> m_Called;
};

// ---- Types

void CProofGenerator::PickKinds()
{
    m_Kinds = {ScalarKind::Bool, ScalarKind::Int, ScalarKind::Dint};
    for (int i = 0; i < g_ScalarKinds; ++i) {
        const ScalarKind kind = static_cast<ScalarKind>(i);
        if (std::find(m_Kinds.begin(), m_Kinds.end(), kind) == m_Kinds.end() && Below(2)) m_Kinds.push_back(kind);
    }
    for (const ScalarKind kind : m_Kinds)
        if (IsSigned(kind)) m_SignedKinds.push_back(kind);
    m_HasSmallReferences = Below(2) == 0;
}

Type& CProofGenerator::NewType(Type::Form form)
{
    Type& type = m_pProgram->types.emplace_back();
    type.form = form;
    return type;
}

Bounds CProofGenerator::NewBounds(int most)
{
    // Far from 0, so that a subscript needs the whole width of its type.
    const int low = Pick<int>({0, 1, -2, 100, 300, -300, 1000, -1000, 40000, -40000, 70000});
    return {low, low + 1 + Below(most - 1)};
}

const Type* CProofGenerator::NewArray(const Type* pElement, std::vector<Bounds> dimensions, const std::string& name)
{
    Type& type = NewType(Type::Form::Array);
    type.name = name;
    type.pElement = pElement;
    type.dimensions = std::move(dimensions);
    type.slots = pElement->slots;
    for (const Bounds& dimension : type.dimensions) type.slots *= dimension.Count();
    return &type;
}

const Type* CProofGenerator::InlineArray(int dimensions, int most)
{
    std::vector<Bounds> bounds;
    for (int i = 0; i < dimensions; ++i) bounds.push_back(NewBounds(most));
    return NewArray(GetScalarType(PickKind()), std::move(bounds), "");
}

void CProofGenerator::DeclareStructure()
{
    const int count = 2 + Below(4);
    std::vector<Member> members;
    int slots = 0;
    for (int i = 0; i < count; ++i) {
        const Type* pType = GetScalarType(PickKind());
        if (OneIn(4)) pType = InlineArray(1 + Below(2), 3);
        else if (OneIn(4) && !m_pProgram->declaredTypes.empty()) pType = Pick(m_pProgram->declaredTypes);
        members.push_back({NewName("m"), pType, slots, Role::Own, {}});
        const bool isBit = pType->IsScalar() && IsBool(pType->kind);   // TRUE behind an aggregate goes astray: a note
        if (OneIn(3) && !isBit) members.back().initial = InitialValues(*pType, true);
        slots += pType->slots;
    }
    if (slots > 24) return;
    Type& type = NewType(Type::Form::Structure);
    type.name = NewName("t");
    type.members = std::move(members);
    type.slots = slots;
    m_pProgram->declaredTypes.push_back(&type);
}

// Its elements are scalars, structures or, with one dimension each, arrays of anything but BOOL.
void CProofGenerator::DeclareNamedArray()
{
    const Type* pElement = GetScalarType(PickKind());
    int dimensions = 1 + Below(2);
    if (Below(3) && !m_pProgram->declaredTypes.empty()) {
        const Type* pOther = Pick(m_pProgram->declaredTypes);
        const bool isArray = pOther->form == Type::Form::Array;
        const bool isFit = !isArray || (pOther->dimensions.size() == 1 && !HasBitArray(*pOther));
        if (isFit && pOther->slots <= 12) pElement = pOther;
        if (isFit && isArray) dimensions = 1;
    }
    std::vector<Bounds> bounds;
    for (int i = 0; i < dimensions; ++i) bounds.push_back(NewBounds(4));
    m_pProgram->declaredTypes.push_back(NewArray(pElement, std::move(bounds), NewName("t")));
}

const Type* CProofGenerator::PickAggregate()
{
    if (Below(2) && !m_pProgram->declaredTypes.empty()) return Pick(m_pProgram->declaredTypes);
    const int dimensions = 1 + Below(3);
    return InlineArray(dimensions, dimensions == 1 ? 12 : 4);
}

// Half of them need the whole width of the type.
int CProofGenerator::AnyInteger(ScalarKind kind)
{
    if (Below(2)) return IsSigned(kind) ? Below(200) - 100 : Below(200);
    const int most = GetBits(kind) == 8 ? 127 : GetBits(kind) == 16 ? 32767 : 2'000'000'000;
    return IsSigned(kind) && Below(2) ? -Below(most) : Below(most);
}

Value CProofGenerator::AnyValue(ScalarKind kind)
{
    if (IsBool(kind)) return {Below(2), 0};
    if (IsReal(kind)) return {0, (Below(4000) - 2000) * 0.125};
    return {AnyInteger(kind), 0};
}

// Of scalars and arrays of them; empty otherwise.
std::vector<Value> CProofGenerator::InitialValues(const Type& type, bool isMember)
{
    if (type.IsScalar()) return {AnyValue(type.kind)};
    if (type.form != Type::Form::Array || !type.pElement->IsScalar()) return {};
    if (isMember && IsBool(type.pElement->kind)) return {};
    std::vector<Value> values;
    while (static_cast<int>(values.size()) < type.slots) {
        const Value value = AnyValue(type.pElement->kind);
        for (int i = 1 + (OneIn(4) ? Below(3) : 0); i > 0 && static_cast<int>(values.size()) < type.slots; --i)
            values.push_back(value);
    }
    return values;
}

// ---- Globals

Variable& CProofGenerator::AddGlobal(const Type* pType)
{
    Variable& variable = m_pProgram->globals.emplace_back();
    variable.name = NewName("g");
    variable.pType = pType;
    variable.slot = m_pProgram->slots;
    m_pProgram->slots += pType->slots;
    return variable;
}

void CProofGenerator::DeclareConstants()
{
    for (const ScalarKind kind : m_Kinds) {
        if (IsReal(kind) || Below(2)) continue;
        Variable& variable = AddGlobal(GetScalarType(kind));
        variable.isConstant = true;
        variable.initial = {IsBool(kind) ? Value{Below(2), 0} : Value{1 + Below(6), 0}};
    }
}

void CProofGenerator::DeclareLocated()
{
    int place = 0;
    for (int i = Below(3); i > 0; --i) {
        const ScalarKind kind = PickKind();
        static constexpr std::pair<int, char> sizes[] = {{1, 'X'}, {8, 'B'}, {16, 'W'}, {32, 'D'}};
        for (const auto& [bits, letter] : sizes) {
            if (bits != GetBits(kind)) continue;
            Variable& variable = AddGlobal(GetScalarType(kind));
            variable.address = std::string("%M") + letter + std::to_string(place) +
                               (bits == 1 ? "." + std::to_string(Below(8)) : "");
        }
        place += 8;
    }
}

void CProofGenerator::DeclareGlobals()
{
    m_pSum = &AddGlobal(GetScalarType(ScalarKind::Dint));
    m_pProgram->globals.back().name = "checksum";
    m_pProgram->globals.back().isGuarded = true;
    const bool hasRetained = OneIn(16);
    for (const ScalarKind kind : m_Kinds) {
        for (int i = 1 + Below(2); i > 0; --i) {
            Variable& variable = AddGlobal(GetScalarType(kind));
            if (Below(2)) variable.initial = InitialValues(*variable.pType, false);
            variable.isRetain = hasRetained && OneIn(3);
        }
    }
    for (int i = 3 + Below(4); i > 0; --i) {
        Variable& variable = AddGlobal(PickAggregate());
        if (Below(2)) variable.initial = InitialValues(*variable.pType, false);
    }
    DeclareLocated();
}

// ---- Functions, function blocks, programs

Variable& CProofGenerator::AddVariable(std::string_view start, const Type* pType, Role role)
{
    Variable& variable = m_pFunction->variables.emplace_back();
    variable.name = NewName(start);
    variable.pType = pType;
    variable.role = role;
    switch (m_pFunction->form) {
    case Function::Form::Program:
        variable.slot = m_pProgram->slots;
        m_pProgram->slots += pType->slots;
        return variable;
    case Function::Form::Function: variable.place = Place::Frame; break;
    case Function::Form::Block: variable.place = Place::Instance; break;
    }
    const bool isPointer = m_pFunction->form == Function::Form::Function && role == Role::Output;
    variable.isByReference = isPointer || role == Role::InOut;
    for (const Variable& other : m_pFunction->variables)
        if (&other != &variable) variable.slot += CountSlots(other);
    return variable;
}

void CProofGenerator::AddParameters(Role role, int count, int aggregatesIn)
{
    for (int i = 0; i < count; ++i) {
        const Type* pType = GetScalarType(PickKind());
        const bool isReference = role == Role::InOut || role == Role::Output;
        if (isReference && !m_HasSmallReferences) {
            while (GetBits(pType->kind) != 32) pType = GetScalarType(PickKind());
        }
        if (OneIn(aggregatesIn) && !m_pProgram->declaredTypes.empty()) pType = Pick(m_pProgram->declaredTypes);
        AddVariable("v", pType, role);
    }
}

const Variable* CProofGenerator::AddGuarded(const Type* pType)
{
    Variable& variable = AddVariable("i", pType, Role::Own);
    variable.isGuarded = true;
    return &variable;
}

static bool Holds(ScalarKind kind, Bounds range)
{
    const int width = GetBits(kind) - 2;   // the counter goes beyond its range by a step
    return range.low > -(1 << width) && range.high < (1 << width);
}

// A counter that no loop around uses, of a type that holds the range; a new one if need be.
Counter& CProofGenerator::FreeCounter(Bounds range)
{
    for (Counter& counter : m_Counters)
        if (!IsCounting(*counter.pCounter) && Holds(counter.pCounter->pType->kind, range)) return counter;
    std::vector<ScalarKind> kinds;
    for (const ScalarKind kind : m_SignedKinds)
        if (Holds(kind, range)) kinds.push_back(kind);
    return m_Counters.emplace_back(Counter{AddGuarded(GetScalarType(Pick(kinds)))});
}

bool CProofGenerator::IsCounting(const Variable& variable) const
{
    return std::any_of(m_Loops.begin(), m_Loops.end(), [&](const OpenLoop& loop) { return loop.pCounter == &variable; });
}

void CProofGenerator::BeginFunction(Function::Form form, std::string_view name)
{
    m_pFunction = &m_pProgram->functions.emplace_back();
    m_pFunction->form = form;
    m_pFunction->name = name;
    m_pList = &m_pFunction->body;
    m_Counters.clear();
}

void CProofGenerator::DeclareFunction()
{
    BeginFunction(Function::Form::Function, NewName("f"));
    AddParameters(Role::Input, 1 + Below(3), 6);
    if (Below(2)) AddParameters(Role::InOut, 1 + Below(2), 3);
    if (OneIn(3)) AddParameters(Role::Output, 1, 100);
    // The order of the declarations is that of the call.
    std::stable_sort(m_pFunction->variables.begin(), m_pFunction->variables.end(), [](const Variable& a, const Variable& b) {
        const auto rank = [](Role role) { return role == Role::Output ? 1 : role == Role::InOut ? 2 : 0; };
        return rank(a.role) < rank(b.role);
    });
    int slot = 0;
    for (Variable& variable : m_pFunction->variables) {
        variable.slot = slot;
        slot += CountSlots(variable);
    }
    for (int i = 1 + Below(2); i > 0; --i) AddVariable("v", GetScalarType(PickKind()), Role::Own);
    if (Below(2)) AddVariable("v", InlineArray(1 + Below(2), 3), Role::Own);
    if (OneIn(3)) AddVariable("v", PickAggregate(), Role::Own);
    if (!OneIn(5)) {
        m_pFunction->pResult = GetScalarType(PickKind());
        AddVariable("v", m_pFunction->pResult, Role::Result).name = m_pFunction->name;
    }
    m_AreLocalsReady = false;
    InitialiseLocals();
    m_AreLocalsReady = true;
    Statements(m_pFunction->body, 2 + Below(3), 2);
    FoldVariables(m_pFunction->variables);
}

void CProofGenerator::DeclareBlock()
{
    BeginFunction(Function::Form::Block, NewName("b"));
    AddParameters(Role::Input, 1 + Below(3), 6);
    AddParameters(Role::Output, 1 + Below(2), 8);
    if (OneIn(3)) AddParameters(Role::InOut, 1, 4);
    for (int i = 1 + Below(3); i > 0; --i) {
        Variable& variable = AddVariable("v", GetScalarType(PickKind()), Role::Own);
        if (Below(2) && !IsBool(variable.pType->kind)) variable.initial = InitialValues(*variable.pType, true);
    }
    for (int i = Below(3); i > 0; --i) {
        Variable& variable = AddVariable("v", PickAggregate(), Role::Own);
        if (Below(2)) variable.initial = InitialValues(*variable.pType, true);
    }
    for (const Function& other : m_pProgram->functions)   // an instance of another block
        if (other.pBlock && OneIn(3)) AddVariable("n", other.pBlock, Role::Own);
    Statements(m_pFunction->body, 4 + Below(4), 2);

    Type& type = NewType(Type::Form::Block);
    type.name = m_pFunction->name;
    type.pFunction = m_pFunction;
    type.slots = 0;
    for (const Variable& variable : m_pFunction->variables) {
        type.members.push_back({variable.name, variable.pType, variable.slot, variable.role, variable.initial});
        type.slots += CountSlots(variable);
    }
    m_pFunction->pBlock = &type;
    DeclareInstances(&type);
}

void CProofGenerator::DeclareInstances(const Type* pBlock)
{
    for (int i = 1 + Below(2); i > 0; --i) AddGlobal(pBlock);
}

void CProofGenerator::DeclareProgram(const std::string& name, int statements)
{
    BeginFunction(Function::Form::Program, name);
    for (const ScalarKind kind : m_Kinds) {
        Variable& variable = AddVariable("v", GetScalarType(kind), Role::Own);
        if (Below(2)) variable.initial = InitialValues(*variable.pType, false);
    }
    if (OneIn(3)) AddVariable("v", GetScalarType(PickKind()), Role::Own).isRetain = true;
    for (int i = 1 + Below(3); i > 0; --i) {
        Variable& variable = AddVariable("v", PickAggregate(), Role::Own);
        if (Below(2)) variable.initial = InitialValues(*variable.pType, false);
    }
    for (const Function& function : m_pProgram->functions)
        if (function.pBlock && OneIn(6)) AddVariable("n", function.pBlock, Role::Own);
    Statements(m_pFunction->body, statements, 3);
    for (const Function& function : m_pProgram->functions)   // what nobody calls is no proof
        if (function.form == Function::Form::Function &&
            std::find(m_Called.begin(), m_Called.end(), &function) == m_Called.end())
            CallFunctionNow(function);
    for (const Variable& variable : m_pProgram->globals)
        if (variable.pType->form == Type::Form::Block) CallInstance(PathTo(variable));
    for (const Variable& variable : m_pFunction->variables)
        if (variable.pType->form == Type::Form::Block) CallInstance(PathTo(variable));
    FoldVariables(m_pProgram->globals);
    FoldVariables(m_pFunction->variables);
}

// A function's memory holds anything at its start.
void CProofGenerator::InitialiseLocals()
{
    for (const Variable& variable : m_pFunction->variables)
        if (variable.role == Role::Own || variable.role == Role::Result) InitialiseLeaves(PathTo(variable));
}

void CProofGenerator::InitialiseLeaves(const Path& path)
{
    const Type& type = *path.pType;
    if (type.IsScalar()) {
        Add(AssignTo(path, Below(2) ? Literal(type.kind) : Leaf(type.kind, true, 0)));
        return;
    }
    if (type.form == Type::Form::Structure) {
        for (const Member& member : type.members) {
            Path inner = path;
            inner.steps.push_back({&member, nullptr, {}});
            inner.pType = member.pType;
            InitialiseLeaves(inner);
        }
        return;
    }
    const int count = type.slots / type.pElement->slots;
    for (int i = 0; i < count; ++i) {
        Step step{nullptr, &type, {}};
        int left = i;
        for (std::size_t k = type.dimensions.size(); k-- > 0;) {
            const Bounds& dimension = type.dimensions[k];
            step.subscripts.insert(step.subscripts.begin(), Number(dimension.low + left % dimension.Count(), ScalarKind::Dint));
            left /= dimension.Count();
        }
        Path inner = path;
        inner.steps.push_back(std::move(step));
        inner.pType = type.pElement;
        InitialiseLeaves(inner);
    }
}

// ---- Places

bool CProofGenerator::IsOpen(const Member& member, const Type& owner, bool isWritten) const
{
    if (owner.form == Type::Form::Structure) return true;
    return member.role == Role::Input || (member.role == Role::Output && !isWritten);
}

bool CProofGenerator::Reaches(const Type& type, const Wish& wish) const
{
    if (type.IsScalar()) return type.kind == wish.kind;
    if (type.form == Type::Form::Array) return Reaches(*type.pElement, wish);
    for (const Member& member : type.members)
        if (IsOpen(member, type, wish.isWritten) && Reaches(*member.pType, wish)) return true;
    return false;
}

bool CProofGenerator::HasBitArray(const Type& type) const
{
    if (type.form == Type::Form::Array)
        return (type.pElement->IsScalar() && IsBool(type.pElement->kind)) || HasBitArray(*type.pElement);
    for (const Member& member : type.members)
        if (HasBitArray(*member.pType)) return true;
    return false;
}

bool CProofGenerator::IsUsable(const Variable& variable, const Wish& wish) const
{
    if (wish.isWritten && (variable.isConstant || variable.isGuarded)) return false;
    if (variable.isGuarded && &variable != m_pSum && !IsCounting(variable)) return false;
    if (!m_AreLocalsReady && (variable.role == Role::Own || variable.role == Role::Result) &&
        variable.place == Place::Frame)
        return false;
    if (variable.isConstant) return false;   // constants stand in for literals, see Literal
    // Behind a parameter only the value is found, not the place.
    if (wish.needsAddress && variable.isByReference && variable.place == Place::Frame && !variable.pType->IsScalar())
        return false;
    return Reaches(*variable.pType, wish);
}

Expression CProofGenerator::Subscript(Bounds bounds, bool isConstant, int depth)
{
    if (!isConstant) {
        std::vector<const Variable*> fitting;
        for (const OpenLoop& loop : m_Loops)
            if (loop.range.low >= bounds.low && loop.range.high <= bounds.high) fitting.push_back(loop.pCounter);
        if (!fitting.empty() && Below(4)) return Access(PathTo(*Pick(fitting)));
        if (depth > 0 && Below(3)) {
            ScalarKind kind = PickSigned();
            if (!Holds(kind, bounds)) kind = ScalarKind::Dint;
            const Expression value = Leaf(kind, false, depth - 1);
            if (OneIn(4))
                return Make(Operator::Limit, kind, {Number(bounds.low, kind), value, Number(bounds.high, kind)});
            const Expression distance =
                Make(Operator::Abs, kind, {Make(Operator::Modulo, kind, {value, Number(bounds.Count(), kind)})});
            if (bounds.low == 0) return distance;
            return Make(Operator::Add, kind, {distance, Number(bounds.low, kind)});
        }
    }
    return Number(Between(bounds.low, bounds.high), ScalarKind::Dint);
}

void CProofGenerator::Descend(Path& path, const Wish& wish, int depth)
{
    while (!path.pType->IsScalar()) {
        const Type& type = *path.pType;
        if (type.form == Type::Form::Array) {
            // Subscripts in front of a bit in an inner array would be counted in bits.
            const bool isConstant = wish.needsAddress || (IsBool(wish.kind) && HasBitArray(*type.pElement));
            Step step{nullptr, &type, {}};
            for (const Bounds& dimension : type.dimensions) step.subscripts.push_back(Subscript(dimension, isConstant, depth));
            path.steps.push_back(std::move(step));
            path.pType = type.pElement;
            continue;
        }
        std::vector<const Member*> fitting;
        for (const Member& member : type.members)
            if (IsOpen(member, type, wish.isWritten) && Reaches(*member.pType, wish)) fitting.push_back(&member);
        const Member* pMember = Pick(fitting);
        path.steps.push_back({pMember, nullptr, {}});
        path.pType = pMember->pType;
    }
}

bool CProofGenerator::FindPath(const Wish& wish, Path& path, int depth)
{
    std::vector<const Variable*> scalars;
    std::vector<const Variable*> aggregates;
    const auto collect = [&](const std::deque<Variable>& variables) {
        for (const Variable& variable : variables)
            if (IsUsable(variable, wish)) (variable.pType->IsScalar() ? scalars : aggregates).push_back(&variable);
    };
    collect(m_pFunction->variables);
    collect(m_pProgram->globals);
    if (scalars.empty() && aggregates.empty()) return false;
    const bool isAggregate = scalars.empty() || (!aggregates.empty() && Below(5) < 3);
    path = PathTo(*Pick(isAggregate ? aggregates : scalars));
    Descend(path, wish, depth);
    return true;
}

// A variable of just that type, to be handed over or copied as a whole.
bool CProofGenerator::FindWhole(const Type& type, bool isWritten, Path& path)
{
    std::vector<const Variable*> found;
    const bool isInBlock = m_pFunction->form == Function::Form::Block;
    const auto collect = [&](const std::deque<Variable>& variables) {
        for (const Variable& variable : variables)
            if (variable.pType == &type && !(isWritten && variable.isConstant) && !variable.isByReference)
                found.push_back(&variable);
    };
    if (!isInBlock) collect(m_pFunction->variables);
    collect(m_pProgram->globals);
    if (found.empty()) return false;
    path = PathTo(*Pick(found));
    return true;
}

// ---- Expressions

Expression CProofGenerator::Make(Operator op, ScalarKind kind, std::vector<Expression> operands)
{
    Expression expression;
    expression.op = op;
    expression.kind = kind;
    expression.operands = std::move(operands);
    return expression;
}

Expression CProofGenerator::Access(const Path& path)
{
    Expression expression;
    expression.op = Operator::Access;
    expression.kind = path.pType->kind;
    expression.path = path;
    return expression;
}

Expression CProofGenerator::Number(int value, ScalarKind kind)
{
    Expression expression;
    expression.kind = kind;
    expression.isImmediate = true;
    expression.text = std::to_string(value);
    expression.value = IsReal(kind) ? MakeReal(value, kind) : MakeInteger(value, kind);
    return expression;
}

Expression CProofGenerator::RealNumber(const char* text, ScalarKind kind)
{
    Expression expression = Number(0, kind);
    expression.text = text;
    expression.value = ParseReal(text, kind);
    return expression;
}

// A number, or the constant that stands for one.
Expression CProofGenerator::Literal(ScalarKind kind)
{
    if (OneIn(6)) {
        for (const Variable& variable : m_pProgram->globals) {
            if (!variable.isConstant || variable.pType->kind != kind) continue;
            Expression constant = Access(PathTo(variable));
            constant.isImmediate = true;
            return constant;
        }
    }
    if (IsBool(kind)) {
        Expression expression = Number(Below(2), kind);
        expression.text = expression.value.integer ? "TRUE" : "FALSE";
        return expression;
    }
    if (IsReal(kind)) {
        if (OneIn(4)) return Number(1 + Below(9), kind);
        char text[32];
        std::snprintf(text, sizeof text, "%d.%03d", Below(30), 1 + Below(999));
        return RealNumber(text, kind);
    }
    if (IsBitString(kind)) {
        Expression expression = Number(1 + Below(GetBits(kind) == 8 ? 255 : 60000), kind);
        char text[32];
        std::snprintf(text, sizeof text, "16#%llX", static_cast<unsigned long long>(expression.value.integer));
        if (Below(2)) expression.text = text;
        return expression;
    }
    if (OneIn(12) && IsSigned(kind))
        return Number(Below(2) ? (1 << (GetBits(kind) - 2)) - 1 + (1 << (GetBits(kind) - 2)) : -(1 << (GetBits(kind) - 2)),
                      kind);
    if (OneIn(3)) return Number(1 + std::abs(AnyInteger(kind)), kind);
    return Number(1 + Below(12), kind);
}

// A variable, member or element; a number or a conversion where there is none.
Expression CProofGenerator::Leaf(ScalarKind kind, bool mayBeImmediate, int depth)
{
    if (mayBeImmediate && OneIn(3)) return Literal(kind);
    Path path;
    Wish wish;
    wish.kind = kind;
    if (FindPath(wish, path, depth)) return Access(path);
    if (mayBeImmediate) return Literal(kind);
    wish.kind = ScalarKind::Dint;
    FindPath(wish, path, depth);   // there is one: the checksum
    return Make(Operator::Cast, kind, {Access(path)});
}

Expression CProofGenerator::Evaluated(ScalarKind kind, int depth, bool mayBeImmediate)
{
    if (depth <= 0) return Leaf(kind, mayBeImmediate);
    if (m_MayCall && OneIn(8)) {
        Expression call;
        if (CallTo(kind, depth, call)) return call;
    }
    if (IsBool(kind)) return Condition(depth);
    if (OneIn(6)) return Leaf(kind, mayBeImmediate);
    if (OneIn(8)) return CastTo(kind, depth);
    if (IsReal(kind)) return Real(kind, depth);
    return IsBitString(kind) ? Bits(kind, depth) : Integer(kind, depth);
}

// At most one of the operands is a number: two of them would be computed by the compiler, with more bits.
Expression CProofGenerator::Binary(Operator op, ScalarKind kind, int depth)
{
    const bool isArithmeticReal = IsReal(kind) && op >= Operator::Add && op <= Operator::Divide;
    const bool isLogic = op == Operator::And || op == Operator::Or;   // with 0 or 1 on the left they are folded, too
    Expression left = Evaluated(kind, depth - 1, !isArithmeticReal && !isLogic && OneIn(4));
    Expression right = Evaluated(kind, depth - 1, !left.isImmediate);
    const bool isComparison = op >= Operator::Equal && op <= Operator::GreaterEqual;
    return Make(op, isComparison ? ScalarKind::Bool : kind, {std::move(left), std::move(right)});
}

// 0 to count - 1.
Expression CProofGenerator::Small(ScalarKind kind, int count)
{
    Expression rest = Make(Operator::Modulo, kind, {Leaf(kind, false), Number(count, kind)});
    if (IsUnsigned(kind)) return rest;
    return Make(Operator::Abs, kind, {std::move(rest)});
}

// Never 0.
Expression CProofGenerator::Divisor(ScalarKind kind)
{
    if (IsReal(kind)) {
        if (Below(2)) return RealNumber(Pick<const char*>({"2.0", "0.5", "3.0", "1.25", "7.1"}), kind);
        return Make(Operator::Add, kind, {Make(Operator::Abs, kind, {Leaf(kind, false)}), RealNumber("1.5", kind)});
    }
    if (Below(2)) return Number(IsSigned(kind) && OneIn(4) ? -1 - Below(5) : 1 + Below(9), kind);
    return Make(Operator::Add, kind, {Small(kind, 2 + Below(9)), Number(1 + Below(3), kind)});
}

Expression CProofGenerator::Quotient(Operator op, ScalarKind kind, int depth)
{
    Expression divisor = Divisor(kind);
    if (op == Operator::Modulo && !IsSigned(kind)) divisor = Number(1 + Below(20), kind);
    return Make(op, kind, {Evaluated(kind, depth - 1, false), std::move(divisor)});
}

Expression CProofGenerator::Extremes(ScalarKind kind, int depth)
{
    std::vector<Expression> operands;
    bool hasImmediate = false;
    for (int i = 2 + Below(2); i > 0; --i) {
        operands.push_back(Evaluated(kind, depth - 1, !hasImmediate));
        hasImmediate = hasImmediate || operands.back().isImmediate;
    }
    return Make(Below(2) ? Operator::Min : Operator::Max, kind, std::move(operands));
}

Expression CProofGenerator::Limited(ScalarKind kind, int depth)
{
    Expression value = Evaluated(kind, depth - 1, false);
    if (OneIn(3)) return Make(Operator::Limit, kind, {Leaf(kind, false), std::move(value), Leaf(kind, false)});
    const int low = Below(20);
    return Make(Operator::Limit, kind, {Number(low, kind), std::move(value), Number(low + 1 + Below(80), kind)});
}

Expression CProofGenerator::Power(ScalarKind kind, int depth)
{
    if (IsReal(kind) && OneIn(3)) {
        Expression base = Make(Operator::Abs, kind, {Leaf(kind, false)});
        return Make(Operator::Power, kind, {std::move(base), RealNumber(Below(2) ? "0.5" : "1.5", ScalarKind::Real)});
    }
    Expression base = IsReal(kind) ? Leaf(kind, false) : Evaluated(kind, depth - 1, false);
    if (Below(2)) return Make(Operator::Power, kind, {std::move(base), Number(Below(4), ScalarKind::Int)});
    return Make(Operator::Power, kind, {std::move(base), Small(PickSigned(), 4)});
}

Expression CProofGenerator::Shift(ScalarKind kind, int depth)
{
    static constexpr Operator shifts[] = {Operator::ShiftLeft, Operator::ShiftRight, Operator::RotateLeft,
                                          Operator::RotateRight};
    const int width = GetBits(kind);
    Expression count = Below(2) ? Number(Below(width + 2), ScalarKind::Int) : Small(PickSigned(), width);
    return Make(shifts[Below(4)], kind, {Evaluated(kind, depth - 1, false), std::move(count)});
}

Expression CProofGenerator::CastTo(ScalarKind kind, int depth)
{
    return Make(Operator::Cast, kind, {Evaluated(PickKind(), depth - 1, false)});
}

Expression CProofGenerator::Integer(ScalarKind kind, int depth)
{
    switch (Below(15)) {
    case 0: case 1: case 2: return Binary(Operator::Add, kind, depth);
    case 3: case 4: return Binary(Operator::Subtract, kind, depth);
    case 5: case 6: return Binary(Operator::Multiply, kind, depth);
    case 7: return Quotient(Operator::Divide, kind, depth);
    case 8: return Quotient(Operator::Modulo, kind, depth);
    case 9: return Extremes(kind, depth);
    case 10: return Limited(kind, depth);
    case 11: return Power(kind, depth);
    case 12: return Make(Operator::MulDiv, kind, {Evaluated(kind, depth - 1, false), Leaf(kind, true), Divisor(kind)});
    case 13:
        return Make(Below(2) ? Operator::Negate : Operator::Not, kind, {Evaluated(kind, depth - 1, false)});
    default:
        return Make(Below(2) ? Operator::Abs : Operator::Sqrt, kind, {Evaluated(kind, depth - 1, false)});
    }
}

Expression CProofGenerator::Bits(ScalarKind kind, int depth)
{
    switch (Below(7)) {
    case 0: return Binary(Operator::And, kind, depth);
    case 1: return Binary(Operator::Or, kind, depth);
    case 2: case 3: return Binary(Operator::Xor, kind, depth);
    case 4: return Make(Operator::Not, kind, {Evaluated(kind, depth - 1, false)});
    default: return Shift(kind, depth);
    }
}

Expression CProofGenerator::Real(ScalarKind kind, int depth)
{
    switch (Below(10)) {
    case 0: case 1: return Binary(Operator::Add, kind, depth);
    case 2: case 3: return Binary(Operator::Subtract, kind, depth);
    case 4: return Binary(Operator::Multiply, kind, depth);
    case 5: return Quotient(Operator::Divide, kind, depth);
    case 6: return Extremes(kind, depth);
    case 7: return Limited(kind, depth);
    case 8: return Power(kind, depth);
    default:
        if (Below(2)) return Make(Operator::Negate, kind, {Evaluated(kind, depth - 1, false)});
        return Make(Operator::Sqrt, kind, {Make(Operator::Abs, kind, {Evaluated(kind, depth - 1, false)})});
    }
}

// Of small numbers mostly, so that both outcomes occur and equality too.
Expression CProofGenerator::Comparison(int depth)
{
    const Operator op = static_cast<Operator>(static_cast<int>(Operator::Equal) + Below(6));
    const ScalarKind kind = PickKind();
    if (IsBool(kind)) return Binary(Below(2) ? Operator::Equal : Operator::NotEqual, kind, depth);
    if (Below(2) && (IsSigned(kind) || IsUnsigned(kind))) {
        const int count = 2 + Below(5);
        return Make(op, ScalarKind::Bool, {Small(kind, count), Number(Below(count), kind)});
    }
    return Binary(op, kind, depth);
}

Expression CProofGenerator::Condition(int depth)
{
    switch (depth > 1 ? Below(9) : Below(5)) {
    case 0: case 1: case 2: return Comparison(depth);
    case 3: return Leaf(ScalarKind::Bool, false);
    case 4: return Make(Operator::Not, ScalarKind::Bool, {Evaluated(ScalarKind::Bool, depth - 1, false)});
    case 5: return Binary(Operator::And, ScalarKind::Bool, depth);
    case 6: return Binary(Operator::Or, ScalarKind::Bool, depth);
    case 7: return Binary(Operator::Xor, ScalarKind::Bool, depth);
    default: return CastTo(ScalarKind::Bool, depth);
    }
}

// What goes into a variable or parameter; reals are kept small, so that no step leads to infinity.
Expression CProofGenerator::Stored(ScalarKind kind, int depth)
{
    Expression value = Evaluated(kind, depth, true);
    if (!IsReal(kind) || value.op == Operator::Access || value.op == Operator::Literal) return value;
    return Make(Operator::Limit, kind, {RealNumber("-1000.0", kind), std::move(value), RealNumber("1000.0", kind)});
}

// ---- Calls

bool CProofGenerator::Actual(const Variable& formal, int depth, Expression& actual)
{
    Path path;
    const bool isReference = formal.role == Role::InOut || formal.role == Role::Output;
    if (!formal.pType->IsScalar()) {
        if (!FindWhole(*formal.pType, isReference, path)) return false;
        actual = Access(path);
        return true;
    }
    if (!isReference) {
        actual = Stored(formal.pType->kind, depth);
        return true;
    }
    if (!FindPath({formal.pType->kind, true, true}, path, 0)) return false;
    actual = Access(path);
    return true;
}

bool CProofGenerator::Call(const Function& function, int depth, Expression& call)
{
    call = Make(Operator::Call, function.pResult ? function.pResult->kind : ScalarKind::Bool, {});
    call.pFunction = &function;
    for (const Variable& formal : function.variables) {
        if (formal.role != Role::Input && formal.role != Role::InOut && formal.role != Role::Output) break;
        Expression actual;
        if (!Actual(formal, depth, actual)) return false;
        call.operands.push_back(std::move(actual));
    }
    if (m_pFunction->form == Function::Form::Program) m_Called.push_back(&function);
    return true;
}

bool CProofGenerator::CallTo(ScalarKind kind, int depth, Expression& call)
{
    std::vector<const Function*> fitting;
    for (const Function& function : m_pProgram->functions)
        if (&function != m_pFunction && function.form == Function::Form::Function && function.pResult &&
            function.pResult->kind == kind)
            fitting.push_back(&function);
    return !fitting.empty() && Call(*Pick(fitting), depth - 1, call);
}

void CProofGenerator::CallFunctionNow(const Function& function)
{
    Statement statement;
    statement.kind = Statement::Kind::CallFunction;
    if (Call(function, 1, statement.value)) Add(std::move(statement));
}

void CProofGenerator::AddFunctionCall()
{
    std::vector<const Function*> functions;
    for (const Function& function : m_pProgram->functions)
        if (&function != m_pFunction && function.form == Function::Form::Function) functions.push_back(&function);
    if (!functions.empty()) CallFunctionNow(*Pick(functions));
}

bool CProofGenerator::CallInstance(const Path& instance)
{
    const bool isInBlock = m_pFunction->form == Function::Form::Block;
    Statement statement;
    statement.kind = Statement::Kind::CallBlock;
    statement.target = instance;
    for (const Member& member : instance.pType->members) {
        if (member.role == Role::Own || (member.role != Role::InOut && OneIn(4))) continue;
        if (isInBlock && !member.pType->IsScalar() && member.role != Role::InOut) continue;
        if (isInBlock && member.role == Role::InOut &&
            (!member.pType->IsScalar() || instance.pVariable->place != Place::Instance))
            return false;
        Argument argument{&member, {}};
        if (member.role == Role::Output && member.pType->IsScalar()) {
            Path path;
            if (!FindPath({member.pType->kind, true, false}, path, 1)) continue;
            argument.actual = Access(path);
        } else {
            Variable formal;
            formal.pType = member.pType;
            formal.role = member.role;
            if (!Actual(formal, 1, argument.actual)) {
                if (member.role == Role::InOut) return false;
                continue;
            }
        }
        statement.arguments.push_back(std::move(argument));
    }
    Add(std::move(statement));
    return true;
}

void CProofGenerator::AddBlockCall()
{
    std::vector<const Variable*> instances;
    const auto collect = [&](const std::deque<Variable>& variables) {
        for (const Variable& variable : variables)
            if (variable.pType->form == Type::Form::Block) instances.push_back(&variable);
    };
    collect(m_pFunction->variables);
    collect(m_pProgram->globals);
    if (!instances.empty()) CallInstance(PathTo(*Pick(instances)));
}

// ---- Statements

void CProofGenerator::Statements(std::vector<Statement>& list, int count, int depth)
{
    std::vector<Statement>* const pOuter = m_pList;
    m_pList = &list;
    for (int i = 0; i < count; ++i) AddStatement(depth);
    m_pList = pOuter;
}

void CProofGenerator::AddStatement(int depth)
{
    if (depth == 0) {
        AddAssign(2);
        return;
    }
    switch (Below(16)) {
    case 0: case 1: AddIf(depth); break;
    case 2: AddCase(depth); break;
    case 3: case 4: AddFor(depth); break;
    case 5: AddCondLoop(depth, Below(2) == 0); break;
    case 6: case 7: AddArrayLoop(); break;
    case 8: AddCopy(); break;
    case 9: AddFunctionCall(); break;
    case 10: AddBlockCall(); break;
    case 11: AddEscape(); break;
    default: AddAssign(2 + Below(2)); break;
    }
}

Statement CProofGenerator::AssignTo(const Path& target, Expression value)
{
    Statement statement;
    statement.kind = Statement::Kind::Assign;
    statement.target = target;
    statement.value = std::move(value);
    return statement;
}

// What was there goes on into the new value: nothing that was computed before is lost.
Expression CProofGenerator::Combined(const Path& target, Expression value)
{
    const ScalarKind kind = target.pType->kind;
    Expression old = Access(target);
    if (IsReal(kind)) {
        old = Make(Operator::Multiply, kind, {std::move(old), RealNumber("0.5", kind)});
        const bool isSmall = value.op == Operator::Access || value.op == Operator::Literal;
        if (!isSmall)
            value = Make(Operator::Limit, kind,
                         {RealNumber("-400.0", kind), std::move(value), RealNumber("400.0", kind)});
        return Make(Below(2) ? Operator::Add : Operator::Subtract, kind, {std::move(old), std::move(value)});
    }
    if (IsBool(kind)) return Make(Below(2) ? Operator::Xor : Operator::NotEqual, kind, {std::move(old), std::move(value)});
    if (IsBitString(kind)) {
        if (Below(2)) old = Make(Operator::RotateLeft, kind, {std::move(old), Number(1 + Below(5), ScalarKind::Int)});
        return Make(Operator::Xor, kind, {std::move(old), std::move(value)});
    }
    if (OneIn(3)) return Make(Operator::Subtract, kind, {std::move(value), std::move(old)});
    if (Below(2)) old = Make(Operator::Multiply, kind, {std::move(old), Number(3 + 2 * Below(4), kind)});
    return Make(Operator::Add, kind, {std::move(old), std::move(value)});
}

Expression CProofGenerator::Accumulated(const Path& target, int depth)
{
    const ScalarKind kind = target.pType->kind;
    return Combined(target, Evaluated(kind, depth, !IsReal(kind)));
}

void CProofGenerator::AddAssign(int depth)
{
    Path target;
    m_MayCall = false;   // the subscripts of the target are evaluated twice
    const bool isFound = FindPath({PickKind(), true, false}, target, 1);
    m_MayCall = true;
    if (!isFound) return;
    if (Below(8)) Add(AssignTo(target, Accumulated(target, depth)));
    else Add(AssignTo(target, Stored(target.pType->kind, depth)));
}

void CProofGenerator::AddCopy()
{
    if (m_pProgram->declaredTypes.empty()) return;
    const Type& type = *Pick(m_pProgram->declaredTypes);
    Statement statement;
    statement.kind = Statement::Kind::Copy;
    if (!FindWhole(type, true, statement.target) || !FindWhole(type, false, statement.source)) return;
    if (statement.target.pVariable != statement.source.pVariable) Add(std::move(statement));
}

void CProofGenerator::AddIf(int depth)
{
    Statement statement;
    statement.kind = Statement::Kind::If;
    for (int i = 1 + (Below(2) ? Below(3) : 0); i > 0; --i) {
        Arm& arm = statement.arms.emplace_back();
        arm.condition = Condition(2);
        Statements(arm.body, 1 + Below(2), depth - 1);
    }
    statement.hasElse = Below(3) > 0;
    if (statement.hasElse) Statements(statement.body, 1 + Below(2), depth - 1);
    Add(std::move(statement));
}

// Labels in rising order never meet.
void CProofGenerator::AddCase(int depth)
{
    Statement statement;
    statement.kind = Statement::Kind::Case;
    const ScalarKind kind = PickSigned();
    const int count = 3 + Below(4);
    statement.value = Make(Operator::Modulo, kind, {Evaluated(kind, 1, false), Number(count, kind)});
    const bool isAbsolute = Below(3) > 0;
    if (isAbsolute) statement.value = Make(Operator::Abs, kind, {std::move(statement.value)});
    ++m_Cases;
    int next = isAbsolute ? 0 : 1 - count;
    while (next < count - 1) {
        Arm& arm = statement.arms.emplace_back();
        for (int k = 1 + Below(2); k > 0; --k) {
            const int high = next + (OneIn(3) ? 1 + Below(2) : 0);
            arm.labels.push_back({next, high});
            next = high + 1 + (OneIn(3) ? 1 : 0);
        }
        Statements(arm.body, 1 + Below(2), depth - 1);
    }
    statement.hasElse = Below(4) > 0;
    if (statement.hasElse) Statements(statement.body, 1 + Below(2), depth - 1);
    --m_Cases;
    Add(std::move(statement));
}

Statement CProofGenerator::MakeFor(const Variable& counter, Bounds range, bool isDown)
{
    const ScalarKind kind = counter.pType->kind;
    Statement statement;
    statement.kind = Statement::Kind::For;
    statement.target = PathTo(counter);
    statement.value = Number(isDown ? range.high : range.low, kind);
    statement.bound = Number(isDown ? range.low : range.high, kind);
    if (isDown) {
        statement.hasStep = true;
        statement.step = Number(-1, kind);
    }
    return statement;
}

// The range says what the counter may hold inside of the loop, whatever the run-time bound and step are.
void CProofGenerator::AddFor(int depth)
{
    const Bounds range = NewBounds(6);
    const bool isDown = Below(3) == 0;
    Counter& counter = FreeCounter(range);
    const Variable* const pCounter = counter.pCounter;
    Statement statement = MakeFor(*pCounter, range, isDown);
    const ScalarKind kind = pCounter->pType->kind;
    if (OneIn(3)) {   // a bound that is only known at run time
        if (!counter.pLimit) counter.pLimit = AddGuarded(pCounter->pType);
        const Path limit = PathTo(*counter.pLimit);
        Expression distance = Small(kind, range.Count());
        Add(AssignTo(limit, Make(isDown ? Operator::Subtract : Operator::Add, kind,
                                 {Number(isDown ? range.high : range.low, kind), std::move(distance)})));
        statement.bound = Access(limit);
    }
    if (OneIn(3)) {
        statement.hasStep = true;
        statement.step = Number(isDown ? -1 - Below(2) : 1 + Below(2), kind);
        if (Below(2)) {
            if (!counter.pStep) counter.pStep = AddGuarded(pCounter->pType);
            const Path step = PathTo(*counter.pStep);
            Add(AssignTo(step, std::move(statement.step)));
            statement.step = Access(step);
        }
    }
    AddBody(statement, {pCounter, range}, 1 + Below(3), depth - 1);
    Add(std::move(statement));
}

void CProofGenerator::AddBody(Statement& statement, OpenLoop loop, int count, int depth)
{
    const int cases = std::exchange(m_Cases, 0);
    m_Loops.push_back(loop);
    Statements(statement.body, count, depth);
    m_Loops.pop_back();
    m_Cases = cases;
}

// A counter of its own ends the loop where the condition doesn't.
void CProofGenerator::AddCondLoop(int depth, bool isRepeat)
{
    const int most = 1 + Below(5);
    const int start = Pick<int>({0, -3, 300, -300, 40000});
    const Variable& counter = *FreeCounter({start, start + most}).pCounter;
    const Path path = PathTo(counter);
    const ScalarKind kind = counter.pType->kind;
    Add(AssignTo(path, Number(start, kind)));

    Statement statement;
    statement.kind = isRepeat ? Statement::Kind::Repeat : Statement::Kind::While;
    statement.value = Make(isRepeat ? Operator::GreaterEqual : Operator::Less, ScalarKind::Bool,
                           {Access(path), Number(start + most, kind)});
    if (Below(2)) {
        std::vector<Expression> both{std::move(statement.value), Comparison(1)};
        if (Below(2)) std::swap(both[0], both[1]);
        statement.value = Make(isRepeat ? Operator::Or : Operator::And, ScalarKind::Bool, std::move(both));
    }
    statement.body.push_back(AssignTo(path, Make(Operator::Add, kind, {Access(path), Number(1, kind)})));
    AddBody(statement, {&counter, {start + 1, start + most}}, 1 + Below(2), depth - 1);
    Add(std::move(statement));
}

// Every element of an array takes part: a[i, j] := ...
void CProofGenerator::AddArrayLoop()
{
    std::vector<const Variable*> arrays;
    const auto collect = [&](const std::deque<Variable>& variables) {
        for (const Variable& variable : variables) {
            const Type& type = *variable.pType;
            if (type.form == Type::Form::Array && type.pElement->IsScalar()) arrays.push_back(&variable);
        }
    };
    collect(m_pFunction->variables);
    collect(m_pProgram->globals);
    if (arrays.empty()) return;
    const Variable& array = *Pick(arrays);
    const Type& type = *array.pType;

    Step step{nullptr, &type, {}};
    std::vector<Statement> loops = OpenLoops(type, true, step);
    Path element{&array, {std::move(step)}, type.pElement};
    std::vector<Statement> body;
    Path target;
    if (Below(3)) {
        body.push_back(AssignTo(element, Accumulated(element, 2)));
    } else if (FindPath({PickKind(), true, false}, target, 0)) {
        Expression value = Access(element);
        const ScalarKind kind = target.pType->kind;
        if (kind != value.kind) value = Make(Operator::Cast, kind, {std::move(value)});
        body.push_back(AssignTo(target, Combined(target, std::move(value))));
    }
    CloseLoops(std::move(loops), std::move(body));
}

// A loop for each dimension, and the counters as the step's subscripts.
std::vector<Statement> CProofGenerator::OpenLoops(const Type& array, bool mayGoDown, Step& step)
{
    std::vector<Statement> loops;
    for (const Bounds& dimension : array.dimensions) {
        const Variable& counter = *FreeCounter(dimension).pCounter;
        loops.push_back(MakeFor(counter, dimension, mayGoDown && OneIn(3)));
        m_Loops.push_back({&counter, dimension});
        step.subscripts.push_back(Access(PathTo(counter)));
    }
    return loops;
}

void CProofGenerator::CloseLoops(std::vector<Statement> loops, std::vector<Statement> body)
{
    for (std::size_t i = loops.size(); i-- > 0;) {
        loops[i].body = std::move(body);
        body.clear();
        body.push_back(std::move(loops[i]));
        m_Loops.pop_back();
    }
    Add(std::move(body[0]));
}

// IF condition THEN EXIT or RETURN.
void CProofGenerator::AddEscape()
{
    const bool isLoop = !m_Loops.empty() && m_Cases == 0;
    const bool mayReturn = m_pFunction->form != Function::Form::Program && Below(2);
    if (Below(2) || (!isLoop && !mayReturn)) {
        AddAssign(2);
        return;
    }
    Statement statement;
    statement.kind = Statement::Kind::If;
    Arm& arm = statement.arms.emplace_back();
    arm.condition = Comparison(1);
    Statements(arm.body, Below(2), 0);
    Statement& escape = arm.body.emplace_back();
    escape.kind = isLoop ? Statement::Kind::Exit : Statement::Kind::Return;
    Add(std::move(statement));
}

// ---- The checksum

// All that is behind the path: members one by one, elements in loops.
void CProofGenerator::FoldPath(const Path& path)
{
    const Type& type = *path.pType;
    if (type.IsScalar()) {
        FoldScalar(path);
        return;
    }
    Path inner = path;
    Step& step = inner.steps.emplace_back();
    if (type.form != Type::Form::Array) {
        for (const Member& member : type.members) {
            if (!IsOpen(member, type, false)) continue;
            step.pMember = &member;
            inner.pType = member.pType;
            FoldPath(inner);
        }
        return;
    }
    step.pArray = &type;
    inner.pType = type.pElement;
    if (HasBitArray(*type.pElement)) {   // whose bits want constant subscripts in front of them
        for (const Bounds& dimension : type.dimensions) step.subscripts.push_back(Number(dimension.high, ScalarKind::Dint));
        FoldPath(inner);
        return;
    }
    std::vector<Statement> loops = OpenLoops(type, false, step);
    std::vector<Statement> body;
    std::vector<Statement>* const pOuter = std::exchange(m_pList, &body);
    FoldPath(inner);
    m_pList = pOuter;
    CloseLoops(std::move(loops), std::move(body));
}

// checksum := checksum * 31 + REAL_TO_DINT(x * 1024.0);
void CProofGenerator::FoldScalar(const Path& path)
{
    constexpr ScalarKind kind = ScalarKind::Dint;
    const Path sum = PathTo(*m_pSum);
    Expression part = Access(path);
    if (IsReal(part.kind)) part = Make(Operator::Multiply, part.kind, {part, RealNumber("1024.0", part.kind)});
    if (part.kind != kind) part = Make(Operator::Cast, kind, {std::move(part)});
    Expression old = Make(Operator::Multiply, kind, {Access(sum), Number(31, kind)});
    Add(AssignTo(sum, Make(Operator::Add, kind, {std::move(old), std::move(part)})));
}

void CProofGenerator::FoldVariables(const std::deque<Variable>& variables)
{
    const std::size_t count = variables.size();   // folding may add counters
    for (std::size_t i = 0; i < count; ++i) {
        const Variable& variable = variables[i];
        const bool isLoose = variable.isGuarded && variable.place == Place::Frame;   // perhaps never written
        if (&variable != m_pSum && !variable.isConstant && !isLoose) FoldPath(PathTo(variable));
    }
}

std::unique_ptr<Program> CProofGenerator::Run()
{
    PickKinds();
    for (int i = 1 + Below(2); i > 0; --i) DeclareStructure();
    for (int i = 1 + Below(2); i > 0; --i) DeclareNamedArray();
    DeclareConstants();
    DeclareGlobals();
    for (int i = 2 + Below(4); i > 0; --i) {
        if (Below(5) < 2) DeclareBlock();
        else DeclareFunction();
    }
    DeclareProgram("main", 6 + Below(10));
    if (OneIn(4)) DeclareProgram("second", 3 + Below(4));
    m_pProgram->scans = 10 + Below(6);
    return std::move(m_pProgram);
}

}   // namespace

std::unique_ptr<Program> GenerateProof(std::uint64_t seed)
{
    return CProofGenerator(seed).Run();
}
