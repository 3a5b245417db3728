#pragma once

#include "ZORExport.h"

// Word and string functions over plain NUL-terminated text of single-byte characters, for C and
// C++: cutting, padding, searching and splitting by positions and by words.
//
//     char* name = word("plate  bracket bolt", 2);     // "bracket"
//     char* padded = pad(name, 10, '.');               // "bracket..."
//     int at = pos("rack", name, 1);                   // 2
//     free(padded);
//     free(name);
//
// Positions count bytes from 1 (only `insert` counts the characters kept). Positions, lengths and
// counts are unsigned and compared so: -1 is 4294967295. A result of type `int` above INT_MAX comes
// out as the int of the same 32 bits.
//
// Words. A word is a maximal run of characters other than the current word separator, one character
// of the process, a blank unless `setwsep` changed it. Separators at the ends and repeated ones
// count for nothing. When the separator is NUL, a text that is not empty is one word.
//
// Null. Every function takes null for any string, reads nothing then, and returns null unless it
// says otherwise.
//
// Ownership. A "new string" is made with `malloc`, ends with NUL and is the caller's, to be given
// back with `free`; null also when there is no memory for it. The texts it is made from may
// overlap.
//
// Bounds. No call reads behind the terminator of a text, or writes anything but the storage between
// its beginning and its terminator.
//
// Locale. Only `lower` and `upper` look at the locale of the process.
//
// Thread rule. Several threads may use these functions at once, on one text as long as none of them
// changes it, with two exceptions: `xword` has one buffer for the process, and `setwsep` must not
// run while another thread is in a function that deals with words.
//
// Names. They are exported exactly as written, without decoration, so that any module can bind them
// by name. A program may have functions of its own by these names (it cannot include this header
// then): the library goes on calling its own. Beside `using namespace std;` write `::left`,
// `::right`.

#ifdef __cplusplus
extern "C" {
#endif

// ---- Cutting and joining by position

// A new string: the first `iCount` characters of `iText`. Null when `iCount` is 0 or exceeds the
// length. Its storage has room for the whole length of `iText`.
ZOR_EXPORT char* left(const char* iText, unsigned iCount);

// The last `iCount` characters of `iText`, as a pointer into `iText` itself: nothing is allocated
// and nothing may be freed; valid as long as `iText`. Null when `iCount` is 0 or exceeds the
// length.
ZOR_EXPORT char* right(const char* iText, unsigned iCount);

// A new string: the `iCount` characters of `iText` from position `iStart` on. Null when either is 0
// or the last of these characters lies behind the end. Its storage has room for the whole length of
// `iText`.
ZOR_EXPORT char* substr(const char* iText, unsigned iStart, unsigned iCount);

// A new string: the first `iAfter` characters of `iInto`, then `iWhat`, then the rest of `iInto`.
// 0 puts `iWhat` in front, the length puts it at the end; null when `iAfter` exceeds the length.
ZOR_EXPORT char* insert(const char* iWhat, const char* iInto, unsigned iAfter);

// A new string: `iTarget` with `iWhat` written over it from position `iAt` on, longer than
// `iTarget` where `iWhat` reaches past its end. Null when `iAt` is 0 or exceeds the length of
// `iTarget` (an empty `iTarget` always gives null).
ZOR_EXPORT char* overly(const char* iWhat, const char* iTarget, unsigned iAt);

// A new string of exactly `iCount` characters: `iText`, then as often as needed `iFill`. Null when
// `iText` is longer than that.
ZOR_EXPORT char* pad(const char* iText, unsigned iCount, char iFill);

// A new string: `iText` without the character `iCharacter[0]` at the ends that `iMode[0]` names.
// - 'L': the leading ones go.
// - 'B': the leading ones go; the trailing ones go only when there was no leading one. Callers rely
//   on this: "  a  " gives "a  ", but "a  " gives "a".
// - any other, or an empty `iMode`: the trailing ones go.
//
// An empty `iCharacter` strips nothing; a text of nothing but the character becomes empty. The
// storage has room for the whole length of `iText`.
ZOR_EXPORT char* strip(const char* iText, const char* iMode, const char* iCharacter);

// ---- Changing in place

// Replaces every `iFrom` in `ioText` from position `iStart` on by `iTo`, and returns how many there
// were. 0 when `ioText` is null, or `iStart` is 0 or exceeds the length. With NUL for `iTo` the
// text ends at the first one, yet all up to the old end are replaced and counted.
ZOR_EXPORT unsigned cswap(char iFrom, char iTo, char* ioText, unsigned iStart);

// Passes every character of `ioText`, as an unsigned char, through `tolower` or `toupper` in the
// locale of the process, and returns `ioText`.
ZOR_EXPORT char* lower(char* ioText);
ZOR_EXPORT char* upper(char* ioText);

// Removes the leading and trailing blanks (0x20 alone) of `ioText` and returns `ioText`. A text
// with no such blank is not written to.
ZOR_EXPORT char* qstrip(char* ioText);

// ---- Searching

// The position of the first occurrence of `iNeedle` in `iHay` that begins at position `iStart` or
// behind it; 0 when there is none, as for an empty `iNeedle` and an `iStart` behind the end. -1
// when `iStart` is 0 or a string is null.
ZOR_EXPORT int pos(const char* iNeedle, const char* iHay, unsigned iStart);

// ---- Words

// The current word separator or, for a negative `iWhich`, the one before the last `setwsep` (both
// are the blank at first).
ZOR_EXPORT char getwsep(int iWhich);

// Makes `iSeparator` the word separator of the process. Returns the address of the current
// separator, which has a NUL behind it: a string of one character that follows every later change.
ZOR_EXPORT const char* setwsep(char iSeparator);

// A new string: word `iNumber`, counted from 1. Null when `iNumber` is 0 or there is no such word.
// Reads `iText` once and no further than to the end of the word.
//
// A text that is not empty and has no such word costs memory: a copy of it stays allocated, and
// nobody can give it back. Who asks for words until there are no more does so with `xword`, or asks
// `wordlen` first.
ZOR_EXPORT char* word(const char* iText, unsigned iNumber);

// Word `iNumber`, cut to its first 255 characters, in a buffer of the process that every call
// overwrites and nobody frees; `iText` may lie in that very buffer. An empty `iText` gives the
// empty string; null, with the buffer unchanged, when `iNumber` is 0 or there is no such word.
// Reads `iText` once and no further than to the end of what it returns.
ZOR_EXPORT char* xword(const char* iText, unsigned iNumber);

// The length of word `iNumber`; 0 when there is no such word (null and negative numbers included),
// -1 when `iNumber` is 0. Reads `iText` once and no further than to the end of the word.
ZOR_EXPORT int wordlen(const char* iText, int iNumber);

// A new string: `iCount` words from word `iFirst` on, or as many of them as there are, joined by
// one current separator each. Null when either number is 0 or there is no word `iFirst`. The number
// of the last word is the unsigned sum `iFirst + iCount - 1`; one that wraps around gives the first
// word alone. Takes time linear in the text; the storage has room for the whole length of `iText`.
ZOR_EXPORT char* subword(const char* iText, unsigned iFirst, unsigned iCount);

// The number of the first word equal to `iPhrase`, from word `iStart` on; 0 when there is none or a
// string is null, -1 when `iStart` is 0. Separators at the ends of `iPhrase` are taken off first as
// by `strip` in mode "B": trailing ones stay when there are leading ones, and such a phrase, like
// one of several words, is never found. Allocates nothing and takes time linear in the texts.
ZOR_EXPORT int wordpos(const char* iPhrase, const char* iText, unsigned iStart);

#ifdef __cplusplus
}
#endif
