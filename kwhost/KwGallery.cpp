#include "KwGallery.h"
#include "KwPeripheryGallery.h"
#include "KwSectionLibrary.h"
#include "KwDeckPreview.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwDlgBase.h"
#include "CKwFEModel.h"
#include "CKwMFCDialog.h"
#include "CKwMaterial.h"
#include "CKwOrthotropic3DDlg.h"
#include "CKwMeshQualityResultsDialog.h"
#include "KwHostKinds.h"
#include "CKwFEModel.h"
#include "CKwMaterialNonlinearDialog.h"
#include "CKwTable.h"
#include "KwHostWindow.h"
#include "KwControls.h"
#include "KwMFCUIEntry.h"
#include "CKwDefineRangeDlg.h"
#include "KwQualitySamples.h"
#include "CKwMeshModel.h"
#include "CKwUIEntity.h"
#include "KwViewCamera.h"
#include "CKwMFCUIHighlightNodeElem.h"
#include "CKwAnalysis.h"
#include "CKwMFCUIPlot.h"
#include "CKwMeshModel.h"
#include "CKwSubCase.h"
#include "CKwUIEntity.h"
#include "KwSolverResults.h"
#include "CKwRestraint.h"
#include "KwResultMapping.h"
#include "KwSolverJob.h"
#include "CKwMFCUIGroupSelection.h"

#include <QAbstractButton>
#include <QApplication>
#include <algorithm>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QAbstractItemView>
#include <QMessageBox>
#include <QPixmap>
#include <QPointer>
#include <QPushButton>
#include <QSet>
#include <QTimer>
#include <memory>

namespace {

QString fileFor(const QString& dir, unsigned kind, const QString& title, int index)
{
    return QDir(dir).filePath(KwGalleryFileName(kind, title, index));
}

// Photographs a window into `file`; the inspector looks at it as photographed (the grab has
// done every layout still pending).
void photograph(QWidget* w, const QString& file, unsigned kind, const KwGalleryInspector& inspect)
{
    const QPixmap picture = w->grab();
    if (inspect)
        inspect(kind, w, QFileInfo(file).fileName());
    picture.save(file);
}

// Inspects the windows another part of the gallery photographs itself: each top-level dialog,
// once per showing, when it is first painted (the grab paints it).
class PaintInspector : public QObject
{
public:
    explicit PaintInspector(const KwGalleryInspector& inspect) : m_inspect(inspect)
    {
        if (m_inspect)
            qApp->installEventFilter(this);
    }
    ~PaintInspector() override { qApp->removeEventFilter(this); }

protected:
    bool eventFilter(QObject* o, QEvent* e) override
    {
        auto* w = qobject_cast<QWidget*>(o);
        if (!w || !w->isWindow() || !dynamic_cast<CKwDlgBase*>(w))
            return false;
        if (e->type() == QEvent::Hide)
            m_seen.remove(w);
        if (e->type() != QEvent::Paint || m_seen.contains(w))
            return false;
        m_seen.insert(w);
        const QString cls = QString::fromLatin1(w->metaObject()->className());
        const int n = ++m_counts[cls];
        m_inspect(0, w, QStringLiteral("%1-%2").arg(cls).arg(n));
        return false;
    }

private:
    const KwGalleryInspector& m_inspect;
    QSet<QWidget*> m_seen;
    QHash<QString, int> m_counts;
};

bool isNotAvailableBox(QWidget* w)
{
    return qobject_cast<QMessageBox*>(w) != nullptr;
}

void closeDialog(QWidget* w)
{
    if (auto* d = qobject_cast<QDialog*>(w))
        d->reject();
    else
        w->close();
}

// The result pictures show a real solution: the linear static analysis is run as the Analysis
// menu runs it (the solver as a separate program), and the load balance it ends with is
// photographed. Without the solver the result dialogs show what they show for an unsolved
// analysis, and the result pictures of the view are left out.
void solveForPictures(KwHostWindow* host, const QString& directory, KwGalleryResult& result,
                      const KwGalleryInspector& inspect)
{
    CKwFEModel* model = host->Model();
    CKwAnalysis* linear = nullptr;
    for (CKwAnalysis* a : model ? model->m_analyses : QList<CKwAnalysis*>())
        if (!linear && a->GetAnalysisTypeCode() == CKwAnalysis::LinearStatic)
            linear = a;
    if (!linear || linear->GetSolverResults() || KwSolverJob::SolverProgram().isEmpty())
        return;
    host->SetCurrentAnalysis(linear);
    if (!host->RunCurrentAnalysis())
        return;
    host->SolverJob()->Wait(300000);
    QApplication::processEvents();
    for (QMessageBox* box : host->findChildren<QMessageBox*>()) {
        if (box->objectName() == QLatin1String("LoadBalance") && box->isVisible()) {
            const QString f = QDir(directory).filePath(QStringLiteral("host-load-balance.png"));
            photograph(box, f, 0, inspect);
            result.written << f;
        }
        box->close();
    }
    QApplication::processEvents();
}

} // namespace

QString KwGalleryFileName(unsigned kind, const QString& title, int index)
{
    QString slug;
    for (const QChar c : title.toLower()) {
        if (c.isLetterOrNumber())
            slug += c;
        else if (!slug.isEmpty() && !slug.endsWith(QLatin1Char('-')))
            slug += QLatin1Char('-');
    }
    while (slug.endsWith(QLatin1Char('-')))
        slug.chop(1);
    QString name = QStringLiteral("kind%1").arg(kind, 2, 10, QLatin1Char('0'));
    if (!slug.isEmpty())
        name += QLatin1Char('-') + slug;
    if (index > 0)
        name += QStringLiteral("-%1").arg(index + 1);
    return name + QStringLiteral(".png");
}

KwGalleryResult KwRenderGallery(KwHostWindow* host, const QString& directory,
                                const KwGalleryInspector& inspect)
{
    KwGalleryResult result;
    QDir().mkpath(directory);
    host->show();
    QApplication::processEvents();
    photograph(host, QDir(directory).filePath(QStringLiteral("host-window.png")), 0, inspect);
    result.written << QDir(directory).filePath(QStringLiteral("host-window.png"));
    solveForPictures(host, directory, result, inspect);

    for (const KwHostKind& k : KwHostKinds()) {
        QSet<QWidget*> before;
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->isVisible())
                before.insert(w);
        bool sawWindow = false;
        int shot = 0;
        // Modal dialogs block inside LaunchDialog: photograph and close them from a timer.
        QTimer modalWatch;
        modalWatch.setInterval(20);
        QObject::connect(&modalWatch, &QTimer::timeout, [&] {
            QWidget* modal = QApplication::activeModalWidget();
            if (!modal)
                return;
            if (!isNotAvailableBox(modal) || k.kind == 83) {
                QApplication::processEvents();
                const QString f = fileFor(directory, k.kind, k.title, shot++);
                photograph(modal, f, k.kind, inspect);
                result.written << f;
                result.titles << modal->windowTitle();
                sawWindow = true;
            }
            closeDialog(modal);
        });
        modalWatch.start();
        host->Launch(k.kind, false, k.variant);
        modalWatch.stop();
        QApplication::processEvents();
        for (QWidget* w : QApplication::topLevelWidgets()) {
            if (!w->isVisible() || before.contains(w) || w == host)
                continue;
            if (w->objectName() == QLatin1String("ResultToolbar"))
                continue;
            const QString f = fileFor(directory, k.kind, k.title, shot++);
            photograph(w, f, k.kind, inspect);
            result.written << f;
            result.titles << w->windowTitle();
            sawWindow = true;
        }
        // Modeless windows close the way a user closes them; singletons stay for later kinds.
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->isVisible() && !before.contains(w) && w != host &&
                dynamic_cast<CKwDlgBase*>(w) && w->property("kwSingleton").toBool() == false)
                closeDialog(w);
        QApplication::processEvents();
        if (!sawWindow)
            result.unavailable << QStringLiteral("%1 (%2)").arg(k.kind).arg(k.title);
    }

    // A window photographed on its own, under a fixed file name.
    const auto shoot = [&](QWidget* w, const char* file) {
        QApplication::processEvents();
        const QString f = QDir(directory).filePath(QString::fromLatin1(file));
        photograph(w, f, 0, inspect);
        result.written << f;
        result.titles << w->windowTitle();
    };

    // The load editor in its short form: " <<" pressed, the advanced part gone.
    {
        host->Launch(0, false, 0);
        QApplication::processEvents();
        if (auto* d = dynamic_cast<CKwMFCDialog*>(host->View()->GetOpenDialog())) {
            if (auto* toggle = KwControl<QPushButton>(d, 7479)) {
                toggle->click();
                shoot(d, "kind00-load-short-form.png");
            }
            closeDialog(d);
            QApplication::processEvents();
        }
    }

    // The connector's other kinds and its long form, the coordinate system's other placements:
    // each panel that differs, chosen in the open editor as a user chooses it, then closed
    // without writing anything.
    const auto panels = [&](unsigned kind, int comboId,
                            std::initializer_list<std::pair<int, const char*>> rows,
                            const char* longForm) {
        host->Launch(kind, false, 0);
        QApplication::processEvents();
        auto* d = dynamic_cast<CKwMFCDialog*>(host->View()->GetOpenDialog());
        if (!d)
            return;
        // The long form first, while the entity still shows as it is stored.
        if (auto* toggle = longForm ? KwControl<QPushButton>(d, 7879) : nullptr) {
            toggle->click();
            shoot(d, longForm);
            toggle->click();
        }
        if (auto* combo = KwControl<QComboBox>(d, comboId))
            for (const auto& [row, file] : rows) {
                combo->setCurrentIndex(row);
                shoot(d, file);
            }
        closeDialog(d);
        QApplication::processEvents();
    };
    panels(14, 1417,
           {{0, "kind14-connector-rod.png"}, {2, "kind14-connector-spring.png"},
            {4, "kind14-connector-rigid.png"}},
           "kind14-connector-long-form.png");
    // The mesh table on the elements (its own picture shows the nodes).
    panels(49, 10201, {{1, "kind49-mesh-table-elements.png"}}, nullptr);
    panels(28, 7904,
           {{1, "kind28-coordinate-system-three-points.png"},
            {2, "kind28-coordinate-system-picked-point.png"}},
           nullptr);
    // The material orientation from a vector, and the contact parameters page of the surface
    // contact editor.
    {
        host->Launch(6, false, 0);
        QApplication::processEvents();
        if (auto* d = dynamic_cast<CKwMFCDialog*>(host->View()->GetOpenDialog())) {
            if (auto* vector = KwControl<QAbstractButton>(d, 7725)) {
                vector->click();
                shoot(d, "kind06-material-orientation-vector.png");
            }
            closeDialog(d);
            QApplication::processEvents();
        }
        host->Launch(12, false, 0);
        QApplication::processEvents();
        if (auto* d = dynamic_cast<CKwMFCDialog*>(host->View()->GetOpenDialog())) {
            if (auto* open = KwControl<QPushButton>(d, 7769)) {
                QTimer::singleShot(0, d, [&] {
                    if (QWidget* page = QApplication::activeModalWidget()) {
                        shoot(page, "tmpl7239-contact-parameters.png");
                        closeDialog(page);
                    }
                });
                open->click();
            }
            closeDialog(d);
            QApplication::processEvents();
        }
    }
    // The solution frequencies on each method's page (the sample set opens on the range).
    {
        host->Launch(31, false, 0);
        QApplication::processEvents();
        if (auto* d = dynamic_cast<CKwMFCDialog*>(host->View()->GetOpenDialog())) {
            if (auto* method = KwControl<QComboBox>(d, 7021)) {
                const char* files[] = {"kind31-solution-frequencies-discrete.png", nullptr,
                                       "kind31-solution-frequencies-cluster.png",
                                       "kind31-solution-frequencies-spread.png"};
                for (int page = 0; page < 4; ++page) {
                    if (!files[page])
                        continue; // the range: the kind's own picture
                    method->setCurrentIndex(page);
                    shoot(d, files[page]);
                }
            }
            closeDialog(d);
            QApplication::processEvents();
        }
    }

    // The plot editor on each of its pages (the contour page is the kind's own picture), then
    // the view showing the plot as the editor left it.
    {
        host->Launch(7, false, 0);
        QApplication::processEvents();
        if (auto* d = dynamic_cast<CKwMFCUIPlot*>(host->View()->GetOpenDialog())) {
            const char* files[] = {nullptr,
                                   "kind07-plot-deformed.png",
                                   "kind07-plot-part-view.png",
                                   "kind07-plot-section.png",
                                   "kind07-plot-vectors.png",
                                   "kind07-plot-animation.png",
                                   "kind07-plot-visibility.png"};
            for (int page = 1; page < CKwMFCUIPlot::kPageCount; ++page) {
                d->ShowPage(page);
                shoot(d, files[page]);
            }
            d->ShowPage(CKwMFCUIPlot::PageContour);
            QApplication::processEvents();
            const QString v = QDir(directory).filePath(QStringLiteral("kind07-plot-view.png"));
            host->grab().save(v);
            result.written << v;
            closeDialog(d);
            QApplication::processEvents();
        }
    }

    // The reaction sum with the faces of the model's first constraint picked, about their
    // centroid.
    {
        host->Launch(4, false, 0);
        QApplication::processEvents();
        QList<CKwUIEntity*> held;
        if (!host->Model()->m_restraints.isEmpty())
            held = host->Model()->m_restraints.first()->m_entities;
        if (auto* d = dynamic_cast<CKwMFCDialog*>(host->View()->GetOpenDialog())) {
            if (!held.isEmpty()) {
                host->View()->SendPickEvent(held, false);
                if (auto* centroid = KwControl<QAbstractButton>(d, 12038))
                    centroid->click();
                shoot(d, "kind04-reaction-sum-picked.png");
            }
            closeDialog(d);
            QApplication::processEvents();
        }
    }

    // The model view: the sample shaded with its mesh edges, a picked set, and, when the
    // linear static analysis was solved above, its von Mises stress as a contour with its
    // legend and its deformed shape, as the plot editor hands them to the view.
    if (CFMView* view = host->View(); view && host->Model() && host->Model()->m_mesh) {
        auto save = [&](const char* file) {
            QApplication::processEvents();
            const QString v = QDir(directory).filePath(QString::fromLatin1(file));
            view->RenderFrame().save(v);
            result.written << v;
        };
        view->SetStandardView(KwViewCamera::Isometric);
        save("view-shaded.png");
        CKwFEModel* model = host->Model();
        const CKwMeshModel& mesh = *model->m_mesh;
        // A face and an edge of the geometry picked, and two elements of a highlighted set.
        QList<CKwUIEntity*> picked;
        for (int kind : {int(CKwUIEntity::Face), int(CKwUIEntity::Edge)})
            for (const auto& g : mesh.GeometryMeshes())
                if (g.kind == kind && !g.facets.empty()) {
                    if (CKwUIEntity* e = model->FindGeometry(kind, g.id)) {
                        picked << e;
                        break;
                    }
                }
        view->SetHighlightedEntities(picked);
        std::vector<int> set;
        for (std::size_t e = 0; e < mesh.ElementCount() && set.size() < 40; e += 7)
            set.push_back(mesh.ElementID(e));
        view->SetHighlightedMesh(CFMView::HighlightElements, set);
        save("view-highlight.png");
        view->SetHighlightedEntities({});
        view->ClearMeshHighlight();
        const CKwAnalysis* solved = nullptr;
        for (const CKwAnalysis* a : model->m_analyses)
            if (!solved && a->GetSolverResults() && !a->GetSolverResults()->sets.empty())
                solved = a;
        if (solved) {
            const KwResultSet& first = solved->GetSolverResults()->sets.front();
            KwPlotSettings settings;
            settings.result = KwPlotResult::VonMises;
            settings.deformedOn = false;
            view->SetResultDisplay(KwResultMapping::BuildDisplay(
                settings, &first, mesh, view->GetUnitHolder(), KwPlotMaterial{},
                QStringLiteral("Von Mises Stress")));
            save("view-contour.png");
            settings.result = KwPlotResult::Displacement;
            settings.deformedOn = true;
            settings.contourStyle = 1;
            view->SetResultDisplay(KwResultMapping::BuildDisplay(
                settings, &first, mesh, view->GetUnitHolder(), KwPlotMaterial{},
                QStringLiteral("Displacement")));
            save("view-deformed.png");
        }
        view->ClearResultDisplay(nullptr);
        QApplication::processEvents();
    }

    // The failed-elements window of a quality check on the sample mesh, opened as the Mesh
    // menu opens it.
    if (QWidget* w = host->OpenMeshQualityResults()) {
        shoot(w, "meshquality-failed-elements.png");
        // The model view with the failures highlighted, as "Highlight" shows them.
        if (auto* d = dynamic_cast<CKwMeshQualityResultsDialog*>(w)) {
            d->OnBnClickedMeshQualityHighlightButton();
            QApplication::processEvents();
            const QString v = QDir(directory).filePath(QStringLiteral("meshquality-highlight.png"));
            host->grab().save(v);
            result.written << v;
            host->View()->ClearMeshHighlight();
        }
        w->close();
        QApplication::processEvents();
    }

    // The failed-elements window on hexahedra, wedges and pyramids (some parabolic) and a beam:
    // the sample part has tetrahedra only.
    {
        CKwMeshModel solids;
        KwBuildSolidQualitySamples(solids);
        auto w = std::make_unique<CKwMeshQualityResultsDialog>(&solids, nullptr, host->Units(),
                                                               host);
        w->setAttribute(Qt::WA_DeleteOnClose, false);
        w->show();
        shoot(w.get(), "meshquality-failed-solids.png");
        w->close();
        QApplication::processEvents();
    }

    // The highlight editor with a typed list: "Define Range" as the editor opens it, then the
    // list highlighted in the view.
    {
        host->Launch(24, false, 0);
        QApplication::processEvents();
        if (auto* d = dynamic_cast<CKwMFCUIHighlightNodeElem*>(host->View()->GetOpenDialog())) {
            QTimer::singleShot(0, d, [&] {
                if (auto* range = dynamic_cast<CKwDefineRangeDlg*>(
                        QApplication::activeModalWidget())) {
                    range->SetFields(QStringLiteral("25"), QStringLiteral("40"),
                                     QStringLiteral("5"));
                    shoot(range, "tmpl1100-define-range.png");
                    range->OnOK();
                }
            });
            if (auto* list = KwControl<QLineEdit>(d, CKwMFCUIHighlightNodeElem::IdList))
                list->setText(QStringLiteral("1-20"));
            d->OnAddRange();
            d->OnHighlight();
            shoot(d, "kind24-highlight-elements-list.png");
            const QString v = QDir(directory).filePath(QStringLiteral("kind24-highlight-view.png"));
            host->grab().save(v);
            result.written << v;
            host->View()->ClearMeshHighlight();
            closeDialog(d);
            QApplication::processEvents();
        }
    }

    // The solver status windows open through the remote calls a running solver makes: one
    // line of a run each, photographed, then the run ends as a host ends it.
    struct StatusShot
    {
        unsigned id;
        unsigned lineFunction;
        const wchar_t* line;
        const char* file;
    };
    const StatusShot shots[] = {
        {41, 5, L"1,7,3,35,28,60,2.41E-05,S", "status41-nonlinear-status.png"},
        {42, 7, L"2,14,2,70,55,100,8.60E-06,F", "status42-transient-status.png"},
    };
    for (const StatusShot& s : shots) {
        CreateKwDialog(s.id);
        CallKwDialogFunction(s.id, 4, L"Static Analysis 1", 0, host->View(), nullptr);
        CallKwDialogFunction(s.id, s.lineFunction, s.line, 0, host->View(), nullptr);
        QApplication::processEvents();
        for (QWidget* w : QApplication::topLevelWidgets()) {
            if (w->isVisible() && w->property("templateId").toUInt() == 7300 + s.id) {
                const QString f = QDir(directory).filePath(QString::fromLatin1(s.file));
                photograph(w, f, s.id, inspect);
                result.written << f;
            }
        }
        CallKwDialogFunction(s.id, 2, L"", 0, host->View(), nullptr);
        CallKwDialogFunction(s.id, 3, L"", 0, host->View(), nullptr);
        DeleteKwDialog(s.id);
    }

    // Dialogs a host constructs itself (the material editor opens the stress-strain curve),
    // and the curve plot behind "Show XY Plot".
    for (CKwTable* t : host->Model()->m_tables) {
        if (t->GetTableType() != CKwTable::StressStrainCurve)
            continue;
        CKwMaterialNonlinearDialog dlg(t, host->Units(), host->View(), t->GetName());
        dlg.Create();
        dlg.show();
        QApplication::processEvents();
        QString f = QDir(directory).filePath(QStringLiteral("direct-stress-strain.png"));
        photograph(&dlg, f, 0, inspect);
        result.written << f;
        dlg.OnShowXYPlot();
        QApplication::processEvents();
        if (QDialog* plot = dlg.PlotWindow()) {
            f = QDir(directory).filePath(QStringLiteral("direct-stress-strain-plot.png"));
            photograph(plot, f, 0, inspect);
            result.written << f;
        }
        dlg.hide();
        break;
    }
    {
        const PaintInspector sections(inspect);
        KwSectionGallery(host, directory, result.written, result.titles);
    }
    // Plain dialogs that an editor opens: shown on a sample material, photographed, closed.
    {
        CKwMaterial material(1, QStringLiteral("Carbon/Epoxy"));
        material.SetMaterialType(CKwMaterial::Orthotropic3D);
        const std::pair<const char*, double> values[] = {
            {"E1", 181e9}, {"E2", 10.3e9}, {"E3", 10.3e9}, {"NUXY", 0.28}, {"NUYZ", 0.49},
            {"NUXZ", 0.28}, {"G12", 7.17e9}, {"G1Z", 7.17e9}, {"G2Z", 3.46e9}, {"XT", 1.5e9},
            {"XC", 1.5e9}, {"YT", 40e6}, {"YC", 246e6}, {"S12", 68e6}};
        for (const auto& [key, value] : values)
            material.SetValue(QString::fromLatin1(key), value);
        CKwOrthotropic3DDlg dlg(&material, nullptr, host->View());
        QTimer::singleShot(0, &dlg, [&] {
            QApplication::processEvents();
            const QString f =
                QDir(directory).filePath(QStringLiteral("tmpl305-3d-orthotropic-definition.png"));
            photograph(&dlg, f, 2, inspect);
            result.written << f;
            result.titles << dlg.windowTitle();
            dlg.OnCancel();
        });
        dlg.DoModal();
    }

    // The material library browser, the comparison of two materials, the S-N curve.
    KwPeripheryGallery(host, shoot);

    // The FE model editor's automatic contact parameters page.
    {
        host->Launch(27, false, 0);
        QApplication::processEvents();
        if (auto* d = dynamic_cast<CKwMFCDialog*>(host->View()->GetOpenDialog())) {
            if (auto* open = KwControl<QPushButton>(d, 7933)) {
                QTimer::singleShot(0, d, [&] {
                    if (QWidget* page = QApplication::activeModalWidget()) {
                        shoot(page, "tmpl7240-auto-contact-parameters.png");
                        closeDialog(page);
                    }
                });
                open->click();
            }
            closeDialog(d);
            QApplication::processEvents();
        }
    }

    // "Include Groups" as a list of nodes and elements opens it from its context menu.
    {
        CKwMFCUIGroupSelection groups(host->Model(), 0x8640, host);
        groups.Create();
        groups.show();
        shoot(&groups, "tmpl7260-include-groups.png");
        groups.OnCancel();
        QApplication::processEvents();
    }

    // Analysis > Solver Input Preview on the current analysis: each family's table that has
    // rows, and what the deck leaves out.
    for (CKwAnalysis* a : host->Model()->m_analyses)
        if (a->GetAnalysisTypeCode() == CKwAnalysis::LinearStatic) {
            host->SetCurrentAnalysis(a);
            break;
        }
    if (KwDeckPreview* preview = host->OpenDeckPreview()) {
        QTabWidget* tabs = preview->Tabs();
        for (int t = 0; t < tabs->count(); ++t) {
            auto* view = qobject_cast<QAbstractItemView*>(tabs->widget(t));
            const bool rows = view && view->model() && view->model()->rowCount() > 0;
            auto* notes = qobject_cast<QListWidget*>(tabs->widget(t));
            if (!rows && !(notes && notes->count() > 0))
                continue;
            tabs->setCurrentIndex(t);
            QApplication::processEvents();
            const QString f = QDir(directory).filePath(
                QStringLiteral("host-solver-input-preview-%1.png").arg(t + 1));
            photograph(preview, f, 0, inspect);
            result.written << f;
        }
        preview->close();
        QApplication::processEvents();
    }

    // The kinds that opened nothing are a list for the curious, not for the console.
    QFile list(QDir(directory).filePath(QString::fromLatin1(kKwGalleryUnavailableFile)));
    if (result.unavailable.isEmpty()) {
        list.remove();
    } else if (list.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text)) {
        list.write(result.unavailable.join(QLatin1Char('\n')).toUtf8());
        list.write("\n");
    }
    return result;
}
