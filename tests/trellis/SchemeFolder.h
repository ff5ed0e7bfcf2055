#pragma once

#include "support/ErrorOf.h"
#include "trellis/SchemeFile.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace zan::trellis {

using test::errorOf;

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

/// Runs the function in a process of its own, without the rights of the superuser when asked; gives back what it
/// returns (0 to 255), or a negative number when it died.
inline int inChild(const std::function<int()>& function, bool unprivileged = false)
{
    const pid_t child = fork();
    if (child == 0) {
        constexpr uid_t Nobody = 65534;
        if (unprivileged && geteuid() == 0 && (setgid(Nobody) != 0 || setuid(Nobody) != 0))
            _exit(255);
        _exit(function());
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status);
}

inline Variant key(const char* text)
{
    return Variant(QString::fromUtf8(text));
}

} // namespace zan::trellis
