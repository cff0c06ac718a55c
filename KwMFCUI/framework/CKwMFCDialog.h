#pragma once
// Base of the module's dialogs: one class for modal and modeless use, placement remembered per
// user, OK and Cancel in one fixed order that also tells the host view, holding the owner frame
// while open, and a two-form toggle for dialogs with a short and a long form.
#include "CFMView.h"
#include "CKwDlgBase.h"
#include "KwMFCUIExport.h"

#include <QDialog>
#include <QList>
#include <QPointer>
#include <QRect>



class KWMFCUI_EXPORT CKwMFCDialog : public QDialog, public CKwDlgBase
{
    Q_OBJECT
public:
    CKwMFCDialog(unsigned templateId, CFMView* view = nullptr, QWidget* parent = nullptr);
    ~CKwMFCDialog() override;

    unsigned GetTemplateId() const { return m_nTemplateId; }
    CFMView* GetFMView() const { return m_pFMView.data(); }
    void SetFMView(CFMView* view);
    unsigned GetLaunchKind() const { return m_nLaunchKind; }
    void SetLaunchKind(unsigned kind) { m_nLaunchKind = kind; }
    bool IsModalDialog() const { return m_bModal != 0; }
    int GetStayOpen() const { return m_bStayOpen; }
    void SetStayOpen(int stayOpen) { m_bStayOpen = stayOpen; }
    bool IsOwnerHeld() const { return m_bOwnerHeld != 0; }
    // Set by a dialog that finds nothing to edit while it is built; the launcher then destroys
    // it instead of showing it.
    bool GetCloseAtOnce() const { return m_bCloseAtOnce; }

    // Runs the dialog modally; returns KwMB::IDOK or KwMB::IDCANCEL.
    int DoModal();
    // Creates the modeless window (initialised, not shown). The object deletes itself once its
    // window is destroyed.
    bool Create();
    // Destroys the window. A modeless dialog then deletes itself.
    void DestroyWindow();
    bool IsWindowDestroyed() const { return m_bDestroyed; }

    // The registry section that keeps this template's position.
    static QString RegistrySectionFor(unsigned templateId);
    void SaveToRegistry();
    void RestorePlacement();

    virtual void OnOK();
    virtual void OnCancel();
    void EndModal();
    // Puts the owner frame into its modal state until EndModal.
    void HoldOwner();

    // Selector 0 only: the window rectangle while the form flag is set, else the stored one.
    virtual bool GetWindowRectangle(int selector, QRect* rect) const;

    // Two-form toggle. `kept` are the controls that stay visible in both forms (up to
    // four), `toggle` the button that switches; the rectangles are the positions (in dialog
    // coordinates for controls, screen size for the dialog) of each control in the target form.
    // A dialog laid out by a layout passes null rectangles and sizes: the layout places the
    // kept controls and sizes the dialog to what each form shows.
    struct FormPlacement
    {
        QWidget* control;
        QRect shortForm;
        QRect longForm;
    };
    void SetFormToggle(const QList<FormPlacement>& kept, QWidget* toggle, QSize shortSize,
                       QSize longSize);
    // Switches forms; returns the new form flag.
    int ToggleForm();
    unsigned char GetFormFlag() const { return m_formFlag; }

    void SetTextToCurrentLang() override {}

protected:
    // Fills controls and captions; called once before the window is first shown.
    virtual bool OnInitDialog();
    // The second half of OnInitDialog, for dialogs that fill their controls in between: sizes
    // the window to what it shows (unless its template has a size of its own) and restores
    // its position.
    void SizeAndPlace();
    void SetCloseAtOnce(bool on) { m_bCloseAtOnce = on; }
    // While the solver runs the model must not change: shows the view's bubble and returns
    // true. Without a view, or with the solver idle, returns false.
    bool RefuseWhileSolving();
    // The editors put themselves on the view's dialog stack; see LeaveViewDialogStack.
    void EnterViewDialogStack();
    void LeaveViewDialogStack();
    bool IsInViewDialogStack() const { return m_bInViewStack; }
    // Called on the dialog below when the one above it leaves the view's stack and the view's
    // picks come back to it.
    virtual void OnReactivatedByView() {}

    void accept() override;
    void reject() override;
    void closeEvent(QCloseEvent* event) override;

private:
    void ensureInitialised();

    unsigned m_nTemplateId;
    QPointer<CFMView> m_pFMView;
    unsigned m_nLaunchKind = 0;
    int m_bModal = 0;
    int m_bStayOpen = 0;
    int m_bOwnerHeld = 0;
    bool m_bCloseAtOnce = false;
    bool m_bInitialised = false;
    bool m_bDestroyed = false;
    bool m_bInViewStack = false;
    unsigned char m_formFlag = 0;
    QList<QPointer<QWidget>> m_hiddenChildren;
    QRect m_storedRect;
    QList<FormPlacement> m_formKept;
    QPointer<QWidget> m_formToggle;
    QSize m_formShortSize;
    QSize m_formLongSize;
};
