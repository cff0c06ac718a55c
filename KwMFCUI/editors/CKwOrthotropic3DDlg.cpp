#include "CKwOrthotropic3DDlg.h"

#include "CKwMaterial.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMaterialKeys.h"
#include "KwMessageBox.h"
#include "KwNumbers.h"
#include "ui_CKwOrthotropic3DDlg.h"

#include <QGridLayout>
#include <algorithm>
#include <QLabel>
#include <QLineEdit>

namespace K = KwMaterialKeys;

namespace {

// Rows per group; the groups follow one another in Rows().
constexpr int kStiffness[] = {K::E1, K::E2, K::E3, K::NUXY, K::NUYZ, K::NUXZ, K::G12, K::G1Z,
                              K::G2Z};
constexpr int kExpansion[] = {K::ALP1, K::ALP2, K::ALP3};
constexpr int kAllowables[] = {K::XT, K::YT, K::ZT, K::XC, K::YC, K::ZC, K::S12, K::S23,
                               K::S13, K::F12, K::F23, K::F13};

const KW_UOM& si()
{
    static const KW_UOM s(KW_UOM::SI);
    return s;
}

} // namespace

const std::vector<int>& CKwOrthotropic3DDlg::Rows()
{
    static const std::vector<int> rows = [] {
        std::vector<int> r(std::begin(kStiffness), std::end(kStiffness));
        r.insert(r.end(), std::begin(kExpansion), std::end(kExpansion));
        r.insert(r.end(), std::begin(kAllowables), std::end(kAllowables));
        return r;
    }();
    return rows;
}

CKwOrthotropic3DDlg::CKwOrthotropic3DDlg(CKwMaterial* material, const KW_UOM* units,
                                         CFMView* view, QWidget* parent)
    : CKwMFCDialog(kTemplateId, view, parent), m_ui(std::make_unique<Ui::CKwOrthotropic3DDlg>()),
      m_material(material), m_units(units)
{
    m_ui->setupUi(this);
    QGridLayout* grids[] = {m_ui->stiffnessGrid, m_ui->expansionGrid, m_ui->allowablesGrid};
    const int counts[] = {int(std::size(kStiffness)), int(std::size(kExpansion)),
                          int(std::size(kAllowables))};
    int row = 0;
    for (int g = 0; g < 3; ++g) {
        for (int i = 0; i < counts[g]; ++i, ++row) {
            const int key = Rows()[static_cast<std::size_t>(row)];
            // The key's symbol tells apart rows that share a label (the Poisson's ratios).
            auto* symbol = new QLabel(K::Key(key));
            symbol->setProperty("kwData", true);
            auto* label = new QLabel;
            auto* edit = new QLineEdit;
            auto* unit = new QLabel;
            unit->setProperty("kwData", true);
            // Edits of one width, so the two groups on the left keep their values in line.
            edit->setFixedWidth(edit->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 14);
            KwSetControlId(label, kLabelIdBase + row);
            KwSetControlId(edit, kEditIdBase + row);
            KwSetControlId(unit, kUnitIdBase + row);
            grids[g]->addWidget(symbol, i, 0);
            grids[g]->addWidget(label, i, 1);
            grids[g]->addWidget(edit, i, 2);
            grids[g]->addWidget(unit, i, 3);
            m_edits.push_back(edit);
            m_labels.push_back(label);
            m_unitLabels.push_back(unit);
        }
        grids[g]->setColumnStretch(1, 1);
    }
    connect(m_ui->ok, &QPushButton::clicked, this, &CKwOrthotropic3DDlg::OnOK);
    connect(m_ui->cancel, &QPushButton::clicked, this, &CKwMFCDialog::OnCancel);
}

CKwOrthotropic3DDlg::~CKwOrthotropic3DDlg() = default;

const KW_UOM* CKwOrthotropic3DDlg::units() const
{
    if (m_units)
        return m_units;
    if (CFMView* v = GetFMView(); v && v->GetUnitHolder())
        return v->GetUnitHolder();
    return &si();
}

QLineEdit* CKwOrthotropic3DDlg::Edit(int row) const
{
    return row >= 0 && row < static_cast<int>(m_edits.size()) ? m_edits[row] : nullptr;
}

bool CKwOrthotropic3DDlg::OnInitDialog()
{
    const std::vector<int>& rows = Rows();
    for (std::size_t r = 0; r < rows.size(); ++r) {
        const int key = rows[r];
        m_edits[r]->setText(m_material ? K::FormatValue(m_material->GetValue(key),
                                                        K::UnitKind(key), units())
                                       : QString());
        m_unitLabels[r]->setText(K::UnitLabel(key, units()));
    }
    // One unit column width for all groups (the widest unit), for the same reason.
    int unitWidth = fontMetrics().horizontalAdvance(QStringLiteral("MPa"));
    for (const QLabel* u : m_unitLabels)
        unitWidth = std::max(unitWidth, u->sizeHint().width());
    for (QLabel* u : m_unitLabels)
        u->setMinimumWidth(unitWidth);
    m_ui->ok->setEnabled(m_material != nullptr);
    return CKwMFCDialog::OnInitDialog();
}

void CKwOrthotropic3DDlg::SetTextToCurrentLang()
{
    setWindowTitle(KwPropText("Materials", "Title3DOrthotropic",
                              "3D Orthotropic Material Definition"));
    m_ui->stiffness->setTitle(KwPropText("Materials", "GroupStiffness", "Stiffness"));
    m_ui->expansion->setTitle(
        KwPropText("Materials", "LabelThermalExpansionCoef", "Thermal Expansion"));
    m_ui->allowables->setTitle(KwPropText("Materials", "GroupAllowables", "Allowables"));
    const std::vector<int>& rows = Rows();
    for (std::size_t r = 0; r < rows.size(); ++r)
        m_labels[r]->setText(KwLabel(K::Label(rows[r])));
    m_ui->ok->setText(KwPropText("General", "ButtonOk", "OK"));
    m_ui->cancel->setText(KwPropText("General", "ButtonCancel", "Cancel"));
}

void CKwOrthotropic3DDlg::showFieldError(int row, const QString& message)
{
    const QString text = KwFieldMessage(K::Label(Rows()[static_cast<std::size_t>(row)]), message);
    if (CFMView* v = GetFMView())
        v->ShowBubbleToolTipError(text, 0);
    else
        KwAfxMessageBox(text, KwMB::OK | KwMB::ICONERROR);
    m_edits[static_cast<std::size_t>(row)]->setFocus();
    m_edits[static_cast<std::size_t>(row)]->selectAll();
}

void CKwOrthotropic3DDlg::OnOK()
{
    if (!m_material)
        return;
    // Checked on a copy: the owner's material changes only when every value passes.
    CKwMaterial copy = *m_material;
    copy.SetMaterialType(CKwMaterial::Orthotropic3D);
    const std::vector<int>& rows = Rows();
    for (std::size_t r = 0; r < rows.size(); ++r) {
        const int key = rows[r];
        const QString text = m_edits[r]->text().trimmed();
        // A field left as it was shown keeps its value to the last digit.
        if (text == K::FormatValue(copy.GetValue(key), K::UnitKind(key), units()))
            continue;
        if (text.isEmpty()) {
            copy.SetValue(key, MissingDouble);
            continue;
        }
        double v = 0;
        if (!units()->ReadInternalValue(text, K::UnitKind(key), &v)) {
            showFieldError(static_cast<int>(r), units()->GetErrorMessageForUnit(K::UnitKind(key)));
            return;
        }
        copy.SetValue(key, v);
    }
    const CKwMaterial::Check check = copy.CheckValues();
    if (check.problem != CKwMaterial::NoProblem) {
        const int key = K::IndexOf(check.key);
        for (std::size_t r = 0; r < rows.size(); ++r)
            if (rows[r] == key) {
                showFieldError(static_cast<int>(r), CKwMaterial::ProblemText(check.problem));
                return;
            }
    }
    for (int key : rows)
        m_material->SetValue(key, copy.GetValue(key));
    CKwMFCDialog::OnOK();
}
