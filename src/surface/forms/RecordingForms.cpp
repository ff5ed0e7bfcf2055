#include "surface/forms/RecordingForms.h"

#include <QDialog>
#include <QLineEdit>

#include <array>

namespace zan::surface {

namespace {

struct AnswerName
{
    QLatin1String name;
    HostForms::Answer answer;
};

constexpr std::array<AnswerName, 7> answerNames{{
    {QLatin1String("OK"), HostForms::Ok},
    {QLatin1String("Cancel"), HostForms::Cancel},
    {QLatin1String("Abort"), HostForms::Abort},
    {QLatin1String("Retry"), HostForms::Retry},
    {QLatin1String("Ignore"), HostForms::Ignore},
    {QLatin1String("Yes"), HostForms::Yes},
    {QLatin1String("No"), HostForms::No},
}};

HostForms::Answer firstButton(int style)
{
    switch (style & 15) {
    case HostForms::AbortRetryIgnore:
        return HostForms::Abort;
    case HostForms::YesNoCancel:
    case HostForms::YesNo:
        return HostForms::Yes;
    case HostForms::RetryCancel:
        return HostForms::Retry;
    default:
        return HostForms::Ok;
    }
}

bool isCancel(const QString& answer)
{
    return answer.compare(QLatin1String("Cancel"), Qt::CaseInsensitive) == 0;
}

} // namespace

std::optional<QString> RecordingForms::takeAnswer()
{
    if (m_answers.empty())
        return std::nullopt;
    QString answer = m_answers.front();
    m_answers.pop_front();
    return answer;
}

int RecordingForms::messageBox(QWidget*, const QString& text, int style, const QString& title)
{
    m_boxes.push_back({text, style, title});
    const std::optional<QString> given = takeAnswer();
    if (!given)
        return firstButton(style);
    for (const AnswerName& row : answerNames) {
        if (given->compare(row.name, Qt::CaseInsensitive) == 0)
            return row.answer;
    }
    bool isNumber = false;
    const int number = given->toInt(&isNumber);
    return isNumber && number >= Ok && number <= No ? number : firstButton(style);
}

std::optional<QString> RecordingForms::inputBox(QWidget*, const QString& prompt, const QString& title,
                                                const QString&)
{
    m_boxes.push_back({prompt, 0, title});
    const std::optional<QString> given = takeAnswer();
    return given && !isCancel(*given) ? given : std::nullopt;
}

void RecordingForms::showModal(QDialog& form)
{
    m_boxes.push_back({form.windowTitle(), 0, form.windowTitle()});
    const std::optional<QString> given = takeAnswer();
    if (!given || isCancel(*given)) {
        form.reject();
        return;
    }
    if (auto* field = form.findChild<QLineEdit*>(QStringLiteral("txtValue")))
        field->setText(*given);
    form.accept();
}

} // namespace zan::surface
