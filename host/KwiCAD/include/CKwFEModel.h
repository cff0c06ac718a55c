#pragma once
// The finite-element model: geometry to pick, the mesh, materials, properties, constraints,
// loads, analyses and plots. Owns everything it lists.
#include "CKwFEBase.h"

#include <QList>
#include <QStringList>

class CKwAnalysis;
class CKwLoad;
class CKwMaterial;
class CKwMeshModel;
class CKwPhysicalProperty;
class CKwPlot;
class CKwRestraint;
class CKwTable;
class CKwXYPlot;
class CKwMeshLocal;
class CKwMaterialOrient;
class CKwElementDeletion;
class CKwSurfaceContact;
class CKwDamping;
class CKwSpectrumSetup;
class CKwSolutionFrequency;
class CKwUIEntity;
class CKwConMass;
class CKwConnector;
class CKwCoordinateSystem;
class CKwGroup;

class KWICAD_EXPORT CKwFEModel : public CKwFEBase
{
public:
    CKwFEModel(int id = 1, const QString& name = QString());
    ~CKwFEModel() override;
    CKwFEModel(const CKwFEModel&) = delete;
    CKwFEModel& operator=(const CKwFEModel&) = delete;
    QString GetTypeName() const override { return QStringLiteral("FE Model"); }

    // The built-in sample model: a bracket part, a hexahedral mesh, two materials, a shell and
    // a beam property, a constraint, loads of several types, three tables they may depend on,
    // and analyses (linear static with results, nonlinear static and nonlinear transient
    // with subcases and nonlinear setups, response spectrum, explicit dynamics as a drop test
    // with its impact, fatigue with its setup, an optimization study with an objective and a
    // design variable).
    static CKwFEModel* CreateSampleModel();

    QList<CKwUIEntity*> m_geometry;
    CKwMeshModel* m_mesh = nullptr;
    QList<CKwMaterial*> m_materials;
    QList<CKwPhysicalProperty*> m_properties;
    QList<CKwRestraint*> m_restraints;
    QList<CKwLoad*> m_loads;
    QList<CKwAnalysis*> m_analyses;
    QList<CKwPlot*> m_plots;
    QStringList m_coordinateSystems;
    // Tables and curves (time, temperature, frequency, stress-strain, general) and XY plots.
    QList<CKwTable*> m_tables;
    QList<CKwXYPlot*> m_xyPlots;
    // Concentrated masses, connectors and the coordinate systems the user defined (their names
    // also stand in m_coordinateSystems, after the built-in ones).
    QList<CKwConMass*> m_conMasses;
    QList<CKwConnector*> m_connectors;
    QList<CKwCoordinateSystem*> m_coordSystems;
    // Mesh controls, material orientations, element deletions and surface contacts; the faces
    // (geometry ids) the mesh covers with shell elements.
    QList<CKwMeshLocal*> m_meshControls;
    QList<CKwMaterialOrient*> m_materialOrients;
    QList<CKwElementDeletion*> m_elementDeletions;
    QList<CKwSurfaceContact*> m_surfaceContacts;
    QList<int> m_shellFaceIds;
    // Settings of dynamic analyses, each naming its analysis by id.
    QList<CKwDamping*> m_dampings;
    QList<CKwSpectrumSetup*> m_spectrumSetups;
    QList<CKwSolutionFrequency*> m_solutionFrequencies;
    // Node and element sets made by highlighting ID lists.
    QList<CKwGroup*> m_idSets;

    // Automatic contact detection: whether the solver looks for touching parts itself, how
    // far apart (m) two faces may be and still touch, and the kind of contact it creates
    // (CKwSurfaceContact::Kind).
    bool m_autoContact = false;
    double m_autoContactTolerance = 1.0e-4;
    int m_autoContactKind = 0;

    CKwUIEntity* FindGeometry(int kind, int id) const;
    // The next free id among entities of one family.
    template <class T> static int NextId(const QList<T*>& list)
    {
        int id = 0;
        for (const T* e : list)
            id = e->GetID() > id ? e->GetID() : id;
        return id + 1;
    }
};
