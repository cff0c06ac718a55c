#pragma once
// Language service of the host: every caption and message of the add-in is looked up here by
// (section, key, English default). English is the defaults themselves; other languages come
// from language files; the pseudo-language "qps" marks every text it hands out.
#include "KwAddinUtilsExport.h"

#include <QString>
#include <QStringList>
#include <functional>

class KWADDINUTILS_EXPORT CKwXMLUtils
{
public:
    // The three text families keep separate tables, as the same key may mean different
    // things as a label, as a message and as a tree item.
    enum class TextKind { PropPage, ErrorMessage, TreeItem };

    static QString GetInternationalPropPageItemText(const QString& section, const QString& key,
                                                    const QString& englishDefault);
    static QString GetInternationalErrorMessageItemText(const QString& section,
                                                        const QString& key,
                                                        const QString& englishDefault);
    static QString GetInternationalTreeItemText(const QString& section, const QString& key,
                                                const QString& englishDefault);

    // Language code of the current language: "en", "de", or "qps" (pseudo).
    static QString GetCurrentLanguage();
    // Switches the language; loads the language file if needed. Returns false (and keeps the
    // current language) for an unknown code or an unreadable file, with the reason in *error.
    static bool SetCurrentLanguage(const QString& code, QString* error = nullptr);
    // Codes of the languages shipped with the host, "en" first.
    static QStringList GetAvailableLanguages();
    // Display name of a language code ("English", "Deutsch", ...).
    static QString GetLanguageDisplayName(const QString& code);
    // Reads a language file from outside the shipped set and makes it the current language.
    static bool LoadLanguageFile(const QString& path, QString* error = nullptr);
    // Parses language-file text; exposed for tests and the fuzz target. Returns the number of
    // texts read, or -1 on a malformed document (error text in *error).
    static int ParseLanguageDocument(const QByteArray& xml, QString* code, QString* error);

    // The marks the pseudo-language puts around every text.
    static QString PseudoPrefix();
    static QString PseudoSuffix();

    // Called after every successful language switch (the host re-captions its windows).
    static int AddLanguageChangedListener(std::function<void()> listener);
    static void RemoveLanguageChangedListener(int handle);

    // The language setting lives in the per-user settings under this section and entry.
    static QString LanguageSettingSection() { return QStringLiteral("Language"); }
    static QString LanguageSettingEntry() { return QStringLiteral("Current"); }
    // Reads the language setting and switches to it (unknown values keep English).
    static void ApplyLanguageSetting();

private:
    static QString Lookup(TextKind kind, const QString& section, const QString& key,
                          const QString& englishDefault);
};
