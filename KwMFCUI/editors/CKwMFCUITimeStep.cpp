#include "CKwMFCUITimeStep.h"

#include "KW_UOM.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwStyle.h"
#include "ui_CKwMFCUITimeStep.h"

#include <QAbstractButton>
#include <QHeaderView>
#include <QTableView>

namespace {

using T = KwTextTarget;
using U = CKwUITimeStep;
using Ed = CKwMFCUITimeStep;

constexpr KwControlCode kControlCodes[] = {
    {U::CodeTotalTime, Ed::kTotalTime, KwCodeOp::Text},
    {U::CodeTotalSteps, Ed::kTotalSteps, KwCodeOp::Text},
};

constexpr KwTextRow kTexts[] = {
    {Ed::kAddRow, "TimeStep", "ButtonAddInterval", "Add Interval"},
    {Ed::kAddRow, "TimeStep", "TooltipAddInterval",
     "Add an interval after the selected one, with its stepping", T::ToolTip},
    {Ed::kRemoveRow, "TimeStep", "ButtonRemoveInterval", "Remove Interval"},
    {7724, "TimeStep", "LabelTotalTime", "Total Time", T::Label},
    {7726, "TimeStep", "LabelTotalSteps", "Total Steps", T::Label},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

// Column heads: language key, English; the increment and end time carry the time unit.
constexpr std::pair<const char*, const char*> kHeads[] = {
    {"ColumnSteps", "Number of Steps"},
    {"ColumnIncrement", "Time Increment"},
    {"ColumnOutputEvery", "Output Every"},
    {"ColumnEndTime", "End Time"},
};

} // namespace

CKwTimeStepTableModel::CKwTimeStepTableModel(CKwUITimeStep* logic, QObject* parent)
    : QAbstractTableModel(parent), m_logic(logic)
{
}

int CKwTimeStepTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_logic->RowCount();
}

int CKwTimeStepTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : CKwUITimeStep::ColumnCount;
}

QVariant CKwTimeStepTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole: return m_logic->CellText(index.row(), index.column());
    case Qt::TextAlignmentRole: return QVariant::fromValue(KwStyle::NumberAlignment);
    case Qt::ForegroundRole:
        // A refused cell stands out until it reads.
        if (m_logic->IsCellBad(index.row(), index.column()))
            return QColor(Qt::red);
        return {};
    default: return {};
    }
}

bool CKwTimeStepTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !index.isValid())
        return false;
    return m_logic->SetCellText(index.row(), index.column(), value.toString());
}

QVariant CKwTimeStepTableModel::headerData(int section, Qt::Orientation orientation,
                                           int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return section + 1;
    if (section < 0 || section >= CKwUITimeStep::ColumnCount)
        return {};
    const auto& [key, english] = kHeads[section];
    const QString title = KwPropText("TimeStep", key, english);
    const bool timed = section == CKwUITimeStep::ColIncrement || section == CKwUITimeStep::ColEndTime;
    return timed ? KwStyle::WithUnit(title, m_logic->TimeUnit()) : title;
}

Qt::ItemFlags CKwTimeStepTableModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags f = QAbstractTableModel::flags(index);
    if (index.isValid() && index.column() != CKwUITimeStep::ColEndTime)
        f |= Qt::ItemIsEditable;
    return f;
}

void CKwTimeStepTableModel::Reset()
{
    beginResetModel();
    endResetModel();
}

CKwMFCUITimeStep::CKwMFCUITimeStep(CKwTimeStep* steps, CKwAnalysis* analysis, CFMView* view,
                                   KW_UOM* units, QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent), m_ui(std::make_unique<Ui::CKwMFCUITimeStep>())
{
    m_ui->setupUi(this);
    m_model = new CKwTimeStepTableModel(this, this);
    m_ui->table->setModel(m_model);
    SetControlCodes(kControlCodes);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    connect(m_ui->addRow, &QAbstractButton::clicked, this, &CKwMFCUITimeStep::OnAddRow);
    connect(m_ui->removeRow, &QAbstractButton::clicked, this, &CKwMFCUITimeStep::OnRemoveRow);
    SetAnalysis(analysis);
    OnCreate(view, steps, nullptr);
}

CKwMFCUITimeStep::~CKwMFCUITimeStep() = default;

QTableView* CKwMFCUITimeStep::GetTable() const { return m_ui->table; }

bool CKwMFCUITimeStep::OnInitDialog()
{
    KwStyle::ApplyDialogLayout(m_ui->outer);
    KwStyle::ApplyFormGrid(m_ui->totals);
    m_ui->totalTime->setAlignment(KwStyle::NumberAlignment);
    m_ui->totalSteps->setAlignment(KwStyle::NumberAlignment);
    const int w = KwStyle::CharsWidth(fontMetrics(), KwStyle::NumberFieldChars);
    m_ui->totalTime->setMinimumWidth(w);
    m_ui->totalSteps->setMinimumWidth(w);
    m_ui->table->verticalHeader()->setDefaultAlignment(KwStyle::NumberAlignment);
    const bool ok = CKwMFCUIBase::OnInitDialog();
    KwStyle::FitHeaders(m_ui->table);
    return ok;
}

void CKwMFCUITimeStep::SetTextToCurrentLang()
{
    CKwMFCUIBase::SetTextToCurrentLang();
    if (m_model) {
        emit m_model->headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
        KwStyle::FitHeaders(m_ui->table);
    }
}

void CKwMFCUITimeStep::OnRowsChanged()
{
    // A cell's edit changes the end times further down: the cells are shown afresh (an open
    // cell editor stays); a row added or removed resets the table, keeping the current cell.
    if (!m_model || m_inReset)
        return;
    m_inReset = true;
    if (m_shownRows == RowCount() && m_shownRows > 0) {
        emit m_model->dataChanged(m_model->index(0, 0),
                                  m_model->index(m_shownRows - 1, ColumnCount - 1));
    } else {
        const QModelIndex current = m_ui->table->currentIndex();
        m_model->Reset();
        m_shownRows = RowCount();
        if (current.row() >= 0 && current.row() < m_shownRows)
            m_ui->table->setCurrentIndex(m_model->index(current.row(), current.column()));
    }
    m_ui->removeRow->setEnabled(RowCount() > 0);
    m_inReset = false;
}

void CKwMFCUITimeStep::OnAddRow()
{
    const int current = m_ui->table->currentIndex().row();
    const int row = current >= 0 ? current + 1 : RowCount();
    InsertRow(row);
    m_ui->table->setCurrentIndex(m_model->index(row, ColSteps));
}

void CKwMFCUITimeStep::OnRemoveRow()
{
    const int current = m_ui->table->currentIndex().row();
    RemoveRow(current >= 0 ? current : RowCount() - 1);
}
