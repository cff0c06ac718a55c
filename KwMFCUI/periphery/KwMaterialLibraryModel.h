#pragma once
// The materials the library browser shows: every material of the library files read so far in
// one contiguous array, and the rows a filter leaves in a second one (positions into the first).
// Narrowing is a pass over the array: type, category, a property range, then a part of the
// name, cheapest test first, so that a search typed into a list of ten thousand keeps up with
// the keys.
#include "CKwMaterial.h"
#include "KwMFCUIExport.h"

#include <QAbstractTableModel>
#include <QStringList>
#include <limits>
#include <utility>
#include <vector>

class KW_UOM;

// One material of a library file.
struct KwLibraryMaterial
{
    CKwMaterial material;
    QString file;      // the file it was read from
    int position = 0;  // its place in that file
    QString folded;    // the name case-folded, for the search
    QString category;  // the file's category, else empty
};

// What the user narrows the list by. A property range holds internal values; an open side is
// NaN. A material without a value for the range's key is not in the range.
struct KwMaterialFilter
{
    int type = -1;    // CKwMaterial::Type; -1 any
    QString category; // empty: any (a category is only matched within its type when type >= 0)
    QString name;     // part of the name in any case; blanks at both ends do not count
    int key = -1;     // KwMaterialKeys index of the range; -1 no range
    double low = std::numeric_limits<double>::quiet_NaN();
    double high = std::numeric_limits<double>::quiet_NaN();
    bool operator==(const KwMaterialFilter& o) const;
};

class KWMFCUI_EXPORT KwMaterialLibraryModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { ColName = 0, ColType, ColCategory, ColValue, ColumnCount };

    explicit KwMaterialLibraryModel(QObject* parent = nullptr);

    // Appends the materials of one file; a name already listed is skipped (the first file to
    // bring a material wins). The number added.
    int AddMaterials(const QString& file, const QList<CKwMaterial>& materials);
    // Reads every material file of a folder: libraries (.kwimat) first, then single materials
    // (.svrmat), CAD libraries (.sldmat) and exchange files (.xml), each group by name. Files
    // that are refused are named in `refused` ("file: reason"). The number of materials added.
    int AddFolder(const QString& folder, QStringList* refused = nullptr);
    void Clear();

    void SetFilter(const KwMaterialFilter& filter);
    const KwMaterialFilter& GetFilter() const { return m_filter; }
    // The unit system the value column is shown in (null: SI).
    void SetUnits(const KW_UOM* units);
    // The property the value column shows: the range's key, else this one (elastic modulus).
    void SetValueKey(int key);
    int ValueKey() const;

    int TotalCount() const { return int(m_all.size()); }
    int ShownCount() const { return int(m_shown.size()); }
    const KwLibraryMaterial& At(int index) const { return m_all[std::size_t(index)]; }
    // The position in the whole list of a shown row; -1 out of range.
    int IndexOfShownRow(int row) const;
    // The shown row of a position in the whole list; -1 when the filter hides it.
    int ShownRowOf(int index) const;
    // The categories per type, types in code order and categories in the order first met; a
    // material without a category counts under its type alone.
    std::vector<std::pair<int, QStringList>> Categories() const;
    // Texts of the current language again (types, heads).
    void Relabel();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void refilter();
    bool passes(const KwLibraryMaterial& m, const QString& needle) const;

    std::vector<KwLibraryMaterial> m_all;
    std::vector<int> m_shown;
    KwMaterialFilter m_filter;
    const KW_UOM* m_units = nullptr;
    int m_valueKey = 0;
    QStringList m_typeTexts; // per type code, in the current language
};
