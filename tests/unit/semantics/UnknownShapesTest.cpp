#include "semantics/ExpressionFixture.h"

#include "frontend/Node.h"
#include "model/ArrayIndex.h"
#include "model/Member.h"
#include "model/Pou.h"
#include "model/TypeStruct.h"

// Trees and tables in a state that other messages have led to: nothing more may be said of them.
class UnknownShapes : public ExpressionFixture
{
protected:
    CNode* Path(int kind, CNode* pRoot, CNode* pStep)
    {
        CNode* pNode = norvane.m_Nodes.MakeNode(kind, At(10));
        pNode->AddChild(pRoot);
        pNode->AddChild(pStep);
        norvane.ResolveVariablePath(pNode);
        return pNode;
    }

    CNode* Named(int kind, std::string_view name)
    {
        CNode* pNode = norvane.m_Nodes.MakeNode(kind, At(10));
        if (!name.empty()) pNode->pName = &norvane.m_Names.Intern(name);
        return pNode;
    }
};

TEST_F(UnknownShapes, ATokenThatOpensNoBlockGivesNoFlags)
{
    norvane.BeginVarBlock(VAR_INPUT, nullptr);
    EXPECT_EQ(norvane.m_VarBlockFlags, InVarInput);
    norvane.BeginVarBlock(PROGRAM, nullptr);
    EXPECT_EQ(norvane.m_VarBlockFlags, 0);
}

TEST_F(UnknownShapes, APathWithoutAVariableTakesTheErrorTypeInSilence)
{
    EXPECT_EQ(NameOf(Path(DOT, Named(IDENTIFIER, "nothing"), Named(NEW_ID, "m"))->pType), "ERROR");
    EXPECT_EQ(NameOf(Path(DOT, Named(IDENTIFIER, ""), Named(NEW_ID, "m"))->pType), "ERROR");
    Declare("e", "ERROR");
    EXPECT_EQ(NameOf(Path(DOT, Named(IDENTIFIER, "e"), Named(NEW_ID, "m"))->pType), "ERROR");
    Declare("n", static_cast<CType*>(nullptr));
    EXPECT_EQ(NameOf(Path(DOT, Named(IDENTIFIER, "n"), Named(NEW_ID, "m"))->pType), "ERROR");
    EXPECT_EQ(norvane.m_Errors.GetErrorCount(), 0);
}

TEST_F(UnknownShapes, AMemberWhoseTypeHasFailedEndsAPathInSilence)
{
    auto pStruct = std::make_unique<CTypeStruct>("s");
    for (const auto& [name, pType] : {std::pair<const char*, CType*>{"e", Type("ERROR")}, {"n", nullptr}}) {
        pStruct->AddMember(std::make_unique<CMember>(name, pType));
    }
    CTypeStruct* pType = pStruct.get();
    norvane.m_DataTypes.AddType(std::move(pStruct));
    Declare("v", pType);
    for (const char* name : {"e", "n"}) {
        CNode* pNode = norvane.m_Nodes.MakeNode(DOT, At(10));
        for (CNode* pChild : {Named(IDENTIFIER, "v"), Named(NEW_ID, name), Named(NEW_ID, "further")})
            pNode->AddChild(pChild);
        norvane.ResolveVariablePath(pNode);
        EXPECT_EQ(NameOf(pNode->pType), "ERROR") << name;
        EXPECT_EQ(NameOf(Path(DOT, Named(IDENTIFIER, "v"), Named(NEW_ID, name))->pType), "ERROR") << name;
    }
    EXPECT_EQ(norvane.m_Errors.GetErrorCount(), 0);
}

TEST_F(UnknownShapes, WhatHasFailedHasNoIntegerValue)
{
    std::int32_t value = 77;
    EXPECT_EQ(norvane.EvalIntegerExpression(Leaf(ERROR_), value), -1);
    CNode* pFailed = Leaf(IDENTIFIER);
    pFailed->pType = Type("ERROR");
    EXPECT_EQ(norvane.EvalIntegerExpression(pFailed, value), -1);
    EXPECT_EQ(norvane.m_Errors.GetErrorCount(), 0);
    EXPECT_EQ(norvane.EvalIntegerExpression(Leaf(IDENTIFIER), value), -1);   // no type at all is no integer
    EXPECT_EQ(norvane.m_Errors.GetErrorCount(), 1);
    EXPECT_EQ(value, 77);
}

TEST_F(UnknownShapes, AnOperatorOfLiteralsThatHasFailedIsNotFoldedOn)
{
    CNode* pFailed = norvane.m_Nodes.MakeNode('+', At(50));
    pFailed->AddChild(Leaf(ERROR_));
    pFailed->AddChild(Int(1, 20));
    norvane.FoldImmediates(pFailed);
    EXPECT_EQ(pFailed->nKind, '+');
    EXPECT_EQ(pFailed->GetChildCount(), 2);
    CNode* pUnary = norvane.m_Nodes.MakeNode(UNARY_MINUS, At(50));
    pUnary->AddChild(Truth(true));
    norvane.FoldImmediates(pUnary);
    EXPECT_EQ(pUnary->nKind, UNARY_MINUS);
}

TEST_F(UnknownShapes, ACallOfNoFunctionIsNotChecked)
{
    CNode* pCall = Leaf(FUNCTION_CALL);
    norvane.CheckFunctionCall(pCall);
    CFunctionBlock block("fb", At(1));
    pCall->SetPou(&block);
    norvane.CheckFunctionCall(pCall);
    EXPECT_EQ(norvane.m_Errors.GetErrorCount(), 0);
}

TEST_F(UnknownShapes, NoValueIsBuiltForATypeOfAnotherClass)
{
    CNode* pList = Leaf(ARRAY_INIT_LIST);
    EXPECT_FALSE(norvane.CheckArrayInit(Type("INT"), pList, nullptr, 0) && norvane.m_Errors.GetErrorCount() == 0);
    EXPECT_FALSE(norvane.CheckStructInit(Type("INT"), Leaf(STRUCT_INIT_LIST)));
}
