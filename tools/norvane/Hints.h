#pragma once

#include "norvane/Findings.h"
#include "norvane/SourceOutline.h"

#include <string>
#include <string_view>
#include <vector>

// All that a hint can be made of.
struct HintContext
{
    const Diagnostic* pDiagnostic = nullptr;
    const CSourceText* pSource = nullptr;
    const CSourceOutline* pOutline = nullptr;
    const OutlineUnit* pUnit = nullptr;             // around the place; null: none
    const std::vector<std::string>* pPrograms = nullptr;   // that the target knows
    std::size_t index = 0;                          // of the token at the place; the number of tokens: at none

    // The word or sign so many tokens behind the one at the place, or in front of it; empty beyond the file's ends.
    std::string_view At(int offset = 0) const;
    const SourceToken* TokenAt(int offset) const;
    // Whether the two tokens touch.
    bool Touches(int offset) const;
    std::string_view Argument(std::size_t number) const;
    const OutlineVariable* FindVariable(std::string_view name) const { return pOutline->FindVariable(pUnit, name); }
};

// Tells with each message what is probably meant, where a known slip explains it.
void AddHints(CFindings& findings, const CSourceOutline& outline, const std::vector<std::string>& programs);

// One known slip: what it makes of the context, or nothing if it isn't the one.
struct HintRule
{
    std::string_view id;                            // of the message that it explains; empty: of any
    std::string (*MakeHint)(const HintContext& context);
};

// The rules, the closest ones first. Those of the words themselves come in front of those of the grammar, and these in
// front of those of the meaning.
std::vector<HintRule> GetWordRules();
std::vector<HintRule> GetSyntaxRules();
std::vector<HintRule> GetMeaningRules();

// The words of the language, those of elementary types among them.
const std::vector<std::string_view>& GetLanguageWords();
