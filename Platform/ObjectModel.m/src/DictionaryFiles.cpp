#include "DictionaryFiles.h"

#include "DeclaredAdapter.h"
#include "DictionaryText.h"
#include "Registry.h"
#include "ZORDictionaryFiles.h"
#include "ZORGetEnv.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <mutex>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr char kSuffix[] = ".toml";
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
        const std::size_t end = std::min(rest.find(':'), rest.size());
        if (end > 0)
            directories.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return directories;
}

bool IsDictionary(std::string_view iName)
{
    const std::string_view suffix(kSuffix);
    return iName.size() > suffix.size() && iName.front() != '.' &&
           iName.substr(iName.size() - suffix.size()) == suffix;
}

struct Listing {
    std::vector<std::string> files; // paths, in the order of their names
    int failure = 0;                // why the directory cannot be read
};

Listing FilesOf(const std::string& iDirectory)
{
    Listing listing;
    DIR* const directory = opendir(iDirectory.c_str());
    if (!directory) {
        listing.failure = errno;
        return listing;
    }
    errno = 0;
    while (const dirent* const each = readdir(directory))
        if (IsDictionary(each->d_name))
            listing.files.push_back(iDirectory + "/" + each->d_name);
    listing.failure = errno;
    closedir(directory);
    std::sort(listing.files.begin(), listing.files.end());
    return listing;
}

class OpenFile
{
public:
    // Without waiting: a pipe of that name must not hold the program up.
    explicit OpenFile(const std::string& iPath)
        : _Descriptor(open(iPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY))
    {
    }
    ~OpenFile()
    {
        if (_Descriptor >= 0)
            close(_Descriptor);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    // The bytes of the file; nothing, with the reason in oFailure, when they are not to be had.
    std::optional<std::string> Read(std::string& oFailure) const
    {
        struct stat status;
        if (_Descriptor < 0 || fstat(_Descriptor, &status) != 0)
            return Refuse(oFailure, std::strerror(errno));
        if (!S_ISREG(status.st_mode))
            return Refuse(oFailure, "it is no plain file");
        if (status.st_size > static_cast<off_t>(kLargestFile))
            return Refuse(oFailure, "it has more than 1 MiB");
        std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
        std::size_t done = 0;
        while (done < bytes.size()) {
            const ssize_t got = read(_Descriptor, bytes.data() + done, bytes.size() - done);
            if (got < 0 && errno == EINTR)
                continue;
            if (got < 0)
                return Refuse(oFailure, std::strerror(errno));
            if (got == 0)
                break;
            done += static_cast<std::size_t>(got);
        }
        bytes.resize(done);
        return bytes;
    }

private:
    static std::nullopt_t Refuse(std::string& oFailure, const char* iWhy)
    {
        oFailure = iWhy;
        return std::nullopt;
    }

    int _Descriptor;
};

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
    std::string failure;
    const std::optional<std::string> bytes = OpenFile(iFile).Read(failure);
    if (!bytes) {
        Tell(iFile, "cannot be read: " + failure);
        return false;
    }
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
        const Listing listing = FilesOf(directory);
        if (listing.failure != 0 && listing.failure != ENOENT)
            Tell(directory, std::string("cannot be read: ") + std::strerror(listing.failure));
        for (const std::string& file : listing.files)
            any = TakeFile(file) || any;
    }
    return any;
}

ZORListValZORUnicodeString ListOf(const std::vector<std::string>& iTexts)
{
    ZORListValZORUnicodeString list;
    for (const std::string& each : iTexts)
        list.Append(ZORUnicodeString(each));
    return list;
}

} // namespace

bool ReadDictionaryFiles()
{
    static const bool any = TakeAll();
    return any;
}

ZORListValZORUnicodeString ZORListOfDictionaryDirectories()
{
    return ListOf(Directories());
}

ZORListValZORUnicodeString ZORListOfDictionaryFiles(const ZORUnicodeString& iDirectory)
{
    return ListOf(FilesOf(iDirectory.ConvertToChar()).files);
}
