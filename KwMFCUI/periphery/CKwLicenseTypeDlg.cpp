#include "CKwLicenseTypeDlg.h"

#include "KwControls.h"
#include "KwLangText.h"
#include "KwRegistry.h"
#include "KwStyle.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

constexpr const char* kSection = "LicenseTypeDlg";
const QString kRegistrySection = QStringLiteral("License");
const QString kTypeEntry = QStringLiteral("Type");
const QString kServerEntry = QStringLiteral("LicenseServer");

struct TypeText
{
    const char* nameKey;
    const char* name;
    const char* descriptionKey;
    const char* description;
};

const TypeText kTypes[CKwLicenseTypeDlg::TypeCount] = {
    {"DropDownEvaluation", "Evaluation",
     "LabelEvaluationDescription",
     "Every analysis for a limited time; reports carry an evaluation note."},
    {"DropDownStandard", "Standard",
     "LabelStandardDescription",
     "Linear static, modal and thermal analyses, mesh tools and results."},
    {"DropDownProfessional", "Professional",
     "LabelProfessionalDescription",
     "Standard, plus nonlinear, dynamic, fatigue and optimization studies."},
    {"DropDownNetwork", "Network",
     "LabelNetworkDescription",
     "Professional, drawn from a license server of the company network."},
};

} // namespace

CKwLicenseTypeDlg::CKwLicenseTypeDlg(QWidget* parent) : CKwMFCDialog(kTemplateId, nullptr, parent)
{
    auto* outer = new QVBoxLayout(this);
    auto* typeGroup = new QGroupBox(this);
    KwSetControlId(typeGroup, IDC_GROUP_TYPE);
    auto* typeLayout = new QGridLayout(typeGroup);
    m_types = new QButtonGroup(this);
    for (int t = 0; t < TypeCount; ++t) {
        auto* radio = new QRadioButton(typeGroup);
        KwSetControlId(radio, IDC_RADIO_FIRST + t);
        auto* description = new QLabel(typeGroup);
        KwSetControlId(description, IDC_DESCRIPTION_FIRST + t);
        description->setWordWrap(true);
        description->setForegroundRole(QPalette::PlaceholderText);
        // The description sits under its type's name, indented to the name's text.
        description->setIndent(radio->sizeHint().height());
        typeLayout->addWidget(radio, 2 * t, 0);
        typeLayout->addWidget(description, 2 * t + 1, 0);
        m_types->addButton(radio, t);
        m_radios << radio;
        m_descriptions << description;
    }
    outer->addWidget(typeGroup);

    auto* statusGroup = new QGroupBox(this);
    KwSetControlId(statusGroup, IDC_GROUP_STATUS);
    auto* statusGrid = new QGridLayout(statusGroup);
    const std::pair<int, int> rows[] = {{IDC_LABEL_SERVER, IDC_SERVER}, {IDC_LABEL_STATUS, IDC_STATUS}};
    for (int r = 0; r < 2; ++r) {
        auto* label = new QLabel(statusGroup);
        KwSetControlId(label, rows[r].first);
        auto* value = new QLabel(statusGroup);
        KwSetControlId(value, rows[r].second);
        value->setProperty("kwData", true);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        statusGrid->addWidget(label, r, 0);
        statusGrid->addWidget(value, r, 1);
    }
    KwStyle::ApplyFormGrid(statusGrid);
    outer->addWidget(statusGroup);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    auto* ok = new QPushButton(this);
    KwSetControlId(ok, 1);
    ok->setDefault(true);
    auto* cancel = new QPushButton(this);
    KwSetControlId(cancel, 2);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    outer->addLayout(buttons);
    connect(ok, &QPushButton::clicked, this, &CKwLicenseTypeDlg::OnOK);
    connect(cancel, &QPushButton::clicked, this, &CKwMFCDialog::OnCancel);

    m_current = GetStoredType();
    SetChosenType(m_current);
}

int CKwLicenseTypeDlg::GetStoredType()
{
    const int t = KwReadRegistryCurrentUser(kRegistrySection, kTypeEntry, int(Standard));
    return t >= 0 && t < TypeCount ? t : int(Standard);
}

QString CKwLicenseTypeDlg::GetStoredServer()
{
    return KwReadRegistryCurrentUser(kRegistrySection, kServerEntry, QString()).trimmed();
}

int CKwLicenseTypeDlg::GetChosenType() const { return m_types->checkedId(); }

void CKwLicenseTypeDlg::SetChosenType(int type)
{
    if (QAbstractButton* b = m_types->button(type))
        b->setChecked(true);
}

void CKwLicenseTypeDlg::SetTextToCurrentLang()
{
    setWindowTitle(KwPropText(kSection, "Title", "License Type"));
    KwSetControlText(this, IDC_GROUP_TYPE, KwPropText(kSection, "GroupType", "License type"));
    const QString current = KwPropText(kSection, "LabelCurrent", "%1 (in use)");
    for (int t = 0; t < TypeCount; ++t) {
        const QString name = KwPropText(kSection, kTypes[t].nameKey, kTypes[t].name);
        m_radios[t]->setText(t == m_current ? current.arg(name) : name);
        m_descriptions[t]->setText(
            KwPropText(kSection, kTypes[t].descriptionKey, kTypes[t].description));
    }
    KwSetControlText(this, IDC_GROUP_STATUS, KwPropText(kSection, "GroupStatus", "Server and status"));
    KwSetControlText(this, IDC_LABEL_SERVER,
                     KwLabel(KwPropText(kSection, "LabelServer", "License server")));
    KwSetControlText(this, IDC_LABEL_STATUS, KwLabel(KwPropText(kSection, "LabelStatus", "Status")));
    const QString server = GetStoredServer();
    KwSetControlText(this, IDC_SERVER,
                     server.isEmpty() ? KwPropText(kSection, "LabelNoServer", "None (local license)")
                                      : server);
    KwSetControlText(this, IDC_STATUS,
                     KwPropText(kSection, "LabelStatusValid",
                                "Valid: every function of the chosen type is available."));
    KwSetControlText(this, 1, KwPropText("General", "ButtonOk", "OK"));
    KwSetControlText(this, 2, KwPropText("General", "ButtonCancel", "Cancel"));
}

void CKwLicenseTypeDlg::OnOK()
{
    const int chosen = GetChosenType();
    if (chosen >= 0 && chosen < TypeCount) {
        KwWriteToRegistryCurrentUser(kRegistrySection, kTypeEntry, chosen);
        KwFlushRegistry();
    }
    CKwMFCDialog::OnOK();
}
