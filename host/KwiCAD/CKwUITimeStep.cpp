#include "CKwUITimeStep.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "KW_UOM.h"
#include "KwSetupReaders.h"
#include "KwUIText.h"

using KwUIText::err;
using KwUIText::prop;
namespace F = KwSetupReaders;

CKwUITimeStep::CKwUITimeStep() = default;
CKwUITimeStep::~CKwUITimeStep() = default;

const KW_UOM* CKwUITimeStep::units() const
{
    return m_pView ? m_pView->GetUnitHolder() : nullptr;
}

std::unique_ptr<CKwTimeStep> CKwUITimeStep::CreateNewObject()
{
    auto steps = std::make_unique<CKwTimeStep>();
    steps->m_intervals.append(CKwTimeStep::Interval{});
    return steps;
}

void CKwUITimeStep::AddNewObjects()
{
    if (!m_analysis || !m_edit)
        return;
    m_analysis->SetTimeStep(new CKwTimeStep(*m_edit));
    m_pObject = m_analysis->GetTimeStep();
}

QString CKwUITimeStep::GetPageTitleString() const
{
    return prop("TimeStep", "Title", "Time Step");
}

QString CKwUITimeStep::TimeUnit() const
{
    const KW_UOM si;
    return (units() ? units() : &si)->GetUnits(KwUnitKind::Time);
}

QString CKwUITimeStep::shownText(const CKwTimeStep::Interval& in, int column) const
{
    switch (column) {
    case ColSteps: return QString::number(in.steps);
    case ColIncrement: return KwEntityLogic::FormatShown(in.increment, KwUnitKind::Time, units());
    case ColOutputEvery: return QString::number(in.outputEvery);
    default: return QString();
    }
}

QString CKwUITimeStep::CellText(int row, int column) const
{
    if (row < 0 || row >= RowCount() || column < 0 || column >= ColumnCount)
        return QString();
    if (column != ColEndTime)
        return m_rows.at(row).text[static_cast<std::size_t>(column)];
    // An end time follows only from rows that all read.
    for (int r = 0; r <= row; ++r)
        for (int s : m_rows.at(r).status)
            if (s != F::Read)
                return QString();
    return GetEditObject() ? KwEntityLogic::FormatShown(GetEditObject()->EndTime(row),
                                                        KwUnitKind::Time, units())
                           : QString();
}

bool CKwUITimeStep::IsCellBad(int row, int column) const
{
    return row >= 0 && row < RowCount() && column >= 0 && column < ColEndTime &&
           m_rows.at(row).status[static_cast<std::size_t>(column)] != F::Read;
}

bool CKwUITimeStep::SetCellText(int row, int column, const QString& text)
{
    CKwTimeStep* t = GetEditObject();
    if (!t || row < 0 || row >= RowCount() || row >= t->m_intervals.size() || column < 0 ||
        column >= ColEndTime)
        return false;
    Row& r = m_rows[row];
    CKwTimeStep::Interval& in = t->m_intervals[row];
    const auto c = static_cast<std::size_t>(column);
    r.text[c] = text;
    // A cell left as it was filled keeps its stored value to the last bit.
    if (KwEntityLogic::ShowsUnchanged(text, shownText(in, column))) {
        r.status[c] = F::Read;
    } else {
        switch (column) {
        case ColSteps: r.status[c] = F::ReadCount(text, 1, &in.steps); break;
        case ColIncrement:
            r.status[c] = F::ReadQuantity(text, KwUnitKind::Time, units(), true, &in.increment);
            break;
        default: r.status[c] = F::ReadCount(text, 1, &in.outputEvery); break;
        }
    }
    showTotals();
    OnRowsChanged();
    return true;
}

void CKwUITimeStep::InsertRow(int row)
{
    CKwTimeStep* t = GetEditObject();
    if (!t)
        return;
    if (row < 0 || row > RowCount())
        row = RowCount();
    // The new interval continues with its neighbour's stepping, the usual next interval.
    const int from = row > 0 ? row - 1 : 0;
    const CKwTimeStep::Interval in =
        from < t->m_intervals.size() ? t->m_intervals.at(from) : CKwTimeStep::Interval{};
    t->m_intervals.insert(row, in);
    Row r;
    for (int c = 0; c < ColEndTime; ++c)
        r.text[static_cast<std::size_t>(c)] = shownText(in, c);
    m_rows.insert(row, r);
    showTotals();
    OnRowsChanged();
}

void CKwUITimeStep::RemoveRow(int row)
{
    CKwTimeStep* t = GetEditObject();
    if (!t || row < 0 || row >= RowCount())
        return;
    t->m_intervals.removeAt(row);
    m_rows.removeAt(row);
    showTotals();
    OnRowsChanged();
}

void CKwUITimeStep::LoadObjectData()
{
    const CKwTimeStep* t = GetEditObject();
    if (!t)
        return;
    m_rows.clear();
    for (const CKwTimeStep::Interval& in : t->m_intervals) {
        Row r;
        for (int c = 0; c < ColEndTime; ++c)
            r.text[static_cast<std::size_t>(c)] = shownText(in, c);
        m_rows.append(r);
    }
    showTotals();
    OnRowsChanged();
}

void CKwUITimeStep::showTotals()
{
    const CKwTimeStep* t = GetEditObject();
    bool allRead = true;
    for (const Row& r : m_rows)
        for (int s : r.status)
            allRead = allRead && s == F::Read;
    const QString unit = TimeUnit();
    SetControlText(CodeTotalTime,
                   allRead && t ? KwEntityLogic::FormatShown(t->TotalTime(), KwUnitKind::Time,
                                                             units()) +
                                      QStringLiteral(" ") + unit
                                : QString());
    SetControlText(CodeTotalSteps, allRead && t ? QString::number(t->TotalSteps()) : QString());
}

// Cells are read as they are typed; there is nothing left to move.
void CKwUITimeStep::UpdateObjectData(bool) {}

int CKwUITimeStep::ValidateObjectData()
{
    const CKwTimeStep* t = GetEditObject();
    if (!t)
        return 0;
    if (m_rows.isEmpty()) {
        ShowFieldError(GetPageTitleString(),
                       err("TimeStep", "NoInterval", "Add at least one time interval."));
        return 0;
    }
    static const char* const keys[][2] = {{"ColumnSteps", "Number of Steps"},
                                          {"ColumnIncrement", "Time Increment"},
                                          {"ColumnOutputEvery", "Output Every"}};
    for (int row = 0; row < RowCount(); ++row) {
        const auto field = [&](int c) {
            return QStringLiteral("%1 (%2 %3)")
                .arg(prop("TimeStep", keys[c][0], keys[c][1]),
                     prop("TimeStep", "LabelInterval", "Interval"))
                .arg(row + 1);
        };
        const Row& r = m_rows.at(row);
        for (int c = 0; c < ColEndTime; ++c) {
            const int s = r.status[static_cast<std::size_t>(c)];
            if (s != F::Read) {
                ShowFieldError(field(c), F::Message(F::Reason(s),
                                                    c == ColIncrement ? KwUnitKind::Time
                                                                      : KwUnitKind::Dimensionless,
                                                    units()));
                return 0;
            }
        }
        const CKwTimeStep::Interval& in = t->m_intervals.at(row);
        if (in.outputEvery > in.steps) {
            ShowFieldError(field(ColOutputEvery),
                           err("TimeStep", "OutputBeyondSteps",
                               "Enter an output interval no larger than the number of steps."));
            return 0;
        }
    }
    return 1;
}
