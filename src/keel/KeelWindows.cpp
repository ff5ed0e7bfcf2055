#include "keel/KeelWindows.h"

#include "document/XMLOps.h"
#include "values/DosCharset.h"
#include "values/Failure.h"

#include <QFile>
#include <QFileInfo>

namespace zan::keel {

using values::ErrorNumber;

namespace {

[[noreturn]] void refuse(ErrorNumber number, const QString& file, const QString& why)
{
    values::raise(number, QStringLiteral("%1: %2").arg(file, why));
}

/// The whole of a plain file, or one byte more than what is read of any.
QByteArray contentOf(const QString& name)
{
    const QFileInfo info(name);
    if (!info.exists())
        refuse(ErrorNumber::FileNotFound, name, QStringLiteral("There is no such file."));
    if (!info.isFile()) // a folder, a pipe: reading might never end
        refuse(ErrorNumber::PathFileAccess, name, QStringLiteral("This is no file."));
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        refuse(ErrorNumber::PathFileAccess, name, file.errorString());
    const QByteArray content = file.read(LargestKeelFile + 1);
    if (file.error() != QFileDevice::NoError)
        refuse(ErrorNumber::PathFileAccess, name, file.errorString());
    return content;
}

} // namespace

std::vector<KeelField> readKeelFile(const QString& file)
{
    KeelText read = parseKeel(contentOf(file));
    if (read.error)
        throw values::RuntimeError(InvalidFileFormat, read.error->text(file));
    return std::move(read.fields);
}

KeelWindows::KeelWindows(const Ref<site::SchemeWindows>& store, Texts texts)
    : m_store(values::given(store))
    , m_texts(texts)
{}

Ref<site::SchemeWindow> KeelWindows::Load(const QString& file)
{
    // Read from end to end before the store is asked for anything: a file that is refused leaves nothing behind.
    const std::vector<KeelField> fields = readKeelFile(file);
    Ref<site::SchemeWindow> window = values::given(m_store->createWindow());
    for (const KeelField& field : fields)
        add(*window, field);
    return window;
}

QString KeelWindows::shownText(const QString& text) const
{
    return m_texts == Texts::ForDosFont ? values::DosCharset::stored(text) : text;
}

void KeelWindows::add(site::SchemeWindow& window, const KeelField& field)
{
    const Ref<site::Channel> made = values::given(m_store->createChannel());
    made->setBaseAddress(field.address);
    made->setDataType(std::int32_t(field.type));
    if (field.bytes)
        made->setBytes(*field.bytes);
    made->setMultiplier(field.multiplier);
    made->setOffset(field.offset);
    made->setLabel(shownText(field.label));
    made->setUnits(shownText(field.units));
    made->setFormat(shownText(field.format));
    const Ref<site::Channel> added = values::given(window.Add(made));
    const document::Node node = added->XMLNode();
    document::XMLOps::SetAttribute(node, PositionX, field.column);
    document::XMLOps::SetAttribute(node, PositionY, field.line);
}

} // namespace zan::keel
