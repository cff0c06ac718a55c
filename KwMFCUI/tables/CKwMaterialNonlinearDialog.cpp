#include "CKwMaterialNonlinearDialog.h"
#include "KwStressStrain.h"

#include "CKwCtrlListHeader.h"

#include "CFMView.h"
#include "CKwFunction.h"
#include "CKwTable.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMethodLogger.h"
#include "KwNumbers.h"
#include "KwTableText.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {

constexpr const char* kSection = "NonlinearMaterialDlg";
constexpr int kListWidth = 340;
constexpr int kListHeight = 300;

QPushButton* button(QWidget* parent, int id)
{
    auto* b = new QPushButton(parent);
    b->setAutoDefault(false);
    KwSetControlId(b, id);
    return b;
}

} // namespace

CKwMaterialNonlinearDialog::CKwMaterialNonlinearDialog(CKwTable* curve, KW_UOM* units,
                                                       CFMView* view, const QString& materialName,
                                                       QWidget* parent)
    : CKwMFCDialog(kTemplateId, view, parent), m_pCurve(curve), m_materialName(materialName)
{
    CKwNonlinearDialogBase::SetFMView(view);
    SetsubcaseUnits(units);
    m_true = curve && curve->m_trueValues;
    // The rows are the edit copy (filled from the curve when the dialog opens).
    SetFunctions(UnitsOf(curve ? curve->GetXFunction() : nullptr, -1),
                 UnitsOf(curve ? curve->GetYFunction() : nullptr, KwUnitKind::Stress));

    KwSetControlId(&m_List, IDC_LIST);
    m_List.setParent(this);
    m_List.setFixedWidth(kListWidth);
    m_List.setFixedHeight(kListHeight);

    auto* entry = new QGridLayout;
    auto* ls = new QLabel(this);
    KwSetControlId(ls, IDC_LABEL_STRAIN);
    m_strain = new QLineEdit(this);
    KwSetControlId(m_strain, IDC_STRAIN);
    auto* lt = new QLabel(this);
    KwSetControlId(lt, IDC_LABEL_STRESS);
    m_stress = new QLineEdit(this);
    KwSetControlId(m_stress, IDC_STRESS);
    entry->addWidget(ls, 0, 0);
    entry->addWidget(m_strain, 0, 1);
    entry->addWidget(lt, 1, 0);
    entry->addWidget(m_stress, 1, 1);
    entry->addWidget(button(this, IDC_ADD_POINT), 2, 1);

    auto* side = new QVBoxLayout;
    side->addLayout(entry);
    side->addSpacing(8);
    for (int id : {IDC_SORT, IDC_ADD_ORIGIN, IDC_DELETE_ORIGIN, IDC_TRUE_VALUES, IDC_SHOW_XY_PLOT})
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
    lay->addLayout(middle, 1);
    lay->addLayout(bottom);

    auto click = [this](int id, auto fn) {
        connect(KwControl<QPushButton>(this, id), &QPushButton::clicked, this, fn);
    };
    click(IDC_ADD_POINT, [this] { OnAddPoint(); });
    click(IDC_SORT, [this] { OnSort(); });
    click(IDC_ADD_ORIGIN, [this] { OnAddOrigin(); });
    click(IDC_DELETE_ORIGIN, [this] { OnDeleteOrigin(); });
    click(IDC_SHOW_XY_PLOT, [this] { OnShowXYPlot(); });
    click(IDC_TRUE_VALUES, [this] { OnTrueValues(); });
    click(IDC_BUTTON_OK, [this] { OnOK(); });
    click(IDC_BUTTON_CANCEL, [this] { OnCancel(); });
    connect(&m_List, &CKwNonLinearEditList::contextMenuWanted, this, [this](const QPoint& at) {
        QMenu* menu = CreateEditMenu(this, kSection);
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->popup(at);
    });
}

CKwMaterialNonlinearDialog::~CKwMaterialNonlinearDialog() = default;

bool CKwMaterialNonlinearDialog::OnInitDialog()
{
    KW_LOG_METHOD("CKwMaterialNonlinearDialog::OnInitDialog");
    SetMaxSizeList();
    BuildList();
    m_List.Header()->SizeColumns(kListWidth - 2 * m_List.frameWidth() -
                                 m_List.verticalScrollBar()->sizeHint().width());
    if (m_pCurve)
        LoadFunctions(m_pCurve->GetXFunction(), m_pCurve->GetYFunction());
    ResizeList();
    if (auto* b = KwControl<QPushButton>(this, IDC_TRUE_VALUES))
        b->setEnabled(!m_true);
    return CKwMFCDialog::OnInitDialog();
}

void CKwMaterialNonlinearDialog::SetTextToCurrentLang()
{
    const QString title = KwPropText(kSection, "Title", "Nonlinear Material");
    setWindowTitle(m_materialName.isEmpty() ? title : KwTitleWithName(title, m_materialName));
    // The column heads are the base's: "Strain" and "Stress" with their units.
    LoadHeaderLabel(0, m_pXFunction->GetUnitType());
    LoadHeaderLabel(1, m_pYFunction->GetUnitType());
    auto* ls = KwControl<QLabel>(this, IDC_LABEL_STRAIN);
    auto* lt = KwControl<QLabel>(this, IDC_LABEL_STRESS);
    ls->setText(KwPropText(kSection, "LabelStrain", "Strain"));
    lt->setText(KwPropText(kSection, "LabelStress", "Stress"));
    LoadTextBoxLabels(ls, m_pXFunction->GetUnitType());
    LoadTextBoxLabels(lt, m_pYFunction->GetUnitType());
    KwSetControlText(this, IDC_ADD_POINT, KwPropText(kSection, "ButtonAddPoint", "Add Point"));
    KwSetControlText(this, IDC_SORT, KwPropText(kSection, "ButtonSort", "Sort"));
    KwSetControlText(this, IDC_ADD_ORIGIN, KwPropText(kSection, "ButtonAddOrigin", "Add Origin"));
    KwSetControlText(this, IDC_DELETE_ORIGIN,
                     KwPropText(kSection, "ButtonDeleteOrigin", "Remove Origin"));
    KwSetControlText(this, IDC_TRUE_VALUES,
                     KwPropText(kSection, "ButtonTrueValues", "Convert to True Values"));
    KwSetControlText(this, IDC_SHOW_XY_PLOT,
                     KwPropText("General", "ButtonShowXYPlot", "Show XY Plot"));
    KwSetControlText(this, IDC_BUTTON_OK, KwPropText("General", "ButtonOk", "OK"));
    KwSetControlText(this, IDC_BUTTON_CANCEL, KwPropText("General", "ButtonCancel", "Cancel"));
}

// The origin, when the curve has it, is the first row (strains are never negative, so it
// sorts first); only row 0 is looked at, which keeps the rules constant-time per cell.
bool CKwMaterialNonlinearDialog::isOriginRow(int row)
{
    if (row != 0 || m_nRowCount < 1)
        return false;
    const KwPointTableModel* m = m_List.Model();
    double x = 1, y = 1;
    const std::string_view tx = KwTableText::trimmed(m->cellView(0, 0));
    const std::string_view ty = KwTableText::trimmed(m->cellView(0, 1));
    if (tx.empty() || ty.empty())
        return false;
    if (!KwTableText::plainNumber(tx, &x))
        x = KwAtof(QString::fromUtf8(tx.data(), qsizetype(tx.size())));
    if (!KwTableText::plainNumber(ty, &y))
        y = KwAtof(QString::fromUtf8(ty.data(), qsizetype(ty.size())));
    return x > -1e-10 && x < 1e-10 && y > -1e-10 && y < 1e-10;
}

bool CKwMaterialNonlinearDialog::IsEditableItem(int row, int)
{
    return !isOriginRow(row);
}

bool CKwMaterialNonlinearDialog::IsDeleteableRow(int row)
{
    return !isOriginRow(row);
}

bool CKwMaterialNonlinearDialog::IsPasteableRow(int row)
{
    return !isOriginRow(row);
}

bool CKwMaterialNonlinearDialog::IsValidDataInput(const QString& text, int, int col,
                                                  int showMessage)
{
    const int unit = col == 0 ? m_pXFunction->GetUnitType() : m_pYFunction->GetUnitType();
    switch (CheckCellInput(text, unit, true, showMessage)) {
    case CellInput::Accepted:
        return true;
    case CellInput::Negative:
        if (showMessage)
            ShowTableMessage(col == 0 ? KwErrText(kSection, "NegativeStrain",
                                                  "A strain cannot be negative.")
                                      : KwErrText(kSection, "NegativeStress",
                                                  "A stress cannot be negative."));
        return false;
    default:
        return false;
    }
}

bool CKwMaterialNonlinearDialog::OnAddPoint()
{
    const QString sx = m_strain->text(), sy = m_stress->text();
    if (sx.trimmed().isEmpty() || sy.trimmed().isEmpty() ||
        !IsValidDataInput(sx, m_nRowCount, 0, 1) || !IsValidDataInput(sy, m_nRowCount, 1, 1))
        return false;
    const double x = TextBoxUpdateValue(m_strain, m_pXFunction->GetUnitType());
    const double y = TextBoxUpdateValue(m_stress, m_pYFunction->GetUnitType());
    if (IsMissingValue(x) || IsMissingValue(y))
        return false;
    Add(QString(), QString());
    LoadTableValues(m_nRowCount - 1, 0, m_pXFunction->GetUnitType(), x);
    LoadTableValues(m_nRowCount - 1, 1, m_pYFunction->GetUnitType(), y);
    m_strain->clear();
    m_stress->clear();
    m_List.SelectRow(m_nRowCount - 1);
    return true;
}

bool CKwMaterialNonlinearDialog::WriteBack()
{
    if (!takeRows())
        return false;
    if (m_modulus > 0) {
        const std::vector<double> x(m_pXFunction->Values().begin(), m_pXFunction->Values().end());
        const std::vector<double> y(m_pYFunction->Values().begin(), m_pYFunction->Values().end());
        const KwPlasticCurve c = KwPlasticCurveOf(x, y, m_modulus, !m_true);
        if (!c.ok()) {
            if (c.point >= 0)
                m_List.SelectRow(c.point);
            ShowTableMessage(
                c.problem == KwPlasticCurve::NotIncreasing
                    ? KwErrText(kSection, "PlasticNotIncreasing",
                                "The plastic strain does not increase at row %1: the solver "
                                "needs a curve that rises from zero plastic strain at yield.")
                          .arg(c.point + 1)
                    : KwErrText(kSection, "PlasticNoYield",
                                "The curve needs a yield point and a point beyond it, past the "
                                "elastic line."));
            return false;
        }
    }
    if (m_pCurve) {
        m_pCurve->SetFunctions(m_pXFunction->Clone(), m_pYFunction->Clone());
        m_pCurve->m_trueValues = m_true;
    }
    return true;
}

bool CKwMaterialNonlinearDialog::OnTrueValues()
{
    if (m_true) {
        ShowTableMessage(KwErrText(kSection, "AlreadyTrue", "The curve holds true values already."));
        return false;
    }
    if (!takeRows())
        return false;
    std::vector<double> x(m_pXFunction->Values().begin(), m_pXFunction->Values().end());
    std::vector<double> y(m_pYFunction->Values().begin(), m_pYFunction->Values().end());
    KwEngineeringToTrue(x, y);
    for (int r = 0; r < m_nRowCount && std::size_t(r) < x.size(); ++r) {
        LoadTableValues(r, 0, m_pXFunction->GetUnitType(), x[std::size_t(r)]);
        LoadTableValues(r, 1, m_pYFunction->GetUnitType(), y[std::size_t(r)]);
        m_pXFunction->SetValue(r, x[std::size_t(r)]);
        m_pYFunction->SetValue(r, y[std::size_t(r)]);
    }
    m_true = true;
    if (auto* b = KwControl<QPushButton>(this, IDC_TRUE_VALUES))
        b->setEnabled(false);
    return true;
}

bool CKwMaterialNonlinearDialog::takeRows()
{
    // Rows the user never typed into are no points; every other cell is checked before
    // anything moves, so a bad cell is named where it was typed.
    DropBlankRows();
    const KwPointTableModel* m = m_List.Model();
    for (int r = 0; r < m_nRowCount; ++r) {
        for (int c = 0; c < 2; ++c)
            if (!IsValidDataInput(m->cellText(r, c), r, c, 1)) {
                m_List.SelectRow(r);
                return false;
            }
        // A point needs both values: a blank one is no zero (the sort would merge the row
        // into the origin).
        double v = 0;
        const bool noStrain = ReadCell(m->cellView(r, 0), -1, &v) == CellRead::Empty;
        const bool noStress = ReadCell(m->cellView(r, 1), -1, &v) == CellRead::Empty;
        if (noStrain || noStress) {
            m_List.SelectRow(r);
            ShowTableMessage(
                (noStrain ? KwErrText(kSection, "MissingStrain", "Row %1 has no strain.")
                          : KwErrText(kSection, "MissingStress", "Row %1 has no stress."))
                    .arg(r + 1));
            return false;
        }
    }
    SortAndCompressTable(1);
    if (m_nRowCount < 2) {
        ShowTableMessage(KwErrText(kSection, "TooFewPoints",
                                   "A stress-strain curve needs two points at least."));
        return false;
    }
    return UpdateListData(0, &m_pXFunction) && UpdateListData(1, &m_pYFunction);
}

void CKwMaterialNonlinearDialog::OnOK()
{
    KW_LOG_METHOD("CKwMaterialNonlinearDialog::OnOK");
    if (RefuseWhileSolving())
        return;
    if (!WriteBack())
        return;
    CKwMFCDialog::OnOK();
}
