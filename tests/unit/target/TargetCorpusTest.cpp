// The target descriptions of the cases and examples: what the review says of them, and that it changes nothing.

#include "files/FileSystem.h"
#include "files/XmlDocument.h"
#include "files/XmlReview.h"
#include "target/TargetReview.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

namespace fs = std::filesystem;

static const fs::path g_Source = SOURCE_FOLDER;

// The XML files that a compile is given there, as paths below the source folder; not what it leaves.
static std::vector<std::string> FindTargets()
{
    std::vector<std::string> files;
    for (const std::string_view folder : {"examples", "share", "tests/cases"})
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(g_Source / folder)) {
            const std::string name = fs::relative(entry.path(), g_Source).generic_string();
            const std::string parent = entry.path().parent_path().filename().string();
            const bool isResult = parent == "expected" || parent == "contains" || parent == "shows" || parent == "lacks";
            if (entry.path().extension() == ".xml" && !isResult) files.push_back(name);
        }
    return files;
}

// The kinds of the notes on it, without places, each once in the order of the file.
static std::string ListNotes(const std::string& name)
{
    std::vector<TargetFinding> findings;
    EXPECT_TRUE(ReviewTargetFile((g_Source / name).string(), TargetReviewScope::Notes, findings)) << name;
    std::string list;
    for (const TargetFinding& finding : findings) {
        const std::string kind(GetName(finding.kind));
        if ((" " + list + " ").find(" " + kind + " ") != std::string::npos) continue;
        list += (list.empty() ? "" : " ") + kind;
    }
    return list;
}

// A new case with a description that is wrong on purpose is entered here, with what is wrong in it.
TEST(TargetCorpusTest, OnlyWhatIsWrittenWrongOnPurposeDrawsNotes)
{
    const std::string faults = "tests/cases/xml/fault_behind_what_is_needed/";
    const std::map<std::string, std::string> wrong = {
        // An attribute without "=".
        {"tests/cases/library/store_errors/broken.xml", "reading-stops"},
        // Two LIBRARY nodes.
        {"tests/cases/library/store_in_place_of_another/library.xml", "repeated-node"},
        // Neither has a GLOBAL area.
        {"tests/cases/target/areas_missing/target.xml", "missing-area"},
        {"tests/cases/target/output_area_of_102_bytes/target.xml", "missing-area"},
        // The first node sets an alignment alone: REAL gets 0 bits.
        {"tests/cases/target/formats_default_to_the_node_before/target.xml", "type-without-size"},
        // DINT has the alignment -4.
        {"tests/cases/target/alignments_below_one/target.xml", "negative-number"},
        // FLOAT, int and STRING; BYTE has the alignment -4.
        {"tests/cases/target/formats_of_unknown_names/target.xml", "unknown-data-type negative-number"},
        // udint, with a format of BITS; none; POINTER.
        {"tests/cases/target/pointer_type/lower.xml", "unknown-pointer-type unknown-data-type"},
        {"tests/cases/target/pointer_type/missing.xml", "unknown-pointer-type"},
        {"tests/cases/target/pointer_type/unknown.xml", "unknown-pointer-type"},
        // Junk behind a slash and in front of a quote, and an attribute twice.
        {"tests/cases/xml/attributes/target.xml", "malformed"},
        // The end is missing; closing names are cut short.
        {"tests/cases/xml/elements_left_open/cut.xml", "malformed"},
        {"tests/cases/xml/elements_left_open/short.xml", "malformed"},
        // References in spellings that the reader doesn't know.
        {"tests/cases/xml/entities/target.xml", "undecoded-reference"},
        // One fault in each.
        {faults + "attribute.xml", "reading-stops"},
        {faults + "comment.xml", "reading-stops"},
        {faults + "instruction.xml", "reading-stops"},
        {faults + "lineend.xml", "reading-stops"},
        {faults + "longer.xml", "reading-stops"},
        {faults + "name.xml", "reading-stops"},
        {faults + "quote.xml", "reading-stops"},
        {faults + "section.xml", "reading-stops"},
        {faults + "start.xml", "reading-stops"},
        {faults + "tag.xml", "reading-stops"},
        {"tests/cases/xml/fault_in_front/wrong.xml", "reading-stops"},
    };
    std::map<std::string, std::string> drawn;
    const std::vector<std::string> files = FindTargets();
    for (const std::string& name : files)
        if (const std::string notes = ListNotes(name); !notes.empty()) drawn[name] = notes;
    EXPECT_LT(wrong.size(), files.size() / 2);
    EXPECT_EQ(wrong, drawn);
}

// Broken ones too: the document is the same with a review and without it, to the byte.
TEST(TargetCorpusTest, ReviewChangesNothingInWhatIsRead)
{
    for (const std::string& name : FindTargets()) {
        const std::string file = (g_Source / name).string();
        CXmlDocument plain;
        CXmlDocument reviewed;
        XmlReview review;
        EXPECT_EQ(plain.Load(file), reviewed.Load(file, &review)) << name;
        std::string plainText;
        std::string reviewedText;
        plain.GetXml(plainText);
        reviewed.GetXml(reviewedText);
        EXPECT_EQ(plainText, reviewedText) << name;
    }
}
