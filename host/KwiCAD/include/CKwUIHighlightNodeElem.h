#pragma once
// Logic of the "Highlight" editor: nodes or elements of the mesh by an ID list ("ALL", single
// IDs, ranges with a step), shown in the view, and optionally kept as a named node or element
// set of the model. The edit copy is the set: its mode, its list as typed and the IDs the list
// found. A list that does not read leaves the view, the set and the model as they were.
#include "CKwFEUIBase.h"
#include "CKwGroup.h"
#include "KwIdRanges.h"

class CKwMeshModel;

class KWICAD_EXPORT CKwUIHighlightNodeElem : public CKwFEUIBase<CKwGroup>
{
public:
    enum Code { CodeIdList = 1, CodeGroupName = 2, CodeSummary = 3 };
    // FieldMode: 0 nodes, 1 elements (CKwGroup::Mode); FieldCreateGroup: 0 or 1.
    enum Field { FieldMode = 1, FieldCreateGroup = 2 };

    CKwUIHighlightNodeElem();
    ~CKwUIHighlightNodeElem() override;

    // `set` is edited when given, and then decides the mode; otherwise a new set of `mode`
    // starts. `mesh` null: the view's model's mesh. `mayMakeGroup` lets the user switch the
    // mode and keep a new list as a set.
    void OnCreate(CFMView* view, int mode, CKwMeshModel* mesh, CKwGroup* set, bool mayMakeGroup);

    bool MayMakeGroup() const { return m_mayMakeGroup; }
    bool IsCreateGroup() const { return m_createGroup; }
    CKwMeshModel* GetMesh() const;

    // Reads the list, reports IDs the mesh lacks and highlights the rest. False (nothing
    // changed) when the list does not read or there is no mesh.
    bool Highlight();
    // IDs found by the last Highlight, and how many it reported missing.
    const std::vector<int>& GetHighlightedIds() const { return m_edit->m_ids; }
    long long GetMissingCount() const { return m_missingCount; }

    // The message for a list that does not read; empty for a good one.
    static QString ListMessage(const KwIdRanges::Parsed& parsed);
    QString ListLabel() const;

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    void UpdateEditObject() override;
    QString GetPageTitleString() const override;
    long OnSubmitUI() override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;

protected:
    std::unique_ptr<CKwGroup> CreateNewObject() override;
    QList<CKwGroup*>* GetModelList() const override;
    // The dialog shows the IDs the list named that the mesh lacks.
    virtual void ShowMissingIds(const QList<int>& ids) { (void)ids; }

private:
    void loadSummary();
    int validateGroupName() const;

    CKwMeshModel* m_mesh = nullptr;
    int m_startMode = CKwGroup::Elements;
    bool m_mayMakeGroup = true;
    bool m_createGroup = false;
    long long m_missingCount = 0;
    bool m_highlighted = false;
};
