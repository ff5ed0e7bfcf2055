#pragma once

#include <QString>

#include <cstdint>
#include <utility>
#include <vector>

namespace zan::halyard {

/// The text that names a logger: scheme, ":", what the scheme makes of the address, and options,
/// `sim:?seed=7&period=500`. Parts may be percent-encoded.
struct LoggerUri
{
    using Option = std::pair<QString, QString>;

    QString scheme;  ///< lower case
    QString address; ///< between ":" and "?", decoded
    std::vector<Option> options;

    /// Longest text that counts as a URI, in characters.
    static constexpr qsizetype Longest = 65536;

    /// Reads a URI. Returns what is wrong with it, empty when nothing is.
    [[nodiscard]] static QString parse(const QString& text, LoggerUri& result);
};

/// Takes the options of a URI one by one, each in its range, and remembers the first thing that is wrong; whatever
/// nobody took is wrong as well. Names do not count case.
class UriOptions
{
public:
    explicit UriOptions(std::vector<LoggerUri::Option> options);

    std::int64_t integer(const QString& name, std::int64_t fallback, std::int64_t lowest, std::int64_t highest);
    double number(const QString& name, double fallback, double lowest, double highest);
    /// 1, true, yes, on or 0, false, no, off.
    bool flag(const QString& name, bool fallback = false);
    QString text(const QString& name, const QString& fallback = {});
    /// One of the choices, given as a list; the index of the first when the option is absent.
    int choice(const QString& name, const QStringList& choices);
    /// Every option whose name begins with the prefix, without it.
    std::vector<LoggerUri::Option> withPrefix(const QString& prefix);

    /// Notes a mistake in an option, unless one has been noted before.
    void reject(const QString& name, const QString& value, const QString& expected);
    /// The first mistake in words, an option that nobody took included; empty when all is well.
    QString error() const;

private:
    struct Entry
    {
        QString name;
        QString value;
        bool isTaken = false;
    };
    Entry* take(const QString& name);

    std::vector<Entry> m_entries;
    QString m_error;
};

} // namespace zan::halyard
