#include "ZORDictionaryDirectories.h"

#include "CapturedOutput.h"
#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"
#include "SupportedClasses.h"
#include "ZORIDuxMaskEditor.h"
#include "ZORIDuxSecurity.h"
#include "ZORObject.h"
#include "ZORRaisedError.h"
#include "ZORTie.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace
{

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

const std::string kCompanion = KW_COMPANION; // the path of the test library

std::string Entry(const std::string& iClass, const std::string& iInterface,
                  const std::string& iLibrary = kCompanion, const std::string& iCreator = "")
{
    std::string text = "[[adapter]]\nclass = \"" + iClass + "\"\ninterface = \"" + iInterface +
                       "\"\nlibrary = \"" + iLibrary + "\"\n";
    if (!iCreator.empty())
        text += "creator = \"" + iCreator + "\"\n";
    return text;
}

// A directory of dictionary files that ZOR_DICTIONARY_PATH names. Files are read once per process,
// so that each test has a process of its own.
class Dictionary : public ScopedDirectory
{
public:
    Dictionary() : _Path("ZOR_DICTIONARY_PATH", Path().string()) {}

private:
    ScopedEnvironment _Path;
};

ZORBaseUnknown_var Object(const char* iLateType)
{
    return ZORBaseUnknown_var::Adopt(new ZORObject(iLateType, "TEST"));
}

bool CompanionIsLoaded()
{
    void* const library = dlopen(kCompanion.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (library)
        dlclose(library);
    return library != nullptr;
}

// What the query for the interface raises: its text, or nothing when it raises nothing.
std::optional<std::string> Raised(const ZORBaseUnknown_var& iObject, const char* iInterface)
{
    try {
        ZORBaseUnknown_var::Adopt(iObject->QueryInterface(iInterface));
        return std::nullopt;
    } catch (const ZORRaisedError& raised) {
        EXPECT_EQ(raised.Error().IsAKindOf("ZORInternalError"), 1);
        return raised.Error().GetMessage(0).ConvertToChar();
    }
}

// An adapter of loaded code, to compare with those of files.
class TIEZORIDuxSecurityZORObject final : public ZORIDuxSecurity
{
    ZOR_DECLARE_TIE(ZORIDuxSecurity, ZORObject)
public:
    int IsAllowed(const ZORUnicodeString&, const ZORUnicodeString&,
                  const ZORUnicodeString&) override
    {
        return 42;
    }
};
ZORBaseUnknown* CreateTIEZORIDuxSecurityZORObject(ZORBaseUnknown* iObject);
ZOR_IMPLEMENT_TIE(ZORIDuxSecurity, ZORObject, ZORKindTie)

} // namespace

TEST(ZORDictionaryDirectories, AProgramFindsAComponentItWasNeverLinkedWith)
{
    const Dictionary dictionary;
    dictionary.Write("security.toml", Entry("TestGuard", "ZORIDuxSecurity"));
    const ZORBaseUnknown_var object = Object("TestGuard");
    EXPECT_FALSE(CompanionIsLoaded());
    const ZORIDuxSecurity_var security(object);
    ASSERT_TRUE(security);
    EXPECT_TRUE(CompanionIsLoaded());
    EXPECT_EQ(security->IsAllowed("open", "open", "plate"), 1);
    EXPECT_EQ(security->IsAllowed("open", "delete", "plate"), 0);
    EXPECT_TRUE(security == object);
    EXPECT_EQ(ZORIDuxSecurity_var(object).Get(), security.Get());
    EXPECT_FALSE(ZORIDuxMaskEditor_var(object));
}

TEST(ZORDictionaryDirectories, AnInterfaceThatTheProgramDoesNotKnowIsFoundByName)
{
    const Dictionary dictionary;
    dictionary.Write("watch.toml", Entry("TestGuard", "ITestWatch"));
    const auto object = ZORBaseUnknown_var::Adopt(new ZORBaseUnknown);
    EXPECT_EQ(object->QueryInterface("ITestWatch"), nullptr);
    EXPECT_FALSE(CompanionIsLoaded());
    const auto watch = ZORBaseUnknown_var::Adopt(Object("TestGuard")->QueryInterface("ITestWatch"));
    ASSERT_TRUE(watch);
    EXPECT_STREQ(watch->IsA(), "ITestWatch");
}

TEST(ZORDictionaryDirectories, ACreatorMayHaveAnyNameAndCLinkage)
{
    const Dictionary dictionary;
    dictionary.Write("mask.toml", Entry("TestGuard", "ZORIDuxMaskEditor") +
                                      Entry("TestOther", "ZORIDuxMaskEditor", kCompanion,
                                            "CreateTIEZORIDuxMaskEditorTestGuard"));
    for (const char* type : {"TestGuard", "TestOther"}) {
        const ZORIDuxMaskEditor_var editor(Object(type));
        ASSERT_TRUE(editor) << type;
        editor->PutMask("number", "##-####");
        EXPECT_EQ(editor->GetMask("number"), "##-####");
    }
}

TEST(ZORDictionaryDirectories, NoFileIsTouchedBeforeAQueryMisses)
{
    const Dictionary dictionary;
    dictionary.Write("broken.toml", "what is this");
    const ZORFillDictionary entry("TestGuard", "ZORIDuxSecurity",
                                  CreateTIEZORIDuxSecurityZORObject);
    const CapturedOutput errors(2);
    const ZORBaseUnknown_var object = Object("TestGuard");
    EXPECT_TRUE(ZORIDuxSecurity_var(object));
    EXPECT_TRUE(ZORBaseUnknown_var(object));
    EXPECT_EQ(errors.Text(), "");
    EXPECT_FALSE(ZORIDuxMaskEditor_var(object));
    EXPECT_THAT(errors.Text(), StartsWith(dictionary / "broken.toml: line 1: "));
}

TEST(ZORDictionaryDirectories, FilesAreReadOnce)
{
    const Dictionary dictionary;
    dictionary.Write("broken.toml", "what is this");
    const CapturedOutput errors(2);
    EXPECT_FALSE(ZORIDuxSecurity_var(Object("TestGuard")));
    const std::string told = errors.Text();
    dictionary.Write("later.toml", Entry("TestGuard", "ZORIDuxSecurity"));
    EXPECT_FALSE(ZORIDuxSecurity_var(Object("TestGuard")));
    EXPECT_EQ(Object("TestGuard")->QueryInterface("INeverHeardOf"), nullptr);
    EXPECT_EQ(errors.Text(), told);
}

TEST(ZORDictionaryDirectories, WithoutThePathThereIsNothingToRead)
{
    const ScopedEnvironment unset("ZOR_DICTIONARY_PATH", std::nullopt);
    const CapturedOutput errors(2);
    EXPECT_FALSE(ZORIDuxSecurity_var(Object("TestGuard")));
    EXPECT_TRUE(ZORDictionaryDirectories().empty());
    EXPECT_EQ(errors.Text(), "");
}

TEST(ZORDictionaryDirectories, ARelativeLibraryBeginsAtTheDirectoryOfTheFile)
{
    const ScopedDirectory site;
    std::filesystem::create_directories(site.Path() / "lib");
    std::filesystem::create_symlink(kCompanion, site.Path() / "lib" / "libGuard.so");
    site.Write("dictionary/security.toml",
               Entry("TestGuard", "ZORIDuxSecurity", "../lib/libGuard.so"));
    const ScopedEnvironment path("ZOR_DICTIONARY_PATH", "dictionary");
    {
        const ScopedWorkingDirectory there(site.Path());
        EXPECT_FALSE(ZORIDuxMaskEditor_var(Object("TestGuard"))); // reads the files
    }
    EXPECT_TRUE(ZORIDuxSecurity_var(Object("TestGuard")));
}

TEST(ZORDictionaryDirectories, ABareLibraryNameIsTheLoadersToFind)
{
    const Dictionary dictionary;
    dictionary.Write("bare.toml", Entry("TestGuard", "ZORIDuxSecurity", "libZORPLATFORM.so.1"));
    EXPECT_THAT(Raised(Object("TestGuard"), "ZORIDuxSecurity").value_or(""),
                HasSubstr("the library has no such creator"));
}

TEST(ZORDictionaryDirectories, ALibraryThatCannotBeLoadedIsAnErrorWithTheLoadersText)
{
    const Dictionary dictionary;
    const std::string missing = dictionary / "libMissing.so";
    dictionary.Write("site.toml",
                     "# the site's\n\n" + Entry("TestGuard", "ZORIDuxSecurity", missing));
    const ZORBaseUnknown_var object = Object("TestGuard");
    const std::string expected =
        dictionary / "site.toml: line 3: cannot load the library: " + missing +
        ": cannot open shared object file: No such file or "
        "directory";
    EXPECT_EQ(Raised(object, "ZORIDuxSecurity"), expected);
    EXPECT_EQ(Raised(object, "ZORIDuxSecurity"), expected) << "again";
    void* found = object.Get();
    EXPECT_THROW(object->QueryInterface(ZORIDuxSecurity::ClassId(), &found), ZORRaisedError);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(Raised(object, "ZORIDuxMaskEditor"), std::nullopt);

    std::filesystem::create_symlink(kCompanion, missing);
    EXPECT_EQ(Raised(object, "ZORIDuxSecurity"), std::nullopt);
    EXPECT_TRUE(ZORIDuxSecurity_var(object)) << "once the library is there";
}

TEST(ZORDictionaryDirectories, ALibraryWithoutTheCreatorIsAnErrorWithTheLoadersText)
{
    const Dictionary dictionary;
    dictionary.Write("site.toml",
                     Entry("TestGuard", "ZORIDuxSecurity", kCompanion, "NoSuchCreator"));
    const std::string text = Raised(Object("TestGuard"), "ZORIDuxSecurity").value_or("");
    EXPECT_THAT(text,
                StartsWith(dictionary / "site.toml: line 1: the library has no such creator: "));
    EXPECT_THAT(text, HasSubstr("undefined symbol: NoSuchCreator"));
}

TEST(ZORDictionaryDirectories, ATextFileInsteadOfALibraryIsAnError)
{
    const Dictionary dictionary;
    const std::string text = dictionary.Write("libText.so", "not a library\n");
    dictionary.Write("site.toml", Entry("TestGuard", "ZORIDuxSecurity", text));
    EXPECT_THAT(Raised(Object("TestGuard"), "ZORIDuxSecurity").value_or(""),
                HasSubstr("libText.so: file too short"));
}

TEST(ZORDictionaryDirectories, ACreatorMayGiveNothingOrRaise)
{
    const Dictionary dictionary;
    dictionary.Write("site.toml",
                     Entry("TestA", "ZORIDuxSecurity", kCompanion, "CreateNothing") +
                         Entry("TestB", "ZORIDuxSecurity", kCompanion, "CreateRaising"));
    EXPECT_FALSE(ZORIDuxSecurity_var(Object("TestA")));
    EXPECT_EQ(Raised(Object("TestB"), "ZORIDuxSecurity"),
              "ZORInternalError raised in Companion, line 7");
}

TEST(ZORDictionaryDirectories, TheDeclarationReadFirstCounts)
{
    const ScopedDirectory first;
    const ScopedDirectory second;
    const auto good = [](const char* type) {
        return Entry(type, "ZORIDuxSecurity", kCompanion, "CreateTIEZORIDuxSecurityTestGuard");
    };
    const auto bad = [](const char* type) { return Entry(type, "ZORIDuxSecurity", "/nowhere.so"); };
    first.Write("b.toml", bad("TestB") + good("TestC") + bad("TestC"));
    first.Write("a.toml", good("TestB"));
    second.Write("a.toml", bad("TestB") + good("TestA"));
    const ScopedEnvironment path("ZOR_DICTIONARY_PATH",
                                 first.Path().string() + "::" + second.Path().string() + ":");
    for (const char* type : {"TestA", "TestB", "TestC"})
        EXPECT_TRUE(ZORIDuxSecurity_var(Object(type))) << type;
}

TEST(ZORDictionaryDirectories, LoadedCodeGoesBeforeFilesAndTheClassBeforeItsParents)
{
    const Dictionary dictionary;
    dictionary.Write("site.toml", Entry("TestGuard", "ZORIDuxSecurity") +
                                      Entry("TestOwn", "ZORIDuxSecurity") +
                                      Entry("ZORObject", "ZORIDuxSecurity", "/nowhere/libBad.so"));
    const ZORFillDictionary ofParent("ZORObject", "ZORIDuxSecurity",
                                     CreateTIEZORIDuxSecurityZORObject);
    const ZORFillDictionary own("TestOwn", "ZORIDuxSecurity", CreateTIEZORIDuxSecurityZORObject);
    EXPECT_EQ(ZORIDuxSecurity_var(Object("TestOwn"))->IsAllowed("", "", ""), 42);
    EXPECT_EQ(ZORIDuxSecurity_var(Object("TestGuard"))->IsAllowed("", "", ""), 1);
    EXPECT_EQ(ZORIDuxSecurity_var(Object("TestElse"))->IsAllowed("", "", ""), 42);
    EXPECT_EQ(ZORIDuxSecurity_var(Object(""))->IsAllowed("", "", ""), 42);
}

TEST(ZORDictionaryDirectories, ListsTheClassesThatFilesDeclareWithoutLoadingAnything)
{
    const Dictionary dictionary;
    dictionary.Write("a.toml",
                     Entry("TestB", "ZORIDuxSecurity") + Entry("TestA", "ZORIDuxSecurity"));
    dictionary.Write("b.toml",
                     Entry("TestA", "ZORIDuxSecurity") + Entry("TestC", "ZORIDuxSecurity"));
    {
        const ZORFillDictionary code("TestC", "ZORIDuxSecurity", CreateTIEZORIDuxSecurityZORObject);
        EXPECT_THAT(Supported("ZORIDuxSecurity"), ElementsAre("TestC", "TestB", "TestA"));
    }
    EXPECT_THAT(Supported("ZORIDuxSecurity"), ElementsAre("TestC", "TestB", "TestA"));
    EXPECT_FALSE(CompanionIsLoaded());
}

TEST(ZORDictionaryDirectories, RemoveDictionaryWithdrawsADeclarationToo)
{
    const Dictionary dictionary;
    dictionary.Write("a.toml", Entry("TestGuard", "ZORIDuxSecurity"));
    const ZORFillDictionary code("TestGuard", "ZORIDuxSecurity", CreateTIEZORIDuxSecurityZORObject);
    EXPECT_EQ(RemoveDictionary("TestGuard", "ZORIDuxSecurity"), 2);
    EXPECT_FALSE(ZORIDuxSecurity_var(Object("TestGuard")));
    EXPECT_THAT(Supported("ZORIDuxSecurity"), IsEmpty());
}

// Each mistake is one line with the file and its line, and all other entries work.
TEST(ZORDictionaryDirectories, TellsEachMistakeInOneLineAndTakesTheOtherEntries)
{
    struct Row {
        const char* text; // stands between two sound entries
        std::string told; // "<line>: <what>", the line counted within the text
    };
    const std::string leftOut = ": the entry is left out";
    const std::vector<Row> rows = {
        {"[[adapter]]\ninterface = \"I\"\nlibrary = \"l\"\n", "1: \"class\" is missing" + leftOut},
        {"[[adapter]]\nclass = \"C\"\nlibrary = \"l\"\n", "1: \"interface\" is missing" + leftOut},
        {"[[adapter]]\nclass = \"C\"\n\ninterface = \"I\"\n",
         "1: \"library\" is missing" + leftOut},
        {"[[adapter]]\nclass = \"C\"\ninterface = 7\nlibrary = \"l\"\n",
         "3: \"interface\" is no text" + leftOut},
        {"[[adapter]]\nclass = \"\"\ninterface = \"I\"\nlibrary = \"l\"\n",
         "2: \"class\" is empty or holds a NUL" + leftOut},
        {"[[adapter]]\nclass = \"C\"\ninterface = \"I\"\nlibrary = \"a\\u0000b\"\n",
         "4: \"library\" is empty or holds a NUL" + leftOut},
        {"[[adapter]]\nclass = \"C\"\ninterface = \"I\"\nlibrary = \"l\"\ncreator = []\n",
         "5: \"creator\" is no text" + leftOut},
        {"[[adapter]]\nclass = \"Ok\"\ninterface = \"IOk\"\nlibrary = \"l\"\ncreater = \"c\"\n",
         "5: \"creater\" means nothing in an entry"},
        {"[adaptor]\nclass = \"C\"\n",
         "1: \"adaptor\" means nothing here: an entry is a table [[adapter]]"},
        // The notation itself:
        {"[[adapter]]\nclass = \"C\ninterface = \"I\"\nlibrary = \"l\"\n",
         "2: the quotation mark at the end of the text is missing"},
        {"[[adapter]]\nclass = C\ninterface = \"I\"\nlibrary = \"l\"\n",
         "2: a text needs quotation marks around it"},
        {"[[adapter]]\nclass = \"C\"\nclass = \"D\"\n", "3: "},
        {"[[adapter]]\nclass\n", "2: "},
        {"[[adapter]\nclass = \"C\"\n", "1: "},
        {"[[adapter]]\nclass = \"\xff\"\n", "2: "},
        {"[adapter]\nclass = \"C\"\n", "1: "},
    };
    const Dictionary dictionary;
    std::string expected;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::string name = std::to_string(100 + i);
        const std::string before = Entry("Before" + name, "IBefore", "l");
        dictionary.Write(name + ".toml",
                         before + rows[i].text + Entry("After" + name, "IAfter", "l"));
    }
    const CapturedOutput errors(2);
    const std::vector<std::string> before = Supported("IBefore");
    const std::vector<std::string> after = Supported("IAfter");
    std::istringstream told(errors.Text());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::string name = std::to_string(100 + i);
        EXPECT_THAT(before, ::testing::Contains("Before" + name)) << rows[i].text;
        EXPECT_THAT(after, ::testing::Contains("After" + name)) << rows[i].text;
        const std::size_t colon = rows[i].told.find(':');
        const std::string line = std::to_string(4 + std::stoi(rows[i].told.substr(0, colon)));
        std::string message;
        std::getline(told, message);
        EXPECT_THAT(message, StartsWith(dictionary / (name + ".toml: line ") + line +
                                        rows[i].told.substr(colon)))
            << rows[i].text;
    }
    std::string rest;
    EXPECT_FALSE(std::getline(told, rest)) << rest;
    EXPECT_THAT(Supported("IOk"), ElementsAre("Ok"));
}

TEST(ZORDictionaryDirectories, AnUnterminatedTextIsOneMistakeAndTheEntriesBeforeItWork)
{
    const Dictionary dictionary;
    dictionary.Write("a.toml", Entry("A", "IA", "l") + "[[adapter]]\nclass = \"\"\"\n" +
                                   Entry("B", "IA", "l") + Entry("C", "IA", "l"));
    const CapturedOutput errors(2);
    EXPECT_THAT(Supported("IA"), ElementsAre("A"));
    const std::string told = errors.Text();
    EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 1) << told;
}

TEST(ZORDictionaryDirectories, AFileFullOfMistakesIsLeftOut)
{
    const Dictionary dictionary;
    std::string text;
    for (int i = 0; i < 100; ++i)
        text += "[[adapter]]\nnonsense\n";
    dictionary.Write("a.toml", text + Entry("A", "IA", "l"));
    dictionary.Write("b.toml", Entry("B", "IA", "l"));
    const CapturedOutput errors(2);
    EXPECT_THAT(Supported("IA"), ElementsAre("B"));
    EXPECT_THAT(errors.Text(), HasSubstr("too many mistakes: the file is left out"));
}

TEST(ZORDictionaryDirectories, TellsOfEachItemOfAListThatIsNoTable)
{
    const Dictionary dictionary;
    const std::string file = dictionary.Write(
        "list.toml",
        "adapter = [ 7,\n{class = \"Ok\", interface = \"IListed\", library = \"l\"},\n[] ]\n");
    const CapturedOutput errors(2);
    EXPECT_THAT(Supported("IListed"), ElementsAre("Ok"));
    const std::string what = ": an entry is a table [[adapter]]\n";
    EXPECT_EQ(errors.Text(), file + ": line 1" + what + file + ": line 3" + what);
}

TEST(ZORDictionaryDirectories, AnEndlessLineIsAMistake)
{
    const Dictionary dictionary;
    std::string name = "a";
    while (name.size() < 900000)
        name += ".a";
    dictionary.Write("a.toml", Entry("A", "IA", "l") + "[[adapter]]\n" + name + " = 1\n" +
                                   Entry("B", "IA", "l"));
    dictionary.Write("b.toml", "[" + name + "]\n" + Entry("C", "IA", "l"));
    const CapturedOutput errors(2);
    EXPECT_THAT(Supported("IA"), ElementsAre("A", "B", "C"));
    EXPECT_EQ(errors.Text(),
              dictionary / "a.toml: line 6: the line is longer than 8192 bytes\n" +
                  (dictionary / "b.toml: line 1: the line is longer than 8192 bytes\n"));
}

TEST(ZORDictionaryDirectories, WhatIsNoPlainFileIsToldAndNotWaitedFor)
{
    const Dictionary dictionary;
    std::filesystem::create_directory(dictionary / "a.toml");
    ASSERT_EQ(mkfifo((dictionary / "b.toml").c_str(), 0600), 0);
    dictionary.Write("c.toml", std::string((1 << 20) + 1, '#'));
    std::filesystem::create_symlink("nowhere", dictionary / "d.toml");
    dictionary.Write("e.toml", Entry("E", "IE", "l"));
    const CapturedOutput errors(2);
    EXPECT_THAT(Supported("IE"), ElementsAre("E"));
    EXPECT_EQ(errors.Text(),
              dictionary / "a.toml: cannot be read: it is no plain file\n" +
                  (dictionary / "b.toml: cannot be read: it is no plain file\n") +
                  (dictionary / "c.toml: cannot be read: it has more than 1 MiB\n") +
                  (dictionary / "d.toml: cannot be read: No such file or directory\n"));
}

TEST(ZORDictionaryDirectories, ADirectoryThatIsNoneIsToldAndAMissingOneIsNot)
{
    const ScopedDirectory place;
    const std::string file = place.Write("file", "");
    const ScopedEnvironment path("ZOR_DICTIONARY_PATH", (place / "missing") + ":" + file);
    const CapturedOutput errors(2);
    EXPECT_THAT(Supported("IE"), IsEmpty());
    EXPECT_EQ(errors.Text(), file + ": cannot be read: Not a directory\n");
}

TEST(ZORDictionaryDirectories, ListsDirectoriesAndFilesInTheOrderTheyAreRead)
{
    const ScopedDirectory place;
    for (const char* name : {"b.toml", "a.toml", "c.toml~", ".hidden.toml", "readme", ".toml"})
        place.Write(name, "");
    const std::string there = place.Path().string();
    const ScopedEnvironment path("ZOR_DICTIONARY_PATH", ":" + there + "::/nowhere:");
    const std::vector<ZORDictionaryDirectory> directories = ZORDictionaryDirectories();
    ASSERT_EQ(directories.size(), 2U);
    EXPECT_EQ(directories[0].path, there);
    EXPECT_THAT(directories[0].names, ElementsAre("a.toml", "b.toml"));
    EXPECT_EQ(directories[1].path, "/nowhere");
    EXPECT_THAT(directories[1].names, IsEmpty());
}

TEST(ZORDictionaryDirectories, ThreadsThatMissAtOnceFindTheSameComponent)
{
    const Dictionary dictionary;
    dictionary.Write("security.toml", Entry("TestGuard", "ZORIDuxSecurity"));
    const ZORBaseUnknown_var object = Object("TestGuard");
    std::vector<ZORIDuxSecurity_var> found(4);
    std::vector<std::thread> threads;
    for (ZORIDuxSecurity_var& mine : found)
        threads.emplace_back([&] { mine = ZORIDuxSecurity_var(object); });
    for (std::thread& thread : threads)
        thread.join();
    for (const ZORIDuxSecurity_var& each : found) {
        ASSERT_TRUE(each);
        EXPECT_EQ(each.Get(), found.front().Get());
    }
}
