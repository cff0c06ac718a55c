#pragma once
// Per-user settings of the add-in ("registry" in the host's terms), kept through QSettings:
// the registry on Windows, an INI file on Linux. Sections map to groups, entries to keys.
#include "KwAddinUtilsExport.h"

#include <QString>

// Reads an integer entry; a missing or non-numeric entry yields `defaultValue`.
KWADDINUTILS_EXPORT int KwReadRegistryCurrentUser(const QString& section, const QString& entry,
                                                  int defaultValue,
                                                  const QString& subkey = QString());
// Reads a string entry; a missing entry yields `defaultValue`.
KWADDINUTILS_EXPORT QString KwReadRegistryCurrentUser(const QString& section,
                                                      const QString& entry,
                                                      const QString& defaultValue,
                                                      const QString& subkey = QString());
KWADDINUTILS_EXPORT bool KwWriteToRegistryCurrentUser(const QString& section,
                                                      const QString& entry, int value,
                                                      const QString& subkey = QString());
KWADDINUTILS_EXPORT bool KwWriteToRegistryCurrentUser(const QString& section,
                                                      const QString& entry,
                                                      const QString& value,
                                                      const QString& subkey = QString());
// True when the entry exists.
KWADDINUTILS_EXPORT bool KwRegistryHasEntry(const QString& section, const QString& entry,
                                            const QString& subkey = QString());
// Writes pending entries to disk now. Writes otherwise reach the disk at the next turn of the
// event loop and at exit; a host calls this before handing the file to another process.
KWADDINUTILS_EXPORT bool KwFlushRegistry();
// Redirects all settings to one INI file (tests, and `kwhost --settings FILE`). An empty path
// restores the platform default location.
KWADDINUTILS_EXPORT void KwSetRegistryFile(const QString& path);
KWADDINUTILS_EXPORT QString KwRegistryFile();
// Removes every entry of a section; returns how many there were.
KWADDINUTILS_EXPORT int KwRemoveRegistrySection(const QString& section,
                                                const QString& subkey = QString());
