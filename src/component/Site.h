#pragma once

#include "component/Handles.h"
#include "site/Logger.h"
#include "trellis/SchemeFile.h"

#include <optional>

namespace zan::component {

using values::Variant;

/// A scheme file and the logger that serves it, by name: what a program without C++ needs to give a panel its logger.
/// All members but Open raise 91 while nothing is open.
class Site : public Object
{
public:
    const binding::MemberTable& members() const override;

    /// Opens a scheme with the logger of this URI, or with the scheme's own. A URI given here that is no logger's
    /// raises 5; one in the scheme does not: LoggerProblem says why then, and every attempt to connect fails with it. A
    /// file that is no scheme raises 5 with its place. What was open before is let go.
    void Open(const QString& file, const std::optional<QString>& loggerUri);
    void Save();
    QString Name() const;
    QString Path() const;
    QString LoggerUri() const;     ///< of the logger in use; empty when there is none to connect
    QString LoggerProblem() const; ///< empty when the logger can be used, or when the scheme names none
    bool IsSimulated() const;      ///< the values are made up: whoever shows them says so
    Ref<site::Scheme> Scheme() const;
    Ref<site::Logger> Logger() const;

    /// Starts connecting and asks for live data. The outcome is an event of the logger, and of its link.
    void Connect();
    void Disconnect();
    site::LinkState State() const;

    std::int32_t WindowCount() const;
    /// Key of a window, from 1. Raises 9 for another.
    QString WindowKey(std::int32_t index) const;
    /// A channel by its window's key, "|" and its own. Raises 9 for one that is not there.
    Ref<site::Channel> Channel(const QString& bind) const;
    /// The value of a channel; Empty while nothing has been read.
    Variant Read(const QString& bind) const;
    /// Has a value written to the logger, which takes its time. Raises 5 while not connected, 13 for a text that is no
    /// number, 6 for a number out of the channel's range.
    void Write(const QString& bind, const Variant& value);

private:
    trellis::SchemeFile& scheme() const;
    site::Logger& logger() const;

    Ref<trellis::SchemeFile> m_scheme;
    Ref<site::Logger> m_logger;
    QString m_loggerUri;
    QString m_loggerProblem;
    bool m_isSimulated = false;
};

} // namespace zan::component
