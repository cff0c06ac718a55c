#include "KwRegistry.h"

#include <QSettings>
#include <memory>

namespace {

QString& registryFile()
{
    static QString path = qEnvironmentVariable("KW_SETTINGS_FILE");
    return path;
}

std::unique_ptr<QSettings> openSettings()
{
    if (!registryFile().isEmpty())
        return std::make_unique<QSettings>(registryFile(), QSettings::IniFormat);
    // Fixed organisation and application names: the add-in never relies on (or changes) the
    // host application's names.
    return std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope,
                                       QStringLiteral("KwAddin"), QStringLiteral("KwMFCUI"));
}

QString keyPath(const QString& section, const QString& entry, const QString& subkey)
{
    QString path;
    if (!subkey.isEmpty())
        path += subkey + QLatin1Char('/');
    if (!section.isEmpty())
        path += section + QLatin1Char('/');
    return path + entry;
}

} // namespace

int KwReadRegistryCurrentUser(const QString& section, const QString& entry, int defaultValue,
                              const QString& subkey)
{
    const auto s = openSettings();
    const QVariant v = s->value(keyPath(section, entry, subkey));
    if (!v.isValid())
        return defaultValue;
    bool ok = false;
    const int n = v.toString().trimmed().toInt(&ok);
    return ok ? n : defaultValue;
}

QString KwReadRegistryCurrentUser(const QString& section, const QString& entry,
                                  const QString& defaultValue, const QString& subkey)
{
    const auto s = openSettings();
    const QVariant v = s->value(keyPath(section, entry, subkey));
    return v.isValid() ? v.toString() : defaultValue;
}

bool KwWriteToRegistryCurrentUser(const QString& section, const QString& entry, int value,
                                  const QString& subkey)
{
    const auto s = openSettings();
    s->setValue(keyPath(section, entry, subkey), value);
    s->sync();
    return s->status() == QSettings::NoError;
}

bool KwWriteToRegistryCurrentUser(const QString& section, const QString& entry,
                                  const QString& value, const QString& subkey)
{
    const auto s = openSettings();
    s->setValue(keyPath(section, entry, subkey), value);
    s->sync();
    return s->status() == QSettings::NoError;
}

bool KwRegistryHasEntry(const QString& section, const QString& entry, const QString& subkey)
{
    return openSettings()->contains(keyPath(section, entry, subkey));
}

void KwSetRegistryFile(const QString& path) { registryFile() = path; }

QString KwRegistryFile()
{
    return registryFile().isEmpty() ? openSettings()->fileName() : registryFile();
}
