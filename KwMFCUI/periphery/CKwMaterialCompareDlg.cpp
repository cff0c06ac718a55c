#include "CKwMaterialCompareDlg.h"

#include "KW_UOM.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMaterialEditorSupport.h"
#include "KwMaterialKeys.h"
#include "KwNumbers.h"
#include "KwStyle.h"

#include <QCheckBox>
#include <QFont>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>
#include <cmath>

namespace {

constexpr const char* kSection = "MaterialLibrary";

// Two stored values are the same when both are unset, or equal to the last few bits (values
// read from files in other units come back with rounding in the last place).
bool sameValue(double a, double b)
{
    const bool ma = IsMissingValue(a), mb = IsMissingValue(b);
    if (ma || mb)
        return ma == mb;
    return std::fabs(a - b) <= 1e-12 * std::max(std::fabs(a), std::fabs(b));
}

// The colour behind a row whose values differ: a pale amber that text of any colour reads on.
const QColor kDiffers(0xff, 0xf1, 0xc8);

} // namespace

KwMaterialCompareModel::KwMaterialCompareModel(const CKwMaterial& first, const CKwMaterial& second,
                                               const KW_UOM* units, QObject* parent)
    : QAbstractTableModel(parent), m_first(first), m_second(second), m_units(units)
{
    rebuild();
}

void KwMaterialCompareModel::rebuild()
{
    m_rows.clear();
    const QString typeA = KwMaterialTypeText(m_first.GetMaterialType());
    const QString typeB = KwMaterialTypeText(m_second.GetMaterialType());
    m_rows.push_back({Row::Type, 0, typeA, typeB, typeA != typeB});
    if (!m_first.m_category.isEmpty() || !m_second.m_category.isEmpty())
        m_rows.push_back({Row::Category, 0, m_first.m_category, m_second.m_category,
                          m_first.m_category != m_second.m_category});
    for (int k = 0; k < KwMaterialKeys::Count; ++k) {
        const double a = m_first.GetValue(k), b = m_second.GetValue(k);
        if (IsMissingValue(a) && IsMissingValue(b))
            continue;
        const int kind = KwMaterialKeys::UnitKind(k);
        m_rows.push_back({Row::Key, k, KwMaterialKeys::FormatValue(a, kind, m_units),
                          KwMaterialKeys::FormatValue(b, kind, m_units), !sameValue(a, b)});
    }
    for (int e = 0; e < CKwMaterial::ExtraCount; ++e) {
        const double a = m_first.GetExtra(e), b = m_second.GetExtra(e);
        if (IsMissingValue(a) && IsMissingValue(b))
            continue;
        const int kind = CKwMaterial::ExtraUnitKind(e);
        m_rows.push_back({Row::Extra, e, KwMaterialKeys::FormatValue(a, kind, m_units),
                          KwMaterialKeys::FormatValue(b, kind, m_units), !sameValue(a, b)});
    }
    m_shown.clear();
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        if (!m_differencesOnly || m_rows[i].differs)
            m_shown.push_back(int(i));
}

void KwMaterialCompareModel::SetDifferencesOnly(bool on)
{
    if (on == m_differencesOnly)
        return;
    beginResetModel();
    m_differencesOnly = on;
    rebuild();
    endResetModel();
}

void KwMaterialCompareModel::Relabel()
{
    beginResetModel();
    rebuild();
    endResetModel();
}

int KwMaterialCompareModel::DifferenceCount() const
{
    int n = 0;
    for (const Row& r : m_rows)
        n += r.differs ? 1 : 0;
    return n;
}

int KwMaterialCompareModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_shown.size());
}

int KwMaterialCompareModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant KwMaterialCompareModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const Row& r = RowAt(index.row());
    const bool number = r.kind == Row::Key || r.kind == Row::Extra;
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        switch (index.column()) {
        case ColProperty:
            switch (r.kind) {
            case Row::Type: return KwPropText("General", "LabelType", "Type");
            case Row::Category: return KwPropText(kSection, "ColumnCategory", "Category");
            case Row::Key:
                return QStringLiteral("%1 (%2)").arg(KwMaterialKeys::Label(r.index),
                                                     KwMaterialKeys::Key(r.index));
            case Row::Extra: return CKwMaterial::ExtraKey(r.index);
            }
            return {};
        case ColFirst: return r.first;
        case ColSecond: return r.second;
        case ColUnit:
            if (r.kind == Row::Key)
                return KwMaterialKeys::UnitLabel(r.index, m_units);
            if (r.kind == Row::Extra && m_units)
                return m_units->GetUnits(CKwMaterial::ExtraUnitKind(r.index));
            return {};
        }
        return {};
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(number && (index.column() == ColFirst ||
                                              index.column() == ColSecond)
                                       ? KwStyle::NumberAlignment
                                       : KwStyle::TextAlignment);
    case Qt::FontRole:
        if (r.differs) {
            QFont f;
            f.setBold(true);
            return f;
        }
        return {};
    case Qt::BackgroundRole:
        return r.differs ? QVariant(kDiffers) : QVariant();
    case Qt::ForegroundRole:
        return r.differs ? QVariant(QColor(Qt::black)) : QVariant();
    case Qt::AccessibleDescriptionRole:
        return r.differs ? KwPropText(kSection, "TooltipDiffers", "The values differ") : QString();
    default: return {};
    }
}

QVariant KwMaterialCompareModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(section == ColFirst || section == ColSecond
                                       ? KwStyle::NumberAlignment
                                       : KwStyle::TextAlignment);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    switch (section) {
    case ColProperty: return KwPropText(kSection, "ColumnProperty", "Property");
    case ColFirst: return m_first.GetName();
    case ColSecond: return m_second.GetName();
    case ColUnit: return KwPropText(kSection, "ColumnUnit", "Unit");
    default: return {};
    }
}

CKwMaterialCompareDlg::CKwMaterialCompareDlg(const CKwMaterial& first, const CKwMaterial& second,
                                             KW_UOM* units, QWidget* parent)
    : CKwMFCDialog(kTemplateId, nullptr, parent),
      m_model(new KwMaterialCompareModel(first, second, units, this)),
      m_firstName(first.GetName()), m_secondName(second.GetName())
{
    auto* outer = new QVBoxLayout(this);
    auto* summary = new QLabel(this);
    KwSetControlId(summary, IDC_SUMMARY);
    summary->setProperty("kwData", true);
    outer->addWidget(summary);
    m_table = new QTableView(this);
    KwSetControlId(m_table, IDC_TABLE);
    m_table->setModel(m_model);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->verticalHeader()->hide();
    m_table->setWordWrap(false);
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_table->setMinimumSize(KwStyle::CharsWidth(fontMetrics(), 110), fontMetrics().height() * 24);
    outer->addWidget(m_table, 1);
    auto* buttons = new QHBoxLayout;
    m_differencesOnly = new QCheckBox(this);
    KwSetControlId(m_differencesOnly, IDC_DIFFERENCES_ONLY);
    buttons->addWidget(m_differencesOnly);
    buttons->addStretch(1);
    auto* close = new QPushButton(this);
    KwSetControlId(close, 2);
    close->setDefault(true);
    buttons->addWidget(close);
    outer->addLayout(buttons);
    connect(close, &QPushButton::clicked, this, [this] { OnCancel(); });
    connect(m_differencesOnly, &QCheckBox::toggled, m_model,
            &KwMaterialCompareModel::SetDifferencesOnly);
}

CKwMaterialCompareDlg::~CKwMaterialCompareDlg() = default;

bool CKwMaterialCompareDlg::OnInitDialog()
{
    SetTextToCurrentLang();
    SizeAndPlace();
    return true;
}

void CKwMaterialCompareDlg::SetTextToCurrentLang()
{
    setWindowTitle(KwPropText(kSection, "TitleCompare", "Compare Materials"));
    KwSetControlText(this, IDC_DIFFERENCES_ONLY,
                     KwPropText(kSection, "CheckDifferencesOnly", "Show only differences"));
    KwSetControlText(this, 2, KwPropText("General", "ButtonClose", "Close"));
    m_model->Relabel();
    KwSetControlText(this, IDC_SUMMARY,
                     KwPropText(kSection, "LabelDifferences", "%1 values differ (marked)")
                         .arg(m_model->DifferenceCount()));
    // The property and unit columns as wide as their texts; the two materials share the rest.
    QHeaderView* head = m_table->horizontalHeader();
    head->setSectionResizeMode(KwMaterialCompareModel::ColProperty, QHeaderView::ResizeToContents);
    head->setSectionResizeMode(KwMaterialCompareModel::ColFirst, QHeaderView::Stretch);
    head->setSectionResizeMode(KwMaterialCompareModel::ColSecond, QHeaderView::Stretch);
    head->setSectionResizeMode(KwMaterialCompareModel::ColUnit, QHeaderView::ResizeToContents);
}
