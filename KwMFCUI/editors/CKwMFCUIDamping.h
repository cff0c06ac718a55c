#pragma once
// The damping editor: name and ID, the global structural damping G in per cent, Rayleigh
// damping (ALPHA times the mass plus BETA times the stiffness) and, when switched on, modal
// damping over frequency from a frequency table, which it edits or defines in the table
// dialog. Its logic half is CKwUIDamping.
#include "CKwMFCUIBase.h"
#include "CKwUIDamping.h"
#include "KwMFCUIExport.h"

#include <memory>

class CKwTable;
class KW_UOM;

namespace Ui {
class CKwMFCUIDamping;
}

class KWMFCUI_EXPORT CKwMFCUIDamping : public CKwMFCUIBase, public CKwUIDamping
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 361;

    // A null damping edits a new one, which belongs to `analysis`.
    CKwMFCUIDamping(CKwDamping* damping, CFMView* view, KW_UOM* units,
                    CKwAnalysis* analysis = nullptr, QWidget* parent = nullptr);
    ~CKwMFCUIDamping() override;

    // "Edit Table Data...": the table dialog on the modal damping table (modal). Returns the
    // dialog's result; IDCANCEL without opening when the table is gone.
    int EditTableData();
    // "Define New Table...": a new frequency table in the table dialog, kept as the damping's
    // table on OK. Returns the new table's id, 0 when none was kept.
    int DefineNewTable();

    void OnObjectDataLoaded() override;

private:
    void syncModal();

    std::unique_ptr<Ui::CKwMFCUIDamping> m_ui;
};
