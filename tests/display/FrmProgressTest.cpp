#include "display/frmProgress.h"
#include "display/ProgressPicture.h"

#include "support/FakeSite.h"
#include "surface/forms/RecordingForms.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

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

TEST_F(ProgressWindow, CloseBoxUnloadsItSoThatItFollowsTheLoggerNoMore)
{
    form->show();
    EXPECT_TRUE(form->isLoaded());
    form->close();
    ASSERT_TRUE(form);
    EXPECT_FALSE(form->isLoaded());
    EXPECT_FALSE(form->findChild<QTimer*>()->isActive());
    Q_EMIT logger->ConnectionProgress(QStringLiteral("late"));
    Q_EMIT logger->ConnectionError(QStringLiteral("late"));
    EXPECT_EQ(form->siteText(), u"");
    EXPECT_TRUE(forms.boxes().empty());
    EXPECT_FALSE(isOpen());
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
    const auto drawn = [](double fraction) {
        ProgressPicture picture(nullptr);
        picture.resize(200, 20);
        picture.grab();
        picture.draw(fraction, QStringLiteral("50%"));
        return picture.image();
    };
    const QImage plain = drawn(0);
    const QImage half = drawn(0.5);
    constexpr QRgb bar = 0x000080;
    int textPixels = 0;
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 200; ++x) {
            const QRgb before = plain.pixel(x, y) & 0xffffff;
            const QRgb expected = x < 100 ? ~(bar ^ before) & 0xffffff : before;
            ASSERT_EQ(half.pixel(x, y) & 0xffffff, expected) << x << ' ' << y;
            textPixels += before != 0xffffff;
        }
    }
    EXPECT_GT(textPixels, 20) << "there is a text to be inverted";
    EXPECT_EQ(half.pixelColor(2, 2), QColor(0, 0, 0x80));
}

TEST(ProgressBarPicture, AfterAnyRunOfPercentagesTheBarStandsExactlyAtTheLast)
{
    const auto drawn = [](std::initializer_list<double> fractions) {
        ProgressPicture picture(nullptr);
        picture.resize(200, 20);
        picture.grab();
        for (const double fraction : fractions)
            picture.draw(fraction);
        return picture.image();
    };
    EXPECT_EQ(drawn({0, 0.25, 0.5}), drawn({0.5}));
    EXPECT_EQ(drawn({1, 0.25}), drawn({0.25}));
    EXPECT_EQ(drawn({0.3, 0.3}), drawn({0.3}));
    EXPECT_EQ(drawn({0.5, 1}).pixelColor(198, 2), QColor(0, 0, 0x80));
}

TEST(ProgressBarPicture, PercentageAboveAHundredFillsThePicture)
{
    ProgressPicture picture(nullptr);
    picture.resize(200, 20);
    picture.grab();
    picture.draw(1.5);
    EXPECT_EQ(picture.image().pixelColor(198, 2), QColor(0, 0, 0x80));
}
