#pragma once
// The warning that lists entity IDs which do not exist and were therefore removed.
#include "CKwMFCDialog.h"
#include "KwMFCUIExport.h"

#include <QList>
#include <memory>

namespace Ui {
class CKwMsgDialog;
}

class KWMFCUI_EXPORT CKwMsgDialog : public CKwMFCDialog
{
    Q_OBJECT
public:
    explicit CKwMsgDialog(const QList<int>& ids, QWidget* parent = nullptr);
    ~CKwMsgDialog() override;
    void SetTextToCurrentLang() override;
    QStringList GetListedIDs() const;

protected:
    bool OnInitDialog() override;

private:
    std::unique_ptr<Ui::CKwMsgDialog> m_ui;
    QList<int> m_ids;
};
