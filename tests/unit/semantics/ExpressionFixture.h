#pragma once

#include "semantics/Norvane.h"

#include "PrintedBy.h"
#include "frontend/Scanner.h"
#include "frontend/StringLiteral.h"
#include "model/Type.h"
#include "model/Variable.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// A fresh compiler with a small target, and short helpers for making nodes as the parser does. An operator
// stands at (1,50), its operands at (1,10), (1,20), (1,30) unless a test says otherwise.
class ExpressionFixture : public testing::Test
{
protected:
    ExpressionFixture()
    {
        g_CurrentFileName = "t.st";
        norvane.m_Target.LoadFromString(
            "<ROOT><COMPILER><TARGET>"
            "<IEC AllowedDataTypes=\"SINT INT DINT USINT UINT UDINT BOOL BYTE WORD DWORD REAL LREAL\""
            " PointerType=\"DWORD\"/>"
            "<COMPILER><DATAFORMAT>"
            "<DATATYPE name=\"INT\" size=\"16\" align=\"2\"/><DATATYPE name=\"BOOL\" size=\"1\" align=\"1\"/>"
            "</DATAFORMAT></COMPILER>"
            "<VM><PROGRAM name=\"main\" id=\"1\"/></VM>"
            "</TARGET></COMPILER></ROOT>");
        norvane.m_DataTypes.LoadFromTarget();
        norvane.m_CastFunctions.Build(norvane.m_DataTypes);
    }

    ~ExpressionFixture() override { g_CurrentFileName = nullptr; }

    static SourceLocation At(int column, int line = 1)
    {
        return SourceLocation{line, column, line, column + 1, "t.st"};
    }

    CType* Type(std::string_view name) const
    {
        if (name == "ERROR") return norvane.m_DataTypes.m_ErrorType;
        if (name == "STRING") return norvane.m_DataTypes.m_StringType;
        return norvane.m_DataTypes.FindType(name);
    }

    static std::string NameOf(const CType* pType) { return pType ? pType->m_Name : "none"; }

    CVariable* Declare(const std::string& name, CType* pType, std::unique_ptr<CInitValue> pValue = nullptr)
    {
        auto pVariable = std::make_unique<CVariable>();
        pVariable->m_Name = name;
        pVariable->m_Type = pType;
        pVariable->m_InitValue = std::move(pValue);
        CVariable* pResult = pVariable.get();
        norvane.m_LocalSymbols.Add(std::move(pVariable));
        return pResult;
    }

    CVariable* Declare(const std::string& name, std::string_view type, std::unique_ptr<CInitValue> pValue = nullptr)
    {
        return Declare(name, Type(type), std::move(pValue));
    }

    CVariable* DeclareConstant(const std::string& name, std::string_view type, std::unique_ptr<CInitValue> pValue)
    {
        CVariable* pVariable = Declare(name, type, std::move(pValue));
        pVariable->m_IsConstant = true;
        return pVariable;
    }

    static std::unique_ptr<CInitValue> Signed(std::int64_t value) { return std::make_unique<CInitValue>(value); }
    static std::unique_ptr<CInitValue> Unsigned(std::uint32_t value) { return std::make_unique<CInitValue>(value); }
    static std::unique_ptr<CInitValue> Real(double value) { return std::make_unique<CInitValue>(value); }
    static std::unique_ptr<CInitValue> Bool(bool value) { return std::make_unique<CInitValue>(value); }

    CNode* Int(std::int64_t value, int column = 10) { return norvane.MakeInteger(value, At(column)); }
    CNode* Float(double value, int column = 10) { return norvane.MakeReal(value, At(column)); }
    CNode* Truth(bool value, int column = 10) { return norvane.MakeNode(value ? TRUE : FALSE, At(column)); }
    CNode* Var(std::string_view name, int column = 10)
    {
        return norvane.MakeVariable(norvane.m_Names.Intern(name), At(column));
    }
    CNode* Leaf(int kind, int column = 10) { return norvane.MakeNode(kind, At(column)); }

    // "5", "-5", "2.5", "TRUE", "FALSE" as literals, anything else as a variable.
    CNode* Operand(std::string_view text, int column)
    {
        if (text == "TRUE" || text == "FALSE") return Truth(text == "TRUE", column);
        const bool isNumber = text.find_first_not_of("-.0123456789") == std::string_view::npos;
        if (!isNumber) return Var(text, column);
        const std::string copy(text);
        if (copy.find('.') != std::string::npos) return Float(std::stod(copy), column);
        return Int(std::stoll(copy), column);
    }

    CNode* Op(int kind, CNode* pA) { return norvane.MakeNode(kind, At(50), {pA}); }
    CNode* Op(int kind, CNode* pA, CNode* pB) { return norvane.MakeNode(kind, At(50), {pA, pB}); }
    CNode* Op(int kind, CNode* pA, CNode* pB, CNode* pC) { return norvane.MakeNode(kind, At(50), {pA, pB, pC}); }

    CNode* Op(int kind, std::string_view a) { return Op(kind, Operand(a, 10)); }
    CNode* Op(int kind, std::string_view a, std::string_view b)
    {
        CNode* pA = Operand(a, 10);
        CNode* pB = Operand(b, 20);
        return Op(kind, pA, pB);
    }
    CNode* Op(int kind, std::string_view a, std::string_view b, std::string_view c)
    {
        CNode* pA = Operand(a, 10);
        CNode* pB = Operand(b, 20);
        CNode* pC = Operand(c, 30);
        return Op(kind, pA, pB, pC);
    }

    // MIN or MAX over a list that grows as the parser makes it grow.
    CNode* ListOf(int kind, const std::vector<CNode*>& elements)
    {
        CNode* pList = norvane.MakeNode(EXP_LIST, At(10), {elements.front()});
        for (std::size_t i = 1; i < elements.size(); ++i) pList = norvane.AppendToList(pList, elements[i]);
        return norvane.MakeNode(kind, At(50), {pList});
    }

    CNode* List(int kind, const std::vector<std::string>& texts)
    {
        std::vector<CNode*> elements;
        int column = 10;
        for (const std::string& text : texts) {
            elements.push_back(Operand(text, column));
            column += 10;
        }
        return ListOf(kind, elements);
    }

    // Runs the action and returns the node; what was printed is in `printed`.
    template <typename Action>
    CNode* Run(Action action)
    {
        CNode* pNode = nullptr;
        printed = PrintedBy([&] { pNode = action(); });
        return pNode;
    }

    CNorvane norvane;
    std::string printed;
};
