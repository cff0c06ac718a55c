#pragma once
// The spectrum setup editor: name and ID, the spectrum's frequency table (chosen, edited in the
// table dialog, or defined anew through "New Table" or its button), what the spectrum gives,
// the direction of excitation, how the modal responses combine, the spectrum's damping ratio
// and a scale factor. Its logic half is CKwUISpectrumSetup.
#include "CKwMFCUIBase.h"
#include "CKwUISpectrumSetup.h"
#include "KwMFCUIExport.h"

#include <memory>

class CKwTable;
class KW_UOM;

namespace Ui {
class CKwMFCUISpectrumSetup;
}

class KWMFCUI_EXPORT CKwMFCUISpectrumSetup : public CKwMFCUIBase, public CKwUISpectrumSetup
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7302;

    // A null setup edits a new one, which belongs to `analysis`.
    CKwMFCUISpectrumSetup(CKwSpectrumSetup* setup, CFMView* view, KW_UOM* units,
                          CKwAnalysis* analysis = nullptr, QWidget* parent = nullptr);
    ~CKwMFCUISpectrumSetup() override;

    // "Edit Table Data...": the table dialog on the spectrum's table (modal); IDCANCEL without
    // opening when the table is gone.
    int EditTableData();
    // "Define New Table..." or the list's "New Table": a new frequency table in the table
    // dialog, the spectrum's table on OK. Returns its id, 0 when none was kept.
    int DefineNewTable();

    void OnObjectDataLoaded() override;

private:
    void syncTableButtons();

    std::unique_ptr<Ui::CKwMFCUISpectrumSetup> m_ui;
};
