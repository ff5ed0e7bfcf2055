#include "Component.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <sys/stat.h>

namespace zan::test {

namespace {

const QString LightId = QStringLiteral("c6db2acd-9aaf-40ad-9e77-f87776e25463");

/// A configuration folder of its own.
class Registry : public testing::Test
{
protected:
    Registry()
        : m_former(qgetenv("XDG_CONFIG_HOME"))
    {
        qputenv("XDG_CONFIG_HOME", m_folder.path().toUtf8());
        QDir(m_folder.path()).mkpath(QStringLiteral("zanbench"));
    }
    ~Registry() override
    {
        if (m_former.isEmpty())
            qunsetenv("XDG_CONFIG_HOME");
        else
            qputenv("XDG_CONFIG_HOME", m_former);
    }
    QString path() const { return m_folder.filePath(QStringLiteral("zanbench/components.json")); }
    QByteArray content(const QString& suffix = {}) const
    {
        QFile file(path() + suffix);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const QByteArray& text) const
    {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    QJsonObject classes() const
    {
        return QJsonDocument::fromJson(content()).object().value(QStringLiteral("classes")).toObject();
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_former;
};

} // namespace

TEST_F(Registry, HasEveryClassWithItsLibraryAndTypeLibrary)
{
    ASSERT_EQ(DllRegisterServer(), ZAN_OK) << zanErrorDescription();
    EXPECT_EQ(classes().size(), 6);
    const QJsonObject light = classes().value(LightId).toObject();
    EXPECT_EQ(light.value(QStringLiteral("name")).toString(), u"StatusLight");
    EXPECT_EQ(QFileInfo(light.value(QStringLiteral("library")).toString()).canonicalFilePath(),
              QFileInfo(QStringLiteral(COMPONENT_LIBRARY)).canonicalFilePath());
    EXPECT_TRUE(QFileInfo::exists(light.value(QStringLiteral("typeLibrary")).toString()));
}

TEST_F(Registry, IsGoneWithItsLastEntry)
{
    ASSERT_EQ(DllRegisterServer(), ZAN_OK);
    ASSERT_EQ(DllRegisterServer(), ZAN_OK);
    ASSERT_EQ(DllUnregisterServer(), ZAN_OK);
    EXPECT_FALSE(QFileInfo::exists(path()));
    EXPECT_EQ(DllUnregisterServer(), ZAN_OK);
}

TEST_F(Registry, KeepsWhatOthersHaveEntered)
{
    write(R"({"note": [1, 2], "classes": {"another": {"library": "/opt/other.so"}, "odd": 5,
              ")" +
          LightId.toUtf8() + R"(": {"library": "/opt/older.so"}}})");
    ASSERT_EQ(DllRegisterServer(), ZAN_OK);
    EXPECT_EQ(classes().size(), 8);
    ASSERT_EQ(DllUnregisterServer(), ZAN_OK);
    EXPECT_EQ(classes().keys(), QStringList({QStringLiteral("another"), QStringLiteral("odd")}));
    EXPECT_TRUE(content().contains("note"));
}

TEST_F(Registry, LeavesTheEntryOfAnotherCopyOfTheLibraryAlone)
{
    write(R"({"classes": {")" + LightId.toUtf8() + R"(": {"library": "/opt/newer.so"}}})");
    ASSERT_EQ(DllUnregisterServer(), ZAN_OK);
    EXPECT_EQ(classes().keys(), QStringList(LightId));
}

TEST_F(Registry, PutsAFileAsideThatIsNoRegistry)
{
    for (const QByteArray& odd : {QByteArray("not json"), QByteArray("[1, 2]"), QByteArray(R"({"classes": 7})"),
                                  QByteArray("\0\xFF\xFE", 3), QByteArray(2 << 20, '{')}) {
        write(odd);
        EXPECT_EQ(DllUnregisterServer(), ZAN_OK);
        EXPECT_EQ(content(), odd);
        ASSERT_EQ(DllRegisterServer(), ZAN_OK) << zanErrorDescription();
        EXPECT_EQ(content(QStringLiteral(".unreadable")), odd);
        EXPECT_EQ(classes().size(), 6);
    }
}

TEST_F(Registry, NeverOpensWhatIsNoFile)
{
    ASSERT_EQ(mkfifo(path().toUtf8().constData(), 0600), 0); // whoever opens it waits for a writer
    EXPECT_EQ(DllRegisterServer(), ZAN_E_REGISTRY);
    EXPECT_EQ(DllUnregisterServer(), ZAN_E_REGISTRY);
    QFile::remove(path());
    QDir().mkpath(path());
    EXPECT_EQ(DllRegisterServer(), ZAN_E_REGISTRY);
    EXPECT_NE(std::string(zanErrorDescription()).find("components.json"), std::string::npos);
}

} // namespace zan::test
