#pragma once

#include <cstdint>

class CInitValue;
class CNode;
class CNotes;
class CType;
struct SourceLocation;

// Numbers that a type can't hold. The compiler hands them on as they are written: what becomes of them is up to the
// assembler and the machine, so the user is told. Sizes are those that the target gives.

// Whether a variable of the type keeps the number: a bit string may also be given as the negative number with the same
// bits, which makes -1 a BOOL too. Types that are no integers and no bits hold any.
bool HoldsNumber(const CType* pType, std::int64_t value);
// The same where the number isn't stored but compared: a negative one then differs from the bits it stands for.
bool HoldsComparedNumber(const CType* pType, std::int64_t value);

// Draw the note at the literal if it is a number beyond the type.
void NoteLiteralRange(CNotes& notes, const CType* pType, const CNode* pLiteral);
void NoteComparedRange(CNotes& notes, const CType* pType, const CNode* pLiteral);
// The same for what a declaration's expression has come to, as it will be written; the value may be null.
void NoteValueRange(CNotes& notes, const CType* pType, const CInitValue* pValue, const CNode* pExpression);
void NoteComparedValueRange(CNotes& notes, const CNode* pExpression);

// Draws the note where a real operation on two finite numbers has left the 64 bits of a real.
void NoteRealOverflow(CNotes& notes, double a, double b, double result, const SourceLocation& where);

// Draws the note at the node if 32 bits don't hold the number.
void NoteBeyond32Bits(CNotes& notes, std::int64_t value, const CNode* pNode);
