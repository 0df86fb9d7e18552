#pragma once

#include "files/XmlDocument.h"
#include "frontend/Error.h"
#include "frontend/ErrorHandler.h"
#include "frontend/SourceLocation.h"
#include "model/Member.h"
#include "model/TypeArray.h"
#include "model/TypeStruct.h"
#include "model/Variable.h"
#include "target/DataType.h"
#include "target/MemoryHandler.h"

#include <gtest/gtest.h>

#include <deque>
#include <initializer_list>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>

// A target in memory with its tables, and short forms of the declarations that a source would make. What the
// error handler prints is swallowed; the tests look at what it has recorded.
class TargetFixture : public testing::Test
{
protected:
    struct Bounds
    {
        std::int32_t low;
        std::int32_t high;
    };

    void SetUp() override { testing::internal::CaptureStdout(); }
    void TearDown() override
    {
        const std::string printed = testing::internal::GetCapturedStdout();
        if (HasFailure()) std::cout << printed;   // what the test says of its failure is in it
    }

    // The target of the tests: `iec` are the attributes of IEC, `formats` and `areas` the nodes of both kinds.
    static std::string MakeTarget(std::string_view iec, std::string_view formats, std::string_view areas = {})
    {
        std::string text = "<target><COMPILER><TARGET><IEC ";
        text.append(iec).append("/><COMPILER><DATAFORMAT>").append(formats);
        text.append("</DATAFORMAT></COMPILER><VM>").append(areas);
        return text.append("<PROGRAM name=\"main\"/></VM></TARGET></COMPILER></target>");
    }

    void Load(const std::string& text)
    {
        ASSERT_EQ(0, m_Target.LoadFromString(text));
        m_Types.LoadFromTarget();
        m_Memory.LoadAreas(m_Target);
    }

    // Alignment 1 for all types of up to 32 bits; pointers are UDINT. Areas of 1000 bytes.
    void LoadByteAligned() { Load(MakeTarget("PointerType=\"UDINT\"", GetByteAlignedFormats(), GetAreas())); }

    static std::string GetByteAlignedFormats()
    {
        return "<DATATYPE name=\"BOOL\" size=\"1\" align=\"1\"/><DATATYPE name=\"SINT\" size=\"8\"/>"
               "<DATATYPE name=\"BYTE\"/><DATATYPE name=\"INT\" size=\"16\"/><DATATYPE name=\"WORD\"/>"
               "<DATATYPE name=\"DINT\" size=\"32\"/><DATATYPE name=\"UDINT\"/><DATATYPE name=\"REAL\"/>";
    }

    static std::string GetAreas()
    {
        return "<AREA name=\"GLOBAL\" size=\"1000\" code=\"0\"/><AREA name=\"RETAIN\" size=\"1000\" code=\"1\"/>";
    }

    CType* Type(std::string_view name)
    {
        CType* pType = m_Types.FindType(name);
        EXPECT_NE(nullptr, pType) << name;
        return pType;
    }

    CVariable* Declare(CType* pType, bool isLocal = true)
    {
        return Enter(std::make_unique<CVariable>(), pType, isLocal);
    }

    CVariable* DeclareGlobal(CType* pType) { return Declare(pType, false); }

    CVariableArray* DeclareArray(CType* pElement, std::initializer_list<Bounds> dimensions, bool isLocal = true)
    {
        auto pVariable = std::make_unique<CVariableArray>();
        pVariable->m_Index = MakeIndex({dimensions});
        CVariableArray* pEntered = pVariable.get();
        Enter(std::move(pVariable), MakeArrayType(pElement), isLocal);
        return pEntered;
    }

    CVariable* Enter(std::unique_ptr<CVariable> pVariable, CType* pType, bool isLocal)
    {
        pVariable->m_Type = pType;
        pVariable->m_IsLocal = isLocal;
        m_Variables.push_back(std::move(pVariable));
        m_Memory.AddVariable(m_Variables.back().get());
        return m_Variables.back().get();
    }

    static std::unique_ptr<CArrayOfArrayIndex> MakeIndex(
        std::initializer_list<std::initializer_list<Bounds>> levels)
    {
        auto pIndex = std::make_unique<CArrayOfArrayIndex>();
        for (const auto& level : levels) {
            auto pLevel = std::make_unique<CArrayIndex>();
            for (const Bounds& bounds : level) pLevel->m_Dimensions.emplace_back(bounds.low, bounds.high);
            pIndex->Add(std::move(pLevel));
        }
        return pIndex;
    }

    CTypeArray* MakeArrayType(CType* pElement)
    {
        m_ArrayTypes.push_back(std::make_unique<CTypeArray>("array", pElement));
        return m_ArrayTypes.back().get();
    }

    CTypeStruct* MakeStruct(std::initializer_list<CType*> members)
    {
        m_Structs.push_back(std::make_unique<CTypeStruct>("struct"));
        CTypeStruct* pStruct = m_Structs.back().get();
        for (CType* pType : members) {
            const std::string name = "m" + std::to_string(pStruct->m_Members.size());
            pStruct->AddMember(std::make_unique<CMember>(name, pType));
        }
        return pStruct;
    }

    std::string LastError() const
    {
        const auto& errors = m_Errors.m_ErrorList;
        return errors.empty() ? std::string() : errors.back()->strText;
    }

    CXmlDocument m_Target;
    CErrorHandler m_Errors;
    bool m_Substitution = true;
    CNamePool m_Names;
    CDataType m_Types{m_Target, m_Names};
    CMemoryHandler m_Memory{m_Errors, m_Types, m_Substitution};
    std::deque<std::unique_ptr<CTypeArray>> m_ArrayTypes;
    std::deque<std::unique_ptr<CTypeStruct>> m_Structs;
    std::deque<std::unique_ptr<CVariable>> m_Variables;
};
