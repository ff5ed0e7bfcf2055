#include "values/TableText.h"

#include "values/NumberText.h"

#include <cmath>

namespace zan::values {

namespace {

bool isNumber(const QString& text)
{
    bool isOne = false;
    const double number = text.toDouble(&isOne);
    return isOne && std::isfinite(number);
}

} // namespace

QString harmlessCell(const QString& text)
{
    // Blanks in front do not keep a spreadsheet from seeing a formula.
    qsizetype place = 0;
    while (place < text.size() && text[place].isSpace() && text[place] != u'\t' && text[place] != u'\r' &&
           text[place] != u'\n')
        ++place;
    if (place == text.size())
        return text;
    static const QString dangerous = QStringLiteral("=+-@\t\r\n|%＝＋－＠");
    const bool isFormula = dangerous.contains(text[place]) && !isNumber(text.trimmed());
    return isFormula ? QLatin1Char('\'') + text : text;
}

QString csvCell(const QString& text, QChar separator)
{
    QString cell = text;
    cell.remove(QChar(u'\0')); // before the look at its beginning, which it would hide
    cell = harmlessCell(cell);
    const bool hasEnds = !cell.isEmpty() && (cell.front().isSpace() || cell.back().isSpace());
    const bool needsQuotes = hasEnds || cell.contains(separator) || cell.contains(u',') || cell.contains(u'"') ||
                             cell.contains(u'\n') || cell.contains(u'\r') || cell.contains(u';') ||
                             cell.contains(u'\t');
    if (!needsQuotes)
        return cell;
    cell.replace(QLatin1String("\""), QLatin1String("\"\""));
    return QLatin1Char('"') + cell + QLatin1Char('"');
}

QString clipboardCell(const QString& text)
{
    QString cell = text;
    for (QChar& character : cell) {
        if (character == u'\t' || character == u'\r' || character == u'\n' || character == u'\0')
            character = u' ';
    }
    return harmlessCell(cell);
}

QString csvNumber(double number)
{
    return std::isfinite(number) ? documentText(number) : csvCell(QString::number(number));
}

QString csvNumber(float number)
{
    return std::isfinite(number) ? documentText(number) : csvCell(QString::number(double(number)));
}

} // namespace zan::values
