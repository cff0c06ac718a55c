#pragma once
// The 3D orthotropic definition: the nine elastic constants, the three expansion coefficients
// and the twelve allowables of an orthotropic solid, edited together. It works on its owner's
// material and writes back only on OK, after every value has passed.
#include "CKwMFCDialog.h"

#include <memory>
#include <vector>

class CKwMaterial;
class KW_UOM;
class QLabel;
class QLineEdit;

namespace Ui {
class CKwOrthotropic3DDlg;
}

class KWMFCUI_EXPORT CKwOrthotropic3DDlg : public CKwMFCDialog
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 305;
    // Control ids of row r (0..23, in the order of Rows()): edit, label, unit.
    static constexpr int kEditIdBase = 3051;
    static constexpr int kLabelIdBase = 3101;
    static constexpr int kUnitIdBase = 3151;

    // `units` may be null: the view's units are used, or SI without a view.
    CKwOrthotropic3DDlg(CKwMaterial* material, const KW_UOM* units, CFMView* view = nullptr,
                        QWidget* parent = nullptr);
    ~CKwOrthotropic3DDlg() override;

    // The property key indices of the rows, group by group.
    static const std::vector<int>& Rows();
    QLineEdit* Edit(int row) const;

    void SetTextToCurrentLang() override;
    void OnOK() override;

protected:
    bool OnInitDialog() override;

private:
    void showFieldError(int row, const QString& message);
    const KW_UOM* units() const;

    std::unique_ptr<Ui::CKwOrthotropic3DDlg> m_ui;
    CKwMaterial* m_material;
    const KW_UOM* m_units;
    std::vector<QLineEdit*> m_edits;
    std::vector<QLabel*> m_labels;
    std::vector<QLabel*> m_unitLabels;
};
