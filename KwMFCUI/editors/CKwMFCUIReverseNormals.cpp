#include "CKwMFCUIReverseNormals.h"

#include "CKwMFCNodeElemSelectionBox.h"
#include "KwControls.h"
#include "KwStyle.h"
#include "ui_CKwMFCUIReverseNormals.h"

#include <QSet>
#include <QSlider>

namespace {

using T = KwTextTarget;
using U = CKwUIMeshReversal;

constexpr KwControlCode kControlCodes[] = {
    {U::CodeEntities, 1406, KwCodeOp::ToolTip},
};

constexpr KwValueBinding kBindings[] = {
    {U::FieldShow, 7101, KwBind::Check},         {U::FieldFrontColor, 7103, KwBind::Color},
    {U::FieldBackColor, 7105, KwBind::Color},    {U::FieldShowVectors, 7106, KwBind::Check},
    {U::FieldSize, 7108, KwBind::Slider},        {U::FieldVectorColor, 7110, KwBind::Color},
};

constexpr KwTextRow kTexts[] = {
    {1498, "ReverseNormals", "LabelSelectedEntities", "Selected Entities"},
    {1726, "Load", "GroupDisplay", "Display Options"},
    {7101, "ReverseNormals", "CheckFrontBackColors", "Front and Back Colors"},
    {7101, "ReverseNormals", "TooltipFrontBackColors",
     "Shell faces in the front colour on the side their normals point to, in the back colour "
     "on the other",
     T::ToolTip},
    {7102, "ReverseNormals", "LabelFrontColor", "Front Color", true},
    {7104, "ReverseNormals", "LabelBackColor", "Back Color", true},
    {7106, "ReverseNormals", "CheckNormalVectors", "Normal Vectors"},
    {7107, "ReverseNormals", "LabelVectorSize", "Vector Size", true},
    {7109, "ReverseNormals", "LabelVectorColor", "Vector Color", true},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

} // namespace

CKwMFCUIReverseNormals::CKwMFCUIReverseNormals(CFMView* view, CKwMeshModel* mesh,
                                               QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent), m_ui(std::make_unique<Ui::CKwMFCUIReverseNormals>())
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    m_ui->size->setRange(kSizeMin, kSizeMax);
    m_ui->size->setMinimumWidth(KwStyle::CharsWidth(fontMetrics(), 16));
    // The swatches follow their switches.
    const auto sync = [this] {
        m_ui->frontColor->setEnabled(m_ui->showSides->isChecked());
        m_ui->backColor->setEnabled(m_ui->showSides->isChecked());
        m_ui->size->setEnabled(m_ui->showVectors->isChecked());
        m_ui->vectorColor->setEnabled(m_ui->showVectors->isChecked());
    };
    connect(m_ui->showSides, &QAbstractButton::toggled, this, sync);
    connect(m_ui->showVectors, &QAbstractButton::toggled, this, sync);
    CKwUIReverseNormals::OnCreate(view, mesh, nullptr);
    sync();
}

CKwMFCUIReverseNormals::~CKwMFCUIReverseNormals() = default;

CKwMFCNodeElemSelectionBox* CKwMFCUIReverseNormals::GetSelectionBox() const
{
    return m_ui->selection;
}

bool CKwMFCUIReverseNormals::OnInitDialog()
{
    SetupSelectionBox(m_ui->selection, kFilter, 128);
    return CKwMFCUIBase::OnInitDialog();
}

long CKwMFCUIReverseNormals::OnEntitiesPicked(QList<CKwUIEntity*>* entities)
{
    return PickKeepingWhatTheLogicTakes(entities, m_ui->selection);
}
