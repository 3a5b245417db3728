#pragma once

#include <cstddef>
#include <cstdint>

// The compilers' memory checkers take a read of bytes beside a text for a mistake. For them, and
// where there are no vectors, a piece is read one byte at a time and only as far as the text goes.
#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(memory_sanitizer) ||                         \
    __has_feature(thread_sanitizer)
#define KW_SINGLE_BYTES
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(__SSE2__)
#define KW_SINGLE_BYTES
#endif

#ifndef KW_SINGLE_BYTES
#include <emmintrin.h>
#endif

// The 16 bytes at an address that is a multiple of 16, to be compared all at once. The piece must
// hold a byte of a text or its terminator: it lies in one page, so that no read can fault. What it
// tells of bytes in front of the text and behind the terminator is undefined.
class BytePiece
{
public:
    static constexpr std::size_t kSize = 16;

    // `iBegin` is where in the piece the text begins, 0 when it begins before.
    BytePiece(const char* iAddress, [[maybe_unused]] std::size_t iBegin)
    {
#ifdef KW_SINGLE_BYTES
        for (std::size_t at = iBegin; at < kSize && iAddress[at]; ++at)
            _Bytes[at] = iAddress[at];
#else
        _Bytes = _mm_load_si128(reinterpret_cast<const __m128i*>(iAddress));
#endif
    }

    // Bit i tells whether byte i is the character.
    std::uint64_t EqualTo(char iCharacter) const
    {
#ifdef KW_SINGLE_BYTES
        std::uint64_t equal = 0;
        for (std::size_t at = 0; at < kSize; ++at)
            equal |= static_cast<std::uint64_t>(_Bytes[at] == iCharacter) << at;
        return equal;
#else
        return static_cast<unsigned>(
            _mm_movemask_epi8(_mm_cmpeq_epi8(_Bytes, _mm_set1_epi8(iCharacter))));
#endif
    }

private:
#ifdef KW_SINGLE_BYTES
    char _Bytes[kSize] = {};
#else
    __m128i _Bytes;
#endif
};

#undef KW_SINGLE_BYTES
