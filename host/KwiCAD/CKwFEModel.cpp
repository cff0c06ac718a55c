#include "CKwFEModel.h"

#include "CKwAnalysis.h"
#include "CKwLoad.h"
#include "CKwMaterial.h"
#include "CKwMeshModel.h"
#include "CKwNonlinearSetup.h"
#include "CKwPhysicalProperty.h"
#include "KwNumbers.h"
#include "CKwPlot.h"
#include "CKwRestraint.h"
#include "CKwSubCase.h"
#include "CKwModalSetup.h"
#include "CKwTimeStep.h"
#include "CKwTable.h"
#include "CKwXYPlot.h"
#include "CKwUIEntity.h"

CKwFEModel::CKwFEModel(int id, const QString& name) : CKwFEBase(id, name) {}

CKwFEModel::~CKwFEModel()
{
    qDeleteAll(m_xyPlots);
    qDeleteAll(m_tables);
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
    if (m_mesh && kind == CKwUIEntity::Node)
        return m_mesh->NodeEntity(id);
    if (m_mesh && kind == CKwUIEntity::Element)
        return m_mesh->ElementEntity(id);
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

    // 0.2 x 0.05 x 0.04 m block of tetrahedra with shells, beams and test tabs.
    m->m_mesh = new CKwMeshModel(1, QStringLiteral("Mesh"));
    m->m_mesh->BuildSampleBracket();

    auto* steel = new CKwMaterial(1, QStringLiteral("Steel AISI 1020"));
    steel->SetValue("EX", 2.0e11);
    steel->SetValue("NUXY", 0.29);
    steel->SetValue("DENS", 7900.0);
    steel->SetValue("SIGXY", 3.5e8);
    steel->SetValue("ALPX", 1.17e-5);
    steel->SetValue("KX", 51.9);
    auto* alu = new CKwMaterial(2, QStringLiteral("Aluminium 6061-T6"));
    alu->SetValue("EX", 6.9e10);
    alu->SetValue("NUXY", 0.33);
    alu->SetValue("DENS", 2700.0);
    alu->SetValue("SIGXY", 2.76e8);
    alu->SetValue("ALPX", 2.36e-5);
    alu->SetValue("KX", 167.0);
    // A unidirectional composite and a rubber, so that the orthotropic and hyperelastic
    // panels of the material editor have something to show.
    auto* carbon = new CKwMaterial(3, QStringLiteral("Carbon/epoxy, unidirectional"));
    carbon->SetMaterialType(CKwMaterial::Orthotropic3D);
    for (const auto& [key, value] :
         {std::pair{"E1", 1.81e11}, {"E2", 1.03e10}, {"E3", 1.03e10}, {"NUXY", 0.28},
          {"NUXZ", 0.28}, {"NUYZ", 0.49}, {"G12", 7.17e9}, {"G1Z", 7.17e9}, {"G2Z", 3.46e9},
          {"DENS", 1600.0}, {"XT", 1.5e9}, {"XC", 1.5e9}, {"YT", 4.0e7}, {"YC", 2.46e8}})
        carbon->SetValue(QString::fromLatin1(key), value);
    auto* rubber = new CKwMaterial(4, QStringLiteral("Natural rubber, 50 Shore A"));
    rubber->SetMaterialType(CKwMaterial::Hyperelastic);
    rubber->m_hyperelasticModel = CKwMaterial::MooneyRivlin;
    rubber->SetValue("DENS", 930.0);
    rubber->SetValue("D1", 1.0e-9);
    rubber->SetExtra(CKwMaterial::A10, 2.8e5);
    rubber->SetExtra(CKwMaterial::A01, 7.0e4);
    m->m_materials = {steel, alu, carbon, rubber};

    auto* shell = new CKwPhysicalProperty(1, QStringLiteral("Cover plate 3 mm"));
    shell->m_idealization = CKwPhysicalProperty::Shell;
    shell->m_materialId = 2;
    shell->m_thickness = 0.003;
    auto* beam = new CKwPhysicalProperty(2, QStringLiteral("Stiffener 20x20 box"));
    beam->m_idealization = CKwPhysicalProperty::Beam;
    beam->m_materialId = 1;
    beam->m_sectionName = QStringLiteral("Box 20x20x2");
    beam->m_sectionArea = 1.44e-4;
    beam->m_elementKind = CKwPhysicalProperty::KindBeam;
    beam->m_sectionShape = CKwPhysicalProperty::BOX;
    beam->m_dimA = {0.02, 0.02, 0.002, 0.002, MissingDouble, MissingDouble};
    m->m_properties = {shell, beam};

    auto* fixed = new CKwRestraint(1, QStringLiteral("Fixed end"));
    fixed->m_dof.fill(true);
    fixed->m_entities.append(m->FindGeometry(CKwUIEntity::Face, 5));
    fixed->m_subcaseIds = {1};
    m->m_restraints = {fixed};

    auto* force = new CKwLoad(1, QStringLiteral("Tip force"));
    force->m_type = CKwLoad::Force;
    force->m_magnitude = 1500.0;
    force->m_direction = {0, 0, -1};
    force->m_entities.append(m->FindGeometry(CKwUIEntity::Face, 6));
    force->m_subcaseIds = {1};
    auto* pressure = new CKwLoad(2, QStringLiteral("Top pressure"));
    pressure->m_type = CKwLoad::Pressure;
    pressure->m_magnitude = 2.0e5;
    pressure->m_entities.append(m->FindGeometry(CKwUIEntity::Face, 2));
    pressure->m_timeDependent = true;
    pressure->m_timeTableId = 2; // "Ramp and hold" below
    pressure->m_subcaseIds = {1};
    auto* remote = new CKwLoad(3, QStringLiteral("Bracket pull"));
    remote->m_type = CKwLoad::RemoteForce;
    remote->m_magnitude = 800.0;
    remote->m_direction = {1, 0, 0};
    remote->m_entities.append(m->FindGeometry(CKwUIEntity::Face, 6));
    remote->m_locationMode = CKwLoad::LocationCoordinates;
    remote->m_location = {0.3, 0.025, 0.02};
    remote->m_subcaseIds = {1};
    auto* convection = new CKwLoad(4, QStringLiteral("Air cooling"));
    convection->m_type = CKwLoad::Convection;
    convection->m_ambientTemperature = 293.15;
    convection->m_convectionCoefficient = 25.0;
    convection->m_entities.append(m->FindGeometry(CKwUIEntity::Face, 1));
    convection->m_subcaseIds = {2};
    auto* gravity = new CKwLoad(5, QStringLiteral("Gravity"));
    gravity->m_type = CKwLoad::Gravity;
    gravity->m_magnitude = 9.80665;
    gravity->m_direction = {0, 0, -1};
    gravity->m_subcaseIds = {1};
    auto* water = new CKwLoad(6, QStringLiteral("Water column"));
    water->m_type = CKwLoad::HydrostaticLoad;
    water->m_magnitude = 1000.0; // fluid density
    water->m_direction = {0, 0, -1};
    water->m_entities.append(m->FindGeometry(CKwUIEntity::Face, 4));
    water->m_locationEntity = m->FindGeometry(CKwUIEntity::Vertex, 5);
    water->m_subcaseIds = {1};
    m->m_loads = {force, pressure, remote, convection, gravity, water};

    auto* linear = new CKwAnalysis(1, QStringLiteral("Linear Static"), CKwAnalysis::LinearStatic);
    linear->AddSubCase(new CKwSubCase(1, QStringLiteral("Subcase 1")));
    linear->AddSubCase(new CKwSubCase(2, QStringLiteral("Subcase 2 (thermal)")));
    linear->AddResultSet(1);

    auto* nlStatic = new CKwAnalysis(2, QStringLiteral("Nonlinear Static"),
                                     CKwAnalysis::NonlinearStatic);
    auto* s1 = new CKwSubCase(1, QStringLiteral("Loading"));
    auto* setup1 = new CKwNonlinearSetup(1, QStringLiteral("Loading"));
    using NL = CKwNonlinearSetup;
    setup1->m_methodIndex = 1; // AUTO
    setup1->m_integers[NL::IntStiffnessUpdateSteps] = 5;
    setup1->m_integers[NL::IntMaxIterations] = 25;
    setup1->m_integers[NL::IntMaxDivergence] = 3;
    setup1->m_integers[NL::IntMaxUnbisecting] = 5;
    setup1->m_integers[NL::IntMaxLineSearches] = 4;
    setup1->m_integers[NL::IntMaxBisections] = 5;
    setup1->m_integers[NL::IntTerminationNode] = 81; // the loaded corner of the block
    setup1->m_convergence = {true, true, false};
    setup1->m_reals[NL::RealDisplacementTolerance] = 0.001f;
    setup1->m_reals[NL::RealLoadTolerance] = 0.001f;
    setup1->m_reals[NL::RealFractionOfStress] = 0.2f;
    setup1->m_reals[NL::RealInitialIncrement] = 0.1f;
    setup1->m_reals[NL::RealMinIncrement] = 0.01f;
    setup1->m_reals[NL::RealMaxIncrement] = 0.5f;
    setup1->m_reals[NL::RealLineSearchTolerance] = 0.5f;
    setup1->m_reals[NL::RealMaxRotation] = 10.0f;
    setup1->m_reals[NL::RealTerminationValue] = 0.005f;
    setup1->m_componentIndex = 3; // TZ
    s1->SetNonlinearSetup(setup1);
    nlStatic->AddSubCase(s1);

    auto* nlTransient = new CKwAnalysis(3, QStringLiteral("Nonlinear Transient"),
                                        CKwAnalysis::NonlinearTransient);
    auto* t1 = new CKwSubCase(1, QStringLiteral("Impact"));
    auto* setup2 = new CKwNonlinearSetup(2, QStringLiteral("Impact"));
    setup2->m_methodIndex = 1; // ADAPT; maximum iterations left to AUTO
    setup2->m_integers[NL::IntStiffnessUpdateSteps] = 2;
    setup2->m_integers[NL::IntMaxDivergence] = 3;
    setup2->m_integers[NL::IntMaxUnbisecting] = 5;
    setup2->m_integers[NL::IntMaxLineSearches] = 2;
    setup2->m_integers[NL::IntMaxBisections] = 5;
    setup2->m_integers[NL::IntSkipFactor] = 2;
    setup2->m_integers[NL::IntDominantPeriodSteps] = 50;
    setup2->m_convergence = {true, false, true};
    setup2->m_reals[NL::RealDisplacementTolerance] = 0.01f;
    setup2->m_reals[NL::RealWorkTolerance] = 1e-4f;
    setup2->m_reals[NL::RealFractionOfStress] = 0.02f;
    setup2->m_reals[NL::RealLineSearchTolerance] = 0.5f;
    setup2->m_reals[NL::RealSteppingBounds] = 0.75f;
    setup2->m_reals[NL::RealMaxTimeRatio] = 2.0f;
    setup2->m_reals[NL::RealFilterTolerance] = 0.01f;
    setup2->m_reals[NL::RealMaxRotation] = 20.0f;
    t1->SetNonlinearSetup(setup2);
    nlTransient->AddSubCase(t1);

    // A response spectrum and an explicit analysis: loads and constraints that suit only one
    // kind of analysis can be tried against each.
    auto* spectrum = new CKwAnalysis(4, QStringLiteral("Response Spectrum"),
                                     CKwAnalysis::ResponseSpectrum);
    spectrum->AddSubCase(new CKwSubCase(1, QStringLiteral("Base excitation")));
    auto* explicitDyn = new CKwAnalysis(5, QStringLiteral("Explicit Dynamics"),
                                        CKwAnalysis::ExplicitDynamics);
    explicitDyn->AddSubCase(new CKwSubCase(1, QStringLiteral("Drop")));
    // A fatigue analysis: the materials' fatigue data apply to it alone.
    auto* fatigue = new CKwAnalysis(6, QStringLiteral("Fatigue"), CKwAnalysis::Fatigue);
    fatigue->AddSubCase(new CKwSubCase(1, QStringLiteral("Load cycle")));

    for (CKwAnalysis* a : {linear, nlStatic, nlTransient, spectrum, explicitDyn, fatigue}) {
        a->SetMesh(m->m_mesh);
        m->m_analyses.append(a);
    }
    // The setups of the analyses: stepping and output of the nonlinear subcases, the thermal
    // subcase, the transient's time intervals, and a modal analysis with its modal setup.
    {
        setup1->m_increments = 20;
        setup1->m_outputEvery = 2;
        setup2->m_increments = 500;
        setup2->m_timeIncrement = 2e-4;
        setup2->m_outputEvery = 10;
        setup2->m_followerForces = true;
        linear->GetSubCases().at(1)->m_thermal = true;
        auto* steps = new CKwTimeStep();
        steps->m_intervals = {{200, 1e-4, 5}, {300, 5e-4, 10}};
        nlTransient->SetTimeStep(steps);
        auto* modal = new CKwAnalysis(static_cast<int>(m->m_analyses.size()) + 1,
                                      QStringLiteral("Modal"), CKwAnalysis::Modal);
        modal->AddSubCase(new CKwSubCase(1, QStringLiteral("Free vibration")));
        auto* modes = new CKwModalSetup();
        modes->m_modeCount = 12;
        modes->m_useBand = true;
        modes->m_lowerFrequency = 1.0;
        modes->m_upperFrequency = 2000.0;
        modal->SetModalSetup(modes);
        modal->SetMesh(m->m_mesh);
        m->m_analyses.append(modal);
    }
    auto* stress = new CKwPlot(1, QStringLiteral("Von Mises stress"), linear);
    stress->TurnPlotDisplayOn();
    m->m_plots = {stress};

    // Tables and curves, internal values (seconds, kelvin, hertz, pascal).
    auto table = [&](int id, const char* name, CKwTable::TableType type,
                     std::initializer_list<std::pair<double, double>> points) {
        auto* t = new CKwTable(id, QString::fromLatin1(name), type);
        for (const auto& p : points)
            t->AddPoint(p.first, p.second);
        m->m_tables.append(t);
    };
    table(1, "Load table", CKwTable::General, {{1, 2}, {3, 4}, {5, 4.5}});
    table(2, "Ramp and hold", CKwTable::TimeCurve, {{0, 0}, {1, 1}, {2, 1}, {3, 0.5}});
    table(3, "Yield factor vs temperature", CKwTable::TemperatureTable,
          {{293.15, 1}, {473.15, 0.9}, {673.15, 0.7}, {873.15, 0.4}});
    table(4, "Damping vs frequency", CKwTable::FrequencyTable,
          {{0, 0.02}, {100, 0.03}, {1000, 0.05}});
    table(5, "Steel stress-strain", CKwTable::StressStrainCurve,
          {{0, 0}, {0.00119, 2.5e8}, {0.01, 2.9e8}, {0.05, 3.6e8}, {0.2, 4.2e8}});
    table(6, "Half sine pulse", CKwTable::TimeCurve,
          {{0, 0}, {0.25, 0.7071}, {0.5, 1}, {0.75, 0.7071}, {1, 0}});

    auto* history = new CKwXYPlot(1, QStringLiteral("Displacement history"));
    history->m_xTitle = QStringLiteral("Time");
    history->m_xUnitType = 12;
    history->m_yTitle = QStringLiteral("Displacement");
    history->m_yUnitType = 5;
    history->AddSeries(QStringLiteral("Node 12"));
    history->AddSeries(QStringLiteral("Node 40"));
    for (int i = 0; i <= 40; ++i) {
        const double t = i * 0.05;
        history->AddValue({0, t, 0.002 * t * (1.0 - 0.3 * t)});
        history->AddValue({1, t, 0.0012 * t});
    }
    m->m_xyPlots = {history};
    return m;
}
