// Slips in what names and types mean.

#include "norvane/Hints.h"
#include "norvane/WordDistance.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

using Context = HintContext;

// ---- Names.

// The name in front of the parenthesis around the place; empty if there is none in its statement.
static std::string_view FindCallee(const Context& context)
{
    int depth = 0;
    for (int offset = -1; context.TokenAt(offset) && context.At(offset) != ";"; --offset) {
        if (context.At(offset) == ")") ++depth;
        if (context.At(offset) == "(" && depth-- == 0) return context.At(offset - 1);
    }
    return {};
}

static std::string ListParameters(const OutlineUnit& unit)
{
    std::string list;
    for (const OutlineVariable& variable : unit.variables)
        if (variable.block == "VAR_INPUT" || variable.block == "VAR_OUTPUT" || variable.block == "VAR_IN_OUT")
            list += (list.empty() ? "" : ", ") + std::string(variable.name);
    return list;
}

static std::string HintNamedArgument(const Context& context)
{
    if (context.At(1) != ":=" && context.At(1) != "=>") return {};
    const OutlineUnit* pCallee = context.pOutline->FindUnit(FindCallee(context));
    if (!pCallee || pCallee->kind != "FUNCTION") return {};
    return fmt::format("arguments of a function have no names; {}({}) takes them in this order", pCallee->name,
                       ListParameters(*pCallee));
}

static std::string HintEnumerated(const Context& context)
{
    const std::vector<std::string_view>& names = context.pOutline->m_EnumeratedNames;
    const bool isOne = std::any_of(names.begin(), names.end(),
                                   [&](std::string_view name) { return IsSameName(name, context.Argument(0)); });
    return isOne ? "enumerations are accepted and declare nothing: use an INT and constants" : "";
}

static std::string HintDeclaredBelow(const Context& context)
{
    const OutlineVariable* pVariable = context.FindVariable(context.Argument(0));
    if (!pVariable || *pVariable->pFile != context.pDiagnostic->file || pVariable->line < context.pDiagnostic->line)
        return {};
    return fmt::format("{} is declared in line {}, behind its use; declarations stand in front of the first statement",
                       context.Argument(0), pVariable->line);
}

static std::string HintOtherUnit(const Context& context)
{
    if (context.FindVariable(context.Argument(0))) return {};
    for (const OutlineUnit& unit : context.pOutline->m_Units) {
        if (&unit == context.pUnit || unit.kind == "STRUCT") continue;
        for (const OutlineVariable& variable : unit.variables)
            if (IsSameName(variable.name, context.Argument(0)))
                return fmt::format("{} belongs to {} {} and is known only there; VAR_GLOBAL declares for all",
                                   context.Argument(0), unit.kind, unit.name);
    }
    return {};
}

static std::vector<std::string_view> ListVariables(const Context& context)
{
    std::vector<std::string_view> names;
    if (context.pUnit)
        for (const OutlineVariable& variable : context.pUnit->variables) names.push_back(variable.name);
    for (const OutlineVariable& variable : context.pOutline->m_Globals) names.push_back(variable.name);
    if (context.pUnit && context.pUnit->kind == "FUNCTION") names.push_back(context.pUnit->name);
    return names;
}

static std::string HintNearVariable(const Context& context)
{
    const std::string nearest = FindNearest(context.Argument(0), ListVariables(context));
    return nearest.empty() ? std::string() : fmt::format("there is a variable {}", nearest);
}

static std::string HintUndeclared(const Context& context)
{
    return fmt::format("declare it in VAR ... END_VAR, with its type: {} : INT;", context.Argument(0));
}

static std::string HintDeclaredTwice(const Context& context)
{
    const OutlineVariable* pFirst = context.FindVariable(context.Argument(0));
    if (!pFirst) return {};
    return fmt::format("it is declared in line {} of {}; names are the same in any case of letters", pFirst->line,
                       *pFirst->pFile);
}

static std::string HintProgramName(const Context& context)
{
    std::string known;
    for (const std::string& program : *context.pPrograms) {
        if (IsSameName(program, context.At(1))) return "the target calls it " + program + ", letter by letter";
        known += (known.empty() ? "" : ", ") + program;
    }
    return known.empty() ? std::string() : "the target knows these programs: " + known;
}

// ---- Calls.

static std::string HintInstanceCall(const Context& context)
{
    const OutlineVariable* pInstance = context.FindVariable(context.Argument(0));
    const OutlineUnit* pBlock = pInstance ? context.pOutline->FindBlockOf(*pInstance) : nullptr;
    if (!pBlock) return {};
    for (const OutlineVariable& variable : pBlock->variables)
        if (variable.block == "VAR_INPUT" || variable.block == "VAR_IN_OUT")
            return fmt::format("parameters of a function block are named: {}({} := ...)", pInstance->name,
                               variable.name);
    return fmt::format("{} takes no inputs: {}()", pBlock->name, pInstance->name);
}

static std::string HintArrayCall(const Context& context)
{
    const OutlineVariable* pArray = context.FindVariable(context.Argument(0));
    if (!pArray || pArray->bounds.empty()) return {};
    return fmt::format("the elements of an array stand in brackets: {}[...]", pArray->name);
}

static std::string ListTypes(const OutlineUnit& function)
{
    std::string list;
    for (const OutlineVariable& variable : function.variables)
        if (variable.block == "VAR_INPUT" || variable.block == "VAR_OUTPUT" || variable.block == "VAR_IN_OUT")
            list += (list.empty() ? "" : ", ") + std::string(variable.type);
    return list;
}

static std::string HintFunctionElsewhere(const Context& context)
{
    const OutlineUnit* pFunction = context.pOutline->FindUnit(context.Argument(0));
    if (!pFunction || pFunction->kind != "FUNCTION") return {};
    const bool isBelow = *pFunction->pFile == context.pDiagnostic->file && pFunction->line > context.pDiagnostic->line;
    if (isBelow)
        return fmt::format("{} is declared in line {}, behind its use; a declaration stands above it", pFunction->name,
                           pFunction->line);
    return fmt::format("{} takes these types: {}", pFunction->name, ListTypes(*pFunction));
}

static std::string HintNearFunction(const Context& context)
{
    std::vector<std::string_view> names = {"ABS", "SQRT", "MIN", "MAX", "LIMIT", "MULDIV", "SHL", "SHR", "ROL", "ROR"};
    for (const OutlineUnit& unit : context.pOutline->m_Units)
        if (unit.kind == "FUNCTION") names.push_back(unit.name);
    const std::string nearest = FindNearest(context.Argument(0), names);
    return nearest.empty() ? "declare the function above, or name the source that declares it in front of this one"
                           : "there is a function " + nearest;
}

static std::string HintBuiltInCount(std::string_view name)
{
    constexpr std::pair<std::string_view, const char*> counts[] = {
        {"ABS", "1"},   {"SQRT", "1"}, {"MIN", "2 or more"}, {"MAX", "2 or more"}, {"LIMIT", "3: low, value, high"},
        {"MULDIV", "3"}, {"SHL", "2"}, {"SHR", "2"},         {"ROL", "2"},         {"ROR", "2"}};
    for (const auto& [known, count] : counts)
        if (known == name) return fmt::format("{} takes {}", name, count);
    return {};
}

static std::string HintArgumentCount(const Context& context)
{
    const std::string_view name = context.At();
    const OutlineUnit* pFunction = context.pOutline->FindUnit(name);
    if (!pFunction) return HintBuiltInCount(name);
    const std::string parameters = ListParameters(*pFunction);
    const auto count = parameters.empty() ? 0 : std::count(parameters.begin(), parameters.end(), ',') + 1;
    if (count == 0) return fmt::format("{} takes no arguments", name);
    return fmt::format("{} takes {}: {}", name, count, parameters);
}

static std::string HintConversionOfArgument(const Context& context)
{
    if (context.Argument(1).empty()) return {};
    return fmt::format("convert it: {}_TO_{}(...)", context.Argument(1), context.Argument(2));
}

static std::string HintArrow(const Context& context)
{
    const std::string_view name = context.At(-1);
    if (context.At() == ":=") return fmt::format("an output is taken by =>: {} => {}", name, context.At(1));
    return "an output is taken by =>, an input given by :=";
}

static std::string HintAssign(const Context& context)
{
    const std::string_view name = context.At(-1);
    if (context.At() == "=>") return fmt::format("an input is given by :=: {} := {}", name, context.At(1));
    return "an input is given by :=, an output taken by =>";
}

static std::string HintNotBlock(const Context& context)
{
    const OutlineVariable* pVariable = context.FindVariable(context.Argument(0));
    return pVariable ? fmt::format("{} is of type {}, which is no function block", pVariable->name, pVariable->type)
                     : std::string();
}

// ---- Members and elements.

static std::string HintPrivate(const Context& context)
{
    return fmt::format("{} is for the block alone; what others may read belongs into VAR_OUTPUT", context.At());
}

static std::string HintMember(const Context& context)
{
    const OutlineUnit* pUnit = context.pOutline->FindUnit(context.Argument(1));
    if (!pUnit) return {};
    std::vector<std::string_view> names;
    std::string list;
    for (const OutlineVariable& variable : pUnit->variables) {
        names.push_back(variable.name);
        list += (list.empty() ? "" : ", ") + std::string(variable.name);
    }
    const std::string nearest = FindNearest(context.Argument(0), names);
    return fmt::format("{} has {}{}", pUnit->name, list, nearest.empty() ? "" : "; " + nearest + " is near");
}

// The variable whose brackets stand around the place or behind it.
static const OutlineVariable* FindArray(const Context& context)
{
    if (context.At(1) == "[") return context.FindVariable(context.At());
    for (int offset = 0; context.TokenAt(offset) && context.At(offset) != ";"; --offset)
        if (context.At(offset) == "[") return context.FindVariable(context.At(offset - 1));
    return nullptr;
}

static std::string ListBounds(const OutlineVariable& array)
{
    std::string list;
    for (const std::string& range : array.bounds) list += (list.empty() ? "" : ", ") + range;
    return "[" + list + "]";
}

static std::string HintBounds(const Context& context)
{
    const OutlineVariable* pArray = FindArray(context);
    if (!pArray || pArray->bounds.empty()) return {};
    return fmt::format("{} has the bounds {}", pArray->name, ListBounds(*pArray));
}

static std::string HintDimensions(const Context& context)
{
    const OutlineVariable* pArray = FindArray(context);
    if (!pArray || pArray->bounds.empty()) return {};
    return fmt::format("{0} has the bounds {1}; all subscripts stand in one pair of brackets: {0}[{2}]", pArray->name,
                       ListBounds(*pArray), pArray->bounds.size() == 1 ? "i" : pArray->bounds.size() == 2 ? "i, j"
                                                                                                        : "i, j, k");
}

// ---- Types.

static bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> words)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

// The signed type that holds what an unsigned one does, as far as there is one.
static std::string_view GetSigned(std::string_view type)
{
    if (IsOneOf(type, {"USINT", "BYTE"})) return "INT";
    return IsOneOf(type, {"UINT", "WORD"}) ? "INT" : "DINT";
}

static bool IsUnsigned(std::string_view type)
{
    return IsOneOf(type, {"USINT", "UINT", "UDINT", "BYTE", "WORD", "DWORD"});
}

static std::string HintSigned(const Context& context)
{
    const OutlineVariable* pVariable = context.FindVariable(context.At());
    // At an element the message stands at the variable or at a bracket; the subscript is meant.
    for (int offset = 1; offset <= 3 && !(pVariable && IsUnsigned(pVariable->type)); ++offset)
        if (IsOneOf(context.At(offset - 1), {"[", ",", "TO", "BY", ":="})) pVariable = context.FindVariable(context.At(offset));
    if (!pVariable || pVariable->type.empty()) return "only the signed types SINT, INT and DINT count here";
    if (!IsUnsigned(pVariable->type))
        return fmt::format("{} is {}; only the signed types SINT, INT and DINT count here", pVariable->name,
                           pVariable->type);
    return fmt::format("{0} is {1}, and only signed types count here: {1}_TO_{2}({0})", pVariable->name,
                       pVariable->type, GetSigned(pVariable->type));
}

static std::string HintBoolean(const Context& context)
{
    const OutlineVariable* pVariable = context.FindVariable(context.At());
    if (!pVariable || pVariable->type.empty() || pVariable->type == "BOOL") return {};
    return fmt::format("{0} is {1}; compare it: {0} <> 0", pVariable->name, pVariable->type);
}

static bool IsRealLiteral(std::string_view text)
{
    return !text.empty() && text.find('.') != std::string_view::npos && text.find_first_not_of("0123456789._eE+-") ==
                                                                           std::string_view::npos;
}

static bool IsNumber(const Context& context, int offset)
{
    const SourceToken* pToken = context.TokenAt(offset);
    return pToken && pToken->kind == SourceToken::Kind::Number;
}

// 2.5 * r
static std::string HintLiteralInFront(const Context& context)
{
    const OutlineVariable* pRight = context.FindVariable(context.At(1));
    if (!IsNumber(context, -1) || !pRight || !IsOneOf(pRight->type, {"REAL", "LREAL"})) return {};
    if (context.At() == "*" || context.At() == "+")
        return fmt::format("a literal stands behind the {} variable: {} {} {}", pRight->type, context.At(1),
                           context.At(), context.At(-1));
    return fmt::format("a literal can't stand in front of a {} variable: give it a name, as a CONSTANT", pRight->type);
}

static std::string HintTwoLiterals(const Context& context)
{
    if (!IsNumber(context, -1) || !IsNumber(context, 1)) return {};
    const auto makeReal = [](std::string_view text) {
        return std::string(text) + (IsRealLiteral(text) ? "" : ".0");
    };
    return fmt::format("two literals must be of one sort: {} {} {}", makeReal(context.At(-1)), context.At(),
                       makeReal(context.At(1)));
}

// The type of the operand that ends or begins beside the operator, as far as a look tells.
static const OutlineVariable* FindOperand(const Context& context, bool isLeft)
{
    if (!isLeft) return context.FindVariable(context.At(1));
    if (context.At(-1) != "]") return context.FindVariable(context.At(-1));
    for (int offset = -1; context.TokenAt(offset); --offset)
        if (context.At(offset) == "[") return context.FindVariable(context.At(offset - 1));
    return nullptr;
}

static bool IsWider(std::string_view a, std::string_view b)
{
    constexpr std::string_view order[] = {"SINT", "USINT", "BYTE", "INT", "UINT", "WORD", "DINT", "UDINT", "DWORD",
                                          "REAL", "LREAL"};
    return std::find(std::begin(order), std::end(order), a) > std::find(std::begin(order), std::end(order), b);
}

static std::string HintOperands(const Context& context)
{
    const OutlineVariable* pLeft = FindOperand(context, true);
    const OutlineVariable* pRight = FindOperand(context, false);
    if (!pLeft || !pRight || pLeft->type == pRight->type) return {};
    const bool isLeftWider = IsWider(pLeft->type, pRight->type);
    const OutlineVariable& narrow = isLeftWider ? *pRight : *pLeft;
    const OutlineVariable& wide = isLeftWider ? *pLeft : *pRight;
    return fmt::format("{0} is {1} and {2} is {3}; convert one of them: {4}_TO_{5}({6})", pLeft->name, pLeft->type,
                       pRight->name, pRight->type, narrow.type, wide.type, narrow.name);
}

static std::string HintLiteralOfOtherSort(const Context& context)
{
    for (const bool isLeft : {true, false}) {
        const OutlineVariable* pVariable = FindOperand(context, isLeft);
        const std::string_view literal = context.At(isLeft ? 1 : -1);
        if (!pVariable || !IsNumber(context, isLeft ? 1 : -1)) continue;
        if (IsRealLiteral(literal)) return fmt::format("{} is {}, and {} is a real number", pVariable->name,
                                                       pVariable->type, literal);
    }
    return {};
}

static std::string HintConversion(const Context& context)
{
    const std::string_view left = context.Argument(1);
    const std::string_view right = context.Argument(2);
    if (context.Argument(0) != ":=" || left == right) return {};
    const std::vector<std::string_view>& words = GetLanguageWords();
    for (const std::string_view type : {left, right})
        if (std::find(words.begin(), words.end(), type) == words.end())
            return fmt::format("{} and {} are different types; only values of one type are assigned", left, right);
    return fmt::format("convert the value: {}_TO_{}(...)", right, left);
}

static std::string HintSameTypes(const Context& context)
{
    const std::string_view op = context.Argument(0);
    if (IsOneOf(op, {"AND", "OR", "XOR", "NOT"})) return fmt::format("{} is for BOOL, BYTE, WORD and DWORD", op);
    return {};
}

static std::string HintMismatch(const Context& context)
{
    if (context.Argument(0) == context.Argument(1)) return {};
    return fmt::format("both must be of one type; {1}_TO_{0}(...) converts", context.Argument(0), context.Argument(1));
}

static std::string HintLiteralOfType(const Context& context)
{
    const std::string_view type = context.Argument(0);
    const std::string_view literal = context.At();
    if (IsOneOf(literal, {"TRUE", "FALSE"})) return fmt::format("{} is a BOOL; {} takes a number", literal, type);
    if (IsRealLiteral(literal)) return fmt::format("{} is a real number; {} takes a whole one", literal, type);
    if (literal.starts_with("'")) return fmt::format("{} is a text; {} takes a number", literal, type);
    return {};
}

static std::string HintTypeNotSupported(const Context& context)
{
    if (IsOneOf(context.Argument(0), {"TIME", "DATE", "TIME_OF_DAY", "TOD", "DATE_AND_TIME", "DT"}))
        return "no target supports times: count milliseconds or scans in a DINT, as share/st/timers.st does";
    if (context.Argument(0) == "STRING") return "no target supports texts";
    if (IsOneOf(context.Argument(0), {"LINT", "ULINT", "LWORD"})) return "the longest integers have 32 bits: DINT, UDINT, DWORD";
    return "AllowedDataTypes of the target lists the types that it takes";
}

static std::string HintRange(const Context& context)
{
    constexpr std::pair<std::string_view, const char*> ranges[] = {
        {"SINT", "-128 to 127"},    {"INT", "-32768 to 32767"}, {"DINT", "-2147483648 to 2147483647"},
        {"USINT", "0 to 255"},      {"UINT", "0 to 65535"},     {"UDINT", "0 to 4294967295"},
        {"BYTE", "16#00 to 16#FF"}, {"WORD", "16#0000 to 16#FFFF"}, {"DWORD", "16#00000000 to 16#FFFFFFFF"}};
    const std::string& text = context.pDiagnostic->text;
    for (const auto& [type, range] : ranges)
        if (text.ends_with(" " + std::string(type))) return fmt::format("{} goes from {}", type, range);
    return {};
}

static std::string HintConstant(const Context& context)
{
    const OutlineVariable* pVariable = context.FindVariable(context.At());
    if (!pVariable) return {};
    return fmt::format("{} is declared as CONSTANT in line {}", pVariable->name, pVariable->line);
}

std::vector<HintRule> GetMeaningRules()
{
    return {{"E007", HintNamedArgument},
            {"E007", HintEnumerated},
            {"E007", HintDeclaredBelow},
            {"E007", HintNearVariable},
            {"E007", HintOtherUnit},
            {"E007", HintUndeclared},
            {"E006", HintDeclaredTwice},
            {"E010", HintProgramName},
            {"E052", HintInstanceCall},
            {"E052", HintArrayCall},
            {"E052", HintFunctionElsewhere},
            {"E052", HintNearFunction},
            {"E055", HintArgumentCount},
            {"E056", HintConversionOfArgument},
            {"E062", HintArrow},
            {"E063", HintAssign},
            {"E059", HintNotBlock},
            {"E042", HintPrivate},
            {"E038", HintMember},
            {"E040", HintBounds},
            {"E039", HintDimensions},
            {"E043", HintSigned},
            {"E048", HintSigned},
            {"E047", HintBoolean},
            {"E027", HintLiteralInFront},
            {"E027", HintTwoLiterals},
            {"E027", HintOperands},
            {"E027", HintLiteralOfOtherSort},
            {"E028", HintConversion},
            {"E028", HintSameTypes},
            {"E029", HintSameTypes},
            {"E035", HintMismatch},
            {"E032", HintLiteralOfType},
            {"E004", HintTypeNotSupported},
            {"N13", HintRange},
            {"E044", HintConstant}};
}
