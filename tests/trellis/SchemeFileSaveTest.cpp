#include "SchemeFolder.h"

#include "document/XMLOps.h"

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>

namespace zan::trellis {

namespace {

const QByteArray First = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                         "<SCHEME>\n"
                         "  <NAME>First</NAME>\n"
                         "</SCHEME>\n";

std::string named(const char* name)
{
    return QByteArray(First).replace("First", name).toStdString();
}

QByteArray encoded(const QString& path)
{
    return QFile::encodeName(path);
}

mode_t modeOf(const QString& path)
{
    struct stat status = {};
    return ::stat(encoded(path).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
}

std::string attributeOf(const QString& path, const char* name)
{
    char value[256];
    const ssize_t length = ::getxattr(encoded(path).constData(), name, value, sizeof value);
    return length < 0 ? "none" : QByteArray(value, qsizetype(length)).toHex().toStdString();
}

bool setAttribute(const QString& path, const char* name, const QByteArray& value)
{
    return ::setxattr(encoded(path).constData(), name, value.constData(), std::size_t(value.size()), 0) == 0;
}

} // namespace

class SchemeFileSave : public SchemeFolder
{
protected:
    /// A scheme whose file says First and whose tree says Second, CHANGED.
    Ref<SchemeFile> changed() const
    {
        const auto scheme = opened(First);
        scheme->setName(QStringLiteral("Second"));
        EXPECT_TRUE(scheme->isChanged());
        return scheme;
    }
};

TEST_F(SchemeFileSave, TheFileHoldsTheTreeAndTheBackupTheFormerContent)
{
    const auto scheme = changed();
    scheme->Save();
    EXPECT_EQ(read(at()), named("Second"));
    EXPECT_EQ(read(at("weir.xml.bak")), First.toStdString());
    scheme->setName(QStringLiteral("Third"));
    scheme->Save();
    EXPECT_EQ(read(at()), named("Third"));
    EXPECT_EQ(read(at("weir.xml.bak")), named("Second"));
    EXPECT_EQ(names(), "weir.xml weir.xml.bak");
}

TEST_F(SchemeFileSave, ChangedIsTakenOutOfTheTreeAndNeverReachesTheFile)
{
    const auto scheme = opened("<SCHEME><CHANGED>-1</CHANGED><NAME>Second</NAME><CHANGED>-1</CHANGED></SCHEME>");
    scheme->Save();
    EXPECT_FALSE(scheme->isChanged());
    EXPECT_EQ(read(at()), named("Second"));
    document::XMLOps::MarkChanged(scheme->Windows()->createChannel()->XMLNode().ownerDocument());
    EXPECT_TRUE(scheme->isChanged());
}

TEST_F(SchemeFileSave, SavingWithoutAChangeLeavesFileAndBackupAlone)
{
    const auto scheme = changed();
    scheme->Save();
    scheme->Save();
    EXPECT_EQ(read(at("weir.xml.bak")), First.toStdString());
}

TEST_F(SchemeFileSave, AChangeThatNobodyMarkedIsSavedToo)
{
    const auto scheme = opened(First);
    Node root = scheme->document().documentElement();
    root.removeChild(root.firstChild());
    EXPECT_FALSE(scheme->isChanged());
    scheme->Save();
    EXPECT_EQ(read(at()).find("First"), std::string::npos);
}

TEST_F(SchemeFileSave, EverythingElseSurvivesUntouched)
{
    const QByteArray full = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                            "<!-- kept -->\n"
                            "<?tool data?>\n"
                            "<SCHEME version=\"7\" xmlns:x=\"urn:x\">\n"
                            "  <FOREIGN a=\"&lt;&quot;\">\n"
                            "    <x:DEEP> blanks kept </x:DEEP>\n"
                            "  </FOREIGN>\n"
                            "  <NAME>Wehr \xc3\x84 &amp; \xf0\x9f\x92\xa7</NAME>\n"
                            "  <LOGGER>sim:7</LOGGER>\n"
                            "  <WINDOW>\n"
                            "    <KEY>RTD</KEY>\n"
                            "    <!-- between -->\n"
                            "    <CHANNEL>\n"
                            "      <KEY>Stage</KEY>\n"
                            "      <X>120</X>\n"
                            "      <LABEL>One</LABEL>\n"
                            "      <LABEL>Two</LABEL>\n"
                            "      <MULTIPLIER>abc</MULTIPLIER>\n"
                            "    </CHANNEL>\n"
                            "    <CHANNEL/>\n"
                            "    <CONTAINER>\n"
                            "      <GRIDSIZE>100</GRIDSIZE>\n"
                            "    </CONTAINER>\n"
                            "    <CONTROL>\n"
                            "      <TYPE>Somebody.Else</TYPE>\n"
                            "    </CONTROL>\n"
                            "  </WINDOW>\n"
                            "  <WINDOW>\n"
                            "    <KEY>rtd</KEY>\n"
                            "  </WINDOW>\n"
                            "</SCHEME>\n";
    const auto scheme = opened(full);
    // Reading every way there is must not leave a trace.
    for (std::int32_t w = 1; w <= scheme->Windows()->Count(); ++w) {
        const auto window = scheme->Windows()->Item(Variant(w));
        for (std::int32_t c = 1; c <= window->Count(); ++c) {
            const auto channel = window->Item(Variant(c));
            EXPECT_FALSE(channel->Key().isNull() && c == 1);
            channel->Multiplier();
            channel->setLabel(channel->Label());
            channel->setVisible(channel->Visible());
            channel->setUseCount(5);
            channel->setValue(Variant(12));
        }
    }
    EXPECT_FALSE(scheme->isChanged());
    scheme->saveAs(at("copy.xml"));
    EXPECT_EQ(read(at("copy.xml")), full.toStdString());
}

TEST_F(SchemeFileSave, AFileThatSomebodyElseChangedIsNotOverwritten)
{
    const auto scheme = changed();
    EXPECT_FALSE(scheme->isChangedOnDisk());
    write(at(), named("Other").c_str());
    EXPECT_TRUE(scheme->isChangedOnDisk());
    try {
        scheme->Save();
        FAIL() << "saved over somebody else's work";
    } catch (const values::RuntimeError& error) {
        EXPECT_EQ(error.number(), DiskFile::ChangedOnDisk);
        EXPECT_NE(error.description().indexOf(at()), -1);
    }
    EXPECT_EQ(read(at()), named("Other"));
    EXPECT_EQ(names(), "weir.xml");
    EXPECT_TRUE(scheme->isChanged());
    EXPECT_EQ(scheme->Name().toStdString(), "Second");
}

TEST_F(SchemeFileSave, AChangeOfTheSameSizeAndTimeIsNoticed)
{
    const auto scheme = changed();
    struct stat before = {};
    ASSERT_EQ(::stat(encoded(at()).constData(), &before), 0);
    write(at(), named("Firzt").c_str());
    const timespec times[] = {before.st_atim, before.st_mtim};
    ASSERT_EQ(utimensat(AT_FDCWD, encoded(at()).constData(), times, 0), 0);
    EXPECT_EQ(errorOf([&] { scheme->Save(); }), DiskFile::ChangedOnDisk);
}

TEST_F(SchemeFileSave, AnotherTimeOnTheSameContentIsNoChange)
{
    const auto scheme = changed();
    const timespec times[] = {{1, 0}, {1, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, encoded(at()).constData(), times, 0), 0);
    scheme->Save();
    EXPECT_EQ(read(at()), named("Second"));
}

TEST_F(SchemeFileSave, TheHostMayOverwriteAndTheOtherContentIsTheBackup)
{
    const auto scheme = changed();
    write(at(), named("Other").c_str());
    scheme->saveOver();
    EXPECT_EQ(read(at()), named("Second"));
    EXPECT_EQ(read(at("weir.xml.bak")), named("Other"));
    scheme->setName(QStringLiteral("Third"));
    scheme->Save(); // what lies there is ours again
    EXPECT_EQ(read(at()), named("Third"));
}

TEST_F(SchemeFileSave, TheHostMaySaveElsewhereAndStaysThere)
{
    const auto scheme = changed();
    write(at(), named("Other").c_str());
    scheme->saveAs(at("copy.xml"));
    EXPECT_EQ(scheme->path().toStdString(), at("copy.xml").toStdString());
    EXPECT_EQ(read(at()), named("Other"));
    EXPECT_EQ(read(at("copy.xml")), named("Second"));
    EXPECT_FALSE(scheme->isChanged());
    scheme->setName(QStringLiteral("Third"));
    scheme->Save();
    EXPECT_EQ(read(at("copy.xml")), named("Third"));
}

TEST_F(SchemeFileSave, AFailedSaveAsStaysWithTheFormerFile)
{
    const auto scheme = changed();
    EXPECT_EQ(errorOf([&] { scheme->saveAs(at("no/folder.xml")); }), 76);
    EXPECT_EQ(scheme->path().toStdString(), at().toStdString());
    scheme->Save();
    EXPECT_EQ(read(at()), named("Second"));
}

TEST_F(SchemeFileSave, ADeletedFileIsWrittenAgain)
{
    const auto scheme = changed();
    ASSERT_TRUE(QFile::remove(at()));
    EXPECT_FALSE(scheme->isChangedOnDisk());
    scheme->Save();
    EXPECT_EQ(read(at()), named("Second"));
    EXPECT_EQ(names(), "weir.xml");
}

TEST_F(SchemeFileSave, ADeletedFolderIsPathNotFoundAndTheTreeStaysChanged)
{
    const auto scheme = changed();
    ASSERT_TRUE(QDir(folder()).removeRecursively());
    try {
        scheme->Save();
        FAIL() << "saved into a folder that is gone";
    } catch (const values::RuntimeError& error) {
        EXPECT_EQ(error.number(), 76);
        EXPECT_NE(error.description().indexOf(folder()), -1) << error.description().toStdString();
    }
    EXPECT_TRUE(scheme->isChanged());
}

TEST_F(SchemeFileSave, ANewSchemeComesIntoBeingWithItsFirstSave)
{
    const auto scheme = SchemeFile::create(at(), QStringLiteral("New"));
    EXPECT_FALSE(scheme->isChanged());
    EXPECT_EQ(names(), "");
    scheme->setLoggerUri(QStringLiteral("sim:1"));
    EXPECT_TRUE(scheme->isChanged());
    scheme->Save();
    EXPECT_EQ(names(), "weir.xml");
    const OpenResult again = SchemeFile::open(at());
    ASSERT_TRUE(again);
    EXPECT_EQ(again.scheme->Name().toStdString(), "New");
    EXPECT_EQ(again.scheme->loggerUri().toStdString(), "sim:1");
}

TEST_F(SchemeFileSave, ANewSchemeDoesNotOverwriteAFileThatIsThere)
{
    const auto scheme = SchemeFile::create(at(), QStringLiteral("New"));
    write(at(), First);
    EXPECT_EQ(errorOf([&] { scheme->Save(); }), DiskFile::ChangedOnDisk);
    EXPECT_EQ(read(at()), First.toStdString());
}

TEST_F(SchemeFileSave, PermissionBitsStay)
{
    const auto scheme = changed();
    ASSERT_EQ(chmod(encoded(at()).constData(), 0640), 0);
    scheme->Save();
    EXPECT_EQ(modeOf(at()), 0640U);
    EXPECT_EQ(modeOf(at("weir.xml.bak")), 0640U);
}

TEST_F(SchemeFileSave, ExtendedAttributesAndTheAccessListStay)
{
    constexpr const char* List = "system.posix_acl_access";
    // The owner reads and writes; user 1234, the group and the mask read; nobody else may do anything.
    const QByteArray list = QByteArray::fromHex("02000000"
                                                "01000600ffffffff"
                                                "02000400d2040000"
                                                "04000400ffffffff"
                                                "10000400ffffffff"
                                                "20000000ffffffff");
    const auto scheme = changed();
    if (!setAttribute(at(), "user.note", "weir") || !setAttribute(at(), List, list))
        GTEST_SKIP() << "this file system keeps no attributes";
    scheme->Save();
    EXPECT_EQ(read(at()), named("Second"));
    for (const char* file : {"weir.xml", "weir.xml.bak"}) {
        EXPECT_EQ(attributeOf(at(file), "user.note"), "77656972") << file;
        EXPECT_EQ(attributeOf(at(file), List), list.toHex().toStdString()) << file;
        EXPECT_EQ(modeOf(at(file)), 0640U) << file;
    }
}

TEST_F(SchemeFileSave, AFileWithoutAnAccessListDoesNotTakeThatOfItsFolder)
{
    const QByteArray list = QByteArray::fromHex("02000000"
                                                "01000700ffffffff"
                                                "02000700d2040000"
                                                "04000700ffffffff"
                                                "10000700ffffffff"
                                                "20000700ffffffff");
    const auto scheme = changed();
    ASSERT_EQ(chmod(encoded(at()).constData(), 0600), 0);
    if (!setAttribute(folder(), "system.posix_acl_default", list))
        GTEST_SKIP() << "this file system keeps no access lists";
    scheme->Save();
    EXPECT_EQ(attributeOf(at(), "system.posix_acl_access"), "none");
    EXPECT_EQ(modeOf(at()), 0600U);
}

TEST_F(SchemeFileSave, AFileWithASecondNameIsRefusedInWords)
{
    const auto scheme = changed();
    ASSERT_EQ(::link(encoded(at()).constData(), encoded(at("other.xml")).constData()), 0);
    try {
        scheme->Save();
        FAIL() << "the other name would keep the former content";
    } catch (const values::RuntimeError& error) {
        EXPECT_EQ(error.number(), 75);
        EXPECT_TRUE(error.description().contains(u"hard link")) << error.description().toStdString();
    }
    EXPECT_EQ(read(at()), First.toStdString());
    EXPECT_EQ(read(at("other.xml")), First.toStdString());
    EXPECT_EQ(names(), "other.xml weir.xml");
    EXPECT_TRUE(scheme->isChanged());
    scheme->saveAs(at("copy.xml"));
    EXPECT_EQ(read(at("copy.xml")), named("Second"));
}

TEST_F(SchemeFileSave, ABackupThatIsASecondNameOfTheFileIsRefusedAndNothingIsLeftBehind)
{
    const auto scheme = changed();
    ASSERT_EQ(::link(encoded(at()).constData(), encoded(at("weir.xml.bak")).constData()), 0);
    EXPECT_EQ(errorOf([&] { scheme->Save(); }), 75);
    EXPECT_EQ(names(), "weir.xml weir.xml.bak");
}

TEST_F(SchemeFileSave, ANameTooLongForItsBackupIsRefusedBeforeAnythingIsWritten)
{
    const std::string fits(243, 'n');
    const std::string tooLong(244, 'n');
    const auto scheme = changed();
    EXPECT_EQ(errorOf([&] { scheme->saveAs(at(tooLong.c_str())); }), 76);
    EXPECT_EQ(names(), "weir.xml");
    for (const char* name : {"Third", "Fourth"}) { // the second save needs the backup's name, too
        scheme->setName(QString::fromLatin1(name));
        scheme->saveAs(at(fits.c_str()));
    }
    EXPECT_EQ(read(at(fits.c_str())), named("Fourth"));
}

TEST_F(SchemeFileSave, ANewFileGetsThePermissionsOfAnyNewFile)
{
    const mode_t mask = umask(027);
    SchemeFile::create(at())->Save();
    umask(mask);
    EXPECT_EQ(modeOf(at()), 0640U);
}

TEST_F(SchemeFileSave, ASymbolicLinkStaysALinkAndItsTargetIsReplaced)
{
    ASSERT_TRUE(QDir(folder()).mkdir(QStringLiteral("real")));
    write(at("real/site.xml"), First);
    ASSERT_EQ(symlink("real/site.xml", encoded(at("middle.xml")).constData()), 0);
    ASSERT_EQ(symlink(encoded(at("middle.xml")).constData(), encoded(at()).constData()), 0);
    const OpenResult result = SchemeFile::open(at());
    ASSERT_TRUE(result);
    result.scheme->setName(QStringLiteral("Second"));
    result.scheme->Save();
    EXPECT_EQ(QFile::symLinkTarget(at()).toStdString(), at("middle.xml").toStdString());
    EXPECT_EQ(read(at("real/site.xml")), named("Second"));
    EXPECT_EQ(read(at("real/site.xml.bak")), First.toStdString());
    EXPECT_EQ(names(), "middle.xml real weir.xml");
}

TEST_F(SchemeFileSave, LinksInACircleAndLinksToNowhereHaveAnOutcome)
{
    ASSERT_EQ(symlink("b.xml", encoded(at("a.xml")).constData()), 0);
    ASSERT_EQ(symlink("a.xml", encoded(at("b.xml")).constData()), 0);
    EXPECT_EQ(errorOf([&] { SchemeFile::create(at("a.xml"))->Save(); }), 76);
    ASSERT_EQ(symlink("later.xml", encoded(at("c.xml")).constData()), 0);
    SchemeFile::create(at("c.xml"))->Save();
    EXPECT_TRUE(SchemeFile::open(at("later.xml")));
}

TEST_F(SchemeFileSave, WhatAKilledSaveLeftBehindIsCleared)
{
    const auto scheme = changed();
    write(at(".weir.xml.saving"), "<SCHEME><NA");
    write(at(".weir.xml.saving.bak"), "half");
    scheme->Save();
    EXPECT_EQ(names(), "weir.xml weir.xml.bak");
    EXPECT_EQ(read(at()), named("Second"));
}

TEST_F(SchemeFileSave, ALinkPlantedAtTheTemporaryNameIsNotFollowed)
{
    const auto scheme = changed();
    write(at("victim"), "precious");
    ASSERT_EQ(symlink("victim", encoded(at(".weir.xml.saving")).constData()), 0);
    scheme->Save();
    EXPECT_EQ(read(at("victim")), "precious");
    EXPECT_EQ(read(at()), named("Second"));
}

TEST_F(SchemeFileSave, ABackupThatCannotBePlacedLeavesEverythingAsItWas)
{
    const auto scheme = changed();
    ASSERT_TRUE(QDir(folder()).mkdir(QStringLiteral("weir.xml.bak")));
    EXPECT_EQ(errorOf([&] { scheme->Save(); }), 75);
    EXPECT_EQ(read(at()), First.toStdString());
    EXPECT_EQ(names(), "weir.xml weir.xml.bak");
    EXPECT_TRUE(scheme->isChanged());
    ASSERT_TRUE(QDir(folder()).rmdir(QStringLiteral("weir.xml.bak")));
    scheme->Save();
    EXPECT_EQ(read(at()), named("Second"));
}

TEST_F(SchemeFileSave, ATargetThatIsNoPlainFileIsRefused)
{
    const auto scheme = changed();
    ASSERT_TRUE(QDir(folder()).mkdir(QStringLiteral("folder.xml")));
    EXPECT_EQ(errorOf([&] { scheme->saveAs(at("folder.xml")); }), 75);
    ASSERT_EQ(mkfifo(encoded(at("pipe.xml")).constData(), 0600), 0);
    EXPECT_EQ(errorOf([&] { scheme->saveAs(at("pipe.xml")); }), 75);
    EXPECT_EQ(errorOf([&] { scheme->saveAs(QString()); }), 76);
}

TEST_F(SchemeFileSave, AWriteProtectedFileOrFolderIsRefused)
{
    ASSERT_EQ(chmod(encoded(folder()).constData(), 0777), 0);
    const auto scheme = changed();
    ASSERT_EQ(chmod(encoded(at()).constData(), 0444), 0);
    const auto save = [&] { return errorOf([&] { scheme->Save(); }) == 75 && scheme->isChanged() ? 0 : 1; };
    EXPECT_EQ(inChild(save, true), 0);
    ASSERT_EQ(chmod(encoded(at()).constData(), 0666), 0);
    ASSERT_EQ(chmod(encoded(folder()).constData(), 0555), 0);
    EXPECT_EQ(inChild(save, true), 0);
    ASSERT_EQ(chmod(encoded(folder()).constData(), 0755), 0);
    EXPECT_EQ(read(at()), First.toStdString());
    EXPECT_EQ(names(), "weir.xml");
}

TEST_F(SchemeFileSave, AFullDiskLeavesFileBackupAndChangedAsTheyWere)
{
    const auto scheme = changed();
    scheme->Save();
    scheme->setName(QString(100'000, u'x'));
    const int outcome = inChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{40'000, RLIM_INFINITY};
        setrlimit(RLIMIT_FSIZE, &limit);
        if (errorOf([&] { scheme->Save(); }) != 61)
            return 1;
        if (!scheme->isChanged())
            return 2;
        const rlimit enough{1'000'000, RLIM_INFINITY};
        setrlimit(RLIMIT_FSIZE, &enough);
        return names() == "weir.xml weir.xml.bak" && read(at()) == named("Second") &&
                       read(at("weir.xml.bak")) == First.toStdString()
                   ? 0
                   : 3;
    });
    EXPECT_EQ(outcome, 0);
    EXPECT_EQ(read(at()), named("Second"));
    EXPECT_EQ(read(at("weir.xml.bak")), First.toStdString());
    scheme->Save();
    EXPECT_EQ(read(at("weir.xml.bak")), named("Second"));
}

TEST_F(SchemeFileSave, ATreeWithoutItsDocumentElementIsNotSaved)
{
    const auto scheme = changed();
    Node document = scheme->document();
    document.removeChild(document.documentElement());
    EXPECT_EQ(errorOf([&] { scheme->Save(); }), 5);
    EXPECT_EQ(read(at()), First.toStdString());
}

TEST_F(SchemeFileSave, TwoProgramsSavingAtOnceNeverOverwriteEachOther)
{
    write(at(), First);
    // Each takes turns until it has saved 20 times: reads, changes, saves; a refusal is a turn lost, not a mix.
    const auto worker = [&](const char* name) {
        return [this, name] {
            for (int saved = 0; saved < 20;) {
                const OpenResult result = SchemeFile::open(at());
                if (!result)
                    return 1;
                result.scheme->setName(result.scheme->Name() + QLatin1String(name));
                const int error = errorOf([&] { result.scheme->Save(); });
                if (error != 0 && error != DiskFile::ChangedOnDisk)
                    return 2;
                saved += error == 0;
            }
            return 0;
        };
    };
    EXPECT_EQ(inChild([&] {
                  const pid_t other = fork();
                  if (other == 0)
                      _exit(worker("b")());
                  const int mine = worker("a")();
                  int status = 0;
                  waitpid(other, &status, 0);
                  return mine != 0 ? mine : WEXITSTATUS(status);
              }),
              0);
    const OpenResult result = SchemeFile::open(at());
    ASSERT_TRUE(result);
    EXPECT_EQ(result.scheme->Name().count(u'a'), 20) << result.scheme->Name().toStdString();
    EXPECT_EQ(result.scheme->Name().count(u'b'), 20);
}

} // namespace zan::trellis
