#include "CKwFEModel.h"

#include "CKwAnalysis.h"
#include "CKwLoad.h"
#include "CKwMaterial.h"
#include "CKwMeshModel.h"
#include "CKwNonlinearSetup.h"
#include "CKwPhysicalProperty.h"
#include "CKwPlot.h"
#include "CKwRestraint.h"
#include "CKwSubCase.h"
#include "CKwUIEntity.h"

CKwFEModel::CKwFEModel(int id, const QString& name) : CKwFEBase(id, name) {}

CKwFEModel::~CKwFEModel()
{
    qDeleteAll(m_plots);
    qDeleteAll(m_analyses);
    qDeleteAll(m_loads);
    qDeleteAll(m_restraints);
    qDeleteAll(m_properties);
    qDeleteAll(m_materials);
    delete m_mesh;
    qDeleteAll(m_geometry);
}

CKwUIEntity* CKwFEModel::FindGeometry(int kind, int id) const
{
    for (CKwUIEntity* e : m_geometry)
        if (e->GetKind() == kind && e->GetID() == id)
            return e;
    return nullptr;
}

CKwFEModel* CKwFEModel::CreateSampleModel()
{
    auto* m = new CKwFEModel(1, QStringLiteral("Bracket"));
    m->m_coordinateSystems = {QStringLiteral("Global Rectangular"),
                              QStringLiteral("Global Cylindrical"),
                              QStringLiteral("Global Spherical")};

    // Geometry of a rectangular block part: 1 body, 6 faces, 12 edges, 8 vertices.
    m->m_geometry.append(new CKwUIEntity(CKwUIEntity::Body, 1, QStringLiteral("Bracket")));
    const char* faces[] = {"Bottom", "Top", "Front", "Back", "Left", "Right"};
    for (int i = 0; i < 6; ++i)
        m->m_geometry.append(new CKwUIEntity(
            CKwUIEntity::Face, i + 1, QStringLiteral("Face %1 (%2)").arg(i + 1).arg(faces[i])));
    for (int i = 0; i < 12; ++i)
        m->m_geometry.append(
            new CKwUIEntity(CKwUIEntity::Edge, i + 1, QStringLiteral("Edge %1").arg(i + 1)));
    for (int i = 0; i < 8; ++i)
        m->m_geometry.append(
            new CKwUIEntity(CKwUIEntity::Vertex, i + 1, QStringLiteral("Vertex %1").arg(i + 1)));

    // 0.2 x 0.05 x 0.04 m block, 8 x 2 x 2 hexahedra.
    m->m_mesh = new CKwMeshModel(1, QStringLiteral("Mesh"));
    m->m_mesh->BuildBlock(8, 2, 2, 0.2, 0.05, 0.04);

    auto* steel = new CKwMaterial(1, QStringLiteral("Steel AISI 1020"));
    steel->m_youngsModulus = 2.0e11;
    steel->m_poissonRatio = 0.29;
    steel->m_density = 7900.0;
    steel->m_yieldStress = 3.5e8;
    steel->m_thermalExpansion = 1.17e-5;
    steel->m_conductivity = 51.9;
    auto* alu = new CKwMaterial(2, QStringLiteral("Aluminium 6061-T6"));
    alu->m_youngsModulus = 6.9e10;
    alu->m_poissonRatio = 0.33;
    alu->m_density = 2700.0;
    alu->m_yieldStress = 2.76e8;
    alu->m_thermalExpansion = 2.36e-5;
    alu->m_conductivity = 167.0;
    m->m_materials = {steel, alu};

    auto* shell = new CKwPhysicalProperty(1, QStringLiteral("Cover plate 3 mm"));
    shell->m_idealization = CKwPhysicalProperty::Shell;
    shell->m_materialId = 2;
    shell->m_thickness = 0.003;
    auto* beam = new CKwPhysicalProperty(2, QStringLiteral("Stiffener 20x20 box"));
    beam->m_idealization = CKwPhysicalProperty::Beam;
    beam->m_materialId = 1;
    beam->m_sectionName = QStringLiteral("Box 20x20x2");
    beam->m_sectionArea = 1.44e-4;
    m->m_properties = {shell, beam};

    auto* fixed = new CKwRestraint(1, QStringLiteral("Fixed end"));
    fixed->m_dof.fill(true);
    fixed->m_entities.append(m->FindGeometry(CKwUIEntity::Face, 5));
    fixed->m_subcaseIds = {1};
    m->m_restraints = {fixed};

    auto* force = new CKwLoad(1, QStringLiteral("Tip force"));
    force->m_kind = CKwLoad::Force;
    force->m_value = 1500.0;
    force->m_entities.append(m->FindGeometry(CKwUIEntity::Face, 6));
    force->m_subcaseIds = {1};
    m->m_loads = {force};

    auto* linear = new CKwAnalysis(1, QStringLiteral("Linear Static"), CKwAnalysis::LinearStatic);
    linear->AddSubCase(new CKwSubCase(1, QStringLiteral("Subcase 1")));
    linear->AddSubCase(new CKwSubCase(2, QStringLiteral("Subcase 2 (thermal)")));
    linear->AddResultSet(1);

    auto* nlStatic = new CKwAnalysis(2, QStringLiteral("Nonlinear Static"),
                                     CKwAnalysis::NonlinearStatic);
    auto* s1 = new CKwSubCase(1, QStringLiteral("Loading"));
    auto* setup1 = new CKwNonlinearSetup(1, QStringLiteral("Loading"));
    setup1->m_methodIndex = 1;
    setup1->m_integers[0] = 5;    // iterations before stiffness update
    setup1->m_integers[1] = 25;   // maximum iterations
    setup1->m_integers[2] = 3;    // maximum divergence
    setup1->m_integers[3] = 5;    // maximum unbisecting
    setup1->m_integers[4] = 4;    // line searches
    setup1->m_integers[5] = 5;    // bisections
    setup1->m_convergence = {true, true, false};
    setup1->m_reals[0] = 0.001f;  // displacement tolerance
    setup1->m_reals[1] = 0.001f;  // load tolerance
    setup1->m_reals[3] = 0.2f;    // fraction of effective stress
    setup1->m_reals[4] = 0.1f;    // initial increment
    setup1->m_reals[5] = 0.01f;   // minimum increment
    setup1->m_reals[6] = 0.5f;    // maximum increment
    setup1->m_reals[7] = 0.5f;    // line search tolerance
    s1->SetNonlinearSetup(setup1);
    nlStatic->AddSubCase(s1);

    auto* nlTransient = new CKwAnalysis(3, QStringLiteral("Nonlinear Transient"),
                                        CKwAnalysis::NonlinearTransient);
    auto* t1 = new CKwSubCase(1, QStringLiteral("Impact"));
    auto* setup2 = new CKwNonlinearSetup(2, QStringLiteral("Impact"));
    setup2->m_methodIndex = 1;
    setup2->m_integers[0] = 2;
    setup2->m_integers[2] = 3;
    setup2->m_integers[3] = 5;
    setup2->m_integers[4] = 2;
    setup2->m_integers[5] = 5;
    setup2->m_integers[6] = 2;    // skip factor
    setup2->m_integers[7] = 50;   // steps for dominant period
    setup2->m_convergence = {true, false, true};
    setup2->m_reals[0] = 0.01f;
    setup2->m_reals[2] = 1e-4f;
    setup2->m_reals[3] = 0.02f;
    setup2->m_reals[7] = 0.5f;
    setup2->m_reals[8] = 0.75f;   // bounds for stepping function
    setup2->m_reals[9] = 2.0f;    // max ratio
    setup2->m_reals[10] = 0.01f;  // displacement filter tolerance
    t1->SetNonlinearSetup(setup2);
    nlTransient->AddSubCase(t1);

    for (CKwAnalysis* a : {linear, nlStatic, nlTransient}) {
        a->SetMesh(m->m_mesh);
        m->m_analyses.append(a);
    }
    auto* stress = new CKwPlot(1, QStringLiteral("Von Mises stress"), linear);
    stress->TurnPlotDisplayOn();
    m->m_plots = {stress};
    return m;
}
