#include "CKwMFCUISPCSummationForce.h"

#include "CKwMFCNodeElemSelectionBox.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwStyle.h"
#include "ui_CKwMFCUISPCSummationForce.h"

#include <QLineEdit>

namespace {

using S = CKwUISPCSummationForce;
using T = KwTextTarget;
constexpr const char* kSec = "SPCSummationForce";
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;
// Faces, edges and vertices for the sum; vertices only for the origin.
constexpr unsigned kEntityFilter = 33278;
constexpr unsigned kVertexFilter = 0x2;

constexpr KwControlCode kControlCodes[] = {
    {S::CodeSubcases, 12032, KwCodeOp::Items},
    {S::CodeOriginX, 12040, kEdit},
    {S::CodeOriginY, 12041, kEdit},
    {S::CodeOriginZ, 12042, kEdit},
    {S::CodeForceX, 12047, KwCodeOp::Text},
    {S::CodeForceY, 12048, KwCodeOp::Text},
    {S::CodeForceZ, 12049, KwCodeOp::Text},
    {S::CodeMomentX, 12051, KwCodeOp::Text},
    {S::CodeMomentY, 12052, KwCodeOp::Text},
    {S::CodeMomentZ, 12053, KwCodeOp::Text},
    {S::CodeNodes, 12054, KwCodeOp::Text},
};

constexpr KwValueBinding kBindings[] = {
    {S::FieldSubcase, 12032, KwBind::ComboIndex},
    {S::FieldOrigin, 12036, KwBind::RadioGroup, 3},
};

constexpr KwTextRow kTexts[] = {
    {12031, kSec, "LabelSubcase", "Subcase", true},
    {12033, kSec, "LabelConstrainedEntities", "Constrained Entities", true},
    {12034, kSec, "ToolTipConstrainedEntities",
     "Pick the constrained faces, edges or vertices whose reactions are summed", T::ToolTip},
    {12035, kSec, "GroupOrigin", "Moment Origin"},
    {12036, kSec, "RadioTypedPoint", "Typed Point"},
    {12039, kSec, "LabelPoint", "Point", T::UnitLabel, KwTextLookup::Prop, KwUnitKind::Length},
    {12037, kSec, "RadioPickedVertex", "Picked Vertex"},
    {12044, kSec, "ToolTipOriginVertex", "Click here, then pick the vertex", T::ToolTip},
    {12038, kSec, "RadioCentroid", "Centroid of the Summed Nodes"},
    {12045, kSec, "GroupSum", "Sum of Reactions"},
    {12046, kSec, "LabelForce", "Force", T::UnitLabel, KwTextLookup::Prop, KwUnitKind::Force},
    {12050, kSec, "LabelMoment", "Moment", T::UnitLabel, KwTextLookup::Prop, KwUnitKind::Moment},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

} // namespace

CKwMFCUISPCSummationForce::CKwMFCUISPCSummationForce(CFMView* view, CKwAnalysis* analysis,
                                                     const QList<CKwUIEntity*>* entities,
                                                     CKwSubCase* subcase, int option,
                                                     KW_UOM* units, QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent),
      m_ui(std::make_unique<Ui::CKwMFCUISPCSummationForce>())
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    SetAnalysis(analysis);
    m_ui->originEntity->SetSingleSelection(true);
    for (QLineEdit* e : {m_ui->originX, m_ui->originY, m_ui->originZ})
        connect(e, &QLineEdit::editingFinished, this, [this, e] {
            if (!e->isModified())
                return;
            e->setModified(false);
            UpdateObjectData(true);
            Calculate();
        });
    for (QLineEdit* e : {m_ui->forceX, m_ui->forceY, m_ui->forceZ, m_ui->momentX,
                         m_ui->momentY, m_ui->momentZ})
        e->setAlignment(KwStyle::NumberAlignment);
    if (option >= OriginTyped && option <= OriginCentroid)
        SetValue(FieldOrigin, option);
    if (entities)
        SetSummedEntities(*entities);
    OnCreate(view, subcase, nullptr);
}

CKwMFCUISPCSummationForce::~CKwMFCUISPCSummationForce() = default;

CKwMFCNodeElemSelectionBox* CKwMFCUISPCSummationForce::GetEntityBox() const
{
    return m_ui->entities;
}

CKwMFCNodeElemSelectionBox* CKwMFCUISPCSummationForce::GetOriginBox() const
{
    return m_ui->originEntity;
}

bool CKwMFCUISPCSummationForce::OnInitDialog()
{
    SetupSelectionBox(m_ui->entities, kEntityFilter, 128);
    SetupSelectionBox(m_ui->originEntity, kVertexFilter, 128);
    // Clicking into a box makes it the target of the next picks.
    TargetOnClick(m_ui->entities);
    TargetOnClick(m_ui->originEntity);
    return CKwMFCUIBase::OnInitDialog();
}

void CKwMFCUISPCSummationForce::SetTextToCurrentLang()
{
    CKwMFCUIBase::SetTextToCurrentLang();
    KwStyle::LabelTriple(m_ui->originX, m_ui->originY, m_ui->originZ);
    KwStyle::LabelTriple(m_ui->forceX, m_ui->forceY, m_ui->forceZ);
    KwStyle::LabelTriple(m_ui->momentX, m_ui->momentY, m_ui->momentZ);
}

void CKwMFCUISPCSummationForce::OnSelected(QList<CKwUIEntity*>*) { handOver(); }
void CKwMFCUISPCSummationForce::OnDeselected(QList<CKwUIEntity*>*) { handOver(); }

void CKwMFCUISPCSummationForce::handOver()
{
    const QList<CKwUIEntity*>& origin = m_ui->originEntity->GetEntities();
    SetOriginEntity(origin.isEmpty() ? nullptr : origin.last());
    SetSummedEntities(m_ui->entities->GetEntities());
}
