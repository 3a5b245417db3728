// Every allocation fails in turn, once and for good.

#include "CountedMemory.h"

#include "CapturedOutput.h"
#include "ChildProcess.h"
#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"
#include "SearchLib.h"
#include "SettingsOperations.h"
#include "SettingsSite.h"
#include "ZORDuxServices.h"
#include "ZORDuxTrace.h"
#include "ZORLoadExternalSchema.h"

#include <algorithm>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <new>

using testing::AnyOf;
using testing::AnyOfArray;
using testing::MatchesRegex;

namespace
{

std::size_t OpenDescriptors()
{
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

// How a step ends that finds no memory somewhere.
enum class Ending { Well, Raised, NoMemory };

template <class Step>
Ending EndingOf(Step iStep)
{
    try {
        iStep();
        return Ending::Well;
    } catch (const ZORRaisedError&) {
        return Ending::Raised;
    } catch (const std::bad_alloc&) {
        return Ending::NoMemory;
    }
}

// Whether each number is greater than the one before; the first ones may be whatever they are.
template <class Number>
bool Grows(const std::vector<Number>& iNumbers)
{
    return std::adjacent_find(iNumbers.begin() + 2, iNumbers.end(), std::greater_equal<Number>()) ==
           iNumbers.end();
}

// Runs the step with its first allocation failing, then with its second, and so on, in a process
// that does it for the first time, and calls `iCheck` there; up to the first that nothing happens
// to. Several times in that process, each after `iReset`; that must not leave more and more behind.
void StarveEachAllocation(const std::function<void()>& iPrepare,
                          const std::function<void()>& iReset, const std::function<void()>& iStep,
                          const std::function<void(Ending)>& iCheck)
{
    constexpr int kNotMet = 77;
    for (const bool forGood : {false, true})
        for (long pieces = 0;; ++pieces) {
            SCOPED_TRACE(std::to_string(pieces) + " allocations" + (forGood ? ", then none" : ""));
            iPrepare();
            const CapturedOutput error(STDERR_FILENO);
            const int status = InChild([&] {
                const CountedMemory memory;
                std::vector<long> live;
                std::vector<std::size_t> open;
                for (int round = 0; round < 6; ++round) {
                    iReset();
                    const Ending ending = EndingOf([&] {
                        const ScopedMallocShortage shortage(pieces, forGood);
                        iStep();
                    });
                    const bool met = ScopedMallocShortage::WasMet();
                    iCheck(met ? ending : Ending::Well);
                    if (!met && round == 0)
                        return testing::Test::HasFailure() ? 1 : kNotMet;
                    live.push_back(memory.Live());
                    open.push_back(OpenDescriptors());
                }
                EXPECT_FALSE(Grows(live)) << testing::PrintToString(live);
                EXPECT_FALSE(Grows(open)) << testing::PrintToString(open);
                return testing::Test::HasFailure() ? 1 : 0;
            });
            EXPECT_THAT(status, AnyOf(0, kNotMet)) << error.Text();
            if (status != 0) {
                EXPECT_GT(pieces, 0);
                break;
            }
        }
}

class SettingsMemory : public testing::TestWithParam<SettingsOperation>
{
};

} // namespace

TEST_P(SettingsMemory, LeavesTheFileAsItWasWhenThereIsNone)
{
    std::unique_ptr<RepositorySite> site;
    StarveEachAllocation(
        [&] {
            site.reset(); // puts back the environment that it found
            site = std::make_unique<RepositorySite>();
            GetParam().Prepare(*site);
        },
        [&] { GetParam().Reset(*site); }, [&] { GetParam().Run(*site); },
        [&](Ending ending) {
            const Strings& states = GetParam().states;
            const std::string state = GetParam().StateIn(*site);
            if (ending == Ending::Well) {
                EXPECT_EQ(state, states.back());
            } else {
                EXPECT_THAT(state, AnyOfArray(states.begin(), states.end() - 1));
            }
            EXPECT_FALSE(GetParam().HasTemporary(*site));
        });
}

INSTANTIATE_TEST_SUITE_P(, SettingsMemory, testing::ValuesIn(SettingsOperations()),
                         [](const auto& iInfo) { return iInfo.param.name; });

TEST(WriteStreamMemory, LeavesTheFileAsItWasOrWritesIt)
{
    const ScopedDirectory directory;
    const std::string text(200, 'x');
    int result = -1;
    StarveEachAllocation([] {}, [&] { directory.Write("f", "old"); },
                         [&] {
                             result = -1;
                             ZORListValZORUnicodeString lines;
                             for (int i = 0; i < 20; ++i)
                                 lines.Append("xxxxxxxxxx");
                             result =
                                 ZORDuxServices().WriteStream(lines, (directory / "f").c_str());
                         },
                         [&](Ending ending) {
                             EXPECT_EQ(directory.Read("f"), result == 1 ? text : "old");
                             EXPECT_EQ(ending, result == -1 ? Ending::NoMemory : Ending::Well);
                         });
}

TEST(TraceReportMemory, CostsLinesOfTheReportOrTheTrace)
{
    const ScopedDirectory directory;
    const ScopedEnvironment variable("DUX_TRACE_REPORT", directory / "report");
    const ScopedEnvironment none("ZOR_TRACE", std::nullopt);
    StarveEachAllocation([&] { directory.Write("report", ""); }, [] {},
                         [&] {
                             char name[] = "Channel";
                             ZORDuxTrace trace(name, nullptr, nullptr, 1);
                             trace.FunctionBegin("Function");
                             if (_gReport)
                                 *_gReport << "A line of another module, "
                                           << "and its end\nMore\n";
                             trace.FunctionEnd();
                         },
                         [&](Ending ending) {
                             std::ifstream file(directory / "report");
                             for (std::string line; std::getline(file, line);) {
                                 EXPECT_THAT(line, MatchesRegex("_DUX Trace .Inactive. : Channel|"
                                                                "Channel           : Function|"
                                                                "A line of another module, and its "
                                                                "end|More|"
                                                                "Total trace number = [01]"));
                             }
                             EXPECT_NE(ending, Ending::Raised);
                         });
}

TEST(SearchLibMemory, PassesOverNoPlaceThatHasTheLibrary)
{
    const ScopedDirectory place;
    place.Write("a/libFoo.so", "");
    place.Write("b/libFoo.so", "");
    const ScopedEnvironment path("LD_LIBRARY_PATH", place / "a:" + (place / "b"));
    const ScopedWorkingDirectory here(place.Path());
    long pieces = 0;
    for (bool met = true; met; ++pieces) {
        char* found = nullptr;
        {
            const ScopedMallocShortage shortage(pieces, false);
            found = SearchLib("libFoo.so");
        }
        met = ScopedMallocShortage::WasMet();
        if (met)
            EXPECT_EQ(found, nullptr) << pieces;
        else
            EXPECT_EQ(std::string(found), place / "a/libFoo.so");
        std::free(found);
    }
    EXPECT_EQ(pieces, 3); // one for the name itself, one for the first directory
}

TEST(ZORLoadExternalSchemaMemory, GivesNothingAndTellsNothingWithoutRoomForItsNames)
{
    const ScopedDirectory place;
    const std::string path = place.Write("library of a long name, longer than any schema's", "");
    constexpr long kNames = 3; // of the library, of its creation function, and the path
    for (long pieces = 0; pieces < kNames; ++pieces) {
        const CapturedOutput error(STDERR_FILENO);
        int unset = 0;
        void* result = &unset;
        EXPECT_NO_THROW({
            const ScopedMallocShortage shortage(pieces, false);
            result = ZORLoadExternalSchema("a schema of a long name", path.c_str());
        });
        EXPECT_TRUE(ScopedMallocShortage::WasMet());
        EXPECT_EQ(result, nullptr) << pieces;
        EXPECT_EQ(error.Text(), "") << pieces;
    }
}

TEST(ErrorMemory, RaisingAndTellingLeavesNothingBehind)
{
    const SettingsSite site;
    site.Write("Damaged", "A =\n");
    const std::function<void(ZORDuxServices&)> operations[] = {
        [](ZORDuxServices& s) { s.GetSetting("", "a settings file of a long name"); },
        [](ZORDuxServices& s) { s.GetSetting("a setting of a long name", "/tmp"); },
        [](ZORDuxServices& s) { s.GetSetting("a setting of a long name", "Damaged"); },
        [](ZORDuxServices& s) { s.LoadSchema("a schema of a name that no library has"); },
    };
    for (const auto& operation : operations) {
        const auto run = [&] {
            ZORDuxServices services;
            operation(services);
        };
        // Done once beforehand: what is made for good is there then.
        const CapturedOutput error(STDERR_FILENO);
        EXPECT_EQ(EndingOf(run), Ending::Raised);
        StarveEachAllocation([] {}, [] {}, run, [](Ending) {});
    }
}
