// kw4tools settings edit

#include "Kw4tools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::StartsWith;

namespace
{

const Kw4tools::Arguments kEdit = {"settings", "edit", "site"};

// The program with a settings file "site", and an editor made of a shell script that finds the copy
// in $1.
class Editing
{
public:
    explicit Editing(const std::string& iScript, const std::string& iBytes = "A = \"1\" # one\n")
    {
        _Program.Site().Write("site.toml", iBytes);
        std::filesystem::create_directory(_Program.Site() / "copies");
        _Program.Run().Environment("TMPDIR", _Program.Site() / "copies");
        SetEditor(iScript);
    }

    void SetEditor(const std::string& iScript)
    {
        const std::string editor = _Program.Site().Write("editor", "#!/bin/sh\n" + iScript + "\n");
        chmod(editor.c_str(), 0700);
        _Program.Run().Environment("EDITOR", editor);
    }

    Kw4tools::Outcome Run() const { return _Program(kEdit); }
    Kw4tools& Program() { return _Program; }
    std::string Bytes() const { return _Program.Site().Read("site.toml"); }
    // The copies that are left, with what is in them.
    std::vector<std::string> Copies() const
    {
        std::vector<std::string> copies;
        for (const auto& each :
             std::filesystem::recursive_directory_iterator(_Program.Site() / "copies"))
            if (each.is_regular_file())
                copies.push_back(_Program.Site().Read(
                    std::filesystem::relative(each.path(), _Program.Site().Path())));
        return copies;
    }

private:
    Kw4tools _Program;
};

} // namespace

TEST(kw4tools_editing, SavesWhatTheEditorLeaves)
{
    const Editing editing("printf '# new\\r\\nB   = 2' >> \"$1\"");
    const auto [status, out, err] = editing.Run();
    EXPECT_EQ(status, 0);
    EXPECT_EQ(out + err, "");
    EXPECT_EQ(editing.Bytes(), "A = \"1\" # one\n# new\r\nB   = 2");
    EXPECT_THAT(editing.Copies(), IsEmpty());
}

TEST(kw4tools_editing, MakesAFileThatIsNotThere)
{
    Editing editing("echo 'A = 1' >> \"$1\"");
    EXPECT_EQ(editing.Program().Result({"settings", "edit", "other"}), "");
    EXPECT_EQ(editing.Program().Site().Read("other.toml"), "A = 1\n");
}

TEST(kw4tools_editing, OpensACopyOfThatNameForItsUserAlone)
{
    const Editing editing("basename \"$1\"; stat -c %a \"$(dirname \"$1\")\"; cat \"$1\"");
    const auto [status, out, err] = editing.Run();
    EXPECT_EQ(out, "site.toml\n700\nA = \"1\" # one\n");
    EXPECT_EQ(err, "kw4tools: nothing was changed\n");
    EXPECT_EQ(status, 0);
    EXPECT_THAT(editing.Copies(), IsEmpty());
}

TEST(kw4tools_editing, TakesTheEditorWithItsArgumentsVisualFirst)
{
    Editing editing("echo \"$1 $2\"");
    const std::string editor = editing.Program().Site() / "editor";
    editing.Program().Run().Environment("EDITOR", editor + " --wait 'two words' #");
    EXPECT_EQ(editing.Run().out, "--wait two words\n");
    editing.Program().Run().Environment("VISUAL", "echo visual");
    EXPECT_THAT(editing.Run().out, StartsWith("visual /"));
    editing.Program().Run().Environment("VISUAL", "");
    EXPECT_EQ(editing.Run().out, "--wait two words\n");
}

TEST(kw4tools_editing, TakesViWhereNoEditorIsSet)
{
    Editing editing("true");
    const std::string vi = editing.Program().Site().Write("vi", "#!/bin/sh\necho 'B = 2' >> $1\n");
    chmod(vi.c_str(), 0700);
    editing.Program()
        .Run()
        .Environment("PATH", editing.Program().Site().Path().string() + ":/usr/bin:/bin")
        .Environment("VISUAL", std::nullopt)
        .Environment("EDITOR", "");
    EXPECT_EQ(editing.Run().status, 0);
    EXPECT_EQ(editing.Bytes(), "A = \"1\" # one\nB = 2\n");
}

TEST(kw4tools_editing, SavesNothingWhenTheEditorTakesTheTextAway)
{
    const Editing editing("rm \"$1\"");
    const auto [status, out, err] = editing.Run();
    EXPECT_EQ(status, 2);
    EXPECT_EQ(out, "");
    EXPECT_THAT(err, StartsWith("kw4tools: the editor left no text in "));
    EXPECT_EQ(editing.Bytes(), "A = \"1\" # one\n");
}

TEST(kw4tools_editing, NeedsADirectoryForTheCopy)
{
    Editing editing("echo 'B = 2' >> \"$1\"");
    editing.Program().Run().Environment("TMPDIR", "/proc");
    const auto [status, out, err] = editing.Run();
    EXPECT_EQ(status, 2);
    EXPECT_THAT(err, AllOf(StartsWith("kw4tools: cannot make the directory /proc/kw4tools-"),
                           HasSubstr(" for the copy: ")));
    EXPECT_EQ(editing.Bytes(), "A = \"1\" # one\n");
}

TEST(kw4tools_editing, RefusesADamagedTextAndKeepsIt)
{
    const Editing editing("printf 'A = 1\\nB = \\n' > \"$1\"");
    const auto [status, out, err] = editing.Run();
    EXPECT_EQ(status, 2);
    EXPECT_EQ(out, "");
    EXPECT_THAT(
        err, AllOf(StartsWith("kw4tools: settings file "), HasSubstr("/site.toml: line 2, column "),
                   HasSubstr("kw4tools: a damaged text is not saved; your text is kept in "),
                   EndsWith("/site.toml\n")));
    EXPECT_EQ(editing.Bytes(), "A = \"1\" # one\n");
    EXPECT_THAT(editing.Copies(), testing::ElementsAre("A = 1\nB = \n"));
}

TEST(kw4tools_editing, OffersTheWayBackOnATerminal)
{
    Editing editing("grep -q mended \"$1\" && exec sed -i 's/= */= 2/' \"$1\"\n"
                    "echo 'mended = ' > \"$1\"");
    editing.Program().Run().OnTerminal().Input("\n");
    const auto [status, out, err] = editing.Run();
    EXPECT_EQ(status, 0);
    EXPECT_THAT(out, AllOf(HasSubstr("line 1, column "), EndsWith("Edit again? [Y/n] ")));
    EXPECT_EQ(editing.Bytes(), "mended = 2\n");
    EXPECT_THAT(editing.Copies(), IsEmpty());
}

TEST(kw4tools_editing, TakesNoForAnAnswer)
{
    for (const char* answer : {"n\n", "No\n", "\x04"}) {
        Editing editing("echo 'A = ' > \"$1\"");
        editing.Program().Run().OnTerminal().Input(answer);
        const auto [status, out, err] = editing.Run();
        EXPECT_EQ(status, 2);
        EXPECT_THAT(out, HasSubstr("Edit again? [Y/n] "));
        EXPECT_THAT(out, HasSubstr("your text is kept in "));
        EXPECT_EQ(editing.Bytes(), "A = \"1\" # one\n");
        EXPECT_THAT(editing.Copies(), testing::ElementsAre("A = \n"));
    }
}

TEST(kw4tools_editing, MendsADamagedFile)
{
    const Editing editing("sed -i 's/= *$/= 1/' \"$1\"", "A = \n");
    EXPECT_EQ(editing.Run().status, 0);
    EXPECT_EQ(editing.Bytes(), "A = 1\n");
}

TEST(kw4tools_editing, TellsOfDamageThatWasLeft)
{
    const Editing editing(":", "A = \n");
    EXPECT_THAT(editing.Run().err,
                MatchesRegex("kw4tools: nothing was changed\nkw4tools: it is as damaged as before: "
                             "settings file .*/site.toml: line 1, column 5: .*\n"));
}

TEST(kw4tools_editing, LosesNothingThatSomebodyElseSavedMeanwhile)
{
    const Editing editing("\"" KW4TOOLS_PROGRAM "\" settings put site B theirs\n"
                          "echo 'A = \"mine\"' > \"$1\"");
    const auto [status, out, err] = editing.Run();
    EXPECT_EQ(status, 2);
    EXPECT_THAT(err, HasSubstr("/site.toml was changed by somebody else meanwhile"));
    EXPECT_THAT(err, HasSubstr("your text is kept in "));
    EXPECT_EQ(editing.Bytes(), "A = \"1\" # one\nB = \"theirs\"\n");
    EXPECT_THAT(editing.Copies(), testing::ElementsAre("A = \"mine\"\n"));
}

TEST(kw4tools_editing, KeepsTheModeOfTheFile)
{
    Editing editing("echo 'B = 2' >> \"$1\"");
    const std::string file = editing.Program().Site() / "site.toml";
    ASSERT_EQ(chmod(file.c_str(), 0640), 0);
    EXPECT_EQ(editing.Run().status, 0);
    struct stat status;
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
}

TEST(kw4tools_editing, SavesNothingWhenTheEditorFails)
{
    Editing editing("echo 'B = 2' >> \"$1\"; exit 3");
    auto outcome = editing.Run();
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("ended with exit status 3; nothing was saved, your text is "
                                       "kept in "));
    EXPECT_EQ(editing.Copies().size(), 1u);
    editing.SetEditor("kill -TERM $$");
    outcome = editing.Run();
    EXPECT_THAT(outcome.err, EndsWith("was ended by a signal: Terminated; nothing was saved\n"));
    editing.Program().Run().Environment("EDITOR", "/nonexistent");
    outcome = editing.Run();
    EXPECT_THAT(outcome.err, HasSubstr("the editor '/nonexistent' cannot be run; set VISUAL or "
                                       "EDITOR to one that is there; nothing was saved\n"));
    EXPECT_EQ(editing.Copies().size(), 1u);
    EXPECT_EQ(editing.Bytes(), "A = \"1\" # one\n");
}

TEST(kw4tools_editing, KeepsTheTextWhenItCannotBeSaved)
{
    // In place of the lock that the save takes stands a directory.
    const Editing editing("mkdir \"$ZOR_SETTINGS_PATH/.site.lock\"; echo 'A = 2' > \"$1\"");
    const auto [status, out, err] = editing.Run();
    EXPECT_EQ(status, 2);
    EXPECT_THAT(err, HasSubstr("kw4tools: your text is kept in "));
    EXPECT_THAT(err, HasSubstr("kw4tools: nothing was done with the settings file 'site'"));
    EXPECT_EQ(editing.Bytes(), "A = \"1\" # one\n");
    EXPECT_THAT(editing.Copies(), testing::ElementsAre("A = 2\n"));
}

TEST(kw4tools_editing, LeavesTheInterruptKeyToTheEditor)
{
    const Editing editing("trap 'echo \"B = 2\" >> \"$1\"' INT\n"
                          "kill -INT $$ $PPID\n"
                          "echo 'C = 3' >> \"$1\"");
    EXPECT_EQ(editing.Run().status, 0);
    EXPECT_EQ(editing.Bytes(), "A = \"1\" # one\nB = 2\nC = 3\n");
}
