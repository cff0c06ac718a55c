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
#include <array>
#include <cmath>
#include <random>
#include <string>

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

// A quadrilateral given by its corners, added with the next free node ids.
void addQuad(CKwMeshModel& m, int id, std::initializer_list<std::array<double, 3>> corners)
{
    std::vector<int> nodes;
    for (const auto& c : corners) {
        const int n = static_cast<int>(m.Nodes().size()) + 1;
        m.AddNode(n, c[0], c[1], c[2]);
        nodes.push_back(n);
    }
    m.AddElement(id, CKwMeshModel::Quad4, std::span<const int>(nodes));
}

// A parallelogram of unit sides whose corner sine (its Jacobian) is s.
void addParallelogram(CKwMeshModel& m, int id, double s)
{
    const double c = std::sqrt(1 - s * s);
    addQuad(m, id, {{0, 0, 0}, {1, 0, 0}, {1 + c, s, 0}, {c, s, 0}});
}

// The cell is red by the number it shows, the element is listed by the number measured; where
// the two part, the cell says why in its tool tip.
TEST_F(MeshQualityResultsTest, coloursACellByItsTextAndExplainsARoundedOne)
{
    addQuad(mesh, 1, {{0, 0, 0}, {2.0000001, 0, 0}, {2.0000001, 1, 0}, {0, 1, 0}});
    addParallelogram(mesh, 2, 0.59996); // Jacobian shows 0.600
    addParallelogram(mesh, 3, 0.5989);  // shows 0.599
    addQuad(mesh, 4, {{0, 0, 0}, {2.001, 0, 0}, {2.001, 1, 0}, {0, 1, 0}});
    addQuad(mesh, 5, {{0, 0, 0}, {2.00000005, 0, 0}, {2.00000005, 1, 0}, {0, 1, 0}});
    mesh.SetQualityLimit(CKwMeshModel::QuadAspectRatio, 2.0f);
    mesh.SetQualityLimit(CKwMeshModel::QuadJacobian, 0.6f);
    mesh.SetQualityCheck(CKwMeshModel::QuadSkew, false);
    Dlg* d = open();
    Model* m = d->ResultsModel();
    ASSERT_EQ(m->rowCount(), 5);
    struct Case
    {
        int id;
        int column;
        const char* text;
        bool red;
        const char* tip; // nullptr: no tool tip
    };
    const Case cases[] = {
        {1, Model::ColumnAspectRatio, "2.000", false,
         "Measured 2.0000001, above the limit 2: the cell shows it rounded to 2.000."},
        {5, Model::ColumnAspectRatio, "2.000", false, "Measured 2.00000005"},
        {4, Model::ColumnAspectRatio, "2.001", true, nullptr},
        {1, Model::ColumnJacobian, "1.000", false, nullptr},
        {2, Model::ColumnJacobian, "0.600", false, ", below the limit 0.6: the cell shows it rounded to 0.600."},
        {3, Model::ColumnJacobian, "0.599", true, nullptr},
        {2, Model::ColumnSkew, "53.133", false, nullptr}, // switched off
    };
    for (const Case& c : cases) {
        const QModelIndex i = m->index(rowOf(m, c.id), c.column);
        EXPECT_EQ(m->data(i).toString(), QString::fromLatin1(c.text)) << c.id << "," << c.column;
        const QVariant bg = m->data(i, Qt::BackgroundRole);
        EXPECT_EQ(bg.isValid() && bg.value<QBrush>().color() == QColor(255, 0, 0), c.red)
            << c.id << "," << c.column;
        const QString tip = m->data(i, Qt::ToolTipRole).toString();
        if (c.tip)
            EXPECT_TRUE(tip.contains(QString::fromLatin1(c.tip))) << tip.toStdString();
        else
            EXPECT_TRUE(tip.isEmpty()) << c.id << "," << c.column << ": " << tip.toStdString();
    }
    // Values kept as measured: two ratios that one float cannot tell apart still sort.
    d->ResultsView()->sortByColumn(Model::ColumnAspectRatio, Qt::AscendingOrder);
    std::vector<int> ids;
    for (int r = 0; r < m->rowCount(); ++r)
        ids.push_back(m->RecordAt(r).id);
    EXPECT_EQ(std::vector<int>(ids.begin() + 2, ids.end()), (std::vector<int>{5, 1, 4}));
    delete d;

    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QStringLiteral("de")));
    d = open();
    EXPECT_EQ(d->ResultsModel()->CellToolTip(rowOf(d->ResultsModel(), 1), Model::ColumnAspectRatio),
              QStringLiteral("Gemessen 2.0000001, über der Grenze 2: Die Zelle zeigt den Wert auf "
                             "2.000 gerundet."));
    delete d;
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
}

// Skew and warping are shown, coloured and copied in the display angle unit.
TEST_F(MeshQualityResultsTest, showsAnglesInTheDisplayUnit)
{
    addQuad(mesh, 1, {{0, 0, 0}, {1, 0, 0}, {2, 1, 0}, {1, 1, 0}}); // skew 45 degrees
    addQuad(mesh, 2, {{0, 0, 0}, {1, 0, 0}, {1, 1, 1}, {0, 1, 0}}); // warping 60 degrees
    mesh.SetQualityLimit(CKwMeshModel::QuadSkew, 40.0f);
    mesh.SetQualityLimit(CKwMeshModel::QuadWarpage, 10.0f);
    mesh.SetQualityCheck(CKwMeshModel::QuadJacobian, false);
    mesh.SetQualityCheck(CKwMeshModel::QuadTaper, false);
    Dlg* d = open();
    Model* m = d->ResultsModel();
    ASSERT_EQ(m->rowCount(), 2);
    struct Case
    {
        bool radians;
        int id;
        int column;
        const char* text;
        bool red;
    };
    const Case cases[] = {
        {false, 1, Model::ColumnSkew, "45.000", true},
        {false, 2, Model::ColumnWarping, "60.000", true},
        {false, 2, Model::ColumnSkew, "11.537", false},
        {true, 1, Model::ColumnSkew, "0.785", false},
        {true, 2, Model::ColumnWarping, "1.047", false},
    };
    for (const Case& c : cases) {
        host.units->SetAngleInRadians(c.radians);
        const int row = rowOf(m, c.id);
        EXPECT_EQ(m->CellText(row, c.column), QString::fromLatin1(c.text)) << c.text;
        EXPECT_EQ(m->CellFails(row, c.column), c.red) << c.text;
        EXPECT_TRUE(m->CopyText({row}).contains(QLatin1Char('\t') + QString::fromLatin1(c.text)))
            << c.text;
    }
    delete d;
}

TEST_F(MeshQualityResultsTest, summaryGivesTheFailedShareInHundredths)
{
    struct Case
    {
        int passing;
        const char* summary;
    };
    const Case cases[] = {
        {0, "4 of 4 elements failed (100.00%)"},
        {2, "4 of 6 elements failed (66.67%)"},
        {8, "4 of 12 elements failed (33.33%)"},
        {396, "4 of 400 elements failed (1.00%)"},
        {2996, "4 of 3000 elements failed (0.13%)"},
    };
    for (const Case& c : cases) {
        mesh = CKwMeshModel();
        buildSmallMesh();
        const double s3 = std::sqrt(3.0);
        for (int k = 0; k < c.passing; ++k) {
            const int n = static_cast<int>(mesh.Nodes().size()) + 1;
            mesh.AddNode(n, 100.0 * k, 50, 0);
            mesh.AddNode(n + 1, 100.0 * k + 1, 50, 0);
            mesh.AddNode(n + 2, 100.0 * k + 0.5, 50 + s3 / 2, 0);
            mesh.AddElement(100 + k, CKwMeshModel::Tri3, {n, n + 1, n + 2});
        }
        Dlg* d = open();
        EXPECT_EQ(d->GetSummaryText(), QString::fromLatin1(c.summary));
        delete d;
    }
}

// The copied lines are the cells as shown.
TEST_F(MeshQualityResultsTest, copiedTextIsTheShownText)
{
    CKwMeshModel& sample = *host.model->m_mesh;
    sample.SetQualityLimit(CKwMeshModel::TetAspectRatio, 1.2f); // many rows, many values
    Dlg* d = new Dlg(&sample, host.view.get(), host.units.get(), host.view.get());
    Model* m = d->ResultsModel();
    ASSERT_GT(m->rowCount(), 50);
    const QStringList lines = m->CopyText({}).split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), m->rowCount() + 2); // captions and a final newline
    for (int r = 0; r < m->rowCount(); ++r) {
        QStringList cells;
        for (int c = 0; c < Model::ColumnCount; ++c)
            cells << m->CellText(r, c);
        EXPECT_EQ(lines[r + 1], cells.join(QLatin1Char('\t'))) << r;
    }
    delete d;
}

// The fast writer of the cells and of the copy gives printf's digits: halves that are exact
// in binary and those that only look like halves, signs, large numbers and the exponent form.
TEST(MeshQualityValueText, writesTheDigitsOfPrintf)
{
    std::vector<double> values = {0.0,      -0.0,     0.0625,    0.0005,   0.0015,  2.0005,
                                  1.0005,   0.9995,   -0.0001,   -2.5e-4,  999999.9995,
                                  999999.9996, 1e6,   1234567.0625, 1e20,  5e300,   0.6,
                                  0.59996,  2.0000001, 45.0,     1e-300,  0.1235,  -53.1335};
    std::mt19937_64 rng(20);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    for (int i = 0; i < 200000; ++i) {
        const double magnitude = std::pow(10.0, -4 + 11 * unit(rng));
        values.push_back((i % 3 == 0 ? -1 : 1) * magnitude * unit(rng));
        // Next to a half of a thousandth, where the product by 1000 may round either way.
        const double half = (std::floor(unit(rng) * 1e8) + 0.5) / 1000.0;
        values.push_back(std::nextafter(half, i % 2 ? 0.0 : 1e9));
        values.push_back(half);
    }
    char buf[Model::kValueBuffer];
    for (double v : values)
        for (bool exponent : {false, true}) {
            const std::string got(buf, Model::WriteValue(buf, buf + sizeof buf, v, exponent));
            const QString want = QString::asprintf(exponent ? "%0.3E" : "%0.3f", v);
            ASSERT_EQ(QString::fromStdString(got), want) << std::hexfloat << v;
        }
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
