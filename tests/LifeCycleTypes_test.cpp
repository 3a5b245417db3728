#include "LifeCycleTypes.h"

#include <gtest/gtest.h>

TEST(KeyComponent, BeginsWithEmptyTexts)
{
    const KeyComponent component;
    EXPECT_EQ(component.identifier, "");
    EXPECT_EQ(component.kind, "");
    EXPECT_EQ(NameValuePair().name, "");
}

TEST(SequenceOfKeyComponent, CopiesBothTextsOfAnElement)
{
    KeyComponent source[2];
    source[1].identifier = "plate";
    source[1].kind = "part";
    _SEQUENCE_KeyComponent key;
    key.maximum(2);
    key.length(2);
    key.Assignation(source, 1);
    EXPECT_EQ(key[0].identifier, "");
    EXPECT_EQ(key[1].identifier, "plate");
    EXPECT_EQ(key[1].kind, "part");

    const _SEQUENCE_KeyComponent copy(key);
    EXPECT_EQ(copy.length(), 2);
    EXPECT_EQ(copy[1].kind, "part");
}

TEST(SequenceOfNameValuePair, CopiesTheHandleAsItIs)
{
    int value = 0;
    NameValuePair source[1];
    source[0].name = "initialisation";
    source[0].value = &value;
    _SEQUENCE_NameValuePair criteria;
    criteria.maximum(1);
    criteria.length(1);
    criteria.Assignation(source, 0);
    EXPECT_EQ(criteria[0].name, "initialisation");
    EXPECT_EQ(criteria[0].value, &value);

    _SEQUENCE_NameValuePair copy;
    copy = criteria;
    EXPECT_EQ(copy[0].value, &value);
}

TEST(SequenceOfGenericFactory, CopiesThePointerAsItIs)
{
    int anything = 0;
    GenericFactory_ptr source[1] = {reinterpret_cast<GenericFactory_ptr>(&anything)};
    _SEQUENCE_GenericFactory_ptr factories;
    factories.maximum(1);
    factories.length(1);
    factories.Assignation(source, 0);
    EXPECT_EQ(factories[0], source[0]);
    const _SEQUENCE_GenericFactory_ptr copy(factories);
    EXPECT_EQ(copy[0], source[0]);
}

TEST(SequencesOfLifeCycleTypes, HandTheirElementsOnWhenMoved)
{
    _SEQUENCE_KeyComponent key;
    key.maximum(1);
    key.length(1);
    const KeyComponent* const elements = key.buffer();
    _SEQUENCE_KeyComponent moved(std::move(key));
    EXPECT_EQ(moved.buffer(), elements);
    _SEQUENCE_KeyComponent assigned;
    assigned = std::move(moved);
    EXPECT_EQ(assigned.buffer(), elements);
    EXPECT_EQ(assigned.length(), 1);
}
