#include "CKwMFCNodeElemSelectionBox.h"

#include "CKwFEModel.h"
#include "CKwMFCUIGroupSelection.h"
#include "CKwMeshModel.h"
#include "CKwUIEntity.h"
#include "KwLangText.h"
#include "KwMessageBox.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QSet>

CKwMFCNodeElemSelectionBox::CKwMFCNodeElemSelectionBox(QWidget* parent) : QListWidget(parent)
{
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setUniformItemSizes(true);
    setProperty("kwData", true);
}

CKwMFCNodeElemSelectionBox::~CKwMFCNodeElemSelectionBox() = default;

void CKwMFCNodeElemSelectionBox::SetFilter(unsigned mask)
{
    m_filter = mask;
    m_pickMask = 0;
    Q_EMIT pickMaskChanged(GetPickMask());
}

void CKwMFCNodeElemSelectionBox::SetPrompt(const QString& text) { setToolTip(text); }

bool CKwMFCNodeElemSelectionBox::Accepts(const CKwUIEntity* entity) const
{
    return entity && (entity->FilterBit() & m_filter) != 0;
}

void CKwMFCNodeElemSelectionBox::ResetContent()
{
    m_entities.clear();
    m_texts.clear();
    m_lineUsers.clear();
    m_pending.clear();
    clear();
}

void CKwMFCNodeElemSelectionBox::AddEntity(CKwUIEntity* entity, bool showIds)
{
    if (!entity)
        return;
    if (m_single)
        ResetContent();
    const QString text = entity->GetDisplayText(showIds);
    m_entities.append(entity);
    m_texts.append(text);
    // A hash of the shown texts keeps a pick of many entities linear.
    int& users = m_lineUsers[text];
    if (users++ == 0)
        m_pending.append(text);
}

void CKwMFCNodeElemSelectionBox::FlushAdded()
{
    if (!m_pending.isEmpty()) {
        addItems(m_pending);
        m_pending.clear();
    }
    const int n = count();
    if (n > 0) {
        scrollToItem(item(n - 1));
        setCurrentRow(n - 1, QItemSelectionModel::ClearAndSelect);
    }
}

QList<CKwUIEntity*> CKwMFCNodeElemSelectionBox::RemoveEntities(
    const QList<CKwUIEntity*>& entities)
{
    const QSet<CKwUIEntity*> drop(entities.cbegin(), entities.cend());
    QList<CKwUIEntity*> removed;
    QStringList texts;
    for (qsizetype i = m_entities.size() - 1; i >= 0; --i) {
        if (!drop.contains(m_entities[i]))
            continue;
        removed.prepend(m_entities[i]);
        texts.prepend(m_texts[i]);
        m_entities.removeAt(i);
        m_texts.removeAt(i);
    }
    dropLines(removed, texts);
    return removed;
}

void CKwMFCNodeElemSelectionBox::dropLines(const QList<CKwUIEntity*>&, const QStringList& texts)
{
    QSet<QString> gone;
    for (const QString& t : texts) {
        auto it = m_lineUsers.find(t);
        if (it != m_lineUsers.end() && --it.value() <= 0) {
            m_lineUsers.erase(it);
            gone.insert(t);
        }
    }
    if (gone.isEmpty())
        return;
    for (int row = count() - 1; row >= 0; --row)
        if (gone.contains(item(row)->text()))
            delete takeItem(row);
}

void CKwMFCNodeElemSelectionBox::DeleteSelected()
{
    QSet<QString> lines;
    for (const QListWidgetItem* it : selectedItems())
        lines.insert(it->text());
    if (lines.isEmpty())
        return;
    QList<CKwUIEntity*> dropped;
    for (qsizetype i = 0; i < m_entities.size(); ++i)
        if (lines.contains(m_texts[i]) && !dropped.contains(m_entities[i]))
            dropped.append(m_entities[i]);
    RemoveEntities(dropped);
    if (!dropped.isEmpty())
        Q_EMIT entitiesDropped(dropped);
}

void CKwMFCNodeElemSelectionBox::ClearAll()
{
    QList<CKwUIEntity*> dropped;
    for (CKwUIEntity* e : std::as_const(m_entities))
        if (!dropped.contains(e))
            dropped.append(e);
    ResetContent();
    if (!dropped.isEmpty())
        Q_EMIT entitiesDropped(dropped);
}

void CKwMFCNodeElemSelectionBox::SelectAll()
{
    if (!m_geometry)
        return;
    QList<CKwUIEntity*> all;
    const unsigned mask = GetPickMask();
    for (CKwUIEntity* e : m_geometry())
        if (e && (e->FilterBit() & mask) && e->GetKind() != CKwUIEntity::Node &&
            e->GetKind() != CKwUIEntity::Element)
            all.append(e);
    if (!all.isEmpty())
        Q_EMIT entitiesRequested(all);
}

void CKwMFCNodeElemSelectionBox::ChainFaces()
{
    // Faces of a closed body chain into each other: the chain of a picked face is every face
    // of its body.
    if (!m_geometry)
        return;
    QSet<int> bodies;
    for (const CKwUIEntity* e : std::as_const(m_entities))
        if (e->GetKind() == CKwUIEntity::Face)
            bodies.insert(e->GetBodyID());
    QList<CKwUIEntity*> chain;
    for (CKwUIEntity* e : m_geometry())
        if (e && e->GetKind() == CKwUIEntity::Face && bodies.contains(e->GetBodyID()) &&
            !m_entities.contains(e))
            chain.append(e);
    if (!chain.isEmpty())
        Q_EMIT entitiesRequested(chain);
}

void CKwMFCNodeElemSelectionBox::setPickMode(unsigned bit)
{
    m_pickMask = (m_pickMask == bit) ? 0 : bit;
    Q_EMIT pickMaskChanged(GetPickMask());
}

QMenu* CKwMFCNodeElemSelectionBox::CreateContextMenu(QWidget* parent)
{
    auto* menu = new QMenu(parent);
    auto mode = [&](unsigned bit, const QString& text) {
        QAction* a = menu->addAction(text);
        a->setCheckable(true);
        a->setChecked(m_pickMask == bit);
        a->setData(bit);
        connect(a, &QAction::triggered, this, [this, bit] { setPickMode(bit); });
        return a;
    };
    if (m_filter & FilterParts)
        mode(FilterParts, KwPropText("PhysicalProperties", "TooltipParts", "Select Parts"));
    if (m_filter & FilterFaces) {
        mode(FilterFaces, KwPropText("MeshControl", "TooltipSelectFaces", "Select faces"));
        QAction* chain =
            menu->addAction(KwPropText("General", "SelectConnectedFaces", "Chain Faces"));
        bool anyFace = false;
        for (const CKwUIEntity* e : std::as_const(m_entities))
            anyFace = anyFace || e->GetKind() == CKwUIEntity::Face;
        chain->setEnabled(anyFace);
        connect(chain, &QAction::triggered, this, &CKwMFCNodeElemSelectionBox::ChainFaces);
    }
    if (m_filter & FilterEdges)
        mode(FilterEdges, KwPropText("MeshControl", "TooltipSelectEdges", "Select edges"));
    if (m_filter & FilterVertices)
        mode(FilterVertices, KwPropText("General", "SelectVertices", "Select vertices"));
    if (m_filter & (FilterVertices | FilterEdges | FilterFaces | FilterBodies | FilterParts)) {
        menu->addSeparator();
        QAction* all = menu->addAction(KwPropText("General", "SelectAll", "Select All"));
        all->setEnabled(static_cast<bool>(m_geometry));
        connect(all, &QAction::triggered, this, &CKwMFCNodeElemSelectionBox::SelectAll);
    }
    // The model has no sketches to offer; the entry says the filter admits them.
    if (m_filter & FilterSketches)
        menu->addAction(KwPropText("General", "SelectAllSketches", "Select All Sketch Segments"))
            ->setEnabled(false);
    if (m_filter & FilterGroups) {
        QAction* groups = menu->addAction(KwPropText("General", "IncludeGroup", "Include Group"));
        groups->setEnabled(static_cast<bool>(m_model));
        connect(groups, &QAction::triggered, this, &CKwMFCNodeElemSelectionBox::IncludeGroups);
    }
    menu->addSeparator();
    QAction* del = menu->addAction(KwPropText("NonlinearMaterialDlg", "PopupMenuDelete", "Delete"));
    del->setShortcut(QKeySequence::Delete);
    del->setEnabled(!selectedItems().isEmpty());
    connect(del, &QAction::triggered, this, &CKwMFCNodeElemSelectionBox::DeleteSelected);
    QAction* clearAll = menu->addAction(KwPropText("General", "ClearAll", "Clear All"));
    clearAll->setEnabled(!m_entities.isEmpty());
    connect(clearAll, &QAction::triggered, this, &CKwMFCNodeElemSelectionBox::ClearAll);
    return menu;
}

void CKwMFCNodeElemSelectionBox::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu* menu = CreateContextMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
}

void CKwMFCNodeElemSelectionBox::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) {
        DeleteSelected();
        event->accept();
        return;
    }
    QListWidget::keyPressEvent(event);
}

QList<CKwUIEntity*> CKwMFCNodeElemSelectionBox::GroupMembers(const QList<int>& choices) const
{
    CKwFEModel* model = m_model ? m_model() : nullptr;
    CKwMeshModel* mesh = model ? model->m_mesh : nullptr;
    if (!mesh)
        return {};
    const QList<KwModelGroup> groups = KwModelGroups(model);
    QList<CKwUIEntity*> members;
    QSet<CKwUIEntity*> seen;
    for (int choice : choices) {
        if (choice < 0 || choice >= groups.size() || !groups.at(choice).ids)
            continue;
        const bool nodes = groups.at(choice).members == KwModelGroup::Nodes;
        if (!(CKwUIEntity::FilterBitOf(nodes ? CKwUIEntity::Node : CKwUIEntity::Element) &
              m_filter))
            continue;
        for (int id : *groups.at(choice).ids) {
            CKwUIEntity* e = nodes ? mesh->NodeEntity(id) : mesh->ElementEntity(id);
            if (e && !seen.contains(e)) {
                seen.insert(e);
                members.append(e);
            }
        }
    }
    return members;
}

void CKwMFCNodeElemSelectionBox::IncludeGroups()
{
    if (!m_model)
        return;
    CKwMFCUIGroupSelection dlg(m_model(), m_filter, window());
    if (dlg.DoModal() != KwMB::IDOK)
        return;
    const QList<CKwUIEntity*> members = GroupMembers(dlg.GetChosenGroups());
    if (!members.isEmpty())
        Q_EMIT entitiesRequested(members);
}
