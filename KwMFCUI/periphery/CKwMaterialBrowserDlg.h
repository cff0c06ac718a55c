#pragma once
// The material library browser: the materials of the shipped library and of any library file
// the user opens, by type and category (a tree on the left), narrowed by a part of the name and
// by the range of one property in the units of the analysis; two materials compared side by
// side; OK hands the chosen material to whoever opened the browser (the material editor loads
// it through its logic).
#include "CKwMFCDialog.h"
#include "KwMaterialLibraryModel.h"

#include <functional>

class KW_UOM;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;
class QTreeWidget;

class KWMFCUI_EXPORT CKwMaterialBrowserDlg : public CKwMFCDialog
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 355;
    enum ControlId {
        IDC_LABEL_LIBRARY = 3551, IDC_LIBRARY = 3552, IDC_OPEN_LIBRARY = 3553,
        IDC_CATEGORIES = 3554, IDC_LABEL_NAME = 3555, IDC_NAME = 3556, IDC_LABEL_PROPERTY = 3557,
        IDC_PROPERTY = 3558, IDC_LABEL_MINIMUM = 3559, IDC_MINIMUM = 3560, IDC_MINIMUM_UNIT = 3561,
        IDC_LABEL_MAXIMUM = 3562, IDC_MAXIMUM = 3563, IDC_MAXIMUM_UNIT = 3564, IDC_LIST = 3565,
        IDC_COUNT = 3566, IDC_COMPARE = 3567,
    };

    explicit CKwMaterialBrowserDlg(KW_UOM* units = nullptr, QWidget* parent = nullptr);
    ~CKwMaterialBrowserDlg() override;

    // The shipped library: every material file of the folder. False when it holds none.
    bool AddFolder(const QString& folder);
    // One library file; a file that is not a material library is refused with its message
    // (`showMessage`) and adds nothing. The number of materials added.
    int AddFile(const QString& path, bool showMessage = true);
    // "Open Library...": the file comes from this function when set (tests), else from the
    // standard open-file dialog.
    using FileChooser = std::function<QString()>;
    void SetFileChooser(FileChooser chooser) { m_chooser = std::move(chooser); }
    void OpenLibrary();

    // --- what the user narrows the list by ---
    // The tree's row: a type (-1 all), and a category within it (empty: the whole type).
    bool SelectCategory(int type, const QString& category = QString());
    void SetSearchText(const QString& text);
    // The property (KwMaterialKeys index) and the range as typed, in display units; an empty
    // side is open. False (the range left as it was, the field's message shown) when a side
    // is not a number or the minimum lies above the maximum.
    bool SetRange(int key, const QString& minimum, const QString& maximum);
    QString GetLastMessage() const { return m_lastMessage; }

    KwMaterialLibraryModel* GetModel() const { return m_model; }
    QTableView* GetList() const { return m_list; }
    int ShownCount() const { return m_model->ShownCount(); }
    // Chooses the row as shown now; false when there is none.
    bool ChooseShownRow(int row);
    // Both rows become the selection, for Compare.
    bool SelectShownRows(int first, int second);
    // The chosen material (its position in the whole list), -1 when none.
    int GetChosen() const;
    const KwLibraryMaterial* GetChosenMaterial() const;
    // Opens the comparison of the two selected materials; false unless two are selected.
    bool Compare();

    void SetTextToCurrentLang() override;
    void OnOK() override;

protected:
    bool OnInitDialog() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fillCategories();
    void fitColumns();
    void applyRange();
    void keepAChoice();
    void updateCount();
    void showError(const QString& label, const QString& message);
    QList<int> selectedIndices() const;

    KW_UOM* m_units;
    KwMaterialLibraryModel* m_model;
    QLabel* m_libraryLabel;
    QLabel* m_library;
    QTreeWidget* m_categories;
    QLineEdit* m_search;
    QComboBox* m_property;
    QLineEdit* m_minimum;
    QLineEdit* m_maximum;
    QLabel* m_minimumUnit;
    QLabel* m_maximumUnit;
    QTableView* m_list;
    QLabel* m_count;
    QPushButton* m_compare;
    QStringList m_files;
    QStringList m_refused; // files of a folder the readers refused, named when the browser opens
    FileChooser m_chooser;
    QString m_lastMessage;
    int m_chosen = -1;
};
