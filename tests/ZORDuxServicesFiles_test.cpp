#include "ZORDuxServices.h"

#include "AsNobody.h"
#include "ScopedDirectory.h"
#include "Texts.h"
#include "TraceLines.h"

#include <cstddef>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::vector<std::string> Read(const std::string& iFile)
{
    return Texts(ZORDuxServices().ReadStream(iFile.c_str()));
}

int Write(const std::vector<std::string>& iLines, const std::string& iFile)
{
    ZORListValZORUnicodeString lines;
    for (const std::string& line : iLines)
        lines.Append(line.c_str());
    return ZORDuxServices().WriteStream(lines, iFile.c_str());
}

std::string Joined(const std::vector<std::string>& iPieces)
{
    std::string text;
    for (const std::string& piece : iPieces)
        text += piece;
    return text;
}

std::size_t OpenFiles()
{
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& each : std::filesystem::directory_iterator("/proc/self/fd"))
        ++count;
    return count;
}

} // namespace

TEST(ZORDuxFileAccess, IsFourIntegersInAFixedOrder)
{
    EXPECT_EQ(sizeof(ZORDuxFileAccess), 16U);
    EXPECT_EQ(offsetof(ZORDuxFileAccess, exists), 0U);
    EXPECT_EQ(offsetof(ZORDuxFileAccess, readable), 4U);
    EXPECT_EQ(offsetof(ZORDuxFileAccess, writable), 8U);
    EXPECT_EQ(offsetof(ZORDuxFileAccess, executable), 12U);
}

TEST(CheckFile, AnswersForEveryCombinationOfPermissions)
{
    const ScopedDirectory directory;
    std::filesystem::permissions(directory.Path(), std::filesystem::perms::all);
    for (unsigned mode = 0; mode < 8; ++mode) {
        const std::string file = directory.Write("f" + std::to_string(mode), "x");
        ASSERT_EQ(chmod(file.c_str(), mode), 0); // for users other than owner and group
        EXPECT_TRUE(AsNobody([&] {
            const ZORDuxFileAccess may = ZORDuxServices().CheckFile(file.c_str());
            return may.exists == 1 && may.readable == ((mode & 4) ? 1 : 0) &&
                   may.writable == ((mode & 2) ? 1 : 0) && may.executable == ((mode & 1) ? 1 : 0);
        })) << mode;
    }
}

TEST(CheckFile, SaysNoFourTimesForWhatDoesNotExist)
{
    for (const char* path : {"", "/nowhere/at/all"}) {
        const ZORDuxFileAccess may = ZORDuxServices().CheckFile(path);
        EXPECT_EQ(may.exists, 0);
        EXPECT_EQ(may.readable, 0);
        EXPECT_EQ(may.writable, 0);
        EXPECT_EQ(may.executable, 0);
    }
}

TEST(CheckFile, TakesADirectoryThatMayBeSearchedForExecutable)
{
    EXPECT_EQ(ZORDuxServices().CheckFile("/tmp").executable, 1);
}

TEST(CheckFile, TracesEachAnswer)
{
    const ScopedDirectory directory;
    const std::string file = directory.Write("f", "x");
    chmod(file.c_str(), 0600);
    ZORDuxServices services;
    TraceLines lines;
    services.CheckFile(file.c_str());
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::CheckFile iFullPath = " + file,
                                           "   ZORDuxServices::CheckFile File exist",
                                           "   ZORDuxServices::CheckFile Read Mode OK",
                                           "   ZORDuxServices::CheckFile Write Mode OK",
                                           "   ZORDuxServices::CheckFile Execute Mode KO"));
    services.CheckFile("/nowhere");
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::CheckFile iFullPath = /nowhere",
                                           "   ZORDuxServices::CheckFile File does not exist",
                                           "   ZORDuxServices::CheckFile Read Mode KO",
                                           "   ZORDuxServices::CheckFile Write Mode KO",
                                           "   ZORDuxServices::CheckFile Execute Mode KO"));
    services.CheckFile("/tmp");
    EXPECT_EQ(lines.Taken().back(), "   ZORDuxServices::CheckFile Execute Mode OK");
}

TEST(ReadStream, GivesTheLinesWithTheirEnds)
{
    const ScopedDirectory directory;
    EXPECT_THAT(Read(directory.Write("f", "a\nb\n")), ElementsAre("a\n", "b\n"));
    EXPECT_THAT(Read(directory.Write("f", "a\nb")), ElementsAre("a\n", "b"));
    EXPECT_THAT(Read(directory.Write("f", "\n\r\n")), ElementsAre("\n", "\r\n"));
    EXPECT_THAT(Read(directory.Write("f", "")), IsEmpty());
}

TEST(ReadStream, CutsALongLineIntoPiecesOf1023Bytes)
{
    const ScopedDirectory directory;
    const std::string text = std::string(2000, 'x') + "\n";
    EXPECT_THAT(Read(directory.Write("f", text)),
                ElementsAre(std::string(1023, 'x'), std::string(977, 'x') + "\n"));
    for (std::size_t length : {1022U, 1023U, 1024U, 2045U, 2046U, 2047U}) {
        const std::string line = std::string(length, 'y') + "\n";
        const std::vector<std::string> pieces = Read(directory.Write("f", line));
        EXPECT_EQ(Joined(pieces), line) << length;
        EXPECT_THAT(pieces, SizeIs((length + 1 + 1022) / 1023)) << length;
    }
}

TEST(ReadStream, APieceMayCutACharacter)
{
    const ScopedDirectory directory;
    const std::string text = std::string(1022, 'x') + "é\n";
    const std::vector<std::string> pieces = Read(directory.Write("f", text));
    EXPECT_THAT(pieces, ElementsAre(std::string(1022, 'x') + "\xc3", "\xa9\n"));
}

TEST(ReadStream, EndsAPieceAtANul)
{
    const ScopedDirectory directory;
    EXPECT_THAT(Read(directory.Write("f", std::string("ab\0cd\nef\n", 9))),
                ElementsAre("ab", "ef\n"));
}

TEST(ReadStream, TracesEachStep)
{
    const ScopedDirectory directory;
    ZORDuxServices services;
    TraceLines lines;
    const std::string file = directory.Write("f", "a\n");
    services.ReadStream(file.c_str());
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::ReadStream iFileName = " + file,
                                           "   ZORDuxServices::ReadStream Open Stream: OK",
                                           "   ZORDuxServices::ReadStream Read Stream: OK",
                                           "   ZORDuxServices::ReadStream Close Stream: OK"));
    EXPECT_EQ(services.ReadStream("/nowhere/f").Size(), 0);
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::ReadStream iFileName = /nowhere/f",
                                           "   ZORDuxServices::ReadStream Open Stream: KO"));
    services.ReadStream("/tmp");
    EXPECT_THAT(lines.Taken(),
                ElementsAre("   ZORDuxServices::ReadStream iFileName = /tmp",
                            "   ZORDuxServices::ReadStream Open Stream: OK",
                            "   ZORDuxServices::ReadStream Could not read data file"));
}

TEST(ReadStream, LeavesTheFileOpenWhenReadingFailsAndOnlyThen)
{
    const ScopedDirectory directory;
    const std::size_t before = OpenFiles();
    Read(directory.Write("f", "a\n"));
    Read("/nowhere/f");
    EXPECT_EQ(OpenFiles(), before);
    EXPECT_THAT(Read("/tmp"), IsEmpty());
    EXPECT_EQ(OpenFiles(), before + 1);
}

TEST(ReadStream, ReadsAFifoToItsEnd)
{
    const ScopedDirectory directory;
    const std::string fifo = directory / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    std::thread writer([&] {
        std::FILE* const stream = std::fopen(fifo.c_str(), "w");
        std::fputs("a\nb", stream);
        std::fclose(stream);
    });
    EXPECT_THAT(Read(fifo), ElementsAre("a\n", "b"));
    writer.join();
}

TEST(ReadStream, ReadsFilesOfTheKernel)
{
    EXPECT_FALSE(Read("/proc/self/status").empty());
    EXPECT_THAT(Read("/dev/null"), IsEmpty());
}

TEST(ReadStream, GivesNothingWithoutPermission)
{
    const ScopedDirectory directory;
    std::filesystem::permissions(directory.Path(), std::filesystem::perms::all);
    const std::string file = directory.Write("f", "a\n");
    ASSERT_EQ(chmod(file.c_str(), 0), 0);
    EXPECT_TRUE(AsNobody([&] { return Read(file).empty() && Write({"x"}, file) == 0; }));
}

TEST(WriteStream, AddsNothing)
{
    const ScopedDirectory directory;
    EXPECT_EQ(Write({"a", "b"}, directory / "f"), 1);
    EXPECT_EQ(directory.Read("f"), "ab");
    EXPECT_EQ(Write({"a\n", "", "b\n"}, directory / "f"), 1);
    EXPECT_EQ(directory.Read("f"), "a\nb\n");
}

TEST(WriteStream, AnEmptyListEmptiesTheFile)
{
    const ScopedDirectory directory;
    directory.Write("f", "before\n");
    EXPECT_EQ(Write({}, directory / "f"), 1);
    EXPECT_EQ(directory.Read("f"), "");
}

TEST(WriteStream, TracesEachStep)
{
    const ScopedDirectory directory;
    ZORDuxServices services;
    ZORListValZORUnicodeString list;
    list.Append("a\n");
    TraceLines lines;
    const std::string file = directory / "f";
    EXPECT_EQ(services.WriteStream(list, file.c_str()), 1);
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::WriteStream iFileName = " + file,
                                           "   ZORDuxServices::WriteStream Open Stream: OK",
                                           "   ZORDuxServices::WriteStream Write Stream: OK",
                                           "   ZORDuxServices::WriteStream Close Stream: OK"));
    EXPECT_EQ(services.WriteStream(list, "/nowhere/f"), 0);
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::WriteStream iFileName = /nowhere/f",
                                           "   ZORDuxServices::WriteStream Open Stream: KO"));
    // A little text is only written when the file is closed.
    EXPECT_EQ(services.WriteStream(list, "/dev/full"), 0);
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::WriteStream iFileName = /dev/full",
                                           "   ZORDuxServices::WriteStream Open Stream: OK",
                                           "   ZORDuxServices::WriteStream Write Stream: OK",
                                           "   ZORDuxServices::WriteStream Close Stream: KO"));
    list.Append(std::string(100'000, 'x').c_str());
    EXPECT_EQ(services.WriteStream(list, "/dev/full"), 0);
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::WriteStream iFileName = /dev/full",
                                           "   ZORDuxServices::WriteStream Open Stream: OK",
                                           "   ZORDuxServices::WriteStream Write Stream: KO"));
}

TEST(WriteStream, LeavesTheFileOpenWhenWritingFailsAndOnlyThen)
{
    const ScopedDirectory directory;
    const std::size_t before = OpenFiles();
    Write({"a"}, directory / "f");
    Write({"a"}, "/nowhere/f");
    Write({"a"}, "/dev/full");
    EXPECT_EQ(OpenFiles(), before);
    Write({std::string(100'000, 'x')}, "/dev/full");
    EXPECT_EQ(OpenFiles(), before + 1);
}

TEST(WriteStream, TellsAFullDeviceByTheWriteAsSoonAsABlockOfTheCLibraryIsFull)
{
    const std::string line(5'000, 'x'); // a block has 4,096 bytes
    const std::size_t before = OpenFiles();
    Write({line}, "/dev/full");
    EXPECT_EQ(OpenFiles(), before + 1);
    Write({line.substr(0, 4'000)}, "/dev/full");
    EXPECT_EQ(OpenFiles(), before + 1);
}

TEST(LineStreams, CloseTheFileWhenTheTraceRaises)
{
    const ScopedDirectory directory;
    const std::string file = directory.Write("f", "a\n");
    TraceLines lines;
    const std::size_t before = OpenFiles();
    lines.onLine = [](const std::string& line) {
        if (line.find("Stream: OK") != std::string::npos)
            throw 1;
    };
    EXPECT_THROW(Read(file), int);
    EXPECT_THROW(Write({"a"}, file), int);
    EXPECT_EQ(OpenFiles(), before);
}

TEST(LineStreams, GiveBackTheBytesOfAnyText)
{
    const unsigned seed = 20261121;
    std::mt19937 random(seed);
    const ScopedDirectory directory;
    for (int i = 0; i < 300; ++i) {
        std::string text;
        const std::size_t length = random() % 5000;
        while (text.size() < length)
            text += random() % 200 == 0 ? '\n' : static_cast<char>(1 + random() % 255);
        const std::vector<std::string> pieces = Read(directory.Write("f", text));
        ASSERT_EQ(Joined(pieces), text) << "seed " << seed << ", text " << i;
        ASSERT_EQ(Write(pieces, directory / "g"), 1);
        ASSERT_EQ(directory.Read("g"), text) << "seed " << seed << ", text " << i;
    }
}

TEST(LineStreams, TakeAFileOf100Megabytes)
{
    const ScopedDirectory directory;
    const std::string block = std::string(99, 'x') + "\n" + std::string(9'899, 'y') + "\n";
    std::string text;
    while (text.size() < 100'000'000)
        text += block;
    const std::vector<std::string> pieces = Read(directory.Write("f", text));
    EXPECT_EQ(Write(pieces, directory / "g"), 1);
    EXPECT_TRUE(directory.Read("g") == text);
}
