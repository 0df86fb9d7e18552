#include "Proof.h"

#include "Generator.h"
#include "Interpreter.h"

#include <algorithm>
#include <cstdio>

// ---- What can be looked at

static void Observe(const std::string& name, const Type& type, int slot, bool isOfProgram, std::vector<Observed>& observed)
{
    if (type.IsScalar()) {
        observed.push_back({name, type.kind, slot, isOfProgram});
        return;
    }
    if (type.form != Type::Form::Array) {
        for (const Member& member : type.members)
            if (member.role != Role::InOut)
                Observe(name + "." + member.name, *member.pType, slot + member.slot, isOfProgram, observed);
        return;
    }
    const int count = type.slots / type.pElement->slots;
    for (int i = 0; i < count; ++i) {
        std::string subscripts;
        int left = i;
        for (std::size_t k = type.dimensions.size(); k-- > 0;) {
            const Bounds& dimension = type.dimensions[k];
            const std::string subscript = std::to_string(dimension.low + left % dimension.Count());
            subscripts = subscripts.empty() ? subscript : subscript + "," + subscripts;
            left /= dimension.Count();
        }
        Observe(name + "[" + subscripts + "]", *type.pElement, slot + i * type.pElement->slots, isOfProgram, observed);
    }
}

// Globals with all that is in them, and the scalars and instances of programs. What else a program has is in the checksum.
static void ObserveProgram(const Program& program, std::vector<Observed>& observed)
{
    for (const Variable& variable : program.globals)
        if (!variable.isConstant) Observe(variable.name, *variable.pType, variable.slot, false, observed);
    for (const Function& function : program.functions) {
        if (function.form != Function::Form::Program) continue;
        for (const Variable& variable : function.variables)
            if (variable.pType->form != Type::Form::Array && variable.pType->form != Type::Form::Structure)
                Observe(function.name + "." + variable.name, *variable.pType, variable.slot, true, observed);
    }
    std::erase_if(observed, [](const Observed& object) {   // elements have other numbers there
        return object.isOfProgram && object.name.find('[') != std::string::npos;
    });
}

// ---- Values

static bool ComputeScans(const Program& program, bool hasShortcut, std::vector<std::vector<Value>>& scans)
{
    scans.clear();
    CInterpreter interpreter(program, hasShortcut);
    scans.push_back(interpreter.GetMemory());
    for (int i = 0; i < program.scans; ++i) {
        if (!interpreter.RunScan()) return false;
        scans.push_back(interpreter.GetMemory());
    }
    return true;
}

bool ComputeValues(Proof& proof)
{
    return ComputeScans(*proof.pProgram, true, proof.shortcut) && ComputeScans(*proof.pProgram, false, proof.complete);
}

// ---- Statements that are never reached

// Of a list that never runs one assignment is left, so that a branch taken wrongly shows.
static void Prune(std::vector<Statement>& statements)
{
    const bool isDead = std::none_of(statements.begin(), statements.end(), [](const Statement& s) { return s.runs > 0; });
    bool isKept = false;
    std::erase_if(statements, [&](const Statement& statement) {
        if (statement.runs > 0) return false;
        const bool isWitness = isDead && !isKept && statement.kind == Statement::Kind::Assign;
        isKept = isKept || isWitness;
        return !isWitness;
    });
    for (Statement& statement : statements) {
        Prune(statement.body);
        for (Arm& arm : statement.arms) Prune(arm.body);
    }
}

Proof MakeProof(std::uint64_t seed)
{
    Proof proof;
    proof.seed = seed;
    for (std::uint64_t attempt = 0;; ++attempt, ++proof.discarded) {
        proof.pProgram = GenerateProof(seed * 1000 + attempt + 1);
        if (ComputeValues(proof)) break;
    }
    if (seed % 8 != 0)
        for (Function& function : proof.pProgram->functions) Prune(function.body);
    ObserveProgram(*proof.pProgram, proof.observed);
    return proof;
}

// ---- The table

static std::string ToText(Value value, ScalarKind kind)
{
    if (IsBool(kind)) return value.integer ? "TRUE" : "FALSE";
    if (!IsReal(kind)) return std::to_string(value.integer);
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, kind == ScalarKind::Real ? "%.9g" : "%.17g", value.real);
    return buffer;
}

std::string WriteTable(const Proof& proof, bool hasShortcut, const std::string& options)
{
    std::string text = "# program: program.st\n# target: target.xml\n";
    if (!options.empty()) text += "# options: " + options + "\n";
    text += "scan";
    std::vector<const Observed*> columns;
    for (const Observed& observed : proof.observed)
        if (!observed.isOfProgram) columns.push_back(&observed);   // the code may not name it
    for (const Observed* pObserved : columns) text += ",\"?" + pObserved->name + "\"";
    const std::vector<std::vector<Value>>& scans = hasShortcut ? proof.shortcut : proof.complete;
    for (std::size_t i = 1; i < scans.size(); ++i) {
        text += "\n" + std::to_string(i);
        for (const Observed* pObserved : columns)
            text += "," + ToText(scans[i][static_cast<std::size_t>(pObserved->slot)], pObserved->kind);
    }
    return text + "\n";
}
