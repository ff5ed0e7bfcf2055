#pragma once

#include "site/History.h"
#include "site/Scheme.h"

#include <QObject>

namespace zan::site {

/// State of a link. Only Connected lets actions run.
enum class LinkState : std::int32_t {
    NotConnected = 0,
    Connecting = 1,
    Connected = 2,
    Disconnecting = 3,
    Broken = 4,
};

/// Flags of Logger::Actions: what the link has been asked to do.
enum LoggerAction : std::int32_t {
    ProgramAction = 1,
    UnloadAction = 2,
    LiveAction = 8, ///< the live connection of a panel
};

/// The connection to a logger.
class Link : public QObject, public binding::Object
{
    Q_OBJECT
public:
    virtual LinkState State() const = 0;
    /// Starts connecting; the outcome arrives as StateChange or Logger::ConnectionError. Nothing while a
    /// connection stands or is being made.
    virtual void Connect() = 0;
    /// Starts disconnecting, or cancels a connection under way.
    virtual void Disconnect() = 0;

    const binding::MemberTable& members() const override;

Q_SIGNALS:
    /// The state has changed to this one.
    void StateChange(int State);
};

/// Records of a log buffer, as a graph or a table reads them. Columns are channels; column 0 is the time.
class LogRecords : public binding::Object
{
public:
    virtual std::int32_t rowCount() const = 0;
    virtual std::int32_t columnCount() const = 0; ///< time column included
    virtual QString columnLabel(std::int32_t column) const = 0;
    virtual QString columnUnits(std::int32_t column) const = 0;
    /// Value of a cell, rows from 0 in order of time; Empty where nothing was logged or outside the table.
    virtual Variant cell(std::int32_t row, std::int32_t column) const = 0;

    const binding::MemberTable& members() const override;
};

class LogBuffer : public binding::Object
{
public:
    virtual std::int16_t RecordCount() const = 0;
    virtual Ref<LogRecords> Records() = 0;

    const binding::MemberTable& members() const override;
};

class LogBuffers : public binding::Object
{
public:
    virtual std::int32_t Count() const = 0;
    /// Buffer by index from 1; raises 9 outside.
    virtual Ref<LogBuffer> Item(std::int32_t index) = 0;

    const binding::MemberTable& members() const override;
    std::unique_ptr<binding::Enumerator> enumerate() override;
};

/// Live reads and writes of a logger's memory. They never block: a read answers from the image of the last data, a
/// write is queued to the logger and seen in the image at once.
class Live : public binding::Object
{
public:
    virtual Ref<LogBuffers> Buffers() = 0;
    /// What is stored over time; Nothing for a logger that keeps no history.
    virtual Ref<site::History> History() { return {}; }
    /// Raw unsigned word of 1 to 8 bytes at an address. Raises 5 for an address or a length that the logger does
    /// not have, and when nothing has been read there yet.
    virtual double ReadMemory(std::int32_t address, std::int16_t bytes) = 0;
    /// Writes a value to a channel: text is converted after the channel's data type, the scaling undone. Raises 13
    /// for text that is no number, 6 for one outside the data type's range, 5 while not connected.
    virtual void WriteChannel(const Ref<Channel>& channel, const Variant& value) = 0;

    const binding::MemberTable& members() const override;
};

/// A remote data logger of a site: its link, its scheme, its live data.
class Logger : public QObject, public binding::Object
{
    Q_OBJECT
public:
    virtual Ref<site::Link> Link() = 0;
    virtual Ref<site::Scheme> Scheme() = 0;
    virtual Ref<site::Live> Live() = 0;
    virtual std::int32_t Actions() const = 0; ///< LoggerAction flags
    virtual void AddAction(std::int32_t flag) = 0;
    virtual void RemoveActions(std::int32_t flags) = 0;
    /// A channel of its own for a single write, belonging to no window.
    virtual Ref<Channel> createChannel() = 0;

    const binding::MemberTable& members() const override;

Q_SIGNALS:
    /// The channels of the logger hold new data.
    void NewBenchData();
    /// The log buffers hold new records.
    void NewENTData();
    void Connected();
    void Disconnected();
    void ConnectionError(const QString& message);
    void ConnectionProgress(const QString& message);
    void ProgramComplete();
    /// Percentage 0 to 100, or negative when there is only a text.
    void ProgramLoggerProgress(int percentage, const QString& message);
    void UnloadComplete();
    void UnloadLoggerProgress(int percentage, const QString& message);
};

} // namespace zan::site
