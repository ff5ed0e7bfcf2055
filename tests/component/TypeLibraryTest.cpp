#include "Component.h"

#include "binding/MemberTable.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

namespace zan::test {

namespace {

QJsonObject library()
{
    QFile file(QStringLiteral(TYPE_LIBRARY));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QJsonDocument::fromJson(file.readAll()).object();
}

QJsonObject find(const QJsonArray& rows, const QString& name)
{
    for (const QJsonValue& row : rows) {
        if (row.toObject().value(QStringLiteral("name")).toString() == name)
            return row.toObject();
    }
    return {};
}

QJsonObject classNamed(const QString& name)
{
    return find(library().value(QStringLiteral("classes")).toArray(), name);
}

} // namespace

TEST(TypeLibrary, OnDiskIsTheOneOfTheLibraryThatRuns)
{
    Value running;
    ASSERT_EQ(zanTypeLibrary(&running.value), ZAN_OK);
    QFile file(QStringLiteral(TYPE_LIBRARY));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray(running.text().c_str()));
}

TEST(TypeLibrary, HasEveryMemberOfEveryTable)
{
    const QJsonArray classes = library().value(QStringLiteral("classes")).toArray();
    qsizetype listed = 0;
    for (const binding::MemberTable* table : binding::MemberTable::all()) {
        if (table->className() == u"Control") // the bases of all controls, of which there are no objects
            continue;
        ++listed;
        const QJsonArray members = find(classes, table->className()).value(QStringLiteral("members")).toArray();
        EXPECT_EQ(std::size_t(members.size()), table->members().size()) << qPrintable(table->className());
        for (const binding::Member& member : table->members()) {
            const QJsonObject row = find(members, member.name.text());
            const bool isMethod = member.kind == binding::Member::Kind::Method;
            EXPECT_EQ(row.value(QStringLiteral("kind")).toString(),
                      isMethod ? QStringLiteral("method") : QStringLiteral("property"))
                << qPrintable(table->className() + u'.' + member.name.text());
            EXPECT_EQ(row.value(QStringLiteral("isStored")).toBool(), member.isStored);
        }
    }
    EXPECT_EQ(classes.size(), listed);
}

TEST(TypeLibrary, HasTheClassesThatThePublicKnows)
{
    for (const char* name : {"BenchWindow", "SiteMap", "Sites", "StatusLight", "ValueBar", "BenchControls",
                             "iBenchControl", "Site", "PropertyBag", "Frame", "Logger"})
        EXPECT_FALSE(classNamed(QString::fromLatin1(name)).isEmpty()) << name;
    EXPECT_EQ(classNamed(QStringLiteral("StatusLight")).value(QStringLiteral("id")).toString(),
              u"c6db2acd-9aaf-40ad-9e77-f87776e25463");
}

TEST(TypeLibrary, TellsTypesDefaultsAndAccess)
{
    const QJsonArray members = classNamed(QStringLiteral("ValueBar")).value(QStringLiteral("members")).toArray();
    const QJsonObject limit = find(members, QStringLiteral("HighLimit"));
    EXPECT_EQ(limit.value(QStringLiteral("type")).toString(), u"Double");
    EXPECT_EQ(limit.value(QStringLiteral("default")).toDouble(), 75);
    EXPECT_EQ(limit.value(QStringLiteral("access")).toString(), u"read and write");
    EXPECT_EQ(find(members, QStringLiteral("hWnd")).value(QStringLiteral("access")).toString(), u"read");
    EXPECT_EQ(find(members, QStringLiteral("Flash")).value(QStringLiteral("default")), QJsonValue(false));
}

TEST(TypeLibrary, TellsEventsWithTheirParameters)
{
    const QJsonArray events = classNamed(QStringLiteral("BenchWindow")).value(QStringLiteral("events")).toArray();
    for (const char* name :
         {"DblClick", "KeyDown", "KeyPress", "KeyUp", "MouseDown", "MouseMove", "MouseUp", "LoadScheme", "Click"})
        EXPECT_FALSE(find(events, QString::fromLatin1(name)).isEmpty()) << name;
    const QJsonArray parameters =
        find(events, QStringLiteral("MouseDown")).value(QStringLiteral("parameters")).toArray();
    ASSERT_EQ(parameters.size(), 4);
    EXPECT_EQ(parameters[2].toObject().value(QStringLiteral("name")).toString(), u"X");
    EXPECT_EQ(parameters[2].toObject().value(QStringLiteral("type")).toString(), u"Single");
    EXPECT_TRUE(find(events, QStringLiteral("windowTitleChanged")).isEmpty()); // the toolkit's own
}

} // namespace zan::test
