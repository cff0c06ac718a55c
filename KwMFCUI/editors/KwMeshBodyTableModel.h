#pragma once
// The body table of the mesh settings: one row per body of the model, its name and how it is
// meshed (as modelled, solid, shell or beam). The rows and the choices live in the editor's
// logic; the table reads and writes them there, so that the logic's edit copy is the one place
// that holds what the user chose.
#include "CKwUIMeshModel.h"

#include <QAbstractTableModel>

class KwMeshBodyTableModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { ColumnBody = 0, ColumnMeshAs = 1, ColumnCount = 2 };

    explicit KwMeshBodyTableModel(CKwUIMeshModel* logic, QObject* parent = nullptr);

    // Reads the bodies of the model again (after the logic reloaded its edit copy or the
    // language changed).
    void Reload();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    CKwUIMeshModel* m_logic;
    QList<CKwUIMeshModel::Body> m_bodies;
    QStringList m_kindNames;
};
