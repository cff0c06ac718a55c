#include "CKwMFCUIXYPlot.h"

#include "CKwMFCNodeElemSelectionBox.h"
#include "CKwUIEntity.h"
#include "CKwXYPlotDlg.h"
#include "KwControls.h"
#include "ui_CKwMFCUIXYPlot.h"

#include <QComboBox>

namespace {

using X = CKwUIXYPlot;
using T = KwTextTarget;
constexpr const char* kSec = "XYPlot";
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;
// Nodes and vertices.
constexpr unsigned kNodeFilter = 0x400 | 0x2;

constexpr KwControlCode kControlCodes[] = {
    {X::CodeName, 273, kEdit},
    {X::CodeID, 274, kEdit},
    {X::CodeAnalyses, 70142, KwCodeOp::Items},
    {X::CodeResults, 70144, KwCodeOp::Items},
    {X::CodeComponents, 70146, KwCodeOp::Items},
    {X::CodeResultSets, 70150, KwCodeOp::Items},
};

constexpr KwValueBinding kBindings[] = {
    {X::FieldAnalysis, 70142, KwBind::ComboIndex},
    {X::FieldResult, 70144, KwBind::ComboIndex},
    {X::FieldComponent, 70146, KwBind::ComboIndex},
    {X::FieldAxis, 70148, KwBind::ComboIndex},
    {X::FieldResultSet, 70150, KwBind::ComboIndex},
};

constexpr KwTextRow kTexts[] = {
    {1419, "General", "LabelName", "Name", true},
    {343, "General", "LabelID", "ID", true},
    {70141, kSec, "LabelAnalysis", "Analysis", true},
    {70143, "PlotTemplate", "LabelResult", "Result", true},
    {70145, "PlotTemplate", "LabelComponent", "Component", true},
    {70147, kSec, "LabelCurves", "Curves", true},
    {70148, kSec, "DropDownHistoryTime", "History over Time, Frequency or Mode", T::Item},
    {70148, kSec, "DropDownHistoryStep", "History over the Result Sets", T::Item},
    {70148, kSec, "DropDownPath", "Along the Picked Nodes", T::Item},
    {70149, "PlotTemplate", "LabelResultSet", "Result Set", true},
    {70151, kSec, "LabelNodes", "Nodes", true},
    {70152, kSec, "ToolTipNodes", "Pick nodes or vertices; along a path, in the order of the path",
     T::ToolTip},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

} // namespace

CKwMFCUIXYPlot::CKwMFCUIXYPlot(CFMView* view, KW_UOM* units, QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent), m_ui(std::make_unique<Ui::CKwMFCUIXYPlot>())
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    OnCreate(view, nullptr, nullptr);
}

CKwMFCUIXYPlot::~CKwMFCUIXYPlot() = default;

CKwMFCNodeElemSelectionBox* CKwMFCUIXYPlot::GetNodeBox() const { return m_ui->nodes; }

bool CKwMFCUIXYPlot::OnInitDialog()
{
    SetupSelectionBox(m_ui->nodes, kNodeFilter, 128);
    return CKwMFCUIBase::OnInitDialog();
}

void CKwMFCUIXYPlot::OnSelected(QList<CKwUIEntity*>*) { SetPickedEntities(m_ui->nodes->GetEntities()); }
void CKwMFCUIXYPlot::OnDeselected(QList<CKwUIEntity*>*)
{
    SetPickedEntities(m_ui->nodes->GetEntities());
}

void CKwMFCUIXYPlot::OnObjectDataLoaded()
{
    CKwMFCUIBase::OnObjectDataLoaded();
    syncSetList();
}

int CKwMFCUIXYPlot::SetValue(int field, int value)
{
    const int done = CKwUIXYPlot::SetValue(field, value);
    syncSetList();
    return done;
}

// One result set is chosen only for a curve along the path.
void CKwMFCUIXYPlot::syncSetList()
{
    int axis = AxisTime;
    GetValue(FieldAxis, axis);
    m_ui->resultSet->setEnabled(axis == AxisPath);
    m_ui->labelResultSet->setEnabled(axis == AxisPath);
}

void CKwMFCUIXYPlot::OnAfterSubmit()
{
    CKwXYPlot* plot = GetObject();
    if (!plot)
        return;
    CKwXYPlotDlg* window = CKwXYPlotDlg::GetXYPlotDlg();
    if (window) {
        window->SetPlot(plot, GetUnitSystem());
    } else {
        window = new CKwXYPlotDlg();
        window->SetFMView(GetFMView());
        window->Create(plot, GetUnitSystem());
    }
    window->show();
    KwBringWindowToTop(window);
}
