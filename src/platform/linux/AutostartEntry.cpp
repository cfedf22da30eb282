// SPDX-License-Identifier: MIT
#include "platform/linux/AutostartEntry.h"

#include "core/OneLine.h"
#include "platform/linux/PlatformFile.h"

#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QStandardPaths>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

// One argument of an Exec line: in double quotes with `"`, `` ` ``, `$` and
// `\` escaped, "%" doubled (field codes), then the backslashes doubled as
// every value of a desktop entry needs, and a line break, carriage return or
// tab written as the entry's own escape (\n, \r, \t) so that it stays in its
// line.
QString execArgument(const QString &word)
{
    QString escaped;
    for (const QChar c : word) {
        if (c == u'"' || c == u'`' || c == u'$' || c == u'\\')
            escaped += u'\\';
        if (c == u'%')
            escaped += u'%';
        escaped += c;
    }
    escaped = u'"' + escaped + u'"';
    return escaped.replace(u'\\', u"\\\\"_s)
        .replace(u'\n', u"\\n"_s)
        .replace(u'\r', u"\\r"_s)
        .replace(u'\t', u"\\t"_s);
}

// A desktop entry has no escape for the other control characters: such a
// word cannot be written at all.
bool carriable(const QString &word)
{
    return std::none_of(word.begin(), word.end(), [](QChar c) {
        const char16_t u = c.unicode();
        return (u < 0x20 && u != u'\n' && u != u'\r' && u != u'\t') || u == 0x7f;
    });
}

} // namespace

AutostartEntry::AutostartEntry(QString autostartFolder, QString program, QStringList environment,
                               QString backgroundLock, CommandRunner *starter)
    : m_path(QDir(autostartFolder).filePath(fileName())), m_program(std::move(program)),
      m_environment(std::move(environment)), m_backgroundLock(std::move(backgroundLock)),
      m_starter(starter)
{}

QString AutostartEntry::defaultFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           u"/autostart"_s;
}

QString AutostartEntry::fileName()
{
    return u"io.github.tavlo.Tavlo-reminders.desktop"_s;
}

QByteArray AutostartEntry::entry() const
{
    return entryFor(m_program, m_environment, {u"deliver-reminders"_s});
}

QByteArray AutostartEntry::entryFor(const QString &program, const QStringList &environment,
                                    const QStringList &arguments, const QString &onlyShowIn)
{
    QStringList exec;
    if (!environment.isEmpty())
        exec << u"env"_s;
    for (const QString &variable : environment)
        exec << execArgument(variable);
    exec << execArgument(program) << arguments;
    return (u"[Desktop Entry]\n"
            "Type=Application\n"
            "Name=Tavlo\n"
            "Icon=io.github.tavlo.Tavlo\n"
            "Exec="_s +
            exec.join(u' ') +
            u"\n"
            "NoDisplay=true\n"
            "Terminal=false\n"_s +
            (onlyShowIn.isEmpty() ? QString() : u"OnlyShowIn="_s + onlyShowIn + u";\n"_s) +
            u"X-GNOME-Autostart-enabled=true\n"_s)
        .toUtf8();
}

bool AutostartEntry::carries(const QStringList &words)
{
    return std::all_of(words.begin(), words.end(), carriable);
}

std::optional<QString> AutostartEntry::apply(const QList<PendingReminder> &waiting)
{
    if (waiting.isEmpty()) {
        QFile::remove(m_path);
        return std::nullopt;
    }
    const QStringList words = m_environment + QStringList{m_program};
    for (const QString &word : words) {
        if (!carriable(word)) {
            // The entry there stays as it was.
            return u"could not save %1: \"%2\" holds a control character that an autostart "
                   "entry cannot carry"_s.arg(m_path, oneLine(word));
        }
    }
    bool changed = false;
    const std::optional<QString> error = PlatformFile::update(m_path, entry(), &changed);
    // This login too: the background Tavlo starts now unless it runs.
    QLockFile background(m_backgroundLock);
    if (m_starter && background.tryLock(0)) {
        background.unlock();
        m_starter->startDetached(m_program, {u"deliver-reminders"_s});
    }
    return error;
}
