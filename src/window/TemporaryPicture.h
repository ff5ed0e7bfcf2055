#pragma once

#include <QFile>
#include <QImage>
#include <QString>

#include <memory>

namespace zan::window {

/// A picture in a bitmap file that only its user may read, in a folder that only he may enter.
///
/// Each picture has a folder of its own, with a lock beside it that its program holds for as long as it lives: what a
/// program has left that ended without clearing up is known by its lock, which nobody holds, and is cleared at the next
/// start. The folders lie in the user's cache.
class TemporaryPicture
{
public:
    /// Writes the picture under this name. Null when it cannot be written; nothing is left then.
    static std::unique_ptr<TemporaryPicture> write(const QImage& image, const QString& name);
    /// Takes the file and its folder away, unless it was left.
    ~TemporaryPicture();
    TemporaryPicture(const TemporaryPicture&) = delete;
    TemporaryPicture& operator=(const TemporaryPicture&) = delete;

    /// Full path.
    QString file() const;
    /// From now on the file is somebody else's: nobody clears it away.
    void leave();

    /// Where the pictures of this user lie; nothing needs to be there.
    static QString userFolder();
    /// Takes the pictures of programs away that do not live any more.
    static void clearAbandoned();

private:
    explicit TemporaryPicture(const QString& folder);
    bool lock();
    bool save(const QImage& image, const QString& name);

    QString m_folder;
    QString m_name;
    QFile m_lock;
    bool m_isLeft = false;
};

} // namespace zan::window
