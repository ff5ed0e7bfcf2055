#pragma once

#include "document/XmlText.h"
#include "trellis/DiskFile.h"
#include "trellis/StoredWindows.h"

namespace zan::trellis {

/// Why a scheme could not be opened, and where.
struct OpenError
{
    QString message; ///< what is wrong and what to do, in plain words, without the place
    QString file;    ///< full path
    int line = 0;    ///< from 1; 0 when no place in the file is to blame
    int column = 0;  ///< from 1; 0 with line

    /// "FILE:LINE:COLUMN: message", as editors understand it.
    QString text() const;
};

struct OpenResult;

/// A scheme kept in one XML file. The file is read once into a tree, the tree is edited in place, and Save
/// writes the whole of it; elements that the store does not know pass through untouched. A scheme stays bound
/// to its file until saveAs() gives it another.
class SchemeFile : public site::Scheme
{
public:
    /// Reads a scheme. Never throws and writes nothing.
    [[nodiscard]] static OpenResult open(const QString& path, const document::ParseLimits& limits = {}) noexcept;
    /// A new scheme without windows. The file comes into being with the first Save; a file of that name that
    /// is there by then counts as somebody else's.
    static Ref<SchemeFile> create(const QString& path, const QString& name = {});

    /// A scheme out of a text that was kept apart from its file: edits that were never saved. `base` is what the file
    /// held when they were made, so that a save sees whether somebody has changed it since.
    [[nodiscard]] static OpenResult fromText(const QString& path, const QByteArray& text,
                                             const FileStamp& base) noexcept;

    QString Name() const override;
    void setName(const QString& name) override;
    Ref<site::SchemeWindows> Windows() override { return m_windows; }

    /// Replaces the file, all or nothing, takes CHANGED away and keeps the former content as "FILE.bak".
    /// Writes nothing when the file holds just this already. Raises 57 (disk error), 61 (disk full), 75 (no
    /// permission, no plain file), 76 (no such folder), and DiskFile::ChangedOnDisk when somebody else has
    /// changed the file since it was read: the host then asks for saveOver() or saveAs(). On failure the
    /// file, its backup and CHANGED are as before.
    void Save() override;
    /// Save() that overwrites whatever the file holds by now; that becomes the backup.
    void saveOver();
    /// Saves under another name, overwriting a file of that name, and stays with the new one. Raises like
    /// Save(); the scheme then stays with its former file.
    void saveAs(const QString& path);

    /// True when the tree has been changed since it was read or saved.
    bool isChanged() const;
    /// True when the file holds something else than when it was read or saved. A missing file counts as
    /// unchanged.
    bool isChangedOnDisk() const;

    /// What the file held when it was read or saved.
    const FileStamp& stamp() const noexcept { return m_stamp; }
    /// What Save() would write now.
    QByteArray text() const;

    /// Full path of the file.
    const QString& path() const noexcept { return m_file.path(); }
    /// URI of the logger of the site; empty when the scheme names none.
    QString loggerUri() const;
    void setLoggerUri(const QString& uri);
    /// Where the history of the site is kept; empty when the scheme does not say.
    QString historyText() const;
    /// The whole tree.
    Node document() const { return m_document; }

    /// For open() and create(): takes over a document whose element is SCHEME.
    SchemeFile(DiskFile file, Node document, FileStamp stamp);

private:
    void store(const DiskFile& file, bool overwrite);

    DiskFile m_file;
    Node m_document;
    FileStamp m_stamp;
    Ref<StoredWindows> m_windows;
};

struct OpenResult
{
    Ref<SchemeFile> scheme; ///< empty when the file was refused
    OpenError error;
    explicit operator bool() const noexcept { return bool(scheme); }
};

} // namespace zan::trellis
