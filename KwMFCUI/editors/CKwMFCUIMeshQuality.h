#pragma once
// "Check Mesh Quality": switches the quality checks of the mesh on and off per element family
// and sets their limits, then runs the check and opens the failed-elements window with what
// it found. OK runs and closes; "Run" runs and stays open for another try. Its logic half is
// CKwUIMeshQuality.
#include "CKwMFCUIBase.h"
#include "CKwMeshQualityResultsDialog.h"
#include "CKwUIMeshQuality.h"
#include "KwMFCUIExport.h"

#include <QPointer>
#include <memory>

class KW_UOM;

namespace Ui {
class CKwMFCUIMeshQuality;
}

class KWMFCUI_EXPORT CKwMFCUIMeshQuality : public CKwMFCUIBase, public CKwUIMeshQuality
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7013;
    // Control ids of check c (as CKwMeshModel::QualityCheck): box, limit edit, unit label. The
    // first eleven checks (quadrilaterals, triangles, tetrahedra) count from the First ids,
    // those of hexahedra, wedges and pyramids from the Solid ids.
    static constexpr int kCheckBoxFirst = 7610;
    static constexpr int kLimitEditFirst = 7630;
    static constexpr int kUnitLabelFirst = 7650;
    static constexpr int kRunButton = 7670;
    static constexpr int kCheckBoxSolid = 7680;
    static constexpr int kLimitEditSolid = 7700;
    static constexpr int kUnitLabelSolid = 7720;
    static constexpr int kFirstSolidCheck = CKwMeshModel::HexAspectRatio;
    static constexpr int CheckBoxId(int c)
    {
        return c < kFirstSolidCheck ? kCheckBoxFirst + c : kCheckBoxSolid + c - kFirstSolidCheck;
    }
    static constexpr int LimitEditId(int c)
    {
        return c < kFirstSolidCheck ? kLimitEditFirst + c : kLimitEditSolid + c - kFirstSolidCheck;
    }
    static constexpr int UnitLabelId(int c)
    {
        return c < kFirstSolidCheck ? kUnitLabelFirst + c : kUnitLabelSolid + c - kFirstSolidCheck;
    }

    CKwMFCUIMeshQuality(CKwMeshModel* mesh, CFMView* view, KW_UOM* units = nullptr,
                        QWidget* parent = nullptr);
    ~CKwMFCUIMeshQuality() override;

    // "Run": checks with the limits shown and opens the results; the editor stays open.
    void OnRun();
    // The results window this editor opened last (null once closed).
    CKwMeshQualityResultsDialog* GetResultsWindow() const { return m_resultsWindow.data(); }

    void OnObjectDataLoaded() override;

protected:
    bool OnInitDialog() override;
    void OnAfterSubmit() override;

private:
    void syncLimitEdits();
    void openResults();

    std::unique_ptr<Ui::CKwMFCUIMeshQuality> m_ui;
    QPointer<CKwMeshQualityResultsDialog> m_resultsWindow;
};
