#include "CKwMFCUIMeshQuality.h"

#include "CKwMeshQualityResultsDialog.h"
#include "KwControls.h"
#include "ui_CKwMFCUIMeshQuality.h"

#include <QAbstractButton>

namespace {

using M = CKwMeshModel;
using U = CKwUIMeshQuality;
using T = KwTextTarget;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;
constexpr int kChecks = M::QualityCheckCount;

constexpr KwControlCode code(int c, bool unit)
{
    return unit ? KwControlCode{U::CodeUnitFirst + c, CKwMFCUIMeshQuality::kUnitLabelFirst + c,
                                KwCodeOp::Text}
                : KwControlCode{U::CodeLimitFirst + c, CKwMFCUIMeshQuality::kLimitEditFirst + c,
                                kEdit};
}

// Control codes of the logic -> controls of template 7013: each check's limit and unit.
constexpr KwControlCode kControlCodes[] = {
    code(0, false), code(1, false), code(2, false), code(3, false), code(4, false),
    code(5, false), code(6, false), code(7, false), code(8, false), code(9, false),
    code(10, false),
    code(0, true),  code(1, true),  code(2, true),  code(3, true),  code(4, true),
    code(5, true),  code(6, true),  code(7, true),  code(8, true),  code(9, true),
    code(10, true),
};

constexpr KwValueBinding check(int c)
{
    return {U::FieldCheckFirst + c, CKwMFCUIMeshQuality::kCheckBoxFirst + c, KwBind::Check};
}

// Each check's on/off box shows its flag.
constexpr KwValueBinding kBindings[] = {check(0), check(1), check(2), check(3),
                                        check(4), check(5), check(6), check(7),
                                        check(8), check(9), check(10)};

constexpr int box(M::QualityCheck c) { return CKwMFCUIMeshQuality::kCheckBoxFirst + c; }

// Captions: the measures are the failed-elements window's column captions.
constexpr KwTextRow kTexts[] = {
    {7601, "MeshQuality", "GroupQuadrilaterals", "Quadrilaterals"},
    {7602, "MeshQuality", "GroupTriangles", "Triangles"},
    {7603, "MeshQuality", "GroupTetrahedra", "Tetrahedra"},
    {box(M::QuadAspectRatio), "MeshQuality", "LabelAspectRatio", "Aspect Ratio"},
    {box(M::QuadSkew), "MeshQuality", "LabelSkew", "Skew"},
    {box(M::QuadWarpage), "MeshQuality", "LabelWarping", "Warping"},
    {box(M::QuadTaper), "MeshQuality", "LabelTaper", "Taper"},
    {box(M::QuadJacobian), "MeshQuality", "LabelJacobian", "Jacobian"},
    {box(M::TriaAspectRatio), "MeshQuality", "LabelAspectRatio", "Aspect Ratio"},
    {box(M::TriaSkew), "MeshQuality", "LabelSkew", "Skew"},
    {box(M::TriaJacobian), "MeshQuality", "LabelJacobian", "Jacobian"},
    {box(M::TetAspectRatio), "MeshQuality", "LabelAspectRatio", "Aspect Ratio"},
    {box(M::TetSkew), "MeshQuality", "LabelSkew", "Skew"},
    {box(M::TetJacobian), "MeshQuality", "LabelJacobian", "Jacobian"},
    {7671, "MeshQuality", "LabelLimitsNote",
     "An element fails a check when its value is above the limit, or below it for the "
     "Jacobian. Angles are in the display angle unit."},
    {CKwMFCUIMeshQuality::kRunButton, "MeshQuality", "ButtonRun", "Run"},
    {CKwMFCUIMeshQuality::kRunButton, "MeshQuality", "ToolTipRun",
     "Check the mesh with these limits and list the failed elements", T::ToolTip},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

} // namespace

CKwMFCUIMeshQuality::CKwMFCUIMeshQuality(CKwMeshModel* mesh, CFMView* view, KW_UOM* units,
                                         QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent), m_ui(std::make_unique<Ui::CKwMFCUIMeshQuality>())
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    CKwUIMeshQuality::SetUnits(units);
    for (int c = 0; c < kChecks; ++c)
        connect(KwControl<QAbstractButton>(this, kCheckBoxFirst + c), &QAbstractButton::toggled,
                this, [this] { syncLimitEdits(); });
    connect(m_ui->run, &QAbstractButton::clicked, this, &CKwMFCUIMeshQuality::OnRun);
    OnCreate(view, mesh, nullptr);
}

CKwMFCUIMeshQuality::~CKwMFCUIMeshQuality() = default;

bool CKwMFCUIMeshQuality::OnInitDialog()
{
    // The note wraps within the groups' width instead of widening the dialog.
    m_ui->note->setMaximumWidth(m_ui->groupQuad->sizeHint().width() + 40);
    return CKwMFCUIBase::OnInitDialog();
}

void CKwMFCUIMeshQuality::OnObjectDataLoaded()
{
    CKwMFCUIBase::OnObjectDataLoaded();
    syncLimitEdits();
}

// A switched-off check's limit takes no input.
void CKwMFCUIMeshQuality::syncLimitEdits()
{
    for (int c = 0; c < kChecks; ++c)
        if (auto* b = KwControl<QAbstractButton>(this, kCheckBoxFirst + c))
            if (QWidget* e = KwFindControl(this, kLimitEditFirst + c))
                e->setEnabled(b->isChecked());
}

void CKwMFCUIMeshQuality::OnRun()
{
    if (RefuseWhileSolving())
        return;
    if (RunCheck() == RunChecked)
        openResults();
}

void CKwMFCUIMeshQuality::OnAfterSubmit() { openResults(); }

void CKwMFCUIMeshQuality::openResults()
{
    // An empty mesh was reported by the run; there is nothing to list.
    if (WasMeshEmpty())
        return;
    // A new run replaces the window of the last one, in its place.
    QRect where;
    if (m_resultsWindow) {
        where = m_resultsWindow->geometry();
        m_resultsWindow->close();
    }
    // The results outlive this editor: they belong to the view's window, not to the editor.
    QWidget* owner = GetFMView() ? static_cast<QWidget*>(GetFMView()) : parentWidget();
    m_resultsWindow =
        new CKwMeshQualityResultsDialog(GetObject(), GetFMView(), GetUnitSystem(), &GetResults(),
                                        owner);
    if (where.isValid())
        m_resultsWindow->setGeometry(where);
    m_resultsWindow->show();
}
