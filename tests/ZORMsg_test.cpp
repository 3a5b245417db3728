#include "ZORMsg.h"

#include "ZORHandle.h"

#include <gtest/gtest.h>

#include <random>
#include <regex.h>
#include <string>
#include <vector>

namespace
{

using Parameters = std::vector<ZORUnicodeString>;

std::string Built(const char* iText, const Parameters& iParameters)
{
    const ZORMsg message(iText);
    return message.BuildMessage(iParameters.data(), static_cast<int>(iParameters.size()))
        .ConvertToChar();
}

// The rule for places as a pattern.
std::string Model(const std::string& iText, const Parameters& iParameters)
{
    regex_t brace;
    regcomp(&brace, "[{][{]|[{]([1-9][0-9]?)[}]", REG_EXTENDED);
    std::string built;
    const char* at = iText.c_str();
    for (regmatch_t found[2]; regexec(&brace, at, 2, found, 0) == 0; at += found[0].rm_eo) {
        built.append(at, at + found[0].rm_so);
        const std::size_t number = found[1].rm_so < 0 ? 0 : std::stoul(at + found[1].rm_so);
        if (number == 0)
            built += '{';
        else if (number <= iParameters.size())
            built += iParameters[number - 1].ConvertToChar();
        else
            built.append(at + found[0].rm_so, at + found[0].rm_eo);
    }
    regfree(&brace);
    return built + at;
}

} // namespace

TEST(ZORMsg, PutsParametersIntoItsPlaces)
{
    auto* const message = new ZORMsg("Part {1} is locked by {2}.");
    EXPECT_EQ(message->GetNbParameters(), 2);
    const ZORUnicodeString parameters[] = {"plate", "ann"};
    EXPECT_EQ(message->BuildMessage(parameters), "Part plate is locked by ann.");
    EXPECT_EQ(message->GetText(), "Part {1} is locked by {2}.");
    EXPECT_EQ(message->Release(), 0U);
}

TEST(ZORMsg, TellsPlacesFromOtherBraces)
{
    const struct {
        const char* text;
        int parameters;
        const char* built; // with "a", "b"
    } rows[] = {
        {"", 0, ""},
        {"plain", 0, "plain"},
        {"{1}", 1, "a"},
        {"{2}{1}{2}", 2, "bab"},
        {"{2}", 2, "b"},
        {"{3}", 3, "{3}"},
        {"{99}", 99, "{99}"},
        {"{100}", 0, "{100}"},
        {"{0}", 0, "{0}"},
        {"{00}", 0, "{00}"},
        {"{01}", 0, "{01}"},
        {"{-1}", 0, "{-1}"},
        {"{ 1}", 0, "{ 1}"},
        {"{1 }", 0, "{1 }"},
        {"{}", 0, "{}"},
        {"{a}", 0, "{a}"},
        {"{1", 0, "{1"},
        {"1}", 0, "1}"},
        {"}", 0, "}"},
        {"}}", 0, "}}"},
        {"{", 0, "{"},
        {"{{", 0, "{"},
        {"{{1}", 0, "{1}"},
        {"{{{1}", 1, "{a"},
        {"{{{{1}}", 0, "{{1}}"},
        {"{1{2}", 2, "{1b"},
        {"\u00e9{1}\u00e9", 1, "\u00e9a\u00e9"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ZORMsg(row.text).GetNbParameters(), row.parameters) << row.text;
        EXPECT_EQ(Built(row.text, {"a", "b"}), row.built) << row.text;
    }
}

TEST(ZORMsg, PlacesThatGetNothingStayAsTheyAreWritten)
{
    const ZORMsg message("{1} and {2}");
    EXPECT_EQ(message.BuildMessage(nullptr), "{1} and {2}");
    EXPECT_EQ(message.BuildMessage(nullptr, 7), "{1} and {2}");
    const ZORUnicodeString parameters[] = {"one", "two"};
    EXPECT_EQ(message.BuildMessage(parameters, 0), "{1} and {2}");
    EXPECT_EQ(message.BuildMessage(parameters, -1), "{1} and {2}");
    EXPECT_EQ(message.BuildMessage(parameters, 1), "one and {2}");
}

TEST(ZORMsg, NeverExpandsAParameter)
{
    EXPECT_EQ(Built("{1}{2}", {"{2}", "{{1}"}), "{2}{{1}");
}

TEST(ZORMsg, PutsEmptyAndIllFormedParametersInAsTheyAre)
{
    EXPECT_EQ(Built("<{1}{2}>", {"", "\xFF\xC3"}), "<\xFF\xC3>");
}

TEST(ZORMsg, DoesWhatThePatternSaysForGeneratedTexts)
{
    const Parameters parameters = {"one", "{1}", "", "four", "5", "6", "7", "8", "9", "ten"};
    std::mt19937 random(7);
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        for (auto length = random() % 12; length > 0; --length)
            text += "{{{}}}0112 9x"[random() % 13];
        ASSERT_EQ(Built(text.c_str(), parameters), Model(text, parameters)) << text;
    }
}

TEST(ZORMsg, KnowsItsClass)
{
    const ZORMsg message("");
    EXPECT_STREQ(message.IsA(), "ZORMsg");
    EXPECT_EQ(message.IsAKindOf("ZORBaseUnknown"), 1);
}
