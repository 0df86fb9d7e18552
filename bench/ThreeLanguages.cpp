#include "ThreeLanguages.h"

#include <cstddef>
#include <string_view>

namespace
{

struct Line
{
    std::string_view structuredText;
    std::string_view lua;
    std::string_view c;
};

// In all three # stands for the function's number and @ for the number modulo 100.
constexpr Line g_Function[] = {
    {"(* Filters channel #. *)", "-- Filters channel #.", "/* Filters channel #. */"},
    {"FUNCTION filter_# : DINT", "function filter_#(value, limit)", "int filter_#(int value, int limit) {"},
    {"VAR_INPUT value : DINT; limit : DINT; END_VAR", "-- value and limit are given", "/* value and limit are given */"},
    {"VAR sum : DINT := 1; i : DINT; last : DINT; high : BOOL; END_VAR",
     "local sum, i, last, high = 1, 0, 0, false", "int sum = 1, i = 0, last = 0, high = 0;"},
    {"VAR scale : REAL := 1.5; level : REAL := 0.5; mode : DINT := 1; END_VAR",
     "local scale, level, mode = 1.5, 0.5, 1", "float scale = 1.5, level = 0.5; int mode = 1;"},
    {"last := value * 3 + @;", "last = value * 3 + @", "last = value * 3 + @;"},
    {"high := last > limit AND value < @;", "high = last > limit and value < @", "high = last > limit && value < @;"},
    {"IF high THEN", "if high then", "if (high) {"},
    {"  sum := sum + last;", "  sum = sum + last", "  sum = sum + last;"},
    {"  level := level * scale + 0.25;", "  level = level * scale + 0.25", "  level = level * scale + 0.25f;"},
    {"ELSIF last = limit THEN", "elseif last == limit then", "} else if (last == limit) {"},
    {"  sum := sum - @;", "  sum = sum - @", "  sum = sum - @;"},
    {"ELSE", "else", "} else {"},
    {"  sum := (sum + value) * (limit - 7);", "  sum = (sum + value) * (limit - 7)",
     "  sum = (sum + value) * (limit - 7);"},
    {"  mode := mode + 1;", "  mode = mode + 1", "  mode = mode + 1;"},
    {"END_IF;", "end", "}"},
    {"i := 0;", "i = 0", "i = 0;"},
    {"WHILE i < limit DO", "while i < limit do", "while (i < limit) {"},
    {"  i := i + 1;", "  i = i + 1", "  i = i + 1;"},
    {"  IF i > 20 OR sum > 100000 THEN", "  if i > 20 or sum > 100000 then", "  if (i > 20 || sum > 100000) {"},
    {"    EXIT;", "    break", "    break;"},
    {"  END_IF;", "  end", "  }"},
    {"  sum := sum + i * value;", "  sum = sum + i * value", "  sum = sum + i * value;"},
    {"  last := last - i;", "  last = last - i", "  last = last - i;"},
    {"END_WHILE;", "end", "}"},
    {"REPEAT", "repeat", "do {"},
    {"  sum := sum - mode;", "  sum = sum - mode", "  sum = sum - mode;"},
    {"  i := i - 1;", "  i = i - 1", "  i = i - 1;"},
    {"UNTIL i <= 0 END_REPEAT;", "until i <= 0", "} while (!(i <= 0));"},
    {"scale := scale * 0.5 + level;", "scale = scale * 0.5 + level", "scale = scale * 0.5f + level;"},
    {"level := level - scale * 2.0;", "level = level - scale * 2.0", "level = level - scale * 2.0f;"},
    {"IF NOT high THEN", "if not high then", "if (!high) {"},
    {"  last := last + 2;", "  last = last + 2", "  last = last + 2;"},
    {"  total := total + last;", "  total = total + last", "  total = total + last;"},
    {"END_IF;", "end", "}"},
    {"mode := value + limit - sum;", "mode = value + limit - sum", "mode = value + limit - sum;"},
    {"sum := sum + mode * 2 - @;", "sum = sum + mode * 2 - @", "sum = sum + mode * 2 - @;"},
    {"filter_# := sum + last;", "return sum + last", "return sum + last;"},
    {"END_FUNCTION", "end", "}"},
    {"", "", ""},
};
static_assert(std::size(g_Function) == 40);

constexpr Line g_Start = {"VAR_GLOBAL total : DINT; END_VAR", "total = 0", "int total;"};
constexpr Line g_MainStart = {"PROGRAM main", "function main()", "int main(void) {"};
constexpr Line g_Call = {"total := total + filter_#(total, @);", "total = total + filter_#(total, @)",
                         "total = total + filter_#(total, @);"};
constexpr Line g_MainEnd = {"END_PROGRAM", "end", "}"};

}   // namespace

static void AppendLine(const Line& line, Language language, int number, std::string& text)
{
    std::string_view form = line.structuredText;
    if (language == Language::Lua) form = line.lua;
    if (language == Language::C) form = line.c;
    for (const char c : form) {
        if (c == '#') text += std::to_string(number);
        else if (c == '@') text += std::to_string(number % 100);
        else text += c;
    }
    text += '\n';
}

std::string MakeProgram(Language language, int functions)
{
    std::string text;
    AppendLine(g_Start, language, 0, text);
    for (int i = 0; i < functions; ++i)
        for (const Line& line : g_Function) AppendLine(line, language, i, text);
    AppendLine(g_MainStart, language, 0, text);
    for (int i = 0; i < functions; ++i) AppendLine(g_Call, language, i, text);
    AppendLine(g_MainEnd, language, 0, text);
    return text;
}
