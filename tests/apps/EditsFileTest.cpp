#include "HostFixture.h"

#include "zanbench/EditsFile.h"

#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

using namespace zan::host;
using zan::trellis::FileStamp;

class EditsFileTest : public HostTest
{
protected:
    static constexpr const char* Beside = ".site.scheme.edits";

    EditsPlace place() const { return {schemePath(), path("own")}; }
    KeptEdits edits(const QByteArray& content = "<SCHEME/>") const
    {
        return {schemePath(), QDateTime::fromString("2026-11-21T14:03:12.500Z", Qt::ISODateWithMs),
                FileStamp::of(read("site.scheme")), content};
    }
    /// As a program leaves it that was killed.
    void leave(const QByteArray& content = "<SCHEME/>") const
    {
        EXPECT_EQ(EditsFile(place()).write(edits(content)), "");
    }
    QString problemOfOnly() const
    {
        const std::vector<FoundEdits> found = findEdits(place());
        EXPECT_EQ(found.size(), 1U);
        EXPECT_EQ(found.at(0).state, FoundEdits::State::Refused);
        return found.at(0).problem;
    }
};

TEST_F(EditsFileTest, WhatWasKeptIsFoundAsItWas)
{
    const QByteArray content = "<SCHEME>\n\n\xc3\xa9</SCHEME>";
    leave(content);
    const std::vector<FoundEdits> found = findEdits(place());
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].state, FoundEdits::State::Usable);
    EXPECT_EQ(found[0].file, path(Beside));
    EXPECT_EQ(found[0].edits.content, content);
    EXPECT_EQ(found[0].edits.time, edits().time);
    EXPECT_EQ(found[0].edits.base, edits().base);
}

TEST_F(EditsFileTest, TheFileIsTheUsersAlone)
{
    const mode_t former = ::umask(0);
    EditsFile file(place());
    EXPECT_EQ(file.write(edits()), "");
    EXPECT_EQ(file.write(edits("<SCHEME>2</SCHEME>")), "");
    ::umask(former);
    EXPECT_EQ(QFileInfo(path(Beside)).permissions() & QFile::Permissions(0x0077), QFile::Permissions());
}

TEST_F(EditsFileTest, WhatAProgramThatRunsKeepsIsItsOwn)
{
    EditsFile first(place());
    EXPECT_EQ(first.write(edits("<SCHEME>1</SCHEME>")), "");
    const std::vector<FoundEdits> found = findEdits(place());
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].state, FoundEdits::State::InUse);

    EditsFile second(place());
    EXPECT_EQ(second.write(edits("<SCHEME>2</SCHEME>")), "");
    EXPECT_NE(second.file(), first.file());
    second.drop();
    EXPECT_TRUE(read(Beside).endsWith("<SCHEME>1</SCHEME>"));
}

TEST_F(EditsFileTest, WhatIsFoundIsTakenUpByOneAlone)
{
    leave();
    const std::vector<FoundEdits> held = findEdits(place());
    ASSERT_EQ(held.at(0).state, FoundEdits::State::Usable);
    EXPECT_EQ(findEdits(place()).at(0).state, FoundEdits::State::InUse);
}

TEST_F(EditsFileTest, TheLatestComesFirst)
{
    EditsFile early(place()), late(place());
    EXPECT_EQ(early.write(edits("<SCHEME>early</SCHEME>")), "");
    KeptEdits later = edits("<SCHEME>late</SCHEME>");
    later.time = later.time.addSecs(1);
    EXPECT_EQ(late.write(later), "");
    early = EditsFile(place());
    late = EditsFile(place());
    const std::vector<FoundEdits> found = findEdits(place());
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].edits.content, "<SCHEME>late</SCHEME>");
}

TEST_F(EditsFileTest, AFileThatIsDamagedIsToldAndStays)
{
    leave("<SCHEME>some text</SCHEME>");
    const QByteArray whole = read(Beside);
    for (qsizetype size = 1; size < whole.size(); ++size) {
        write(Beside, whole.left(size));
        EXPECT_NE(problemOfOnly(), "") << size;
    }
    for (qsizetype place = 0; place < whole.size(); ++place) {
        QByteArray flipped = whole;
        flipped[place] = char(flipped[place] ^ 1);
        write(Beside, flipped);
        const std::vector<FoundEdits> found = findEdits(this->place());
        ASSERT_EQ(found.size(), 1U);
        // The words of the head stand for themselves; what they say of the scheme is checked.
        if (place >= whole.indexOf("\n\n")) {
            EXPECT_EQ(found[0].state, FoundEdits::State::Refused) << place;
        }
    }
    write(Beside, whole + ' ');
    EXPECT_EQ(problemOfOnly(), "it is damaged");
    write(Beside, "rubbish");
    EXPECT_EQ(problemOfOnly(), "it was not written by this program");
    EXPECT_EQ(read(Beside), "rubbish");
}

TEST_F(EditsFileTest, EditsOfAnotherSchemeAreNotOurs)
{
    leave();
    write("other.scheme", "<SCHEME/>");
    ASSERT_TRUE(QFile::rename(path(Beside), path(".other.scheme.edits")));
    const std::vector<FoundEdits> found = findEdits({path("other.scheme"), path("own")});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].problem, "it belongs to another scheme");
}

TEST_F(EditsFileTest, EditsGoWithTheirFolder)
{
    leave();
    QDir(m_folder.path()).mkdir("moved");
    ASSERT_TRUE(QFile::rename(path("site.scheme"), path("moved/site.scheme")));
    ASSERT_TRUE(QFile::rename(path(Beside), path(QStringLiteral("moved/") + Beside)));
    const std::vector<FoundEdits> found = findEdits({path("moved/site.scheme"), path("own")});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].state, FoundEdits::State::Usable);
}

TEST_F(EditsFileTest, LinksAreNeitherReadNorWrittenThrough)
{
    leave();
    ASSERT_TRUE(QFile::rename(path(Beside), path("elsewhere")));
    const QByteArray before = read("elsewhere");
    ASSERT_TRUE(QFile::link(path("elsewhere"), path(Beside)));
    EXPECT_EQ(problemOfOnly(), "it is a link");

    EditsFile file(place());
    EXPECT_EQ(file.write(edits("<SCHEME>new</SCHEME>")), "");
    EXPECT_NE(file.file(), path(Beside));
    EXPECT_EQ(read("elsewhere"), before);

    QFile::remove(path(Beside));
    ASSERT_EQ(::link(path("elsewhere").toUtf8().constData(), path(Beside).toUtf8().constData()), 0);
    EXPECT_EQ(findEdits(place()).at(0).problem, "it is no plain file") << "it has another name";
}

TEST_F(EditsFileTest, AFolderOrAPipeOfTheNameIsNeitherReadNorWaitedFor)
{
    QDir(m_folder.path()).mkdir(Beside);
    EXPECT_EQ(problemOfOnly(), "it is no plain file");
    QDir(m_folder.path()).rmdir(Beside);
    ASSERT_EQ(::mkfifo(path(Beside).toUtf8().constData(), 0600), 0);
    EXPECT_EQ(problemOfOnly(), "it is no plain file");
}

TEST_F(EditsFileTest, APlantedLinkForThePartIsNotWrittenThrough)
{
    write("victim", "untouched");
    ASSERT_TRUE(QFile::link(path("victim"), path(QStringLiteral("%1.part").arg(Beside))));
    leave();
    EXPECT_EQ(read("victim"), "untouched");
    EXPECT_EQ(findEdits(place()).at(0).state, FoundEdits::State::Usable);
}

TEST_F(EditsFileTest, WhereNothingCanBeWrittenBesideTheSchemeTheUsersOwnFolderHasIt)
{
    for (const char* name : {"", "-2", "-3", "-4", "-5"})
        QDir(m_folder.path()).mkdir(QStringLiteral("%1%2").arg(Beside, QLatin1String(name)));
    leave();
    const QFileInfoList own = QDir(path("own")).entryInfoList(QDir::Files | QDir::Hidden);
    ASSERT_EQ(own.size(), 1);
    EXPECT_EQ(QFileInfo(path("own")).permissions() & QFile::Permissions(0x0077), QFile::Permissions());
    const std::vector<FoundEdits> found = findEdits(place());
    EXPECT_EQ(found.at(0).state, FoundEdits::State::Usable);
    EXPECT_EQ(found.at(0).file, own[0].filePath());
}

TEST_F(EditsFileTest, AFolderThatMayNotBeWrittenToIsNoObstacle)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "nothing is refused to this user";
    QDir(m_folder.path()).mkdir("locked");
    ASSERT_TRUE(QFile::copy(schemePath(), path("locked/site.scheme")));
    QFile::setPermissions(path("locked"), QFile::ReadOwner | QFile::ExeOwner);
    EditsFile file({path("locked/site.scheme"), path("own")});
    EXPECT_EQ(file.write(edits()), "");
    QFile::setPermissions(path("locked"), QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner);
    EXPECT_TRUE(file.file().startsWith(path("own")));
}

TEST_F(EditsFileTest, WhereNothingCanBeWrittenAtAllIsSaidAndTheFormerEditsStay)
{
    EditsFile file({path("nowhere/site.scheme"), path("site.scheme/own")});
    EXPECT_NE(file.write(edits()), "");
    EXPECT_EQ(file.file(), "");
}

TEST_F(EditsFileTest, AFileThatSomebodyTookAwayIsWrittenAnewAndNobodyElsesIsDropped)
{
    EditsFile file(place());
    EXPECT_EQ(file.write(edits()), "");
    QFile::remove(path(Beside));
    write(Beside, "theirs");
    EXPECT_EQ(file.write(edits("<SCHEME>again</SCHEME>")), "");
    EXPECT_NE(file.file(), path(Beside));
    EXPECT_EQ(read(Beside), "theirs");
    file.drop();
    EXPECT_EQ(read(Beside), "theirs");
}

TEST_F(EditsFileTest, AnEmptyFileOfAProgramThatEndedBeforeItsFirstEditGoes)
{
    write(Beside, "");
    EXPECT_TRUE(findEdits(place()).empty());
    EXPECT_FALSE(QFile::exists(path(Beside)));
}
