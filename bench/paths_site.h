#pragma once

#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"
#include "support/Rows.h"

#include <chrono>
#include <memory>
#include <thread>
#include <vector>

// Directories of which the last holds the file that is sought.
struct PathSite {
    explicit PathSite(int iCount)
    {
        for (int i = 0; i < iCount; ++i)
            directories.push_back(root / "share/dux/part" + std::to_string(i));
        for (const std::string& each : directories) {
            std::filesystem::create_directories(each);
            path += (path.empty() ? "" : ":") + each;
        }
        found = directories.back() + "/DUXCatalog";
        std::ofstream(found) << "here\n";
        std::filesystem::permissions(found, std::filesystem::perms::owner_all);
    }

    ScopedDirectory root;
    std::vector<std::string> directories;
    std::string path;
    std::string found; // executable, because some look for nothing else
    static constexpr const char* kName = "DUXCatalog";
};

// The rows of each way to find a file along a path: `iFind` takes a name and a path, each as a
// `Text`, and returns the file's full path.
template <class Text, class Find>
void SeekFileRows(const std::string& iWho, Find iFind)
{
    for (const int count : {1, 10, 100})
        Row("SeekFile", count, iWho, [=](benchmark::State& ioState) {
            const PathSite site(count);
            const Text name(site.kName);
            const Text path(site.path.c_str());
            for ([[maybe_unused]] auto each : ioState)
                benchmark::DoNotOptimize(iFind(name, path));
            Check(ioState, iFind(name, path) == Text(site.found.c_str()));
        });
}

// A search path of ten entries, in a settings file and with settings and environment variables in
// it: the settings have names and values; the file is in the last.
struct SearchSite {
    SearchSite()
    {
        const std::vector<std::string>& all = site.directories;
        const std::string share = site.root / "share";
        settings = {{"PART3", all[3]}, {"PART6", all[6]}, {"PART9", share + "/dux/part9"}};
        settings.emplace_back("DUX_SEARCH_PATH", all[0] + ':' + all[1] +
                                                     ":$KW_SHARE/dux/part2:" + "$$PART3:" + all[4] +
                                                     ":$KW_SHARE/dux/part5:" + "$$PART6:" + all[7] +
                                                     ":$KW_SHARE/dux/part8:" + "$$PART9");
        variable = std::make_unique<ScopedEnvironment>("KW_SHARE", share);
    }

    PathSite site{10};
    std::vector<std::pair<std::string, std::string>> settings;
    std::unique_ptr<ScopedEnvironment> variable;
};

// The rows of each way to search all that: a Way is made from the site, and its Find() returns the
// full path of the file.
template <class Way>
void SearchPathRow(const std::string& iWho)
{
    Row("SearchPath", iWho, [](benchmark::State& ioState) {
        const SearchSite site;
        Way way(site);
        std::this_thread::sleep_for(std::chrono::milliseconds(20)); // the clock's grain
        for ([[maybe_unused]] auto each : ioState)
            benchmark::DoNotOptimize(way.Find(PathSite::kName));
        Check(ioState, way.Find(PathSite::kName) == site.site.found.c_str());
    });
}
