#include "surface/intrinsic/TextBox.h"

#include "binding/MemberTable.h"
#include "surface/host/Surface.h"
#include "surface/ops/ControlOps.h"
#include "values/DosCharset.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <array>

namespace zan::surface {

using values::ErrorNumber;

namespace {

/// Most characters that a one-line field shows; a longer text keeps the rest unseen.
constexpr int LongestLine = 65535;
constexpr int LongestText = 250'000; // characters that a box of several lines lays out
constexpr std::array TextAlignments{Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter};

QLineEdit* asLine(QWidget* widget)
{
    return qobject_cast<QLineEdit*>(widget);
}

QPlainTextEdit* asLines(QWidget* widget)
{
    return qobject_cast<QPlainTextEdit*>(widget);
}

/// A text as the many-line widget keeps it.
QString withSimpleLineEnds(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

QString withClassicLineEnds(QString text)
{
    return text.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
}

} // namespace

TextBox::TextBox()
    : WidgetControl(values::WindowBackground, values::WindowText)
{}

const binding::MemberTable& TextBox::members() const
{
    using binding::field;
    using binding::oneOf;
    using binding::property;
    using T = TextBox;
    return binding::table([] {
        return binding::MemberTable(
            "TextBox", &widgetMembers(),
            {
                field<&T::m_backColor, &T::restyle>("BackColor", values::WindowBackground),
                field<&T::m_foreColor, &T::restyle>("ForeColor", values::WindowText),
                property<&T::text, &T::setText>("Text").asDefault().keptIn<&T::m_text>({}),
                field<&T::m_alignment, &T::look>("Alignment", 0, oneOf(2)),
                field<&T::m_locked, &T::look>("Locked"),
                field<&T::m_maxLength, &T::lengthChanged>("MaxLength", 0, binding::atLeast(0)),
                property<&T::passwordChar, &T::setPasswordChar>("PasswordChar").keptIn<&T::m_passwordChar>({}),
                field<&T::m_multiLine, &T::renewWidget>("MultiLine"),
                field<&T::m_scrollBars, &T::look>("ScrollBars", 0, oneOf(3)),
                field<&T::m_borderStyle, &T::look>("BorderStyle", 1, oneOf(1)),
                property<&T::selStart, &T::setSelStart>("SelStart"),
                property<&T::selLength, &T::setSelLength>("SelLength"),
                property<&T::selText, &T::setSelText>("SelText"),
            });
    });
}

void TextBox::setText(const QString& text)
{
    const QString kept = m_maxLength > 0 ? text.left(m_maxLength) : text;
    if (m_text == kept)
        return;
    m_text = kept;
    m_selection = {};
    changed(Look);
    if (Surface* owner = surface()) {
        const Ref<LiveControl> alive(this);
        owner->tell([&](SurfaceEvents& events) { events.textChanged(*this); });
    }
}

void TextBox::lengthChanged()
{
    changed(Look);
    if (m_maxLength > 0 && m_text.size() > m_maxLength)
        setText(m_text);
}

void TextBox::setPasswordChar(const QString& character)
{
    const QString kept = character.left(1);
    if (m_passwordChar == kept)
        return;
    m_passwordChar = kept;
    changed(Look);
}

void TextBox::setDigitsOnly(bool digitsOnly)
{
    if (m_digitsOnly == digitsOnly)
        return;
    m_digitsOnly = digitsOnly;
    changed(Look);
}

/// What the widget shows: the text, in the DOS character set where the font asks for it.
QString TextBox::shownText() const
{
    QString shown = m_multiLine ? withSimpleLineEnds(m_text.left(LongestText)) : m_text.left(LongestLine);
    return font()->isDosCharset() ? values::DosCharset::shown(shown) : shown;
}

void TextBox::takeEditedText(const QString& shown)
{
    if (isSyncing() || !isLoaded())
        return;
    QString text = m_multiLine ? withClassicLineEnds(shown) : shown;
    if (font()->isDosCharset())
        text = values::DosCharset::stored(text);
    if (m_maxLength > 0 && text.size() > m_maxLength) { // the many-line widget has no limit of its own
        text.truncate(m_maxLength);
        changed(Look);
    }
    if (text == m_text)
        return;
    m_text = text;
    countChange();
    const Ref<LiveControl> alive(this);
    surface()->tell([&](SurfaceEvents& events) { events.textChanged(*this); });
}

QWidget* TextBox::createWidget(QWidget* parent)
{
    if (m_multiLine) {
        auto* lines = new QPlainTextEdit(parent);
        lines->setTabChangesFocus(true);
        QObject::connect(lines, &QPlainTextEdit::textChanged, lines,
                         [this, lines] { takeEditedText(lines->toPlainText()); });
        return lines;
    }
    auto* line = new QLineEdit(parent);
    QObject::connect(line, &QLineEdit::textChanged, line, [this](const QString& text) { takeEditedText(text); });
    return line;
}

void TextBox::syncWidget(QWidget& widget)
{
    const QString shown = shownText();
    if (QLineEdit* line = asLine(&widget)) {
        line->setFrame(m_borderStyle == 1);
        line->setAlignment(TextAlignments[m_alignment] | Qt::AlignVCenter | Qt::AlignAbsolute);
        line->setReadOnly(m_locked || m_text.size() > LongestLine); // an edit would lose what is not shown
        line->setEchoMode(m_passwordChar.isEmpty() ? QLineEdit::Normal : QLineEdit::Password);
        line->setMaxLength(m_maxLength > 0 ? std::min(m_maxLength, LongestLine) : LongestLine);
        ControlOps::SetWindowStyleBit(*line, m_digitsOnly);
        if (line->text() != shown) {
            line->setText(shown);
            line->setCursorPosition(0);
        }
    } else if (QPlainTextEdit* lines = asLines(&widget)) {
        lines->setFrameShape(m_borderStyle == 1 ? QFrame::StyledPanel : QFrame::NoFrame);
        QTextOption option = lines->document()->defaultTextOption();
        option.setAlignment(TextAlignments[m_alignment] | Qt::AlignAbsolute);
        lines->document()->setDefaultTextOption(option);
        lines->setReadOnly(m_locked || m_text.size() > LongestText);
        lines->setLineWrapMode((m_scrollBars & 1) != 0 ? QPlainTextEdit::NoWrap : QPlainTextEdit::WidgetWidth);
        lines->setHorizontalScrollBarPolicy((m_scrollBars & 1) != 0 ? Qt::ScrollBarAlwaysOn
                                                                    : Qt::ScrollBarAlwaysOff);
        lines->setVerticalScrollBarPolicy((m_scrollBars & 2) != 0 ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
        if (lines->toPlainText() != shown)
            lines->setPlainText(shown);
    }
    if (m_selection.start > 0 || m_selection.length > 0)
        select(std::exchange(m_selection, {}));
}

TextBox::Selection TextBox::selection() const
{
    if (pendingChanges() & Look) // the widget still shows the text before
        return m_selection;
    if (const QLineEdit* line = asLine(widget())) {
        const int start = line->hasSelectedText() ? line->selectionStart() : line->cursorPosition();
        return {start, int(line->selectedText().size())};
    }
    if (const QPlainTextEdit* lines = asLines(widget())) {
        const QTextCursor cursor = lines->textCursor();
        const int lineEnds = cursor.document()->findBlock(cursor.selectionStart()).blockNumber();
        const int lastLine = cursor.document()->findBlock(cursor.selectionEnd()).blockNumber();
        return {cursor.selectionStart() + lineEnds, // a line end is two characters in the text
                cursor.selectionEnd() - cursor.selectionStart() + lastLine - lineEnds};
    }
    return m_selection;
}

void TextBox::select(Selection wanted)
{
    if (QLineEdit* line = asLine(widget())) {
        line->setCursorPosition(wanted.start);
        if (wanted.length > 0)
            line->setSelection(wanted.start, wanted.length);
    } else if (QPlainTextEdit* lines = asLines(widget())) {
        const auto place = [&](int character) { return int(withSimpleLineEnds(m_text.left(character)).size()); };
        QTextCursor cursor = lines->textCursor();
        cursor.setPosition(place(wanted.start));
        cursor.setPosition(place(wanted.start + wanted.length), QTextCursor::KeepAnchor);
        lines->setTextCursor(cursor);
    }
}

std::int32_t TextBox::selStart() const
{
    return selection().start;
}

void TextBox::setSelStart(std::int32_t start)
{
    if (start < 0)
        values::raise(ErrorNumber::InvalidPropertyValue);
    m_selection = {std::min(start, std::int32_t(m_text.size())), 0};
    if (widget() && !(pendingChanges() & Look))
        select(std::exchange(m_selection, {}));
}

std::int32_t TextBox::selLength() const
{
    return selection().length;
}

void TextBox::setSelLength(std::int32_t length)
{
    if (length < 0)
        values::raise(ErrorNumber::InvalidPropertyValue);
    Selection wanted = selection();
    wanted.length = std::min(length, std::int32_t(m_text.size()) - wanted.start);
    m_selection = wanted;
    if (widget() && !(pendingChanges() & Look))
        select(std::exchange(m_selection, {}));
}

QString TextBox::selText() const
{
    const Selection marked = selection();
    return m_text.mid(marked.start, marked.length);
}

void TextBox::setSelText(const QString& text)
{
    const Selection marked = selection();
    QString whole = m_text;
    whole.replace(marked.start, marked.length, text);
    setText(whole);
    setSelStart(marked.start + std::int32_t(text.size()));
}

QString TextBox::accessibleText() const
{
    return m_passwordChar.isEmpty() ? m_text : QString();
}

void TextBox::copyDesign(const LiveControl& source)
{
    m_digitsOnly = static_cast<const TextBox&>(source).m_digitsOnly; // no property by name
    WidgetControl::copyDesign(source);
}

} // namespace zan::surface
