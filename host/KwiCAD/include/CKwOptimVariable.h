#pragma once
// A design variable of an optimization study: one size of a physical property (a shell's
// thickness or a dimension of a beam's section at end A) with the range it may take, the value
// it starts from and the step the search moves it by. Values are internal (m).
#include "CKwFEBase.h"

class CKwPhysicalProperty;

class KWICAD_EXPORT CKwOptimVariable : public CKwFEBase
{
public:
    CKwOptimVariable(int id = 0, const QString& name = QString());
    ~CKwOptimVariable() override;
    QString GetTypeName() const override { return QStringLiteral("Design Variable"); }
    bool operator==(const CKwOptimVariable& o) const;

    // Whether a property has sizes a variable can vary (shells and beams), and how many: the
    // shell thickness, or the dimensions of the beam's section shape.
    static int ParameterCount(const CKwPhysicalProperty* property);
    // The property's current value of a parameter; missing when there is no such parameter.
    static double CurrentValue(const CKwPhysicalProperty* property, int parameter);

    int m_propertyId = 0;
    int m_parameter = 0; // 0: the thickness of a shell; the dimension index of a beam
    double m_lower;
    double m_upper;
    double m_initial;
    double m_step;
};
