#pragma once
// The beam end release editor: picked beam elements and the six degrees of freedom released at
// end A and end B. The checks show and set the elements chosen in the list (all of them when
// none is chosen); elements picked next start with what the checks show. Its logic half is
// CKwUIEndRelease.
#include "CKwMFCUIBase.h"
#include "CKwUIEndRelease.h"
#include "KwMFCUIExport.h"

#include <memory>

class CKwMFCNodeElemSelectionBox;

namespace Ui {
class CKwMFCUIEndRelease;
}

class KWMFCUI_EXPORT CKwMFCUIEndRelease : public CKwMFCUIBase, public CKwUIEndRelease
{
    Q_OBJECT
public:
    CKwMFCUIEndRelease(CKwMeshModel* mesh, bool editExisting, CFMView* view,
                       QWidget* parent = nullptr);
    ~CKwMFCUIEndRelease() override;

    CKwMFCNodeElemSelectionBox* GetSelectionBox() const;
    // The checks as masks over TX..RZ (bit 0 = TX).
    unsigned GetEndAMask() const;
    unsigned GetEndBMask() const;

protected:
    bool OnInitDialog() override;
    long OnEntitiesPicked(QList<CKwUIEntity*>* entities) override;

private:
    void onListSelection();
    unsigned maskOf(int firstId) const;

    std::unique_ptr<Ui::CKwMFCUIEndRelease> m_ui;
};
