#pragma once

#include "surface/forms/ModalForm.h"
#include "surface/forms/Pickers.h"
#include "surface/forms/PopupMenu.h"
#include "values/Colour.h"

#include <QPoint>
#include <QPointer>
#include <QProgressDialog>
#include <QString>

#include <chrono>
#include <optional>

class QDialog;
class QMessageBox;
class QWidget;

namespace zan::surface {

/// Everything modal that a panel shows goes through here, so that a test or a headless run can answer it and see
/// what was asked. Styles and answers are the classic numbers of message boxes. The owner, and the panel with it,
/// may be gone when a call returns.
class HostForms
{
public:
    enum Style : int {
        OkOnly = 0,
        OkCancel = 1,
        AbortRetryIgnore = 2,
        YesNoCancel = 3,
        YesNo = 4,
        RetryCancel = 5,
        Critical = 16,
        Question = 32,
        Exclamation = 48,
        Information = 64,
    };
    enum Answer : int { Ok = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };

    virtual ~HostForms() = default;
    /// Shows a plain message box and returns the Answer; the style is a sum of one button set, one icon and the
    /// number of the default button (0, 256 or 512).
    virtual int messageBox(QWidget* owner, const QString& text, int style, const QString& title) = 0;
    /// Asks for a line of text; nothing when it was cancelled.
    virtual std::optional<QString> inputBox(QWidget* owner, const QString& prompt, const QString& title,
                                            const QString& text) = 0;
    /// Called now and then while a script has been running for long: shows that the program is busy, lets the user
    /// interface breathe, and returns false when the user wants the script stopped. busyEnded() follows once.
    virtual bool busy(QWidget* owner, std::chrono::milliseconds elapsed);
    virtual void busyEnded() {}
    /// Called now and then while something is under way that the user has asked for: shows how far it is (0 to 1), lets
    /// the user interface breathe, and returns false when the user wants it stopped. progressEnded() follows once.
    virtual bool progress(QWidget* owner, const QString& text, double share);
    virtual void progressEnded() {}
    /// Opens a menu at a place of the screen, in global pixels. What is chosen from it is done here, or later through
    /// the entry's own function, or never.
    virtual void popupMenu(QWidget* owner, const std::shared_ptr<PopupMenu>& menu, QPoint place) = 0;
    /// Shows a form modally and returns when it is hidden. The form's own fields say what came of it.
    virtual void showModal(QDialog& form) = 0;
    /// Shows a form modally and returns when it is closed.
    virtual void showForm(QWidget* owner, ModalForm& form) = 0;
    /// The pickers begin with what they are given; nothing when the user cancels.
    virtual std::optional<FontChoice> pickFont(QWidget* owner, const QString& title, const FontChoice& font) = 0;
    virtual std::optional<values::Colour> pickColour(QWidget* owner, const QString& title,
                                                     values::Colour colour) = 0;
    virtual std::optional<QString> pickFile(QWidget* owner, const FileRequest& request) = 0;
};

/// Real windows on the desktop.
class DesktopForms : public HostForms
{
public:
    int messageBox(QWidget* owner, const QString& text, int style, const QString& title) override;
    std::optional<QString> inputBox(QWidget* owner, const QString& prompt, const QString& title,
                                    const QString& text) override;
    bool busy(QWidget* owner, std::chrono::milliseconds elapsed) override;
    void busyEnded() override;
    bool progress(QWidget* owner, const QString& text, double share) override;
    void progressEnded() override;
    void popupMenu(QWidget* owner, const std::shared_ptr<PopupMenu>& menu, QPoint place) override;
    void showModal(QDialog& form) override;
    void showForm(QWidget* owner, ModalForm& form) override;
    /// A font that is not installed keeps its name unless another one is picked.
    std::optional<FontChoice> pickFont(QWidget* owner, const QString& title, const FontChoice& font) override;
    std::optional<values::Colour> pickColour(QWidget* owner, const QString& title, values::Colour colour) override;
    std::optional<QString> pickFile(QWidget* owner, const FileRequest& request) override;

protected:
    /// A message box that is not shown yet, with the text as plain text. It belongs to its owner, whose end is its
    /// own; without one, to the caller.
    static QMessageBox* makeBox(QWidget* owner, const QString& text, int style, const QString& title);

private:
    QPointer<QProgressDialog> m_busyBox;
    QPointer<QProgressDialog> m_progressBox;
};

} // namespace zan::surface
