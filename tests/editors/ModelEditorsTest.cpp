// The concentrated mass, connector, coordinate system and end release editors end to end:
// opened through LaunchDialog on the sample model's entity and on a new one, picks made by
// clicking the view, the panels their choices show, and OK and Cancel on the model.
#include "CFMView.h"
#include "CKwConMass.h"
#include "CKwConnector.h"
#include "CKwCoordinateSystem.h"
#include "CKwFEModel.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "CKwMFCUIConMass.h"
#include "CKwMFCUIConnector.h"
#include "CKwMFCUICoordSystem.h"
#include "CKwMFCUIEndRelease.h"
#include "CKwMeshModel.h"
#include "CKwUIEntity.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwTestSupport.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class ModelEditors : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }

    QWidget* open(unsigned kind, void* object)
    {
        DialogLaunchRequest r = host.Request(kind);
        r.object = object;
        LaunchDialog(&r);
        return host.view->GetOpenDialog();
    }
    void click(CKwUIEntity* e)
    {
        const QPointF at = host.view->ScreenPointOf(e);
        ASSERT_GE(at.x(), 0) << "not drawn";
        QTest::mouseClick(host.view.get(), Qt::LeftButton, Qt::NoModifier, at.toPoint());
    }
    static QStringList lines(const QListWidget* l)
    {
        QStringList out;
        for (int i = 0; i < l->count(); ++i)
            out << l->item(i)->text();
        return out;
    }
    CKwUIEntity* geo(int kind, int id) { return host.model->FindGeometry(kind, id); }

    kwtest::Host host;
};

TEST_F(ModelEditors, eachOpensOnTheSampleEntityAndOnANewOneAndCancelWritesNothing)
{
    struct Case
    {
        unsigned kind;
        unsigned templateId;
        const char* title;
        std::function<void*(CKwFEModel&)> existing;
        const char* existingName; // the name field, or the first listed entity
        const char* newName;
        std::function<qsizetype(CKwFEModel&)> count;
    };
    const Case cases[] = {
        {13, 353, "Concentrated Masses",
         [](CKwFEModel& m) { return static_cast<CKwFEBase*>(m.m_conMasses.first()); },
         "Sensor housing", "Concentrated Mass 2",
         [](CKwFEModel& m) { return m.m_conMasses.size(); }},
        {14, 7001, "Connector",
         [](CKwFEModel& m) { return static_cast<CKwFEBase*>(m.m_connectors.first()); },
         "M8 bolt", "Connector 2", [](CKwFEModel& m) { return m.m_connectors.size(); }},
        {28, 7012, "Coordinate System",
         [](CKwFEModel& m) { return static_cast<CKwFEBase*>(m.m_coordSystems.first()); },
         "Bore axis", "Coordinate System 2",
         [](CKwFEModel& m) { return m.m_coordSystems.size(); }},
        {55, 7231, "End Release",
         [](CKwFEModel& m) { return static_cast<CKwFEBase*>(m.m_mesh); }, "Element 2001", nullptr,
         [](CKwFEModel& m) { return static_cast<qsizetype>(m.m_mesh->EndReleases().size()); }},
    };
    for (const Case& c : cases) {
        const qsizetype before = c.count(*host.model);
        for (bool existing : {true, false}) {
            QWidget* w = open(c.kind, existing ? c.existing(*host.model) : nullptr);
            auto* d = dynamic_cast<CKwMFCDialog*>(w);
            ASSERT_NE(d, nullptr) << c.kind;
            EXPECT_TRUE(d->isVisible()) << c.kind;
            EXPECT_EQ(d->GetTemplateId(), c.templateId);
            EXPECT_EQ(d->windowTitle(), c.title);
            const char* name = existing ? c.existingName : c.newName;
            if (auto* nameEdit = KwControl<QLineEdit>(d, 273)) {
                EXPECT_EQ(nameEdit->text(), name) << c.kind << " existing " << existing;
            } else if (auto* list = KwControl<QListWidget>(d, 1406)) {
                EXPECT_EQ(lines(list).value(0), name ? QString::fromUtf8(name) : QString())
                    << c.kind << " existing " << existing;
            }
            d->OnCancel();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            EXPECT_EQ(host.view->GetOpenDialogCount(), 0) << c.kind;
            EXPECT_EQ(c.count(*host.model), before) << c.kind;
        }
    }
}

TEST_F(ModelEditors, withoutAViewNothingCrashesAndTheEndReleaseOpensNothing)
{
    for (unsigned kind : {13u, 14u, 28u, 55u}) {
        const QList<QWidget*> before = kwtest::VisibleTopLevels();
        DialogLaunchRequest r{};
        r.kind = kind;
        LaunchDialog(&r);
        QApplication::processEvents();
        QList<CKwMFCDialog*> opened;
        for (QWidget* w : kwtest::VisibleTopLevels())
            if (!before.contains(w))
                if (auto* d = dynamic_cast<CKwMFCDialog*>(w))
                    opened.append(d);
        EXPECT_EQ(opened.size(), kind == 55 ? 0 : 1) << kind;
        for (CKwMFCDialog* d : opened) {
            QTest::mouseClick(KwControl<QAbstractButton>(d, 1), Qt::LeftButton); // OK: refused
            d->OnCancel();
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(ModelEditors, aMassPickedInTheViewIsListedHighlightedAndWrittenOnOk)
{
    auto* d = dynamic_cast<CKwMFCUIConMass*>(open(13, nullptr));
    ASSERT_NE(d, nullptr);
    CKwMFCNodeElemSelectionBox* box = d->GetSelectionBox();
    EXPECT_EQ(box->GetFilter(), 32782u);
    EXPECT_EQ(box->toolTip(), "Select point or vertex");
    click(geo(CKwUIEntity::Face, 2)); // faces are not offered to a point mass
    EXPECT_EQ(box->count(), 0);
    click(geo(CKwUIEntity::Vertex, 2));
    EXPECT_EQ(lines(box), QStringList{"Vertex 2"});
    EXPECT_EQ(host.view->GetHighlightedEntities(), box->GetEntities());

    // The automatic type is refused in this part document: the type and the pick stay.
    KwControl<QComboBox>(d, 1417)->setCurrentIndex(1);
    EXPECT_EQ(KwControl<QComboBox>(d, 1417)->currentIndex(), 0);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("part documents"));
    EXPECT_EQ(lines(box), QStringList{"Vertex 2"});

    KwControl<QLineEdit>(d, 7802)->setText("0");
    QTest::mouseClick(KwControl<QAbstractButton>(d, 1), Qt::LeftButton);
    EXPECT_TRUE(d->isVisible());
    EXPECT_TRUE(host.view->GetLastBubbleText().startsWith("Mass - \n '"));
    KwControl<QLineEdit>(d, 7802)->setText("0.002"); // tonnes
    KwControl<QLineEdit>(d, 7806)->setText("5");
    QTest::mouseClick(KwControl<QAbstractButton>(d, 1), Qt::LeftButton);
    ASSERT_EQ(host.model->m_conMasses.size(), 2);
    const CKwConMass* added = host.model->m_conMasses.last();
    EXPECT_DOUBLE_EQ(added->m_mass, 2.0);
    EXPECT_DOUBLE_EQ(added->m_inertia[2], 5e-3); // t mm^2 to kg m^2
    EXPECT_EQ(added->m_entities, QList<CKwUIEntity*>{geo(CKwUIEntity::Vertex, 2)});
}

TEST_F(ModelEditors, valuesAndUnitLabelsFollowTheUnitSystem)
{
    CKwConMass* mass = host.model->m_conMasses.first();
    mass->m_mass = 2.0;
    mass->m_inertia = {0.5, 0, 0};
    mass->m_offset = {0.0254, 0, 0};
    struct Case
    {
        KW_UOM::System system;
        const char* massLabel;
        const char* mass;
        const char* inertiaLabel;
        const char* inertia;
        const char* offset;
    };
    const Case cases[] = {
        {KW_UOM::SI, "Mass (kg):", "2", "Moments of Inertia (kg·m²):", "0.5", "0.0254"},
        {KW_UOM::MMNS, "Mass (t):", "0.002", "Moments of Inertia (t·mm²):", "500", "25.4"},
        {KW_UOM::IPS, "Mass (lbf·s²/in):", "0.01142029431", "Moments of Inertia (lbf·s²·in):",
         "4.425372896", "1"},
    };
    for (const Case& c : cases) {
        host.units->SetSystem(c.system);
        QWidget* d = open(13, static_cast<CKwFEBase*>(mass));
        ASSERT_NE(d, nullptr);
        EXPECT_EQ(KwGetControlText(d, 7801), c.massLabel);
        EXPECT_EQ(KwControl<QLineEdit>(d, 7802)->text(), c.mass) << c.massLabel;
        EXPECT_EQ(KwGetControlText(d, 7803), c.inertiaLabel);
        EXPECT_EQ(KwControl<QLineEdit>(d, 7804)->text(), c.inertia) << c.inertiaLabel;
        EXPECT_EQ(KwControl<QLineEdit>(d, 7811)->text(), c.offset) << c.massLabel;
        // A value typed with this system's unit label is taken in that unit.
        KwControl<QLineEdit>(d, 7805)->setText(QStringLiteral("%1 %2").arg(c.inertia,
            QString::fromUtf8(c.inertiaLabel).section('(', 1).section(')', 0, 0)));
        QTest::mouseClick(KwControl<QAbstractButton>(d, 1), Qt::LeftButton);
        ASSERT_EQ(host.view->GetOpenDialog(), nullptr) << qPrintable(host.view->GetLastBubbleText());
        EXPECT_NEAR(mass->m_inertia[1], 0.5, 1e-9) << c.inertiaLabel;
        mass->m_inertia[1] = 0;
    }
}

TEST_F(ModelEditors, connectorEndsFillInTurnAndTheAdvancedPartComesAndGoes)
{
    auto* d = dynamic_cast<CKwMFCUIConnector*>(open(14, nullptr));
    ASSERT_NE(d, nullptr);
    auto* toggle = KwControl<QPushButton>(d, 7879);
    EXPECT_FALSE(d->IsAdvancedShown());
    EXPECT_EQ(toggle->text(), " >> ");
    const int shortHeight = d->height();
    QTest::mouseClick(toggle, Qt::LeftButton);
    EXPECT_TRUE(d->IsAdvancedShown());
    EXPECT_EQ(toggle->text(), " << ");
    EXPECT_GT(d->height(), shortHeight);
    QTest::mouseClick(toggle, Qt::LeftButton);
    EXPECT_FALSE(d->IsAdvancedShown());

    // A bolt sits in holes: its ends are edges; after end 1 the next pick is end 2's.
    EXPECT_EQ(d->GetEndBox(1)->GetFilter(), 0x10u);
    EXPECT_EQ(d->GetEndBox(2)->GetFilter(), 0x10u);
    click(geo(CKwUIEntity::Edge, 1));
    click(geo(CKwUIEntity::Edge, 5));
    EXPECT_EQ(lines(d->GetEndBox(1)), QStringList{"Edge 1"});
    EXPECT_EQ(lines(d->GetEndBox(2)), QStringList{"Edge 5"});

    // The panels follow the kind: a spring shows its stiffness, not a material.
    KwControl<QComboBox>(d, 1417)->setCurrentIndex(CKwConnector::Spring);
    EXPECT_TRUE(KwFindControl(d, 7853)->isVisibleTo(d));
    EXPECT_FALSE(KwFindControl(d, 7860)->isVisibleTo(d));
    EXPECT_EQ(d->GetEndBox(2)->GetFilter(), 32782u);
    EXPECT_EQ(d->GetEndBox(1)->count(), 0); // edges are no spring ends
    d->OnCancel();
    EXPECT_EQ(host.model->m_connectors.size(), 1);
}

TEST_F(ModelEditors, aConnectorShowsItsEndsEachTimeItOpensInEitherForm)
{
    for (int round = 0; round < 2; ++round) {
        auto* d = dynamic_cast<CKwMFCUIConnector*>(open(14, host.model->m_connectors.first()));
        ASSERT_NE(d, nullptr);
        QTest::mouseClick(KwControl<QPushButton>(d, 7879), Qt::LeftButton);
        EXPECT_EQ(lines(d->GetEndBox(1)), QStringList{"Edge 3"}) << round;
        EXPECT_EQ(lines(d->GetEndBox(2)), QStringList{"Edge 9"}) << round;
        d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(ModelEditors, coordinateSystemShowsThePanelOfItsDefinition)
{
    auto* d = dynamic_cast<CKwMFCUICoordSystem*>(open(28, host.model->m_coordSystems.first()));
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(KwControl<QComboBox>(d, 1417)->currentIndex(), CKwCoordinateSystem::Cylindrical);
    EXPECT_EQ(KwControl<QComboBox>(d, 7902)->count(), host.model->m_coordinateSystems.size());
    EXPECT_EQ(KwControl<QLineEdit>(d, 7916)->text(), "25"); // mm
    const struct
    {
        int row;
        int shown;
    } panels[] = {{1, 7930}, {2, 7950}, {0, 7910}};
    for (const auto& p : panels) {
        KwControl<QComboBox>(d, 7904)->setCurrentIndex(p.row);
        for (int panel : {7910, 7930, 7950})
            EXPECT_EQ(KwFindControl(d, panel)->isVisibleTo(d), panel == p.shown) << p.row;
    }
    // A pick places the system only when it is defined by one; the box lists what it took.
    CKwMFCNodeElemSelectionBox* box = d->GetSelectionBox();
    EXPECT_EQ(box->GetFilter(), 32782u);
    click(geo(CKwUIEntity::Vertex, 3));
    EXPECT_EQ(box->count(), 0);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("defined by one"));
    KwControl<QComboBox>(d, 7904)->setCurrentIndex(2);
    click(geo(CKwUIEntity::Vertex, 3));
    click(geo(CKwUIEntity::Vertex, 2));
    EXPECT_EQ(lines(box), QStringList{"Vertex 2"});
    KwControl<QComboBox>(d, 7904)->setCurrentIndex(0);
    // Typed in one panel, kept across a look at another.
    KwControl<QLineEdit>(d, 7917)->setText("35");
    KwControl<QComboBox>(d, 7904)->setCurrentIndex(1);
    KwControl<QComboBox>(d, 7904)->setCurrentIndex(0);
    EXPECT_EQ(KwControl<QLineEdit>(d, 7917)->text(), "35");
    QTest::mouseClick(KwControl<QAbstractButton>(d, 1), Qt::LeftButton);
    EXPECT_DOUBLE_EQ(host.model->m_coordSystems.first()->m_origin[2], 0.035);
}

TEST_F(ModelEditors, endReleaseChecksShowAndSetTheElementChosenInTheList)
{
    CKwMeshModel* mesh = host.model->m_mesh;
    auto* d = dynamic_cast<CKwMFCUIEndRelease*>(open(55, static_cast<CKwFEBase*>(mesh)));
    ASSERT_NE(d, nullptr);
    CKwMFCNodeElemSelectionBox* box = d->GetSelectionBox();
    EXPECT_EQ(lines(box), (QStringList{"Element 2001", "Element 2008"}));
    box->setCurrentRow(0, QItemSelectionModel::ClearAndSelect);
    EXPECT_EQ(d->GetEndAMask(), 0x30u);
    EXPECT_EQ(d->GetEndBMask(), 0u);
    box->setCurrentRow(1, QItemSelectionModel::ClearAndSelect);
    EXPECT_EQ(d->GetEndAMask(), 0u);
    EXPECT_EQ(d->GetEndBMask(), 0x30u);
    QTest::mouseClick(KwControl<QAbstractButton>(d, 7961), Qt::LeftButton); // end B, TX
    // A beam picked in the view joins the list; a solid element is refused.
    host.view->SendPickEvent({mesh->ElementEntity(2005), mesh->ElementEntity(3)}, false);
    EXPECT_EQ(lines(box).size(), 3);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("beam elements only"));
    QTest::mouseClick(KwControl<QAbstractButton>(d, 1), Qt::LeftButton);
    EXPECT_FALSE(d->isVisible());
    EXPECT_EQ(mesh->GetEndRelease(2008), (CKwMeshModel::EndRelease{0, 0x31}));
    EXPECT_EQ(mesh->GetEndRelease(2001), (CKwMeshModel::EndRelease{0x30, 0}));
    EXPECT_EQ(mesh->GetEndRelease(2005), (CKwMeshModel::EndRelease{0, 0x31}));
}

} // namespace
