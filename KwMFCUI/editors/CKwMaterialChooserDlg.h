#pragma once
// Choosing one material of a library file: the file's materials by name and type in a list
// that a search line narrows down. OK takes the chosen material, Cancel takes none.
#include "CKwMFCDialog.h"

#include <QList>
#include <QString>

class QLabel;
class QLineEdit;
class QSortFilterProxyModel;
class QTableView;
class KwMaterialListModel;

// One material of a file as the list shows it.
struct KwMaterialEntry
{
    QString name;
    int type; // CKwMaterial::Type
};

class KWMFCUI_EXPORT CKwMaterialChooserDlg : public CKwMFCDialog
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 355;

    CKwMaterialChooserDlg(const QList<KwMaterialEntry>& materials, const QString& fileName,
                          QWidget* parent = nullptr);
    ~CKwMaterialChooserDlg() override;

    // The position in the file of the material chosen; -1 when none is.
    int GetChosen() const;
    // Narrows the list to the materials whose name or type contains `text` (any case).
    void SetSearchText(const QString& text);
    // Chooses the row of the list as it is shown now (filtered); false when there is none.
    bool ChooseShownRow(int row);
    int ShownCount() const;
    QTableView* GetList() const { return m_list; }

    void SetTextToCurrentLang() override;
    void OnOK() override;

protected:
    bool OnInitDialog() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void keepAChoice();

    KwMaterialListModel* m_model = nullptr;
    QSortFilterProxyModel* m_filter = nullptr;
    QTableView* m_list = nullptr;
    QLineEdit* m_search = nullptr;
    QLabel* m_searchLabel = nullptr;
    QLabel* m_fileLabel = nullptr;
    QString m_fileName;
    int m_chosen = -1;
};

// Shows the chooser over `parent` and returns the position of the material chosen, -1 when
// the user cancels.
KWMFCUI_EXPORT int KwChooseMaterial(QWidget* parent, const QList<KwMaterialEntry>& materials,
                                    const QString& fileName);
