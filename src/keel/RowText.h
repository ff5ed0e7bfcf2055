#pragma once

#include <QString>

namespace zan::keel {

/// Takes a row apart: fields with commas between them, blanks and tabs around each of no account. A text in quotes keeps
/// its blanks and its commas; a quote in it is written twice.
class RowText
{
public:
    explicit RowText(const QString& line)
        : m_line(line)
    {}
    /// Goes on to the next field; false behind the last. Blanks and commas at the end of a row are no fields.
    bool next();
    /// Place of the field in the line, from 0: where something can be said of it.
    qsizetype start() const { return m_start; }
    /// Without blanks around it and without its quotes; tabs in it are blanks.
    const QString& text() const { return m_text; }
    /// What is wrong with the field; empty for nothing.
    const QString& problem() const { return m_problem; }

private:
    void takeQuoted();
    void takePlain();

    const QString& m_line;
    qsizetype m_place = 0;
    qsizetype m_start = 0;
    QString m_text;
    QString m_problem;
};

/// First place from `from` that holds neither a blank nor a tab; the size of the line for none.
qsizetype firstSolid(const QString& line, qsizetype from);
/// Where the letters and digits that begin at a place end.
qsizetype endOfWord(const QString& line, qsizetype from);
/// Whether a text is one decimal number: digits with a sign, a point and an exponent or without.
bool isDecimal(const QString& text);
/// As much of a text as a message should repeat.
QString shortened(const QString& text);

} // namespace zan::keel
