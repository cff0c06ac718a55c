#pragma once
// The demo host's main window: the sample model in a tree and a view, menus that open every
// dialog kind as a host would, a language switch, a unit switch and a solver-running switch.
#include <QMainWindow>
#include <QPointer>
#include <functional>
#include <memory>
#include <vector>

class CFMView;
class CKwAnalysis;
class CKwFEModel;
class CKwiCKAddin;
class KW_UOM;
class QTreeWidget;
class QTreeWidgetItem;
class QActionGroup;
class KwSolverJob;
class KwDeckPreview;
class KwSolverRun;
class KwMesherJob;
class QProgressDialog;

class KwHostWindow : public QMainWindow
{
    Q_OBJECT
public:
    // Tree items that show a name of the model's own (an entity, an analysis, a group) carry
    // true under this role; every other item's text is the host's and comes from the
    // language service.
    static constexpr int NameRole = Qt::UserRole + 10;

    // Shows `model` (owned from then on), or the built-in block sample when it is null.
    explicit KwHostWindow(QWidget* parent = nullptr, CKwFEModel* model = nullptr);
    ~KwHostWindow() override;

    CFMView* View() const { return m_view; }
    CKwFEModel* Model() const { return m_model.get(); }
    KW_UOM* Units() const { return m_units.get(); }
    // Opens a dialog kind as the menus do.
    void Launch(unsigned kind, bool newEntity = false, int variant = 0);
    void RebuildTree();
    // Runs the mesh quality check with the mesh's limits and opens the failed-elements window.
    QWidget* OpenMeshQualityResults();
    // A simulated run with a fixed course, for the gallery and the status-window tests.
    KwSolverRun* SolverRun() const { return m_run; }
    // The real solver behind "Run analysis > Current analysis".
    KwSolverJob* SolverJob() const { return m_job; }
    // Runs the current analysis; false (with a message) when it cannot start.
    bool RunCurrentAnalysis();
    // The analysis the entity editors are opened for (Analysis > Current analysis, or an
    // analysis activated in the tree); the model's first at the start.
    CKwAnalysis* CurrentAnalysis() const { return m_current; }
    void SetCurrentAnalysis(CKwAnalysis* analysis);
    // Analysis > Solver Input Preview: what the current analysis's entities become in the
    // solver's input. Null without a current analysis.
    KwDeckPreview* OpenDeckPreview();

    // The mesher behind the view's remesh requests.
    KwMesherJob* MesherJob() const { return m_mesher; }
    // Remeshes the model with its mesh's settings, with progress and Cancel; false (with a
    // message) when the run cannot start.
    bool Remesh();

private:
    void buildMenus();
    void onTreeActivated(QTreeWidgetItem* item);
    void setLanguage(const QString& code);
    // False, with a message, while editors or point tables show values in the current units.
    bool unitsMayChange();
    void refreshCaptions();
    // Sets an action's text from the language service now and after every language switch.
    void caption(QAction* action, std::function<QString()> text);
    void caption(QAction* action, const char* key, const char* english);

    std::unique_ptr<CKwFEModel> m_model;
    std::unique_ptr<KW_UOM> m_units;
    std::unique_ptr<CKwiCKAddin> m_addin;
    CFMView* m_view = nullptr;
    QTreeWidget* m_tree = nullptr;
    QActionGroup* m_langGroup = nullptr;
    QActionGroup* m_analysisGroup = nullptr;
    CKwAnalysis* m_current = nullptr;
    int m_langListener = 0;
    KwSolverRun* m_run = nullptr;
    KwSolverJob* m_job = nullptr;
    void showSolverMessage(const QString& text);
    // After a static run: applied load against reactions, a warning when they differ.
    void showLoadBalance();
    std::vector<std::function<void()>> m_recaption;
    KwMesherJob* m_mesher = nullptr;
    QPointer<QProgressDialog> m_meshProgress;
    void onMesherFinished(bool ok);
};
