#pragma once
// Method logger of the host: framework methods report entry and exit as "Class::Method".
// Records go to a bounded in-memory journal (readable by the host and by tests) and, when the
// environment variable KW_METHOD_LOG is set, to standard error.
#include "KwAddinUtilsExport.h"

#include <QString>
#include <QStringList>

class KWADDINUTILS_EXPORT CKwMethodLogger
{
public:
    explicit CKwMethodLogger(const char* method);
    ~CKwMethodLogger();
    CKwMethodLogger(const CKwMethodLogger&) = delete;
    CKwMethodLogger& operator=(const CKwMethodLogger&) = delete;

    // Journal lines are "> Class::Method" on entry and "< Class::Method" on exit.
    static QStringList Journal();
    static void ClearJournal();
    static void LogLine(const QString& line);

private:
    const char* m_method;
};

#define KW_LOG_METHOD(name) CKwMethodLogger kwMethodLogger__(name)
