// status: where the program looks for what, and what is there.

#include "Commands.h"
#include "Program.h"
#include "ZORDictionaryDirectories.h"
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

// Files of one name are read from the first directory that has one.
class Shadows
{
public:
    // What is to be said behind the file, which is the next in the order of the search.
    std::string RemarkOn(const std::string& iName, const std::string& iPath)
    {
        const auto [first, isFirst] = _First.try_emplace(iName, iPath);
        return isFirst ? "" : " (shadowed by " + first->second + ")";
    }

private:
    std::map<std::string, std::string> _First;
};

void PrintSettings(Session& ioSession)
{
    Shadows shadows;
    for (const ZORSettingDirectory& directory : ZORSettingDirectories()) {
        PrintDirectory(ioSession, "settings directory", Text(directory.path));
        for (const std::string& name : directory.names) {
            const std::string path = directory.path + "/" + name + ".toml";
            ioSession.Out().Line("settings file: " + path + shadows.RemarkOn(name, path));
        }
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
    status.Explains("The directories in the order of the search, with the files in them; of files\n"
                    "with one name the first is read, and shadows the others. Then the entries\n"
                    "of the search path, with settings and variables replaced by their values.");
    status.Example("kw4tools status");
    status.Advises([] {
        return "the search path cannot be told: mend the setting DUX_SEARCH_PATH, or the settings "
               "file DUXAdmin, as the message above says";
    });
    status.Does([](Session& ioSession) {
        PrintSettings(ioSession);
        PrintDictionaries(ioSession);
        PrintSearchPath(ioSession);
        return Status::Yes;
    });
}
