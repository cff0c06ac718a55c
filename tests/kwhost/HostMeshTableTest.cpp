// The mesh table in the demo host: the tree opens it on the sample mesh, and the unit switch
// goes through while it is open (it holds nothing typed) and relabels it.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMFCMeshTableDialog.h"
#include "CKwMeshModel.h"
#include "CKwMeshTableModel.h"
#include "KW_UOM.h"
#include "KwHostWindow.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace {

QTreeWidgetItem* findTreeItem(QTreeWidget* tree, const QString& text)
{
    const QList<QTreeWidgetItem*> found =
        tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? nullptr : found.first();
}

QAction* menuAction(KwHostWindow& host, const QString& text)
{
    for (QMenu* menu : host.menuBar()->findChildren<QMenu*>())
        for (QAction* a : menu->actions())
            if (a->text() == text)
                return a;
    return nullptr;
}

TEST(HostMeshTable, treeOpensItAndUnitSwitchRelabelsItWithoutWaiting)
{
    kwtest::IsolateSettings();
    KwHostWindow host;
    auto* tree = host.findChild<QTreeWidget*>();
    ASSERT_NE(tree, nullptr);
    QTreeWidgetItem* item = findTreeItem(tree, QStringLiteral("Mesh Table"));
    ASSERT_NE(item, nullptr);
    Q_EMIT tree->itemActivated(item, 0);
    QApplication::processEvents();
    auto* d = dynamic_cast<CKwMFCMeshTableDialog*>(host.View()->GetOpenDialog());
    ASSERT_NE(d, nullptr);
    CKwMeshTableModel* m = d->TableModel();
    EXPECT_EQ(m->rowCount(), static_cast<int>(host.Model()->m_mesh->Nodes().size()));
    EXPECT_EQ(m->headerData(CKwMeshTableModel::ColumnX, Qt::Horizontal).toString(),
              QStringLiteral("X (mm)"));
    const int row = m->RowOfId(host.Model()->m_mesh->Nodes().back().id);
    const double x = host.Model()->m_mesh->Nodes().back().x;

    QAction* ips = menuAction(host, KW_UOM::GetSystemName(KW_UOM::IPS));
    ASSERT_NE(ips, nullptr);
    EXPECT_EQ(kwtest::AnswerModals([&] { ips->trigger(); }).count(), 0);
    EXPECT_EQ(host.Units()->GetSystem(), KW_UOM::IPS);
    EXPECT_EQ(m->headerData(CKwMeshTableModel::ColumnX, Qt::Horizontal).toString(),
              QStringLiteral("X (in)"));
    EXPECT_NEAR(m->CellText(row, CKwMeshTableModel::ColumnX).toDouble(), x / 0.0254, 1e-3);

    d->OnCancel();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(host.View()->GetOpenDialogCount(), 0);
}

} // namespace
