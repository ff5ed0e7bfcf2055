#include "zanbench/headless/HeadlessForms.h"

#include "zanbench/Commands.h"
#include "zanbench/headless/RunReport.h"

#include <QDialog>

namespace zan::host {

int HeadlessForms::messageBox(QWidget* owner, const QString& text, int style, const QString& title)
{
    m_report.note(QStringLiteral("box: %1").arg(oneLine(text)));
    return RecordingForms::messageBox(owner, text, style, title);
}

std::optional<QString> HeadlessForms::inputBox(QWidget* owner, const QString& prompt, const QString& title,
                                               const QString& text)
{
    m_report.note(QStringLiteral("input box: %1").arg(oneLine(prompt)));
    return RecordingForms::inputBox(owner, prompt, title, text);
}

void HeadlessForms::showModal(QDialog& form)
{
    m_report.note(QStringLiteral("form: %1").arg(oneLine(form.windowTitle())));
    RecordingForms::showModal(form);
}

void HeadlessForms::showForm(QWidget* owner, surface::ModalForm& form)
{
    m_report.note(QStringLiteral("form: %1").arg(oneLine(form.title())));
    RecordingForms::showForm(owner, form);
}

} // namespace zan::host
