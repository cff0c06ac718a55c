#pragma once
// The subcase editor: name and ID, the loads and constraints of the model that are in the
// subcase (two lists with their types, each with a chooser to add and a button to remove),
// the thermal switch, and the subcase's nonlinear parameters. Its logic half is CKwUISubcase.
#include "CKwMFCUIBase.h"
#include "CKwUISubcase.h"
#include "KwMFCUIExport.h"

#include <memory>

class KW_UOM;
class QComboBox;
class QTreeWidget;

namespace Ui {
class CKwMFCUISubcase;
}

class KWMFCUI_EXPORT CKwMFCUISubcase : public CKwMFCUIBase, public CKwUISubcase
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 357;
    enum ControlId { kName = 273, kID = 274, kThermal = 7753, kParameters = 7755,
                     kLoadList = 7761, kLoadChoices = 7762, kLoadAdd = 7763, kLoadRemove = 7764,
                     kConstraintList = 7771, kConstraintChoices = 7772, kConstraintAdd = 7773,
                     kConstraintRemove = 7774 };

    // `subcase` null: a new subcase of `analysis`; otherwise `analysis` null means the
    // subcase's own.
    CKwMFCUISubcase(CKwSubCase* subcase, CKwAnalysis* analysis, CFMView* view,
                    KW_UOM* units = nullptr, QWidget* parent = nullptr);
    ~CKwMFCUISubcase() override;

    QTreeWidget* GetList(Family family) const;
    QComboBox* GetChoices(Family family) const;
    // "Add": the chosen entity joins; "Remove": the selected rows leave.
    void OnAdd(Family family);
    void OnRemove(Family family);
    // "Nonlinear Parameters...": the parameters dialog on this editor's copy of the setup.
    void OnParameters();

    void OnMembersChanged() override;
    void SetTextToCurrentLang() override;

protected:
    bool OnInitDialog() override;

private:
    void fill(Family family);

    std::unique_ptr<Ui::CKwMFCUISubcase> m_ui;
};
