// What a program has left behind that ended without clearing up.

#include "ProgramFixture.h"

TEST_F(ProgramFixture, ABackgroundThatACrashHasLeftIsClearedAtTheNextStart)
{
    const QString folder = QStringLiteral(".cache/zanbench/backgrounds");
    const QString left = folder + QStringLiteral("/zanbench-a");
    ASSERT_TRUE(QDir(path(QString())).mkpath(left));
    for (const QString& entered : {folder, left})
        ASSERT_TRUE(QFile::setPermissions(path(entered), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    write(left + QStringLiteral("/lock"), "");
    write(left + QStringLiteral("/~3.BMP"), "BM");
    const Outcome outcome = run({"shot", schemePath(), "--offline", "--print"}, {"XDG_CACHE_HOME"});
    EXPECT_EQ(outcome.code, 0) << outcome.err.toStdString();
    EXPECT_TRUE(QDir(path(folder)).exists());
    EXPECT_FALSE(QDir(path(left)).exists());
}
