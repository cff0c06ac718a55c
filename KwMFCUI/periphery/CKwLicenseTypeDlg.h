#pragma once
// The licence type dialog (template 7306): the licence kinds with a line each on what they
// cover, the one in use marked; the choice is kept per user. It shows where the licence comes
// from and its state, and never stops the product: licence checks are the host's business.
#include "CKwMFCDialog.h"

#include <QList>

class QButtonGroup;
class QLabel;
class QRadioButton;

class KWMFCUI_EXPORT CKwLicenseTypeDlg : public CKwMFCDialog
{
    Q_OBJECT
public:
    enum LicenseType { Evaluation = 0, Standard = 1, Professional = 2, Network = 3, TypeCount };
    enum
    {
        kTemplateId = 7306,
        IDC_GROUP_TYPE = 7307,
        IDC_RADIO_FIRST = 7310, // one per type, in the order above
        IDC_DESCRIPTION_FIRST = 7320,
        IDC_GROUP_STATUS = 7330,
        IDC_LABEL_SERVER = 7331,
        IDC_SERVER = 7332,
        IDC_LABEL_STATUS = 7333,
        IDC_STATUS = 7334,
    };

    explicit CKwLicenseTypeDlg(QWidget* parent = nullptr);

    // The licence type kept for this user; Standard when none was chosen or the kept value is
    // no type.
    static int GetStoredType();
    // The licence server kept for this user ("LicenseServer"), empty when there is none.
    static QString GetStoredServer();
    // The type the dialog shows as chosen.
    int GetChosenType() const;
    void SetChosenType(int type);

    void SetTextToCurrentLang() override;
    // Keeps the chosen type for this user, then closes.
    void OnOK() override;

private:
    QButtonGroup* m_types = nullptr;
    QList<QRadioButton*> m_radios;
    QList<QLabel*> m_descriptions;
    int m_current = Standard;
};
