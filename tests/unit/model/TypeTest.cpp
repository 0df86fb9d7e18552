#include "model/Type.h"

#include "model/TypeAny.h"
#include "model/TypeArray.h"
#include "model/TypeString.h"
#include "model/TypeStruct.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace
{

// Letters of the group tests that hold: b BOOL, s signed, u unsigned, i integer, r real, n numeric, t bit string.
std::string GroupsOf(const CType& type)
{
    std::string groups;
    if (type.IsBool()) groups += 'b';
    if (type.IsSigned()) groups += 's';
    if (type.IsUnsigned()) groups += 'u';
    if (type.IsInteger()) groups += 'i';
    if (type.IsReal()) groups += 'r';
    if (type.IsNumeric()) groups += 'n';
    if (type.IsBitString()) groups += 't';
    return groups;
}

// Letters of the class tests that hold: S string, A any, a array, u array user type, s structure, f function block.
std::string ClassesOf(const CType& type)
{
    std::string classes;
    if (type.IsString()) classes += 'S';
    if (type.IsAny()) classes += 'A';
    if (type.IsArray()) classes += 'a';
    if (type.IsArrayUser()) classes += 'u';
    if (type.IsStruct()) classes += 's';
    if (type.IsStructFB()) classes += 'f';
    return classes;
}

}   // namespace

TEST(TypeTest, GroupsByName)
{
    const std::pair<const char*, const char*> expected[] = {
        {"BOOL", "b"},   {"SINT", "sin"},  {"INT", "sin"},   {"DINT", "sin"},        {"LINT", "sin"},
        {"USINT", "uin"}, {"UINT", "uin"}, {"UDINT", "uin"}, {"ULINT", "uin"},       {"REAL", "rn"},
        {"LREAL", "rn"}, {"BYTE", "t"},    {"WORD", "t"},    {"DWORD", "t"},         {"LWORD", "t"},
        {"TIME", ""},    {"DATE", ""},     {"TIME_OF_DAY", ""}, {"DATE_AND_TIME", ""}, {"ERROR", ""},
        {"int", ""},     {"Bool", ""},     {"INTX", ""},     {"", ""},
    };
    for (const auto& [name, groups] : expected) EXPECT_EQ(GroupsOf(CType(name)), groups) << name;
}

TEST(TypeTest, NewTypeIsUnknown)
{
    const CType type("INT");
    EXPECT_TRUE(type.m_Allowed);
    EXPECT_FALSE(type.m_InitValue);
    EXPECT_EQ(type.m_Name, "INT");
    EXPECT_TRUE(type.IsNotAlias());
    EXPECT_TRUE(type.IsElementary());
    EXPECT_EQ(type.m_AliasOf, nullptr);
    EXPECT_EQ(type.m_SizeBits, -1);
    EXPECT_EQ(type.m_Align, -1);
}

TEST(TypeTest, AliasOfAliasAnswersForItsBase)
{
    CType base("BOOL");
    base.SetSizeBytes(1);
    base.SetAlign(4);
    CType alias("flag", &base);
    CType second("marker", &alias);
    EXPECT_TRUE(second.IsBool());
    EXPECT_EQ(second.GetBaseType(), &base);
    EXPECT_EQ(alias.GetBaseType(), &base);
    EXPECT_EQ(base.GetBaseType(), &base);
    EXPECT_EQ(second.m_AliasOf, &alias);
    EXPECT_FALSE(second.IsNotAlias());
    EXPECT_TRUE(second.IsElementary());
    EXPECT_EQ(second.m_SizeBits, 8);
    EXPECT_EQ(second.m_Align, 4);
}

TEST(TypeTest, AliasTakesGroupsFromItsBaseAlone)
{
    CType base("REAL");
    EXPECT_EQ(GroupsOf(CType("INT", &base)), "rn");
    EXPECT_EQ(GroupsOf(CType("speed", &base)), "rn");
}

// A chain as long as a source can be answers at once.
TEST(TypeTest, LongAliasChain)
{
    constexpr std::size_t length = 100000;
    std::vector<std::unique_ptr<CType>> types;
    types.push_back(std::make_unique<CType>("DINT"));
    for (std::size_t i = 1; i < length; ++i) types.push_back(std::make_unique<CType>("t", types.back().get()));
    EXPECT_EQ(types.back()->GetBaseType(), types.front().get());
    EXPECT_TRUE(types.back()->IsSigned());
}

TEST(TypeTest, SizeIsKeptInBits)
{
    CType type("t");
    type.SetSizeBytes(3);
    type.SetAlign(2);
    EXPECT_EQ(type.m_SizeBits, 24);
    EXPECT_EQ(type.m_Align, 2);
}

TEST(TypeTest, InitText)
{
    CType type("INT");
    EXPECT_EQ(type.GetInitText(), "NULL");
    type.m_InitValue = std::make_unique<CInitValue>(std::int64_t{0});
    EXPECT_EQ(type.GetInitText(), "0");
}

TEST(TypeTest, Classes)
{
    CType element("INT");
    CTypeString string("STRING");
    CTypeAny any("ANY_INT");
    CTypeArray array("INT[]", &element);
    CTypeArrayUser user("row", &element, &array, nullptr);
    CTypeStruct structure("tank");
    CTypeStructFB block("Timer");
    EXPECT_EQ(ClassesOf(element), "");
    EXPECT_EQ(ClassesOf(string), "S");
    EXPECT_EQ(ClassesOf(any), "A");
    EXPECT_EQ(ClassesOf(array), "a");
    EXPECT_EQ(ClassesOf(user), "au");
    EXPECT_EQ(ClassesOf(structure), "s");
    EXPECT_EQ(ClassesOf(block), "sf");
    EXPECT_EQ(ClassesOf(CType("rows", &user)), "au");
    EXPECT_EQ(ClassesOf(CType("timer2", &block)), "sf");
    EXPECT_FALSE(string.IsElementary());
    EXPECT_TRUE(structure.IsElementary());
}

TEST(TypeTest, ClassesOfTheBaseType)
{
    CType element("INT");
    CTypeArray array("INT[]", &element);
    CTypeArrayUser user("row", &element, &array, nullptr);
    CTypeStruct structure("tank");
    CTypeStructFB block("Timer");
    CTypeAny any("ANY_INT");
    CType alias("rows", &user);
    EXPECT_EQ(alias.AsArray(), &user);
    EXPECT_EQ(alias.AsArrayUser(), &user);
    EXPECT_EQ(array.AsArrayUser(), nullptr);
    EXPECT_EQ(structure.AsStruct(), &structure);
    EXPECT_EQ(structure.AsStructFB(), nullptr);
    EXPECT_EQ(block.AsStruct(), &block);
    EXPECT_EQ(block.AsStructFB(), &block);
    EXPECT_EQ(any.AsAny(), &any);
    EXPECT_EQ(element.AsAny(), nullptr);
    EXPECT_EQ(element.AsArray(), nullptr);
    EXPECT_EQ(element.AsStruct(), nullptr);
    EXPECT_TRUE(array.IsAggregate());
    EXPECT_TRUE(block.IsAggregate());
    EXPECT_FALSE(element.IsAggregate());
}

TEST(TypeAnyTest, LeavesOfNestedSets)
{
    CType first("SINT");
    CType second("INT");
    CType third("REAL");
    CTypeAny inner("ANY_INT");
    inner.AddType(&first);
    inner.AddType(&second);
    CTypeAny outer("ANY_NUM");
    outer.AddType(&inner);
    outer.AddType(&third);
    EXPECT_EQ(outer.GetLeafCount(), 3);
    EXPECT_EQ(outer.GetLeaf(0), &first);
    EXPECT_EQ(outer.GetLeaf(1), &second);
    EXPECT_EQ(outer.GetLeaf(2), &third);
    EXPECT_EQ(outer.GetLeaf(3), nullptr);
    EXPECT_EQ(outer.GetLeaf(-1), nullptr);
    EXPECT_EQ(CTypeAny("ANY").GetLeafCount(), 0);
}

TEST(TypeArrayTest, InitTextLeavesTheCountOpen)
{
    CType element("INT");
    CTypeArray array("INT[]", &element);
    EXPECT_EQ(array.GetInitText(), "[(${element})NULL]");
    element.m_InitValue = std::make_unique<CInitValue>(std::int64_t{0});
    EXPECT_EQ(array.GetInitText(), "[(${element})0]");
    CTypeArray outer("INT[][]", &array);
    EXPECT_EQ(outer.GetInitText(), "[(${element})[(${element})0]]");
    CTypeArrayUser user("row", &element, &array, nullptr);
    EXPECT_EQ(user.GetInitText(), "[(${element})0]");
    EXPECT_EQ(CTypeArray("[]", nullptr).GetInitText(), "[(${element})NULL]");
}

TEST(TypeArrayTest, NewArray)
{
    CType element("INT");
    const CTypeArray array("INT[]", &element);
    EXPECT_EQ(array.m_Element, &element);
    EXPECT_EQ(array.m_Stride, -1);
    EXPECT_EQ(array.m_SizeBits, -1);
}

TEST(TypeArrayTest, InnermostStride)
{
    CType element("INT");
    CTypeArray inner("INT[]", &element);
    inner.m_Stride = 2;
    CType alias("row", &inner);
    CTypeArray outer("row[]", &alias);
    outer.m_Stride = 20;
    EXPECT_EQ(inner.GetInnermostStride(), 2);
    EXPECT_EQ(outer.GetInnermostStride(), 2);
}

TEST(TypeArrayTest, DeepNesting)
{
    constexpr std::size_t depth = 100000;
    CType element("INT");
    std::vector<std::unique_ptr<CTypeArray>> types;
    types.push_back(std::make_unique<CTypeArray>("a", &element));
    types.front()->m_Stride = 2;
    for (std::size_t i = 1; i < depth; ++i) types.push_back(std::make_unique<CTypeArray>("a", types.back().get()));
    EXPECT_EQ(types.back()->GetInnermostStride(), 2);
    const std::string_view levelText = "[(${element})]";
    EXPECT_EQ(types.back()->GetInitText().size(), depth * levelText.size() + 4);   // "NULL" in the middle
}

TEST(TypeArrayUserTest, KeepsIndexAndPlainType)
{
    CType element("INT");
    CTypeArray array("INT[]", &element);
    std::unique_ptr<CArrayOfArrayIndex> pIndex = std::make_unique<CArrayOfArrayIndex>();
    const CArrayOfArrayIndex* pGiven = pIndex.get();
    const CTypeArrayUser user("row", &element, &array, std::move(pIndex));
    EXPECT_EQ(user.m_Index.get(), pGiven);
    EXPECT_EQ(user.m_ElementType, &array);
    EXPECT_EQ(user.m_Element, &element);
}
