#pragma once
// The about box: product name, version, build, Qt version and the licence notice.
#include "CKwMFCDialog.h"

#include <memory>

namespace Ui {
class CKwAboutDlg;
}

class KWMFCUI_EXPORT CKwAboutDlg : public CKwMFCDialog
{
    Q_OBJECT
public:
    explicit CKwAboutDlg(QWidget* parent = nullptr);
    ~CKwAboutDlg() override;
    void SetTextToCurrentLang() override;
    static QString BuildText();

private:
    std::unique_ptr<Ui::CKwAboutDlg> m_ui;
};
