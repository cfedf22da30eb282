// SPDX-License-Identifier: MIT
#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QList>
#include <QStringList>

// How every command reads its arguments: Qt's parser, options written with
// two dashes or one ("--json", "-json"), "-h" and "--help" anywhere before a
// "--", which ends the options (so that a file may be named "--help"), and
// "-" an argument like any other (standard input or output).
class CommandArguments
{
public:
    // The command's options besides -h and --help.
    explicit CommandArguments(const QList<QCommandLineOption> &options = {});

    // `arguments` follow the command's own name. False when an option is
    // unknown, lacks its value or has one it takes none of: errorText() and
    // unknownOption() say which.
    bool parse(const QStringList &arguments);

    bool helpAsked() const { return m_parser.isSet(m_help); }
    bool isSet(const QCommandLineOption &option) const { return m_parser.isSet(option); }
    QString value(const QCommandLineOption &option) const { return m_parser.value(option); }
    QStringList values(const QCommandLineOption &option) const { return m_parser.values(option); }
    // How often a flag was given.
    qsizetype count(const QCommandLineOption &option) const;
    QStringList positional() const { return m_parser.positionalArguments(); }

    // Qt's one line on what was wrong ("Unknown option 'x'.").
    QString errorText() const { return m_parser.errorText(); }
    // The first argument taken for an option the command does not know, as
    // it was typed ("--hepl", "-x"); empty when there was none.
    QString unknownOption() const;

private:
    QCommandLineParser m_parser;
    const QCommandLineOption m_help;
    QStringList m_arguments;
};
