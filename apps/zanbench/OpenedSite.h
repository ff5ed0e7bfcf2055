#pragma once

#include "zanbench/SiteHistory.h"

#include "site/Logger.h"
#include "trellis/SchemeFile.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace zan::host {

using values::Ref;

class OpenedSite;

struct OpenedSiteResult
{
    std::unique_ptr<OpenedSite> site; ///< empty when the site could not be opened
    QString error;                    ///< why, in plain words
};

/// A scheme file and the logger that serves its windows.
class OpenedSite
{
public:
    /// Opens a scheme with the logger of this URI, or with the scheme's own when it is empty. A URI given here that
    /// is no logger's is an error; one in the scheme is not: the site then opens with loggerProblem(), and its
    /// logger answers every attempt to connect with it.
    /// Its records are kept as `use` says; a HISTORY that cannot be used is no error either, but historyProblem().
    static OpenedSiteResult open(const QString& path, const QString& loggerUri, HistoryUse use = HistoryUse::None);

    /// The same with a scheme that is there already, as restored edits are.
    static OpenedSiteResult serve(const Ref<trellis::SchemeFile>& scheme, const QString& loggerUri,
                                  HistoryUse use = HistoryUse::None);

    trellis::SchemeFile& scheme() const { return *m_scheme; }
    const Ref<site::Logger>& logger() const { return m_logger; }
    /// URI of the logger in use; empty when there is none to connect.
    const QString& loggerUri() const { return m_loggerUri; }
    /// Why the scheme's logger cannot be used; empty when it can, or when the scheme names none.
    const QString& loggerProblem() const { return m_loggerProblem; }
    /// What a person has to know of the history; empty while everything is stored, or nothing is to be.
    QString historyProblem() const;
    bool canConnect() const { return !m_loggerUri.isEmpty(); }
    /// Whether the logger makes its values up: the host says so wherever it names the site.
    bool isSimulated() const { return m_isSimulated; }
    /// What a logger says of a write that failed, with the channel that lies at its address when one does.
    QString writeFailureText(int address, const QString& message) const;

    /// Keys of the windows that are panels: all but those that only hold the channels of the scheme, the logger and
    /// the running display.
    QStringList panelKeys() const;
    /// The key as the scheme writes it, whatever its case; nothing for a window that the scheme does not have.
    std::optional<QString> windowKey(const QString& key) const;
    /// "Mill Creek weir", or the file's name for a scheme without a name.
    QString displayName() const;

    site::LinkState linkState() const;
    /// What a connect button does: connects when nothing stands, otherwise disconnects or cancels.
    void toggleLink();
    void connectLink();

private:
    OpenedSite() = default;

    Ref<trellis::SchemeFile> m_scheme;
    Ref<site::Logger> m_logger;
    SiteHistory m_history; // the logger's records go there
    QString m_loggerUri;
    QString m_loggerProblem;
    bool m_isSimulated = false;
};

} // namespace zan::host
