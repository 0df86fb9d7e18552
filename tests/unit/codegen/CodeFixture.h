#pragma once

#include "CompileText.h"

#include "frontend/Node.h"
#include "model/Type.h"
#include "model/Variable.h"

#include <string>
#include <string_view>
#include <utility>

// Compiles one POU and cuts the text of its statements out of the block. Pointers are DWORD of 4 bytes.
class CodeFixture : public testing::Test
{
protected:
    void Compile(std::string_view source)
    {
        compiled = CompileText(std::string(source), options);
    }

    // What lies between the last `begin` and the first `end` behind it.
    static std::string Cut(const std::string& text, std::string_view begin, std::string_view end)
    {
        const std::size_t start = text.rfind(begin);
        if (start == std::string::npos) return "no begin in: " + text;
        const std::size_t first = start + begin.size();
        const std::size_t last = text.find(end, first);
        if (last == std::string::npos) return "no end in: " + text;
        return text.substr(first, last - first);
    }

    // The text of the statements, which stand from line 2 on, in a program with the given variables. They are
    // placed from [local+0] on. Labels begin with LABEL0002: one goes to the program's initialisation test.
    std::string Program(std::string_view variables, std::string_view statements, std::string_view above = "")
    {
        const std::string block = variables.empty() ? "" : "VAR " + std::string(variables) + " END_VAR";
        Compile(std::string(above) + "PROGRAM main " + block + "\n" + std::string(statements) + "\nEND_PROGRAM\n");
        EXPECT_EQ(compiled.output, "");
        return Cut(compiled.assembler, "\t;Program body\n", "\n\t\n\tRTS\n");
    }

    // The same in a function without result; `blocks` are its variable blocks. Labels begin with LABEL0001.
    std::string Function(std::string_view blocks, std::string_view statements, std::string_view above = "")
    {
        Compile(std::string(above) + "FUNCTION fn " + std::string(blocks) + "\n" + std::string(statements) +
                "\nEND_FUNCTION\n");
        EXPECT_EQ(compiled.output, "");
        return Cut(compiled.assembler, "\t;Function body\n", "\n\t;Return value\n");
    }

    // The same in a function block.
    std::string Block(std::string_view blocks, std::string_view statements, std::string_view above = "")
    {
        Compile(std::string(above) + "FUNCTION_BLOCK blk " + std::string(blocks) + "\n" + std::string(statements) +
                "\nEND_FUNCTION_BLOCK\n");
        EXPECT_EQ(compiled.output, "");
        return Cut(compiled.assembler, "\t;FunctionBlock body\n", "\n\n\tRTS\n");
    }

    // The text that an expression leaves in front of the store into x, the first variable of a program.
    std::string Value(const std::string& type, const std::string& variables, const std::string& expression,
                      std::string_view above = "")
    {
        const std::string body = Program("x : " + type + "; " + variables, "x := " + expression + ";", above);
        const std::string bit = type == "BOOL" ? ".0" : "";
        return Cut(body, Mark(2), "\tPOP(" + type + ")\t[local+0]" + bit + "\t;x\n");
    }

    // The line in front of each statement.
    static std::string Mark(int line) { return "DBI FILE 0 LINE " + std::to_string(line) + "\n"; }

    CNode* MakeLeaf(int kind, CType* pType = nullptr)
    {
        CNode* pNode = nodes.MakeNode(kind, SourceLocation{2, 1, 2, 2, "test.st"});
        pNode->pType = pType;
        return pNode;
    }

    CNode* MakeTree(int kind, std::initializer_list<CNode*> children, CType* pType = nullptr)
    {
        CNode* pNode = MakeLeaf(kind, pType);
        for (CNode* pChild : children) pNode->AddChild(pChild);
        return pNode;
    }

    CNodeArena nodes;           // of trees that a test makes by hand
    CompileOptions options;
    CompiledText compiled;
};
