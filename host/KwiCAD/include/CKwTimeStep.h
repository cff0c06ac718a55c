#pragma once
// The time stepping of a transient analysis: consecutive intervals, each a number of steps of
// one increment, with results written every n-th step. Times are in seconds.
#include "CKwFEBase.h"

#include <QList>

class KWICAD_EXPORT CKwTimeStep : public CKwFEBase
{
public:
    struct Interval
    {
        int steps = 100;
        double increment = 0.001;
        int outputEvery = 1;
        bool operator==(const Interval&) const = default;
    };

    CKwTimeStep(int id = 1, const QString& name = QStringLiteral("Time Step"))
        : CKwFEBase(id, name)
    {
    }
    QString GetTypeName() const override { return QStringLiteral("Time Step"); }

    // The time at the end of interval `row` (0 before the first, the total after the last).
    double EndTime(int row) const;
    double TotalTime() const { return EndTime(static_cast<int>(m_intervals.size()) - 1); }
    long long TotalSteps() const;

    QList<Interval> m_intervals;
};
