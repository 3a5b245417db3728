#include "ZORDuxStrings.h"

#include "NewText.h"
#include "StringComparison.h"
#include "StringModel.h"

#include <gtest/gtest.h>

#include <random>

namespace
{
// Arguments that meet each other often: few different characters, numbers about as large as the
// texts, now and then a very large one.
class Arguments
{
public:
    explicit Arguments(unsigned iSeed) : _Random(iSeed) {}

    StringArguments Next()
    {
        StringArguments next;
        next.separator = Pick(" , a\xE9"), next.from = Pick("ab \xE9"), next.to = Pick("bA,");
        if (OneIn(20))
            next.separator = '\0';
        if (OneIn(20))
            next.to = '\0';
        const bool isLong = OneIn(4);
        next.text = Text(isLong ? 400 : 12, isLong ? 20 : 2);
        next.other = OneIn(2) ? Part(next.text) : Text(4, 3);
        next.mode = OneIn(8) ? Text(1, 3) : std::string(1, Pick("LBT"));
        next.character = OneIn(8) ? Text(1, 3) : std::string(1, next.separator);
        next.character = next.character.c_str();
        next.first = Number(next.text.size());
        next.second = Number(next.text.size());
        next.width = Below(next.text.size() + 5);
        next.place = static_cast<StringArguments::Place>(Below(3));
        return next;
    }

private:
    unsigned Below(std::size_t iBound)
    {
        return static_cast<unsigned>(
            std::uniform_int_distribution<std::size_t>(0, iBound - 1)(_Random));
    }
    bool OneIn(unsigned iTimes) { return Below(iTimes) == 0; }
    char Pick(std::string_view iFrom) { return iFrom[Below(iFrom.size())]; }

    // Runs of one character, which are words and what lies between them.
    std::string Text(std::size_t iLongest, unsigned iLongestRun)
    {
        std::string text;
        for (unsigned size = Below(iLongest + 1); text.size() < size;)
            text += std::string(1 + Below(iLongestRun), Pick("  ,,aabA\xE9"));
        return text;
    }
    std::string Part(const std::string& iText)
    {
        const unsigned begin = Below(iText.size() + 1);
        return iText.substr(begin, Below(OneIn(2) ? 4 : iText.size() + 1));
    }
    unsigned Number(std::size_t iAbout)
    {
        if (OneIn(10))
            return 4294967295U - Below(3);
        return Below(OneIn(2) ? 5 : iAbout + 3);
    }

    std::mt19937 _Random;
};
} // namespace

TEST(ZORDuxStrings, DoAsThePlainModelOnGeneratedArguments)
{
    constexpr unsigned kSeed = 20240611;
    Arguments arguments(kSeed);
    for (int row = 0; row < 40000; ++row)
        ASSERT_EQ(CompareWithModel(arguments.Next()), "") << "seed " << kSeed << ", row " << row;
}

// The comparison leaves this out, as each such call keeps memory.
TEST(word, IsNullWhereThePlainModelHasNoWord)
{
    constexpr unsigned kSeed = 20240612;
    Arguments arguments(kSeed);
    for (int row = 0; row < 2000; ++row) {
        const auto next = arguments.Next();
        ASSERT_EQ(Take(word(next.text.c_str(), next.first)),
                  model::Word(next.text, next.first, ' '))
            << "seed " << kSeed << ", row " << row;
    }
}
