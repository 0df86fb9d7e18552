#include "GeneratedSources.h"

#include "files/Format.h"

std::string MakeGlobalsAndPous(int globals, int pous)
{
    std::string text = "VAR_GLOBAL\n";
    for (int i = 0; i < globals; ++i) AppendFormat(text, "g%d : INT := %d;\n", i, i % 1000 + 1);
    text += "END_VAR\n";
    for (int i = 0; i < pous; ++i) {
        AppendFormat(text, "FUNCTION f%d : INT\nVAR_INPUT a : INT; END_VAR\n", i);
        AppendFormat(text, "f%d := a + g%d;\nEND_FUNCTION\n", i, i % globals);
    }
    return text + "PROGRAM main\ng0 := f0(g1);\nEND_PROGRAM\n";
}

std::string MakeArrayInitialiser(int elements)
{
    std::string text = "VAR_GLOBAL\n";
    AppendFormat(text, "a : ARRAY [1..%d] OF INT := [", elements);
    const int written = elements / 2;
    for (int i = 0; i < written; ++i) AppendFormat(text, "%d,\n", i % 1000 + 1);
    for (int i = written; i + 2 <= elements; i += 2) AppendFormat(text, "2(%d),\n", i % 1000 + 1);
    return text + "1];\nEND_VAR\nPROGRAM main\n;\nEND_PROGRAM\n";
}

std::string MakeCaseLabels(int labels)
{
    std::string text = "PROGRAM main\nVAR i, x : DINT; END_VAR\nCASE i OF\n";
    for (int i = 0; i < labels; i += 2)
        AppendFormat(text, "%d, %d..%d: x := %d;\n", 10 * i, 10 * i + 1, 10 * i + 5, i);
    return text + "END_CASE;\nEND_PROGRAM\n";
}

std::string MakeStatements(int statements)
{
    std::string text = "PROGRAM main\nVAR i, x : DINT; b : BOOL; END_VAR\n";
    for (int i = 0; i < statements; i += 4) {
        AppendFormat(text, "x := i * %d + x;\nb := x > %d AND i < 5;\n", i, i);
        text += "IF b THEN\n i := i + 1;\nEND_IF;\n";
    }
    return text + "END_PROGRAM\n";
}

std::string MakeSum(int terms)
{
    std::string text = "PROGRAM main\nVAR a : DINT; END_VAR\na := a";
    for (int i = 1; i < terms; ++i) text += "\n + a";
    return text + ";\nEND_PROGRAM\n";
}

std::string MakeCalls(int functions)
{
    std::string text;
    for (int i = 0; i < functions; ++i) {
        AppendFormat(text, "FUNCTION f%d : INT\nVAR_INPUT a : INT; END_VAR\n", i);
        AppendFormat(text, "f%d := a;\nEND_FUNCTION\n", i);
    }
    text += "PROGRAM main\nVAR x : INT; END_VAR\n";
    for (int i = 0; i < functions; ++i) AppendFormat(text, "x := f%d(x);\n", i);
    return text + "END_PROGRAM\n";
}

std::string MakeNestedStructures(int levels)
{
    std::string text = "TYPE s0 : STRUCT a : INT; END_STRUCT; END_TYPE\n";
    for (int i = 1; i < levels; ++i)
        AppendFormat(text, "TYPE s%d : STRUCT m : s%d; END_STRUCT; END_TYPE\n", i, i - 1);
    AppendFormat(text, "PROGRAM main\nVAR x : s%d; END_VAR\n;\nEND_PROGRAM\n", levels - 1);
    return text;
}

std::string MakeFbParameters(int members)
{
    std::string text = "FUNCTION_BLOCK fb\nVAR_INPUT\n";
    for (int i = 0; i < members; ++i) AppendFormat(text, "m%d : INT;\n", i);
    text += "END_VAR\nm0 := 1;\nEND_FUNCTION_BLOCK\nPROGRAM main\nVAR x : fb; END_VAR\nx(";
    for (int i = 0; i < members; ++i) AppendFormat(text, "%sm%d := %d", i ? ",\n" : "", i, i);
    return text + ");\nEND_PROGRAM\n";
}

std::string MakeVariables(int variables)
{
    std::string text = "PROGRAM main\nVAR\n";
    for (int i = 0; i < variables; ++i) AppendFormat(text, "v%d : DINT := %d;\n", i, i + 1);
    return text + "END_VAR\nv0 := v1;\nEND_PROGRAM\n";
}

// The digits of the number of a form, to the base of four types, are the types of its parameters.
std::string MakeForms(int forms)
{
    constexpr const char* types[] = {"INT", "DINT", "REAL", "BOOL"};
    constexpr int parameters = 8;
    std::string text;
    for (int form = 0; form < forms; ++form) {
        text += "FUNCTION f : INT\nVAR_INPUT\n";
        for (int i = 0, digits = form; i < parameters; ++i, digits /= 4)
            AppendFormat(text, "p%d : %s;\n", i, types[digits % 4]);
        text += "END_VAR\nf := 1;\nEND_FUNCTION\n";
    }
    text += "PROGRAM main\nVAR x : INT; v0 : INT; v1 : DINT; v2 : REAL; v3 : BOOL; END_VAR\n";
    for (int form = 0; form < forms; ++form) {
        text += "x := f(";
        for (int i = 0, digits = form; i < parameters; ++i, digits /= 4)
            AppendFormat(text, "%sv%d", i ? ", " : "", digits % 4);
        text += ");\n";
    }
    return text + "END_PROGRAM\n";
}

std::vector<std::string> MakeFiles(int files)
{
    std::vector<std::string> texts;
    for (int i = 0; i < files; ++i) {
        std::string& text = texts.emplace_back();
        AppendFormat(text, "FUNCTION f%d : INT\nVAR_INPUT a : INT; END_VAR\n", i);
        AppendFormat(text, "f%d := a;\nEND_FUNCTION\n", i);
    }
    texts.push_back("PROGRAM main\nVAR x : INT; END_VAR\nx := f0(x);\nEND_PROGRAM\n");
    return texts;
}
