#pragma once

#include <cstdint>
#include <string_view>

// Values of the elementary types and what the language computes with them. Nothing of this is taken from the compiler or
// the machine: it is what both are measured by.

enum class ScalarKind : std::uint8_t   // ORDER SCALAR
{
    Bool,
    Sint,
    Int,
    Dint,
    Usint,
    Uint,
    Udint,
    Byte,
    Word,
    Dword,
    Real,
    Lreal
};
constexpr int g_ScalarKinds = 12;

std::string_view GetName(ScalarKind kind);   // "INT"
int GetBits(ScalarKind kind);                // 1 of BOOL

constexpr bool IsBool(ScalarKind kind) { return kind == ScalarKind::Bool; }
constexpr bool IsSigned(ScalarKind kind) { return kind >= ScalarKind::Sint && kind <= ScalarKind::Dint; }
constexpr bool IsUnsigned(ScalarKind kind) { return kind >= ScalarKind::Usint && kind <= ScalarKind::Udint; }
constexpr bool IsBitString(ScalarKind kind) { return kind >= ScalarKind::Byte && kind <= ScalarKind::Dword; }
constexpr bool IsReal(ScalarKind kind) { return kind >= ScalarKind::Real; }

struct Value
{
    std::int64_t integer = 0;   // of all kinds but the reals; within the range of its kind
    double real = 0;            // of the reals; that of a REAL is a number that 32 bits hold

    bool operator==(const Value&) const = default;
};

enum class Operator : std::uint8_t   // ORDER OPERATOR
{
    Literal,
    Access,      // of a variable, member or element
    Call,
    Cast,
    Negate,
    Not,
    Abs,
    Sqrt,
    Add,
    Subtract,
    Multiply,
    Divide,
    Modulo,
    Power,
    And,
    Or,
    Xor,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    Min,
    Max,
    Limit,
    MulDiv,
    ShiftLeft,
    ShiftRight,
    RotateLeft,
    RotateRight
};

Value MakeInteger(std::int64_t integer, ScalarKind kind);   // cut to the width of the kind
Value MakeReal(double real, ScalarKind kind);               // rounded to it
Value ParseReal(std::string_view text, ScalarKind kind);
Value Convert(Value value, ScalarKind from, ScalarKind to);

Value ComputeUnary(Operator op, Value a, ScalarKind kind);
// `kind` is that of both operands, which for a comparison isn't the result's. No divisor may be 0.
Value ComputeBinary(Operator op, Value a, Value b, ScalarKind kind);
Value ComputePower(Value base, ScalarKind kind, Value exponent, ScalarKind exponentKind);   // exponent at least 0
Value ComputeShift(Operator op, Value a, std::int64_t count, ScalarKind kind);
Value ComputeMulDiv(Value a, Value b, Value c, ScalarKind kind);   // of integers
