#include "CKwMFCUIFrequencyPages.h"

#include "KW_UOM.h"
#include "KwControls.h"
#include "KwOptionPage.h"
#include "KwStyle.h"
#include "ui_CKwMFCUIDiscreteFrequency.h"
#include "ui_CKwMFCUIFrequencyRange.h"
#include "ui_CKwMFCUIFrequencySolnClusterModes.h"
#include "ui_CKwMFCUIFrequencySolnSpreadAround.h"

#include <QComboBox>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <algorithm>

namespace {

using T = KwTextTarget;
constexpr int kHz = KwUnitKind::Frequency;
constexpr const char* kSec = "SolutionFrequency";

constexpr KwTextRow kDiscreteTexts[] = {
    {7040, kSec, "GroupDiscrete", "Discrete Frequencies"},
    {7042, kSec, "ButtonAddRow", "Add Row"},
    {7043, kSec, "ButtonDeleteRows", "Delete Rows"},
    {7041, kSec, "ToolTipDiscrete", "The frequencies to solve at, one per row, in any order",
     T::ToolTip},
};

constexpr KwTextRow kRangeTexts[] = {
    {7050, kSec, "GroupRange", "Frequency Range"},
    {7051, kSec, "LabelStartFrequency", "Start Frequency", T::UnitLabel, KwTextLookup::Prop, kHz},
    {7053, kSec, "LabelEndFrequency", "End Frequency", T::UnitLabel, KwTextLookup::Prop, kHz},
    {7055, kSec, "LabelIncrements", "Number of Increments", true},
    {7057, kSec, "LabelSpacing", "Spacing", true},
    {7058, kSec, "DropDownLinear", "Linear", T::Item},
    {7058, kSec, "DropDownLogarithmic", "Logarithmic", T::Item},
};

constexpr KwTextRow kClusterTexts[] = {
    {7060, kSec, "GroupCluster", "Clustered between Modes"},
    {7061, kSec, "LabelLowerFrequency", "Lower Frequency", T::UnitLabel, KwTextLookup::Prop, kHz},
    {7063, kSec, "LabelUpperFrequency", "Upper Frequency", T::UnitLabel, KwTextLookup::Prop, kHz},
    {7065, kSec, "LabelPointsPerGap", "Points between Modes", true},
    {7067, kSec, "LabelClusterBias", "Cluster Bias", true},
    {7069, kSec, "LabelClusterNote",
     "Between each two natural frequencies of the band; a bias above 1 moves the points "
     "towards the modes."},
};

constexpr KwTextRow kSpreadTexts[] = {
    {7070, kSec, "GroupSpread", "Spread around Modes"},
    {7071, kSec, "LabelLowerFrequency", "Lower Frequency", T::UnitLabel, KwTextLookup::Prop, kHz},
    {7073, kSec, "LabelUpperFrequency", "Upper Frequency", T::UnitLabel, KwTextLookup::Prop, kHz},
    {7075, kSec, "LabelSpreadPercent", "Spread (%)", true},
    {7077, kSec, "LabelPointsPerMode", "Points per Mode", true},
    {7079, kSec, "LabelSpreadNote",
     "Evenly over each natural frequency of the band, plus and minus the spread."},
};

} // namespace

// --- the list of discrete frequencies ---

void KwFrequencyListModel::SetTexts(const QStringList& texts)
{
    beginResetModel();
    m_texts = texts;
    endResetModel();
}

void KwFrequencyListModel::SetHeader(const QString& header)
{
    m_header = header;
    emit headerDataChanged(Qt::Horizontal, 0, 0);
}

int KwFrequencyListModel::AddRow()
{
    const int row = int(m_texts.size());
    beginInsertRows({}, row, row);
    m_texts.append(QString());
    endInsertRows();
    return row;
}

void KwFrequencyListModel::RemoveRows(QList<int> rows)
{
    std::sort(rows.begin(), rows.end(), std::greater<int>());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    for (int row : rows) {
        if (row < 0 || row >= m_texts.size())
            continue;
        beginRemoveRows({}, row, row);
        m_texts.removeAt(row);
        endRemoveRows();
    }
}

int KwFrequencyListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_texts.size());
}

int KwFrequencyListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 1;
}

QVariant KwFrequencyListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_texts.size())
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return m_texts[index.row()];
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(KwStyle::NumberAlignment);
    return {};
}

bool KwFrequencyListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::EditRole || index.row() >= m_texts.size())
        return false;
    const QString text = value.toString().trimmed();
    if (text == m_texts[index.row()])
        return false;
    m_texts[index.row()] = text;
    emit dataChanged(index, index);
    return true;
}

QVariant KwFrequencyListModel::headerData(int section, Qt::Orientation orientation,
                                          int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    return orientation == Qt::Horizontal ? QVariant(m_header) : QVariant(section + 1);
}

Qt::ItemFlags KwFrequencyListModel::flags(const QModelIndex& index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable
                           : Qt::NoItemFlags;
}

// --- the pages ---

CKwFrequencyPage::CKwFrequencyPage(unsigned templateId, CFMView* view, const KW_UOM* units,
                                   QWidget* parent)
    : CKwMFCDialog(templateId, view, parent), m_units(units)
{
    // A page is part of its editor's window, not a window of its own.
    setWindowFlags(Qt::Widget);
    KwSetControlId(this, int(templateId));
}

void CKwFrequencyPage::SetTextToCurrentLang()
{
    KwApplyTextTable(this, m_texts, m_units);
    // A wrapped note takes the lines its text needs at its width in every language: a page
    // shown later than its editor is laid out does not get them from the layout.
    for (QLabel* note : findChildren<QLabel*>())
        if (note->wordWrap()) {
            note->setFixedWidth(note->maximumWidth() < QWIDGETSIZE_MAX ? note->maximumWidth()
                                                                      : 360);
            note->setMinimumHeight(note->heightForWidth(note->width()));
        }
}

long CKwFrequencyPage::Notify(int ctrlId, int value)
{
    return KwNotifyOptionChanged(this, GetFMView(), ctrlId, value);
}

void CKwFrequencyPage::ReportChanges()
{
    for (QLineEdit* e : findChildren<QLineEdit*>()) {
        const int id = e->property(kKwCtrlIdProperty).toInt();
        connect(e, &QLineEdit::editingFinished, this, [this, e, id] {
            if (e->isModified()) {
                e->setModified(false);
                Notify(id, 0);
            }
        });
    }
    for (QComboBox* c : findChildren<QComboBox*>()) {
        const int id = c->property(kKwCtrlIdProperty).toInt();
        connect(c, &QComboBox::activated, this, [this, id](int row) { Notify(id, row); });
    }
}

CKwMFCUIDiscreteFrequency::CKwMFCUIDiscreteFrequency(CFMView* view, const KW_UOM* units,
                                                     QWidget* parent)
    : CKwFrequencyPage(kTemplateId, view, units, parent),
      m_ui(std::make_unique<Ui::CKwMFCUIDiscreteFrequency>()),
      m_model(new KwFrequencyListModel(this))
{
    m_ui->setupUi(this);
    SetPageTexts(kDiscreteTexts);
    m_ui->list->setModel(m_model);
    m_ui->list->horizontalHeader()->setStretchLastSection(true);
    m_ui->list->setSelectionBehavior(QAbstractItemView::SelectRows);
    connect(m_ui->addRow, &QPushButton::clicked, this, &CKwMFCUIDiscreteFrequency::AddRow);
    connect(m_ui->deleteRows, &QPushButton::clicked, this,
            &CKwMFCUIDiscreteFrequency::DeleteSelectedRows);
    // The list's content goes to the editor after each edit, addition and removal.
    const auto report = [this] { Notify(kListId, 0); };
    connect(m_model, &QAbstractItemModel::dataChanged, this, report);
    connect(m_model, &QAbstractItemModel::rowsRemoved, this, report);
}

CKwMFCUIDiscreteFrequency::~CKwMFCUIDiscreteFrequency() = default;

QTableView* CKwMFCUIDiscreteFrequency::View() const { return m_ui->list; }

void CKwMFCUIDiscreteFrequency::SetTextToCurrentLang()
{
    CKwFrequencyPage::SetTextToCurrentLang();
    const KW_UOM si;
    m_model->SetHeader(KwStyle::WithUnit(KwPropText(kSec, "ColumnFrequency", "Frequency"),
                                         (Units() ? Units() : &si)->GetUnits(kHz)));
    KwStyle::FitHeaders(m_ui->list);
}

void CKwMFCUIDiscreteFrequency::CommitOpenEdit()
{
    // Moving the current cell ends an open edit and hands its text to the model.
    const QModelIndex current = m_ui->list->currentIndex();
    if (!current.isValid())
        return;
    m_ui->list->setCurrentIndex(QModelIndex());
    m_ui->list->setCurrentIndex(current);
}

void CKwMFCUIDiscreteFrequency::AddRow()
{
    const int row = m_model->AddRow();
    const QModelIndex at = m_model->index(row, 0);
    m_ui->list->setCurrentIndex(at);
    m_ui->list->edit(at);
}

void CKwMFCUIDiscreteFrequency::DeleteSelectedRows()
{
    QList<int> rows;
    for (const QModelIndex& i : m_ui->list->selectionModel()->selectedIndexes())
        rows << i.row();
    if (rows.isEmpty() && m_ui->list->currentIndex().isValid())
        rows << m_ui->list->currentIndex().row();
    m_model->RemoveRows(rows);
}

CKwMFCUIFrequencyRange::CKwMFCUIFrequencyRange(CFMView* view, const KW_UOM* units,
                                               QWidget* parent)
    : CKwFrequencyPage(kTemplateId, view, units, parent),
      m_ui(std::make_unique<Ui::CKwMFCUIFrequencyRange>())
{
    m_ui->setupUi(this);
    SetPageTexts(kRangeTexts);
    ReportChanges();
}

CKwMFCUIFrequencyRange::~CKwMFCUIFrequencyRange() = default;

CKwMFCUIFrequencySolnClusterModes::CKwMFCUIFrequencySolnClusterModes(CFMView* view,
                                                                     const KW_UOM* units,
                                                                     QWidget* parent)
    : CKwFrequencyPage(kTemplateId, view, units, parent),
      m_ui(std::make_unique<Ui::CKwMFCUIFrequencySolnClusterModes>())
{
    m_ui->setupUi(this);
    SetPageTexts(kClusterTexts);
    ReportChanges();
}

CKwMFCUIFrequencySolnClusterModes::~CKwMFCUIFrequencySolnClusterModes() = default;

CKwMFCUIFrequencySolnSpreadAround::CKwMFCUIFrequencySolnSpreadAround(CFMView* view,
                                                                     const KW_UOM* units,
                                                                     QWidget* parent)
    : CKwFrequencyPage(kTemplateId, view, units, parent),
      m_ui(std::make_unique<Ui::CKwMFCUIFrequencySolnSpreadAround>())
{
    m_ui->setupUi(this);
    SetPageTexts(kSpreadTexts);
    ReportChanges();
}

CKwMFCUIFrequencySolnSpreadAround::~CKwMFCUIFrequencySolnSpreadAround() = default;
