#include "trellis/SchemeFile.h"

#include "trellis/ElementText.h"
#include "trellis/Elements.h"
#include "values/Convert.h"

#include <cerrno>
#include <new>

namespace zan::trellis {

namespace {

const QString TooLargeForMemory = QStringLiteral("The file is too large for the memory of this machine.");

/// Takes every CHANGED out of the tree for the time of a save and puts it back unless the save has succeeded.
class WithoutChanged
{
public:
    explicit WithoutChanged(const Node& root)
        : m_root(root)
        , m_changed(root.children(element::Changed))
    {
        for (const Node& changed : m_changed)
            m_root.removeChild(changed);
    }
    ~WithoutChanged()
    {
        for (const Node& changed : m_changed)
            m_root.appendChild(changed);
    }
    WithoutChanged(const WithoutChanged&) = delete;
    WithoutChanged& operator=(const WithoutChanged&) = delete;
    void forget() { m_changed.clear(); }

private:
    Node m_root;
    std::vector<Node> m_changed;
};

OpenResult refused(const QString& file, const QString& message, int line = 0, int column = 0)
{
    return {{}, {message, file, line, column}};
}

QString megabytes(std::int64_t bytes)
{
    return QStringLiteral("%1 MB").arg(double(bytes) / (1024 * 1024), 0, 'f', 1);
}

/// Refuses a document of something else, with the place of its first element where the text shows it.
OpenResult refuseRoot(const QString& file, const QByteArray& bytes, const QString& root)
{
    const qsizetype place = bytes.indexOf('<' + root.toUtf8());
    const QByteArray before = bytes.left(std::max<qsizetype>(place, 0));
    const int line = place < 0 ? 0 : int(before.count('\n')) + 1;
    const int column = place < 0 ? 0 : int(QString::fromUtf8(before.mid(before.lastIndexOf('\n') + 1)).size()) + 1;
    return refused(
        file,
        QStringLiteral("This is no scheme: its document element is %1, not SCHEME. Choose another file.").arg(root),
        line, column);
}

OpenResult parseScheme(const DiskFile& file, const QByteArray& bytes, const FileStamp& stamp,
                       const document::ParseLimits& limits)
{
    const document::ParseResult parsed = document::parseXml(bytes, limits);
    if (!parsed)
        return refused(file.path(), parsed.error.message, parsed.error.line, parsed.error.column);
    const document::Name root = parsed.document.documentElement().name();
    if (root != element::Scheme)
        return refuseRoot(file.path(), bytes, root.text());
    return {values::make<SchemeFile>(file, parsed.document, stamp), {}};
}

OpenResult openFile(const QString& path, const document::ParseLimits& limits)
{
    const DiskFile file(path);
    if (path.isEmpty())
        return refused(path, QStringLiteral("No file was named."));
    if (!file.canBeReplaced())
        return refused(
            file.path(),
            QStringLiteral(
                "The file's name is too long: it could be read, but never saved. Give it a shorter one."));
    const DiskFile::Content content = file.read(limits.bytes);
    if (content.error != 0)
        return refused(file.path(), QStringLiteral("The file cannot be read: %1.").arg(reasonText(content.error)));
    if (content.tooLarge)
        return refused(
            file.path(),
            QStringLiteral("The file is larger than a scheme may be (%1).").arg(megabytes(limits.bytes)));
    return parseScheme(file, content.bytes, FileStamp::of(content.bytes), limits);
}

} // namespace

QString OpenError::text() const
{
    if (line > 0)
        return QStringLiteral("%1:%2:%3: %4").arg(file).arg(line).arg(column).arg(message);
    return file.isEmpty() ? message : QStringLiteral("%1: %2").arg(file, message);
}

SchemeFile::SchemeFile(DiskFile file, Node document, FileStamp stamp)
    : m_file(std::move(file))
    , m_document(std::move(document))
    , m_stamp(std::move(stamp))
    , m_windows(values::make<StoredWindows>(m_document.documentElement()))
{}

OpenResult SchemeFile::open(const QString& path, const document::ParseLimits& limits) noexcept
{
    try {
        return openFile(path, limits);
    } catch (const std::bad_alloc&) {
        return refused(path, TooLargeForMemory);
    }
}

OpenResult SchemeFile::fromText(const QString& path, const QByteArray& text, const FileStamp& base) noexcept
{
    try {
        return parseScheme(DiskFile(path), text, base, {});
    } catch (const std::bad_alloc&) {
        return refused(path, TooLargeForMemory);
    }
}

QByteArray SchemeFile::text() const
{
    const WithoutChanged saving(m_document.documentElement());
    return document::toXml(m_document);
}

Ref<SchemeFile> SchemeFile::create(const QString& path, const QString& name)
{
    Node document = Node::newDocument();
    Node root = document.createElement(element::Scheme);
    document.appendChild(root);
    root.appendChild(root.createElement(element::SchemeName, name));
    root.appendChild(root.createElement(element::Logger));
    return values::make<SchemeFile>(DiskFile(path), document, FileStamp());
}

QString SchemeFile::Name() const
{
    return m_document.documentElement().child(element::SchemeName).text();
}

void SchemeFile::setName(const QString& name)
{
    writeText(m_document.documentElement(), element::SchemeName, name);
}

QString SchemeFile::loggerUri() const
{
    return m_document.documentElement().child(element::Logger).text();
}

void SchemeFile::setLoggerUri(const QString& uri)
{
    writeText(m_document.documentElement(), element::Logger, uri);
}

QString SchemeFile::historyText() const
{
    return m_document.documentElement().child(element::History).text();
}

void SchemeFile::Save()
{
    store(m_file, false);
}

void SchemeFile::saveOver()
{
    store(m_file, true);
}

void SchemeFile::saveAs(const QString& path)
{
    const DiskFile file(path);
    store(file, true);
    m_file = file;
}

bool SchemeFile::isChanged() const
{
    for (const Node& changed : m_document.documentElement().children(element::Changed))
        if (values::val(changed.text()) != 0)
            return true;
    return false;
}

bool SchemeFile::isChangedOnDisk() const
{
    const FileStamp present = m_file.stamp();
    return present.size >= 0 && present != m_stamp;
}

void SchemeFile::store(const DiskFile& file, bool overwrite)
{
    if (m_document.documentElement().name() != element::Scheme)
        values::raise(
            values::ErrorNumber::InvalidCall,
            QStringLiteral("The scheme has lost its document element and cannot be saved. The file is as it "
                           "was; open it again."));
    WithoutChanged saving(m_document.documentElement());
    const QByteArray bytes = document::toXml(m_document);
    if (bytes.size() > document::ParseLimits().bytes)
        values::raise(
            values::ErrorNumber::InvalidCall,
            QStringLiteral("The scheme has grown to %1, more than can be read again, and has not been saved. "
                           "Remove windows or long texts.")
                .arg(megabytes(bytes.size())));
    const FileStamp stamp = FileStamp::of(bytes);
    try {
        if (stamp != m_stamp || file.stamp() != stamp)
            file.replace(bytes, overwrite ? std::nullopt : std::optional(m_stamp));
    } catch (const values::RuntimeError&) {
        if (file.path() == m_file.path() && file.stamp() == stamp)
            m_stamp = stamp; // written, though not safely: what lies there is ours
        throw;
    }
    m_stamp = stamp;
    saving.forget();
}

} // namespace zan::trellis
