#include "display/frmProgress.h"
#include "display/ProgressPicture.h"

#include "support/FakeSite.h"
#include "surface/RecordingForms.h"

#include <QCoreApplication>
#include <QEvent>

#include <gtest/gtest.h>

using namespace zan;
using display::frmProgress;
using display::ProgressPicture;
using values::make;
using values::Ref;

namespace {

class ProgressWindow : public testing::Test
{
protected:
    ProgressWindow() { form->setLogger(logger); }
    ~ProgressWindow() override { delete form.data(); }
    static void settle() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
    bool isOpen()
    {
        settle();
        return !form.isNull();
    }

    surface::RecordingForms forms;
    Ref<fake::FakeLogger> logger = make<fake::FakeLogger>();
    QPointer<frmProgress> form = new frmProgress(nullptr, forms);
};

} // namespace

TEST_F(ProgressWindow, ConnectionTextsReplaceTheLineAndOkIsAppended)
{
    Q_EMIT logger->ConnectionProgress(QStringLiteral("\t Dialling \r\n"));
    EXPECT_EQ(form->siteText(), u"Dialling");
    Q_EMIT logger->ConnectionProgress(QStringLiteral("OK"));
    Q_EMIT logger->ConnectionProgress(QStringLiteral(" OK\r\n"));
    EXPECT_EQ(form->siteText(), u"Dialling...OK...OK");
    Q_EMIT logger->ConnectionProgress(QStringLiteral("a\r\n\r\nb"));
    EXPECT_EQ(form->siteText(), u"a\r\nb");
}

TEST_F(ProgressWindow, TextOfLineBreaksOnlyKeepsTheLine)
{
    form->setSiteText(QStringLiteral("as it was"));
    Q_EMIT logger->ConnectionProgress(QStringLiteral("\r\n\r\n"));
    Q_EMIT logger->ConnectionProgress(QString());
    EXPECT_EQ(form->siteText(), u"as it was");
}

TEST_F(ProgressWindow, PercentageShowsTheBarAndANegativeOneOnlyTheText)
{
    Q_EMIT logger->ProgramLoggerProgress(-1, QStringLiteral("Erasing"));
    EXPECT_EQ(form->siteText(), u"Erasing");
    EXPECT_FALSE(form->barVisible());
    Q_EMIT logger->UnloadLoggerProgress(0, QString());
    EXPECT_EQ(form->siteText(), u"Erasing");
    EXPECT_TRUE(form->barVisible());
    form->clear();
    EXPECT_FALSE(form->barVisible());
    EXPECT_EQ(form->siteText(), u"");
}

TEST_F(ProgressWindow, ClosesItselfWhenTheLoggerHasFinished)
{
    using Signal = void (site::Logger::*)();
    for (const Signal signal : {&site::Logger::Connected, &site::Logger::Disconnected,
                                &site::Logger::ProgramComplete, &site::Logger::UnloadComplete}) {
        if (!form) {
            form = new frmProgress(nullptr, forms);
            form->setLogger(logger);
        }
        EXPECT_TRUE(isOpen());
        Q_EMIT(logger.get()->*signal)();
        EXPECT_FALSE(isOpen());
    }
    EXPECT_TRUE(forms.boxes().empty());
}

TEST_F(ProgressWindow, ConnectionErrorIsShownAndClosesTheWindow)
{
    Q_EMIT logger->ConnectionError(QStringLiteral("no carrier"));
    ASSERT_EQ(forms.boxes().size(), 1u);
    EXPECT_EQ(forms.boxes()[0].text, u"no carrier");
    EXPECT_FALSE(isOpen());
}

TEST_F(ProgressWindow, BlocksTravelTwoHundredTwipsATickAndTurnAtEitherEnd)
{
    const int start = form->blockLeft(0);
    EXPECT_EQ(form->blockColour(0), values::rgb(0, 0, 200));
    form->tick();
    EXPECT_EQ(form->blockLeft(0), start + 200);
    int ticks = 0;
    while (!form->movesLeft(0) && ++ticks < 100)
        form->tick();
    ASSERT_TRUE(form->movesLeft(0));
    EXPECT_EQ(form->blockColour(0), values::rgb(200, 0, 0));
    const int far = form->blockLeft(0);
    form->tick();
    EXPECT_EQ(form->blockLeft(0), far - 200);
    while (form->movesLeft(0) && ++ticks < 200)
        form->tick();
    EXPECT_FALSE(form->movesLeft(0));
}

TEST_F(ProgressWindow, EachBlockStandsAQuarterNearerToTheBackground)
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(241, 242, 243));
    QPointer<frmProgress> other = new frmProgress(nullptr, forms);
    other->setPalette(palette);
    int ticks = 0;
    while (!other->movesLeft(0) && ++ticks < 100)
        other->tick(); // takes the colours anew: (200, 0, 0) on the palette's window
    // dr = (200 - 241) / 4 = -10.25, rounded to -10 first; dg = -60.5 and db = -60.75, rounded after multiplying.
    EXPECT_EQ(other->blockColour(0), values::rgb(200, 0, 0));
    EXPECT_EQ(other->blockColour(1), values::rgb(210, 60, 61));
    EXPECT_EQ(other->blockColour(2), values::rgb(220, 121, 122));
    EXPECT_EQ(other->blockColour(3), values::rgb(230, 182, 182));
    delete other.data();
}

TEST(ProgressBarPicture, SaysTheRoundedPercentageAndAtMostAHundred)
{
    EXPECT_EQ(ProgressPicture::percentText(0), u"0%");
    EXPECT_EQ(ProgressPicture::percentText(0.004), u"0%");
    EXPECT_EQ(ProgressPicture::percentText(0.005), u"1%");
    EXPECT_EQ(ProgressPicture::percentText(0.994), u"99%");
    EXPECT_EQ(ProgressPicture::percentText(1), u"100%");
    EXPECT_EQ(ProgressPicture::percentText(7), u"100%");
    EXPECT_EQ(ProgressPicture::percentText(-0.1), u"-10%");
}

TEST(ProgressBarPicture, BarTurnsPaperIntoItsColourAndTextIntoItsInverse)
{
    ProgressPicture picture(nullptr);
    picture.resize(200, 20);
    picture.grab();
    picture.draw(0.5);
    const QImage& image = picture.image();
    EXPECT_EQ(image.pixelColor(2, 2), QColor(0, 0, 0x80));
    EXPECT_EQ(image.pixelColor(197, 2), QColor(255, 255, 255));
    // The text stands in the middle: in the covered half it is paper on bar, in the other bar on paper.
    int inverted = 0;
    int plain = 0;
    for (int x = 0; x < 200; ++x) {
        for (int y = 0; y < 20; ++y) {
            const QColor pixel = image.pixelColor(x, y);
            inverted += x < 100 && pixel == QColor(255, 255, 255);
            plain += x >= 100 && pixel == QColor(0, 0, 0x80);
        }
    }
    EXPECT_GT(inverted, 0);
    EXPECT_GT(plain, 0);
}

TEST(ProgressBarPicture, SecondDrawingTakesTheFormerBarAwayAsItIsNotCleared)
{
    ProgressPicture picture(nullptr);
    picture.resize(200, 20);
    picture.grab();
    picture.draw(0.25);
    picture.draw(0.5);
    EXPECT_EQ(picture.image().pixelColor(2, 2), QColor(255, 255, 255));
    EXPECT_EQ(picture.image().pixelColor(60, 2), QColor(0, 0, 0x80));
}

TEST(ProgressBarPicture, PercentageAboveAHundredFillsThePicture)
{
    ProgressPicture picture(nullptr);
    picture.resize(200, 20);
    picture.grab();
    picture.draw(1.5);
    EXPECT_EQ(picture.image().pixelColor(198, 2), QColor(0, 0, 0x80));
}
