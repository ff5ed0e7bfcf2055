#include "zanbench/HostStatus.h"
#include "zanbench/ErrorBar.h"

#include <gtest/gtest.h>

#include <QLabel>

using namespace zan::host;

namespace {

QString field(const HostStatus& status, const char* name)
{
    return status.findChild<QLabel*>(QLatin1String(name))->text();
}

} // namespace

TEST(HostStatus, SaysLinkAgeAndChangesInWords)
{
    std::int64_t now = 100'000;
    HostStatus status([&now] { return now; });
    EXPECT_EQ(field(status, "linkState"), "") << "nothing is open yet";
    EXPECT_EQ(field(status, "dataAge"), "");

    status.setLinkState(1);
    EXPECT_EQ(field(status, "linkState"), "Connecting");
    EXPECT_EQ(field(status, "dataAge"), "No data yet");
    status.setLinkState(2);
    status.dataArrived();
    EXPECT_EQ(field(status, "dataAge"), "Data just now");
    now += 7'300;
    status.refreshAge();
    EXPECT_EQ(field(status, "dataAge"), "Data 7 s old");
    status.setLinkState(4);
    EXPECT_EQ(field(status, "linkState"), "Connection broken");
    EXPECT_EQ(field(status, "dataAge"), "Data 7 s old") << "what is shown on the panel is as old as before";

    status.setChanged(true);
    EXPECT_EQ(field(status, "changes"), "Unsaved changes");
    status.setChanged(false);
    EXPECT_EQ(field(status, "changes"), "Saved");
}

TEST(HostStatus, TheAgeOfOneSiteIsNotThatOfTheNext)
{
    HostStatus status([] { return std::int64_t(5); });
    status.setLinkState(2);
    status.dataArrived();
    status.clearSite();
    EXPECT_EQ(field(status, "dataAge"), "");
    status.setLinkState(0);
    EXPECT_EQ(field(status, "dataAge"), "No data yet");
}

TEST(HostStatus, ProgressIsShownWhileConnectingAndGoesWithIt)
{
    HostStatus status;
    status.setLinkState(1);
    status.setProgress("Dialling...");
    EXPECT_EQ(status.currentMessage(), "Dialling...");
    status.setLinkState(2);
    EXPECT_EQ(status.currentMessage(), "");
}

TEST(ErrorBar, TheSameErrorAgainIsCountedAndAnotherReplacesIt)
{
    ErrorBar bar;
    const auto* label = bar.findChild<QLabel*>(QStringLiteral("errorText"));
    EXPECT_TRUE(bar.isHidden());
    bar.showError("Type mismatch");
    EXPECT_FALSE(bar.isHidden());
    EXPECT_EQ(label->text(), "Type mismatch");
    bar.showError("Type mismatch");
    bar.showError("Type mismatch");
    EXPECT_EQ(label->text(), "Type mismatch (3 times)");
    bar.showError("Overflow");
    EXPECT_EQ(label->text(), "Overflow");
    bar.dismiss();
    EXPECT_TRUE(bar.isHidden());
    bar.showError("Overflow");
    EXPECT_EQ(label->text(), "Overflow") << "a dismissed error counts anew";
}
