#include "CKwMFCUIDamping.h"

#include "CKwFEModel.h"
#include "CKwTable.h"
#include "CKwTableDialog.h"
#include "KwControls.h"
#include "KwMessageBox.h"
#include "ui_CKwMFCUIDamping.h"

#include <QAbstractButton>

namespace {

using T = KwTextTarget;
using D = CKwUIDamping;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

// Control codes of the logic -> controls of template 361.
constexpr KwControlCode kControlCodes[] = {
    {D::CodeName, 273, kEdit},
    {D::CodeID, 274, kEdit},
    {D::CodeStructuralG, 3612, kEdit},
    {D::CodeAlpha, 3614, kEdit},
    {D::CodeBeta, 3616, kEdit},
    {D::CodeTables, 3623, KwCodeOp::Items},
};

constexpr KwValueBinding kBindings[] = {
    {D::FieldModal, 3621, KwBind::Check},
    {D::FieldTable, 3623, KwBind::ComboIndex},
};

constexpr KwTextRow kTexts[] = {
    {1419, "General", "LabelName", "Name", true},
    {343, "General", "LabelID", "ID", true},
    {3601, "Damping", "GroupStructural", "Structural Damping"},
    {3611, "Damping", "LabelStructuralDampingPercent", "Structural Damping G (%)", true},
    {3612, "Damping", "ToolTipStructuralDamping",
     "Damping coefficient G of the whole structure, twice the critical damping ratio at "
     "resonance",
     T::ToolTip},
    {3602, "Damping", "GroupRayleigh", "Rayleigh Damping"},
    {3613, "Damping", "LabelAlphaUnit", "ALPHA, Mass Proportional (1/s)", true},
    {3615, "Damping", "LabelBeta", "BETA, Stiffness Proportional", T::UnitLabel,
     KwTextLookup::Prop, KwUnitKind::Time},
    {3614, "Damping", "ToolTipAlpha", "The damping matrix takes ALPHA times the mass matrix",
     T::ToolTip},
    {3616, "Damping", "ToolTipBeta", "The damping matrix takes BETA times the stiffness matrix",
     T::ToolTip},
    {3603, "Damping", "GroupModal", "Modal Damping"},
    {3621, "Damping", "CheckModalDamping", "Modal Damping from Table"},
    {3622, "Damping", "LabelTable", "Table", true},
    {3624, "AnalysisSetup", "ButtonEditTableData", "Edit Table Data..."},
    {3625, "AnalysisSetup", "ButtonDefineNewTable", "Define New Table..."},
    {3626, "Damping", "LabelModalNote",
     "Each point of the table gives the critical damping ratio at a frequency."},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

} // namespace

CKwMFCUIDamping::CKwMFCUIDamping(CKwDamping* damping, CFMView* view, KW_UOM* units,
                                 CKwAnalysis* analysis, QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent), m_ui(std::make_unique<Ui::CKwMFCUIDamping>())
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    SetAnalysis(analysis);
    connect(m_ui->modal, &QAbstractButton::toggled, this, [this] { syncModal(); });
    connect(m_ui->editTable, &QAbstractButton::clicked, this, &CKwMFCUIDamping::EditTableData);
    connect(m_ui->newTable, &QAbstractButton::clicked, this, &CKwMFCUIDamping::DefineNewTable);
    OnCreate(view, damping, nullptr);
}

CKwMFCUIDamping::~CKwMFCUIDamping() = default;

void CKwMFCUIDamping::OnObjectDataLoaded()
{
    CKwMFCUIBase::OnObjectDataLoaded();
    syncModal();
}

// The table controls take input only while modal damping is on; a table is edited only while
// the model still has it.
void CKwMFCUIDamping::syncModal()
{
    const bool on = m_ui->modal->isChecked();
    m_ui->table->setEnabled(on);
    m_ui->newTable->setEnabled(on && GetModel());
    m_ui->editTable->setEnabled(on && GetModalTable());
}

int CKwMFCUIDamping::EditTableData()
{
    // The table may have gone since the editor was filled: the logic names it.
    if (!PrepareTableEdit()) {
        FillBoundControls();
        syncModal();
        return KwMB::IDCANCEL;
    }
    return CKwTableDialog::RunModal(this, GetFMView(), GetModalTable(), GetUnitSystem());
}

int CKwMFCUIDamping::DefineNewTable()
{
    // What was typed stays in the edit copy while the table dialog is open.
    UpdateObjectData(false);
    const int id = AddModalTable();
    if (id <= 0)
        return 0;
    const bool kept =
        CKwTableDialog::RunOnAddedTable(this, GetFMView(), GetModel(), id, GetUnitSystem());
    FinishNewTable(id, kept);
    FillBoundControls();
    syncModal();
    return kept ? id : 0;
}
