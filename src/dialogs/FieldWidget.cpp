#include "dialogs/FieldWidget.h"

#include "dialogs/ListWidgets.h"
#include "dialogs/SwatchButton.h"
#include "surface/text/MnemonicText.h"
#include "surface/text/ToolTipText.h"
#include "values/DosCharset.h"
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

#include <type_traits>

namespace zan::dialogs {

namespace {

constexpr int Padding = 10;

QString shownText(const Field& field)
{
    const bool isDos = field.font() && field.font()->isDosCharset();
    return isDos ? values::DosCharset::shown(field.text()) : field.text();
}

bool isDressed(const Field& field)
{
    return field.font() || field.foreColour() || field.backColour();
}

/// Font and colours of an example.
void dress(QWidget& widget, const Field& field)
{
    if (!isDressed(field))
        return;
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

/// A field shown by one widget of the toolkit. SetUp makes it ready and connects it, Show gives it what the field holds.
template <class Widget>
class Shown : public FieldWidget
{
public:
    using SetUp = void (*)(Widget& widget, Shown& self);
    using Show = void (*)(Widget& widget, const Field& field);

    Shown(SetupForm& form, Field& field, QWidget* parent, bool hasLabel, SetUp setUp, Show shows)
        : FieldWidget(form, field)
        , m_shows(shows)
        , m_shown(new Widget(parent))
    {
        setUp(*m_shown, *this);
        adopt(m_shown, hasLabel, parent);
    }
    bool isTall() const override
    {
        return std::is_same_v<Widget, QPlainTextEdit> || std::is_same_v<Widget, PictureView>;
    }
    SetupForm& form() const noexcept { return m_form; }
    Field& field() const noexcept { return m_field; }

private:
    void show() override { m_shows(*m_shown, m_field); }
    Show m_shows;
    Widget* m_shown;
};

// Label --------------------------------------------------------------------------------------------------------

void setUpLabel(QLabel& label, Shown<QLabel>& self)
{
    label.setTextFormat(Qt::PlainText);
    label.setAutoFillBackground(false);
    // A text of the site, an example in a large font: both are cut rather than the form made larger.
    if (self.field().kind() != FieldKind::Caption)
        label.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void showLabel(QLabel& label, const Field& field)
{
    label.setText(shownText(field));
    label.setMinimumWidth(isDressed(field) ? 0 : label.sizeHint().width());
    label.setAutoFillBackground(field.backColour().has_value());
    dress(label, field);
}

// Text ---------------------------------------------------------------------------------------------------------

void setUpLine(QLineEdit& line, Shown<QLineEdit>& self)
{
    const FieldRow& row = self.field().row();
    if (row.maxLength > 0)
        line.setMaxLength(row.maxLength);
    if (row.digitsOnly)
        line.setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), &line));
    if (row.kind == FieldKind::Filter) {
        line.setPlaceholderText(QObject::tr("Filter"));
        line.setAccessibleName(QObject::tr("Filter"));
        line.setClearButtonEnabled(true);
    }
    QObject::connect(&line, &QLineEdit::textChanged, &line,
                     [&self](const QString& text) { self.form().userText(self.field(), text); });
}

void showLine(QLineEdit& line, const Field& field)
{
    if (line.text() != shownText(field)) {
        // The limit is the keyboard's: what the program shows is never cut.
        line.setMaxLength(32767);
        line.setText(shownText(field));
        line.setCursorPosition(0);
        if (field.row().maxLength > 0)
            line.setMaxLength(std::max<int>(field.row().maxLength, int(field.text().size())));
    }
    dress(line, field);
}

void setUpPage(QPlainTextEdit& page, Shown<QPlainTextEdit>& self)
{
    if (!self.field().row().wraps) {
        page.setLineWrapMode(QPlainTextEdit::NoWrap);
        page.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        page.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    }
    page.setTabChangesFocus(self.field().row().wraps);
    page.setMinimumHeight(3 * page.fontMetrics().lineSpacing());
    QObject::connect(&page, &QPlainTextEdit::textChanged, &page, [&page, &self] {
        self.form().userText(self.field(), page.toPlainText().replace(QLatin1Char('\n'), QLatin1String("\r\n")));
    });
}

void showPage(QPlainTextEdit& page, const Field& field)
{
    QString text = shownText(field);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    if (page.toPlainText() != text)
        page.setPlainText(text);
    dress(page, field);
}

// Buttons ------------------------------------------------------------------------------------------------------

void setUpButton(QPushButton& button, Shown<QPushButton>& self)
{
    button.setAutoDefault(false); // Enter presses nothing
    button.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    QObject::connect(&button, &QPushButton::clicked, &button, [&self] { self.form().userClick(self.field()); });
}

void showButton(QPushButton& button, const Field& field)
{
    button.setText(shownText(field));
    // Where room is short a button is as wide as its words, whatever width the style likes best.
    button.setMinimumWidth(button.fontMetrics().horizontalAdvance(button.text()) + 2 * Padding);
    dress(button, field);
}

/// What a box or an option shows is what the field holds, whatever came of the click.
template <class Box>
void setUpBox(Box& box, Shown<Box>& self)
{
    QObject::connect(&box, &Box::clicked, &box, [&self] {
        self.form().userClick(self.field());
        self.refresh();
    });
}

void showCheck(QCheckBox& box, const Field& field)
{
    box.setText(shownText(field));
    constexpr Qt::CheckState states[] = {Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked};
    box.setTristate(field.value() == 2);
    box.setCheckState(states[field.value()]);
    dress(box, field);
}

void showOption(QRadioButton& option, const Field& field)
{
    option.setText(field.caption());
    // Of a group none may be chosen, which the toolkit's own rule does not know.
    option.setAutoExclusive(false);
    option.setChecked(field.isChecked());
    option.setAutoExclusive(true);
}

// Frame, colour, picture ---------------------------------------------------------------------------------------

void showFrame(QGroupBox& frame, const Field& field)
{
    frame.setTitle(field.caption().trimmed());
}

void setUpSwatch(SwatchButton& swatch, Shown<SwatchButton>& self)
{
    QObject::connect(&swatch, &SwatchButton::doubleClicked, &swatch,
                     [&self] { self.form().userDoubleClick(self.field()); });
}

void showSwatch(SwatchButton& swatch, const Field& field)
{
    swatch.setColour(values::toQColor(field.backColour().value_or(values::WindowBackground), swatch.palette()));
}

void showPicture(PictureView& view, const Field& field)
{
    view.setPixmap(field.picture() ? field.picture()->pixmap() : QPixmap());
}

template <class Widget>
void nothingToSetUp(Widget&, Shown<Widget>&)
{}

// Kinds --------------------------------------------------------------------------------------------------------

enum class LabelBefore : bool { No, Yes };

template <class Widget, typename Shown<Widget>::SetUp SetUp, typename Shown<Widget>::Show Show, LabelBefore label>
std::unique_ptr<FieldWidget> makeShown(SetupForm& form, Field& field, QWidget* parent)
{
    return std::make_unique<Shown<Widget>>(form, field, parent, label == LabelBefore::Yes, SetUp, Show);
}

/// How each kind of field is shown; the kinds that stand nowhere here are lists.
struct KindRow
{
    FieldKind kind;
    std::unique_ptr<FieldWidget> (*make)(SetupForm& form, Field& field, QWidget* parent);
};

constexpr KindRow kinds[] = {
    {FieldKind::Label, makeShown<QLabel, setUpLabel, showLabel, LabelBefore::No>},
    {FieldKind::Caption, makeShown<QLabel, setUpLabel, showLabel, LabelBefore::No>},
    {FieldKind::Text, makeShown<QLineEdit, setUpLine, showLine, LabelBefore::Yes>},
    {FieldKind::Filter, makeShown<QLineEdit, setUpLine, showLine, LabelBefore::No>},
    {FieldKind::MultilineText, makeShown<QPlainTextEdit, setUpPage, showPage, LabelBefore::Yes>},
    {FieldKind::Button, makeShown<QPushButton, setUpButton, showButton, LabelBefore::No>},
    {FieldKind::CheckBox, makeShown<QCheckBox, setUpBox<QCheckBox>, showCheck, LabelBefore::No>},
    {FieldKind::Option, makeShown<QRadioButton, setUpBox<QRadioButton>, showOption, LabelBefore::No>},
    {FieldKind::Frame, makeShown<QGroupBox, nothingToSetUp<QGroupBox>, showFrame, LabelBefore::No>},
    {FieldKind::Swatch, makeShown<SwatchButton, setUpSwatch, showSwatch, LabelBefore::Yes>},
    {FieldKind::Picture, makeShown<PictureView, nothingToSetUp<PictureView>, showPicture, LabelBefore::No>},
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
    const QSignalBlocker silent(m_widget); // what the program shows is nobody's input
    show();
}

std::unique_ptr<FieldWidget> makeFieldWidget(SetupForm& form, Field& field, QWidget* parent)
{
    for (const KindRow& row : kinds) {
        if (row.kind == field.kind())
            return row.make(form, field, parent);
    }
    return makeListWidget(form, field, parent);
}

} // namespace zan::dialogs
