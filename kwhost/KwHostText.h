#pragma once
// The demo host's own texts (menus, status bar, tree, its plots) come from the language service
// like the library's: section "KwHost", the English text as the default.
#include "CKwXMLUtils.h"

#include <QString>

inline QString KwHostText(const QString& key, const QString& english)
{
    return CKwXMLUtils::GetInternationalPropPageItemText(QStringLiteral("KwHost"), key, english);
}

inline QString KwHostText(const char* key, const char* english)
{
    return CKwXMLUtils::GetInternationalPropPageItemText(
        QStringLiteral("KwHost"), QString::fromLatin1(key), QString::fromUtf8(english));
}

inline QString KwHostTreeText(const char* key, const char* english)
{
    return CKwXMLUtils::GetInternationalTreeItemText(
        QStringLiteral("KwHost"), QString::fromLatin1(key), QString::fromUtf8(english));
}
