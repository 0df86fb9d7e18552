#pragma once

#include "Values.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

// A program as the generator makes it: declarations, statements and expressions. The writer prints it as source text, the
// interpreter computes what its variables hold. Types, functions and variables stay where they are for the life of the
// program; statements and expressions are values that can be copied.
//
// Every scalar has a slot in the interpreter's memory, whatever its type. How a compiler would lay it out plays no part.

enum class Role : std::uint8_t
{
    Own,
    Input,
    Output,
    InOut,
    Result     // of a function: named like it
};

struct Bounds
{
    int low = 0;
    int high = 0;

    int Count() const { return high - low + 1; }
};

struct Type;
struct Function;

struct Member
{
    std::string name;
    const Type* pType = nullptr;
    int slot = 0;                    // from the start of the structure; an in-out holds the slot that it stands for
    Role role = Role::Own;
    std::vector<Value> initial;      // of a scalar or an array of scalars; empty: the type's default
};

struct Type
{
    enum class Form : std::uint8_t { Scalar, Array, Structure, Block };

    Form form = Form::Scalar;
    std::string name;                // empty: an array that is written out
    ScalarKind kind = ScalarKind::Bool;
    const Type* pElement = nullptr;  // of an array
    std::vector<Bounds> dimensions;
    std::vector<Member> members;     // of a structure or function block
    const Function* pFunction = nullptr;   // of a function block
    int slots = 1;

    bool IsScalar() const { return form == Form::Scalar; }
};

enum class Place : std::uint8_t
{
    Global,      // and the variables of programs: slots of their own
    Frame,       // of a function
    Instance     // of a function block
};

struct Variable
{
    std::string name;
    const Type* pType = nullptr;
    Place place = Place::Global;
    Role role = Role::Own;
    int slot = 0;
    bool isByReference = false;      // the slot holds another one's number
    bool isConstant = false;
    bool isRetain = false;
    bool isGuarded = false;          // counters and bounds of loops: read by anyone, written by their loops only
    std::string address;             // "%MW4"
    std::vector<Value> initial;      // as in Member
};

struct Expression;

struct Step
{
    const Member* pMember = nullptr;          // ".name"; else subscripts
    const Type* pArray = nullptr;
    std::vector<Expression> subscripts;
};

struct Path
{
    const Variable* pVariable = nullptr;
    std::vector<Step> steps;
    const Type* pType = nullptr;              // at its end
};

struct Expression
{
    Operator op = Operator::Literal;
    ScalarKind kind = ScalarKind::Bool;       // of the value
    bool isImmediate = false;                 // a number, or what the compiler makes one
    Value value;                              // of a literal
    std::string text;
    Path path;                                // of an access
    const Function* pFunction = nullptr;      // of a call
    std::vector<Expression> operands;         // of a call, too: those for in-outs and outputs are accesses
};

struct CaseLabel
{
    int low = 0;
    int high = 0;
};

struct Statement;

struct Arm                                    // of IF and CASE
{
    Expression condition;
    std::vector<CaseLabel> labels;
    std::vector<Statement> body;
};

struct Argument                               // in the call of a function block
{
    const Member* pMember = nullptr;
    Expression actual;
};

struct Statement
{
    enum class Kind : std::uint8_t
    {
        Assign,       // target := value
        Copy,         // target := source, whole
        If,
        Case,
        For,
        While,
        Repeat,
        Exit,
        Return,
        CallFunction,
        CallBlock
    };

    Kind kind = Kind::Assign;
    Path target;                              // also the counter of FOR and the instance of a call
    Path source;
    Expression value;                         // also the start of FOR, the selector of CASE, the condition of a loop
    Expression bound;                         // of FOR
    Expression step;
    bool hasStep = false;
    bool hasElse = false;
    std::vector<Arm> arms;
    std::vector<Statement> body;              // of a loop; behind ELSE
    std::vector<Argument> arguments;
    mutable int runs = 0;                     // as the interpreter counts them
};

struct Function                               // a function, a function block or a program
{
    enum class Form : std::uint8_t { Function, Block, Program };

    Form form = Form::Function;
    std::string name;
    const Type* pResult = nullptr;            // null: none
    const Type* pBlock = nullptr;             // the type of a block's instances
    std::deque<Variable> variables;           // parameters first, in the order of the call
    std::vector<Statement> body;
};

struct Program
{
    std::deque<Type> types;
    std::vector<const Type*> declaredTypes;   // structures and arrays that TYPE declares, in order
    std::deque<Variable> globals;
    std::deque<Function> functions;           // in order of declaration; the programs last
    int slots = 0;                            // of globals and of the programs' variables
    int scans = 1;
};

// Slots that a variable takes in its place: one if it is reached by reference.
inline int CountSlots(const Variable& variable)
{
    return variable.isByReference ? 1 : variable.pType->slots;
}

// The values that an object of the type starts with, slot by slot, behind those in `values`.
void AppendInitial(const Type& type, const std::vector<Value>& given, std::vector<Value>& values);
