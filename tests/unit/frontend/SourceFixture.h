#pragma once

#include "semantics/Norvane.h"

#include "PrintedBy.h"
#include "files/OutputTextFile.h"
#include "frontend/Parser.h"
#include "frontend/Scanner.h"
#include "frontend/StringLiteral.h"
#include "model/Type.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

// A fresh compiler with a small target, scanner and parser as at the start of a process, and all that they
// print. The file is called "t.st".
class SourceFixture : public testing::Test
{
protected:
    SourceFixture() { Restart(); }

    ~SourceFixture() override
    {
        FreeScannerBuffer();
        ResetStartCondition();
        g_CurrentFileName = nullptr;
    }

    // As at the start of a process again.
    void Restart()
    {
        pNorvane = std::make_unique<CNorvane>();
        pNorvane->m_Target.LoadFromString(
            "<ROOT><COMPILER><TARGET>"
            "<IEC AllowedDataTypes=\"INT DINT BOOL BYTE REAL\" PointerType=\"DINT\"/>"
            "<COMPILER><DATAFORMAT>"
            "<DATATYPE name=\"INT\" size=\"16\" align=\"2\"/><DATATYPE name=\"DINT\" size=\"32\" align=\"4\"/>"
            "</DATAFORMAT></COMPILER>"
            "<VM><AREA name=\"GLOBAL\" size=\"1000\" code=\"1\"/><PROGRAM name=\"main\" id=\"1\"/></VM>"
            "</TARGET></COMPILER></ROOT>");
        pNorvane->m_DataTypes.LoadFromTarget();
        pNorvane->m_CastFunctions.Build(pNorvane->m_DataTypes);
        pNorvane->m_Pous.LoadProgramNames();
        pNorvane->m_Memory.LoadAreas(pNorvane->m_Target);
        pNorvane->m_Code.m_PointerType = pNorvane->m_DataTypes.m_PointerType;
        pOutput = std::make_unique<OutputTextFile>();
        pOutput->OpenText(assembler);
        pNorvane->m_Code.m_Output = pOutput.get();

        SetScannerContext(*pNorvane);
        SetParserContext(*pNorvane);
        ResetStartCondition();
        yylineno = 1;
        nColumn = 1;
        g_CurrentFileName = "t.st";
    }

    // What the parse of the text prints; `result` is what yyparse answers.
    std::string Parse(std::string_view source)
    {
        SetScannerInput(std::string(source));
        return PrintedBy([&] { result = yyparse(); });
    }

    std::unique_ptr<CNorvane> pNorvane;
    std::string assembler;
    std::unique_ptr<OutputTextFile> pOutput;
    int result = -1;
};
