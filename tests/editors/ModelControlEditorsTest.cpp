// The mesh control (kind 3), material orientation (6), element deletion (54) and surface
// contact (12) editors through LaunchDialog: opening on stored and new entities and on null
// pointers, picks into their lists, what each refuses with which field message (and that a
// refused OK writes nothing), and what an accepted OK stores.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwElementDeletion.h"
#include "CKwFEModel.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "CKwMFCUIElementDeletion.h"
#include "CKwMFCUIMaterialOrientation.h"
#include "CKwMFCUIMeshControl.h"
#include "CKwMFCUISurfaceContact.h"
#include "CKwMaterialOrient.h"
#include "CKwMeshLocal.h"
#include "CKwPhysicalProperty.h"
#include "CKwSurfaceContact.h"
#include "CKwUIEntity.h"
#include "KwControls.h"
#include "KwTestSupport.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <array>
#include <functional>
#include <gtest/gtest.h>

namespace {

using E = CKwUIEntity;

class ModelControlEditors : public ::testing::Test
{
public:
    void SetUp() override
    {
        kwtest::IsolateSettings();
        arc.SetCurved(true);
    }

    CKwMFCDialog* open(unsigned kind, void* object, void* extra = nullptr, unsigned option = 0)
    {
        DialogLaunchRequest r = host.Request(kind);
        r.object = object;
        r.extra = extra;
        r.option = option;
        LaunchDialog(&r);
        return dynamic_cast<CKwMFCDialog*>(host.view->GetOpenDialog());
    }
    E* geo(int kind, int id) const { return host.model->FindGeometry(kind, id); }
    void pick(std::initializer_list<E*> entities, bool drop = false)
    {
        host.view->SendPickEvent(QList<E*>(entities), drop);
    }
    static void setText(QWidget* d, int id, const char* text)
    {
        KwControl<QLineEdit>(d, id)->setText(QString::fromUtf8(text));
    }
    static void ok(QWidget* d) { KwControl<QPushButton>(d, 1)->click(); }
    // The model's count of entities of each of the four kinds.
    std::array<qsizetype, 4> counts() const
    {
        const CKwFEModel& m = *host.model;
        return {m.m_meshControls.size(), m.m_materialOrients.size(), m.m_elementDeletions.size(),
                m.m_surfaceContacts.size()};
    }
    kwtest::Host host;
    E arc{E::Edge, 99, QStringLiteral("Edge 99 (arc)")}; // a curved edge of another part
};

// Every kind opens on its stored sample entity with that entity's name, and on a new one with
// the next free ID, on the template its kind names.
TEST_F(ModelControlEditors, eachKindOpensOnAStoredAndOnANewEntity)
{
    CKwFEModel& m = *host.model;
    struct Case
    {
        unsigned kind;
        unsigned templateId;
        CKwFEBase* stored;
    };
    const Case cases[] = {
        {3, 359, m.m_meshControls.last()},
        {6, 364, m.m_materialOrients.first()},
        {54, 7225, m.m_elementDeletions.first()},
        {12, 360, m.m_surfaceContacts.first()},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.kind);
        CKwMFCDialog* d = open(c.kind, c.stored);
        ASSERT_NE(d, nullptr);
        EXPECT_EQ(d->GetTemplateId(), c.templateId);
        EXPECT_EQ(KwControl<QLineEdit>(d, 273)->text(), c.stored->GetName());
        d->OnCancel();
        d = open(c.kind, nullptr);
        ASSERT_NE(d, nullptr);
        EXPECT_EQ(KwControl<QLineEdit>(d, 274)->text(), QString::number(c.stored->GetID() + 1));
        d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

// Null view, analysis, object and extra: nothing crashes, and what opens can be cancelled.
TEST_F(ModelControlEditors, nullPointersOpenWithoutCrashing)
{
    std::array<void*, 101> emptyWords{};
    for (unsigned kind : {3u, 6u, 12u, 54u})
        for (void* extra : {static_cast<void*>(nullptr), static_cast<void*>(emptyWords.data())}) {
            SCOPED_TRACE(kind);
            DialogLaunchRequest r{};
            r.kind = kind;
            r.extra = extra;
            r.createHidden = 1;
            LaunchDialog(&r);
            for (QWidget* w : QApplication::topLevelWidgets())
                if (auto* d = dynamic_cast<CKwMFCDialog*>(w)) {
                    KwControl<QPushButton>(d, 1)->click(); // refused: nothing to write into
                    d->OnCancel();
                }
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    EXPECT_EQ(host.model->m_meshControls.size(), 2);
}

// What each editor refuses, with the field's message; a refused OK leaves the editor open and
// the model's lists as they were.
TEST_F(ModelControlEditors, badInputIsRefusedWithItsFieldMessageAndWritesNothing)
{
    struct Case
    {
        const char* what;
        unsigned kind;
        std::function<void(ModelControlEditors&, CKwMFCDialog*)> input;
        const char* message;
    };
    const auto orientation = [](CKwMFCDialog* d) {
        return dynamic_cast<CKwMFCUIMaterialOrientation*>(d);
    };
    const auto contact = [](CKwMFCDialog* d) { return dynamic_cast<CKwMFCUISurfaceContact*>(d); };
    const Case cases[] = {
        {"mesh control without entities", 3,
         [](ModelControlEditors&, CKwMFCDialog* d) { setText(d, 7704, "2"); },
         "Selected Entities - \n 'Select at least one vertex, edge or face.'"},
        {"mesh control with neither size nor count", 3,
         [](ModelControlEditors& t, CKwMFCDialog*) { t.pick({t.geo(E::Edge, 2)}); },
         "Element Size - \n 'Enter an element size or a number of elements.'"},
        {"mesh control with a size that is no number", 3,
         [](ModelControlEditors& t, CKwMFCDialog* d) {
             t.pick({t.geo(E::Edge, 2)});
             setText(d, 7704, "2,5x");
         },
         "Element Size - \n"},
        {"mesh control with a zero size", 3,
         [](ModelControlEditors& t, CKwMFCDialog* d) {
             t.pick({t.geo(E::Edge, 2)});
             setText(d, 7704, "0");
         },
         "'The element size must be greater than zero.'"},
        {"mesh control counting elements on a face", 3,
         [](ModelControlEditors& t, CKwMFCDialog* d) {
             t.pick({t.geo(E::Edge, 2), t.geo(E::Face, 3)});
             setText(d, 7706, "8");
         },
         "Number of Elements - \n 'A number of elements applies to edges only.'"},
        {"mesh control with a fractional count", 3,
         [](ModelControlEditors& t, CKwMFCDialog* d) {
             t.pick({t.geo(E::Edge, 2)});
             setText(d, 7706, "2.5");
         },
         "'Enter a whole number of elements.'"},
        {"orientation on a face without a 2D mesh", 6,
         [](ModelControlEditors& t, CKwMFCDialog*) {
             t.pick({t.geo(E::Face, 1), t.geo(E::Edge, 1)});
         },
         "Faces - \n 'Face 1 (Bottom) carries no 2D mesh. Mesh it with shell elements first.'"},
        {"orientation from a curved edge", 6,
         [orientation](ModelControlEditors& t, CKwMFCDialog* d) {
             t.pick({t.geo(E::Face, 2)});
             orientation(d)->SetActiveSelectionBox(orientation(d)->GetEdgeBox());
             t.pick({&t.arc});
         },
         "Straight Edge - \n 'The secondary geometry must be a straight line.'"},
        {"orientation from a face", 6,
         [orientation](ModelControlEditors& t, CKwMFCDialog* d) {
             t.pick({t.geo(E::Face, 2)});
             orientation(d)->SetActiveSelectionBox(orientation(d)->GetEdgeBox());
             t.pick({t.geo(E::Edge, 3), t.geo(E::Face, 5)});
         },
         "Straight Edge - \n 'The secondary geometry must be a straight line.'"},
        {"orientation from an edge never picked", 6,
         [](ModelControlEditors& t, CKwMFCDialog*) { t.pick({t.geo(E::Face, 2)}); },
         "'Select a straight edge for the direction.'"},
        {"orientation from a vector of zero length", 6,
         [](ModelControlEditors& t, CKwMFCDialog* d) {
             t.pick({t.geo(E::Face, 2)});
             KwControl<QAbstractButton>(d, 7725)->click();
             setText(d, 7732, "0");
             setText(d, 7734, "");
             setText(d, 7736, "0");
         },
         "Vector - \n 'The direction has zero length.'"},
        {"orientation with a component that is no number", 6,
         [](ModelControlEditors& t, CKwMFCDialog* d) {
             t.pick({t.geo(E::Face, 2)});
             KwControl<QAbstractButton>(d, 7725)->click();
             setText(d, 7734, "y");
         },
         "Y - \n 'Enter a number.'"},
        {"element deletion without a criterion", 54, [](ModelControlEditors&, CKwMFCDialog*) {},
         "'Switch on at least one criterion.'"},
        {"element deletion with a switched-on criterion and no limit", 54,
         [](ModelControlEditors&, CKwMFCDialog* d) {
             KwControl<QAbstractButton>(d, 7748)->click();
         },
         "Cover plate 3 mm, Maximum Principal Stress - \n 'Enter a limit greater than zero.'"},
        {"element deletion with a negative time", 54,
         [](ModelControlEditors&, CKwMFCDialog* d) {
             KwControl<QAbstractButton>(d, 7750)->click();
             setText(d, 7751, "-1");
         },
         "'Enter a limit greater than zero.'"},
        {"contact without a master", 12,
         [contact](ModelControlEditors& t, CKwMFCDialog* d) {
             contact(d)->SetActiveSelectionBox(contact(d)->GetBox(CKwUISurfaceContact::Slave));
             t.pick({t.geo(E::Face, 3)});
         },
         "Master Entities - \n 'Select at least one master entity.'"},
        {"contact without a slave", 12,
         [](ModelControlEditors& t, CKwMFCDialog*) { t.pick({t.geo(E::Face, 3)}); },
         "Slave Entities - \n 'Select at least one slave entity.'"},
        {"contact with one face on both sides", 12,
         [contact](ModelControlEditors& t, CKwMFCDialog* d) {
             t.pick({t.geo(E::Face, 3), t.geo(E::Face, 4)});
             contact(d)->SetActiveSelectionBox(contact(d)->GetBox(CKwUISurfaceContact::Slave));
             t.pick({t.geo(E::Face, 4)});
         },
         "Slave Entities - \n 'Face 4 (Back) is on both sides of the contact.'"},
        {"separating contact with negative friction", 12,
         [contact](ModelControlEditors& t, CKwMFCDialog* d) {
             t.pick({t.geo(E::Face, 3)});
             contact(d)->SetActiveSelectionBox(contact(d)->GetBox(CKwUISurfaceContact::Slave));
             t.pick({t.geo(E::Face, 4)});
             KwControl<QComboBox>(d, CKwMFCUISurfaceContact::kKindCombo)
                 ->setCurrentIndex(CKwSurfaceContact::Separating);
             setText(d, 7764, "-0.1");
         },
         "'The friction coefficient must not be negative.'"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const auto before = counts();
        CKwMFCDialog* d = open(c.kind, nullptr);
        ASSERT_NE(d, nullptr);
        c.input(*this, d);
        host.view->ClearBubbleRecord();
        ok(d);
        EXPECT_TRUE(host.view->GetLastBubbleText().contains(QString::fromUtf8(c.message)))
            << host.view->GetLastBubbleText().toStdString();
        EXPECT_EQ(host.view->GetOpenDialog(), d);
        EXPECT_EQ(counts(), before);
        d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

// Accepted input is stored in SI from the display units (mm, MPa), with the picks.
TEST_F(ModelControlEditors, acceptedInputIsStoredInInternalUnits)
{
    CKwFEModel& m = *host.model;
    CKwMFCDialog* d = open(3, nullptr);
    ASSERT_NE(d, nullptr);
    // A body is nothing a mesh control acts on; the list and the control leave it out.
    pick({geo(E::Edge, 2), geo(E::Edge, 3), geo(E::Body, 1)});
    EXPECT_EQ(dynamic_cast<CKwMFCUIMeshControl*>(d)->GetSelectionBox()->GetEntities().size(), 2);
    setText(d, 7704, "1.5");
    setText(d, 7706, "12");
    ok(d);
    ASSERT_EQ(m.m_meshControls.size(), 3);
    const CKwMeshLocal* control = m.m_meshControls.last();
    EXPECT_DOUBLE_EQ(control->m_elementSize, 0.0015);
    EXPECT_EQ(control->m_elementCount, 12);
    EXPECT_EQ(control->m_entities, (QList<E*>{geo(E::Edge, 2), geo(E::Edge, 3)}));

    d = open(54, m.m_elementDeletions.first());
    ASSERT_NE(d, nullptr);
    setText(d, 7749, "250");
    KwControl<QAbstractButton>(d, 7750)->click();
    setText(d, 7751, "0.004");
    ok(d);
    const CKwElementDeletion::PropertyCriteria* cover =
        m.m_elementDeletions.first()->Find(m.m_properties.first()->GetID());
    ASSERT_NE(cover, nullptr);
    EXPECT_DOUBLE_EQ(cover->limit[CKwElementDeletion::PrincipalStress], 2.5e8);
    EXPECT_TRUE(cover->on[CKwElementDeletion::Time]);
    EXPECT_DOUBLE_EQ(cover->limit[CKwElementDeletion::Time], 0.004);
    EXPECT_DOUBLE_EQ(cover->limit[CKwElementDeletion::PlasticStrain], 0.15); // untouched

    d = open(6, m.m_materialOrients.first());
    ASSERT_NE(d, nullptr);
    KwControl<QAbstractButton>(d, 7725)->click();
    setText(d, 7732, "0");
    setText(d, 7734, "1");
    setText(d, 7736, "0.5");
    ok(d);
    const CKwMaterialOrient* o = m.m_materialOrients.first();
    EXPECT_EQ(o->m_method, CKwMaterialOrient::FromVector);
    EXPECT_EQ(o->m_vector, (std::array<double, 3>{0.0, 1.0, 0.5}));
}

// Cancel after edits and picks leaves every stored entity as it was.
TEST_F(ModelControlEditors, cancelLeavesTheStoredEntity)
{
    CKwFEModel& m = *host.model;
    CKwMFCDialog* d = open(12, m.m_surfaceContacts.first());
    ASSERT_NE(d, nullptr);
    pick({geo(E::Face, 5)});
    setText(d, 7764, "0.9");
    setText(d, 273, "Renamed");
    d->OnCancel();
    const CKwSurfaceContact* c = m.m_surfaceContacts.first();
    EXPECT_EQ(c->GetName(), "Cover on bracket");
    EXPECT_DOUBLE_EQ(c->m_friction, 0.15);
    EXPECT_EQ(c->m_master, QList<E*>{geo(E::Face, 2)});
}

// Picks go to the list that was clicked last; a drop in the view leaves both sides; a vertex
// is no contact entity; the view highlights what the lists hold.
TEST_F(ModelControlEditors, contactPicksGoToTheTargetSide)
{
    auto* d = dynamic_cast<CKwMFCUISurfaceContact*>(open(12, nullptr));
    ASSERT_NE(d, nullptr);
    CKwMFCNodeElemSelectionBox* master = d->GetBox(CKwUISurfaceContact::Master);
    CKwMFCNodeElemSelectionBox* slave = d->GetBox(CKwUISurfaceContact::Slave);
    pick({geo(E::Face, 1), geo(E::Vertex, 1)});
    d->SetActiveSelectionBox(slave);
    pick({geo(E::Face, 3), geo(E::Edge, 4)});
    EXPECT_EQ(master->GetEntities(), QList<E*>{geo(E::Face, 1)});
    EXPECT_EQ(slave->GetEntities(), (QList<E*>{geo(E::Face, 3), geo(E::Edge, 4)}));
    EXPECT_EQ(d->GetSideEntities(CKwUISurfaceContact::Slave), slave->GetEntities());
    EXPECT_EQ(host.view->GetHighlightedEntities().size(), 3);
    pick({geo(E::Face, 3)}, true);
    EXPECT_EQ(d->GetSideEntities(CKwUISurfaceContact::Slave), QList<E*>{geo(E::Edge, 4)});
    EXPECT_EQ(slave->GetEntities(), QList<E*>{geo(E::Edge, 4)});
    ok(d);
    ASSERT_EQ(host.model->m_surfaceContacts.size(), 2);
    EXPECT_EQ(host.model->m_surfaceContacts.last()->m_master, QList<E*>{geo(E::Face, 1)});
    EXPECT_EQ(host.model->m_surfaceContacts.last()->m_slave, QList<E*>{geo(E::Edge, 4)});
}

// The option chooses a new contact's kind; friction takes input for separating contacts only.
TEST_F(ModelControlEditors, optionChoosesTheKindAndFrictionFollowsIt)
{
    CKwMFCDialog* d = open(12, nullptr, nullptr, CKwSurfaceContact::Welded);
    ASSERT_NE(d, nullptr);
    auto* kind = KwControl<QComboBox>(d, CKwMFCUISurfaceContact::kKindCombo);
    EXPECT_EQ(kind->currentIndex(), CKwSurfaceContact::Welded);
    EXPECT_FALSE(KwFindControl(d, 7764)->isEnabled());
    kind->setCurrentIndex(CKwSurfaceContact::Separating);
    EXPECT_TRUE(KwFindControl(d, 7764)->isEnabled());
}

// The parameters page takes all three values or none.
TEST_F(ModelControlEditors, contactParametersAreTakenAllOrNothing)
{
    auto* d = dynamic_cast<CKwMFCUISurfaceContact*>(open(12, host.model->m_surfaceContacts.first()));
    ASSERT_NE(d, nullptr);
    const auto runPage = [&](const char* a, const char* b, const char* c) {
        QTimer::singleShot(0, d, [&] {
            QWidget* page = QApplication::activeModalWidget();
            ASSERT_NE(page, nullptr);
            setText(page, 7782, a);
            setText(page, 7784, b);
            setText(page, 7786, c);
            ok(page);
            if (QApplication::activeModalWidget() == page)
                KwControl<QPushButton>(page, 2)->click();
        });
        d->OpenContactParameters();
    };
    runPage("0.02", "0", "2"); // a stiffness factor of zero is refused
    EXPECT_DOUBLE_EQ(d->GetEditObject()->m_penetrationTolerance, 1.0e-5);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("greater than zero"));
    runPage("0.02", "2", "3");
    EXPECT_DOUBLE_EQ(d->GetEditObject()->m_penetrationTolerance, 2.0e-5);
    EXPECT_DOUBLE_EQ(d->GetEditObject()->m_stiffnessFactor, 2.0);
    EXPECT_DOUBLE_EQ(d->GetEditObject()->m_searchDistance, 3.0e-3);
}

// Kinds 6 and 54 read their context from the 101st word of `extra`.
TEST_F(ModelControlEditors, theHundredAndFirstWordOfExtraIsTheContext)
{
    CKwFEModel& m = *host.model;
    std::array<void*, 101> words{};
    words[100] = static_cast<CKwFEBase*>(m.m_properties.first());
    auto* o = dynamic_cast<CKwMFCUIMaterialOrientation*>(open(6, nullptr, words.data()));
    ASSERT_NE(o, nullptr);
    EXPECT_EQ(o->GetEditObject()->m_propertyId, m.m_properties.first()->GetID());
    o->OnCancel();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    CKwAnalysis* linear = m.m_analyses.first();
    ASSERT_FALSE(linear->IsExplicitAnalysis());
    words[100] = static_cast<CKwFEBase*>(linear);
    CKwMFCDialog* d = open(54, nullptr, words.data());
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(KwControl<QLineEdit>(d, 7742)->text(), linear->GetName());
    KwControl<QAbstractButton>(d, 7746)->click();
    setText(d, 7747, "0.2");
    ok(d);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains(
        "Element deletion applies to explicit analyses only."));
    EXPECT_EQ(m.m_elementDeletions.size(), 1);
}

// Criteria typed for one property stay with it when another property is shown.
TEST_F(ModelControlEditors, deletionCriteriaStayWithTheirProperty)
{
    CKwFEModel& m = *host.model;
    CKwMFCDialog* d = open(54, nullptr);
    ASSERT_NE(d, nullptr);
    auto* property = KwControl<QComboBox>(d, CKwMFCUIElementDeletion::kPropertyCombo);
    ASSERT_EQ(property->count(), m.m_properties.size());
    KwControl<QAbstractButton>(d, 7746)->click();
    setText(d, 7747, "0.3");
    property->setCurrentIndex(1);
    EXPECT_FALSE(KwControl<QAbstractButton>(d, 7746)->isChecked());
    EXPECT_TRUE(KwControl<QLineEdit>(d, 7747)->text().isEmpty());
    EXPECT_FALSE(KwFindControl(d, 7747)->isEnabled());
    KwControl<QAbstractButton>(d, 7750)->click();
    setText(d, 7751, "0.01");
    property->setCurrentIndex(0);
    EXPECT_TRUE(KwControl<QAbstractButton>(d, 7746)->isChecked());
    EXPECT_EQ(KwControl<QLineEdit>(d, 7747)->text(), "0.3");
    ok(d);
    ASSERT_EQ(m.m_elementDeletions.size(), 2);
    CKwElementDeletion* added = m.m_elementDeletions.last();
    EXPECT_EQ(added->m_criteria.size(), 2);
    ASSERT_NE(added->Find(m.m_properties[1]->GetID()), nullptr);
    EXPECT_DOUBLE_EQ(added->Find(m.m_properties[1]->GetID())->limit[CKwElementDeletion::Time],
                     0.01);
}

} // namespace
