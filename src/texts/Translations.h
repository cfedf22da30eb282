// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QTranslator>
#include <initializer_list>

class Language;

// Tavlo's texts in one language, from its Qt translation file ("tavlo_de.qm"
// built into the app; English carries only its plural forms). Each language
// is loaded once per process and then only read, from any thread.
//
// Calls are written as translate(context, source, disambiguation[, n]) so
// that lupdate finds them (scripts/update-translations).
class Translations
{
public:
    static const Translations &of(Language language);

    // The codes of the languages with a translation file, English aside. A
    // folder in $TAVLO_TRANSLATIONS comes first, so that a translator can
    // try a file without building Tavlo.
    static QStringList codes();

    // The translation of `source`, or `source` itself when there is none.
    QString translate(const char *context, const char *source,
                      const char *disambiguation = nullptr) const;
    // The form of `source` for `n` things, with %n replaced by n. The form
    // follows the number's size, so -1 day reads as 1 day does.
    QString translate(const char *context, const char *source, const char *disambiguation,
                      qint64 n) const;

private:
    explicit Translations(const QString &code);

    QTranslator m_translator;
};

// `text` with %1, %2, ... replaced by `arguments` in one pass: an argument
// that holds "%2" itself stays as it is, and a placeholder the translation
// leaves out is no fault.
QString filled(const QString &text, std::initializer_list<QString> arguments);
