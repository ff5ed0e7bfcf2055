#include "ecan/Fetched.h"

#include "document/XmlEncoding.h"

#include <QList>

namespace zan::ecan {

QByteArray Fetched::mediaType() const
{
    return contentType.split(';').first().trimmed().toLower();
}

QByteArray Fetched::charset() const
{
    QList<QByteArray> parameters = contentType.toLower().split(';');
    parameters.removeFirst();
    for (const QByteArray& parameter : parameters) {
        const qsizetype equals = parameter.indexOf('=');
        if (equals < 0 || parameter.left(equals).trimmed() != "charset")
            continue;
        QByteArray name = parameter.mid(equals + 1).trimmed();
        if (name.size() >= 2 && (name.front() == '"' || name.front() == '\'') && name.back() == name.front())
            name = name.mid(1, name.size() - 2).trimmed();
        return name;
    }
    return {};
}

bool Fetched::hasMark() const
{
    return body.startsWith("\xEF\xBB\xBF") || body.startsWith("\xFE\xFF") || body.startsWith("\xFF\xFE");
}

std::optional<QByteArray> bodyAsUtf8(const Fetched& fetched, const QByteArray& charset)
{
    document::ParseError ignored;
    return fetched.hasMark() ? document::toUtf8(fetched.body, ignored)
                             : document::toUtf8(fetched.body, charset, ignored);
}

} // namespace zan::ecan
