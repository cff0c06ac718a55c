// The mesh table: cell texts in the display units, sorting through the row order, finding
// rows by ID, copying, bad input, the launch through the view and its texts.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMFCMeshTableDialog.h"
#include "CKwMeshModel.h"
#include "CKwMeshTableModel.h"
#include "CKwPhysicalProperty.h"
#include "CKwXMLUtils.h"
#include "KW_UOM.h"
#include "KwMFCUIEntry.h"
#include "KwTestSupport.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QItemSelectionModel>
#include <QTableView>
#include <gtest/gtest.h>
#include <cmath>
#include <vector>

namespace {

using Model = CKwMeshTableModel;
using Dlg = CKwMFCMeshTableDialog;

class MeshTableTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        kwtest::IsolateSettings();
        // Nodes and elements out of ID order, so that mesh order, ID order and every column's
        // order differ.
        mesh.AddNode(5, 0.0, 0.0, 0.0);
        mesh.AddNode(3, 0.25, -0.5, 0.125);
        mesh.AddNode(9, 1.5, 0.75, -0.002);
        mesh.AddNode(7, -0.1, 2.0, 0.003);
        ASSERT_TRUE(mesh.AddElement(100, CKwMeshModel::Beam2, {5, 3}));
        ASSERT_TRUE(mesh.AddElement(40, CKwMeshModel::Tri3, {3, 9, 7}));
        ASSERT_TRUE(mesh.AddElement(70, CKwMeshModel::Quad4, {5, 3, 9, 7}));
        ASSERT_TRUE(mesh.AddElement(55, CKwMeshModel::Tet4, {5, 3, 9, 7}));
        auto* shell = new CKwPhysicalProperty(1, QStringLiteral("Cover shell"));
        shell->m_idealization = CKwPhysicalProperty::Shell;
        auto* beam = new CKwPhysicalProperty(2, QStringLiteral("Rail beam"));
        beam->m_idealization = CKwPhysicalProperty::Beam;
        auto* second = new CKwPhysicalProperty(3, QStringLiteral("Second shell"));
        second->m_idealization = CKwPhysicalProperty::Shell;
        model.m_properties = {shell, beam, second};
    }

    static std::vector<int> ids(const Model& m)
    {
        std::vector<int> out;
        for (int r = 0; r < m.rowCount(); ++r)
            out.push_back(m.CellText(r, 0).toInt());
        return out;
    }

    CKwMeshModel mesh;
    CKwFEModel model;
    KW_UOM si{KW_UOM::SI};
    KW_UOM mm{KW_UOM::MMNS};
};

TEST_F(MeshTableTest, cellsShowTheMeshInTheDisplayUnitsWithOnePrecisionPerColumn)
{
    struct Case
    {
        Model::Contents contents;
        KW_UOM::System system;
        int id;
        int column;
        const char* text;
    };
    const Case cases[] = {
        {Model::Nodes, KW_UOM::SI, 9, Model::ColumnX, "1.50000"},
        {Model::Nodes, KW_UOM::SI, 9, Model::ColumnZ, "-0.00200"},
        {Model::Nodes, KW_UOM::SI, 5, Model::ColumnY, "0.00000"},
        {Model::Nodes, KW_UOM::MMNS, 9, Model::ColumnX, "1500.00"},
        {Model::Nodes, KW_UOM::MMNS, 9, Model::ColumnY, "750.00"},
        // Z's largest magnitude is 125 mm: one decimal more than X and Y.
        {Model::Nodes, KW_UOM::MMNS, 9, Model::ColumnZ, "-2.000"},
        {Model::Nodes, KW_UOM::MMNS, 3, Model::ColumnZ, "125.000"},
        {Model::Nodes, KW_UOM::MMNS, 3, Model::ColumnNodeId, "3"},
        {Model::Elements, KW_UOM::SI, 40, Model::ColumnFamily, "Triangle"},
        {Model::Elements, KW_UOM::SI, 55, Model::ColumnFamily, "Tetrahedron"},
        // Node IDs, not the nodes' places in the mesh.
        {Model::Elements, KW_UOM::SI, 70, Model::ColumnNodeList, "5 3 9 7"},
        {Model::Elements, KW_UOM::SI, 100, Model::ColumnNodeList, "5 3"},
        // The first property of the element's idealization; none for solids here.
        {Model::Elements, KW_UOM::SI, 40, Model::ColumnProperty, "Cover shell"},
        {Model::Elements, KW_UOM::SI, 100, Model::ColumnProperty, "Rail beam"},
        {Model::Elements, KW_UOM::SI, 55, Model::ColumnProperty, ""},
    };
    for (const Case& c : cases) {
        KW_UOM units(c.system);
        Model m(&mesh, &model, &units);
        m.SetContents(c.contents);
        const int row = m.RowOfId(c.id);
        ASSERT_GE(row, 0) << c.id;
        EXPECT_EQ(m.CellText(row, c.column), QString::fromUtf8(c.text))
            << "id " << c.id << " column " << c.column << " system " << c.system;
    }
}

TEST_F(MeshTableTest, headsCarryTheUnitAndNumbersSitRight)
{
    Model m(&mesh, &model, &mm);
    QAbstractItemModelTester tester(&m, QAbstractItemModelTester::FailureReportingMode::Warning);
    EXPECT_EQ(m.headerData(Model::ColumnX, Qt::Horizontal).toString(), QStringLiteral("X (mm)"));
    EXPECT_EQ(m.headerData(Model::ColumnZ, Qt::Horizontal).toString(), QStringLiteral("Z (mm)"));
    const auto align = [&](int column) {
        return m.data(m.index(0, column), Qt::TextAlignmentRole).toInt() & Qt::AlignHorizontal_Mask;
    };
    for (int c = 0; c < Model::ColumnCount; ++c)
        EXPECT_EQ(align(c), Qt::AlignRight) << c;
    m.SetContents(Model::Elements);
    EXPECT_EQ(m.headerData(Model::ColumnFamily, Qt::Horizontal).toString(), QStringLiteral("Family"));
    EXPECT_EQ(align(Model::ColumnElementId), Qt::AlignRight);
    EXPECT_EQ(align(Model::ColumnFamily), Qt::AlignLeft);
    // The unit system changes under an open table: heads and digits follow on RetranslateTexts.
    Model s(&mesh, &model, &si);
    si.SetSystem(KW_UOM::MMNS);
    s.RetranslateTexts();
    EXPECT_EQ(s.headerData(Model::ColumnY, Qt::Horizontal).toString(), QStringLiteral("Y (mm)"));
    EXPECT_EQ(s.CellText(s.RowOfId(7), Model::ColumnY), QStringLiteral("2000.00"));
}

TEST_F(MeshTableTest, sortingReordersRowsAndFindingFollowsTheOrder)
{
    struct Case
    {
        Model::Contents contents;
        int column;
        Qt::SortOrder order;
        std::vector<int> ids;
    };
    const Case cases[] = {
        {Model::Nodes, Model::ColumnNodeId, Qt::AscendingOrder, {3, 5, 7, 9}},
        {Model::Nodes, Model::ColumnNodeId, Qt::DescendingOrder, {9, 7, 5, 3}},
        {Model::Nodes, Model::ColumnX, Qt::AscendingOrder, {7, 5, 3, 9}},
        {Model::Nodes, Model::ColumnX, Qt::DescendingOrder, {9, 3, 5, 7}},
        {Model::Nodes, Model::ColumnZ, Qt::AscendingOrder, {9, 5, 7, 3}},
        {Model::Elements, Model::ColumnElementId, Qt::AscendingOrder, {40, 55, 70, 100}},
        {Model::Elements, Model::ColumnFamily, Qt::AscendingOrder, {100, 70, 55, 40}},
        // Node lists compare by node ID; equal lists keep mesh order both ways.
        {Model::Elements, Model::ColumnNodeList, Qt::AscendingOrder, {40, 100, 70, 55}},
        {Model::Elements, Model::ColumnNodeList, Qt::DescendingOrder, {70, 55, 100, 40}},
        {Model::Elements, Model::ColumnProperty, Qt::AscendingOrder, {55, 40, 70, 100}},
    };
    for (const Case& c : cases) {
        Model m(&mesh, &model, &si);
        m.SetContents(c.contents);
        m.sort(c.column, c.order);
        EXPECT_EQ(ids(m), c.ids) << "column " << c.column << " order " << c.order;
        for (int id : c.ids)
            EXPECT_EQ(m.CellText(m.RowOfId(id), 0).toInt(), id) << id;
    }
    // Sorting never touches the mesh itself.
    EXPECT_EQ(mesh.Nodes()[0].id, 5);
    EXPECT_EQ(mesh.ElementID(0), 100);
}

TEST_F(MeshTableTest, coordinateThatIsNoNumberShowsEmptyAndSortsLastBothWays)
{
    mesh.AddNode(11, std::nan(""), 0.0, 0.0);
    for (Qt::SortOrder order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
        Model m(&mesh, &model, &si);
        m.sort(Model::ColumnX, order);
        EXPECT_EQ(ids(m).back(), 11) << order;
        EXPECT_TRUE(m.CellText(m.RowOfId(11), Model::ColumnX).isEmpty());
        EXPECT_EQ(m.CellText(m.RowOfId(9), Model::ColumnX), QStringLiteral("1.50000"));
    }
}

TEST_F(MeshTableTest, copyGivesSelectedRowsInTableOrderUnderUnitHeads)
{
    Model m(&mesh, &model, &si);
    const QString head = QStringLiteral("ID\tX (m)\tY (m)\tZ (m)\n");
    const QString row3 = QStringLiteral("3\t0.25000\t-0.50000\t0.12500\n");
    const QString row9 = QStringLiteral("9\t1.50000\t0.75000\t-0.00200\n");
    const int r3 = m.RowOfId(3), r9 = m.RowOfId(9);
    EXPECT_EQ(m.CopyText({r9, r3, r9, -4, 4000}), head + row3 + row9);
    m.sort(Model::ColumnNodeId, Qt::DescendingOrder);
    EXPECT_EQ(m.CopyText({m.RowOfId(3), m.RowOfId(9)}), head + row9 + row3);
    EXPECT_EQ(m.CopyText({}).count(QLatin1Char('\n')), 5);
    m.SetContents(Model::Elements);
    EXPECT_EQ(m.CopyText({m.RowOfId(40)}),
              QStringLiteral("ID\tFamily\tNodes\tProperty\n40\tTriangle\t3 9 7\tCover shell\n"));
}

TEST_F(MeshTableTest, goToIdSelectsTheRowOrSaysWhy)
{
    struct Case
    {
        int contents;
        const char* text;
        Dlg::FindStatus status;
        int id; // the row selected when found
    };
    const Case cases[] = {
        {0, "7", Dlg::Found, 7},
        {0, "  9 ", Dlg::Found, 9},
        {0, "", Dlg::NotANumber, 0},
        {0, "abc", Dlg::NotANumber, 0},
        {0, "1.5", Dlg::NotANumber, 0},
        {0, "99999999999", Dlg::NotANumber, 0},
        {0, "4", Dlg::NotInMesh, 0},
        {0, "100", Dlg::NotInMesh, 0}, // an element's ID while nodes are shown
        {1, "100", Dlg::Found, 100},
        {1, "-1", Dlg::NotInMesh, 0},
    };
    CFMView view(&model);
    auto* d = new Dlg(&mesh, &view, &si);
    d->Create();
    for (const Case& c : cases) {
        d->ShowContents(c.contents);
        d->TableView()->sortByColumn(Model::ColumnNodeId, Qt::DescendingOrder);
        EXPECT_EQ(d->GoToId(QString::fromUtf8(c.text)), c.status) << c.text;
        if (c.status == Dlg::Found) {
            EXPECT_TRUE(d->GetMessageText().isEmpty()) << c.text;
            const QModelIndexList rows = d->TableView()->selectionModel()->selectedRows();
            ASSERT_EQ(rows.size(), 1) << c.text;
            EXPECT_EQ(d->TableModel()->CellText(rows.first().row(), 0).toInt(), c.id);
        } else {
            EXPECT_FALSE(d->GetMessageText().isEmpty()) << c.text;
        }
    }
    d->OnCancel();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(MeshTableTest, sortingKeepsTheSelectedNodeSelected)
{
    auto* d = new Dlg(&mesh, nullptr, &si);
    d->Create();
    ASSERT_EQ(d->GoToId(QStringLiteral("9")), Dlg::Found);
    d->TableView()->sortByColumn(Model::ColumnX, Qt::AscendingOrder);
    const QModelIndexList rows = d->TableView()->selectionModel()->selectedRows();
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(d->TableModel()->CellText(rows.first().row(), 0), QStringLiteral("9"));
    EXPECT_EQ(d->SelectedText().count(QLatin1Char('\n')), 2);
    d->OnCancel();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(MeshTableTest, emptyOrMissingMeshShowsNoRowsAndNeverFails)
{
    CKwMeshModel empty;
    for (CKwMeshModel* m : {&empty, static_cast<CKwMeshModel*>(nullptr)}) {
        auto* d = new Dlg(m, nullptr, nullptr);
        d->Create();
        for (int contents : {0, 1}) {
            d->ShowContents(contents);
            EXPECT_EQ(d->TableModel()->rowCount(), 0);
            d->TableView()->sortByColumn(1, Qt::DescendingOrder);
            EXPECT_EQ(d->GoToId(QStringLiteral("1")), Dlg::NotInMesh);
            EXPECT_EQ(d->SelectedText().count(QLatin1Char('\n')), 1); // the heads alone
            EXPECT_TRUE(d->TableModel()->CellText(0, 0).isEmpty());
        }
        d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(MeshTableTest, launchOpensOnTheMeshInTheViewsOpenDialogs)
{
    kwtest::Host host;
    DialogLaunchRequest r = host.Request(49);
    r.object = static_cast<CKwFEBase*>(host.model->m_mesh);
    LaunchDialog(&r);
    auto* d = dynamic_cast<Dlg*>(host.view->GetOpenDialog());
    ASSERT_NE(d, nullptr);
    EXPECT_TRUE(d->isVisible());
    EXPECT_EQ(d->TableModel()->rowCount(),
              static_cast<int>(host.model->m_mesh->Nodes().size()));
    // The table opens in mesh order.
    EXPECT_EQ(d->TableModel()->MeshIndexOfRow(0), 0);
    EXPECT_EQ(d->TableModel()->CellText(0, 0).toInt(), host.model->m_mesh->Nodes()[0].id);
    // The units of the view's holder: millimetres in the test host or metres, never blank.
    EXPECT_TRUE(d->TableModel()->headerData(1, Qt::Horizontal).toString().startsWith("X ("));
    d->OnCancel();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(host.view->GetOpenDialogCount(), 0);
    // Without a mesh, or with something else than a mesh, nothing opens.
    for (void* object : {static_cast<void*>(nullptr),
                         static_cast<void*>(static_cast<CKwFEBase*>(host.model->m_properties.first()))}) {
        r.object = object;
        LaunchDialog(&r);
        EXPECT_EQ(host.view->GetOpenDialogCount(), 0);
    }
    r.object = static_cast<CKwFEBase*>(host.model->m_mesh);
    r.view = nullptr;
    LaunchDialog(&r); // no view: opens on its own
    int alone = 0;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* t = dynamic_cast<Dlg*>(w); t && t->isVisible()) {
            ++alone;
            t->OnCancel();
        }
    EXPECT_EQ(alone, 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(MeshTableTest, everyCaptionPassesTheLanguageServiceAndSpeaksGerman)
{
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QStringLiteral("qps")));
    auto* d = new Dlg(&mesh, nullptr, &si);
    d->Create();
    d->show();
    EXPECT_EQ(kwtest::UntranslatedCaptions(d), QStringList());
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QStringLiteral("de")));
    d->SetTextToCurrentLang();
    EXPECT_EQ(d->windowTitle(), QStringLiteral("Netztabelle"));
    d->ShowContents(1);
    EXPECT_EQ(d->TableModel()->headerData(Model::ColumnFamily, Qt::Horizontal).toString(),
              QStringLiteral("Familie"));
    EXPECT_EQ(d->TableModel()->CellText(d->TableModel()->RowOfId(70), Model::ColumnFamily),
              QStringLiteral("Viereck"));
    d->GoToId(QStringLiteral("x"));
    EXPECT_TRUE(d->GetMessageText().contains(QStringLiteral("ganze Zahl")));
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
    d->OnCancel();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace
