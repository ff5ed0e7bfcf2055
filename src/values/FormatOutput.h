#pragma once

#include "values/Calendar.h"
#include "values/Decimal.h"
#include "values/FormatPattern.h"

#include <QString>
#include <QVarLengthArray>

namespace zan::values {

/// Where the text of a formatted value grows: on the stack as long as it is short, so that the result is the
/// only allocation.
class FormatOutput
{
public:
    void put(char16_t unit) { m_units.append(unit); }
    void put(char unit) { m_units.append(char16_t(static_cast<unsigned char>(unit))); }
    void put(QStringView text) { m_units.append(text.utf16(), text.size()); }
    void fill(char16_t unit, std::int64_t count);
    /// A whole number with at least so many digits.
    void number(int value, int digits = 1);
    QString text() const { return QString(reinterpret_cast<const QChar*>(m_units.constData()), m_units.size()); }

private:
    QVarLengthArray<char16_t, 256> m_units;
};

/// Writes a number under a number section. `sign` asks for a minus sign before everything when the number is
/// negative and does not round to zero.
void putNumber(FormatOutput& output, const FormatSection& section, Decimal number, bool sign);

/// Writes a point in time under a date section. Raises 6 when it lies outside the calendar.
void putDate(FormatOutput& output, const FormatSection& section, Date date, int firstDay, int firstWeek);

/// Writes the parts of a point in time that there are, in their short forms: the date, the time, or both.
void putDateAndTime(FormatOutput& output, const CivilTime& time);

/// Writes a text under a text section.
void putText(FormatOutput& output, const FormatSection& section, const QString& text);

/// Writes nothing but the literals of a section.
void putLiterals(FormatOutput& output, const FormatSection& section);

} // namespace zan::values
