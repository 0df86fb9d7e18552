#include "Shrink.h"

#include "machine/Image.h"

#include <utility>

// Empty where the proof holds or is none any more.
static std::string FindDifference(Proof& proof, const CScratch& scratch, const OptionSet& optionSet)
{
    if (!ComputeValues(proof)) return {};
    scratch.WriteSource(proof);
    const Compiled compiled = CompileProof(scratch, optionSet, CompileWay::Copy);
    if (!compiled.pImage) return compiled.error;
    if (!compiled.notes.empty()) return {};
    // What sets a local first may have been taken out: with zeros that is no difference.
    return RunProof(*compiled.pImage, proof, optionSet.HasShortcut(), FrameContents::Zero);
}

static void CollectLists(std::vector<Statement>& list, std::vector<std::vector<Statement>*>& lists)
{
    lists.push_back(&list);
    for (Statement& statement : list) {
        CollectLists(statement.body, lists);
        for (Arm& arm : statement.arms) CollectLists(arm.body, lists);
    }
}

std::string ShrinkProof(Proof& proof, const CScratch& scratch, const OptionSet& optionSet)
{
    std::string difference = FindDifference(proof, scratch, optionSet);
    for (bool isSmaller = !difference.empty(); isSmaller;) {
        isSmaller = false;
        std::vector<std::vector<Statement>*> lists;
        for (Function& function : proof.pProgram->functions) CollectLists(function.body, lists);
        for (std::vector<Statement>* pList : lists) {
            for (std::size_t i = pList->size(); i-- > 0;) {
                const auto position = pList->begin() + static_cast<std::ptrdiff_t>(i);
                Statement statement = std::move(*position);
                pList->erase(position);
                const std::string found = FindDifference(proof, scratch, optionSet);
                isSmaller = isSmaller || !found.empty();
                if (found.empty()) pList->insert(pList->begin() + static_cast<std::ptrdiff_t>(i), std::move(statement));
                else difference = found;
            }
            if (isSmaller) break;   // lists inside of what was taken out are gone
        }
    }
    ComputeValues(proof);
    return difference;
}
