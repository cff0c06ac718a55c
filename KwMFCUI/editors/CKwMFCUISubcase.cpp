#include "CKwMFCUISubcase.h"

#include "CKwNonlinearParametersDlg.h"
#include "CKwNonlinearSetup.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwStyle.h"
#include "ui_CKwMFCUISubcase.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QHeaderView>
#include <QTreeWidget>

namespace {

using T = KwTextTarget;
using U = CKwUISubcase;
using Ed = CKwMFCUISubcase;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

constexpr KwControlCode kControlCodes[] = {
    {U::CodeName, Ed::kName, kEdit},
    {U::CodeID, Ed::kID, kEdit},
};

constexpr KwValueBinding kBindings[] = {
    {U::FieldThermal, Ed::kThermal, KwBind::Check},
};

constexpr KwTextRow kTexts[] = {
    {1419, "General", "LabelName", "Name", true},
    {343, "General", "LabelID", "ID", true},
    {Ed::kThermal, "Subcase", "CheckboxThermal", "Thermal Subcase"},
    {Ed::kThermal, "Subcase", "TooltipThermal",
     "Solve this subcase for temperatures (heat transfer)", T::ToolTip},
    {7760, "Subcase", "LabelLoads", "Loads"},
    {7770, "Subcase", "LabelConstraints", "Constraints"},
    {Ed::kLoadAdd, "Subcase", "ButtonAdd", "Add"},
    {Ed::kLoadAdd, "Subcase", "TooltipAddLoad", "Add the chosen load to the subcase", T::ToolTip},
    {Ed::kLoadRemove, "Subcase", "ButtonRemove", "Remove"},
    {Ed::kLoadRemove, "Subcase", "TooltipRemoveLoads",
     "Take the selected loads out of the subcase", T::ToolTip},
    {Ed::kConstraintAdd, "Subcase", "ButtonAdd", "Add"},
    {Ed::kConstraintAdd, "Subcase", "TooltipAddConstraint",
     "Add the chosen constraint to the subcase", T::ToolTip},
    {Ed::kConstraintRemove, "Subcase", "ButtonRemove", "Remove"},
    {Ed::kConstraintRemove, "Subcase", "TooltipRemoveConstraints",
     "Take the selected constraints out of the subcase", T::ToolTip},
    {Ed::kParameters, "NonlinearSetup", "ButtonParameters", "Nonlinear Parameters..."},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

} // namespace

CKwMFCUISubcase::CKwMFCUISubcase(CKwSubCase* subcase, CKwAnalysis* analysis, CFMView* view,
                                 KW_UOM* units, QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent), m_ui(std::make_unique<Ui::CKwMFCUISubcase>())
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    connect(m_ui->loadsAdd, &QAbstractButton::clicked, this, [this] { OnAdd(Loads); });
    connect(m_ui->loadsRemove, &QAbstractButton::clicked, this, [this] { OnRemove(Loads); });
    connect(m_ui->constraintsAdd, &QAbstractButton::clicked, this, [this] { OnAdd(Constraints); });
    connect(m_ui->constraintsRemove, &QAbstractButton::clicked, this,
            [this] { OnRemove(Constraints); });
    connect(m_ui->parameters, &QAbstractButton::clicked, this, &CKwMFCUISubcase::OnParameters);
    SetAnalysis(analysis ? analysis : (subcase ? subcase->GetAnalysis() : nullptr));
    OnCreate(view, subcase, nullptr);
}

CKwMFCUISubcase::~CKwMFCUISubcase() = default;

QTreeWidget* CKwMFCUISubcase::GetList(Family family) const
{
    return family == Loads ? m_ui->loadsList : m_ui->constraintsList;
}

QComboBox* CKwMFCUISubcase::GetChoices(Family family) const
{
    return family == Loads ? m_ui->loadsChoices : m_ui->constraintsChoices;
}

bool CKwMFCUISubcase::OnInitDialog()
{
    KwStyle::ApplyDialogLayout(m_ui->outer);
    KwStyle::ApplyFormGrid(m_ui->form);
    KwStyle::ApplyGroupLayout(m_ui->groupLoadsLayout);
    KwStyle::ApplyGroupLayout(m_ui->groupConstraintsLayout);
    m_ui->id->setMaximumWidth(KwStyle::CharsWidth(fontMetrics(), KwStyle::NumberFieldChars));
    return CKwMFCUIBase::OnInitDialog();
}

void CKwMFCUISubcase::SetTextToCurrentLang()
{
    CKwMFCUIBase::SetTextToCurrentLang();
    if (!m_ui)
        return;
    for (QTreeWidget* list : {m_ui->loadsList, m_ui->constraintsList}) {
        list->setHeaderLabels({KwPropText("General", "LabelName", "Name"),
                               KwPropText("General", "LabelType", "Type")});
        KwStyle::FitHeaders(list);
    }
    // Type names come in the current language; on opening the lists are filled with the data.
    if (isVisible())
        OnMembersChanged();
}

void CKwMFCUISubcase::fill(Family family)
{
    QTreeWidget* list = GetList(family);
    list->clear();
    for (const Member& m : Members(family)) {
        auto* row = new QTreeWidgetItem(list, {m.name, m.type});
        row->setData(0, Qt::UserRole, m.id);
        if (m.missing)
            for (int c = 0; c < 2; ++c)
                row->setForeground(c, QColor(Qt::red));
    }
    QComboBox* choices = GetChoices(family);
    const QSignalBlocker block(choices);
    choices->clear();
    for (const Member& m : Candidates(family))
        choices->addItem(QStringLiteral("%1 (%2)").arg(m.name, m.type), m.id);
    const bool canAdd = choices->count() > 0;
    choices->setEnabled(canAdd);
    (family == Loads ? m_ui->loadsAdd : m_ui->constraintsAdd)->setEnabled(canAdd);
    (family == Loads ? m_ui->loadsRemove : m_ui->constraintsRemove)
        ->setEnabled(list->topLevelItemCount() > 0);
}

void CKwMFCUISubcase::OnMembersChanged()
{
    if (!m_ui)
        return;
    fill(Loads);
    fill(Constraints);
    const CKwSubCase* s = GetEditObject();
    m_ui->parameters->setEnabled(s && s->GetNonlinearSetup());
}

void CKwMFCUISubcase::OnAdd(Family family)
{
    QComboBox* choices = GetChoices(family);
    if (choices->currentIndex() >= 0)
        AddMember(family, choices->currentData().toInt());
}

void CKwMFCUISubcase::OnRemove(Family family)
{
    QList<int> ids;
    for (QTreeWidgetItem* row : GetList(family)->selectedItems())
        ids.append(row->data(0, Qt::UserRole).toInt());
    for (int id : ids)
        RemoveMember(family, id);
}

void CKwMFCUISubcase::OnParameters()
{
    CKwSubCase* s = GetEditObject();
    if (!s || !s->GetNonlinearSetup())
        return;
    CKwNonlinearParametersDlg dlg(s->GetNonlinearSetup(), this);
    dlg.SetFMView(GetFMView());
    dlg.DoModal();
}
