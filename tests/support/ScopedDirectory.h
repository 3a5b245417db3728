#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

// A fresh directory for one test, removed with all it holds at the end.
class ScopedDirectory
{
public:
    explicit ScopedDirectory(
        const std::filesystem::path& iParent = std::filesystem::temp_directory_path())
    {
        std::string pattern = (iParent / "kw4tools-XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            throw std::runtime_error("cannot make a directory like " + pattern);
        _Path = pattern;
    }
    ~ScopedDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(_Path, ignored);
    }
    ScopedDirectory(const ScopedDirectory&) = delete;
    ScopedDirectory& operator=(const ScopedDirectory&) = delete;

    const std::filesystem::path& Path() const { return _Path; }
    std::string operator/(const std::string& iName) const { return (_Path / iName).string(); }

    // Writes a file of that name, with the directories above it, and returns its path.
    std::string Write(const std::string& iName, const std::string& iBytes) const
    {
        const std::filesystem::path file = _Path / iName;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << iBytes;
        return file.string();
    }

    std::string Read(const std::string& iName) const
    {
        std::ifstream stream(_Path / iName, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

private:
    std::filesystem::path _Path;
};

// Moves to a directory and back again.
class ScopedWorkingDirectory
{
public:
    explicit ScopedWorkingDirectory(const std::filesystem::path& iPath)
        : _Before(std::filesystem::current_path())
    {
        std::filesystem::current_path(iPath);
    }
    ~ScopedWorkingDirectory() { std::filesystem::current_path(_Before); }
    ScopedWorkingDirectory(const ScopedWorkingDirectory&) = delete;
    ScopedWorkingDirectory& operator=(const ScopedWorkingDirectory&) = delete;

private:
    std::filesystem::path _Before;
};
