#pragma once
// Logic of the "Mesh Settings" editor: the element size as a level on the fine-to-coarse scale
// or as a length, linear or parabolic elements, how each body of the model is meshed, and
// continuous meshing. OK stores the settings on the mesh; Run stores them too and then asks the
// host for a new mesh. The edit copy carries the settings only: the mesh's nodes and elements
// are never copied.
#include "CKwFEUIBase.h"
#include "CKwMeshModel.h"

#include <QList>
#include <QString>
#include <QStringList>

class KWICAD_EXPORT CKwUIMeshModel : public CKwFEUIBase<CKwMeshModel>
{
public:
    enum Code { CodeLength = 1, CodeBodyCount = 2 };
    enum Field { FieldSizeLevel = 1, FieldSizeMode = 2, FieldOrder = 3, FieldContinuous = 4 };
    // FieldSizeMode: the slider's level or the typed length; FieldOrder: linear or parabolic.
    enum SizeMode { SizeByLevel = 0, SizeByLength = 1 };
    enum Order { OrderLinear = 0, OrderParabolic = 1 };
    static constexpr int kFinestLevel = 1;
    static constexpr int kCoarsestLevel = 10;

    // A body of the model as the body table lists it.
    struct Body
    {
        int id;
        QString name;
    };

    CKwUIMeshModel();
    ~CKwUIMeshModel() override;

    // Hides the family's OnCreate: the settings of `mesh` are edited on a copy of them.
    void OnCreate(CFMView* view, CKwMeshModel* mesh, CKwSubCase* subcase);

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    void UpdateEditObject() override;
    void AddNewObjects() override {}
    QString GetPageTitleString() const override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;
    long OnSubmitUI() override;

    // --- the body table ---
    // The bodies of the view's model, in model order.
    QList<Body> GetBodies() const;
    // A body left as its geometry says (a sheet as shells, a solid as solids): not listed in
    // the settings.
    static constexpr int FromGeometry = -1;
    // How a body is meshed in the edit copy: FromGeometry or a KwMeshSettings::BodyMesh.
    int GetBodyMesh(int bodyId) const;
    // False (nothing changed) for an unknown kind.
    bool SetBodyMesh(int bodyId, int kind);
    // The names of the kinds from FromGeometry on, in KwMeshSettings::BodyMesh order.
    static QStringList BodyMeshNames();

    // The settings being edited.
    const KwMeshSettings& GetEditSettings() const;

protected:
    std::unique_ptr<CKwMeshModel> CreateNewObject() override;

private:
    bool m_badLength = false;
};
