// status: where the program looks for what, and what is there.

#include "Colours.h"
#include "Commands.h"
#include "Json.h"
#include "Program.h"
#include "SearchPathAdvice.h"
#include "ZORDictionaryDirectories.h"
#include "ZORMsgCatalogDirectories.h"
#include "ZORSettingDirectories.h"

#include <map>
#include <unistd.h>

namespace
{

const char kSettingsFile[] = "DUXAdmin";
const char kSearchPath[] = "DUX_SEARCH_PATH";

struct File {
    std::string path;
    std::string first; // the one of the same name in an earlier directory, if there is one
};

struct Directory {
    std::string path;
    std::vector<File> files;
};

// The directories of one kind of files, in the order of the search, and the words for them.
struct Place {
    const char* kind;       // "catalog": a "catalog directory" holds a "catalog file"
    const char* remark;     // how a file lies to the first of its name; null: by itself
    const char* jsonName;   // of the array of directories
    const char* jsonRemark; // of the member that is the first file of the name
    std::vector<Directory> directories;
};

// Notes the files of further directories, and which of them come behind others.
class Files
{
public:
    Directory In(const std::string& iDirectory, const std::vector<std::string>& iNames)
    {
        Directory directory{iDirectory, {}};
        for (const std::string& name : iNames) {
            std::string path = iDirectory;
            ((path += '/') += name) += ".toml";
            const auto [first, isFirst] = _First.try_emplace(name, path);
            directory.files.push_back({path, isFirst ? "" : first->second});
        }
        return directory;
    }

private:
    std::map<std::string, std::string> _First;
};

Place SettingsPlace()
{
    Place place{"settings", "shadowed by", "settings", "shadowed_by", {}};
    Files files;
    for (const ZORSettingDirectory& each : ZORSettingDirectories())
        place.directories.push_back(files.In(each.path, each.names));
    return place;
}

// A text of a catalog is looked for by its key, so of two files neither hides all of the other.
Place CatalogsPlace()
{
    Place place{"catalog", "behind", "catalogs", "behind", {}};
    Files files;
    for (const ZORMsgCatalogDirectory& each : ZORMsgCatalogDirectories())
        place.directories.push_back(files.In(each.path, each.names));
    return place;
}

Place DictionariesPlace()
{
    Place place{"dictionary", nullptr, "dictionaries", nullptr, {}};
    for (const ZORDictionaryDirectory& each : ZORDictionaryDirectories()) {
        Directory directory{each.path, {}};
        for (const std::string& name : each.names)
            directory.files.push_back({each.path + "/" + name, ""});
        place.directories.push_back(std::move(directory));
    }
    return place;
}

std::vector<Place> Places()
{
    std::vector<Place> places;
    places.push_back(SettingsPlace());
    places.push_back(CatalogsPlace());
    places.push_back(DictionariesPlace());
    return places;
}

// The pieces of a path list as a search takes them: unlike SeekPath it leaves them their blanks.
ZORListValZORUnicodeString Pieces(const ZORUnicodeString& iPath, const ZORUnicodeString& iSeparator)
{
    ZORListValZORUnicodeString pieces;
    ZORUnicodeString piece;
    for (int i = 0; i <= iPath.GetLengthInChar(); ++i) {
        const ZORUnicodeString character = iPath.SubString(i, 1); // empty behind the last one
        if (!character.IsEmpty() && iSeparator.SearchSubString(character) < 0) {
            piece.Append(character);
        } else if (!piece.IsEmpty()) {
            pieces.Append(piece);
            piece = "";
        }
    }
    return pieces;
}

// The directories that a search tries, in its order: the entries of the search path, each that
// names a setting or a variable replaced by what it stands for.
ZORListValZORUnicodeString SearchDirectories(ZORIDuxServices& ioServices)
{
    constexpr char kSettingMark[] = "$$";
    const ZORUnicodeString separator = ioServices.GetSettingSeparator();
    ZORUnicodeString path;
    for (ZORUnicodeString entry :
         ioServices.SeekPath(ioServices.GetSetting(kSearchPath, kSettingsFile))) {
        if (entry.SearchSubString(kSettingMark) == 0)
            entry =
                ioServices.GetSetting(entry.SubString(2, entry.GetLengthInChar()), kSettingsFile);
        path.Append(ioServices.SeekEnv(entry));
        path.Append(separator);
    }
    return Pieces(path, separator);
}

bool Exists(Session& ioSession, const ZORUnicodeString& iPath)
{
    return ioSession.Services().CheckFile(iPath).exists != 0;
}

// Prints all that is there, line by line.
class StatusLines
{
public:
    explicit StatusLines(Session& ioSession) : _Session(ioSession) {}

    void Print(const Place& iPlace)
    {
        for (const Directory& directory : iPlace.directories) {
            PrintDirectory(std::string(iPlace.kind) + " directory", Text(directory.path));
            for (const File& file : directory.files) {
                std::string line = std::string(iPlace.kind) + " file: " + file.path;
                if (!file.first.empty())
                    line += " (" + _Colours.Doubtful(iPlace.remark) + " " + file.first + ")";
                _Session.Out().Line(line);
            }
        }
    }

    void PrintDirectory(const std::string& iKind, const ZORUnicodeString& iPath)
    {
        const std::string verdict =
            Exists(_Session, iPath) ? _Colours.Good("exists") : _Colours.Doubtful("missing");
        _Session.Out().Line(iKind + ": " + std::string(View(iPath)) + " (" + verdict + ")");
    }

private:
    Session& _Session;
    const Colours _Colours{STDOUT_FILENO};
};

void PrintLines(Session& ioSession)
{
    StatusLines lines(ioSession);
    for (const Place& place : Places())
        lines.Print(place);
    for (const ZORUnicodeString& directory : SearchDirectories(ioSession.Services()))
        lines.PrintDirectory("search path entry", directory);
}

Json AsJson(Session& ioSession, const Place& iPlace)
{
    const auto fileAsJson = [&](const File& iFile) {
        Json file = Json::Object();
        file.Add("path", iFile.path);
        if (iPlace.jsonRemark)
            file.Add(iPlace.jsonRemark, iFile.first.empty() ? Json(nullptr) : Json(iFile.first));
        return file;
    };
    return Json::ArrayOf(iPlace.directories, [&](const Directory& each) {
        return Json::Object()
            .Add("directory", each.path)
            .Add("exists", Exists(ioSession, Text(each.path)))
            .Add("files", Json::ArrayOf(each.files, fileAsJson));
    });
}

void PrintJson(Session& ioSession)
{
    Json status = Json::Object();
    for (const Place& place : Places())
        status.Add(place.jsonName, AsJson(ioSession, place));
    Json entries = Json::Array();
    for (const ZORUnicodeString& directory : SearchDirectories(ioSession.Services()))
        entries.Add(Json::Object()
                        .Add("directory", View(directory))
                        .Add("exists", Exists(ioSession, directory)));
    ioSession.Out().Line(status.Add("search_path", entries).Text());
}

} // namespace

void AddStatusCommand(Program& ioProgram)
{
    Command& status = ioProgram.Add("Settings", "status",
                                    "Print where settings and files are looked for, and what is "
                                    "there");
    status.Explains(
        "The directories in the order of the search, with the files in them; of\n"
        "settings files with one name the first is read and shadows the others, of\n"
        "catalogs the texts of the first count before those behind it. Then the entries\n"
        "of the search path, with settings and variables replaced by their values.\n"
        "As JSON: an object with the arrays \"settings\", \"catalogs\", \"dictionaries\"\n"
        "and \"search_path\", each of directories.");
    const bool& json = status.JsonFlag();
    status.Example("kw4tools status");
    status.Advises(SearchPathAdvice);
    status.Does([&](Session& ioSession) {
        json ? PrintJson(ioSession) : PrintLines(ioSession);
        return Status::Yes;
    });
}
