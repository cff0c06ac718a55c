#pragma once
// Choice of one named beam section out of a list, shown as a tree grouped by shape.
#include "CKwMFCDialog.h"

#include <QStringList>

class QTreeWidget;

class KWMFCUI_EXPORT CKwSelectBeamSectionDialog : public CKwMFCDialog
{
    Q_OBJECT
public:
    enum ControlId { IDC_TREE = 4641, IDC_OK = 1, IDC_CANCEL = 2 };

    // names and shapes are parallel lists (a shape name per section).
    CKwSelectBeamSectionDialog(const QStringList& names, const QStringList& shapes,
                               QWidget* parent = nullptr);

    // After OK: the shape of the picked section's group and its position in the group (-1 when
    // nothing was picked).
    QString GetSelectedShape() const { return m_shape; }
    int GetSelectedPosition() const { return m_position; }
    QTreeWidget* GetTree() const { return m_tree; }

    void OnOK() override;
    void SetTextToCurrentLang() override;

protected:
    bool OnInitDialog() override;

private:
    QStringList m_names;
    QStringList m_shapes;
    QString m_shape;
    int m_position = -1;
    QTreeWidget* m_tree = nullptr;
};
