#pragma once
// The FE model editor: the model's concentrated masses, idealizations and surface contacts,
// each in a list with buttons to edit the chosen item, make a new one or delete one, and the
// automatic contact detection with its parameters page. An item's editor is built here
// directly (the launcher opens nothing while this editor is open); the lists follow what it
// wrote when it closes. Its logic half is CKwUIFEModel.
#include "CKwMFCDialog.h"
#include "CKwMFCUIBase.h"
#include "CKwUIFEModel.h"
#include "KwMFCUIExport.h"

#include <QAbstractTableModel>
#include <QPointer>

class QTableView;

// One of the model's lists as a table of name and type.
class KWMFCUI_EXPORT KwFEModelItemTable : public QAbstractTableModel
{
    Q_OBJECT
public:
    KwFEModelItemTable(const CKwUIFEModel* logic, int list, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    // Reads the model's list again.
    void Reload();

private:
    const CKwUIFEModel* m_logic;
    int m_list;
};

class KWMFCUI_EXPORT CKwMFCUIFEModel : public CKwMFCUIBase, public CKwUIFEModel
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 1206;
    // Per list (masses, idealizations, contacts) the ids are kGroupFirst + 10 * list + offset.
    static constexpr int kGroupFirst = 7901;
    enum Offset { GroupOffset = 0, TableOffset = 1, EditOffset = 2, NewOffset = 3,
                  DeleteOffset = 4 };
    static constexpr int kAutoGroup = 7931;
    static constexpr int kAutoCheck = 7932;
    static constexpr int kParametersButton = 7933;

    // `model`: the model to edit (null: the view's).
    CKwMFCUIFEModel(CKwFEModel* model, CFMView* view, KW_UOM* units = nullptr,
                    QWidget* parent = nullptr);
    ~CKwMFCUIFEModel() override;

    static int ControlId(int list, Offset offset) { return kGroupFirst + 10 * list + offset; }
    QTableView* GetTable(int list) const;
    // The chosen row of a list (-1: none).
    int CurrentRow(int list) const;
    void SetCurrentRow(int list, int row);
    // The item editor open now (null: none).
    CKwMFCDialog* GetItemEditor() const { return m_itemEditor.data(); }

    // The buttons' actions. Edit and New build the item's editor and return it (null: none
    // opened); Delete asks first and returns whether the item went.
    CKwMFCDialog* EditItem(int list);
    CKwMFCDialog* NewItem(int list);
    bool DeleteChosenItem(int list);
    // The automatic contact parameters page (modal); its OK writes into the edit copy.
    int OpenAutoContactParameters();
    // Reads the lists again, keeping each list's chosen item where it still exists.
    void RefreshLists();

protected:
    bool OnInitDialog() override;
    void OnReactivatedByView() override;

private:
    CKwMFCDialog* openItemEditor(int list, CKwFEBase* item);
    void itemEditorClosed();
    void syncButtons();

    KwFEModelItemTable* m_tables[ListCount] = {};
    QTableView* m_views[ListCount] = {};
    QPointer<CKwMFCDialog> m_itemEditor;
    int m_itemEditorList = -1;
    QList<const CKwFEBase*> m_itemsAtOpen; // the edited list as the item editor found it
};

// The automatic contact parameters: the tolerance within which two faces count as touching
// and the kind of contact created between them, taken together or not at all.
class KWMFCUI_EXPORT CKwMFCUIAutoContactParameters : public CKwMFCDialog
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7240;
    static constexpr int kToleranceEdit = 7942;
    static constexpr int kKindCombo = 7944;

    CKwMFCUIAutoContactParameters(CKwUIFEModel* owner, CFMView* view, const KW_UOM* units,
                                  QWidget* parent = nullptr);
    ~CKwMFCUIAutoContactParameters() override;

    void SetTextToCurrentLang() override;
    void OnOK() override;

protected:
    bool OnInitDialog() override;

private:
    CKwUIFEModel* m_owner;
    const KW_UOM* m_units;
};
