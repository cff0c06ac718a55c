#include "CKwSNCurveDialog.h"

#include "CKwCtrlListHeader.h"

#include "CFMView.h"
#include "CKwFunction.h"
#include "CKwMaterial.h"
#include "CKwTable.h"
#include "KW_UOM.h"
#include "KwChart.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMessageBox.h"
#include "KwNumbers.h"
#include "KwStyle.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace {

constexpr const char* kSection = "SNCurveDlg";
constexpr int kListWidth = 380;
constexpr int kListHeight = 300;

QPushButton* button(QWidget* parent, int id)
{
    auto* b = new QPushButton(parent);
    b->setAutoDefault(false);
    KwSetControlId(b, id);
    return b;
}

} // namespace

CKwSNCurveDialog::Check CKwSNCurveDialog::CheckCurve(const std::vector<double>& cycles,
                                                     const std::vector<double>& stress,
                                                     double enduranceLimit)
{
    const std::size_t n = std::min(cycles.size(), stress.size());
    double highest = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const int row = int(i);
        if (!(cycles[i] > 0) || !std::isfinite(cycles[i]))
            return {CyclesNotPositive, row};
        if (!(stress[i] > 0) || !std::isfinite(stress[i]))
            return {StressNotPositive, row};
        if (i > 0 && !(cycles[i] > cycles[i - 1]))
            return {CyclesNotIncreasing, row};
        highest = std::max(highest, stress[i]);
    }
    if (n < 2)
        return {TooFewPoints, -1};
    if (!IsMissingValue(enduranceLimit)) {
        if (!(enduranceLimit > 0) || !std::isfinite(enduranceLimit))
            return {EnduranceNotPositive, -1};
        if (enduranceLimit > highest)
            return {EnduranceAboveCurve, -1};
    }
    return {};
}

QString CKwSNCurveDialog::ProblemText(const Check& check)
{
    const int row = check.row + 1;
    switch (check.problem) {
    case CyclesNotPositive:
        return KwErrText(kSection, "CyclesNotPositive",
                         "Row %1: the number of cycles must be greater than zero.")
            .arg(row);
    case StressNotPositive:
        return KwErrText(kSection, "StressNotPositive",
                         "Row %1: the stress must be greater than zero.")
            .arg(row);
    case CyclesNotIncreasing:
        return KwErrText(kSection, "CyclesNotIncreasing",
                         "Row %1: the cycles must increase from row to row (Sort orders them).")
            .arg(row);
    case TooFewPoints:
        return KwErrText(kSection, "TooFewPoints", "An S-N curve needs two points at least.");
    case EnduranceNotPositive:
        return KwErrText(kSection, "EnduranceNotPositive",
                         "The endurance limit must be greater than zero, or empty.");
    case EnduranceAboveCurve:
        return KwErrText(kSection, "EnduranceAboveCurve",
                         "The endurance limit cannot lie above the highest stress of the curve.");
    case NoProblem: break;
    }
    return {};
}

CKwSNCurveDialog::CKwSNCurveDialog(CKwMaterial* material, KW_UOM* units, CFMView* view,
                                   QWidget* parent)
    : CKwMFCDialog(kTemplateId, view, parent), m_material(material),
      m_table(std::make_unique<CKwTable>(0, QString(), CKwTable::SNCurve))
{
    CKwNonlinearDialogBase::SetFMView(view);
    SetsubcaseUnits(units);
    if (material)
        for (int i = 0; i < material->m_snCurve.Size(); ++i)
            m_table->AddPoint(material->m_snCurve.x[std::size_t(i)],
                              i < int(material->m_snCurve.y.size())
                                  ? material->m_snCurve.y[std::size_t(i)]
                                  : MissingDouble);
    SetFunctions(UnitsOf(m_table->GetXFunction(), -1),
                 UnitsOf(m_table->GetYFunction(), KwUnitKind::Stress));

    KwSetControlId(&m_List, IDC_LIST);
    m_List.setParent(this);
    m_List.setFixedWidth(kListWidth);
    m_List.setMinimumHeight(kListHeight / 2);

    m_chart = new KwChart(this);
    KwSetControlId(m_chart, IDC_CHART);
    m_chart->SetDecadeAxes(true, true);
    m_chart->AddSeries(QString(), QColor(0x1f, 0x5f, 0xa8));
    m_chart->SetSeriesMarkers(0, true);
    m_chart->AddSeries(QString(), QColor(0xc0, 0x39, 0x2b));
    m_chart->setMinimumSize(420, kListHeight);

    auto* listColumn = new QVBoxLayout;
    listColumn->addWidget(&m_List, 0, Qt::AlignTop);
    auto* listButtons = new QHBoxLayout;
    listButtons->addWidget(button(this, IDC_SORT));
    listButtons->addStretch(1);
    listColumn->addLayout(listButtons);
    listColumn->addStretch(1);
    auto* middle = new QHBoxLayout;
    middle->addLayout(listColumn);
    middle->addWidget(m_chart, 1);

    auto* grid = new QGridLayout;
    auto* le = new QLabel(this);
    KwSetControlId(le, IDC_LABEL_ENDURANCE);
    m_endurance = new QLineEdit(this);
    KwSetControlId(m_endurance, IDC_ENDURANCE);
    m_endurance->setFixedWidth(KwStyle::CharsWidth(fontMetrics(), KwStyle::NumberFieldChars));
    auto* ls = new QLabel(this);
    KwSetControlId(ls, IDC_LABEL_SOURCE);
    m_source = new QLineEdit(this);
    KwSetControlId(m_source, IDC_SOURCE);
    m_source->setMaxLength(500);
    le->setBuddy(m_endurance);
    ls->setBuddy(m_source);
    grid->addWidget(le, 0, 0);
    grid->addWidget(m_endurance, 0, 1, Qt::AlignLeft);
    grid->addWidget(ls, 1, 0);
    grid->addWidget(m_source, 1, 1);
    KwStyle::ApplyFormGrid(grid);

    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(button(this, IDC_BUTTON_OK));
    bottom->addWidget(button(this, IDC_BUTTON_CANCEL));
    auto* lay = new QVBoxLayout(this);
    lay->addLayout(middle, 1);
    lay->addLayout(grid);
    lay->addLayout(bottom);

    auto click = [this](int id, auto fn) {
        connect(KwControl<QPushButton>(this, id), &QPushButton::clicked, this, fn);
    };
    click(IDC_SORT, [this] { OnSort(); });
    click(IDC_BUTTON_OK, [this] { OnOK(); });
    click(IDC_BUTTON_CANCEL, [this] { OnCancel(); });
    connect(&m_List, &CKwNonLinearEditList::contextMenuWanted, this, [this](const QPoint& at) {
        QMenu* menu = CreateEditMenu(this, "NonlinearMaterialDlg");
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->popup(at);
    });
    // The plot follows the rows and the limit as they are typed.
    KwPointTableModel* model = m_List.Model();
    connect(model, &QAbstractItemModel::modelReset, this, [this] { RefreshPlot(); });
    connect(model, &QAbstractItemModel::layoutChanged, this, [this] { RefreshPlot(); });
    connect(model, &QAbstractItemModel::dataChanged, this, [this] { RefreshPlot(); });
    connect(model, &QAbstractItemModel::rowsInserted, this, [this] { RefreshPlot(); });
    connect(model, &QAbstractItemModel::rowsRemoved, this, [this] { RefreshPlot(); });
    connect(m_endurance, &QLineEdit::textChanged, this, [this] { RefreshPlot(); });
}

CKwSNCurveDialog::~CKwSNCurveDialog() = default;

bool CKwSNCurveDialog::OnInitDialog()
{
    SetMaxSizeList();
    BuildList();
    m_List.Header()->SizeColumns(kListWidth - 2 * m_List.frameWidth() -
                                 m_List.verticalScrollBar()->sizeHint().width());
    LoadFunctions(m_table->GetXFunction(), m_table->GetYFunction());
    ResizeList();
    if (m_material) {
        LoadTextBoxValues(m_endurance, KwUnitKind::Stress, m_material->m_enduranceLimit);
        m_source->setText(m_material->m_snSource);
    }
    const bool ok = CKwMFCDialog::OnInitDialog();
    RefreshPlot();
    return ok;
}

void CKwSNCurveDialog::SetTextToCurrentLang()
{
    const QString title = KwPropText(kSection, "Title", "S-N Curve");
    setWindowTitle(m_material ? KwTitleWithName(title, m_material->GetName()) : title);
    const QString cycles = KwPropText(kSection, "ColumnCycles", "Cycles");
    const QString stress = KwPropText(kSection, "ColumnStress", "Stress Amplitude");
    SetHeaderLabel(0, -1, cycles);
    SetHeaderLabel(1, KwUnitKind::Stress, stress);
    auto* le = KwControl<QLabel>(this, IDC_LABEL_ENDURANCE);
    le->setText(KwPropText(kSection, "LabelEnduranceLimit", "Endurance Limit"));
    LoadTextBoxLabels(le, KwUnitKind::Stress);
    KwSetControlText(this, IDC_LABEL_SOURCE, KwLabel(KwPropText(kSection, "LabelSource", "Source")));
    m_source->setPlaceholderText(
        KwPropText(kSection, "PromptSource", "Where the curve comes from: a standard, a test report"));
    m_endurance->setToolTip(KwPropText(kSection, "TooltipEnduranceLimit",
                                       "The stress amplitude below which the material does not "
                                       "fail however many cycles; empty when not known"));
    KwSetControlText(this, IDC_SORT, KwPropText("NonlinearMaterialDlg", "ButtonSort", "Sort"));
    KwSetControlText(this, IDC_BUTTON_OK, KwPropText("General", "ButtonOk", "OK"));
    KwSetControlText(this, IDC_BUTTON_CANCEL, KwPropText("General", "ButtonCancel", "Cancel"));
    const QString unit = m_pUnits ? m_pUnits->GetUnits(KwUnitKind::Stress) : QString();
    m_chart->SetAxisTitles(cycles, QString(), stress, unit);
    m_chart->SetSeriesName(0, KwPropText(kSection, "SeriesCurve", "S-N curve"));
    m_chart->SetSeriesName(1, KwPropText(kSection, "SeriesEndurance", "Endurance limit"));
    m_chart->SetEmptyText(KwPropText(kSection, "PlotEmpty", "Enter two points or more"));
}

bool CKwSNCurveDialog::IsValidDataInput(const QString& text, int, int col, int showMessage)
{
    const int unit = col == 0 ? -1 : KwUnitKind::Stress;
    switch (CheckCellInput(text, unit, true, showMessage)) {
    case CellInput::Accepted:
        return true;
    case CellInput::Negative:
        if (showMessage)
            ShowTableMessage(col == 0 ? KwErrText(kSection, "NegativeCycles",
                                                  "The number of cycles cannot be negative.")
                                      : KwErrText(kSection, "NegativeStress",
                                                  "A stress amplitude cannot be negative."));
        return false;
    default:
        return false;
    }
}

void CKwSNCurveDialog::RefreshPlot()
{
    // Log-log: the chart is handed log10 of what the rows show.
    const KwPointTableModel* m = m_List.Model();
    std::vector<double> x, y;
    double lo = 0, hi = 0;
    for (int r = 0; r < m_nRowCount && r < m->rows(); ++r) {
        double n = 0, s = 0;
        if (ReadCell(m->cellView(r, 0), -1, &n) != CellRead::Number ||
            ReadCell(m->cellView(r, 1), -1, &s) != CellRead::Number || !(n > 0) || !(s > 0))
            continue;
        x.push_back(std::log10(n));
        y.push_back(std::log10(s));
        lo = x.size() == 1 ? x.back() : std::min(lo, x.back());
        hi = x.size() == 1 ? x.back() : std::max(hi, x.back());
    }
    std::vector<double> ex, ey;
    double limit = 0;
    if (x.size() >= 2 &&
        ReadCell(m_endurance->text(), -1, &limit) == CellRead::Number && limit > 0) {
        ex = {lo, hi};
        ey = {std::log10(limit), std::log10(limit)};
    }
    m_chart->SetSeriesData(0, std::move(x), std::move(y));
    m_chart->SetSeriesData(1, std::move(ex), std::move(ey));
}

void CKwSNCurveDialog::showMessage(const QString& text, int row)
{
    m_lastMessage = text;
    if (row >= 0)
        m_List.SelectRow(row);
    ShowTableMessage(text);
}

bool CKwSNCurveDialog::WriteBack()
{
    m_lastMessage.clear();
    DropBlankRows();
    const KwPointTableModel* m = m_List.Model();
    for (int r = 0; r < m_nRowCount; ++r) {
        for (int c = 0; c < 2; ++c)
            if (!IsValidDataInput(m->cellText(r, c), r, c, 1)) {
                m_lastMessage = KwErrText(kSection, "BadCell", "Row %1 holds no number.").arg(r + 1);
                m_List.SelectRow(r);
                return false;
            }
        double v = 0;
        const bool noCycles = ReadCell(m->cellView(r, 0), -1, &v) == CellRead::Empty;
        const bool noStress = ReadCell(m->cellView(r, 1), -1, &v) == CellRead::Empty;
        if (noCycles || noStress) {
            showMessage((noCycles ? KwErrText(kSection, "MissingCycles", "Row %1 has no cycles.")
                                  : KwErrText(kSection, "MissingStress", "Row %1 has no stress."))
                            .arg(r + 1),
                        r);
            return false;
        }
    }
    // The rows as numbers (internal units), then every rule, before anything is written.
    if (!UpdateListData(0, &m_pXFunction) || !UpdateListData(1, &m_pYFunction))
        return false;
    KwMaterialCurve curve;
    for (int i = 0; i < m_nRowCount; ++i) {
        curve.x.push_back(m_pXFunction->GetValue(i));
        curve.y.push_back(m_pYFunction->GetValue(i));
    }
    double limit = MissingDouble;
    if (!m_endurance->text().trimmed().isEmpty()) {
        const KW_UOM si;
        const KW_UOM* units = m_pUnits ? m_pUnits : &si;
        if (!units->ReadInternalValue(m_endurance->text().trimmed(), KwUnitKind::Stress, &limit)) {
            m_lastMessage = KwFieldMessage(
                KwPropText(kSection, "LabelEnduranceLimit", "Endurance Limit"),
                units->GetErrorMessageForUnit(m_endurance->text().trimmed(), KwUnitKind::Stress));
            ShowTableMessage(m_lastMessage);
            m_endurance->setFocus();
            return false;
        }
    }
    const Check check = CheckCurve(curve.x, curve.y, limit);
    if (check.problem != NoProblem) {
        const bool aboutLimit =
            check.problem == EnduranceNotPositive || check.problem == EnduranceAboveCurve;
        const QString text = ProblemText(check);
        showMessage(aboutLimit ? KwFieldMessage(KwPropText(kSection, "LabelEnduranceLimit",
                                                           "Endurance Limit"),
                                                text)
                               : text,
                    check.row);
        if (aboutLimit)
            m_endurance->setFocus();
        return false;
    }
    if (m_material) {
        m_material->m_snCurve = std::move(curve);
        m_material->m_enduranceLimit = limit;
        m_material->m_snSource = m_source->text().trimmed();
    }
    return true;
}

void CKwSNCurveDialog::OnOK()
{
    if (RefuseWhileSolving())
        return;
    if (!WriteBack())
        return;
    CKwMFCDialog::OnOK();
}

bool KwEditSNCurve(QWidget* parent, CKwMaterial* material, KW_UOM* units, CFMView* view)
{
    if (!material)
        return false;
    CKwSNCurveDialog dlg(material, units, view, parent);
    return dlg.DoModal() == KwMB::IDOK;
}
