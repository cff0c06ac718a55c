#include "CKwMFCUIEndRelease.h"

#include "CFMView.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "CKwUIEntity.h"
#include "KwControls.h"
#include "KwStyle.h"
#include "ui_CKwMFCUIEndRelease.h"

#include <QAbstractButton>
#include <QHash>
#include <QSet>
#include <QSignalBlocker>

namespace {

using T = KwTextTarget;
using U = CKwUIEndRelease;

constexpr int kEndAFirst = 7952;
constexpr int kEndBFirst = 7961;

constexpr KwControlCode kControlCodes[] = {
    {U::CodeEntities, 1406, KwCodeOp::ToolTip},
};

constexpr KwValueBinding bind(int field, int id) { return {field, id, KwBind::Check}; }
constexpr KwValueBinding kBindings[] = {
    bind(U::FieldEndAFirst + 0, kEndAFirst + 0), bind(U::FieldEndAFirst + 1, kEndAFirst + 1),
    bind(U::FieldEndAFirst + 2, kEndAFirst + 2), bind(U::FieldEndAFirst + 3, kEndAFirst + 3),
    bind(U::FieldEndAFirst + 4, kEndAFirst + 4), bind(U::FieldEndAFirst + 5, kEndAFirst + 5),
    bind(U::FieldEndBFirst + 0, kEndBFirst + 0), bind(U::FieldEndBFirst + 1, kEndBFirst + 1),
    bind(U::FieldEndBFirst + 2, kEndBFirst + 2), bind(U::FieldEndBFirst + 3, kEndBFirst + 3),
    bind(U::FieldEndBFirst + 4, kEndBFirst + 4), bind(U::FieldEndBFirst + 5, kEndBFirst + 5),
};

#define KW_DOF_ROWS(first)                                                                        \
    {first + 0, "Constraints", "ToolTipTranslationX", "Translation X"},                           \
        {first + 1, "Constraints", "ToolTipTranslationY", "Translation Y"},                       \
        {first + 2, "Constraints", "ToolTipTranslationZ", "Translation Z"},                       \
        {first + 3, "Constraints", "ToolTipRotationX", "Rotation X"},                             \
        {first + 4, "Constraints", "ToolTipRotationY", "Rotation Y"},                             \
        {first + 5, "Constraints", "ToolTipRotationZ", "Rotation Z"}

constexpr KwTextRow kTexts[] = {
    {1498, "EndRelease", "LabelBeamElements", "Beam Elements"},
    {7951, "EndRelease", "GroupEndA", "End A"},
    {7960, "EndRelease", "GroupEndB", "End B"},
    KW_DOF_ROWS(kEndAFirst),
    KW_DOF_ROWS(kEndBFirst),
    {7970, "EndRelease", "LabelNote",
     "Checked degrees of freedom are released. The checks show and set the elements chosen in "
     "the list, or all of them when none is chosen."},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};
#undef KW_DOF_ROWS

// Beam elements are picked as elements; the logic refuses elements of other types.
constexpr unsigned kElementFilter = 0x200;

} // namespace

CKwMFCUIEndRelease::CKwMFCUIEndRelease(CKwMeshModel* mesh, bool editExisting, CFMView* view,
                                       QWidget* parent)
    : CKwMFCUIBase(7231, view, parent), m_ui(std::make_unique<Ui::CKwMFCUIEndRelease>())
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    KwStyle::ApplyDialogLayout(m_ui->outer);
    KwStyle::ApplyGroupLayout(m_ui->endAGrid);
    KwStyle::ApplyGroupLayout(m_ui->endBGrid);
    m_ui->ends->setSpacing(KwStyle::GroupSpacing);
    m_ui->note->setMaximumWidth(KwStyle::CharsWidth(fontMetrics(), 60));
    m_ui->selection->setSelectionMode(QAbstractItemView::ExtendedSelection);
    connect(m_ui->selection, &QListWidget::itemSelectionChanged, this,
            &CKwMFCUIEndRelease::onListSelection);
    CKwUIEndRelease::OnCreate(view, mesh, editExisting);
}

CKwMFCUIEndRelease::~CKwMFCUIEndRelease() = default;

CKwMFCNodeElemSelectionBox* CKwMFCUIEndRelease::GetSelectionBox() const
{
    return m_ui->selection;
}

unsigned CKwMFCUIEndRelease::maskOf(int firstId) const
{
    unsigned mask = 0;
    for (int i = 0; i < 6; ++i)
        if (KwControl<QAbstractButton>(this, firstId + i)->isChecked())
            mask |= 1u << i;
    return mask;
}

unsigned CKwMFCUIEndRelease::GetEndAMask() const { return maskOf(kEndAFirst); }
unsigned CKwMFCUIEndRelease::GetEndBMask() const { return maskOf(kEndBFirst); }

bool CKwMFCUIEndRelease::OnInitDialog()
{
    SetupSelectionBox(m_ui->selection, kElementFilter, 128);
    return CKwMFCUIBase::OnInitDialog();
}

void CKwMFCUIEndRelease::onListSelection()
{
    // A line of the list stands for the entities shown with its text.
    const bool showIds = GetFMView() && GetFMView()->GetShowIDs();
    QHash<QString, QList<int>> idsOfLine;
    for (const CKwUIEntity* e : m_ui->selection->GetEntities())
        idsOfLine[e->GetDisplayText(showIds)].append(e->GetID());
    QList<int> ids;
    for (const QListWidgetItem* item : m_ui->selection->selectedItems())
        ids += idsOfLine.value(item->text());
    SetListValue(CodeCurrent, ids);
    FillBoundControls();
}

long CKwMFCUIEndRelease::OnEntitiesPicked(QList<CKwUIEntity*>* entities)
{
    long handled = 0;
    {
        // The list's new last line is not the user's choice yet: the logic gives new picks
        // what the checks show now. The list shows only the beams the logic took.
        const QSignalBlocker block(m_ui->selection);
        handled = PickKeepingWhatTheLogicTakes(entities, m_ui->selection);
    }
    onListSelection();
    return handled;
}
