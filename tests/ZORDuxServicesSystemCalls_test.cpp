// What the file operations ask of the system, and what they do when it says no: this program's own
// access, fgets and fclose stand before those of the C library.

#include "ZORDuxServices.h"

#include "CapturedOutput.h"
#include "RaisedBy.h"
#include "ScopedDirectory.h"
#include "SettingsSite.h"
#include "Texts.h"
#include "TraceLines.h"
#include "ZORDictionary.h"
#include "ZORDuxServicesMsg.h"
#include "ZORSettingRepository.h"
#include "ZORUuid.h"

#include <cstdio>
#include <dlfcn.h>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <unistd.h>
#include <utility>

namespace
{

std::vector<std::string> accessCalls;
bool recordAccess = false;
int readsUntilError = -1; // -1: none fails
bool failClose = false;

template <class Function>
Function Next(const char* iName)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, iName));
}

} // namespace

extern "C" int access(const char* iPath, int iMode) noexcept
{
    if (recordAccess)
        accessCalls.push_back(std::string(iPath) + " " + std::to_string(iMode));
    return Next<int (*)(const char*, int)>("access")(iPath, iMode);
}

extern "C" char* fgets(char* oText, int iSize, std::FILE* ioStream)
{
    if (readsUntilError == 0)
        return nullptr;
    if (readsUntilError > 0)
        --readsUntilError;
    return Next<char* (*)(char*, int, std::FILE*)>("fgets")(oText, iSize, ioStream);
}

extern "C" int fclose(std::FILE* ioStream)
{
    const int result = Next<int (*)(std::FILE*)>("fclose")(ioStream);
    return failClose ? EOF : result;
}

// Of the framework: how often a repository is saved, how many items are read and written, what
// removing an attribute or writing an identifier meets, and what is entered into the dictionary.
namespace
{

int saves = 0;
std::set<long> itemCounts;
std::function<void()> onSave; // what others do just before a save
ZORError* meets = nullptr;

void Meet()
{
    if (meets)
        throw ZORRaisedError(meets);
}

// Its Throw returns.
class ComingBack final : public ZORInternalError
{
public:
    void Throw(const char*, int) override {}
};

} // namespace

extern "C" void SaveRepository(ZORSettingRepository* ioRepository) asm(
    "_ZN20ZORSettingRepository14SaveRepositoryEv");
extern "C" void SaveRepository(ZORSettingRepository* ioRepository)
{
    ++saves;
    if (std::function<void()> others = std::exchange(onSave, nullptr)) {
        others();
        onSave = std::move(others);
    }
    Next<void (*)(ZORSettingRepository*)>("_ZN20ZORSettingRepository14SaveRepositoryEv")(
        ioRepository);
}

#define READ_SETTING "_ZN20ZORSettingRepository11ReadSettingEPKcPP14ZORBaseUnknownl"
#define WRITE_SETTING "_ZN20ZORSettingRepository12WriteSettingEPKcPP14ZORBaseUnknownl"
using Transfer = void (*)(ZORSettingRepository*, const char*, ZORBaseUnknown**, long);

extern "C" void ReadSetting(ZORSettingRepository* ioRepository, const char* iName,
                            ZORBaseUnknown** ioItems, long iCount) asm(READ_SETTING);
extern "C" void ReadSetting(ZORSettingRepository* ioRepository, const char* iName,
                            ZORBaseUnknown** ioItems, long iCount)
{
    itemCounts.insert(iCount);
    Next<Transfer>(READ_SETTING)(ioRepository, iName, ioItems, iCount);
}

extern "C" void WriteSetting(ZORSettingRepository* ioRepository, const char* iName,
                             ZORBaseUnknown** iItems, long iCount) asm(WRITE_SETTING);
extern "C" void WriteSetting(ZORSettingRepository* ioRepository, const char* iName,
                             ZORBaseUnknown** iItems, long iCount)
{
    itemCounts.insert(iCount);
    Next<Transfer>(WRITE_SETTING)(ioRepository, iName, iItems, iCount);
}

extern "C" void DelAttribute(ZORSettingRepository* ioRepository,
                             const char* iName) asm("_ZN20ZORSettingRepository12DelAttributeEPKc");
extern "C" void DelAttribute(ZORSettingRepository* ioRepository, const char* iName)
{
    Meet();
    Next<void (*)(ZORSettingRepository*, const char*)>(
        "_ZN20ZORSettingRepository12DelAttributeEPKc")(ioRepository, iName);
}

extern "C" void UuidText(const ZORUuid* iUuid, char* oText) asm("_ZNK7ZORUuid14UUID_to_chaineEPc");
extern "C" void UuidText(const ZORUuid* iUuid, char* oText)
{
    Meet();
    Next<void (*)(const ZORUuid*, char*)>("_ZNK7ZORUuid14UUID_to_chaineEPc")(iUuid, oText);
}

#define FILL_DICTIONARY "_ZN17ZORFillDictionaryC1EPKcS1_PFP14ZORBaseUnknownS3_E"
extern "C" void FillDictionary(ZORFillDictionary* oEntry, const char* iClass,
                               const char* iInterface, ZORCreator iCreator) asm(FILL_DICTIONARY);
// The interfaces of the services object, in the order in which they were entered.
static std::vector<std::string>& Entered()
{
    static std::vector<std::string> interfaces; // in use before the objects of this file are made
    return interfaces;
}
extern "C" void FillDictionary(ZORFillDictionary* oEntry, const char* iClass,
                               const char* iInterface, ZORCreator iCreator)
{
    if (std::string(iClass) == "ZORDuxServices")
        Entered().emplace_back(iInterface);
    Next<void (*)(ZORFillDictionary*, const char*, const char*, ZORCreator)>(FILL_DICTIONARY)(
        oEntry, iClass, iInterface, iCreator);
}

using ::testing::ElementsAre;

TEST(ZORDuxServices, EntersItsLifeCycleAndThenItsOperationsWhenTheLibraryIsLoaded)
{
    EXPECT_THAT(Entered(), ElementsAre("LifeCycleObject", "ZORIDuxServices"));
}

TEST(Settings, AreReadAndWrittenAsPairsByEachOperation)
{
    const SettingsSite site;
    ZORDuxServices services;
    const std::function<void()> operations[] = {
        [&] { services.PutSetting("A", "1", "f"); }, [&] { services.GetSetting("A", "f"); },
        [&] { services.ListOfSettingVariables("f"); }, [&] { services.RemoveSetting("A", "f"); }};
    for (const std::function<void()>& operation : operations) {
        itemCounts.clear();
        operation();
        EXPECT_THAT(itemCounts, ElementsAre(2));
    }
}

TEST(RemoveSetting, SavesOnceForEachAttributeItRemoves)
{
    const SettingsSite site;
    site.Write("f", "A = \"1\"\nB = [\"A\", \"2\"]\nC = \"3\"\nD = [\"A\", \"4\"]\n");
    saves = 0;
    ZORDuxServices().RemoveSetting("A", "f");
    EXPECT_EQ(saves, 3);
    ZORDuxServices().RemoveSetting("A", "f");
    EXPECT_EQ(saves, 3);
}

TEST(RemoveSetting, DoesNotRemoveAgainWhatOthersRemovedMeanwhile)
{
    const SettingsSite site;
    site.Write("f", "A = \"1\"\nB = \"2\"\nC = \"3\"\n");
    saves = 0;
    onSave = [] { ZORDuxServices().RemoveSetting("B", "f"); };
    ZORDuxServices().RemoveSetting("A", "f");
    onSave = nullptr;
    EXPECT_EQ(saves, 2); // of A and of B: one more would lose what somebody puts there by now
    EXPECT_EQ(site.Read("f"), "C = \"3\"\n");
}

TEST(RemoveSetting, TellsAnErrorOfTheRepositoryAndEndsShouldThrowComeBack)
{
    const SettingsSite site;
    site.Write("f", "A = \"1\"\n");
    const ZORHandle<ZORError> error(new ComingBack);
    meets = error.Get();
    const CapturedOutput output(STDERR_FILENO);
    ZORDuxServices().RemoveSetting("A", "f");
    meets = nullptr;
    EXPECT_EQ(output.Text(), "ZORInternalError (0x0) never raised\n");
    EXPECT_EQ(site.Read("f"), "A = \"1\"\n");
}

TEST(GetOctetIdentifier, TellsAnErrorAndGivesNothingShouldThrowComeBack)
{
    const ZORHandle<ZORError> error(new ComingBack);
    meets = error.Get();
    const CapturedOutput output(STDERR_FILENO);
    const _SEQUENCE_octet octets = ZORDuxServices().GetOctetIdentifier();
    meets = nullptr;
    EXPECT_EQ(octets.length(), 0);
    EXPECT_EQ(octets.maximum(), 0);
    EXPECT_EQ(octets.buffer(), nullptr);
    EXPECT_EQ(output.Text(), "ZORInternalError (0x0) never raised\n");
}

TEST(GetOctetIdentifier, TellsAnErrorInTheShortFormAndLetsItGoOn)
{
    auto* const error = new ZORDuxServicesMsg(0x20002);
    error->SetParameters(2, "A", "B").Setup("some/File", 12);
    meets = error;
    const CapturedOutput output(STDERR_FILENO);
    const ZORHandle<ZORError> raised = RaisedBy([] { ZORDuxServices().GetOctetIdentifier(); });
    meets = nullptr;
    EXPECT_EQ(raised.Get(), error);
    EXPECT_EQ(output.Text(),
              "ZORDuxServicesMsg (0x20002): The component A does not offer the interface B.\n"
              "ZORDuxServicesMsg raised in some/File, line 12\n");
}

TEST(CheckFile, AsksFourTimesInOrderWhateverTheFirstAnswerIs)
{
    for (const std::string path : {"/tmp", "/nowhere"}) {
        accessCalls.clear();
        recordAccess = true;
        ZORDuxServices().CheckFile(path.c_str());
        recordAccess = false;
        EXPECT_THAT(accessCalls, ElementsAre(path + " 0", path + " 4", path + " 2", path + " 1"));
    }
}

TEST(SeekFile, AsksOncePerDirectoryUpToTheHit)
{
    const ScopedDirectory directory;
    const ScopedWorkingDirectory there(directory.Path());
    directory.Write("two/x", "x");
    accessCalls.clear();
    recordAccess = true;
    ZORDuxServices().SeekFile("x", "one:two:three");
    recordAccess = false;
    EXPECT_THAT(accessCalls, ElementsAre("one/x 0", "two/x 0"));
}

TEST(ReadStream, GivesThePiecesReadBeforeAnErrorAndLeavesTheFileOpen)
{
    const ScopedDirectory directory;
    const std::string file = directory.Write("f", "a\nb\nc\n");
    ZORDuxServices services;
    TraceLines lines;
    readsUntilError = 2;
    const std::vector<std::string> pieces = Texts(services.ReadStream(file.c_str()));
    readsUntilError = -1;
    EXPECT_THAT(pieces, ElementsAre("a\n", "b\n"));
    EXPECT_THAT(lines.Taken(),
                ElementsAre("   ZORDuxServices::ReadStream iFileName = " + file,
                            "   ZORDuxServices::ReadStream Open Stream: OK",
                            "   ZORDuxServices::ReadStream Could not read data file"));
}

TEST(ReadStream, GivesTheListWhenClosingFails)
{
    const ScopedDirectory directory;
    const std::string file = directory.Write("f", "a\n");
    ZORDuxServices services;
    TraceLines lines;
    failClose = true;
    const std::vector<std::string> pieces = Texts(services.ReadStream(file.c_str()));
    failClose = false;
    EXPECT_THAT(pieces, ElementsAre("a\n"));
    EXPECT_EQ(lines.Taken().back(), "   ZORDuxServices::ReadStream Close Stream: KO");
}

TEST(WriteStream, GivesZeroWhenClosingFails)
{
    const ScopedDirectory directory;
    failClose = true;
    const int written = ZORDuxServices().WriteStream({}, (directory / "f").c_str());
    failClose = false;
    EXPECT_EQ(written, 0);
}
