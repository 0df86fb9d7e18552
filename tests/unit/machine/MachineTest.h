#pragma once

#include "machine/Image.h"
#include "machine/Machine.h"
#include "machine/Names.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

// A debug file with the usual types, stacks and a few globals; `more` stands among the globals.
inline std::string MakeDebugText(std::string_view more = {}, int parameterBytes = 256, int returnBytes = 1024)
{
    std::string text = "<DBI><INFO><SOURCEFILE>a.st</SOURCEFILE></INFO><POU_LIST>"
                       "<POU name=\"main\" type=\"PROGRAM\" id=\"1\" localsize=\"64\" used=\"False\"/>"
                       "<POU name=\"f\" type=\"FUNCTION\" localsize=\"16\" used=\"True\"/>"
                       "</POU_LIST><CALLTREE><POU name=\"main\" local=\"64\" returnstackdepth=\"72\">"
                       "<POU name=\"f\" local=\"16\" returnstackdepth=\"96\"/></POU></CALLTREE>";
    text += "<RETURNSTACK size=\"" + std::to_string(returnBytes) + "\" maxsize=\"4096\"/>";
    text += "<PARAMETERSTACK size=\"" + std::to_string(parameterBytes) + "\" maxsize=\"4096\"/>";
    text += "<GLOBAL>" + std::string(more) + "</GLOBAL><AREAS globalused=\"64\" retainused=\"16\"/><DATATYPE>";
    struct Type
    {
        const char* name;
        int align;
        int size;
    };
    for (const Type& type : {Type{"BOOL", 1, 1}, {"SINT", 1, 8}, {"INT", 2, 16}, {"DINT", 4, 32}, {"LINT", 8, 64},
                             {"USINT", 1, 8}, {"UINT", 2, 16}, {"UDINT", 4, 32}, {"ULINT", 8, 64}, {"BYTE", 1, 8},
                             {"WORD", 2, 16}, {"DWORD", 4, 32}, {"LWORD", 8, 64}, {"REAL", 4, 32}, {"LREAL", 8, 64}})
        text += std::string("<TYPE name=\"") + type.name + "\" datatype=\"" + type.name + "\" align=\"" +
                std::to_string(type.align) + "\" size=\"" + std::to_string(type.size) + "\"/>";
    text += "<TYPE name=\"myint\" datatype=\"INT\" align=\"2\" size=\"16\"/>"
            "<TYPE name=\"pair\" type=\"STRUCT\"><MEMBER name=\"a\" datatype=\"INT\" offset=\"0\"/>"
            "<MEMBER name=\"q\" datatype=\"BOOL\" offset=\"2\" bit=\"1\"/>"
            "<MEMBER name=\"z\" datatype=\"INT[1..3]\" offset=\"4\" displacement=\"[2]\"/></TYPE>"
            "</DATATYPE></DBI>";
    return text;
}

// A listing of one program around these lines, with 64 bytes of local memory.
inline std::string MakeProgram(std::string_view body)
{
    return "\nDBI FILENAME a.st\nPROGRAM_main:\n\tDBI POU_BEGIN\n\tLOCALSET 1 ; 64 bytes size\nDBI FILE 0 LINE 4\n" +
           std::string(body) + "\tRTS\n\tDBI POU_END\n";
}

// A machine with the program that it runs.
class CTestMachine
{
public:
    explicit CTestMachine(const std::string& listing, const MachineOptions& options = {},
                          const std::string& debugText = MakeDebugText(), std::string_view targetText = {})
    {
        m_pImage = CImage::FromText(listing, debugText, targetText, "a.asm", m_Error);
        if (!m_pImage) return;
        m_pMachine = std::make_unique<CMachine>(*m_pImage, options);
        m_pNames = std::make_unique<CNames>(*m_pImage);
    }

    RunStatus Run(int scans = 1)
    {
        RunStatus status = m_pMachine->Start();
        for (int i = 0; i < scans && status == RunStatus::Finished; ++i) status = m_pMachine->RunScan();
        return status;
    }
    // The value at an offset of the global area.
    MachineValue GetGlobal(int offset, ValueKind kind, int bit = 0) const
    {
        MachineValue value;
        const std::uint32_t begin = m_pImage->GetRegion(MemoryArea::Global, 0).begin;
        const std::uint32_t bits = static_cast<std::uint32_t>(bit) << g_AddressBits;
        EXPECT_TRUE(m_pMachine->Read((begin + static_cast<std::uint32_t>(offset)) | bits, kind, value));
        return value;
    }
    std::string Read(const std::string& name)
    {
        std::string error;
        const std::optional<NamedObject> object = m_pNames->Find(name, error);
        MachineValue value;
        if (!object || !m_pNames->Read(*m_pMachine, *object, value, error)) return "error: " + error;
        return ToText(value);
    }

    std::string m_Error;
    std::unique_ptr<CImage> m_pImage;
    std::unique_ptr<CMachine> m_pMachine;
    std::unique_ptr<CNames> m_pNames;
};

// Both ways of running: fused and plain.
inline std::vector<MachineOptions> BothWays(MachineOptions options = {})
{
    MachineOptions plain = options;
    plain.plain = true;
    return {options, plain};
}
