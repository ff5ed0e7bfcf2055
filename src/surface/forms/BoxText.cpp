#include "surface/forms/BoxText.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace zan::surface {

namespace {

constexpr qsizetype LongestTitle = 200;
constexpr QChar ZeroWidthSpace(0x200B);

/// How many characters of usual width stand in a line of a box, and how many lines in it.
QSize roomOn(const QScreen& screen, const QFont& font)
{
    const QFontMetrics metrics(font);
    const QSize room = screen.availableSize();
    return {std::max(20, room.width() * 2 / 5 / std::max(1, metrics.averageCharWidth())),
            std::max(4, room.height() / 2 / std::max(1, metrics.lineSpacing()))};
}

} // namespace

QString textForBox(const QString& text, const QWidget* owner)
{
    const QScreen* screen = owner ? owner->screen() : QGuiApplication::primaryScreen();
    if (!screen)
        return text;
    const QSize room = roomOn(*screen, owner ? owner->font() : QGuiApplication::font());
    QString shown;
    int rows = 1, column = 0, word = 0;
    for (const QChar character : text) {
        if (character.isLowSurrogate()) {
            shown += character; // the other half has been counted
            continue;
        }
        const bool endsLine = character == QLatin1Char('\n') || column == room.width();
        if (endsLine && ++rows > room.height())
            return shown + QLatin1Char('\n') +
                   QCoreApplication::translate("HostForms", "[The text goes on; it has %1 characters.]")
                       .arg(text.size());
        column = endsLine ? 0 : column + 1;
        word = character.isSpace() ? 0 : word + 1;
        if (word > room.width()) {
            shown += ZeroWidthSpace;
            word = 1;
        }
        shown += character;
    }
    return shown;
}

QString titleForBox(const QString& title)
{
    const QString line = title.left(LongestTitle + 1).simplified();
    return line.size() > LongestTitle ? line.left(LongestTitle) + QStringLiteral("...") : line;
}

} // namespace zan::surface
