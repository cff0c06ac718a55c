#pragma once
// Logic of the mesh control editor: the picked vertices, points, edges or faces, and the
// local element size (display length unit) or the number of elements along each edge.
// Either may be left empty, not both; a number of elements needs edges only.
#include "CKwFEUIBase.h"
#include "CKwMeshLocal.h"

class KWICAD_EXPORT CKwUIMeshControl : public CKwFEUIBase<CKwMeshLocal>
{
public:
    enum Code { CodeName = 1, CodeID = 2, CodeSize = 5, CodeCount = 6, CodeEntities = 18 };

    CKwUIMeshControl();
    ~CKwUIMeshControl() override;

    // What a mesh control can act on; the picks of other kinds are left out.
    static bool Admits(const CKwUIEntity* entity);

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    void Display(int on) override;
    QString GetPageTitleString() const override;
    void OnSelected(QList<CKwUIEntity*>* entities) override;
    void OnDeselected(QList<CKwUIEntity*>* entities) override;
    QList<CKwUIEntity*> GetSelectedEntities() const override;

protected:
    std::unique_ptr<CKwMeshLocal> CreateNewObject() override;
    QList<CKwMeshLocal*>* GetModelList() const override;

private:
    bool m_badSize = false;
    bool m_badCount = false;
};
