#include "CKwHideMembersButton.h"

#include "KwLangText.h"

namespace {
const char* const kShown = ":/kwmfcui/icons/members-shown-7474.svg";
const char* const kShownOff = ":/kwmfcui/icons/members-shown-disabled-7471.svg";
const char* const kHidden = ":/kwmfcui/icons/members-hidden-7472.svg";
const char* const kHiddenOff = ":/kwmfcui/icons/members-hidden-disabled-7473.svg";
} // namespace

CKwHideMembersButton::CKwHideMembersButton(QWidget* parent) : QToolButton(parent)
{
    connect(this, &QToolButton::clicked, this, [this] {
        m_shown = !m_shown;
        apply();
        Q_EMIT membersShownChanged(m_shown);
    });
    apply();
}

void CKwHideMembersButton::SetToolTips(const KwPrompt& whileShown, const KwPrompt& whileHidden)
{
    m_tipShown = whileShown;
    m_tipHidden = whileHidden;
    apply();
}

void CKwHideMembersButton::SetMembersShown(bool shown)
{
    m_shown = shown;
    apply();
}

QString CKwHideMembersButton::GetPicture() const
{
    return QString::fromLatin1(m_shown ? kShown : kHidden);
}

void CKwHideMembersButton::Retranslate() { apply(); }

void CKwHideMembersButton::apply()
{
    // One icon per state, built once per module: its pictures are parsed a single time.
    static const auto build = [](const char* normal, const char* disabled) {
        QIcon pic;
        pic.addFile(QString::fromLatin1(normal), QSize(), QIcon::Normal);
        pic.addFile(QString::fromLatin1(disabled), QSize(), QIcon::Disabled);
        return pic;
    };
    static const auto* shown = new QIcon(build(kShown, kShownOff));
    static const auto* hidden = new QIcon(build(kHidden, kHiddenOff));
    setIcon(m_shown ? *shown : *hidden);
    const KwPrompt& tip = m_shown ? m_tipShown : m_tipHidden;
    setToolTip(KwPropText(tip.section, tip.key, tip.english));
}
