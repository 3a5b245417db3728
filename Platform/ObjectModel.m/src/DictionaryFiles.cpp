#include "DictionaryFiles.h"

#include "DeclaredAdapter.h"
#include "Descriptor.h"
#include "DictionaryText.h"
#include "KeepAcrossForks.h"
#include "Registry.h"
#include "ZORDictionaryDirectories.h"
#include "ZORGetEnv.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <mutex>
#include <optional>
#include <string_view>
#include <sys/stat.h>
#include <system_error>

namespace
{

constexpr std::size_t kLargestFile = 1U << 20; // a dictionary of ten thousand entries

// In one piece: lines of other threads and processes do not mix into it.
void Tell(const std::string& iFile, const std::string& iWhat)
{
    std::cerr << iFile + ": " + iWhat + "\n" << std::flush;
}

std::vector<std::string> Directories()
{
    const char* const value = ZORGetEnv("ZOR_DICTIONARY_PATH");
    std::string_view rest = value ? value : "";
    std::vector<std::string> directories;
    while (!rest.empty()) {
        const std::string_view next = rest.substr(0, rest.find(':'));
        rest.remove_prefix(std::min(next.size() + 1, rest.size()));
        if (!next.empty())
            directories.emplace_back(next);
    }
    return directories;
}

// The names of the dictionary files of a directory, sorted by their bytes.
std::vector<std::string> NamesIn(const std::string& iDirectory, std::error_code& oFailure)
{
    std::vector<std::string> names;
    oFailure.clear();
    for (std::filesystem::directory_iterator each(iDirectory, oFailure), end;
         !oFailure && each != end; each.increment(oFailure))
        if (each->path().extension() == ".toml" && each->path().filename().string()[0] != '.')
            names.push_back(each->path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::nullopt_t Refuse(const std::string& iFile, const std::string& iWhy)
{
    Tell(iFile, "cannot be read: " + iWhy);
    return std::nullopt;
}

// The bytes of the file; nothing, once the reason is told, when they are not to be had. Nothing is
// waited for: a pipe of that name must not hold the program up.
std::optional<std::string> Read(const std::string& iFile)
{
    const Descriptor file(Uninterrupted(
        [&] { return open(iFile.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); }));
    struct stat status;
    if (!file || fstat(file.Get(), &status) != 0)
        return Refuse(iFile, std::strerror(errno));
    if (!S_ISREG(status.st_mode))
        return Refuse(iFile, "it is no plain file");
    if (status.st_size > static_cast<off_t>(kLargestFile))
        return Refuse(iFile, "it has more than 1 MiB");
    std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t size = 0;
    while (size < bytes.size()) {
        const ssize_t got = Uninterrupted(
            [&] { return read(file.Get(), bytes.data() + size, bytes.size() - size); });
        if (got < 0)
            return Refuse(iFile, std::strerror(errno));
        if (got == 0)
            break;
        size += static_cast<std::size_t>(got);
    }
    bytes.resize(size);
    return bytes;
}

// The file's absolute path: the program may be elsewhere when a library is loaded.
std::string Absolute(const std::string& iFile)
{
    std::error_code failure;
    const std::filesystem::path path = std::filesystem::absolute(iFile, failure);
    return failure ? iFile : path.string();
}

// Enters what the file declares and returns whether that was anything.
bool TakeFile(const std::string& iFile)
{
    const std::optional<std::string> bytes = Read(iFile);
    if (!bytes)
        return false;
    const DictionaryText text = ReadDictionaryText(*bytes);
    for (const DictionaryMistake& each : text.mistakes)
        Tell(iFile, "line " + std::to_string(each.line) + ": " + each.what);
    for (const DictionaryEntry& each : text.entries)
        Registry::Instance().Declare(each.className.c_str(), each.interfaceName.c_str(),
                                     std::make_shared<DeclaredAdapter>(Absolute(iFile), each));
    return !text.entries.empty();
}

bool TakeAll()
{
    bool any = false;
    for (const std::string& directory : Directories()) {
        std::error_code failure;
        for (const std::string& name : NamesIn(directory, failure))
            any = TakeFile((std::filesystem::path(directory) / name).string()) || any;
        if (failure && failure != std::errc::no_such_file_or_directory)
            Tell(directory, "cannot be read: " + failure.message());
    }
    return any;
}

// Reads them once. Whoever forks waits until another thread is through with that: the child would
// wait for ever.
class Reading
{
public:
    static Reading& Instance()
    {
        static Reading* const reading = new Reading;
        return *reading;
    }

    bool Any()
    {
        if (_Done.load(std::memory_order_acquire))
            return _Any;
        const std::lock_guard lock(_Mutex);
        if (!_Done.load(std::memory_order_relaxed)) {
            _Any = TakeAll();
            _Done.store(true, std::memory_order_release);
        }
        return _Any;
    }

private:
    Reading() { KeepAcrossForks<&Lock>(); }

    static std::mutex& Lock() { return Instance()._Mutex; }

    std::mutex _Mutex;
    std::atomic<bool> _Done{false};
    bool _Any = false;
};

} // namespace

bool ReadDictionaryFiles()
{
    return Reading::Instance().Any();
}

std::vector<ZORDictionaryDirectory> ZORDictionaryDirectories()
{
    std::vector<ZORDictionaryDirectory> all;
    std::error_code ignored;
    for (std::string& path : Directories()) {
        std::vector<std::string> names = NamesIn(path, ignored);
        all.push_back({std::move(path), std::move(names)});
    }
    return all;
}
