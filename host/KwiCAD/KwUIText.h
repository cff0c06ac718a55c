#pragma once
// Texts of the entity logics, looked up through the language service by section, key and
// English default. Internal to the host library.
#include "CKwXMLUtils.h"

#include <QString>

namespace KwUIText {

// A property-page text: labels, captions, combo items, titles.
inline QString prop(const char* section, const char* key, const char* english)
{
    return CKwXMLUtils::GetInternationalPropPageItemText(
        QString::fromLatin1(section), QString::fromLatin1(key), QString::fromUtf8(english));
}

// An error message text.
inline QString err(const char* section, const char* key, const char* english)
{
    return CKwXMLUtils::GetInternationalErrorMessageItemText(
        QString::fromLatin1(section), QString::fromLatin1(key), QString::fromUtf8(english));
}

// The label of the subcase list in messages: the model tree's name of the category.
inline QString subcasesLabel()
{
    return CKwXMLUtils::GetInternationalTreeItemText(QStringLiteral("Subcases"),
                                                     QStringLiteral("TreeCategoryText"),
                                                     QStringLiteral("Subcases"));
}

} // namespace KwUIText
