#include "CKwMFCUISpectrumSetup.h"

#include "CKwFEModel.h"
#include "CKwTable.h"
#include "CKwTableDialog.h"
#include "KwControls.h"
#include "KwMessageBox.h"
#include "ui_CKwMFCUISpectrumSetup.h"

#include <QAbstractButton>
#include <QComboBox>

namespace {

using T = KwTextTarget;
using S = CKwUISpectrumSetup;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

// Control codes of the logic -> controls of template 7302.
constexpr KwControlCode kControlCodes[] = {
    {S::CodeName, 273, kEdit},
    {S::CodeID, 274, kEdit},
    {S::CodeTables, 7304, KwCodeOp::Items},
    {S::CodeDamping, 7314, kEdit},
    {S::CodeScale, 7316, kEdit},
};

constexpr KwValueBinding kBindings[] = {
    {S::FieldTable, 7304, KwBind::ComboIndex},
    {S::FieldKind, 7308, KwBind::ComboIndex},
    {S::FieldDirection, 7310, KwBind::ComboIndex},
    {S::FieldCombination, 7312, KwBind::ComboIndex},
};

constexpr KwTextRow kTexts[] = {
    {1419, "General", "LabelName", "Name", true},
    {343, "General", "LabelID", "ID", true},
    {7303, "SpectrumSetup", "LabelSpectrumTable", "Spectrum Table", true},
    {7305, "AnalysisSetup", "ButtonEditTableData", "Edit Table Data..."},
    {7306, "AnalysisSetup", "ButtonDefineNewTable", "Define New Table..."},
    {7307, "SpectrumSetup", "LabelSpectrumType", "Spectrum Type", true},
    {7309, "SpectrumSetup", "LabelDirection", "Direction", true},
    {7311, "SpectrumSetup", "LabelCombination", "Combination Method", true},
    {7313, "SpectrumSetup", "LabelDampingRatioPercent", "Damping Ratio (%)", true},
    {7314, "SpectrumSetup", "ToolTipDampingRatio",
     "Critical damping ratio the spectrum was drawn for; the CQC combination uses it too",
     T::ToolTip},
    {7315, "SpectrumSetup", "LabelScaleFactor", "Scale Factor", true},
    {7316, "SpectrumSetup", "ToolTipScaleFactor", "Every value of the spectrum is multiplied by it",
     T::ToolTip},
    {7304, "SpectrumSetup", "ToolTipSpectrumTable",
     "Frequency table of the spectrum: the response at each frequency", T::ToolTip},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
    {7308, "SpectrumSetup", "DropDownAcceleration", "Acceleration", T::Item},
    {7308, "SpectrumSetup", "DropDownVelocity", "Velocity", T::Item},
    {7308, "SpectrumSetup", "DropDownDisplacement", "Displacement", T::Item},
    {7310, "SpectrumSetup", "DropDownX", "X", T::Item},
    {7310, "SpectrumSetup", "DropDownY", "Y", T::Item},
    {7310, "SpectrumSetup", "DropDownZ", "Z", T::Item},
    {7312, "SpectrumSetup", "DropDownSRSS", "SRSS (square root of the sum of squares)", T::Item},
    {7312, "SpectrumSetup", "DropDownCQC", "CQC (complete quadratic combination)", T::Item},
    {7312, "SpectrumSetup", "DropDownABS", "ABS (sum of absolute values)", T::Item},
    {7312, "SpectrumSetup", "DropDownNRL", "NRL (largest plus SRSS of the rest)", T::Item},
};

} // namespace

CKwMFCUISpectrumSetup::CKwMFCUISpectrumSetup(CKwSpectrumSetup* setup, CFMView* view,
                                             KW_UOM* units, CKwAnalysis* analysis,
                                             QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent),
      m_ui(std::make_unique<Ui::CKwMFCUISpectrumSetup>())
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    SetAnalysis(analysis);
    connect(m_ui->table, &QComboBox::currentIndexChanged, this, [this](int row) {
        if (IsNewTableRow(row))
            DefineNewTable();
        syncTableButtons();
    });
    connect(m_ui->editTable, &QAbstractButton::clicked, this,
            &CKwMFCUISpectrumSetup::EditTableData);
    connect(m_ui->newTable, &QAbstractButton::clicked, this,
            &CKwMFCUISpectrumSetup::DefineNewTable);
    OnCreate(view, setup, nullptr);
}

CKwMFCUISpectrumSetup::~CKwMFCUISpectrumSetup() = default;

void CKwMFCUISpectrumSetup::OnObjectDataLoaded()
{
    CKwMFCUIBase::OnObjectDataLoaded();
    syncTableButtons();
}

void CKwMFCUISpectrumSetup::syncTableButtons()
{
    m_ui->editTable->setEnabled(GetSpectrumTable() != nullptr);
    m_ui->newTable->setEnabled(GetModel() != nullptr);
}

int CKwMFCUISpectrumSetup::EditTableData()
{
    if (!PrepareTableEdit()) {
        FillBoundControls();
        syncTableButtons();
        return KwMB::IDCANCEL;
    }
    return CKwTableDialog::RunModal(this, GetFMView(), GetSpectrumTable(), GetUnitSystem());
}

int CKwMFCUISpectrumSetup::DefineNewTable()
{
    UpdateObjectData(false);
    const int id = AddSpectrumTable();
    const bool kept =
        CKwTableDialog::RunOnAddedTable(this, GetFMView(), GetModel(), id, GetUnitSystem());
    if (id > 0)
        FinishNewTable(id, kept);
    // The list shows the spectrum's table again (after a cancel: the one it had).
    FillBoundControls();
    syncTableButtons();
    return kept ? id : 0;
}
