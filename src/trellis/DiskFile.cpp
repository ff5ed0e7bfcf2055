#include "trellis/DiskFile.h"

#include "trellis/FileDescriptor.h"
#include "trellis/FileReplacement.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>

namespace zan::trellis {

namespace {

constexpr std::int64_t StampLimit = std::int64_t(1) << 30; // a file larger than this is none of ours

/// Reads up to one byte more than the maximum, so that a file which grows meanwhile is noticed.
int readAll(const FileDescriptor& file, std::int64_t size, std::int64_t maximum, QByteArray& bytes)
{
    bytes.resize(qsizetype(std::min(size, maximum)) + 1);
    qsizetype filled = 0;
    for (;;) {
        const ssize_t count = ::read(file.number(), bytes.data() + filled, std::size_t(bytes.size() - filled));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return errno;
        filled += qsizetype(count);
        if (count == 0 || filled > maximum)
            break;
        if (filled == bytes.size())
            bytes.resize(qsizetype(std::min<std::int64_t>(bytes.size() * std::int64_t(2), maximum + 1)));
    }
    bytes.truncate(filled);
    return 0;
}

} // namespace

FileStamp FileStamp::of(const QByteArray& content)
{
    // Four sums run over the text eight bytes each at a time, so that none waits for another one's product; each is
    // mixed so that every bit goes on into all its later steps.
    constexpr std::uint64_t Odd = 0x9E3779B97F4A7C15u;
    const auto mixed = [](std::uint64_t sum, std::uint64_t bytes, std::uint64_t factor) {
        sum = (sum ^ bytes) * factor;
        return sum ^ (sum >> 32);
    };
    std::uint64_t sums[4] = {0x243F6A8885A308D3u, 0x13198A2E03707344u, 0xA4093822299F31D0u, 0x082EFA98EC4E6C89u};
    const auto take = [&](const char* from, std::size_t count) {
        std::uint64_t bytes[4] = {};
        std::memcpy(bytes, from, count);
        for (int sum = 0; sum < 4; ++sum)
            sums[sum] = mixed(sums[sum], bytes[sum], Odd);
    };
    const char* at = content.constData();
    const char* const end = at + content.size();
    for (; end - at >= qsizetype(sizeof sums); at += sizeof sums)
        take(at, sizeof sums);
    take(at, std::size_t(end - at));
    FileStamp stamp{content.size(), {0x452821E638D01377u, 0xBE5466CF34E90C6Cu}};
    for (const std::uint64_t sum : sums) {
        stamp.hash[0] = mixed(stamp.hash[0], sum, Odd);
        stamp.hash[1] = mixed(std::rotl(stamp.hash[1], 27), sum, 0xD6E8FEB86659FD93u);
    }
    return stamp;
}

DiskFile::DiskFile(const QString& path)
    : m_path(path.isEmpty() ? path : QDir::cleanPath(QFileInfo(path).absoluteFilePath()))
{}

bool DiskFile::Content::exists() const noexcept
{
    return error != ENOENT && error != ENOTDIR;
}

DiskFile::Content DiskFile::read(std::int64_t maximum) const
{
    // A pipe or a device must neither block the opening nor feed us without end.
    const FileDescriptor file(::open(QFile::encodeName(m_path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file)
        return {{}, errno};
    struct stat status = {};
    if (::fstat(file.number(), &status) != 0)
        return {{}, errno};
    if (!S_ISREG(status.st_mode))
        return {{}, S_ISDIR(status.st_mode) ? EISDIR : EINVAL};
    if (status.st_size > maximum)
        return {{}, 0, true};
    Content content;
    content.error = readAll(file, status.st_size, maximum, content.bytes);
    content.tooLarge = content.bytes.size() > maximum;
    if (content.error != 0 || content.tooLarge)
        content.bytes.clear();
    return content;
}

FileStamp DiskFile::stamp() const
{
    const Content content = read(StampLimit);
    if (!content.exists())
        return {};
    if (content.error != 0 || content.tooLarge)
        return {std::numeric_limits<std::int64_t>::max(), {}};
    return FileStamp::of(content.bytes);
}

bool DiskFile::canBeReplaced() const
{
    return FileReplacement::hasRoomFor(*this);
}

void DiskFile::replace(const QByteArray& bytes, const std::optional<FileStamp>& expected) const
{
    FileReplacement replacement(*this);
    if (expected) {
        const FileStamp present = stamp();
        if (present.size >= 0 && present != *expected)
            replacement.refuse();
    }
    replacement.write(bytes);
    replacement.commit();
}

QString reasonText(int systemError)
{
    switch (systemError) {
    case ENOSPC:
    case EDQUOT:
        return QStringLiteral("the disk is full");
    case EFBIG:
        return QStringLiteral("the file would be larger than the system allows");
    case EACCES:
    case EPERM:
        return QStringLiteral("permission denied");
    case EROFS:
        return QStringLiteral("the disk is read-only");
    case ENOENT:
        return QStringLiteral("there is no such file or folder");
    case ENOTDIR:
        return QStringLiteral("part of the path is not a folder");
    case ELOOP:
        return QStringLiteral("its symbolic links lead in a circle");
    case ENAMETOOLONG:
        return QStringLiteral("the name is too long");
    case EISDIR:
        return QStringLiteral("it is a folder");
    case EINVAL:
        return QStringLiteral("it is not a plain file");
    case EIO:
        return QStringLiteral("the disk reports an error");
    case EMFILE:
    case ENFILE:
        return QStringLiteral("too many files are open");
    default:
        return qt_error_string(systemError);
    }
}

} // namespace zan::trellis
