#include "surface/text/TextPainter.h"

#include "values/DosCharset.h"

#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zan::surface {

namespace {

constexpr int KeptLayouts = 2000;
constexpr QSize MostMeasured{65536, 65536};
constexpr float Unlimited = std::numeric_limits<float>::max();

bool isLineBreak(QChar character)
{
    return character == QLatin1Char('\n') || character == QLatin1Char('\r');
}

/// Cuts drawing at a rectangle while it lives. Cheap where nothing else clips.
class ClipGuard
{
public:
    ClipGuard(QPainter& painter, const QRect& rectangle, bool needed)
        : m_painter(painter)
        , m_state(!needed                 ? State::None
                  : painter.hasClipping() ? State::Saved
                                          : State::Set)
    {
        if (m_state == State::Saved)
            m_painter.save();
        if (m_state != State::None)
            m_painter.setClipRect(rectangle, m_state == State::Saved ? Qt::IntersectClip : Qt::ReplaceClip);
    }
    ~ClipGuard()
    {
        if (m_state == State::Saved)
            m_painter.restore();
        else if (m_state == State::Set)
            m_painter.setClipping(false);
    }
    ClipGuard(const ClipGuard&) = delete;
    ClipGuard& operator=(const ClipGuard&) = delete;

private:
    enum class State { None, Set, Saved };
    QPainter& m_painter;
    State m_state;
};

/// The beginning of a text that can be seen in a rectangle of this size, with plenty over: a text of a document may
/// have any length, the screen has not.
QStringView fitting(const QString& text, QSize size, int lineHeight)
{
    constexpr std::int64_t Plenty = 20'000;
    constexpr std::int64_t Most = 250'000;
    if (text.size() <= Plenty)
        return text;
    const std::int64_t lines = size.height() / std::max(lineHeight, 1) + 1;
    const std::int64_t count = std::clamp(lines * size.width(), Plenty, Most);
    QStringView shown = QStringView(text).left(qsizetype(count));
    if (shown.size() < text.size() && shown.back().isHighSurrogate())
        shown.chop(1);
    return shown;
}

/// The text itself, or what fits of it, kept in `part`.
const QString& fittingText(const QString& text, QSize size, int lineHeight, QString& part)
{
    const QStringView shown = fitting(text, size, lineHeight);
    if (shown.size() == text.size())
        return text;
    part = shown.toString();
    return part;
}

} // namespace

struct TextPainter::Layout
{
    QTextLayout layout;
    QSizeF size;
};

TextPainter::TextPainter()
    : m_layouts(KeptLayouts)
{}

TextPainter::~TextPainter() = default;

void TextPainter::draw(QPainter& painter, const QRect& rectangle, const QString& text, FontFace& face,
                       const TextStyle& style)
{
    if (text.isEmpty() || rectangle.isEmpty())
        return;
    QString part;
    const QString& shown = prepare(fittingText(text, rectangle.size(), face.height(), part), style.mnemonic);
    if (shape(shown, face)) {
        breakLines(shown, style.wrap ? float(rectangle.width()) : Unlimited);
        drawPlain(painter, rectangle, face, style);
    } else {
        drawLaidOut(painter, rectangle, shown, face, style);
    }
}

QSize TextPainter::measure(const QString& text, FontFace& face, bool mnemonic, int wrapWidth)
{
    QString part;
    const QString& shown = prepare(fittingText(text, MostMeasured, face.height(), part), mnemonic);
    if (shape(shown, face)) {
        breakLines(shown, wrapWidth >= 0 ? float(wrapWidth) : Unlimited);
        float width = 0;
        for (const Line& line : m_lines)
            width = std::max(width, line.width);
        return {int(std::ceil(width)), face.height() * int(m_lines.size())};
    }
    TextStyle style;
    style.wrap = wrapWidth >= 0;
    const QSizeF size = layoutOf(shown, face, style, wrapWidth).size;
    return {int(std::ceil(size.width())), int(std::ceil(size.height()))};
}

/// Takes the mnemonic mark out: "&&" is one '&', a single '&' underlines what follows.
const QString& TextPainter::prepare(const QString& text, bool mnemonic)
{
    m_underlined = -1;
    if (!mnemonic || !text.contains(QLatin1Char('&')))
        return text;
    m_prepared.clear();
    for (qsizetype place = 0; place < text.size(); ++place) {
        if (text[place] == QLatin1Char('&')) {
            ++place;
            if (place >= text.size())
                break;
            if (text[place] != QLatin1Char('&'))
                m_underlined = int(m_prepared.size());
        }
        m_prepared.append(text[place]);
    }
    return m_prepared;
}

/// Looks up the glyph of every character; false when one of them needs the toolkit's layout.
bool TextPainter::shape(const QString& text, FontFace& face)
{
    m_measures.resize(std::size_t(text.size()));
    std::size_t place = 0;
    for (const QChar character : text) {
        FontFace::Glyph& measure = m_measures[place++];
        if (isLineBreak(character)) {
            measure = {};
            continue;
        }
        measure = face.glyph(character.unicode());
        if (measure.index == 0)
            return false;
    }
    return true;
}

/// Cuts the shaped text into lines: at line ends, and at blanks where a line would be wider than `width`. A word
/// wider than that stays in one piece.
void TextPainter::breakLines(const QString& text, float width)
{
    m_lines.clear();
    const int length = int(text.size());
    int first = 0;
    int afterBlank = -1; // where the line could be broken
    float used = 0;
    for (int place = 0; place < length; ++place) {
        const QChar character = text[place];
        if (isLineBreak(character)) {
            addLine(text, first, place);
            if (character == QLatin1Char('\r') && place + 1 < length && text[place + 1] == QLatin1Char('\n'))
                ++place;
            first = place + 1;
            afterBlank = -1;
            used = 0;
            continue;
        }
        used += m_measures[std::size_t(place)].advance;
        if (character == QLatin1Char(' ')) {
            afterBlank = place + 1;
        } else if (used > width && afterBlank > first) {
            addLine(text, first, afterBlank);
            first = afterBlank;
            place = afterBlank - 1;
            afterBlank = -1;
            used = 0;
        }
    }
    addLine(text, first, length);
}

void TextPainter::addLine(const QString& text, int first, int end)
{
    Line line;
    line.first = first;
    line.count = end - first;
    float x = 0;
    for (int place = first; place < end; ++place) {
        const FontFace::Glyph& glyph = m_measures[std::size_t(place)];
        line.inkLeft = std::min(line.inkLeft, x + glyph.left);
        line.inkRight = std::max(line.inkRight, x + glyph.right);
        x += glyph.advance;
        if (text[place] != QLatin1Char(' '))
            line.width = x; // blanks at the end of a line do not push it off its alignment
    }
    if (m_lines.empty() && end == text.size())
        line.width = x; // a single line keeps them
    m_lines.push_back(line);
}

void TextPainter::drawPlain(QPainter& painter, const QRect& rectangle, FontFace& face, const TextStyle& style)
{
    const int height = face.height() * int(m_lines.size());
    const int top = style.centreVertically ? rectangle.top() + (rectangle.height() - height) / 2 : rectangle.top();
    bool overflows = top < rectangle.top() || top + height > rectangle.bottom() + 1;
    for (const Line& line : m_lines) {
        // Ink beside the line's own width counts on both sides, wherever the line is aligned.
        const float overhang = std::max(-line.inkLeft, line.inkRight - line.width);
        const float room = float(rectangle.width()) - line.width;
        const bool centred = style.align == TextStyle::Align::Centre;
        overflows = overflows || room < 0 || (overhang > 0 && (centred ? room / 2 : 0.0F) < overhang);
    }
    const ClipGuard clip(painter, rectangle, overflows);
    drawRuns(painter, rectangle, face, style, top);
}

void TextPainter::drawRuns(QPainter& painter, const QRect& rectangle, FontFace& face, const TextStyle& style,
                           int top)
{
    // A pen that draws nothing is black: what was painted before may have left one.
    if (const QPen& pen = painter.pen(); pen.style() != Qt::SolidLine || pen.color() != style.colour)
        painter.setPen(style.colour);
    for (const Line& line : m_lines) {
        if (top > rectangle.bottom())
            break;
        float x = 0;
        const float room = float(rectangle.width()) - line.width;
        if (style.align == TextStyle::Align::Right)
            x = std::floor(room);
        else if (style.align == TextStyle::Align::Centre)
            x = std::floor(room / 2);
        if (top + face.height() > rectangle.top())
            drawLine(painter, line, QPointF(rectangle.left() + double(x), top + face.ascent()), face, style.colour);
        top += face.height();
    }
}

void TextPainter::drawLine(QPainter& painter, const Line& line, QPointF start, FontFace& face, const QColor& colour)
{
    if (line.count == 0)
        return;
    m_glyphs.resize(std::size_t(line.count));
    m_positions.resize(std::size_t(line.count));
    double x = 0;
    int drawn = 0;
    for (int place = 0; place < line.count; ++place) {
        const FontFace::Glyph& glyph = m_measures[std::size_t(line.first + place)];
        if (glyph.right > glyph.left) {
            m_glyphs[std::size_t(drawn)] = glyph.index;
            m_positions[std::size_t(drawn)] = QPointF(x, 0);
            ++drawn;
        }
        if (line.first + place == m_underlined)
            painter.fillRect(QRectF(start.x() + x, start.y() + 1, double(glyph.advance), 1), colour);
        x += double(glyph.advance);
    }
    // The toolkit leaves these lines out of glyph runs on a scaled screen.
    const QRawFont& raw = face.rawFont();
    const double thickness = std::max(1.0, std::round(raw.lineThickness()));
    if (face.font().underline())
        painter.fillRect(
            QRectF(start.x(), start.y() + std::max(1.0, std::round(raw.underlinePosition())), x, thickness),
            colour);
    if (face.font().strikeOut())
        painter.fillRect(QRectF(start.x(), start.y() - std::round(raw.xHeight() / 2), x, thickness), colour);
    if (drawn == 0)
        return;
    QGlyphRun& run = face.scratchRun();
    run.setRawData(m_glyphs.data(), m_positions.data(), drawn);
    painter.drawGlyphRun(start, run);
}

void TextPainter::drawLaidOut(QPainter& painter, const QRect& rectangle, const QString& text, FontFace& face,
                              const TextStyle& style)
{
    Layout& laidOut = layoutOf(text, face, style, rectangle.width());
    double top = rectangle.top();
    if (style.centreVertically)
        top += std::floor((rectangle.height() - laidOut.size.height()) / 2);
    const ClipGuard clip(painter, rectangle, true);
    painter.setPen(style.colour);
    laidOut.layout.draw(&painter, QPointF(rectangle.left(), top));
}

TextPainter::Layout& TextPainter::layoutOf(const QString& text, FontFace& face, const TextStyle& style, int width)
{
    const QString key = QStringLiteral("%1|%2|%3|%4|%5|")
                            .arg(quintptr(&face))
                            .arg(width)
                            .arg(int(style.align))
                            .arg(int(style.wrap))
                            .arg(m_underlined) +
                        text;
    if (Layout* known = m_layouts.object(key))
        return *known;
    auto laidOut = std::make_unique<Layout>();
    QString shown = face.isDos() ? values::DosCharset::shown(text) : text;
    shown.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    shown.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    shown.replace(QLatin1Char('\n'), QChar(QChar::LineSeparator));
    QTextOption option;
    option.setWrapMode(style.wrap ? QTextOption::WordWrap : QTextOption::ManualWrap);
    constexpr Qt::Alignment Alignments[]{Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter};
    option.setAlignment(Alignments[int(style.align)] | Qt::AlignAbsolute);
    QTextLayout& layout = laidOut->layout;
    layout.setFont(face.font());
    layout.setTextOption(option);
    layout.setText(shown);
    if (m_underlined >= 0) {
        QTextLayout::FormatRange range{m_underlined, 1, {}};
        range.format.setFontUnderline(true);
        layout.setFormats({range});
    }
    layout.setCacheEnabled(true);
    layout.beginLayout();
    double y = 0;
    double widest = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width >= 0 ? width : 1e6);
        line.setPosition(QPointF(0, y));
        y += line.height();
        widest = std::max(widest, line.naturalTextWidth());
    }
    layout.endLayout();
    laidOut->size = QSizeF(widest, y);
    Layout* kept = laidOut.release();
    m_layouts.insert(key, kept);
    return *kept;
}

} // namespace zan::surface
