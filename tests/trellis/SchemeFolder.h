#pragma once

#include "support/ChildProcess.h"
#include "support/ErrorOf.h"
#include "trellis/SchemeFile.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <string>

namespace zan::trellis {

using test::errorOf;
using test::inChild;

/// A folder of its own for every test, with a scheme file in it when the test writes one.
class SchemeFolder : public testing::Test
{
protected:
    QString at(const char* name = "weir.xml") const { return m_folder.filePath(QString::fromUtf8(name)); }

    static void write(const QString& path, const QByteArray& content)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(file.write(content), content.size());
    }
    static std::string read(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(no such file)";
    }
    /// Names of everything in the folder, hidden ones too, in order, with blanks between.
    std::string names() const
    {
        const QDir folder(m_folder.path());
        return folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name)
            .join(u' ')
            .toStdString();
    }
    /// Writes the text as a scheme file and opens it.
    Ref<SchemeFile> opened(const QByteArray& content, const char* name = "weir.xml") const
    {
        write(at(name), content);
        OpenResult result = SchemeFile::open(at(name));
        EXPECT_TRUE(result) << result.error.text().toStdString();
        return result.scheme;
    }
    QString folder() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder;
};

inline Variant key(const char* text)
{
    return Variant(QString::fromUtf8(text));
}

} // namespace zan::trellis
