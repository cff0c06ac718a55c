#include "KwMethodLogger.h"

#include <QtGlobal>
#include <cstdio>
#include <deque>

namespace {

constexpr std::size_t kJournalLimit = 4096;

std::deque<QString>& journal()
{
    static std::deque<QString> j;
    return j;
}

bool echo()
{
    static const bool on = qEnvironmentVariableIsSet("KW_METHOD_LOG");
    return on;
}

} // namespace

void CKwMethodLogger::LogLine(const QString& line)
{
    auto& j = journal();
    if (j.size() >= kJournalLimit)
        j.pop_front();
    j.push_back(line);
    if (echo())
        std::fprintf(stderr, "%s\n", qPrintable(line));
}

CKwMethodLogger::CKwMethodLogger(const char* method) : m_method(method)
{
    LogLine(QStringLiteral("> ") + QString::fromLatin1(m_method));
}

CKwMethodLogger::~CKwMethodLogger() { LogLine(QStringLiteral("< ") + QString::fromLatin1(m_method)); }

QStringList CKwMethodLogger::Journal()
{
    QStringList out;
    for (const auto& l : journal())
        out << l;
    return out;
}

void CKwMethodLogger::ClearJournal() { journal().clear(); }
