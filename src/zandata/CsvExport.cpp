#include "zandata/CsvExport.h"

#include "values/Convert.h"
#include "values/Failure.h"
#include "values/TableText.h"

#include <cmath>

namespace zan::zandata {

namespace {

constexpr std::int64_t CellsPerStep = 20'000;

QString plainText(const Variant& value)
{
    if (value.kind() == values::Kind::Empty || value.kind() == values::Kind::Null)
        return {};
    double number = 0;
    const bool isNumber = !value.isText() && !value.isObject() && !value.isArray() &&
                          value.kind() != values::Kind::Boolean && value.kind() != values::Kind::Date &&
                          values::tryToDouble(value, number) == values::ErrorNumber::None;
    if (isNumber)
        return std::isfinite(number) ? values::csvNumber(number) : QString();
    QString text;
    if (!values::attempt([&] { text = values::toText(value); }))
        return {};
    return values::csvCell(text);
}

} // namespace

CsvExport::CsvExport(RecordRows rows, const QString& file)
    : m_rows(std::move(rows))
    , m_file(file)
{
    if (!m_file.open(QIODevice::WriteOnly)) {
        fail();
        return;
    }
    if (m_file.write(header()) < 0)
        fail();
}

void CsvExport::fail()
{
    m_error = m_file.errorString();
    m_file.cancelWriting();
    m_hasEnded = true;
}

void CsvExport::cancel()
{
    if (m_hasEnded)
        return;
    m_file.cancelWriting();
    m_hasEnded = true;
}

QByteArray CsvExport::header() const
{
    QString line = QStringLiteral("Time");
    for (const site::HistorySeries& series : m_rows.columns())
        line += QLatin1Char(',') + values::csvCell(series.units.isEmpty() ? series.label
                                                                          : series.label + QLatin1String(" (") +
                                                                                series.units + QLatin1Char(')'));
    return (line + QLatin1String("\r\n")).toUtf8();
}

void CsvExport::append(QByteArray& text, const site::HistoryRow& row)
{
    // Records that land late move those behind them while the file is written: none is written twice.
    if (row.time <= m_lastTime)
        return;
    m_lastTime = row.time;
    QString line = timeText(row.time);
    for (const Variant& cell : row.cells)
        line += QLatin1Char(',') + plainText(cell);
    text += (line + QLatin1String("\r\n")).toUtf8();
}

bool CsvExport::step()
{
    if (m_hasEnded)
        return false;
    const std::int64_t rows = std::max<std::int64_t>(CellsPerStep / std::int64_t(m_rows.columns().size() + 1), 1);
    QByteArray text;
    for (const std::int64_t end = std::min(m_next + rows, count()); m_next < end; ++m_next) {
        if (const site::HistoryRow* row = m_rows.readRow(m_next)) {
            append(text, *row);
            continue;
        }
        m_error = QStringLiteral("The stored records cannot be read.");
        cancel();
        return false;
    }
    if (m_file.write(text) < 0) {
        fail();
        return false;
    }
    if (m_next < count())
        return true;
    m_hasEnded = true;
    m_isWell = m_file.commit();
    if (!m_isWell)
        m_error = m_file.errorString();
    return false;
}

} // namespace zan::zandata
