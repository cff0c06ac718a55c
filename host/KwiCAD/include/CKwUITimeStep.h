#pragma once
// Logic of the time step editor: the intervals of a transient analysis as rows of texts (number
// of steps, increment, output interval) that the editor's table shows and edits, with the end
// time of each interval and the totals computed from what reads.
#include "CKwFEUIBase.h"
#include "CKwTimeStep.h"

#include <QList>
#include <array>

class CKwAnalysis;

class KWICAD_EXPORT CKwUITimeStep : public CKwFEUIBase<CKwTimeStep>
{
public:
    // Columns of a row; the last one is computed.
    enum Column { ColSteps = 0, ColIncrement = 1, ColOutputEvery = 2, ColEndTime = 3,
                  ColumnCount = 4 };
    // Control codes: the totals below the table.
    enum Code { CodeTotalTime = 1, CodeTotalSteps = 2 };

    CKwUITimeStep();
    ~CKwUITimeStep() override;

    void SetAnalysis(CKwAnalysis* analysis) { m_analysis = analysis; }
    CKwAnalysis* GetAnalysis() const override { return m_analysis; }

    // The table: texts as typed (or as filled from the stored values).
    int RowCount() const { return static_cast<int>(m_rows.size()); }
    QString CellText(int row, int column) const;
    // Takes a typed cell; a text that reads goes into the edit copy at once, one that does not
    // is kept for the user to correct and refused by validation. False for a cell that takes
    // no input (out of range, the computed column).
    bool SetCellText(int row, int column, const QString& text);
    // A new interval before `row` (at the end when out of range), a copy of its neighbour.
    void InsertRow(int row);
    void RemoveRow(int row);
    // Whether a cell's text is refused.
    bool IsCellBad(int row, int column) const;
    // The time unit label of the heads.
    QString TimeUnit() const;

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    void AddNewObjects() override;
    QString GetPageTitleString() const override;

    // The editor hears of every change to the rows (refill its table).
    virtual void OnRowsChanged() {}

protected:
    std::unique_ptr<CKwTimeStep> CreateNewObject() override;

private:
    struct Row
    {
        std::array<QString, 3> text;
        std::array<int, 3> status{};
    };
    const KW_UOM* units() const;
    QString shownText(const CKwTimeStep::Interval& in, int column) const;
    void showTotals();

    CKwAnalysis* m_analysis = nullptr;
    QList<Row> m_rows;
};
