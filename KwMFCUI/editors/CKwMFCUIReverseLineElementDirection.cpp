#include "CKwMFCUIReverseLineElementDirection.h"

#include "CKwMFCNodeElemSelectionBox.h"
#include "KwControls.h"
#include "KwStyle.h"
#include "ui_CKwMFCUIReverseLineElementDirection.h"

#include <QSet>
#include <QSlider>

namespace {

using T = KwTextTarget;
using U = CKwUIMeshReversal;

constexpr KwControlCode kControlCodes[] = {
    {U::CodeEntities, 1406, KwCodeOp::ToolTip},
};

constexpr KwValueBinding kBindings[] = {
    {U::FieldShow, 7101, KwBind::Check},
    {U::FieldSize, 7108, KwBind::Slider},
    {U::FieldVectorColor, 7110, KwBind::Color},
};

constexpr KwTextRow kTexts[] = {
    {1498, "ReverseNormals", "LabelSelectedEntities", "Selected Entities"},
    {1726, "Load", "GroupDisplay", "Display Options"},
    {7101, "ReverseLineElementDirection", "CheckDirectionArrows", "Direction Arrows"},
    {7101, "ReverseLineElementDirection", "TooltipDirectionArrows",
     "An arrow along each beam element from its end A to its end B", T::ToolTip},
    {7107, "ReverseLineElementDirection", "LabelArrowSize", "Arrow Size", true},
    {7109, "ReverseLineElementDirection", "LabelArrowColor", "Arrow Color", true},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

} // namespace

CKwMFCUIReverseLineElementDirection::CKwMFCUIReverseLineElementDirection(CFMView* view,
                                                                         CKwMeshModel* mesh,
                                                                         QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent),
      m_ui(std::make_unique<Ui::CKwMFCUIReverseLineElementDirection>())
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    m_ui->size->setRange(kSizeMin, kSizeMax);
    m_ui->size->setMinimumWidth(KwStyle::CharsWidth(fontMetrics(), 16));
    const auto sync = [this] {
        m_ui->size->setEnabled(m_ui->showArrows->isChecked());
        m_ui->arrowColor->setEnabled(m_ui->showArrows->isChecked());
    };
    connect(m_ui->showArrows, &QAbstractButton::toggled, this, sync);
    CKwUIReverseLineElementDirection::OnCreate(view, mesh, nullptr);
    sync();
}

CKwMFCUIReverseLineElementDirection::~CKwMFCUIReverseLineElementDirection() = default;

CKwMFCNodeElemSelectionBox* CKwMFCUIReverseLineElementDirection::GetSelectionBox() const
{
    return m_ui->selection;
}

bool CKwMFCUIReverseLineElementDirection::OnInitDialog()
{
    SetupSelectionBox(m_ui->selection, kFilter, 128);
    return CKwMFCUIBase::OnInitDialog();
}

long CKwMFCUIReverseLineElementDirection::OnEntitiesPicked(QList<CKwUIEntity*>* entities)
{
    return PickKeepingWhatTheLogicTakes(entities, m_ui->selection);
}
