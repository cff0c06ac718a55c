#include "KwCustomColors.h"

#include "KwRegistry.h"

namespace {
const QString kSection = QStringLiteral("Custom Colors");
QString entry(int i) { return QStringLiteral("Color%1").arg(i); }
} // namespace

KwCustomColors LoadCustomColors()
{
    KwCustomColors c;
    for (int i = 0; i < 16; ++i)
        c[static_cast<std::size_t>(i)] =
            static_cast<unsigned>(KwReadRegistryCurrentUser(kSection, entry(i), 0x00FFFFFF)) &
            0x00FFFFFFu;
    return c;
}

void SaveCustomColors(const KwCustomColors& colors)
{
    for (int i = 0; i < 16; ++i)
        KwWriteToRegistryCurrentUser(kSection, entry(i),
                                     static_cast<int>(colors[static_cast<std::size_t>(i)] &
                                                      0x00FFFFFFu));
}
