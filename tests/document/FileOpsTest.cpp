#include "document/FileOps.h"
#include "document/StringOps.h"
#include "support/ErrorOf.h"
#include "values/RuntimeError.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace zan::document;
using zan::values::ErrorNumber;
using zan::values::RuntimeError;

using zan::test::errorOf;

namespace {

struct PathRow
{
    const char16_t* path;
    const char16_t* extension;
    const char16_t* title;
    const char16_t* name;
    const char16_t* folder;
};

const PathRow Paths[] = {
    {u"", u"", u"", u"", u""},
    {u"C:\\dir\\file.txt", u"txt", u"file", u"file.txt", u"C:\\dir\\"},
    {u"file.txt", u"txt", u"file", u"file.txt", u""},
    {u"file", u"", u"file", u"file", u""},
    {u"file.", u"", u"file", u"file", u""},
    {u"C:\\dir\\", u"", u"", u"", u"C:\\dir\\"},
    {u"C:\\dir\\file", u"", u"file", u"file", u"C:\\dir\\"},
    {u"a.tar.gz", u"gz", u"a.tar", u"a.tar.gz", u""},
    {u".hidden", u"hidden", u"", u"", u""},
    {u"C:\\dir\\.txt", u"txt", u"", u"", u"C:\\dir\\"},
    // The last dot of all counts, even in a folder's name.
    {u"C:\\a.b\\file", u"b\\file", u"", u"", u"C:\\a.b\\"},
    {u"/unix/path.txt", u"txt", u"/unix/path", u"/unix/path.txt", u""},
    {u"\tC:\\dir\\\tfile\t.\ttxt\t", u"txt", u"file", u"file.txt", u"C:\\dir\\"},
};

} // namespace

TEST(FileOps, TakesPathsApart)
{
    for (const PathRow& row : Paths) {
        const QString path = QString::fromUtf16(row.path);
        EXPECT_EQ(FileOps::GetFileExtension(path), QString::fromUtf16(row.extension)) << path.toStdString();
        EXPECT_EQ(FileOps::GetFileTitle(path), QString::fromUtf16(row.title)) << path.toStdString();
        EXPECT_EQ(FileOps::GetFileName(path), QString::fromUtf16(row.name)) << path.toStdString();
        EXPECT_EQ(FileOps::GetFilePath(path), QString::fromUtf16(row.folder)) << path.toStdString();
    }
}

TEST(FileOps, APartOfNothingButTabsRaises5)
{
    EXPECT_EQ(errorOf([] { FileOps::GetFileTitle(QStringLiteral("C:\\\t.txt")); }), 5);
    EXPECT_EQ(errorOf([] { FileOps::GetFileExtension(QStringLiteral("file.\t")); }), 5);
}

TEST(FileOps, AFileIsFoundWithQuotesAnywhereInItsName)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("a b.txt")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QString path = file.fileName();
    EXPECT_TRUE(FileOps::FileExists(path));
    EXPECT_TRUE(FileOps::FileExists(u'"' + path + u'"'));
    EXPECT_TRUE(FileOps::FileExists(QString(path).insert(5, u'"')));
    EXPECT_TRUE(FileOps::FileExists(QString(path).replace(u'/', u'\\')));
    EXPECT_FALSE(FileOps::FileExists(path + u'x'));
    EXPECT_FALSE(FileOps::FileExists(folder.path())) << "a folder is no file";
}

TEST(FileOps, ANameThatCannotBeAFileIsNotFound)
{
    EXPECT_FALSE(FileOps::FileExists(QString()));
    EXPECT_FALSE(FileOps::FileExists(QStringLiteral("\"\"")));
    EXPECT_FALSE(FileOps::FileExists(QStringLiteral("/tmp") + QChar(0) + QStringLiteral("x")));
    EXPECT_FALSE(FileOps::FileExists(QString(100'000, u'x')));
}

TEST(StringOps, TrimTabsTakesTabsAloneAndFromTheEndsAlone)
{
    EXPECT_EQ(StringOps::TrimTabs(QStringLiteral("\t\t a\tb \t")), u" a\tb ");
    EXPECT_EQ(StringOps::TrimTabs(QStringLiteral("\n\ta\t\n")), u"\n\ta\t\n");
    EXPECT_EQ(StringOps::TrimTabs(QString()), u"");
}

TEST(StringOps, TrimTabsOfNothingButTabsRaises5)
{
    EXPECT_EQ(errorOf([] { StringOps::TrimTabs(QStringLiteral("\t")); }), int(ErrorNumber::InvalidCall));
    EXPECT_EQ(errorOf([] { StringOps::TrimTabs(QStringLiteral("\t\t\t")); }), int(ErrorNumber::InvalidCall));
}

TEST(StringOps, TrimWhitespaceTakesTheFourBlanksAndNeverRaises)
{
    EXPECT_EQ(StringOps::TrimWhitespace(QStringLiteral(" \t\r\na b\n \t")), u"a b");
    EXPECT_EQ(StringOps::TrimWhitespace(QStringLiteral(" \t\r\n")), u"");
    EXPECT_EQ(StringOps::TrimWhitespace(QString()), u"");
    EXPECT_EQ(StringOps::TrimWhitespace(QStringLiteral("\u00A0x\v")), u"\u00A0x\v") << "other blanks stay";
}
