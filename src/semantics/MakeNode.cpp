// How tree nodes come into being. The parser reduces bottom-up and every node with children runs the whole
// semantic pipeline at once, so there is no later pass over the tree, and a node costs what it has children.

#include "semantics/Norvane.h"

#include "files/FileReplacement.h"
#include "files/OutputTextFile.h"
#include "files/Print.h"
#include "frontend/Scanner.h"
#include "frontend/StringLiteral.h"
#include "model/Type.h"
#include "model/Variable.h"
#include "semantics/KnownValue.h"

// The whole pipeline, in this order: folding may turn an operator into a literal, and typing then has
// nothing left to say about it.
CNode* CNorvane::MakeNode(int kind, const SourceLocation& location, std::initializer_list<CNode*> children)
{
    CNode* pNode = m_Nodes.MakeNode(kind, location);
    pNode->m_Children.reserve(children.size());
    for (CNode* pChild : children) {
        if (pChild) pNode->AddChild(pChild);   // a grammar symbol without a value gives no child
    }
    if (pNode->GetChildCount() == 0) return pNode;

    FoldImmediates(pNode);
    TypeExpression(pNode);
    CheckAssignment(pNode);
    if (m_VarBlockFlags & InDeclaration) FoldConstants(pNode);

    switch (pNode->nKind) {
    case IF:
    case ELSIF:
    case WHILE:
    case REPEAT: CheckCondition(pNode); break;
    case FOR: CheckFor(pNode); break;
    case CASE: CheckCase(pNode); break;
    case PROGRAM: AddProgram(pNode); break;
    case FUNCTION: AddFunction(pNode); break;
    case STRUCT: RegisterStruct(pNode); break;
    case FUNCTION_BLOCK: AddFunctionBlock(pNode); break;
    default: break;
    }
    return pNode;
}

CNode* CNorvane::MakeIdentifier(const CName& name, const SourceLocation& location)
{
    CNode* pNode = m_Nodes.MakeNode(NEW_ID, location);
    pNode->pName = &name;
    return pNode;
}

CNode* CNorvane::MakeInteger(std::int64_t value, const SourceLocation& location)
{
    CNode* pNode = m_Nodes.MakeNode(IMM_INTEGER, location);
    pNode->nValue = value;
    return pNode;
}

CNode* CNorvane::MakeReal(double value, const SourceLocation& location)
{
    CNode* pNode = m_Nodes.MakeNode(IMM_REAL, location);
    pNode->SetReal(value);
    return pNode;
}

// The token of a string is its closing apostrophe, so its start comes from the literal. The location is of
// a form of its own: it ends where that token starts, and it names no file.
CNode* CNorvane::MakeString(CStringLiteral* pLiteral, const SourceLocation& location)
{
    const std::unique_ptr<CStringLiteral> owned(pLiteral);
    SourceLocation where;
    where.nFirstLine = owned->GetLine();
    where.nFirstColumn = owned->GetColumn();
    where.nLastLine = location.nLastLine;
    where.nLastColumn = location.nFirstColumn;

    CNode* pNode = m_Nodes.MakeNode(STR_DIR, where);
    pNode->SetString(m_Nodes.KeepText(owned->GetText()));
    pNode->pType = m_DataTypes.m_StringType;
    return pNode;
}

// A use of a substituted constant is the literal of its value, but one that has a type.
static void SubstituteConstant(CNode* pNode, const CVariable& variable, const CType* pType)
{
    const CInitValue noValue;
    const CInitValue* pValue = GetKnownValue(variable);
    if (!pValue) pValue = &noValue;

    if (pType && pType->IsReal()) {
        pNode->nKind = IMM_REAL;
        pNode->SetReal(pValue->GetDouble());
        return;
    }
    if (pType && pType->IsBool()) {
        pNode->nKind = pValue->GetBool() ? TRUE : FALSE;
        return;
    }
    pNode->nKind = IMM_INTEGER;
    pNode->nValue = pValue->GetInt64();
}

CNode* CNorvane::MakeVariable(const CName& name, const SourceLocation& location)
{
    CNode* pNode = m_Nodes.MakeNode(IDENTIFIER, location);
    pNode->pName = &name;
    CVariable* pVariable = FindVariable(name);
    if (!pVariable) {
        m_Errors.ErrVariableNotDeclared(name.GetText(), location);
        pNode->nKind = ERROR_;
        return pNode;
    }

    CType* pType = pVariable->m_Type ? pVariable->m_Type : m_DataTypes.m_ErrorType;
    if (m_Memory.IsSubstituted(pVariable)) SubstituteConstant(pNode, *pVariable, pType);
    pVariable->m_IsUsed = true;
    pNode->pVariable = pVariable;
    pNode->pType = pType;
    return pNode;
}

// Code has been made of the part, so its tree is kept only where the whole file's is to be written.
CNode* CNorvane::FinishFilePart(CNode* pFile, CNode* pPart, const SourceLocation& location)
{
    if (m_DumpTree) return pFile ? AppendToList(pFile, pPart) : MakeNode(FILE_GLOBAL, location, {pPart});
    m_Nodes.Reset();
    return nullptr;
}

static bool WriteTree(const CNode& root, const std::string& name)
{
    FileReplacement replacement;
    OutputTextFile file;
    if (!replacement.Prepare(name) || !file.Open(replacement.GetWorkName())) return false;
    root.WriteXml(file);
    return file.Close() && replacement.TakePlace();
}

// Writes the tree beside the source if the user asked for it.
void CNorvane::FinishSourceFile(const CNode* pRoot)
{
    if (m_DumpTree && pRoot && g_CurrentFileName) {
        const std::string name = std::string(g_CurrentFileName) + ".xml";
        if (!WriteTree(*pRoot, name)) {
            m_DumpFailed = true;
            PrintFailure("cannot write the tree file " + name);
        }
    }
    m_Nodes.Reset();
}

void CNorvane::SyntaxErrorAt(std::string_view text, int line, int column)
{
    m_Errors.ErrSyntax(text, line, column);
}
