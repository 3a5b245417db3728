// A process is killed at each of its system calls in turn, and then the next one comes.

#include "WatchedChild.h"

#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"
#include "SettingsOperations.h"
#include "ZORDuxServices.h"
#include "ZORDuxTrace.h"

#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

using testing::AnyOfArray;
using testing::IsSubsetOf;

namespace
{

// Runs the body in a child that is killed at its first watched call, then in one that is killed at
// its second, and so on up to the first that lives, and calls `iCheck` after each end.
void KillAtEachCall(Interference::Kind iKind, const std::function<void()>& iPrepare,
                    const std::function<void()>& iBody,
                    const std::function<void(const WatchedEnd&)>& iCheck)
{
    for (int call = 1;; ++call) {
        iPrepare();
        const WatchedEnd end = InWatchedChild({iKind, call}, [&] {
            Watched(iBody);
            return std::string("lives");
        });
        SCOPED_TRACE("killed at call " + std::to_string(call) + ", " + end.met);
        iCheck(end);
        if (end.met.empty()) {
            EXPECT_EQ(end.report, "lives") << end.error;
            EXPECT_GT(call, 1);
            return;
        }
        EXPECT_EQ(end.status, -SIGKILL);
    }
}

// The old one goes first: each puts back the environment that it found.
void Renew(std::unique_ptr<RepositorySite>& ioSite)
{
    ioSite.reset();
    ioSite = std::make_unique<RepositorySite>();
}

Strings EntriesOf(const std::string& iDirectory)
{
    Strings names;
    for (const auto& each : std::filesystem::directory_iterator(iDirectory))
        names.push_back(each.path().filename());
    return names;
}

// The parts of a text that a writer of it may have come to.
MATCHER_P(IsBeginningOf, iText, "")
{
    return std::string_view(iText).starts_with(arg);
}

class SettingsCrashPoints : public testing::TestWithParam<SettingsOperation>
{
};

void NextSaves(const SettingsOperation& iOperation, const RepositorySite& iSite)
{
    const std::string file = iSite / iOperation.file;
    const auto save = [&] {
        ZORDuxServices().PutSetting("next", "x", file.c_str());
        return true;
    };
    EXPECT_TRUE(iOperation.ofNobody ? AsNobody(save) : save());
    EXPECT_EQ(iSite.Get("next", file), "x");
}

} // namespace

TEST_P(SettingsCrashPoints, LeaveAWholeFileAndNothingThatStopsTheNext)
{
    const SettingsOperation& operation = GetParam();
    for (const mode_t mask : {022u, 077u})
        for (const auto kind : {Interference::Kill, Interference::Tear}) {
            const mode_t before = umask(mask);
            std::unique_ptr<RepositorySite> site;
            KillAtEachCall(
                kind,
                [&] {
                    Renew(site);
                    operation.Prepare(*site);
                },
                [&] { operation.Run(*site); },
                [&](const WatchedEnd& end) {
                    const std::string state = operation.StateIn(*site);
                    if (end.met.empty()) {
                        EXPECT_EQ(state, operation.states.back());
                    } else {
                        EXPECT_THAT(state, AnyOfArray(operation.states));
                    }
                    NextSaves(operation, *site);
                    EXPECT_THAT(
                        EntriesOf(
                            std::filesystem::path(*site / operation.file).parent_path().string()),
                        IsSubsetOf({"site.toml", ".site.lock", "link.toml"}));
                });
            umask(before);
        }
}

INSTANTIATE_TEST_SUITE_P(, SettingsCrashPoints, testing::ValuesIn(SettingsOperations()),
                         [](const auto& iInfo) { return iInfo.param.name; });

TEST(SettingsPermissions, AreNoWiderAtAnyInstantOfASave)
{
    const mode_t before = umask(0);
    for (const mode_t mode : {0600u, 0640u}) {
        std::unique_ptr<RepositorySite> site;
        KillAtEachCall(
            Interference::Kill,
            [&] {
                Renew(site);
                site->SetBytes("A = '1'\n");
                ASSERT_EQ(chmod((*site / "site.toml").c_str(), mode), 0);
            },
            [&] { site->Put("A", "2"); },
            [&](const WatchedEnd&) {
                for (const std::string& name : EntriesOf(*site / "")) {
                    struct stat status;
                    ASSERT_EQ(stat((*site / name).c_str(), &status), 0);
                    EXPECT_EQ(status.st_mode & 0777 & ~mode, 0u) << name;
                }
            });
    }
    umask(before);
}

TEST(WriteStreamCrashPoints, LeaveTheBeginningOfTheText)
{
    for (const auto kind : {Interference::Kill, Interference::Tear})
        for (const std::size_t size : {10u, 20'000u}) {
            const ScopedDirectory directory;
            const std::string text(size, 'x');
            std::set<std::string> seen;
            KillAtEachCall(
                kind, [&] { directory.Write("f", "old"); },
                [&] {
                    ZORListValZORUnicodeString lines;
                    for (std::size_t done = 0; done < size; done += 10)
                        lines.Append("xxxxxxxxxx");
                    ZORDuxServices().WriteStream(lines, (directory / "f").c_str());
                },
                [&](const WatchedEnd& end) {
                    const std::string now = directory.Read("f");
                    if (end.met.empty()) {
                        EXPECT_EQ(now, text);
                    } else if (now != "old") {
                        EXPECT_THAT(now, IsBeginningOf(text));
                    }
                    // And the next one writes it whole.
                    EXPECT_EQ(ZORDuxServices().WriteStream({}, (directory / "f").c_str()), 1);
                    EXPECT_EQ(directory.Read("f"), "");
                });
        }
}

TEST(TraceReportCrashPoints, LoseNoLineButTheOneInTheMaking)
{
    const std::string report = "_DUX Trace [Inactive] : Channel\n"
                               "Channel           : First\n"
                               "Channel           : Second\n"
                               "Total trace number = 1\n";
    const ScopedDirectory directory;
    const ScopedEnvironment variable("DUX_TRACE_REPORT", directory / "report");
    const ScopedEnvironment none("ZOR_TRACE", std::nullopt);
    for (const auto kind : {Interference::Kill, Interference::Tear}) {
        std::size_t last = 0;
        KillAtEachCall(
            kind, [&] { directory.Write("report", "old"); },
            [] {
                char name[] = "Channel";
                ZORDuxTrace trace(name, nullptr, nullptr, 1);
                trace.FunctionBegin("First");
                trace.FunctionEnd();
                trace.FunctionBegin("Second");
                trace.FunctionEnd();
            },
            [&](const WatchedEnd& end) {
                const std::string now = directory.Read("report");
                if (now != "old") {
                    EXPECT_THAT(now, IsBeginningOf(report));
                    EXPECT_GE(now.size(), last);
                    last = now.size();
                }
                if (kind == Interference::Kill && now != "old" && !now.empty()) {
                    EXPECT_EQ(now.back(), '\n');
                }
                if (end.met.empty()) {
                    EXPECT_EQ(now, report);
                }
            });
    }
}
