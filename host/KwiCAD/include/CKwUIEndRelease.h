#pragma once
// Logic of the beam end release editor: the picked beam elements and, per element, the degrees
// of freedom released at end A and end B. Opened on a mesh it edits every release the mesh
// holds; opened for a new release it starts with no picks and leaves the other elements'
// releases alone. The releases being edited are kept here by element: the mesh's nodes and
// elements are never copied.
#include "CKwFEUIBase.h"
#include "CKwMeshModel.h"

#include <map>

class KWICAD_EXPORT CKwUIEndRelease : public CKwFEUIBase<CKwMeshModel>
{
public:
    using Release = CKwMeshModel::EndRelease;
    enum Code { CodeEntities = 18, CodeCurrent = 19 };
    // Fields: the release of DOF d (0 = TX .. 5 = RZ) at end A is FieldEndAFirst + d.
    enum Field { FieldEndAFirst = 1, FieldEndBFirst = 7 };

    CKwUIEndRelease();
    ~CKwUIEndRelease() override;

    // Hides the family's OnCreate: `mesh` is the mesh whose releases are written; with
    // `editExisting` the editor starts with every element that has a release.
    void OnCreate(CFMView* view, CKwMeshModel* mesh, bool editExisting);

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override {}
    int ValidateObjectData() override;
    void UpdateEditObject() override;
    void AddNewObjects() override {}
    long OnSubmitUI() override;
    void Display(int on) override;
    QString GetPageTitleString() const override;
    void OnSelected(QList<CKwUIEntity*>* entities) override;
    void OnDeselected(QList<CKwUIEntity*>* entities) override;
    QList<CKwUIEntity*> GetSelectedEntities() const override { return m_picked; }
    // CodeCurrent: the element ids the checks show and set (none: every picked element).
    void SetListValue(int code, const QList<int>& values) override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;

    // The release the editor holds for a picked element (nothing for one not picked).
    Release GetRelease(int elementId) const;
    // Picked elements free in all six degrees of freedom at both ends.
    QList<int> MechanismElements() const;

protected:
    std::unique_ptr<CKwMeshModel> CreateNewObject() override;

private:
    QList<int> currentIds() const;
    QList<int> pickedIds() const;
    // What the checks show: the release of the first element they set, else m_forNewPicks.
    Release shownRelease() const;

    bool m_editExisting = false;
    QList<CKwUIEntity*> m_picked;
    std::map<int, Release> m_releases; // by element id, for the picked elements
    QList<int> m_current;
    Release m_forNewPicks;             // what the checks show while nothing is picked
    QList<int> m_loadedIds;            // elements released when the editor (re)loaded
    QList<int> m_warnedMechanism;      // the mechanism last warned about; a second OK keeps it
};
