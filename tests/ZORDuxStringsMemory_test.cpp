#include "ZORDuxStrings.h"

#include "HugeText.h"
#include "NewText.h"

#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <string>

// The program's own malloc and free, which tell what the functions ask for and can refuse it.
namespace
{
struct {
    bool watched = false;
    bool refused = false;
    int blocks = 0;       // made and not given back
    std::size_t size = 0; // of the last one asked for
} memory;

// Calls the function with the eyes open: results are compared afterwards.
template <class Function>
auto Watch(Function iFunction, bool iRefused = false)
{
    memory = {true, iRefused, 0, 0};
    const auto result = iFunction();
    memory.watched = false;
    return result;
}
} // namespace

extern "C" {
void* __libc_malloc(std::size_t);
void __libc_free(void*);

void* malloc(std::size_t iSize)
{
    if (!memory.watched)
        return __libc_malloc(iSize);
    memory.size = iSize;
    if (memory.refused)
        return nullptr;
    ++memory.blocks;
    return __libc_malloc(iSize);
}

void free(void* iBlock)
{
    if (memory.watched && iBlock)
        --memory.blocks;
    __libc_free(iBlock);
}
}

namespace
{
using Maker = char* (*)();
const struct {
    const char* name;
    Maker make;
    std::size_t size;
} kNewStrings[] = {
    {"left", [] { return left("abcdef", 2); }, 7},
    {"substr", [] { return substr("abcdef", 3, 2); }, 7},
    {"insert", [] { return insert("XY", "abc", 1); }, 6},
    {"overly inside", [] { return overly("XY", "abcd", 2); }, 5},
    {"overly past the end", [] { return overly("XY", "abcd", 4); }, 6},
    {"pad", [] { return pad("ab", 4, '*'); }, 5},
    {"strip", [] { return strip("  a ", "L", " "); }, 5},
    {"word", [] { return word("one two", 1); }, 4},
    {"subword", [] { return subword("  one two ", 2, 1); }, 11},
};
} // namespace

TEST(NewStrings, TakeAsMuchRoomAsTheirRuleSays)
{
    for (const auto& row : kNewStrings) {
        const NewText made(Watch(row.make));
        EXPECT_NE(made, nullptr) << row.name;
        EXPECT_EQ(memory.size, row.size) << row.name;
        EXPECT_EQ(memory.blocks, 1) << row.name;
    }
}

TEST(NewStrings, AreNullWhenThereIsNoMemory)
{
    for (const auto& row : kNewStrings)
        EXPECT_EQ(Watch(row.make, true), nullptr) << row.name;
    EXPECT_EQ(Watch([] { return word("one", 2); }, true), nullptr);
}

TEST(pad, AsksForMoreThanFourGigabytesOfItsLargestLength)
{
    EXPECT_EQ(Watch([] { return pad("ab", 4294967295U, '*'); }, true), nullptr);
    EXPECT_EQ(memory.size, std::size_t(4294967296));
}

TEST(word, KeepsACopyOfATextThatHasNoSuchWord)
{
    EXPECT_EQ(Watch([] { return word("one two", 3); }), nullptr);
    EXPECT_EQ(memory.blocks, 1);
    EXPECT_EQ(memory.size, 8U);
}

TEST(word, KeepsNothingWhenThereIsNothingToSearch)
{
    for (const char* text : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_EQ(Watch([=] { return word(text, 1); }), nullptr);
        EXPECT_EQ(memory.size, 0U);
    }
    EXPECT_EQ(Watch([] { return word("one", 0); }), nullptr);
    EXPECT_EQ(memory.size, 0U);
}

TEST(subword, KeepsNothingWhenThereIsNoSuchWord)
{
    EXPECT_EQ(Watch([] { return subword("one two", 3, 1); }), nullptr);
    EXPECT_EQ(memory.blocks, 0);
    const NewText made(Watch([] { return subword("one two", 1, 5); }));
    EXPECT_EQ(memory.blocks, 1);
}

TEST(wordpos, AsksForNoMemory)
{
    EXPECT_EQ(Watch([] { return wordpos("two ", "one two", 1); }), 2);
    EXPECT_EQ(memory.size, 0U);
    EXPECT_EQ(Watch([] { return wordpos("four", "one two", 1); }), 0);
    EXPECT_EQ(memory.size, 0U);
}

TEST(Functions, ThatMakeNoNewStringAskForNoMemory)
{
    char text[] = "  banana ";
    EXPECT_EQ(Watch([&] { return cswap('a', 'b', text, 1); }), 3U);
    EXPECT_STREQ(Watch([&] { return upper(lower(qstrip(text))); }), "BBNBNB");
    EXPECT_STREQ(Watch([&] { return right(text, 2); }), "NB");
    EXPECT_STREQ(Watch([&] { return xword(text, 1); }), "BBNBNB");
    EXPECT_EQ(Watch([&] { return pos("N", text, 1) + wordlen(text, 1); }), 9);
    EXPECT_EQ(memory.size, 0U);
}

TEST(substr, RefusesTheEndOfAHugeTextWhereTheSumWrapsAround)
{
    const HugeText huge;
    ASSERT_EQ(strlen(huge), HugeText::kLength);
    // The last position is 4,999,999,999, which is 705,032,703 in 32 bits.
    EXPECT_EQ(substr(huge, 2500000000U, 2500000000U), nullptr);
    EXPECT_EQ(right(huge, 2999999999U), huge + 1);
    EXPECT_EQ(static_cast<unsigned>(pos("x", huge, 2999999999U)), 2999999999U);
    EXPECT_EQ(pos("x", huge, 3000000001U), 0);
}
