#pragma once

#include <QString>

class QWidget;

namespace zan::window {

/// Everything modal that a panel shows goes through here, so that a test or a headless run can answer it and see
/// what was asked. Styles and answers are the classic numbers of message boxes.
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
    /// Shows a plain message box and returns the Answer; the style is a sum of one button set and one icon. The
    /// panel may be gone when it returns.
    virtual int messageBox(QWidget* owner, const QString& text, int style, const QString& title) = 0;
};

/// Real windows on the desktop.
class DesktopForms : public HostForms
{
public:
    int messageBox(QWidget* owner, const QString& text, int style, const QString& title) override;
};

} // namespace zan::window
