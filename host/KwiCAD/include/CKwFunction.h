#pragma once
// A host function: a column of values with the unit type they are stored in. Tables hold two
// of them (X and Y); values are internal, a missing one holds MissingDouble.
#include "KwiCADExport.h"

#include <vector>

class KWICAD_EXPORT CKwFunction
{
public:
    CKwFunction();
    // Back to a fresh function: no values, unit type missing.
    void Initialize();
    // n values, every one missing; a negative n counts as 0.
    void SetSize(int n);
    int GetSize() const { return static_cast<int>(m_values.size()); }
    // Out-of-range indices read as missing and are not written.
    double GetValue(int index) const;
    void SetValue(int index, double value);
    void AddValue(double value) { m_values.push_back(value); }
    int GetUnitType() const { return m_unitType; }
    void SetUnitType(int unitType) { m_unitType = unitType; }
    const std::vector<double>& Values() const { return m_values; }
    CKwFunction* Clone() const { return new CKwFunction(*this); }

private:
    std::vector<double> m_values;
    int m_unitType;
};
