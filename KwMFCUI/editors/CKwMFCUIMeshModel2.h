#pragma once
// "Mesh Settings": the element size on a fine-to-coarse scale or as a length, linear or
// parabolic elements, how each body of the model is meshed, and continuous meshing. OK stores
// the settings on the mesh; "Run" stores them, closes the editor and asks the host for a new
// mesh. Exported so that a host can open it directly. Its logic half is CKwUIMeshModel.
#include "CKwMFCUIBase.h"
#include "CKwUIMeshModel.h"
#include "KwMFCUIExport.h"

#include <memory>

class KwMeshBodyTableModel;
class QTableView;

namespace Ui {
class CKwMFCUIMeshModel2;
}

class KWMFCUI_EXPORT CKwMFCUIMeshModel2 : public CKwMFCUIBase, public CKwUIMeshModel
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7201;
    enum ControlId { LevelSlider = 7205, LengthEdit = 7208, BodyTable = 7216, RunButton = 7221 };

    CKwMFCUIMeshModel2(CFMView* view, CKwMeshModel* mesh, QWidget* parent = nullptr);
    ~CKwMFCUIMeshModel2() override;

    // "Run": stores the settings like OK and, once the editor has closed, asks the view for a
    // new mesh. Refused while the solver runs.
    void OnRun();
    QTableView* GetBodyTable() const;
    KwMeshBodyTableModel* GetBodyModel() const { return m_bodies; }

    void OnObjectDataLoaded() override;
    void SetTextToCurrentLang() override;

private:
    void syncSizeFields();

    std::unique_ptr<Ui::CKwMFCUIMeshModel2> m_ui;
    KwMeshBodyTableModel* m_bodies = nullptr;
};
