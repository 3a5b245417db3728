#include "TomlString.h"

#include "Utf8Characters.h"

#include <cstddef>
#include <cstring>
#include <optional>

namespace
{

constexpr std::uint64_t kOnes = 0x0101010101010101u;
constexpr std::uint64_t kHighs = 0x8080808080808080u;
constexpr char kHexadecimal[] = "0123456789ABCDEF";

std::uint64_t Spread(char iByte)
{
    return kOnes * static_cast<unsigned char>(iByte);
}

// Not 0 when a byte of the word is zero.
std::uint64_t ZeroBytes(std::uint64_t iWord)
{
    return (iWord - kOnes) & ~iWord & kHighs;
}

// The first place of one of three bytes, eight bytes a step; `iEnd` when there is none.
const char* FindAny(const char* iBegin, const char* iEnd, char iFirst, char iSecond, char iThird)
{
    const std::uint64_t first = Spread(iFirst);
    const std::uint64_t second = Spread(iSecond);
    const std::uint64_t third = Spread(iThird);
    while (iEnd - iBegin >= 8) {
        std::uint64_t word;
        std::memcpy(&word, iBegin, sizeof word);
        if (ZeroBytes(word ^ first) | ZeroBytes(word ^ second) | ZeroBytes(word ^ third))
            break;
        iBegin += 8;
    }
    while (iBegin != iEnd && *iBegin != iFirst && *iBegin != iSecond && *iBegin != iThird)
        ++iBegin;
    return iBegin;
}

bool IsMultiLine(Quoting iQuoting)
{
    return iQuoting == Quoting::MultiBasic || iQuoting == Quoting::MultiLiteral;
}

bool IsBasic(Quoting iQuoting)
{
    return iQuoting == Quoting::Basic || iQuoting == Quoting::MultiBasic;
}

TomlStringEnd FindSingleLineEnd(const char* iBegin, const char* iEnd, char iQuote, char iEscape)
{
    bool plain = true;
    for (const char* at = iBegin; at < iEnd; at += 2) {
        at = FindAny(at, iEnd, iQuote, iEscape, '\n');
        if (at == iEnd || *at == '\n')
            break;
        if (*at == iQuote)
            return {at, plain};
        plain = false;
    }
    return {nullptr, false};
}

// Up to two quotes directly before the closing delimiter belong to the text.
TomlStringEnd FindMultiLineEnd(const char* iBegin, const char* iEnd, char iQuote, char iEscape)
{
    constexpr std::ptrdiff_t kDelimiter = 3, kLongestRun = 5;
    bool plain = true;
    for (const char* at = iBegin; (at = FindAny(at, iEnd, iQuote, iEscape, '\r')) < iEnd;) {
        if (*at == iQuote) {
            const char* const run = at;
            while (at != iEnd && *at == iQuote && at - run < kLongestRun)
                ++at;
            if (at - run >= kDelimiter)
                return {at - kDelimiter, plain};
        } else {
            plain = false;
            at += *at == '\r' || iEnd - at < 2 ? 1 : 2;
        }
    }
    return {nullptr, false};
}

// The text of a string, piece by piece.
class Decoder
{
public:
    explicit Decoder(std::string& oText) : _Text(oText) {}

    // The character of an escape.
    void Put(char32_t iCharacter)
    {
        if (_AfterNul) {
            PutByte(iCharacter);
            return;
        }
        if (iCharacter == 0)
            _AfterNul = true;
        else
            Append(iCharacter);
    }

    // Bytes that stand for themselves.
    void Put(std::string_view iBytes)
    {
        if (_AfterNul && !iBytes.empty()) {
            const auto lead = static_cast<unsigned char>(iBytes[0]);
            const bool twoBytes = (lead == 0xC2 || lead == 0xC3) && iBytes.size() >= 2;
            PutByte(twoBytes ? (lead & 3u) << 6 | (static_cast<unsigned char>(iBytes[1]) & 63u)
                             : 0);
            iBytes.remove_prefix(twoBytes ? 2 : 1);
        }
        _Text.append(iBytes);
    }

    bool HasLoneNul() const { return _AfterNul || _LoneNul; }

private:
    void PutByte(char32_t iCharacter)
    {
        _AfterNul = false;
        if (iCharacter >= 0x80 && iCharacter <= 0xFF)
            _Text += static_cast<char>(iCharacter);
        else
            _LoneNul = true;
    }

    void Append(char32_t iCharacter)
    {
        if (iCharacter < 0x80) {
            _Text += static_cast<char>(iCharacter);
            return;
        }
        const int following = iCharacter < 0x800 ? 1 : iCharacter < 0x10000 ? 2 : 3;
        const unsigned lead = 0xFF00u >> (following + 1) & 0xFF; // C0, E0, F0
        _Text += static_cast<char>(lead | iCharacter >> (6 * following));
        for (int left = following - 1; left >= 0; --left)
            _Text += static_cast<char>(0x80 | (iCharacter >> (6 * left) & 63));
    }

    std::string& _Text;
    bool _AfterNul = false;
    bool _LoneNul = false;
};

std::optional<char32_t> ReadHexadecimal(std::string_view iDigits, std::size_t iCount)
{
    if (iDigits.size() < iCount)
        return std::nullopt;
    char32_t number = 0;
    for (const char each : iDigits.substr(0, iCount)) {
        const char lower = static_cast<char>(each | 0x20);
        if (each >= '0' && each <= '9')
            number = number << 4 | static_cast<char32_t>(each - '0');
        else if (lower >= 'a' && lower <= 'f')
            number = number << 4 | static_cast<char32_t>(lower - 'a' + 10);
        else
            return std::nullopt;
    }
    const bool character = number <= 0x10FFFF && (number < 0xD800 || number > 0xDFFF);
    return character ? std::optional(number) : std::nullopt;
}

// Reads the escape behind a backslash: its character and, in oLength, how long it is.
std::optional<char32_t> ReadEscape(std::string_view iEscape, std::size_t& oLength)
{
    oLength = 1;
    switch (iEscape.empty() ? '\0' : iEscape[0]) {
    case 'b':
        return U'\b';
    case 't':
        return U'\t';
    case 'n':
        return U'\n';
    case 'f':
        return U'\f';
    case 'r':
        return U'\r';
    case '"':
        return U'"';
    case '\\':
        return U'\\';
    case 'u':
        oLength = 5;
        return ReadHexadecimal(iEscape.substr(1), 4);
    case 'U':
        oLength = 9;
        return ReadHexadecimal(iEscape.substr(1), 8);
    default:
        return std::nullopt;
    }
}

// The length of the blanks and line breaks that a backslash at the end of a line swallows; 0 when
// it is not at the end of one.
std::size_t ContinuationLength(std::string_view iBehind)
{
    const std::size_t lineEnd = iBehind.find_first_not_of(" \t");
    if (lineEnd == std::string_view::npos || LeadingLineBreak(iBehind.substr(lineEnd)).empty())
        return 0;
    const std::size_t text = iBehind.find_first_not_of(" \t\r\n");
    return text == std::string_view::npos ? iBehind.size() : text;
}

// The bytes before the next one that does not stand for itself.
std::size_t PlainLength(std::string_view iBody, char iEscape)
{
    const char* const end = iBody.data() + iBody.size();
    return static_cast<std::size_t>(FindAny(iBody.data(), end, iEscape, '\r', '\r') - iBody.data());
}

bool IsControl(char iCharacter)
{
    return static_cast<unsigned char>(iCharacter) < 0x20 || iCharacter == 0x7F;
}

void AppendUnicodeEscape(std::string& oString, unsigned char iNumber)
{
    oString += "\\u00";
    oString += kHexadecimal[iNumber >> 4];
    oString += kHexadecimal[iNumber & 15];
}

void AppendControl(std::string& oString, char iCharacter)
{
    constexpr std::string_view controls = "\b\t\n\f\r", letters = "btnfr";
    const std::size_t known = controls.find(iCharacter);
    if (known == std::string_view::npos)
        AppendUnicodeEscape(oString, static_cast<unsigned char>(iCharacter));
    else
        (oString += '\\') += letters[known];
}

// Appends the first character of the text so that any basic string can hold it, and returns how
// many bytes it has.
std::size_t AppendEscaped(std::string& oString, std::string_view iText)
{
    const char first = iText[0];
    if (static_cast<unsigned char>(first) >= 0x80) {
        const std::size_t length = Utf8FirstLength(iText);
        if (length == 1) {
            oString += "\\u0000";
            AppendUnicodeEscape(oString, static_cast<unsigned char>(first));
        } else
            oString.append(iText, 0, length);
        return length;
    }
    if (IsControl(first))
        AppendControl(oString, first);
    else {
        if (first == '"' || first == '\\')
            oString += '\\';
        oString += first;
    }
    return 1;
}

std::string QuoteMultiBasic(std::string_view iText, std::string_view iOpening,
                            std::string_view iLineBreak)
{
    std::string quoted = "\"\"\"";
    quoted += iOpening;
    std::size_t quotes = 0; // that stand unescaped in a row
    for (std::size_t at = 0; at < iText.size();) {
        const char each = iText[at];
        const bool rawBreak = each == '\n' && (at > 0 || !iOpening.empty());
        const bool rawQuote = each == '"' && quotes < 2 && at + 1 < iText.size();
        quotes = rawQuote ? quotes + 1 : 0;
        if (rawBreak)
            quoted += iLineBreak;
        else if (rawQuote || each == '\t')
            quoted += each;
        else {
            at += AppendEscaped(quoted, iText.substr(at));
            continue;
        }
        ++at;
    }
    return quoted += "\"\"\"";
}

bool IsWellFormed(std::string_view iText)
{
    while (!iText.empty()) {
        const std::size_t length = Utf8FirstLength(iText);
        if (length == 1 && static_cast<unsigned char>(iText[0]) >= 0x80)
            return false;
        iText.remove_prefix(length);
    }
    return true;
}

bool IsLiteral(std::string_view iText, bool iWithLineBreaks)
{
    for (const char each : iText)
        if (IsControl(each) && each != '\t' && !(iWithLineBreaks && each == '\n'))
            return false;
    const std::string_view quotes = iWithLineBreaks ? "'''" : "'";
    return iText.find(quotes) == std::string_view::npos && IsWellFormed(iText);
}

std::string QuoteMultiLiteral(std::string_view iText, std::string_view iOpening,
                              std::string_view iLineBreak)
{
    std::string quoted = "'''";
    quoted += iOpening;
    for (const char each : iText)
        if (each == '\n')
            quoted += iLineBreak;
        else
            quoted += each;
    return quoted += "'''";
}

} // namespace

TomlStringEnd FindTomlStringEnd(const char* iBegin, const char* iEnd, Quoting iQuoting)
{
    const char quote = IsBasic(iQuoting) ? '"' : '\'';
    const char escape = IsBasic(iQuoting) ? '\\' : quote;
    return IsMultiLine(iQuoting) ? FindMultiLineEnd(iBegin, iEnd, quote, escape)
                                 : FindSingleLineEnd(iBegin, iEnd, quote, escape);
}

TomlDecoding DecodeTomlString(std::string_view iBody, Quoting iQuoting, std::string& oText)
{
    const char escape = IsBasic(iQuoting) ? '\\' : '\r';
    Decoder decoder(oText);
    while (true) {
        const std::size_t plain = PlainLength(iBody, escape);
        decoder.Put(iBody.substr(0, plain));
        if (plain == iBody.size())
            break;
        const char special = iBody[plain];
        iBody.remove_prefix(plain + 1);
        if (special == '\r') // of a line break, which is "\n" in every text
            continue;
        std::size_t length = iQuoting == Quoting::MultiBasic ? ContinuationLength(iBody) : 0;
        if (length == 0) {
            const std::optional<char32_t> character = ReadEscape(iBody, length);
            if (!character)
                return TomlDecoding::Malformed;
            decoder.Put(*character);
        }
        iBody.remove_prefix(length);
    }
    return decoder.HasLoneNul() ? TomlDecoding::LoneNul : TomlDecoding::Done;
}

std::string QuoteBasic(std::string_view iText)
{
    std::string quoted;
    quoted.reserve(iText.size() + 2);
    quoted += '"';
    while (!iText.empty())
        iText.remove_prefix(AppendEscaped(quoted, iText));
    return quoted += '"';
}

std::string QuoteLike(std::string_view iSource, Quoting iQuoting, std::string_view iLineBreak,
                      std::string_view iText)
{
    if (iQuoting == Quoting::Literal && IsLiteral(iText, false))
        return '\'' + std::string(iText) + '\'';
    if (!IsMultiLine(iQuoting))
        return QuoteBasic(iText);

    const std::string_view opening = LeadingLineBreak(iSource.substr(3));
    const std::string_view first = FirstLineBreak(iSource);
    const std::string_view lineBreak = first.empty() ? iLineBreak : first;
    if (iQuoting == Quoting::MultiBasic)
        return QuoteMultiBasic(iText, opening, lineBreak);
    // A line break directly behind the delimiter is not part of the text.
    const bool beginsBelow = !opening.empty() || !iText.starts_with('\n');
    if (beginsBelow && IsLiteral(iText, true))
        return QuoteMultiLiteral(iText, opening, lineBreak);
    return QuoteBasic(iText);
}

std::string QuoteKey(std::string_view iName)
{
    bool bare = !iName.empty();
    for (const char each : iName)
        bare = bare && IsBareKeyCharacter(each);
    return bare ? std::string(iName) : QuoteBasic(iName);
}

std::string_view LeadingLineBreak(std::string_view iText)
{
    return iText.starts_with('\n')     ? iText.substr(0, 1)
           : iText.starts_with("\r\n") ? iText.substr(0, 2)
                                       : std::string_view();
}

std::string_view FirstLineBreak(std::string_view iText)
{
    const std::size_t end = iText.find('\n');
    if (end == std::string_view::npos)
        return {};
    const std::size_t begin = end > 0 && iText[end - 1] == '\r' ? end - 1 : end;
    return iText.substr(begin, end + 1 - begin);
}
