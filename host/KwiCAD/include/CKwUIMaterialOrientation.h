#pragma once
// Logic of the material orientation editor: the shell faces (each must carry a 2D mesh), and
// the direction from a straight edge (the secondary geometry: an edge or a face may be picked
// for it, only a straight edge is taken on OK) or from a vector X, Y, Z.
#include "CKwFEUIBase.h"
#include "CKwMaterialOrient.h"

class CKwPhysicalProperty;

class KWICAD_EXPORT CKwUIMaterialOrientation : public CKwFEUIBase<CKwMaterialOrient>
{
public:
    enum Code { CodeName = 1, CodeID = 2, CodeVectorX = 5, CodeVectorY = 6, CodeVectorZ = 7,
                CodeFaces = 18, CodeEdge = 19 };
    enum Field { FieldMethod = 3 };
    enum Target { Faces = 0, Secondary = 1 };

    CKwUIMaterialOrientation();
    ~CKwUIMaterialOrientation() override;

    // The shell property a new orientation is made for (null: none).
    void SetProperty(CKwPhysicalProperty* property) { m_property = property; }
    CKwPhysicalProperty* GetProperty() const { return m_property; }

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    void Display(int on) override;
    QString GetPageTitleString() const override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;

    // Which list picks go to. For the faces, faces go to the faces and an edge is the
    // secondary geometry; for the secondary geometry, the last edge or face picked is.
    void SetPickTarget(Target target) { m_target = target; }
    Target GetPickTarget() const { return m_target; }
    void OnSelected(QList<CKwUIEntity*>* entities) override;
    // Drops leave the list of the pick target.
    void OnDeselected(QList<CKwUIEntity*>* entities) override;
    QList<CKwUIEntity*> GetSelectedEntities() const override;

    // Whether the mesh covers the face with shell elements.
    bool HasShellMesh(const CKwUIEntity* face) const;

protected:
    std::unique_ptr<CKwMaterialOrient> CreateNewObject() override;
    QList<CKwMaterialOrient*>* GetModelList() const override;

private:
    CKwPhysicalProperty* m_property = nullptr;
    Target m_target = Faces;
    int m_badComponent = -1;
};
