#include "Json.h"

#include <random>

using testing::HasSubstr;

namespace
{

// The numbers in an array of bytes, as text.
std::string BytesOf(const std::string& iArray)
{
    std::string bytes;
    for (std::size_t at = 1; at < iArray.size() && iArray[at] != ']';) {
        std::size_t length = 0;
        bytes += static_cast<char>(std::stoi(iArray.substr(at), &length));
        at += length + (iArray[at + length] == ',');
    }
    return bytes;
}

} // namespace

TEST(Json, WritesValuesByTheirKind)
{
    EXPECT_EQ(Json(nullptr).Text(), "null");
    EXPECT_EQ(Json(true).Text(), "true");
    EXPECT_EQ(Json(false).Text(), "false");
    EXPECT_EQ(Json(-2147483647 - 1).Text(), "-2147483648");
    EXPECT_EQ(Json(std::size_t(18446744073709551615u)).Text(), "18446744073709551615");
    EXPECT_EQ(Json("text").Text(), "\"text\"");
    EXPECT_EQ(Json(std::string("text")).Text(), "\"text\"");
    EXPECT_EQ(Json("").Text(), "\"\"");
}

TEST(Json, WritesArraysAndObjectsInTheOrderOfTheirParts)
{
    EXPECT_EQ(Json::Array().Text(), "[]");
    EXPECT_EQ(Json::Object().Text(), "{}");
    EXPECT_EQ(Json::Array().Add(1).Add("a").Add(Json::Array()).Add(Json::Object()).Text(),
              "[1,\"a\",[],{}]");
    EXPECT_EQ(Json::Object().Add("b", 1).Add("a", Json::Array().Add(2).Add(3)).Text(),
              "{\"b\":1,\"a\":[2,3]}");
    EXPECT_EQ(Json::ArrayOf(std::vector<int>{1, 2}).Text(), "[1,2]");
    EXPECT_EQ(Json::ArrayOf(std::vector<int>{1, 2}, [](int each) { return Json(each > 1); }).Text(),
              "[false,true]");
}

TEST(Json, EscapesWhatAStringCannotHold)
{
    EXPECT_EQ(Json("\"\\/\n\t\r\b\x01\x1F\x7F").Text(),
              "\"\\\"\\\\/\\n\\t\\u000d\\u0008\\u0001\\u001f\x7F\"");
    EXPECT_EQ(Json(std::string_view("a\0b", 3)).Text(), "\"a\\u0000b\"");
    EXPECT_EQ(Json::Object().Add("\"", 1).Text(), "{\"\\\"\":1}");
}

TEST(Json, WritesWellFormedUtf8AsItIs)
{
    for (const std::string text : {"\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF",
                                   "\xEE\x80\x80", "\xEF\xBF\xBF", "\xF0\x90\x80\x80",
                                   "\xF4\x8F\xBF\xBF", "d\xC3\xA9j\xC3\xA0 \xE6\x97\xA5"})
        EXPECT_EQ(Json(text).Text(), '"' + text + '"');
}

TEST(Json, WritesATextThatIsNotUtf8AsTheNumbersOfItsBytes)
{
    EXPECT_EQ(Json("a\xFF").Text(), "[97,255]");
    for (const std::string text :
         {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC2", "\xC2\x41", "\xC2\xC0", "\xE0\x9F\xBF",
          "\xE2\x82", "\xE2\x82\x41", "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF",
          "\xF0\x9F\x98", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFE", "\xC3\xA9\xC3"}) {
        EXPECT_EQ(Json(text).Text().front(), '[');
        EXPECT_EQ(BytesOf(Json(text).Text()), text);
    }
}
