#include "CKwMFCUIPlot.h"

#include "CKwMFCUIPlotPages.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwStyle.h"
#include "ui_CKwMFCUIPlot.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QListWidget>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QStackedWidget>

namespace {

using U = CKwUIPlot;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;
constexpr const char* kSec = "PlotTemplate";

constexpr int kRangeMinLabel = 12057, kRangeMaxLabel = 12059;

// Control codes of the logic -> controls of template 358 and its pages.
constexpr KwControlCode kControlCodes[] = {
    {U::CodeName, 273, kEdit},
    {U::CodeID, 274, kEdit},
    {U::CodeResultSets, 3582, KwCodeOp::Items},
    {U::CodeResults, 3584, KwCodeOp::Items},
    {U::CodeComponents, 3586, KwCodeOp::Items},
    {U::CodeRangeMin, 12058, kEdit},
    {U::CodeRangeMax, 12060, kEdit},
    {U::CodeScaleFactor, 72225, kEdit},
};

// The editor's own lists choose what is shown; they are bound to the logic directly.
constexpr KwValueBinding kBindings[] = {
    {U::FieldResultSet, 3582, KwBind::ComboIndex},
    {U::FieldResult, 3584, KwBind::ComboIndex},
    {U::FieldComponent, 3586, KwBind::ComboIndex},
};

// The pages' controls and the plot settings they show. Their changes arrive as option
// changes (control id, value) and go to the logic as the field's new value.
struct PageField
{
    int ctrlId;
    int field;
};
constexpr PageField kPageFields[] = {
    {12051, U::FieldContourOn},     {12053, U::FieldContourStyle},
    {12055, U::FieldBands},         {12056, U::FieldAutoRange},
    {12062, U::FieldColorMap},      {12064, U::FieldAveraging},
    {72221, U::FieldDeformedOn},    {72223, U::FieldScaleMode},
    {72226, U::FieldOutline},       {72232, U::FieldSolids},
    {72233, U::FieldMembers},       {3631, U::FieldSectionOn},
    {3633, U::FieldSectionAxis},    {3635, U::FieldSectionPosition},
    {3637, U::FieldSectionCap},     {3621, U::FieldVectorsOn},
    {3623, U::FieldVectorResult},   {3625, U::FieldVectorSize},
    {3626, U::FieldVectorsByMagnitude}, {72241, U::FieldAnimate},
    {72243, U::FieldFrames},        {72245, U::FieldSpeed},
    {72246, U::FieldLoop},          {72261, U::FieldMeshEdges},
    {72262, U::FieldLoads},         {72263, U::FieldLegend},
};
// Edits of the pages: read through the control codes when they report.
constexpr int kPageEdits[] = {12058, 12060, 72225};

// Which controls follow which switch: (control, field that must be non-zero, or with a
// negative field: -field must equal `equals`).
struct Enabling
{
    int ctrlId;
    int field;
    int equals = 1;
};
constexpr Enabling kEnabling[] = {
    {12052, U::FieldContourOn}, {12053, U::FieldContourOn}, {12054, U::FieldContourOn},
    {12055, U::FieldContourOn}, {12056, U::FieldContourOn}, {12061, U::FieldContourOn},
    {12062, U::FieldContourOn}, {12063, U::FieldContourOn}, {12064, U::FieldContourOn},
    {12057, U::FieldAutoRange, 0}, {12058, U::FieldAutoRange, 0},
    {12059, U::FieldAutoRange, 0}, {12060, U::FieldAutoRange, 0},
    {72222, U::FieldDeformedOn}, {72223, U::FieldDeformedOn}, {72226, U::FieldDeformedOn},
    {72224, U::FieldScaleMode, KwPlotSettings::ScaleFactor},
    {72225, U::FieldScaleMode, KwPlotSettings::ScaleFactor},
    {3632, U::FieldSectionOn}, {3633, U::FieldSectionOn}, {3634, U::FieldSectionOn},
    {3635, U::FieldSectionOn}, {3637, U::FieldSectionOn},
    {3622, U::FieldVectorsOn}, {3623, U::FieldVectorsOn}, {3624, U::FieldVectorsOn},
    {3625, U::FieldVectorsOn}, {3626, U::FieldVectorsOn},
    {72242, U::FieldAnimate}, {72243, U::FieldAnimate}, {72244, U::FieldAnimate},
    {72245, U::FieldAnimate}, {72246, U::FieldAnimate},
};

constexpr KwTextRow kTexts[] = {
    {1419, "General", "LabelName", "Name", true},
    {343, "General", "LabelID", "ID", true},
    {3581, kSec, "LabelResultSet", "Result Set", true},
    {3583, kSec, "LabelResult", "Result", true},
    {3585, kSec, "LabelComponent", "Component", true},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

// The names of the pages in the list, in page order.
constexpr KwPrompt kPageNames[] = {
    {kSec, "PageContour", "Contour"},       {kSec, "PageDeformed", "Deformed Shape"},
    {kSec, "PagePartView", "Part View"},    {kSec, "PageSection", "Section Plane"},
    {kSec, "PageVectors", "Vectors"},       {kSec, "PageAnimation", "Animation"},
    {kSec, "PageVisibility", "Visibility"},
};

} // namespace

CKwMFCUIPlot::CKwMFCUIPlot(CKwPlot* plot, CKwAnalysis* analysis, CFMView* view, KW_UOM* units,
                           QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent), m_ui(std::make_unique<Ui::CKwMFCUIPlot>())
{
    m_ui->setupUi(this);
    // The pages sit in the stack whose parent is this editor: their option changes find it.
    m_pages = {new CKwMFCUIPlotContour(view, m_ui->pages),
               new CKwMFCUIPlotDeformed(view, m_ui->pages),
               new CKwMFCUIPlotPartView(view, m_ui->pages),
               new CKwMFCUIPlotSectionView(view, m_ui->pages),
               new CKwMFCUIPlotVector(view, m_ui->pages),
               new CKwMFCUIPlotAnimationOptions(view, m_ui->pages),
               new CKwMFCUIPlotVisibilityOptions(view, m_ui->pages)};
    for (CKwPlotPage* page : m_pages)
        m_ui->pages->addWidget(page);
    for (int i = 0; i < kPageCount; ++i)
        m_ui->pageList->addItem(QString());
    connect(m_ui->pageList, &QListWidget::currentRowChanged, m_ui->pages,
            &QStackedWidget::setCurrentIndex);
    m_ui->pageList->setCurrentRow(PageContour);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    SetAnalysis(plot && plot->GetAnalysis() ? plot->GetAnalysis() : analysis);
    OnCreate(view, plot, nullptr);
}

CKwMFCUIPlot::~CKwMFCUIPlot() = default;

CKwPlotPage* CKwMFCUIPlot::GetPage(int page) const
{
    return page >= 0 && page < kPageCount ? m_pages[std::size_t(page)] : nullptr;
}

void CKwMFCUIPlot::ShowPage(int page)
{
    if (page >= 0 && page < kPageCount)
        m_ui->pageList->setCurrentRow(page);
}

int CKwMFCUIPlot::CurrentPage() const { return m_ui->pages->currentIndex(); }

void CKwMFCUIPlot::SetTextToCurrentLang()
{
    CKwMFCUIBase::SetTextToCurrentLang();
    for (CKwPlotPage* page : m_pages)
        page->SetTextToCurrentLang();
    for (int i = 0; i < kPageCount; ++i)
        m_ui->pageList->item(i)->setText(
            KwPropText(kPageNames[i].section, kPageNames[i].key, kPageNames[i].english));
    updateRangeLabels();
}

void CKwMFCUIPlot::updateRangeLabels()
{
    int result = 0;
    GetValue(FieldResult, result);
    const KW_UOM* units = GetUnitSystem() ? GetUnitSystem() : CKwUIPlot::GetUnits();
    const QString unit = units->GetUnits(KwResultMapping::UnitKind(result));
    KwSetControlText(this, kRangeMinLabel,
                     KwLabel(KwStyle::WithUnit(KwPropText(kSec, "LabelRangeMinimum", "Minimum"), unit)));
    KwSetControlText(this, kRangeMaxLabel,
                     KwLabel(KwStyle::WithUnit(KwPropText(kSec, "LabelRangeMaximum", "Maximum"), unit)));
}

int CKwMFCUIPlot::SetValue(int field, int value)
{
    const int done = CKwUIPlot::SetValue(field, value);
    // The range is in the unit of the result: its labels follow the result.
    if (done && field == FieldResult)
        updateRangeLabels();
    syncEnabled();
    return done;
}

void CKwMFCUIPlot::OnObjectDataLoaded()
{
    CKwMFCUIBase::OnObjectDataLoaded();
    fillPages();
    updateRangeLabels();
    syncEnabled();
    // What the editor opens on shows in the view at once.
    ShowResult();
}

void CKwMFCUIPlot::fillPages()
{
    for (const PageField& f : kPageFields) {
        int v = 0;
        QWidget* w = KwFindControl(this, f.ctrlId);
        if (!w || !GetValue(f.field, v))
            continue;
        const QSignalBlocker block(w);
        if (auto* b = qobject_cast<QAbstractButton*>(w))
            b->setChecked(v != 0);
        else if (auto* c = qobject_cast<QComboBox*>(w))
            c->setCurrentIndex(v < c->count() ? v : -1);
        else if (auto* s = qobject_cast<QSpinBox*>(w))
            s->setValue(v);
        else if (auto* s = qobject_cast<QSlider*>(w))
            s->setValue(v);
    }
}

void CKwMFCUIPlot::syncEnabled()
{
    for (const Enabling& e : kEnabling) {
        int v = 0;
        if (QWidget* w = KwFindControl(this, e.ctrlId); w && GetValue(e.field, v))
            w->setEnabled(e.equals == 1 ? v != 0 : v == e.equals);
    }
    // The range fields of a contour that is off stay off whatever the range says.
    int contour = 1;
    GetValue(FieldContourOn, contour);
    for (int id : {12057, 12058, 12059, 12060})
        if (QWidget* w = KwFindControl(this, id); w && !contour)
            w->setEnabled(false);
    int deformed = 1;
    GetValue(FieldDeformedOn, deformed);
    for (int id : {72224, 72225})
        if (QWidget* w = KwFindControl(this, id); w && !deformed)
            w->setEnabled(false);
}

long CKwMFCUIPlot::OnOptionChanged(int ctrlId, int value)
{
    for (int id : kPageEdits)
        if (id == ctrlId) {
            // A typed range or factor: taken into the edit copy and shown; one that is no
            // number yet shows as automatic and is named on OK.
            UpdateObjectData(true);
            ShowResult();
            return 1;
        }
    for (const PageField& f : kPageFields)
        if (f.ctrlId == ctrlId) {
            return SetValue(f.field, value);
        }
    return 0;
}
