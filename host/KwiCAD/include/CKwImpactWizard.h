#pragma once
// The impact event of an explicit dynamics analysis (a drop test): the projectile is moved by
// its translation vector onto the target and starts with an initial velocity along that
// vector, accelerated by gravity along the same direction, for the event's duration. Values
// are internal (SI).
#include "CKwFEBase.h"

#include <array>

class KWICAD_EXPORT CKwImpactWizard : public CKwFEBase
{
public:
    // What the projectile hits.
    enum Target { TargetFace = 0, TargetRigidPlane = 1 };

    CKwImpactWizard(int id = 1, const QString& name = QString());
    ~CKwImpactWizard() override;
    QString GetTypeName() const override { return QStringLiteral("Impact"); }
    bool operator==(const CKwImpactWizard& o) const;

    // The length of the translation vector; 0 for a missing component.
    double TranslationLength() const;

    std::array<double, 3> m_translation{0.0, 0.0, -1.0}; // m
    double m_velocity = 1.0;                             // m/s, along the translation
    double m_acceleration = 9.80665;                     // m/s^2, gravity along the translation
    int m_target = TargetRigidPlane;
    int m_targetFaceId = 0;        // the picked face, TargetFace
    double m_planeDistance = 0.01; // m, gap to the rigid plane along the translation
    double m_duration = 0.005;     // s
};
