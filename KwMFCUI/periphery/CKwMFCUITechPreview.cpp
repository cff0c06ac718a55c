#include "CKwMFCUITechPreview.h"

#include "CFMView.h"
#include "CKwiCKAddin.h"
#include "KwLangText.h"
#include "ui_CKwMFCUITechPreview.h"

CKwMFCUITechPreview::CKwMFCUITechPreview(CFMView* view, QWidget* parent)
    : CKwMFCDialog(7322, view, parent), m_ui(std::make_unique<Ui::CKwMFCUITechPreview>())
{
    m_ui->setupUi(this);
    connect(m_ui->ok, &QPushButton::clicked, this, &CKwMFCUITechPreview::OnOK);
    connect(m_ui->cancel, &QPushButton::clicked, this, &CKwMFCDialog::OnCancel);
}

CKwMFCUITechPreview::~CKwMFCUITechPreview() = default;

bool CKwMFCUITechPreview::OnInitDialog()
{
    m_ui->enableExplicit->setChecked(TheApplication &&
                                     TheApplication->IsExplicitEnabledInTechPreview());
    // Without an add-in there is nothing the switch could change.
    m_ui->enableExplicit->setEnabled(TheApplication != nullptr);
    return CKwMFCDialog::OnInitDialog();
}

void CKwMFCUITechPreview::SetTextToCurrentLang()
{
    setWindowTitle(KwPropText("TechPreview", "Title", "Tech Preview"));
    m_ui->description->setText(KwPropText(
        "TechPreview", "Description",
        "Features in technical preview are working but not yet complete. Turn them on to try "
        "them; results of preview features should be checked independently."));
    m_ui->features->setTitle(KwPropText("TechPreview", "GroupFeatures", "Preview features"));
    m_ui->enableExplicit->setText(
        KwPropText("TechPreview", "CheckEnableExplicit", "Enable Explicit Analyses"));
    m_ui->explicitNote->setText(KwPropText(
        "TechPreview", "ExplicitNote",
        "Adds explicit dynamics analyses and rigid constraints for them."));
    m_ui->ok->setText(KwPropText("General", "ButtonOk", "OK"));
    m_ui->cancel->setText(KwPropText("General", "ButtonCancel", "Cancel"));
}

void CKwMFCUITechPreview::OnOK()
{
    if (RefuseWhileSolving())
        return;
    if (TheApplication)
        TheApplication->SetExplicitEnabledInTechPreview(m_ui->enableExplicit->isChecked());
    CKwMFCDialog::OnOK();
}
