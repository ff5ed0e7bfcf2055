#include "livedata/TextDisplay.h"
#include "livedata/Scan.h"
#include "window/ControlTypes.h"

#include "support/FakePanel.h"
#include "support/FakeSite.h"

#include <gtest/gtest.h>

using namespace zan;
using livedata::UpdateLabel;
using livedata::UpdateTextBox;
using values::make;
using values::Name;
using values::Ref;
using values::Variant;
using wrappers::BenchControl;

namespace {

class TextDisplay : public testing::Test
{
protected:
    TextDisplay()
    {
        wrapper->setControl(live);
        channel->label = QStringLiteral("Stage");
        channel->units = QStringLiteral("m");
        channel->format = QStringLiteral("0.00");
        live->caption = QStringLiteral("as it was");
        live->text = QStringLiteral("typed");
    }
    void set(const char* name, const char* text)
    {
        document::XMLOps::SetAttribute(wrapper->XMLNode(), Name(name), QString::fromLatin1(text), true);
    }
    QString label()
    {
        UpdateLabel(*wrapper, *collection);
        return live->caption;
    }
    QString textBox()
    {
        UpdateTextBox(*wrapper);
        return live->text;
    }

    Ref<fake::FakeLogger> logger = make<fake::FakeLogger>();
    Ref<fake::FakeChannel> channel = logger->channel(QStringLiteral("RTD"), QStringLiteral("STAGE"));
    Ref<wrappers::BenchControls> collection = make<wrappers::BenchControls>();
    Ref<BenchControl> wrapper = make<BenchControl>();
    Ref<fake::FakeControl> live = make<fake::FakeControl>();
};

} // namespace

TEST_F(TextDisplay, LabelWithoutDataIsEmpty)
{
    wrapper->setChannel(channel);
    EXPECT_EQ(label(), u"");
}

TEST_F(TextDisplay, LabelledCaptionShowsAZeroBeforeTheFirstData)
{
    wrapper->setChannel(channel);
    set("SHOWLABELS", "1");
    EXPECT_EQ(label(), u"Stage0.00 m");
}

TEST_F(TextDisplay, LabelShowsTheFormattedValue)
{
    wrapper->setChannel(channel);
    channel->value = Variant(1.256);
    EXPECT_EQ(label(), u"1.26");
}

TEST_F(TextDisplay, ShowLabelsIsComparedAsText)
{
    wrapper->setChannel(channel);
    channel->value = Variant(2);
    for (const char* labelled : {" 0", "00", "-1", "x", ""}) {
        set("SHOWLABELS", labelled);
        EXPECT_EQ(label(), u"Stage2.00 m") << labelled;
    }
    set("SHOWLABELS", "0");
    EXPECT_EQ(label(), u"2.00");
}

TEST_F(TextDisplay, SeparatorsAreReadAsANumber)
{
    wrapper->setChannel(channel);
    channel->value = Variant(2);
    set("SHOWLABELS", "-1");
    for (const char* off : {"0", "0.0", "x", ""}) {
        set("ADDLABELSEPERATORS", off);
        EXPECT_EQ(label(), u"Stage2.00 m") << off;
    }
    for (const char* on : {"2", "-1", "0.5"}) {
        set("ADDLABELSEPERATORS", on);
        EXPECT_EQ(label(), u"Stage: 2.00 m") << on;
    }
}

TEST_F(TextDisplay, BlankBeforeTheUnitsStandsAlsoWithoutUnits)
{
    wrapper->setChannel(channel);
    channel->value = Variant(2);
    channel->units.clear();
    set("SHOWLABELS", "1");
    EXPECT_EQ(label(), u"Stage2.00 ");
}

TEST_F(TextDisplay, LabelWithNeitherChannelNorBindTextKeepsItsCaption)
{
    EXPECT_EQ(label(), u"as it was");
    wrapper->setBindTo(QStringLiteral("RTD|GONE"));
    EXPECT_EQ(label(), u"as it was");
}

TEST_F(TextDisplay, ValueThatCannotBeFormattedReadsErrorOnALabelAndNoChannelInATextBox)
{
    wrapper->setChannel(channel);
    channel->value = Variant::null();
    EXPECT_EQ(label(), u"ERROR!");
    EXPECT_EQ(textBox(), u"No channel");
}

TEST_F(TextDisplay, TextBoxShowsTheBareValueWhateverTheLabelSettings)
{
    wrapper->setChannel(channel);
    set("SHOWLABELS", "1");
    set("ADDLABELSEPERATORS", "1");
    EXPECT_EQ(textBox(), u"");
    channel->value = Variant(3.5);
    EXPECT_EQ(textBox(), u"3.50");
}

TEST_F(TextDisplay, TextBoxWithoutChannelSaysSoAtEveryScan)
{
    EXPECT_EQ(textBox(), u"No channel");
    live->text = QStringLiteral("typed again");
    EXPECT_EQ(textBox(), u"No channel");
}

TEST_F(TextDisplay, WrapperWithoutLiveControlIsNoFailure)
{
    const auto empty = make<BenchControl>();
    empty->setChannel(channel);
    EXPECT_NO_THROW(UpdateLabel(*empty, *collection));
    EXPECT_NO_THROW(UpdateTextBox(*empty));
}

TEST_F(TextDisplay, ScanTellsTypesApartExactly)
{
    livedata::Scan scan{window::controlTypes()};
    wrapper->setChannel(channel);
    channel->value = Variant(4);
    wrapper->setControlType(QStringLiteral("vb.label"));
    scan.update(*wrapper, *collection);
    EXPECT_EQ(live->caption, u"as it was");
    wrapper->setControlType(QStringLiteral("VB.CommandButton"));
    scan.update(*wrapper, *collection);
    EXPECT_EQ(live->caption, u"as it was");
    wrapper->setControlType(QStringLiteral("VB.Label"));
    scan.update(*wrapper, *collection);
    EXPECT_EQ(live->caption, u"4.00");
}

TEST_F(TextDisplay, ShownTextIsNotWrittenToTheDocument)
{
    wrapper->setChannel(channel);
    channel->value = Variant(4);
    const QString before = wrapper->XMLNode().xml();
    label();
    EXPECT_EQ(wrapper->XMLNode().xml(), before);
}
