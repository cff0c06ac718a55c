#include "CKwMFCDialog.h"
#include "KwStyle.h"

#include "CFMView.h"
#include "CKwFrameWnd.h"
#include "CKwSelectionHandler.h"
#include "KwLangText.h"
#include "KwMessageBox.h"
#include "KwMethodLogger.h"
#include "KwRegistry.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QLayout>
#include <QScreen>
#include <limits>

namespace {

const QString kPosX = QStringLiteral("PosX");
const QString kPosY = QStringLiteral("PosY");

// Squared distance from a rectangle to a screen area; 0 when they meet.
qint64 distanceSquared(const QRect& r, const QRect& screen)
{
    const qint64 dx = r.right() < screen.left() ? screen.left() - r.right()
                      : screen.right() < r.left() ? r.left() - screen.right()
                                                  : 0;
    const qint64 dy = r.bottom() < screen.top() ? screen.top() - r.bottom()
                      : screen.bottom() < r.top() ? r.top() - screen.bottom()
                                                  : 0;
    return dx * dx + dy * dy;
}

} // namespace

CKwMFCDialog::CKwMFCDialog(unsigned templateId, CFMView* view, QWidget* parent)
    : QDialog(parent ? parent : (view ? view->window() : nullptr)), m_nTemplateId(templateId),
      m_pFMView(view)
{
    setObjectName(QStringLiteral("KwDialog%1").arg(templateId));
    setProperty("templateId", templateId);
    // Dialog texts are short Latin labels: they need no glyph shaping beyond the font's
    // kerning, and shaping every label, edit and button took a fifth of an editor's opening.
    // Scripts that cannot be drawn without shaping are still shaped (Qt decides per script).
    QFont f = font();
    f.setStyleStrategy(QFont::PreferNoShaping);
    setFont(f);
}

CKwMFCDialog::~CKwMFCDialog()
{
    if (m_bInViewStack)
        LeaveViewDialogStack();
    if (m_bOwnerHeld)
        EndModal();
}

void CKwMFCDialog::SetFMView(CFMView* view) { m_pFMView = view; }

QString CKwMFCDialog::RegistrySectionFor(unsigned templateId)
{
    switch (templateId) {
    case 102: return QStringLiteral("MeshTable Dialog Settings");
    case 356: return QStringLiteral("Component Dialog Settings");
    case 364: return QStringLiteral("Mat Orientation Dialog Settings");
    case 1206: return QStringLiteral("FEModel Dialog Settings");
    default: return QString();
    }
}

void CKwMFCDialog::SaveToRegistry()
{
    KW_LOG_METHOD("CKwMFCDialog::SaveToRegistry");
    const QRect r = frameGeometry();
    const QString section = RegistrySectionFor(m_nTemplateId);
    KwWriteToRegistryCurrentUser(section, kPosX, r.left());
    KwWriteToRegistryCurrentUser(section, kPosY, r.top());
}

void CKwMFCDialog::RestorePlacement()
{
    const QString section = RegistrySectionFor(m_nTemplateId);
    int x = KwReadRegistryCurrentUser(section, kPosX, 0);
    int y = KwReadRegistryCurrentUser(section, kPosY, 0);
    const QSize size = frameGeometry().size().isValid() ? frameGeometry().size() : sizeHint();
    const QRect placed(QPoint(x, y), size);
    const QList<QScreen*> screens = QGuiApplication::screens();
    bool onScreen = false;
    for (const QScreen* s : screens)
        if (s->geometry().intersects(placed))
            onScreen = true;
    if (!onScreen && !screens.isEmpty()) {
        const QScreen* nearest = nullptr;
        qint64 best = std::numeric_limits<qint64>::max();
        for (const QScreen* s : screens) {
            const qint64 d = distanceSquared(placed, s->geometry());
            if (d < best) {
                best = d;
                nearest = s;
            }
        }
        x = nearest->geometry().left();
        y = nearest->geometry().top();
    }
    move(x, y);
}

void CKwMFCDialog::ensureInitialised()
{
    if (m_bInitialised)
        return;
    m_bInitialised = true;
    KwStyle::ApplyHouseLayout(this);
    OnInitDialog();
}

bool CKwMFCDialog::OnInitDialog()
{
    SetTextToCurrentLang();
    SizeAndPlace();
    return true;
}

void CKwMFCDialog::SizeAndPlace()
{
    // A template without a size of its own takes the size its texts need; a sized one keeps it.
    // Sizing to the content keeps a window within two thirds of the screen; a tall dialog
    // still gets the least its layout needs rather than squeezed controls.
    if (!testAttribute(Qt::WA_Resized)) {
        adjustSize();
        if (layout() && layout()->sizeConstraint() != QLayout::SetFixedSize)
            resize(size().expandedTo(minimumSizeHint()));
    }
    RestorePlacement();
}

int CKwMFCDialog::DoModal()
{
    m_bModal = 1;
    ensureInitialised();
    const int r = exec();
    return r == QDialog::Accepted ? KwMB::IDOK : KwMB::IDCANCEL;
}

bool CKwMFCDialog::Create()
{
    m_bModal = 0;
    // The window's lifetime ends with DestroyWindow; the object follows it.
    setAttribute(Qt::WA_DeleteOnClose, false);
    ensureInitialised();
    return true;
}

void CKwMFCDialog::DestroyWindow()
{
    if (m_bDestroyed)
        return;
    m_bDestroyed = true;
    hide();
    if (!m_bModal)
        deleteLater();
}

void CKwMFCDialog::EnterViewDialogStack()
{
    if (m_bInViewStack || !m_pFMView)
        return;
    m_pFMView->AddOpenDialog(this);
    m_bInViewStack = true;
}

void CKwMFCDialog::LeaveViewDialogStack()
{
    if (!m_bInViewStack)
        return;
    m_bInViewStack = false;
    CFMView* view = m_pFMView.data();
    if (!view)
        return;
    view->LeaveDialogStack(this);
    if (view->GetOpenDialogCount() > 0) {
        // The dialog underneath takes the picks again and comes back into sight.
        if (auto* below = qobject_cast<CKwMFCDialog*>(view->GetOpenDialog())) {
            if (CKwSelectionHandler* h = view->GetSelectionHandler())
                h->ActivateDialog(below);
            below->show();
            below->OnReactivatedByView();
        }
    }
}

bool CKwMFCDialog::RefuseWhileSolving()
{
    CFMView* view = m_pFMView.data();
    if (!view || !view->IsSolvraRunning())
        return false;
    view->ShowBubbleToolTipError(
        KwErrText("General", "SolvraRunning2",
                  "Changes to the FEA model are not allowed while the Solvra Solution is "
                  "running."),
        0);
    return true;
}

void CKwMFCDialog::OnOK()
{
    KW_LOG_METHOD("CKwMFCDialog::OnOK");
    if (RefuseWhileSolving())
        return;
    SaveToRegistry();
    if (!m_bStayOpen) {
        LeaveViewDialogStack();
        if (CFMView* v = m_pFMView.data())
            v->CreateResultToolbarIfPlotDispalyed();
        EndModal();
        if (m_bModal)
            QDialog::done(QDialog::Accepted);
        else
            DestroyWindow();
    } else if (m_formFlag == 0 && !m_formKept.isEmpty()) {
        ToggleForm();
    }
}

void CKwMFCDialog::OnCancel()
{
    KW_LOG_METHOD("CKwMFCDialog::OnCancel");
    LeaveViewDialogStack();
    if (CFMView* v = m_pFMView.data())
        v->CreateResultToolbarIfPlotDispalyed();
    EndModal();
    SaveToRegistry();
    if (!m_bStayOpen) {
        if (m_bModal)
            QDialog::done(QDialog::Rejected);
        else
            DestroyWindow();
    }
}

void CKwMFCDialog::EndModal()
{
    KW_LOG_METHOD("CKwMFCDialog::EndModal");
    if (!m_bOwnerHeld)
        return;
    if (CFMView* v = m_pFMView.data())
        if (CKwFrameWnd* f = v->GetFrameWnd())
            f->EndModalState();
    m_bOwnerHeld = 0;
}

void CKwMFCDialog::HoldOwner()
{
    if (m_bOwnerHeld)
        return;
    CFMView* v = m_pFMView.data();
    CKwFrameWnd* f = v ? v->GetFrameWnd() : nullptr;
    if (!f)
        return;
    f->BeginModalState();
    m_bOwnerHeld = 1;
}

bool CKwMFCDialog::GetWindowRectangle(int selector, QRect* rect) const
{
    if (selector != 0 || !rect)
        return false;
    *rect = m_formFlag ? frameGeometry() : m_storedRect;
    return true;
}

void CKwMFCDialog::SetFormToggle(const QList<FormPlacement>& kept, QWidget* toggle,
                                 QSize shortSize, QSize longSize)
{
    m_formKept = kept.mid(0, 4);
    m_formToggle = toggle;
    m_formShortSize = shortSize;
    m_formLongSize = longSize;
    m_storedRect = QRect(frameGeometry().topLeft(),
                         longSize.isValid() ? longSize : frameGeometry().size());
}

int CKwMFCDialog::ToggleForm()
{
    // Flag 0 is the form after construction; the first toggle brings back whatever an earlier
    // toggle hid and moves to the other form, the next one hides everything but the kept
    // controls again. A null rectangle or size leaves that placement to the dialog's layout.
    // While in form 0 the dialog reports the rectangle it had in the other form, kept here as
    // it leaves that form.
    const bool leavingFirstForm = m_formFlag == 0;
    if (!leavingFirstForm)
        m_storedRect = frameGeometry();
    for (const FormPlacement& p : std::as_const(m_formKept)) {
        const QRect& target = leavingFirstForm ? p.longForm : p.shortForm;
        if (p.control && !target.isNull())
            p.control->setGeometry(target);
    }
    if (const QSize size = leavingFirstForm ? m_formLongSize : m_formShortSize; size.isValid())
        resize(size);
    if (leavingFirstForm) {
        for (const auto& w : std::as_const(m_hiddenChildren))
            if (w)
                w->show();
        m_hiddenChildren.clear();
    } else {
        m_hiddenChildren.clear();
        const auto children = findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        for (QWidget* c : children) {
            if (!c->isVisibleTo(this) || c->isWindow() || c == m_formToggle)
                continue;
            bool kept = false;
            for (const FormPlacement& p : std::as_const(m_formKept))
                kept = kept || p.control == c;
            if (kept)
                continue;
            c->hide();
            m_hiddenChildren.append(c);
        }
    }
    // A laid-out dialog takes the size of what is now shown, at once rather than on the next
    // turn of the event loop, so callers and the window rectangle see the new form.
    if (QLayout* l = layout()) {
        l->activate();
        if (l->sizeConstraint() != QLayout::SetFixedSize && !m_formShortSize.isValid())
            adjustSize();
    }
    m_formFlag = leavingFirstForm ? 1 : 0;
    return m_formFlag;
}

void CKwMFCDialog::accept() { OnOK(); }

void CKwMFCDialog::reject() { OnCancel(); }

void CKwMFCDialog::closeEvent(QCloseEvent* event)
{
    if (m_bDestroyed) {
        event->accept();
        return;
    }
    // The title bar's close button is Cancel.
    OnCancel();
    if (!m_bDestroyed && isVisible())
        event->ignore();
    else
        event->accept();
}
