#include "CKwMFCUIMeshQuality.h"

#include "CKwMeshQualityResultsDialog.h"
#include "KwControls.h"
#include "ui_CKwMFCUIMeshQuality.h"

#include <QAbstractButton>
#include <array>

namespace {

using M = CKwMeshModel;
using U = CKwUIMeshQuality;
using T = KwTextTarget;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;
constexpr int kChecks = M::QualityCheckCount;

constexpr KwControlCode code(int c, bool unit)
{
    return unit ? KwControlCode{U::CodeUnitFirst + c, CKwMFCUIMeshQuality::UnitLabelId(c),
                                KwCodeOp::Text}
                : KwControlCode{U::CodeLimitFirst + c, CKwMFCUIMeshQuality::LimitEditId(c),
                                kEdit};
}

// Control codes of the logic -> controls of template 7013: each check's limit and unit.
constexpr auto kControlCodes = [] {
    std::array<KwControlCode, 2 * kChecks> codes{};
    for (int c = 0; c < kChecks; ++c) {
        codes[static_cast<std::size_t>(c)] = code(c, false);
        codes[static_cast<std::size_t>(kChecks + c)] = code(c, true);
    }
    return codes;
}();

// Each check's on/off box shows its flag.
constexpr auto kBindings = [] {
    std::array<KwValueBinding, kChecks> bindings{};
    for (int c = 0; c < kChecks; ++c)
        bindings[static_cast<std::size_t>(c)] = {U::FieldCheckFirst + c,
                                                 CKwMFCUIMeshQuality::CheckBoxId(c),
                                                 KwBind::Check};
    return bindings;
}();

constexpr int box(M::QualityCheck c) { return CKwMFCUIMeshQuality::CheckBoxId(c); }

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
    {7604, "MeshQuality", "GroupHexahedra", "Hexahedra"},
    {7605, "MeshQuality", "GroupWedges", "Wedges"},
    {7606, "MeshQuality", "GroupPyramids", "Pyramids"},
    {box(M::HexAspectRatio), "MeshQuality", "LabelAspectRatio", "Aspect Ratio"},
    {box(M::HexSkew), "MeshQuality", "LabelSkew", "Skew"},
    {box(M::HexWarpage), "MeshQuality", "LabelWarping", "Warping"},
    {box(M::HexTaper), "MeshQuality", "LabelTaper", "Taper"},
    {box(M::HexJacobian), "MeshQuality", "LabelJacobian", "Jacobian"},
    {box(M::WedgeAspectRatio), "MeshQuality", "LabelAspectRatio", "Aspect Ratio"},
    {box(M::WedgeSkew), "MeshQuality", "LabelSkew", "Skew"},
    {box(M::WedgeWarpage), "MeshQuality", "LabelWarping", "Warping"},
    {box(M::WedgeTaper), "MeshQuality", "LabelTaper", "Taper"},
    {box(M::WedgeJacobian), "MeshQuality", "LabelJacobian", "Jacobian"},
    {box(M::PyramidAspectRatio), "MeshQuality", "LabelAspectRatio", "Aspect Ratio"},
    {box(M::PyramidSkew), "MeshQuality", "LabelSkew", "Skew"},
    {box(M::PyramidWarpage), "MeshQuality", "LabelWarping", "Warping"},
    {box(M::PyramidTaper), "MeshQuality", "LabelTaper", "Taper"},
    {box(M::PyramidJacobian), "MeshQuality", "LabelJacobian", "Jacobian"},
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
        connect(KwControl<QAbstractButton>(this, CheckBoxId(c)), &QAbstractButton::toggled,
                this, [this] { syncLimitEdits(); });
    connect(m_ui->run, &QAbstractButton::clicked, this, &CKwMFCUIMeshQuality::OnRun);
    OnCreate(view, mesh, nullptr);
}

CKwMFCUIMeshQuality::~CKwMFCUIMeshQuality() = default;

bool CKwMFCUIMeshQuality::OnInitDialog()
{
    // The note wraps within the columns' width instead of widening the dialog.
    m_ui->note->setMaximumWidth(m_ui->families->sizeHint().width());
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
        if (auto* b = KwControl<QAbstractButton>(this, CheckBoxId(c)))
            if (QWidget* e = KwFindControl(this, LimitEditId(c)))
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
