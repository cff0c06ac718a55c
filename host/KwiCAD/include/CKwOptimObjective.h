#pragma once
// The objective of an optimization study: what response is driven where (down, up or to a
// target) and the factor it is divided by so that several objectives weigh alike. The target
// is internal, in the response's unit.
#include "CKwFEBase.h"

class KWICAD_EXPORT CKwOptimObjective : public CKwFEBase
{
public:
    enum Goal { Minimize = 0, Maximize = 1, Target = 2 };
    enum Response { Mass = 0, Volume = 1, Displacement = 2, Stress = 3, Frequency = 4,
                    ResponseCount = 5 };

    CKwOptimObjective(int id = 0, const QString& name = QString());
    ~CKwOptimObjective() override;
    QString GetTypeName() const override { return QStringLiteral("Objective"); }
    bool operator==(const CKwOptimObjective& o) const;

    // The unit kind (KwUnitKind) of a response.
    static int UnitKindOf(int response);

    int m_goal = Minimize;
    int m_response = Mass;
    int m_mode = 1;        // Frequency: which mode
    double m_target;       // Target: missing until entered
    double m_normalization = 1.0;
};
