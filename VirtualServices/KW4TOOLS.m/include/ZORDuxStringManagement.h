#pragma once

#include "ZORExport.h"
#include "ZORUnicodeString.h"

// The word and string functions of ZORDuxStrings.h for holders of ZORUnicodeString.
//
//     ZORDuxStringManagement strings;
//     ZORUnicodeString line = "plate  bracket bolt";
//     char* name = strings.Word(&line, 2); // "bracket"
//     free(name);
//
// Each operation passes the text of its arguments (ConvertToChar) to the function it names, and
// returns that function's result; what is said there of results, bounds and words holds here. In
// short:
//   - Positions and lengths count from 1 and count the bytes of the UTF-8 text, not its characters,
//     so that a result may begin or end inside a character.
//   - Numbers are passed on as unsigned ones: a negative position or count is a very large one, and
//     answered with null or 0 (but see WordLen).
//   - Any string may be null; the function is then given null.
//   - A `char*` is a new string or null: made with malloc, to be given back with `free`.
//   - An operation that runs out of memory for a new string returns null; where a ZORUnicodeString
//     is written, it raises std::bad_alloc and the string is as before.
//
// The object has no state: one will do for all callers, and any is as good as another. Thread rule:
// that of ZORDuxStrings.h.
class ZOR_EXPORT ZORDuxStringManagement
{
public:
    // pos: the position of the first occurrence of `iNeedle` in `iText` at or behind position
    // `iStart`; 0 when there is none; -1 when `iStart` is 0 or a string is null.
    int Pos(const ZORUnicodeString* iNeedle, const ZORUnicodeString* iText, int iStart);

    // wordlen: the length of word `iNumber`; 0 when there is no such word or the number is
    // negative, -1 when it is 0.
    int WordLen(const ZORUnicodeString* iText, int iNumber);

    // wordpos: the number of the first word equal to `iPhrase`, from word `iStart` on; 0 when there
    // is none or a string is null, -1 when `iStart` is 0.
    int WordPos(const ZORUnicodeString* iPhrase, const ZORUnicodeString* iText, int iStart);

    // word: word `iNumber` as a new string. Null when there is no such word, which costs memory:
    // see there.
    char* Word(const ZORUnicodeString* iText, int iNumber);

    // subword: `iCount` words from word `iFirst` on, joined by one separator each, as a new string.
    char* SubWord(const ZORUnicodeString* iText, int iFirst, int iCount);

    // substr: the `iCount` bytes from position `iStart` on as a new string.
    char* SubStr(const ZORUnicodeString* iText, int iStart, int iCount);

    // right: a pointer to the last `iCount` bytes inside `iText`, or null. Owned by the string and
    // valid until the string is changed, moved from or destroyed; nothing may be written there.
    const char* Right(ZORUnicodeString* iText, int iCount);

    // upper: passes every byte of the text through `toupper` in the locale of the process, writes
    // the result back into the string and returns it. In a single-byte locale the bytes of
    // characters above 127 are changed as the single characters that they are there.
    ZORUnicodeString* Upper(ZORUnicodeString* ioText);

    // qstrip: removes blanks at both ends of the string and returns it.
    ZORUnicodeString* QStrip(ZORUnicodeString* ioText);

    // strip: `iText` without the first byte of `iCharacter` at the ends that the first byte of
    // `iMode` names ('L' leading, 'B' both, any other trailing), as a new string.
    char* Strip(const ZORUnicodeString* iText, ZORUnicodeString iMode, ZORUnicodeString iCharacter);
};
