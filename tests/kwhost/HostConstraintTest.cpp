// The demo host end to end: a constraint created from the model tree, picked in the view,
// written on OK and shown in the tree; edited and cancelled again.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMFCUIRestraint.h"
#include "CKwRestraint.h"
#include "CKwUIEntity.h"
#include "KwControls.h"
#include "KwHostWindow.h"
#include "KwTestSupport.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace {

QTreeWidgetItem* findItem(QTreeWidget* tree, const QString& text)
{
    const auto hits = tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    return hits.isEmpty() ? nullptr : hits.first();
}

TEST(HostConstraint, createEditAndCancelFromTheModelTree)
{
    kwtest::IsolateSettings();
    KwHostWindow host;
    host.resize(1100, 700);
    host.show();
    auto* tree = host.findChild<QTreeWidget*>();
    ASSERT_NE(tree, nullptr);

    QTreeWidgetItem* fresh = findItem(tree, "(new constraint)");
    ASSERT_NE(fresh, nullptr);
    Q_EMIT tree->itemActivated(fresh, 0);
    auto* editor = dynamic_cast<CKwMFCUIRestraint*>(host.View()->GetOpenDialog());
    ASSERT_NE(editor, nullptr);
    CKwUIEntity* top = host.Model()->FindGeometry(CKwUIEntity::Face, 2);
    QTest::mouseClick(host.View(), Qt::LeftButton, {},
                      host.View()->ScreenPointOf(top).toPoint());
    KwControl<QLineEdit>(editor, 273)->setText("Top clamp");
    QTest::mouseClick(KwControl<QPushButton>(editor, 1), Qt::LeftButton);
    ASSERT_EQ(host.Model()->m_restraints.size(), 2);
    EXPECT_EQ(host.Model()->m_restraints.last()->m_entities, QList<CKwUIEntity*>{top});
    QTreeWidgetItem* created = findItem(tree, "Top clamp");
    ASSERT_NE(created, nullptr) << "the tree was not refreshed";

    Q_EMIT tree->itemActivated(created, 0);
    editor = dynamic_cast<CKwMFCUIRestraint*>(host.View()->GetOpenDialog());
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(KwControl<QLineEdit>(editor, 273)->text(), "Top clamp");
    KwControl<QLineEdit>(editor, 273)->setText("Renamed");
    QTest::mouseClick(KwControl<QPushButton>(editor, 2), Qt::LeftButton);
    EXPECT_EQ(host.Model()->m_restraints.last()->GetName(), "Top clamp");
    EXPECT_EQ(host.View()->GetOpenDialogCount(), 0);
}

} // namespace
