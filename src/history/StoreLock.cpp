#include "history/StoreLock.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace zan::history {

StoreLock::StoreLock(const HistoryPlace& place, Database* database)
{
    if (database && database->isServer()) {
        m_isHeld = database->number("SELECT CASE WHEN pg_try_advisory_lock(hashtext('zan-history'), "
                                    "hashtext(current_schema()::text)) THEN 1 ELSE 0 END") == 1;
        return;
    }
    // A file of its own: the database has its own locks on the store, which would end with any other of this process.
    const QByteArray path = QFile::encodeName(place.file + QStringLiteral(".lock"));
    m_file = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0644);
    if (m_file < 0)
        throw StoreFailure{StoreFailure::Reason::Other,
                           QStringLiteral("nothing can be written in %1 (%2)")
                               .arg(QFileInfo(place.file).path(), QString::fromLocal8Bit(std::strerror(errno)))};
    m_isHeld = ::flock(m_file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

StoreLock::~StoreLock()
{
    if (m_file >= 0)
        ::close(m_file);
}

} // namespace zan::history
