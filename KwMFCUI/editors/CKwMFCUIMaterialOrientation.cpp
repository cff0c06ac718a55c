#include "CKwMFCUIMaterialOrientation.h"

#include "CFMView.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwModelEditorForms.h"
#include "KwStyle.h"

#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

using T = KwTextTarget;
using U = CKwUIMaterialOrientation;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

// Control codes of the logic -> controls of template 364.
constexpr KwControlCode kControlCodes[] = {
    {U::CodeName, 273, kEdit},
    {U::CodeID, 274, kEdit},
    {U::CodeVectorX, 7732, kEdit},
    {U::CodeVectorY, 7734, kEdit},
    {U::CodeVectorZ, 7736, kEdit},
    {U::CodeFaces, 7722, KwCodeOp::ToolTip},
    {U::CodeEdge, 7728, KwCodeOp::ToolTip},
};

constexpr KwValueBinding kBindings[] = {
    {U::FieldMethod, 7724, KwBind::RadioGroup, 2},
};

constexpr KwTextRow kTexts[] = {
    {1419, "General", "LabelName", "Name", true},
    {343, "General", "LabelID", "ID", true},
    {7721, "MaterialOrientation", "LabelFaces", "Faces"},
    {7722, "MeshControl", "TooltipSelectFaces", "Select Faces", T::ToolTip},
    {7723, "MaterialOrientation", "GroupDirection", "Direction of the First Axis"},
    {7724, "MaterialOrientation", "RadioFromEdge", "From a straight edge"},
    {7725, "MaterialOrientation", "RadioFromVector", "From a vector"},
    {7727, "MaterialOrientation", "LabelEdge", "Straight Edge"},
    {7728, "MaterialOrientation", "TooltipSelectEdge", "Select a straight edge", T::ToolTip},
    {7731, "General", "LabelX", "X", true},
    {7733, "General", "LabelY", "Y", true},
    {7735, "General", "LabelZ", "Z", true},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

} // namespace

CKwMFCUIMaterialOrientation::CKwMFCUIMaterialOrientation(CFMView* view,
                                                         CKwPhysicalProperty* property,
                                                         CKwMaterialOrient* orientation,
                                                         KW_UOM* units, QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent)
{
    QVBoxLayout* outer = KwForm::DialogLayout(this);
    KwForm::NameAndID(this, KwForm::FormGrid(outer));
    outer->addWidget(KwForm::Label(this, 7721));
    m_faces = KwForm::SelectionBox(this, 7722);
    outer->addWidget(m_faces);

    QGridLayout* dir = nullptr;
    QGroupBox* group = KwForm::Group(this, 7723, outer, &dir);
    for (int id : {7724, 7725}) {
        auto* radio = new QRadioButton(group);
        KwSetControlId(radio, id);
        dir->addWidget(radio, dir->rowCount(), 0, 1, -1);
    }
    m_edgePanel = new QWidget(group);
    auto* edgeLayout = new QVBoxLayout(m_edgePanel);
    edgeLayout->setContentsMargins(0, 0, 0, 0);
    edgeLayout->addWidget(KwForm::Label(m_edgePanel, 7727));
    m_edge = KwForm::SelectionBox(m_edgePanel, 7728);
    // One edge at a time: a line and room around it.
    m_edge->setFixedHeight(m_edge->fontMetrics().lineSpacing() * 2 + 2 * m_edge->frameWidth());
    m_edge->SetSingleSelection(true);
    edgeLayout->addWidget(m_edge);
    dir->addWidget(m_edgePanel, dir->rowCount(), 0, 1, -1);
    m_vectorPanel = new QWidget(group);
    auto* vector = new QGridLayout(m_vectorPanel);
    vector->setContentsMargins(0, 0, 0, 0);
    KwStyle::ApplyFormGrid(vector);
    for (int id : {7731, 7733, 7735})
        KwForm::Row(vector, KwForm::Label(m_vectorPanel, id),
                    KwForm::NumberEdit(m_vectorPanel, id + 1, true));
    dir->addWidget(m_vectorPanel, dir->rowCount(), 0, 1, -1);
    KwForm::ButtonRow(this, outer);

    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    SetProperty(property);
    // A drop from a list's menu leaves that list; these run before the base's handler, which
    // is connected when the lists are registered.
    connect(m_faces, &CKwMFCNodeElemSelectionBox::entitiesDropped, this,
            [this] { SetPickTarget(Faces); });
    connect(m_edge, &CKwMFCNodeElemSelectionBox::entitiesDropped, this,
            [this] { SetPickTarget(Secondary); });
    TargetOnClick(m_faces);
    TargetOnClick(m_edge);
    OnCreate(view, orientation, nullptr);
}

CKwMFCUIMaterialOrientation::~CKwMFCUIMaterialOrientation() = default;

bool CKwMFCUIMaterialOrientation::OnInitDialog()
{
    SetupSelectionBox(m_faces, kFacesFilter, 128);
    SetupSelectionBox(m_edge, kEdgeFilter, 128);
    const bool ok = CKwMFCUIBase::OnInitDialog();
    // After the binding's own handler, so that the edit copy already holds the method.
    for (int id : {7724, 7725})
        connect(KwControl<QAbstractButton>(this, id), &QAbstractButton::toggled, this,
                [this](bool on) {
                    if (on)
                        showMethod();
                });
    return ok;
}

void CKwMFCUIMaterialOrientation::OnObjectDataLoaded()
{
    CKwMFCUIBase::OnObjectDataLoaded();
    // The secondary geometry may be a face; it belongs in its own list only.
    const CKwMaterialOrient* o = GetEditObject();
    const bool showIds = GetFMView() && GetFMView()->GetShowIDs();
    m_faces->ResetContent();
    m_edge->ResetContent();
    if (o) {
        for (CKwUIEntity* f : o->m_faces)
            m_faces->AddEntity(f, showIds);
        if (o->m_edge)
            m_edge->AddEntity(o->m_edge, showIds);
    }
    m_faces->FlushAdded();
    m_edge->FlushAdded();
    showMethod();
}

void CKwMFCUIMaterialOrientation::followActiveBox()
{
    SetPickTarget(GetActiveSelectionBox() == m_edge ? Secondary : Faces);
}

long CKwMFCUIMaterialOrientation::OnEntitiesPicked(QList<CKwUIEntity*>* entities)
{
    followActiveBox();
    return CKwMFCUIBase::OnEntitiesPicked(entities);
}

long CKwMFCUIMaterialOrientation::OnEntitiesDropped(QList<CKwUIEntity*>* entities)
{
    if (!m_bNotificationsEnabled || !entities)
        return 0;
    // A drop in the view leaves both lists.
    SetPickTarget(Secondary);
    OnDeselected(entities);
    SetPickTarget(Faces);
    const long result = CKwMFCUIBase::OnEntitiesDropped(entities);
    followActiveBox();
    return result;
}

void CKwMFCUIMaterialOrientation::showMethod()
{
    int method = CKwMaterialOrient::FromEdge;
    GetValue(FieldMethod, method);
    const bool fromEdge = method == CKwMaterialOrient::FromEdge;
    m_edgePanel->setVisible(fromEdge);
    m_vectorPanel->setVisible(!fromEdge);
    // Without an edge to pick, picks go to the faces again.
    if (!fromEdge && GetActiveSelectionBox() == m_edge)
        SetActiveSelectionBox(m_faces);
    Display(1);
}
