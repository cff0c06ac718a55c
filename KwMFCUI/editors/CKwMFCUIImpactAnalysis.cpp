#include "CKwMFCUIImpactAnalysis.h"

#include "CKwUIEntity.h"
#include "KwControls.h"
#include "KwStyle.h"
#include "ui_CKwMFCUIImpactAnalysis.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

namespace {

using T = KwTextTarget;
using I = CKwUIImpactAnalysis;
using D = CKwMFCUIImpactAnalysis;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

constexpr KwControlCode kControlCodes[] = {
    {I::CodeName, D::IdName, kEdit},
    {I::CodeTranslationFirst + 0, D::IdTranslationX, kEdit},
    {I::CodeTranslationFirst + 1, D::IdTranslationY, kEdit},
    {I::CodeTranslationFirst + 2, D::IdTranslationZ, kEdit},
    {I::CodeVelocity, D::IdVelocity, kEdit},
    {I::CodeAcceleration, D::IdAcceleration, kEdit},
    {I::CodeFaces, D::IdFace, KwCodeOp::Items},
    {I::CodePlaneDistance, D::IdPlaneDistance, kEdit},
    {I::CodeDuration, D::IdDuration, kEdit},
    {int(I::CodeUnitFirst) + int(I::UnitTranslation), 7860, KwCodeOp::Text},
    {int(I::CodeUnitFirst) + int(I::UnitVelocity), 7866, KwCodeOp::Text},
    {int(I::CodeUnitFirst) + int(I::UnitAcceleration), 7869, KwCodeOp::Text},
    {int(I::CodeUnitFirst) + int(I::UnitPlane), 7880, KwCodeOp::Text},
    {int(I::CodeUnitFirst) + int(I::UnitDuration), 7872, KwCodeOp::Text},
};

constexpr KwValueBinding kBindings[] = {
    {I::FieldTarget, D::IdTargetFace, KwBind::RadioGroup, 2},
    {I::FieldFace, D::IdFace, KwBind::ComboIndex},
};

constexpr KwTextRow kTexts[] = {
    {7851, "General", "LabelName", "Name", true},
    {7853, "ImpactAnalysis", "GroupTranslation", "Projectile Translation"},
    {7854, "ImpactAnalysis", "LabelX", "X", true},
    {7856, "ImpactAnalysis", "LabelY", "Y", true},
    {7858, "ImpactAnalysis", "LabelZ", "Z", true},
    {7853, "ImpactAnalysis", "TooltipTranslation",
     "Moves the projectile onto its start position; the impact runs along this direction",
     T::ToolTip},
    {7863, "ImpactAnalysis", "GroupMotion", "Motion"},
    {7864, "ImpactAnalysis", "LabelVelocity", "Initial Velocity", true},
    {7867, "ImpactAnalysis", "LabelAcceleration", "Gravity Acceleration", true},
    {7870, "ImpactAnalysis", "LabelDuration", "Duration", true},
    {D::IdAcceleration, "ImpactAnalysis", "TooltipAcceleration",
     "Gravity acting along the translation; 0 leaves gravity out", T::ToolTip},
    {7873, "ImpactAnalysis", "GroupTarget", "Target"},
    {D::IdTargetFace, "ImpactAnalysis", "RadioTargetFace", "Face of the Model"},
    {D::IdTargetPlane, "ImpactAnalysis", "RadioTargetPlane", "Rigid Plane"},
    {7876, "ImpactAnalysis", "LabelTargetFace", "Target Face", true},
    {D::IdFace, "ImpactAnalysis", "TooltipTargetFace", "Pick a face in the view or choose it here",
     T::ToolTip},
    {7878, "ImpactAnalysis", "LabelPlaneDistance", "Distance to Plane", true},
    {D::IdPlaneDistance, "ImpactAnalysis", "TooltipPlaneDistance",
     "The gap between the projectile and the rigid plane, along the translation", T::ToolTip},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

} // namespace

CKwMFCUIImpactAnalysis::CKwMFCUIImpactAnalysis(CKwImpactWizard* impact, CKwAnalysis* analysis,
                                               CFMView* view, KW_UOM* units, QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent),
      m_ui(std::make_unique<Ui::CKwMFCUIImpactAnalysis>())
{
    m_ui->setupUi(this);
    KwStyle::ApplyDialogLayout(m_ui->outer);
    KwStyle::ApplyFormGrid(m_ui->topGrid);
    for (QGroupBox* g : {m_ui->groupTranslation, m_ui->groupMotion, m_ui->groupTarget})
        KwStyle::ApplyGroupLayout(g->layout());
    KwStyle::ApplyFormGrid(m_ui->motionGrid);
    KwStyle::ApplyFormGrid(m_ui->targetGrid);
    const QFontMetrics fm = fontMetrics();
    for (QLineEdit* e : {m_ui->tx, m_ui->ty, m_ui->tz})
        e->setFixedWidth(KwStyle::CharsWidth(fm, KwStyle::TripleFieldChars));
    for (QLineEdit* e : {m_ui->velocity, m_ui->acceleration, m_ui->duration, m_ui->plane})
        e->setFixedWidth(KwStyle::CharsWidth(fm, KwStyle::NumberFieldChars));
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    SetAnalysis(analysis);
    connect(m_ui->targetFace, &QRadioButton::toggled, this, [this] { syncTarget(); });
    OnCreate(view, impact, nullptr);
}

CKwMFCUIImpactAnalysis::~CKwMFCUIImpactAnalysis() = default;

void CKwMFCUIImpactAnalysis::OnObjectDataLoaded()
{
    CKwMFCUIBase::OnObjectDataLoaded();
    syncTarget();
}

long CKwMFCUIImpactAnalysis::OnEntitiesPicked(QList<CKwUIEntity*>* entities)
{
    const long handled = CKwMFCUIBase::OnEntitiesPicked(entities);
    // A picked face chose the target: the radio buttons and the list show it.
    FillBoundControls();
    syncTarget();
    return handled;
}

unsigned CKwMFCUIImpactAnalysis::PickMaskWithoutBox() const
{
    return CKwUIEntity::FilterBitOf(CKwUIEntity::Face);
}

// The face list serves a face target, the distance a rigid plane.
void CKwMFCUIImpactAnalysis::syncTarget()
{
    const bool face = m_ui->targetFace->isChecked();
    m_ui->face->setEnabled(face);
    m_ui->plane->setEnabled(!face);
}
