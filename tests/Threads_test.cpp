// Many threads at once, from the very first use in the process on; above all for the thread
// sanitizer.

#include "CreateServices.h"

#include "LifeCycleObject.h"
#include "RepositorySite.h"
#include "Texts.h"
#include "ZORPSNTrace.h"

#include <atomic>
#include <barrier>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <thread>

namespace
{

constexpr int kThreads = 32;
constexpr int kRounds = 50;

// Runs the body in all threads, with their number, at the same time; what one raises is a failure.
void InThreads(const std::function<void(int)>& iDo)
{
    std::barrier start(kThreads);
    std::atomic<int> raised = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&, i] {
            start.arrive_and_wait();
            try {
                iDo(i);
            } catch (const std::exception& exception) {
                ++raised;
            }
        });
    for (std::thread& each : threads)
        each.join();
    EXPECT_EQ(raised, 0);
}

} // namespace

TEST(Threads, CreateAndUseServicesOfTheirOwn)
{
    const RepositorySite site;
    site.SetBytes("A = \"value\"\n");
    std::atomic<int> wrong = 0;
    InThreads([&](int) {
        for (int i = 0; i < kRounds; ++i) {
            const ZORIDuxServices_var services = CreateServices();
            wrong += services->GetSetting("A", "site") != "value";
            wrong += Texts(services->ListOfSettingVariables("site")) != Strings{"A"};
            wrong += services->GetIdentifier().GetLengthInBytes() != 36;
            wrong += services->SeekFile("site.toml", (site / "").c_str()).IsEmpty();
            const ZORHandle<LifeCycleObject> life(services);
            const ZORBaseUnknown_var object(life);
            wrong += !(services == ZORIDuxServices_var(object));
        }
    });
    EXPECT_EQ(wrong, 0);
}

TEST(Threads, CopyHandlesOnOneObjectAndCastThem)
{
    std::atomic<int> wrong = 0;
    ZORIDuxServices_var services = CreateServices();
    InThreads([&](int) {
        std::vector<ZORIDuxServices_var> copies;
        for (int i = 0; i < kRounds; ++i) {
            copies.push_back(services);
            const ZORHandle<LifeCycleObject> life(copies.back());
            wrong += !life || !(copies.back() == ZORIDuxServices_var(life));
        }
    });
    EXPECT_EQ(wrong, 0);
}

TEST(Threads, ReadSettingsWhileOneWritesThem)
{
    const RepositorySite site;
    site.Put("A", "0");
    std::atomic<int> wrong = 0;
    InThreads([&](int thread) {
        long last = 0;
        for (int i = 1; i <= kRounds; ++i)
            if (thread == 0) {
                site.Put("A", std::to_string(i));
            } else {
                const long now =
                    std::stol(CreateServices()->GetSetting("A", "site").ConvertToChar());
                wrong += now < last || now > kRounds;
                last = now;
            }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(site.Get("A"), std::to_string(kRounds));
}

TEST(Threads, RaiseErrorsAndTraceLinesOfTheirOwn)
{
    const RepositorySite site;
    site.SetBytes("damaged");
    const ScopedDirectory directory;
    ASSERT_TRUE(ZORPSNTrace::SetFile((directory / "trace").c_str()));
    ZORPSNTrace::SetActiveLevel(42);
    std::atomic<int> raised = 0;
    InThreads([&](int) {
        for (int i = 0; i < 5; ++i)
            raised += ErrorOf([] { CreateServices()->GetSetting("A", "site"); }).has_value();
    });
    ZORPSNTrace::SetActiveLevel(ZORPSNTrace::kOff);
    ZORPSNTrace::SetFile(nullptr);
    EXPECT_EQ(raised, 5 * kThreads);
    std::ifstream file(directory / "trace");
    std::set<std::string> lines;
    int count = 0;
    for (std::string line; std::getline(file, line); ++count)
        lines.insert(line);
    EXPECT_EQ(count, 2 * 5 * kThreads);
    EXPECT_EQ(lines, (std::set<std::string>{"   ZORDuxServices::GetSetting iVariableName = A",
                                            "   ZORDuxServices::GetSetting iFileName = site"}));
}
