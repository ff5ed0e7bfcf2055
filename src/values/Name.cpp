#include "values/Name.h"

#include <QHash>

#include <deque>
#include <mutex>

namespace zan::values {

struct Name::Record
{
    QString text;
    const Record* folded; // itself when the text has no upper case
    const Record* local;  // itself when the text has no colon; null when nothing follows the colon
};

struct Name::Table
{
    std::mutex mutex;
    QHash<QString, const Record*> byText;
    std::deque<Record> records; // a deque never moves its elements

    const Record* intern(const QString& text)
    {
        if (const auto found = byText.constFind(text); found != byText.constEnd())
            return *found;
        const QString foldedText = text.toCaseFolded();
        const Record* folded = foldedText == text ? nullptr : intern(foldedText);
        const qsizetype colon = text.lastIndexOf(u':');
        const Record* local = colon < 0 || colon + 1 == text.size() ? nullptr : intern(text.mid(colon + 1));
        Record& record = records.emplace_back(Record{text, folded, local});
        if (!record.folded)
            record.folded = &record;
        if (colon < 0)
            record.local = &record;
        byText.insert(text, &record);
        return &record;
    }

    static Table& instance()
    {
        // Never destroyed: static member tables of other libraries hold names until the very end.
        static Table* table = new Table;
        return *table;
    }
};

Name::Name(QStringView text)
{
    if (text.isEmpty())
        return;
    Table& table = Table::instance();
    const std::lock_guard lock(table.mutex);
    m_record = table.intern(text.toString());
}

Name::Name(const char* latin1)
    : Name(QString::fromLatin1(latin1))
{}

const QString& Name::text() const noexcept
{
    static const QString empty;
    return m_record ? m_record->text : empty;
}

Name Name::folded() const noexcept
{
    return m_record ? Name(m_record->folded) : Name();
}

Name Name::localPart() const noexcept
{
    return m_record ? Name(m_record->local) : Name();
}

} // namespace zan::values
