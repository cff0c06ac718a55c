#include "KwRegistry.h"

#include <QMutex>
#include <QSettings>
#include <memory>

namespace {

// One settings object for the process, guarded by a mutex: opening QSettings on every read
// costs a file check, and syncing on every write costs a disk flush, which a dialog that saves
// its placement pays several times on close. Writes stay in memory and reach the disk at the
// next turn of the event loop (QSettings posts that itself), on KwFlushRegistry, when the file
// is redirected, and at exit.
struct Store
{
    QMutex mutex;
    QString path = qEnvironmentVariable("KW_SETTINGS_FILE");
    std::unique_ptr<QSettings> settings;

    QSettings& open()
    {
        if (!settings) {
            if (!path.isEmpty())
                settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
            else
                // Fixed organisation and application names: the add-in never relies on (or
                // changes) the host application's names.
                settings = std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope,
                                                       QStringLiteral("KwAddin"),
                                                       QStringLiteral("KwMFCUI"));
        }
        return *settings;
    }
};

Store& store()
{
    static Store s;
    return s;
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

QVariant readValue(const QString& key)
{
    Store& s = store();
    const QMutexLocker lock(&s.mutex);
    return s.open().value(key);
}

bool writeValue(const QString& key, const QVariant& value)
{
    Store& s = store();
    const QMutexLocker lock(&s.mutex);
    QSettings& settings = s.open();
    settings.setValue(key, value);
    // A file that cannot be written shows from the last flush on; report it to the caller.
    return settings.status() == QSettings::NoError;
}

} // namespace

int KwReadRegistryCurrentUser(const QString& section, const QString& entry, int defaultValue,
                              const QString& subkey)
{
    const QVariant v = readValue(keyPath(section, entry, subkey));
    if (!v.isValid())
        return defaultValue;
    bool ok = false;
    const int n = v.toString().trimmed().toInt(&ok);
    return ok ? n : defaultValue;
}

QString KwReadRegistryCurrentUser(const QString& section, const QString& entry,
                                  const QString& defaultValue, const QString& subkey)
{
    const QVariant v = readValue(keyPath(section, entry, subkey));
    return v.isValid() ? v.toString() : defaultValue;
}

bool KwWriteToRegistryCurrentUser(const QString& section, const QString& entry, int value,
                                  const QString& subkey)
{
    return writeValue(keyPath(section, entry, subkey), value);
}

bool KwWriteToRegistryCurrentUser(const QString& section, const QString& entry,
                                  const QString& value, const QString& subkey)
{
    return writeValue(keyPath(section, entry, subkey), value);
}

bool KwRegistryHasEntry(const QString& section, const QString& entry, const QString& subkey)
{
    Store& s = store();
    const QMutexLocker lock(&s.mutex);
    return s.open().contains(keyPath(section, entry, subkey));
}

bool KwFlushRegistry()
{
    Store& s = store();
    const QMutexLocker lock(&s.mutex);
    if (!s.settings)
        return true;
    s.settings->sync();
    return s.settings->status() == QSettings::NoError;
}

void KwSetRegistryFile(const QString& path)
{
    Store& s = store();
    const QMutexLocker lock(&s.mutex);
    if (s.settings)
        s.settings->sync();
    s.settings.reset();
    s.path = path;
}

QString KwRegistryFile()
{
    Store& s = store();
    const QMutexLocker lock(&s.mutex);
    return s.path.isEmpty() ? s.open().fileName() : s.path;
}

int KwRemoveRegistrySection(const QString& section, const QString& subkey)
{
    if (section.isEmpty())
        return 0; // never the whole store
    Store& s = store();
    const QMutexLocker lock(&s.mutex);
    QSettings& settings = s.open();
    const QString group = keyPath(section, QString(), subkey);
    settings.beginGroup(group.endsWith(QLatin1Char('/')) ? group.chopped(1) : group);
    const int count = int(settings.allKeys().size());
    settings.remove(QString());
    settings.endGroup();
    return count;
}
