// Identifier lists and intervals against the plain models. An input is two intervals and a step,
// then a value and two lists of identifiers: an element is a text behind a byte that tells whether
// it holds an identifier and where the second list begins.
#include "FuzzInput.h"
#include "IdentifierListModel.h"
#include "IntervalModel.h"

namespace
{

constexpr std::size_t kLargest = 1024; // the models compare each with each

int Bound(FuzzInput& ioInput)
{
    const unsigned kind = ioInput.Byte() % 4;
    if (kind < 2)
        return ioInput.Integer();
    const unsigned high = ioInput.Number() & 0xffff;
    return static_cast<int>(high << 16 | (ioInput.Number() & 0xffff));
}

// The smallest integer is what stands for an end that is missing.
void CompareIntervals(FuzzInput& ioInput)
{
    static IntervalPairs pairs;
    const int a0 = Bound(ioInput);
    const int a1 = Bound(ioInput);
    const int b0 = Bound(ioInput);
    const int b1 = Bound(ioInput);
    const int step = Bound(ioInput);
    RequireEqual(pairs.Told(a0, a1, b0, b1, step),
                 plain::Interval(a0, IntervalPairs::End(a1), b0, IntervalPairs::End(b1), step));
}

struct Lists {
    std::vector<MaybeIdentifier> first;
    std::vector<MaybeIdentifier> second;
};

MaybeIdentifier Element(FuzzInput& ioInput, unsigned iKind)
{
    return iKind % 4 == 0 ? MaybeIdentifier() : MaybeIdentifier(ioInput.Text());
}

Lists ReadLists(FuzzInput& ioInput)
{
    Lists lists;
    bool second = false;
    while (!ioInput.IsEmpty()) {
        const unsigned kind = ioInput.Byte();
        second = second || kind >= 128;
        (second ? lists.second : lists.first).push_back(Element(ioInput, kind));
    }
    return lists;
}

void CompareLists(FuzzInput& ioInput)
{
    const unsigned spare = ioInput.Byte();
    CORBAAny value = AnyOf(Element(ioInput, ioInput.Byte()));
    const Lists lists = ReadLists(ioInput);
    _SEQUENCE_CORBAAny first = Identifiers(lists.first, static_cast<int>(spare % 4));
    _SEQUENCE_CORBAAny second = Identifiers(lists.second, static_cast<int>(spare / 4 % 4));
    const std::string toldFirst = Everything(first);
    const std::string toldSecond = Everything(second);

    for (_SEQUENCE_CORBAAny* const other : {&second, &first}) {
        RequireEqual(Everything(SequenceCrbAnyIntersection(first, *other)),
                     Everything(plain::Intersection(first, *other)));
        RequireEqual(Everything(SequenceCrbAnySubstraction(first, *other)),
                     Everything(plain::Subtraction(first, *other)));
    }
    Require(AlreadyExist(first, value) == plain::Exists(first, value));
    RequireEqual(Everything(first), toldFirst);
    RequireEqual(Everything(second), toldSecond);
    _SEQUENCE_CORBAAny expected = first;
    plain::RemoveDuplicate(expected);
    RemoveDuplicate(first);
    RequireEqual(Everything(first), Everything(expected));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iBytes, std::size_t iSize)
{
    if (iSize > kLargest)
        return 0;
    FuzzInput input(iBytes, iSize);
    CompareIntervals(input);
    CompareLists(input);
    return 0;
}
