// The failed-elements window: its table model, colouring by limits and angle unit, texts,
// summary, group building on OK, highlight, copy, sort and its smallest size.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMeshModel.h"
#include "CKwMeshQualityResultsDialog.h"
#include "CKwMeshQualityResultsModel.h"
#include "CKwTreeManager.h"
#include "CKwXMLUtils.h"
#include "KW_UOM.h"
#include "KwTestSupport.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QBrush>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTableView>
#include <gtest/gtest.h>
#include <cmath>

namespace {

using Dlg = CKwMeshQualityResultsDialog;
using Model = CKwMeshQualityResultsModel;

class MeshQualityResultsTest : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }

    // Elements whose measures are known: 1 a 2x1 rectangle (aspect ratio 2, Jacobian 1),
    // 2 a parallelogram sheared 45 degrees, 3 a sliver triangle, 4 a collinear triangle.
    void buildSmallMesh()
    {
        CKwMeshModel& m = mesh;
        const double p[][3] = {{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {0, 1, 0},  {10, 0, 0},
                               {11, 0, 0}, {12, 1, 0}, {11, 1, 0}, {20, 0, 0}, {21, 0, 0},
                               {20.5, 1e-6, 0}, {30, 0, 0}, {31, 0, 0}, {32, 0, 0}};
        for (int i = 0; i < 14; ++i)
            m.AddNode(i + 1, p[i][0], p[i][1], p[i][2]);
        m.AddElement(1, CKwMeshModel::Quad4, {1, 2, 3, 4});
        m.AddElement(2, CKwMeshModel::Quad4, {5, 6, 7, 8});
        m.AddElement(3, CKwMeshModel::Tri3, {9, 10, 11});
        m.AddElement(4, CKwMeshModel::Tri3, {12, 13, 14});
        m.AddElement(5, CKwMeshModel::Beam2, {1, 2}); // not checked
        m.SetQualityLimit(CKwMeshModel::QuadAspectRatio, 2.0f);   // rectangle: equal
        m.SetQualityLimit(CKwMeshModel::QuadJacobian, 1.0001f);   // rectangle: just below
        m.SetQualityLimit(CKwMeshModel::QuadSkew, 40.0f);          // parallelogram: 45
    }
    Dlg* open()
    {
        auto* d = new Dlg(&mesh, host.view.get(), host.units.get(), host.view.get());
        d->show();
        return d;
    }
    int rowOf(const Model* m, int id)
    {
        for (int r = 0; r < m->rowCount(); ++r)
            if (m->RecordAt(r).id == id)
                return r;
        return -1;
    }

    kwtest::Host host;
    CKwMeshModel mesh;
};

TEST_F(MeshQualityResultsTest, modelPassesTheItemModelTester)
{
    Dlg* d = new Dlg(host.model->m_mesh, host.view.get(), host.units.get(), host.view.get());
    Model* m = d->ResultsModel();
    QAbstractItemModelTester tester(m, QAbstractItemModelTester::FailureReportingMode::Fatal);
    ASSERT_GT(m->rowCount(), 0);
    EXPECT_EQ(m->columnCount(), 7);
    for (int c = 0; c < 7; ++c)
        m->sort(c, c % 2 ? Qt::DescendingOrder : Qt::AscendingOrder);
    m->Reload();
    delete d;
}

TEST_F(MeshQualityResultsTest, coloursFailingCellsByLimitUnitAndFlag)
{
    buildSmallMesh();
    Dlg* d = open();
    Model* m = d->ResultsModel();
    ASSERT_EQ(m->rowCount(), 4); // the beam is not checked, every other element fails
    const int rect = rowOf(m, 1), para = rowOf(m, 2);
    auto red = [&](int row, int col) {
        const QVariant bg = m->data(m->index(row, col), Qt::BackgroundRole);
        return bg.isValid() && bg.value<QBrush>().color() == QColor(255, 0, 0);
    };
    struct Case
    {
        int row;
        int column;
        bool red;
    };
    const Case degrees[] = {
        {rect, Model::ColumnAspectRatio, false}, // equal to its limit
        {rect, Model::ColumnJacobian, true},     // just below its limit
        {rect, Model::ColumnId, false},          {rect, Model::ColumnType, false},
        {para, Model::ColumnSkew, true},         // 45 > 40 degrees
    };
    for (const Case& c : degrees)
        EXPECT_EQ(red(c.row, c.column), c.red) << c.row << "," << c.column;
    host.units->SetAngleInRadians(true); // 0.785 rad < 40
    EXPECT_FALSE(red(para, Model::ColumnSkew));
    EXPECT_EQ(m->CellText(para, Model::ColumnSkew), QStringLiteral("0.785"));
    mesh.SetQualityCheck(CKwMeshModel::QuadJacobian, false);
    EXPECT_FALSE(red(rect, Model::ColumnJacobian));
    for (int r = 0; r < m->rowCount(); ++r)
        for (int c = 0; c < 7; ++c)
            EXPECT_FALSE(m->data(m->index(r, c), Qt::ForegroundRole).isValid());
}

TEST_F(MeshQualityResultsTest, showsTextsValuesAndSummary)
{
    buildSmallMesh();
    Dlg* d = open();
    Model* m = d->ResultsModel();
    const int sliver = rowOf(m, 3), flat = rowOf(m, 4), rect = rowOf(m, 1);
    EXPECT_EQ(d->windowTitle(), QStringLiteral("Failed Elements"));
    EXPECT_EQ(m->CellText(rect, Model::ColumnType), QStringLiteral("Quadrilateral"));
    EXPECT_EQ(m->CellText(sliver, Model::ColumnType), QStringLiteral("Triangle"));
    EXPECT_EQ(m->CellText(rect, Model::ColumnAspectRatio), QStringLiteral("2.000"));
    // A sliver's aspect ratio in the exponent form; a collapsed one named, never a number.
    EXPECT_TRUE(m->CellText(sliver, Model::ColumnAspectRatio).contains(QStringLiteral("E+")))
        << m->CellText(sliver, Model::ColumnAspectRatio).toStdString();
    EXPECT_EQ(m->CellText(flat, Model::ColumnAspectRatio), QStringLiteral("Degenerate"));
    EXPECT_EQ(m->CellText(sliver, Model::ColumnWarping), QString());
    EXPECT_EQ(m->CellText(sliver, Model::ColumnTaper), QString());
    for (int r = 0; r < m->rowCount(); ++r)
        for (int c = 0; c < 7; ++c)
            EXPECT_FALSE(m->CellText(r, c).contains(QStringLiteral("nan"), Qt::CaseInsensitive));
    EXPECT_EQ(d->findChild<QLabel*>(QStringLiteral("summary"))->text(),
              QStringLiteral("4 of 4 elements failed (100.00%)"));
    const QStringList headers = {"Elem. ID", "Elem. Type", "Aspect Ratio", "Skew", "Warping",
                                 "Taper", "Jacobian"};
    for (int c = 0; c < 7; ++c)
        EXPECT_EQ(m->headerData(c, Qt::Horizontal).toString(), headers[c]);

    CKwMeshModel empty;
    auto* e = new Dlg(&empty, host.view.get(), host.units.get(), host.view.get());
    EXPECT_EQ(e->GetSummaryText(), QStringLiteral("0 of 0 elements failed (0.00%)"));
    EXPECT_EQ(e->ResultsModel()->rowCount(), 0);
    delete e;
}

TEST_F(MeshQualityResultsTest, okBuildsTheNamedGroupOnceAndClosesTheWindow)
{
    buildSmallMesh();
    QPointer<Dlg> d = open();
    auto* check = d->findChild<QCheckBox*>(QStringLiteral("groupCheck"));
    auto* name = d->findChild<QLineEdit*>(QStringLiteral("groupName"));
    EXPECT_EQ(name->text(), QStringLiteral("Group1"));
    EXPECT_FALSE(name->isEnabled());
    check->setChecked(true);
    EXPECT_TRUE(name->isEnabled());
    name->setText(QString());
    d->OnBnClickedMeshQualityOk();
    EXPECT_TRUE(mesh.Groups().empty());
    EXPECT_TRUE(host.view->GetLastBubbleText().contains(QStringLiteral("Enter a name")));
    ASSERT_TRUE(d && d->isVisible());
    name->setText(QStringLiteral("Group1"));
    const int refreshes = CKwTreeManager::GetRefreshCount();
    d->OnBnClickedMeshQualityOk();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(d.isNull()); // closed and deleted itself
    ASSERT_EQ(mesh.Groups().size(), 1u);
    EXPECT_EQ(mesh.Groups()[0].name, QStringLiteral("Group1"));
    EXPECT_EQ(mesh.Groups()[0].elementIds.size(), 4u);
    EXPECT_EQ(CKwTreeManager::GetRefreshCount(), refreshes + 1);
    // The next window numbers on; a used name is refused and nothing is half built.
    Dlg* next = open();
    EXPECT_EQ(next->findChild<QLineEdit*>(QStringLiteral("groupName"))->text(),
              QStringLiteral("Group2"));
    next->findChild<QCheckBox*>(QStringLiteral("groupCheck"))->setChecked(true);
    next->findChild<QLineEdit*>(QStringLiteral("groupName"))->setText(QStringLiteral("Group1"));
    next->OnBnClickedMeshQualityOk();
    EXPECT_EQ(mesh.Groups().size(), 1u);
    EXPECT_TRUE(next->isVisible());
}

TEST_F(MeshQualityResultsTest, highlightsSortsCopiesAndKeepsItsSmallestSize)
{
    buildSmallMesh();
    Dlg* d = open();
    Model* m = d->ResultsModel();
    d->findChild<QPushButton*>(QStringLiteral("highlight"))->click();
    std::vector<int> shown = host.view->GetHighlightedMesh(CFMView::HighlightElements);
    std::sort(shown.begin(), shown.end());
    EXPECT_EQ(shown, (std::vector<int>{1, 2, 3, 4}));

    d->ResultsView()->sortByColumn(Model::ColumnJacobian, Qt::AscendingOrder);
    for (int r = 1; r < m->rowCount(); ++r)
        EXPECT_LE(m->data(m->index(r - 1, 6), Model::RawValueRole).toDouble(),
                  m->data(m->index(r, 6), Model::RawValueRole).toDouble());
    d->ResultsView()->sortByColumn(Model::ColumnId, Qt::DescendingOrder);
    EXPECT_EQ(m->RecordAt(0).id, 4);
    EXPECT_EQ(m->CopyText({2, 0}).split(QLatin1Char('\n')).mid(0, 3),
              (QStringList{QStringLiteral("Elem. ID\tElem. Type\tAspect Ratio\tSkew\tWarping\t"
                                          "Taper\tJacobian"),
                           m->CopyText({0}).split(QLatin1Char('\n'))[1],
                           m->CopyText({2}).split(QLatin1Char('\n'))[1]}));
    d->ResultsView()->selectRow(1);
    d->CopySelection();
    EXPECT_TRUE(QApplication::clipboard()->text().contains(QStringLiteral("\n3\tTriangle\t")));

    QRect r(10, 10, 400, 500);
    const QRect accepted = d->geometry();
    EXPECT_FALSE(d->OnSizing(&r));
    EXPECT_EQ(r.size(), accepted.size());
    r = QRect(10, 10, 600, 299);
    EXPECT_FALSE(d->OnSizing(&r));
    r = QRect(10, 10, 500, 300);
    EXPECT_TRUE(d->OnSizing(&r));
    d->resize(100, 100);
    EXPECT_GE(d->width(), 500);
    EXPECT_GE(d->height(), 300);
}

TEST_F(MeshQualityResultsTest, everyCaptionPassesTheLanguageServiceAndSpeaksGerman)
{
    buildSmallMesh();
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QStringLiteral("qps")));
    Dlg* d = open();
    EXPECT_EQ(kwtest::UntranslatedCaptions(d), QStringList());
    EXPECT_TRUE(d->ResultsModel()->headerData(0, Qt::Horizontal).toString().startsWith("[~"));
    delete d;
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QStringLiteral("de")));
    d = open();
    EXPECT_EQ(d->windowTitle(), QStringLiteral("Fehlerhafte Elemente"));
    EXPECT_EQ(d->GetSummaryText(), QStringLiteral("4 of 4 Elemente fehlerhaft (100.00%)"));
    EXPECT_EQ(d->ResultsModel()->CellText(rowOf(d->ResultsModel(), 1), Model::ColumnType),
              QStringLiteral("Viereck"));
    delete d;
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
}

} // namespace
