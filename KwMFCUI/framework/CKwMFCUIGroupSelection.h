#pragma once
// "Include Groups": the groups of the model (the mesh's element groups and the node and
// element sets) to take into a selection list. Groups whose members the list does not take
// (nodes for a list of elements, and the other way round) are shown but cannot be chosen.
#include "CKwMFCDialog.h"
#include "KwMFCUIExport.h"

#include <QAbstractTableModel>
#include <QList>
#include <memory>
#include <vector>

class CKwFEModel;

namespace Ui {
class CKwMFCUIGroupSelection;
}

// One group of the model as the dialog lists it.
struct KwModelGroup
{
    enum Members { Nodes = 0, Elements = 1 };
    QString name;
    QString typeName;   // "Element Group", "Node Set", "Element Set" in the current language
    int members = Elements;
    const std::vector<int>* ids = nullptr; // owned by the model
};

// The model's groups in the order the dialog lists them: the mesh's element groups, then the
// node and element sets.
KWMFCUI_EXPORT QList<KwModelGroup> KwModelGroups(const CKwFEModel* model);

// The table of groups: name, type, member count; a check per group the list can take.
class KWMFCUI_EXPORT KwGroupTableModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    KwGroupTableModel(QList<KwModelGroup> groups, unsigned filter, QObject* parent = nullptr);
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    // Whether the list with this filter takes the members of the group in `row`.
    bool Takes(int row) const;
    // The rows checked, in order.
    QList<int> Checked() const;

private:
    QList<KwModelGroup> m_groups;
    unsigned m_filter;
    std::vector<char> m_checked;
};

class KWMFCUI_EXPORT CKwMFCUIGroupSelection : public CKwMFCDialog
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7260;
    // `filter`: the selection list's filter mask, which decides the groups that can be chosen.
    CKwMFCUIGroupSelection(const CKwFEModel* model, unsigned filter, QWidget* parent = nullptr);
    ~CKwMFCUIGroupSelection() override;

    KwGroupTableModel* GetTable() const { return m_table; }
    // The groups chosen (indices into KwModelGroups of the model), once OK was pressed.
    QList<int> GetChosenGroups() const { return m_chosen; }

    void OnOK() override;
    void SetTextToCurrentLang() override;

protected:
    bool OnInitDialog() override;

private:
    std::unique_ptr<Ui::CKwMFCUIGroupSelection> m_ui;
    KwGroupTableModel* m_table = nullptr;
    QList<int> m_chosen;
};
