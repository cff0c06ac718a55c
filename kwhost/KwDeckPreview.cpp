#include "KwDeckPreview.h"

#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwSubCase.h"
#include "KW_UOM.h"
#include "KwHostText.h"
#include "KwStyle.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QVBoxLayout>

KwDeckRowModel::KwDeckRowModel(std::vector<KwDeckRow> rows, bool perSubcase, const KW_UOM* units,
                               const QString& deckUnits, QObject* parent)
    : QAbstractTableModel(parent), m_rows(std::move(rows)), m_perSubcase(perSubcase),
      m_units(units), m_deckUnits(deckUnits)
{
}

int KwDeckRowModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int KwDeckRowModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString KwDeckRowModel::ModelText(int row) const
{
    const KwDeckRow& r = m_rows[std::size_t(row)];
    if (!r.hasValue)
        return {};
    const KW_UOM si;
    const KW_UOM& u = m_units ? *m_units : si;
    const QString unit = u.GetUnits(r.unitKind);
    const QString value = KwStyle::EditableNumber(u.GetDisplayValue(r.value, r.unitKind));
    return unit.isEmpty() ? value : value + QLatin1Char(' ') + unit;
}

QVariant KwDeckRowModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= int(m_rows.size()))
        return {};
    const KwDeckRow& r = m_rows[std::size_t(index.row())];
    const bool number = index.column() == ModelValue || index.column() == DeckValue
                        || index.column() == Subcase;
    if (role == Qt::TextAlignmentRole) {
        // Counts are numbers too; set names and lists are text.
        bool count = false;
        QString::fromStdString(r.text).toDouble(&count);
        const bool right = index.column() == Subcase
                           || (number && (r.hasValue || (index.column() == DeckValue && count)));
        return QVariant::fromValue(right ? KwStyle::NumberAlignment : KwStyle::TextAlignment);
    }
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case Subcase:
        return m_perSubcase && r.subcaseId ? QVariant(r.subcaseId) : QVariant();
    case Entity:
        return r.entity;
    case Keyword:
        return QString::fromStdString(r.keyword);
    case Quantity:
        return *r.quantityKey ? KwHostText(r.quantityKey, r.quantity)
                              : QString::fromLatin1(r.quantity);
    case ModelValue:
        return ModelText(index.row());
    case DeckValue: {
        const QString text = QString::fromStdString(r.text);
        const QString unit = r.hasValue ? KW_UOM().GetUnits(r.unitKind) : QString();
        return unit.isEmpty() ? text : text + QLatin1Char(' ') + unit;
    }
    default:
        return {};
    }
}

QVariant KwDeckRowModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Subcase:
        return KwHostText("PreviewSubcase", "Subcase");
    case Entity:
        return KwHostText("PreviewEntity", "Entity");
    case Keyword:
        return KwHostText("PreviewKeyword", "Keyword");
    case Quantity:
        return KwHostText("PreviewQuantity", "Quantity");
    case ModelValue:
        return KwHostText("PreviewModelValue", "In the model");
    case DeckValue:
        return KwHostText("PreviewDeckValue", "In the solver input");
    default:
        return {};
    }
}

QString KwDeckPreview::FamilyTitle(int family)
{
    static const char* const titles[KwDeckRow::FamilyCount][2] = {
        {"PreviewMaterials", "Materials"},     {"PreviewProperties", "Properties"},
        {"PreviewConstraints", "Constraints"}, {"PreviewLoads", "Loads"},
        {"PreviewContacts", "Contacts"},       {"PreviewMasses", "Masses"},
        {"PreviewConnectors", "Connectors"}};
    if (family < 0 || family >= KwDeckRow::FamilyCount)
        return {};
    return KwHostText(titles[family][0], titles[family][1]);
}

KwDeckPreview::KwDeckPreview(const CKwFEModel& model, const CKwAnalysis& analysis,
                             const KW_UOM* units, QWidget* parent)
    : QDialog(parent), m_deck(KwWriteSolverDeck(model, analysis))
{
    setObjectName(QStringLiteral("SolverInputPreview"));
    setWindowTitle(KwHostText("PreviewTitle", "Solver Input Preview"));
    auto* layout = new QVBoxLayout(this);
    auto* head = new QGridLayout;
    const auto field = [&](int row, const QString& label, const QString& value) {
        head->addWidget(new QLabel(KwStyle::FieldLabel(label)), row, 0);
        auto* v = new QLineEdit(value);
        v->setReadOnly(true);
        head->addWidget(v, row, 1);
    };
    field(0, KwHostText("PreviewAnalysis", "Analysis"), analysis.GetName());
    field(1, KwHostText("PreviewUnits", "Units of the solver input"), m_deck.unitSystem);
    head->setColumnStretch(1, 1);
    KwStyle::ApplyFormGrid(head);
    layout->addLayout(head);
    if (!m_deck.ok()) {
        auto* why = new QLabel(KwHostText("PreviewRefused", "The solver cannot run this analysis: %1")
                                   .arg(m_deck.refusal));
        why->setObjectName(QStringLiteral("PreviewRefusal"));
        why->setWordWrap(true);
        layout->addWidget(why);
    }
    m_tabs = new QTabWidget(this);
    for (int f = 0; f < KwDeckRow::FamilyCount; ++f) {
        std::vector<KwDeckRow> rows;
        for (const KwDeckRow& r : m_deck.rows)
            if (r.family == f)
                rows.push_back(r);
        const bool perSubcase = f == KwDeckRow::Constraint || f == KwDeckRow::Load;
        auto* m = new KwDeckRowModel(std::move(rows), perSubcase, units, m_deck.unitSystem, this);
        m_models.push_back(m);
        auto* view = new QTableView;
        view->setModel(m);
        view->verticalHeader()->hide();
        view->setColumnHidden(KwDeckRowModel::Subcase, !perSubcase);
        view->setSelectionBehavior(QAbstractItemView::SelectRows);
        view->horizontalHeader()->setStretchLastSection(true);
        view->resizeColumnsToContents();
        KwStyle::FitHeaders(view);
        m_tabs->addTab(view, FamilyTitle(f));
    }
    auto* notes = new QListWidget;
    notes->addItems(m_deck.notes);
    m_tabs->addTab(notes, KwHostText("PreviewLeftOut", "Left out"));
    layout->addWidget(m_tabs, 1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->button(QDialogButtonBox::Close)->setText(KwHostText("ButtonClose", "Close"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    KwStyle::ApplyHouseLayout(this);
    resize(760, 420);
}
