// Every entity editor opened on a stored entity whose values have more digits than a field
// shows, or turn awkward in the display unit, and closed with OK untouched: the stored entity
// keeps every value to the last bit.
#include "CFMView.h"
#include "CKwConMass.h"
#include "CKwConnector.h"
#include "CKwCoordinateSystem.h"
#include "CKwFEModel.h"
#include "CKwElementDeletion.h"
#include "CKwLoad.h"
#include "CKwAnalysis.h"
#include "CKwImpactWizard.h"
#include "CKwMaterialOrient.h"
#include "CKwMeshLocal.h"
#include "CKwSurfaceContact.h"
#include "CKwMaterial.h"
#include "CKwOptimObjective.h"
#include "CKwOptimVariable.h"
#include "CKwMaterial.h"
#include "CKwModalSetup.h"
#include "CKwNonlinearSetup.h"
#include "CKwSubCase.h"
#include "CKwTimeStep.h"
#include "CKwMeshModel.h"
#include "CKwMeshQualityResultsDialog.h"
#include "CKwPhysicalProperty.h"
#include "CKwRestraint.h"
#include "KwControls.h"
#include "KwMaterialKeys.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QPushButton>
#include <functional>
#include <ostream>
#include <gtest/gtest.h>
#include <vector>

namespace {

namespace K = KwMaterialKeys;
using M = CKwMeshModel;

// What an editor is opened on, and the values of it that OK must leave alone.
struct Case
{
    const char* editor;
    unsigned kind;
    std::function<void*(CKwFEModel&)> prepare; // sets the awkward values, returns the entity
    std::function<std::vector<double>(CKwFEModel&)> values;
};

void PrintTo(const Case& c, std::ostream* os) { *os << c.editor; }

const double kWide = 123456789.25; // eleven digits
const double kOdd = 184220.5;
const double kTiny = 1e-7;

const Case kCases[] = {
    {"remote force", 0,
     [](CKwFEModel& m) -> void* {
         CKwLoad* l = m.m_loads[2];
         l->m_magnitude = kOdd;
         l->m_location = {kTiny, kWide, kOdd};
         l->m_direction = {kOdd, kTiny, kWide};
         return l;
     },
     [](CKwFEModel& m) {
         const CKwLoad* l = m.m_loads[2];
         return std::vector<double>{l->m_magnitude, l->m_location[0], l->m_location[1],
                                    l->m_location[2], l->m_direction[0], l->m_direction[1],
                                    l->m_direction[2]};
     }},
    {"convection", 0,
     [](CKwFEModel& m) -> void* {
         CKwLoad* l = m.m_loads[3];
         l->m_ambientTemperature = kOdd;
         l->m_convectionCoefficient = kWide;
         return l;
     },
     [](CKwFEModel& m) {
         const CKwLoad* l = m.m_loads[3];
         return std::vector<double>{l->m_ambientTemperature, l->m_convectionCoefficient};
     }},
    {"constraint", 1,
     [](CKwFEModel& m) -> void* {
         m.m_restraints[0]->m_temperature = kWide;
         return m.m_restraints[0];
     },
     [](CKwFEModel& m) { return std::vector<double>{m.m_restraints[0]->m_temperature}; }},
    {"material", 2,
     [](CKwFEModel& m) -> void* {
         CKwMaterial* mat = m.m_materials[1];
         mat->SetValue(K::EX, kOdd * 1e6); // shown in MPa: 184220.5
         mat->SetValue(K::NUXY, kTiny);
         mat->SetValue(K::DENS, kWide);
         return mat;
     },
     [](CKwFEModel& m) {
         std::vector<double> out;
         for (int i = 0; i < K::Count; ++i)
             out.push_back(m.m_materials[1]->GetValue(i));
         return out;
     }},
    {"physical property", 34,
     [](CKwFEModel& m) -> void* {
         m.m_properties[0]->m_thickness = kWide;
         return m.m_properties[0];
     },
     [](CKwFEModel& m) { return std::vector<double>{m.m_properties[0]->m_thickness}; }},
    {"mesh quality", 9,
     [](CKwFEModel& m) -> void* {
         m.m_mesh->SetQualityLimit(M::QuadAspectRatio, float(kOdd));
         m.m_mesh->SetQualityLimit(M::QuadSkew, float(kTiny));
         m.m_mesh->SetQualityLimit(M::QuadWarpage, float(kWide));
         m.m_mesh->SetQualityLimit(M::TriaJacobian, float(kTiny));
         return static_cast<CKwFEBase*>(m.m_mesh);
     },
     [](CKwFEModel& m) {
         std::vector<double> out;
         for (int c = 0; c < M::QualityCheckCount; ++c)
             out.push_back(m.m_mesh->GetQualityLimit(static_cast<M::QualityCheck>(c)));
         return out;
     }},
    {"concentrated mass", 13,
     [](CKwFEModel& m) -> void* {
         CKwConMass* c = m.m_conMasses[0];
         c->m_mass = kWide;
         c->m_inertia = {kTiny, kOdd, kWide};
         c->m_offset = {kOdd, kTiny, kWide};
         return static_cast<CKwFEBase*>(c);
     },
     [](CKwFEModel& m) {
         const CKwConMass* c = m.m_conMasses[0];
         return std::vector<double>{c->m_mass,      c->m_inertia[0], c->m_inertia[1],
                                    c->m_inertia[2], c->m_offset[0],  c->m_offset[1],
                                    c->m_offset[2]};
     }},
    {"connector", 14,
     [](CKwFEModel& m) -> void* {
         CKwConnector* c = m.m_connectors[0];
         c->m_diameter = kTiny;
         c->m_headDiameter = kOdd;
         c->m_preload = kWide;
         c->m_friction = kTiny;
         return static_cast<CKwFEBase*>(c);
     },
     [](CKwFEModel& m) {
         const CKwConnector* c = m.m_connectors[0];
         return std::vector<double>{c->m_diameter, c->m_headDiameter, c->m_preload,
                                    c->m_friction};
     }},
    {"coordinate system", 28,
     [](CKwFEModel& m) -> void* {
         CKwCoordinateSystem* c = m.m_coordSystems[0];
         c->m_origin = {kTiny, kWide, kOdd};
         c->m_zAxis = {kOdd, kTiny, kWide};
         c->m_xAxis = {kTiny, kWide, kOdd};
         return static_cast<CKwFEBase*>(c);
     },
     [](CKwFEModel& m) {
         const CKwCoordinateSystem* c = m.m_coordSystems[0];
         std::vector<double> out;
         for (const auto* v : {&c->m_origin, &c->m_zAxis, &c->m_xAxis})
             out.insert(out.end(), v->begin(), v->end());
         return out;
     }},
    {"impact", 33,
     [](CKwFEModel& m) -> void* {
         CKwImpactWizard* w = m.m_analyses[4]->GetImpactWizard();
         w->m_translation = {kTiny, kWide, kOdd};
         w->m_velocity = kOdd;
         w->m_acceleration = kWide;
         w->m_planeDistance = kOdd;
         w->m_duration = kTiny;
         return static_cast<CKwFEBase*>(w);
     },
     [](CKwFEModel& m) {
         const CKwImpactWizard* w = m.m_analyses[4]->GetImpactWizard();
         return std::vector<double>{w->m_translation[0], w->m_translation[1], w->m_translation[2],
                                    w->m_velocity, w->m_acceleration, w->m_planeDistance,
                                    w->m_duration};
     }},
    {"optimization objective", 16,
     [](CKwFEModel& m) -> void* {
         CKwOptimObjective* o = m.m_analyses[6]->m_objectives[0];
         o->m_goal = CKwOptimObjective::Target;
         o->m_response = CKwOptimObjective::Stress;
         o->m_target = kOdd * 1e6; // shown in MPa: 184220.5
         o->m_normalization = kWide;
         return static_cast<CKwFEBase*>(o);
     },
     [](CKwFEModel& m) {
         const CKwOptimObjective* o = m.m_analyses[6]->m_objectives[0];
         return std::vector<double>{o->m_target, o->m_normalization};
     }},
    {"optimization variable", 17,
     [](CKwFEModel& m) -> void* {
         CKwOptimVariable* v = m.m_analyses[6]->m_variables[0];
         v->m_lower = kTiny;
         v->m_upper = kWide;
         v->m_initial = kOdd;
         v->m_step = kTiny;
         return static_cast<CKwFEBase*>(v);
     },
     [](CKwFEModel& m) {
         const CKwOptimVariable* v = m.m_analyses[6]->m_variables[0];
         return std::vector<double>{v->m_lower, v->m_upper, v->m_initial, v->m_step};
     }},
    {"mesh control", 3,
     [](CKwFEModel& m) -> void* {
         m.m_meshControls[0]->m_elementSize = kTiny * 1.1;
         return static_cast<CKwFEBase*>(m.m_meshControls[0]);
     },
     [](CKwFEModel& m) { return std::vector<double>{m.m_meshControls[0]->m_elementSize}; }},
    {"material orientation", 6,
     [](CKwFEModel& m) -> void* {
         m.m_materialOrients[0]->m_vector = {kOdd, kTiny, kWide};
         return static_cast<CKwFEBase*>(m.m_materialOrients[0]);
     },
     [](CKwFEModel& m) {
         const auto& v = m.m_materialOrients[0]->m_vector;
         return std::vector<double>{v[0], v[1], v[2]};
     }},
    {"element deletion", 54,
     [](CKwFEModel& m) -> void* {
         auto& c = m.m_elementDeletions[0]->m_criteria[0];
         c.limit[CKwElementDeletion::PlasticStrain] = kTiny * 3;
         c.limit[CKwElementDeletion::PrincipalStress] = kWide;
         c.limit[CKwElementDeletion::Time] = kTiny;
         return static_cast<CKwFEBase*>(m.m_elementDeletions[0]);
     },
     [](CKwFEModel& m) {
         const auto& c = m.m_elementDeletions[0]->m_criteria[0];
         return std::vector<double>(std::begin(c.limit), std::end(c.limit));
     }},
    {"surface contact", 12,
     [](CKwFEModel& m) -> void* {
         m.m_surfaceContacts[0]->m_friction = kWide;
         return static_cast<CKwFEBase*>(m.m_surfaceContacts[0]);
     },
     [](CKwFEModel& m) { return std::vector<double>{m.m_surfaceContacts[0]->m_friction}; }},
    {"modal setup", 32,
     [](CKwFEModel& m) -> void* {
         CKwModalSetup* s = m.m_analyses.at(7)->GetModalSetup();
         s->m_lowerFrequency = kTiny;
         s->m_upperFrequency = kWide;
         return static_cast<CKwFEBase*>(s);
     },
     [](CKwFEModel& m) {
         const CKwModalSetup* s = m.m_analyses.at(7)->GetModalSetup();
         return std::vector<double>{s->m_lowerFrequency, s->m_upperFrequency};
     }},
    {"time step", 29,
     [](CKwFEModel& m) -> void* {
         CKwTimeStep* t = m.m_analyses.at(2)->GetTimeStep();
         t->m_intervals[0].increment = kTiny * 1.000000000123;
         t->m_intervals[1].increment = kOdd;
         return static_cast<CKwFEBase*>(t);
     },
     [](CKwFEModel& m) {
         const CKwTimeStep* t = m.m_analyses.at(2)->GetTimeStep();
         return std::vector<double>{t->m_intervals[0].increment, t->m_intervals[1].increment};
     }},
    {"nonlinear setup", 52,
     [](CKwFEModel& m) -> void* {
         CKwNonlinearSetup* s = m.m_analyses.at(2)->GetSubCases().first()->GetNonlinearSetup();
         s->m_timeIncrement = kTiny * 1.000000000123;
         return static_cast<CKwFEBase*>(s);
     },
     [](CKwFEModel& m) {
         return std::vector<double>{
             m.m_analyses.at(2)->GetSubCases().first()->GetNonlinearSetup()->m_timeIncrement};
     }},
};

class EditorRoundTrip : public ::testing::TestWithParam<Case>
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }
    void TearDown() override
    {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (dynamic_cast<CKwMeshQualityResultsDialog*>(w))
                delete w;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    kwtest::Host host;
};

TEST_P(EditorRoundTrip, okOnAnUntouchedEditorKeepsEveryStoredValue)
{
    const Case& c = GetParam();
    DialogLaunchRequest r = host.Request(c.kind);
    r.object = c.prepare(*host.model);
    r.analysis = host.model->m_analyses.at(0);
    const std::vector<double> before = c.values(*host.model);
    LaunchDialog(&r);
    QWidget* d = host.view->GetOpenDialog();
    ASSERT_NE(d, nullptr);
    KwControl<QPushButton>(d, 1)->click();
    EXPECT_EQ(host.view->GetOpenDialog(), nullptr)
        << "OK refused: " << qPrintable(host.view->GetLastBubbleText());
    const std::vector<double> after = c.values(*host.model);
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < before.size(); ++i)
        EXPECT_EQ(after[i], before[i]) << c.editor << ", value " << i;
}

INSTANTIATE_TEST_SUITE_P(Editors, EditorRoundTrip, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<Case>& info) {
                             std::string name = info.param.editor;
                             for (char& ch : name)
                                 if (ch == ' ')
                                     ch = '_';
                             return name;
                         });

} // namespace
