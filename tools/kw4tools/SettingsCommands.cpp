// settings: named values kept in settings files.

#include "Commands.h"
#include "Failure.h"
#include "Json.h"
#include "Program.h"
#include "SettingNames.h"
#include "SettingsEditing.h"
#include "ToldErrors.h"
#include "ZORSettingOrigin.h"

#include <algorithm>

namespace
{

const char kFileHelp[] =
    "The settings file: a name like DUXAdmin, without \".toml\", or a\npath with a \"/\" in it";

// What to do about an error with a settings file.
std::function<std::string(ZORError&)> AdviceOn(const std::string& iFile)
{
    return [&iFile](ZORError&) -> std::string {
        if (iFile.empty())
            return "the name of the settings file is empty; give one, such as DUXAdmin";
        return "nothing was done with the settings file '" + iFile +
               "'; mend what the message above names and try again";
    };
}

Status PrintOrigin(Session& ioSession, const std::string& iFile, const std::string& iName)
{
    const auto origin =
        TellingErrors([&] { return ZORFindSettingOrigin(iFile.c_str(), iName.c_str()); });
    if (!origin)
        return Status::No;
    ioSession.Out().Line(origin->file + ":" + std::to_string(origin->line));
    return Status::Yes;
}

void AddGet(Command& ioSettings)
{
    Command& get = ioSettings.Add("get", "Print the value of a setting");
    const std::string& file = get.Argument("FILE", kFileHelp, Completion::SettingsFile);
    const std::string& name = get.Argument("NAME", "The setting's name", Completion::Setting);
    const bool& origin =
        get.Flag("--origin", "Print instead where the value comes from: the path of the file,\n"
                             "a colon and the number of the line");
    get.Explains("Exit status 1, and nothing printed, when there is no such setting. One with an\n"
                 "empty value prints an empty line.");
    get.Example("kw4tools settings get DUXAdmin DUX_SEARCH_PATH");
    get.Advises([&](ZORError& iError) -> std::string {
        return !file.empty() && name.empty() ? "the name of the setting is empty; give one"
                                             : AdviceOn(file)(iError);
    });
    get.Does([&](Session& ioSession) {
        if (origin)
            return PrintOrigin(ioSession, file, name);
        const ZORUnicodeString value = ioSession.Services().GetSetting(Text(name), Text(file));
        if (value.IsEmpty() && !HasSetting(file, name))
            return Status::No;
        ioSession.Out().Line(View(value));
        return Status::Yes;
    });
}

void AddPut(Command& ioSettings)
{
    Command& put = ioSettings.Add("put", "Store a setting");
    const std::string& file = put.Argument("FILE", kFileHelp, Completion::SettingsFile);
    const std::string& name = put.Argument("NAME", "The setting's name", Completion::Setting);
    const std::string& value = put.Argument("VALUE", "Its value; may be empty");
    put.Explains(
        "The file is made when it is not there, and saved at once. Comments and all other\n"
        "settings in it stay as they are.");
    put.Example("kw4tools settings put DUXAdmin DUX_SEARCH_PATH '/site/models:$HOME/models'");
    put.Advises(AdviceOn(file));
    put.Does([&](Session& ioSession) {
        ioSession.Services().PutSetting(Text(name), Text(value), Text(file));
        return Status::Yes;
    });
}

void AddRemove(Command& ioSettings)
{
    Command& remove = ioSettings.Add("remove", "Remove a setting");
    const std::string& file = remove.Argument("FILE", kFileHelp, Completion::SettingsFile);
    const std::string& name = remove.Argument("NAME", "The setting's name", Completion::Setting);
    remove.Explains("Exit status 1 when there is no such setting.");
    remove.Example("kw4tools settings remove DUXAdmin OLD_PATH");
    remove.Advises(AdviceOn(file));
    remove.Does([&](Session& ioSession) {
        ZORIDuxServices& services = ioSession.Services();
        const ZORListValZORUnicodeString names = services.ListOfSettingVariables(Text(file));
        services.RemoveSetting(Text(name), Text(file));
        return YesIf(std::find(names.begin(), names.end(), name.c_str()) != names.end());
    });
}

void AddList(Command& ioSettings)
{
    Command& list = ioSettings.Add("list", "Print the names of the settings of a file");
    const std::string& file = list.Argument("FILE", kFileHelp, Completion::SettingsFile);
    const bool& nul = list.Flag("-0", "End each name with a NUL byte instead of an end of line");
    const bool& json = list.JsonFlag();
    list.Explains("In the order of the file. As JSON: an array of the names.");
    list.Example("kw4tools settings list DUXAdmin");
    list.Advises(AdviceOn(file));
    list.Does([&](Session& ioSession) {
        if (nul && json)
            throw UsageError("-0 and --json are two ways to print the names: give one of them");
        const ZORListValZORUnicodeString names =
            ioSession.Services().ListOfSettingVariables(Text(file));
        if (json) {
            const auto asJson = [](const ZORUnicodeString& each) { return Json(View(each)); };
            ioSession.Out().Line(Json::ArrayOf(names, asJson).Text());
            return Status::Yes;
        }
        for (const ZORUnicodeString& name : names) {
            ioSession.Out().Bytes(View(name));
            ioSession.Out().Bytes(nul ? std::string_view("\0", 1) : "\n");
        }
        return Status::Yes;
    });
}

void AddEdit(Command& ioSettings)
{
    Command& edit = ioSettings.Add("edit", "Change a settings file in your editor");
    const std::string& file = edit.Argument("FILE", kFileHelp, Completion::SettingsFile);
    edit.Explains(
        "Opens a copy in $VISUAL, else $EDITOR, else vi, and saves it when the editor\n"
        "ends: as safely as \"put\" does, and byte for byte. A damaged text is not saved;\n"
        "on a terminal you may go back to the editor with it. Whatever is not saved stays\n"
        "in the copy, whose path is told. A file that is damaged already can be mended so.");
    edit.Example("kw4tools settings edit DUXAdmin");
    edit.Advises(AdviceOn(file));
    edit.Does([&](Session&) { return EditSettings(file); });
}

} // namespace

void AddSettingsCommands(Program& ioProgram)
{
    Command& settings =
        ioProgram.Add("Settings", "settings", "Read and change the settings of the site");
    settings.Explains(
        "A settings file holds named values. The file NAME is NAME.toml in the first\n"
        "directory of ZOR_SETTINGS_PATH that has it; \"kw4tools status\" lists them.");
    settings.Example("kw4tools settings get DUXAdmin DUX_SEARCH_PATH");
    AddGet(settings);
    AddPut(settings);
    AddRemove(settings);
    AddList(settings);
    AddEdit(settings);
}
