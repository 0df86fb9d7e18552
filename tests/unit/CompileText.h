#pragma once

#include "PrintedBy.h"
#include "files/OutputTextFile.h"
#include "frontend/Parser.h"
#include "frontend/Scanner.h"
#include "semantics/Norvane.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

// Compiles a source text as the compiler does, but from memory and without a driver around it: one file
// named "test.st", for a target given as text.

// All elementary types aligned to their size, up to 4; areas far larger than a test needs; programs "main"
// and "second".
inline constexpr std::string_view g_CompileTarget = R"(<TARGETFILE><COMPILER><TARGET>
<IEC AllowedDataTypes="BOOL,SINT,INT,DINT,USINT,UINT,UDINT,BYTE,WORD,DWORD,REAL,LREAL" PointerType="DWORD"/>
<COMPILER><DATAFORMAT>
<DATATYPE name="BOOL" size="1" align="1"/>
<DATATYPE name="SINT" size="8" align="1"/><DATATYPE name="USINT" size="8" align="1"/><DATATYPE name="BYTE" size="8" align="1"/>
<DATATYPE name="INT" size="16" align="2"/><DATATYPE name="UINT" size="16" align="2"/><DATATYPE name="WORD" size="16" align="2"/>
<DATATYPE name="DINT" size="32" align="4"/><DATATYPE name="UDINT" size="32" align="4"/><DATATYPE name="DWORD" size="32" align="4"/>
<DATATYPE name="REAL" size="32" align="4"/><DATATYPE name="LREAL" size="64" align="4"/>
</DATAFORMAT></COMPILER>
<VM>
<AREA name="INPUT" segment="1000" size="100" code="1"/><AREA name="OUTPUT" segment="2000" size="100" code="2"/>
<AREA name="MEMORY" segment="3000" size="100" code="3"/><AREA name="GLOBAL" size="100000" code="4"/>
<AREA name="RETAIN" size="10000" code="5"/><AREA name="LOCAL" code="6"/><AREA name="ABSOLUTE" code="7"/>
<PROGRAM name="main" id="1"/><PROGRAM name="second" id="2"/>
</VM>
</TARGET></COMPILER></TARGETFILE>)";

struct CompiledText
{
    std::unique_ptr<CNorvane> pNorvane;   // its tables as the end of the source left them
    std::string output;                   // what it printed
    std::string assembler;                // the blocks that it generated
};

struct CompileOptions
{
    std::string_view target = g_CompileTarget;
    std::function<void(CNorvane&)> prepare = nullptr;   // sets options before the source is read
    bool initialisation = false;                        // the two initialisation functions are generated too
};

// In the order in which a run loads them.
inline void LoadTarget(CNorvane& norvane, std::string_view target = g_CompileTarget)
{
    norvane.m_Target.LoadFromString(target);
    norvane.m_DataTypes.LoadFromTarget();
    norvane.m_Code.m_PointerType = norvane.m_DataTypes.m_PointerType;
    norvane.m_CastFunctions.Build(norvane.m_DataTypes);
    norvane.m_Pous.LoadProgramNames();
    norvane.m_Memory.LoadAreas(norvane.m_Target);
}

// Scanner and parser as they stand before the first source of a process.
inline void ParseText(CNorvane& norvane, std::string source)
{
    SetScannerContext(norvane);
    SetParserContext(norvane);
    FreeScannerBuffer();
    ResetStartCondition();
    SetScannerInput(std::move(source));
    yylineno = 1;
    nColumn = 1;
    g_CurrentFileName = "test.st";
    norvane.m_SourceFiles.push_back("test.st");
    yyparse();
    FreeScannerBuffer();
}

inline CompiledText CompileText(const std::string& source, const CompileOptions& options = {})
{
    CompiledText result;
    result.pNorvane = std::make_unique<CNorvane>();
    CNorvane& norvane = *result.pNorvane;
    LoadTarget(norvane, options.target);
    if (options.prepare) options.prepare(norvane);

    OutputTextFile output;
    output.OpenText(result.assembler);
    norvane.m_Code.m_Output = &output;
    result.output = PrintedBy([&] {
        ParseText(norvane, source);
        if (options.initialisation) {
            norvane.m_Code.WriteGlobalInitialization();
            norvane.m_Code.WriteRetainInitialization();
        }
    });
    norvane.m_Code.m_Output = nullptr;
    EXPECT_TRUE(output.Close());
    return result;
}
