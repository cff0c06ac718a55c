#include "KwMaterialValueTable.h"

#include "CKwMaterial.h"
#include "KwTextCellDelegate.h"

#include <QFont>
#include <QGuiApplication>
#include <QHeaderView>
#include <QPalette>
#include <QTableView>

namespace KwMaterialRows {

namespace K = KwMaterialKeys;

constexpr KwTextRow kHeadings[HeadingCount] = {
    {0, "Materials", "GroupStiffness", "Stiffness"},
    {0, "Materials", "GroupAllowables", "Allowables"},
    {0, "Materials", "GroupMatL8", "MATL8"},
    {0, "Materials", "GroupMatL12", "MATL12"},
    {0, "Materials", "LabelThermalExpansionCoef", "Thermal Expansion"},
    {0, "Materials", "GroupThermal", "Thermal"},
};

int headingOf(int key, int type)
{
    switch (key) {
    case K::SIGXT: case K::SIGXC: case K::SIGYLD: case K::SIGXY: case K::YLDPNT: case K::COHS:
    case K::FANG: case K::XT: case K::YT: case K::ZT: case K::XC: case K::YC: case K::ZC:
    case K::S: case K::S12: case K::S23: case K::S13: case K::F12: case K::F23: case K::F13:
        return type == CKwMaterial::Orthotropic2D   ? HeadMatL8
               : type == CKwMaterial::Orthotropic3D ? HeadMatL12
                                                    : HeadAllowables;
    case K::ALPX: case K::ALP1: case K::ALP2: case K::ALP3: case K::A1: case K::A2: case K::A3:
    case K::A4: case K::A5: case K::A6:
        return HeadExpansion;
    case K::KX: case K::C: case K::REFT: case K::K11: case K::K22: case K::K33: case K::K12:
    case K::K13: case K::K23:
        return HeadThermal;
    default:
        return HeadStiffness;
    }
}

// The rows of a type: its keys grouped under their headings, in heading order, the keys of a
// group in the type's order. A heading row is stored as -1 - heading.
std::vector<int> groupedRows(int type)
{
    const std::vector<int> keys = CKwMaterial::KeysForType(type);
    std::vector<int> rows;
    rows.reserve(keys.size() + HeadingCount);
    for (int h = 0; h < HeadingCount; ++h) {
        bool headed = false;
        for (int key : keys) {
            if (headingOf(key, type) != h)
                continue;
            if (!headed)
                rows.push_back(-1 - h);
            headed = true;
            rows.push_back(key);
        }
    }
    return rows;
}

} // namespace KwMaterialRows

namespace K = KwMaterialKeys;
using namespace KwMaterialRows;

QTableView* KwMakeMaterialValueView(QWidget* parent, KwMaterialValueModel* model)
{
    auto* view = new QTableView(parent);
    view->setModel(model);
    view->setItemDelegate(new KwTextCellDelegate(view));
    view->setObjectName(QStringLiteral("valueTable"));
    view->horizontalHeader()->hide();
    view->verticalHeader()->hide();
    view->setShowGrid(false);
    {
        QPalette pal = view->palette();
        pal.setColor(QPalette::Base, pal.color(QPalette::Window));
        view->setPalette(pal);
    }
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->setEditTriggers(QAbstractItemView::AllEditTriggers);
    view->setWordWrap(false);
    {
        QHeaderView* h = view->horizontalHeader();
        h->setSectionResizeMode(KwMaterialValueModel::Symbol, QHeaderView::Fixed);
        h->setSectionResizeMode(KwMaterialValueModel::Label, QHeaderView::Stretch);
        h->setSectionResizeMode(KwMaterialValueModel::Value, QHeaderView::Fixed);
        h->setSectionResizeMode(KwMaterialValueModel::Unit, QHeaderView::Fixed);
        const QFontMetrics fm(view->font());
        h->resizeSection(KwMaterialValueModel::Symbol, fm.horizontalAdvance(QStringLiteral("SIGYLDW")));
        h->resizeSection(KwMaterialValueModel::Value, fm.horizontalAdvance(QStringLiteral("0")) * 16);
        h->resizeSection(KwMaterialValueModel::Unit, fm.horizontalAdvance(QStringLiteral("mW/(mm C)W")));
        view->verticalHeader()->setDefaultSectionSize(fm.height() + 10);
        // Ten rows in sight: a heading and the values of a group or two without scrolling.
        view->setMinimumHeight(10 * (fm.height() + 10) + 2 * view->frameWidth());
    }
    view->setToolTip(QString());
    return view;
}

void KwShowMaterialRows(QTableView* view, KwMaterialValueModel* model, int type)
{
    if (!model->show(KwMaterialRows::groupedRows(type)))
        return;
    view->clearSpans();
    for (int r = 0; r < model->rowCount(); ++r)
        if (model->headingAt(r) >= 0)
            view->setSpan(r, 0, 1, KwMaterialValueModel::ColumnCount);
}

QVariant KwMaterialValueModel::data(const QModelIndex& index, int role) const
{
    if (const int h = headingAt(index.row()); h >= 0) {
        if (role == Qt::DisplayRole && index.column() == Symbol)
            return heading[h];
        if (role == Qt::FontRole) {
            QFont f;
            f.setBold(true);
            return f;
        }
        // Headings take no focus or selection, but read as text, not as a disabled cell.
        if (role == Qt::ForegroundRole)
            return QGuiApplication::palette().brush(QPalette::Active, QPalette::WindowText);
        return {};
    }
    const int key = keyAt(index.row());
    if (key < 0)
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole) {
        switch (index.column()) {
        case Symbol: return K::Key(key);
        case Label: return label[key];
        case Value: return value[key];
        case Unit: return unit[key];
        default: return {};
        }
    }
    if (role == Qt::ToolTipRole && index.column() == Value && !tip[key].isEmpty())
        return tip[key];
    // The values stand out as the column to type in.
    if (role == Qt::BackgroundRole && index.column() == Value)
        return QGuiApplication::palette().brush(QPalette::Base);
    return {};
}

void KwMaterialValueModel::relabel()
{
    for (int i = 0; i < K::Count; ++i)
        label[i] = KwLabel(K::Label(i));
    // The hyperelastic constants that share a label say more in their tool tips.
    const QString order = KwPropText("Materials", "ToolTipNAND",
                                     "Strain energy polynomial order");
    tip[K::NA] = QStringLiteral("%1: %2").arg(
        order, KwPropText("Materials", "ToolTipNA", "Distortional"));
    tip[K::ND] = QStringLiteral("%1: %2").arg(
        order, KwPropText("Materials", "ToolTipND", "Volumetric"));
    const QString mu = KwPropText("Materials", "ToolTipMU",
                                  "Shear moduli related to distortional deformation");
    const QString alpha = KwPropText("Materials", "ToolTipALPHA",
                                     "Exponent related to distortional deformation");
    for (int i : {int(K::MU1), int(K::MU2), int(K::MU3)})
        tip[i] = mu;
    for (int i : {int(K::ALPHA1), int(K::ALPHA2), int(K::ALPHA3)})
        tip[i] = alpha;
    for (int h = 0; h < KwMaterialRows::HeadingCount; ++h)
        heading[h] = KwRowText(KwMaterialRows::kHeadings[h]);
    if (!m_shown.empty())
        emit dataChanged(index(0, Symbol), index(rowCount() - 1, Label));
}

