// What the lists of the mesh control, material orientation and surface contact editors take
// from a pick of each kind of entity, values typed in other unit systems, a language switch
// with the editors open, and the entities a host hands to a new mesh control.
#include "CFMView.h"
#include "CKwElementDeletion.h"
#include "CKwFEModel.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "CKwMFCUIElementDeletion.h"
#include "CKwMFCUIMaterialOrientation.h"
#include "CKwMFCUIMeshControl.h"
#include "CKwMFCUISurfaceContact.h"
#include "CKwMeshLocal.h"
#include "CKwMeshModel.h"
#include "CKwSurfaceContact.h"
#include "CKwUIEntity.h"
#include "CKwXMLUtils.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwTestSupport.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <functional>
#include <gtest/gtest.h>

namespace {

using E = CKwUIEntity;

class ModelControlPicks : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }
    CKwMFCDialog* open(unsigned kind, void* object, void* extra = nullptr)
    {
        DialogLaunchRequest r = host.Request(kind);
        r.object = object;
        r.extra = extra;
        LaunchDialog(&r);
        return dynamic_cast<CKwMFCDialog*>(host.view->GetOpenDialog());
    }
    // One entity of each kind the view can report.
    QList<E*> oneOfEach() const
    {
        CKwFEModel& m = *host.model;
        return {m.FindGeometry(E::Vertex, 1), m.FindGeometry(E::Edge, 1),
                m.FindGeometry(E::Face, 2),   m.FindGeometry(E::Body, 1),
                m.m_mesh->NodeEntity(m.m_mesh->Nodes().front().id),
                m.m_mesh->ElementEntity(m.m_mesh->ElementID(0))};
    }
    static void ok(QWidget* d) { KwControl<QPushButton>(d, 1)->click(); }
    kwtest::Host host;
};

// Each list, targeted, is given one pick of every kind at once: what it shows and what the
// edit copy holds are the kinds the list is for, nothing else.
TEST_F(ModelControlPicks, eachListTakesOnlyItsKinds)
{
    using Kinds = QList<E::Kind>;
    struct Case
    {
        const char* list;
        unsigned kind;
        std::function<CKwMFCNodeElemSelectionBox*(CKwMFCDialog*)> box;
        std::function<QList<E*>(CKwMFCDialog*)> held;
        Kinds takes;
    };
    const auto contact = [](CKwMFCDialog* d) { return dynamic_cast<CKwMFCUISurfaceContact*>(d); };
    const auto orient = [](CKwMFCDialog* d) {
        return dynamic_cast<CKwMFCUIMaterialOrientation*>(d);
    };
    const Case cases[] = {
        {"mesh control", 3,
         [](CKwMFCDialog* d) { return dynamic_cast<CKwMFCUIMeshControl*>(d)->GetSelectionBox(); },
         [](CKwMFCDialog* d) { return dynamic_cast<CKwMFCUIMeshControl*>(d)->GetSelectedEntities(); },
         {E::Vertex, E::Edge, E::Face}},
        {"orientation faces", 6, [orient](CKwMFCDialog* d) { return orient(d)->GetFacesBox(); },
         [orient](CKwMFCDialog* d) { return orient(d)->GetEditObject()->m_faces; }, {E::Face}},
        {"orientation edge", 6, [orient](CKwMFCDialog* d) { return orient(d)->GetEdgeBox(); },
         [orient](CKwMFCDialog* d) {
             const CKwMaterialOrient* o = orient(d)->GetEditObject();
             return o->m_edge ? QList<E*>{o->m_edge} : QList<E*>{};
         },
         {E::Face}}, // one entry: the last edge or face picked
        {"contact master", 12,
         [contact](CKwMFCDialog* d) { return contact(d)->GetBox(CKwUISurfaceContact::Master); },
         [contact](CKwMFCDialog* d) {
             return contact(d)->GetSideEntities(CKwUISurfaceContact::Master);
         },
         {E::Edge, E::Face}},
        {"contact slave", 12,
         [contact](CKwMFCDialog* d) { return contact(d)->GetBox(CKwUISurfaceContact::Slave); },
         [contact](CKwMFCDialog* d) {
             return contact(d)->GetSideEntities(CKwUISurfaceContact::Slave);
         },
         {E::Edge, E::Face}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.list);
        auto* d = dynamic_cast<CKwMFCUIBase*>(open(c.kind, nullptr));
        ASSERT_NE(d, nullptr);
        CKwMFCNodeElemSelectionBox* box = c.box(d);
        d->SetActiveSelectionBox(box);
        host.view->SendPickEvent(oneOfEach(), false);
        Kinds shown, held;
        for (const E* e : box->GetEntities())
            shown << e->GetKind();
        for (const E* e : c.held(d))
            held << e->GetKind();
        EXPECT_EQ(shown, c.takes);
        EXPECT_EQ(held, c.takes);
        d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

// Typed values are read in the unit system shown and stored in SI.
TEST_F(ModelControlPicks, valuesAreReadInTheUnitsShown)
{
    struct Case
    {
        KW_UOM::System system;
        const char* size;      // mesh control element size
        const char* stress;    // element deletion principal stress
        double sizeSI, stressSI;
    };
    const Case cases[] = {
        {KW_UOM::SI, "0.004", "2.5e8", 0.004, 2.5e8},
        {KW_UOM::MMNS, "4", "250", 0.004, 2.5e8},
        {KW_UOM::IPS, "0.5", "1000", 0.0127, 6894757.29},
    };
    CKwFEModel& m = *host.model;
    for (const Case& c : cases) {
        SCOPED_TRACE(int(c.system));
        host.units->SetSystem(c.system);
        CKwMFCDialog* d = open(3, m.m_meshControls.first());
        ASSERT_NE(d, nullptr);
        KwControl<QLineEdit>(d, 7704)->setText(QString::fromLatin1(c.size));
        ok(d);
        EXPECT_NEAR(m.m_meshControls.first()->m_elementSize, c.sizeSI, c.sizeSI * 1e-9);
        d = open(54, m.m_elementDeletions.first());
        ASSERT_NE(d, nullptr);
        KwControl<QLineEdit>(d, 7749)->setText(QString::fromLatin1(c.stress));
        ok(d);
        EXPECT_NEAR(m.m_elementDeletions.first()->m_criteria.first().limit[1], c.stressSI,
                    c.stressSI * 1e-6);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    host.units->SetSystem(KW_UOM::MMNS);
}

// A limit that is no number is refused with its property named, even when another property
// is shown by the time OK is pressed.
TEST_F(ModelControlPicks, aBadLimitIsNamedAfterItsProperty)
{
    CKwMFCDialog* d = open(54, nullptr);
    ASSERT_NE(d, nullptr);
    KwControl<QAbstractButton>(d, 7746)->click();
    KwControl<QLineEdit>(d, 7747)->setText("ten percent");
    KwControl<QComboBox>(d, CKwMFCUIElementDeletion::kPropertyCombo)->setCurrentIndex(1);
    ok(d);
    EXPECT_TRUE(host.view->GetLastBubbleText().startsWith("Cover plate 3 mm, Equivalent Plastic "
                                                          "Strain - \n"))
        << host.view->GetLastBubbleText().toStdString();
    EXPECT_EQ(host.model->m_elementDeletions.size(), 1);
}

// A language switch with the editors open changes their texts and nothing of what is edited.
TEST_F(ModelControlPicks, aLanguageSwitchKeepsTheEditCopy)
{
    auto* c = dynamic_cast<CKwMFCUISurfaceContact*>(open(12, host.model->m_surfaceContacts.first()));
    ASSERT_NE(c, nullptr);
    auto* kind = KwControl<QComboBox>(c, CKwMFCUISurfaceContact::kKindCombo);
    kind->setCurrentIndex(CKwSurfaceContact::OffsetBonded);
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("de"));
    c->SetTextToCurrentLang();
    EXPECT_EQ(c->windowTitle(), "Flächenkontakt");
    EXPECT_EQ(kind->currentIndex(), CKwSurfaceContact::OffsetBonded);
    EXPECT_EQ(kind->currentText(), "Verbunden mit Abstand");
    EXPECT_EQ(c->GetEditObject()->m_kind, CKwSurfaceContact::OffsetBonded);
    EXPECT_EQ(c->GetBox(CKwUISurfaceContact::Slave)->GetEntities().size(), 1);
    c->OnCancel();
    CKwMFCDialog* d = open(3, host.model->m_meshControls.first());
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(KwControl<QLabel>(d, 7703)->text(), "Elementgröße (mm):");
    CKwXMLUtils::SetCurrentLanguage("en");
}

// The entities a host hands over with a new mesh control are taken as far as it can act on
// them; with a stored control they are ignored.
TEST_F(ModelControlPicks, entitiesHandedToANewMeshControl)
{
    CKwFEModel& m = *host.model;
    QList<E*> picked = {m.FindGeometry(E::Body, 1), m.FindGeometry(E::Edge, 5),
                        m.FindGeometry(E::Vertex, 2), m.FindGeometry(E::Edge, 5)};
    auto* d = dynamic_cast<CKwMFCUIMeshControl*>(open(3, nullptr, &picked));
    ASSERT_NE(d, nullptr);
    const QList<E*> expected = {m.FindGeometry(E::Edge, 5), m.FindGeometry(E::Vertex, 2)};
    EXPECT_EQ(d->GetSelectedEntities(), expected);
    EXPECT_EQ(d->GetSelectionBox()->GetEntities(), expected);
    EXPECT_EQ(host.view->GetHighlightedEntities(), expected);
    d->OnCancel();
    d = dynamic_cast<CKwMFCUIMeshControl*>(open(3, m.m_meshControls.first(), &picked));
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(d->GetSelectedEntities(), m.m_meshControls.first()->m_entities);
}

} // namespace
