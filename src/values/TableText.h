#pragma once

#include <QString>

namespace zan::values {

// Cells of tables for other programs: files of separated values, the clipboard.
//
// Spreadsheets take a cell that begins with =, +, -, @, a tab or a line end for a formula, whoever has written it: a label
// or a text that a logger sends could run there what it likes. Such a cell gets an apostrophe in front, which
// spreadsheets show as text. A number keeps its sign: what is a number as a whole is no formula.

/// The cell as a spreadsheet may see it, not yet quoted.
QString harmlessCell(const QString& text);
/// The same, quoted where it holds the separator, a quote or a line end, or begins or ends with a blank.
QString csvCell(const QString& text, QChar separator = u',');
/// For the clipboard, where tabs part cells and line ends part rows: neither stays inside a cell.
QString clipboardCell(const QString& text);
/// A number as short as it can be read back from; what is none (infinite, not a number) as a text.
QString csvNumber(double number);
QString csvNumber(float number);

} // namespace zan::values
