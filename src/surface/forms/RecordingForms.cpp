#include "surface/forms/RecordingForms.h"

#include "values/Convert.h"

#include <QDialog>
#include <QLineEdit>

#include <algorithm>
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

void RecordingForms::showForm(QWidget*, ModalForm& form)
{
    m_boxes.push_back({form.title(), 0, form.title()});
    if (const std::function<void(ModalForm&)> fill = onForm)
        fill(form);
    if (form.isOpen())
        form.close();
}

/// What stands behind the picker's kind in its answer; nothing when it is cancelled or answered with something else.
std::optional<QString> RecordingForms::takePick(const QString& title, QLatin1String kind)
{
    m_boxes.push_back({title, 0, title});
    const std::optional<QString> given = takeAnswer();
    if (!given || !given->startsWith(kind, Qt::CaseInsensitive))
        return std::nullopt;
    return given->mid(kind.size());
}

std::optional<FontChoice> RecordingForms::pickFont(QWidget*, const QString& title, const FontChoice& font)
{
    const std::optional<QString> given = takePick(title, QLatin1String("font:"));
    if (!given)
        return std::nullopt;
    const QStringList parts = given->split(QLatin1Char(','));
    const auto says = [&parts](QLatin1String word) {
        return std::any_of(parts.begin() + 1, parts.end(), [&](const QString& part) {
            return part.trimmed().compare(word, Qt::CaseInsensitive) == 0;
        });
    };
    FontChoice choice{.name = parts.front().trimmed(), .size = font.size};
    if (parts.size() > 1)
        choice.size = values::val(parts[1]);
    choice.bold = says(QLatin1String("bold"));
    choice.italic = says(QLatin1String("italic"));
    choice.underline = says(QLatin1String("underline"));
    return choice;
}

std::optional<values::Colour> RecordingForms::pickColour(QWidget*, const QString& title, values::Colour)
{
    const std::optional<QString> given = takePick(title, QLatin1String("colour:"));
    std::int32_t code = 0;
    if (!given || values::roundToLong(values::val(*given), code) != values::ErrorNumber::None)
        return std::nullopt;
    return values::Colour{code};
}

std::optional<QString> RecordingForms::pickFile(QWidget*, const FileRequest& request)
{
    return takePick(request.title, QLatin1String("file:"));
}

} // namespace zan::surface
