// Every system call that deals with files fails in turn, once and for good.

#include "WatchedChild.h"

#include "CatalogSite.h"
#include "CountedAllocations.h"
#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"
#include "SettingsOperations.h"
#include "Texts.h"
#include "TraceLines.h"
#include "ZORDuxServices.h"
#include "ZORDuxTrace.h"
#include "ZORMsg.h"
#include "ZORMsgCatalog.h"

#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::AllOf;
using testing::AnyOf;
using testing::AnyOfArray;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSubsetOf;
using testing::Not;
using testing::StartsWith;

namespace
{

constexpr int kErrors[] = {EIO, ENOSPC, EACCES, EDQUOT, EMFILE, ENOLCK};

std::size_t OpenDescriptors()
{
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

// Runs the body with its first call disturbed, then with its second, and so on up to the first that
// nothing happens to, and calls `iCheck` after each one's end.
void DisturbEachCall(Interference iHow, const std::function<void()>& iPrepare,
                     const std::function<std::string()>& iBody,
                     const std::function<void(const WatchedEnd&)>& iCheck)
{
    for (iHow.call = 1;; ++iHow.call) {
        iPrepare();
        const WatchedEnd end = InWatchedChild(iHow, iBody);
        SCOPED_TRACE("call " + std::to_string(iHow.call) + ", " + end.met + ", " +
                     (iHow.kind == Interference::Fail ? std::strerror(iHow.error) : "short") +
                     (iHow.forGood ? " for good: " : ": ") + end.report);
        ASSERT_EQ(end.status, 0) << end.error;
        iCheck(end);
        if (end.met.empty())
            return;
    }
}

// What equal steps leave behind more and more of; empty when it is nothing. What the first one
// makes for all that follow is no leak, and what is remembered of a file may differ by its age.
std::string PilesUp(const std::function<void()>& iStep)
{
    const CountedAllocations allocations;
    bool memory = true;
    bool descriptors = true;
    iStep();
    for (int round = 0; round < 4; ++round) {
        const long piecesBefore = allocations.Live();
        const std::size_t openBefore = OpenDescriptors();
        iStep();
        memory = memory && allocations.Live() > piecesBefore;
        descriptors = descriptors && OpenDescriptors() > openBefore;
    }
    return std::string(memory ? "memory " : "") + (descriptors ? "descriptors" : "");
}

class SettingsFaults : public testing::TestWithParam<SettingsOperation>
{
protected:
    // Runs the operation with each call disturbed like that, and calls `iCheck` with the error's
    // text, empty when there was none, and how it ended.
    void
    Disturb(const Interference& iHow,
            const std::function<void(const std::string& iError, const WatchedEnd& iEnd)>& iCheck)
    {
        const SettingsOperation& operation = GetParam();
        DisturbEachCall(
            iHow,
            [&] {
                site.reset(); // puts back the environment that it found
                site = std::make_unique<RepositorySite>();
                operation.Prepare(*site);
            },
            [&] {
                const std::size_t before = OpenDescriptors();
                std::optional<std::string> error;
                Watched([&] { error = ErrorOf([&] { operation.Run(*site); }); });
                return OpenDescriptors() == before ? error.value_or("") : "descriptors left open";
            },
            [&](const WatchedEnd& end) {
                iCheck(end.report, end);
                if (end.met != "unlinkat" || !iHow.forGood) {
                    EXPECT_FALSE(operation.HasTemporary(*site));
                }
                EXPECT_NE(end.report, "descriptors left open");
            });
    }

    // What is in the file after an error: what the saves before it made of it.
    testing::Matcher<std::string> AnyStateButTheLast() const
    {
        Strings states = GetParam().states;
        states.pop_back();
        return AnyOfArray(states);
    }

    std::string State() const { return GetParam().StateIn(*site); }

    std::unique_ptr<RepositorySite> site;
};

} // namespace

TEST_P(SettingsFaults, AreToldWithFileAndStepAndLeaveTheFileAsItWas)
{
    for (const int error : kErrors)
        for (const bool forGood : {false, true})
            Disturb({Interference::Fail, 0, error, forGood},
                    [&](const std::string& message, const WatchedEnd&) {
                        if (message.empty()) {
                            EXPECT_EQ(State(), GetParam().states.back());
                            return;
                        }
                        EXPECT_THAT(State(), AnyStateButTheLast());
                        EXPECT_THAT(message, StartsWith("settings file " + (*site / "")));
                        EXPECT_THAT(message, HasSubstr(": cannot "));
                        EXPECT_THAT(message, HasSubstr(std::strerror(error)));
                    });
}

TEST_P(SettingsFaults, DoNotComeFromASignalOrAShortWrite)
{
    Disturb({Interference::Fail, 0, EINTR, false},
            [&](const std::string& message, const WatchedEnd& end) {
                // Nothing interrupts the others.
                const Strings interrupted = {"openat", "read",  "write", "pwrite64",
                                             "fsync",  "flock", "close", ""};
                if (testing::Value(end.met, AnyOfArray(interrupted))) {
                    EXPECT_EQ(message, "");
                }
                EXPECT_EQ(State(), message.empty() ? GetParam().states.back() : State());
            });
    for (const bool forGood : {false, true})
        Disturb({Interference::Shorten, 0, 0, forGood},
                [&](const std::string& message, const WatchedEnd&) {
                    EXPECT_EQ(message, "");
                    EXPECT_EQ(State(), GetParam().states.back());
                });
}

TEST_P(SettingsFaults, EndWhenSignalsNeverDo)
{
    Disturb({Interference::Fail, 0, EINTR, true},
            [&](const std::string& message, const WatchedEnd&) {
                if (message.empty()) {
                    EXPECT_EQ(State(), GetParam().states.back());
                } else {
                    EXPECT_THAT(State(), AnyStateButTheLast());
                }
            });
}

TEST_P(SettingsFaults, LeaveNoMemoryAndNoDescriptorBehind)
{
    for (const bool forGood : {false, true})
        DisturbEachCall(
            {Interference::Fail, 0, EIO, forGood},
            [&] {
                site.reset(); // puts back the environment that it found
                site = std::make_unique<RepositorySite>();
                GetParam().Prepare(*site);
            },
            [&] {
                return PilesUp([&] {
                    GetParam().Reset(*site);
                    Watched([&] { ErrorOf([&] { GetParam().Run(*site); }); });
                });
            },
            [](const WatchedEnd& end) { EXPECT_EQ(end.report, ""); });
}

INSTANTIATE_TEST_SUITE_P(, SettingsFaults, testing::ValuesIn(SettingsOperations()),
                         [](const auto& iInfo) { return iInfo.param.name; });

// Reading: the answer, or an error that says why there is none.
TEST(ReadingFaults, AreToldWithTheFile)
{
    const RepositorySite site;
    const CatalogSite catalogs;
    site.SetBytes("A = \"value\"\n");
    catalogs.Write("Site", "A = 'value'\n");
    const struct {
        std::string file;
        std::function<std::string()> read;
    } rows[] = {
        {site / "site.toml",
         [] { return std::string(ZORDuxServices().GetSetting("A", "site").ConvertToChar()); }},
        {site / "site.toml",
         [] {
             return Texts(ZORDuxServices().ListOfSettingVariables("site")) == Strings{"A"}
                        ? "value"
                        : "another list";
         }},
        {catalogs.Directory() / "Site.toml", [] {
             ZORMsgCatalog catalog("Site");
             const auto message = ZORHandle<ZORMsg>::Adopt(catalog.GetMsg("A"));
             return std::string(message->GetText().ConvertToChar());
         }}};
    for (const auto& row : rows)
        for (const bool forGood : {false, true})
            for (const int error : {EIO, EACCES, EMFILE, EINTR})
                DisturbEachCall(
                    {Interference::Fail, 0, error, forGood}, [] {},
                    [&] {
                        std::string result;
                        const std::size_t before = OpenDescriptors();
                        Watched([&] {
                            if (const auto raised = ErrorOf([&] { result = row.read(); }))
                                result = *raised;
                        });
                        return OpenDescriptors() == before ? result : "descriptors left open";
                    },
                    [&](const WatchedEnd& end) {
                        if (end.report != "value") {
                            EXPECT_THAT(end.report, AllOf(HasSubstr(row.file),
                                                          HasSubstr(std::strerror(error))));
                        }
                    });
}

TEST(ReadStreamFaults, GiveWhatWasReadBefore)
{
    const ScopedDirectory directory;
    std::string text;
    for (int i = 0; i < 1000; ++i)
        text += std::to_string(i) + " line\n";
    const std::string file = directory.Write("f", text);
    const auto run = [&] {
        TraceLines lines;
        std::string read;
        Watched([&] {
            for (const std::string& each : Texts(ZORDuxServices().ReadStream(file.c_str())))
                read += each;
        });
        const std::string last = lines.Taken().back().substr(std::strlen("   ZORDuxServices::"));
        return (text.starts_with(read) ? read == text ? "all, " : "a part, " : "something else, ") +
               last;
    };
    const std::map<std::string, std::string> results = {
        {"openat", "a part, ReadStream Open Stream: KO"},
        {"read", "ReadStream Could not read data file"},
        {"close", "all, ReadStream Close Stream: KO"}};
    const std::string well = "all, ReadStream Close Stream: OK";
    for (const bool forGood : {false, true})
        for (const int error : {EIO, EACCES, EMFILE, EINTR})
            DisturbEachCall(
                {Interference::Fail, 0, error, forGood}, [] {}, run,
                [&](const WatchedEnd& end) {
                    const auto row = results.find(end.met);
                    EXPECT_THAT(end.report, EndsWith(row == results.end() ? well : row->second));
                    EXPECT_THAT(end.report, Not(HasSubstr("something else")));
                });
    DisturbEachCall(
        {Interference::Shorten, 0, 0, true}, [] {}, run,
        [&](const WatchedEnd& end) { EXPECT_EQ(end.report, well); });
}

namespace
{

// How WriteStream fares with a file that was there: what it returns, the last line of its trace and
// how many files it leaves open.
struct Written {
    const ScopedDirectory directory{};
    std::size_t size;

    std::string Text() const { return std::string(size, 'x'); }
    std::string File() const { return directory.Read("f"); }

    void Disturb(const Interference& iHow,
                 const std::function<void(const WatchedEnd& iEnd)>& iCheck) const
    {
        DisturbEachCall(
            iHow, [&] { directory.Write("f", "old"); }, [&] { return Run(); }, iCheck);
    }

private:
    std::string Run() const
    {
        TraceLines lines;
        ZORListValZORUnicodeString texts;
        for (std::size_t done = 0; done < size; done += 10)
            texts.Append("xxxxxxxxxx");
        const std::size_t before = OpenDescriptors();
        int result = 0;
        Watched([&] { result = ZORDuxServices().WriteStream(texts, (directory / "f").c_str()); });
        const std::string last = lines.Taken().back().substr(std::strlen("   ZORDuxServices::"));
        return std::to_string(result) + ", " + last + ", " +
               std::to_string(OpenDescriptors() - before) + " left open";
    }
};

const std::string kWrittenWell = "1, WriteStream Close Stream: OK, 0 left open";

} // namespace

TEST(WriteStreamFaults, GiveTheResultOfTheStepThatFails)
{
    for (const std::size_t size : {10u, 20'000u}) {
        const Written stream{.size = size};
        // What fits the stream's buffer is written when it is closed.
        const std::string writing = size == 10 ? "0, WriteStream Close Stream: KO, 0 left open"
                                               : "0, WriteStream Write Stream: KO, 1 left open";
        const std::map<std::string, std::string> results = {
            {"openat", "0, WriteStream Open Stream: KO, 0 left open"},
            {"write", writing},
            {"close", "0, WriteStream Close Stream: KO, 0 left open"}};
        for (const bool forGood : {false, true})
            for (const int error : {EIO, ENOSPC, EACCES, EDQUOT, EMFILE, ENOLCK, EINTR})
                stream.Disturb({Interference::Fail, 0, error, forGood}, [&](const WatchedEnd& end) {
                    const auto row = results.find(end.met);
                    const bool last = end.report.starts_with("0, WriteStream Close");
                    if (end.met == "write" && size > 10 && last) {
                        return; // the last of several
                    }
                    EXPECT_EQ(end.report, row == results.end() ? kWrittenWell : row->second);
                    if (end.met == "openat") {
                        EXPECT_EQ(stream.File(), "old");
                    } else if (row == results.end()) {
                        EXPECT_EQ(stream.File(), stream.Text());
                    }
                });
        for (const bool forGood : {false, true})
            stream.Disturb({Interference::Shorten, 0, 0, forGood}, [&](const WatchedEnd& end) {
                EXPECT_EQ(end.report, kWrittenWell);
                EXPECT_EQ(stream.File(), stream.Text());
            });
    }
}

namespace
{

const Strings kReport = {"_DUX Trace [Inactive] : Channel", "Channel           : First",
                         "Channel           : Second", "Total trace number = 1"};

// How the report of one trace fares: what is in its file, and that nothing stays open.
struct Reported {
    const ScopedDirectory directory{};
    const ScopedEnvironment variable{"DUX_TRACE_REPORT", directory / "report"};
    const ScopedEnvironment none{"ZOR_TRACE", std::nullopt};

    void Disturb(const Interference& iHow,
                 const std::function<void(const Strings&, const WatchedEnd&)>& iCheck) const
    {
        DisturbEachCall(
            iHow, [&] { directory.Write("report", "old\n"); }, [&] { return Run(); },
            [&](const WatchedEnd& end) {
                EXPECT_EQ(end.report, "");
                iCheck(Lines(), end);
            });
    }

    Strings Lines() const
    {
        std::ifstream file(directory / "report");
        Strings lines;
        for (std::string line; std::getline(file, line);)
            lines.push_back(line);
        return lines;
    }

    std::string Told(const char* iWhat) const
    {
        return std::string("DUX_TRACE_REPORT: ") + iWhat + directory / "report" + "\n";
    }

private:
    static std::string Run()
    {
        const std::size_t before = OpenDescriptors();
        Watched([] {
            char name[] = "Channel";
            ZORDuxTrace trace(name, nullptr, nullptr, 1);
            for (const char* function : {"First", "Second"}) {
                trace.FunctionBegin(function);
                trace.FunctionEnd();
            }
        });
        return OpenDescriptors() == before ? "" : "left descriptors open";
    }
};

} // namespace

TEST(TraceReportFaults, LoseTheLineThatCannotBeWrittenAndNoOther)
{
    const Reported report;
    for (const bool forGood : {false, true})
        for (const int error : kErrors)
            report.Disturb({Interference::Fail, 0, error, forGood}, [&](const Strings& lines,
                                                                        const WatchedEnd& end) {
                if (end.met == "openat") {
                    EXPECT_EQ(end.error, report.Told("failed to open file "));
                    EXPECT_THAT(lines, ElementsAre("old"));
                    return;
                }
                if (end.met != "write") {
                    EXPECT_EQ(lines, kReport);
                } else if (end.error.empty()) { // the message, and with `forGood` all that follow
                    EXPECT_THAT(lines, AnyOf(kReport, IsEmpty()));
                } else {
                    EXPECT_EQ(end.error, report.Told("using file "));
                    EXPECT_THAT(lines, IsSubsetOf(kReport));
                    EXPECT_TRUE(forGood || lines.size() == kReport.size() - 1);
                }
            });
}

TEST(TraceReportFaults, DoNotComeFromASignalOrAShortWrite)
{
    const Reported report;
    report.Disturb({Interference::Fail, 0, EINTR, false},
                   [&](const Strings& lines, const WatchedEnd&) { EXPECT_EQ(lines, kReport); });
    report.Disturb({Interference::Fail, 0, EINTR, true},
                   [&](const Strings& lines, const WatchedEnd&) { EXPECT_LE(lines.size(), 4u); });
    for (const bool forGood : {false, true})
        report.Disturb({Interference::Shorten, 0, 0, forGood},
                       [&](const Strings& lines, const WatchedEnd& end) {
                           EXPECT_EQ(lines, kReport);
                           EXPECT_EQ(end.error, report.Told("using file "));
                       });
}
