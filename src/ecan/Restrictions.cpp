#include "ecan/Restrictions.h"

#include "document/XmlText.h"

#include <cmath>
#include <limits>

namespace zan::ecan {

using document::Node;

namespace {

constexpr document::ParseLimits Limits{.bytes = 4 * 1024 * 1024, .elements = 100'000, .depth = 32, .names = 1000};
/// Characters above which a text is no time stamp and no site.
constexpr qsizetype LongestText = 256;

std::optional<double> numberOf(const QString& text)
{
    bool isRead = false;
    const double number = text.toDouble(&isRead);
    return isRead && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/// "75" and "75 %" are the same percentage.
std::optional<double> percentageOf(const QString& text)
{
    return numberOf(text.endsWith(u'%') ? text.chopped(1).trimmed() : text);
}

bool isNamed(const Node& element, QLatin1String name)
{
    return element.name().localPart().text().compare(name, Qt::CaseInsensitive) == 0;
}

QString sensible(const QString& text)
{
    const QString trimmed = text.trimmed();
    return trimmed.size() <= LongestText ? trimmed : QString();
}

/// What an element says under a name: the text of its first child element of that name, or else of an attribute.
QString said(const Node& element, QLatin1String name)
{
    for (Node child = element.firstChildElement(); child; child = child.nextSiblingElement()) {
        if (isNamed(child, name))
            return sensible(child.text());
    }
    for (const Node::Attribute& attribute : element.attributes()) {
        if (attribute.name.mid(attribute.name.indexOf(u':') + 1).compare(name, Qt::CaseInsensitive) == 0)
            return sensible(attribute.value);
    }
    return {};
}

Node documentOf(const Fetched& fetched)
{
    const QByteArray charset = fetched.charset();
    if (charset.isEmpty() || fetched.hasMark())
        return document::parseXml(fetched.body, Limits).document;
    const std::optional<QByteArray> utf8 = bodyAsUtf8(fetched, charset);
    if (!utf8 || !QByteArrayView(*utf8).isValidUtf8())
        return {};
    return document::parseXml(QString::fromUtf8(*utf8), Limits).document;
}

} // namespace

bool ECANRecord::isOf(QStringView site) const
{
    if (m_site.isEmpty() || m_site.compare(site.trimmed(), Qt::CaseInsensitive) == 0)
        return true;
    return m_siteNumber && numberOf(site.trimmed().toString()) == m_siteNumber;
}

/// Walks the tree of a document.
class RestrictionsReader
{
public:
    explicit RestrictionsReader(const Node& root)
        : m_root(root)
    {}

    std::shared_ptr<const Restrictions> read()
    {
        collect(m_root);
        return std::make_shared<const Restrictions>(std::move(m_result));
    }

private:
    /// The records, wherever they stand: the depth of a document is limited, and so is that of the walk.
    void collect(const Node& parent)
    {
        for (Node child = parent.firstChildElement(); child; child = child.nextSiblingElement()) {
            if (m_result.m_records.size() == Restrictions::MostRecords)
                return;
            if (isNamed(child, QLatin1String("Restriction")))
                m_result.m_records.push_back(recordOf(child));
            else
                collect(child);
        }
    }

    /// What a record does not say, the document may say for all.
    QString value(const Node& record, QLatin1String name) const
    {
        const QString own = said(record, name);
        return own.isEmpty() ? said(m_root, name) : own;
    }

    ECANRecord recordOf(const Node& node) const
    {
        ECANRecord record;
        record.m_site = value(node, QLatin1String("Site"));
        record.m_siteNumber = numberOf(record.m_site);
        record.m_flow = numberOf(value(node, QLatin1String("AssessedFlow")));
        record.m_lastUpdate = value(node, QLatin1String("LastUpdate"));
        record.m_allocation = percentageOf(said(node, QLatin1String("Allocation")));
        const std::optional<double> band = numberOf(said(node, QLatin1String("Band")));
        if (band && std::abs(*band) <= std::numeric_limits<std::int16_t>::max() && std::trunc(*band) == *band)
            record.m_band = std::int32_t(*band);
        return record;
    }

    Node m_root;
    Restrictions m_result;
};

std::shared_ptr<const Restrictions> Restrictions::read(const Fetched& fetched)
{
    const Node root = documentOf(fetched).documentElement();
    if (!root || !isNamed(root, QLatin1String("Restrictions")))
        return nullptr;
    return RestrictionsReader(root).read();
}

} // namespace zan::ecan
