#include "KwHostKinds.h"
#include "KwHostText.h"

#include "CKwAnalysis.h"
#include "CKwDynamicsSetup.h"
#include "CKwFEModel.h"
#include "CKwImpactWizard.h"
#include "CKwOptimObjective.h"
#include "CKwOptimVariable.h"
#include "CKwLoad.h"
#include "CKwConMass.h"
#include "CKwConnector.h"
#include "CKwCoordinateSystem.h"
#include "CKwMaterial.h"
#include "CKwMeshModel.h"
#include "CKwPhysicalProperty.h"
#include "CKwPlot.h"
#include "CKwRestraint.h"
#include "CKwSubCase.h"
#include "CKwModalSetup.h"
#include "CKwTimeStep.h"
#include "CKwNonlinearSetup.h"
#include "CKwTable.h"
#include "CKwXYPlot.h"
#include "CKwElementDeletion.h"
#include "CKwMaterialOrient.h"
#include "CKwMeshLocal.h"
#include "CKwSurfaceContact.h"

#include "CKwGroup.h"

#include <array>

QList<KwHostKind> KwHostKinds()
{
    const QString ed = QStringLiteral("Editors");
    const QString an = QStringLiteral("Analysis");
    const QString res = QStringLiteral("Results");
    const QString mesh = QStringLiteral("Mesh");
    const QString gen = QStringLiteral("General");
    return {
        {0, QStringLiteral("Load..."), ed},
        {0, QStringLiteral("Load (remote force)..."), ed, 1},
        {0, QStringLiteral("Load (hydrostatic)..."), ed, 2},
        {1, QStringLiteral("Constraint..."), ed},
        {2, QStringLiteral("Material..."), ed},
        {2, QStringLiteral("Material (orthotropic 3D)..."), ed, 1},
        {2, QStringLiteral("Material (hyperelastic)..."), ed, 2},
        {34, QStringLiteral("Physical Property..."), ed},
        {34, QStringLiteral("Physical Property (beam)..."), ed, 1},
        {34, QStringLiteral("Physical Property (solid)..."), ed, 2},
        {13, QStringLiteral("Concentrated Masses..."), ed},
        {14, QStringLiteral("Connector..."), ed},
        {12, QStringLiteral("Surface Contact..."), ed},
        {28, QStringLiteral("Coordinate System..."), ed},
        {6, QStringLiteral("Material Orientation..."), ed},
        {55, QStringLiteral("End Release..."), ed},
        {27, QStringLiteral("FE Model..."), ed},
        {8, QStringLiteral("Subcase..."), an},
        {15, QStringLiteral("Damping..."), an},
        {29, QStringLiteral("Time Step..."), an},
        {30, QStringLiteral("Spectrum Setup..."), an},
        {31, QStringLiteral("Solution Frequencies..."), an},
        {32, QStringLiteral("Modal Setup..."), an},
        {33, QStringLiteral("Impact Analysis..."), an},
        {52, QStringLiteral("Nonlinear Setup..."), an},
        {52, QStringLiteral("Nonlinear Setup (transient)..."), an, 1},
        {53, QStringLiteral("Nonlinear Parameters..."), an},
        {53, QStringLiteral("Nonlinear Parameters (transient)..."), an, 1},
        {54, QStringLiteral("Element Deletion..."), an},
        {56, QStringLiteral("Fatigue Setup..."), an},
        {16, QStringLiteral("Optimization Objective..."), an},
        {17, QStringLiteral("Optimization Variable..."), an},
        {4, QStringLiteral("SPC Summation Force..."), res},
        {7, QStringLiteral("Plot..."), res},
        {26, QStringLiteral("Plot (second variant)..."), res},
        {35, QStringLiteral("Plot (third variant)..."), res},
        {25, QStringLiteral("XY Plot..."), res},
        {39, QStringLiteral("XY Plot Window..."), res},
        {86, QStringLiteral("Stress Linearization..."), res},
        {89, QStringLiteral("Mesh Convergence Plot..."), res},
        {3, QStringLiteral("Mesh Control..."), mesh},
        {9, QStringLiteral("Check Mesh Quality..."), mesh},
        {21, QStringLiteral("Reverse Normals..."), mesh},
        {22, QStringLiteral("Reverse Line Element Direction..."), mesh},
        {23, QStringLiteral("Highlight Nodes..."), mesh},
        {24, QStringLiteral("Highlight Elements..."), mesh},
        {45, QStringLiteral("Highlight Elements (fixed)..."), mesh},
        {46, QStringLiteral("Highlight Nodes (fixed)..."), mesh},
        {47, QStringLiteral("Highlight Set..."), mesh},
        {48, QStringLiteral("Mesh Settings..."), mesh},
        {49, QStringLiteral("Mesh Table..."), mesh},
        {88, QStringLiteral("Mesh Convergence..."), mesh},
        {36, QStringLiteral("Table..."), gen},
        {36, QStringLiteral("Table (time curve)..."), gen, 1},
        {36, QStringLiteral("Table (temperature)..."), gen, 2},
        {36, QStringLiteral("Table (frequency)..."), gen, 3},
        {37, QStringLiteral("Tree Options..."), gen},
        {43, QStringLiteral("Report..."), gen},
        {68, QStringLiteral("Display Preferences..."), gen},
        {70, QStringLiteral("Warning (invalid IDs)..."), gen},
        {83, QStringLiteral("Message Box..."), gen},
        {85, QStringLiteral("License Type..."), gen},
        {87, QStringLiteral("Tech Preview..."), gen},
        {44, QStringLiteral("About..."), gen},
    };
}

QString KwHostKindText(const KwHostKind& k)
{
    const QString key = k.variant ? QStringLiteral("Kind%1v%2").arg(k.kind).arg(k.variant)
                                  : QStringLiteral("Kind%1").arg(k.kind);
    return KwHostText(key, k.title);
}

QString KwHostGroupText(const QString& group)
{
    // Every menu of the menu bar has its access key (Alt+letter), no two the same.
    return KwHostText(QStringLiteral("Menu") + group, QLatin1Char('&') + group);
}

DialogLaunchRequest KwMakeRequest(unsigned kind, CKwFEModel* model, CFMView* view,
                                  KW_UOM* units, bool newEntity, int variant,
                                  CKwAnalysis* current)
{
    DialogLaunchRequest r{};
    r.kind = kind;
    r.view = view;
    r.units = units;
    if (!model)
        return r;
    CKwAnalysis* withResults = model->m_analyses.isEmpty() ? nullptr : model->m_analyses.first();
    CKwAnalysis* editedFor = current ? current : withResults;
    auto firstSetup = [&](int type) -> CKwFEBase* {
        for (CKwAnalysis* a : model->m_analyses)
            if (a->GetAnalysisTypeCode() == type)
                for (CKwSubCase* s : a->GetSubCases())
                    if (s->GetNonlinearSetup())
                        return s->GetNonlinearSetup();
        return nullptr;
    };
    switch (kind) {
    case 0:
        r.object = nullptr;
        if (!newEntity)
            for (CKwLoad* l : model->m_loads)
                if (l->m_type == (variant == 1   ? CKwLoad::RemoteForce
                                  : variant == 2 ? CKwLoad::HydrostaticLoad
                                                 : CKwLoad::Force)) {
                    r.object = l;
                    break;
                }
        r.analysis = editedFor;
        break;
    case 1:
        r.object = newEntity || model->m_restraints.isEmpty() ? nullptr
                                                              : model->m_restraints.first();
        r.analysis = editedFor;
        break;
    case 2:
        r.object = nullptr;
        if (!newEntity)
            for (CKwMaterial* m : model->m_materials)
                if (m->GetMaterialType() == (variant == 1   ? CKwMaterial::Orthotropic3D
                                             : variant == 2 ? CKwMaterial::Hyperelastic
                                                            : CKwMaterial::Isotropic)) {
                    r.object = m;
                    break;
                }
        r.analysis = editedFor;
        break;
    case 9:
    case 21:
    case 22:
    case 48:
    case 49:
        r.object = model->m_mesh ? static_cast<CKwFEBase*>(model->m_mesh) : nullptr;
        break;
    case 23:
    case 24:
    case 45:
    case 46:
    case 47:
        // The highlight editor works on the model's mesh; kind 47 on the first node or
        // element set (none: nothing opens).
        r.extra = model->m_mesh ? static_cast<CKwFEBase*>(model->m_mesh) : nullptr;
        r.object = kind == 47 && !model->m_idSets.isEmpty()
                       ? static_cast<CKwFEBase*>(model->m_idSets.first())
                       : nullptr;
        break;
    case 34:
        // Variant 1: the first beam property; 2: a new one, which starts as a solid.
        r.object = nullptr;
        if (!newEntity && variant != 2)
            for (CKwPhysicalProperty* p : model->m_properties)
                if ((p->m_idealization == CKwPhysicalProperty::Beam) == (variant == 1)) {
                    r.object = static_cast<CKwFEBase*>(p);
                    break;
                }
        r.option = r.object ? static_cast<std::uint32_t>(-1)
                            : static_cast<std::uint32_t>(CKwPhysicalProperty::Solid);
        break;
    case 7:
    case 26:
        r.analysis = withResults;
        r.object = model->m_plots.isEmpty() ? nullptr : model->m_plots.first();
        break;
    case 4:
        r.analysis = withResults;
        break;
    case 35:
        r.object = model->m_plots.isEmpty() ? nullptr
                                            : static_cast<CKwFEBase*>(model->m_plots.first());
        break;
    case 8:
        r.analysis = withResults;
        r.object = withResults && !withResults->GetSubCases().isEmpty()
                       ? withResults->GetSubCases().first()
                       : nullptr;
        break;
    case 29:
    case 32:
        // The first transient (time steps) or modal analysis (modal setup), with its entity.
        r.object = nullptr;
        for (CKwAnalysis* a : model->m_analyses)
            if (a->GetAnalysisTypeCode() ==
                (kind == 29 ? CKwAnalysis::NonlinearTransient : CKwAnalysis::Modal)) {
                r.analysis = a;
                r.object = kind == 29 ? static_cast<CKwFEBase*>(a->GetTimeStep())
                                      : static_cast<CKwFEBase*>(a->GetModalSetup());
                break;
            }
        break;
    case 52:
    case 53:
        r.object = firstSetup(variant == 1 ? CKwAnalysis::NonlinearTransient
                                           : CKwAnalysis::NonlinearStatic);
        break;
    case 15:
        r.object = newEntity || model->m_dampings.isEmpty()
                       ? nullptr
                       : static_cast<CKwFEBase*>(model->m_dampings.first());
        r.analysis = r.object ? KwAnalysisOfSetup(model, static_cast<CKwFEBase*>(r.object))
                              : editedFor;
        break;
    case 30:
        r.object = newEntity || model->m_spectrumSetups.isEmpty()
                       ? nullptr
                       : static_cast<CKwFEBase*>(model->m_spectrumSetups.first());
        r.analysis = r.object ? KwAnalysisOfSetup(model, static_cast<CKwFEBase*>(r.object))
                              : editedFor;
        break;
    case 31:
        r.object = newEntity || model->m_solutionFrequencies.isEmpty()
                       ? nullptr
                       : static_cast<CKwFEBase*>(model->m_solutionFrequencies.first());
        r.analysis = r.object ? KwAnalysisOfSetup(model, static_cast<CKwFEBase*>(r.object))
                              : editedFor;
        break;
    case 36:
        // Variant n opens the first table of type n (0 general, 1 time, 2 temperature, ...).
        for (CKwTable* t : model->m_tables)
            if (t->GetTableType() == variant) {
                r.object = static_cast<CKwFEBase*>(t);
                break;
            }
        break;
    case 39:
        r.object = model->m_xyPlots.isEmpty() ? nullptr
                                              : static_cast<CKwFEBase*>(model->m_xyPlots.first());
        break;
    case 13:
    case 14:
    case 28: {
        // The model's first mass, connector or coordinate system, or a new one.
        const auto first = [&](const auto& list) -> CKwFEBase* {
            return newEntity || list.isEmpty() ? nullptr : static_cast<CKwFEBase*>(list.first());
        };
        r.object = kind == 13 ? first(model->m_conMasses)
                   : kind == 14 ? first(model->m_connectors)
                                : first(model->m_coordSystems);
        r.analysis = editedFor;
        break;
    }
    case 27:
        // The model itself.
        r.object = static_cast<CKwFEBase*>(model);
        break;
    case 55:
        // The mesh's releases, or a new release on the view's mesh.
        r.object = newEntity || !model->m_mesh ? nullptr : static_cast<CKwFEBase*>(model->m_mesh);
        break;
    case 16:
    case 17:
    case 33: {
        // The study's first objective or variable, the explicit analysis's impact; new ones
        // for the same study or analysis.
        for (CKwAnalysis* a : model->m_analyses) {
            if (kind == 33 && a->IsExplicitAnalysis()) {
                r.analysis = a;
                r.object = newEntity ? nullptr : static_cast<CKwFEBase*>(a->GetImpactWizard());
                break;
            }
            if (kind != 33 && a->GetAnalysisTypeCode() == CKwAnalysis::Optimization) {
                r.context = a;
                if (!newEntity && kind == 16 && !a->m_objectives.isEmpty())
                    r.object = static_cast<CKwFEBase*>(a->m_objectives.first());
                if (!newEntity && kind == 17 && !a->m_variables.isEmpty())
                    r.object = static_cast<CKwFEBase*>(a->m_variables.first());
                break;
            }
        }
        break;
    }
    case 56:
        // The setup dialog finds its analysis as the view's current one.
        break;
    case 70: {
        // The warning lists IDs that name no entity; show a typical list.
        static const QList<int> missing = {104, 2071, 9999};
        r.object = const_cast<QList<int>*>(&missing);
        break;
    }
    case 3:
        r.object = newEntity || model->m_meshControls.isEmpty()
                       ? nullptr
                       : static_cast<CKwFEBase*>(model->m_meshControls.first());
        break;
    case 6:
    case 54: {
        // The 101st word of `extra`: the shell property a new orientation is made for, the
        // explicit analysis a new element deletion belongs to.
        static std::array<void*, 101> words{};
        words.fill(nullptr);
        if (kind == 6) {
            for (CKwPhysicalProperty* p : model->m_properties)
                if (p->m_idealization == CKwPhysicalProperty::Shell) {
                    words[100] = static_cast<CKwFEBase*>(p);
                    break;
                }
            if (!newEntity && !model->m_materialOrients.isEmpty())
                r.object = static_cast<CKwFEBase*>(model->m_materialOrients.first());
        } else {
            for (CKwAnalysis* a : model->m_analyses)
                if (a->IsExplicitAnalysis()) {
                    words[100] = static_cast<CKwFEBase*>(a);
                    break;
                }
            if (!newEntity && !model->m_elementDeletions.isEmpty())
                r.object = static_cast<CKwFEBase*>(model->m_elementDeletions.first());
        }
        r.extra = words.data();
        break;
    }
    case 12:
        r.object = newEntity || model->m_surfaceContacts.isEmpty()
                       ? nullptr
                       : static_cast<CKwFEBase*>(model->m_surfaceContacts.first());
        r.analysis = editedFor;
        break;
    default:
        r.analysis = withResults;
        break;
    }
    return r;
}

CKwAnalysis* KwAnalysisOfSetup(const CKwFEModel* model, const CKwFEBase* setup)
{
    int id = 0;
    if (const auto* d = dynamic_cast<const CKwDamping*>(setup))
        id = d->m_analysisId;
    else if (const auto* sp = dynamic_cast<const CKwSpectrumSetup*>(setup))
        id = sp->m_analysisId;
    else if (const auto* f = dynamic_cast<const CKwSolutionFrequency*>(setup))
        id = f->m_analysisId;
    if (model)
        for (CKwAnalysis* a : model->m_analyses)
            if (a->GetID() == id)
                return a;
    return nullptr;
}
