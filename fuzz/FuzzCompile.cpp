#include "FuzzCompile.h"

#include "files/Fatal.h"
#include "files/OutputTextFile.h"
#include "frontend/Parser.h"
#include "frontend/Scanner.h"
#include "semantics/Norvane.h"
#include "target/TargetCheck.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

const std::string_view g_FuzzTarget = R"(<DEVICE><COMPILER><TARGET>
<IEC AllowedDataTypes="SINT,INT,DINT,USINT,UINT,UDINT,BOOL,BYTE,WORD,DWORD,REAL,LREAL" PointerType="UDINT"/>
<COMPILER><DATAFORMAT>
<DATATYPE name="BOOL" size="1" align="1"/><DATATYPE name="SINT" size="8"/><DATATYPE name="USINT"/><DATATYPE name="BYTE"/>
<DATATYPE name="INT" size="16" align="2"/><DATATYPE name="UINT"/><DATATYPE name="WORD"/>
<DATATYPE name="DINT" size="32" align="4"/><DATATYPE name="UDINT"/><DATATYPE name="DWORD"/><DATATYPE name="REAL"/>
<DATATYPE name="LREAL" size="64" align="8"/>
</DATAFORMAT></COMPILER>
<VM><AREA name="INPUT" segment="1000" size="100" code="1"/><AREA name="OUTPUT" segment="2000" size="100" code="2"/>
<AREA name="MEMORY" segment="3000" size="100" code="3"/><AREA name="GLOBAL" size="2000000000" code="4"/>
<AREA name="RETAIN" size="2000000000" code="5"/><AREA name="LOCAL" code="6"/><AREA name="ABSOLUTE" code="7"/>
<PROGRAM name="main" id="1"/><RETURNSTACK size="2000000000" maxsize="2000000000"/></VM>
</TARGET></COMPILER></DEVICE>)";

namespace
{

struct RunEnded
{
};

}   // namespace

// These two take the place of the compiler's own, which end the process.
void EndProgram(int, std::string_view)
{
    throw RunEnded();
}

void InternalFault(std::string_view text)
{
    std::fprintf(stderr, "internal fault: %.*s\n", static_cast<int>(text.size()), text.data());
    std::abort();   // no input may lead here
}

std::unique_ptr<CNorvane> LoadFuzzTarget(std::string_view target)
{
    auto pNorvane = std::make_unique<CNorvane>();
    pNorvane->m_Target.LoadFromString(target);
    if (!FindMissingTargetNode(pNorvane->m_Target).empty()) return nullptr;
    pNorvane->m_DataTypes.LoadFromTarget();
    pNorvane->m_Code.m_PointerType = pNorvane->m_DataTypes.m_PointerType;
    pNorvane->m_CastFunctions.Build(pNorvane->m_DataTypes);
    pNorvane->m_Pous.LoadProgramNames();
    pNorvane->m_Memory.LoadAreas(pNorvane->m_Target);
    return pNorvane;
}

static void GenerateAll(CNorvane& norvane)
{
    yyparse();
    if (norvane.m_Errors.GetErrorCount() > 0) return;
    norvane.m_Pous.AddAutomaticPrograms();
    norvane.m_Code.WriteAutomaticPrograms();
    norvane.m_Code.WriteGlobalInitialization();
    norvane.m_Code.WriteRetainInitialization();
}

void CompileFuzzSource(CNorvane& norvane, std::string source)
{
    static const char* const name = "fuzz.st";
    SetScannerContext(norvane);
    SetParserContext(norvane);
    ResetStartCondition();
    SetScannerInput(std::move(source));
    yylineno = 1;
    nColumn = 1;
    g_CurrentFileName = name;
    norvane.m_SourceFiles.push_back(name);

    OutputTextFile output;
    if (!output.Open("/dev/null")) std::abort();
    norvane.m_Code.m_Output = &output;
    try {
        GenerateAll(norvane);
    } catch (const RunEnded&) {
    }
    norvane.m_Code.m_Output = nullptr;
    ResetStartCondition();
    FreeScannerBuffer();
}
