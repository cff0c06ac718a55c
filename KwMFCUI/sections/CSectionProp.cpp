#include "CSectionProp.h"

#include "KW_UOM.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMethodLogger.h"

#include <QFontMetricsF>
#include <QGroupBox>
#include <QHash>
#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace {

constexpr const char* kPP = "PhysicalProperties";

// Draws the outline polygons, fitted and centred.
class OutlineView : public QWidget
{
public:
    OutlineView(const QList<QList<SymMatrixUtils::Point2D>>& outline, QWidget* parent)
        : QWidget(parent), m_outline(outline)
    {
        setMinimumSize(220, 220);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.fillRect(rect(), Qt::white);
        p.setRenderHint(QPainter::Antialiasing);
        double x0 = 1e300, x1 = -1e300, y0 = 1e300, y1 = -1e300;
        for (const auto& l : m_outline)
            for (const auto& pt : l) {
                x0 = std::min(x0, pt.x);
                x1 = std::max(x1, pt.x);
                y0 = std::min(y0, pt.y);
                y1 = std::max(y1, pt.y);
            }
        if (!(x1 >= x0) || !(y1 >= y0))
            return;
        const double s = 0.9 * std::min(width() / std::max(x1 - x0, 1e-300),
                                         height() / std::max(y1 - y0, 1e-300));
        const QPointF c = QRectF(rect()).center();
        QPainterPath path;
        for (const auto& l : m_outline) {
            QPolygonF poly;
            for (const auto& pt : l)
                poly << QPointF(c.x() + s * (pt.x - (x0 + x1) / 2), c.y() - s * (pt.y - (y0 + y1) / 2));
            path.addPolygon(poly);
            path.closeSubpath();
        }
        path.setFillRule(Qt::OddEvenFill);
        p.setPen(QPen(QColor(0, 0, 255), 1.5));
        p.setBrush(QColor(200, 212, 230));
        p.drawPath(path);
    }

private:
    QList<QList<SymMatrixUtils::Point2D>> m_outline;
};

// printf's "%lg" for one value.
QString g(double v)
{
    return QString::asprintf("%lg", v);
}

} // namespace

CSectionProp::CSectionProp(QWidget* parent, const QList<QList<SymMatrixUtils::Point2D>>& outline,
                           const double* sectionData, double first, double pierceZ,
                           double pierceY, KW_UOM* units, int firstInt, int form)
    : CKwMFCDialog(188, nullptr, parent), m_outline(outline), m_first(first), m_pierceZ(pierceZ),
      m_pierceY(pierceY), m_units(units), m_firstInt(firstInt), m_form(form)
{
    if (sectionData)
        std::copy(sectionData, sectionData + KwSectionValue::Count, m_data.begin());
    auto* lay = new QHBoxLayout(this);
    auto* section = new QGroupBox(this);
    KwSetControlId(section, IDC_GROUP_SECTION);
    auto* sl = new QVBoxLayout(section);
    auto* view = new OutlineView(m_outline, section);
    KwSetControlId(view, IDC_OUTLINE);
    sl->addWidget(view);
    auto* props = new QGroupBox(this);
    KwSetControlId(props, IDC_GROUP_PROPERTIES);
    auto* pl = new QVBoxLayout(props);
    m_edit = new QPlainTextEdit(props);
    m_edit->setReadOnly(true);
    m_edit->setProperty("kwData", true);
    m_edit->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_edit->setTabStopDistance(40);
    m_edit->setMinimumSize(520, 380);
    KwSetControlId(m_edit, IDC_REPORT);
    pl->addWidget(m_edit);
    lay->addWidget(section);
    lay->addWidget(props, 1);
    // The report only informs: one button closes it.
    auto* close = new QPushButton(this);
    KwSetControlId(close, IDC_CLOSE);
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, [this] { OnOK(); });
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(close);
    pl->addLayout(buttons);
}

void CSectionProp::SetTextToCurrentLang()
{
    setWindowTitle(KwPropText(kPP, "LabelSectionProp", "Section Properties"));
    KwSetControlText(this, IDC_GROUP_SECTION, KwPropText(kPP, "LabelSection", "Section"));
    KwSetControlText(this, IDC_GROUP_PROPERTIES, KwPropText(kPP, "LabelProperties", "Properties"));
    KwSetControlText(this, IDC_CLOSE, KwPropText("General", "ButtonClose", "Close"));
}

QString CSectionProp::BuildReport(const double* d, double pierceZ, double pierceY,
                                  const KW_UOM& u, int form)
{
    const int len = KwUnitKind::Length, area = KwUnitKind::Area,
            inertia = KwUnitKind::AreaMomentOfInertia, angle = KwUnitKind::Angle;
    auto disp = [&u](double v, int kind) { return u.GetDisplayValue(v, kind); };
    QString out;
    if (form == kPipeForm) {
        out = QStringLiteral("%1 (D):\t\t%2 (%3)\r\n%4 (t):\t\t%5 (%6)\r\n")
                  .arg(KwPropText(kPP, "TooltipOuterDia", "Outer Diameter"), g(disp(d[0], len)),
                       u.GetUnits(len), KwPropText(kPP, "TooltipWallThickness", "Wall Thickness"),
                       g(disp(d[1], len)), u.GetUnits(len));
        return out.left(kMaxReportChars - 1);
    }
    auto text = [](const char* key, const char* english) { return KwPropText(kPP, key, english); };
    auto offset = [&](double v) {
        const double s = disp(v, len);
        return (s > -1e-10 && s < 1e-10) ? 0.0 : s;
    };
    struct Line
    {
        QString label;
        const char* symbol; // "(A)" and so on; empty for none
        const char* tabs;
        double value;
        int kind; // -2: no unit printed
    };
    const double cz = d[KwSectionValue::CentroidZ], cy = d[KwSectionValue::CentroidY];
    QList<Line> lines = {
        {text("LabelCrossSectionArea", "Cross Section Area"), "A", "\t\t", disp(d[0], area), area},
        {text("LabelMomentOfInertiaAboutZn", "Moment of inertia about Zn"), "I1", "\t\t", disp(d[1], inertia), inertia},
        // The second moment's label is looked up under the first one's key.
        {text("LabelMomentOfInertiaAboutZn", "Moment of inertia about Yn"), "I2", "\t\t", disp(d[2], inertia), inertia},
        {text("LabelProductOfInertia", "Product of inertia"), "Izy", "\t\t", disp(d[3], inertia), inertia},
        {text("LabelAngleOfPrincipalMomentOfInertia", "Angle of principal moment of inertia"), "", "\t", disp(d[4], angle), angle},
        {text("LabelTorsionalConstant", "Torsional constant"), "J", "\t\t", disp(d[5], inertia), inertia},
        {text("LabelShearFactorInZ", "Shear factor in Z"), "Kz", "\t\t\t", d[6], -2},
        {text("LabelShearFactorInY", "Shear factor in Y"), "Ky", "\t\t\t", d[7], -2},
        {text("LabelRotationAngleAgainstDefaultCS", "Rotation angle against default C.S."), "", "\t", disp(d[8], angle), angle},
        {text("LabelCentroidOffsetFromPiercePointInZ", "Centroid offset from pierce point in Z"), "", "\t", offset(cz - pierceZ), len},
        {text("LabelCentroidOffsetFromPiercePointInY", "Centroid offset from pierce point in Y"), "", "\t", offset(cy - pierceY), len},
        {text("LabelCentroidOffsetFromShearCenterInZ", "Centroid offset from shear center in Z"), "Nz", "\t", disp(d[11], len), len},
        {text("LabelCentroidOffsetFromShearCenterInY", "Centroid offset from shear center in Y"), "Ny", "\t", disp(d[12], len), len},
        // No unit in the line: the value is in the length unit to the sixth power, which the
        // report's tool tip names (`WarpingUnit`).
        {text("LabelWarpingCoefficient", "Warping coefficient"), "Cw", "\t\t", d[13] * std::pow(disp(1.0, len), 6), -2},
    };
    static const char* const recKeys[8][3] = {
        {"LabelZCoordinateOfStressRecoveryPtC", "Z coordinate of stress recovery pt C", "Cz"},
        {"LabelYCoordinateOfStressRecoveryPtC", "Y coordinate of stress recovery pt C", "Cy"},
        {"LabelZCoordinateOfStressRecoveryPtD", "Z coordinate of stress recovery pt D", "Dz"},
        {"LabelYCoordinateOfStressRecoveryPtD", "Y coordinate of stress recovery pt D", "Dy"},
        {"LabelZCoordinateOfStressRecoveryPtE", "Z coordinate of stress recovery pt E", "Ez"},
        {"LabelYCoordinateOfStressRecoveryPtE", "Y coordinate of stress recovery pt E", "Ey"},
        {"LabelZCoordinateOfStressRecoveryPtF", "Z coordinate of stress recovery pt F", "Fz"},
        {"LabelYCoordinateOfStressRecoveryPtF", "Y coordinate of stress recovery pt F", "Fy"},
    };
    for (int k = 0; k < 8; ++k) {
        const double rel = d[KwSectionValue::RecoveryFirst + k] - (k % 2 == 0 ? cz : cy);
        lines.append({text(recKeys[k][0], recKeys[k][1]), recKeys[k][2], "\t", disp(rel, len), len});
    }
    for (const Line& l : lines) {
        out += l.label;
        if (*l.symbol)
            out += QStringLiteral(" (%1)").arg(QLatin1String(l.symbol));
        out += QStringLiteral(":") + QLatin1String(l.tabs) + g(l.value);
        if (l.kind != -2)
            out += QStringLiteral(" (%1)").arg(u.GetUnits(l.kind));
        out += QStringLiteral("\r\n");
    }
    // The report buffer holds 2000 characters with its terminator.
    return out.left(kMaxReportChars - 1);
}

QString CSectionProp::WarpingUnit(const KW_UOM& u)
{
    return KwPropText(kPP, "TooltipWarpingCoefficientUnit", "Warping coefficient (Cw) in %1")
        .arg(u.GetUnits(KwUnitKind::Length) + QChar(0x2076));
}

bool CSectionProp::OnInitDialog()
{
    KW_LOG_METHOD("CSectionProp::OnInitDialog");
    SetTextToCurrentLang();
    KW_UOM fallback;
    m_report = BuildReport(m_data.data(), m_pierceZ, m_pierceY, m_units ? *m_units : fallback, m_form);
    if (m_form != kPipeForm)
        m_edit->setToolTip(WarpingUnit(m_units ? *m_units : fallback));
    m_edit->setFont(QFont(QStringLiteral("Arial Unicode MS"), 9));
    // The report goes in as built, tab runs and all. Its runs were laid out for one font's tab
    // stops; for ours, the distance is chosen at which the most values start in one column.
    const QFontMetricsF fm(m_edit->font());
    const qreal unit = fm.averageCharWidth();
    qreal best = 8 * unit;
    int bestCount = 0;
    for (int chars = 4; chars <= 24; ++chars) {
        const qreal stop = chars * unit;
        QHash<int, int> columns;
        for (const QString& line : m_report.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts)) {
            const qsizetype tab = line.indexOf(QLatin1Char('\t'));
            if (tab < 0)
                continue;
            qsizetype runEnd = tab;
            while (runEnd < line.size() && line.at(runEnd) == QLatin1Char('\t'))
                ++runEnd;
            const qreal label = fm.horizontalAdvance(line.left(tab));
            const int column = int(std::floor(label / stop)) + int(runEnd - tab);
            ++columns[column];
        }
        for (int count : std::as_const(columns))
            if (count > bestCount) {
                bestCount = count;
                best = stop;
            }
    }
    m_edit->setTabStopDistance(best);
    m_edit->setPlainText(m_report);
    adjustSize();
    RestorePlacement();
    return true;
}
