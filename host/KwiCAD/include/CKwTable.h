#pragma once
// A table of the model: points (X, Y) kept as two functions with their unit types, named and
// numbered like every entity. The kind of table says what X is.
#include "CKwFEBase.h"

#include <memory>

class CKwFunction;

class KWICAD_EXPORT CKwTable : public CKwFEBase
{
public:
    enum TableType {
        General = 0,
        TimeCurve = 1,
        TemperatureTable = 2,
        FrequencyTable = 3,
        StressStrainCurve = 4,
        SNCurve = 5, // fatigue: stress amplitude against the cycles to failure
    };

    // Both functions are created empty with the unit types the type implies.
    CKwTable(int id = 0, const QString& name = QString(), TableType type = General);
    ~CKwTable() override;
    CKwTable(const CKwTable&) = delete;
    CKwTable& operator=(const CKwTable&) = delete;
    QString GetTypeName() const override { return QStringLiteral("Table"); }

    TableType GetTableType() const { return m_type; }
    // "Time Curve", "Temperature Table", ... in English (the tree translates).
    static QString GetTableTypeName(TableType type);
    // Unit types of the columns for a type (KwUnitKind values, -1 dimensionless).
    static int DefaultXUnitType(TableType type);
    static int DefaultYUnitType(TableType type);

    CKwFunction* GetXFunction() const { return m_x.get(); }
    CKwFunction* GetYFunction() const { return m_y.get(); }
    // Takes ownership of both; a null one leaves that column as it is.
    void SetFunctions(CKwFunction* x, CKwFunction* y);
    int GetPointCount() const;
    // Appends one internal point to both columns.
    void AddPoint(double x, double y);
    // A stress-strain table whose values are true ones (its dialog converted them).
    bool m_trueValues = false;

private:
    TableType m_type;
    std::unique_ptr<CKwFunction> m_x;
    std::unique_ptr<CKwFunction> m_y;
};
