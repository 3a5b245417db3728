#pragma once

#include "support/Rows.h"

#include <cstring>

inline constexpr int kIdentifierSize = 16;
inline constexpr unsigned char kIdentifier[kIdentifierSize] = {
    0x3f, 0x80, 0x11, 0x5a, 0x9c, 0x41, 0x47, 0xd2, 0x8e, 0x60, 0x0b, 0x77, 0xa3, 0xc4, 0x1d, 0xe9};

// Whether the octets, of whatever type, are those above.
inline bool IsIdentifier(const void* iOctets, std::size_t iCount)
{
    return iCount == kIdentifierSize && std::memcmp(iOctets, kIdentifier, kIdentifierSize) == 0;
}

// The rows of one kind of any. `Way` names the types Any and Octets, and has
//     Octets Identifier();                            of the octets above
//     bool IsIdentifier(const Octets&);
//     void Put(Any&, const Octets&);  void Put(Any&, int);
//     bool Get(const Any&, Octets&);  bool Get(const Any&, int&);
template <class Way>
void AnyRows(const std::string& iWho)
{
    using Any = typename Way::Any;
    using Octets = typename Way::Octets;

    Row("octets", iWho, [](benchmark::State& ioState) {
        const Octets in = Way::Identifier();
        Octets out{};
        Any any;
        for (auto _ : ioState) {
            Way::Put(any, in);
            benchmark::DoNotOptimize(&any);
            benchmark::DoNotOptimize(Way::Get(any, out));
            benchmark::ClobberMemory();
        }
        Check(ioState, Way::IsIdentifier(out));
    });
    Row("copy", iWho, [](benchmark::State& ioState) {
        Any any;
        Way::Put(any, Way::Identifier());
        Any copy;
        for (auto _ : ioState) {
            copy = any;
            benchmark::DoNotOptimize(&copy);
            benchmark::ClobberMemory();
        }
        Octets out{};
        Check(ioState, Way::Get(copy, out) && Way::IsIdentifier(out));
    });
    Row("long", iWho, [](benchmark::State& ioState) {
        Any any;
        int in = 12;
        int out = 0;
        for (auto _ : ioState) {
            benchmark::DoNotOptimize(in);
            Way::Put(any, in);
            benchmark::DoNotOptimize(&any);
            benchmark::DoNotOptimize(Way::Get(any, out));
            benchmark::ClobberMemory();
        }
        Check(ioState, out == 12);
    });
}
