// What the file operations ask of the system, and what they do when it says no: this program's own
// access, fgets and fclose stand before those of the C library.

#include "ZORDuxServices.h"

#include "ScopedDirectory.h"
#include "Texts.h"
#include "TraceLines.h"

#include <cstdio>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

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

using ::testing::ElementsAre;

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
    EXPECT_THAT(Texts(services.ReadStream(file.c_str())), ElementsAre("a\n", "b\n"));
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
