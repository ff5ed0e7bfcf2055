#include "display/LimitMarker.h"

#include "display/PixelPainter.h"

#include <QColor>
#include <QHash>
#include <QImage>
#include <QPainter>
#include <QTransform>

#include <algorithm>

namespace zan::display::LimitMarker {

namespace {

constexpr QColor Edge(128, 128, 128);
constexpr int TipHeight = 2; // where it is thinnest

// A picture of one triangle holds all that its columns can reach; the limit lies in row Middle, or in the one below
// for an odd place: halves go to the even row, so that odd and even places look different.
constexpr int Middle = 6;
constexpr QSize PictureSize(Size + 1, 2 * Middle + 2);

enum class Side { Left, Right };

/// One column at a distance from the tip: its edges are one pixel each, as a line does not draw its end point, and
/// what lies between them is the core.
struct Column
{
    Column(int y, int distance)
    {
        // As high as long: the slope is one.
        const double half = std::max(distance, TipHeight) / 2.0;
        bottom = nearestPixel(y + half);
        top = nearestPixel(y - half);
    }
    int bottom;
    int top;
};

/// Column by column. Columns do not touch each other, so that all cores can be drawn before all edges.
void drawLines(PixelPainter& canvas, Side side, int tip, int y, const QColor& colour)
{
    const int step = side == Side::Left ? -1 : 1;
    for (int distance = 0; distance <= Size; ++distance) {
        const Column column(y, distance);
        canvas.collect(tip + step * distance, column.bottom - 1, tip + step * distance, column.top + 1);
    }
    canvas.drawCollected(colour);
    for (int distance = 0; distance <= Size; ++distance) {
        const Column column(y, distance);
        canvas.collect(tip + step * distance, column.bottom, tip + step * distance, column.bottom);
        canvas.collect(tip + step * distance, column.top, tip + step * distance, column.top);
    }
    canvas.drawCollected(Edge);
}

struct Key
{
    QRgb colour;
    int scale;
    bool isLeft;
    bool isOdd;
    friend bool operator==(const Key&, const Key&) = default;
};

std::size_t qHash(const Key& key, std::size_t seed = 0)
{
    return qHashMulti(seed, key.colour, key.scale, key.isLeft, key.isOdd);
}

QImage makePicture(Side side, bool isOdd, const QColor& colour, int scale)
{
    QImage image(PictureSize * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    PixelPainter canvas(painter, QPoint(), QRect(QPoint(), PictureSize));
    drawLines(canvas, side, side == Side::Left ? Size : 0, Middle + int(isOdd), colour);
    return image;
}

/// A thousand bars have few kinds of markers between them: drawing one is copying a small picture.
const QImage& picture(Side side, bool isOdd, const QColor& colour, int scale)
{
    constexpr qsizetype MostPictures = 128;
    static QHash<Key, QImage> pictures;
    const Key key{colour.rgb(), scale, side == Side::Left, isOdd};
    const auto found = pictures.constFind(key);
    if (found != pictures.constEnd())
        return *found;
    if (pictures.size() >= MostPictures)
        pictures.clear();
    return *pictures.insert(key, makePicture(side, isOdd, colour, scale));
}

/// The whole number of device pixels to a logical one; 0 where it is none, or where the drawing is turned.
int wholeScale(const QPainter& painter)
{
    const QTransform& transform = painter.deviceTransform();
    const int scale = int(transform.m11());
    const bool isWhole = transform.type() <= QTransform::TxScale && scale >= 1 && scale <= 8 &&
                         transform.m11() == scale && transform.m22() == scale;
    return isWhole ? scale : 0;
}

} // namespace

void draw(QPainter& painter, const QRect& area, int left, int right, int y, const QColor& colour)
{
    const int scale = wholeScale(painter);
    const bool isOdd = (y & 1) != 0;
    const int top = y - Middle - int(isOdd);
    for (const Side side : {Side::Left, Side::Right}) {
        const int tip = side == Side::Left ? left : right;
        if (scale == 0) {
            PixelPainter canvas(painter, area.topLeft(), area);
            drawLines(canvas, side, tip, y, colour);
            continue;
        }
        const QPoint corner = area.topLeft() + QPoint(side == Side::Left ? tip - Size : tip, top);
        const QRect target = QRect(corner, PictureSize) & area;
        if (target.isEmpty())
            continue;
        const QRect source((target.topLeft() - corner) * scale, target.size() * scale);
        painter.drawImage(target, picture(side, isOdd, colour, scale), source);
    }
}

} // namespace zan::display::LimitMarker
