#include "ZORTrace.h"

#include "InChild.h"
#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"
#include "traput.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <memory>
#include <string>

namespace
{

// What a process in which ZOR_TRACE has that value writes for channels of these names.
std::string Written(const char* iSwitchedOn)
{
    const ScopedEnvironment names("ZOR_TRACE", iSwitchedOn ? std::optional<std::string>(iSwitchedOn)
                                                           : std::nullopt);
    return InChild([] {
               for (const char* name : {"Search", "Settings", "", "all of them", "Sea"}) {
                   const ZORTrace trace(name, "title", 0, "owner", 1024);
                   traput(trace.GetHandle(), 2, (std::string(name) + "\n").c_str());
               }
           })
        .error;
}

void Put(const ZORTrace& iTrace, const char* iText)
{
    traput(iTrace.GetHandle(), 2, iText);
}

// Runs in a process of its own, with all channels on.
template <class Body>
ChildEnd Traced(Body iBody)
{
    static const ZORTrace* channel = nullptr; // kept to the end, within reach
    const ScopedEnvironment all("ZOR_TRACE", "all");
    return InChild([&] {
        channel = new ZORTrace("Channel", nullptr, 0, nullptr, 0);
        iBody(*channel);
    });
}

} // namespace

TEST(ZORTrace, IsAChannelThatTextsArePutTo)
{
    EXPECT_EQ(Traced([](const ZORTrace& iTrace) {
                  traput(iTrace.GetHandle(), 2, "3 directories\n");
              }).error,
              "3 directories\n");
}

TEST(ZORTrace, IsSwitchedOnByName)
{
    EXPECT_EQ(Written(nullptr), "");
    EXPECT_EQ(Written(""), "");
    EXPECT_EQ(Written("Search"), "Search\n");
    EXPECT_EQ(Written("Settings,Search"), "Search\nSettings\n");
    EXPECT_EQ(Written("search"), "");
    EXPECT_EQ(Written("Searc"), "");
    EXPECT_EQ(Written(" Search"), "");
    EXPECT_EQ(Written("all of them"), "all of them\n");
    EXPECT_EQ(Written("all"), "Search\nSettings\n\nall of them\nSea\n");
    EXPECT_EQ(Written("Search,all"), "Search\nSettings\n\nall of them\nSea\n");
}

TEST(ZORTrace, IsSwitchedWhileItLives)
{
    const ChildEnd end = InChild([] {
        const ZORTrace trace("Channel", nullptr, 0, nullptr, 1024);
        const ZORTrace other("Other", nullptr, 0, nullptr, 1024);
        Put(trace, "before\n");
        ZORTrace::SetSwitch("Channel", 1);
        Put(trace, trace.IsOn() ? "on\n" : "off\n");
        Put(other, "off\n");
        Put(trace, other.IsOn() ? "on, too\n" : "");
        const ZORTrace namesake("Channel", nullptr, 0, nullptr, 1024);
        Put(namesake, "its namesake\n");
        ZORTrace::SetSwitch("Channel", 0);
        Put(trace, "after\n");
        Put(namesake, "after\n");
        ZORTrace::SetSwitch("", 1);
        Put(ZORTrace(nullptr, nullptr, 0, nullptr, -1), "without a name\n");
    });
    EXPECT_EQ(end.error, "on\nits namesake\nwithout a name\n");
}

TEST(ZORTrace, EachChannelHasAHandleOfItsOwnWhileItLives)
{
    const ChildEnd end = InChild([] {
        auto first = std::make_unique<ZORTrace>("a", nullptr, 0, nullptr, 0);
        const ZORTrace second("a", nullptr, 0, nullptr, 0);
        const bool differ = first->GetHandle() != second.GetHandle();
        first.reset();
        const ZORTrace third("a", nullptr, 0, nullptr, 0);
        _exit(differ && third.GetHandle() != second.GetHandle() ? 0 : 1);
    });
    EXPECT_EQ(end.status, 0);
}

TEST(ZORTrace, WritesWhatIsLeftOfALineWhenTheChannelGoes)
{
    EXPECT_EQ(Traced([](const ZORTrace& iTrace) {
                  Put(iTrace, "finished\nun");
                  Put(iTrace, "finished");
                  delete &iTrace;
                  std::_Exit(0);
              }).error,
              "finished\nunfinished");
}

TEST(ZORTrace, WritesWhatIsLeftOfALineWhenTheProcessExits)
{
    EXPECT_EQ(Traced([](const ZORTrace& iTrace) { Put(iTrace, "finished\nunfinished"); }).error,
              "finished\nunfinished");
}

TEST(ZORTrace, WritesAtOnceWhileStaticObjectsGo)
{
    static const ZORTrace* late = nullptr;
    struct Last {
        ~Last()
        {
            Put(*late, "un");
            Put(*late, "finished");
        }
    };
    EXPECT_EQ(Traced([](const ZORTrace& iTrace) {
                  late = &iTrace;
                  std::atexit([] { Put(*late, "early, "); });
              }).error,
              "early, ");
    EXPECT_EQ(InChild([] {
                  static const Last last;
                  setenv("ZOR_TRACE", "all", 1);
                  late = new ZORTrace("Channel", nullptr, 0, nullptr, 0);
              }).error,
              "unfinished");
}

TEST(ZORTrace, EveryFinishedLineIsThereHoweverTheProcessEnds)
{
    for (const int signal : {SIGKILL, SIGABRT, 0}) {
        const ChildEnd end = Traced([&](const ZORTrace& iTrace) {
            Put(iTrace, "one\n");
            Put(iTrace, "two\n");
            Put(iTrace, "in the making");
            if (signal == 0)
                _exit(3);
            std::signal(SIGABRT, SIG_DFL);
            kill(getpid(), signal);
        });
        EXPECT_EQ(end.error, "one\ntwo\n") << signal;
        EXPECT_EQ(end.status, signal ? -signal : 3);
    }
}

TEST(ZORTrace, WritesToTheEndOfAFile)
{
    const ScopedDirectory directory;
    const ScopedEnvironment file("ZOR_TRACE_FILE", directory.Write("trace", "before\n"));
    const ChildEnd end = Traced([](const ZORTrace& iTrace) { Put(iTrace, "line\n"); });
    EXPECT_EQ(end.error, "");
    EXPECT_EQ(directory.Read("trace"), "before\nline\n");
}

TEST(ZORTrace, MakesNoFileWhileNothingIsWritten)
{
    const ScopedDirectory directory;
    const ScopedEnvironment file("ZOR_TRACE_FILE", directory / "trace");
    InChild([] {
        const ZORTrace trace("Channel", nullptr, 0, nullptr, 1024);
        Put(trace, "off\n");
    });
    EXPECT_FALSE(std::filesystem::exists(directory / "trace"));
}

TEST(ZORTrace, AFileThatCannotBeOpenedIsToldOnceAndDoesNoHarm)
{
    const ScopedEnvironment file("ZOR_TRACE_FILE", "/nowhere/trace");
    const ChildEnd end = Traced([](const ZORTrace& iTrace) {
        errno = ERANGE;
        Put(iTrace, "one\n");
        const int after = errno;
        Put(iTrace, "two\n");
        _exit(after == ERANGE ? 0 : 1);
    });
    EXPECT_EQ(end.error, "ZOR_TRACE_FILE: cannot open /nowhere/trace: No such file or directory\n"
                         "one\ntwo\n");
    EXPECT_EQ(end.status, 0);
}

TEST(ZORTrace, GoesOnWhenTheDiskIsFull)
{
    const ScopedEnvironment file("ZOR_TRACE_FILE", "/dev/full");
    const ChildEnd end = Traced([](const ZORTrace& iTrace) {
        for (int i = 0; i < 100; ++i)
            Put(iTrace, "does not fit\n");
    });
    EXPECT_EQ(end.error, "");
    EXPECT_EQ(end.status, 0);
}
