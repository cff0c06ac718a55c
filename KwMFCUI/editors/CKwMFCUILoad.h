#pragma once
// The load editor: type (grouped under headings), subtype, magnitude in the current units,
// direction, total force or force per entity, thermal values, a location picked or typed, a
// results file, time and temperature tables, subcases and display options. Its logic half is
// CKwUILoad, which owns the type list and fills and reads the controls through the control
// codes of this editor's table.
#include "CKwMFCUIBase.h"
#include "CKwUILoad.h"
#include "KwMFCUIExport.h"

#include <memory>

class CKwSubCase;
class CKwTable;
class CKwMFCNodeElemSelectionBox;
class KW_UOM;

namespace Ui {
class CKwMFCUILoad;
}

class KWMFCUI_EXPORT CKwMFCUILoad : public CKwMFCUIBase, public CKwUILoad
{
    Q_OBJECT
public:
    // The open-file filter of the results file, rows separated by '|'.
    static const char* ResultsFileFilter();

    CKwMFCUILoad(CKwLoad* load, CKwSubCase* subcase, int option, CFMView* view,
                 KW_UOM* units = nullptr, CKwAnalysis* analysis = nullptr,
                 QWidget* parent = nullptr);
    ~CKwMFCUILoad() override;

    CKwMFCNodeElemSelectionBox* GetSelectionBox() const;
    CKwMFCNodeElemSelectionBox* GetLocationBox() const;
    bool IsAdvancedShown() const;
    // The " <<" button: hides or shows the advanced part.
    void ToggleAdvancedOptions();
    // Opens the results-file dialog and takes the chosen file.
    void BrowseResultsFile();
    // "Edit Table Data": the table dialog on the load's time or temperature table
    // (KwTableLookup::Use); true when it ended with OK. A table deleted meanwhile is reported.
    bool EditTableData(int use);

    void OnObjectDataLoaded() override;
    void SetTextToCurrentLang() override;

protected:
    bool OnInitDialog() override;
    int OnTypeRowChosen(int row) override;
    void OnTypeChanged(int type) override;

private:
    // The advisories of a type about to be chosen; the choice stands.
    void adviseOn(int type);
    void showOpeningPrompt();
    void showTypeExtras();
    // The panels of "Load Definition" are grids of their own: their labels get one width, so
    // that the fields of every shown panel start at the same x.
    void alignSpecColumns();
    void onSubtype(int row);
    void onTableRow(int use, int row);
    // "Define New Table" and the combo's "New Table": the id of the table kept, 0 on cancel.
    int defineNewTable(int use);
    void onLocationMode();

    std::unique_ptr<Ui::CKwMFCUILoad> m_ui;
    bool m_openingPrompt = false;
};
