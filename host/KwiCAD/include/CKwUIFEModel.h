#pragma once
// Logic of the FE model editor: the model-wide lists of concentrated masses, idealizations
// (physical properties) and surface contacts, and the automatic contact detection settings.
// The lists are the model's own: an item is edited by its own editor, which writes the model
// itself, and a deletion takes effect at once. The detection settings are an edit copy that OK
// writes into the model and Cancel drops.
#include "CKwUIBase.h"

#include <QString>

class CKwFEBase;
class CKwFEModel;
class KW_UOM;

class KWICAD_EXPORT CKwUIFEModel : public virtual CKwUIBase
{
public:
    enum List { Masses = 0, Idealizations = 1, Contacts = 2, ListCount = 3 };
    enum Field { FieldAutoContact = 1, FieldAutoContactKind = 2 };
    struct AutoContact
    {
        bool on = false;
        double tolerance = 1.0e-4; // m
        int kind = 0;              // CKwSurfaceContact::Kind
    };

    CKwUIFEModel();
    ~CKwUIFEModel() override;

    // `model`: the model to edit; null takes the view's model (none: the editor edits nothing).
    void OnCreate(CFMView* view, CKwFEModel* model);
    CKwFEModel* GetFEModel() const;
    // The tolerance is shown in these units; without them in the view's, else SI.
    void SetUnits(const KW_UOM* units) { m_units = units; }

    int ItemCount(int list) const;
    CKwFEBase* Item(int list, int row) const;
    QString ItemName(int list, int row) const;
    QString ItemType(int list, int row) const;
    // The row of `item` in its list (-1: not there).
    int RowOf(int list, const CKwFEBase* item) const;
    // Why `row` may not be deleted (empty: it may): a property other entities still name.
    QString DeleteRefusal(int list, int row) const;
    // Removes the item from the model and destroys it; false when there is none or it is
    // refused.
    bool DeleteItem(int list, int row);

    const AutoContact& GetAutoContact() const { return m_edit; }
    QString GetToleranceText() const;
    // The page's values, taken together or not at all: false with the field (0 tolerance,
    // 1 kind) and why.
    bool SetAutoContactParameters(const QString& tolerance, int kind, int* badField = nullptr,
                                  QString* why = nullptr);

    void LoadObjectData() override {}
    int ValidateObjectData();
    long OnSubmitUI() override;
    long OnCancelUI() override;
    QString GetPageTitleString() const override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;

private:
    const KW_UOM& units() const;

    CKwFEModel* m_model = nullptr;
    const KW_UOM* m_units = nullptr;
    AutoContact m_edit;
};
