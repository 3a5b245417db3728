#include "SettingsEditing.h"

#include "Editor.h"
#include "Failure.h"
#include "ToldErrors.h"
#include "ZORSettingText.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <unistd.h>

namespace
{

// The copy that is edited, under the name of the file, in a directory of its own for its user
// alone: editors leave files of theirs beside it. It stays when it holds what was saved nowhere.
class Draft
{
public:
    explicit Draft(const ZORSettingText& iSettings)
        : _Original(iSettings.GetBytes()), _Directory(MakeDirectory()),
          _Path(_Directory / std::filesystem::path(iSettings.GetFile()).filename())
    {
        std::ofstream stream(_Path, std::ios::binary);
        stream << _Original;
        if (!stream.flush())
            throw Failure("cannot write the copy " + _Path.string() + ": " + std::strerror(errno));
    }
    ~Draft()
    {
        std::error_code ignored;
        if (!_Kept)
            std::filesystem::remove_all(_Directory, ignored);
    }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    std::string Path() const { return _Path.string(); }
    std::string Read() const
    {
        std::ifstream stream(_Path, std::ios::binary);
        if (!stream)
            throw Failure("the editor left no text in " + Path());
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    bool IsChanged() const { return Read() != _Original; }

    // Leaves the copy where it is and says so.
    std::string Keep()
    {
        _Kept = true;
        return "your text is kept in " + Path();
    }

private:
    static std::filesystem::path MakeDirectory()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "kw4tools-XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            throw Failure("cannot make the directory " + pattern +
                          " for the copy: " + std::strerror(errno));
        return pattern;
    }

    const std::string _Original;
    const std::filesystem::path _Directory;
    const std::filesystem::path _Path;
    bool _Kept = false;
};

void Edit(Draft& ioDraft)
{
    try {
        OpenInEditor(ioDraft.Path());
    } catch (const Failure& failure) {
        const std::string what = failure.what();
        throw Failure(what + "; nothing was saved" +
                      (ioDraft.IsChanged() ? ", " + ioDraft.Keep() : ""));
    }
}

// What makes the text none that can be saved, with line and column.
std::optional<std::string> DamageOf(const ZORSettingText& iSettings, const std::string& iText)
{
    try {
        iSettings.Check(iText);
        return std::nullopt;
    } catch (const ZORRaisedError& raised) {
        return raised.Error().GetMessage(0).ConvertToChar();
    }
}

bool WantsToEditAgain()
{
    if (!isatty(STDIN_FILENO) || !isatty(STDERR_FILENO))
        return false;
    std::cerr << "Edit again? [Y/n] " << std::flush;
    std::string answer;
    return std::getline(std::cin, answer) && answer.find_first_of("nN") != 0;
}

// Opens the editor until the text can be saved, or stays as it was.
std::string EditedText(const ZORSettingText& iSettings, Draft& ioDraft)
{
    while (true) {
        Edit(ioDraft);
        std::string text = ioDraft.Read();
        if (text == iSettings.GetBytes())
            return text;
        const auto damage = DamageOf(iSettings, text);
        if (!damage)
            return text;
        std::cerr << "kw4tools: " << *damage << std::endl;
        if (!WantsToEditAgain())
            throw Failure("a damaged text is not saved; " + ioDraft.Keep());
    }
}

void Save(ZORSettingText& ioSettings, Draft& ioDraft, const std::string& iText)
{
    bool replaced = false;
    try {
        replaced = TellingErrors([&] { return ioSettings.Replace(iText); });
    } catch (const ZORRaisedError&) {
        std::cerr << "kw4tools: " << ioDraft.Keep() << std::endl;
        throw;
    }
    if (!replaced)
        throw Failure(ioSettings.GetFile() +
                      " was changed by somebody else meanwhile, and is left as they saved it; " +
                      ioDraft.Keep() + ": edit the file again and take over from there");
}

} // namespace

Status EditSettings(const std::string& iFile)
{
    ZORSettingText settings = TellingErrors([&] { return ZORSettingText(iFile.c_str()); });
    Draft draft(settings);
    const std::string text = EditedText(settings, draft);
    if (text != settings.GetBytes()) {
        Save(settings, draft, text);
        return Status::Yes;
    }
    std::cerr << "kw4tools: nothing was changed" << std::endl;
    if (const auto damage = DamageOf(settings, text))
        std::cerr << "kw4tools: it is as damaged as before: " << *damage << std::endl;
    return Status::Yes;
}
