#include "support/FakeSite.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace zan::site {

namespace {

struct BindRow
{
    const char* bind;
    const char* key; ///< of the channel found; empty for none
};

class FailingWindows : public fake::FakeWindows
{
public:
    Ref<SchemeWindow> Item(const Variant&) override { throw std::logic_error("a host's own failure"); }
};

} // namespace

class FindChannel : public testing::TestWithParam<BindRow>
{};

TEST_P(FindChannel, SplitsAtTheFirstBarAndIgnoresCase)
{
    fake::FakeScheme scheme;
    scheme.window(QStringLiteral("RTD"))->channel(QStringLiteral("Stage"));
    scheme.window(QStringLiteral("RTD"))->channel(QStringLiteral("A|B"));
    scheme.window(QStringLiteral("Empty"));
    const Ref<Channel> found = findChannel(scheme.windows, QString::fromLatin1(GetParam().bind));
    EXPECT_EQ(found ? found->Key().toStdString() : "", GetParam().key);
}

INSTANTIATE_TEST_SUITE_P(BindStrings, FindChannel,
                         testing::Values(BindRow{"RTD|Stage", "Stage"}, BindRow{"rtd|STAGE", "Stage"},
                                         BindRow{"RTD|A|B", "A|B"}, BindRow{"", ""}, BindRow{"RTD", ""},
                                         BindRow{"|", ""}, BindRow{"RTD|", ""}, BindRow{"|Stage", ""},
                                         BindRow{"Nowhere|Stage", ""}, BindRow{"Empty|Stage", ""},
                                         BindRow{"RTD|Nothing", ""}, BindRow{"RTD |Stage", ""},
                                         BindRow{"ECANSVC|123|A", ""}, BindRow{"ECANSCRAPE|123|http://x", ""}));

TEST(FindChannelFailures, AnyErrorOnTheWayGivesNothing)
{
    const auto windows = values::make<fake::FakeWindows>();
    windows->failure = binding::RuntimeError(values::ErrorNumber::ObjectNotSet);
    EXPECT_FALSE(findChannel(windows, QStringLiteral("RTD|Stage")));
    EXPECT_FALSE(findChannel(values::make<FailingWindows>(), QStringLiteral("RTD|Stage")));
    EXPECT_FALSE(findChannel({}, QStringLiteral("RTD|Stage")));
}

} // namespace zan::site
