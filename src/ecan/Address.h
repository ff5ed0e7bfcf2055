#pragma once

#include <QString>
#include <QUrl>

namespace zan::ecan {

// Which addresses are fetched: http and https, with a host, without a user's name or password.

/// Whether an address may be fetched.
bool isFetched(const QUrl& url);
/// The address that a text stands for; an invalid one when it is none that may be fetched.
QUrl webAddress(const QString& text);

/// Whether a text names a server: `host`, `host:port`, or `http://` or `https://` before that. Nothing else may stand in
/// it, neither a path nor a user. Without a scheme it is http.
bool isHost(const QString& text);
/// Address of a site's restrictions document; empty without a host. The site may be any text: it stays one part of the
/// path.
QString serviceAddress(const QString& host, const QString& site);

} // namespace zan::ecan
