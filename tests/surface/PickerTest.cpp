#include "surface/forms/RecordingForms.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFontDialog>
#include <QTimer>

namespace zan::surface::tests {
namespace {

/// Ends the picker that opens next as its user would.
template <class Dialog>
class Answering
{
public:
    explicit Answering(std::function<void(Dialog&)> answer)
    {
        QObject::connect(&m_watch, &QTimer::timeout, [answer = std::move(answer)] {
            for (QWidget* window : QApplication::topLevelWidgets()) {
                auto* dialog = qobject_cast<Dialog*>(window);
                if (dialog && dialog->isVisible())
                    answer(*dialog);
            }
        });
        m_watch.start(0);
    }

private:
    QTimer m_watch;
};

TEST(FontPickerTest, AFontThatIsNotInstalledSurvivesThePickerUntouched)
{
    DesktopForms forms;
    const FontChoice font{QStringLiteral("Nowhere Sans"), 8.25, true, false, true};
    QString title;
    const Answering<QFontDialog> user([&](QFontDialog& dialog) {
        title = dialog.windowTitle();
        dialog.accept();
    });
    const std::optional<FontChoice> picked = forms.pickFont(nullptr, QStringLiteral("Select font"), font);
    ASSERT_TRUE(picked);
    EXPECT_EQ(*picked, font);
    EXPECT_EQ(title, QStringLiteral("Select font"));
}

TEST(FontPickerTest, ACancelledPickerGivesNothing)
{
    DesktopForms forms;
    const Answering<QFontDialog> user([](QFontDialog& dialog) { dialog.reject(); });
    EXPECT_FALSE(forms.pickFont(nullptr, QStringLiteral("Select font"), {}));
}

TEST(RecordedPickerTest, PickersStandAmongTheBoxesAndTakeTheirAnswers)
{
    RecordingForms forms;
    forms.answer(QStringLiteral("font:DejaVu Sans, 12.5, bold, underline"));
    forms.answer(QStringLiteral("colour:255"));
    forms.answer(QStringLiteral("file:weir.gif"));
    const FontChoice expected{QStringLiteral("DejaVu Sans"), 12.5, true, false, true};
    EXPECT_EQ(forms.pickFont(nullptr, QStringLiteral("Select font"), {}), expected);
    EXPECT_EQ(forms.pickColour(nullptr, QStringLiteral("Select text colour"), {}), values::Colour{255});
    FileRequest request;
    request.title = QStringLiteral("Select picture file");
    EXPECT_EQ(forms.pickFile(nullptr, request), QStringLiteral("weir.gif"));
    ASSERT_EQ(forms.boxes().size(), 3u);
    EXPECT_EQ(forms.boxes()[1].title, QStringLiteral("Select text colour"));
}

TEST(RecordedPickerTest, WithoutAnAnswerOrWithOneForAnotherKindAPickerIsCancelled)
{
    RecordingForms forms;
    EXPECT_FALSE(forms.pickColour(nullptr, {}, {}));
    forms.answer(QStringLiteral("Cancel"));
    EXPECT_FALSE(forms.pickFile(nullptr, {}));
    forms.answer(QStringLiteral("colour:255"));
    EXPECT_FALSE(forms.pickFont(nullptr, {}, {}));
}

} // namespace
} // namespace zan::surface::tests
