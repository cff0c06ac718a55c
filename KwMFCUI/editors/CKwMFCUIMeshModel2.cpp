#include "CKwMFCUIMeshModel2.h"

#include "KW_UOM.h"
#include "KwControls.h"
#include "KwMeshBodyTableModel.h"
#include "KwStyle.h"
#include "ui_CKwMFCUIMeshModel2.h"

#include <QComboBox>
#include <QHeaderView>
#include <QPointer>
#include <QStyledItemDelegate>

namespace {

using T = KwTextTarget;
using U = CKwUIMeshModel;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

constexpr KwControlCode kControlCodes[] = {
    {U::CodeLength, CKwMFCUIMeshModel2::LengthEdit, kEdit},
};

constexpr KwValueBinding kBindings[] = {
    {U::FieldSizeLevel, CKwMFCUIMeshModel2::LevelSlider, KwBind::Slider},
    {U::FieldSizeMode, 7203, KwBind::RadioGroup, 2},
    {U::FieldOrder, 7211, KwBind::RadioGroup, 2},
    {U::FieldContinuous, 7220, KwBind::Check},
};

constexpr KwTextRow kTexts[] = {
    {7202, "MeshSettings", "GroupElementSize", "Element Size"},
    {7203, "MeshSettings", "RadioFineToCoarse", "Fine to coarse"},
    {7204, "MeshSettings", "RadioLength", "Length"},
    {7206, "MeshSettings", "LabelFine", "Fine"},
    {7207, "MeshSettings", "LabelCoarse", "Coarse"},
    {CKwMFCUIMeshModel2::LevelSlider, "MeshSettings", "TooltipLevel",
     "Element size from the finest (left) to the coarsest (right)", T::ToolTip},
    {7210, "MeshSettings", "GroupElementOrder", "Element Order"},
    {7211, "MeshSettings", "RadioLinear", "Linear"},
    {7212, "MeshSettings", "RadioParabolic", "Parabolic"},
    {7212, "MeshSettings", "TooltipParabolic", "Elements with mid-side nodes", T::ToolTip},
    {7215, "MeshSettings", "GroupBodies", "Bodies"},
    {7220, "MeshSettings", "CheckContinuous", "Continuous Meshing"},
    {7220, "MeshSettings", "TooltipContinuous",
     "Touching bodies share the nodes of their common faces", T::ToolTip},
    {CKwMFCUIMeshModel2::RunButton, "MeshSettings", "ButtonRun", "Run"},
    {CKwMFCUIMeshModel2::RunButton, "MeshSettings", "TooltipRun",
     "Store these settings and mesh the model again", T::ToolTip},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

// The "Mesh As" cells choose from the kinds by a combo box.
class MeshAsDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override
    {
        if (index.column() != KwMeshBodyTableModel::ColumnMeshAs)
            return QStyledItemDelegate::createEditor(parent, option, index);
        auto* combo = new QComboBox(parent);
        combo->addItems(CKwUIMeshModel::BodyMeshNames());
        return combo;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override
    {
        if (auto* combo = qobject_cast<QComboBox*>(editor))
            combo->setCurrentIndex(index.data(Qt::EditRole).toInt() - CKwUIMeshModel::FromGeometry);
        else
            QStyledItemDelegate::setEditorData(editor, index);
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override
    {
        if (auto* combo = qobject_cast<QComboBox*>(editor))
            model->setData(index, combo->currentIndex() + CKwUIMeshModel::FromGeometry);
        else
            QStyledItemDelegate::setModelData(editor, model, index);
    }
};

} // namespace

CKwMFCUIMeshModel2::CKwMFCUIMeshModel2(CFMView* view, CKwMeshModel* mesh, QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent), m_ui(std::make_unique<Ui::CKwMFCUIMeshModel2>())
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    m_ui->length->setMinimumWidth(KwStyle::CharsWidth(fontMetrics(), KwStyle::NumberFieldChars));
    m_ui->level->setMinimumWidth(KwStyle::CharsWidth(fontMetrics(), 24));
    m_bodies = new KwMeshBodyTableModel(this, this);
    m_ui->bodies->setModel(m_bodies);
    m_ui->bodies->setItemDelegate(new MeshAsDelegate(m_ui->bodies));
    m_ui->bodies->setEditTriggers(QAbstractItemView::AllEditTriggers);
    m_ui->bodies->setSelectionMode(QAbstractItemView::SingleSelection);
    m_ui->bodies->verticalHeader()->hide();
    m_ui->bodies->horizontalHeader()->setStretchLastSection(true);
    for (QAbstractButton* b : {static_cast<QAbstractButton*>(m_ui->byLevel),
                               static_cast<QAbstractButton*>(m_ui->byLength)})
        connect(b, &QAbstractButton::toggled, this, [this] { syncSizeFields(); });
    connect(m_ui->run, &QAbstractButton::clicked, this, &CKwMFCUIMeshModel2::OnRun);
    CKwUIMeshModel::OnCreate(view, mesh, nullptr);
}

CKwMFCUIMeshModel2::~CKwMFCUIMeshModel2() = default;

QTableView* CKwMFCUIMeshModel2::GetBodyTable() const { return m_ui->bodies; }

void CKwMFCUIMeshModel2::OnObjectDataLoaded()
{
    CKwMFCUIBase::OnObjectDataLoaded();
    m_bodies->Reload();
    syncSizeFields();
}

void CKwMFCUIMeshModel2::SetTextToCurrentLang()
{
    CKwMFCUIBase::SetTextToCurrentLang();
    const KW_UOM* units = GetUnitSystem();
    m_ui->lengthUnit->setText(units ? units->GetUnits(KwUnitKind::Length) : QStringLiteral("m"));
    if (m_bodies)
        m_bodies->Reload();
    KwStyle::FitHeaders(m_ui->bodies);
}

// Only the way the size is given takes input: the slider or the length.
void CKwMFCUIMeshModel2::syncSizeFields()
{
    const bool byLength = m_ui->byLength->isChecked();
    m_ui->level->setEnabled(!byLength);
    m_ui->fine->setEnabled(!byLength);
    m_ui->coarse->setEnabled(!byLength);
    m_ui->length->setEnabled(byLength);
}

void CKwMFCUIMeshModel2::OnRun()
{
    if (RefuseWhileSolving())
        return;
    // The host remeshes only without an editor open on the model: the request follows the
    // close, and only a close that stored the settings.
    const QPointer<CFMView> view = GetFMView();
    OnOK();
    if (GetStayOpen() == 0 && view)
        view->RequestRemesh();
}
