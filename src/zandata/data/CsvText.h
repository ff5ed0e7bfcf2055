#pragma once

#include <QString>

namespace zan::zandata {

// Tables for other programs: lines that end in CR LF, cells parted by commas, decimal points, UTF-8.
//
// Spreadsheets take a cell that begins with =, +, -, @, a tab or a line end for a formula, whoever has written it: a label
// or a text that a logger sends could run there what it likes. Such a cell gets an apostrophe in front, which
// spreadsheets show as text. A number keeps its sign: what is a number as a whole is no formula.

/// The cell as a spreadsheet may see it, not yet quoted.
QString harmlessCell(const QString& text);
/// The same, quoted where it holds a comma, a quote or a line end.
QString csvCell(const QString& text);
/// For the clipboard, where tabs part cells and line ends part rows: neither stays inside a cell.
QString clipboardCell(const QString& text);
/// As short as it can be read back from.
QString csvNumber(double number);

} // namespace zan::zandata
