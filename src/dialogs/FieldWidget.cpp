#include "dialogs/FieldWidget.h"

#include "dialogs/ListWidgets.h"
#include "dialogs/SwatchButton.h"
#include "surface/text/DosCharset.h"
#include "surface/text/MnemonicText.h"
#include "surface/text/ToolTipText.h"
#include "values/Twips.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>

namespace zan::dialogs {

namespace {

constexpr int Padding = 10;

QString shownText(const Field& field)
{
    const bool isDos = field.font() && field.font()->isDosCharset();
    return isDos ? surface::DosCharset::shown(field.text()) : field.text();
}

/// Font and colours of an example.
void dress(QWidget& widget, const Field& field)
{
    if (field.font())
        widget.setFont(field.font()->qfont());
    QPalette palette = widget.palette();
    if (field.foreColour()) {
        palette.setColor(QPalette::WindowText, values::toQColor(*field.foreColour(), palette));
        palette.setColor(QPalette::Text, values::toQColor(*field.foreColour(), palette));
    }
    if (field.backColour()) {
        palette.setColor(QPalette::Window, values::toQColor(*field.backColour(), palette));
        palette.setColor(QPalette::Base, values::toQColor(*field.backColour(), palette));
    }
    widget.setPalette(palette);
    if (field.height() > 0)
        widget.setFixedHeight(values::twipsToPixels(field.height()));
}

bool isDressed(const Field& field)
{
    return field.font() || field.foreColour() || field.backColour();
}

class LabelWidget : public FieldWidget
{
public:
    LabelWidget(SetupForm& form, Field& field, QWidget* parent)
        : FieldWidget(form, field)
        , m_text(new QLabel(parent))
    {
        m_text->setTextFormat(Qt::PlainText);
        m_text->setAutoFillBackground(false);
        // A text of the site, an example in a large font: both are cut rather than the form made larger.
        if (field.kind() != FieldKind::Caption)
            m_text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        adopt(m_text, false, parent);
    }

private:
    void show() override
    {
        m_text->setText(shownText(m_field));
        m_text->setMinimumWidth(isDressed(m_field) ? 0 : m_text->sizeHint().width());
        if (!isDressed(m_field))
            return;
        m_text->setAutoFillBackground(m_field.backColour().has_value());
        dress(*m_text, m_field);
    }
    QLabel* m_text;
};

class LineWidget : public FieldWidget
{
public:
    LineWidget(SetupForm& form, Field& field, QWidget* parent)
        : FieldWidget(form, field)
        , m_line(new QLineEdit(parent))
    {
        if (field.row().maxLength > 0)
            m_line->setMaxLength(field.row().maxLength);
        if (field.row().digitsOnly)
            m_line->setValidator(
                new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), m_line));
        if (field.kind() == FieldKind::Filter) {
            m_line->setPlaceholderText(QObject::tr("Filter"));
            m_line->setAccessibleName(QObject::tr("Filter"));
            m_line->setClearButtonEnabled(true);
        }
        adopt(m_line, field.kind() != FieldKind::Filter, parent);
        QObject::connect(m_line, &QLineEdit::textChanged, m_line,
                         [this](const QString& text) { m_form.userText(m_field, text); });
    }

private:
    void show() override
    {
        const QSignalBlocker silent(m_line);
        if (m_line->text() != shownText(m_field)) {
            // The limit is the keyboard's: what the program shows is never cut.
            m_line->setMaxLength(32767);
            m_line->setText(shownText(m_field));
            m_line->setCursorPosition(0);
            if (m_field.row().maxLength > 0)
                m_line->setMaxLength(std::max<int>(m_field.row().maxLength, int(m_field.text().size())));
        }
        if (isDressed(m_field))
            dress(*m_line, m_field);
    }
    QLineEdit* m_line;
};

class PageWidget : public FieldWidget
{
public:
    PageWidget(SetupForm& form, Field& field, QWidget* parent)
        : FieldWidget(form, field)
        , m_page(new QPlainTextEdit(parent))
    {
        m_page->setLineWrapMode(QPlainTextEdit::NoWrap);
        m_page->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        m_page->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        m_page->setMinimumHeight(3 * m_page->fontMetrics().lineSpacing());
        adopt(m_page, true, parent);
        QObject::connect(m_page, &QPlainTextEdit::textChanged, m_page, [this] {
            m_form.userText(m_field, m_page->toPlainText().replace(QLatin1Char('\n'), QLatin1String("\r\n")));
        });
    }
    bool isTall() const override { return true; }

private:
    void show() override
    {
        const QSignalBlocker silent(m_page);
        QString text = shownText(m_field);
        text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
        if (m_page->toPlainText() != text)
            m_page->setPlainText(text);
        if (isDressed(m_field))
            dress(*m_page, m_field);
    }
    QPlainTextEdit* m_page;
};

class ButtonWidget : public FieldWidget
{
public:
    ButtonWidget(SetupForm& form, Field& field, QWidget* parent)
        : FieldWidget(form, field)
        , m_button(new QPushButton(parent))
    {
        m_button->setAutoDefault(false); // Enter presses nothing
        m_button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        adopt(m_button, false, parent);
        QObject::connect(m_button, &QPushButton::clicked, m_button, [this] { m_form.userClick(m_field); });
    }

private:
    void show() override
    {
        m_button->setText(shownText(m_field));
        // Where room is short a button is as wide as its words, whatever width the style likes best.
        m_button->setMinimumWidth(m_button->fontMetrics().horizontalAdvance(m_button->text()) + 2 * Padding);
        if (isDressed(m_field))
            dress(*m_button, m_field);
    }
    QPushButton* m_button;
};

class CheckWidget : public FieldWidget
{
public:
    CheckWidget(SetupForm& form, Field& field, QWidget* parent)
        : FieldWidget(form, field)
        , m_box(new QCheckBox(parent))
    {
        adopt(m_box, false, parent);
        QObject::connect(m_box, &QCheckBox::clicked, m_box, [this] {
            m_form.userClick(m_field);
            refresh(); // what it shows is what the field holds, whatever came of the click
        });
    }

private:
    void show() override
    {
        const QSignalBlocker silent(m_box);
        m_box->setText(shownText(m_field));
        constexpr Qt::CheckState states[] = {Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked};
        m_box->setTristate(m_field.value() == 2);
        m_box->setCheckState(states[m_field.value()]);
        if (isDressed(m_field))
            dress(*m_box, m_field);
    }
    QCheckBox* m_box;
};

class OptionWidget : public FieldWidget
{
public:
    OptionWidget(SetupForm& form, Field& field, QWidget* parent)
        : FieldWidget(form, field)
        , m_option(new QRadioButton(parent))
    {
        adopt(m_option, false, parent);
        QObject::connect(m_option, &QRadioButton::clicked, m_option, [this] {
            m_form.userClick(m_field);
            refresh();
        });
    }

private:
    void show() override
    {
        const QSignalBlocker silent(m_option);
        m_option->setText(m_field.caption());
        // Of a group none may be chosen, which the toolkit's own rule does not know.
        m_option->setAutoExclusive(false);
        m_option->setChecked(m_field.isChecked());
        m_option->setAutoExclusive(true);
    }
    QRadioButton* m_option;
};

class FrameWidget : public FieldWidget
{
public:
    FrameWidget(SetupForm& form, Field& field, QWidget* parent)
        : FieldWidget(form, field)
        , m_frame(new QGroupBox(parent))
    {
        adopt(m_frame, false, parent);
    }

private:
    void show() override { m_frame->setTitle(m_field.caption().trimmed()); }
    QGroupBox* m_frame;
};

class SwatchWidget : public FieldWidget
{
public:
    SwatchWidget(SetupForm& form, Field& field, QWidget* parent)
        : FieldWidget(form, field)
        , m_swatch(new SwatchButton(parent))
    {
        adopt(m_swatch, true, parent);
        QObject::connect(m_swatch, &SwatchButton::doubleClicked, m_swatch,
                         [this] { m_form.userDoubleClick(m_field); });
    }

private:
    void show() override
    {
        m_swatch->setColour(
            values::toQColor(m_field.backColour().value_or(values::WindowBackground), m_swatch->palette()));
    }
    SwatchButton* m_swatch;
};

class PictureWidget : public FieldWidget
{
public:
    PictureWidget(SetupForm& form, Field& field, QWidget* parent)
        : FieldWidget(form, field)
        , m_view(new PictureView(parent))
    {
        adopt(m_view, false, parent);
    }
    bool isTall() const override { return true; }

private:
    void show() override { m_view->setPixmap(m_field.picture() ? m_field.picture()->pixmap() : QPixmap()); }
    PictureView* m_view;
};

} // namespace

void FieldWidget::adopt(QWidget* widget, bool hasLabel, QWidget* parent)
{
    m_widget = widget;
    const QString caption = surface::withoutMnemonic(m_field.caption());
    widget->setObjectName(m_field.name());
    widget->setToolTip(surface::plainToolTip(m_field.toolTip()));
    const QStringView spoken = m_field.row().spoken;
    if (!spoken.isEmpty() || !caption.isEmpty())
        widget->setAccessibleName(spoken.isEmpty() ? caption : spoken.toString());
    if (!hasLabel || caption.isEmpty())
        return;
    m_label = new QLabel(m_field.caption(), parent);
    m_label->setTextFormat(Qt::PlainText);
    m_label->setBuddy(widget);
}

void FieldWidget::refresh()
{
    if (!m_widget)
        return;
    m_widget->setEnabled(m_field.isEnabled());
    if (m_label)
        m_label->setEnabled(m_field.isEnabled());
    if (!spot) // a frame on a spot is shown by the spot, which keeps the room of the largest
        m_widget->setVisible(m_field.isVisible());
    if (m_label)
        m_label->setVisible(m_field.isVisible());
    show();
}

std::unique_ptr<FieldWidget> makeFieldWidget(SetupForm& form, Field& field, QWidget* parent)
{
    switch (field.kind()) {
    case FieldKind::Label:
    case FieldKind::Caption:
        return std::make_unique<LabelWidget>(form, field, parent);
    case FieldKind::Text:
    case FieldKind::Filter:
        return std::make_unique<LineWidget>(form, field, parent);
    case FieldKind::MultilineText:
        return std::make_unique<PageWidget>(form, field, parent);
    case FieldKind::Button:
        return std::make_unique<ButtonWidget>(form, field, parent);
    case FieldKind::CheckBox:
        return std::make_unique<CheckWidget>(form, field, parent);
    case FieldKind::Option:
        return std::make_unique<OptionWidget>(form, field, parent);
    case FieldKind::Frame:
        return std::make_unique<FrameWidget>(form, field, parent);
    case FieldKind::Swatch:
        return std::make_unique<SwatchWidget>(form, field, parent);
    case FieldKind::Picture:
        return std::make_unique<PictureWidget>(form, field, parent);
    default:
        return makeListWidget(form, field, parent);
    }
}

} // namespace zan::dialogs
