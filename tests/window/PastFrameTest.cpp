// What tells a panel of the past from a live one.

#include "TimeTravelFixture.h"

#include "surface/host/Surface.h"

#include <QAccessible>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace zan;
using namespace zan::window;

// Frame and stamp ----------------------------------------------------------------------------------------------

TEST_F(TimeTravel, AFrameAndAStampTellThePastApartInPicturesToo)
{
    loadLabel();
    panel->show();
    panel->showMoment(Moment);
    const QImage picture = panel->grab().toImage();
    for (const QPoint place : {QPoint(2, 150), QPoint(397, 150), QPoint(200, 2), QPoint(200, 297)})
        EXPECT_EQ(picture.pixelColor(place), PastFrame::Colour) << place.x() << ' ' << place.y();
    EXPECT_EQ(frame()->stamp(), QStringLiteral("Past: ") + momentText(Moment));
    EXPECT_TRUE(QRect(0, 0, 400, 300).contains(frame()->stampRectangle()));
    panel->resize(500, 350);
    EXPECT_EQ(frame()->size(), QSize(500, 350));
    panel->ShowLive();
    EXPECT_FALSE(frame());
    EXPECT_NE(panel->grab().toImage().pixelColor(2, 150), PastFrame::Colour);
}

TEST_F(TimeTravel, TheStampIsSeenOfAScrolledPanelWhateverComesBesideIt)
{
    loadLabel();
    panel->resize(900, 700);
    QWidget window;
    QVBoxLayout rows(&window);
    QScrollArea area;
    area.setFrameShape(QFrame::NoFrame);
    QWidget bar;
    bar.setFixedHeight(120);
    rows.addWidget(&area);
    rows.addWidget(&bar);
    area.setWidget(panel.get());
    bar.hide();
    window.resize(400, 400);
    window.show();
    panel->showMoment(Moment);
    const auto isStampSeen = [&] {
        QCoreApplication::processEvents();
        const QRect seen(panel->mapFrom(area.viewport(), QPoint()), area.viewport()->size());
        return seen.contains(frame()->stampRectangle());
    };
    EXPECT_TRUE(isStampSeen());
    bar.show(); // what it takes is the area's, and not the panel's
    EXPECT_TRUE(isStampSeen());
    area.horizontalScrollBar()->setValue(200);
    area.verticalScrollBar()->setValue(150);
    EXPECT_TRUE(isStampSeen());
    bar.hide();
    window.resize(300, 250);
    EXPECT_TRUE(isStampSeen());
    area.takeWidget();
    panel->setParent(nullptr);
}

TEST_F(TimeTravel, TheStampLiesWhereItHidesLeast)
{
    load("<CONTROL><TYPE>VB.Label</TYPE><LEFT>3000</LEFT><TOP>0</TOP><WIDTH>3000</WIDTH><HEIGHT>600</HEIGHT>"
         "</CONTROL>");
    panel->showMoment(Moment);
    for (const QRect& control : {live(1)->bounds()})
        EXPECT_FALSE(frame()->stampRectangle().intersects(control));
}

TEST_F(TimeTravel, TheMouseGoesThroughTheFrameAndAReaderHearsTheMoment)
{
    level = channel("LEVEL", 1);
    load(bound("VB.CheckBox"));
    panel->show();
    panel->showMoment(Moment);
    EXPECT_TRUE(frame()->testAttribute(Qt::WA_TransparentForMouseEvents));
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(frame());
    ASSERT_TRUE(face);
    EXPECT_EQ(face->text(QAccessible::Name), frame()->stamp());
    EXPECT_EQ(face->text(QAccessible::Description), u"1 controls without a record");
}

TEST_F(TimeTravel, TheHostHearsOfEachMomentAndOfThePresent)
{
    loadLabel();
    std::vector<bool> heard;
    QObject::connect(panel.get(), &BenchWindow::MomentShown, panel.get(),
                     [&] { heard.push_back(panel->IsLive()); });
    panel->showMoment(Moment);
    panel->showMoment(Moment + Second);
    panel->ShowLive();
    panel->ShowLive();
    EXPECT_EQ(heard, (std::vector<bool>{false, false, true}));
}
