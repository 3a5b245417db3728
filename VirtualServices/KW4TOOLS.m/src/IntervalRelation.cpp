#include "IntervalRelation.h"

#include <initializer_list>

// The relation is a table. There are three cases, by which of the intervals are open; in each, the
// first row whose condition holds decides. A row says how the computed bounds P and Q come about,
// what the values are and what the code is. Rows that look irregular are what callers rely on.

namespace
{

using Bounds = const IntervalBounds&;

// What a value can be: a bound, a computed one, or the mark of an open end.
enum Term { a0, a1, b0, b1, P, Q, Open };

// A computed bound: the bound that it lies beside, on which side, and the bound from which this one
// has to differ for it to be set at all.
struct Computed {
    Term beside;
    int direction;
    Term other;
};

constexpr Computed Unset{}; // no value of the row is this one
constexpr Computed Before(Term iBound)
{
    return {iBound, -1, Open};
}
constexpr Computed After(Term iBound)
{
    return {iBound, +1, Open};
}
constexpr Computed BeforeUnless(Term iBound, Term iSame)
{
    return {iBound, -1, iSame};
}
constexpr Computed AfterUnless(Term iBound, Term iSame)
{
    return {iBound, +1, iSame};
}

struct Result {
    enum Kind {
        kValues, // the terms as they are
        kPieces, // two pairs; a pair whose P or Q is -1 is left out, and without any the result
                 // stays untouched
        kUntouched,
    };

    Kind kind;
    int count;
    Term terms[4];
};

constexpr Result List(Result::Kind iKind, std::initializer_list<Term> iTerms)
{
    Result result{iKind, 0, {}};
    for (const Term each : iTerms)
        result.terms[result.count++] = each;
    return result;
}
template <class... Terms>
constexpr Result Values(Terms... iTerms)
{
    return List(Result::kValues, {iTerms...});
}
constexpr Result Pieces(Term iFirst, Term iSecond, Term iThird, Term iFourth)
{
    return List(Result::kPieces, {iFirst, iSecond, iThird, iFourth});
}
constexpr Result Untouched = List(Result::kUntouched, {});

struct Row {
    bool (*holds)(Bounds);
    Computed p, q;
    Result result;
    int code;
};

// clang-format off

// The first interval is open.
constexpr Row kFirstOpen[] = {
    {[](Bounds i) { return i.b1 == kNoBound && i.b0 < i.a0; },  Before(a0), Unset,     Values(b0, P),        5},
    {[](Bounds i) { return i.b1 == kNoBound && i.b0 == i.a0; }, Unset,      Unset,     Values(),             1},
    {[](Bounds i) { return i.b1 == kNoBound && i.b0 > i.a0; },  Before(b0), Unset,     Values(a0, P),       13},
    {[](Bounds i) { return i.a0 > i.b1; },                      Unset,      Unset,     Values(),             0},
    {[](Bounds i) { return i.a0 == i.b0; },                     After(b1),  Unset,     Values(P, Open),      9},
    {[](Bounds i) { return i.a0 == i.b1; },                     Before(a0), Unset,     Values(b0, P, b0, P), 10},
    {[](Bounds i) { return i.b0 < i.a0; },                      Before(a0), After(b1), Values(b0, P, b0, P), 12},
    {[](Bounds) { return true; },                               Before(b0), After(b1), Values(a0, P, a0, P), 11},
};

// The second interval alone is open.
constexpr Row kSecondOpen[] = {
    {[](Bounds i) { return i.b0 > i.a1; },                      Unset,      Unset,      Values(),            0},
    {[](Bounds i) { return i.a0 < i.b0 && i.b0 < i.a1; },       After(a1),  Before(b0), Values(P, a0, Q),    6},
    {[](Bounds i) { return i.a0 < i.b0 && i.a1 == i.b0; },      After(a1),  Unset,      Values(P),           7},
    {[](Bounds i) { return i.a0 == i.b0 && i.a1 >= i.b0; },     After(a1),  Unset,      Values(P),           5},
    {[](Bounds i) { return i.a0 <= i.b0; },                     Unset,      Unset,      Untouched,          -1},
    {[](Bounds) { return true; },                               Before(a0), After(a1),  Values(b0, P, Q),    5},
};

// Both are bounded.
constexpr Row kBothBounded[] = {
    {[](Bounds i) { return i.a1 < i.b0 || i.b1 < i.a0; },       Unset, Unset, Values(),                      0},
    {[](Bounds i) { return i.a0 == i.b0 && i.a1 == i.b1; },     Unset, Unset, Values(),                      1},
    {[](Bounds i) { return i.a0 <= i.b0 && i.b1 <= i.a1; },
                            BeforeUnless(b0, a0), AfterUnless(b1, a1), Pieces(a0, P, Q, a1),                 2},
    {[](Bounds i) { return i.a0 < i.b0 && i.a1 < i.b1; },       After(a1),  Before(b0), Values(P, b1, a0, Q), 3},
    {[](Bounds i) { return i.b0 < i.a0 && i.b1 < i.a1; },       Before(a0), After(b1),  Values(b0, P, Q, a0), 4},
    {[](Bounds i) { return (i.a0 < i.b0 || i.a1 >= i.b1) && (i.a0 <= i.b0 || i.b1 != i.a1); },
                                                                Unset, Unset, Untouched,                    -1},
    {[](Bounds) { return true; },
                            BeforeUnless(a0, b0), AfterUnless(a1, b1), Pieces(b0, P, Q, b1),                 5},
};

// clang-format on

template <std::size_t kRows>
const Row& Decide(const Row (&iRows)[kRows], Bounds iBounds)
{
    const Row* row = iRows;
    while (!row->holds(iBounds)) // the last one always does
        ++row;
    return *row;
}

const Row& Decide(Bounds iBounds)
{
    if (iBounds.a1 == kNoBound)
        return Decide(kFirstOpen, iBounds);
    if (iBounds.b1 == kNoBound)
        return Decide(kSecondOpen, iBounds);
    return Decide(kBothBounded, iBounds);
}

// What the terms of a row stand for.
struct TermValues {
    std::array<std::int32_t, Open + 1> values;

    std::int32_t operator[](Term iTerm) const { return values[iTerm]; }

    void Compute(Term iTerm, const Computed& iBound, std::int32_t iStep)
    {
        if (iBound.other != Open && values[iBound.beside] == values[iBound.other])
            return;
        // Unsigned, where wrapping is defined.
        const auto bound = static_cast<std::uint32_t>(values[iBound.beside]);
        const auto direction = static_cast<std::uint32_t>(iBound.direction);
        const auto step = static_cast<std::uint32_t>(iStep);
        values[iTerm] = static_cast<std::int32_t>(bound + direction * step);
    }
};

void AddPiece(IntervalRelation& ioRelation, std::int32_t iStart, std::int32_t iEnd)
{
    ioRelation.values[static_cast<std::size_t>(ioRelation.count++)] = iStart;
    ioRelation.values[static_cast<std::size_t>(ioRelation.count++)] = iEnd;
}

} // namespace

IntervalRelation RelateIntervals(const IntervalBounds& iBounds, std::int32_t iStep)
{
    const Row& row = Decide(iBounds);
    TermValues terms{
        {iBounds.a0, iBounds.a1, iBounds.b0, iBounds.b1, kNoBound, kNoBound, kNoBound}};
    terms.Compute(P, row.p, iStep);
    terms.Compute(Q, row.q, iStep);

    IntervalRelation relation{row.code, 0, {}};
    const Result& result = row.result;
    if (result.kind == Result::kPieces) {
        if (terms[P] != kNoBound)
            AddPiece(relation, terms[result.terms[0]], terms[P]);
        if (terms[Q] != kNoBound)
            AddPiece(relation, terms[Q], terms[result.terms[3]]);
    } else {
        for (; relation.count < result.count; ++relation.count)
            relation.values[static_cast<std::size_t>(relation.count)] =
                terms[result.terms[relation.count]];
    }
    if (result.kind == Result::kUntouched ||
        (result.kind == Result::kPieces && relation.count == 0))
        relation.count = IntervalRelation::kUntouched;
    return relation;
}
