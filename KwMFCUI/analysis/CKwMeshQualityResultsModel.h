#pragma once
// The failed-elements table: one row per failed element of a quality check, read straight
// from the results logic's flat records through a row order of its own (for sorting). Text is
// made only for the cells a view asks for; a failing cell answers a red background.
#include "CKwUIMeshQualityResults.h"
#include "KwMFCUIExport.h"

#include <QAbstractTableModel>
#include <QString>
#include <cstddef>
#include <vector>

class CKwMeshModel;
class KW_UOM;

class KWMFCUI_EXPORT CKwMeshQualityResultsModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { ColumnId = 0, ColumnType = 1, ColumnAspectRatio = 2, ColumnSkew = 3,
                  ColumnWarping = 4, ColumnTaper = 5, ColumnJacobian = 6, ColumnCount = 7 };
    // The raw value of a cell (internal units; NaN for a cell that does not apply).
    static constexpr int RawValueRole = Qt::UserRole + 1;
    // A triangle's aspect ratio from this size on is written "%0.3E".
    static constexpr double kTriangleExponentFrom = 1.0e4;

    CKwMeshQualityResultsModel(const CKwUIMeshQualityResults* results,
                               const CKwMeshModel* mesh, const KW_UOM* units,
                               QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    // Re-reads the results (their count may have changed) in the original order.
    void Reload();
    // Captions and element-type texts in the current language.
    void RetranslateTexts();
    // Whether a cell is coloured: its check is on and the number its text shows (in the
    // display angle unit for angles) lies beyond the limit, strictly. A collapsed element's
    // cell ("Degenerate") fails an active check. ID and type cells never are coloured.
    bool CellFails(int row, int column) const;
    // The text of a cell as the table shows it.
    QString CellText(int row, int column) const;
    // For a measure that failed its check although its rounded text does not (2.0000001
    // against 2 shows "2.000"): the full value and the limit, so that the user sees why the
    // element is listed. Empty for every other cell.
    QString CellToolTip(int row, int column) const;
    // Rows as tab-separated lines, headed by the captions; rows in table order, whatever
    // order they are given in. An empty list copies every row.
    QString CopyText(std::vector<int> rows) const;
    const CKwUIMeshQualityResults::FailedElement& RecordAt(int row) const;

    // Writes a finite measure as its cell shows it, "%0.3f" or (`exponent`) "%0.3E", the same
    // digits as QString::asprintf, at `p` (at least 352 characters before `end`); returns
    // the end of the text.
    static char* WriteValue(char* p, char* end, double v, bool exponent);
    // Room for any double in fixed notation with three decimals (309 digits at most).
    static constexpr std::size_t kValueBuffer = 352;

private:
    // A measure in the unit the cell shows (angles in the display angle unit).
    double ShownValue(const CKwUIMeshQualityResults::FailedElement& rec, int measure) const;
    static bool UsesExponent(const CKwUIMeshQualityResults::FailedElement& rec, int measure,
                             double shown);

    const CKwUIMeshQualityResults* m_results;
    const CKwMeshModel* m_mesh;
    const KW_UOM* m_units;
    std::vector<int> m_order; // table row -> record; empty while unsorted
    int m_rows = 0;
    QString m_typeText[KwMeshQuality::FamilyCount];
    QString m_caption[ColumnCount];
    QString m_degenerate;
};
