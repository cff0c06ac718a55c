#include "KwSectionLibrary.h"

#include "CKwDefineCrossSectionDlg.h"
#include "CKwPhysicalProperty.h"
#include "CKwSelectBeamSectionDialog.h"
#include "CSectionProp.h"
#include "KW_UOM.h"
#include "KwHostWindow.h"
#include "KwNumbers.h"

#include <QApplication>
#include <QDir>
#include <QTreeWidget>
#include <memory>

const std::vector<KwStandardSection>& KwStandardSections()
{
    // Parallel-flange I beams: h, b, b, tw, tf, tf.
    // Channels: b, h, tw, tf. Tees: b, h, tf, tw. Angles: legs and thickness.
    // Hollow sections: b, h, t, t; tubes: outer radius, inner radius. Bars and rods.
    static const std::vector<KwStandardSection> s = {
        {"IPE 100", "I", {100, 55, 55, 4.1, 5.7, 5.7}},
        {"IPE 200", "I", {200, 100, 100, 5.6, 8.5, 8.5}},
        {"IPE 300", "I", {300, 150, 150, 7.1, 10.7, 10.7}},
        {"HEA 200", "I", {190, 200, 200, 6.5, 10, 10}},
        {"HEB 200", "I", {200, 200, 200, 9, 15, 15}},
        {"UPN 100", "CHAN", {50, 100, 6, 8.5}},
        {"UPN 200", "CHAN", {75, 200, 8.5, 11.5}},
        {"UPE 160", "CHAN", {70, 160, 5.5, 9.5}},
        {"T 50", "T", {50, 50, 6, 6}},
        {"T 80", "T", {80, 80, 9, 9}},
        {"L 50x50x5", "L", {50, 50, 5, 5}},
        {"L 100x100x10", "L", {100, 100, 10, 10}},
        {"L 100x50x8", "L", {100, 50, 8, 8}},
        {"SHS 80x80x4", "BOX", {80, 80, 4, 4}},
        {"RHS 100x50x5", "BOX", {50, 100, 5, 5}},
        {"RHS 200x100x8", "BOX", {100, 200, 8, 8}},
        {"CHS 60.3x4", "TUBE", {30.15, 26.15}},
        {"CHS 114.3x6.3", "TUBE", {57.15, 50.85}},
        {"Round bar 20", "ROD", {10}},
        {"Flat bar 50x10", "BAR", {50, 10}},
    };
    return s;
}

bool KwApplyStandardSection(CKwPhysicalProperty* p, const QString& shape, int position)
{
    if (!p || position < 0 ||
        !CKwPhysicalProperty::ShapeFitsElementKind(CKwPhysicalProperty::ShapeFromName(shape),
                                                   p->m_elementKind))
        return false;
    int seen = 0;
    for (const KwStandardSection& s : KwStandardSections()) {
        if (shape != QLatin1String(s.shape))
            continue;
        if (seen++ != position)
            continue;
        const int code = CKwPhysicalProperty::ShapeFromName(shape);
        const int n = CKwPhysicalProperty::ShapeDimensionCount(code);
        p->m_sectionShape = code;
        for (int i = 0; i < 6; ++i)
            p->m_dimA[i] = i < n ? s.dimsMm[i] / 1000.0 : MissingDouble;
        p->m_tapered = 0;
        p->m_sectionName = QString::fromLatin1(s.name);
        double v[KwSectionValue::Count];
        if (p->ComputeSectionProperties(1, v))
            p->m_sectionArea = v[KwSectionValue::Area];
        return true;
    }
    return false;
}

int KwOpenSectionDefinition(KwHostWindow* host, CKwPhysicalProperty* p)
{
    CKwDefineCrossSectionDlg dlg(p, host->Units(), host->View(), host);
    const int r = dlg.DoModal();
    double v[KwSectionValue::Count];
    if (r == 1 && p->ComputeSectionProperties(1, v))
        p->m_sectionArea = v[KwSectionValue::Area];
    return r;
}

namespace {

// The section report of a property: its values, its outline, and the pipe form for tubes
// (outer diameter and wall thickness).
CSectionProp* newSectionReport(KwHostWindow* host, CKwPhysicalProperty* p)
{
    double v[KwSectionValue::Count] = {};
    p->ComputeSectionProperties(1, v);
    Kw::Point loops[CKwPhysicalProperty::kMaxLoops][CKwPhysicalProperty::kMaxLoopPoints];
    int counts[CKwPhysicalProperty::kMaxLoops] = {};
    int n = 0;
    p->GetSectionLoopPoints(loops, n, counts, 1);
    QList<QList<SymMatrixUtils::Point2D>> outline;
    for (int l = 0; l < n; ++l) {
        QList<SymMatrixUtils::Point2D> poly;
        for (int k = 0; k < counts[l]; ++k)
            poly.append({loops[l][k].x, loops[l][k].y});
        outline.append(poly);
    }
    const bool pipe = p->m_sectionShape == CKwPhysicalProperty::TUBE;
    if (pipe) {
        v[0] = 2 * p->m_dimA[0];
        v[1] = p->m_dimA[0] - p->m_dimA[1];
    }
    return new CSectionProp(host, outline, v, 0.0, 0.0, 0.0, host->Units(), 0,
                            pipe ? CSectionProp::kPipeForm : 0);
}

} // namespace

// The names and shapes of the standard sections an element kind takes, as the selection
// dialog lists them (whole shapes are left out, so positions within a shape stay).
void KwStandardSectionLists(int elementKind, QStringList& names, QStringList& shapes)
{
    for (const KwStandardSection& s : KwStandardSections()) {
        if (!CKwPhysicalProperty::ShapeFitsElementKind(
                CKwPhysicalProperty::ShapeFromName(QString::fromLatin1(s.shape)), elementKind))
            continue;
        names << QString::fromLatin1(s.name);
        shapes << QString::fromLatin1(s.shape);
    }
}

int KwOpenSectionReport(KwHostWindow* host, CKwPhysicalProperty* p)
{
    const std::unique_ptr<CSectionProp> dlg(newSectionReport(host, p));
    return dlg->DoModal();
}

int KwOpenSectionSelection(KwHostWindow* host, CKwPhysicalProperty* p)
{
    QStringList names, shapes;
    KwStandardSectionLists(p->m_elementKind, names, shapes);
    CKwSelectBeamSectionDialog dlg(names, shapes, host);
    const int r = dlg.DoModal();
    if (r == 1)
        KwApplyStandardSection(p, dlg.GetSelectedShape(), dlg.GetSelectedPosition());
    return r;
}

namespace {

// Shows a dialog without running it, photographs it and closes it.
void shoot(CKwMFCDialog* dlg, const QString& file, QStringList& written, QStringList& titles)
{
    dlg->Create();
    dlg->show();
    QApplication::processEvents();
    dlg->grab().save(file);
    written << file;
    titles << dlg->windowTitle();
    dlg->hide();
    delete dlg;
}

} // namespace

void KwSectionGallery(KwHostWindow* host, const QString& directory, QStringList& written,
                      QStringList& titles)
{
    const QDir dir(directory);
    struct Case
    {
        const char* file;
        int shape;
        std::array<double, 6> mm;
        int tapered;
        std::array<double, 6> mmB;
        int kind;
    };
    using P = CKwPhysicalProperty;
    const Case cases[] = {
        {"section-define-I.png", P::I, {200, 100, 100, 8, 12, 12}, 0, {}, P::KindBeam},
        {"section-define-HAT1.png", P::HAT1, {200, 60, 80, 4, 5, 0}, 0, {}, P::KindBeam},
        {"section-define-TUBE.png", P::TUBE, {30, 25, 0, 0, 0, 0}, 0, {}, P::KindPipe},
        {"section-define-L-rotated.png", P::L, {100, 60, 8, 10, 0, 0}, 0, {}, P::KindBeam},
        {"section-define-tapered-BOX1.png", P::BOX1, {100, 200, 10, 12, 8, 9}, 1,
         {80, 150, 8, 10, 6, 7}, P::KindBeam},
        {"section-define-invalid.png", P::I, {200, 100, 100, 8, 120, 100}, 0, {}, P::KindBeam},
    };
    for (const Case& c : cases) {
        P p(9, QStringLiteral("Gallery beam"));
        p.m_idealization = P::Beam;
        p.m_elementKind = c.kind;
        p.m_sectionShape = c.shape;
        p.m_tapered = c.tapered;
        for (int i = 0; i < P::ShapeDimensionCount(c.shape); ++i) {
            p.m_dimA[i] = c.mm[i] / 1000;
            if (c.tapered)
                p.m_dimB[i] = c.mmB[i] / 1000;
        }
        if (c.shape == P::L)
            p.m_rotationSteps = 1;
        shoot(new CKwDefineCrossSectionDlg(&p, host->Units(), host->View(), host),
              dir.filePath(QString::fromLatin1(c.file)), written, titles);
    }
    // The report in both forms.
    P beam(10, QStringLiteral("Channel"));
    KwApplyStandardSection(&beam, QStringLiteral("CHAN"), 1);
    P tube(11, QStringLiteral("Pipe"));
    KwApplyStandardSection(&tube, QStringLiteral("TUBE"), 1);
    for (P* p : {&beam, &tube})
        shoot(newSectionReport(host, p),
              dir.filePath(p == &tube ? QStringLiteral("section-report-pipe.png")
                                      : QStringLiteral("section-report-general.png")),
              written, titles);
    QStringList names, shapes;
    KwStandardSectionLists(P::KindBeam, names, shapes);
    auto* sel = new CKwSelectBeamSectionDialog(names, shapes, host);
    sel->Create();
    if (QTreeWidget* t = sel->GetTree())
        if (QTreeWidgetItem* g = t->topLevelItem(0))
            if (g->childCount() > 1)
                t->setCurrentItem(g->child(1));
    shoot(sel, dir.filePath(QStringLiteral("section-select.png")), written, titles);
}
