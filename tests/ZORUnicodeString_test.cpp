#include "ZORUnicodeString.h"

#include "CountedAllocations.h"

#include <algorithm>
#include <climits>
#include <iomanip>
#include <random>
#include <sstream>
#include <thread>
#include <type_traits>

namespace
{

// The plain second opinion: a text taken apart into its characters.
using Characters = std::vector<std::string>;

struct ByteRange {
    unsigned char first;
    unsigned char last;
};

// Well-formed UTF-8 as the Unicode standard tabulates it (table 3-7).
const std::vector<std::vector<ByteRange>> kWellFormed = {
    {{0x00, 0x7F}},
    {{0xC2, 0xDF}, {0x80, 0xBF}},
    {{0xE0, 0xE0}, {0xA0, 0xBF}, {0x80, 0xBF}},
    {{0xE1, 0xEC}, {0x80, 0xBF}, {0x80, 0xBF}},
    {{0xED, 0xED}, {0x80, 0x9F}, {0x80, 0xBF}},
    {{0xEE, 0xEF}, {0x80, 0xBF}, {0x80, 0xBF}},
    {{0xF0, 0xF0}, {0x90, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}},
    {{0xF1, 0xF3}, {0x80, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}},
    {{0xF4, 0xF4}, {0x80, 0x8F}, {0x80, 0xBF}, {0x80, 0xBF}},
};

bool StartsWith(const std::string& iText, std::size_t iAt, const std::vector<ByteRange>& iRow)
{
    if (iText.size() - iAt < iRow.size())
        return false;
    for (std::size_t i = 0; i < iRow.size(); ++i) {
        const unsigned char byte = static_cast<unsigned char>(iText[iAt + i]);
        if (byte < iRow[i].first || byte > iRow[i].last)
            return false;
    }
    return true;
}

Characters Decode(const std::string& iText)
{
    Characters characters;
    for (std::size_t at = 0; at < iText.size(); at += characters.back().size()) {
        std::size_t length = 1;
        for (const auto& row : kWellFormed)
            if (StartsWith(iText, at, row))
                length = row.size();
        characters.push_back(iText.substr(at, length));
    }
    return characters;
}

std::string Join(const Characters& iCharacters, std::size_t iFirst, std::size_t iLast)
{
    std::string text;
    for (std::size_t i = iFirst; i < iLast; ++i)
        text += iCharacters[i];
    return text;
}

bool StandsAt(const Characters& iText, const Characters& iSub, int iAt)
{
    return iAt + static_cast<int>(iSub.size()) <= static_cast<int>(iText.size()) &&
           std::equal(iSub.begin(), iSub.end(), iText.begin() + iAt);
}

int ModelSearch(const std::string& iText, const std::string& iSub, int iStart, int iMode)
{
    const Characters text = Decode(iText);
    const Characters sub = Decode(iSub);
    const int length = static_cast<int>(text.size());
    if (iStart < 0 || iStart > length)
        return -1;
    if (iMode == ZORSearchForward) {
        for (int at = iStart; at <= length; ++at)
            if (StandsAt(text, sub, at))
                return at;
    } else {
        const Characters head(text.begin(), text.end() - iStart);
        for (int at = length - iStart; at >= 0; --at)
            if (StandsAt(head, sub, at))
                return at;
    }
    return -1;
}

std::string ModelSubString(const std::string& iText, int iStart, int iCount)
{
    const Characters text = Decode(iText);
    const long length = static_cast<long>(text.size());
    if (iStart < 0 || iStart >= length || iCount < 0)
        return "";
    return Join(text, static_cast<std::size_t>(iStart),
                static_cast<std::size_t>(std::min(long{iStart} + iCount, length)));
}

int ModelReplace(std::string& ioText, const std::string& iOld, const std::string& iNew)
{
    const int at = ModelSearch(ioText, iOld, 0, ZORSearchForward);
    if (iOld.empty() || at < 0)
        return 0;
    const Characters text = Decode(ioText);
    const std::size_t first = static_cast<std::size_t>(at);
    ioText = Join(text, 0, first) + iNew + Join(text, first + Decode(iOld).size(), text.size());
    return 1;
}

std::string ModelStrip(const std::string& iText, int iMode, char iCharacter)
{
    const Characters text = Decode(iText);
    const std::string stripped(1, iCharacter);
    std::size_t first = 0;
    std::size_t last = text.size();
    if (iMode == ZORStripLeading || iMode == ZORStripBoth)
        while (first < last && text[first] == stripped)
            ++first;
    if (iMode == ZORStripTrailing || iMode == ZORStripBoth)
        while (first < last && text[last - 1] == stripped)
            --last;
    return Join(text, first, last);
}

std::string Encode(unsigned long iCodePoint)
{
    const auto byte = [](unsigned long iValue) { return static_cast<char>(iValue); };
    const auto tail = [&](int iShift) { return byte(0x80 | ((iCodePoint >> iShift) & 0x3F)); };
    if (iCodePoint < 0x80)
        return {byte(iCodePoint)};
    if (iCodePoint < 0x800)
        return {byte(0xC0 | iCodePoint >> 6), tail(0)};
    if (iCodePoint < 0x10000)
        return {byte(0xE0 | iCodePoint >> 12), tail(6), tail(0)};
    return {byte(0xF0 | iCodePoint >> 18), tail(12), tail(6), tail(0)};
}

std::string Bytes(const ZORUnicodeString& iText)
{
    return {iText.ConvertToChar(), iText.GetLengthInBytes()};
}

// A text with its bytes readable: printable ASCII as it is, the rest as \xx.
std::string Shown(const std::string& iText)
{
    std::ostringstream shown;
    shown << std::hex << std::setfill('0');
    for (const char c : iText) {
        if (c >= ' ' && c < 127)
            shown << c;
        else
            shown << '\\' << std::setw(2) << unsigned{static_cast<unsigned char>(c)};
    }
    return shown.str();
}

constexpr unsigned kSeed = 20260701;

// Texts rich in repeats, characters of every length and pieces of them.
class Generator
{
public:
    int Number(int iFirst, int iLast)
    {
        return std::uniform_int_distribution(iFirst, iLast)(_Random);
    }

    std::string Text(int iMostPieces)
    {
        static const std::vector<std::string> pieces = {
            "a",    "a",    "b",    " ",    " ",    "/",    "abcdefghij",   "é",    "é",
            "€",    "😀",    "\xC3", "\xA9", "\xA9", "\xE2", "\x82",         "\xAC", "\xE2\x82",
            "\xF0", "\x9F", "\x98", "\x80", "\xFF", "\xC0", "\xED\xA0\x80", "\xF4", "\x90"};
        std::string text;
        for (int i = Number(0, iMostPieces); i > 0; --i)
            text +=
                pieces[static_cast<std::size_t>(Number(0, static_cast<int>(pieces.size()) - 1))];
        return text;
    }

    // A few bytes out of a text, or something else.
    std::string SubOf(const std::string& iText)
    {
        if (iText.empty() || Number(0, 3) == 0)
            return Text(2);
        const int at = Number(0, static_cast<int>(iText.size()) - 1);
        return iText.substr(static_cast<std::size_t>(at), static_cast<std::size_t>(Number(0, 5)));
    }

private:
    std::mt19937 _Random{kSeed};
};

const std::string kLong(100, 'x');

} // namespace

TEST(ZORUnicodeString, TakesAPathApart)
{
    const ZORUnicodeString path = "/home/élan/data";
    const int slash = path.SearchSubString("/", 0, ZORSearchBackward);
    EXPECT_EQ(slash, 10);
    EXPECT_EQ(path.SubString(0, slash), "/home/élan");
    EXPECT_EQ(path.SubString(slash + 1, path.GetLengthInChar()), "data");
}

TEST(ZORUnicodeString, IsEmptyWhenMadeOfNothing)
{
    for (const ZORUnicodeString& text :
         {ZORUnicodeString(), ZORUnicodeString(nullptr), ZORUnicodeString(""),
          ZORUnicodeString(nullptr, 5), ZORUnicodeString("x", 0),
          ZORUnicodeString(std::string_view())}) {
        EXPECT_TRUE(text.IsEmpty());
        EXPECT_EQ(text.GetLengthInChar(), 0);
        EXPECT_EQ(text.GetLengthInBytes(), 0u);
        EXPECT_STREQ(text.ConvertToChar(), "");
    }
    EXPECT_FALSE(ZORUnicodeString(" ").IsEmpty());
}

TEST(ZORUnicodeString, EndsAtTheFirstNul)
{
    using namespace std::string_view_literals;
    EXPECT_EQ(ZORUnicodeString("ab\0cd", 5), "ab");
    EXPECT_EQ(ZORUnicodeString("ab\0cd"sv).GetLengthInBytes(), 2u);
    EXPECT_EQ(ZORUnicodeString("\0cd"sv), "");
    EXPECT_EQ(ZORUnicodeString("abcd", 3), "abc");
    EXPECT_EQ(ZORUnicodeString(std::string("abcd")), "abcd");
    EXPECT_EQ(ZORUnicodeString(std::string("ab\0cd"sv)), "ab");
    EXPECT_EQ(ZORUnicodeString(std::string("\0cd"sv)).GetLengthInBytes(), 0u);
    const std::string kept("ab\0cd"sv);
    EXPECT_EQ(ZORUnicodeString(kept), "ab");
    EXPECT_EQ(kept.size(), 5u);
}

TEST(ZORUnicodeString, KeepsEveryTextOfOneOrTwoBytesUnchanged)
{
    for (int first = 1; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            std::string bytes(1, static_cast<char>(first));
            if (second)
                bytes += static_cast<char>(second);
            const ZORUnicodeString text(bytes);
            ASSERT_EQ(text.ConvertToChar(), bytes);
            ASSERT_EQ(text.GetLengthInBytes(), bytes.size());
            ASSERT_EQ(text.GetLengthInChar(), static_cast<int>(Decode(bytes).size()))
                << Shown(bytes);
            ASSERT_EQ(ZORUnicodeString(bytes.c_str()), text);
        }
    }
}

TEST(ZORUnicodeString, CountsEveryCodePointAsOneCharacter)
{
    for (unsigned long codePoint = 1; codePoint <= 0x10FFFF; ++codePoint) {
        const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
        const ZORUnicodeString text(Encode(codePoint));
        ASSERT_EQ(text.GetLengthInChar(), surrogate ? 3 : 1) << std::hex << codePoint;
    }
}

TEST(ZORUnicodeString, CountsEachIllFormedByteAsOneCharacter)
{
    const struct {
        const char* text;
        int length;
    } rows[] = {
        // what cannot begin a character
        {"\x80", 1},
        {"\xBF\x80", 2},
        {"\xFE\xFF", 2},
        // longer forms than needed
        {"\xC0\x80", 2},
        {"\xC1\xBF", 2},
        {"\xE0\x80\x80", 3},
        {"\xE0\x9F\xBF", 3},
        {"\xF0\x80\x80\x80", 4},
        {"\xF0\x8F\xBF\xBF", 4},
        // surrogates and their neighbours
        {"\xED\x9F\xBF", 1},
        {"\xED\xA0\x80", 3},
        {"\xED\xBF\xBF", 3},
        {"\xEE\x80\x80", 1},
        // the last code point and what lies above
        {"\xF4\x8F\xBF\xBF", 1},
        {"\xF4\x90\x80\x80", 4},
        {"\xF5\x80\x80\x80", 4},
        {"\xF8\x88\x80\x80\x80", 5},
        // cut short, at the end and by another character
        {"\xC3", 1},
        {"\xE2\x82", 2},
        {"\xF0\x9F\x98", 3},
        {"\xC3\xC3\xA9", 2},
        {"\xE2\x82\xE2\x82\xAC", 3},
        {"\xF0\x9F\x98z", 4},
        // one too many behind
        {"\xC3\xA9\xA9", 2},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ZORUnicodeString(row.text).GetLengthInChar(), row.length) << Shown(row.text);
        const std::string shifted = "1234567" + std::string(row.text) + "12345678";
        EXPECT_EQ(ZORUnicodeString(shifted).GetLengthInChar(), row.length + 15) << Shown(shifted);
    }
}

TEST(ZORUnicodeString, TellsSequencesOfBoundaryBytesAsTheStandardDoes)
{
    const std::string edges = "\x01\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC1\xC2\xDF\xE0\xE1\xEC\xED\xEE"
                              "\xEF\xF0\xF1\xF3\xF4\xF5\xFF";
    for (const std::string before : {"", "\xF0", "\xF1", "\xF3", "\xF4", "\xF5"})
        for (const char first : edges)
            for (const char second : edges)
                for (const char third : edges) {
                    const std::string bytes = before + first + second + third;
                    ASSERT_EQ(ZORUnicodeString(bytes).GetLengthInChar(),
                              static_cast<int>(Decode(bytes).size()))
                        << Shown(bytes);
                }
}

TEST(ZORUnicodeString, SearchesForwardFromTheStartPosition)
{
    const ZORUnicodeString text = "aé/aé/a";
    EXPECT_EQ(text.SearchSubString("/"), 2);
    EXPECT_EQ(text.SearchSubString("/", 2), 2);
    EXPECT_EQ(text.SearchSubString("/", 3), 5);
    EXPECT_EQ(text.SearchSubString("/", 6), -1);
    EXPECT_EQ(text.SearchSubString("é/a", 1, ZORSearchForward), 1);
    EXPECT_EQ(text.SearchSubString("b"), -1);
    EXPECT_EQ(text.SearchSubString("aé/aé/ab"), -1);
}

TEST(ZORUnicodeString, SearchesBackwardFromTheEnd)
{
    const ZORUnicodeString text = "aé/aé/a";
    EXPECT_EQ(text.SearchSubString("/", 0, ZORSearchBackward), 5);
    EXPECT_EQ(text.SearchSubString("/", 1, ZORSearchBackward), 5);
    EXPECT_EQ(text.SearchSubString("/", 2, ZORSearchBackward), 2);
    EXPECT_EQ(text.SearchSubString("/a", 0, ZORSearchBackward), 5);
    EXPECT_EQ(text.SearchSubString("/a", 1, ZORSearchBackward), 2);
    EXPECT_EQ(text.SearchSubString("aé", 0, ZORSearchBackward), 3);
    EXPECT_EQ(text.SearchSubString("aé", 5, ZORSearchBackward), 0);
    EXPECT_EQ(text.SearchSubString("aé", 6, ZORSearchBackward), -1);
    EXPECT_EQ(text.SearchSubString("b", 0, ZORSearchBackward), -1);
}

TEST(ZORUnicodeString, FindsTheEmptySubStringWhereTheSearchBegins)
{
    const ZORUnicodeString text = "aéb";
    EXPECT_EQ(text.SearchSubString(""), 0);
    EXPECT_EQ(text.SearchSubString("", 2), 2);
    EXPECT_EQ(text.SearchSubString("", 3), 3);
    EXPECT_EQ(text.SearchSubString("", 0, ZORSearchBackward), 3);
    EXPECT_EQ(text.SearchSubString("", 3, ZORSearchBackward), 0);
    EXPECT_EQ(ZORUnicodeString().SearchSubString(""), 0);
}

TEST(ZORUnicodeString, FindsNothingFromOutsideTheTextOrInAnotherMode)
{
    for (const ZORUnicodeString sub : {"a", ""}) {
        for (const int start : {-1, 4, INT_MIN, INT_MAX}) {
            EXPECT_EQ(ZORUnicodeString("aéa").SearchSubString(sub, start), -1);
            EXPECT_EQ(ZORUnicodeString("aéa").SearchSubString(sub, start, ZORSearchBackward), -1);
        }
        for (const int mode : {0, 3, -1})
            EXPECT_EQ(ZORUnicodeString("aéa").SearchSubString(sub, 0, mode), -1);
    }
}

TEST(ZORUnicodeString, FindsCharactersOnlyWhole)
{
    EXPECT_EQ(ZORUnicodeString("é\xA9").SearchSubString("\xA9"), 1);
    EXPECT_EQ(ZORUnicodeString("\xA9é").SearchSubString("\xA9", 0, ZORSearchBackward), 0);
    EXPECT_EQ(ZORUnicodeString("é").SearchSubString("\xC3"), -1);
    EXPECT_EQ(ZORUnicodeString("é").SearchSubString("\xA9", 0, ZORSearchBackward), -1);
    EXPECT_EQ(ZORUnicodeString("€").SearchSubString("\xE2\x82"), -1);
    EXPECT_EQ(ZORUnicodeString("\xE2\x82z").SearchSubString("\xE2\x82"), 0);
    EXPECT_EQ(ZORUnicodeString("\xE2\x82z").SearchSubString("\x82"), 1);
}

TEST(ZORUnicodeString, GivesTheSubStringOfACountOfCharacters)
{
    const ZORUnicodeString text = "né\xFF€😀z";
    EXPECT_EQ(text.SubString(0, 2), "né");
    EXPECT_EQ(text.SubString(2, 1), "\xFF");
    EXPECT_EQ(text.SubString(3, 2), "€😀");
    EXPECT_EQ(text.SubString(3, 2).GetLengthInChar(), 2);
    EXPECT_EQ(text.SubString(5, 1), "z");
    EXPECT_EQ(text.SubString(0, 6), text);
    EXPECT_EQ(text.SubString(1, 0), "");
}

TEST(ZORUnicodeString, CutsTheCountOfASubStringAtTheEnd)
{
    EXPECT_EQ(ZORUnicodeString("/opt/5").SubString(5, 6), "5");
    EXPECT_EQ(ZORUnicodeString("/opt/é").SubString(5, INT_MAX), "é");
    EXPECT_EQ(ZORUnicodeString("abc").SubString(1, INT_MAX), "bc");
    EXPECT_EQ(ZORUnicodeString("abc").SubString(1, INT_MAX).GetLengthInChar(), 2);
}

TEST(ZORUnicodeString, GivesNoSubStringFromOutsideTheText)
{
    for (const ZORUnicodeString text : {"abc", "aéc"}) {
        EXPECT_EQ(text.SubString(3, 1), "");
        EXPECT_EQ(text.SubString(INT_MAX, INT_MAX), "");
        EXPECT_EQ(text.SubString(-1, 2), "");
        EXPECT_EQ(text.SubString(INT_MIN, INT_MAX), "");
        EXPECT_EQ(text.SubString(0, -1), "");
        EXPECT_EQ(text.SubString(0, INT_MIN), "");
    }
    EXPECT_EQ(ZORUnicodeString().SubString(0, 1), "");
}

TEST(ZORUnicodeString, ReplacesTheFirstOccurrence)
{
    const struct {
        const char* text;
        const char* old;
        const char* replacement;
        const char* result;
        int replaced;
    } rows[] = {
        {"$HOME/lib", "HOME", "/home/u", "$/home/u/lib", 1},
        {"$/home/u/lib", "$", "", "/home/u/lib", 1},
        {"a//b//c", "//", "/", "a/b//c", 1},
        {"éaéa", "a", "€€", "é€€éa", 1},
        {"abc", "abc", "", "", 1},
        {"abc", "d", "x", "abc", 0},
        {"abc", "", "x", "abc", 0},
        {"", "", "x", "", 0},
        {"", "a", "x", "", 0},
        {"é\xA9", "\xA9", "!", "é!", 1},
        {"é", "\xA9", "!", "é", 0},
    };
    for (const auto& row : rows) {
        ZORUnicodeString text = row.text;
        EXPECT_EQ(text.ReplaceSubString(row.old, row.replacement), row.replaced) << row.text;
        EXPECT_EQ(text, row.result);
        EXPECT_EQ(text.GetLengthInChar(), static_cast<int>(Decode(row.result).size())) << row.text;
    }
}

TEST(ZORUnicodeString, ReplacesByAndInItself)
{
    ZORUnicodeString text = "<é>";
    EXPECT_EQ(text.ReplaceSubString("é", text), 1);
    EXPECT_EQ(text, "<<é>>");
    EXPECT_EQ(text.ReplaceSubString(text, "whole"), 1);
    EXPECT_EQ(text, "whole");
    EXPECT_EQ(text.ReplaceSubString(text, text), 1);
    EXPECT_EQ(text, "whole");
    ZORUnicodeString lengthy(kLong + "é");
    EXPECT_EQ(lengthy.ReplaceSubString("é", lengthy), 1);
    EXPECT_EQ(Bytes(lengthy), kLong + kLong + "é");
}

TEST(ZORUnicodeString, StripsTheEndsThatTheModeNames)
{
    const struct {
        const char* text;
        int mode;
        char character;
        const char* result;
    } rows[] = {
        {"  a b  ", ZORStripLeading, ' ', "a b  "},
        {"  a b  ", ZORStripTrailing, ' ', "  a b"},
        {"  a b  ", ZORStripBoth, ' ', "a b"},
        {"  a b  ", 0, ' ', "  a b  "},
        {"  a b  ", 4, ' ', "  a b  "},
        {"  a b  ", -1, ' ', "  a b  "},
        {"\ta\t", ZORStripBoth, ' ', "\ta\t"},
        {"xxaxx", ZORStripBoth, 'x', "a"},
        {"xxaxx", ZORStripBoth, '\0', "xxaxx"},
        {"    ", ZORStripBoth, ' ', ""},
        {"    ", ZORStripLeading, ' ', ""},
        {"    ", ZORStripTrailing, ' ', ""},
        {"", ZORStripBoth, ' ', ""},
        {" é€ ", ZORStripBoth, ' ', "é€"},
        {"\xA9\xA9é\xA9", ZORStripBoth, '\xA9', "é"},
        {"é", ZORStripTrailing, '\xA9', "é"},
        {"é\xC3", ZORStripBoth, '\xC3', "é"},
        {"\xC3é", ZORStripBoth, '\xC3', "é"},
    };
    for (const auto& row : rows) {
        ZORUnicodeString fresh = row.text;
        fresh.Strip(row.mode, row.character);
        EXPECT_EQ(fresh, row.result) << '"' << row.text << "\" " << row.mode;
        ZORUnicodeString counted = row.text;
        EXPECT_GE(counted.GetLengthInChar(), 0);
        counted.Strip(row.mode, row.character);
        EXPECT_EQ(counted.GetLengthInChar(), static_cast<int>(Decode(row.result).size()))
            << '"' << row.text << "\" " << row.mode;
    }
}

TEST(ZORUnicodeString, StripsBlanksUnlessToldOtherwise)
{
    ZORUnicodeString text = " a ";
    text.Strip(ZORStripBoth);
    EXPECT_EQ(text, "a");
}

TEST(ZORUnicodeString, AppendsAtTheEnd)
{
    ZORUnicodeString text;
    text.Append("/opt").Append(ZORUnicodeString("/é")).Append(nullptr).Append("");
    EXPECT_EQ(text, "/opt/é");
    EXPECT_EQ(text.GetLengthInChar(), 6);
    text.Append(text);
    EXPECT_EQ(text, "/opt/é/opt/é");
    text.Append(text.ConvertToChar() + 8);
    EXPECT_EQ(text, "/opt/é/opt/éopt/é");
    EXPECT_EQ(text.GetLengthInChar(), 17);
}

TEST(ZORUnicodeString, AppendedBytesCompleteACharacter)
{
    ZORUnicodeString text = "a\xE2";
    EXPECT_EQ(text.GetLengthInChar(), 2);
    text.Append("\x82");
    EXPECT_EQ(text.GetLengthInChar(), 3);
    text.Append(ZORUnicodeString("\xAC"));
    EXPECT_EQ(text.GetLengthInChar(), 2);
    EXPECT_EQ(text, "a€");
}

TEST(ZORUnicodeString, JoinsTextsWithPlus)
{
    const ZORUnicodeString directory = "/data";
    const ZORUnicodeString name = "é";
    EXPECT_EQ(directory + "/" + name, "/data/é");
    EXPECT_EQ("x" + directory, "x/data");
    EXPECT_EQ(directory + nullptr, "/data");
    EXPECT_EQ((directory + name).GetLengthInChar(), 6);
    EXPECT_EQ(directory, "/data");
}

TEST(ZORUnicodeString, AssignsFromACharacterPointer)
{
    ZORUnicodeString text = "é";
    EXPECT_EQ(text.GetLengthInChar(), 1);
    text = "abc";
    EXPECT_EQ(text.GetLengthInChar(), 3);
    text = text.ConvertToChar() + 1;
    EXPECT_EQ(text, "bc");
    text = static_cast<const char*>(nullptr);
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(text.GetLengthInChar(), 0);
}

TEST(ZORUnicodeString, CopiesAreIndependent)
{
    for (const std::string& bytes : {std::string("né"), kLong}) {
        ZORUnicodeString source(bytes);
        const ZORUnicodeString copy = source;
        ZORUnicodeString assigned = "other";
        EXPECT_EQ(assigned.GetLengthInChar(), 5);
        assigned = source;
        const int length = source.GetLengthInChar();
        source.Append("!");
        EXPECT_EQ(Bytes(copy), bytes);
        EXPECT_EQ(copy.GetLengthInChar(), length);
        EXPECT_EQ(Bytes(assigned), bytes);
        EXPECT_EQ(assigned.GetLengthInChar(), length);
    }
    ZORUnicodeString self = "self";
    const ZORUnicodeString& alias = self;
    self = alias;
    EXPECT_EQ(self, "self");
}

TEST(ZORUnicodeString, MovesLeaveTheSourceEmpty)
{
    static_assert(std::is_nothrow_move_constructible_v<ZORUnicodeString>);
    static_assert(std::is_nothrow_move_assignable_v<ZORUnicodeString>);
    for (const std::string& bytes : {std::string("né"), kLong}) {
        ZORUnicodeString source(bytes);
        const int length = source.GetLengthInChar();
        ZORUnicodeString built = std::move(source);
        EXPECT_EQ(Bytes(built), bytes);
        EXPECT_EQ(built.GetLengthInChar(), length);
        EXPECT_TRUE(source.IsEmpty());
        EXPECT_EQ(source.GetLengthInChar(), 0);
        ZORUnicodeString assigned("an earlier text that was on the heap");
        assigned = std::move(built);
        EXPECT_EQ(Bytes(assigned), bytes);
        EXPECT_EQ(assigned.GetLengthInChar(), length);
        EXPECT_TRUE(built.IsEmpty());
        EXPECT_EQ(built.GetLengthInChar(), 0);
    }
}

TEST(ZORUnicodeString, ComparesBytesAsUnsignedValues)
{
    const std::vector<const char*> ascending = {"",  "A", "a", "aa", "b",
                                                "z", "é", "€", "😀",  "\xFF"};
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        for (std::size_t j = 0; j < ascending.size(); ++j) {
            const ZORUnicodeString left = ascending[i];
            const ZORUnicodeString right = ascending[j];
            const char* pointer = ascending[j];
            EXPECT_EQ(left == right, i == j);
            EXPECT_EQ(left == pointer, i == j);
            EXPECT_EQ(pointer == left, i == j);
            EXPECT_EQ(left != right, i != j);
            EXPECT_EQ(left != pointer, i != j);
            EXPECT_EQ(pointer != left, i != j);
            EXPECT_EQ(left < right, i < j);
            EXPECT_EQ(left < pointer, i < j);
            EXPECT_EQ(pointer < left, j < i);
        }
    }
}

TEST(ZORUnicodeString, ComparesNullAsTheEmptyText)
{
    const char* null = nullptr;
    EXPECT_TRUE(ZORUnicodeString() == null);
    EXPECT_TRUE(ZORUnicodeString("a") != null);
    EXPECT_TRUE(null < ZORUnicodeString("a"));
    EXPECT_FALSE(ZORUnicodeString() < null);
}

TEST(ZORUnicodeString, IsWrittenToAStreamByteForByte)
{
    std::ostringstream stream;
    stream << ZORUnicodeString("né\xFF") << '|' << std::setw(4) << ZORUnicodeString("a");
    EXPECT_EQ(stream.str(), "né\xFF|   a");
}

TEST(ZORUnicodeString, AllocatesNothingForShortTexts)
{
    const CountedAllocations allocations;
    {
        ZORUnicodeString text = "0123456789abcde";
        ZORUnicodeString copy = text;
        ZORUnicodeString moved = std::move(copy);
        copy = "short";
        copy.Append("er").Append(ZORUnicodeString(" é"));
        EXPECT_EQ(copy.SearchSubString("é"), 8);
        EXPECT_EQ(copy.SubString(0, 5), "short");
        EXPECT_EQ(copy.ReplaceSubString("short", "long"), 1);
        copy.Strip(ZORStripBoth, 'l');
        EXPECT_EQ(copy + "!", "onger é!");
        EXPECT_EQ(moved.GetLengthInChar(), 15);
    }
    EXPECT_EQ(allocations.Count(), 0);
}

TEST(ZORUnicodeString, AllocatesNothingToTakeOverAString)
{
    std::string text(100, 'x');
    const CountedAllocations allocations;
    const ZORUnicodeString taken(std::move(text));
    EXPECT_EQ(allocations.Count(), 0);
    EXPECT_EQ(taken.GetLengthInChar(), 100);
}

TEST(ZORUnicodeString, AllocatesNothingToReadMoveOrCompareLongTexts)
{
    ZORUnicodeString text(kLong + "é" + kLong);
    const ZORUnicodeString sub(kLong.substr(0, 50) + "é");
    const std::string same = Bytes(text);
    const CountedAllocations allocations;
    EXPECT_EQ(text.GetLengthInChar(), 201);
    EXPECT_EQ(text.SearchSubString(sub), 50);
    EXPECT_EQ(text.SearchSubString(sub, 0, ZORSearchBackward), 50);
    EXPECT_TRUE(text == same.c_str());
    EXPECT_FALSE(text < same.c_str());
    ZORUnicodeString moved = std::move(text);
    text = std::move(moved);
    EXPECT_EQ(text.ConvertToChar(), same);
    EXPECT_EQ(allocations.Count(), 0);
}

TEST(ZORUnicodeString, StaysAsItWasWhenMemoryRunsOut)
{
    ZORUnicodeString text = "né";
    EXPECT_EQ(text.GetLengthInChar(), 2);
    const ZORUnicodeString lengthy(kLong);
    {
        const ScopedMemoryShortage shortage;
        EXPECT_THROW(ZORUnicodeString{lengthy}, std::bad_alloc);
        EXPECT_THROW(ZORUnicodeString{kLong.c_str()}, std::bad_alloc);
        EXPECT_THROW(text = lengthy, std::bad_alloc);
        EXPECT_THROW(text = kLong.c_str(), std::bad_alloc);
        EXPECT_THROW(text.Append(lengthy), std::bad_alloc);
        EXPECT_THROW(text.ReplaceSubString("n", lengthy), std::bad_alloc);
        EXPECT_THROW((void)lengthy.SubString(1, 50), std::bad_alloc);
    }
    EXPECT_EQ(text, "né");
    EXPECT_EQ(text.GetLengthInChar(), 2);
}

TEST(ZORUnicodeString, AgreesWithThePlainModelOnGeneratedTexts)
{
    Generator generate;
    for (int round = 0; round < 10000; ++round) {
        const std::string bytes = generate.Text(12);
        const std::string sub = generate.SubOf(bytes);
        const int start = generate.Number(-1, 14);
        const int count = generate.Number(-1, 14);
        const ZORUnicodeString text(bytes);
        SCOPED_TRACE(testing::Message()
                     << "seed " << kSeed << " round " << round << " text " << Shown(bytes)
                     << " sub " << Shown(sub) << " start " << start << " count " << count);
        for (const int mode : {ZORSearchForward, ZORSearchBackward})
            ASSERT_EQ(text.SearchSubString(ZORUnicodeString(sub), start, mode),
                      ModelSearch(bytes, sub, start, mode))
                << mode;
        ASSERT_EQ(Bytes(text.SubString(start, count)), ModelSubString(bytes, start, count));
        ASSERT_EQ(text.SubString(start, count).GetLengthInChar(),
                  static_cast<int>(Decode(ModelSubString(bytes, start, count)).size()));
        ASSERT_EQ(text.GetLengthInChar(), static_cast<int>(Decode(bytes).size()));
    }
}

TEST(ZORUnicodeString, AgreesWithThePlainModelAfterGeneratedChanges)
{
    Generator generate;
    ZORUnicodeString text;
    std::string model;
    for (int round = 0; round < 10000; ++round) {
        const std::string before = model;
        const std::string other = generate.SubOf(model);
        const std::string replacement = generate.Text(3);
        const int change = generate.Number(0, 5);
        SCOPED_TRACE(testing::Message() << "seed " << kSeed << " round " << round << " change "
                                        << change << " before " << Shown(before) << " other "
                                        << Shown(other) << " replacement " << Shown(replacement));
        switch (change) {
        case 0:
            text.Append(replacement.c_str());
            model += replacement;
            break;
        case 1:
            text.Append(ZORUnicodeString(other));
            model += other;
            break;
        case 2:
        case 3:
            ASSERT_EQ(text.ReplaceSubString(ZORUnicodeString(other), ZORUnicodeString(replacement)),
                      ModelReplace(model, other, replacement));
            break;
        case 4: {
            const int mode = generate.Number(0, 4);
            const char character = other.empty() ? ' ' : other.back();
            text.Strip(mode, character);
            model = ModelStrip(model, mode, character);
            break;
        }
        default: {
            const int start = generate.Number(-1, 5);
            const int count = generate.Number(-1, 60);
            text = text.SubString(start, count);
            model = ModelSubString(model, start, count);
        }
        }
        ASSERT_EQ(Bytes(text), model);
        if (generate.Number(0, 1) == 0) {
            ASSERT_EQ(text.GetLengthInChar(), static_cast<int>(Decode(model).size()));
        }
    }
}

TEST(ZORUnicodeString, MayBeReadByManyThreadsAtOnce)
{
    for (int round = 0; round < 50; ++round) {
        const ZORUnicodeString text(kLong + "é" + kLong);
        std::vector<int> right(8);
        std::vector<std::thread> readers;
        for (int& answer : right)
            readers.emplace_back([&] {
                const ZORUnicodeString copy = text;
                answer = text.GetLengthInChar() == 201 && text.SearchSubString("é") == 100 &&
                         text.SubString(100, 1) == "é" && copy.GetLengthInChar() == 201;
            });
        for (std::thread& reader : readers)
            reader.join();
        EXPECT_THAT(right, testing::Each(1));
    }
}
