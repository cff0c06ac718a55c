#pragma once
// The list of entities picked for an editor: admits the kinds its filter mask allows, shows one
// line per distinct display text while keeping every pick in its entity list, and offers a
// context menu to change what the view picks, take all admitted entities, or drop entities.
// Drops made here are reported through entitiesDropped; whole-model picks made here through
// entitiesRequested, so that the editor treats them as picks from the view.
#include "CKwUIEntity.h"
#include "KwMFCUIExport.h"

#include <QHash>
#include <QList>
#include <QListWidget>
#include <functional>

class CKwFEModel;
class QMenu;

class KWMFCUI_EXPORT CKwMFCNodeElemSelectionBox : public QListWidget
{
    Q_OBJECT
public:
    // Filter bits the box knows by name.
    enum : unsigned { FilterVertices = 0x2, FilterPoints = 0x4, FilterEdges = 0x10,
                      FilterSketches = 0x20, FilterFaces = 0x40, FilterBodies = 0x1000,
                      FilterParts = 0x2000, FilterGroups = 0x8000 };

    explicit CKwMFCNodeElemSelectionBox(QWidget* parent = nullptr);
    ~CKwMFCNodeElemSelectionBox() override;

    void SetFilter(unsigned mask);
    unsigned GetFilter() const { return m_filter; }
    // The mask the view should pick with: the filter, narrowed by a "Select ..." menu choice.
    unsigned GetPickMask() const { return m_pickMask ? (m_pickMask & m_filter) : m_filter; }
    void SetOption(int option) { m_option = option; }
    int GetOption() const { return m_option; }
    void SetSingleSelection(bool on) { m_single = on; }
    bool IsSingleSelection() const { return m_single; }
    void SetActive(bool on) { m_active = on; }
    bool IsActive() const { return m_active; }
    // The prompt shown as the box's tool tip.
    void SetPrompt(const QString& text);

    bool Accepts(const CKwUIEntity* entity) const;
    // Adds one entity to the entity list and, if no line shows its text yet, queues a line.
    // Call FlushAdded after a batch.
    void AddEntity(CKwUIEntity* entity, bool showIds);
    // Shows the queued lines, then makes the last line current and visible.
    void FlushAdded();
    // Removes every entry of these entities and the lines no entry shows any more. Returns
    // the entities that were in the box.
    QList<CKwUIEntity*> RemoveEntities(const QList<CKwUIEntity*>& entities);
    const QList<CKwUIEntity*>& GetEntities() const { return m_entities; }
    // Empties entity list and lines without reporting.
    void ResetContent();

    // Menu actions.
    void DeleteSelected();
    void ClearAll();
    void SelectAll();
    void ChainFaces();
    // Where whole-model picks come from (the view's model geometry).
    void SetGeometryProvider(std::function<QList<CKwUIEntity*>()> provider)
    {
        m_geometry = std::move(provider);
    }
    // The context menu as the filter allows; the caller owns it.
    QMenu* CreateContextMenu(QWidget* parent);
    // Where "Include Group" finds the model's groups and their members (the view's model).
    void SetModelProvider(std::function<CKwFEModel*()> provider)
    {
        m_model = std::move(provider);
    }
    // "Include Group": the groups of the model to choose from (CKwMFCUIGroupSelection); the
    // members of the chosen ones that the filter admits (nodes into a box that takes nodes,
    // elements into one that takes elements) are reported as whole-model picks.
    void IncludeGroups();
    // The members of the given groups that this box admits, each once, in group order.
    QList<CKwUIEntity*> GroupMembers(const QList<int>& choices) const;

Q_SIGNALS:
    void entitiesDropped(const QList<CKwUIEntity*>& entities);
    void entitiesRequested(const QList<CKwUIEntity*>& entities);
    void pickMaskChanged(unsigned mask);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void setPickMode(unsigned bit);
    void dropLines(const QList<CKwUIEntity*>& removed, const QStringList& texts);

    unsigned m_filter = 0;
    unsigned m_pickMask = 0;
    int m_option = 0;
    bool m_single = false;
    bool m_active = false;
    QList<CKwUIEntity*> m_entities;
    QStringList m_texts;             // display text of each entry, parallel to m_entities
    QHash<QString, int> m_lineUsers; // entries per shown line
    QStringList m_pending;
    std::function<QList<CKwUIEntity*>()> m_geometry;
    std::function<CKwFEModel*()> m_model;
};
