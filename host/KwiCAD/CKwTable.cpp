#include "CKwTable.h"

#include "CKwFunction.h"
#include "CKwXYPlot.h"
#include "KW_UOM.h"
#include "KwNumbers.h"

CKwFunction::CKwFunction() : m_unitType(MissingInteger) {}

void CKwFunction::Initialize()
{
    m_values.clear();
    m_unitType = MissingInteger;
}

void CKwFunction::SetSize(int n)
{
    m_values.assign(static_cast<std::size_t>(n > 0 ? n : 0), MissingDouble);
}

double CKwFunction::GetValue(int index) const
{
    if (index < 0 || index >= GetSize())
        return MissingDouble;
    return m_values[static_cast<std::size_t>(index)];
}

void CKwFunction::SetValue(int index, double value)
{
    if (index >= 0 && index < GetSize())
        m_values[static_cast<std::size_t>(index)] = value;
}

CKwTable::CKwTable(int id, const QString& name, TableType type)
    : CKwFEBase(id, name), m_type(type), m_x(new CKwFunction), m_y(new CKwFunction)
{
    m_x->SetUnitType(DefaultXUnitType(type));
    m_y->SetUnitType(DefaultYUnitType(type));
}

CKwTable::~CKwTable() = default;

QString CKwTable::GetTableTypeName(TableType type)
{
    switch (type) {
    case TimeCurve:
        return QStringLiteral("Time Curve");
    case TemperatureTable:
        return QStringLiteral("Temperature Table");
    case FrequencyTable:
        return QStringLiteral("Frequency Table");
    case StressStrainCurve:
        return QStringLiteral("Stress-Strain Curve");
    case SNCurve:
        return QStringLiteral("S-N Curve");
    case General:
        break;
    }
    return QStringLiteral("Table");
}

int CKwTable::DefaultXUnitType(TableType type)
{
    switch (type) {
    case TimeCurve:
        return KwUnitKind::Time;
    case TemperatureTable:
        return KwUnitKind::Temperature;
    case FrequencyTable:
        return KwUnitKind::Frequency;
    case StressStrainCurve:
    case SNCurve: // cycles
    case General:
        break;
    }
    return KwUnitKind::Dimensionless;
}

int CKwTable::DefaultYUnitType(TableType type)
{
    return type == StressStrainCurve || type == SNCurve ? KwUnitKind::Stress
                                                        : KwUnitKind::Dimensionless;
}

void CKwTable::SetFunctions(CKwFunction* x, CKwFunction* y)
{
    if (x)
        m_x.reset(x);
    if (y)
        m_y.reset(y);
}

int CKwTable::GetPointCount() const
{
    return m_x->GetSize() < m_y->GetSize() ? m_x->GetSize() : m_y->GetSize();
}

void CKwTable::AddPoint(double x, double y)
{
    m_x->AddValue(x);
    m_y->AddValue(y);
}

CKwXYPlot::CKwXYPlot(int id, const QString& name) : CKwFEBase(id, name) {}

int CKwXYPlot::AddSeries(const QString& name)
{
    m_series.append(Series{name, {}, {}});
    return static_cast<int>(m_series.size()) - 1;
}

bool CKwXYPlot::AddValue(const KwXYPlotValue& value)
{
    if (value.series < 0 || value.series > 4096)
        return false;
    while (value.series >= GetSeriesCount())
        AddSeries(QStringLiteral("Series %1").arg(GetSeriesCount() + 1));
    Series& s = m_series[value.series];
    s.x.push_back(value.x);
    s.y.push_back(value.y);
    return true;
}

void CKwXYPlot::ClearValues()
{
    for (Series& s : m_series) {
        s.x.clear();
        s.y.clear();
    }
}
