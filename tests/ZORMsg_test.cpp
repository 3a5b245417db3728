#include "ZORMsg.h"

#include "ZORHandle.h"

#include <gtest/gtest.h>

#include <random>
#include <regex>
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
    static const std::regex brace("\\{\\{|\\{([1-9][0-9]?)\\}");
    std::string built;
    auto at = iText.cbegin();
    for (std::sregex_iterator each(iText.begin(), iText.end(), brace), end; each != end; ++each) {
        built.append(at, iText.cbegin() + each->position());
        at = iText.cbegin() + each->position() + each->length();
        const std::string number = each->str(1);
        if (number.empty())
            built += '{';
        else if (std::stoul(number) <= iParameters.size())
            built += iParameters[std::stoul(number) - 1].ConvertToChar();
        else
            built += each->str();
    }
    return built.append(at, iText.cend());
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
