#include "component/TypeLibrary.h"

#include "binding/MemberTable.h"
#include "component/Classes.h"
#include "component/Subscription.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace zan::component {

using binding::Member;
using binding::MemberTable;
using binding::ValueType;
using values::Variant;

namespace {

/// In the order of ValueType.
const char* const TypeNames[] = {"None",   "Variant",  "Boolean", "Byte",   "Integer", "Long",  "Single",
                                 "Double", "Currency", "Date",    "String", "Colour",  "Object"};
static_assert(std::size(TypeNames) == std::size_t(ValueType::Object) + 1);

QString nameOf(ValueType type)
{
    return QString::fromLatin1(TypeNames[std::size_t(type)]);
}

QJsonValue jsonOf(const Variant& value)
{
    if (value.is(values::Kind::Boolean))
        return value.boolean();
    if (value.isText())
        return value.text();
    return value.isNumber() ? QJsonValue(values::toDouble(value)) : QJsonValue();
}

QString accessOf(const Member& member)
{
    if (!member.put)
        return QStringLiteral("read");
    return member.get ? QStringLiteral("read and write") : QStringLiteral("write");
}

QJsonObject describe(const Member& member)
{
    QJsonObject row;
    row.insert(QStringLiteral("name"), member.name.text());
    row.insert(QStringLiteral("type"), nameOf(member.type));
    const bool isMethod = member.kind == Member::Kind::Method;
    row.insert(QStringLiteral("kind"), isMethod ? QStringLiteral("method") : QStringLiteral("property"));
    if (!isMethod)
        row.insert(QStringLiteral("access"), accessOf(member));
    row.insert(QStringLiteral("requiredArguments"), member.requiredArguments);
    row.insert(QStringLiteral("allowedArguments"), member.allowedArguments);
    if (member.isDefault)
        row.insert(QStringLiteral("isDefaultMember"), true);
    if (member.isStored)
        row.insert(QStringLiteral("isStored"), true);
    if (const QJsonValue value = jsonOf(member.fallback); !value.isNull())
        row.insert(QStringLiteral("default"), value);
    return row;
}

QString eventType(const QMetaType& type)
{
    switch (type.id()) {
    case QMetaType::Int:
        return nameOf(ValueType::Long);
    case QMetaType::Float:
        return nameOf(ValueType::Single);
    case QMetaType::Double:
        return nameOf(ValueType::Double);
    case QMetaType::Bool:
        return nameOf(ValueType::Boolean);
    case QMetaType::QString:
        return nameOf(ValueType::String);
    default:
        return nameOf(ValueType::Variant);
    }
}

QJsonArray describeEvents(const QMetaObject& source)
{
    QJsonArray events;
    for (const QMetaMethod& event : eventsOf(source)) {
        QJsonArray parameters;
        for (int i = 0; i < event.parameterCount(); ++i) {
            QJsonObject parameter;
            parameter.insert(QStringLiteral("name"), QString::fromLatin1(event.parameterNames().at(i)));
            parameter.insert(QStringLiteral("type"), eventType(event.parameterMetaType(i)));
            parameters.append(parameter);
        }
        QJsonObject row;
        row.insert(QStringLiteral("name"), QString::fromLatin1(event.name()));
        row.insert(QStringLiteral("parameters"), parameters);
        events.append(row);
    }
    return events;
}

QJsonObject describe(const MemberTable& table)
{
    QJsonArray members;
    for (const Member& member : table.members())
        members.append(describe(member));
    QJsonObject row;
    row.insert(QStringLiteral("name"), table.className());
    row.insert(QStringLiteral("members"), members);
    if (const QMetaObject* source = eventSourceOf(table.className()))
        row.insert(QStringLiteral("events"), describeEvents(*source));
    for (const ClassRow& creatable : classes()) {
        if (table.className() == QLatin1String(creatable.name))
            row.insert(QStringLiteral("id"), textOf(creatable.id));
    }
    return row;
}

/// The tables of classes that there are objects of: what several bases have in common is listed with each class.
std::vector<const MemberTable*> publicTables()
{
    const std::vector<const MemberTable*> all = MemberTable::all();
    const auto isAbstract = [&](const MemberTable* table) {
        const auto sharesName = [&](const MemberTable* other) {
            return other != table && other->className() == table->className();
        };
        return std::any_of(all.begin(), all.end(), sharesName);
    };
    std::vector<const MemberTable*> tables;
    std::remove_copy_if(all.begin(), all.end(), std::back_inserter(tables), isAbstract);
    return tables;
}

} // namespace

QByteArray typeLibrary()
{
    std::vector<const MemberTable*> tables = publicTables();
    std::sort(tables.begin(), tables.end(),
              [](const MemberTable* a, const MemberTable* b) { return a->className() < b->className(); });
    QJsonArray described;
    for (const MemberTable* table : tables)
        described.append(describe(*table));
    QJsonObject library;
    library.insert(QStringLiteral("library"), QStringLiteral("ZanBenchWindow"));
    library.insert(QStringLiteral("interfaceVersion"), ZAN_INTERFACE_VERSION);
    library.insert(QStringLiteral("classes"), described);
    return QJsonDocument(library).toJson();
}

} // namespace zan::component
