#pragma once
// Logic shared by the two editors that turn mesh elements round: the shell normals (reverse
// normals) and the beam directions (reverse line element direction). The user picks geometry
// (faces with shells, edges with beams) or the elements themselves; the view shows the
// directions as the editor's display options say while it is open; OK turns every picked
// element round once, Cancel leaves the mesh as it was. The edit copy holds nothing of the
// mesh: the picks and the display options are kept here.
#include "CKwFEUIBase.h"
#include "CKwMeshModel.h"
#include "KwViewDisplay.h"

#include <QList>
#include <vector>

class KWICAD_EXPORT CKwUIMeshReversal : public CKwFEUIBase<CKwMeshModel>
{
public:
    enum Family { Shells, Beams };
    enum Code { CodeEntities = 18 };
    // Display options. Shells: the front/back colours switch, front and back colours, the
    // normal vectors switch, their size and colour. Beams: the arrows switch (FieldShow),
    // their size (FieldSize) and colour (FieldVectorColor).
    enum Field { FieldShow = 1, FieldFrontColor = 2, FieldBackColor = 3, FieldShowVectors = 4,
                 FieldSize = 5, FieldVectorColor = 6 };
    // The size slider's steps; the middle one is the view's standard size.
    static constexpr int kSizeMin = 1;
    static constexpr int kSizeMax = 20;
    static constexpr int kSizeStandard = 5;

    explicit CKwUIMeshReversal(Family family);
    ~CKwUIMeshReversal() override;

    // Hides the family's OnCreate: the elements of `mesh` are turned on OK.
    void OnCreate(CFMView* view, CKwMeshModel* mesh, CKwSubCase* subcase);

    void LoadObjectData() override;
    void UpdateObjectData(bool) override {}
    int ValidateObjectData() override;
    void UpdateEditObject() override;
    void AddNewObjects() override {}
    long OnSubmitUI() override;
    long OnCancelUI() override;
    void Display(int on) override;
    QString GetPageTitleString() const override;
    void OnSelected(QList<CKwUIEntity*>* entities) override;
    void OnDeselected(QList<CKwUIEntity*>* entities) override;
    QList<CKwUIEntity*> GetSelectedEntities() const override { return m_picked; }
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;

    Family GetFamily() const { return m_family; }
    // The elements OK turns round: the picked elements and those on the picked geometry, each
    // once, ascending.
    std::vector<int> ElementsToReverse() const;
    // What the view is told to draw while the editor is open.
    const KwDirectionDisplay& GetDirectionDisplay() const { return m_display; }

protected:
    std::unique_ptr<CKwMeshModel> CreateNewObject() override;

private:
    // The family's elements an entity stands for (none: the entity is refused).
    std::vector<int> elementsOf(const CKwUIEntity* entity) const;
    bool isFamilyType(int type) const;
    void showDirections(bool on);

    Family m_family;
    QList<CKwUIEntity*> m_picked;
    KwDirectionDisplay m_display;
};
