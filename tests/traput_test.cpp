#include "traput.h"

#include "CapturedOutput.h"
#include "ZORTrace.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <unistd.h>

namespace
{

// A channel that is on.
class Channel : public ZORTrace
{
public:
    explicit Channel(const char* iName = "Channel") : ZORTrace(iName, nullptr, 0, nullptr, 1024)
    {
        SetSwitch(iName, 1);
    }
};

// What a channel writes for a number.
std::string Number(const char* iFormat, long iNumber)
{
    const CapturedOutput error(STDERR_FILENO);
    {
        const Channel channel;
        _traputl(channel.GetHandle(), 2, iFormat, &iNumber, 0);
    }
    return error.Text();
}

} // namespace

TEST(traput, WritesALineAsSoonAsItIsFinished)
{
    const CapturedOutput error(STDERR_FILENO);
    const Channel channel;
    traput(channel.GetHandle(), 2, "a ");
    traput(channel.GetHandle(), 0, "line");
    EXPECT_EQ(error.Text(), "");
    traput(channel.GetHandle(), -5, "\n");
    EXPECT_EQ(error.Text(), "a line\n");
}

TEST(traput, WritesWholeLinesOfATextAndKeepsTheRest)
{
    const CapturedOutput error(STDERR_FILENO);
    const Channel channel;
    traput(channel.GetHandle(), 2, "one\ntwo\nthr");
    EXPECT_EQ(error.Text(), "one\ntwo\n");
    traput(channel.GetHandle(), 2, "ee\n");
    EXPECT_EQ(error.Text(), "one\ntwo\nthree\n");
}

TEST(traput, LinesOfTwoChannelsDoNotMix)
{
    const CapturedOutput error(STDERR_FILENO);
    const Channel first("first");
    const Channel second("second");
    traput(first.GetHandle(), 2, "fir");
    traput(second.GetHandle(), 2, "second\n");
    traput(first.GetHandle(), 2, "st\n");
    EXPECT_EQ(error.Text(), "second\nfirst\n");
}

TEST(traput, TakesTextsOfAnyLength)
{
    const CapturedOutput error(STDERR_FILENO);
    const Channel channel;
    const std::string text(1'000'000, 'x');
    traput(channel.GetHandle(), 2, text.c_str());
    traput(channel.GetHandle(), 2, "\n");
    EXPECT_EQ(error.Text(), text + "\n");
}

TEST(traput, DoesNothingForNoTextNoChannelAndAChannelThatIsOff)
{
    const CapturedOutput error(STDERR_FILENO);
    const Channel channel;
    const long number = 7;
    traput(channel.GetHandle(), 2, nullptr);
    traput(channel.GetHandle(), 2, "");
    _traputl(channel.GetHandle(), 2, "", nullptr, 0);
    for (const int handle : {0, -1, INT_MAX, INT_MIN, channel.GetHandle() + 1}) {
        traput(handle, 2, "lost\n");
        _traputl(handle, 2, "", &number, 0);
    }
    ZORTrace::SetSwitch("Channel", 0);
    traput(channel.GetHandle(), 2, "lost\n");
    _traputl(channel.GetHandle(), 2, "", &number, 0);
    EXPECT_EQ(error.Text(), "");
}

TEST(traput, DoesNothingForAChannelThatIsGone)
{
    const CapturedOutput error(STDERR_FILENO);
    const auto gone = [] {
        const Channel channel;
        return channel.GetHandle();
    }();
    traput(gone, 2, "lost\n");
    EXPECT_EQ(error.Text(), "");
    const Channel next("next");
    traput(gone, 2, "next\n");
    EXPECT_EQ(next.GetHandle(), gone);
    EXPECT_EQ(error.Text(), "next\n");
}

TEST(traputl, WritesNumbersInDecimal)
{
    EXPECT_EQ(Number("", 0), "0");
    EXPECT_EQ(Number("", -42), "-42");
    EXPECT_EQ(Number("", LONG_MAX), "9223372036854775807");
    EXPECT_EQ(Number("", LONG_MIN), "-9223372036854775808");
    EXPECT_EQ(Number(nullptr, 42), "42");
}

TEST(traputl, TakesTheMiddleOfAPrintfConversion)
{
    EXPECT_EQ(Number("x", 255), "ff");
    EXPECT_EQ(Number("08X", 255), "000000FF");
    EXPECT_EQ(Number("+d", 7), "+7");
    EXPECT_EQ(Number("-5i", 7), "7    ");
    EXPECT_EQ(Number("#o", 8), "010");
    EXPECT_EQ(Number(" 6.3d", 7), "   007");
    EXPECT_EQ(Number("u", -1), "18446744073709551615");
    EXPECT_EQ(Number("-+ #0999.999x", 7), "0x" + std::string(998, '0') + "7");
}

TEST(traputl, TakesAnyOtherFormatForTheEmptyOne)
{
    for (const char* format : {"%d", "s", "n", "ld", "d ", "5", ".", "d%n", "1000d", ".1000d", "*d",
                               "++++++d", "5.5.5d"})
        EXPECT_EQ(Number(format, 42), "42") << format;
}
