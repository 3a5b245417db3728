#include "ZORUuid.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using Text = std::array<char, ZORUuid::kTextSize>;

// Ten million take a while to collect under a sanitizer.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::size_t kMany = 1'000'000;
#else
constexpr std::size_t kMany = 10'000'000;
#endif

Text Fresh()
{
    Text text;
    ZORUuid().UUID_to_chaine(text.data());
    return text;
}

// The text form as the number it stands for.
std::array<std::uint64_t, 2> Number(const Text& iText)
{
    std::array<std::uint64_t, 2> number{};
    std::size_t digits = 0;
    for (const char character : iText) {
        if (character == '-' || character == '\0')
            continue;
        const auto digit =
            static_cast<std::uint64_t>(character <= '9' ? character - '0' : character - 'a' + 10);
        number[digits / 16] = number[digits / 16] << 4 | digit;
        ++digits;
    }
    return number;
}

template <class Numbers>
bool HasRepeat(Numbers& ioNumbers)
{
    std::sort(ioNumbers.begin(), ioNumbers.end());
    return std::adjacent_find(ioNumbers.begin(), ioNumbers.end()) != ioNumbers.end();
}

} // namespace

TEST(ZORUuid, HasATextOf36LowerCaseCharactersAndANul)
{
    Text text;
    text.fill('#');
    ZORUuid().UUID_to_chaine(text.data());
    EXPECT_EQ(text[36], '\0');
    EXPECT_THAT(text.data(),
                ::testing::MatchesRegex(
                    "[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}"));
}

TEST(ZORUuid, GivesTheSameTextEachTime)
{
    const ZORUuid identifier;
    Text first;
    Text second;
    identifier.UUID_to_chaine(first.data());
    identifier.UUID_to_chaine(second.data());
    EXPECT_EQ(first, second);
    const ZORUuid copy(identifier);
    copy.UUID_to_chaine(second.data());
    EXPECT_EQ(first, second);
}

TEST(ZORUuid, UsesEveryFreeBit)
{
    std::array<std::uint64_t, 2> zeros{};
    std::array<std::uint64_t, 2> ones{};
    for (int i = 0; i < 1000; ++i) {
        const std::array<std::uint64_t, 2> number = Number(Fresh());
        for (std::size_t half = 0; half < 2; ++half) {
            ones[half] |= number[half];
            zeros[half] |= ~number[half];
        }
    }
    // Version (4 bits of the first half) and variant (2 of the second) never change.
    EXPECT_EQ(ones[0] & zeros[0], 0xffffffffffff0fff);
    EXPECT_EQ(ones[1] & zeros[1], 0x3fffffffffffffff);
}

TEST(ZORUuid, IsAcceptedAsARandomDceIdentifier)
{
    std::string command = "uuidparse --noheadings --output VARIANT,TYPE";
    for (int i = 0; i < 100; ++i)
        command += std::string(" ") + Fresh().data();
    std::FILE* const output = popen(command.c_str(), "r");
    ASSERT_NE(output, nullptr);
    int accepted = 0;
    char variant[32];
    char type[32];
    while (std::fscanf(output, "%31s %31s", variant, type) == 2) {
        EXPECT_STREQ(variant, "DCE");
        EXPECT_STREQ(type, "random");
        ++accepted;
    }
    EXPECT_EQ(pclose(output), 0);
    EXPECT_EQ(accepted, 100);
}

TEST(ZORUuid, DoesNotRepeat)
{
    std::vector<std::array<std::uint64_t, 2>> numbers(kMany);
    for (auto& number : numbers)
        number = Number(Fresh());
    EXPECT_FALSE(HasRepeat(numbers));
}

TEST(ZORUuid, DoesNotRepeatInForkedChildren)
{
    constexpr int kChildren = 200;
    constexpr int kEach = 1000;
    Fresh(); // whatever state there is was there before the first fork
    std::vector<Text> texts;
    for (int child = 0; child < kChildren; ++child) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        const pid_t pid = fork();
        if (pid == 0) {
            for (int i = 0; i < kEach; ++i) {
                const Text text = Fresh();
                if (write(ends[1], text.data(), text.size()) != static_cast<ssize_t>(text.size()))
                    _exit(1);
            }
            _exit(0);
        }
        close(ends[1]);
        std::FILE* const stream = fdopen(ends[0], "r");
        Text text;
        while (std::fread(text.data(), text.size(), 1, stream) == 1)
            texts.push_back(text);
        std::fclose(stream);
        int status = 0;
        waitpid(pid, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(texts.size(), static_cast<std::size_t>(kChildren * kEach));
    EXPECT_FALSE(HasRepeat(texts));
}
