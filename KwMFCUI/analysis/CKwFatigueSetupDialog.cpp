#include "CKwFatigueSetupDialog.h"

#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwMaterial.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMessageBox.h"
#include "KwNumbers.h"
#include "KwStyle.h"
#include "ui_CKwFatigueSetupDialog.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTreeWidget>
#include <cmath>

namespace {

using T = KwTextTarget;
using D = CKwFatigueSetupDialog;
using S = CKwFatigueSetup;
constexpr const char* kSection = "FatigueSetup";

constexpr KwTextRow kTexts[] = {
    {7901, "FatigueSetup", "LabelAnalysis", "Analysis", true},
    {7903, "FatigueSetup", "GroupLoading", "Loading"},
    {7904, "FatigueSetup", "LabelCycles", "Load Cycles", true},
    {7906, "FatigueSetup", "LabelLoading", "Loading", true},
    {7908, "FatigueSetup", "LabelRatio", "Stress Ratio", true},
    {D::IdRatio, "FatigueSetup", "TooltipRatio",
     "Minimum over maximum stress of a cycle: -1 fully reversed, 0 zero-based", T::ToolTip},
    {D::IdAddRow, "FatigueSetup", "ButtonAddRow", "Add Row"},
    {D::IdRemoveRow, "FatigueSetup", "ButtonRemoveRow", "Remove Row"},
    {7913, "FatigueSetup", "GroupStress", "Stress"},
    {7914, "FatigueSetup", "LabelMeanStress", "Mean Stress Correction", true},
    {7916, "FatigueSetup", "LabelMeasure", "Stress Measure", true},
    {7918, "FatigueSetup", "LabelScale", "Scale Factor", true},
    {D::IdScale, "FatigueSetup", "TooltipScale",
     "Multiplies the stresses of the load cycle before the damage is summed", T::ToolTip},
    {7920, "FatigueSetup", "GroupCurves", "Material Fatigue Curves"},
    {7922, "FatigueSetup", "LabelCurvesNote",
     "Each material brings its own fatigue curve: switch on Fatigue (on) in the material "
     "editor. Materials without one are left out of the damage sum."},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
    {D::IdLoading, "FatigueSetup", "DropDownFullyReversed", "Fully Reversed", T::Item},
    {D::IdLoading, "FatigueSetup", "DropDownZeroBased", "Zero-Based", T::Item},
    {D::IdLoading, "FatigueSetup", "DropDownCustomRatio", "Custom Stress Ratio", T::Item},
    {D::IdLoading, "FatigueSetup", "DropDownLoadHistory", "Load History", T::Item},
    {D::IdMeanStress, "FatigueSetup", "DropDownNone", "None", T::Item},
    {D::IdMeanStress, "FatigueSetup", "DropDownGoodman", "Goodman", T::Item},
    {D::IdMeanStress, "FatigueSetup", "DropDownGerber", "Gerber", T::Item},
    {D::IdMeanStress, "FatigueSetup", "DropDownSoderberg", "Soderberg", T::Item},
    {D::IdMeasure, "FatigueSetup", "DropDownVonMises", "Von Mises", T::Item},
    {D::IdMeasure, "FatigueSetup", "DropDownSignedVonMises", "Signed von Mises", T::Item},
    {D::IdMeasure, "FatigueSetup", "DropDownMaxPrincipal", "Maximum Principal", T::Item},
    {D::IdMeasure, "FatigueSetup", "DropDownMaxShear", "Maximum Shear", T::Item},
};

QString prop(const char* key, const char* english) { return KwPropText(kSection, key, english); }
QString errText(const char* key, const char* english) { return KwErrText(kSection, key, english); }

// A number typed into a dimensionless field; false when the text is no number.
bool readNumber(const QString& text, const KW_UOM* units, double* value)
{
    static const KW_UOM si;
    int status = KW_UOM::ParseOk;
    const double v =
        (units ? *units : si).ParseQuantity(text, KwUnitKind::Dimensionless, &status);
    if (status != KW_UOM::ParseOk)
        return false;
    *value = v;
    return true;
}

} // namespace

// --- the history table ---

KwFatigueHistoryModel::KwFatigueHistoryModel(QObject* parent) : QAbstractTableModel(parent) {}

void KwFatigueHistoryModel::SetBlocks(const QList<CKwFatigueSetup::Block>& blocks)
{
    beginResetModel();
    m_rows.clear();
    for (const CKwFatigueSetup::Block& b : blocks)
        m_rows.append({KwStyle::EditableNumber(b.cycles), KwStyle::EditableNumber(b.minFactor),
                       KwStyle::EditableNumber(b.maxFactor)});
    endResetModel();
}

int KwFatigueHistoryModel::ReadBlocks(QList<CKwFatigueSetup::Block>& blocks, int* column,
                                      QString* message) const
{
    blocks.clear();
    for (int r = 0; r < m_rows.size(); ++r) {
        double v[ColumnCount] = {};
        for (int c = 0; c < ColumnCount; ++c) {
            if (!readNumber(m_rows[r][static_cast<std::size_t>(c)], nullptr, &v[c])) {
                *column = c;
                *message = errText("CellNotANumber", "Enter a number in every cell.");
                return r;
            }
        }
        if (!(v[ColCycles] >= 1) || v[ColCycles] != std::floor(v[ColCycles])) {
            *column = ColCycles;
            *message = errText("BlockCycles", "The cycles of a block are a whole number from 1.");
            return r;
        }
        if (!(v[ColMax] > v[ColMin])) {
            *column = ColMax;
            *message = errText("BlockOrder",
                               "The maximum factor of a block must be above its minimum.");
            return r;
        }
        blocks.append({v[ColCycles], v[ColMin], v[ColMax]});
    }
    return -1;
}

void KwFatigueHistoryModel::AppendRow()
{
    beginInsertRows(QModelIndex(), int(m_rows.size()), int(m_rows.size()));
    m_rows.append({QStringLiteral("1000"), QStringLiteral("0"), QStringLiteral("1")});
    endInsertRows();
}

void KwFatigueHistoryModel::RemoveRowAt(int row)
{
    if (row < 0 || row >= m_rows.size())
        return;
    beginRemoveRows(QModelIndex(), row, row);
    m_rows.removeAt(row);
    endRemoveRows();
}

int KwFatigueHistoryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int KwFatigueHistoryModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant KwFatigueHistoryModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return m_rows[index.row()][static_cast<std::size_t>(index.column())];
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(KwStyle::NumberAlignment);
    return {};
}

bool KwFatigueHistoryModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::EditRole || index.row() >= m_rows.size())
        return false;
    m_rows[index.row()][static_cast<std::size_t>(index.column())] = value.toString().trimmed();
    emit dataChanged(index, index);
    return true;
}

QVariant KwFatigueHistoryModel::headerData(int section, Qt::Orientation orientation,
                                           int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return section + 1;
    switch (section) {
    case ColCycles: return prop("ColumnCycles", "Cycles");
    case ColMin: return prop("ColumnMinFactor", "Minimum Factor");
    case ColMax: return prop("ColumnMaxFactor", "Maximum Factor");
    default: return {};
    }
}

Qt::ItemFlags KwFatigueHistoryModel::flags(const QModelIndex& index) const
{
    return index.isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable
                           : Qt::NoItemFlags;
}

// --- the dialog ---

CKwAnalysis* CKwFatigueSetupDialog::CurrentFatigueAnalysis(const CFMView* view)
{
    CKwAnalysis* a = view ? view->GetCurrentAnalysis() : nullptr;
    // The current analysis must still be one of the model's.
    if (!a || !a->IsFatigueAnalysis() || !view->GetModel() ||
        !view->GetModel()->m_analyses.contains(a))
        return nullptr;
    return a;
}

CKwFatigueSetupDialog::CKwFatigueSetupDialog(CKwAnalysis* analysis, CFMView* view,
                                             KW_UOM* units, QWidget* parent)
    : CKwMFCDialog(0, view, parent), m_ui(std::make_unique<Ui::CKwFatigueSetupDialog>()),
      m_analysis(analysis), m_units(units), m_history(new KwFatigueHistoryModel(this))
{
    m_ui->setupUi(this);
    KwStyle::ApplyDialogLayout(m_ui->outer);
    KwStyle::ApplyFormGrid(m_ui->topGrid);
    for (QGroupBox* g : {m_ui->groupLoading, m_ui->groupStress, m_ui->groupCurves})
        KwStyle::ApplyGroupLayout(g->layout());
    KwStyle::ApplyFormGrid(m_ui->loadingGrid);
    KwStyle::ApplyFormGrid(m_ui->stressGrid);
    const int number = KwStyle::CharsWidth(fontMetrics(), KwStyle::NumberFieldChars);
    for (QLineEdit* e : {m_ui->cycles, m_ui->ratio, m_ui->scale})
        e->setFixedWidth(number);
    m_ui->history->setModel(m_history);
    m_ui->history->verticalHeader()->setVisible(false);
    m_ui->history->setMinimumHeight(fontMetrics().height() * 7);
    m_ui->curves->setColumnCount(2);
    m_ui->curves->setRootIsDecorated(false);
    m_ui->curves->setMaximumHeight(fontMetrics().height() * 7);
    connect(m_ui->loading, &QComboBox::currentIndexChanged, this, [this] { syncLoading(); });
    connect(m_ui->addRow, &QPushButton::clicked, this, [this] {
        m_history->AppendRow();
        m_ui->history->setCurrentIndex(m_history->index(m_history->rowCount() - 1, 0));
    });
    connect(m_ui->removeRow, &QPushButton::clicked, this,
            [this] { m_history->RemoveRowAt(m_ui->history->currentIndex().row()); });
    connect(m_ui->ok, &QPushButton::clicked, this, &CKwFatigueSetupDialog::OnOK);
    connect(m_ui->cancel, &QPushButton::clicked, this, &CKwMFCDialog::OnCancel);
}

CKwFatigueSetupDialog::~CKwFatigueSetupDialog() = default;

bool CKwFatigueSetupDialog::OnInitDialog()
{
    SetTextToCurrentLang();
    fill();
    EnterViewDialogStack();
    SizeAndPlace();
    return true;
}

void CKwFatigueSetupDialog::SetTextToCurrentLang()
{
    setWindowTitle(KwTitleWithName(prop("Title", "Fatigue Setup"),
                                   m_analysis ? m_analysis->GetName() : QString()));
    KwApplyTextTable(this, kTexts);
    m_ui->curves->setHeaderLabels(
        {prop("ColumnMaterial", "Material"), prop("ColumnFatigueCurve", "Fatigue Curve")});
    fillCurves();
    // Both lists are as wide as their heads and names in the language of the moment.
    KwStyle::FitHeaders(m_ui->history);
    m_ui->history->setMinimumWidth(m_ui->history->horizontalHeader()->length() +
                                   2 * m_ui->history->frameWidth() +
                                   m_ui->history->verticalScrollBar()->sizeHint().width());
    KwStyle::FitHeaders(m_ui->curves);
    m_ui->curves->resizeColumnToContents(0);
    m_ui->curves->header()->resizeSection(
        0, m_ui->curves->header()->sectionSize(0) + KwStyle::CellPadding);
    int curvesWidth = 2 * m_ui->curves->frameWidth() +
                      m_ui->curves->verticalScrollBar()->sizeHint().width();
    for (int c = 0; c < m_ui->curves->columnCount(); ++c)
        curvesWidth += m_ui->curves->header()->sectionSize(c);
    m_ui->curves->setMinimumWidth(curvesWidth);
}

void CKwFatigueSetupDialog::fill()
{
    m_shown = m_analysis && m_analysis->GetFatigueSetup() ? *m_analysis->GetFatigueSetup()
                                                          : CKwFatigueSetup();
    m_ui->analysis->setText(m_analysis ? m_analysis->GetName() : QString());
    m_ui->cycles->setText(KwStyle::EditableNumber(m_shown.m_cycles));
    m_ui->loading->setCurrentIndex(m_shown.m_loading);
    m_ui->ratio->setText(KwStyle::EditableNumber(m_shown.StressRatio()));
    m_history->SetBlocks(m_shown.m_history);
    m_ui->meanStress->setCurrentIndex(m_shown.m_meanStress);
    m_ui->measure->setCurrentIndex(m_shown.m_stressMeasure);
    m_ui->scale->setText(KwStyle::EditableNumber(m_shown.m_scale));
    syncLoading();
}

void CKwFatigueSetupDialog::fillCurves()
{
    m_ui->curves->clear();
    const CFMView* view = GetFMView();
    if (!view || !view->GetModel())
        return;
    for (const CKwMaterial* m : view->GetModel()->m_materials) {
        // A material with fatigue on brings its S-N curve (the material editor's "S-N
        // Curve..."): its points and endurance limit are named, its source is the tool tip.
        QString curve = prop("CurveNone", "None");
        if (m->m_fatigueOn && !m->m_snCurve.IsEmpty()) {
            curve = prop("CurveSN", "S-N curve, %1 points").arg(m->m_snCurve.Size());
            const KW_UOM si;
            const KW_UOM* units = m_units ? m_units : &si;
            if (!IsMissingValue(m->m_enduranceLimit))
                curve += prop("CurveSNLimit", ", endurance limit %1 %2")
                             .arg(KwStyle::EditableNumber(
                                      units->GetDisplayValue(m->m_enduranceLimit, KwUnitKind::Stress)),
                                  units->GetUnits(KwUnitKind::Stress));
        } else if (m->m_fatigueOn) {
            curve = prop("CurveFromMaterial", "From material");
        }
        auto* item = new QTreeWidgetItem(m_ui->curves, {m->GetName(), curve});
        item->setToolTip(0, m->GetName());
        item->setToolTip(1, m->m_snSource.isEmpty() ? curve : m->m_snSource);
    }
}

// The ratio field shows the ratio of the loading chosen and takes input only for a custom
// ratio; the history table serves a load history.
void CKwFatigueSetupDialog::syncLoading()
{
    const int loading = m_ui->loading->currentIndex();
    if (loading == S::FullyReversed || loading == S::ZeroBased)
        m_ui->ratio->setText(KwStyle::EditableNumber(loading == S::FullyReversed ? -1.0 : 0.0));
    m_ui->ratio->setEnabled(loading == S::CustomRatio);
    const bool history = loading == S::LoadHistory;
    m_ui->history->setEnabled(history);
    m_ui->addRow->setEnabled(history);
    m_ui->removeRow->setEnabled(history);
    if (history && m_history->rowCount() == 0)
        m_history->AppendRow();
}

void CKwFatigueSetupDialog::fieldError(const QString& label, const QString& message)
{
    m_lastMessage = KwFieldMessage(label, message);
    if (CFMView* view = GetFMView()) {
        view->ShowBubbleToolTipError(m_lastMessage, 0);
        return;
    }
    KwMessageBoxW(this, m_lastMessage, KwProductDisplayName(), KwMB::OK | KwMB::ICONERROR);
}

bool CKwFatigueSetupDialog::read(CKwFatigueSetup& out)
{
    out = m_shown;
    // A field the user left alone keeps the stored value to the last bit.
    auto number = [this](QLineEdit* edit, double stored, double* value) {
        const QString text = edit->text().trimmed();
        if (text == KwStyle::EditableNumber(stored)) {
            *value = stored;
            return true;
        }
        return readNumber(text, m_units, value);
    };
    const QString notNumber = errText("NotANumber", "Enter a number.");
    double cycles = 0;
    if (!number(m_ui->cycles, m_shown.m_cycles, &cycles)) {
        fieldError(prop("LabelCycles", "Load Cycles"), notNumber);
        return false;
    }
    if (!(cycles >= 1) || cycles != std::floor(cycles) || cycles > 1e15) {
        fieldError(prop("LabelCycles", "Load Cycles"),
                   errText("CyclesRange", "Enter a whole number of cycles from 1 to 1e15."));
        return false;
    }
    out.m_cycles = cycles;
    out.m_loading = m_ui->loading->currentIndex();
    if (out.m_loading == S::CustomRatio) {
        double ratio = 0;
        if (!number(m_ui->ratio, m_shown.StressRatio(), &ratio)) {
            fieldError(prop("LabelRatio", "Stress Ratio"), notNumber);
            return false;
        }
        if (!(ratio < 1.0)) {
            fieldError(prop("LabelRatio", "Stress Ratio"),
                       errText("RatioBelowOne",
                               "The stress ratio must be below 1: a ratio of 1 is a constant "
                               "load, which does not fatigue."));
            return false;
        }
        out.m_ratio = ratio;
    } else if (out.m_loading == S::LoadHistory) {
        int column = 0;
        QString message;
        const int row = m_history->ReadBlocks(out.m_history, &column, &message);
        if (row >= 0 || out.m_history.isEmpty()) {
            if (row >= 0)
                m_ui->history->setCurrentIndex(m_history->index(row, column));
            fieldError(prop("LabelHistory", "Load History"),
                       row >= 0 ? message
                                : errText("HistoryEmpty", "Add at least one block of cycles."));
            return false;
        }
    }
    if (out.m_loading != S::LoadHistory)
        out.m_history.clear();
    out.m_meanStress = m_ui->meanStress->currentIndex();
    out.m_stressMeasure = m_ui->measure->currentIndex();
    double scale = 0;
    if (!number(m_ui->scale, m_shown.m_scale, &scale)) {
        fieldError(prop("LabelScale", "Scale Factor"), notNumber);
        return false;
    }
    if (!(scale > 0)) {
        fieldError(prop("LabelScale", "Scale Factor"),
                   errText("ScalePositive", "Enter a scale factor greater than zero."));
        return false;
    }
    out.m_scale = scale;
    return true;
}

void CKwFatigueSetupDialog::OnOK()
{
    if (RefuseWhileSolving())
        return;
    CKwFatigueSetup setup;
    if (!read(setup))
        return;
    m_lastMessage.clear();
    // The analysis may have left the model while the dialog was open: nothing is written then.
    const CFMView* view = GetFMView();
    if (m_analysis && (!view || !view->GetModel() ||
                       view->GetModel()->m_analyses.contains(m_analysis))) {
        if (CKwFatigueSetup* stored = m_analysis->GetFatigueSetup())
            *stored = setup;
        else
            m_analysis->SetFatigueSetup(new CKwFatigueSetup(setup));
    }
    CKwMFCDialog::OnOK();
}
