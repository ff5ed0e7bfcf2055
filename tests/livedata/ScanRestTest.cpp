// A scan passes over the controls for which nothing has changed. What a user sees must be what a full scan shows.

#include "document/Elements.h"
#include "document/XMLOps.h"
#include "livedata/Scan.h"
#include "support/FakeSite.h"
#include "trellis/SchemeFile.h"
#include "window/BenchWindow.h"
#include "window/ControlTypes.h"

#include <QCoreApplication>
#include <QLineEdit>

#include <gtest/gtest.h>

#include <functional>

using namespace zan;
using document::Node;
using values::make;
using values::Name;
using values::Ref;
using values::Variant;
namespace element = document::element;

namespace {

class CountingScan : public livedata::Scan
{
public:
    CountingScan()
        : Scan(window::controlTypes())
    {}
    int updates = 0;
    std::function<void(wrappers::iBenchControl&)> afterUpdate;

    void update(wrappers::iBenchControl& control, wrappers::BenchControls& controls) override
    {
        ++updates;
        Scan::update(control, controls);
        if (afterUpdate)
            afterUpdate(control);
    }
};

/// A logger of a stored scheme.
class StoredSite : public fake::FakeLogger
{
public:
    explicit StoredSite(Ref<site::Scheme> stored)
        : m_stored(std::move(stored))
    {}
    Ref<site::Scheme> Scheme() override { return m_stored; }

private:
    Ref<site::Scheme> m_stored;
};

const char* const Windows = R"(<X>
<WINDOW><KEY>RTD</KEY>
<CHANNEL><KEY>STAGE</KEY><LABEL>Stage</LABEL><UNITS>m</UNITS><FORMAT>0.00</FORMAT></CHANNEL>
<CHANNEL><KEY>FLOW</KEY><LABEL>Flow</LABEL></CHANNEL>
</WINDOW>
<WINDOW><KEY>MAIN</KEY>
<CONTROL><TYPE>VB.Label</TYPE><BINDTO>RTD|STAGE</BINDTO></CONTROL>
<CONTROL><TYPE>VB.TextBox</TYPE><BINDTO>RTD|STAGE</BINDTO></CONTROL>
<CONTROL><TYPE>MSComctlLib.ProgressBar</TYPE><BINDTO>RTD|STAGE</BINDTO></CONTROL>
<CONTROL><TYPE>VB.Label</TYPE><BINDTO>RTD|FLOW</BINDTO></CONTROL>
</WINDOW></X>)";
constexpr int LabelPlace = 1;
constexpr int TextBoxPlace = 2;
constexpr int ProgressPlace = 3;
constexpr int FlowPlace = 4;

class ScanRest : public testing::Test
{
protected:
    ScanRest()
    {
        const Node parsed = document::XMLOps::LoadDocument(QString::fromLatin1(Windows));
        while (const Node window = parsed.firstChildElement())
            scheme->document().documentElement().appendChild(window);
        panel.InitProperties();
        panel.setShowSiteMap(false);
        panel.setLogger(logger);
        panel.LoadWindow(QStringLiteral("MAIN"));
        controls = panel.Controls();
        controls->setLiveData(&scan);
        stage = scheme->Windows()->Item(Variant(u"RTD"))->Item(Variant(u"STAGE"));
        flow = scheme->Windows()->Item(Variant(u"RTD"))->Item(Variant(u"FLOW"));
        stage->setValue(Variant(1.5));
        rest();
    }
    ~ScanRest() override { controls->setLiveData(nullptr); }

    /// Scans until nothing more comes of it.
    void rest()
    {
        for (int i = 0; i < 4; ++i)
            controls->ScanControls();
        scan.updates = 0;
    }
    /// How many controls a scan looks at.
    int scanned()
    {
        scan.updates = 0;
        controls->ScanControls();
        return scan.updates;
    }
    Ref<wrappers::iBenchControl> wrapper(int place) { return controls->Control(Variant(place)); }
    Node node(int place) { return wrapper(place)->XMLNode(); }
    Ref<binding::Object> live(int place) { return wrapper(place)->Control(); }
    QString shown(int place, const char* property = "Caption")
    {
        return values::toText(live(place)->get(Name(property)));
    }
    /// What a control shows after one scan.
    QString scannedCaption(int place, const char* property = "Caption")
    {
        controls->ScanControls();
        return shown(place, property);
    }
    static void set(const Node& node, Name name, const char* text)
    {
        document::XMLOps::SetAttribute(node, name, QString::fromLatin1(text), true);
    }

    Ref<trellis::SchemeFile> scheme = trellis::SchemeFile::create(QStringLiteral("never-saved.scheme"));
    Ref<StoredSite> logger = make<StoredSite>(scheme);
    CountingScan scan;
    window::BenchWindow panel;
    Ref<wrappers::BenchControls> controls;
    Ref<site::Channel> stage, flow;
};

} // namespace

TEST_F(ScanRest, ControlsWithoutAChangeArePassedOver)
{
    EXPECT_EQ(shown(LabelPlace), u"1.50");
    EXPECT_EQ(scanned(), 0);
}

TEST_F(ScanRest, AChangedValueIsShownAtOnceAndOnlyWhereItIsBound)
{
    flow->setValue(Variant(7));
    EXPECT_EQ(scanned(), 1);
    EXPECT_EQ(shown(FlowPlace), u"7");
    stage->setValue(Variant(2.5));
    EXPECT_EQ(scannedCaption(LabelPlace), u"2.50");
    EXPECT_EQ(shown(TextBoxPlace, "Text"), u"2.50");
    EXPECT_EQ(shown(ProgressPlace, "Value"), u"2.5");
}

TEST_F(ScanRest, AValueThatIsWrittenAgainChangesNothing)
{
    stage->setValue(Variant(1.5));
    EXPECT_EQ(scanned(), 0);
}

TEST_F(ScanRest, AnEqualValueOfAnotherKindIsAnotherValue)
{
    flow->setValue(Variant(1));
    EXPECT_EQ(scannedCaption(FlowPlace), u"1");
    rest();
    flow->setValue(Variant(true));
    EXPECT_EQ(scannedCaption(FlowPlace), u"True");
}

TEST_F(ScanRest, ACaptionThatAScriptHasWrittenIsOverwritten)
{
    live(LabelPlace)->put(Name("Caption"), Variant(u"mine"));
    EXPECT_EQ(scannedCaption(LabelPlace), u"1.50");
}

TEST_F(ScanRest, WhatAUserHasTypedIsOverwritten)
{
    panel.show();
    QCoreApplication::processEvents();
    rest();
    auto* line = panel.findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr);
    line->setText(QStringLiteral("typed"));
    ASSERT_EQ(shown(TextBoxPlace, "Text"), u"typed");
    EXPECT_EQ(scannedCaption(TextBoxPlace, "Text"), u"1.50");
}

TEST_F(ScanRest, AnEditDuringTheUpdateIsOverwrittenByTheNextScan)
{
    scan.afterUpdate = [&](wrappers::iBenchControl& control) {
        if (control.Index() == LabelPlace)
            control.Control()->put(Name("Caption"), Variant(u"late"));
    };
    stage->setValue(Variant(3));
    EXPECT_EQ(scannedCaption(LabelPlace), u"late");
    scan.afterUpdate = nullptr;
    EXPECT_EQ(scannedCaption(LabelPlace), u"3.00");
}

TEST_F(ScanRest, AValueThatArrivesDuringTheUpdateIsShownByTheNextScan)
{
    scan.afterUpdate = [&](wrappers::iBenchControl&) { stage->setValue(Variant(9)); };
    stage->setValue(Variant(8));
    controls->ScanControls();
    scan.afterUpdate = nullptr;
    EXPECT_EQ(scannedCaption(LabelPlace), u"9.00");
}

TEST_F(ScanRest, ParametersOfTheChannelAreSeenHoweverTheyAreEdited)
{
    stage->setFormat(QStringLiteral("0.0"));
    EXPECT_EQ(scannedCaption(LabelPlace), u"1.5");
    rest();
    stage->XMLNode().child(Name("FORMAT")).setText(QStringLiteral("0"));
    EXPECT_EQ(scannedCaption(LabelPlace), u"2");
    rest();
    stage->XMLNode().removeChild(stage->XMLNode().child(Name("FORMAT")));
    EXPECT_EQ(scannedCaption(LabelPlace), u"1.5");
    rest();
    stage->setFormat(QStringLiteral("0.000")); // a new element
    EXPECT_EQ(scannedCaption(LabelPlace), u"1.500");
    rest();
    stage->setFormat(QStringLiteral("0.0")); // which is watched as well
    EXPECT_EQ(scannedCaption(LabelPlace), u"1.5");
}

TEST_F(ScanRest, AFormatInPiecesIsSeenToChange)
{
    const Node format = stage->XMLNode().child(Name("FORMAT"));
    const Node piece = format.createElement(Name("PIECE"), QStringLiteral("0"));
    format.appendChild(piece); // the format reads "0.000" now
    EXPECT_EQ(scannedCaption(LabelPlace), u"1.500");
    rest();
    piece.setText(QStringLiteral("00"));
    EXPECT_EQ(scannedCaption(LabelPlace), u"1.5000");
}

TEST_F(ScanRest, LabelsAndTheirSeparatorAreSeenToChange)
{
    set(node(LabelPlace), element::ShowLabels, "-1");
    EXPECT_EQ(scannedCaption(LabelPlace), u"Stage1.50 m");
    rest();
    set(node(LabelPlace), element::AddLabelSeperators, "-1");
    EXPECT_EQ(scannedCaption(LabelPlace), u"Stage: 1.50 m");
    rest();
    set(node(LabelPlace), element::AddLabelSeperators, "0");
    EXPECT_EQ(scannedCaption(LabelPlace), u"Stage1.50 m");
    rest();
    stage->setUnits(QStringLiteral("ft"));
    EXPECT_EQ(scannedCaption(LabelPlace), u"Stage1.50 ft");
    rest();
    node(LabelPlace).removeChild(node(LabelPlace).child(element::ShowLabels));
    EXPECT_EQ(scannedCaption(LabelPlace), u"1.50");
}

TEST_F(ScanRest, AnotherTypeIsSeen)
{
    set(node(LabelPlace), element::Type, "VB.Nothing");
    rest();
    live(LabelPlace)->put(Name("Caption"), Variant(u"mine"));
    EXPECT_EQ(scannedCaption(LabelPlace), u"mine") << "a type that is not known is passed over";
    rest();
    set(node(LabelPlace), element::Type, "VB.Label");
    EXPECT_EQ(scannedCaption(LabelPlace), u"1.50");
}

TEST_F(ScanRest, ElementsOfNoConcernWakeNobody)
{
    set(node(LabelPlace), element::ToolTipText, "new");
    rest();
    set(node(LabelPlace), element::ToolTipText, "another");
    EXPECT_EQ(scanned(), 0);
}

TEST_F(ScanRest, WhatARoutineReadsIsLearnedFromTheReading)
{
    const Name extra("EXTRA"), part("PART");
    scan.afterUpdate = [&](wrappers::iBenchControl& control) { control.XMLNode().child(extra).child(part).text(); };
    rest();
    EXPECT_EQ(scanned(), 0);
    const Node added = node(LabelPlace).createElement(extra);
    node(LabelPlace).appendChild(added);
    EXPECT_GT(scanned(), 0) << "a search that found nothing may find something now";
    rest();
    added.appendChild(added.createElement(part, QStringLiteral("1")));
    EXPECT_GT(scanned(), 0);
    rest();
    added.child(part).setText(QStringLiteral("2"));
    EXPECT_GT(scanned(), 0);
    rest();
    added.appendChild(added.createElement(Name("OTHER")));
    added.child(Name("OTHER")).setText(QStringLiteral("2"));
    rest();
    added.child(Name("OTHER")).setText(QStringLiteral("3"));
    EXPECT_EQ(scanned(), 0);
}

TEST_F(ScanRest, EditsBehindAnotherPanelWakeNobody)
{
    const Node foreign = Node::newDocument().createElement(Name("OTHER"));
    const document::ChangeCounter other;
    foreign.watch(other);
    const std::uint32_t before = other.value();
    foreign.setText(QStringLiteral("new"));
    EXPECT_NE(other.value(), before);
    EXPECT_EQ(scanned(), 0);
}

TEST_F(ScanRest, AFailureIsShownAndGoesAway)
{
    stage->setValue(Variant(values::ErrorValue{5}));
    controls->ScanControls();
    const QString failed = shown(LabelPlace);
    rest();
    EXPECT_EQ(scannedCaption(LabelPlace), failed);
    stage->setValue(Variant(4));
    EXPECT_EQ(scannedCaption(LabelPlace), u"4.00");
}

TEST_F(ScanRest, AnotherChannelIsSeen)
{
    flow->setValue(Variant(12));
    rest();
    wrapper(LabelPlace)->setChannel(flow);
    EXPECT_EQ(scannedCaption(LabelPlace), u"12");
}

TEST_F(ScanRest, ATextBoxThatLosesItsChannelSaysSo)
{
    wrapper(TextBoxPlace)->setChannel({});
    EXPECT_EQ(scannedCaption(TextBoxPlace, "Text"), u"No channel");
}

TEST_F(ScanRest, AnotherNodeIsSeen)
{
    const Node other = node(LabelPlace).createElement(element::Control);
    set(other, element::Type, "VB.Label");
    set(other, element::ShowLabels, "-1");
    wrapper(LabelPlace)->setXMLNode(other);
    EXPECT_EQ(scannedCaption(LabelPlace), u"Stage1.50 m");
}

TEST_F(ScanRest, AnotherLiveControlIsFilled)
{
    const Ref<binding::Object> second = live(FlowPlace);
    wrapper(LabelPlace)->setControl(second);
    wrapper(FlowPlace)->setControl({});
    EXPECT_EQ(scannedCaption(LabelPlace), u"1.50");
}

TEST_F(ScanRest, AHostsOwnChannelIsLookedAtEachTime)
{
    const auto own = fake::FakeLogger().channel(QStringLiteral("RTD"), QStringLiteral("OWN"));
    wrapper(LabelPlace)->setChannel(own);
    rest();
    EXPECT_EQ(scanned(), 1);
    own->value = Variant(77);
    EXPECT_EQ(scannedCaption(LabelPlace), u"77");
}

TEST_F(ScanRest, ABoundBarNamesItsNewLimits)
{
    live(ProgressPlace)->put(Name("Max"), Variant(50));
    EXPECT_TRUE(scannedCaption(ProgressPlace, "ToolTipText").contains(QStringLiteral("Max=50")));
    rest();
    live(ProgressPlace)->put(Name("ToolTipText"), Variant(u"mine"));
    EXPECT_TRUE(scannedCaption(ProgressPlace, "ToolTipText").contains(QStringLiteral("Max=50")));
}

TEST_F(ScanRest, LightsAndBoxesAreWrittenAtEachScan)
{
    for (const char* type : {"ZanBenchWindow.StatusLight", "ZanBenchWindow.ValueBar", "VB.CheckBox"}) {
        set(node(LabelPlace), element::Type, type);
        EXPECT_FALSE(scan.mayRest(*wrapper(LabelPlace))) << type;
    }
}

TEST_F(ScanRest, OtherLiveDataStartsAnew)
{
    CountingScan other;
    controls->setLiveData(&other);
    controls->ScanControls();
    EXPECT_EQ(other.updates, 4);
    controls->setLiveData(&scan);
}
