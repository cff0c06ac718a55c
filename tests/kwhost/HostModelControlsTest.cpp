// The demo host end to end: a surface contact and a material orientation created from the
// model tree with the mouse in the view, each list the target of the picks after a click into
// it, written on OK and listed in the tree.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "CKwMFCUIMaterialOrientation.h"
#include "CKwMFCUISurfaceContact.h"
#include "CKwMaterialOrient.h"
#include "CKwSurfaceContact.h"
#include "CKwUIEntity.h"
#include "KwControls.h"
#include "KwHostWindow.h"
#include "KwTestSupport.h"

#include <QFocusEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace {

using E = CKwUIEntity;

QTreeWidgetItem* findItem(QTreeWidget* tree, const QString& text)
{
    const auto hits = tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    return hits.isEmpty() ? nullptr : hits.first();
}

class HostModelControls : public ::testing::Test
{
protected:
    void SetUp() override
    {
        kwtest::IsolateSettings();
        host.resize(1100, 700);
        host.show();
        tree = host.findChild<QTreeWidget*>();
        ASSERT_NE(tree, nullptr);
    }
    template <class D> D* activate(const char* item)
    {
        QTreeWidgetItem* it = findItem(tree, QString::fromUtf8(item));
        EXPECT_NE(it, nullptr) << item;
        if (!it)
            return nullptr;
        Q_EMIT tree->itemActivated(it, 0);
        return dynamic_cast<D*>(host.View()->GetOpenDialog());
    }
    void click(E* entity)
    {
        QTest::mouseClick(host.View(), Qt::LeftButton, {},
                          host.View()->ScreenPointOf(entity).toPoint());
    }
    // What a click into a list does first: it takes the focus.
    static void focus(QWidget* w)
    {
        QFocusEvent in(QEvent::FocusIn, Qt::MouseFocusReason);
        QCoreApplication::sendEvent(w, &in);
    }
    E* geo(int kind, int id) { return host.Model()->FindGeometry(kind, id); }
    KwHostWindow host;
    QTreeWidget* tree = nullptr;
};

TEST_F(HostModelControls, contactPickedIntoBothSidesWithTheMouse)
{
    auto* d = activate<CKwMFCUISurfaceContact>("(new contact)");
    ASSERT_NE(d, nullptr);
    click(geo(E::Face, 2));
    focus(d->GetBox(CKwUISurfaceContact::Slave));
    // The right side: the one of the two ends in sight from the isometric start.
    click(geo(E::Face, 6));
    EXPECT_EQ(d->GetBox(CKwUISurfaceContact::Master)->GetEntities(), QList<E*>{geo(E::Face, 2)});
    EXPECT_EQ(d->GetBox(CKwUISurfaceContact::Slave)->GetEntities(), QList<E*>{geo(E::Face, 6)});
    KwControl<QLineEdit>(d, 273)->setText("Top to side");
    QTest::mouseClick(KwControl<QPushButton>(d, 1), Qt::LeftButton);
    ASSERT_EQ(host.Model()->m_surfaceContacts.size(), 2);
    const CKwSurfaceContact* c = host.Model()->m_surfaceContacts.last();
    EXPECT_EQ(c->m_master, QList<E*>{geo(E::Face, 2)});
    EXPECT_EQ(c->m_slave, QList<E*>{geo(E::Face, 6)});
    EXPECT_NE(findItem(tree, "Top to side"), nullptr) << "the tree was not refreshed";
}

TEST_F(HostModelControls, orientationFromAPickedEdge)
{
    auto* d = activate<CKwMFCUIMaterialOrientation>("(new material orientation)");
    ASSERT_NE(d, nullptr);
    click(geo(E::Face, 2));
    // The faces list takes no edge; the edge list does once it is clicked.
    EXPECT_EQ(d->GetFacesBox()->GetEntities(), QList<E*>{geo(E::Face, 2)});
    focus(d->GetEdgeBox());
    click(geo(E::Edge, 1));
    ASSERT_EQ(d->GetEdgeBox()->GetEntities().size(), 1);
    E* edge = d->GetEdgeBox()->GetEntities().first();
    EXPECT_EQ(edge->GetKind(), E::Edge);
    QTest::mouseClick(KwControl<QPushButton>(d, 1), Qt::LeftButton);
    ASSERT_EQ(host.Model()->m_materialOrients.size(), 2);
    const CKwMaterialOrient* o = host.Model()->m_materialOrients.last();
    EXPECT_EQ(o->m_faces, QList<E*>{geo(E::Face, 2)});
    EXPECT_EQ(o->m_edge, edge);
    // The shell property of the sample is the one a new orientation is made for.
    EXPECT_EQ(o->m_propertyId, 1);
}

} // namespace
