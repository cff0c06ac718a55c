#include "CKwSelectBeamSectionDialog.h"

#include "KwControls.h"
#include "KwLangText.h"
#include "KwMethodLogger.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
const char* const kShapeNames[] = {"ROD",   "TUBE", "I",    "I1", "CHAN",  "CHAN1", "CHAN2",
                                   "T",     "T1",   "T2",   "CROSS", "BAR", "BOX",  "BOX1",
                                   "H",     "HEXA", "Z",    "HAT", "HAT1",  "L"};
}

CKwSelectBeamSectionDialog::CKwSelectBeamSectionDialog(const QStringList& names,
                                                       const QStringList& shapes,
                                                       QWidget* parent)
    : CKwMFCDialog(350, nullptr, parent), m_names(names), m_shapes(shapes)
{
    auto* lay = new QVBoxLayout(this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (int id : {IDC_OK, IDC_CANCEL}) {
        auto* b = new QPushButton(this);
        KwSetControlId(b, id);
        b->setDefault(id == IDC_OK);
        buttons->addWidget(b);
        connect(b, &QPushButton::clicked, this,
                [this, id] { id == IDC_OK ? OnOK() : OnCancel(); });
    }
    lay->addLayout(buttons);
}

bool CKwSelectBeamSectionDialog::OnInitDialog()
{
    KW_LOG_METHOD("CKwSelectBeamSectionDialog::OnInitDialog");
    // A bordered tree with buttons, lines (also at the root), editable labels and a selection
    // that stays visible.
    m_tree = new QTreeWidget(this);
    KwSetControlId(m_tree, IDC_TREE);
    m_tree->setProperty("kwData", true);
    m_tree->setHeaderHidden(true);
    m_tree->setRootIsDecorated(true);
    m_tree->setFrameShape(QFrame::StyledPanel);
    m_tree->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::SelectedClicked);
    m_tree->setSelectionMode(QAbstractItemView::SingleSelection);
    m_tree->setMinimumSize(260, 320);
    static_cast<QVBoxLayout*>(layout())->insertWidget(0, m_tree, 1);

    const int n = std::min(m_names.size(), m_shapes.size());
    QHash<QString, QTreeWidgetItem*> groups;
    for (int i = 0; i < n; ++i) {
        const QString& shape = m_shapes[i];
        const bool known = std::any_of(std::begin(kShapeNames), std::end(kShapeNames),
                                        [&](const char* s) { return shape == QLatin1String(s); });
        if (!known)
            continue; // a section of an unknown shape has no group to go in
        QTreeWidgetItem*& group = groups[shape];
        if (!group) {
            group = new QTreeWidgetItem(m_tree, QStringList(shape));
            group->setFlags(group->flags() | Qt::ItemIsEditable);
        }
        auto* item = new QTreeWidgetItem(group, QStringList(m_names[i]));
        item->setFlags(item->flags() | Qt::ItemIsEditable);
    }
    m_tree->expandAll();
    SetTextToCurrentLang();
    adjustSize();
    RestorePlacement();
    return true;
}

void CKwSelectBeamSectionDialog::SetTextToCurrentLang()
{
    setWindowTitle(KwPropText("PhysicalProperties", "SelectCrossSection", "Select Beam Section"));
    KwSetControlText(this, IDC_OK, KwPropText("General", "ButtonOk", "OK"));
    KwSetControlText(this, IDC_CANCEL, KwPropText("General", "ButtonCancel", "Cancel"));
}

void CKwSelectBeamSectionDialog::OnOK()
{
    m_position = -1;
    m_shape.clear();
    QTreeWidgetItem* sel = m_tree ? m_tree->currentItem() : nullptr;
    if (sel && !sel->isSelected())
        sel = nullptr;
    // A group node picks nothing.
    if (sel && sel->parent()) {
        QTreeWidgetItem* parent = sel->parent();
        m_shape = parent->text(0);
        for (int i = 0; i < parent->childCount(); ++i)
            if (parent->child(i) == sel) {
                m_position = i;
                break;
            }
    }
    CKwMFCDialog::OnOK();
}
