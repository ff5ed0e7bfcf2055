#include "values/DateText.h"
#include "values/Format.h"

#include <QFile>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

namespace zan::values {

namespace {

/// The text between the backquotes of a table cell; an empty text for an empty cell.
QString cellText(QString cell)
{
    cell = cell.trimmed();
    return cell.size() >= 2 ? cell.mid(1, cell.size() - 2) : QString();
}

/// A value as the manual writes it: a number, "text", #date#, True, False, Null or Empty.
Variant manualValue(const QString& text)
{
    if (text.startsWith(u'"'))
        return text.mid(1, text.size() - 2);
    if (text.startsWith(u'#')) {
        const auto date = dateFromText(QStringView(text).mid(1, text.size() - 2));
        EXPECT_TRUE(date) << text.toStdString();
        return date.value_or(Date{});
    }
    if (text == QStringLiteral("Null"))
        return Variant::null();
    if (text == QStringLiteral("Empty"))
        return Variant();
    if (text == QStringLiteral("True") || text == QStringLiteral("False"))
        return text == QStringLiteral("True");
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    EXPECT_TRUE(isNumber) << text.toStdString();
    return number;
}

} // namespace

TEST(FormatManual, EveryExampleIsWhatTheProgramMakes)
{
    QFile manual(QStringLiteral(ZAN_DOCS "/format.md"));
    ASSERT_TRUE(manual.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(manual.readAll()).split(u'\n');
    bool isExample = false;
    int examples = 0;
    for (const QString& line : lines) {
        if (!line.startsWith(u'|')) {
            isExample = false;
            continue;
        }
        const QStringList cells = line.split(u'|');
        if (cells.size() == 5 && cells[1].trimmed() == QStringLiteral("value")) {
            isExample = true;
            continue;
        }
        if (!isExample || cells.value(1).contains(QStringLiteral("---")))
            continue;
        ASSERT_EQ(cells.size(), 5) << line.toStdString();
        ++examples;
        EXPECT_EQ(format(manualValue(cellText(cells[1])), cellText(cells[2])).toStdString(),
                  cellText(cells[3]).toStdString())
            << line.toStdString();
    }
    EXPECT_GT(examples, 60);
}

} // namespace zan::values
