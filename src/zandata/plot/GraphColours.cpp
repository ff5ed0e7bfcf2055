#include "zandata/plot/GraphColours.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace zan::zandata {

namespace {

/// Eight hues that stay different for people who see red and green, or blue and yellow, alike.
constexpr std::array<QRgb, 8> hues{0xff0072b2, 0xffd55e00, 0xff009e73, 0xffcc79a7,
                                   0xffe69f00, 0xff56b4e9, 0xff808080, 0xfff0e442};

/// Lengths of dashes and gaps, in widths of the line; nothing is a solid line.
const std::array<QList<qreal>, 8>& dashes()
{
    static const std::array<QList<qreal>, 8> list{
        {{}, {6, 3}, {2, 2}, {8, 3, 2, 3}, {12, 3}, {8, 3, 2, 3, 2, 3}, {4, 2}, {12, 3, 4, 3}}};
    return list;
}

std::size_t placeOf(std::int32_t number)
{
    return std::size_t(std::max(number, 1) - 1) % hues.size();
}

double luminance(const QColor& colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

} // namespace

double contrast(const QColor& a, const QColor& b)
{
    const double one = luminance(a) + 0.05;
    const double other = luminance(b) + 0.05;
    return std::max(one, other) / std::min(one, other);
}

QColor mixed(const QColor& a, const QColor& b, double share)
{
    const auto part = [share](int from, int to) { return int(std::lround(from + (to - from) * share)); };
    return QColor(part(a.red(), b.red()), part(a.green(), b.green()), part(a.blue(), b.blue()));
}

QColor readable(const QColor& colour, const QColor& back)
{
    // Black or white has a contrast of more than 4 to any colour.
    const QColor end = contrast(Qt::black, back) > contrast(Qt::white, back) ? Qt::black : Qt::white;
    constexpr int Steps = 20;
    for (int step = 0; step < Steps; ++step) {
        const QColor tried = mixed(colour, end, double(step) / Steps);
        if (contrast(tried, back) >= LeastContrast)
            return tried;
    }
    return end;
}

QColor channelColour(std::int32_t number, const QColor& back)
{
    return readable(QColor::fromRgb(hues[placeOf(number)]), back);
}

QPen channelPen(std::int32_t number, const QColor& back)
{
    // The second eight have the same hues with other dashes.
    const std::size_t round = std::size_t(std::max(number, 1) - 1) / hues.size();
    const QList<qreal>& pattern = dashes()[(placeOf(number) + round * 3) % dashes().size()];
    QPen pen(channelColour(number, back), 1.6);
    pen.setCapStyle(Qt::FlatCap);
    if (!pattern.isEmpty())
        pen.setDashPattern(pattern);
    return pen;
}

bool isInDash(double place, const QList<qreal>& lengths)
{
    const double whole = std::accumulate(lengths.begin(), lengths.end(), 0.0);
    if (!(whole > 0))
        return true;
    double rest = place - std::floor(place / whole) * whole;
    for (qsizetype i = 0; i < lengths.size(); ++i) {
        if (rest < lengths[i])
            return i % 2 == 0;
        rest -= lengths[i];
    }
    return true;
}

} // namespace zan::zandata
