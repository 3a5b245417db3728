// A process that uses the services forks, and both go on.

#include "CreateServices.h"

#include "ChildProcess.h"
#include "RepositorySite.h"
#include "ZORDuxServices.h"
#include "ZORDuxTrace.h"
#include "ZORImplementationAdapter.h"
#include "ZORMetaClass.h"
#include "ZORPSNTrace.h"

#include <atomic>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <thread>

using testing::ElementsAre;
using testing::SizeIs;

// For the thread sanitizer: a child does not join the threads of its parent.
extern "C" const char* __tsan_default_options();
extern "C" const char* __tsan_default_options()
{
    return "report_thread_leaks=0";
}

namespace
{

// Does something in a child, which is given up after ten seconds: a lock that nobody is there to
// open would hold it for ever.
int InChildWithinSeconds(const std::function<int()>& iDo)
{
    return InChild([&] {
        alarm(10);
        return iDo();
    });
}

Strings LinesOf(const std::string& iFile)
{
    std::ifstream file(iFile);
    Strings lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

// Threads that do the same thing over and over until the end of the scope.
class Others
{
public:
    explicit Others(const std::function<void()>& iDo)
    {
        for (int i = 0; i < 3; ++i)
            _Threads.emplace_back([this, iDo] {
                while (!_Done)
                    iDo();
            });
    }
    ~Others()
    {
        _Done = true;
        for (std::thread& each : _Threads)
            each.join();
    }
    Others(const Others&) = delete;
    Others& operator=(const Others&) = delete;

private:
    std::atomic<bool> _Done = false;
    std::vector<std::thread> _Threads;
};

constexpr int kForks = 50;

} // namespace

TEST(Fork, LeavesBothWithSettingsThatTheOtherSees)
{
    const RepositorySite site;
    ZORDuxServices services;
    services.PutSetting("A", "1", "site");
    EXPECT_EQ(InChildWithinSeconds([&] {
                  if (services.GetSetting("A", "site") != "1")
                      return 1;
                  services.PutSetting("A", "2", "site");
                  services.PutSetting("B", "x", "site");
                  return services.GetSetting("B", "site") == "x" ? 0 : 2;
              }),
              0);
    EXPECT_EQ(services.GetSetting("A", "site"), "2");
    services.RemoveSetting("A", "site");
    EXPECT_THAT(site.List(), ElementsAre("B"));
}

TEST(Fork, NeverRepeatsAnIdentifier)
{
    ZORDuxServices services;
    constexpr int count = 1000;
    std::set<std::string> seen;
    const auto take = [&](std::ostream&& oStream) {
        for (int i = 0; i < count; ++i)
            oStream << services.GetIdentifier().ConvertToChar() << '\n';
    };
    const ScopedDirectory directory;
    take(std::ofstream(directory / "before"));
    for (const char* child : {"child", "sibling"})
        EXPECT_EQ(InChildWithinSeconds([&] {
                      take(std::ofstream(directory / child));
                      return 0;
                  }),
                  0);
    take(std::ofstream(directory / "after"));
    for (const char* file : {"before", "child", "sibling", "after"})
        for (const std::string& each : LinesOf(directory / file))
            EXPECT_TRUE(seen.insert(each).second) << each;
    EXPECT_THAT(seen, SizeIs(4 * count));
}

TEST(Fork, KeepsTheLinesOfTheMethodTraceWhole)
{
    const ScopedDirectory directory;
    ASSERT_TRUE(ZORPSNTrace::SetFile((directory / "trace").c_str()));
    ZORPSNTrace::SetActiveLevel(42);
    const auto trace = [](const char* iText) {
        for (int i = 0; i < 500; ++i)
            ZORDuxServices().PutSettingSeparator(iText);
    };
    trace("first");
    ChildProcess child([&] {
        trace("child");
        return 0;
    });
    trace("parent");
    EXPECT_EQ(child.Wait(), 0);
    ZORPSNTrace::SetActiveLevel(ZORPSNTrace::kOff);
    ZORPSNTrace::SetFile(nullptr);
    std::map<std::string, int> counts;
    for (const std::string& line : LinesOf(directory / "trace"))
        ++counts[line];
    const std::string line = "   ZORDuxServices::PutSettingSeparator iSeparator = ";
    EXPECT_EQ(counts, (std::map<std::string, int>{
                          {line + "first", 500}, {line + "child", 500}, {line + "parent", 500}}));
}

TEST(Fork, KeepsTheLinesOfChannelsAndReportWhole)
{
    const ScopedDirectory directory;
    const ScopedEnvironment report("DUX_TRACE_REPORT", directory / "report");
    const ScopedEnvironment channels("ZOR_TRACE", "all");
    const ScopedEnvironment file("ZOR_TRACE_FILE", directory / "trace");
    EXPECT_EQ(InChildWithinSeconds([] { // nothing was traced in it so far
                  char name[] = "Channel";
                  ZORDuxTrace trace(name, nullptr, nullptr, 2);
                  const auto write = [&](const char* iText) {
                      for (int i = 0; i < 500; ++i) {
                          trace << "this is the " << iText << '\n';
                          trace.FunctionBegin(iText);
                          trace.FunctionEnd();
                      }
                  };
                  write("first");
                  ChildProcess child([&] {
                      write("child");
                      return 0;
                  });
                  write("parent");
                  return child.Wait();
              }),
              0);
    std::map<std::string, int> counts;
    for (const std::string& line : LinesOf(directory / "trace"))
        ++counts[line];
    std::map<std::string, int> expected;
    for (const std::string who : {"first", "child", "parent"})
        for (const std::string& line : {"this is the " + who, who + "() {", std::string("}")})
            expected["Channel          " + line] += 500;
    EXPECT_EQ(counts, expected);
    counts.clear();
    for (const std::string& line : LinesOf(directory / "report"))
        ++counts[line];
    EXPECT_EQ(counts, (std::map<std::string, int>{{"_DUX Trace            :Channel", 1},
                                                  {"Channel           : first", 500},
                                                  {"Channel           : child", 500},
                                                  {"Channel           : parent", 500},
                                                  {"Total trace number = 1", 1}}));
}

TEST(Fork, FindsTheLocksOpenThatOtherThreadsHold)
{
    const RepositorySite site;
    site.Put("A", "x");
    ZORHandle<ZORImplementationAdapter> target(new ZORImplementationAdapter);
    std::atomic<int> number = 0;
    const Others others([&] {
        const ZORIDuxServices_var services = CreateServices();
        services->GetSetting("A", "site");
        ZORHandle<ZORImplementationAdapter> source(new ZORImplementationAdapter);
        target->AddInverseLink(source.Get());
        target->RemoveInverseLink(source.Get());
        fct_FindMetaObject(("Class" + std::to_string(++number % 1000)).c_str());
    });
    for (int i = 0; i < kForks; ++i)
        ASSERT_EQ(InChildWithinSeconds([&] {
                      ZORIDuxServices_var services = CreateServices();
                      services->PutSetting("B", "y", "site");
                      // The registry takes new classes, too.
                      fct_FindMetaObject(("New" + std::to_string(i)).c_str());
                      ZORHandle<ZORImplementationAdapter> source(new ZORImplementationAdapter);
                      target->AddInverseLink(source.Get());
                      return services->GetSetting("B", "site") == "y" ? 0 : 1;
                  }),
                  0)
            << i;
}

TEST(Fork, WaitsForTheThreadThatReadsTheDictionaryFiles)
{
    const ScopedDirectory directory;
    std::string entries;
    for (int i = 0; i < 1500; ++i)
        entries += "[[adapter]]\nclass = \"C" + std::to_string(i) +
                   "\"\ninterface = \"IMany\"\nlibrary = \"l\"\ncreator = \"c\"\n";
    directory.Write("many.toml", entries);
    const ScopedEnvironment path("ZOR_DICTIONARY_PATH", directory.Path().string());
    for (int round = 0; round < 3; ++round)
        EXPECT_EQ(InChildWithinSeconds([] { // where they are not read yet
                      std::atomic<bool> started = false;
                      std::thread reader([&] {
                          started = true;
                          ZORMetaClass::ListOfSupportedClass("IMany");
                      });
                      while (!started)
                          ;
                      usleep(500);
                      const int status = InChildWithinSeconds(
                          [] { return ZORMetaClass::ListOfSupportedClass("IMany") ? 0 : 1; });
                      reader.join();
                      return status;
                  }),
                  0);
}
