#pragma once

#include "zanbench/CommandLine.h"

#include <QCommandLineParser>

#include <optional>

namespace zan::host {

/// A day or a moment as ISO 8601 writes it, as milliseconds since 1970 in UTC: local, unless the text says how far it is
/// from UTC. Nothing for what is none.
std::optional<std::int64_t> momentFromIso(const QString& text);

/// The command line of one command, with what every command has. Qt reads single-dash words as clusters of short
/// options; here they are long options mistyped and refused by name. An option that is given without a value is
/// refused: nobody means `--logger ''`.
class OptionParser
{
public:
    /// The command's name ("shot"; empty for opening a window) and the head of its help.
    OptionParser(QString command, QString usage);

    void flag(const QString& name, const QString& description);
    void option(const QString& name, const QString& valueName, const QString& description);

    /// False when the words ask for help or cannot be read; answer() is then all there is to say.
    bool read(const QStringList& arguments, int mostPositional);
    template <class Options>
    Parsed<Options> answer() const
    {
        return m_error.isEmpty() ? Parsed<Options>{std::nullopt, help(), Success} : misuse<Options>(m_error);
    }
    /// The words make no sense: why, and where to read more.
    template <class Options>
    Parsed<Options> misuse(const QString& message) const
    {
        return {std::nullopt, QStringLiteral("%1 %2").arg(message, hint()), Misuse};
    }

    bool has(const QString& name) const { return m_parser.isSet(name); }
    QString text(const QString& name) const { return m_parser.value(name); }
    QString positional(int place = 0) const { return m_parser.positionalArguments().value(place); }
    /// The command's own help: its usage and its options.
    QString help() const;

private:
    QString problem(const QStringList& arguments, int mostPositional);
    QString hint() const;

    QCommandLineParser m_parser;
    QString m_command;
    QString m_usage;
    QStringList m_valueOptions;
    QString m_error; // empty when help was asked for
};

} // namespace zan::host
