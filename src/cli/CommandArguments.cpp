// SPDX-License-Identifier: MIT
#include "cli/CommandArguments.h"

using namespace Qt::Literals::StringLiterals;

CommandArguments::CommandArguments(const QList<QCommandLineOption> &options)
    : m_help(QStringList{u"h"_s, u"help"_s})
{
    m_parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    m_parser.addOptions(options);
    m_parser.addOption(m_help);
}

bool CommandArguments::parse(const QStringList &arguments)
{
    m_arguments = arguments;
    // The parser takes the first argument for the program's name.
    return m_parser.parse(QStringList{u"tavlo"_s} + arguments);
}

qsizetype CommandArguments::count(const QCommandLineOption &option) const
{
    qsizetype given = 0;
    for (const QString &name : m_parser.optionNames())
        given += option.names().contains(name) ? 1 : 0;
    return given;
}

QString CommandArguments::unknownOption() const
{
    const QStringList unknown = m_parser.unknownOptionNames();
    if (unknown.isEmpty())
        return {};
    for (const QString &argument : m_arguments) {
        if (argument == u"--")
            break;
        if (argument.size() < 2 || !argument.startsWith(u'-'))
            continue;
        // "--name=value" and "-name" alike.
        QString name = argument.mid(argument.startsWith(u"--") ? 2 : 1);
        name = name.left(name.indexOf(u'='));
        if (unknown.contains(name))
            return argument;
    }
    return u"-"_s + unknown.constFirst();
}
