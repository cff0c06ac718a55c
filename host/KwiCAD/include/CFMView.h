#pragma once
// The model view of the host: draws the model, keeps the stack of dialogs open on it, the
// result toolbar and the active plot, shows bubble tips, and knows whether the solver runs.
#include "KwViewCamera.h"
#include "KwViewDisplay.h"
#include "KwiCADExport.h"

#include <QImage>
#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <memory>
#include <vector>

class CKwAnalysis;
class CKwFEModel;
class CKwFrameWnd;
class CKwPlot;
class CKwSelectionHandler;
class CKwUIEntity;
class KW_UOM;
class QLabel;
struct KwViewState;

class KWICAD_EXPORT CFMView : public QWidget
{
    Q_OBJECT
public:
    enum BubbleKind { BubbleNone = 0, BubbleError = 1, BubbleWarning = 2 };

    explicit CFMView(CKwFEModel* model = nullptr, QWidget* parent = nullptr);
    ~CFMView() override;

    CKwFEModel* GetModel() const { return m_model; }
    void SetModel(CKwFEModel* model);

    // --- open dialogs ---
    // Puts a dialog on top of the view's open-dialog list and counts it.
    void AddOpenDialog(QWidget* dialog);
    // The topmost open dialog, or nullptr.
    QWidget* GetOpenDialog() const;
    QList<QWidget*> GetOpenDialogs() const;
    int GetOpenDialogCount() const { return m_openCount; }
    bool HasActiveDialogMark() const { return m_activeMark; }
    // A dialog leaves the stack: it is taken off the list and the count goes down; at zero the
    // active-dialog mark is cleared.
    void LeaveDialogStack(QWidget* dialog);

    // --- result toolbar ---
    QWidget* GetResultToolbar() const { return m_resultToolbar.data(); }
    bool IsResultToolbar(const QWidget* w) const;
    void DestroyResultToolbar();
    // Re-creates the toolbar when the active plot is displayed and none exists.
    void CreateResultToolbarIfPlotDispalyed();

    // --- results and plots ---
    CKwPlot* GetActivePlot() const { return m_activePlot; }
    void SetActivePlot(CKwPlot* plot) { m_activePlot = plot; }
    void ClearResultDisplay(CKwAnalysis* analysis);
    int GetClearResultDisplayCount() const { return m_clearCount; }
    CKwAnalysis* GetLastClearedAnalysis() const { return m_lastCleared; }

    // --- solver ---
    bool IsSolvraRunning() const { return m_solverRunning; }
    void SetSolvraRunning(bool running);

    // --- bubble tips ---
    void ShowBubbleToolTipError(const QString& text, int flags);
    void ShowBubbleToolTipWarning(const QString& text, int flags);
    QString GetLastBubbleText() const { return m_lastBubbleText; }
    BubbleKind GetLastBubbleKind() const { return m_lastBubbleKind; }
    int GetBubbleCount() const { return m_bubbleCount; }
    void ClearBubbleRecord();

    // --- parts the dialogs use ---
    CKwFrameWnd* GetFrameWnd() const { return m_frame.get(); }
    void SetFrameWindow(QWidget* window);
    KW_UOM* GetUnitHolder() const { return m_units; }
    // The analysis the host has made current (its editors work for it); null when none. The
    // host clears it before the analysis is deleted.
    CKwAnalysis* GetCurrentAnalysis() const { return m_currentAnalysis; }
    void SetCurrentAnalysis(CKwAnalysis* analysis) { m_currentAnalysis = analysis; }
    void SetUnitHolder(KW_UOM* units) { m_units = units; }
    CKwSelectionHandler* GetSelectionHandler() const { return m_selection.get(); }
    bool GetShowIDs() const { return m_showIds; }
    void SetShowIDs(bool on) { m_showIds = on; }
    void HideAllCoordinateSystem();
    bool AreCoordinateSystemsShown() const { return m_coordSystemsShown; }
    void ReDraw();
    int GetRedrawCount() const { return m_redrawCount; }
    // Option pages suspend redraw while they apply a change and redraw once at the end.
    void SetRedrawSuspended(bool on) { m_redrawSuspended = on; }
    bool IsRedrawSuspended() const { return m_redrawSuspended; }

    // --- body visibility ---
    enum BodyType : unsigned { BodyStructuralMembers = 0x1, BodySolids = 0x2 };
    // hide non-zero hides the bodies of the given types, 0 shows them again.
    void HideBodies(unsigned bodyTypes, int hide);
    bool AreBodiesHidden(unsigned bodyType) const { return (m_hiddenBodies & bodyType) != 0; }

    // --- picking ---
    // Entities drawn highlighted (the open editor's selection).
    void SetHighlightedEntities(const QList<CKwUIEntity*>& entities);
    QList<CKwUIEntity*> GetHighlightedEntities() const { return m_highlighted; }
    // The geometry under a point of the view that the active filter admits (vertices before
    // edges before faces), or nullptr.
    CKwUIEntity* EntityAt(const QPointF& pos) const;
    // Where an entity is drawn (its centre), for scripted picks; invalid when not drawn.
    QPointF ScreenPointOf(const CKwUIEntity* entity) const;
    // Sends a pick (or, with drop, a drop) of these entities to the dialog that takes picks.
    // Returns the dialog's result, 0 when nobody took it.
    long SendPickEvent(const QList<CKwUIEntity*>& entities, bool drop);

    // --- mesh highlighting ---
    enum MeshHighlight { HighlightNodes = 0, HighlightElements = 1 };
    // Draws these nodes or elements (by id) highlighted; replaces the earlier set of the kind.
    void SetHighlightedMesh(MeshHighlight kind, std::vector<int> ids);
    const std::vector<int>& GetHighlightedMesh(MeshHighlight kind) const
    {
        return m_meshHighlight[kind == HighlightNodes ? 0 : 1];
    }
    void ClearMeshHighlight();

    // --- result display and direction marks ---
    // What the plot editor wants shown; an inactive display shows the plain model.
    void SetResultDisplay(const KwResultDisplay& display);
    const KwResultDisplay& GetResultDisplay() const { return m_resultDisplay; }
    // Shell normals and beam directions of the mesh tools.
    void SetDirectionDisplay(const KwDirectionDisplay& display);
    const KwDirectionDisplay& GetDirectionDisplay() const { return m_directionDisplay; }

    // --- number fields ---
    // The integer in `text` (blanks allowed around it); MissingInteger when it is not one.
    static int GetIntegerFromString(const QString& text);
    // The number in `text` (blanks allowed); MissingDouble when it is not one. With `convert`
    // non-zero the value is taken as shown in `units` and returned internal.
    static double GetDoubleFromString(const KW_UOM* units, const QString& text, int unitType,
                                      int convert);
    // The view's check of a number field of a unit type: one finite number (blanks around it
    // allowed, the locale's decimal separator too). Lengths are at most LargestLength in
    // magnitude; every other unit type takes any such number.
    static bool IsValidNumberString(const QString& text, int unitType);
    static constexpr double LargestLength = 1e15;

    // --- remeshing ---
    // Asks the host to remesh the model with the mesh's current settings (the mesh settings
    // dialog's Run). The host answers with meshReplaced or a message; it refuses while the
    // solver runs.
    void RequestRemesh() { Q_EMIT remeshRequested(); }
    // The host has put a new mesh into the model.
    void NotifyMeshReplaced() { Q_EMIT meshReplaced(); }

    // --- camera and drawing ---
    // Looks from a side (KwViewCamera::StandardView) and frames the model.
    void SetStandardView(int view);
    // Frames the whole model; the view frames it again when it is resized until the user turns,
    // pans or zooms.
    void FitAll();
    KwViewCamera& Camera();
    const KwViewCamera& Camera() const;
    // Element edges over the shaded surfaces (feature edges are always drawn).
    void SetShowMeshEdges(bool on);
    bool GetShowMeshEdges() const;
    // Light interpolated over the nodes instead of one shade per facet.
    void SetSmoothShading(bool on);
    bool GetSmoothShading() const;
    // The picture the view paints at its size (model, marks, legend and triad).
    QImage RenderFrame();
    // The frame of a running animation (0 when none runs).
    int GetAnimationFrame() const;
    bool IsAnimating() const;
    // Forgets what was worked out of the mesh (skin, edges, pick buffers): the mesh changed.
    void DropMeshCaches();

Q_SIGNALS:
    void remeshRequested();
    void meshReplaced();
    void solverRunningChanged(bool running);
    void openDialogsChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    // Left click picks, right click or Ctrl+click drops; Escape resets the selection.
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    // Left drag turns, middle or Shift+left drag pans, the wheel zooms about the cursor.
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void showBubble(const QString& text, BubbleKind kind);

    CKwFEModel* m_model;
    QList<QPointer<QWidget>> m_openDialogs;
    int m_openCount = 0;
    bool m_activeMark = false;
    QPointer<QWidget> m_resultToolbar;
    CKwPlot* m_activePlot = nullptr;
    int m_clearCount = 0;
    CKwAnalysis* m_lastCleared = nullptr;
    CKwAnalysis* m_currentAnalysis = nullptr;
    bool m_solverRunning = false;
    QString m_lastBubbleText;
    BubbleKind m_lastBubbleKind = BubbleNone;
    int m_bubbleCount = 0;
    QPointer<QLabel> m_bubble;
    std::unique_ptr<CKwFrameWnd> m_frame;
    std::unique_ptr<CKwSelectionHandler> m_selection;
    KW_UOM* m_units = nullptr;
    bool m_showIds = false;
    bool m_coordSystemsShown = true;
    int m_redrawCount = 0;
    bool m_redrawSuspended = false;
    unsigned m_hiddenBodies = 0;
    QList<CKwUIEntity*> m_highlighted;
    std::vector<int> m_meshHighlight[2];
    KwResultDisplay m_resultDisplay;
    KwDirectionDisplay m_directionDisplay;
    // Camera, cached scene, pick buffers, drag and animation state.
    std::unique_ptr<KwViewState> m_view3d;
};
