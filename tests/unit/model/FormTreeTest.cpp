#include "model/FormTree.h"

#include "model/Pou.h"
#include "model/Type.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace
{

class FormTreeTest : public testing::Test
{
protected:
    CFunction& Form(std::initializer_list<CType*> parameters)
    {
        m_Forms.push_back(std::make_unique<CFunction>("f", SourceLocation{}));
        for (CType* pType : parameters) {
            m_Forms.back()->m_Parameters.push_back(std::make_unique<CVariable>());
            m_Forms.back()->m_Parameters.back()->m_Type = pType;
        }
        return *m_Forms.back();
    }

    // The place behind all of the types; g_NoPlace where no form goes that way.
    CFormTree::Place Follow(std::size_t count, std::initializer_list<const CType*> types) const
    {
        CFormTree::Place place = m_Tree.Begin(count);
        for (const CType* pType : types) {
            if (place == CFormTree::g_NoPlace) return place;
            place = m_Tree.Step(place, pType);
        }
        return place;
    }

    CFormTree m_Tree;
    std::vector<std::unique_ptr<CFunction>> m_Forms;
    CType m_Int{"INT"};
    CType m_Real{"REAL"};
    CType m_Speed{"Speed", &m_Int};
};

}   // namespace

TEST_F(FormTreeTest, EmptyTreeLeadsNowhere)
{
    EXPECT_EQ(m_Tree.Begin(0), CFormTree::g_NoPlace);
    EXPECT_EQ(m_Tree.Begin(1), CFormTree::g_NoPlace);
}

TEST_F(FormTreeTest, FormIsFoundByAllOfItsTypes)
{
    CFunction& mixed = Form({&m_Int, &m_Real});
    CFunction& equal = Form({&m_Int, &m_Int});
    EXPECT_TRUE(m_Tree.Add(mixed));
    EXPECT_TRUE(m_Tree.Add(equal));
    EXPECT_EQ(&m_Tree.GetFirst(Follow(2, {&m_Int, &m_Real})), &mixed);
    EXPECT_EQ(&m_Tree.GetFirst(Follow(2, {&m_Int, &m_Int})), &equal);
    EXPECT_EQ(Follow(2, {&m_Real, &m_Int}), CFormTree::g_NoPlace);
}

TEST_F(FormTreeTest, CountsAreKeptApart)
{
    CFunction& one = Form({&m_Int});
    CFunction& two = Form({&m_Int, &m_Int});
    m_Tree.Add(two);
    EXPECT_EQ(m_Tree.Begin(1), CFormTree::g_NoPlace);
    m_Tree.Add(one);
    EXPECT_EQ(&m_Tree.GetFirst(Follow(1, {&m_Int})), &one);
    EXPECT_EQ(m_Tree.Begin(3), CFormTree::g_NoPlace);
}

TEST_F(FormTreeTest, FirstFormBelowAPlaceIsTheOneDeclaredFirst)
{
    CFunction& first = Form({&m_Int, &m_Real});
    CFunction& second = Form({&m_Int, &m_Int});
    CFunction& third = Form({&m_Real, &m_Int});
    m_Tree.Add(first);
    m_Tree.Add(second);
    m_Tree.Add(third);
    EXPECT_EQ(&m_Tree.GetFirst(m_Tree.Begin(2)), &first);
    EXPECT_EQ(&m_Tree.GetFirst(Follow(2, {&m_Int})), &first);
    EXPECT_EQ(&m_Tree.GetFirst(Follow(2, {&m_Real})), &third);
}

TEST_F(FormTreeTest, LaterFormOfTheSameTypesIsNeverTheFirst)
{
    CFunction& first = Form({&m_Int});
    m_Tree.Add(first);
    EXPECT_FALSE(m_Tree.Add(Form({&m_Int})));
    EXPECT_EQ(&m_Tree.GetFirst(Follow(1, {&m_Int})), &first);
}

TEST_F(FormTreeTest, AliasesStandForTheirTypes)
{
    CFunction& form = Form({&m_Int});
    m_Tree.Add(form);
    EXPECT_EQ(&m_Tree.GetFirst(Follow(1, {&m_Speed})), &form);
    EXPECT_FALSE(m_Tree.Add(Form({&m_Speed})));
}

TEST_F(FormTreeTest, UnknownTypeEqualsOnlyAnother)
{
    CFunction& form = Form({nullptr});
    m_Tree.Add(form);
    EXPECT_EQ(Follow(1, {&m_Int}), CFormTree::g_NoPlace);
    EXPECT_EQ(&m_Tree.GetFirst(Follow(1, {nullptr})), &form);
}

TEST_F(FormTreeTest, FormWithoutParametersEndsWhereItBegins)
{
    CFunction& form = Form({});
    EXPECT_TRUE(m_Tree.Add(form));
    EXPECT_EQ(&m_Tree.GetFirst(m_Tree.Begin(0)), &form);
    EXPECT_FALSE(m_Tree.Add(Form({})));
}
