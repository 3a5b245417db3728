// status: where the program looks for what, and what is there.

#include "Commands.h"
#include "Program.h"
#include "ZORDictionaryDirectories.h"
#include "ZORMsgCatalogDirectories.h"
#include "ZORSettingDirectories.h"

#include <map>

namespace
{

const char kSettingsFile[] = "DUXAdmin";
const char kSearchPath[] = "DUX_SEARCH_PATH";

void PrintDirectory(Session& ioSession, const std::string& iKind, const ZORUnicodeString& iPath)
{
    const bool exists = ioSession.Services().CheckFile(iPath).exists;
    ioSession.Out().Line(iKind + ": " + std::string(View(iPath)) +
                         (exists ? " (exists)" : " (missing)"));
}

// The files of one kind, in the order of the search.
class Files
{
public:
    // `iRemark` tells of a file that comes behind one of the same name in an earlier directory.
    Files(std::string iKind, std::string iRemark)
        : _Kind(std::move(iKind)), _Remark(std::move(iRemark))
    {
    }

    void Print(Session& ioSession, const std::string& iDirectory,
               const std::vector<std::string>& iNames)
    {
        for (const std::string& name : iNames) {
            const std::string path = iDirectory + "/" + name + ".toml";
            const auto [first, isFirst] = _First.try_emplace(name, path);
            ioSession.Out().Line(_Kind + " file: " + path +
                                 (isFirst ? "" : " (" + _Remark + " " + first->second + ")"));
        }
    }

private:
    std::string _Kind;
    std::string _Remark;
    std::map<std::string, std::string> _First;
};

void PrintSettings(Session& ioSession)
{
    Files files("settings", "shadowed by");
    for (const ZORSettingDirectory& directory : ZORSettingDirectories()) {
        PrintDirectory(ioSession, "settings directory", Text(directory.path));
        files.Print(ioSession, directory.path, directory.names);
    }
}

// A text of a catalog is looked for by its key, so of two files neither hides all of the other.
void PrintCatalogs(Session& ioSession)
{
    Files files("catalog", "behind");
    for (const ZORMsgCatalogDirectory& directory : ZORMsgCatalogDirectories()) {
        PrintDirectory(ioSession, "catalog directory", Text(directory.path));
        files.Print(ioSession, directory.path, directory.names);
    }
}

void PrintDictionaries(Session& ioSession)
{
    for (const ZORDictionaryDirectory& directory : ZORDictionaryDirectories()) {
        PrintDirectory(ioSession, "dictionary directory", Text(directory.path));
        for (const std::string& name : directory.names)
            ioSession.Out().Line("dictionary file: " + directory.path + "/" + name);
    }
}

// The directories that a search tries, in its order: the entries of the search path, each that
// names a setting or a variable replaced by what it stands for.
ZORListValZORUnicodeString SearchDirectories(ZORIDuxServices& ioServices)
{
    constexpr char kSettingMark[] = "$$";
    ZORUnicodeString path;
    for (ZORUnicodeString entry :
         ioServices.SeekPath(ioServices.GetSetting(kSearchPath, kSettingsFile))) {
        if (entry.SearchSubString(kSettingMark) == 0)
            entry =
                ioServices.GetSetting(entry.SubString(2, entry.GetLengthInChar()), kSettingsFile);
        path.Append(ioServices.SeekEnv(entry));
        path.Append(ioServices.GetSettingSeparator());
    }
    return ioServices.SeekPath(path);
}

void PrintSearchPath(Session& ioSession)
{
    for (const ZORUnicodeString& directory : SearchDirectories(ioSession.Services()))
        PrintDirectory(ioSession, "search path entry", directory);
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
        "of the search path, with settings and variables replaced by their values.");
    status.Example("kw4tools status");
    status.Advises([] {
        return "the search path cannot be told: mend the setting DUX_SEARCH_PATH, or the settings "
               "file DUXAdmin, as the message above says";
    });
    status.Does([](Session& ioSession) {
        PrintSettings(ioSession);
        PrintCatalogs(ioSession);
        PrintDictionaries(ioSession);
        PrintSearchPath(ioSession);
        return Status::Yes;
    });
}
