#pragma once

#include "zandata/data/RecordRows.h"

#include <QSaveFile>
#include <QString>

namespace zan::zandata {

/// Writes all rows of a table into a file, the oldest first: the time, then the values as plain numbers or texts. It goes
/// step by step, so that its owner can show how far it is and stop it; the file is there whole at the end, or not at all
/// and an older one of the name is untouched.
class CsvExport
{
public:
    /// The rows of this moment: those that come later are not written.
    CsvExport(RecordRows rows, const QString& file);

    /// Writes a few thousand cells more. False when it has ended, well or not.
    bool step();
    /// Gives up: the file is not written.
    void cancel();
    std::int64_t written() const noexcept { return m_next; }
    std::int64_t count() const noexcept { return m_rows.count(); }
    bool isWell() const noexcept { return m_isWell; } ///< the file is written
    /// What went wrong; empty for nothing.
    const QString& error() const noexcept { return m_error; }

private:
    void fail();
    QByteArray header() const;
    void append(QByteArray& text, const site::HistoryRow& row);

    RecordRows m_rows;
    QSaveFile m_file;
    std::int64_t m_next = 0; // place of the row that is due
    HistoryTime m_lastTime = EarliestTime - 1;
    QString m_error;
    bool m_hasEnded = false;
    bool m_isWell = false;
};

} // namespace zan::zandata
