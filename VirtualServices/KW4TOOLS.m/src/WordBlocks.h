#pragma once

#include "BytePiece.h"

#include <bit>
#include <cstddef>
#include <cstdint>

// The words of a text, 64 bytes at a time: each block is told as masks (bit i stands for byte i)
// instead of being looked at byte by byte. The number of words of a text:
//
//     WordBlocks blocks(text, ' ');
//     std::size_t count = WordBlocks::Count(blocks.Starts());
//     while (!blocks.IsLast()) {
//         blocks.Next();
//         count += WordBlocks::Count(blocks.Starts());
//     }
//
// A byte of a word is one that is neither the separator nor at or behind the terminator; in front
// of the text there is a separator. With NUL for the separator words thus end at the terminator
// alone.
//
// Blocks begin at multiples of 64 and are read in pieces, of which none goes further than the block
// asked for or the terminator in it.
class WordBlocks
{
public:
    using Mask = std::uint64_t;
    static constexpr std::size_t kSize = 64;

    // How many bits are set. Pairs, fours and bytes are summed up side by side, then the bytes in
    // the highest one: std::popcount would be a call where the machine need not have an
    // instruction.
    static std::size_t Count(Mask iBits)
    {
        iBits -= iBits >> 1 & 0x5555555555555555;
        iBits = (iBits & 0x3333333333333333) + (iBits >> 2 & 0x3333333333333333);
        iBits = (iBits + (iBits >> 4)) & 0x0f0f0f0f0f0f0f0f;
        return iBits * 0x0101010101010101 >> 56;
    }
    // Where the `iNumber`-th bit (from 1) is; there must be so many.
    static int Place(Mask iBits, std::size_t iNumber)
    {
        for (; iNumber > 1; --iNumber)
            iBits &= iBits - 1;
        return std::countr_zero(iBits);
    }

    WordBlocks(const char* iText, char iSeparator)
        : _Begin(reinterpret_cast<std::uintptr_t>(iText) % kSize), _Address(iText - _Begin),
          _Separator(iSeparator)
    {
        Read(FirstPiece());
    }

    // The place that bit 0 stands for, which in the first block may lie in front of the text.
    const char* Address() const { return _Address; }
    // The bytes of words.
    Mask Words() const { return _Words; }
    // The first bytes of words.
    Mask Starts() const { return _Words & ~(_Words << 1 | _WordBefore); }
    // The first bytes behind words.
    Mask Ends() const { return ~_Words & (_Words << 1 | _WordBefore); }

    // The bytes of words that are the character.
    Mask WordBytesEqualTo(char iCharacter) const
    {
        Mask equal = 0;
        for (std::size_t at = FirstPiece(); at < _End; at += BytePiece::kSize)
            equal |= PieceAt(at).EqualTo(iCharacter) << at;
        return equal & _Words;
    }

    // Whether the terminator is in this block; there is no next one then.
    bool IsLast() const { return _End < kSize; }
    const char* Terminator() const { return _Address + _End; }

    void Next()
    {
        _WordBefore = _Words >> (kSize - 1);
        _Address += kSize;
        _Begin = 0;
        Read(0);
    }

private:
    std::size_t FirstPiece() const { return _Begin - _Begin % BytePiece::kSize; }
    BytePiece PieceAt(std::size_t iAt) const
    {
        return {_Address + iAt, iAt < _Begin ? _Begin - iAt : 0};
    }

    void Read(std::size_t iFirstPiece)
    {
        const Mask text = ~Mask(0) << _Begin;
        _Words = 0;
#pragma GCC unroll 4
        for (std::size_t at = iFirstPiece; at < kSize; at += BytePiece::kSize) {
            const BytePiece piece = PieceAt(at);
            _Words |= (piece.EqualTo(_Separator) ^ 0xffff) << at;
            const Mask nuls = piece.EqualTo('\0');
            if (nuls && (nuls << at & text)) {
                _End = static_cast<std::size_t>(std::countr_zero(nuls << at & text));
                _Words &= ~(~Mask(0) << _End);
                break;
            }
        }
        _Words &= text;
    }

    std::size_t _Begin;       // where the text begins in this block
    std::size_t _End = kSize; // and its terminator, or kSize
    const char* _Address;
    char _Separator;
    Mask _Words;
    Mask _WordBefore = 0; // 1 when the last byte of the block before belongs to a word
};
