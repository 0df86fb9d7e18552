#pragma once

#include <string>
#include <string_view>
#include <vector>

class CXmlDocument;
class XmlReview;

// What a target description may say that can't be meant. The compiler takes most of it in silence, so it is
// found here, for the notes of a compile and for the check of a target by itself.
//
// The kinds of the first group are notes: the description is read otherwise than it can be meant. A well-formed
// description never draws one for the way in which it is spelled: order, quotes, comments, instructions, CDATA
// sections, a DOCTYPE, prefixes, self-closing tags and what is unknown to the compiler are all free. It does where
// the reader itself falls short of XML: a line end behind a closing name stops it, it takes an element inside a
// DOCTYPE for the document, and it knows few references.
// An attribute that isn't there is never a number or boolean at fault, as each has a default.
enum class TargetFindingKind
{
    // The text isn't XML, and the reader goes on or stops (see XmlFaultKind):
    ReadingStops,        // at a fault; what stands behind it isn't read
    Malformed,           // an element left open, a closing name cut short, a quote missing, an attribute twice,
                         // junk that is passed over, a comment or declaration that hides a tag, text behind the end
    UndecodedReference,  // a character or entity reference in a value that is read, in a spelling outside the
                         // table of the reader, such as &#10; or &#xe8;: it stays as it is spelled
    // Numbers (`size`, `align`, `segment`, `code`, `id`, `maxsize`, `calloverload`) and booleans:
    NotANumber,          // not wholly decimal digits behind an optional sign, nor wholly hexadecimal ones behind
                         // "0x"; white space around is free, but not in front of "0x"
    NumberTooLarge,      // beyond 32 bits
    NegativeNumber,      // a size, maximum, alignment or call overload below 0
    NotABoolean,         // neither yes, true, 1 nor no, false, off, 0 in any case, nor empty: it is false
    // Types:
    UnknownDataType,     // DATATYPE whose name is missing or none of the elementary types'
    TypeWithoutSize,     // an allowed type whose size is 0 or below once all DATATYPE nodes are read
    UnknownPointerType,  // PointerType missing, or none of the elementary types' names
    PointerWithoutSize,  // a PointerType of 0 bits or below, or of no whole bytes
    // Areas and programs:
    MissingArea,         // no GLOBAL; or no ABSOLUTE though INPUT, OUTPUT or MEMORY has a code, in which case the
                         // debug file gives -1 for all located variables. The others may be left out: a source
                         // that needs them gets an error
    RepeatedArea,        // one of the seven names twice: what the later one says replaces the earlier
    UnnamedProgram,      // PROGRAM whose name is missing or empty
    RepeatedProgram,     // a program's name twice: the first counts
    RepeatedNode,        // a node of which the first alone is read: COMPILER, TARGET, IEC, DATAFORMAT, VM,
                         // RETURNSTACK, PARAMETERSTACK, LIBRARY
    NameInOtherCase,     // a node, attribute or area that isn't read since its name is a known one in another
                         // case. Not where the known name stands beside it, but for nodes that may be many
    // The firmware library:
    LibraryInSection,    // LIBRARY holds a CDATA section, which isn't read
    LibraryDamaged,      // LIBRARY is no base64: foreign characters, text behind the padding, a last group cut

    // For the check by itself. None of it is read otherwise than it says.
    Untidy,              // not well-formed, but read as it is meant
    WrongEncoding,       // UTF-16, bytes that aren't UTF-8, a declared encoding that isn't, a zero byte
    MissingNode,         // one that every target must have
    UnknownNode,
    UnknownAttribute,
    StrayText,           // in an element other than LIBRARY
    OutOfRange,          // an alignment of 0, a start below 0, a size in bits that is neither 1 nor whole bytes, a
                         // stack above its maximum
    RepeatedDataType,    // the later one counts
    UnknownArea,         // AREA of another name: passed over
    OverlappingAreas,    // INPUT, OUTPUT, MEMORY; also with the sizes and starts that the defaults give
    RepeatedCode,        // two areas or programs with one number
    NameNeverMet         // a program name that no source can have or find, a word of AllowedDataTypes that
                         // allows nothing
};

struct TargetFinding
{
    TargetFindingKind kind;
    int line = -1;       // from 1; -1: concerns no place
    int column = -1;     // from 1, in characters; -1 likewise
    std::string text;    // one line, printable, without the place
};

enum class TargetReviewScope { Notes, All };

constexpr bool IsNote(TargetFindingKind kind)
{
    return kind <= TargetFindingKind::LibraryDamaged;
}

// A name for lists that machines read, such as "not-a-number".
std::string_view GetName(TargetFindingKind kind);

// What the document, loaded with this review, has of it, in the order of the file; at the end what has no place.
// Its cost is linear in the file and small beside reading it. The bytes of the file aren't looked at.
std::vector<TargetFinding> ReviewTarget(CXmlDocument& target, const XmlReview& review, TargetReviewScope scope);

// The same for a file by itself, bytes included. False if it can't be read.
bool ReviewTargetFile(const std::string& fileName, TargetReviewScope scope, std::vector<TargetFinding>& findings);
