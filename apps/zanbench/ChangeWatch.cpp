#include "zanbench/ChangeWatch.h"

#include <QCryptographicHash>

#include <algorithm>
#include <array>

namespace zan::host {

namespace {

const values::Name Changed("CHANGED");
const values::Name IgnoreScan("IGNORESCAN");
const values::Name ToolTipText("TOOLTIPTEXT");
const values::Name Type("TYPE");
const values::Name BindTo("BINDTO");

struct Default
{
    values::Name name;
    QString text;
};

/// What a read stores where there was nothing: it says as much as the absence did.
bool isStoredDefault(const values::Name name, const QString& text)
{
    static const std::array defaults = {Default{values::Name("MODE"), QStringLiteral("CHANNEL")},
                                        Default{values::Name("PROGRAM"), QStringLiteral("CONNECTIONSTATUS")},
                                        Default{values::Name("COMPARISON"), QStringLiteral("=")}};
    return std::any_of(defaults.begin(), defaults.end(),
                       [&](const Default& row) { return row.name == name && row.text == text; });
}

/// Whether the scan writes the element: a bound value bar has its value in its tool tip.
bool isWrittenByScan(const document::Node& element)
{
    if (element.name() == IgnoreScan)
        return true;
    if (element.name() != ToolTipText)
        return false;
    const document::Node control = element.parent();
    return control.child(Type).text() == QLatin1String("ZanBenchWindow.ValueBar") && control.child(BindTo);
}

/// Adds an element and what lies below it. Elements that hold nothing say as much as elements that are not there.
/// Returns whether anything was added.
bool addSubstance(const document::Node& element, QCryptographicHash& hash)
{
    const values::Name name = element.name();
    if (name == Changed || isWrittenByScan(element))
        return false;
    bool any = !element.attributes().empty();
    if (!element.firstChildElement()) {
        const QString text = element.text();
        any = any || !(text.isEmpty() || isStoredDefault(name, text));
        if (any)
            hash.addData(name.text().toUtf8() + '=' + text.toUtf8() + '\0');
    } else {
        hash.addData(name.text().toUtf8() + '<');
        for (document::Node child = element.firstChildElement(); child; child = child.nextSiblingElement())
            any = addSubstance(child, hash) || any;
        hash.addData(QByteArrayLiteral(">"));
    }
    return any;
}

} // namespace

ChangeWatch::ChangeWatch(values::Ref<trellis::SchemeFile> scheme)
    : m_scheme(std::move(scheme))
{
    // A file that was stored with its mark set carries changes that nobody has looked at yet; they are in the file.
    settle();
}

QByteArray ChangeWatch::substance() const
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    addSubstance(m_scheme->document().documentElement(), hash);
    return hash.result();
}

void ChangeWatch::clearMark()
{
    const document::Node root = m_scheme->document().documentElement();
    root.removeChild(root.child(Changed));
}

void ChangeWatch::settle()
{
    clearMark();
    m_settled = substance();
    m_changed = false;
}

bool ChangeWatch::isChanged()
{
    if (m_changed || !m_scheme->isChanged())
        return m_changed;
    m_changed = substance() != m_settled;
    if (!m_changed)
        clearMark();
    return m_changed;
}

} // namespace zan::host
