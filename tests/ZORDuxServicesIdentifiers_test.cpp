#include "ZORDuxServices.h"

#include "TraceLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

const char kUuid[] = "[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}";

std::string AsText(const _SEQUENCE_octet& iOctets)
{
    return {iOctets.buffer(), iOctets.buffer() + iOctets.length()};
}

} // namespace

TEST(GetIdentifier, IsTheTextOfAVersionFourUuid)
{
    EXPECT_THAT(ZORDuxServices().GetIdentifier().ConvertToChar(), MatchesRegex(kUuid));
}

TEST(GetIdentifier, IsNeverTheSameTwice)
{
    ZORDuxServices services;
    std::set<std::string> seen;
    for (int i = 0; i < 10000; ++i)
        EXPECT_TRUE(seen.insert(services.GetIdentifier().ConvertToChar()).second);
}

TEST(GetIdentifier, WritesOneLineWithTheResult)
{
    ZORDuxServices services;
    TraceLines lines;
    const ZORUnicodeString identifier = services.GetIdentifier();
    EXPECT_THAT(lines.Taken(),
                ElementsAre(std::string("   ZORDuxServices::GetIdentifier OutUuid = ") +
                            identifier.ConvertToChar()));
}

TEST(GetOctetIdentifier, IsTheTextAsOctetsWithoutANul)
{
    const _SEQUENCE_octet octets = ZORDuxServices().GetOctetIdentifier();
    EXPECT_EQ(octets.length(), 36);
    EXPECT_EQ(octets.maximum(), 36);
    EXPECT_THAT(AsText(octets), MatchesRegex(kUuid));
}

TEST(GetOctetIdentifier, IsNeverTheSameTwice)
{
    ZORDuxServices services;
    EXPECT_NE(AsText(services.GetOctetIdentifier()), AsText(services.GetOctetIdentifier()));
}

TEST(GetOctetIdentifier, WritesNoLine)
{
    ZORDuxServices services;
    TraceLines lines;
    services.GetOctetIdentifier();
    EXPECT_THAT(lines.Taken(), IsEmpty());
    ZORPSNTrace::SetCallLines(true);
    services.GetOctetIdentifier();
    EXPECT_THAT(lines.Taken(), ElementsAre("> ZORDuxServices::GetOctetIdentifier",
                                           "< ZORDuxServices::GetOctetIdentifier"));
}
