#include "DataFixture.h"

#include "document/XMLOps.h"

#include "values/Convert.h"
#include "zandata/data/GraphFilter.h"
#include "zandata/data/Trend.h"
#include "zandata/plot/GraphColours.h"
#include "zandata/plot/GraphView.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

#include <cmath>
#include <limits>

using namespace zan;
using namespace zan::zandata;
using values::Name;
using values::Ref;

namespace {

class Plot : public DataTest
{
protected:
    Plot()
    {
        graph = addGraph();
        wrapper->Move(0, 0.0F, 9000.0F, 4500.0F);
    }
    /// A minute of a channel "Level" (10, 11, ...) and one "Flow" (constant), a record a second, without some seconds.
    void feed(int skippedFrom = 1000, int skippedTo = 0)
    {
        const auto list = records({"Level|m", "Flow|l/s"}, {});
        for (int second = 0; second < 60; ++second) {
            if (second < skippedFrom || second >= skippedTo)
                list->rows.push_back({Variant(dateOf(noon() + second * 1000)), 10.0 + second, 5.0});
        }
        setRecords(list);
        Q_EMIT logger->NewENTData();
        complete();
    }
    void complete()
    {
        panel->flush();
        graph->complete();
    }
    GraphView& view() { return *graphViewOf(graph->widget()); }
    QWidget& widget() { return *graph->widget(); }
    const TimeView& time() { return graph->trend().view(); }
    QImage picture() { return view().picture(1); }
    QPoint middle() { return widget().rect().center(); }
    void key(Qt::Key code, Qt::KeyboardModifiers held = Qt::NoModifier)
    {
        QTest::keyClick(&widget(), code, held);
        complete();
    }
    void wheel(int clicks)
    {
        QWheelEvent event(middle(), widget().mapToGlobal(middle()), {}, QPoint(0, clicks * 120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&widget(), &event);
        complete();
    }
    /// Pixels of about this colour.
    static int count(const QImage& image, const QColor& colour, const QRect& part)
    {
        int found = 0;
        for (int y = part.top(); y <= part.bottom(); ++y) {
            for (int x = part.left(); x <= part.right(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                if (std::abs(pixel.red() - colour.red()) + std::abs(pixel.green() - colour.green()) +
                        std::abs(pixel.blue() - colour.blue()) <
                    60)
                    ++found;
            }
        }
        return found;
    }
    Ref<ZanGraph> graph;
};

const QColor Level = channelColour(1, Qt::white);
const QColor Flow = channelColour(2, Qt::white);

} // namespace

// Looking around -----------------------------------------------------------------------------------------------

TEST_F(Plot, WheelZoomsAndADoubleClickGoesBackToLive)
{
    feed();
    const std::int64_t whole = time().span();
    wheel(2);
    EXPECT_LT(time().span(), whole * 7 / 10);
    EXPECT_FALSE(time().isLive());
    wheel(-1);
    EXPECT_GT(time().span(), whole * 7 / 10);
    QTest::mouseDClick(&widget(), Qt::LeftButton, {}, middle());
    complete();
    EXPECT_TRUE(time().isLive());
    EXPECT_EQ(time().span(), whole);
}

TEST_F(Plot, DraggingMovesThePictureWithThePointer)
{
    feed();
    wheel(4);
    const HistoryTime from = time().from();
    const std::int64_t span = time().span();
    QTest::mousePress(&widget(), Qt::LeftButton, {}, middle());
    QMouseEvent move(QEvent::MouseMove, QPointF(middle() + QPoint(50, 0)), widget().mapToGlobal(QPointF(middle())),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget(), &move);
    QTest::mouseRelease(&widget(), Qt::LeftButton, {}, middle() + QPoint(50, 0));
    EXPECT_LT(time().from(), from);
    EXPECT_EQ(time().span(), span);
}

TEST_F(Plot, HeldPictureStaysWhenRecordsComeAndSaysThatItIsHeld)
{
    feed();
    key(Qt::Key_Space);
    const HistoryTime until = time().until();
    const auto list = logger->live->buffers->buffers.front()->records;
    list->rows.push_back({Variant(dateOf(noon() + 60'000)), 70.0, 5.0});
    Q_EMIT logger->NewENTData();
    complete();
    EXPECT_EQ(time().until(), until);
    EXPECT_TRUE(view().summary().startsWith(QLatin1String("Held: Mon 2 Mar 2026, 14:00 to 14:00:59")))
        << view().summary().toStdString();
    key(Qt::Key_Space);
    EXPECT_GT(time().until(), until);
    EXPECT_TRUE(view().summary().startsWith(QLatin1String("Last 61 records")));
}

TEST_F(Plot, KeysShowTheLastHourDayAndWeekAndEverything)
{
    feed();
    constexpr std::int64_t Hour = 3'600'000;
    for (const auto& [code, span] : {std::pair(Qt::Key_H, Hour), {Qt::Key_D, 24 * Hour}, {Qt::Key_W, 168 * Hour}}) {
        key(code);
        EXPECT_EQ(time().span(), span);
        EXPECT_TRUE(time().isLive());
        EXPECT_TRUE(view().summary().startsWith(QLatin1String("Last ")))
            << "the heading is not that of the records";
        EXPECT_FALSE(view().summary().contains(QLatin1String("records")));
    }
    key(Qt::Key_L);
    EXPECT_EQ(time().span(), 59'001);
    key(Qt::Key_Plus);
    EXPECT_LT(time().span(), 59'001);
    key(Qt::Key_Left);
    EXPECT_LT(time().from(), noon() + 6000);
    key(Qt::Key_Home);
    EXPECT_EQ(time().from(), noon());
    key(Qt::Key_End);
    EXPECT_TRUE(time().isLive());
}

TEST_F(Plot, DigitKeySwitchesAChannelOffAndOnAndTheFilterKnows)
{
    feed();
    key(Qt::Key_1);
    EXPECT_FALSE(graph->trend().filter().isShown(1));
    EXPECT_EQ(count(picture(), Level, widget().rect()), 0);
    EXPECT_GT(count(picture(), Flow, widget().rect()), 10);
    key(Qt::Key_1);
    EXPECT_GT(count(picture(), Level, widget().rect()), 50);
}

TEST_F(Plot, EveryButtonHasANameAndDoesWhatItSays)
{
    feed();
    QStringList names;
    for (const QToolButton* button : widget().findChildren<QToolButton*>())
        names << button->accessibleName();
    EXPECT_EQ(names.join(u'|'), u"Hold what is seen|Last hour|Last day|Last week|Save what is seen as a table|"
                                u"Save what is seen as a picture|Print what is seen");
    widget().findChildren<QToolButton*>()[1]->click();
    EXPECT_EQ(time().span(), 3'600'000);
}

// What is drawn ------------------------------------------------------------------------------------------------

TEST_F(Plot, GapIsHatchedAndNoLineCrossesIt)
{
    feed(20, 40);
    const QImage image = picture();
    // The middle third of the picture is the gap: hatched, and without the colours of the lines.
    const QRect gap(widget().width() * 45 / 100, 40, widget().width() / 10, widget().height() - 120);
    EXPECT_EQ(count(image, Level, gap), 0);
    EXPECT_EQ(count(image, Flow, gap), 0);
    EXPECT_LT(count(image, Qt::white, gap), gap.width() * gap.height() * 95 / 100) << "a gap is hatched";
    feed();
    const QImage whole = picture();
    EXPECT_GT(count(whole, Level, gap) + count(whole, Flow, gap), 20);
}

TEST_F(Plot, ReadsValuesOutAtThePointerAndNothingOutOfAGap)
{
    feed(20, 40);
    QString inside, record;
    for (int x = 0; x < widget().width(); ++x) {
        const QString text = view().readoutAt(QPointF(x, middle().y()));
        if (text.startsWith(QLatin1String("2026-03-02 14:00:30")))
            inside = text;
        if (text.startsWith(QLatin1String("2026-03-02 14:00:10")))
            record = text;
    }
    EXPECT_EQ(inside, u"2026-03-02 14:00:30\nLevel: no record\nFlow: no record");
    EXPECT_EQ(record, u"2026-03-02 14:00:10\nLevel: 20 m\nFlow: 5 l/s");
    EXPECT_EQ(view().readoutAt(QPointF(-5, -5)), QString());
}

TEST_F(Plot, LegendTellsTheLastValuesAndSoDoesTheSummary)
{
    feed();
    EXPECT_EQ(view().summary(), u"Last 60 records; Level  69 m; Flow  5 l/s");
    EXPECT_EQ(widget().accessibleDescription(), view().summary());
    EXPECT_EQ(widget().accessibleName(), u"Last 60 records");
    EXPECT_EQ(graph->accessibleText(), view().summary());
}

TEST_F(Plot, LegendHasTheFormatsOfRecordsWithoutAHistory)
{
    const auto list = records({"Level|m", "Flow|l/s"}, {{1.5, 2.0}, {2.5, 3.0}});
    const std::vector<QString> formats{{}, QStringLiteral("0.00"), QStringLiteral("000")};
    graph->setDataSource(values::make<FormattedFake>(list, formats));
    complete();
    EXPECT_TRUE(view().summary().endsWith(QLatin1String("; Level  2.50 m; Flow  003 l/s")))
        << view().summary().toStdString();
}

TEST_F(Plot, DashesAndGapsOfALineFollowEachOtherFromItsBeginning)
{
    const QList<qreal> lengths{6, 3, 2, 3};
    for (const auto& [place, isDash] : {std::pair(0.0, true),
                                        {5.9, true},
                                        {6.0, false},
                                        {8.9, false},
                                        {9.0, true},
                                        {11.0, false},
                                        {14.0, true},
                                        {14.0 * 1e8 + 7, false},
                                        {-0.5, false},
                                        {-14.0, true}})
        EXPECT_EQ(isInDash(place, lengths), isDash) << place;
    EXPECT_TRUE(isInDash(5, {})) << "a line without dashes is whole";
}

TEST_F(Plot, LineManyPicturesLongIsDashedByColumnsAndHidesNothingInItsGaps)
{
    const auto list = records({"Level|m", "Flow|l/s"}, {});
    for (int second = 0; second < 500; ++second)
        list->rows.push_back({Variant(dateOf(noon() + second * 1000)), 5.0, second % 2 == 0 ? 0.0 : 100.0});
    setRecords(list);
    Q_EMIT logger->NewENTData();
    complete();
    const QImage image = picture();
    const QRect area(widget().width() / 5, 60, widget().width() * 3 / 5, widget().height() - 140);
    int dashed = 0;
    int empty = 0;
    for (int x = area.left(); x <= area.right(); ++x) {
        const QRect column(x, area.top(), 1, area.height());
        dashed += count(image, Flow, column) > area.height() / 2;
        empty += count(image, Qt::white, column) > area.height() / 2;
    }
    EXPECT_EQ(empty, 0) << "a high record in the gap of a dash is seen";
    EXPECT_GT(dashed, area.width() / 2);
    EXPECT_LT(dashed, area.width() * 9 / 10) << "who sees no colours knows the line by its dashes";
}

TEST_F(Plot, LineOfCloseRecordsWithoutSwingsIsAsThinAsItsPen)
{
    const auto list = records({"Level|m"}, {});
    for (int second = 0; second < 500; ++second)
        list->rows.push_back({Variant(dateOf(noon() + second * 1000)), 5.0});
    setRecords(list);
    Q_EMIT logger->NewENTData();
    complete();
    const QImage image = picture();
    for (const int x : {200, 300, 400}) {
        const int seen = count(image, Level, QRect(x, 60, 1, widget().height() - 140));
        EXPECT_GE(seen, 1) << x;
        EXPECT_LE(seen, 3) << x;
    }
}

TEST_F(Plot, LimitIsDrawnWhereItHasALabelOrIsNotZero)
{
    feed();
    const QColor red = readable(QColor(0xc0, 0x20, 0x20), Qt::white);
    const auto lineLength = [&] { return count(picture(), red, widget().rect()); };
    EXPECT_LT(lineLength(), 20);
    graph->setUpperLimitLine(30);
    EXPECT_GT(lineLength(), 300);
    graph->setUpperLimitLine(0);
    EXPECT_LT(lineLength(), 20);
    graph->setUpperLimitLabel(QStringLiteral("Zero"));
    EXPECT_GT(lineLength(), 300);
}

TEST_F(Plot, LinesStandOutFromEveryBackground)
{
    for (const QColor back : {QColor(Qt::white), QColor(Qt::black), QColor(0x20, 0x18, 0x10),
                              QColor(0xc0, 0xc0, 0xc0), QColor(0, 114, 178), QColor(0xff, 0xff, 0xe0)}) {
        for (std::int32_t number = 1; number <= 8; ++number)
            EXPECT_GE(contrast(channelColour(number, back), back), LeastContrast) << number;
    }
}

TEST_F(Plot, NoTwoOfSixteenLinesHaveTheSameColourAndDashes)
{
    for (std::int32_t a = 1; a <= 16; ++a) {
        for (std::int32_t b = 1; b < a; ++b)
            EXPECT_FALSE(channelPen(a, Qt::white) == channelPen(b, Qt::white)) << a << ' ' << b;
    }
}

TEST_F(Plot, DarkColoursMakeADarkGraph)
{
    feed();
    graph->put(Name("BackColor"), Variant(std::int32_t(0)));
    graph->put(Name("ForeColor"), Variant(std::int32_t(0xffffff)));
    complete();
    const QImage image = picture();
    EXPECT_GT(count(image, Qt::black, widget().rect()), image.width() * image.height() / 2);
    EXPECT_GT(count(image, channelColour(1, Qt::black), widget().rect()), 50);
}

// Out of the panel ---------------------------------------------------------------------------------------------

TEST_F(Plot, SavesWhatIsSeenAsATableAndAsAPicture)
{
    feed();
    QTemporaryDir folder;
    const QString csv = folder.filePath(QStringLiteral("a.csv"));
    const QString png = folder.filePath(QStringLiteral("a.png"));
    forms.answer(QStringLiteral("file:") + csv);
    graph->save(GraphCommand::SaveCsv);
    QFile file(csv);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().startsWith("Time,Level (m),Flow (l/s)\r\n2026-03-02 14:00:00,10,5\r\n"));
    forms.answer(QStringLiteral("file:") + png);
    graph->save(GraphCommand::SavePicture);
    EXPECT_EQ(QImage(png).size(), widget().size() * 2);
    graph->save(GraphCommand::SaveCsv); // cancelled
    forms.answer(QStringLiteral("file:/nowhere/a.csv"));
    graph->save(GraphCommand::SaveCsv);
    EXPECT_EQ(forms.boxes().back().text, u"\"/nowhere/a.csv\" cannot be written.");
}

TEST_F(Plot, PrintingWithoutAUserWaitsForNobody)
{
    feed();
    graph->save(GraphCommand::Print);
    ASSERT_FALSE(forms.boxes().empty());
    EXPECT_EQ(forms.boxes().back().title, u"Print what is seen");
}

// Hostile values -----------------------------------------------------------------------------------------------

TEST_F(Plot, HostileLimitsHeadingsAndValuesAreDrawnWithoutHarm)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    for (const double position : {nan, infinite, -infinite, 1e308, -1e308}) {
        graph->setUpperLimitLine(position);
        graph->setLowerLimitLine(-position);
        feed();
        EXPECT_FALSE(picture().isNull());
    }
    graph->setHeading(QString(1'000'000, u'x'));
    graph->setUpperLimitLabel(QString(1'000'000, u'\n'));
    setRecords(records({"A", "B"}, {{1e308, nan}, {-1e308, infinite}, {5e-324, -infinite}}));
    Q_EMIT logger->NewENTData();
    complete();
    EXPECT_FALSE(picture().isNull());
    wrapper->Move(0, 0.0F, 0.0F, 0.0F);
    complete();
    wrapper->Move(0, 0.0F, 15.0F, 15.0F);
    complete();
}

TEST_F(Plot, FeedWithoutAWidgetAndAWidgetWithoutRecordsAreInOrder)
{
    complete();
    EXPECT_FALSE(picture().isNull());
    graph->setVisible(false);
    panel->flush();
    Q_EMIT logger->NewENTData();
    feed();
    EXPECT_EQ(graph->trend().channels().size(), 2u);
}

TEST_F(Plot, PanelOfGraphAndTableIsSavedAsItWasLoaded)
{
    const document::Node root = logger->scheme->window(QStringLiteral("A"))->XML();
    panel->LoadWindow(QStringLiteral("A"));
    graph = addGraph();
    wrapper->Move(150, 150.0F, 6000.0F, 3000.0F);
    addTable();
    wrapper->Move(150, 3300.0F, 6000.0F, 3000.0F);
    setRecords(records({"A", "B", "C"}, {{1.0, 2.0, 3.0}}));
    Q_EMIT logger->NewENTData();
    graph->trend().filter().isShown(1);
    panel->UpdateDocument();
    const QString stored = root.xml();
    EXPECT_TRUE(stored.contains(QLatin1String("<FILTER><CHAN1>-1</CHAN1><CHAN2>-1</CHAN2></FILTER>")));
    panel->LoadWindow(QStringLiteral("B"));
    logger->scheme->window(QStringLiteral("C"));
    const document::Node copy = document::XMLOps::LoadDocument(stored);
    const document::Node target = logger->scheme->window(QStringLiteral("C"))->XML();
    document::Node from = copy;
    while (const document::Node child = from.firstChildElement())
        document::Node(target).appendChild(child);
    panel->LoadWindow(QStringLiteral("C"));
    Q_EMIT logger->NewENTData();
    panel->UpdateDocument();
    EXPECT_EQ(panel->Controls()->Count(), 2);
    EXPECT_TRUE(target.xml().contains(QLatin1String("<FILTER><CHAN1>-1</CHAN1><CHAN2>-1</CHAN2></FILTER>")));
}
