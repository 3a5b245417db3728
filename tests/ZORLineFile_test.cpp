#include "ZORLineFile.h"

#include "CapturedOutput.h"
#include "InChild.h"
#include "ScopedDirectory.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <map>
#include <sstream>
#include <string>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{

void Write(ZORLineFile& ioFile, const std::string& iText)
{
    ioFile.Write(iText.data(), iText.size());
}

// Lets files of this process grow to that size only, as a full disk would.
void LimitFiles(rlim_t iSize)
{
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit;
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = iSize;
    setrlimit(RLIMIT_FSIZE, &limit);
}

} // namespace

TEST(ZORLineFile, WritesToStandardErrorUntilAFileIsOpened)
{
    const ScopedDirectory directory;
    const CapturedOutput error(STDERR_FILENO);
    ZORLineFile file;
    Write(file, "one\n");
    ASSERT_TRUE(file.Open((directory / "log").c_str()));
    Write(file, "two\n");
    file.Close();
    Write(file, "three\n");
    EXPECT_EQ(error.Text(), "one\nthree\n");
    EXPECT_EQ(directory.Read("log"), "two\n");
}

TEST(ZORLineFile, NeverTakesThePlaceOfAStandardStreamThatIsClosed)
{
    const ScopedDirectory directory;
    const ChildEnd end = InChild([&] {
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            close(stream);
        ZORLineFile file;
        file.Open((directory / "log").c_str());
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            if (write(stream, "stray\n", 6) >= 0)
                _exit(1);
        Write(file, "line\n");
        file.Close();
        Write(file, "lost\n");
    });
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(directory.Read("log"), "line\n");
}

TEST(ZORLineFile, AddsToTheEndOfAFileOrEmptiesItFirst)
{
    const ScopedDirectory directory;
    const std::string path = directory.Write("log", "before\n");
    {
        ZORLineFile file;
        ASSERT_TRUE(file.Open(path.c_str()));
        Write(file, "after\n");
    }
    EXPECT_EQ(directory.Read("log"), "before\nafter\n");
    ZORLineFile file;
    ASSERT_TRUE(file.Open(path.c_str(), true));
    EXPECT_EQ(directory.Read("log"), "");
    directory.Write("log", "by another\n");
    Write(file, "mine\n");
    EXPECT_EQ(directory.Read("log"), "by another\nmine\n");
}

TEST(ZORLineFile, AFileThatCannotBeOpenedLeavesTheOutputWhereItWas)
{
    const ScopedDirectory directory;
    ZORLineFile file;
    ASSERT_TRUE(file.Open((directory / "log").c_str()));
    errno = 0;
    EXPECT_FALSE(file.Open((directory / "missing/log").c_str()));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(file.Open(""));
    Write(file, "still here\n");
    EXPECT_EQ(directory.Read("log"), "still here\n");
}

TEST(ZORLineFile, DropsWhatCannotBeWrittenAndLeavesErrnoAlone)
{
    ZORLineFile file;
    ASSERT_TRUE(file.Open("/dev/full"));
    errno = ERANGE;
    Write(file, "does not fit\n");
    EXPECT_EQ(errno, ERANGE);
}

TEST(ZORLineFile, LinesAfterTroubleAreWrittenAgain)
{
    const ScopedDirectory directory;
    const ChildEnd end = InChild([&] {
        ZORLineFile file;
        file.Open((directory / "log").c_str());
        Write(file, "one\n");
        LimitFiles(4);
        Write(file, "lost\n");
        LimitFiles(RLIM_INFINITY);
        Write(file, "three\n");
    });
    EXPECT_EQ(end.status, 0) << end.error;
    EXPECT_EQ(directory.Read("log"), "one\nthree\n");
}

TEST(ZORLineFile, ALineAfterATornOneBeginsANewLine)
{
    const ScopedDirectory directory;
    const ChildEnd end = InChild([&] {
        ZORLineFile file;
        file.Open((directory / "log").c_str());
        Write(file, "one\n");
        LimitFiles(6);
        Write(file, "torn\n");
        Write(file, "lost\n");
        LimitFiles(7);
        Write(file, "lost\n"); // there is room to end the torn line
        LimitFiles(RLIM_INFINITY);
        Write(file, "three\n");
        Write(file, "four\n");
    });
    EXPECT_EQ(end.status, 0) << end.error;
    EXPECT_EQ(directory.Read("log"), "one\nto\nthree\nfour\n");
}

TEST(ZORLineFile, ATextThatIsCutBetweenItsLinesIsNotTorn)
{
    const ScopedDirectory directory;
    InChild([&] {
        ZORLineFile file;
        file.Open((directory / "log").c_str());
        LimitFiles(4);
        Write(file, "one\nlost\n");
        LimitFiles(RLIM_INFINITY);
        Write(file, "three\n");
    });
    EXPECT_EQ(directory.Read("log"), "one\nthree\n");
}

TEST(ZORLineFile, ATornLineIsForgottenWithItsFile)
{
    const ScopedDirectory directory;
    InChild([&] {
        ZORLineFile file;
        file.Open((directory / "log").c_str());
        LimitFiles(2);
        Write(file, "torn\n");
        LimitFiles(RLIM_INFINITY);
        file.Open((directory / "next").c_str());
        Write(file, "line\n");
    });
    EXPECT_EQ(directory.Read("log"), "to");
    EXPECT_EQ(directory.Read("next"), "line\n");
}

TEST(ZORLineFile, ALineOfAnyLengthGoesOutInOneWrite)
{
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_DIRECT), 0); // each write is a packet of its own
    std::string line(4000, 'x');
    line += '\n';
    ZORLineFile file;
    ASSERT_TRUE(file.Open(("/proc/self/fd/" + std::to_string(ends[1])).c_str()));
    fcntl(ends[1], F_SETFL, O_DIRECT);
    Write(file, line);
    std::string packet(2 * line.size(), '\0');
    const ssize_t got = read(ends[0], packet.data(), packet.size());
    EXPECT_EQ(got, static_cast<ssize_t>(line.size()));
    close(ends[0]);
    close(ends[1]);
}

TEST(ZORLineFile, LinesOfSeveralThreadsAndProcessesDoNotMix)
{
    const ScopedDirectory directory;
    const auto write = [&](char iFirst) {
        ZORLineFile file;
        file.Open((directory / "log").c_str());
        std::vector<std::thread> threads;
        for (const char letter : {iFirst, static_cast<char>(iFirst + 1)})
            threads.emplace_back([&file, letter] {
                for (int i = 0; i < 300; ++i)
                    Write(file, std::string(200, letter) + "\n");
            });
        for (std::thread& thread : threads)
            thread.join();
    };
    const ChildEnd end = InChild([&] {
        std::thread other([&] { write('a'); });
        write('c');
        other.join();
    });
    EXPECT_EQ(end.status, 0) << end.error;
    std::map<std::string, int> count;
    std::istringstream lines(directory.Read("log"));
    for (std::string line; std::getline(lines, line);)
        ++count[line];
    EXPECT_EQ(count.size(), 4U);
    for (const auto& [line, times] : count)
        EXPECT_EQ(times, 300) << line;
}

TEST(ZORLineFile, IsClosedWhenAnotherProgramIsRun)
{
    const ScopedDirectory directory;
    ZORLineFile file;
    ASSERT_TRUE(file.Open((directory / "log").c_str()));
    const CapturedOutput output(STDOUT_FILENO);
    ASSERT_EQ(std::system("ls -l /proc/self/fd"), 0);
    EXPECT_EQ(output.Text().find(directory / "log"), std::string::npos) << output.Text();
}
