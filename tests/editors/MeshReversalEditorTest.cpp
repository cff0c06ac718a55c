// "Reverse Normals" (kind 21) and "Reverse Line Element Direction" (kind 22): what the view is
// told to draw while they are open, picks of geometry and elements taken or refused, OK turning
// every picked element once, Cancel leaving the mesh alone, and groups taken through "Include
// Group" as the list's filter allows.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwGroup.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "CKwMFCUIGroupSelection.h"
#include "CKwMFCUIReverseLineElementDirection.h"
#include "CKwMFCUIReverseNormals.h"
#include "CKwUIEntity.h"
#include "KwControls.h"
#include "KwTestSupport.h"

#include <QAbstractButton>
#include <QSlider>
#include <QTimer>
#include <gtest/gtest.h>
#include <vector>

namespace {

using M = CKwMeshModel;

class MeshReversalEditor : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }
    void TearDown() override
    {
        if (auto* d = dynamic_cast<CKwMFCUIBase*>(host.view->GetOpenDialog()))
            d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    template <class Ed> Ed* open(unsigned kind)
    {
        DialogLaunchRequest r = host.Request(kind);
        r.object = static_cast<CKwFEBase*>(host.model->m_mesh);
        LaunchDialog(&r);
        return dynamic_cast<Ed*>(host.view->GetOpenDialog());
    }
    M& mesh() { return *host.model->m_mesh; }
    // Every element's nodes, to tell whether anything was turned.
    std::vector<std::vector<int>> connectivity()
    {
        std::vector<std::vector<int>> all;
        for (std::size_t i = 0; i < mesh().ElementCount(); ++i) {
            const auto n = mesh().ElementNodes(i);
            all.emplace_back(n.begin(), n.end());
        }
        return all;
    }
    std::vector<int> nodesOf(int id)
    {
        const auto n = mesh().ElementNodes(static_cast<std::size_t>(mesh().ElementIndex(id)));
        return {n.begin(), n.end()};
    }
    // The first element of a family and the geometry of `kind` that carries elements of it.
    int firstOf(bool (*family)(int))
    {
        for (std::size_t i = 0; i < mesh().ElementCount(); ++i)
            if (family(mesh().ElementType(i)))
                return mesh().ElementID(i);
        return 0;
    }
    CKwUIEntity* geometryWith(int kind)
    {
        for (const M::GeometryMesh& g : mesh().GeometryMeshes())
            if (g.kind == kind && !g.elementIds.empty())
                for (int id : g.elementIds) {
                    const int t = mesh().ElementType(static_cast<std::size_t>(mesh().ElementIndex(id)));
                    if (kind == CKwUIEntity::Face ? M::IsShellType(t) : M::IsBeamType(t))
                        return host.model->FindGeometry(kind, g.id);
                }
        return nullptr;
    }

    kwtest::Host host;
};

TEST_F(MeshReversalEditor, bothOpenOnlyOnAMeshAndShowTheirDirectionsUntilClosed)
{
    for (unsigned kind : {21u, 22u}) {
        SCOPED_TRACE(kind);
        DialogLaunchRequest r = host.Request(kind);
        LaunchDialog(&r);
        EXPECT_EQ(host.view->GetOpenDialog(), nullptr);
        for (bool ok : {false, true}) {
            auto* d = open<CKwMFCUIBase>(kind);
            ASSERT_NE(d, nullptr);
            EXPECT_EQ(d->GetTemplateId(), kind == 21 ? 7011u : 7042u);
            EXPECT_EQ(host.view->GetDirectionDisplay().showNormals, kind == 21);
            EXPECT_EQ(host.view->GetDirectionDisplay().showBeamDirections, kind == 22);
            if (ok) // nothing picked: refused, and the directions stay shown
                d->OnOK();
            else
                d->OnCancel();
            EXPECT_EQ(host.view->GetOpenDialog() == nullptr, !ok);
            if (ok) {
                EXPECT_TRUE(host.view->GetLastBubbleText().contains("Select at least one"));
                d->OnCancel();
            }
            EXPECT_FALSE(host.view->GetDirectionDisplay().showNormals);
            EXPECT_FALSE(host.view->GetDirectionDisplay().showBeamDirections);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }
}

// Each row: control, how it is set, what the view's display then holds.
TEST_F(MeshReversalEditor, displayOptionsReachTheViewAsTheyChange)
{
    auto* d = open<CKwMFCUIReverseNormals>(21);
    ASSERT_NE(d, nullptr);
    const auto& shown = host.view->GetDirectionDisplay();
    KwControl<QAbstractButton>(d, 7101)->click();
    EXPECT_FALSE(shown.showNormals);
    KwControl<QAbstractButton>(d, 7101)->click();
    EXPECT_TRUE(shown.showNormals);
    KwControl<QAbstractButton>(d, 7106)->click();
    EXPECT_FALSE(shown.showNormalVectors);
    EXPECT_FALSE(KwFindControl(d, 7108)->isEnabled());
    KwControl<QSlider>(d, 7108)->setValue(10);
    EXPECT_DOUBLE_EQ(shown.normalSize, 2.0);
    d->SetValue(CKwUIMeshReversal::FieldFrontColor, 0x0000FF); // red as 0x00BBGGRR
    EXPECT_EQ(shown.frontColor, QColor(255, 0, 0));
    EXPECT_EQ(d->SetValue(CKwUIMeshReversal::FieldSize, 21), 0);
    d->OnCancel();

    auto* b = open<CKwMFCUIReverseLineElementDirection>(22);
    ASSERT_NE(b, nullptr);
    KwControl<QSlider>(b, 7108)->setValue(1);
    EXPECT_DOUBLE_EQ(shown.arrowSize, 0.2);
    b->SetValue(CKwUIMeshReversal::FieldVectorColor, 0xFF0000);
    EXPECT_EQ(shown.arrowColor, QColor(0, 0, 255));
    EXPECT_EQ(b->SetValue(CKwUIMeshReversal::FieldBackColor, 0), 0); // beams have no back
}

TEST_F(MeshReversalEditor, okTurnsEachPickedShellOnceAndCancelNothing)
{
    CKwUIEntity* face = geometryWith(CKwUIEntity::Face);
    ASSERT_NE(face, nullptr);
    const M::GeometryMesh* onFace = mesh().FindGeometryMesh(CKwUIEntity::Face, face->GetID());
    std::vector<int> shells;
    for (int id : onFace->elementIds)
        if (M::IsShellType(mesh().ElementType(static_cast<std::size_t>(mesh().ElementIndex(id)))))
            shells.push_back(id);
    const int solid = firstOf(&M::IsSolidType);
    const int beam = firstOf(&M::IsBeamType);
    const auto before = connectivity();
    for (bool ok : {false, true}) {
        SCOPED_TRACE(ok ? "OK" : "Cancel");
        auto* d = open<CKwMFCUIReverseNormals>(21);
        ASSERT_NE(d, nullptr);
        // The face, one of its shells again, a solid, a beam and an edge: the last three refused.
        host.view->SendPickEvent({face, mesh().ElementEntity(shells.front()),
                                  mesh().ElementEntity(solid), mesh().ElementEntity(beam),
                                  host.model->FindGeometry(CKwUIEntity::Edge, 1)},
                                 false);
        EXPECT_TRUE(host.view->GetLastBubbleText().contains("shell elements only"));
        EXPECT_EQ(d->GetSelectionBox()->GetEntities().size(), 2);
        EXPECT_EQ(d->ElementsToReverse(), shells);
        if (ok)
            d->OnOK();
        else
            d->OnCancel();
        EXPECT_EQ(host.view->GetOpenDialog(), nullptr);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    // Turned once each: turning them back gives the mesh as it was.
    const auto after = connectivity();
    EXPECT_NE(after, before);
    for (int id : shells) {
        EXPECT_NE(nodesOf(id), before[static_cast<std::size_t>(mesh().ElementIndex(id))]);
        mesh().ReverseElement(id);
    }
    EXPECT_EQ(connectivity(), before);
}

TEST_F(MeshReversalEditor, beamsOnAPickedEdgeTurnWithTheirEndReleases)
{
    CKwUIEntity* edge = geometryWith(CKwUIEntity::Edge);
    ASSERT_NE(edge, nullptr);
    const std::vector<int> beams =
        mesh().FindGeometryMesh(CKwUIEntity::Edge, edge->GetID())->elementIds;
    ASSERT_FALSE(beams.empty());
    const int released = beams.front();
    ASSERT_TRUE(mesh().SetEndRelease(released, {0x30, 0}));
    const std::vector<int> nodes = nodesOf(released);
    auto* d = open<CKwMFCUIReverseLineElementDirection>(22);
    ASSERT_NE(d, nullptr);
    host.view->SendPickEvent({edge, host.model->FindGeometry(CKwUIEntity::Face, 2)}, false);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("beam elements only"));
    EXPECT_EQ(d->GetSelectionBox()->GetEntities(), QList<CKwUIEntity*>{edge});
    d->OnOK();
    EXPECT_EQ(host.view->GetOpenDialog(), nullptr);
    EXPECT_EQ(nodesOf(released), (std::vector<int>{nodes[1], nodes[0]}));
    EXPECT_EQ(mesh().GetEndRelease(released), (M::EndRelease{0, 0x30}));
}

// Each row: the list's filter, the groups checked, the members that arrive.
TEST_F(MeshReversalEditor, includedGroupsBringTheMembersTheListTakes)
{
    const int shell = firstOf(&M::IsShellType);
    const int beam = firstOf(&M::IsBeamType);
    const int shellGroup[] = {shell, beam};
    ASSERT_NE(mesh().AddElementGroup("Cover", shellGroup), 0);
    auto* elements = new CKwGroup(2, "Two Elements");
    elements->m_mode = CKwGroup::Elements;
    elements->m_ids = {shell, 999999}; // an id the mesh no longer has is skipped
    host.model->m_idSets.append(elements);
    // Groups as listed: "Cover" (elements), "Corner Nodes" (nodes), "Two Elements".
    const QList<KwModelGroup> groups = KwModelGroups(host.model.get());
    ASSERT_EQ(groups.size(), 3);
    EXPECT_EQ(groups[1].members, KwModelGroup::Nodes);

    const struct
    {
        unsigned filter;
        QList<int> checked;
        QList<CKwUIEntity*> members;
    } cases[] = {
        {0x8240, {0, 2}, {mesh().ElementEntity(shell), mesh().ElementEntity(beam)}},
        {0x8240, {1}, {}},
        {0x8400, {1, 0},
         {mesh().NodeEntity(groups[1].ids->at(0)), mesh().NodeEntity(groups[1].ids->at(1)),
          mesh().NodeEntity(groups[1].ids->at(2))}},
        {0x8040, {0, 1, 2}, {}},
    };
    CKwMFCNodeElemSelectionBox box;
    box.SetModelProvider([this] { return host.model.get(); });
    for (const auto& c : cases) {
        SCOPED_TRACE(c.filter);
        box.SetFilter(c.filter);
        KwGroupTableModel table(groups, c.filter);
        for (int row = 0; row < 3; ++row) {
            const bool takes = table.Takes(row);
            EXPECT_EQ(table.setData(table.index(row, 0), Qt::Checked, Qt::CheckStateRole), takes);
            EXPECT_EQ(table.flags(table.index(row, 0)).testFlag(Qt::ItemIsEnabled), takes);
        }
        EXPECT_EQ(box.GroupMembers(c.checked), c.members);
    }

    // Through the dialog on the editor's list: the checked group's elements are taken as picks.
    auto* d = open<CKwMFCUIReverseNormals>(21);
    ASSERT_NE(d, nullptr);
    QTimer::singleShot(0, [] {
        auto* g = dynamic_cast<CKwMFCUIGroupSelection*>(QApplication::activeModalWidget());
        ASSERT_NE(g, nullptr);
        EXPECT_EQ(g->GetTable()->rowCount(), 3);
        g->GetTable()->setData(g->GetTable()->index(2, 0), Qt::Checked, Qt::CheckStateRole);
        g->OnOK();
    });
    d->GetSelectionBox()->IncludeGroups();
    EXPECT_EQ(d->GetSelectionBox()->GetEntities(), QList<CKwUIEntity*>{mesh().ElementEntity(shell)});
    EXPECT_EQ(d->ElementsToReverse(), std::vector<int>{shell});
}

} // namespace
