#include "CKwMFCUIHighlightNodeElem.h"

#include "CKwDefineRangeDlg.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMessageBox.h"
#include "ui_CKwMFCUIHighlightNodeElem.h"

#include <QAbstractButton>
#include <QLineEdit>

namespace {

using Ed = CKwMFCUIHighlightNodeElem;
using U = CKwUIHighlightNodeElem;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

constexpr KwControlCode kControlCodes[] = {
    {U::CodeIdList, Ed::IdList, kEdit},
    {U::CodeGroupName, Ed::IdGroupName, kEdit},
    {U::CodeSummary, Ed::IdSummary, KwCodeOp::Text},
};

constexpr KwValueBinding kBindings[] = {
    {U::FieldMode, Ed::IdModeNodes, KwBind::RadioGroup, 2},
    {U::FieldCreateGroup, Ed::IdCreateGroup, KwBind::Check},
};

// The list's label follows the mode and is set in SetTextToCurrentLang.
constexpr KwTextRow kTexts[] = {
    {7101, "HighlightEntities", "GroupHighlight", "Highlight"},
    {Ed::IdModeNodes, "HighlightEntities", "LabelNodes", "Nodes"},
    {Ed::IdModeElements, "HighlightEntities", "LabelElements", "Elements"},
    {7106, "HighlightEntities", "LabelListHint", "For example 1-100, 205, 300-310 by 5, or ALL"},
    {Ed::IdAll, "HighlightEntities", "ButtonAll", "All"},
    {Ed::IdAll, "HighlightEntities", "ToolTipAll", "Highlight every node or element of the mesh",
     KwTextTarget::ToolTip},
    {Ed::IdRange, "HighlightEntities", "ButtonAddRange", "Add Range..."},
    {Ed::IdRange, "HighlightEntities", "ToolTipAddRange",
     "Add IDs from, to and by a step to the list", KwTextTarget::ToolTip},
    {Ed::IdHighlight, "HighlightEntities", "ButtonLabelHighlight", "Highlight"},
    {Ed::IdHighlight, "HighlightEntities", "ToolTipHighlight",
     "Show the IDs of the list in the view; the dialog stays open", KwTextTarget::ToolTip},
    {Ed::IdGroupBox, "HighlightEntities", "GroupGroup", "Group"},
    {Ed::IdCreateGroup, "HighlightEntities", "LabelCreateGroup",
     "Create Group of the Highlighted IDs"},
    {7113, "HighlightEntities", "LabelGroupName", "Group Name", true},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

} // namespace

CKwMFCUIHighlightNodeElem::CKwMFCUIHighlightNodeElem(int mode, CKwMeshModel* mesh, CKwGroup* set,
                                                     int flag, CFMView* view, QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent),
      m_ui(std::make_unique<Ui::CKwMFCUIHighlightNodeElem>())
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    connect(m_ui->highlight, &QAbstractButton::clicked, this, &Ed::OnHighlight);
    connect(m_ui->range, &QAbstractButton::clicked, this, &Ed::OnAddRange);
    connect(m_ui->all, &QAbstractButton::clicked, this, &Ed::OnAll);
    connect(m_ui->createGroup, &QAbstractButton::toggled, this, [this] { syncControls(); });
    OnCreate(view, mode, mesh, set, flag != 0);
}

CKwMFCUIHighlightNodeElem::~CKwMFCUIHighlightNodeElem() = default;

void CKwMFCUIHighlightNodeElem::SetTextToCurrentLang()
{
    CKwMFCUIBase::SetTextToCurrentLang();
    syncControls();
}

void CKwMFCUIHighlightNodeElem::OnObjectDataLoaded()
{
    CKwMFCUIBase::OnObjectDataLoaded();
    syncControls();
}

// The mode is fixed for an existing set and without the flag; the name takes input only
// while a group is made or a set edited.
void CKwMFCUIHighlightNodeElem::syncControls()
{
    const bool editsSet = GetObject() != nullptr;
    const bool free = MayMakeGroup() && !editsSet;
    m_ui->modeNodes->setEnabled(free);
    m_ui->modeElements->setEnabled(free);
    m_ui->groupGroup->setVisible(MayMakeGroup() || editsSet);
    // A set being edited is kept on OK anyway: the box would only ask what is decided.
    m_ui->createGroup->setVisible(!editsSet);
    m_ui->groupName->setEnabled(editsSet || m_ui->createGroup->isChecked());
    m_ui->labelList->setText(KwLabel(ListLabel()));
}

// The list's label follows the mode once the logic has taken it.
int CKwMFCUIHighlightNodeElem::SetValue(int field, int value)
{
    const int taken = CKwUIHighlightNodeElem::SetValue(field, value);
    syncControls();
    return taken;
}

void CKwMFCUIHighlightNodeElem::OnHighlight()
{
    if (RefuseWhileSolving())
        return;
    Highlight();
}

void CKwMFCUIHighlightNodeElem::OnAll() { m_ui->idList->setText(QStringLiteral("ALL")); }

void CKwMFCUIHighlightNodeElem::OnAddRange()
{
    CKwDefineRangeDlg dlg(this);
    if (dlg.DoModal() != KwMB::IDOK)
        return;
    // "ALL" already names every ID; a range replaces it rather than standing beside it.
    QString list = m_ui->idList->text().trimmed();
    while (list.endsWith(u','))
        list.chop(1);
    if (list.isEmpty() || list.compare(QStringLiteral("ALL"), Qt::CaseInsensitive) == 0)
        list = dlg.GetRangeText();
    else
        list += QStringLiteral(", ") + dlg.GetRangeText();
    m_ui->idList->setText(list);
}

void CKwMFCUIHighlightNodeElem::ShowMissingIds(const QList<int>& ids)
{
    ShowInvalidEntityIDsWarning(ids);
}
