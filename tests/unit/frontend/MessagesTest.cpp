#include "frontend/ErrorHandler.h"

#include "PrintedBy.h"
#include "frontend/Node.h"
#include "frontend/Scanner.h"
#include "frontend/Tokens.h"
#include "model/Pou.h"
#include "model/Type.h"
#include "model/Variable.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

// The table of messages, the comments in ErrorHandler.h, what the methods print, and the identifiers in the manual:
// none of them changes without the others.

namespace
{

struct Message
{
    std::string identifier;
    std::string method;
    bool hasPlace;
    std::vector<std::string> forms;
};

const std::vector<Message> g_Messages = {
#define MESSAGE(identifier, method, ...) {#identifier, #method, true, {__VA_ARGS__}},
#define FILE_MESSAGE(identifier, method, ...) {#identifier, #method, false, {__VA_ARGS__}},
#include "frontend/Messages.def"
#undef MESSAGE
};

const Message* FindMessage(std::string_view identifier)
{
    for (const Message& message : g_Messages)
        if (message.identifier == identifier) return &message;
    return nullptr;
}

std::string ReadSource(const std::string& name)
{
    std::ifstream file(SOURCE_FOLDER + ("/" + name), std::ios::binary);
    EXPECT_TRUE(file) << name;
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

std::string Unescaped(const std::string& literal)
{
    std::string text;
    for (std::size_t i = 0; i < literal.size(); ++i) {
        const bool isEscape = literal[i] == '\\' && ++i < literal.size();
        text += isEscape && literal[i] == 'n' ? '\n' : literal.at(i);
    }
    return text;
}

using Fills = std::map<std::string, std::string>;

// The form as it is printed: "<name>" replaced, "[...]" kept or left out.
std::string FillForm(std::string form, const Fills& fills, bool keepsOptional)
{
    const std::size_t open = form.find('[');
    if (open != std::string::npos) {
        const std::size_t close = form.find(']');
        const std::string inner = form.substr(open + 1, close - open - 1);
        form.replace(open, close - open + 1, keepsOptional ? inner : "");
    }
    for (const auto& [name, value] : fills) {
        const std::string mark = "<" + name + ">";
        const std::size_t found = form.find(mark);
        EXPECT_NE(found, std::string::npos) << mark << " isn't in " << form;
        if (found != std::string::npos) form.replace(found, mark.size(), value);
    }
    return form;
}

using Call = std::function<void()>;

// Every message is drawn at line 3, column 7 of a.st, which is also where the scanner stands.
class MessagesTest : public testing::Test
{
protected:
    void SetUp() override
    {
        g_CurrentFileName = "a.st";
        yylineno = 3;
        nColumn = 7;
        m_Function.m_Parameters.push_back(std::make_unique<CVariable>());
        m_Function.m_Parameters.back()->m_Type = &m_Real;
    }
    void TearDown() override
    {
        g_CurrentFileName = nullptr;
        yylineno = 1;
        nColumn = 1;
        ExpectAllDrawn();
    }

    void Draw(const std::string& identifier, const Call& call) { Draw(identifier, {}, call); }
    void Draw(const std::string& identifier, const Fills& fills, const Call& call)
    {
        DrawForm(identifier, 0, true, fills, call);
    }
    void DrawWithoutOptional(const std::string& identifier, const Fills& fills, const Call& call)
    {
        DrawForm(identifier, 0, false, fills, call);
    }
    void DrawForm(const std::string& identifier, std::size_t form, bool keepsOptional, const Fills& fills,
                  const Call& call)
    {
        const Message* pMessage = FindMessage(identifier);
        ASSERT_TRUE(pMessage) << identifier;
        ASSERT_LT(form, pMessage->forms.size()) << identifier;
        const std::string place = pMessage->hasPlace ? "a.st(3,7) : " : "a.st ";
        EXPECT_EQ(PrintedBy(call), place + FillForm(pMessage->forms[form], fills, keepsOptional) + "\n") << identifier;
        m_Drawn.insert(Key(identifier, form, keepsOptional));
    }

    CErrorHandler m_Errors;
    const SourceLocation m_Where{3, 7, 3, 9, "a.st"};
    CNamePool m_Names;
    CNodeArena m_Nodes;
    CType m_Int{"INT"};
    CType m_Real{"REAL"};
    CFunction m_Function{"scale", SourceLocation{1, 10, 1, 15, "lib.st"}};

private:
    static std::string Key(const std::string& identifier, std::size_t form, bool keepsOptional)
    {
        return identifier + " form " + std::to_string(form) + (keepsOptional ? "" : " without [...]");
    }
    void ExpectAllDrawn() const
    {
        std::set<std::string> all;
        for (const Message& message : g_Messages) {
            for (std::size_t i = 0; i < message.forms.size(); ++i) {
                all.insert(Key(message.identifier, i, true));
                if (message.forms[i].find('[') != std::string::npos) all.insert(Key(message.identifier, i, false));
            }
        }
        EXPECT_EQ(m_Drawn, all);
    }

    std::set<std::string> m_Drawn;
};

}   // namespace

TEST_F(MessagesTest, EveryMethodPrintsItsForms)
{
    CErrorHandler& e = m_Errors;
    const SourceLocation& at = m_Where;
    {
        CErrorHandler full;
        PrintedBy([&] {
            for (int i = 0; i < 51; ++i) full.ErrInitAny(at);
        });
        Draw("E001", [&] { full.FatalTooManyErrors(); });
    }

    // Declarations and types.
    Draw("E002", [&] { e.ErrInitAny(at); });
    Draw("E003", [&] { e.ErrAnyNotAllowed(at); });
    Draw("E004", {{"name", "LINT"}}, [&] { e.ErrTypeNotSupported("LINT"); });
    Draw("E005", [&] { e.ErrTwoUnderscores(); });
    CVariable variable;
    variable.m_Name = "Count";
    Draw("E006", {{"name", "Count"}}, [&] { e.ErrVariableDeclared(variable, at); });
    Draw("E006", {{"name", "x"}}, [&] { e.ErrVariableDeclared("x", at); });
    Draw("E007", {{"name", "x"}}, [&] { e.ErrVariableNotDeclared("x", at); });
    Draw("E008", {{"name", "m"}}, [&] { e.ErrMemberDeclared("m", at); });
    const SourceLocation before{2, 5, 2, 8, "old.st"};
    const Fills declared{{"name", "p"}, {"file", "a.st"}, {"line", "2"}, {"column", "5"}};
    DrawForm("E009", 0, true, declared, [&] { e.ErrPouDeclared(CFunction("p", before), at); });
    DrawForm("E009", 1, true, declared, [&] { e.ErrPouDeclared(CProgram("p", before), at); });
    DrawForm("E009", 2, true, declared, [&] { e.ErrPouDeclared(CFunctionBlock("p", before), at); });
    DrawForm("E009", 3, true, declared, [&] { e.ErrPouDeclared(CPou("p", before), at); });
    Draw("E010", [&] { e.ErrProgramNotSupported(at); });
    Draw("E011", [&] { e.ErrProgramParameters(at); });
    Draw("E012", {{"name", "Main"}}, [&] { e.ErrProgramRequired("Main"); });
    Draw("E013", [&] { e.ErrReturnsStruct(at); });
    Draw("E014", [&] { e.ErrDirectAsFormal(at); });
    Draw("E015", [&] { e.ErrInvalidAddress(at); });
    Draw("E016", [&] { e.ErrAddressOutOfMemory(at); });
    Draw("E017", [&] { e.ErrAlignment(at); });
    Draw("E018", [&] { e.ErrDimension(at); });
    Draw("E019", [&] { e.ErrStringDimension(at); });
    Draw("E020", [&] { e.ErrStringSizeUnchecked(at); });
    Draw("E021", [&] { e.ErrStringAssignment(at); });
    Draw("W001", {{"length", "5"}, {"declared", "3"}}, [&] { e.WarnStringTooLong(5, 3, at); });
    Draw("W002", [&] { e.WarnActualInitialized(at); });
    Draw("W003", [&] { e.WarnUselessAssignment(at); });

    // Initial values and array bounds.
    Draw("E022", [&] { e.ErrAssignToFbInstance(at); });
    Draw("E023", [&] { e.ErrCallInDeclaration(at); });
    Draw("E024", [&] { e.ErrCastInVarBlock(at); });
    Draw("E025", [&] { e.ErrArrayDimensionUnchecked(at); });
    Draw("E026", [&] { e.ErrArrayIndexType(at); });
    Draw("W004", {{"required", "3"}, {"found", "4"}}, [&] { e.WarnTooManyInitializers(4, 3, at); });
    Draw("W005", {{"name", "m"}}, [&] { e.WarnElementInitialized("m", at); });

    // Expressions.
    Draw("E027", {{"operator", ">="}}, [&] { e.ErrOperator(GREATER_EQUAL, at); });
    Draw("E028", {{"operator", "+"}, {"left", "INT"}, {"right", "REAL"}},
         [&] { e.ErrOperatorMismatch('+', &m_Int, &m_Real, at); });
    Draw("E029", {{"operator", "MOD"}, {"type", "REAL"}}, [&] { e.ErrOperationNotAllowed(MOD, &m_Real, at); });
    Draw("E030", {{"operator", "NOT"}}, [&] { e.ErrRealNotAllowed(NOT, at); });
    Draw("E031", [&] { e.ErrBitTypeExpected(at); });
    Draw("E032", {{"type", "INT"}}, [&] { e.ErrCannotAssign(&m_Int, at); });
    Draw("E033", {{"found", "REAL"}, {"required", "INT"}}, [&] { e.ErrCastArgument(&m_Real, &m_Int, at); });
    DrawWithoutOptional("E033", {{"required", "INT"}}, [&] { e.ErrCastArgument(nullptr, &m_Int, at); });
    Draw("E034", [&] { e.ErrDivisionByZero(3, 7); });
    Draw("E035", {{"first", "INT"}, {"second", "REAL"}}, [&] { e.ErrTypeMismatch(&m_Int, &m_Real, at); });
    Draw("E035", {{"first", "t_in"}, {"second", "t_out"}}, [&] { e.ErrTypeMismatch("t_in", "t_out", at); });
    Draw("W006", [&] { e.WarnQuotient(at); });

    // Paths.
    CNode& name = *m_Nodes.MakeNode(IDENTIFIER, at);
    name.pName = &m_Names.Intern("x");
    CType structure("tank");
    Draw("E036", {{"name", "x"}}, [&] { e.ErrNotArray(&name, at); });
    Draw("E037", {{"name", "x"}}, [&] { e.ErrNotStruct(&name, at); });
    Draw("E038", {{"member", "level"}, {"struct", "tank"}}, [&] { e.ErrNotMember("level", &structure, at); });
    Draw("E039", {{"required", "2"}, {"found", "1"}}, [&] { e.ErrWrongDimension(2, 1, at); });
    Draw("E040", [&] { e.ErrIndexExceeds(at); });
    Draw("E041", [&] { e.ErrInOutElement(at); });
    Draw("E042", [&] { e.ErrPrivateElement(at); });
    Draw("E043", [&] { e.ErrNeedsInteger(at); });

    // Statements.
    Draw("E044", [&] { e.ErrAssignToConstant(at); });
    Draw("E045", {{"found", "4"}, {"required", "8"}}, [&] { e.ErrArrayDimension(4, 8, at); });
    Draw("W007", {{"found", "4"}, {"required", "8"}}, [&] { e.WarnArrayDimension(4, 8, at); });
    Draw("E046", [&] { e.ErrInOutLValue(at); });
    Draw("E047", [&] { e.ErrNeedsBoolean(at); });
    Draw("E048", [&] { e.ErrCaseType(at); });
    Draw("E049", {{"from", "-1"}, {"to", "5"}}, [&] { e.ErrCaseRangeUsed(-1, 5, at); });
    Draw("E050", {{"value", "12"}}, [&] { e.ErrCaseValueUsed(12, at); });
    Draw("E051", [&] { e.ErrExitOutOfLoop(at); });
    Draw("W008", [&] { e.WarnForNeverRuns(at); });
    Draw("W009", [&] { e.WarnUnreachable(at); });

    // Calls.
    Draw("E052", {{"name", "scale"}}, [&] { e.ErrFunctionNotDeclared("scale", at); });
    Draw("E053", [&] { e.ErrOverloadType(at); });
    Draw("E054", [&] { e.ErrNoReturnValue(at); });
    Draw("E055", {{"count", "2"}}, [&] { e.ErrParameterCount(2, at); });
    DrawWithoutOptional("E055", {{"count", "1"}}, [&] { e.ErrParameterCount(1, at); });
    CNode& actual = *m_Nodes.MakeNode(IDENTIFIER, at);
    Fills mismatch{{"number", "1"}, {"required", "REAL"}, {"function", "scale"},
                   {"line", "1"},   {"column", "10"},     {"file", "lib.st"}};
    DrawWithoutOptional("E056", mismatch, [&] { e.ErrParameterMismatch(actual, m_Function, 0, at); });
    actual.pType = &m_Int;
    mismatch["found"] = "INT";
    Draw("E056", mismatch, [&] { e.ErrParameterMismatch(actual, m_Function, 0, at); });
    Draw("E057", [&] { e.ErrOutputConstant(at); });
    Draw("E058", [&] { e.ErrOutputImmediate(at); });
    Draw("E059", {{"name", "x"}}, [&] { e.ErrNotFb("x", at); });
    Draw("E060", [&] { e.ErrFbCallWithoutInOut(at); });
    Draw("E061", {{"name", "m"}}, [&] { e.ErrMemberAssigned("m", at); });
    Draw("E062", [&] { e.ErrRequiredArrow(at); });
    Draw("E063", [&] { e.ErrRequiredAssign(at); });
    Draw("E064", {{"name", "x"}}, [&] { e.ErrLocalInFbCall("x", at); });

    // Scanner and parser.
    Draw("E065", {{"token", "';'"}, {"tokens", "')'"}},
         [&] { e.ErrSyntax("syntax error, unexpected ';', expecting ')'", 3, 7); });
    DrawWithoutOptional("E065", {{"token", "';'"}}, [&] { e.ErrSyntax("syntax error, unexpected ';'", 3, 7); });
    Draw("E066", [&] { e.ErrSyntax("memory exhausted", 3, 7); });
    Draw("E067", [&] { e.ErrSyntax("Unknown character", 3, 7); });
    Draw("E068", [&] { e.ErrSyntax("forgotten \";\" ?", 3, 7); });
    Draw("E069", [&] { e.ErrSyntax("The attribute CONSTANT cannot be used with external variables", 3, 7); });
    Draw("E070", [&] { e.ErrSyntax("cannot initialize struct here", 3, 7); });
    Draw("E071", [&] { e.ErrSyntax("cannot initialize array here", 3, 7); });
    Draw("E072", [&] { e.ErrSyntax("SORRY, WILL BE SUPPORTED SOON", 3, 7); });
    Draw("E073", {{"line", "5"}, {"column", "11"}}, [&] { e.ErrStringNotClosed(3, 7, 5, 11); });
    Draw("W010", [&] { e.WarnEscapeSequence(3, 7); });

    // The whole run.
    Draw("E074", [&] { e.ErrGeneric("Error in opening library file"); });
    Draw("E075", [&] { e.ErrGeneric("COMPILER\\TARGET node not found in library file"); });
    Draw("E076", {{"bytes", "120"}}, [&] { e.ErrGlobalOutOfMemory(120); });
    Draw("E077", {{"bytes", "8"}}, [&] { e.ErrRetainOutOfMemory(8); });
    Draw("E078", {{"maximum", "2048"}}, [&] { e.ErrReturnStackSize(2048); });
    Draw("E079", {{"maximum", "512"}}, [&] { e.ErrParameterStackSize(512); });
    Draw("E080", {{"bytes", "-24"}, {"name", "Main"}}, [&] { e.ErrReturnStackOverflow(-24, "Main"); });
    Draw("W011", {{"bytes", "300"}}, [&] { e.WarnNestedProgramStack(300); });
}

TEST(MessageTableTest, AnIdentifierNamesOneMessageAndItsKind)
{
    std::set<std::string> seen;
    for (const Message& message : g_Messages) {
        EXPECT_TRUE(seen.insert(message.identifier).second) << message.identifier << " twice";
        EXPECT_TRUE(std::regex_match(message.identifier, std::regex("[EW][0-9]{3}"))) << message.identifier;
        const bool isWarning = message.identifier.front() == 'W';
        EXPECT_EQ(message.method.rfind("Warn", 0) == 0, isWarning) << message.identifier;
        for (const std::string& form : message.forms)
            EXPECT_EQ(form.rfind(isWarning ? "warning" : "error", 0), 0u) << message.identifier << ' ' << form;
    }
}

// "ErrOperator E027 error, mismatch, operator <operator>" for each line of the table, grouped by method.
static std::vector<std::string> TableLines()
{
    std::vector<std::string> lines;
    for (const Message& message : g_Messages)
        for (const std::string& form : message.forms)
            lines.push_back(message.method + " " + message.identifier + " " + form);
    return lines;
}

// The same from the comments of the header. An overload without a comment shares that of the method above it.
static std::vector<std::string> HeaderLines()
{
    const std::regex form(R"re( *// ([EW]\d{3}) "(.*)")re");
    const std::regex further(R"re( *//      "(.*)")re");
    const std::regex method(R"re( *(?:void|bool) ((?:Err|Warn|Fatal)\w+)\(.*)re");
    std::vector<std::string> lines;
    std::vector<std::string> waiting;
    std::string lastMethod;
    std::istringstream header(ReadSource("src/frontend/ErrorHandler.h"));
    std::smatch found;
    for (std::string line; std::getline(header, line);) {
        if (std::regex_match(line, found, form)) waiting.push_back(found.str(1) + " " + Unescaped(found.str(2)));
        else if (std::regex_match(line, found, further) && !waiting.empty()) waiting.back() += Unescaped(found.str(1));
        else if (std::regex_match(line, found, method)) {
            if (waiting.empty() && found.str(1) != lastMethod) lines.push_back(found.str(1) + " has no comment");
            lastMethod = found.str(1);
            for (const std::string& text : waiting) lines.push_back(lastMethod + " " + text);
            waiting.clear();
        }
    }
    return lines;
}

TEST(MessageTableTest, TheHeaderRepeatsIt)
{
    EXPECT_EQ(HeaderLines(), TableLines());
}

// What the scanner, the grammar and the driver hand to ErrSyntax and ErrGeneric.
TEST(MessageTableTest, EveryTextThatIsHandedOverIsListed)
{
    std::set<std::string> listed;
    for (const Message& message : g_Messages) listed.insert(message.method + " " + message.forms.front());
    const std::regex handed(R"re((yyerror|ErrGeneric)\("((?:\\.|[^"\\])*)")re");
    std::size_t count = 0;
    for (const char* name : {"Scanner.re", "Grammar.y", "../driver/FirmwareLibrary.cpp"}) {
        const std::string text = ReadSource(std::string("src/frontend/") + name);
        for (std::sregex_iterator it(text.begin(), text.end(), handed), end; it != end; ++it, ++count) {
            const std::string method = it->str(1) == "yyerror" ? "ErrSyntax" : "ErrGeneric";
            EXPECT_TRUE(listed.count(method + " error: " + Unescaped(it->str(2)))) << it->str();
        }
    }
    EXPECT_EQ(count, 8u);   // but for the two that are composed: "syntax error, ..." and "memory exhausted"
}

TEST(MessageTableTest, TheManualNamesEveryIdentifierOnce)
{
    const std::string manual = ReadSource("docs/messages.md");
    const std::regex identifier(R"re(\b[EW]\d{3}\b)re");
    std::multiset<std::string> named;
    for (std::sregex_iterator it(manual.begin(), manual.end(), identifier), end; it != end; ++it)
        named.insert(it->str());
    std::multiset<std::string> all;
    for (const Message& message : g_Messages) all.insert(message.identifier);
    EXPECT_EQ(named, all);
}
