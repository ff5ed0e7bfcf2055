#pragma once

#include "surface/text/FontFace.h"

#include <QCache>
#include <QColor>
#include <QPointF>
#include <QRect>
#include <QSize>
#include <QString>
#include <QTextLayout>

#include <memory>
#include <vector>

class QPainter;

namespace zan::surface {

/// How a text is laid out in its rectangle.
struct TextStyle
{
    /// Values as the classic alignment properties have them.
    enum class Align { Left = 0, Right = 1, Centre = 2 };

    QColor colour;
    Align align = Align::Left;
    bool wrap = false;             ///< break lines at blanks where they are too wide
    bool mnemonic = false;         ///< '&' underlines the next character
    bool centreVertically = false; ///< in the middle of the rectangle instead of at its top
};

/// Draws texts. Plain ones go straight from characters to glyphs, with nothing kept per text; others go through the
/// toolkit's layout, and the layouts used last are kept.
class TextPainter
{
public:
    TextPainter();
    ~TextPainter();

    /// Draws the text, cut at the rectangle.
    void draw(QPainter& painter, const QRect& rectangle, const QString& text, FontFace& face,
              const TextStyle& style);
    /// Size of the text; with a width of 0 or more, wrapped to it. Logical pixels, rounded up.
    QSize measure(const QString& text, FontFace& face, bool mnemonic, int wrapWidth = -1);

private:
    struct Line
    {
        int first = 0; // in m_glyphs
        int count = 0;
        float width = 0;
        float inkLeft = 0;
        float inkRight = 0;
    };
    struct Layout; // of the toolkit

    const QString& prepare(const QString& text, bool mnemonic);
    bool shape(const QString& text, FontFace& face);
    void breakLines(const QString& text, float width);
    void addLine(const QString& text, int first, int end);
    void drawPlain(QPainter& painter, const QRect& rectangle, FontFace& face, const TextStyle& style);
    void drawRuns(QPainter& painter, const QRect& rectangle, FontFace& face, const TextStyle& style, int top);
    void drawLine(QPainter& painter, const Line& line, QPointF start, FontFace& face, const QColor& colour);
    void drawLaidOut(QPainter& painter, const QRect& rectangle, const QString& text, FontFace& face,
                     const TextStyle& style);
    Layout& layoutOf(const QString& text, FontFace& face, const TextStyle& style, int width);

    QString m_prepared;                  // the text without its mnemonic mark
    int m_underlined = -1;               // the character that the mark underlines
    std::vector<std::uint32_t> m_glyphs; // one per character
    std::vector<FontFace::Glyph> m_measures;
    std::vector<QPointF> m_positions;
    std::vector<Line> m_lines;
    QCache<QString, Layout> m_layouts;
};

} // namespace zan::surface
