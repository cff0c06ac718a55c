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
class CKwDamping;
class CKwSpectrumSetup;
class CKwSolutionFrequency;
class CKwUIEntity;

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
    // and five analyses (linear static with results, nonlinear static and nonlinear transient
    // with subcases and nonlinear setups, response spectrum, explicit dynamics).
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
    // Settings of dynamic analyses, each naming its analysis by id.
    QList<CKwDamping*> m_dampings;
    QList<CKwSpectrumSetup*> m_spectrumSetups;
    QList<CKwSolutionFrequency*> m_solutionFrequencies;

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
