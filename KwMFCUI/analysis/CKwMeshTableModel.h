#pragma once
// The rows of the mesh table: the nodes (ID, X, Y, Z) or the elements (ID, family, nodes,
// property) of a mesh, read straight from the mesh's own arrays. Text is made only for the
// cells a view asks for; sorting reorders a row permutation, never the mesh.
#include "KwMFCUIExport.h"

#include <QAbstractTableModel>
#include <QString>
#include <vector>

class CKwMeshModel;
class CKwFEModel;
class KW_UOM;

class KWMFCUI_EXPORT CKwMeshTableModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Contents { Nodes = 0, Elements = 1 };
    enum NodeColumn { ColumnNodeId = 0, ColumnX = 1, ColumnY = 2, ColumnZ = 3 };
    enum ElementColumn { ColumnElementId = 0, ColumnFamily = 1, ColumnNodeList = 2,
                         ColumnProperty = 3 };
    static constexpr int ColumnCount = 4;

    // `model` names the properties of the elements and may be null; `units` null shows SI.
    CKwMeshTableModel(const CKwMeshModel* mesh, const CKwFEModel* model, const KW_UOM* units,
                      QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    Contents GetContents() const { return m_contents; }
    // Switches between nodes and elements; the new rows come in mesh order.
    void SetContents(Contents contents);
    // Re-reads the mesh (its size may have changed) in mesh order.
    void Reload();
    // Heads, family and property texts in the current language and units.
    void RetranslateTexts();

    QString CellText(int row, int column) const;
    // The table row that shows the node or element of this ID, or -1.
    int RowOfId(int id) const;
    // The mesh index (into Nodes() or the elements) a table row shows.
    int MeshIndexOfRow(int row) const;
    // Decimals of a coordinate column: enough for six significant digits of the column's
    // largest magnitude in the display unit, between 0 and 9.
    int Decimals(int column) const;
    // The given rows (table rows, any order, repeats ignored) as tab-separated lines in table
    // order, headed by the column heads; an empty list copies every row.
    QString CopyText(std::vector<int> rows) const;

private:
    QString familyText(int type) const;
    const QString& propertyText(int type) const;
    double shown(double internal) const;
    void computeDecimals();

    const CKwMeshModel* m_mesh;
    const CKwFEModel* m_model;
    const KW_UOM* m_units;
    Contents m_contents = Nodes;
    int m_rows = 0;
    std::vector<int> m_order; // table row -> mesh index; empty while in mesh order
    std::vector<int> m_rowOf; // mesh index -> table row; empty while in mesh order
    int m_decimals[3] = {6, 6, 6};
    double m_largest[3] = {0, 0, 0};
    QString m_head[2][ColumnCount];
    QString m_family[5];
    QString m_property[3];
    QString m_unit;
};
