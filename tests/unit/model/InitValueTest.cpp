#include "model/InitValue.h"

#include "frontend/ErrorHandler.h"
#include "frontend/SourceLocation.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <string>

namespace
{

constexpr SourceLocation g_Where{3, 7, 3, 9, "a.st"};

std::unique_ptr<CInitValue> Number(std::int64_t value)
{
    return std::make_unique<CInitValue>(value);
}

// The value of element i as text, "none" where there is none.
std::string ElementText(const CInitArray& values, std::int64_t i)
{
    const CInitValue* pValue = values.GetElement(i);
    return pValue ? pValue->GetText() : "none";
}

}   // namespace

TEST(InitValueTest, KindsByConstructor)
{
    const CInitValue none;
    const CInitValue flag(true);
    const CInitValue number(std::int64_t{-5});
    const CInitValue real(2.5);
    const CInitValue word(std::uint32_t{9});
    EXPECT_EQ(none.m_Kind, 0);
    EXPECT_EQ(flag.m_Kind, 1);
    EXPECT_EQ(number.m_Kind, 2);
    EXPECT_EQ(real.m_Kind, 4);
    EXPECT_EQ(word.m_Kind, 8);
    EXPECT_EQ(CInitString(3, "abc").m_Kind, 16);
    EXPECT_EQ(CInitArray().m_Kind, 0);
    EXPECT_EQ(CInitStruct().m_Kind, 0);
    EXPECT_TRUE(flag.IsBool() && !flag.IsSigned() && !flag.IsInteger());
    EXPECT_TRUE(number.IsSigned() && number.IsInteger() && !number.IsReal());
    EXPECT_TRUE(real.IsReal() && !real.IsInteger());
    EXPECT_TRUE(word.IsUnsigned() && word.IsInteger() && !word.IsSigned());
    EXPECT_FALSE(none.IsString() || none.IsArray() || none.IsStruct());
    EXPECT_TRUE(flag.GetBool());
    EXPECT_EQ(number.GetInt64(), -5);
    EXPECT_EQ(real.GetDouble(), 2.5);
    EXPECT_EQ(word.GetUnsigned(), 9u);
}

TEST(InitValueTest, FieldReadInAnotherForm)
{
    EXPECT_EQ(CInitValue(std::int64_t{-1}).GetUnsigned(), 0xFFFFFFFFu);
    EXPECT_EQ(CInitValue(true).GetInt64(), 1);
    EXPECT_EQ(CInitValue(1.0).GetInt64(), 0x3FF0000000000000);
    EXPECT_FALSE(CInitValue(1.0).GetBool());
    EXPECT_TRUE(CInitValue(std::int64_t{3}).GetBool());
    EXPECT_FALSE(CInitValue(std::int64_t{256}).GetBool());
    EXPECT_EQ(CInitValue(std::int64_t{0}).GetDouble(), 0.0);
    EXPECT_EQ(CInitString(12, "abc").GetInt64(), 12);
}

TEST(InitValueTest, TextWithAndWithoutZero)
{
    EXPECT_EQ(CInitValue(std::int64_t{0}).GetText(false), "");
    EXPECT_EQ(CInitValue(std::int64_t{0}).GetText(true), "0");
    EXPECT_EQ(CInitValue(std::int64_t{0}).GetText(), "0");
    EXPECT_EQ(CInitValue(std::int64_t{-12}).GetText(false), "-12");
    EXPECT_EQ(CInitValue(std::numeric_limits<std::int64_t>::min()).GetText(false), "-9223372036854775808");
    EXPECT_EQ(CInitValue(false).GetText(false), "");
    EXPECT_EQ(CInitValue(false).GetText(true), "0");
    EXPECT_EQ(CInitValue(true).GetText(false), "1");
    EXPECT_EQ(CInitValue(0.5).GetText(), "0.500000");
    EXPECT_EQ(CInitValue(0.0).GetText(false), "");
    EXPECT_EQ(CInitValue(0.0).GetText(true), "0.000000");
    EXPECT_EQ(CInitValue(1.0e-7).GetText(false), "0.000000");
    EXPECT_EQ(CInitValue(std::uint32_t{0}).GetText(false), "");
    EXPECT_EQ(CInitValue(std::uint32_t{0}).GetText(true), "0");
    EXPECT_EQ(CInitValue(std::uint32_t{40000}).GetText(false), "40000");
    EXPECT_EQ(CInitValue(std::uint32_t{4294967295}).GetText(false), "-1");
    EXPECT_EQ(CInitValue().GetText(true), "");
}

TEST(InitValueTest, Zero)
{
    EXPECT_TRUE(CInitValue(std::int64_t{0}).IsZero());
    EXPECT_TRUE(CInitValue(std::uint32_t{0}).IsZero());
    EXPECT_TRUE(CInitValue(0.0).IsZero());
    EXPECT_FALSE(CInitValue(std::int64_t{1}).IsZero());
    EXPECT_FALSE(CInitValue(1.0e-7).IsZero());
    EXPECT_FALSE(CInitValue(false).IsZero());
    EXPECT_FALSE(CInitValue().IsZero());
    EXPECT_FALSE(CInitString(0, "").IsZero());
    EXPECT_FALSE(CInitArray().IsZero());
}

TEST(InitValueTest, CloneKeepsKindAndValue)
{
    const std::unique_ptr<CInitValue> pClone = CInitValue(2.5).Clone();
    EXPECT_TRUE(pClone->IsReal());
    EXPECT_EQ(pClone->GetDouble(), 2.5);
}

TEST(InitStringTest, KeepsLengthAndWholeText)
{
    const CInitString string(3, "abcde");
    EXPECT_EQ(string.m_Length, 3);
    EXPECT_EQ(string.GetText(false), "abcde");
    EXPECT_EQ(string.GetText(), "abcde");
    EXPECT_TRUE(string.IsString());
    EXPECT_EQ(CInitString(5, "").GetText(true), "");
    const std::unique_ptr<CInitValue> pClone = string.Clone();
    EXPECT_TRUE(pClone->IsString());
    EXPECT_EQ(pClone->GetText(), "abcde");
    EXPECT_EQ(static_cast<const CInitString&>(*pClone).m_Length, 3);
}

TEST(InitArrayTest, TextsAndElements)
{
    CInitArray values;
    values.Add(Number(1), 1);
    values.Add(Number(2), 3);
    values.Add(Number(4), 1);
    EXPECT_TRUE(values.IsArray());
    EXPECT_EQ(values.GetBracketedText(), "[1,3(2),4]");
    EXPECT_EQ(values.GetText(true), "1 3(2) 4 ");
    EXPECT_EQ(ElementText(values, 0), "1");
    EXPECT_EQ(ElementText(values, 1), "2");
    EXPECT_EQ(ElementText(values, 3), "2");
    EXPECT_EQ(ElementText(values, 4), "4");
    EXPECT_EQ(ElementText(values, 5), "none");
    EXPECT_EQ(ElementText(values, -1), "none");
}

TEST(InitArrayTest, ElementsInAnyOrder)
{
    CInitArray values;
    for (int i = 0; i < 5; ++i) values.Add(Number(i), 2);
    for (const std::int64_t i : {9, 0, 4, 4, 3, 10, 8, 1})
        EXPECT_EQ(ElementText(values, i), i < 10 ? std::to_string(i / 2) : "none") << i;
    // What is added behind the end is found from there.
    EXPECT_EQ(ElementText(values, 10), "none");
    values.Add(Number(5), 1);
    EXPECT_EQ(ElementText(values, 10), "5");
}

// A count of 0 covers nothing, a negative one takes positions back.
TEST(InitArrayTest, CountsThatAreNotPositive)
{
    CInitArray values;
    values.Add(Number(1), 2);     // sum 2: elements 0 and 1
    values.Add(Number(2), 0);     // sum 2
    values.Add(Number(3), -1);    // sum 1
    values.Add(Number(4), 3);     // sum 4: elements 2 and 3
    EXPECT_EQ(ElementText(values, 0), "1");
    EXPECT_EQ(ElementText(values, 1), "1");
    EXPECT_EQ(ElementText(values, 2), "4");
    EXPECT_EQ(ElementText(values, 3), "4");
    EXPECT_EQ(ElementText(values, 4), "none");
    EXPECT_EQ(ElementText(values, 1), "1");
}

TEST(InitArrayTest, HugeCounts)
{
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    CInitArray values;
    for (int i = 1; i <= 4; ++i) values.Add(Number(i), most);
    EXPECT_EQ(ElementText(values, std::int64_t{most} - 1), "1");
    EXPECT_EQ(ElementText(values, most), "2");
    EXPECT_EQ(ElementText(values, std::int64_t{most} * 4 - 1), "4");
    EXPECT_EQ(ElementText(values, std::int64_t{most} * 4), "none");
    EXPECT_EQ(ElementText(values, std::numeric_limits<std::int64_t>::max()), "none");
}

// A million elements walked in order: walking from the start for each would take hours.
TEST(InitArrayTest, RisingPositionsAreCheap)
{
    constexpr int count = 1000000;
    CInitArray values;
    for (int i = 0; i < count; ++i) values.Add(Number(i), 1);
    std::int64_t sum = 0;
    for (int i = 0; i < count; ++i) sum += values.GetElement(i)->GetInt64();
    EXPECT_EQ(sum, std::int64_t{count} * (count - 1) / 2);
}

TEST(InitArrayTest, TextShowsTenEntries)
{
    CInitArray values;
    for (int i = 0; i < 12; ++i) values.Add(Number(i), 1);
    EXPECT_EQ(values.GetBracketedText(), "[0,1,2,3,4,5,6,7,8,9]");
    EXPECT_EQ(values.GetText(true), "0 1 2 3 4 5 6 7 8 9 ");
    EXPECT_EQ(ElementText(values, 11), "11");
}

TEST(InitArrayTest, NullEntriesAreSkippedInTexts)
{
    CInitArray values;
    values.Add(nullptr, 2);
    values.Add(Number(7), 1);
    EXPECT_EQ(values.GetBracketedText(), "[7]");
    EXPECT_EQ(values.GetText(true), "7 ");
    EXPECT_EQ(values.GetElement(1), nullptr);
    EXPECT_EQ(ElementText(values, 2), "7");
    EXPECT_EQ(CInitArray().GetBracketedText(), "[]");
    EXPECT_EQ(CInitArray().GetText(true), "");
}

TEST(InitArrayTest, ZeroesInTexts)
{
    CInitArray values;
    values.Add(Number(0), 1);
    values.Add(Number(0), 3);
    EXPECT_EQ(values.GetText(true), "0 3(0) ");
    EXPECT_EQ(values.GetText(false), " 3() ");
    EXPECT_EQ(values.GetBracketedText(), "[0,3(0)]");
}

TEST(InitArrayTest, NestedTexts)
{
    std::unique_ptr<CInitArray> pInner = std::make_unique<CInitArray>();
    pInner->Add(Number(1), 2);
    CInitArray values;
    values.Add(std::move(pInner), 3);
    EXPECT_EQ(values.GetBracketedText(), "[3([2(1)])]");
    EXPECT_EQ(values.GetText(true), "3(2(1) ) ");
}

TEST(InitArrayTest, CloneIsDeep)
{
    CInitArray values;
    values.Add(Number(1), 1);
    values.Add(nullptr, 4);
    const std::unique_ptr<CInitValue> pClone = values.Clone();
    ASSERT_TRUE(pClone->IsArray());
    const CInitArray& clone = static_cast<const CInitArray&>(*pClone);
    ASSERT_EQ(clone.m_Elements.size(), 2u);
    EXPECT_NE(clone.m_Elements[0], values.m_Elements[0]);
    EXPECT_EQ(clone.m_Elements[0]->GetInt64(), 1);
    EXPECT_EQ(clone.m_Elements[1], nullptr);
    EXPECT_EQ(clone.m_Repeats[1], 4);
}

TEST(InitStructTest, MembersByName)
{
    CErrorHandler errors;
    CInitStruct values;
    values.Add("Speed", Number(5), g_Where, errors);
    values.Add("level", Number(0), g_Where, errors);
    EXPECT_TRUE(values.IsStruct());
    ASSERT_NE(values.Find("SPEED"), nullptr);
    EXPECT_EQ(values.Find("SPEED")->GetInt64(), 5);
    EXPECT_EQ(values.FindExact("Speed"), nullptr);
    EXPECT_EQ(values.FindExact("speed"), values.Find("speed"));
    EXPECT_EQ(values.Find("none"), nullptr);
    EXPECT_EQ(values.GetBracketedText(), "(speed:=5,level:=0)");
    EXPECT_EQ(values.GetText(true), "speed 5 level 0 ");
    EXPECT_EQ(values.GetText(false), "speed 5 level  ");
    EXPECT_EQ(CInitStruct().GetBracketedText(), "()");
}

TEST(InitStructTest, SecondValueWarnsOnceAndStands)
{
    CErrorHandler errors;
    CInitStruct values;
    testing::internal::CaptureStdout();
    values.Add("speed", Number(5), g_Where, errors);
    values.Add("level", Number(6), g_Where, errors);
    values.Add("SPEED", Number(7), g_Where, errors);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "a.st(3,7) : warning, element SPEED already initialized\n");
    EXPECT_EQ(errors.GetWarningCount(), 1);
    EXPECT_EQ(errors.GetErrorCount(), 0);
    EXPECT_EQ(values.GetBracketedText(), "(speed:=7,level:=6)");
}

TEST(InitStructTest, CloneIsDeepAndSilent)
{
    CErrorHandler errors;
    CInitStruct values;
    values.Add("a", Number(1), g_Where, errors);
    values.Add("b", nullptr, g_Where, errors);
    const std::unique_ptr<CInitValue> pClone = values.Clone();
    ASSERT_TRUE(pClone->IsStruct());
    const CInitStruct& clone = static_cast<const CInitStruct&>(*pClone);
    ASSERT_NE(clone.Find("A"), nullptr);
    EXPECT_NE(clone.Find("A"), values.Find("A"));
    EXPECT_EQ(clone.Find("A")->GetInt64(), 1);
    EXPECT_EQ(clone.Find("b"), nullptr);
    EXPECT_EQ(clone.m_Members.size(), 2u);
    EXPECT_EQ(errors.GetWarningCount(), 0);
}

TEST(InitStructTest, NestedText)
{
    CErrorHandler errors;
    std::unique_ptr<CInitStruct> pInner = std::make_unique<CInitStruct>();
    pInner->Add("x", Number(1), g_Where, errors);
    CInitStruct values;
    values.Add("p", std::move(pInner), g_Where, errors);
    EXPECT_EQ(values.GetBracketedText(), "(p:=(x:=1))");
    EXPECT_EQ(values.GetText(true), "p x 1  ");
}

TEST(InitValueTest, StructuresAreTheSameByNamesOrderAndValues)
{
    CErrorHandler errors;
    const auto make = [&errors](std::initializer_list<std::pair<const char*, std::int64_t>> members) {
        auto pStruct = std::make_unique<CInitStruct>();
        for (const auto& [name, value] : members) pStruct->Add(name, Number(value), g_Where, errors);
        return pStruct;
    };
    const auto pFirst = make({{"a", 1}, {"b", 2}});
    EXPECT_TRUE(IsSameInit(pFirst.get(), make({{"A", 1}, {"b", 2}}).get()));
    EXPECT_FALSE(IsSameInit(pFirst.get(), make({{"b", 2}, {"a", 1}}).get()));
    EXPECT_FALSE(IsSameInit(pFirst.get(), make({{"a", 1}, {"b", 3}}).get()));
    EXPECT_FALSE(IsSameInit(pFirst.get(), make({{"a", 1}}).get()));
    EXPECT_FALSE(IsSameInit(pFirst.get(), Number(1).get()));
    EXPECT_FALSE(IsSameInit(Number(1).get(), pFirst.get()));
    EXPECT_FALSE(IsSameInit(pFirst.get(), nullptr));
    EXPECT_TRUE(IsSameInit(make({{"a", 0}}).get(), nullptr)) << "what prints nothing counts as no value";
}

TEST(InitValueTest, ArraysAreTheSameByCountsAndValues)
{
    const auto make = [](std::initializer_list<std::pair<std::int64_t, std::int32_t>> entries) {
        auto pArray = std::make_unique<CInitArray>();
        for (const auto& [value, repeat] : entries) pArray->Add(Number(value), repeat);
        return pArray;
    };
    const auto pFirst = make({{1, 2}, {3, 1}});
    EXPECT_TRUE(IsSameInit(pFirst.get(), make({{1, 2}, {3, 1}}).get()));
    EXPECT_FALSE(IsSameInit(pFirst.get(), make({{1, 1}, {3, 1}}).get()));
    EXPECT_FALSE(IsSameInit(pFirst.get(), make({{1, 2}, {4, 1}}).get()));
    EXPECT_FALSE(IsSameInit(pFirst.get(), make({{1, 2}}).get()));
    EXPECT_FALSE(IsSameInit(pFirst.get(), Number(1).get()));
}

TEST(InitValueTest, AKindIsPartOfAValue)
{
    EXPECT_TRUE(IsSameInit(Number(5).get(), Number(5).get()));
    EXPECT_FALSE(IsSameInit(Number(5).get(), Number(6).get()));
    EXPECT_FALSE(IsSameInit(Number(5).get(), std::make_unique<CInitValue>(std::uint32_t{5}).get()));
    EXPECT_TRUE(IsSameInit(nullptr, Number(0).get()));
    EXPECT_TRUE(IsSameInit(nullptr, nullptr));
}
