// SPDX-License-Identifier: MIT
#include "texts/Translations.h"

#include "texts/Language.h"

#include <QDir>
#include <QMutex>
#include <map>
#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString builtIn = u":/i18n"_s;

QStringList folders()
{
    QStringList result;
    if (const QString tried = qEnvironmentVariable("TAVLO_TRANSLATIONS"); !tried.isEmpty())
        result.append(tried);
    result.append(builtIn);
    return result;
}

} // namespace

Translations::Translations(const QString &code)
{
    for (const QString &folder : folders()) {
        if (m_translator.load(u"tavlo_"_s + code, folder))
            break;
    }
}

const Translations &Translations::of(Language language)
{
    static QMutex mutex;
    static std::map<QString, std::unique_ptr<Translations>> loaded;
    const QMutexLocker lock(&mutex);
    std::unique_ptr<Translations> &translations = loaded[language.code()];
    if (!translations)
        translations.reset(new Translations(language.code()));
    return *translations;
}

QStringList Translations::codes()
{
    static const QStringList found = [] {
        QStringList codes;
        for (const QString &folder : folders()) {
            for (const QString &file :
                 QDir(folder).entryList({u"tavlo_*.qm"_s}, QDir::Files, QDir::Name)) {
                const QString code = file.mid(6, file.size() - 9);
                if (code != u"en" && !codes.contains(code))
                    codes.append(code);
            }
        }
        return codes;
    }();
    return found;
}

QString Translations::translate(const char *context, const char *source,
                                const char *disambiguation) const
{
    const QString text = m_translator.translate(context, source, disambiguation);
    return text.isEmpty() ? QString::fromUtf8(source) : text;
}

QString Translations::translate(const char *context, const char *source, const char *disambiguation,
                                qint64 n) const
{
    const int form = int(qMin<qint64>(n < 0 ? -n : n, std::numeric_limits<int>::max()));
    QString text = m_translator.translate(context, source, disambiguation, form);
    if (text.isEmpty())
        text = QString::fromUtf8(source);
    return text.replace(u"%n"_s, QString::number(n));
}

QString filled(const QString &text, std::initializer_list<QString> arguments)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == u'%' && i + 1 < text.size()) {
            const int number = text.at(i + 1).digitValue();
            if (number >= 1 && size_t(number) <= arguments.size()) {
                result += *(arguments.begin() + (number - 1));
                ++i;
                continue;
            }
        }
        result += c;
    }
    return result;
}
