#include "CKwTableDialog.h"

#include "CKwCtrlListHeader.h"

#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwFunction.h"
#include "CKwTable.h"
#include "KW_UOM.h"
#include "KwChart.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMessageBox.h"
#include "KwMethodLogger.h"
#include "KwNumbers.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <memory>

namespace {

constexpr int kListWidth = 380;
constexpr int kListHeight = 320;

QPushButton* button(QWidget* parent, int id)
{
    auto* b = new QPushButton(parent);
    b->setAutoDefault(false);
    KwSetControlId(b, id);
    return b;
}

QLabel* label(QWidget* parent, int id)
{
    auto* l = new QLabel(parent);
    KwSetControlId(l, id);
    return l;
}

const char* typeKey(int type)
{
    switch (type) {
    case CKwTable::TimeCurve:
        return "TypeTimeCurve";
    case CKwTable::TemperatureTable:
        return "TypeTemperatureTable";
    case CKwTable::FrequencyTable:
        return "TypeFrequencyTable";
    case CKwTable::StressStrainCurve:
        return "TypeStressStrainCurve";
    case CKwTable::SNCurve:
        return "TypeSNCurve";
    default:
        return "TypeGeneral";
    }
}

} // namespace

CKwTableDialog::CKwTableDialog(QWidget* parent) : CKwMFCDialog(kTemplateId, nullptr, parent)
{
    auto* top = new QGridLayout;
    top->addWidget(label(this, IDC_LABEL_NAME), 0, 0);
    m_name = new QLineEdit(this);
    KwSetControlId(m_name, IDC_NAME);
    m_name->setProperty("kwData", true);
    top->addWidget(m_name, 0, 1, 1, 3);
    top->addWidget(label(this, IDC_LABEL_ID), 1, 0);
    m_id = label(this, IDC_ID);
    m_id->setProperty("kwData", true);
    top->addWidget(m_id, 1, 1);
    top->addWidget(label(this, IDC_LABEL_TYPE), 1, 2);
    m_type = label(this, IDC_TYPE);
    m_type->setProperty("kwData", true);
    top->addWidget(m_type, 1, 3);
    top->setColumnMinimumWidth(1, 80);
    top->setColumnStretch(3, 1);

    KwSetControlId(&m_List, IDC_LIST);
    m_List.setParent(this);
    m_List.setFixedWidth(kListWidth);
    m_List.setFixedHeight(kListHeight);
    auto* side = new QVBoxLayout;
    for (int id : {IDC_SORT, IDC_ADD_ORIGIN, IDC_DELETE_ORIGIN, IDC_SHOW_XY_PLOT})
        side->addWidget(button(this, id));
    side->addStretch(1);
    auto* middle = new QHBoxLayout;
    middle->addWidget(&m_List, 0, Qt::AlignTop);
    middle->addLayout(side);

    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(button(this, IDC_BUTTON_OK));
    bottom->addWidget(button(this, IDC_BUTTON_CANCEL));

    auto* lay = new QVBoxLayout(this);
    lay->addLayout(top);
    lay->addLayout(middle, 1);
    lay->addLayout(bottom);

    connect(KwControl<QPushButton>(this, IDC_SORT), &QPushButton::clicked, this,
            [this] { OnSort(); });
    connect(KwControl<QPushButton>(this, IDC_ADD_ORIGIN), &QPushButton::clicked, this,
            [this] { OnAddOrigin(); });
    connect(KwControl<QPushButton>(this, IDC_DELETE_ORIGIN), &QPushButton::clicked, this,
            [this] { OnDeleteOrigin(); });
    connect(KwControl<QPushButton>(this, IDC_SHOW_XY_PLOT), &QPushButton::clicked, this,
            [this] { OnShowXYPlot(); });
    connect(KwControl<QPushButton>(this, IDC_BUTTON_OK), &QPushButton::clicked, this,
            [this] { OnOK(); });
    connect(KwControl<QPushButton>(this, IDC_BUTTON_CANCEL), &QPushButton::clicked, this,
            [this] { OnCancel(); });
    connect(&m_List, &CKwNonLinearEditList::contextMenuWanted, this,
            &CKwTableDialog::showContextMenu);
}

CKwTableDialog::~CKwTableDialog() = default;

int CKwTableDialog::RunModal(QWidget* parent, CFMView* view, CKwTable* table, KW_UOM* units)
{
    std::unique_ptr<CKwTableDialog> dlg(NewFor(table, parent));
    dlg->SetTable(view, table, units);
    return dlg->DoModal();
}

bool CKwTableDialog::RunOnAddedTable(QWidget* parent, CFMView* view, CKwFEModel* model,
                                     int tableId, KW_UOM* units)
{
    if (!model || tableId <= 0)
        return false;
    for (CKwTable* t : model->m_tables)
        if (t->GetID() == tableId)
            return RunModal(parent, view, t, units) == KwMB::IDOK;
    return false;
}

CKwTableDialog* CKwTableDialog::NewFor(CKwTable* table, QWidget* parent)
{
    switch (table ? table->GetTableType() : CKwTable::General) {
    case CKwTable::TemperatureTable:
        return new CTemperatureDependence(parent);
    case CKwTable::TimeCurve:
        return new CTimeDependence(parent);
    case CKwTable::FrequencyTable:
        return new CFrequencyDependence(parent);
    default:
        return new CKwTableDialog(parent);
    }
}

void CKwTableDialog::SetTable(CFMView* view, CKwTable* table, KW_UOM* units,
                              CKwMaterial* material)
{
    CKwMFCDialog::SetFMView(view);
    CKwNonlinearDialogBase::SetFMView(view);
    SetsubcaseUnits(units);
    m_pTable = table;
    m_pMaterial = material;
    // The rows are the edit copy: the table's values go straight into them when the dialog
    // opens, and OK builds new functions from the rows.
    SetFunctions(UnitsOf(table ? table->GetXFunction() : nullptr, -1),
                 UnitsOf(table ? table->GetYFunction() : nullptr, -1));
}

bool CKwTableDialog::Create(CFMView* view, CKwTable* table, KW_UOM* units, CKwMaterial* material)
{
    SetTable(view, table, units, material);
    return CKwMFCDialog::Create();
}

bool CKwTableDialog::OnInitDialog()
{
    KW_LOG_METHOD("CKwTableDialog::OnInitDialog");
    if (m_pTable) {
        m_name->setText(m_pTable->GetName());
        m_id->setText(QString::number(m_pTable->GetID()));
    }
    SetMaxSizeList();
    BuildList();
    m_List.Header()->SizeColumns(kListWidth - 2 * m_List.frameWidth() -
                                 m_List.verticalScrollBar()->sizeHint().width());
    if (m_pTable)
        LoadFunctions(m_pTable->GetXFunction(), m_pTable->GetYFunction());
    ResizeList();
    return CKwMFCDialog::OnInitDialog();
}

CKwTableDialog::Texts CKwTableDialog::DialogTexts() const
{
    return {"TableDataDlg", "Title", "Table Data", "ColumnX", "X", "ColumnY", "Y"};
}

void CKwTableDialog::SetTextToCurrentLang()
{
    const Texts t = DialogTexts();
    setWindowTitle(KwTitleWithName(KwPropText(t.section, t.titleKey, t.title),
                                   m_pTable ? m_pTable->GetName() : QString()));
    KwSetControlText(this, IDC_LABEL_NAME, KwLabel(KwPropText("General", "LabelName", "Name")));
    KwSetControlText(this, IDC_LABEL_ID, KwLabel(KwPropText("General", "LabelID", "ID")));
    KwSetControlText(this, IDC_LABEL_TYPE, KwLabel(KwPropText("General", "LabelType", "Type")));
    const int type = m_pTable ? m_pTable->GetTableType() : CKwTable::General;
    m_type->setText(KwPropText("TableDataDlg", typeKey(type),
                               CKwTable::GetTableTypeName(CKwTable::TableType(type))
                                   .toUtf8()
                                   .constData()));
    KwSetControlText(this, IDC_SORT, KwPropText("TableDataDlg", "ButtonSort", "Sort"));
    KwSetControlText(this, IDC_ADD_ORIGIN,
                     KwPropText("TableDataDlg", "ButtonAddOrigin", "Add Origin"));
    KwSetControlText(this, IDC_DELETE_ORIGIN,
                     KwPropText("TableDataDlg", "ButtonDeleteOrigin", "Remove Origin"));
    KwSetControlText(this, IDC_SHOW_XY_PLOT,
                     KwPropText("General", "ButtonShowXYPlot", "Show XY Plot"));
    KwSetControlText(this, IDC_BUTTON_OK, KwPropText("General", "ButtonOk", "OK"));
    KwSetControlText(this, IDC_BUTTON_CANCEL, KwPropText("General", "ButtonCancel", "Cancel"));
    SetHeaderLabel(0, m_pXFunction ? m_pXFunction->GetUnitType() : -1,
                   KwPropText(t.section, t.columnXKey, t.columnX));
    SetHeaderLabel(1, m_pYFunction ? m_pYFunction->GetUnitType() : -1,
                   KwPropText(t.section, t.columnYKey, t.columnY));
}

bool CKwTableDialog::IsValidDataInput(const QString& text, int, int col, int showMessage)
{
    const int unit = col == 0 ? (m_pXFunction ? m_pXFunction->GetUnitType() : -1)
                              : (m_pYFunction ? m_pYFunction->GetUnitType() : -1);
    switch (CheckCellInput(text, unit, m_bNonNegativeX && col == 0, showMessage)) {
    case CellInput::Accepted:
        return true;
    case CellInput::Negative:
        if (showMessage)
            ShowTableMessage(KwErrText(DialogTexts().section, m_negativeXKey, m_negativeX));
        return false;
    default:
        return false;
    }
}

bool CKwTableDialog::WriteBack()
{
    // Rows the user never typed into (the edit row clicked and left) are no points.
    DropBlankRows();
    if (!UpdateListData(0, &m_pXFunction) || !UpdateListData(1, &m_pYFunction))
        return false;
    if (m_bNonNegativeX) {
        // Whatever way a negative X got into a cell, it never reaches the table.
        for (int r = 0; r < m_nRowCount; ++r)
            if (const double x = m_pXFunction->GetValue(r); !IsMissingValue(x) && x < 0) {
                m_List.SelectRow(r);
                ShowTableMessage(KwErrText(DialogTexts().section, m_negativeXKey, m_negativeX));
                return false;
            }
    }
    if (m_pTable) {
        m_pTable->SetFunctions(m_pXFunction->Clone(), m_pYFunction->Clone());
        const QString name = m_name->text().trimmed();
        if (!name.isEmpty())
            m_pTable->SetName(name);
    }
    return true;
}

void CKwTableDialog::OnOK()
{
    KW_LOG_METHOD("CKwTableDialog::OnOK");
    if (RefuseWhileSolving())
        return;
    if (!WriteBack())
        return;
    CKwMFCDialog::OnOK();
}

QString CKwTableDialog::CurvePlotTitle() const
{
    const Texts t = DialogTexts();
    return KwTitleWithName(KwPropText(t.section, t.titleKey, t.title), m_name->text());
}

void CKwTableDialog::showContextMenu(const QPoint& globalPos)
{
    QMenu* menu = CreateEditMenu(this, "TableDataDlg");
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(globalPos);
}

CKwTableDialog::Texts CTemperatureDependence::DialogTexts() const
{
    return {"TemperatureDependenceDlg", "Title", "Temperature Dependence", "ColumnTemperature",
            "Temperature", "ColumnValue", "Value"};
}

CTimeDependence::CTimeDependence(QWidget* parent) : CKwTableDialog(parent)
{
    m_bNonNegativeX = true;
    m_negativeXKey = "NegativeTime";
    m_negativeX = "A time cannot be negative.";
}

CKwTableDialog::Texts CTimeDependence::DialogTexts() const
{
    return {"TimeDependenceDlg", "Title", "Time Dependence", "ColumnTime", "Time",
            "ColumnFactor", "Factor"};
}

CFrequencyDependence::CFrequencyDependence(QWidget* parent) : CKwTableDialog(parent)
{
    m_bNonNegativeX = true;
    m_negativeXKey = "NegativeFrequency";
    m_negativeX = "A frequency cannot be negative.";
}

CKwTableDialog::Texts CFrequencyDependence::DialogTexts() const
{
    return {"FrequencyDependenceDlg", "Title", "Frequency Dependence", "ColumnFrequency",
            "Frequency", "ColumnFactor", "Factor"};
}
