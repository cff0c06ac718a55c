#pragma once
// "Reverse Normals": shell normals as front and back face colours and as vectors; picked faces with shells, or shell elements, are turned round on OK. Cancel leaves the mesh as it was. Its logic half is CKwUIReverseNormals.
#include "CKwMFCUIBase.h"
#include "CKwUIReverseNormals.h"
#include "KwMFCUIExport.h"

#include <memory>

class CKwMFCNodeElemSelectionBox;

namespace Ui {
class CKwMFCUIReverseNormals;
}

class KWMFCUI_EXPORT CKwMFCUIReverseNormals : public CKwMFCUIBase, public CKwUIReverseNormals
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7011;
    // Faces (or edges), elements and groups of elements.
    static constexpr unsigned kFilter = 0x8240;

    CKwMFCUIReverseNormals(CFMView* view, CKwMeshModel* mesh, QWidget* parent = nullptr);
    ~CKwMFCUIReverseNormals() override;

    CKwMFCNodeElemSelectionBox* GetSelectionBox() const;

protected:
    bool OnInitDialog() override;
    // The list shows only what the logic took: other elements and geometry are dropped again.
    long OnEntitiesPicked(QList<CKwUIEntity*>* entities) override;

private:
    std::unique_ptr<Ui::CKwMFCUIReverseNormals> m_ui;
};
