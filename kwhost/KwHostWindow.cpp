#include "KwHostWindow.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwDlgBase.h"
#include "CKwDynamicsSetup.h"
#include "CKwFEModel.h"
#include "CKwLoad.h"
#include "CKwConMass.h"
#include "CKwConnector.h"
#include "CKwCoordinateSystem.h"
#include "CKwMeshModel.h"
#include "CKwMeshQualityResultsDialog.h"
#include "CKwMFCMeshTableDialog.h"
#include "CKwGroup.h"
#include "CKwMaterial.h"
#include "CKwMaterialNonlinearDialog.h"
#include "CKwNonlinearDialogBase.h"
#include "CKwNonlinearSetup.h"
#include "CKwPhysicalProperty.h"
#include "CKwElementDeletion.h"
#include "CKwMaterialOrient.h"
#include "CKwMeshLocal.h"
#include "CKwSurfaceContact.h"
#include "KwSectionLibrary.h"
#include "CKwPlot.h"
#include "CKwRestraint.h"
#include "KwHostStudyItems.h"
#include "CKwSubCase.h"
#include "CKwModalSetup.h"
#include "CKwTimeStep.h"
#include "CKwTable.h"
#include "CKwTreeManager.h"
#include "CKwXYPlot.h"
#include "CKwXMLUtils.h"
#include "CKwiCKAddin.h"
#include "KW_UOM.h"
#include "KwHostKinds.h"
#include "KwHostText.h"
#include "KwMFCUIEntry.h"
#include "KwRegistry.h"
#include "KwDeckPreview.h"
#include "KwSolverJob.h"
#include "KwMesherJob.h"
#include "KwSolverRun.h"

#include <algorithm>
#include <QActionGroup>
#include <QApplication>
#include <QHeaderView>
#include <QTableView>
#include <QMap>
#include <QMenuBar>
#include <QAbstractButton>
#include <QMessageBox>
#include <QProgressDialog>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStatusBar>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace {
// The name of the button that closed a message box, from the request's answer (0 OK, 1 Cancel,
// 2 Abort, 3 Retry, 4 Ignore, 5 Yes, 6 No); empty for other answers (7: the box was closed).
QString KwAnswerText(unsigned answer)
{
    const int result = int(answer) + 1;
    struct Button
    {
        int code;
        const char* key;
        const char* english;
    };
    static const Button buttons[] = {{1, "ButtonOk", "OK"},         {2, "ButtonCancel", "Cancel"},
                                     {3, "ButtonAbort", "Abort"},   {4, "ButtonRetry", "Retry"},
                                     {5, "ButtonIgnore", "Ignore"}, {6, "ButtonYes", "Yes"},
                                     {7, "ButtonNo", "No"}};
    for (const Button& b : buttons)
        if (b.code == result)
            return CKwXMLUtils::GetInternationalPropPageItemText(
                QStringLiteral("General"), QString::fromLatin1(b.key),
                QString::fromLatin1(b.english));
    return {};
}

struct AnalysisType
{
    int code;
    const char* key;
    const char* english;
};
const AnalysisType kAnalysisTypes[] = {
    {CKwAnalysis::LinearStatic, "AnalysisLinearStatic", "Linear Static"},
    {CKwAnalysis::Modal, "AnalysisModal", "Modal"},
    {CKwAnalysis::NonlinearStatic, "AnalysisNonlinearStatic", "Nonlinear Static"},
    {CKwAnalysis::NonlinearTransient, "AnalysisNonlinearTransient", "Nonlinear Transient"},
    {CKwAnalysis::ResponseSpectrum, "AnalysisResponseSpectrum", "Response Spectrum"},
    {CKwAnalysis::ExplicitDynamics, "AnalysisExplicitDynamics", "Explicit Dynamics"},
    {CKwAnalysis::Fatigue, "AnalysisFatigue", "Fatigue"},
    {CKwAnalysis::Optimization, "AnalysisOptimization", "Optimization"},
    {CKwAnalysis::FrequencyResponse, "AnalysisFrequencyResponse", "Frequency Response"},
};

// An analysis still named after its type (as a new analysis is) shows its type's name in the
// current language; a name the user gave stays as it is. `named` tells which it was.
QString analysisName(const CKwAnalysis* a, bool* named = nullptr)
{
    for (const AnalysisType& t : kAnalysisTypes)
        if (t.code == a->GetAnalysisTypeCode() && a->GetName() == QLatin1String(t.english)) {
            if (named)
                *named = false;
            return KwHostText(t.key, t.english);
        }
    if (named)
        *named = true;
    return a->GetName();
}

enum ItemRole { KindRole = Qt::UserRole + 1, ObjectRole, HostActionRole };
// Tree items the demo host opens itself rather than through a launch kind.
constexpr int kStressStrainItem = 1036;
// Tree items the host opens itself rather than through a dialog kind.
constexpr unsigned kSectionDefinitionItem = 1001;
constexpr unsigned kSectionReportItem = 1002;
constexpr unsigned kSectionSelectionItem = 1003;
// Tree entries the host handles itself rather than through a dialog kind.
enum HostAction { ActionMeshQuality = 1, ActionHighlightGroup = 2, ActionCurrentAnalysis = 3 };
}

KwHostWindow::KwHostWindow(QWidget* parent, CKwFEModel* model)
    : QMainWindow(parent), m_model(model ? model : CKwFEModel::CreateSampleModel()),
      m_units(std::make_unique<KW_UOM>(KW_UOM::MMNS)), m_addin(std::make_unique<CKwiCKAddin>())
{
    TheApplication = m_addin.get();
    m_addin->SetHelpHandler([this](const QString& topic) {
        statusBar()->showMessage(
            KwHostText("StatusHelpTopic", "Help topic requested: %1").arg(topic), 5000);
    });
    auto* split = new QSplitter(this);
    m_tree = new QTreeWidget(split);
    // Long names scroll rather than being cut short.
    m_tree->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_tree->header()->setStretchLastSection(false);
    m_view = new CFMView(m_model.get(), split);
    m_view->SetUnitHolder(m_units.get());
    m_view->SetFrameWindow(this);
    m_run = new KwSolverRun(m_view, this);
    m_job = new KwSolverJob(m_view, this);
    // The add-in's commands that the library sends back: 89 fills the convergence plot.
    m_addin->SetCommandHandler([this](int command, int sub, const QString&, int value,
                                      CFMView* view, void* data) {
        return command == 89 ? m_run->OnConvergenceCommand(sub, value, view, data) : 0;
    });
    split->addWidget(m_tree);
    split->addWidget(m_view);
    split->setStretchFactor(1, 1);
    split->setSizes({260, 700});
    setCentralWidget(split);
    connect(m_tree, &QTreeWidget::itemActivated, this, &KwHostWindow::onTreeActivated);
    // Editors ask for a refresh after they wrote the model.
    connect(CKwTreeManager::Instance(), &CKwTreeManager::treeRefreshRequested, this,
            &KwHostWindow::RebuildTree);
    m_current = m_model->m_analyses.isEmpty() ? nullptr : m_model->m_analyses.first();
    m_view->SetCurrentAnalysis(m_current);
    buildMenus();
    RebuildTree();
    m_langListener = CKwXMLUtils::AddLanguageChangedListener([this] { refreshCaptions(); });
    resize(1100, 700);
    refreshCaptions();
    // The status bar starts with what a remesh ends with: the size of the mesh.
    if (m_model && m_model->m_mesh && m_model->m_mesh->ElementCount() > 0)
        statusBar()->showMessage(KwHostText("MesherDone", "Mesh: %1 elements, %2 nodes.")
                                     .arg(m_model->m_mesh->ElementCount())
                                     .arg(m_model->m_mesh->Nodes().size()));
    else
        statusBar()->showMessage(KwHostText("StatusReady", "Ready"));
    // The mesh settings' Run asks the view for a new mesh; the mesher answers.
    m_mesher = new KwMesherJob(m_view, this);
    connect(m_view, &CFMView::remeshRequested, this, [this] { Remesh(); });
    connect(m_mesher, &KwMesherJob::finished, this, &KwHostWindow::onMesherFinished);
}

bool KwHostWindow::Remesh()
{
    if (!m_mesher->Start()) {
        statusBar()->showMessage(m_mesher->Message());
        showSolverMessage(m_mesher->Message());
        return false;
    }
    if (!m_mesher->IsRunning()) // ended at once (the program could not be started)
        return false;
    statusBar()->showMessage(KwHostText("StatusMeshing", "Meshing..."));
    m_meshProgress = new QProgressDialog(KwHostText("StatusMeshing", "Meshing..."),
                                         KwHostText("ButtonCancel", "Cancel"), 0, 100, this);
    m_meshProgress->setAttribute(Qt::WA_DeleteOnClose);
    m_meshProgress->setWindowTitle(KwHostText("TitleMeshing", "Mesh"));
    m_meshProgress->setMinimumDuration(300);
    connect(m_meshProgress, &QProgressDialog::canceled, m_mesher, &KwMesherJob::Cancel);
    connect(m_mesher, &KwMesherJob::progressChanged, m_meshProgress, &QProgressDialog::setValue);
    return true;
}

void KwHostWindow::onMesherFinished(bool ok)
{
    if (m_meshProgress) {
        m_meshProgress->disconnect(m_mesher);
        m_meshProgress->close();
        m_meshProgress = nullptr;
    }
    statusBar()->showMessage(m_mesher->Message());
    if (ok)
        RebuildTree();
    else
        showSolverMessage(m_mesher->Message());
}

KwHostWindow::~KwHostWindow()
{
    CKwXMLUtils::RemoveLanguageChangedListener(m_langListener);
    // Dialogs still open refer to the model; close them before it goes.
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w != this && dynamic_cast<CKwDlgBase*>(w))
            delete w;
    if (TheApplication == m_addin.get())
        TheApplication = nullptr;
}

void KwHostWindow::buildMenus()
{
    QMenu* file = menuBar()->addMenu(QString());
    caption(file->menuAction(), "MenuFile", "&File");
    caption(file->addAction(QString(), QKeySequence::Quit, this, &QWidget::close), "MenuExit",
            "E&xit");

    QMap<QString, QMenu*> groups;
    for (const QString& g : {QStringLiteral("Editors"), QStringLiteral("Analysis"),
                             QStringLiteral("Results"), QStringLiteral("Mesh"),
                             QStringLiteral("General")}) {
        QMenu* menu = menuBar()->addMenu(QString());
        caption(menu->menuAction(), [g] { return KwHostGroupText(g); });
        groups.insert(g, menu);
    }
    for (const KwHostKind& k : KwHostKinds()) {
        const unsigned kind = k.kind;
        const int variant = k.variant;
        QAction* a = groups.value(k.group)->addAction(QString());
        caption(a, [k] { return QStringLiteral("%1  [%2]").arg(KwHostKindText(k)).arg(k.kind); });
        connect(a, &QAction::triggered, this,
                [this, kind, variant] { Launch(kind, false, variant); });
    }

    QMenu* analysis = groups.value(QStringLiteral("Analysis"));
    analysis->addSeparator();
    // The analysis the editors are opened for: their advisories (explicit, nonlinear, fatigue,
    // response spectrum) depend on it.
    QMenu* current = analysis->addMenu(QString());
    caption(current->menuAction(), "MenuCurrentAnalysis", "Current analysis");
    m_analysisGroup = new QActionGroup(this);
    for (CKwAnalysis* a : m_model->m_analyses) {
        QAction* item = current->addAction(QString());
        caption(item, [a] { return analysisName(a); });
        item->setCheckable(true);
        item->setChecked(a == m_current);
        m_analysisGroup->addAction(item);
        connect(item, &QAction::triggered, this, [this, a] { SetCurrentAnalysis(a); });
    }
    QMenu* run = analysis->addMenu(QString());
    caption(run->menuAction(), "MenuRunAnalysis", "Run analysis");
    caption(run->addAction(QString(), this, [this] { RunCurrentAnalysis(); }),
            "MenuRunCurrent", "Current analysis");
    caption(run->addAction(QString(), this,
                           [this] {
                               m_job->Stop();
                               m_run->Stop();
                           }),
            "MenuRunStop", "Stop");
    caption(analysis->addAction(QString(), this, [this] { OpenDeckPreview(); }),
            "MenuSolverInputPreview", "Solver Input Preview...");
    connect(m_run, &KwSolverRun::finished, this, [this] {
        statusBar()->showMessage(KwHostText("StatusSolutionFinished", "Solution finished."),
                                 5000);
    });
    connect(m_job, &KwSolverJob::finished, this, [this](bool ok) {
        if (ok) {
            statusBar()->showMessage(
                KwHostText("StatusSolvedAnalysis", "Solution finished: results of %1 are in the model.")
                    .arg(analysisName(m_current)));
            RebuildTree();
            showLoadBalance();
        } else {
            statusBar()->showMessage(m_job->Message().section(QLatin1Char('\n'), 0, 0));
            showSolverMessage(m_job->Message());
        }
    });

    QMenu* mesh = groups.value(QStringLiteral("Mesh"));
    mesh->addSeparator();
    caption(mesh->addAction(QString(), this, [this] { OpenMeshQualityResults(); }),
            "MenuCheckMeshQuality", "Check mesh quality (current limits)");
    caption(mesh->addAction(QString(), this, [this] { m_view->ClearMeshHighlight(); }),
            "MenuClearHighlight", "Clear highlight");
    caption(mesh->addAction(QString(), this, [this] { m_view->RequestRemesh(); }),
            "MenuRemesh", "Remesh (current settings)");

    // The model view: standard views (the view's own keys shown beside them), fit, drawing.
    QMenu* viewMenu = menuBar()->addMenu(QString());
    caption(viewMenu->menuAction(), "MenuView", "&View");
    caption(viewMenu->addAction(QString(), m_view, &CFMView::FitAll), "MenuViewFit",
            "Fit all\tF");
    const struct
    {
        KwViewCamera::StandardView view;
        const char* key;
        const char* english;
    } standardViews[] = {{KwViewCamera::Isometric, "MenuViewIsometric", "Isometric\t0"},
                         {KwViewCamera::Front, "MenuViewFront", "Front\t1"},
                         {KwViewCamera::Back, "MenuViewBack", "Back\t2"},
                         {KwViewCamera::Left, "MenuViewLeft", "Left\t3"},
                         {KwViewCamera::Right, "MenuViewRight", "Right\t4"},
                         {KwViewCamera::Top, "MenuViewTop", "Top\t5"},
                         {KwViewCamera::Bottom, "MenuViewBottom", "Bottom\t6"}};
    for (const auto& sv : standardViews) {
        const int v = sv.view;
        caption(viewMenu->addAction(QString(), this, [this, v] { m_view->SetStandardView(v); }),
                sv.key, sv.english);
    }
    viewMenu->addSeparator();
    QAction* meshEdges = viewMenu->addAction(QString());
    caption(meshEdges, "MenuViewMeshEdges", "Show element edges");
    meshEdges->setCheckable(true);
    meshEdges->setChecked(m_view->GetShowMeshEdges());
    connect(meshEdges, &QAction::toggled, m_view, &CFMView::SetShowMeshEdges);
    QAction* smooth = viewMenu->addAction(QString());
    caption(smooth, "MenuViewSmooth", "Smooth shading");
    smooth->setCheckable(true);
    smooth->setChecked(m_view->GetSmoothShading());
    connect(smooth, &QAction::toggled, m_view, &CFMView::SetSmoothShading);

    QMenu* options = menuBar()->addMenu(QString());
    caption(options->menuAction(), "MenuOptions", "&Options");
    QMenu* lang = options->addMenu(QString());
    caption(lang->menuAction(), "MenuLanguage", "Language");
    m_langGroup = new QActionGroup(this);
    for (const QString& code : CKwXMLUtils::GetAvailableLanguages()) {
        QAction* a = lang->addAction(CKwXMLUtils::GetLanguageDisplayName(code));
        a->setCheckable(true);
        a->setChecked(code == CKwXMLUtils::GetCurrentLanguage());
        a->setData(code);
        m_langGroup->addAction(a);
        connect(a, &QAction::triggered, this, [this, code] { setLanguage(code); });
    }
    QMenu* units = options->addMenu(QString());
    caption(units->menuAction(), "MenuUnits", "Units");
    auto* unitGroup = new QActionGroup(this);
    for (KW_UOM::System s : {KW_UOM::SI, KW_UOM::MMNS, KW_UOM::IPS}) {
        QAction* a = units->addAction(QString());
        caption(a, [s] {
            return KwHostText(QStringLiteral("UnitSystem%1").arg(int(s)), KW_UOM::GetSystemName(s));
        });
        a->setCheckable(true);
        a->setChecked(s == m_units->GetSystem());
        a->setData(int(s));
        unitGroup->addAction(a);
        connect(a, &QAction::triggered, this, [this, s, unitGroup] {
            if (!unitsMayChange()) {
                for (QAction* other : unitGroup->actions())
                    other->setChecked(other->data().toInt() == int(m_units->GetSystem()));
                return;
            }
            m_units->SetSystem(s);
            // The mesh tables hold nothing typed: they show the mesh in the new units at once.
            for (QWidget* w : QApplication::topLevelWidgets())
                if (auto* t = dynamic_cast<CKwMFCMeshTableDialog*>(w))
                    t->OnUnitsChanged();
        });
    }
    QAction* radians = options->addAction(QString());
    caption(radians, "MenuRadians", "Angles in radians");
    radians->setCheckable(true);
    connect(radians, &QAction::toggled, this, [this, radians](bool on) {
        if (on != m_units->IsAngleInRadians() && !unitsMayChange()) {
            const QSignalBlocker blocker(radians);
            radians->setChecked(m_units->IsAngleInRadians());
            return;
        }
        m_units->SetAngleInRadians(on);
        // Open results repaint: which angle cells are red depends on the unit.
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* d = dynamic_cast<CKwMeshQualityResultsDialog*>(w))
                d->ResultsView()->viewport()->update();
        m_view->update();
    });
    QAction* running = options->addAction(QString());
    caption(running, "MenuSolverRunning", "Solver running");
    running->setCheckable(true);
    connect(running, &QAction::toggled, m_view, &CFMView::SetSolvraRunning);
    connect(m_view, &CFMView::solverRunningChanged, running, &QAction::setChecked);
    QAction* ids = options->addAction(QString());
    caption(ids, "MenuShowIds", "Show entity IDs");
    ids->setCheckable(true);
    connect(ids, &QAction::toggled, m_view, &CFMView::SetShowIDs);
}

bool KwHostWindow::unitsMayChange()
{
    // An open editor or point table holds what the user typed as text in the units it was
    // shown in, and its OK reads that text in the units of the moment: switching the units
    // under it would change the values silently. The switch waits until they are closed.
    int open = m_view->GetOpenDialogCount();
    for (QWidget* w : m_view->GetOpenDialogs())
        if (dynamic_cast<CKwMFCMeshTableDialog*>(w))
            --open; // shows the mesh, holds no typed value
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && dynamic_cast<CKwNonlinearDialogBase*>(w))
            ++open;
    if (open == 0)
        return true;
    QMessageBox::information(
        this, windowTitle(),
        KwHostText("UnitsWait", "Close the open editors and tables before changing the units: "
                                "their values are shown and typed in the current units."));
    return false;
}

void KwHostWindow::setLanguage(const QString& code)
{
    QString error;
    if (!CKwXMLUtils::SetCurrentLanguage(code, &error)) {
        QMessageBox::warning(
            this, windowTitle(),
            KwHostText("LanguageFailed", "Cannot switch language: %1").arg(error));
        return;
    }
    KwWriteToRegistryCurrentUser(CKwXMLUtils::LanguageSettingSection(),
                                 CKwXMLUtils::LanguageSettingEntry(), code);
}

void KwHostWindow::caption(QAction* action, std::function<QString()> text)
{
    auto apply = [action, text = std::move(text)] { action->setText(text()); };
    apply();
    m_recaption.push_back(std::move(apply));
}

void KwHostWindow::caption(QAction* action, const char* key, const char* english)
{
    caption(action, [key, english] { return KwHostText(key, english); });
}

void KwHostWindow::refreshCaptions()
{
    CKwDlgBase::RetranslateAll();
    setWindowTitle(KwHostText("WindowTitle", "KwHost - %1").arg(m_model->GetName()));
    m_tree->setHeaderLabel(KwHostTreeText("TreeHeader", "Model"));
    for (const auto& recaption : m_recaption)
        recaption();
    if (m_langGroup)
        for (QAction* a : m_langGroup->actions())
            a->setChecked(a->data().toString() == CKwXMLUtils::GetCurrentLanguage());
    RebuildTree();
}

void KwHostWindow::showSolverMessage(const QString& text)
{
    // Not modal to the event loop: a run ends while other windows may be waiting for input.
    auto* box = new QMessageBox(QMessageBox::Warning, windowTitle(), text, QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setObjectName(QStringLiteral("SolverMessage"));
    box->button(QMessageBox::Ok)->setText(KwAnswerText(0));
    box->open();
}

KwDeckPreview* KwHostWindow::OpenDeckPreview()
{
    if (!m_current)
        return nullptr;
    auto* preview = new KwDeckPreview(*m_model, *m_current, m_units.get(), this);
    preview->setAttribute(Qt::WA_DeleteOnClose);
    preview->show();
    return preview;
}

void KwHostWindow::showLoadBalance()
{
    const auto& lines = m_job->Balance();
    if (lines.empty())
        return;
    const bool warn = std::any_of(lines.begin(), lines.end(),
                                  [](const KwLoadBalanceLine& l) { return l.Warn(); });
    auto* box = new QMessageBox(warn ? QMessageBox::Warning : QMessageBox::Information,
                                windowTitle(), KwSolverJob::BalanceText(lines, m_units.get()),
                                QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setObjectName(QStringLiteral("LoadBalance"));
    box->button(QMessageBox::Ok)->setText(KwAnswerText(0));
    box->open();
}

bool KwHostWindow::RunCurrentAnalysis()
{
    if (m_run->IsRunning() || !m_job->Start(m_model.get(), m_current, analysisName(m_current))) {
        const QString why = m_run->IsRunning()
                                ? KwHostText("StatusAlreadyRunning", "A solution is already running.")
                                : m_job->Message();
        statusBar()->showMessage(why.section(QLatin1Char('\n'), 0, 0));
        showSolverMessage(why);
        return false;
    }
    statusBar()->showMessage(
        KwHostText("StatusSolving", "Solving %1...").arg(analysisName(m_current)));
    return true;
}

void KwHostWindow::SetCurrentAnalysis(CKwAnalysis* analysis)
{
    if (!m_model->m_analyses.contains(analysis))
        return;
    m_current = analysis;
    m_view->SetCurrentAnalysis(analysis);
    const int index = int(m_model->m_analyses.indexOf(analysis));
    if (m_analysisGroup && index < m_analysisGroup->actions().size())
        m_analysisGroup->actions().at(index)->setChecked(true);
    // The tree item may be the one being activated: its font changes, it stays.
    for (QTreeWidgetItemIterator it(m_tree); *it; ++it) {
        if ((*it)->data(0, HostActionRole).toInt() != ActionCurrentAnalysis)
            continue;
        QFont font = (*it)->font(0);
        font.setBold((*it)->data(0, ObjectRole).toInt() == index);
        (*it)->setFont(0, font);
    }
    statusBar()->showMessage(
        KwHostText("StatusCurrentAnalysis", "Current analysis: %1").arg(analysisName(analysis)),
        5000);
}

void KwHostWindow::Launch(unsigned kind, bool newEntity, int variant)
{
    if (kind == 56 && !(m_current && m_current->IsFatigueAnalysis()))
        // The fatigue setup belongs to a fatigue analysis: the model's first one becomes current.
        for (CKwAnalysis* a : m_model->m_analyses)
            if (a->IsFatigueAnalysis()) {
                SetCurrentAnalysis(a);
                break;
            }
    DialogLaunchRequest r = KwMakeRequest(kind, m_model.get(), m_view, m_units.get(), newEntity,
                                          variant, m_current);
    if (kind == 83) {
        const std::wstring text =
            KwHostText("AskSaveModel", "Save the model before running the analysis?")
                .toStdWString();
        MessageRequest m{};
        m.text = text.c_str();
        m.buttons = 1;
        m.icon = 0;
        r.object = &m;
        LaunchDialog(&r);
        // The user sees which button answered, in the words of the buttons themselves.
        const QString answer = KwAnswerText(m.result);
        if (!answer.isEmpty())
            statusBar()->showMessage(
                KwHostText("StatusMessageAnswered", "Message box answered: %1").arg(answer), 5000);
        return;
    }
    LaunchDialog(&r);
}

void KwHostWindow::RebuildTree()
{
    m_tree->clear();
    auto* root = new QTreeWidgetItem(m_tree, {m_model->GetName()});
    root->setData(0, NameRole, true);
    // An item that opens something; `named` when its text is the object's own name.
    auto add = [](QTreeWidgetItem* parent, const QString& text, int kind, void* object,
                  bool named = true) {
        auto* it = new QTreeWidgetItem(parent, {text});
        it->setData(0, KindRole, kind);
        it->setData(0, ObjectRole, QVariant::fromValue(reinterpret_cast<quintptr>(object)));
        it->setData(0, NameRole, named);
        return it;
    };
    // The model-wide lists and automatic contact detection.
    add(root, KwHostTreeText("TreeFEModel", "FE Model"), 27,
        static_cast<CKwFEBase*>(m_model.get()), false);
    auto* mats = new QTreeWidgetItem(root, {CKwXMLUtils::GetInternationalTreeItemText(
                                               QStringLiteral("Materials"),
                                               QStringLiteral("TreeCategoryText"),
                                               QStringLiteral("Materials"))});
    for (CKwMaterial* m : m_model->m_materials)
        add(mats, m->GetName(), 2, m);
    auto* props = new QTreeWidgetItem(root, {CKwXMLUtils::GetInternationalTreeItemText(
                                                QStringLiteral("PhysicalProperties"),
                                                QStringLiteral("TreeCategoryText"),
                                                QStringLiteral("Physical Properties"))});
    for (CKwPhysicalProperty* p : m_model->m_properties) {
        QTreeWidgetItem* pi = add(props, p->GetName(), 34, p);
        if (p->m_idealization != CKwPhysicalProperty::Beam)
            continue;
        // A beam's section, opened by the host itself.
        add(pi, KwHostTreeText("TreeCrossSection", "Cross section: %1").arg(p->m_sectionName),
            kSectionDefinitionItem, p, false);
        add(pi, KwHostTreeText("TreeSectionProperties", "Section properties"), kSectionReportItem,
            p, false);
        add(pi, KwHostTreeText("TreeStandardSections", "Standard sections"),
            kSectionSelectionItem, p, false);
    }
    auto* cons = new QTreeWidgetItem(root, {CKwXMLUtils::GetInternationalTreeItemText(
                                               QStringLiteral("Constraints"),
                                               QStringLiteral("TreeCategoryText"),
                                               QStringLiteral("Constraints"))});
    add(cons, KwHostTreeText("TreeNewConstraint", "(new constraint)"), 1, nullptr, false);
    for (CKwRestraint* c : m_model->m_restraints)
        add(cons, c->GetName(), 1, c);
    auto* loads = new QTreeWidgetItem(root, {CKwXMLUtils::GetInternationalTreeItemText(
                                                QStringLiteral("Loads"),
                                                QStringLiteral("TreeCategoryText"),
                                                QStringLiteral("Loads"))});
    add(loads, KwHostTreeText("TreeNewLoad", "(new load)"), 0, nullptr, false);
    for (CKwLoad* l : m_model->m_loads)
        add(loads, l->GetName(), 0, l);
    auto* analyses = new QTreeWidgetItem(root, {CKwXMLUtils::GetInternationalTreeItemText(
                                                   QStringLiteral("Analyses"),
                                                   QStringLiteral("TreeCategoryText"),
                                                   QStringLiteral("Analyses"))});
    for (CKwAnalysis* a : m_model->m_analyses) {
        // Activating an analysis makes it current; the current one stands out.
        bool named = true;
        auto* ai = new QTreeWidgetItem(analyses, {analysisName(a, &named)});
        ai->setData(0, NameRole, named);
        ai->setData(0, HostActionRole, ActionCurrentAnalysis);
        ai->setData(0, ObjectRole, int(m_model->m_analyses.indexOf(a)));
        if (a == m_current) {
            QFont bold = ai->font(0);
            bold.setBold(true);
            ai->setFont(0, bold);
        }
        for (CKwSubCase* s : a->GetSubCases()) {
            auto* si = add(ai, s->GetName(), 8, s);
            if (CKwNonlinearSetup* setup = s->GetNonlinearSetup()) {
                add(si, KwHostTreeText("TreeNonlinearSetup", "Nonlinear setup"), 52, setup, false);
                add(si, KwHostTreeText("TreeNonlinearParameters", "Nonlinear parameters"), 53,
                    setup, false);
            }
        }
        addStudyItems(ai, a, add);
        // The analysis's damping, spectrum and solution frequencies.
        for (CKwDamping* d : m_model->m_dampings)
            if (d->m_analysisId == a->GetID())
                add(ai, d->GetName(), 15, static_cast<CKwFEBase*>(d));
        for (CKwSpectrumSetup* sp : m_model->m_spectrumSetups)
            if (sp->m_analysisId == a->GetID())
                add(ai, sp->GetName(), 30, static_cast<CKwFEBase*>(sp));
        for (CKwSolutionFrequency* f : m_model->m_solutionFrequencies)
            if (f->m_analysisId == a->GetID())
                add(ai, f->GetName(), 31, static_cast<CKwFEBase*>(f));
        // New ones for the analysis they suit; the item carries the analysis.
        auto* owner = static_cast<CKwFEBase*>(a);
        if (a->GetAnalysisTypeCode() == CKwAnalysis::FrequencyResponse) {
            add(ai, KwHostTreeText("TreeNewDamping", "(new damping)"), 15, owner, false);
            add(ai, KwHostTreeText("TreeNewSolutionFrequencies", "(new solution frequencies)"),
                31, owner, false);
        } else if (a->GetAnalysisTypeCode() == CKwAnalysis::ResponseSpectrum) {
            add(ai, KwHostTreeText("TreeNewSpectrumSetup", "(new spectrum setup)"), 30, owner,
                false);
        }
        // The analysis's own setups, and a new subcase for it.
        if (CKwModalSetup* modes = a->GetModalSetup())
            add(ai, KwHostTreeText("TreeModalSetup", "Modal setup"), 32, modes, false);
        if (CKwTimeStep* steps = a->GetTimeStep())
            add(ai, KwHostTreeText("TreeTimeSteps", "Time steps"), 29, steps, false);
        add(ai, KwHostTreeText("TreeNewSubcase", "(new subcase)"), 8, nullptr, false);
        // After a run: the sum of the reactions at picked constrained entities.
        if (a->GetSolverResults())
            add(ai, KwHostTreeText("TreeReactionSum", "Reaction sums"), 4,
                static_cast<CKwFEBase*>(a), false);
    }
    auto* plots = new QTreeWidgetItem(root, {CKwXMLUtils::GetInternationalTreeItemText(
                                                QStringLiteral("Plots"),
                                                QStringLiteral("TreeCategoryText"),
                                                QStringLiteral("Plots"))});
    // A new plot of the current analysis's results, and the stored plots as they were left.
    add(plots, KwHostTreeText("TreeNewPlot", "(new plot)"), 7, nullptr, false);
    add(plots, KwHostTreeText("TreeNewXYPlot", "(new XY plot)"), 25, nullptr, false);
    for (CKwPlot* p : m_model->m_plots)
        add(plots, p->GetName(), 35, static_cast<CKwFEBase*>(p));
    for (CKwXYPlot* p : m_model->m_xyPlots)
        add(plots, p->GetName(), 39, static_cast<CKwFEBase*>(p));
    auto* tables = new QTreeWidgetItem(root, {CKwXMLUtils::GetInternationalTreeItemText(
                                                 QStringLiteral("Tables"),
                                                 QStringLiteral("TreeCategoryText"),
                                                 QStringLiteral("Tables and Curves"))});
    // A stress-strain curve opens the material's curve dialog, which a host calls directly;
    // every other table opens through kind 36.
    for (CKwTable* t : m_model->m_tables)
        add(tables, t->GetName(),
            t->GetTableType() == CKwTable::StressStrainCurve ? kStressStrainItem : 36,
            static_cast<CKwFEBase*>(t));
    if (CKwMeshModel* mesh = m_model->m_mesh) {
        auto* meshItem = new QTreeWidgetItem(root, {CKwXMLUtils::GetInternationalTreeItemText(
                                                       QStringLiteral("MeshQuality"),
                                                       QStringLiteral("TreeMesh"),
                                                       QStringLiteral("Mesh"))});
        auto* check = new QTreeWidgetItem(meshItem, {CKwXMLUtils::GetInternationalTreeItemText(
                                                        QStringLiteral("MeshQuality"),
                                                        QStringLiteral("TreeCheckMeshQuality"),
                                                        QStringLiteral("Check Mesh Quality"))});
        check->setData(0, HostActionRole, ActionMeshQuality);
        add(meshItem, KwHostTreeText("TreeMeshTable", "Mesh Table"), 49,
            static_cast<CKwFEBase*>(mesh), false);
        // The mesh tools: settings and remeshing, shell normals, beam directions.
        add(meshItem, KwHostTreeText("TreeMeshSettings", "Mesh Settings"), 48,
            static_cast<CKwFEBase*>(mesh), false);
        add(meshItem, KwHostTreeText("TreeReverseNormals", "Reverse Normals"), 21,
            static_cast<CKwFEBase*>(mesh), false);
        add(meshItem,
            KwHostTreeText("TreeReverseLineElementDirection", "Reverse Line Element Direction"),
            22, static_cast<CKwFEBase*>(mesh), false);
        auto* groupsItem = new QTreeWidgetItem(
            meshItem, {CKwXMLUtils::GetInternationalTreeItemText(
                          QStringLiteral("MeshQuality"), QStringLiteral("TreeElementGroups"),
                          QStringLiteral("Element Groups"))});
        for (const CKwMeshModel::ElementGroup& g : mesh->Groups()) {
            auto* gi = new QTreeWidgetItem(
                groupsItem, {QStringLiteral("%1 (%2)").arg(g.name).arg(g.elementIds.size())});
            gi->setData(0, NameRole, true);
            gi->setData(0, HostActionRole, ActionHighlightGroup);
            gi->setData(0, ObjectRole, g.id);
        }
        // Highlighting by ID lists, and the node and element sets kept from it.
        auto* sets = new QTreeWidgetItem(
            meshItem, {CKwXMLUtils::GetInternationalTreeItemText(
                          QStringLiteral("HighlightEntities"), QStringLiteral("TreeIdSets"),
                          QStringLiteral("Node and Element Sets"))});
        add(sets, KwHostTreeText("TreeHighlightNodes", "(highlight nodes)"), 23, nullptr, false);
        add(sets, KwHostTreeText("TreeHighlightElements", "(highlight elements)"), 24, nullptr,
            false);
        for (CKwGroup* set : m_model->m_idSets)
            add(sets, QStringLiteral("%1 (%2)").arg(set->GetName()).arg(set->m_ids.size()), 47,
                static_cast<CKwFEBase*>(set));
    }
    // Concentrated masses, connectors, the user's coordinate systems and the beam end releases,
    // each with an item that makes a new one.
    // Mesh controls, material orientations, element deletions and surface contacts.
    const auto category = [&](const char* section, const char* english) {
        return new QTreeWidgetItem(root, {CKwXMLUtils::GetInternationalTreeItemText(
                                             QString::fromLatin1(section),
                                             QStringLiteral("TreeCategoryText"),
                                             QString::fromLatin1(english))});
    };
    QTreeWidgetItem* masses = category("ConMass", "Concentrated Masses");
    add(masses, KwHostTreeText("TreeNewConMass", "(new concentrated mass)"), 13, nullptr, false);
    for (CKwConMass* c : m_model->m_conMasses)
        add(masses, c->GetName(), 13, static_cast<CKwFEBase*>(c));
    QTreeWidgetItem* connectors = category("Connector", "Connectors");
    add(connectors, KwHostTreeText("TreeNewConnector", "(new connector)"), 14, nullptr, false);
    for (CKwConnector* c : m_model->m_connectors)
        add(connectors, c->GetName(), 14, static_cast<CKwFEBase*>(c));
    QTreeWidgetItem* systems = category("CoordinateSystem", "Coordinate Systems");
    add(systems, KwHostTreeText("TreeNewCoordSystem", "(new coordinate system)"), 28, nullptr,
        false);
    for (CKwCoordinateSystem* c : m_model->m_coordSystems)
        add(systems, c->GetName(), 28, static_cast<CKwFEBase*>(c));
    if (m_model->m_mesh) {
        QTreeWidgetItem* releases = category("EndRelease", "End Releases");
        add(releases, KwHostTreeText("TreeNewEndRelease", "(new end release)"), 55, nullptr,
            false);
        add(releases, KwHostTreeText("TreeEndReleasesOfMesh", "Released beam ends: %1")
                          .arg(m_model->m_mesh->EndReleases().size()),
            55, static_cast<CKwFEBase*>(m_model->m_mesh), false);
    }
    QTreeWidgetItem* c = category("MeshControl", "Mesh Controls");
    add(c, KwHostTreeText("TreeNewMeshControl", "(new mesh control)"), 3, nullptr, false);
    for (CKwMeshLocal* e : m_model->m_meshControls)
        add(c, e->GetName(), 3, static_cast<CKwFEBase*>(e));
    c = category("MaterialOrientation", "Material Orientations");
    add(c, KwHostTreeText("TreeNewMaterialOrientation", "(new material orientation)"), 6,
        nullptr, false);
    for (CKwMaterialOrient* e : m_model->m_materialOrients)
        add(c, e->GetName(), 6, static_cast<CKwFEBase*>(e));
    c = category("ElementDeletion", "Element Deletions");
    add(c, KwHostTreeText("TreeNewElementDeletion", "(new element deletion)"), 54, nullptr,
        false);
    for (CKwElementDeletion* e : m_model->m_elementDeletions)
        add(c, e->GetName(), 54, static_cast<CKwFEBase*>(e));
    c = category("SurfaceContact", "Contacts");
    add(c, KwHostTreeText("TreeNewContact", "(new contact)"), 12, nullptr, false);
    for (CKwSurfaceContact* e : m_model->m_surfaceContacts)
        add(c, e->GetName(), 12, static_cast<CKwFEBase*>(e));
    m_tree->expandAll();
}

QWidget* KwHostWindow::OpenMeshQualityResults()
{
    if (!m_model->m_mesh)
        return nullptr;
    auto* d = new CKwMeshQualityResultsDialog(m_model->m_mesh, m_view, m_units.get(), m_view);
    d->show();
    return d;
}

void KwHostWindow::onTreeActivated(QTreeWidgetItem* item)
{
    if (item && item->data(0, HostActionRole).toInt() == ActionMeshQuality) {
        // The checks are set first; the results window follows the editor's run.
        Launch(9);
        return;
    }
    if (item && item->data(0, HostActionRole).toInt() == ActionCurrentAnalysis) {
        const int index = item->data(0, ObjectRole).toInt();
        if (index >= 0 && index < m_model->m_analyses.size())
            SetCurrentAnalysis(m_model->m_analyses.at(index));
        return;
    }
    if (item && item->data(0, HostActionRole).toInt() == ActionHighlightGroup) {
        const int id = item->data(0, ObjectRole).toInt();
        for (const CKwMeshModel::ElementGroup& g : m_model->m_mesh->Groups())
            if (g.id == id)
                m_view->SetHighlightedMesh(CFMView::HighlightElements, g.elementIds);
        return;
    }
    if (!item || !item->data(0, KindRole).isValid())
        return;
    const unsigned kind = item->data(0, KindRole).toUInt();
    void* object = reinterpret_cast<void*>(item->data(0, ObjectRole).value<quintptr>());
    if (kind == kStressStrainItem) {
        auto* curve = dynamic_cast<CKwTable*>(static_cast<CKwFEBase*>(object));
        CKwMaterialNonlinearDialog dlg(curve, m_units.get(), m_view,
                                       m_model->m_materials.isEmpty()
                                           ? QString()
                                           : m_model->m_materials.first()->GetName(),
                                       this);
        dlg.DoModal();
        return;
    }
    if (kind >= kSectionDefinitionItem && kind <= kSectionSelectionItem) {
        auto* p = static_cast<CKwPhysicalProperty*>(object);
        const int r = kind == kSectionDefinitionItem ? KwOpenSectionDefinition(this, p)
                      : kind == kSectionReportItem   ? KwOpenSectionReport(this, p)
                                                     : KwOpenSectionSelection(this, p);
        if (r == 1 && kind != kSectionReportItem)
            QMetaObject::invokeMethod(this, &KwHostWindow::RebuildTree, Qt::QueuedConnection);
        return;
    }
    DialogLaunchRequest r =
        KwMakeRequest(kind, m_model.get(), m_view, m_units.get(), true, 0, m_current);
    r.object = object;
    if (kind == 16 || kind == 17 || kind == 33 || kind == 56) {
        // An analysis behind one of these items is the fatigue analysis the setup dialog finds
        // as the current one, the analysis of a new impact or the study of a new objective or
        // variable.
        if (auto* a = dynamic_cast<CKwAnalysis*>(static_cast<CKwFEBase*>(object))) {
            if (kind == 56)
                SetCurrentAnalysis(a);
            r.analysis = kind == 33 ? a : r.analysis;
            r.context = a;
            r.object = nullptr;
        }
    }
    if (kind == 15 || kind == 30 || kind == 31) {
        auto* entity = static_cast<CKwFEBase*>(object);
        if (auto* forAnalysis = dynamic_cast<CKwAnalysis*>(entity)) {
            r.analysis = forAnalysis; // a "(new ...)" item
            r.object = nullptr;
        } else {
            r.analysis = KwAnalysisOfSetup(m_model.get(), entity);
        }
    }
    if (kind == 7)
        // A new plot shows the results of the current analysis.
        r.analysis = m_current ? m_current : r.analysis;
    if (kind == 4)
        // The reaction sum of the analysis it stands under.
        if (auto* a = dynamic_cast<CKwAnalysis*>(static_cast<CKwFEBase*>(object))) {
            r.analysis = a;
            r.object = nullptr;
        }
    if (kind == 8 || kind == 53) {
        // Subcases and setups know their analysis.
        for (CKwAnalysis* a : m_model->m_analyses)
            for (CKwSubCase* s : a->GetSubCases())
                if (s == object || s->GetNonlinearSetup() == object)
                    r.analysis = a;
    }
    // A new subcase and the analysis setups are the analysis's they stand under.
    if (kind == 8 || kind == 29 || kind == 32)
        if (QTreeWidgetItem* p = item->parent();
            p && p->data(0, HostActionRole).toInt() == ActionCurrentAnalysis)
            r.analysis = m_model->m_analyses.value(p->data(0, ObjectRole).toInt());
    LaunchDialog(&r);
}
