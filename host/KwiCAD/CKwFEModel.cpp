#include "CKwFEModel.h"
#include "CKwGroup.h"
#include "KwIdRanges.h"
#include "CKwFatigueSetup.h"
#include "CKwImpactWizard.h"
#include "CKwOptimObjective.h"
#include "CKwOptimVariable.h"

#include "CKwAnalysis.h"
#include "CKwConMass.h"
#include "CKwConnector.h"
#include "CKwCoordinateSystem.h"
#include "CKwDynamicsSetup.h"
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
#include "CKwElementDeletion.h"
#include "CKwMaterialOrient.h"
#include "CKwMeshLocal.h"
#include "CKwSurfaceContact.h"

CKwFEModel::CKwFEModel(int id, const QString& name) : CKwFEBase(id, name) {}

CKwFEModel::~CKwFEModel()
{
    qDeleteAll(m_coordSystems);
    qDeleteAll(m_idSets);
    qDeleteAll(m_connectors);
    qDeleteAll(m_conMasses);
    qDeleteAll(m_surfaceContacts);
    qDeleteAll(m_elementDeletions);
    qDeleteAll(m_materialOrients);
    qDeleteAll(m_meshControls);
    qDeleteAll(m_solutionFrequencies);
    qDeleteAll(m_spectrumSetups);
    qDeleteAll(m_dampings);
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
    // A node set to open from the tree: every third node of the first row.
    {
        auto* set = new CKwGroup(1, QStringLiteral("Corner Nodes"));
        set->m_mode = CKwGroup::Nodes;
        const KwIdRanges::Parsed list = KwIdRanges::Parse(u"1-9 by 4");
        CKwMeshModel* mesh = m->m_mesh;
        set->m_idList = KwIdRanges::Format(list);
        set->m_ids = KwIdRanges::Resolve(list, [mesh](int id) { return mesh->HasNode(id); }, {}).ids;
        m->m_idSets.append(set);
    }

    auto* steel = new CKwMaterial(1, QStringLiteral("Steel AISI 1020"));
    steel->SetValue("EX", 2.0e11);
    steel->SetValue("NUXY", 0.29);
    steel->SetValue("DENS", 7900.0);
    steel->SetValue("SIGXY", 3.5e8);
    steel->SetValue("ALPX", 1.17e-5);
    steel->SetValue("KX", 51.9);
    // Its S-N curve, fully reversed, estimated from the tensile strength of 420 MPa.
    steel->m_snCurve = {{1e3, 1e4, 1e5, 1e6}, {3.78e8, 3.07e8, 2.5e8, 2.1e8}};
    steel->m_enduranceLimit = 2.1e8;
    steel->m_snSource = QStringLiteral(
        "Estimate from the tensile strength: 0.9 Su at 1e3 cycles, 0.5 Su at 1e6; R = -1");
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

    // The explicit analysis is a drop test with its impact, the fatigue analysis has its setup,
    // and an optimization study thins the cover plate within a mass objective.
    auto* drop = new CKwImpactWizard(1, QStringLiteral("Drop from 1 m"));
    drop->m_translation = {0.0, 0.0, -0.05};
    drop->m_velocity = 4.43; // about a free fall from 1 m
    drop->m_planeDistance = 0.002;
    drop->m_duration = 0.004;
    explicitDyn->SetImpactWizard(drop);
    auto* cycles = new CKwFatigueSetup(1, QStringLiteral("Fatigue setup"));
    cycles->m_cycles = 2e6;
    cycles->m_loading = CKwFatigueSetup::ZeroBased;
    cycles->m_meanStress = CKwFatigueSetup::Goodman;
    fatigue->SetFatigueSetup(cycles);
    auto* study = new CKwAnalysis(7, QStringLiteral("Optimization"), CKwAnalysis::Optimization);
    study->AddSubCase(new CKwSubCase(1, QStringLiteral("Service load")));
    auto* lightest = new CKwOptimObjective(1, QStringLiteral("Lightest cover"));
    lightest->m_goal = CKwOptimObjective::Minimize;
    lightest->m_response = CKwOptimObjective::Mass;
    study->m_objectives.append(lightest);
    auto* plate = new CKwOptimVariable(1, QStringLiteral("Cover plate thickness"));
    plate->m_propertyId = 1; // the shell "Cover plate 3 mm"
    plate->m_parameter = 0;
    plate->m_lower = 0.001;
    plate->m_upper = 0.006;
    plate->m_initial = 0.003;
    plate->m_step = 0.0005;
    study->m_variables.append(plate);

    for (CKwAnalysis* a : {linear, nlStatic, nlTransient, spectrum, explicitDyn, fatigue, study}) {
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

    // A point mass on a corner, a bolt between two edges, a cylindrical system along the
    // block and pinned ends on the stiffener's beams.
    auto* mass = new CKwConMass(1, QStringLiteral("Sensor housing"));
    mass->m_mass = 0.85;
    mass->m_inertia = {1.2e-4, 1.2e-4, 0.8e-4};
    mass->m_offset = {0, 0, 0.015};
    mass->m_entities.append(m->FindGeometry(CKwUIEntity::Vertex, 3));
    m->m_conMasses = {mass};
    auto* bolt = new CKwConnector(1, QStringLiteral("M8 bolt"));
    bolt->m_type = CKwConnector::Bolt;
    bolt->m_end1.append(m->FindGeometry(CKwUIEntity::Edge, 3));
    bolt->m_end2.append(m->FindGeometry(CKwUIEntity::Edge, 9));
    bolt->m_materialId = 1;
    bolt->m_diameter = 0.008;
    bolt->m_headDiameter = 0.013;
    bolt->m_preload = 12000.0;
    bolt->m_friction = 0.15;
    m->m_connectors = {bolt};
    auto* bore = new CKwCoordinateSystem(1, QStringLiteral("Bore axis"));
    bore->m_type = CKwCoordinateSystem::Cylindrical;
    bore->m_origin = {0, 0.025, 0.02};
    bore->m_zAxis = {1, 0, 0};
    bore->m_xAxis = {0, 1, 0};
    m->m_coordSystems = {bore};
    m->m_coordinateSystems.append(bore->GetName());
    for (int beam : {2001, 2008})
        m->m_mesh->SetEndRelease(beam, beam == 2001 ? CKwMeshModel::EndRelease{0x30, 0}
                                                    : CKwMeshModel::EndRelease{0, 0x30});
    // The cover of quadrilaterals and triangles lies on the top face.
    m->m_shellFaceIds = {2};
    // Finer elements along the loaded end's edges, and a fixed division of a top edge.
    auto* endSize = new CKwMeshLocal(1, QStringLiteral("Loaded end refinement"));
    endSize->m_elementSize = 0.002;
    endSize->m_entities << m->FindGeometry(CKwUIEntity::Face, 6)
                        << m->FindGeometry(CKwUIEntity::Edge, 2);
    auto* edgeCount = new CKwMeshLocal(2, QStringLiteral("Top edge divisions"));
    edgeCount->m_elementCount = 16;
    edgeCount->m_entities << m->FindGeometry(CKwUIEntity::Edge, 1);
    m->m_meshControls = {endSize, edgeCount};
    auto* orient = new CKwMaterialOrient(1, QStringLiteral("Cover fibre direction"));
    orient->m_method = CKwMaterialOrient::FromEdge;
    orient->m_faces << m->FindGeometry(CKwUIEntity::Face, 2);
    orient->m_edge = m->FindGeometry(CKwUIEntity::Edge, 1);
    orient->m_propertyId = shell->GetID();
    m->m_materialOrients = {orient};
    auto* deletion = new CKwElementDeletion(1, QStringLiteral("Cover failure"));
    deletion->m_analysisId = explicitDyn->GetID();
    CKwElementDeletion::PropertyCriteria cover;
    cover.propertyId = shell->GetID();
    cover.on[CKwElementDeletion::PlasticStrain] = true;
    cover.limit[CKwElementDeletion::PlasticStrain] = 0.15;
    cover.on[CKwElementDeletion::PrincipalStress] = true;
    cover.limit[CKwElementDeletion::PrincipalStress] = 3.1e8;
    deletion->m_criteria << cover;
    m->m_elementDeletions = {deletion};
    auto* contact = new CKwSurfaceContact(1, QStringLiteral("Cover on bracket"));
    contact->m_kind = CKwSurfaceContact::Separating;
    contact->m_friction = 0.15;
    contact->m_master << m->FindGeometry(CKwUIEntity::Face, 2);
    contact->m_slave << m->FindGeometry(CKwUIEntity::Face, 3);
    m->m_surfaceContacts = {contact};
    // A frequency response with its solution frequencies and damping, and the response
    // spectrum's design spectrum (pseudo-acceleration in m/s² over hertz).
    {
        auto* harmonic = new CKwAnalysis(CKwFEModel::NextId(m->m_analyses),
                                         QStringLiteral("Frequency Response"),
                                         CKwAnalysis::FrequencyResponse);
        harmonic->AddSubCase(new CKwSubCase(1, QStringLiteral("Harmonic load")));
        harmonic->SetMesh(m->m_mesh);
        m->m_analyses.append(harmonic);
        auto* frequencies = new CKwSolutionFrequency(1, QStringLiteral("Sweep 1 to 500 Hz"));
        frequencies->m_analysisId = harmonic->GetID();
        frequencies->m_method = CKwSolutionFrequency::Range;
        frequencies->m_rangeStart = 1.0;
        frequencies->m_rangeEnd = 500.0;
        frequencies->m_rangeIncrements = 50;
        frequencies->m_rangeSpacing = CKwSolutionFrequency::Logarithmic;
        frequencies->m_discrete = {10.0, 50.0, 120.0};
        m->m_solutionFrequencies.append(frequencies);
        auto* damping = new CKwDamping(1, QStringLiteral("Structural damping"));
        damping->m_analysisId = harmonic->GetID();
        damping->m_structuralG = 0.04;
        damping->m_alpha = 0.5;
        damping->m_beta = 2.0e-5;
        damping->m_modal = true;
        damping->m_modalTableId = 4; // "Damping vs frequency"
        m->m_dampings.append(damping);

        const int spectrumTable = CKwFEModel::NextId(m->m_tables);
        table(spectrumTable, "Design spectrum", CKwTable::FrequencyTable,
              {{0.1, 0.8}, {0.5, 2.5}, {2.5, 9.0}, {10, 9.0}, {33, 3.9}, {100, 3.9}});
        for (CKwAnalysis* a : m->m_analyses)
            if (a->GetAnalysisTypeCode() == CKwAnalysis::ResponseSpectrum) {
                auto* spectrumSetup = new CKwSpectrumSetup(1, QStringLiteral("Horizontal X"));
                spectrumSetup->m_analysisId = a->GetID();
                spectrumSetup->m_tableId = spectrumTable;
                spectrumSetup->m_direction = CKwSpectrumSetup::X;
                spectrumSetup->m_combination = CKwSpectrumSetup::CQC;
                m->m_spectrumSetups.append(spectrumSetup);
                break;
            }
    }
    return m;
}
