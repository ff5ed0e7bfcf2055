#include "trellis/DiskFile.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>

namespace zan::trellis {
namespace {

using Hash = std::pair<std::uint64_t, std::uint64_t>;

Hash hashOf(const QByteArray& content)
{
    const FileStamp stamp = FileStamp::of(content);
    return {stamp.hash[0], stamp.hash[1]};
}

/// A hundred different bytes: three whole steps of the sum and a rest.
QByteArray someContent()
{
    QByteArray content(100, '\0');
    for (qsizetype i = 0; i < content.size(); ++i)
        content[i] = char(i + 1);
    return content;
}

TEST(FileStamp, EveryByteOfTheFileCounts)
{
    std::set<Hash> hashes{hashOf(someContent())};
    for (qsizetype place = 0; place < someContent().size(); ++place) {
        for (int bit = 0; bit < 8; ++bit) {
            QByteArray content = someContent();
            content[place] = char(content[place] ^ (1 << bit));
            EXPECT_TRUE(hashes.insert(hashOf(content)).second) << "bit " << bit << " of byte " << place;
        }
    }
}

TEST(FileStamp, TheOrderOfWhatTheFileHoldsCounts)
{
    std::set<Hash> hashes{hashOf(someContent())};
    for (const qsizetype size : {1, 8, 16, 32}) {
        for (qsizetype first = 0; first + size <= 96; first += size) {
            for (qsizetype second = first + size; second + size <= 96; second += size) {
                QByteArray content = someContent();
                content.replace(first, size, someContent().mid(second, size));
                content.replace(second, size, someContent().mid(first, size));
                EXPECT_TRUE(hashes.insert(hashOf(content)).second)
                    << size << " bytes of " << first << " and " << second;
            }
        }
    }
}

TEST(FileStamp, ZerosAtTheEndCount)
{
    std::set<std::pair<std::int64_t, Hash>> stamps;
    QByteArray content = someContent();
    for (int zeros = 0; zeros < 40; ++zeros, content += '\0')
        EXPECT_TRUE(stamps.insert({FileStamp::of(content).size, hashOf(content)}).second);
    EXPECT_NE(FileStamp::of(content), FileStamp::of(content + '\0'));
}

TEST(FileStamp, EqualFilesHaveEqualStamps)
{
    EXPECT_EQ(FileStamp::of(someContent()), FileStamp::of(someContent()));
    EXPECT_EQ(FileStamp::of({}), FileStamp::of({}));
}

} // namespace
} // namespace zan::trellis
