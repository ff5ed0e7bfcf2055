#include "DataFixture.h"

#include "document/XMLOps.h"
#include "support/ErrorOf.h"
#include "values/Convert.h"
#include "wrappers/ZanGraphControl.h"
#include "zandata/data/GraphFilter.h"
#include "zandata/data/Trend.h"

using namespace zan;
using namespace zan::zandata;
using document::Node;
using values::Name;
using values::Ref;
using wrappers::ZanGraphControl;

namespace {

class GraphControl : public DataTest
{
protected:
    GraphControl() { graph = addGraph(); }
    ZanGraphControl& control() { return dynamic_cast<ZanGraphControl&>(*wrapper); }
    Node node() { return wrapper->XMLNode(); }
    QString text(const char* name) { return node().child(Name(name)).text(); }
    void load(const char* children)
    {
        wrapper->setXMLNode(document::XMLOps::LoadDocument(
            QStringLiteral("<CONTROL>%1</CONTROL>").arg(QString::fromUtf8(children))));
    }
    GraphFilter& filter() { return dynamic_cast<GraphFilter&>(*graph->Filter()); }
    Ref<ZanGraph> graph;
};

/// Three channels and a record.
Ref<fake::FakeRecords> three()
{
    return records({"A|m", "B|m", "C|m"}, {{1.0, 2.0, 3.0}});
}

} // namespace

TEST_F(GraphControl, UsesNoWindowSettingsFromItsCreation)
{
    EXPECT_FALSE(wrapper->UseWindowSettings());
    EXPECT_FALSE(node().child(Name("USEWINDOWSETTINGS")));
}

TEST_F(GraphControl, ReadingALimitOnANewNodeCreatesItAsTheTextZero)
{
    EXPECT_EQ(control().UpperLimitLine(), 0);
    EXPECT_EQ(text("UPPERLIMIT"), u"0");
    EXPECT_EQ(control().LowerLimitLine(), 0);
    EXPECT_EQ(text("LOWERLIMIT"), u"0");
    EXPECT_EQ(control().UpperLimitLabel(), QString());
    EXPECT_TRUE(node().child(Name("UPPERLABEL")));
    EXPECT_EQ(control().LowerLimitLabel(), QString());
    EXPECT_TRUE(node().child(Name("LOWERLABEL")));
}

TEST_F(GraphControl, LimitsOfZeroAndEmptyLabelsStayInTheNode)
{
    control().setUpperLimitLine(12.5);
    control().setUpperLimitLabel(QStringLiteral("High"));
    EXPECT_EQ(text("UPPERLIMIT"), u"12.5");
    control().setUpperLimitLine(0);
    control().setUpperLimitLabel(QString());
    control().setLowerLimitLine(0);
    control().setLowerLimitLabel(QString());
    for (const char* name : {"UPPERLIMIT", "LOWERLIMIT"})
        EXPECT_EQ(text(name), u"0") << name;
    for (const char* name : {"UPPERLABEL", "LOWERLABEL"})
        EXPECT_TRUE(node().child(Name(name))) << name;
}

TEST_F(GraphControl, LimitsLiveInTheNodeAloneUntilRecordsCome)
{
    control().setUpperLimitLine(7);
    EXPECT_EQ(graph->UpperLimitLine(), 0);
}

TEST_F(GraphControl, LoadSetsPropertiesByNameButNotTheTitleFontNorAPicture)
{
    load("<HEADING>Levels</HEADING><TITLEFONT><NAME>Arial</NAME></TITLEFONT><PICTUREFILE>none.bmp</PICTUREFILE>"
         "<NOSUCH>1</NOSUCH><BACKCOLOR>255</BACKCOLOR>");
    EXPECT_EQ(graph->Heading(), u"Levels");
    EXPECT_EQ(graph->backColor().code, 255);
    EXPECT_NE(graph->font()->name(), u"Arial");
    EXPECT_TRUE(node().child(Name("TITLEFONT")));
}

TEST_F(GraphControl, NodeWithoutFontGetsOneAndAStoredFontAlwaysApplies)
{
    load("<LEFT>30</LEFT>");
    EXPECT_TRUE(node().child(Name("FONT")));
    load("<FONT><NAME>Arial</NAME><SIZE>14</SIZE></FONT>");
    EXPECT_EQ(graph->font()->name(), u"Arial");
    EXPECT_EQ(values::toDouble(graph->font()->get(Name("Size"))), 14);
}

TEST_F(GraphControl, StoredFontIsLeftAloneByAGraphThatUsesTheWindowsSettings)
{
    load("<USEWINDOWSETTINGS>-1</USEWINDOWSETTINGS><FONT><NAME>Arial</NAME></FONT>");
    EXPECT_NE(graph->font()->name(), u"Arial");
}

TEST_F(GraphControl, NodeWithoutFilterShowsEveryChannel)
{
    filter().setEnabled(2, false);
    load("<LEFT>30</LEFT>");
    EXPECT_TRUE(filter().Enabled(2));
}

TEST_F(GraphControl, FilterSetsTheChannelsThatItNamesAndLeavesTheOthers)
{
    filter().setEnabled(4, false);
    load("<FILTER><CHAN1>0</CHAN1><CHAN2>-1</CHAN2><CHAN3>2 of 3</CHAN3><CHAN5>none</CHAN5></FILTER>");
    EXPECT_FALSE(filter().Enabled(1));
    EXPECT_TRUE(filter().Enabled(2));
    EXPECT_TRUE(filter().Enabled(3));
    EXPECT_FALSE(filter().Enabled(4));
    EXPECT_FALSE(filter().Enabled(5));
}

TEST_F(GraphControl, ChannelZeroAndWordsThatBeginLikeAChannelAreIgnored)
{
    load("<FILTER><CHAN0>0</CHAN0><CHANNEL>0</CHANNEL><CHAN>0</CHAN><CHAN-1>0</CHAN-1><OTHER3>0</OTHER3></FILTER>");
    for (std::int32_t channel = 1; channel < 5; ++channel)
        EXPECT_TRUE(filter().Enabled(channel)) << channel;
}

TEST_F(GraphControl, FilterWithoutADataSourceKeepsTheStoredOne)
{
    load("<FILTER><CHAN1>0</CHAN1><CHAN9>-1</CHAN9></FILTER>");
    filter().setEnabled(2, false);
    wrapper->UpdateNode();
    EXPECT_EQ(node().child(Name("FILTER")).xml(), u"<FILTER><CHAN1>0</CHAN1><CHAN9>-1</CHAN9></FILTER>");
}

TEST_F(GraphControl, FilterStoresOneElementLessThanItHasChannels)
{
    graph->setDataSource(three());
    filter().setEnabled(1, false);
    wrapper->UpdateNode();
    EXPECT_EQ(node().child(Name("FILTER")).xml(), u"<FILTER><CHAN1>0</CHAN1><CHAN2>-1</CHAN2></FILTER>");
}

TEST_F(GraphControl, StoredFilterIsReplacedByOneAtTheEndOfTheNode)
{
    load("<FILTER><CHAN1>0</CHAN1><CHAN9>-1</CHAN9></FILTER><LEFT>30</LEFT>");
    graph->setDataSource(three());
    wrapper->UpdateNode();
    EXPECT_EQ(node().children(Name("FILTER")).size(), 1u);
    const Node stored = node().child(Name("FILTER"));
    EXPECT_FALSE(stored.nextSiblingElement());
    EXPECT_EQ(stored.xml(), u"<FILTER><CHAN1>0</CHAN1><CHAN2>-1</CHAN2></FILTER>");
}

TEST_F(GraphControl, UpdateStoresColoursToolTipPlaceAndFontBesidesTheFilter)
{
    graph->setLeft(150);
    graph->put(Name("BackColor"), Variant(std::int32_t(65280)));
    graph->put(Name("ToolTipText"), QStringLiteral("Levels"));
    wrapper->UpdateNode();
    EXPECT_EQ(text("LEFT"), u"150");
    EXPECT_EQ(text("BACKCOLOR"), u"65280");
    EXPECT_EQ(text("TOOLTIPTEXT"), u"Levels");
    EXPECT_EQ(text("VISIBLE"), u"-1");
    EXPECT_TRUE(node().child(Name("FONT")).child(Name("NAME")));
}

TEST_F(GraphControl, SecondUpdateOfAnUnchangedGraphIsNoChangeOfTheDocument)
{
    const Node root = logger->scheme->window(QStringLiteral("A"))->XML();
    panel->LoadWindow(QStringLiteral("A"));
    graph = addGraph();
    graph->setDataSource(three());
    panel->UpdateDocument();
    const QString stored = root.xml();
    document::XMLOps::UnmarkChanged(root);
    panel->UpdateDocument();
    EXPECT_EQ(root.xml(), stored);
    EXPECT_FALSE(document::XMLOps::IsMarkedChanged(root));
}

TEST_F(GraphControl, HandleIsTheGraphsOwn)
{
    EXPECT_NE(wrapper->hWnd(), 0);
    EXPECT_EQ(wrapper->hWnd(), graph->hWnd());
}

TEST_F(GraphControl, MoveAndMeasuresGoToTheGraphAndToTheNode)
{
    wrapper->Move(30, 45.0F, 600.0F, 450.0F);
    EXPECT_EQ(graph->left(), 30);
    EXPECT_EQ(graph->height(), 450);
    EXPECT_EQ(text("WIDTH"), u"600");
    wrapper->setToolTipText(QStringLiteral("tip"));
    EXPECT_EQ(graph->toolTipText(), u"tip");
    wrapper->setVisible(false);
    EXPECT_FALSE(graph->visible());
}

// The road of the records --------------------------------------------------------------------------------------

TEST_F(GraphControl, NewRecordsGiveTheGraphItsHeadingLimitsAndDataSource)
{
    control().setUpperLimitLine(12);
    control().setLowerLimitLine(-3);
    control().setUpperLimitLabel(QStringLiteral("High"));
    control().setLowerLimitLabel(QStringLiteral("Low"));
    setRecords(three());
    Q_EMIT logger->NewENTData();
    EXPECT_EQ(graph->Heading(), u"Last 1 records");
    EXPECT_EQ(graph->UpperLimitLine(), 12);
    EXPECT_EQ(graph->LowerLimitLine(), -3);
    EXPECT_EQ(graph->UpperLimitLabel(), u"High");
    EXPECT_EQ(graph->LowerLimitLabel(), u"Low");
    EXPECT_EQ(graph->DataSource().get(), logger->live->buffers->buffers.front()->records.get());
    EXPECT_EQ(graph->trend().channels().size(), 3u);
}

TEST_F(GraphControl, GraphIsEmptyBeforeTheFirstRecordsAndNewDataAloneDoesNotFillIt)
{
    setRecords(three());
    EXPECT_TRUE(graph->trend().channels().empty());
    Q_EMIT logger->NewBenchData();
    EXPECT_TRUE(graph->trend().channels().empty());
    EXPECT_EQ(graph->Heading(), QString());
}

TEST_F(GraphControl, ReadingTheLimitsForTheGraphIsNobodysEdit)
{
    panel->LoadWindow(QStringLiteral("A"));
    graph = addGraph();
    const Node root = logger->scheme->window(QStringLiteral("A"))->XML();
    document::XMLOps::UnmarkChanged(root);
    Q_EMIT logger->NewENTData();
    EXPECT_EQ(text("UPPERLIMIT"), u"0");
    EXPECT_FALSE(document::XMLOps::IsMarkedChanged(root));
}

TEST_F(GraphControl, StepThatFailsIsLeftOutAndTheNextOnesAreMade)
{
    control().setUpperLimitLine(12);
    logger->live->buffers->buffers.clear(); // the buffer used raises 9
    Q_EMIT logger->NewENTData();
    EXPECT_EQ(graph->Heading(), QString());
    EXPECT_EQ(graph->UpperLimitLine(), 12);

    logger->live->buffers->buffers.emplace_back(); // Nothing
    Q_EMIT logger->NewENTData();
    logger->live->buffers = nullptr;
    Q_EMIT logger->NewENTData();
    logger->onLive = [] { throw 7; };
    Q_EMIT logger->NewENTData();
    EXPECT_EQ(graph->UpperLimitLine(), 12);
    EXPECT_FALSE(graph->DataSource());
}

TEST_F(GraphControl, GraphAfterOneThatCannotBeFedIsFed)
{
    const Ref<ZanGraph> first = graph;
    graph = addGraph();
    panel->Controls()->Control(Variant(1))->setControl({});
    setRecords(three());
    Q_EMIT logger->NewENTData();
    EXPECT_FALSE(first->DataSource());
    EXPECT_TRUE(graph->DataSource());
}

TEST_F(GraphControl, HistoryOfTheLoggerComesWithTheRecords)
{
    const auto history = values::make<fake::FakeHistory>();
    history->list = {
        {7, QStringLiteral("W"), QStringLiteral("a"), QStringLiteral("B"), QStringLiteral("m"), {}, 1000}};
    for (int i = 0; i < 60; ++i)
        history->put(7, noon() - 60'000 + i * 1000, double(i));
    logger->live->history = history;
    setRecords(three());
    Q_EMIT logger->NewENTData();
    ASSERT_EQ(graph->trend().channels().size(), 3u);
    // The channel that the history knows is read there, the others in the buffer.
    EXPECT_EQ(graph->trend().channels()[1].store.get(), history.get());
    EXPECT_NE(graph->trend().channels()[0].store.get(), history.get());
}
