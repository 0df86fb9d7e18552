#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

class CCodeGeneration;
class CPou;
class XmlStream;

// Above either, nothing is written.
inline constexpr std::int64_t g_LargestCallTreeElements = 10'000'000;
inline constexpr std::int64_t g_LargestCallTreeBytes = std::int64_t{1} << 30;

// <POU name="main" local="6" returnstackdepth="16">
// Begins the element of one call; the depth is in bytes of return stack.
void BeginCallElement(XmlStream& stream, const CPou& pou, std::int64_t depth);

// Goes through the call tree of one program path by path: callers first, callees in order of first call. It keeps one
// entry for each call that is open, so its memory is bounded by the tree's depth. There are no cycles: only what is
// declared above can be called.
class CCallTreeWalk
{
public:
    enum class Step { Enter, Leave, End };

    CCallTreeWalk(const CCodeGeneration& code, const CPou& program);

    Step Next();
    // Of the POU that was entered or is being left.
    const CPou& GetPou() const { return *m_Open.back().pPou; }
    std::int64_t GetDepth() const { return m_Open.back().nDepth; }     // bytes on the return stack inside it
    std::size_t GetLevel() const { return m_Open.size() - 1; }         // calls above it; 0 for the program
    void PassOver();                       // leaves the callees of the POU out; it is left next

private:
    struct OpenCall
    {
        const CPou* pPou;
        std::int64_t nDepth;
        std::size_t nNext;                 // position of the callee that comes next
    };

    const CCodeGeneration& m_Code;
    std::vector<OpenCall> m_Open;
    Step m_Last;                           // what Next answered last; End before the first time
};

// What is known of the call tree without walking it. A POU stands in the tree once for each path that leads to it,
// so a few lines of source can ask for more elements than any disk holds. Here each POU is looked at once, whatever
// the number of its paths, and all that counts elements is a sum over the graph of calls. Sums that would not fit
// stop at g_FarCount (Counting.h).
class CCallTree
{
public:
    explicit CCallTree(const CCodeGeneration& code) : m_Code(code) {}

    // Takes in all that the program reaches, and marks it as used: all but the program.
    void Add(const CPou& program);

    // Of what has been taken in.
    std::int64_t CountElements(const CPou& program) const;     // of the program's tree, its own element included
    std::int64_t CountBytes(const CPou& program) const;        // of their text; walks the tree
    std::int64_t GetDeepest(const CPou& pou) const;            // bytes of return stack that a call takes at most

    // One line that says why the tree of all programs is too large, and where it grows; empty if it isn't.
    std::string DescribeExcess() const;

private:
    // Of one call of a POU and all below it.
    struct Sums
    {
        const CPou* pPou = nullptr;
        std::int64_t elements = 0;
        std::int64_t lines = 0;            // an element with children has two
        std::int64_t bytes = 0;            // at most; without the tabs that all its lines have in common
        std::int64_t deepest = 0;          // bytes of return stack
    };

    const Sums& GetSums(const CPou& pou) const { return m_Sums[m_Positions.at(&pou)]; }
    void Sum(const CPou& pou);
    std::string DescribeGrowth(const CPou& program) const;

    const CCodeGeneration& m_Code;
    std::vector<const CPou*> m_Programs;                       // in the order in which they came
    std::vector<Sums> m_Sums;                                  // callees stand in front of their callers
    std::unordered_map<const CPou*, std::size_t> m_Positions;  // in m_Sums
};
