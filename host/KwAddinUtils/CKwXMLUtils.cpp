#include "CKwXMLUtils.h"

#include "KwBoundedXml.h"
#include "KwRegistry.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QMap>

namespace {

struct LanguageState
{
    QString code = QStringLiteral("en");
    // kind -> "section\nkey" -> text
    QHash<QString, QString> texts[3];
    QMap<int, std::function<void()>> listeners;
    int nextHandle = 1;
};

LanguageState& state()
{
    static LanguageState s;
    return s;
}

QString pseudoCode() { return QStringLiteral("qps"); }

QString joinKey(const QString& section, const QString& key)
{
    return section + QLatin1Char('\n') + key;
}

int kindIndex(const QString& name)
{
    if (name == QLatin1String("PropPage"))
        return 0;
    if (name == QLatin1String("ErrorMessage"))
        return 1;
    if (name == QLatin1String("TreeItem"))
        return 2;
    return -1;
}

// All files of a shipped language, in name order; later files may add to earlier ones.
QStringList shippedFiles(const QString& code)
{
    QDir dir(QStringLiteral(":/kwlang/%1").arg(code));
    QStringList files;
    for (const QString& f : dir.entryList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name))
        files << dir.filePath(f);
    return files;
}

// Language files come from users as well as from us; a translation of everything we show is
// far below this.
constexpr qint64 kMaxLanguageBytes = qint64(4) << 20;

// Parses into `out` (left alone on failure); returns count or -1.
int parseInto(const QByteArray& xml, QString* code, QHash<QString, QString> (&out)[3],
              QString* error)
{
    KwBoundedXmlReader bounded(xml, kMaxLanguageBytes);
    QXmlStreamReader& r = bounded.stream();
    auto fail = [&](const QString& why) {
        if (error)
            *error = why;
        return -1;
    };
    auto readFail = [&] {
        return fail(QStringLiteral("line %1, column %2: %3")
                        .arg(r.lineNumber())
                        .arg(r.columnNumber())
                        .arg(bounded.errorString()));
    };
    if (!r.readNextStartElement())
        return r.hasError() ? readFail() : fail(QStringLiteral("the document has no element"));
    if (r.name() != QLatin1String("KwLanguage"))
        return fail(QStringLiteral("the root element is not KwLanguage"));
    const QString c = r.attributes().value(QLatin1String("code")).toString().trimmed();
    if (c.isEmpty())
        return fail(QStringLiteral("the language has no code"));
    QHash<QString, QString> read[3];
    int count = 0;
    while (r.readNextStartElement()) {
        const int k = r.name() == QLatin1String("Texts")
                          ? kindIndex(r.attributes().value(QLatin1String("kind")).toString())
                          : -1;
        if (k < 0) {
            r.skipCurrentElement(); // a family this host does not know: skip, keep the rest usable
            continue;
        }
        while (r.readNextStartElement()) {
            if (r.name() != QLatin1String("Section")) {
                r.skipCurrentElement();
                continue;
            }
            const QString section = r.attributes().value(QLatin1String("name")).toString();
            while (r.readNextStartElement()) {
                if (r.name() != QLatin1String("Text")) {
                    r.skipCurrentElement();
                    continue;
                }
                const QString key = r.attributes().value(QLatin1String("key")).toString();
                const QString text = r.readElementText(QXmlStreamReader::IncludeChildElements);
                if (key.isEmpty())
                    continue;
                read[k].insert(joinKey(section, key), text);
                ++count;
            }
        }
    }
    while (!r.atEnd())
        r.readNext();
    if (r.hasError())
        return readFail();
    if (code)
        *code = c;
    for (int k = 0; k < 3; ++k)
        out[k].insert(read[k]);
    return count;
}

void notifyListeners()
{
    // Copy: a listener may add or remove listeners.
    const auto listeners = state().listeners;
    for (const auto& l : listeners)
        if (l)
            l();
}

} // namespace

QString CKwXMLUtils::PseudoPrefix() { return QStringLiteral("[~"); }
QString CKwXMLUtils::PseudoSuffix() { return QStringLiteral("~]"); }

QString CKwXMLUtils::Lookup(TextKind kind, const QString& section, const QString& key,
                            const QString& englishDefault)
{
    LanguageState& s = state();
    if (s.code == pseudoCode())
        return PseudoPrefix() + englishDefault + PseudoSuffix();
    if (s.code == QLatin1String("en"))
        return englishDefault;
    const auto& table = s.texts[static_cast<int>(kind)];
    const auto it = table.constFind(joinKey(section, key));
    if (it == table.constEnd() || it->isEmpty())
        return englishDefault;
    return *it;
}

QString CKwXMLUtils::GetInternationalPropPageItemText(const QString& section, const QString& key,
                                                      const QString& englishDefault)
{
    return Lookup(TextKind::PropPage, section, key, englishDefault);
}

QString CKwXMLUtils::GetInternationalErrorMessageItemText(const QString& section,
                                                          const QString& key,
                                                          const QString& englishDefault)
{
    return Lookup(TextKind::ErrorMessage, section, key, englishDefault);
}

QString CKwXMLUtils::GetInternationalTreeItemText(const QString& section, const QString& key,
                                                  const QString& englishDefault)
{
    return Lookup(TextKind::TreeItem, section, key, englishDefault);
}

QString CKwXMLUtils::GetCurrentLanguage() { return state().code; }

QStringList CKwXMLUtils::GetAvailableLanguages()
{
    return {QStringLiteral("en"), QStringLiteral("de"), pseudoCode()};
}

QString CKwXMLUtils::GetLanguageDisplayName(const QString& code)
{
    if (code == QLatin1String("en"))
        return QStringLiteral("English");
    if (code == QLatin1String("de"))
        return QStringLiteral("Deutsch");
    if (code == pseudoCode())
        return QStringLiteral("Pseudo-language");
    return code;
}

bool CKwXMLUtils::SetCurrentLanguage(const QString& code, QString* error)
{
    LanguageState& s = state();
    if (code == QLatin1String("en") || code == pseudoCode()) {
        for (auto& t : s.texts)
            t.clear();
        s.code = code;
        notifyListeners();
        return true;
    }
    if (!GetAvailableLanguages().contains(code)) {
        if (error)
            *error = QStringLiteral("unknown language \"%1\"").arg(code);
        return false;
    }
    const QStringList files = shippedFiles(code);
    if (files.isEmpty()) {
        if (error)
            *error = QStringLiteral("no language files for \"%1\"").arg(code);
        return false;
    }
    QHash<QString, QString> texts[3];
    for (const QString& path : files) {
        QFile f(path);
        if (!f.open(QIODevice::ReadOnly)) {
            if (error)
                *error = QStringLiteral("cannot read %1").arg(path);
            return false;
        }
        QString fileCode;
        if (parseInto(f.read(kMaxLanguageBytes + 1), &fileCode, texts, error) < 0)
            return false;
    }
    for (int i = 0; i < 3; ++i)
        s.texts[i] = std::move(texts[i]);
    s.code = code;
    notifyListeners();
    return true;
}

bool CKwXMLUtils::LoadLanguageFile(const QString& path, QString* error)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("cannot read %1").arg(path);
        return false;
    }
    QHash<QString, QString> texts[3];
    QString code;
    if (parseInto(f.read(kMaxLanguageBytes + 1), &code, texts, error) < 0)
        return false;
    LanguageState& s = state();
    for (int i = 0; i < 3; ++i)
        s.texts[i] = std::move(texts[i]);
    // A file that calls itself English still translates: it is someone's corrected English.
    s.code = code == QLatin1String("en") ? QStringLiteral("en-file") : code;
    notifyListeners();
    return true;
}

int CKwXMLUtils::ParseLanguageDocument(const QByteArray& xml, QString* code, QString* error)
{
    QHash<QString, QString> texts[3];
    return parseInto(xml, code, texts, error);
}

int CKwXMLUtils::AddLanguageChangedListener(std::function<void()> listener)
{
    LanguageState& s = state();
    const int h = s.nextHandle++;
    s.listeners.insert(h, std::move(listener));
    return h;
}

void CKwXMLUtils::RemoveLanguageChangedListener(int handle) { state().listeners.remove(handle); }

void CKwXMLUtils::ApplyLanguageSetting()
{
    const QString code = KwReadRegistryCurrentUser(LanguageSettingSection(),
                                                   LanguageSettingEntry(), QStringLiteral("en"));
    if (code != GetCurrentLanguage() && !SetCurrentLanguage(code))
        SetCurrentLanguage(QStringLiteral("en"));
}
