#include "window/HostForms.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPointer>

#include <array>
#include <utility>

namespace zan::window {

namespace {

constexpr std::array<std::pair<QMessageBox::StandardButton, HostForms::Answer>, 7> answers{{
    {QMessageBox::Ok, HostForms::Ok},
    {QMessageBox::Cancel, HostForms::Cancel},
    {QMessageBox::Abort, HostForms::Abort},
    {QMessageBox::Retry, HostForms::Retry},
    {QMessageBox::Ignore, HostForms::Ignore},
    {QMessageBox::Yes, HostForms::Yes},
    {QMessageBox::No, HostForms::No},
}};

QMessageBox::StandardButtons buttonsOf(int style)
{
    switch (style & 7) {
    case HostForms::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case HostForms::AbortRetryIgnore:
        return QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore;
    case HostForms::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case HostForms::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case HostForms::RetryCancel:
        return QMessageBox::Retry | QMessageBox::Cancel;
    default:
        return QMessageBox::Ok;
    }
}

QMessageBox::Icon iconOf(int style)
{
    switch (style & 0x70) {
    case HostForms::Critical:
        return QMessageBox::Critical;
    case HostForms::Question:
        return QMessageBox::Question;
    case HostForms::Exclamation:
        return QMessageBox::Warning;
    case HostForms::Information:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

} // namespace

int DesktopForms::messageBox(QWidget* owner, const QString& text, int style, const QString& title)
{
    // The owner may be deleted while the box is open, and would take a box on the stack with it.
    const QPointer<QMessageBox> box = new QMessageBox(owner);
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    box->setWindowTitle(title.isEmpty() ? QCoreApplication::applicationName() : title);
    box->setIcon(iconOf(style));
    box->setStandardButtons(buttonsOf(style));
    const int pressed = box->exec();
    delete box.data();
    for (const auto& [button, answer] : answers) {
        if (button == pressed)
            return answer;
    }
    return Cancel;
}

} // namespace zan::window
