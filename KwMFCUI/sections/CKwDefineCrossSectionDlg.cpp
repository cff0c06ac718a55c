#include "CKwDefineCrossSectionDlg.h"

#include "CFMView.h"
#include "CKwPhysicalProperty.h"
#include "CKwiCKAddin.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMessageBox.h"
#include "KwMethodLogger.h"
#include "KwNumbers.h"
#include "KwSectionPictures.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>
#include <cmath>

namespace {

using Dlg = CKwDefineCrossSectionDlg;
using PP = CKwPhysicalProperty;
constexpr const char* kPP = "PhysicalProperties";

constexpr int kPictures[PP::ShapeCount] = {331, 332, 333, 342, 334, 340, 346, 335, 341, 347,
                                           336, 337, 338, 344, 339, 343, 345, 330, 329,
                                           Dlg::kPictureL};

int endBEditId(int i)
{
    return i == 0 ? Dlg::IDC_ENDB_DIM1 : Dlg::IDC_ENDB_DIM1 + 1 + i;
}

// The canvas the section is drawn on; the dialog does the drawing.
class SectionCanvas : public QWidget
{
public:
    explicit SectionCanvas(Dlg* dlg) : QWidget(dlg), m_dlg(dlg)
    {
        setMinimumSize(260, 220);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        m_dlg->DrawCrossSection(m_dlg->GetShownEnd(), &p, rect());
    }

private:
    Dlg* m_dlg;
};

} // namespace

int CKwDefineCrossSectionDlg::PictureIdOf(int shapeCode)
{
    return shapeCode >= 0 && shapeCode < PP::ShapeCount ? kPictures[shapeCode] : -1;
}

int CKwDefineCrossSectionDlg::ValidateShape(int shapeCode, const double* d)
{
    // The host's rules are the only ones: a section the dialog accepts is one the host draws.
    return PP::CheckShapeDimensions(shapeCode, d);
}

CKwDefineCrossSectionDlg::CKwDefineCrossSectionDlg(CKwPhysicalProperty* property, KW_UOM* units,
                                                   CFMView* view, QWidget* parent)
    : CKwMFCDialog(327, view, parent), m_pProperty(property),
      m_pClone(property ? property->Clone() : new CKwPhysicalProperty()), m_pUnits(units)
{
    if (!m_pUnits)
        m_ownUnits = std::make_unique<KW_UOM>(view && view->GetUnitHolder()
                                                  ? view->GetUnitHolder()->GetSystem()
                                                  : KW_UOM::SI);
    buildControls();
}

CKwDefineCrossSectionDlg::~CKwDefineCrossSectionDlg()
{
    delete m_pClone;
    m_pClone = nullptr;
}

const KW_UOM* CKwDefineCrossSectionDlg::units() const
{
    return m_pUnits ? m_pUnits : m_ownUnits.get();
}

QLineEdit* CKwDefineCrossSectionDlg::dimEdit(int end, int i) const
{
    return m_dims[end ? 1 : 0][i];
}

QLineEdit* CKwDefineCrossSectionDlg::propEdit(int end, int row) const
{
    return m_props[end ? 1 : 0][row];
}

void CKwDefineCrossSectionDlg::buildControls()
{
    auto label = [this](int id) {
        auto* l = new QLabel(this);
        KwSetControlId(l, id);
        return l;
    };
    auto button = [this](int id) {
        auto* b = new QPushButton(this);
        b->setAutoDefault(false);
        KwSetControlId(b, id);
        return b;
    };
    auto* outer = new QHBoxLayout(this);
    auto* left = new QVBoxLayout;
    auto* right = new QVBoxLayout;
    outer->addLayout(left, 0);
    outer->addLayout(right, 1);

    auto* shapeRow = new QHBoxLayout;
    shapeRow->addWidget(label(IDC_LABEL_SHAPE));
    m_shape = new QComboBox(this);
    m_shape->setProperty("kwData", true);
    KwSetControlId(m_shape, IDC_COMBO_SHAPE);
    shapeRow->addWidget(m_shape, 1);
    left->addLayout(shapeRow);

    m_picture = new QLabel(this);
    KwSetControlId(m_picture, IDC_PICTURE);
    m_picture->setFixedSize(KwSectionPictureSize());
    m_picture->setAlignment(Qt::AlignCenter);
    m_picture->setStyleSheet(QStringLiteral("background: white; border: 1px solid #a0a0a0;"));
    left->addWidget(m_picture, 0, Qt::AlignHCenter);

    auto* dimGroup = new QGroupBox(this);
    KwSetControlId(dimGroup, IDC_GROUP_DIMENSIONS);
    auto* dg = new QGridLayout(dimGroup);
    dg->addWidget(label(IDC_LABEL_ENDA), 0, 1, Qt::AlignHCenter);
    dg->addWidget(label(IDC_LABEL_ENDB), 0, 2, Qt::AlignHCenter);
    for (int i = 0; i < 6; ++i) {
        m_dimLabels[i] = label(IDC_DIM1_LABEL + i);
        m_dimLabels[i]->setProperty("kwData", true);
        dg->addWidget(m_dimLabels[i], i + 1, 0);
        for (int end = 1; end >= 0; --end) {
            auto* e = new QLineEdit(dimGroup);
            e->setProperty("kwData", true);
            e->setMinimumWidth(90);
            KwSetControlId(e, end ? IDC_ENDA_DIM1 + i : endBEditId(i));
            m_dims[end][i] = e;
            dg->addWidget(e, i + 1, end ? 1 : 2);
            connect(e, &QLineEdit::textEdited, this, [this] {
                UpdateDimensions();
                repaintSection();
            });
        }
    }
    m_tapered = new QCheckBox(dimGroup);
    KwSetControlId(m_tapered, IDC_CHECK_TAPERED);
    dg->addWidget(m_tapered, 7, 0, 1, 3);
    left->addWidget(dimGroup);

    auto* refRow = new QHBoxLayout;
    refRow->addWidget(label(IDC_LABEL_REFPOINT));
    m_refPoint = new QComboBox(this);
    KwSetControlId(m_refPoint, IDC_COMBO_REFPOINT);
    refRow->addWidget(m_refPoint, 1);
    left->addLayout(refRow);

    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(button(IDC_LOAD));
    fileRow->addWidget(button(IDC_SAVE));
    fileRow->addStretch(1);
    left->addLayout(fileRow);
    left->addStretch(1);

    m_canvas = new SectionCanvas(this);
    KwSetControlId(m_canvas, IDC_DRAW_AREA);
    right->addWidget(m_canvas, 1);
    auto* drawRow = new QHBoxLayout;
    drawRow->addWidget(button(IDC_DRAW_ENDA));
    drawRow->addWidget(button(IDC_DRAW_ENDB));
    drawRow->addStretch(1);
    QPushButton* cw = button(IDC_ROTATE_CW);
    QPushButton* ccw = button(IDC_ROTATE_CCW);
    cw->setProperty("kwData", true);
    ccw->setProperty("kwData", true);
    cw->setText(QStringLiteral("<<"));
    ccw->setText(QStringLiteral(">>"));
    drawRow->addWidget(cw);
    drawRow->addWidget(ccw);
    right->addLayout(drawRow);

    auto* propGroup = new QGroupBox(this);
    KwSetControlId(propGroup, IDC_GROUP_PROPERTIES);
    auto* pg = new QGridLayout(propGroup);
    pg->addWidget(label(IDC_LABEL_PROP_ENDA), 0, 1, Qt::AlignHCenter);
    pg->addWidget(label(IDC_LABEL_PROP_ENDB), 0, 2, Qt::AlignHCenter);
    const int rowLabels[9] = {IDC_LABEL_AREA, IDC_LABEL_IZZ, IDC_LABEL_IYY, IDC_LABEL_IZY,
                              IDC_LABEL_J,    IDC_LABEL_KZ,  IDC_LABEL_KY,  IDC_LABEL_SC_Z,
                              IDC_LABEL_SC_Y};
    for (int r = 0; r < 9; ++r) {
        QLabel* l = label(rowLabels[r]);
        if (r >= 1 && r <= 4)
            l->setProperty("kwData", true);
        pg->addWidget(l, r + 1, 0);
        for (int end = 1; end >= 0; --end) {
            auto* e = new QLineEdit(propGroup);
            e->setReadOnly(true);
            e->setProperty("kwData", true);
            e->setMinimumWidth(90);
            KwSetControlId(e, (end ? IDC_PROP_ENDA_FIRST : IDC_PROP_ENDB_FIRST) + r);
            m_props[end][r] = e;
            pg->addWidget(e, r + 1, end ? 1 : 2);
        }
    }
    right->addWidget(propGroup);

    auto* okRow = new QHBoxLayout;
    okRow->addStretch(1);
    QPushButton* ok = button(IDC_OK);
    ok->setDefault(true);
    okRow->addWidget(ok);
    okRow->addWidget(button(IDC_CANCEL));
    right->addLayout(okRow);

    connect(m_shape, &QComboBox::activated, this, &Dlg::OnSelChangeComboShape);
    connect(m_tapered, &QCheckBox::clicked, this, &Dlg::OnCheckTaperedBeam);
    connect(m_refPoint, &QComboBox::activated, this, [this](int i) {
        m_pClone->m_refPoint = i == 0 ? PP::RefShearCenter : PP::RefCentroid;
        repaintSection();
    });
    connect(KwControl<QPushButton>(this, IDC_DRAW_ENDA), &QPushButton::clicked, this,
            &Dlg::OnBnClickedDrawEndA);
    connect(KwControl<QPushButton>(this, IDC_DRAW_ENDB), &QPushButton::clicked, this,
            &Dlg::OnBnClickedDrawEndB);
    connect(cw, &QPushButton::clicked, this, &Dlg::OnBnClickedDefineCSMoveClockWise);
    connect(ccw, &QPushButton::clicked, this, &Dlg::OnBnClickedDefineCSMoveAnticlockwise);
    connect(KwControl<QPushButton>(this, IDC_LOAD), &QPushButton::clicked, this,
            &Dlg::OnBnClickedLoad);
    connect(KwControl<QPushButton>(this, IDC_SAVE), &QPushButton::clicked, this,
            &Dlg::OnBnClickedSave);
    connect(ok, &QPushButton::clicked, this, &Dlg::OnDefineCSOK);
    connect(KwControl<QPushButton>(this, IDC_CANCEL), &QPushButton::clicked, this,
            &Dlg::OnCancel);
}

void CKwDefineCrossSectionDlg::SetTextToCurrentLang()
{
    setWindowTitle(KwPropText(kPP, "DefineCrossSectionDialog", "Cross Section Definition"));
    static const KwTextRow rows[] = {
        {IDC_GROUP_DIMENSIONS, kPP, "Dimensions", "Dimensions", false},
        {IDC_GROUP_PROPERTIES, kPP, "LabelProperties", "Properties", false},
        {IDC_CANCEL, "General", "ButtonCancel", "Cancel", false},
        {IDC_OK, "General", "ButtonOk", "OK", false},
        {IDC_CHECK_TAPERED, kPP, "TaperedBeam", "Tapered Beam", false},
        {IDC_LABEL_KZ, kPP, "LabelShearFactorInZ", "Shear factor in Z", false},
        {IDC_LABEL_KY, kPP, "LabelShearFactorInY", "Shear factor in Y", false},
        {IDC_LABEL_SHAPE, kPP, "LabelShape", "Shape", true},
        {IDC_LABEL_REFPOINT, kPP, "DropDownRefPoint", "Reference Point", true},
    };
    KwApplyTextTable(this, rows);
    // The shape and the reference point are one column of fields: their labels share the
    // width of the longer one, in whichever language.
    {
        auto* shape = KwControl<QLabel>(this, IDC_LABEL_SHAPE);
        auto* ref = KwControl<QLabel>(this, IDC_LABEL_REFPOINT);
        if (shape && ref) {
            shape->setMinimumWidth(0);
            ref->setMinimumWidth(0);
            const int w = std::max(shape->sizeHint().width(), ref->sizeHint().width());
            shape->setMinimumWidth(w);
            ref->setMinimumWidth(w);
        }
    }
    const QString end = KwPropText("General", "LabelEnd", "End");
    KwSetControlText(this, IDC_LABEL_ENDA, QStringLiteral("%1 A").arg(end));
    KwSetControlText(this, IDC_LABEL_ENDB, QStringLiteral("%1 B").arg(end));
    KwSetControlText(this, IDC_LABEL_PROP_ENDA, QStringLiteral("%1 A").arg(end));
    KwSetControlText(this, IDC_LABEL_PROP_ENDB, QStringLiteral("%1 B").arg(end));
    const QString draw = KwPropText(kPP, "DrawEnd", "Draw End");
    KwSetControlText(this, IDC_DRAW_ENDA, QStringLiteral("%1 A").arg(draw));
    KwSetControlText(this, IDC_DRAW_ENDB, QStringLiteral("%1 B").arg(draw));
    const QString len = units()->GetUnits(KwUnitKind::Length);
    const QString area = units()->GetUnits(KwUnitKind::Area);
    const QString inertia = units()->GetUnits(KwUnitKind::AreaMomentOfInertia);
    auto withUnit = [](const QString& t, const QString& u) {
        return QStringLiteral("%1 (%2):").arg(t, u);
    };
    KwSetControlText(this, IDC_LABEL_AREA, withUnit(KwPropText("General", "LabelArea", "Area"), area));
    KwSetControlText(this, IDC_LABEL_SC_Z,
                     withUnit(KwPropText(kPP, "LabelShearCenterOffsetInZ", "Shear center offset in Z"), len));
    KwSetControlText(this, IDC_LABEL_SC_Y,
                     withUnit(KwPropText(kPP, "LabelShearCenterOffsetInY", "Shear center offset in Y"), len));
    KwSetControlText(this, IDC_LABEL_IZZ, withUnit(QStringLiteral("Izz"), inertia));
    KwSetControlText(this, IDC_LABEL_IYY, withUnit(QStringLiteral("Iyy"), inertia));
    KwSetControlText(this, IDC_LABEL_IZY, withUnit(QStringLiteral("Izy"), inertia));
    KwSetControlText(this, IDC_LABEL_J, withUnit(QStringLiteral("J"), inertia));
    for (int i = 0; i < 6; ++i)
        m_dimLabels[i]->setText(withUnit(QStringLiteral("DIM%1").arg(i + 1), len));
    const QString load = KwPropText("General", "ButtonLoad", "Load");
    const QString save = KwPropText("General", "ButtonSave", "Save");
    KwSetControlText(this, IDC_LOAD, load + QStringLiteral("..."));
    KwSetControlText(this, IDC_SAVE, save + QStringLiteral("..."));
    const int ref = m_refPoint->currentIndex();
    m_refPoint->clear();
    m_refPoint->addItem(KwPropText(kPP, "DropDownShearCenter", "Shear Center"));
    m_refPoint->addItem(KwPropText(kPP, "DropDownCentroid", "Centroid"));
    m_refPoint->setCurrentIndex(ref >= 0 ? ref : (m_pClone->m_refPoint == PP::RefShearCenter ? 0 : 1));
}

bool CKwDefineCrossSectionDlg::OnInitDialog()
{
    KW_LOG_METHOD("CKwDefineCrossSectionDlg::OnInitDialog");
    SetTextToCurrentLang();
    PP* p = m_pClone;
    m_bFilling = true;
    m_shape->clear();
    if (p->m_elementKind == PP::KindPipe) {
        m_shape->addItem(PP::ShapeName(PP::TUBE));
        m_shape->setCurrentIndex(0);
    } else {
        for (int c = 0; c < PP::L; ++c)
            m_shape->addItem(PP::ShapeName(c));
        if (p->m_elementKind == PP::KindBeam)
            m_shape->addItem(PP::ShapeName(PP::L));
        m_shape->setCurrentIndex(p->m_sectionShape < m_shape->count() ? p->m_sectionShape : -1);
    }
    const bool beam = p->m_elementKind == PP::KindBeam;
    m_tapered->setEnabled(beam && p->m_sectionMode != 2);
    m_tapered->setChecked(p->m_tapered != 0);
    const bool refAvailable = (p->m_elementKind == PP::KindBar || beam) && p->m_sectionMode == 2;
    m_refPoint->setEnabled(refAvailable);
    KwFindControl(this, IDC_LABEL_REFPOINT)->setEnabled(refAvailable);
    m_bFilling = false;
    UpdateDimensionControls();
    UpdateCrossSectionBitmap();
    if (isBeamTapered())
        DrawCrossSection(0); // End B's values; End A's come with the first paint
    adjustSize();
    RestorePlacement();
    return true;
}

bool CKwDefineCrossSectionDlg::isBeamTapered() const
{
    return m_tapered->isChecked() && m_pClone->m_elementKind == PP::KindBeam;
}

void CKwDefineCrossSectionDlg::UpdateDimensionControls()
{
    for (int end = 0; end < 2; ++end) {
        const double* d = m_pClone->GetDimensions(end);
        for (int i = 0; i < 6; ++i)
            dimEdit(end, i)->setText(
                IsMissingValue(d[i])
                    ? QString()
                    : QString::asprintf("%.10g", units()->GetDisplayValue(d[i], KwUnitKind::Length)));
    }
}

void CKwDefineCrossSectionDlg::UpdateDimensions()
{
    for (int end = 0; end < 2; ++end) {
        double* d = m_pClone->GetDimensions(end);
        for (int i = 0; i < 6; ++i)
            d[i] = CFMView::GetDoubleFromString(units(), dimEdit(end, i)->text().trimmed(),
                                                KwUnitKind::Length, 1);
    }
}

void CKwDefineCrossSectionDlg::UpdateCrossSectionBitmap()
{
    const int code = PP::ShapeFromName(m_shape->currentText());
    m_pClone->m_sectionShape = code;
    m_nPictureId = PictureIdOf(code);
    m_picture->setPixmap(KwSectionPicture(m_nPictureId, devicePixelRatioF()));
    // End B follows the tapered flag as a whole; then the shape's count (and the element kind
    // and section mode) decide which of its edits take input.
    EnableTaperBeamOptions(m_tapered->isChecked() ? 1 : 0);
    EnableDimensions(PP::ShapeDimensionCount(code));
}

void CKwDefineCrossSectionDlg::EnableDimensions(int count)
{
    for (int i = 0; i < 6; ++i) {
        dimEdit(1, i)->setEnabled(false);
        dimEdit(0, i)->setEnabled(false);
        m_dimLabels[i]->setEnabled(false);
    }
    const bool endB = m_tapered->isChecked() && m_pClone->m_elementKind == PP::KindBeam &&
                      m_pClone->m_sectionMode != 2;
    for (int i = 0; i < std::min(count, 6); ++i) {
        dimEdit(1, i)->setEnabled(true);
        m_dimLabels[i]->setEnabled(true);
        dimEdit(0, i)->setEnabled(endB);
    }
}

void CKwDefineCrossSectionDlg::EnableTaperBeamOptions(int enable)
{
    KwFindControl(this, IDC_LABEL_ENDB)->setEnabled(enable != 0);
    KwFindControl(this, IDC_LABEL_PROP_ENDB)->setEnabled(enable != 0);
    for (int i = 0; i < 6; ++i)
        dimEdit(0, i)->setEnabled(enable != 0);
    KwFindControl(this, IDC_DRAW_ENDB)->setEnabled(enable != 0);
}

int CKwDefineCrossSectionDlg::ValidateError(int count)
{
    if (count < 1 || count > 6)
        return 1;
    auto check = [&](QLineEdit* e) {
        const QString t = e->text().trimmed();
        if (t.isEmpty() || CFMView::IsValidNumberString(t, KwUnitKind::Length))
            return true;
        const QString msg = units()->GetErrorMessageForUnit(t, KwUnitKind::Length);
        if (CFMView* v = GetFMView())
            v->ShowBubbleToolTipError(msg, 0);
        e->setFocus();
        return false;
    };
    for (int i = 0; i < count; ++i)
        if (!check(dimEdit(1, i)))
            return 0;
    if (isBeamTapered())
        for (int i = 0; i < count; ++i)
            if (!check(dimEdit(0, i)))
                return 0;
    return 1;
}

int CKwDefineCrossSectionDlg::ValidateDimensions(int endA)
{
    return ValidateShape(m_pClone->m_sectionShape, m_pClone->GetDimensions(endA ? 1 : 0));
}

QString CKwDefineCrossSectionDlg::FormatPropertyValue(double v)
{
    return (v >= 0.001 && v <= 10000) ? QString::asprintf("%0.3f", v)
                                       : QString::asprintf("%0.3E", v);
}

void CKwDefineCrossSectionDlg::UpdateSectionProperties(const double* props, int end)
{
    static constexpr int kinds[9] = {KwUnitKind::Area,
                                     KwUnitKind::AreaMomentOfInertia,
                                     KwUnitKind::AreaMomentOfInertia,
                                     KwUnitKind::AreaMomentOfInertia,
                                     KwUnitKind::AreaMomentOfInertia,
                                     KwUnitKind::Dimensionless,
                                     KwUnitKind::Dimensionless,
                                     KwUnitKind::Length,
                                     KwUnitKind::Length};
    for (int r = 0; r < 9; ++r)
        propEdit(end, r)->setText(
            FormatPropertyValue(units()->GetDisplayValue(props[kPropertyRows[r]], kinds[r])));
}

void CKwDefineCrossSectionDlg::ClearProperties(int end)
{
    for (int r = 0; r < 9; ++r)
        propEdit(end, r)->clear();
}

void CKwDefineCrossSectionDlg::DrawControlPoints(QPainter& painter, const QList<QPointF>& points)
{
    painter.setBrush(QColor(0, 0, 255));
    for (const QPointF& p : points)
        painter.drawRect(QRectF(p.x() - 2, p.y() - 2, 4, 4));
}

void CKwDefineCrossSectionDlg::DrawCrossSection(int end, QPainter* painter, const QRect& area)
{
    ClearProperties(end);
    const bool valid = ValidateDimensions(end) == 0;
    const PP* p = m_pClone;
    const double* d = p->GetDimensions(end);
    double props[KwSectionValue::Count] = {};
    Kw::Point loops[PP::kMaxLoops][PP::kMaxLoopPoints];
    int counts[PP::kMaxLoops] = {};
    int loopCount = 0;
    bool computed = false;
    if (valid) {
        if (p->m_sectionShape == PP::ROD)
            computed = p->GetRodSectionProperties(d[0], props);
        else if (p->m_sectionShape == PP::TUBE)
            computed = p->GetTubeSectionProperties(d[0], d[1], props);
        else {
            p->GetSectionLoopPoints(loops, loopCount, counts, end);
            computed = loopCount > 0 && p->GetCrossSectionProperties(loops, counts, loopCount, props);
        }
    }
    if (painter) {
        painter->fillRect(area, Qt::white);
        painter->setRenderHint(QPainter::Antialiasing);
        if (!computed) {
            painter->setPen(Qt::black);
            painter->setFont(QFont(QStringLiteral("Arial Unicode MS"), 10));
            painter->drawText(area, Qt::AlignCenter,
                              KwPropText(kPP, "InvalidShape", "Invalid Shape!"));
        } else {
            const QColor blue(0, 0, 255);
            painter->setPen(QPen(blue, 1.5));
            painter->setBrush(Qt::NoBrush);
            const QPointF c = QRectF(area).center();
            Kw::Point ref;
            QList<QPointF> marks;
            auto toScreen = [&](double s, double x, double y, double cx, double cy) {
                return QPointF(c.x() + s * (x - cx), c.y() - s * (y - cy));
            };
            if (p->m_sectionShape == PP::ROD || p->m_sectionShape == PP::TUBE) {
                const double size = std::min(area.width(), area.height());
                const double s = (size - size / 10.0) / (2 * d[0]);
                painter->drawEllipse(c, s * d[0], s * d[0]);
                if (p->m_sectionShape == PP::TUBE)
                    painter->drawEllipse(c, s * d[1], s * d[1]);
                if (p->m_sectionShape == PP::ROD)
                    PP::GetRodRefPoint(d[0], ref);
                else
                    PP::GetTubeRefPoint(d[0], d[1], ref);
                for (int k = 0; k < 4; ++k)
                    marks << toScreen(s, props[14 + 2 * k], props[15 + 2 * k], 0, 0);
                painter->setBrush(Qt::NoBrush);
                painter->drawEllipse(toScreen(s, ref.x, ref.y, 0, 0), 4, 4);
            } else {
                double x0 = 1e300, x1 = -1e300, y0 = 1e300, y1 = -1e300;
                for (int l = 0; l < loopCount; ++l)
                    for (int k = 0; k < counts[l]; ++k) {
                        x0 = std::min(x0, loops[l][k].x);
                        x1 = std::max(x1, loops[l][k].x);
                        y0 = std::min(y0, loops[l][k].y);
                        y1 = std::max(y1, loops[l][k].y);
                    }
                const double sx = area.width() / std::max(x1 - x0, 1e-300);
                const double sy = area.height() / std::max(y1 - y0, 1e-300);
                const double s = 0.95 * std::min(sx, sy);
                const double cx = (x0 + x1) / 2, cy = (y0 + y1) / 2;
                for (int l = 0; l < loopCount; ++l) {
                    QPolygonF poly;
                    for (int k = 0; k < counts[l]; ++k)
                        poly << toScreen(s, loops[l][k].x, loops[l][k].y, cx, cy);
                    painter->drawPolygon(poly);
                }
                p->GetRefPoint(loops, counts, loopCount, props, ref);
                painter->drawEllipse(toScreen(s, ref.x, ref.y, cx, cy), 4, 4);
                for (int k = 0; k < 4; ++k)
                    marks << toScreen(s, props[14 + 2 * k], props[15 + 2 * k], cx, cy);
            }
            DrawControlPoints(*painter, marks);
        }
    }
    if (computed)
        UpdateSectionProperties(props, end);
}

void CKwDefineCrossSectionDlg::repaintSection()
{
    m_bRedraw = true;
    DrawCrossSection(m_nShownEnd);
    // A tapered definition shows the values of both ends; otherwise End B has none.
    if (isBeamTapered())
        DrawCrossSection(m_nShownEnd ? 0 : 1);
    else
        ClearProperties(0);
    m_canvas->update();
}

void CKwDefineCrossSectionDlg::OnDefineCSOK()
{
    KW_LOG_METHOD("CKwDefineCrossSectionDlg::OnDefineCSOK");
    if (!ValidateError(PP::ShapeDimensionCount(m_pClone->m_sectionShape)))
        return;
    UpdateDimensions();
    int r = ValidateDimensions(1);
    if (r == 0 && isBeamTapered())
        r = ValidateDimensions(0);
    if (r != 0) {
        repaintSection();
        KwMessageBoxW(this,
                      KwErrText(kPP, "AdjustDimensions",
                                "Invalid Shape! Adjust the dimensions so a valid cross section "
                                "can be created."),
                      windowTitle(), KwMB::OK | KwMB::ICONERROR);
        return;
    }
    m_pClone->m_tapered = m_tapered->isChecked() ? 1 : 0;
    if (m_pProperty)
        m_pProperty->CloneInput(m_pClone);
    delete m_pClone;
    m_pClone = new CKwPhysicalProperty(); // stays valid for a late repaint
    CKwMFCDialog::OnOK();
}

void CKwDefineCrossSectionDlg::OnCancel()
{
    CKwMFCDialog::OnCancel();
}

void CKwDefineCrossSectionDlg::OnSelChangeComboShape()
{
    UpdateCrossSectionBitmap();
    repaintSection();
}

void CKwDefineCrossSectionDlg::OnCheckTaperedBeam()
{
    UpdateCrossSectionBitmap();
    m_pClone->m_tapered = m_tapered->isChecked() ? 1 : 0;
    m_nShownEnd = 1;
    repaintSection();
}

void CKwDefineCrossSectionDlg::OnBnClickedDrawEndA()
{
    m_nShownEnd = 1;
    UpdateDimensions();
    repaintSection();
}

void CKwDefineCrossSectionDlg::OnBnClickedDrawEndB()
{
    m_nShownEnd = 0;
    UpdateDimensions();
    repaintSection();
}

void CKwDefineCrossSectionDlg::OnBnClickedDefineCSMoveClockWise()
{
    if (ValidateDimensions(m_nShownEnd) != 0)
        return;
    --m_pClone->m_rotationSteps;
    repaintSection();
}

void CKwDefineCrossSectionDlg::OnBnClickedDefineCSMoveAnticlockwise()
{
    if (ValidateDimensions(m_nShownEnd) != 0)
        return;
    ++m_pClone->m_rotationSteps;
    repaintSection();
}

void CKwDefineCrossSectionDlg::OnHelpInfo()
{
    if (TheApplication)
        TheApplication->ShowHelp(QStringLiteral("elementdata.htm"));
}

void CKwDefineCrossSectionDlg::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_F1) {
        OnHelpInfo();
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        OnDefineCSOK();
        return;
    }
    CKwMFCDialog::keyPressEvent(event);
}
