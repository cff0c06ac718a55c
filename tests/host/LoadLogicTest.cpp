// The load logic of the reference host: the type list and its headings, typed quantities in
// the current units, validation messages, and what submit and cancel leave in the model.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwFunction.h"
#include "CKwTable.h"
#include "CKwUIEntity.h"
#include "CKwUILoad.h"
#include "CKwXMLUtils.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwTableLookup.h"
#include "KwTestSupport.h"

#include <QFile>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>
#include <map>

namespace {

// The logic behind a dialog that has every control: texts and items are kept per code.
struct Dialog : public CKwUILoad
{
    std::map<int, QString> text;
    std::map<int, QStringList> items;
    std::map<int, QString> tips;
    int SetControlText(int code, const QString& t) override { text[code] = t; return 1; }
    int GetControlText(int code, QString& t) override
    {
        const auto it = text.find(code);
        if (it == text.end())
            return 0;
        t = it->second;
        return 1;
    }
    int SetControlItems(int code, int n, const QString* s) override
    {
        items[code] = QStringList(s, s + std::max(n, 0));
        return 1;
    }
    int SetControlToolTip(int code, const QString& t) override { tips[code] = t; return 1; }
};

TEST(LoadTypes, rowsMapToCodesAndHeadingsToNone)
{
    EXPECT_EQ(CKwUILoad::GetTypeRowCount(), 22);
    for (int heading : {12, 18, 20}) {
        EXPECT_TRUE(CKwUILoad::IsHeadingRow(heading));
        EXPECT_EQ(CKwUILoad::TypeOfRow(heading), -1);
        EXPECT_GE(CKwUILoad::TypeOfRow(heading + 1), 0) << heading;
    }
    EXPECT_EQ(CKwUILoad::TypeOfRow(19), CKwLoad::EnforcedMotion);
    for (int bad : {-1, 22, 1000})
        EXPECT_EQ(CKwUILoad::TypeOfRow(bad), -1);
    // Every row that is no heading round-trips; codes no row has answer -1.
    for (int row = 0; row < CKwUILoad::GetTypeRowCount(); ++row) {
        if (!CKwUILoad::IsHeadingRow(row)) {
            EXPECT_EQ(CKwUILoad::RowOfType(CKwUILoad::TypeOfRow(row)), row);
        }
    }
    for (int code : {-1, 11, 12, 15, 36, 38})
        EXPECT_EQ(CKwUILoad::RowOfType(code), -1) << code;

    const std::pair<int, const char*> names[] = {
        {1, "Moment"},         {13, "Rotational Force"}, {16, "Distributed Load"},
        {17, "Remote Force"},  {18, "Bearing Load"},     {37, "Hydrostatic Load"}};
    for (const auto& [code, name] : names)
        EXPECT_EQ(CKwUILoad::GetTypeName(code), QString::fromLatin1(name));
    EXPECT_EQ(CKwUILoad::GetSubtypeItems(CKwLoad::EnforcedMotion).size(), 3);
    EXPECT_EQ(CKwUILoad::GetSubtypeItems(CKwLoad::InitialCondition).size(), 4);
    EXPECT_EQ(CKwUILoad::GetUnitKind(CKwLoad::EnforcedMotion, CKwLoad::EnforcedVelocity),
              KwUnitKind::Velocity);
    EXPECT_EQ(CKwUILoad::GetUnitKind(CKwLoad::Convection, 0), 0);
}

TEST(LoadTypes, everyNameHasItsGermanText)
{
    const QStringList english = CKwUILoad::GetTypeItems();
    const QStringList subtypes = CKwUILoad::GetSubtypeItems(CKwLoad::InitialCondition);
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QStringLiteral("de")));
    const QStringList german = CKwUILoad::GetTypeItems();
    const QStringList germanSubtypes = CKwUILoad::GetSubtypeItems(CKwLoad::InitialCondition);
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
    ASSERT_EQ(german.size(), english.size());
    for (qsizetype i = 0; i < english.size(); ++i) {
        if (english[i] != QStringLiteral("Moment")) { // the same word in German
            EXPECT_NE(german[i], english[i]) << i;
        }
    }
    for (qsizetype i = 0; i < subtypes.size(); ++i)
        EXPECT_NE(germanSubtypes[i], subtypes[i]) << i;
}

TEST(LoadUnits, typedQuantitiesAreReadInTheCurrentUnits)
{
    const struct
    {
        KW_UOM::System system;
        int kind;
        const char* text;
        int status;
        double internal;
    } cases[] = {
        {KW_UOM::MMNS, KwUnitKind::Pressure, "0.2", KW_UOM::ParseOk, 2.0e5},
        {KW_UOM::MMNS, KwUnitKind::Pressure, " 0.2 MPa ", KW_UOM::ParseOk, 2.0e5},
        {KW_UOM::MMNS, KwUnitKind::Pressure, "2e5 Pa", KW_UOM::ParseWrongUnit, MissingDouble},
        {KW_UOM::SI, KwUnitKind::Force, "3 lbf", KW_UOM::ParseWrongUnit, MissingDouble},
        {KW_UOM::IPS, KwUnitKind::Force, "1lbf", KW_UOM::ParseOk, 4.4482216152605},
        {KW_UOM::MMNS, KwUnitKind::Temperature, "20 C", KW_UOM::ParseOk, 293.15},
        {KW_UOM::IPS, KwUnitKind::Temperature, "20 C", KW_UOM::ParseWrongUnit, MissingDouble},
        {KW_UOM::MMNS, KwUnitKind::Moment, "5 N mm", KW_UOM::ParseOk, 0.005},
        // The label as the field shows it reads as well as its keyboard form.
        {KW_UOM::MMNS, KwUnitKind::Moment, "5 N·mm", KW_UOM::ParseOk, 0.005},
        {KW_UOM::SI, KwUnitKind::Moment, "5 N·mm", KW_UOM::ParseWrongUnit, MissingDouble},
        {KW_UOM::MMNS, KwUnitKind::Temperature, "20 °C", KW_UOM::ParseOk, 293.15},
        {KW_UOM::IPS, KwUnitKind::Temperature, "68°F", KW_UOM::ParseOk, 293.15},
        {KW_UOM::MMNS, KwUnitKind::Pressure, "2e5 Pa", KW_UOM::ParseWrongUnit, MissingDouble},
        {KW_UOM::MMNS, KwUnitKind::HeatFlux, "3 mW/mm²", KW_UOM::ParseOk, 3000.0},
        {KW_UOM::MMNS, KwUnitKind::HeatFlux, "3 mW/mm^2", KW_UOM::ParseOk, 3000.0},
        {KW_UOM::SI, KwUnitKind::HeatFlux, "3 mW/mm²", KW_UOM::ParseWrongUnit, MissingDouble},
        {KW_UOM::SI, KwUnitKind::Angle, "90°", KW_UOM::ParseOk, 1.5707963267948966},
        {KW_UOM::SI, KwUnitKind::Angle, "90 deg", KW_UOM::ParseOk, 1.5707963267948966},
        {KW_UOM::SI, KwUnitKind::Angle, "°", KW_UOM::ParseNotNumber, MissingDouble},
        {KW_UOM::MMNS, KwUnitKind::Force, "", KW_UOM::ParseEmpty, MissingDouble},
        {KW_UOM::MMNS, KwUnitKind::Force, "N", KW_UOM::ParseNotNumber, MissingDouble},
        {KW_UOM::MMNS, KwUnitKind::Force, "12 kN", KW_UOM::ParseNotNumber, MissingDouble},
        {KW_UOM::SI, KwUnitKind::Dimensionless, "0.5", KW_UOM::ParseOk, 0.5},
        {KW_UOM::MMNS, KwUnitKind::Pressure, "1e308", KW_UOM::ParseOutOfRange, MissingDouble},
    };
    for (const auto& c : cases) {
        int status = -1;
        QString seen;
        const double v = KW_UOM(c.system).ParseQuantity(QString::fromUtf8(c.text), c.kind,
                                                         &status, &seen);
        EXPECT_EQ(status, c.status) << c.text;
        EXPECT_NEAR(v, c.internal, 1e-9 * std::abs(c.internal)) << c.text;
        EXPECT_EQ(seen.isEmpty(), c.status != KW_UOM::ParseWrongUnit) << c.text;
    }
    // The load kinds in each system, against hand conversions.
    const struct
    {
        KW_UOM::System system;
        int kind;
        double internal;
        double shown;
    } known[] = {
        {KW_UOM::MMNS, KwUnitKind::ConvectionCoefficient, 25.0, 0.025},
        {KW_UOM::IPS, KwUnitKind::ConvectionCoefficient, 1.0, 0.0254 / (4.4482216152605 * 1.8)},
        {KW_UOM::MMNS, KwUnitKind::Power, 2.0, 2000.0},
        {KW_UOM::IPS, KwUnitKind::Power, 4.4482216152605 * 0.0254, 1.0},
        {KW_UOM::IPS, KwUnitKind::ThermalConductivity, 1.8 * 4.4482216152605, 1.0},
        {KW_UOM::IPS, KwUnitKind::SpecificHeat, 1.8 * 0.0254 * 0.0254, 1.0},
        {KW_UOM::MMNS, KwUnitKind::HeatFlux, 1000.0, 1.0},
        {KW_UOM::MMNS, KwUnitKind::AngularAcceleration, 3.0, 3.0},
    };
    for (const auto& k : known) {
        KW_UOM u(k.system);
        EXPECT_NEAR(u.GetDisplayValue(k.internal, k.kind), k.shown, 1e-9 * k.shown) << k.kind;
        EXPECT_NEAR(u.ToInternalValue(k.shown, k.kind), k.internal, 1e-9 * k.internal);
        EXPECT_FALSE(u.GetUnits(k.kind).isEmpty());
    }
}

class LoadLogic : public ::testing::Test
{
protected:
    // A new load of `type` on the top face with a 0.5 (MPa, N, ...) magnitude.
    Dialog& fresh(int type)
    {
        d.OnCreate(host.view.get(), nullptr, nullptr);
        d.LoadObjectData();
        EXPECT_EQ(d.SetValue(CKwUILoad::FieldType, type), 1);
        d.text[CKwUILoad::CodeMagnitude] = QStringLiteral("0.5");
        pick(CKwUIEntity::Face, 2);
        return d;
    }
    void pick(int kind, int id)
    {
        QList<CKwUIEntity*> l = {host.model->FindGeometry(kind, id)};
        d.OnSelected(&l);
    }
    // Submits; returns the bubble shown (empty when the load was written).
    QString submit()
    {
        host.view->ClearBubbleRecord();
        return d.OnSubmitUI() == 0 ? QString() : host.view->GetLastBubbleText();
    }
    kwtest::Host host;
    Dialog d;
};

TEST_F(LoadLogic, validationNamesTheFieldAndNothingReachesTheModel)
{
    QTemporaryDir dir;
    const QString empty = dir.filePath(QStringLiteral("empty.fno"));
    QFile(empty).open(QIODevice::WriteOnly);
    const struct
    {
        int type;
        std::function<void(Dialog&)> edit;
        const char* bubble;
    } cases[] = {
        {CKwLoad::Force, [](Dialog& d) { d.text[CKwUILoad::CodeMagnitude] = "abc"; },
         "Magnitude (N) - \n 'Enter a number in N.'"},
        {CKwLoad::Pressure, [](Dialog& d) { d.text[CKwUILoad::CodeMagnitude] = "3 psi"; },
         "Magnitude (MPa) - \n 'The value is in psi; enter it in MPa.'"},
        {CKwLoad::Temperature, [](Dialog& d) { d.text[CKwUILoad::CodeMagnitude] = "-300"; },
         "Temperature (°C) - \n 'Enter a value above -273.15.'"},
        {CKwLoad::Force, [](Dialog& d) { d.text[CKwUILoad::CodeDirectionX + 2] = "0"; },
         "Direction - \n 'The direction must not be zero.'"},
        {CKwLoad::Radiation,
         [](Dialog& d) {
             d.text[CKwUILoad::CodeAmbientTemperature] = "20";
             d.text[CKwUILoad::CodeAbsorptivity] = "0.5";
             d.text[CKwUILoad::CodeEmissivity] = "1.5";
         },
         "Emissivity - \n 'Enter a value from 0 to 1.'"},
        {CKwLoad::RemoteForce, [](Dialog&) {},
         "Remote Force Location - \n 'Pick the location or enter its coordinates.'"},
        {CKwLoad::FromOutput, [&](Dialog& d) { d.text[CKwUILoad::CodeResultsFile] = empty; },
         "Results File - \n 'The file cannot be read.'"},
        {CKwLoad::FromOutput,
         [&](Dialog& d) { d.text[CKwUILoad::CodeResultsFile] = dir.filePath("gone.fno"); },
         "Results File - \n 'The file does not exist.'"},
        {CKwLoad::Pressure,
         [](Dialog& d) {
             QList<CKwUIEntity*> all = d.GetEditObject()->m_entities;
             d.OnDeselected(&all);
         },
         "Selected Entities - \n 'Select at least one entity.'"},
        {CKwLoad::Pressure, [](Dialog& d) { d.SetValue(CKwUILoad::FieldTimeDependent, 1); },
         "Time Dependence - \n 'Choose a table.'"},
        {CKwLoad::Force, [](Dialog& d) { d.SetListValue(CKwUILoad::CodeSubcaseSelection, {}); },
         "Subcases - \n 'Add the load to a subcase.'"},
    };
    const qsizetype before = host.model->m_loads.size();
    for (const auto& c : cases) {
        fresh(c.type);
        for (int i = 0; i < 3; ++i)
            d.text[CKwUILoad::CodeDirectionX + i] = i == 2 ? QStringLiteral("-1") : "0";
        c.edit(d);
        EXPECT_EQ(submit(), QString::fromUtf8(c.bubble));
        EXPECT_EQ(host.view->GetLastBubbleKind(), CFMView::BubbleError);
        EXPECT_EQ(host.model->m_loads.size(), before) << c.bubble;
    }
}

TEST_F(LoadLogic, submitWritesInternalUnitsAndCancelLeavesTheLoad)
{
    fresh(CKwLoad::Pressure);
    EXPECT_EQ(d.text[CKwUILoad::CodeMagnitudeLabel], QStringLiteral("Magnitude (MPa):"));
    EXPECT_EQ(d.tips[CKwUILoad::CodeEntities], QStringLiteral("Select faces/surfaces"));
    EXPECT_EQ(submit(), QString());
    CKwLoad* written = host.model->m_loads.last();
    EXPECT_EQ(written->m_type, CKwLoad::Pressure);
    EXPECT_DOUBLE_EQ(written->m_magnitude, 5.0e5);
    EXPECT_EQ(written->GetID(), 7);

    // Editing the sample's pressure: what is shown is in MPa; cancel keeps 0.2 MPa.
    CKwLoad* top = host.model->m_loads.at(1);
    Dialog e;
    e.OnCreate(host.view.get(), top, nullptr);
    e.LoadObjectData();
    EXPECT_EQ(e.text[CKwUILoad::CodeMagnitude], QStringLiteral("0.2"));
    EXPECT_EQ(e.items[CKwUILoad::CodeTimeTables],
              (QStringList{"Ramp and hold", "Half sine pulse", "New Table"}));
    EXPECT_EQ(e.GetRowOfTable(KwTableLookup::Time, top->m_timeTableId), 0);
    e.text[CKwUILoad::CodeMagnitude] = QStringLiteral("0.7");
    e.UpdateObjectData(false);
    EXPECT_EQ(e.OnCancelUI(), 0);
    EXPECT_DOUBLE_EQ(top->m_magnitude, 2.0e5);

    // Another quantity drops the number rather than reading 0.2 MPa as 0.2 N m.
    e.SetValue(CKwUILoad::FieldType, CKwLoad::Moment);
    EXPECT_TRUE(IsMissingValue(e.GetEditObject()->m_magnitude));
    EXPECT_EQ(e.text[CKwUILoad::CodeMagnitude], QString());
    EXPECT_EQ(e.text[CKwUILoad::CodeMagnitudeLabel], QStringLiteral("Magnitude (N·mm):"));
}

TEST_F(LoadLogic, eachQuantityKeepsWhatWasTypedForItWhileTheEditorIsOpen)
{
    using L = CKwUILoad;
    // One editor, one step after another: the type (and subtype) chosen, what the magnitude
    // field shows then, and what the user types next (null: nothing).
    const struct
    {
        int type;
        int subtype; // -1: the type has none
        const char* shows;
        const char* typed;
    } steps[] = {
        {CKwLoad::Force, -1, "0.5", "1500"},
        {CKwLoad::Moment, -1, "", "20"},             // N mm: the newtons are not carried over
        {CKwLoad::Force, -1, "1500", nullptr},       // Force -> Moment -> Force keeps 1500 N
        {CKwLoad::DistributedLoad, -1, "1500", nullptr}, // the same quantity keeps the field
        {CKwLoad::Pressure, -1, "", "abc"},
        {CKwLoad::Convection, -1, "", nullptr},      // no magnitude at all
        {CKwLoad::Torque, -1, "20", nullptr},        // a moment again
        {CKwLoad::Pressure, -1, "abc", nullptr},     // as typed, even what is no number yet
        {CKwLoad::EnforcedMotion, CKwLoad::EnforcedDisplacement, "", "2"},
        {CKwLoad::EnforcedMotion, CKwLoad::EnforcedVelocity, "", "7"},
        {CKwLoad::EnforcedMotion, CKwLoad::EnforcedDisplacement, "2", nullptr},
        {CKwLoad::InitialCondition, -1, "7", nullptr}, // velocity, as typed for enforced motion
        {CKwLoad::Force, -1, "1500", nullptr},
    };
    fresh(CKwLoad::Force);
    for (const auto& s : steps) {
        SCOPED_TRACE(testing::Message() << s.type << "/" << s.subtype);
        EXPECT_EQ(d.SetValue(L::FieldType, s.type), 1);
        if (s.subtype >= 0) {
            EXPECT_EQ(d.SetValue(L::FieldSubtype, s.subtype), 1);
        }
        EXPECT_EQ(d.text[L::CodeMagnitude], QString::fromLatin1(s.shows));
        if (s.typed)
            d.text[L::CodeMagnitude] = QString::fromLatin1(s.typed);
    }
    for (int i = 0; i < 3; ++i)
        d.text[L::CodeDirectionX + i] = i == 2 ? QStringLiteral("-1") : "0";
    EXPECT_EQ(submit(), QString());
    EXPECT_DOUBLE_EQ(host.model->m_loads.last()->m_magnitude, 1500.0);

    // A dialog without a magnitude field: the edit copy's number waits the same way.
    Dialog bare;
    bare.OnCreate(host.view.get(), host.model->m_loads.last(), nullptr);
    bare.LoadObjectData();
    bare.text.erase(L::CodeMagnitude);
    bare.SetValue(L::FieldType, CKwLoad::Pressure);
    EXPECT_TRUE(IsMissingValue(bare.GetEditObject()->m_magnitude));
    bare.SetValue(L::FieldType, CKwLoad::Force);
    EXPECT_DOUBLE_EQ(bare.GetEditObject()->m_magnitude, 1500.0);

    // A fresh edit copy starts afresh: nothing typed for another load comes back.
    d.OnCreate(host.view.get(), nullptr, nullptr);
    d.LoadObjectData();
    d.SetValue(L::FieldType, CKwLoad::Moment);
    EXPECT_EQ(d.text[L::CodeMagnitude], QString());
}

TEST_F(LoadLogic, choosingTheStoredTypeAgainChangesNothing)
{
    using L = CKwUILoad;
    fresh(CKwLoad::EnforcedMotion);
    ASSERT_EQ(d.SetValue(L::FieldSubtype, CKwLoad::EnforcedVelocity), 1);
    d.text[L::CodeMagnitude] = QStringLiteral("3");
    d.SetValue(L::FieldTimeDependent, 1);
    const QList<CKwUIEntity*> entities = d.GetEditObject()->m_entities;
    EXPECT_EQ(d.SetValue(L::FieldType, CKwLoad::EnforcedMotion), 1);
    EXPECT_EQ(d.GetEditObject()->m_subtype, CKwLoad::EnforcedVelocity);
    EXPECT_EQ(d.text[L::CodeMagnitude], QStringLiteral("3"));
    EXPECT_EQ(d.text[L::CodeMagnitudeLabel], QStringLiteral("Magnitude (mm/s):"));
    EXPECT_TRUE(d.GetEditObject()->m_timeDependent);
    EXPECT_EQ(d.GetEditObject()->m_entities, entities);
}

TEST_F(LoadLogic, cancelTakesBackTheTablesMadeAndEditedFromTheEditor)
{
    CKwFEModel* m = host.model.get();
    const auto ramp = [m] { return KwTableLookup::Find(m, 2, KwTableLookup::Time); };
    const auto editRamp = [&](Dialog& e) {
        e.KeepTableForCancel(2, KwTableLookup::Time);
        auto* y = new CKwFunction;
        y->AddValue(9.0);
        ramp()->SetFunctions(nullptr, y);
        ramp()->SetName(QStringLiteral("Edited"));
        e.KeepTableForCancel(2, KwTableLookup::Time); // a second edit keeps the first state
    };
    // In order, each on what the one before left.
    const struct
    {
        const char* what;
        std::function<void(Dialog&)> act;
        bool submit;
        int tablesAdded;
        bool rampAsBefore;
    } cases[] = {
        {"new table, cancel", [](Dialog& e) { e.AddNewTable(KwTableLookup::Time); }, false, 0,
         true},
        {"new table, submit", [](Dialog& e) { e.AddNewTable(KwTableLookup::Temperature); }, true,
         1, true},
        {"new table dropped",
         [](Dialog& e) { e.DropNewTable(e.AddNewTable(KwTableLookup::Time)); }, true, 0, true},
        {"another table is not dropped", [](Dialog& e) { e.DropNewTable(2); }, false, 0, true},
        {"edited, cancel", editRamp, false, 0, true},
        {"edited, submit", editRamp, true, 0, false},
        {"edited then deleted, cancel",
         [&](Dialog& e) {
             editRamp(e);
             KwTableLookup::Remove(m, 2);
         },
         false, -1, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const qsizetype tables = m->m_tables.size();
        const QString name = ramp()->GetName();
        const std::vector<double> ys = ramp()->GetYFunction()->Values();
        Dialog e;
        e.OnCreate(host.view.get(), m->m_loads.at(1), nullptr);
        e.LoadObjectData();
        c.act(e);
        if (c.submit)
            EXPECT_EQ(e.OnSubmitUI(), 0) << host.view->GetLastBubbleText().toStdString();
        else
            EXPECT_EQ(e.OnCancelUI(), 0);
        EXPECT_EQ(m->m_tables.size(), tables + c.tablesAdded);
        if (ramp()) {
            EXPECT_EQ(ramp()->GetName() == name, c.rampAsBefore);
            EXPECT_EQ(ramp()->GetYFunction()->Values() == ys, c.rampAsBefore);
        }
    }
}

TEST_F(LoadLogic, deletedTablesAndUnknownTypesAreReportedNotFollowed)
{
    CKwLoad* top = host.model->m_loads.at(1);
    ASSERT_TRUE(KwTableLookup::Remove(host.model.get(), top->m_timeTableId));
    d.OnCreate(host.view.get(), top, nullptr);
    d.LoadObjectData();
    EXPECT_EQ(host.view->GetLastBubbleKind(), CFMView::BubbleWarning);
    EXPECT_EQ(host.view->GetLastBubbleText(),
              QStringLiteral("Time Dependence - \n 'Table 2 no longer exists; choose another "
                             "table.'"));
    EXPECT_EQ(submit(),
              QStringLiteral("Time Dependence - \n 'Table 2 no longer exists; choose another "
                             "table.'"));
    EXPECT_EQ(d.SetValue(CKwUILoad::FieldTimeTable, 2), 0);
    EXPECT_EQ(d.SetValue(CKwUILoad::FieldTimeTable, 3), 0); // a temperature table
    EXPECT_EQ(d.SetValue(CKwUILoad::FieldTimeTable, 6), 1);
    EXPECT_EQ(submit(), QString());
    EXPECT_EQ(top->m_timeTableId, 6);

    // A stored code no row has (here a heading's row number) is shown as a force, with a word.
    top->m_type = 12;
    Dialog e;
    e.OnCreate(host.view.get(), top, nullptr);
    e.LoadObjectData();
    EXPECT_EQ(e.GetEditObject()->m_type, CKwLoad::Force);
    EXPECT_TRUE(host.view->GetLastBubbleText().startsWith("The stored load type 12 is unknown"));
    EXPECT_EQ(top->m_type, 12);
    EXPECT_EQ(e.SetValue(CKwUILoad::FieldType, 12), 0);
}

TEST_F(LoadLogic, picksGoToTheEntitiesOrTheLocationAndRefusedKindsAreSaid)
{
    fresh(CKwLoad::RemoteForce);
    pick(CKwUIEntity::Edge, 1);
    EXPECT_EQ(host.view->GetLastBubbleText(),
              QStringLiteral("Selected Entities - \n 'Edge 1 cannot carry this type of load.'"));
    EXPECT_EQ(d.GetEditObject()->m_entities.size(), 1);

    EXPECT_EQ(d.SetValue(CKwUILoad::FieldPickTarget, CKwUILoad::PickLocation), 1);
    pick(CKwUIEntity::Vertex, 3);
    EXPECT_EQ(d.GetEditObject()->m_locationEntity,
              host.model->FindGeometry(CKwUIEntity::Vertex, 3));
    EXPECT_EQ(d.GetEditObject()->m_entities.size(), 1);
    EXPECT_EQ(d.tips[CKwUILoad::CodeLocationEntity],
              QStringLiteral("Select Point/Vertex for remote force location"));
    // Switching to nodes drops a vertex location; coordinates take no picks at all.
    EXPECT_EQ(d.SetValue(CKwUILoad::FieldLocationMode, CKwLoad::LocationNode), 1);
    EXPECT_EQ(d.GetEditObject()->m_locationEntity, nullptr);
    EXPECT_EQ(d.SetValue(CKwUILoad::FieldLocationMode, CKwLoad::LocationCoordinates), 1);
    EXPECT_EQ(d.SetValue(CKwUILoad::FieldPickTarget, CKwUILoad::PickLocation), 0);
    for (int i = 0; i < 3; ++i) {
        d.text[CKwUILoad::CodeDirectionX + i] = i == 0 ? QStringLiteral("1") : "0";
        d.text[CKwUILoad::CodeLocationX + i] = QStringLiteral("10");
    }
    EXPECT_EQ(submit(), QString());
    EXPECT_DOUBLE_EQ(host.model->m_loads.last()->m_location[0], 0.01);
    EXPECT_DOUBLE_EQ(host.model->m_loads.last()->GetComponent(0), 0.5);
    // Hydrostatic loads take no node as their surface point.
    EXPECT_EQ(d.SetValue(CKwUILoad::FieldType, CKwLoad::HydrostaticLoad), 1);
    EXPECT_EQ(d.SetValue(CKwUILoad::FieldLocationMode, CKwLoad::LocationNode), 0);
}

} // namespace
