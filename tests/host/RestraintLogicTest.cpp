// The constraint logic of the reference host on its own: type translation, the value and list
// interfaces, next and duplicate, the tree manager and view picking.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwSelectionHandler.h"
#include "CKwTreeManager.h"
#include "CKwUIEntity.h"
#include "CKwUIRestraint.h"
#include "KwTestSupport.h"

#include <gtest/gtest.h>

namespace {

// The logic without a dialog: every UI callback is refused, so it works on data alone.
struct Logic : public CKwUIRestraint
{
    int ValidateObjectData() override { return valid; }
    int valid = 1;
};

TEST(RestraintLogic, comboRowsAndTypeCodesTranslateBothWays)
{
    const int typeOfRow[] = {0, 3, 4, 2, 1, 5};
    const Logic logic;
    for (int row = 0; row < 6; ++row) {
        EXPECT_EQ(logic.GetTypeFromSelection(row), typeOfRow[row]);
        EXPECT_EQ(logic.GetSelectionFromType(typeOfRow[row]), row);
    }
    for (int bad : {-1, 6, 100}) {
        EXPECT_EQ(logic.GetTypeFromSelection(bad), -1);
        EXPECT_EQ(logic.GetSelectionFromType(bad), -1);
    }
}

TEST(RestraintLogic, valueAndListInterfacesRefuseWhatTheyDoNotKnow)
{
    kwtest::Host host;
    Logic logic;
    logic.OnCreate(host.view.get(), nullptr, nullptr);
    int v = 0;
    EXPECT_EQ(logic.GetValue(99, v), 0);
    EXPECT_EQ(logic.SetValue(99, 1), 0);
    EXPECT_EQ(logic.SetValue(CKwUIRestraint::FieldType, 6), 0);
    EXPECT_EQ(logic.SetValue(CKwUIRestraint::FieldType, -1), 0);
    EXPECT_EQ(logic.GetEditObject()->m_type, CKwRestraint::Structural);
    logic.SetListValue(CKwUIRestraint::CodeSubcaseSelection, {1, 7, -2});
    EXPECT_EQ(logic.GetEditObject()->m_subcaseIds, QList<int>{2});
    logic.SetListValue(42, {0});
    EXPECT_EQ(logic.GetEditObject()->m_subcaseIds, QList<int>{2});
}

TEST(RestraintLogic, nextAndDuplicateWriteAndGoOnWithAFreshConstraint)
{
    kwtest::Host host;
    Logic logic;
    logic.OnCreate(host.view.get(), nullptr, nullptr);
    QList<CKwUIEntity*> picked = {host.model->FindGeometry(CKwUIEntity::Face, 1)};
    logic.OnSelected(&picked);
    EXPECT_EQ(logic.OnNextUI(), 1);
    ASSERT_EQ(host.model->m_restraints.size(), 2);
    EXPECT_EQ(host.model->m_restraints.last()->GetID(), 2);
    EXPECT_EQ(logic.GetEditObject()->GetID(), 3);
    EXPECT_TRUE(logic.GetEditObject()->m_entities.isEmpty());

    logic.OnSelected(&picked);
    logic.SetValue(CKwUIRestraint::FieldDofFirst, 0);
    EXPECT_EQ(logic.OnDuplicateUI(), 1);
    ASSERT_EQ(host.model->m_restraints.size(), 3);
    EXPECT_EQ(logic.GetEditObject()->GetID(), 4);
    EXPECT_EQ(logic.GetEditObject()->m_entities, picked);
    EXPECT_FALSE(logic.GetEditObject()->m_dof[0]);

    logic.valid = 0;
    EXPECT_EQ(logic.OnNextUI(), 1);
    EXPECT_EQ(host.model->m_restraints.size(), 3);
}

TEST(RestraintLogic, cancelForgetsTheEditsOfAnExistingConstraint)
{
    kwtest::Host host;
    CKwRestraint* fixed = host.model->m_restraints.first();
    Logic logic;
    logic.OnCreate(host.view.get(), fixed, nullptr);
    logic.SetValue(CKwUIRestraint::FieldType, CKwRestraint::Thermal);
    EXPECT_EQ(logic.OnCancelUI(), 0);
    EXPECT_EQ(fixed->m_type, CKwRestraint::Structural);
    EXPECT_EQ(logic.GetEditObject()->m_type, CKwRestraint::Structural);
}

TEST(TreeManager, refreshAskedWhileRedrawIsSuspendedArrivesOnResume)
{
    int seen = 0;
    auto c = QObject::connect(CKwTreeManager::Instance(), &CKwTreeManager::treeRefreshRequested,
                              [&] { ++seen; });
    CKwTreeManager::SetTreeRedraw(0);
    CKwTreeManager::RefreshModelTree();
    EXPECT_EQ(seen, 0);
    CKwTreeManager::SetTreeRedraw(1);
    EXPECT_EQ(seen, 1);
    CKwTreeManager::SetTreeRedraw(1);
    EXPECT_EQ(seen, 1);
    QObject::disconnect(c);
}

TEST(ViewPicking, offersOnlyWhatTheFilterAdmitsAndOnlyFacesInSight)
{
    kwtest::Host host;
    CFMView* view = host.view.get();
    CKwUIEntity* front = host.model->FindGeometry(CKwUIEntity::Face, 3);
    const QPointF at = view->ScreenPointOf(front);
    EXPECT_EQ(view->EntityAt(at), nullptr);
    view->GetSelectionHandler()->SetFilter(0x40);
    EXPECT_EQ(view->EntityAt(at), front);
    // Faces turned away from the viewer (the left one in the isometric start) are not drawn
    // where they could be clicked.
    EXPECT_LT(view->ScreenPointOf(host.model->FindGeometry(CKwUIEntity::Face, 5)).x(), 0);
    view->GetSelectionHandler()->SetFilter(0x1000);
    EXPECT_EQ(view->EntityAt(at)->GetKind(), CKwUIEntity::Body);
    EXPECT_EQ(view->EntityAt(QPointF(2, 2)), nullptr);
    // Nobody takes picks: the view sends nothing.
    EXPECT_EQ(view->SendPickEvent({front}, false), 0);
}

} // namespace
