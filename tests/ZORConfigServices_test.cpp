#include "ZORConfigServices.h"

#include "CountedAllocations.h"
#include "IdentifierListModel.h"
#include "Sequences.h"
#include "ZORPSNTrace.h"

#include <gmock/gmock.h>

#include <random>

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

const MaybeIdentifier kNone;

std::vector<std::string> WithoutDuplicates(const std::vector<MaybeIdentifier>& iIdentifiers)
{
    _SEQUENCE_CORBAAny list = Identifiers(iIdentifiers);
    RemoveDuplicate(list);
    return Told(list);
}

std::vector<std::string> Intersection(const std::vector<MaybeIdentifier>& iFirst,
                                      const std::vector<MaybeIdentifier>& iSecond)
{
    _SEQUENCE_CORBAAny first = Identifiers(iFirst);
    _SEQUENCE_CORBAAny second = Identifiers(iSecond);
    return Told(SequenceCrbAnyIntersection(first, second));
}

std::vector<std::string> Subtraction(const std::vector<MaybeIdentifier>& iFirst,
                                     const std::vector<MaybeIdentifier>& iSecond)
{
    _SEQUENCE_CORBAAny first = Identifiers(iFirst);
    _SEQUENCE_CORBAAny second = Identifiers(iSecond);
    return Told(SequenceCrbAnySubstraction(first, second));
}

int Exists(const std::vector<MaybeIdentifier>& iIdentifiers, const MaybeIdentifier& iValue)
{
    _SEQUENCE_CORBAAny list = Identifiers(iIdentifiers);
    CORBAAny value = AnyOf(iValue);
    return AlreadyExist(list, value);
}

} // namespace

TEST(ZORConfigServices, TellsWhichOfTheWantedIdentifiersAreNotKnown)
{
    _SEQUENCE_CORBAAny wanted = Identifiers({"bolt", "nut", "bolt", "washer"});
    _SEQUENCE_CORBAAny known = Identifiers({"washer"});
    RemoveDuplicate(wanted);
    EXPECT_THAT(Told(SequenceCrbAnySubstraction(wanted, known)),
                ElementsAre("\"nut\"", "\"bolt\""));
}

TEST(SequenceIsEqual, ComparesLengthAndOctets)
{
    struct {
        std::string first, second;
        int equal;
    } const rows[] = {
        {"", "", 1},
        {"\1\2", "\1\2", 1},
        {"\1\2", "\1\2\3", 0},
        {"\1\2", "\2\1", 0},
        {"", "a", 0},
        {"a", "", 0},
        {"abc", "abd", 0},
        {"abc", "xbc", 0},
        {std::string("a\0b", 3), std::string("a\0c", 3), 0},
        {std::string("\0", 1), "", 0},
        {"\xff", "\xff", 1},
        {"\xff", "\x7f", 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(SequenceIsEqual(Octets(row.first), Octets(row.second)), row.equal)
            << row.first << " and " << row.second;
}

TEST(SequenceIsEqual, LooksOnlyAtTheOctetsInUse)
{
    _SEQUENCE_octet first = Octets("abX");
    _SEQUENCE_octet second = Octets("abYZ");
    first.length(2);
    second.length(2);
    EXPECT_EQ(SequenceIsEqual(first, second), 1);
}

TEST(SequenceIsEqual, LeavesItsArgumentsAlone)
{
    const _SEQUENCE_octet first = Octets("ab");
    const _SEQUENCE_octet second = Octets("ab");
    SequenceIsEqual(first, second);
    SequenceIsEqual(first, first);
    EXPECT_EQ(Told(first), "ab");
    EXPECT_EQ(Told(second), "ab");
}

TEST(SequenceIsEqual, AllocatesNothingButItsArguments)
{
    const std::string octets(100, 'a');
    _SEQUENCE_octet first = Octets(octets);
    _SEQUENCE_octet second = Octets(octets);
    const CountedAllocations allocations;
    EXPECT_EQ(SequenceIsEqual(std::move(first), std::move(second)), 1);
    EXPECT_EQ(allocations.Count(), 0);
}

TEST(AlreadyExist, AllocatesNothing)
{
    const std::string octets(100, 'a');
    _SEQUENCE_CORBAAny list = Identifiers({"p", octets + "b", octets});
    CORBAAny last = list[2];
    const CountedAllocations allocations;
    EXPECT_EQ(AlreadyExist(list, last), 1);
    EXPECT_EQ(allocations.Count(), 0);
}

TEST(AlreadyExist, FindsAnIdentifierAnywhereInTheList)
{
    const std::vector<MaybeIdentifier> list = {"p", "pq", "", "r"};
    for (const MaybeIdentifier& each : list)
        EXPECT_EQ(Exists(list, each), 1) << *each;
    for (const char* const each : {"q", "P", "pqr", "rr"})
        EXPECT_EQ(Exists(list, each), 0) << each;
}

TEST(AlreadyExist, FindsNothingInAnEmptyList)
{
    for (const MaybeIdentifier& each : {MaybeIdentifier("p"), MaybeIdentifier(""), kNone})
        EXPECT_EQ(Exists({}, each), 0);
}

TEST(AlreadyExist, TakesWhatHoldsNoIdentifierForTheEmptyOne)
{
    EXPECT_EQ(Exists({"p", kNone}, ""), 1);
    EXPECT_EQ(Exists({"p", ""}, kNone), 1);
    EXPECT_EQ(Exists({"p", kNone}, kNone), 1);
    EXPECT_EQ(Exists({"p", kNone}, "p"), 1);
    EXPECT_EQ(Exists({"q", kNone}, "p"), 0);
    EXPECT_EQ(Exists({"p"}, kNone), 0);
}

TEST(AlreadyExist, ChangesNeitherListNorValue)
{
    _SEQUENCE_CORBAAny list = Identifiers({"p", kNone}, 3);
    AlreadyExist(list, list[0]);
    EXPECT_THAT(Told(list), ElementsAre("\"p\"", "1"));
    EXPECT_EQ(list.maximum(), 5);
}

TEST(RemoveDuplicate, KeepsTheLastOccurrenceOfEachIdentifier)
{
    EXPECT_THAT(WithoutDuplicates({}), IsEmpty());
    EXPECT_THAT(WithoutDuplicates({"p"}), ElementsAre("\"p\""));
    EXPECT_THAT(WithoutDuplicates({"p", "p", "p"}), ElementsAre("\"p\""));
    EXPECT_THAT(WithoutDuplicates({"p", "q", "p", "r"}), ElementsAre("\"q\"", "\"p\"", "\"r\""));
    EXPECT_THAT(WithoutDuplicates({"p", "pq", "", "p"}), ElementsAre("\"pq\"", "\"\"", "\"p\""));
}

// The receivers are made once for a call: while "q" is looked for, the element that holds none is
// what the search for "p" has read last, "r".
TEST(RemoveDuplicate, TakesWhatHoldsNoIdentifierForTheOneReadBefore)
{
    EXPECT_THAT(WithoutDuplicates({"p", "q", kNone, "r"}),
                ElementsAre("\"p\"", "\"q\"", "2", "\"r\""));
    EXPECT_THAT(WithoutDuplicates({"p", kNone}), ElementsAre("\"p\"", "1"));
    EXPECT_THAT(WithoutDuplicates({"p", kNone, "p"}), ElementsAre("\"p\""));
    EXPECT_THAT(WithoutDuplicates({"r", "q", kNone, "r", kNone}), ElementsAre("\"q\"", "2", "4"));
    EXPECT_THAT(WithoutDuplicates({kNone, kNone}), ElementsAre("1"));
    EXPECT_THAT(WithoutDuplicates({"", kNone, "p"}), ElementsAre("1", "\"p\""));
}

TEST(RemoveDuplicate, LeavesRoomForJustWhatItKeeps)
{
    for (const auto& identifiers : std::vector<std::vector<MaybeIdentifier>>{
             {}, {"p"}, {"p", "q"}, {"p", "p"}, {"p", "q", "p", "r"}})
        for (const int spare : {0, 7}) {
            _SEQUENCE_CORBAAny list = Identifiers(identifiers, spare);
            RemoveDuplicate(list);
            EXPECT_EQ(list.maximum(), list.length());
        }
}

TEST(RemoveDuplicate, KeepsElementsOfEveryKindAndSize)
{
    const std::string large(1000, 'l');
    EXPECT_THAT(WithoutDuplicates({kNone, large, "p", large}),
                ElementsAre("0", "\"p\"", '"' + large + '"'));
}

TEST(SequenceCrbAnyIntersection, KeepsWhatOccursInBothInTheOrderOfTheFirst)
{
    EXPECT_THAT(Intersection({"p", "q", "p"}, {"p"}), ElementsAre("\"p\"", "\"p\""));
    EXPECT_THAT(Intersection({"p", "q"}, {"q", "q", "p"}), ElementsAre("\"p\"", "\"q\""));
    EXPECT_THAT(Intersection({}, {"p"}), IsEmpty());
    EXPECT_THAT(Intersection({"p"}, {}), IsEmpty());
    EXPECT_THAT(Intersection({}, {}), IsEmpty());
}

TEST(SequenceCrbAnyIntersection, TellsAnIdentifierFromItsPrefixes)
{
    EXPECT_THAT(Intersection({"p", "pq", ""}, {"pqr", "pq"}), ElementsAre("\"pq\""));
}

TEST(SequenceCrbAnyIntersection, TakesWhatHoldsNoIdentifierForTheOneReadBefore)
{
    EXPECT_THAT(Intersection({"p", kNone, "q", kNone}, {"p"}), ElementsAre("\"p\"", "1"));
    EXPECT_THAT(Intersection({kNone, "p"}, {""}), ElementsAre("0"));
    // At the start of the second list: the empty one, until something else was looked for.
    EXPECT_THAT(Intersection({"", kNone, "p", ""}, {kNone, "q"}), ElementsAre("\"\"", "1"));
    EXPECT_THAT(Intersection({"", "p", ""}, {kNone}), ElementsAre("\"\"", "\"\""));
}

TEST(SequenceCrbAnyIntersection, HasTheRoomOfBothListsTogether)
{
    for (const int spare : {0, 5}) {
        _SEQUENCE_CORBAAny first = Identifiers({"p", "q"}, spare);
        _SEQUENCE_CORBAAny second = Identifiers({"q"}, 3);
        const _SEQUENCE_CORBAAny common = SequenceCrbAnyIntersection(first, second);
        EXPECT_EQ(common.maximum(), 2 + spare + 4);
        EXPECT_EQ(common.length(), 1);
    }
}

TEST(SequenceCrbAnySubstraction, KeepsWhatDoesNotOccurInTheSecondInTheOrderOfTheFirst)
{
    EXPECT_THAT(Subtraction({"p", "q", "p"}, {"p"}), ElementsAre("\"q\""));
    EXPECT_THAT(Subtraction({"p", "q", "p"}, {"q"}), ElementsAre("\"p\"", "\"p\""));
    EXPECT_THAT(Subtraction({"p", "q"}, {"q", "q", "p"}), IsEmpty());
    EXPECT_THAT(Subtraction({}, {"p"}), IsEmpty());
    EXPECT_THAT(Subtraction({"p", "q", "p"}, {}), ElementsAre("\"p\"", "\"q\"", "\"p\""));
}

TEST(SequenceCrbAnySubstraction, TellsAnIdentifierFromItsPrefixes)
{
    EXPECT_THAT(Subtraction({"p", "pq", ""}, {"pqr", "pq"}), ElementsAre("\"p\"", "\"\""));
}

TEST(SequenceCrbAnySubstraction, TakesWhatHoldsNoIdentifierForTheOneReadBefore)
{
    EXPECT_THAT(Subtraction({"p", kNone, "q", kNone}, {"p"}), ElementsAre("\"q\"", "3"));
    // At the start of the second list: the empty one, but only for the first element.
    EXPECT_THAT(Subtraction({"", kNone, ""}, {kNone, "q"}), ElementsAre("1", "\"\""));
    EXPECT_THAT(Subtraction({"", "p", ""}, {kNone}), ElementsAre("\"p\""));
}

TEST(SequenceCrbAnySubstraction, HasRoomForJustItsElements)
{
    _SEQUENCE_CORBAAny first = Identifiers({"p", "q", "r"}, 5);
    _SEQUENCE_CORBAAny second = Identifiers({"q"}, 3);
    EXPECT_EQ(SequenceCrbAnySubstraction(first, second).maximum(), 2);
    EXPECT_EQ(SequenceCrbAnySubstraction(second, first).maximum(), 0);
}

TEST(ZORConfigServices, TakesOneListForBoth)
{
    _SEQUENCE_CORBAAny list = Identifiers({"p", kNone, "p", ""}, 2);
    EXPECT_EQ(Told(SequenceCrbAnyIntersection(list, list)), Told(list));
    EXPECT_THAT(Told(SequenceCrbAnySubstraction(list, list)), IsEmpty());
}

TEST(ZORConfigServices, LeavesTheListsItReadsAlone)
{
    _SEQUENCE_CORBAAny first = Identifiers({"p", "q", kNone, "p"}, 2);
    _SEQUENCE_CORBAAny second = Identifiers({"p", "p"}, 1);
    const std::vector<std::string> toldFirst = Told(first);
    const std::vector<std::string> toldSecond = Told(second);
    _SEQUENCE_CORBAAny common = SequenceCrbAnyIntersection(first, second);
    _SEQUENCE_CORBAAny further = SequenceCrbAnySubstraction(first, second);
    common[0] << 1;
    further[0] << 1;
    EXPECT_EQ(Told(first), toldFirst);
    EXPECT_EQ(Told(second), toldSecond);
    EXPECT_EQ(first.maximum(), 6);
    EXPECT_EQ(second.maximum(), 3);
}

TEST(ZORConfigServices, ReturnsAListThatCanBeGivenToTheNextFunction)
{
    _SEQUENCE_CORBAAny list = Identifiers({"p", "q", "p"});
    _SEQUENCE_CORBAAny known = Identifiers({"q"});
    list = SequenceCrbAnySubstraction(list, known);
    RemoveDuplicate(list);
    EXPECT_THAT(Told(list), ElementsAre("\"p\""));
}

TEST(ZORConfigServices, LeavesAllListsAsTheyWereWhenThereIsNoMemory)
{
    const std::string large(100, 'l');
    _SEQUENCE_CORBAAny list = Identifiers({large, "p", large, "q", kNone}, 3);
    _SEQUENCE_CORBAAny interval = Longs({1, 10});
    _SEQUENCE_CORBAAny inside = Longs({3, 5});
    const std::vector<std::string> before = Told(list);
    const std::function<void()> calls[] = {
        [&] { RemoveDuplicate(list); },
        [&] { SequenceCrbAnyIntersection(list, list); },
        [&] { SequenceCrbAnySubstraction(list, interval); },
        [&] { SequenceInterval(interval, inside, inside, 1); },
    };
    for (const auto& call : calls) {
        int failures = 0;
        for (bool done = false; !done;) {
            try {
                const ScopedMemoryShortage shortage(failures);
                call();
                done = true;
            } catch (const std::bad_alloc&) {
                ++failures;
                EXPECT_EQ(Told(list), before);
                EXPECT_EQ(list.maximum(), 8);
                EXPECT_THAT(Told(interval), ElementsAre("1", "10"));
                EXPECT_THAT(Told(inside), ElementsAre("3", "5"));
            }
        }
        EXPECT_GT(failures, 0);
        list = Identifiers({large, "p", large, "q", kNone}, 3);
    }
}

namespace
{

// The method trace with a line for each scope that opens and closes, while it lives.
class TracedCalls
{
public:
    TracedCalls()
    {
        ZORPSNTrace::SetSink(
            [](const char* iLine, std::size_t iLength, void* iContext) {
                static_cast<std::string*>(iContext)->append(iLine, iLength);
            },
            &_Text);
        ZORPSNTrace::SetCallLines(true);
        ZORPSNTrace::SetActiveLevel(42);
    }
    ~TracedCalls()
    {
        ZORPSNTrace::SetActiveLevel(ZORPSNTrace::kOff);
        ZORPSNTrace::SetCallLines(false);
        ZORPSNTrace::SetSink(nullptr, nullptr);
    }
    TracedCalls(const TracedCalls&) = delete;
    TracedCalls& operator=(const TracedCalls&) = delete;

    std::string Of(const std::function<void()>& iCall)
    {
        _Text.clear();
        iCall();
        return _Text;
    }

private:
    std::string _Text;
};

} // namespace

TEST(ZORConfigServices, OpensOneTraceScopeForEachCall)
{
    TracedCalls trace;
    _SEQUENCE_CORBAAny list = Identifiers({"p", "q", "p"});
    _SEQUENCE_CORBAAny interval = Longs({1, 2});
    _SEQUENCE_CORBAAny result;
    const std::pair<const char*, std::function<void()>> calls[] = {
        {"SequenceIsEqual", [] { SequenceIsEqual(Octets("a"), Octets("a")); }},
        {"AlreadyExist", [&] { AlreadyExist(list, list[0]); }},
        {"RemoveDuplicate", [&] { RemoveDuplicate(list); }},
        {"SequenceCrbAnyIntersection", [&] { SequenceCrbAnyIntersection(list, list); }},
        {"SequenceCrbAnySubstraction", [&] { SequenceCrbAnySubstraction(list, list); }},
        {"SequenceInterval", [&] { SequenceInterval(interval, interval, result, 1); }},
        {"ObjInMemory::SetWorkInMemory", [] { ObjInMemory::SetWorkInMemory(); }},
        {"ObjInMemory::UnsetWorkInMemory", [] { ObjInMemory::UnsetWorkInMemory(); }},
        {"ObjInMemory::WorkInMemory", [] { ObjInMemory::WorkInMemory(); }},
    };
    for (const auto& [name, call] : calls) {
        const std::string traced = trace.Of(call);
        const std::string method = std::string("ZORConfigServices ") + name;
        EXPECT_EQ(std::count(traced.begin(), traced.end(), '\n'), 2) << traced;
        const std::size_t opened = traced.find(method);
        ASSERT_NE(opened, std::string::npos) << traced;
        EXPECT_NE(traced.find(method, opened + 1), std::string::npos) << traced;
    }
    ZORPSNTrace::SetActiveLevel(41);
    for (const auto& [name, call] : calls)
        EXPECT_EQ(trace.Of(call), "") << name;
}

namespace
{

// Lists of a few identifiers, each many times: prefixes of each other, the empty one, large ones;
// and elements that hold none, which some lists begin or end with or have nothing but.
class GeneratedLists
{
public:
    explicit GeneratedLists(unsigned iSeed) : _Random(iSeed) {}

    _SEQUENCE_CORBAAny Next(int iMostElements)
    {
        const int count = Below(iMostElements + 1);
        const int kinds = 1 + Below(6);
        const int noneOfTen = Below(4) * 3;
        std::vector<MaybeIdentifier> identifiers;
        for (int i = 0; i < count; ++i)
            identifiers.push_back(Below(10) < noneOfTen ? MaybeIdentifier() : Identifier(kinds));
        return Identifiers(identifiers, Below(3));
    }

    CORBAAny NextValue() { return AnyOf(Below(4) == 0 ? MaybeIdentifier() : Identifier(6)); }

private:
    std::string Identifier(int iKinds)
    {
        static const std::string kIdentifiers[] = {
            "", "p", "pq", std::string(2, '\0'), "q", std::string(60, 'p')};
        return kIdentifiers[Below(iKinds)];
    }
    int Below(int iLimit) { return std::uniform_int_distribution(0, iLimit - 1)(_Random); }

    std::mt19937 _Random;
};

void CompareWithPlain(unsigned iSeed, int iMostElements)
{
    SCOPED_TRACE("seed " + std::to_string(iSeed));
    GeneratedLists lists(iSeed);
    _SEQUENCE_CORBAAny first = lists.Next(iMostElements);
    _SEQUENCE_CORBAAny second = lists.Next(iMostElements);
    SCOPED_TRACE(Everything(first) + " with " + Everything(second));

    EXPECT_EQ(Everything(SequenceCrbAnyIntersection(first, second)),
              Everything(plain::Intersection(first, second)));
    EXPECT_EQ(Everything(SequenceCrbAnySubstraction(first, second)),
              Everything(plain::Subtraction(first, second)));
    EXPECT_EQ(Everything(SequenceCrbAnyIntersection(first, first)),
              Everything(plain::Intersection(first, first)));
    EXPECT_EQ(Everything(SequenceCrbAnySubstraction(first, first)),
              Everything(plain::Subtraction(first, first)));
    CORBAAny value = lists.NextValue();
    EXPECT_EQ(AlreadyExist(first, value), plain::Exists(first, value)) << Told(value);
    _SEQUENCE_CORBAAny expected = first;
    plain::RemoveDuplicate(expected);
    RemoveDuplicate(first);
    EXPECT_EQ(Everything(first), Everything(expected));
}

} // namespace

TEST(ZORConfigServices, AgreesWithThePlainAlgorithmsOnShortLists)
{
    for (unsigned seed = 0; seed < 10000 && !HasFailure(); ++seed)
        CompareWithPlain(seed, 6);
}

TEST(ZORConfigServices, AgreesWithThePlainAlgorithmsOnLongerLists)
{
    for (unsigned seed = 100000; seed < 100200 && !HasFailure(); ++seed)
        CompareWithPlain(seed, 60);
}

// Every list of up to five elements from p, q, the empty identifier and none.
TEST(ZORConfigServices, AgreesWithThePlainAlgorithmsOnAllListsOfAFewElements)
{
    const MaybeIdentifier alphabet[] = {"p", "q", "", kNone};
    std::vector<std::vector<MaybeIdentifier>> lists = {{}};
    for (std::size_t i = 0; lists[i].size() < 5; ++i)
        for (const MaybeIdentifier& each : alphabet) {
            lists.push_back(lists[i]);
            lists.back().push_back(each);
        }
    for (const auto& identifiers : lists) {
        _SEQUENCE_CORBAAny list = Identifiers(identifiers, 1);
        SCOPED_TRACE(Everything(list));
        _SEQUENCE_CORBAAny expected = list;
        plain::RemoveDuplicate(expected);
        RemoveDuplicate(list);
        ASSERT_EQ(Everything(list), Everything(expected));
    }
    for (const auto& one : lists) {
        if (one.size() > 3)
            break;
        for (const auto& other : lists) {
            if (other.size() > 3)
                break;
            _SEQUENCE_CORBAAny first = Identifiers(one);
            _SEQUENCE_CORBAAny second = Identifiers(other);
            SCOPED_TRACE(Everything(first) + " with " + Everything(second));
            ASSERT_EQ(Everything(SequenceCrbAnyIntersection(first, second)),
                      Everything(plain::Intersection(first, second)));
            ASSERT_EQ(Everything(SequenceCrbAnySubstraction(first, second)),
                      Everything(plain::Subtraction(first, second)));
        }
    }
}

// Comparing each with each would take hours.
TEST(ZORConfigServices, IsDoneInTimeWithHundredsOfThousandsOfIdentifiers)
{
    constexpr int kCount = 300000;
    std::vector<MaybeIdentifier> identifiers;
    for (int i = 0; i < kCount; ++i) {
        std::string each = std::to_string(i);
        identifiers.push_back(std::string(16 - each.size(), '0') + each);
    }
    _SEQUENCE_CORBAAny list = Identifiers(identifiers);
    const std::string last = *identifiers.back();
    std::reverse(identifiers.begin(), identifiers.end());
    _SEQUENCE_CORBAAny reversed = Identifiers(identifiers);

    EXPECT_EQ(SequenceCrbAnyIntersection(list, reversed).length(), kCount);
    EXPECT_EQ(SequenceCrbAnySubstraction(list, reversed).length(), 0);
    RemoveDuplicate(list);
    EXPECT_EQ(list.length(), kCount);
    CORBAAny value = AnyOf(last);
    EXPECT_EQ(AlreadyExist(list, value), 1);

    // The same with next to no identifier in the list.
    _SEQUENCE_CORBAAny none = Identifiers(std::vector<MaybeIdentifier>(kCount));
    none[0] << Octets("p");
    EXPECT_EQ(SequenceCrbAnyIntersection(none, none).length(), kCount);
    RemoveDuplicate(none);
    EXPECT_EQ(none.length(), kCount);
}
