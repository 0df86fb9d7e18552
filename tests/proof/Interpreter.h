#pragma once

#include "Tree.h"

#include <cstddef>
#include <vector>

// Computes what a program's variables hold, straight from its tree.
class CInterpreter
{
public:
    // With the shortcut the right operand of AND and OR on BOOL is left alone where the left one decides.
    CInterpreter(const Program& program, bool hasShortcut);

    // One scan: the programs in order. False if the program takes too long or computes something that is no number,
    // which makes it no use as a proof.
    bool RunScan();
    const std::vector<Value>& GetMemory() const { return m_Memory; }   // by slot

private:
    enum class Flow { Next, Exit, Return, Stop };

    void Initialise(const Variable& variable);
    std::size_t BaseOf(const Variable& variable) const;
    std::size_t Locate(const Path& path);
    Value Evaluate(const Expression& expression);
    Value EvaluateLogic(const Expression& expression);
    Value EvaluateOperands(const Expression& expression);
    Value Call(const Expression& expression);
    void CallBlock(const Statement& statement);
    Flow RunList(const std::vector<Statement>& statements);
    Flow RunStatement(const Statement& statement);
    Flow RunIf(const Statement& statement);
    Flow RunCase(const Statement& statement);
    Flow RunFor(const Statement& statement);
    Flow RunLoop(const Statement& statement);
    Flow Enter(const std::vector<Statement>& body);   // of a function: RETURN ends here
    bool IsPast(const Statement& statement);
    bool IsTrue(const Expression& expression) { return Evaluate(expression).integer != 0; }
    bool Spend();

    const Program& m_Program;
    bool m_HasShortcut;
    std::vector<Value> m_Memory;      // globals and the programs' variables, then the frames of functions
    std::size_t m_Frame = 0;
    std::size_t m_Instance = 0;
    int m_Budget = 0;                 // steps left in this scan
    bool m_IsSound = true;
};
