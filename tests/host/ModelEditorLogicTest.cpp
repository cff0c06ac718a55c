// The logics of the concentrated mass, connector, coordinate system and end release editors on
// their own: each over a stand-in dialog that keeps the texts of its controls, so that what a
// user types, what OK refuses with which message and what reaches the model can be checked
// without a window.
#include "CFMView.h"
#include "CKwConMass.h"
#include "CKwConnector.h"
#include "CKwCoordinateSystem.h"
#include "CKwFEModel.h"
#include "CKwMaterial.h"
#include "CKwMeshModel.h"
#include "CKwUIConMass.h"
#include "CKwUIConnector.h"
#include "CKwUICoordSystem.h"
#include "CKwUIEndRelease.h"
#include "CKwUIEntity.h"
#include "KW_UOM.h"
#include "KwTestSupport.h"

#include <QMap>
#include <cmath>
#include <gtest/gtest.h>

namespace {

// A dialog's controls as texts by control code.
template <class Logic> struct Controls : public Logic
{
    int SetControlText(int code, const QString& text) override
    {
        texts[code] = text;
        return 1;
    }
    int GetControlText(int code, QString& text) override
    {
        if (!texts.contains(code))
            return 0;
        text = texts.value(code);
        return 1;
    }
    QMap<int, QString> texts;
};

using Vec = CKwCoordinateSystem::Vec;

bool near(const Vec& a, const Vec& b)
{
    for (int k = 0; k < 3; ++k)
        if (std::fabs(a[k] - b[k]) > 1e-9)
            return false;
    return true;
}

TEST(CoordinateSystemGeometry, definitionsGiveRightHandedUnitAxesOrSayWhyNot)
{
    using CS = CKwCoordinateSystem;
    const double h = std::sqrt(0.5);
    struct Case
    {
        const char* what;
        int definition;
        Vec z, x;
        std::array<Vec, 3> points;
        CS::Problem problem;
        Vec ex{}, ez{};
    };
    const Case cases[] = {
        {"axes of any length", CS::OriginAndAxes, {0, 0, 2}, {1, 1, 0}, {}, CS::Fine,
         {h, h, 0}, {0, 0, 1}},
        {"X leaning towards Z is made perpendicular", CS::OriginAndAxes, {0, 0, 1}, {1, 0, 1},
         {}, CS::Fine, {1, 0, 0}, {0, 0, 1}},
        {"Z of zero length", CS::OriginAndAxes, {0, 0, 0}, {1, 0, 0}, {}, CS::ZeroDirection},
        {"X of zero length", CS::OriginAndAxes, {0, 0, 1}, {0, 0, 0}, {}, CS::ZeroDirection},
        {"X along Z", CS::OriginAndAxes, {0, 0, 1}, {0, 0, -3}, {}, CS::ParallelAxes},
        {"three points", CS::ThreePoints, {}, {},
         {Vec{1, 1, 1}, Vec{3, 1, 1}, Vec{1, 4, 1}}, CS::Fine, {1, 0, 0}, {0, 0, 1}},
        {"three points on a line", CS::ThreePoints, {}, {},
         {Vec{0, 0, 0}, Vec{1, 1, 1}, Vec{2, 2, 2}}, CS::CollinearPoints},
        {"origin and X point the same", CS::ThreePoints, {}, {},
         {Vec{1, 1, 1}, Vec{1, 1, 1}, Vec{0, 1, 0}}, CS::CollinearPoints},
        {"one point three times", CS::ThreePoints, {}, {},
         {Vec{2, 2, 2}, Vec{2, 2, 2}, Vec{2, 2, 2}}, CS::CollinearPoints},
        {"nearly on a line, far out", CS::ThreePoints, {}, {},
         {Vec{0, 0, 0}, Vec{1e6, 0, 0}, Vec{2e6, 1e-6, 0}}, CS::CollinearPoints},
        {"a point without a pick", CS::PickedPoint, {}, {}, {}, CS::NoPoint},
    };
    for (const Case& c : cases) {
        CS system;
        system.m_definition = c.definition;
        system.m_zAxis = c.z;
        system.m_xAxis = c.x;
        if (c.definition == CS::ThreePoints)
            system.m_points = c.points;
        Vec o{}, ex{9, 9, 9}, ey{}, ez{};
        EXPECT_EQ(system.ComputeAxes(&o, &ex, &ey, &ez), c.problem) << c.what;
        if (c.problem != CS::Fine) {
            EXPECT_TRUE(near(ex, {9, 9, 9})) << c.what << ": axes written for a refused system";
            continue;
        }
        EXPECT_TRUE(near(ex, c.ex)) << c.what;
        EXPECT_TRUE(near(ez, c.ez)) << c.what;
        // Y completes a right-handed set: X x Y = Z.
        const Vec xy = {ex[1] * ey[2] - ex[2] * ey[1], ex[2] * ey[0] - ex[0] * ey[2],
                        ex[0] * ey[1] - ex[1] * ey[0]};
        EXPECT_TRUE(near(xy, ez)) << c.what;
    }
}

TEST(BeamEndReleases, onlyBeamsTakeThemAndANothingReleaseRemovesOne)
{
    CKwMeshModel mesh;
    mesh.BuildSampleBracket();
    struct Case
    {
        int element;
        CKwMeshModel::EndRelease release;
        bool taken;
        CKwMeshModel::EndRelease stored;
    };
    const Case cases[] = {
        {2001, {0x30, 0x01}, true, {0x30, 0x01}},
        {2002, {0xFF, 0xC0}, true, {0x3F, 0}},  // bits beyond RZ are no degree of freedom
        {1, {0x01, 0}, false, {}},                // a tetrahedron
        {1001, {0x01, 0}, false, {}},             // a quadrilateral of the cover
        {99999, {0x01, 0}, false, {}},            // no such element
    };
    for (const Case& c : cases) {
        EXPECT_EQ(mesh.SetEndRelease(c.element, c.release), c.taken) << c.element;
        EXPECT_EQ(mesh.GetEndRelease(c.element), c.stored) << c.element;
    }
    EXPECT_EQ(mesh.EndReleases().size(), 2u);
    const CKwMeshModel copy(mesh);
    EXPECT_EQ(copy.GetEndRelease(2001), (CKwMeshModel::EndRelease{0x30, 0x01}));
    EXPECT_TRUE(mesh.SetEndRelease(2001, {}));
    EXPECT_EQ(mesh.EndReleases().count(2001), 0u);
    mesh.Clear();
    EXPECT_TRUE(mesh.EndReleases().empty());
}

TEST(MassMomentOfInertiaUnit, convertsBothWaysInEverySystem)
{
    constexpr double kSlinchIn2 = 4.4482216152605 / 0.0254 * 0.0254 * 0.0254; // kg m^2
    struct Case
    {
        KW_UOM::System system;
        double shownPerKgM2;
        const char* label;
    };
    const Case cases[] = {{KW_UOM::SI, 1.0, "kg·m²"},
                          {KW_UOM::MMNS, 1000.0, "t·mm²"},
                          {KW_UOM::IPS, 1.0 / kSlinchIn2, "lbf·s²·in"}};
    for (const Case& c : cases) {
        const KW_UOM units(c.system);
        EXPECT_NEAR(units.GetDisplayValue(2.0, KwUnitKind::MassMomentOfInertia),
                    2.0 * c.shownPerKgM2, 1e-9 * c.shownPerKgM2)
            << c.label;
        EXPECT_NEAR(units.ToInternalValue(units.GetDisplayValue(0.37, KwUnitKind::MassMomentOfInertia),
                                          KwUnitKind::MassMomentOfInertia),
                    0.37, 1e-12);
        EXPECT_EQ(units.GetUnits(KwUnitKind::MassMomentOfInertia), c.label);
    }
}

TEST(ConnectorPicks, whatAnEndTakesIsWhatItsFilterOffers)
{
    // The view offers what the filter admits and the logic keeps what it admits: the two must
    // agree for every kind of connector and every kind of entity.
    const CKwUIEntity::Kind kinds[] = {CKwUIEntity::Vertex, CKwUIEntity::Edge,
                                       CKwUIEntity::Face,   CKwUIEntity::Body,
                                       CKwUIEntity::Node,   CKwUIEntity::Element,
                                       CKwUIEntity::Point};
    for (int type = CKwConnector::Rod; type <= CKwConnector::Rigid; ++type)
        for (CKwUIEntity::Kind kind : kinds)
            EXPECT_EQ(CKwUIConnector::Admits(type, kind),
                      (CKwUIConnector::FilterOf(type) & CKwUIEntity::FilterBitOf(kind)) != 0)
                << "type " << type << ", kind " << kind;
}

// --- validation: one row per bad input, each refused with its own message ---

struct Refusal
{
    const char* what;
    std::function<void(QMap<int, QString>&)> edit;
    const char* message; // a part of the bubble's text
};

template <class Logic, class Entity>
void expectRefusals(kwtest::Host& host, QList<Entity*>& modelList,
                    const std::function<Entity*()>& existing, const std::vector<Refusal>& rows)
{
    for (const Refusal& r : rows) {
        Controls<Logic> logic;
        Entity* entity = existing();
        logic.SetView(host.view.get());
        logic.OnCreate(host.view.get(), entity, nullptr);
        logic.LoadObjectData();
        r.edit(logic.texts);
        const auto before = modelList.size();
        host.view->ClearBubbleRecord();
        EXPECT_EQ(logic.OnSubmitUI(), 1) << r.what << ": OK was taken";
        EXPECT_TRUE(host.view->GetLastBubbleText().contains(QString::fromUtf8(r.message)))
            << r.what << ": " << host.view->GetLastBubbleText().toStdString();
        EXPECT_EQ(modelList.size(), before) << r.what;
    }
}

TEST(ConMassLogic, eachBadFieldIsRefusedWithItsMessageAndNothingIsWritten)
{
    kwtest::Host host;
    using U = CKwUIConMass;
    CKwConMass* mass = host.model->m_conMasses.first();
    const double storedMass = mass->m_mass;
    auto text = [](int code, const char* t) {
        return [=](QMap<int, QString>& texts) { texts[code] = QString::fromUtf8(t); };
    };
    expectRefusals<U, CKwConMass>(
        host, host.model->m_conMasses, [&] { return mass; },
        {{"zero mass", text(U::CodeMass, "0"), "The mass must be greater than zero."},
         {"negative mass", text(U::CodeMass, "-0.5"), "The mass must be greater than zero."},
         {"no mass", text(U::CodeMass, " "), "Enter the mass."},
         {"mass that is no number", text(U::CodeMass, "heavy"), "heavy"},
         {"mass in another system's unit", text(U::CodeMass, "3 lbf s^2/in"), "Mass"},
         {"negative inertia", text(U::CodeInertiaFirst + 1, "-1"),
          "Enter a moment of inertia of zero or more."},
         {"offset left empty", text(U::CodeOffsetFirst + 2, ""), "Enter the offset."},
         {"no name", text(U::CodeName, "  "), "Name"}});
    EXPECT_EQ(mass->m_mass, storedMass);

    // A new mass needs its point; an automatic one is refused in this part document.
    Controls<U> fresh;
    fresh.OnCreate(host.view.get(), nullptr, nullptr);
    fresh.LoadObjectData();
    fresh.texts[U::CodeMass] = QStringLiteral("2");
    EXPECT_EQ(fresh.OnSubmitUI(), 1);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("Select the point or vertex"));
    QList<CKwUIEntity*> body = {host.model->FindGeometry(CKwUIEntity::Body, 1)};
    fresh.SetValue(U::FieldType, CKwConMass::Automatic);
    fresh.OnSelected(&body);
    EXPECT_EQ(fresh.OnSubmitUI(), 1);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("not supported in part documents"));
    EXPECT_EQ(host.model->m_conMasses.size(), 1);

    // In an assembly the same automatic mass is written.
    host.model->m_geometry.append(new CKwUIEntity(CKwUIEntity::Body, 2, QStringLiteral("Lid")));
    EXPECT_FALSE(CKwUIConMass::IsPartDocument(host.model.get()));
    EXPECT_EQ(fresh.OnSubmitUI(), 0);
    ASSERT_EQ(host.model->m_conMasses.size(), 2);
    EXPECT_EQ(host.model->m_conMasses.last()->m_type, CKwConMass::Automatic);
    EXPECT_EQ(host.model->m_conMasses.last()->m_entities, body);
}

TEST(ConMassLogic, picksOfKindsTheTypeRefusesAreToldAndLeftOut)
{
    kwtest::Host host;
    Controls<CKwUIConMass> logic;
    logic.OnCreate(host.view.get(), nullptr, nullptr);
    CKwUIEntity* vertex = host.model->FindGeometry(CKwUIEntity::Vertex, 2);
    CKwUIEntity* face = host.model->FindGeometry(CKwUIEntity::Face, 2);
    CKwUIEntity* body = host.model->FindGeometry(CKwUIEntity::Body, 1);
    QList<CKwUIEntity*> picks = {vertex, face, body, vertex, nullptr};
    logic.OnSelected(&picks);
    EXPECT_EQ(logic.GetEditObject()->m_entities, QList<CKwUIEntity*>{vertex});
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("points and vertices only"));
    EXPECT_EQ(host.view->GetHighlightedEntities(), QList<CKwUIEntity*>{vertex});
    // Another type keeps only what it takes.
    logic.SetValue(CKwUIConMass::FieldType, CKwConMass::Automatic);
    EXPECT_TRUE(logic.GetEditObject()->m_entities.isEmpty());
    EXPECT_EQ(logic.SetValue(CKwUIConMass::FieldType, 7), 0);
}

TEST(CoordSystemLogic, eachBadDefinitionIsRefusedWithItsMessage)
{
    kwtest::Host host;
    using U = CKwUICoordSystem;
    CKwCoordinateSystem* bore = host.model->m_coordSystems.first();
    auto set = [](std::initializer_list<std::pair<int, const char*>> values) {
        return [=](QMap<int, QString>& texts) {
            for (const auto& [code, t] : values)
                texts[code] = QString::fromUtf8(t);
        };
    };
    expectRefusals<U, CKwCoordinateSystem>(
        host, host.model->m_coordSystems, [&] { return bore; },
        {{"Z of zero length", set({{U::CodeZAxisFirst, "0"}, {U::CodeZAxisFirst + 1, "0"},
                                   {U::CodeZAxisFirst + 2, "0"}}),
          "A direction of zero length"},
         {"X along Z", set({{U::CodeXAxisFirst, "-2"}, {U::CodeXAxisFirst + 1, "0"}}),
          "must not lie along"},
         {"an axis left empty", set({{U::CodeXAxisFirst + 1, ""}}), "Enter a number."},
         {"origin that is no number", set({{U::CodeOriginFirst, "1,5,x"}}), "1,5,x"},
         {"the name of a built-in system", set({{U::CodeName, "global rectangular"}}),
          "already has this name"}});
    EXPECT_EQ(bore->m_zAxis, (Vec{1, 0, 0}));

    // Three points on one line, in the panel of that definition.
    Controls<U> logic;
    logic.OnCreate(host.view.get(), nullptr, nullptr);
    logic.SetValue(U::FieldDefinition, CKwCoordinateSystem::ThreePoints);
    logic.LoadObjectData();
    for (int p = 0; p < 3; ++p)
        for (int k = 0; k < 3; ++k)
            logic.texts[U::CodePointFirst + 3 * p + k] = QString::number(10 * p);
    EXPECT_EQ(logic.OnSubmitUI(), 1);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("lie on one line"));
    // A picked definition needs its pick, and only a point or vertex of its own definition.
    logic.SetValue(U::FieldDefinition, CKwCoordinateSystem::PickedPoint);
    EXPECT_EQ(logic.OnSubmitUI(), 1);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("Select a point or a vertex"));
    QList<CKwUIEntity*> edge = {host.model->FindGeometry(CKwUIEntity::Edge, 1)};
    logic.OnSelected(&edge);
    EXPECT_TRUE(logic.GetSelectedEntities().isEmpty());
    QList<CKwUIEntity*> corner = {host.model->FindGeometry(CKwUIEntity::Vertex, 7)};
    logic.OnSelected(&corner);
    EXPECT_EQ(logic.GetSelectedEntities(), corner);
    EXPECT_TRUE(near(logic.GetEditObject()->m_pickedPosition, {0.2, 0.05, 0.04}));
    EXPECT_EQ(host.model->m_coordSystems.size(), 1);
}

TEST(CoordSystemLogic, theOtherEditorsOfferASystemByItsNameAfterOk)
{
    kwtest::Host host;
    using U = CKwUICoordSystem;
    const QStringList before = host.model->m_coordinateSystems;
    Controls<U> created;
    created.OnCreate(host.view.get(), nullptr, nullptr);
    created.LoadObjectData();
    created.texts[U::CodeName] = QStringLiteral("Flange");
    ASSERT_EQ(created.OnSubmitUI(), 0);
    EXPECT_EQ(host.model->m_coordinateSystems, before + QStringList{"Flange"});

    // Renamed: the name changes where it stands; as its own reference it is refused.
    CKwCoordinateSystem* bore = host.model->m_coordSystems.first();
    Controls<U> edited;
    edited.OnCreate(host.view.get(), bore, nullptr);
    edited.LoadObjectData();
    edited.texts[U::CodeName] = QStringLiteral("Bore centre");
    ASSERT_EQ(edited.OnSubmitUI(), 0);
    EXPECT_EQ(host.model->m_coordinateSystems.indexOf("Bore centre"), before.indexOf("Bore axis"));
    EXPECT_FALSE(host.model->m_coordinateSystems.contains("Bore axis"));
    Controls<U> self;
    self.OnCreate(host.view.get(), bore, nullptr);
    self.LoadObjectData();
    self.SetValue(U::FieldReference, static_cast<int>(before.indexOf("Bore axis")));
    EXPECT_EQ(self.OnSubmitUI(), 1);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("its own reference"));
}

TEST(ConnectorLogic, eachBadFieldIsRefusedWithItsMessage)
{
    kwtest::Host host;
    using U = CKwUIConnector;
    CKwConnector* bolt = host.model->m_connectors.first();
    auto text = [](int code, const char* t) {
        return [=](QMap<int, QString>& texts) { texts[code] = QString::fromUtf8(t); };
    };
    expectRefusals<U, CKwConnector>(
        host, host.model->m_connectors, [&] { return bolt; },
        {{"shank of zero diameter", text(U::CodeDiameter, "0"), "greater than zero"},
         {"head no wider than the shank", text(U::CodeHeadDiameter, "8"),
          "wider than the shank"},
         {"negative preload", text(U::CodePreload, "-1"), "preload of zero or more"},
         {"negative friction", text(U::CodeFriction, "-0.1"), "friction coefficient of zero"},
         {"preload that is no number", text(U::CodePreload, "12 kN"), "12 kN"}});
    EXPECT_EQ(bolt->m_diameter, 0.008);
}

TEST(ConnectorLogic, picksGoToTheTargetEndAndAnEntityHoldsOneEndOnly)
{
    kwtest::Host host;
    using U = CKwUIConnector;
    Controls<U> logic;
    logic.OnCreate(host.view.get(), nullptr, nullptr);
    logic.LoadObjectData();
    ASSERT_EQ(logic.GetEditObject()->m_type, CKwConnector::Bolt);
    QList<CKwUIEntity*> e1 = {host.model->FindGeometry(CKwUIEntity::Edge, 1)};
    QList<CKwUIEntity*> e2 = {host.model->FindGeometry(CKwUIEntity::Edge, 2)};
    QList<CKwUIEntity*> vertex = {host.model->FindGeometry(CKwUIEntity::Vertex, 1)};
    logic.OnSelected(&e1);
    logic.OnSelected(&vertex); // a bolt sits in holes: edges only
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("cannot hold"));
    EXPECT_EQ(logic.SetValue(U::FieldPickTarget, 3), 0);
    logic.SetValue(U::FieldPickTarget, 2);
    logic.OnSelected(&e1);
    logic.texts[U::CodeDiameter] = QStringLiteral("8");
    EXPECT_EQ(logic.OnSubmitUI(), 1);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("both ends"));
    logic.OnDeselected(&e1);
    EXPECT_TRUE(logic.GetEditObject()->m_end1.isEmpty());
    logic.SetValue(U::FieldPickTarget, 1);
    logic.OnSelected(&e1);
    logic.SetValue(U::FieldPickTarget, 2);
    logic.OnSelected(&e2);
    EXPECT_EQ(logic.GetSelectedEntities(), e1 + e2);
    EXPECT_EQ(host.view->GetHighlightedEntities(), e1 + e2);
    ASSERT_EQ(logic.OnSubmitUI(), 0);
    EXPECT_EQ(host.model->m_connectors.size(), 2);
    // A spring between vertices: the edges go with the change of kind.
    Controls<U> spring;
    spring.OnCreate(host.view.get(), host.model->m_connectors.last(), nullptr);
    spring.SetValue(U::FieldType, CKwConnector::Spring);
    EXPECT_TRUE(spring.GetSelectedEntities().isEmpty());
    EXPECT_EQ(host.model->m_connectors.last()->m_end1, e1);
}

TEST(EndReleaseLogic, releasesFollowThePicksAndAMechanismNeedsASecondOk)
{
    kwtest::Host host;
    using U = CKwUIEndRelease;
    CKwMeshModel* mesh = host.model->m_mesh;
    const auto before = mesh->EndReleases();
    Controls<U> logic;
    logic.OnCreate(host.view.get(), mesh, false);
    logic.LoadObjectData();
    EXPECT_EQ(logic.OnSubmitUI(), 1); // nothing picked for a new release
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("at least one beam element"));

    QList<CKwUIEntity*> picks = {mesh->ElementEntity(2003), mesh->ElementEntity(1),
                                 mesh->ElementEntity(2004)};
    for (int dof : {3, 4, 5})
        logic.SetValue(U::FieldEndBFirst + dof, 1); // what the next picks start with
    logic.OnSelected(&picks);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("beam elements only"));
    EXPECT_EQ(logic.GetSelectedEntities(), (QList<CKwUIEntity*>{picks[0], picks[2]}));
    // The checks set the chosen element only.
    logic.SetListValue(U::CodeCurrent, {2004});
    for (int dof = 0; dof < 6; ++dof) {
        logic.SetValue(U::FieldEndAFirst + dof, 1);
        logic.SetValue(U::FieldEndBFirst + dof, 1);
    }
    int value = 0;
    EXPECT_EQ(logic.GetValue(U::FieldEndAFirst + 2, value), 1);
    EXPECT_EQ(value, 1);
    EXPECT_EQ(logic.GetRelease(2003), (CKwMeshModel::EndRelease{0, 0x38}));
    EXPECT_EQ(logic.MechanismElements(), QList<int>{2004});
    EXPECT_EQ(logic.OnSubmitUI(), 1);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("mechanism"));
    EXPECT_EQ(mesh->EndReleases(), before); // nothing written yet
    EXPECT_EQ(logic.OnSubmitUI(), 0);        // the user pressed OK again
    EXPECT_EQ(mesh->GetEndRelease(2004), (CKwMeshModel::EndRelease{0x3F, 0x3F}));
    EXPECT_EQ(mesh->GetEndRelease(2003), (CKwMeshModel::EndRelease{0, 0x38}));
    EXPECT_EQ(mesh->GetEndRelease(2001), before.at(2001)); // the others stay

    // On the mesh: every release is listed, and one taken out of the list goes on OK.
    Controls<U> all;
    all.OnCreate(host.view.get(), mesh, true);
    EXPECT_EQ(all.GetSelectedEntities().size(), 4);
    QList<CKwUIEntity*> drop = {mesh->ElementEntity(2001)};
    all.OnDeselected(&drop);
    all.OnCancelUI();
    EXPECT_EQ(mesh->EndReleases().count(2001), 1u);
    all.OnDeselected(&drop);
    EXPECT_EQ(all.OnSubmitUI(), 1); // 2004 is still a mechanism: warned once more
    EXPECT_EQ(all.OnSubmitUI(), 0);
    EXPECT_EQ(mesh->EndReleases().count(2001), 0u);
    EXPECT_EQ(mesh->EndReleases().size(), 3u);
}

TEST(CoordSystemLogic, theEightVerticesAreTheCornersOfThePart)
{
    kwtest::Host host;
    // Vertex i + 1 is corner i of the 0.2 x 0.05 x 0.04 m block: round the bottom, then round
    // the top (the order the view draws and picks them in).
    const Vec corners[8] = {{0, 0, 0},       {0.2, 0, 0},       {0.2, 0.05, 0},
                            {0, 0.05, 0},    {0, 0, 0.04},      {0.2, 0, 0.04},
                            {0.2, 0.05, 0.04}, {0, 0.05, 0.04}};
    for (int i = 0; i < 8; ++i) {
        Vec at{};
        ASSERT_TRUE(CKwUICoordSystem::PositionOf(host.model.get(),
                                                 host.model->FindGeometry(CKwUIEntity::Vertex, i + 1),
                                                 &at));
        EXPECT_TRUE(near(at, corners[i])) << "vertex " << i + 1;
    }
    Vec at{};
    EXPECT_TRUE(CKwUICoordSystem::PositionOf(host.model.get(), host.model->m_mesh->NodeEntity(1), &at));
    EXPECT_TRUE(near(at, {0, 0, 0}));
    for (CKwUIEntity* other : {host.model->FindGeometry(CKwUIEntity::Edge, 1),
                               host.model->FindGeometry(CKwUIEntity::Face, 1)})
        EXPECT_FALSE(CKwUICoordSystem::PositionOf(host.model.get(), other, &at));
    CKwUIEntity ninth(CKwUIEntity::Vertex, 9, QStringLiteral("Vertex 9"));
    EXPECT_FALSE(CKwUICoordSystem::PositionOf(host.model.get(), &ninth, &at));
}

TEST(ConMassLogic, nextStartsAFreshMassAndDuplicateKeepsThePicksUnderANewId)
{
    kwtest::Host host;
    using U = CKwUIConMass;
    Controls<U> logic;
    logic.OnCreate(host.view.get(), nullptr, nullptr);
    logic.LoadObjectData();
    QList<CKwUIEntity*> vertex = {host.model->FindGeometry(CKwUIEntity::Vertex, 4)};
    logic.OnSelected(&vertex);
    logic.texts[U::CodeMass] = QStringLiteral("0.001"); // 1 kg in tonnes
    EXPECT_EQ(logic.OnDuplicateUI(), 1);
    ASSERT_EQ(host.model->m_conMasses.size(), 2);
    EXPECT_DOUBLE_EQ(host.model->m_conMasses.last()->m_mass, 1.0);
    EXPECT_EQ(logic.GetEditObject()->GetID(), 3);
    EXPECT_EQ(logic.GetEditObject()->m_entities, vertex);
    logic.LoadObjectData();
    EXPECT_EQ(logic.OnNextUI(), 1);
    ASSERT_EQ(host.model->m_conMasses.size(), 3);
    EXPECT_EQ(host.model->m_conMasses.last()->GetID(), 3);
    EXPECT_TRUE(logic.GetEditObject()->m_entities.isEmpty());
    EXPECT_TRUE(IsMissingValue(logic.GetEditObject()->m_mass));
}

TEST(ConnectorLogic, theMaterialRowIsTheModelsMaterialAndNothingBeyond)
{
    kwtest::Host host;
    using U = CKwUIConnector;
    Controls<U> logic;
    logic.OnCreate(host.view.get(), host.model->m_connectors.first(), nullptr);
    const int materials = static_cast<int>(host.model->m_materials.size());
    for (int row = 0; row < materials; ++row) {
        ASSERT_EQ(logic.SetValue(U::FieldMaterial, row), 1);
        int shown = -1;
        logic.GetValue(U::FieldMaterial, shown);
        EXPECT_EQ(shown, row);
        EXPECT_EQ(logic.GetEditObject()->m_materialId, host.model->m_materials.at(row)->GetID());
    }
    for (int bad : {-1, materials})
        EXPECT_EQ(logic.SetValue(U::FieldMaterial, bad), 0) << bad;
    // A material that is gone is no material: the bolt is refused until one is chosen.
    logic.GetEditObject()->m_materialId = 99;
    int shown = 0;
    logic.GetValue(U::FieldMaterial, shown);
    EXPECT_EQ(shown, -1);
    logic.LoadObjectData();
    EXPECT_EQ(logic.OnSubmitUI(), 1);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("Choose a material."));
    // A cable carries tension only whatever its flag says; a rod as the user says.
    int tension = 0;
    logic.SetValue(U::FieldType, CKwConnector::Cable);
    logic.SetValue(U::FieldTensionOnly, 0);
    logic.GetValue(U::FieldTensionOnly, tension);
    EXPECT_EQ(tension, 1);
    logic.SetValue(U::FieldType, CKwConnector::Rod);
    logic.GetValue(U::FieldTensionOnly, tension);
    EXPECT_EQ(tension, 0);
}

TEST(EndReleaseLogic, aRefreshShowsWhatTheMeshNowHolds)
{
    kwtest::Host host;
    CKwMeshModel* mesh = host.model->m_mesh;
    Controls<CKwUIEndRelease> logic;
    logic.OnCreate(host.view.get(), mesh, true);
    ASSERT_EQ(logic.GetSelectedEntities().size(), 2);
    mesh->SetEndRelease(2005, {0x01, 0x02});
    mesh->SetEndRelease(2001, {});
    logic.MarkOutOfDate();
    EXPECT_EQ(logic.IsUpToDate(), 0);
    logic.Refresh();
    EXPECT_EQ(logic.GetSelectedEntities(),
              (QList<CKwUIEntity*>{mesh->ElementEntity(2005), mesh->ElementEntity(2008)}));
    EXPECT_EQ(logic.GetRelease(2005), (CKwMeshModel::EndRelease{0x01, 0x02}));
    EXPECT_EQ(logic.GetRelease(2001), CKwMeshModel::EndRelease{});
    EXPECT_EQ(host.view->GetHighlightedEntities(), logic.GetSelectedEntities());
}

TEST(ModelEditorLogics, nothingToEditIsNoCrash)
{
    // No view, no model, no entity.
    Controls<CKwUIConMass> mass;
    mass.OnCreate(nullptr, nullptr, nullptr);
    mass.LoadObjectData();
    QList<CKwUIEntity*> none;
    mass.OnSelected(nullptr);
    mass.OnSelected(&none);
    EXPECT_EQ(mass.OnSubmitUI(), 1);
    Controls<CKwUIConnector> connector;
    connector.OnCreate(nullptr, nullptr, nullptr);
    connector.LoadObjectData();
    EXPECT_EQ(connector.SetValue(CKwUIConnector::FieldMaterial, 0), 0);
    EXPECT_EQ(connector.OnSubmitUI(), 1);
    Controls<CKwUICoordSystem> system;
    system.OnCreate(nullptr, nullptr, nullptr);
    system.LoadObjectData();
    EXPECT_EQ(system.OnSubmitUI(), 0); // taken, with no model to write into
    Controls<CKwUIEndRelease> release;
    release.OnCreate(nullptr, nullptr, false);
    release.LoadObjectData();
    release.OnSelected(&none);
    EXPECT_EQ(release.OnSubmitUI(), 1);
    EXPECT_FALSE(CKwUICoordSystem::PositionOf(nullptr, nullptr, nullptr));
}

} // namespace
