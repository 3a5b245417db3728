// The path operations of the services: path lists, files along them, environment variables in them.

#include "MethodFrame.h"
#include "PathList.h"
#include "SettingReader.h"
#include "TextView.h"
#include "VariableReference.h"
#include "ZORDuxServices.h"
#include "ZORGetEnv.h"

#include <algorithm>
#include <climits>
#include <string>
#include <string_view>
#include <unistd.h>

namespace
{

const char kSettingsFile[] = "DUXAdmin";
const char kSearchPath[] = "DUX_SEARCH_PATH";
constexpr std::string_view kSettingMark = "$$"; // begins an entry that names a setting

bool Exists(const char* iPath)
{
    return access(iPath, F_OK) == 0;
}

// A file that is looked for in one directory after another.
class Candidate
{
public:
    explicit Candidate(std::string_view iName) : _Name(iName) {}

    bool ExistsIn(std::string_view iDirectory)
    {
        _Size = iDirectory.size() + 1 + _Name.size();
        if (_Size >= sizeof _Path) // no file has a longer path
            return false;
        char* const name = std::copy(iDirectory.begin(), iDirectory.end(), _Path);
        *name = '/';
        *std::copy(_Name.begin(), _Name.end(), name + 1) = '\0';
        return Exists(_Path);
    }
    // Where it exists.
    std::string_view Path() const { return {_Path, _Size}; }

private:
    std::string_view _Name;
    std::size_t _Size = 0;
    char _Path[PATH_MAX];
};

// A file name as its directory and its base name.
struct SplitName {
    ZORUnicodeString directory;
    ZORUnicodeString base;
};

SplitName Split(MethodFrame& ioFrame, const ZORUnicodeString& iFileName)
{
    const int slash = iFileName.SearchSubString("/", 0, ZORSearchBackward);
    if (slash < 0) {
        ioFrame.Note("Relative Naming Mode");
        return {{}, iFileName};
    }
    ioFrame.Note("Absolute Naming Mode");
    SplitName name{iFileName.SubString(0, slash),
                   iFileName.SubString(slash + 1, iFileName.GetLengthInChar())};
    ioFrame.Value("ArgDir", name.directory);
    return name;
}

// The pieces of a path list, as SeekPath finds and traces them.
PathList Pieces(const ZORUnicodeString& iFullPath, const ZORUnicodeString& iSeparator)
{
    MethodFrame frame("ZORDuxServices::SeekPath");
    frame.Value("iFullPath", iFullPath);
    return {iFullPath, iSeparator};
}

// The piece without the blanks around it.
std::string_view Directory(std::string_view iPiece)
{
    iPiece.remove_prefix(std::min(iPiece.find_first_not_of(' '), iPiece.size()));
    return iPiece.substr(0, iPiece.find_last_not_of(' ') + 1); // npos + 1 is nothing
}

// The entries of the search path joined again, each expanded and followed by a separator.
ZORUnicodeString Expand(MethodFrame& ioFrame, SettingReader& ioSettings,
                        const ZORUnicodeString& iSearchPath, const ZORUnicodeString& iSeparator)
{
    PathList entries = Pieces(iSearchPath, iSeparator);
    std::string path;
    path.reserve(2 * iSearchPath.GetLengthInBytes()); // mostly enough
    while (const auto piece = entries.Next()) {
        std::string_view entry = Directory(*piece);
        ZORUnicodeString other;
        if (entry.starts_with(kSettingMark)) {
            ioFrame.Note("Decode setting Path: ", entry);
            other = ioSettings.Get(ZORUnicodeString(entry.substr(kSettingMark.size())));
            entry = View(other);
        }
        if (entry.find('$') != std::string_view::npos) {
            other = ZORUnicodeString(entry);
            const bool expanded = ExpandVariable(ioFrame, other);
            entry = View(other);
            if (expanded)
                ioFrame.Note("New shell Path: ", entry);
        }
        path.append(entry).append(View(iSeparator));
    }
    return ZORUnicodeString(path);
}

void TellFound(MethodFrame& ioFrame, const char* iLabel, const ZORUnicodeString& iPath)
{
    ioFrame.Note("File is found");
    ioFrame.Value(iLabel, iPath);
}

} // namespace

ZORListValZORUnicodeString ZORDuxServices::SeekPath(const ZORUnicodeString& iFullPath)
{
    constexpr int kUsually = 16; // not many more
    ZORListValZORUnicodeString directories(kUsually);
    PathList pieces = Pieces(iFullPath, _TheSettingSeparator);
    while (const auto piece = pieces.Next())
        directories.Append(ZORUnicodeString(Directory(*piece)));
    return directories;
}

ZORUnicodeString ZORDuxServices::SeekFile(const ZORUnicodeString& iFileName,
                                          const ZORUnicodeString& iPath)
{
    MethodFrame frame("ZORDuxServices::SeekFile");
    frame.Value("iFileName", iFileName);
    frame.Value("iPath", iPath);
    Candidate candidate(View(iFileName));
    PathList pieces(iPath, _TheSettingSeparator);
    while (const auto directory = pieces.Next()) {
        frame.Value("Path", *directory);
        if (candidate.ExistsIn(*directory)) {
            frame.Value("Path", candidate.Path());
            return ZORUnicodeString(candidate.Path());
        }
    }
    return {};
}

ZORUnicodeString ZORDuxServices::SearchPath(const ZORUnicodeString& iFileName)
{
    MethodFrame frame("ZORDuxServices::SearchPath");
    frame.Value("iFileName", iFileName);
    return Guarded(ErrorReport::Short, [&]() -> ZORUnicodeString {
        const SplitName name = Split(frame, iFileName);
        frame.Value("RelativeName", name.base);

        frame.Note("Analyze by DUX_SEARCH_PATH: Begin");
        const ZORUnicodeString settingsFile(kSettingsFile);
        SettingReader settings(settingsFile);
        const ZORUnicodeString searchPath = settings.Get(kSearchPath);
        if (!searchPath.IsEmpty()) {
            const ZORUnicodeString path = Expand(frame, settings, searchPath, _TheSettingSeparator);
            ZORUnicodeString found = SeekFile(name.base, path);
            if (found.GetLengthInChar() > name.base.GetLengthInChar()) {
                TellFound(frame, "GoodPath", found);
                return found;
            }
        }

        frame.Note("Analyze argument PATH : Begin");
        ZORUnicodeString found = SeekFile(name.base, name.directory);
        // Not shorter is enough here: a name that ends in "/" counts as found even when nothing is.
        if (found.GetLengthInChar() >= name.base.GetLengthInChar()) {
            TellFound(frame, "GoodPath", found);
            return found;
        }

        frame.Note("Analyze in Local Directory : Begin");
        if (Exists(name.base.ConvertToChar())) {
            TellFound(frame, "RelativeName", name.base);
            return name.base;
        }
        frame.Note("File not found");
        return found;
    });
}

ZORListValZORUnicodeString ZORDuxServices::GetEnv(const ZORUnicodeString& iEnvType)
{
    MethodFrame frame("ZORDuxServices::GetEnv");
    frame.Value("iEnvType", iEnvType);
    ZORListValZORUnicodeString directories;
    const char* const value = ZORGetEnv(iEnvType.ConvertToChar());
    if (!value)
        return directories;
    frame.Value("TheVar", value);
    for (ZORUnicodeString& directory : SeekPath(value))
        if (!directory.IsEmpty()) // a blank piece names no directory
            directories.Append(std::move(directory));
    return directories;
}

ZORUnicodeString ZORDuxServices::SeekEnv(const ZORUnicodeString& iPath)
{
    MethodFrame frame("ZORDuxServices::SeekEnv");
    frame.Value("iPath", iPath);
    return Guarded(ErrorReport::Short, [&] {
        ZORUnicodeString path = iPath;
        ExpandVariable(frame, path);
        frame.Value("Path", path);
        return path;
    });
}
