#include "zanbench/OptionParser.h"

namespace zan::host {

OptionParser::OptionParser(QString command, QString usage)
    : m_command(std::move(command))
    , m_usage(std::move(usage))
{
    m_parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsOptions);
    m_parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    m_parser.addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")});
}

void OptionParser::flag(const QString& name, const QString& description)
{
    m_parser.addOption({name, description});
}

void OptionParser::option(const QString& name, const QString& valueName, const QString& description)
{
    m_parser.addOption({name, description, valueName});
    m_valueOptions.append(name);
}

bool OptionParser::read(const QStringList& arguments, int mostPositional)
{
    m_error = problem(arguments, mostPositional);
    return m_error.isEmpty() && !has(QStringLiteral("help"));
}

QString OptionParser::problem(const QStringList& arguments, int mostPositional)
{
    if (!m_parser.parse(QStringList{QStringLiteral("zanbench")} + arguments))
        return m_parser.errorText();
    const QStringList positional = m_parser.positionalArguments();
    if (positional.size() > mostPositional)
        return QStringLiteral("'%1' is one argument too many.").arg(positional.at(mostPositional));
    for (const QString& name : m_valueOptions)
        if (has(name) && text(name).trimmed().isEmpty())
            return QStringLiteral("The value of --%1 is empty.").arg(name);
    return {};
}

QString OptionParser::hint() const
{
    const QString command = m_command.isEmpty() ? QString() : QLatin1Char(' ') + m_command;
    return QStringLiteral("Try 'zanbench%1 --help'.").arg(command);
}

QString OptionParser::help() const
{
    const QString all = m_parser.helpText();
    return m_usage + QLatin1Char('\n') + all.mid(all.indexOf(QStringLiteral("Options:")));
}

} // namespace zan::host
