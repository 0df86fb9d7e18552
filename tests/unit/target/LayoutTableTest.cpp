// Where a variable of each elementary type goes, for every place that it can be declared in, every option
// that touches memory, and three targets. The numbers are worked out by hand from these rules:
//
// - A BYTE named `lead` stands first and takes byte 0, so that alignment shows. Behind it come a constant `k` and
//   the variable `x`, both of the type in question. The constant has no place unless -cso0 is given or it is a
//   parameter, whose value comes from the caller.
// - A type of whole bytes goes to the next multiple of its alignment. A BOOL takes the next bit of a byte that
//   BOOLs have opened. Else it opens one at the next multiple of its alignment; its size is then the padding,
//   and its offset that byte less the padding. -b gives each BOOL a whole aligned byte.
// - -o1 moves the BOOLs behind all else, to the next multiple of their alignment, eight to a byte with size 1
//   each. `k` takes the first bit there though it is never read.
// - An input is placed by whole bytes whatever the options. An output or in-out is a pointer, but under -b it
//   is placed as its own type.
// - A structure lies at a multiple of the least common multiple of its members' alignments. A BOOL member behind
//   padding counts as the byte in front of the one that it is in.
// - An array has ten elements, one stride from each other; ten BOOLs take two units of their alignment, the last
//   one cut to a byte. The array lies where its first element lies. Constant arrays have a place always.

#include "TargetFixture.h"

#include <array>
#include <sstream>

namespace {

enum Option { Default, Compatible, Packing, NoSubstitution, OptionCount };   // none, -b, -o1, -cso0
constexpr std::string_view g_OptionNames[] = {"default", "-b", "-o1", "-cso0"};

enum TargetKind { ByteAligned, FourAligned, WidePointers };
constexpr std::string_view g_TargetNames[] = {"byte-aligned", "4-aligned", "8-byte pointers"};

// The types of each size behave alike.
enum SizeClass { OneByte, TwoBytes, FourBytes, EightBytes, OneBit, SizeClassCount };
constexpr std::string_view g_TypesOfClass[] = {
    "SINT USINT BYTE",
    "INT UINT WORD",
    "DINT UDINT DWORD REAL TIME TIME_OF_DAY DATE",
    "LINT ULINT LWORD LREAL DATE_AND_TIME",
    "BOOL",
};
static_assert(std::size(g_TypesOfClass) == SizeClassCount);

struct Numbers
{
    std::int32_t first;
    std::int32_t second;
    std::int32_t third;

    bool operator==(const Numbers&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Numbers& numbers)
{
    return out << '(' << numbers.first << ", " << numbers.second << ", " << numbers.third << ')';
}

struct Row
{
    TargetKind target;
    SizeClass sizeClass;
    std::array<Numbers, OptionCount> expected;   // default, -b, -o1, -cso0
};

// Offset, size and bit of `x` as a local, a global or a retain variable.
constexpr Row g_Plain[] = {
    {ByteAligned, OneByte, {{{1, 1, 0}, {1, 1, 0}, {1, 1, 0}, {2, 1, 0}}}},
    {ByteAligned, TwoBytes, {{{1, 2, 0}, {1, 2, 0}, {1, 2, 0}, {3, 2, 0}}}},
    {ByteAligned, FourBytes, {{{1, 4, 0}, {1, 4, 0}, {1, 4, 0}, {5, 4, 0}}}},
    {ByteAligned, EightBytes, {{{1, 8, 0}, {1, 8, 0}, {1, 8, 0}, {9, 8, 0}}}},
    {ByteAligned, OneBit, {{{1, 0, 0}, {1, 1, 0}, {1, 1, 1}, {1, 0, 1}}}},
    {FourAligned, OneByte, {{{4, 1, 0}, {4, 1, 0}, {4, 1, 0}, {8, 1, 0}}}},
    {FourAligned, TwoBytes, {{{4, 2, 0}, {4, 2, 0}, {4, 2, 0}, {8, 2, 0}}}},
    {FourAligned, FourBytes, {{{4, 4, 0}, {4, 4, 0}, {4, 4, 0}, {8, 4, 0}}}},
    {FourAligned, EightBytes, {{{4, 8, 0}, {4, 8, 0}, {4, 8, 0}, {12, 8, 0}}}},
    {FourAligned, OneBit, {{{1, 3, 0}, {4, 1, 0}, {4, 1, 1}, {4, 0, 1}}}},
    {WidePointers, OneByte, {{{1, 1, 0}, {1, 1, 0}, {1, 1, 0}, {2, 1, 0}}}},
    {WidePointers, TwoBytes, {{{2, 2, 0}, {2, 2, 0}, {2, 2, 0}, {4, 2, 0}}}},
    {WidePointers, FourBytes, {{{4, 4, 0}, {4, 4, 0}, {4, 4, 0}, {8, 4, 0}}}},
    {WidePointers, EightBytes, {{{8, 8, 0}, {8, 8, 0}, {8, 8, 0}, {16, 8, 0}}}},
    {WidePointers, OneBit, {{{1, 0, 0}, {1, 1, 0}, {1, 1, 1}, {1, 0, 1}}}},
};

// Offset, size and bit of `x` as an input.
constexpr Row g_Inputs[] = {
    {ByteAligned, OneByte, {{{2, 1, 0}, {2, 1, 0}, {2, 1, 0}, {2, 1, 0}}}},
    {ByteAligned, TwoBytes, {{{3, 2, 0}, {3, 2, 0}, {3, 2, 0}, {3, 2, 0}}}},
    {ByteAligned, FourBytes, {{{5, 4, 0}, {5, 4, 0}, {5, 4, 0}, {5, 4, 0}}}},
    {ByteAligned, EightBytes, {{{9, 8, 0}, {9, 8, 0}, {9, 8, 0}, {9, 8, 0}}}},
    {ByteAligned, OneBit, {{{2, 1, 0}, {2, 1, 0}, {2, 1, 0}, {2, 1, 0}}}},
    {FourAligned, OneByte, {{{8, 1, 0}, {8, 1, 0}, {8, 1, 0}, {8, 1, 0}}}},
    {FourAligned, TwoBytes, {{{8, 2, 0}, {8, 2, 0}, {8, 2, 0}, {8, 2, 0}}}},
    {FourAligned, FourBytes, {{{8, 4, 0}, {8, 4, 0}, {8, 4, 0}, {8, 4, 0}}}},
    {FourAligned, EightBytes, {{{12, 8, 0}, {12, 8, 0}, {12, 8, 0}, {12, 8, 0}}}},
    {FourAligned, OneBit, {{{8, 1, 0}, {8, 1, 0}, {8, 1, 0}, {8, 1, 0}}}},
    {WidePointers, OneByte, {{{2, 1, 0}, {2, 1, 0}, {2, 1, 0}, {2, 1, 0}}}},
    {WidePointers, TwoBytes, {{{4, 2, 0}, {4, 2, 0}, {4, 2, 0}, {4, 2, 0}}}},
    {WidePointers, FourBytes, {{{8, 4, 0}, {8, 4, 0}, {8, 4, 0}, {8, 4, 0}}}},
    {WidePointers, EightBytes, {{{16, 8, 0}, {16, 8, 0}, {16, 8, 0}, {16, 8, 0}}}},
    {WidePointers, OneBit, {{{2, 1, 0}, {2, 1, 0}, {2, 1, 0}, {2, 1, 0}}}},
};

// Offset, size and bit of `x` as an output or an in-out.
constexpr Row g_Pointers[] = {
    {ByteAligned, OneByte, {{{5, 4, 0}, {2, 1, 0}, {5, 4, 0}, {5, 4, 0}}}},
    {ByteAligned, TwoBytes, {{{5, 4, 0}, {3, 2, 0}, {5, 4, 0}, {5, 4, 0}}}},
    {ByteAligned, FourBytes, {{{5, 4, 0}, {5, 4, 0}, {5, 4, 0}, {5, 4, 0}}}},
    {ByteAligned, EightBytes, {{{5, 4, 0}, {9, 8, 0}, {5, 4, 0}, {5, 4, 0}}}},
    {ByteAligned, OneBit, {{{5, 4, 0}, {2, 1, 0}, {5, 4, 0}, {5, 4, 0}}}},
    {FourAligned, OneByte, {{{8, 4, 0}, {8, 1, 0}, {8, 4, 0}, {8, 4, 0}}}},
    {FourAligned, TwoBytes, {{{8, 4, 0}, {8, 2, 0}, {8, 4, 0}, {8, 4, 0}}}},
    {FourAligned, FourBytes, {{{8, 4, 0}, {8, 4, 0}, {8, 4, 0}, {8, 4, 0}}}},
    {FourAligned, EightBytes, {{{8, 4, 0}, {12, 8, 0}, {8, 4, 0}, {8, 4, 0}}}},
    {FourAligned, OneBit, {{{8, 4, 0}, {8, 1, 0}, {8, 4, 0}, {8, 4, 0}}}},
    {WidePointers, OneByte, {{{16, 8, 0}, {2, 1, 0}, {16, 8, 0}, {16, 8, 0}}}},
    {WidePointers, TwoBytes, {{{16, 8, 0}, {4, 2, 0}, {16, 8, 0}, {16, 8, 0}}}},
    {WidePointers, FourBytes, {{{16, 8, 0}, {8, 4, 0}, {16, 8, 0}, {16, 8, 0}}}},
    {WidePointers, EightBytes, {{{16, 8, 0}, {16, 8, 0}, {16, 8, 0}, {16, 8, 0}}}},
    {WidePointers, OneBit, {{{16, 8, 0}, {2, 1, 0}, {16, 8, 0}, {16, 8, 0}}}},
};

// Of a structure of a BYTE and a member of the type: offset of the variable, offset of the member, size.
constexpr Row g_Members[] = {
    {ByteAligned, OneByte, {{{1, 1, 2}, {1, 1, 2}, {1, 1, 2}, {1, 1, 2}}}},
    {ByteAligned, TwoBytes, {{{1, 1, 3}, {1, 1, 3}, {1, 1, 3}, {1, 1, 3}}}},
    {ByteAligned, FourBytes, {{{1, 1, 5}, {1, 1, 5}, {1, 1, 5}, {1, 1, 5}}}},
    {ByteAligned, EightBytes, {{{1, 1, 9}, {1, 1, 9}, {1, 1, 9}, {1, 1, 9}}}},
    {ByteAligned, OneBit, {{{1, 1, 2}, {1, 1, 2}, {1, 1, 2}, {1, 1, 2}}}},
    {FourAligned, OneByte, {{{4, 4, 5}, {4, 4, 5}, {4, 4, 5}, {4, 4, 5}}}},
    {FourAligned, TwoBytes, {{{4, 4, 6}, {4, 4, 6}, {4, 4, 6}, {4, 4, 6}}}},
    {FourAligned, FourBytes, {{{4, 4, 8}, {4, 4, 8}, {4, 4, 8}, {4, 4, 8}}}},
    {FourAligned, EightBytes, {{{4, 4, 12}, {4, 4, 12}, {4, 4, 12}, {4, 4, 12}}}},
    {FourAligned, OneBit, {{{4, 3, 5}, {4, 3, 5}, {4, 3, 5}, {4, 3, 5}}}},
    {WidePointers, OneByte, {{{1, 1, 2}, {1, 1, 2}, {1, 1, 2}, {1, 1, 2}}}},
    {WidePointers, TwoBytes, {{{2, 2, 4}, {2, 2, 4}, {2, 2, 4}, {2, 2, 4}}}},
    {WidePointers, FourBytes, {{{4, 4, 8}, {4, 4, 8}, {4, 4, 8}, {4, 4, 8}}}},
    {WidePointers, EightBytes, {{{8, 8, 16}, {8, 8, 16}, {8, 8, 16}, {8, 8, 16}}}},
    {WidePointers, OneBit, {{{1, 1, 2}, {1, 1, 2}, {1, 1, 2}, {1, 1, 2}}}},
};

// Of a constant array of ten: offset, stride, size.
constexpr Row g_Arrays[] = {
    {ByteAligned, OneByte, {{{1, 1, 10}, {1, 1, 10}, {1, 1, 10}, {1, 1, 10}}}},
    {ByteAligned, TwoBytes, {{{1, 2, 20}, {1, 2, 20}, {1, 2, 20}, {1, 2, 20}}}},
    {ByteAligned, FourBytes, {{{1, 4, 40}, {1, 4, 40}, {1, 4, 40}, {1, 4, 40}}}},
    {ByteAligned, EightBytes, {{{1, 8, 80}, {1, 8, 80}, {1, 8, 80}, {1, 8, 80}}}},
    {ByteAligned, OneBit, {{{1, 0, 2}, {1, 0, 2}, {1, 0, 2}, {1, 0, 2}}}},
    {FourAligned, OneByte, {{{4, 4, 37}, {4, 4, 37}, {4, 4, 37}, {4, 4, 37}}}},
    {FourAligned, TwoBytes, {{{4, 4, 38}, {4, 4, 38}, {4, 4, 38}, {4, 4, 38}}}},
    {FourAligned, FourBytes, {{{4, 4, 40}, {4, 4, 40}, {4, 4, 40}, {4, 4, 40}}}},
    {FourAligned, EightBytes, {{{4, 8, 80}, {4, 8, 80}, {4, 8, 80}, {4, 8, 80}}}},
    {FourAligned, OneBit, {{{1, 0, 5}, {1, 0, 5}, {1, 0, 5}, {1, 0, 5}}}},
    {WidePointers, OneByte, {{{1, 1, 10}, {1, 1, 10}, {1, 1, 10}, {1, 1, 10}}}},
    {WidePointers, TwoBytes, {{{2, 2, 20}, {2, 2, 20}, {2, 2, 20}, {2, 2, 20}}}},
    {WidePointers, FourBytes, {{{4, 4, 40}, {4, 4, 40}, {4, 4, 40}, {4, 4, 40}}}},
    {WidePointers, EightBytes, {{{8, 8, 80}, {8, 8, 80}, {8, 8, 80}, {8, 8, 80}}}},
    {WidePointers, OneBit, {{{1, 0, 2}, {1, 0, 2}, {1, 0, 2}, {1, 0, 2}}}},
};

constexpr std::int32_t g_SizesBits[] = {8, 16, 32, 64, 1};
constexpr std::int32_t g_Alignments[][SizeClassCount] = {
    {1, 1, 1, 1, 1},   // byte-aligned
    {4, 4, 4, 4, 4},   // 4-aligned
    {1, 2, 4, 8, 1},   // 8-byte pointers, each type at a multiple of its size
};

}   // namespace

class LayoutTableTest : public TargetFixture
{
protected:
    enum class Place { Local, Global, Retain, Input, Output, InOut };

    // A fresh target and handler for each cell of the tables; the test case itself is only the frame.
    class Cell : public TargetFixture
    {
    public:
        void TestBody() override {}

        Cell(TargetKind target, Option option)
        {
            std::string formats;
            for (int sizeClass = 0; sizeClass < SizeClassCount; ++sizeClass) {
                std::istringstream names{std::string(g_TypesOfClass[sizeClass])};
                for (std::string name; names >> name;)
                    formats += "<DATATYPE name=\"" + name + "\" size=\"" + std::to_string(g_SizesBits[sizeClass]) +
                               "\" align=\"" + std::to_string(g_Alignments[target][sizeClass]) + "\"/>";
            }
            const bool isWide = target == WidePointers;
            Load(MakeTarget(isWide ? "PointerType=\"ULINT\"" : "PointerType=\"UDINT\"", formats, GetAreas()));
            m_Memory.m_CompatibleLayout = option == Compatible;
            m_Memory.m_OptimiseMemory = option == Packing;
            m_Substitution = option != NoSubstitution;
        }

        Numbers PlaceScalar(const std::string& type, Place place)
        {
            const bool isLocal = place != Place::Global;
            Declare(Type("BYTE"), isLocal)->m_IsRetain = place == Place::Retain;
            CVariable* pConstant = Declare(Type(type), isLocal);
            pConstant->m_IsConstant = true;
            SetFlags(*pConstant, place);
            CVariable* pVariable = Declare(Type(type), isLocal);
            SetFlags(*pVariable, place);
            m_Memory.AllocatePouVariables();
            return {pVariable->m_Offset, pVariable->m_Size, pVariable->m_BitOffset};
        }

        Numbers PlaceMember(const std::string& type)
        {
            Declare(Type("BYTE"));
            CTypeStruct* pStruct = MakeStruct({Type("BYTE"), Type(type)});
            CVariable* pVariable = Declare(pStruct);
            m_Memory.AllocatePouVariables();
            EXPECT_EQ(pVariable->m_Size * 8, pStruct->m_SizeBits);
            return {pVariable->m_Offset, pStruct->m_Members[1]->m_Offset, pVariable->m_Size};
        }

        Numbers PlaceArray(const std::string& type)
        {
            Declare(Type("BYTE"));
            CVariableArray* pVariable = DeclareArray(Type(type), {{0, 9}});
            pVariable->m_IsConstant = true;
            m_Memory.AllocatePouVariables();
            return {pVariable->m_Offset, pVariable->m_Type->AsArray()->m_Stride, pVariable->m_Size};
        }

    private:
        static void SetFlags(CVariable& variable, Place place)
        {
            variable.m_IsRetain = place == Place::Retain;
            variable.m_IsInput = place == Place::Input;
            variable.m_IsOutput = place == Place::Output;
            variable.m_IsInOut = place == Place::InOut;
        }
    };

    template <std::size_t N, typename Measure>
    static void CheckTable(const Row (&table)[N], Measure measure)
    {
        static_assert(N == SizeClassCount * std::size(g_TargetNames));
        for (const Row& row : table) {
            std::istringstream names{std::string(g_TypesOfClass[row.sizeClass])};
            for (std::string name; names >> name;)
                for (int option = 0; option < OptionCount; ++option) {
                    Cell cell(row.target, static_cast<Option>(option));
                    EXPECT_EQ(row.expected[static_cast<std::size_t>(option)], measure(cell, name))
                        << name << " on " << g_TargetNames[row.target] << ", " << g_OptionNames[option];
                }
        }
    }

    template <std::size_t N>
    static void CheckScalars(const Row (&table)[N], Place place)
    {
        CheckTable(table, [place](Cell& cell, const std::string& type) { return cell.PlaceScalar(type, place); });
    }
};

TEST_F(LayoutTableTest, Local) { CheckScalars(g_Plain, Place::Local); }
TEST_F(LayoutTableTest, Global) { CheckScalars(g_Plain, Place::Global); }
TEST_F(LayoutTableTest, Retain) { CheckScalars(g_Plain, Place::Retain); }
TEST_F(LayoutTableTest, Input) { CheckScalars(g_Inputs, Place::Input); }
TEST_F(LayoutTableTest, Output) { CheckScalars(g_Pointers, Place::Output); }
TEST_F(LayoutTableTest, InOut) { CheckScalars(g_Pointers, Place::InOut); }

TEST_F(LayoutTableTest, Member)
{
    CheckTable(g_Members, [](Cell& cell, const std::string& type) { return cell.PlaceMember(type); });
}

TEST_F(LayoutTableTest, ArrayElement)
{
    CheckTable(g_Arrays, [](Cell& cell, const std::string& type) { return cell.PlaceArray(type); });
}
