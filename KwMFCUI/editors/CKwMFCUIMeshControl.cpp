#include "CKwMFCUIMeshControl.h"

#include "CKwMFCNodeElemSelectionBox.h"
#include "KW_UOM.h"
#include "KwModelEditorForms.h"
#include "KwStyle.h"

#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

namespace {

using T = KwTextTarget;
using U = CKwUIMeshControl;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

// Control codes of the logic -> controls of template 359.
constexpr KwControlCode kControlCodes[] = {
    {U::CodeName, 273, kEdit},
    {U::CodeID, 274, kEdit},
    {U::CodeSize, 7704, kEdit},
    {U::CodeCount, 7706, kEdit},
    {U::CodeEntities, 1406, KwCodeOp::ToolTip},
};

constexpr KwTextRow kTexts[] = {
    {1419, "General", "LabelName", "Name", true},
    {343, "General", "LabelID", "ID", true},
    {1498, "MeshControl", "LabelSelectedEntities", "Selected Entities"},
    {1406, "MeshControl", "TooltipSelectEntities", "Select vertices, edges or faces", T::ToolTip},
    {7702, "MeshControl", "GroupMeshSize", "Local Mesh Size"},
    {7703, "MeshControl", "LabelElementSize", "Element Size", T::UnitLabel, KwTextLookup::Prop,
     KwUnitKind::Length},
    {7705, "MeshControl", "LabelNumberOfElements", "Number of Elements", true},
    {7706, "MeshControl", "TooltipNumberOfElements", "Elements along each picked edge",
     T::ToolTip},
    {7707, "MeshControl", "LabelSizeOrCount",
     "Enter an element size, a number of elements, or both. A number of elements applies to "
     "edges only."},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

} // namespace

CKwMFCUIMeshControl::CKwMFCUIMeshControl(CFMView* view, const QList<CKwUIEntity*>* picked,
                                         CKwMeshLocal* control, KW_UOM* units, QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent)
{
    QVBoxLayout* outer = KwForm::DialogLayout(this);
    QGridLayout* top = KwForm::FormGrid(outer);
    KwForm::NameAndID(this, top);
    auto* entitiesLabel = KwForm::Label(this, 1498);
    outer->addWidget(entitiesLabel);
    m_box = KwForm::SelectionBox(this, 1406);
    outer->addWidget(m_box);
    QGridLayout* size = nullptr;
    KwForm::Group(this, 7702, outer, &size);
    KwForm::Row(size, KwForm::Label(this, 7703), KwForm::NumberEdit(this, 7704));
    KwForm::Row(size, KwForm::Label(this, 7705), KwForm::NumberEdit(this, 7706));
    QLabel* note = KwForm::Label(this, 7707);
    note->setWordWrap(true);
    // The note wraps instead of widening the dialog.
    note->setFixedWidth(KwStyle::CharsWidth(note->fontMetrics(), 44));
    outer->addWidget(note);
    KwForm::ButtonRow(this, outer);

    SetControlCodes(kControlCodes);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    OnCreate(view, control, nullptr);
    if (!control && picked) {
        QList<CKwUIEntity*> taken = *picked;
        OnSelected(&taken);
    }
}

CKwMFCUIMeshControl::~CKwMFCUIMeshControl() = default;

bool CKwMFCUIMeshControl::OnInitDialog()
{
    SetupSelectionBox(m_box, kFilter, 128);
    return CKwMFCUIBase::OnInitDialog();
}
