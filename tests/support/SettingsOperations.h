#pragma once

#include "AsNobody.h"
#include "RepositorySite.h"
#include "ZORDuxServices.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

// What the services do to a settings file, each as the tests of faults look at it.
struct SettingsOperation {
    std::string name;
    std::string file; // of the site
    // What is in the file from before to after; "-": there is none. A removal of several settings
    // saves after each one.
    Strings states;
    std::function<void(const std::string& iFile)> step;
    bool ofNobody = false; // root changes a file of somebody else's
    std::string from{};    // a link that the file is called by

    void Prepare(const RepositorySite& iSite) const
    {
        if (states.front() != "-")
            iSite.Directory().Write(file, states.front());
        if (!from.empty())
            std::filesystem::create_symlink(iSite / file, iSite / from);
        if (ofNobody) {
            ASSERT_EQ(chown((iSite / "").c_str(), kNobody, kNobody), 0) << "only root can do this";
            ASSERT_EQ(chown((iSite / file).c_str(), kNobody, kNobody), 0);
        }
    }

    // From the beginning, with the file as it was before.
    void Reset(const RepositorySite& iSite) const
    {
        if (states.front() != "-")
            iSite.Directory().Write(file, states.front());
        else
            std::filesystem::remove_all(iSite / file.substr(0, file.find('/')));
    }

    void Run(const RepositorySite& iSite) const { step(iSite / (from.empty() ? file : from)); }

    std::string StateIn(const RepositorySite& iSite) const
    {
        return std::filesystem::exists(iSite / file) ? iSite.Directory().Read(file) : "-";
    }

    // What is left beside the file.
    bool HasTemporary(const RepositorySite& iSite) const
    {
        return std::filesystem::exists(
            std::filesystem::path(iSite / file).replace_filename(".site.tmp"));
    }
};

inline std::ostream& operator<<(std::ostream& ioStream, const SettingsOperation& iOperation)
{
    return ioStream << iOperation.name;
}

inline std::vector<SettingsOperation> SettingsOperations()
{
    const auto put = [](const std::string& iFile) {
        ZORDuxServices().PutSetting("A", "2", iFile.c_str());
    };
    const auto remove = [](const std::string& iFile) {
        ZORDuxServices().RemoveSetting("A", iFile.c_str());
    };
    const Strings removal = {"A = \"1\"\nB = [\"A\", \"2\"]\nC = \"3\"\nD = [\"A\", \"4\"]\n",
                             "B = [\"A\", \"2\"]\nC = \"3\"\nD = [\"A\", \"4\"]\n",
                             "C = \"3\"\nD = [\"A\", \"4\"]\n", "C = \"3\"\n"};
    return {
        {"Put", "site.toml", {"A = \"1\"\n", "A = \"2\"\n"}, put},
        {"FirstPut", "site.toml", {"-", "A = \"2\"\n"}, put},
        {"PutIntoANewDirectory", "new/sub/site.toml", {"-", "A = \"2\"\n"}, put},
        {"PutThroughALink", "site.toml", {"A = \"1\"\n", "A = \"2\"\n"}, put, false, "link.toml"},
        {"PutIntoAFileOfAnother", "site.toml", {"A = \"1\"\n", "A = \"2\"\n"}, put, true},
        {"RemovalOfSeveral", "site.toml", removal, remove},
    };
}
