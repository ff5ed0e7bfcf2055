// The questions of the program as a user at the keyboard meets them.
#include "zanbench/MessageDialogs.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeySequence>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <set>

using zan::host::HostDialogs;
using zan::host::MessageDialogs;

namespace {

/// Answers the next box that comes up.
void whenAsked(const std::function<void(QMessageBox&)>& answer)
{
    QTimer::singleShot(0, qApp, [answer] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_TRUE(box);
        answer(*box);
    });
}

/// Every button can be reached by a letter of its own.
void expectMnemonics(const QMessageBox& box)
{
    std::set<QString> letters;
    for (const QAbstractButton* button : box.buttons()) {
        const QString letter = QKeySequence::mnemonic(button->text()).toString();
        EXPECT_FALSE(letter.isEmpty()) << qPrintable(button->text());
        EXPECT_TRUE(letters.insert(letter).second) << qPrintable(button->text());
    }
}

void click(const QMessageBox& box, const QString& caption)
{
    for (QAbstractButton* button : box.buttons()) {
        if (button->text() == caption)
            return button->click();
    }
    FAIL() << "no button " << qPrintable(caption);
}

} // namespace

TEST(MessageDialogsTest, EveryButtonOfTheSaveQuestionHasALetterAndSaysWhatItIs)
{
    const std::pair<QString, HostDialogs::Unsaved> rows[] = {
        {QStringLiteral("&Save"), HostDialogs::Unsaved::Save},
        {QStringLiteral("&Discard"), HostDialogs::Unsaved::Discard},
        {QStringLiteral("&Cancel"), HostDialogs::Unsaved::Cancel}};
    for (const auto& row : rows) {
        whenAsked([&](QMessageBox& box) {
            expectMnemonics(box);
            click(box, row.first);
        });
        EXPECT_EQ(MessageDialogs().askUnsaved(QStringLiteral("Weir")), row.second) << qPrintable(row.first);
    }
}

TEST(MessageDialogsTest, ClosingAQuestionLosesNothing)
{
    whenAsked([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(MessageDialogs().askUnsaved(QStringLiteral("Weir")), HostDialogs::Unsaved::Cancel);
    whenAsked([](QMessageBox& box) { box.close(); });
    EXPECT_EQ(MessageDialogs().askConflict(QStringLiteral("Changed meanwhile.")), HostDialogs::Conflict::Cancel);
}

TEST(MessageDialogsTest, TheOtherQuestionsHaveLettersToo)
{
    whenAsked([](QMessageBox& box) {
        expectMnemonics(box);
        click(box, QStringLiteral("&Overwrite"));
    });
    EXPECT_EQ(MessageDialogs().askConflict(QStringLiteral("Changed meanwhile.")), HostDialogs::Conflict::Overwrite);
    whenAsked([](QMessageBox& box) {
        expectMnemonics(box);
        click(box, QStringLiteral("&Restore"));
    });
    EXPECT_EQ(MessageDialogs().askEdits(QStringLiteral("Edits."), QString()), HostDialogs::Edits::Restore);
}
