// Labels with restriction data on a whole panel, beside a real server on the loopback address.

#include "WindowFixture.h"
#include "ecan/NetworkSource.h"
#include "support/LoopbackServer.h"
#include "support/ManualTime.h"
#include "window/PanelDocument.h"
#include "wrappers/BenchControls.h"

#include <QCoreApplication>

using namespace zan;
using namespace zan::window;
using binding::Variant;
using test::waitUntil;

namespace {

const char* const SitePath = "/lowflow/Service.svc/Xml/Restrictions/Site/1";
const QByteArray Document = "<Restrictions><Restriction><Band>1</Band><Allocation>50</Allocation>"
                            "<LastUpdate>noon</LastUpdate></Restriction></Restrictions>";
const QString Served = QStringLiteral("ECAN @ noon\r\nAssessed Flow=N/A\r\nAllocation=50%");
const QString Connecting = QStringLiteral("Error connecting to ECAN Server");
const char* const OneLabel = "<CONTROL><TYPE>VB.Label</TYPE><CAPTION>first</CAPTION><BINDTO>ECANSVC|1|1</BINDTO>"
                             "</CONTROL>";

class RestrictionPanel : public WindowTest
{
protected:
    RestrictionPanel()
    {
        panel->setECANHost(server.host());
        panel->document().restrictionSource().setClock(time.clock());
    }
    void load(const QByteArray& controls = OneLabel)
    {
        fill("Main", controls.constData());
        panel->LoadWindow(QStringLiteral("Main"));
    }
    QString caption(int place = 1) { return property(place, "Caption"); }

    test::LoopbackServer server;
    test::ManualTime time;
};

} // namespace

TEST_F(RestrictionPanel, ALabelIsServedWithoutTheLoggersHavingNewData)
{
    server.serve(SitePath, Document);
    load();
    EXPECT_EQ(caption(), u"first");
    EXPECT_TRUE(waitUntil([&] { return caption() == Served; }));
    EXPECT_EQ(server.count(), 1);
}

TEST_F(RestrictionPanel, TheEndOfAFetchRefreshesNothingElse)
{
    server.hold(SitePath);
    load(QByteArray(OneLabel) + "<CONTROL><TYPE>VB.TextBox</TYPE></CONTROL>");
    live(2)->put(values::Name("Text"), Variant(u"typed"));
    ASSERT_TRUE(waitUntil([&] { return server.count() == 1; }));
    server.release(Document);
    EXPECT_TRUE(waitUntil([&] { return caption() == Served; }));
    EXPECT_EQ(property(2, "Text"), u"typed");
}

TEST_F(RestrictionPanel, AThousandLabelsOfOneSiteAskOnce)
{
    server.serve(SitePath, Document);
    load(QByteArray(OneLabel).repeated(1000));
    for (int i = 0; i < 3; ++i)
        panel->Refresh();
    EXPECT_TRUE(waitUntil([&] { return caption(1000) == Served; }));
    EXPECT_EQ(caption(1), Served);
    panel->Refresh();
    EXPECT_EQ(server.count(), 1);
}

TEST_F(RestrictionPanel, WhatAFetchShowsIsNobodysEdit)
{
    server.serve(SitePath, Document);
    load();
    document::XMLOps::UnmarkChanged(nodeOf("Main"));
    EXPECT_TRUE(waitUntil([&] { return caption() == Served; }));
    EXPECT_FALSE(isChanged());
    EXPECT_EQ(panel->EditCount(), 0);
    EXPECT_EQ(nodeOf("Main").child(values::Name("CONTROL")).child(values::Name("CAPTION")).text(), u"first");
}

TEST_F(RestrictionPanel, ByDefaultNobodyIsAskedAndTheLabelSaysItCannotConnect)
{
    panel->setECANHost(QString());
    load();
    EXPECT_EQ(caption(), Connecting);
    EXPECT_EQ(server.connections(), 0);
    EXPECT_EQ(BenchWindow().ECANHost(), u"");
}

TEST_F(RestrictionPanel, AHostThatIsSetLaterIsAskedAtTheNextScan)
{
    panel->setECANHost(QString());
    load();
    EXPECT_EQ(caption(), Connecting);
    server.serve(SitePath, Document);
    panel->setECANHost(server.host());
    panel->Refresh();
    EXPECT_TRUE(waitUntil([&] { return caption() == Served; }));
}

TEST_F(RestrictionPanel, TheHostIsAPropertyThatRefusesNonsense)
{
    binding::Object& object = *panel->object();
    const values::Name host("ECANHost");
    object.put(host, Variant(u"https://ecan.example"));
    EXPECT_EQ(values::toText(object.get(host)), u"https://ecan.example");
    for (const char* nonsense : {"ftp://ecan.example", "ecan.example/path", "me@ecan.example", "a b"})
        EXPECT_EQ(errorOf([&] { object.put(host, Variant(QString::fromLatin1(nonsense))); }), 380) << nonsense;
    EXPECT_EQ(panel->ECANHost(), u"https://ecan.example");
}

TEST_F(RestrictionPanel, ADocumentCannotSayWhoIsAsked)
{
    const QString before = panel->ECANHost();
    fill("Main", "<CONTAINER><ECANHOST>evil.example</ECANHOST><EcanHost>evil.example</EcanHost>"
                 "<x:ecanhost>evil.example</x:ecanhost><GRIDSIZE>77</GRIDSIZE></CONTAINER>");
    panel->LoadWindow(QStringLiteral("Main"));
    EXPECT_EQ(panel->ECANHost(), before);
    EXPECT_EQ(panel->GridSize(), 77);
}

TEST_F(RestrictionPanel, NoBagKeepsTheHost)
{
    binding::PropertyBag bag;
    panel->WriteProperties(bag);
    BenchWindow other;
    other.ReadProperties(bag);
    EXPECT_EQ(other.ECANHost(), u"");
}

// What may happen during a fetch -------------------------------------------------------------------------------

TEST_F(RestrictionPanel, APanelMayGoDuringAFetch)
{
    server.hold(SitePath);
    load();
    ASSERT_TRUE(waitUntil([&] { return server.count() == 1; }));
    panel.reset();
    EXPECT_TRUE(waitUntil([&] { return server.leftWaiting() == 1; }));
}

TEST_F(RestrictionPanel, APanelThatHasEndedFetchesNothingMore)
{
    server.hold(SitePath);
    panel->show();
    load();
    ASSERT_TRUE(waitUntil([&] { return server.count() == 1; }));
    panel->hide();
    EXPECT_TRUE(waitUntil([&] { return server.leftWaiting() == 1; }));
}

TEST_F(RestrictionPanel, ALabelMayBeRemovedDuringAFetch)
{
    server.hold(SitePath);
    load(QByteArray(OneLabel).repeated(2));
    const values::Ref<wrappers::iBenchControl> removed = panel->Controls()->Control(Variant(1));
    ASSERT_TRUE(waitUntil([&] { return server.count() == 1; }));
    panel->Controls()->Remove(Variant(1));
    server.release(Document);
    EXPECT_TRUE(waitUntil([&] { return caption() == Served; }));
    EXPECT_FALSE(removed->Updated());
}

TEST_F(RestrictionPanel, TheLastLabelMayBeRemovedDuringAFetch)
{
    server.hold(SitePath);
    load();
    ASSERT_TRUE(waitUntil([&] { return server.count() == 1; }));
    panel->Controls()->Clear();
    bool isTold = false;
    QObject::connect(&panel->document().restrictionSource(), &ecan::NetworkSource::ended, panel.get(),
                     [&] { isTold = true; });
    server.release(Document);
    EXPECT_TRUE(waitUntil([&] { return isTold; }));
    EXPECT_TRUE(errors.empty());
}

TEST_F(RestrictionPanel, AWindowLoadedAgainDuringAFetchIsServedByIt)
{
    server.hold(SitePath);
    fill("Other", "<CONTROL><TYPE>VB.Label</TYPE><BINDTO>ECANSVC|1|1</BINDTO></CONTROL>");
    load();
    ASSERT_TRUE(waitUntil([&] { return server.count() == 1; }));
    panel->LoadWindow(QStringLiteral("Other"));
    server.release(Document);
    EXPECT_TRUE(waitUntil([&] { return caption() == Served; }));
    EXPECT_EQ(server.count(), 1);
}

TEST_F(RestrictionPanel, AWindowLoadedAgainAfterAFetchFetchesAnew)
{
    server.serve(SitePath, Document);
    fill("Other", OneLabel);
    load();
    EXPECT_TRUE(waitUntil([&] { return caption() == Served; }));
    panel->LoadWindow(QStringLiteral("Other"));
    EXPECT_EQ(caption(), u"first");
    EXPECT_TRUE(waitUntil([&] { return caption() == Served; }));
    EXPECT_EQ(server.count(), 2);
}

TEST_F(RestrictionPanel, APauseOutlivesTheWindow)
{
    load();
    EXPECT_TRUE(waitUntil([&] { return caption() == Connecting; }));
    fill("Other", OneLabel);
    panel->LoadWindow(QStringLiteral("Other"));
    EXPECT_EQ(caption(), Connecting) << "it is told at once, and nobody is asked";
    EXPECT_EQ(server.count(), 1);
}

TEST_F(RestrictionPanel, WhoHearsOfTheEndMayEndThePanel)
{
    server.serve(SitePath, Document);
    load();
    QObject::connect(&panel->document().restrictionSource(), &ecan::NetworkSource::ended,
                     QCoreApplication::instance(), [this] { panel.reset(); });
    EXPECT_TRUE(waitUntil([&] { return !panel; }));
}
