#pragma once
// The material editor: the type, the values each type uses (a table with one row per
// property key: symbol, label, value, unit; rows of the same kind for the extra values), the
// anisotropic stiffness matrix, the hyperelastic model and its constants and experimental data,
// the failure theory, the fatigue and PPFA switches, and loading a material from the database.
// Its logic half is CKwUIMaterial, which fills and reads the values through this editor's
// control codes.
#include "CKwMFCUIBase.h"
#include "CKwUIMaterial.h"
#include "KwMFCUIExport.h"
#include "KwMaterialPanels.h"
#include "KwModuleWindows.h"

#include <array>
#include <functional>
#include <memory>
#include <vector>

class QLabel;
class QLineEdit;
class QTableView;
class KwMaterialValueModel;

namespace Ui {
class CKwMFCUIMaterial;
}

class KWMFCUI_EXPORT CKwMFCUIMaterial : public CKwMFCUIBase,
                                        public CKwUIMaterial,
                                        public CKwMaterialEditorLink
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 354;
    // Control ids of the extra value rows (extra value e) and of the matrix cells (cell k).
    static constexpr int kExtraIdBase = 5400, kExtraUnitIdBase = 5450, kExtraLabelIdBase = 5500;
    static constexpr int kMatrixIdBase = 5600, kMatrixHeadIdBase = 5650;
    static constexpr int kAijTitleId = 5549;
    // The stiffness computed from the orthotropic constants (Orthotropic 3D): its group, its
    // cells (upper triangle by rows, like the matrix), its heads and the line shown when the
    // constants give no matrix.
    static constexpr int kOrthoMatrixId = 1374, kOrthoCellIdBase = 5700, kOrthoHeadIdBase = 5750;
    static constexpr int kOrthoNoteId = 5760;

    // Opens the point-table dialog of a material curve (CKwMaterial::Curve) for this editor:
    // the stress-strain curve, the five experimental data tables, the conductivity table.
    // Connected by the module that owns those dialogs; without it the buttons do nothing.
    using PointTableHook = std::function<void(CKwMFCUIMaterial* editor, int curve)>;
    static void SetPointTableHook(PointTableHook hook);

    // `analysis` is the one the material is edited for (its advisories and switch messages);
    // without one the model's first analysis is taken.
    CKwMFCUIMaterial(CFMView* view, KW_UOM* units, CKwMaterial* material,
                     QWidget* parent = nullptr, CKwAnalysis* analysis = nullptr);
    ~CKwMFCUIMaterial() override;

    // A hidden launch request on the open editor.
    void SetFailureTheorySetting(unsigned option) override;
    void RefreshFromHost() override;

    void OnObjectDataLoaded() override;
    void OpenPointTable(int curve);
    // The S-N curve dialog (fatigue data) on the edit copy; true when it ended with OK.
    bool OpenSNCurve();
    // The 3D orthotropic definition (template 305) on the edit copy, for Orthotropic 3D; true
    // when it ended with OK (the values shown are then refilled).
    bool OpenOrthotropic3DDefinition();
    // "Load Material..." (own files only) picks a file in the database folder
    // (KwLoadMaterialFromDB); "Load from Library..." opens the library browser
    // (KwBrowseMaterialLibrary).
    bool LoadMaterialFromDB(bool ownFilesOnly);
    // Whether the value row of a property key / extra value is shown for the current type.
    bool IsKeyShown(int key) const;
    // The property values stand in one table (symbol, label, value, unit per row); these read
    // and type a key's value as the user sees it.
    QString KeyValueText(int key) const;
    void SetKeyValueText(int key, const QString& text);
    QTableView* GetValueTable() const { return m_valueView; }
    bool IsExtraShown(int extra) const;

    int SetControlText(int code, const QString& text) override;
    int GetControlText(int code, QString& text) override;
    int SetControlToolTip(int code, const QString& text) override;

protected:
    bool OnInitDialog() override;
    void SetTextToCurrentLang() override;
    void OnTypeChanged(int type) override;
    void OnTypeLeaving(int oldType) override;
    int WidthForType(int type) const override;

private:
    void showRowsOfType(int type);
    // The type list's rows follow GetListedTypes.
    void syncTypeItems();
    static bool hasStressStrainCurve(int type);
    static bool hasConductivityTable(int type);
    // Rows of the list of extra values below the table for a type, and the list's height.
    static int extraListRows(int type);
    int extraListHeight(int rows) const;
    int spacingOr(int layoutSpacing) const;
    // The panel the anisotropic matrix takes, also before it is made.
    int matrixPanelHeight() const;
    // The height a type's own panels take (hyperelastic group, matrix, extra values, table
    // buttons), also before they are made.
    int heightOfTypePanels(int type) const;
    // The unit column as wide as the widest unit shown.
    void fitUnitColumn();
    int extraUnitWidth() const;
    int textMarginOfTable() const;
    // The read-only stiffness of Orthotropic 3D: made when the type is first shown, refilled
    // from the constants as the table shows them.
    void makeOrthotropicMatrix();
    void showOrthotropicStiffness();
    void onFatigue(bool on);
    void onPPFA(bool on);

    std::array<QWidget*, 4> makeRow(int gridRow, const QString& symbol, const QString& label,
                                    int labelId, int editId, int unitId);
    // Makes the rows (and the matrix) a type shows that do not exist yet; true if any.
    bool ensureRows(int type);
    // The hyperelastic constants Aij as a grid (i down, j across) in the hyperelastic group;
    // the cells keep the extra values' control ids.
    void makeAijGrid();
    bool isAbsentCode(int code) const;
    bool isFreshCode(int code) const;

    std::unique_ptr<Ui::CKwMFCUIMaterial> m_ui;
    KwAijGrid m_aij;
    KwMaterialValueModel* m_values = nullptr;
    QTableView* m_valueView = nullptr;
    // Writes a value being typed in the table into it before the logic reads the table.
    void commitTypedValue() const;
    // Symbol, label, edit, unit per extra value; null until a type shows the row.
    std::vector<std::array<QWidget*, 4>> m_extraRows;
    bool m_matrixMade = false;
    QWidget* m_orthoMatrix = nullptr;
    std::array<QLineEdit*, CKwMaterial::MatrixSize> m_orthoCells{};
    QLabel* m_orthoUnit = nullptr;
    QLabel* m_orthoNote = nullptr;
    // Rows made since the last fill, and whether a fill is limited to them.
    std::vector<int> m_freshExtras;
    bool m_freshMatrix = false;
    bool m_fillingFresh = false;
};
