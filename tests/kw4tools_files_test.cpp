// kw4tools check, read, write, id

#include "Kw4tools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <sys/stat.h>

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

TEST(kw4tools_check, TellsWhatOneMayDoWithAFile)
{
    const Kw4tools program;
    const std::string file = program.Site().Write("file", "");
    const std::string script = program.Site().Write("script", "");
    chmod(script.c_str(), 0755);
    EXPECT_EQ(program.Result({"check", file}), "exists=1 readable=1 writable=1 executable=0\n");
    EXPECT_EQ(program.Result({"check", script}), "exists=1 readable=1 writable=1 executable=1\n");
    EXPECT_EQ(program.Result({"check", "."}), "exists=1 readable=1 writable=1 executable=1\n");
    EXPECT_THAT(program.Result({"check", "/proc/version"}),
                StartsWith("exists=1 readable=1 writable="));
}

TEST(kw4tools_check, ExitsWithOneWhenTheFileDoesNotExist)
{
    const Kw4tools program;
    for (const char* path : {"missing", ""}) {
        const auto [status, out, err] = program({"check", path});
        EXPECT_EQ(status, 1);
        EXPECT_EQ(out, "exists=0 readable=0 writable=0 executable=0\n");
        EXPECT_EQ(err, "");
    }
}

TEST(kw4tools_read, PrintsTheFileByteForByte)
{
    const Kw4tools program;
    for (const std::string& text :
         {std::string(), std::string("a\nb\n"), std::string("no end"), std::string("\n\n"),
          std::string("\xff\r\n\xc3"), std::string(5000, 'x') + "\n" + std::string(1023, 'y')}) {
        EXPECT_EQ(program.Result({"read", program.Site().Write("file", text)}), text);
    }
}

TEST(kw4tools_read, CountsTheElements)
{
    const Kw4tools program;
    const struct {
        std::string text;
        const char* count;
    } rows[] = {
        {"", "0\n"},
        {"a\nb\n", "2\n"},
        {"a\nb", "2\n"},
        {std::string(2000, 'x') + "\n", "2\n"},
        {std::string(1023, 'x'), "1\n"},
        {std::string(1023, 'x') + "\n", "2\n"},
    };
    for (const auto& row : rows) {
        program.Site().Write("file", row.text);
        EXPECT_EQ(program.Result({"read", "file", "--count"}), row.count);
    }
}

TEST(kw4tools_read, TellsAnUnreadableFileFromAnEmptyOne)
{
    const Kw4tools program;
    program.Site().Write("empty", "");
    EXPECT_EQ(program.Result({"read", "empty"}), "");
    const struct {
        const char* path;
        const char* message;
    } rows[] = {
        {"missing", "'missing' cannot be opened for reading: No such file or directory"},
        {"", "'' cannot be opened for reading: No such file or directory"},
        {".", "'.' cannot be read: Is a directory"},
        {"empty/x", "'empty/x' cannot be opened for reading: Not a directory"},
    };
    for (const auto& row : rows)
        for (const Kw4tools::Arguments& arguments :
             {Kw4tools::Arguments{"read", row.path}, {"read", row.path, "--count"}}) {
            const auto [status, out, err] = program(arguments);
            EXPECT_EQ(status, 2);
            EXPECT_EQ(out, "");
            EXPECT_EQ(err, "kw4tools: " + std::string(row.message) + "\n");
        }
}

TEST(kw4tools_read, TracesOnlyWhenAskedTo)
{
    const Kw4tools program;
    program.Site().Write("file", "a\n");
    EXPECT_EQ(program({"read", "file"}).err, "");
    EXPECT_EQ(program({"read", "file", "--trace"}).err,
              "   ZORDuxServices::ReadStream iFileName = file\n"
              "   ZORDuxServices::ReadStream Open Stream: OK\n"
              "   ZORDuxServices::ReadStream Read Stream: OK\n"
              "   ZORDuxServices::ReadStream Close Stream: OK\n");
}

TEST(kw4tools_write, WritesStandardInput)
{
    Kw4tools program;
    for (const std::string& text : {std::string("a\nb\n"), std::string(), std::string("no end"),
                                    std::string("\xff\xc3\r\n"), std::string(5000, 'x') + "\n"}) {
        program.Run().Input(text);
        EXPECT_EQ(program.Result({"write", "file"}), "");
        EXPECT_EQ(program.Site().Read("file"), text);
    }
}

TEST(kw4tools_write, ExitsWithTwoWhenItCannotBeDone)
{
    Kw4tools program;
    program.Run().Input("a\n");
    const struct {
        const char* path;
        const char* message;
    } rows[] = {
        {"missing/file", "cannot be opened for writing: No such file or directory"},
        {".", "cannot be opened for writing: Is a directory"},
        {"/dev/full", "cannot be written to the end: No space left on device"},
    };
    for (const auto& row : rows) {
        const auto [status, out, err] = program({"write", row.path});
        EXPECT_EQ(status, 2);
        EXPECT_EQ(out, "");
        EXPECT_EQ(err, "kw4tools: '" + std::string(row.path) + "' " + row.message + "\n");
    }
}

TEST(kw4tools_write, LeavesTheFileAloneWhenStandardInputIsNoText)
{
    Kw4tools program;
    program.Site().Write("file", "as it was");
    program.Run().Input(std::string("a\nb\0c\n", 6));
    const auto nul = program({"write", "file"});
    EXPECT_EQ(nul.status, 2);
    EXPECT_EQ(nul.err, "kw4tools: line 2 of standard input holds a NUL byte, which no text can\n");
    program.Run().Closed(0);
    const auto closed = program({"write", "file"});
    EXPECT_EQ(closed.status, 2);
    EXPECT_THAT(closed.err, HasSubstr("standard input cannot be read: Bad file descriptor"));
    EXPECT_EQ(program.Site().Read("file"), "as it was");
}

namespace
{

std::vector<std::string> Lines(const std::string& iText)
{
    std::vector<std::string> lines;
    std::istringstream stream(iText);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

} // namespace

TEST(kw4tools_id, PrintsANewIdentifier)
{
    const Kw4tools program;
    EXPECT_THAT(
        program.Result({"id"}),
        MatchesRegex("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}\n"));
    EXPECT_NE(program.Result({"id"}), program.Result({"id"}));
}

TEST(kw4tools_id, PrintsAsManyAsWanted)
{
    const Kw4tools program;
    const std::vector<std::string> lines = Lines(program.Result({"id", "--count", "1000"}));
    EXPECT_EQ(lines.size(), 1000U);
    EXPECT_EQ(std::set<std::string>(lines.begin(), lines.end()).size(), 1000U);
    EXPECT_EQ(program.Result({"id", "--count", "0"}), "");
    EXPECT_EQ(Lines(program.Result({"id", "--count=2"})).size(), 2U);
}

TEST(kw4tools_id, PrintsOctetsAsHexadecimalPairs)
{
    const Kw4tools program;
    for (const std::string& line : Lines(program.Result({"id", "--octets", "--count", "3"}))) {
        ASSERT_THAT(line, MatchesRegex("[0-9a-f]{2}( [0-9a-f]{2}){35}"));
        EXPECT_EQ(line.substr(3 * 8, 2), "2d") << "the ninth character of the text is a hyphen";
    }
}
