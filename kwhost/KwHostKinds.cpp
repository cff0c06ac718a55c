#include "KwHostKinds.h"
#include "KwHostText.h"

#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwLoad.h"
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
    return KwHostText(QStringLiteral("Menu") + group, group);
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
        r.object = model->m_mesh ? static_cast<CKwFEBase*>(model->m_mesh) : nullptr;
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
    case 70: {
        // The warning lists IDs that name no entity; show a typical list.
        static const QList<int> missing = {104, 2071, 9999};
        r.object = const_cast<QList<int>*>(&missing);
        break;
    }
    default:
        r.analysis = withResults;
        break;
    }
    return r;
}
