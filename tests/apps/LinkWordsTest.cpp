#include "zanbench/LinkWords.h"

#include <gtest/gtest.h>

using namespace zan::host;

TEST(LinkWords, EveryStateHasItsWords)
{
    const char* const expected[] = {"Not connected", "Connecting", "Connected", "Disconnecting",
                                    "Connection broken"};
    for (int state = 0; state < 5; ++state)
        EXPECT_EQ(linkStateText(state), expected[state]);
}

TEST(LinkWords, ANumberThatIsNoStateSaysSo)
{
    EXPECT_EQ(linkStateText(9), "Unknown link state 9");
    EXPECT_EQ(linkStateText(-1), "Unknown link state -1");
}

TEST(LinkWords, TheAgeIsSaidInTheUnitThatAGlanceTakesIn)
{
    struct Row
    {
        std::int64_t milliseconds;
        const char* text;
    };
    const Row rows[] = {{0, "Data just now"},
                        {999, "Data just now"},
                        {1000, "Data 1 s old"},
                        {59'999, "Data 59 s old"},
                        {60'000, "Data 1 min old"},
                        {3'599'999, "Data 59 min old"},
                        {3'600'000, "Data 1 h old"},
                        {47LL * 3'600'000, "Data 47 h old"},
                        {48LL * 3'600'000, "Data 2 days old"},
                        {400LL * 24 * 3'600'000, "Data 400 days old"}};
    for (const Row& row : rows)
        EXPECT_EQ(dataAgeText(row.milliseconds), row.text);
}

TEST(LinkWords, NoDataYetIsNotAnAge)
{
    EXPECT_EQ(dataAgeText(std::nullopt), "No data yet");
}

TEST(LinkWords, AClockThatWentBackCountsAsNow)
{
    EXPECT_EQ(dataAgeText(-5000), "Data just now");
}
