#pragma once
// A load of the model: its type (and subtype for enforced motion and initial conditions), the
// magnitude with a direction, the entities it acts on, where it acts from (remote forces,
// rotational origins, fluid surfaces), its time and temperature tables, and its display.
// Every number is kept in internal units (SI, kelvin); unset numbers hold MissingDouble.
#include "CKwFEBase.h"

#include <QList>
#include <array>

class CKwUIEntity;

class KWICAD_EXPORT CKwLoad : public CKwFEBase
{
public:
    // Type codes. They are stored with the model and tested by the editor, so they never
    // change; the gaps are codes no load of this host uses.
    enum Type {
        Force = 0,
        Moment = 1,
        Pressure = 2,
        Gravity = 3,
        Torque = 4,
        Temperature = 5,
        HeatFlux = 6,
        EnforcedMotion = 7,
        Convection = 8,
        Radiation = 9,
        HeatPower = 10,
        RotationalForce = 13,
        FromOutput = 14,
        DistributedLoad = 16,
        RemoteForce = 17,
        BearingLoad = 18,
        PressurePulse = 19, // needs an explicit analysis
        InitialCondition = 20,
        HydrostaticLoad = 37,
    };
    enum EnforcedSubtype { EnforcedDisplacement = 0, EnforcedVelocity = 1,
                           EnforcedAcceleration = 2 };
    enum InitialSubtype { InitialVelocity = 0, InitialAngularVelocity = 1,
                          InitialAcceleration = 2, InitialAngularAcceleration = 3 };
    // How a force is shared among the picked entities.
    enum Distribution { TotalForce = 0, ForcePerEntity = 1 };
    // How a location (remote force point, rotational origin, point on the fluid surface) is
    // given.
    enum LocationMode { LocationVertexOrPoint = 0, LocationNode = 1, LocationCoordinates = 2 };

    CKwLoad(int id = 0, const QString& name = QString());
    QString GetTypeName() const override { return QStringLiteral("Load"); }

    bool IsThermal() const;
    // The picked entities of one kind (CKwUIEntity::Kind), in pick order.
    QList<CKwUIEntity*> GetEntitiesOfKind(int kind) const;
    // magnitude * direction / |direction|; MissingDouble when either is unset or the direction
    // is zero.
    double GetComponent(int axis) const;

    int m_type = Force;
    int m_subtype = 0;
    double m_magnitude;                      // internal units of the type's unit kind
    std::array<double, 3> m_direction{0, 0, -1}; // need not be of unit length
    int m_distribution = TotalForce;
    // Convection: ambient temperature (K) and coefficient; radiation: ambient temperature,
    // absorptivity and emissivity (0..1).
    double m_ambientTemperature;
    double m_convectionCoefficient;
    double m_absorptivity;
    double m_emissivity;
    int m_locationMode = LocationVertexOrPoint;
    CKwUIEntity* m_locationEntity = nullptr; // vertex, point or node; owned by the model
    std::array<double, 3> m_location;        // m, used with LocationCoordinates
    // Tables by id (0: none). The table itself belongs to the model and may be deleted while
    // the load still names it.
    bool m_timeDependent = false;
    int m_timeTableId = 0;
    bool m_temperatureDependent = false;
    int m_temperatureTableId = 0;
    QString m_resultsFile; // loads from a flow result
    QList<CKwUIEntity*> m_entities;
    QList<int> m_subcaseIds;
    unsigned m_color = 0x000000FF; // 0x00BBGGRR: red
    int m_size = 5;
    int m_density = 10;
};
