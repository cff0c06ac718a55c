#pragma once
// Shared test support: the application object, isolated settings, answering modal boxes,
// and a host view with an add-in, as a real host would set them up.
#include "KwMFCUIEntry.h"

#include <QMessageBox>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

class CFMView;
class CKwFEModel;
class CKwiCKAddin;
class KW_UOM;
class QWidget;

namespace kwtest {

// Points the per-user settings at a fresh file of its own; call in SetUp.
void IsolateSettings();

// Answers every modal window that appears while `action` runs: message boxes are answered
// with `button`, other modal dialogs are handed to `onDialog` (when given) and then rejected.
// Returns the texts of the message boxes seen, in order.
struct ModalRecord
{
    QStringList boxTexts;
    QStringList boxTitles;
    QStringList dialogTitles;
    int count() const { return static_cast<int>(boxTexts.size() + dialogTitles.size()); }
};
ModalRecord AnswerModals(const std::function<void()>& action,
                         QMessageBox::StandardButton button = QMessageBox::Ok,
                         const std::function<void(QWidget*)>& onDialog = {});

// Visible top-level windows other than those given.
QList<QWidget*> VisibleTopLevels();
// Closes and deletes every top-level window (between tests).
void CloseAllWindows();

// Captions of `root`'s visible texts that did not pass through the language service while
// the pseudo-language is active (labels, buttons, group boxes, window title). Controls that
// show data carry the property kwData and are skipped; a window whose title is data (the
// product name of message boxes) carries kwDataTitle.
QStringList UntranslatedCaptions(QWidget* root);

// A host as a real one sets up: sample model, a frame window holding the view (with units),
// add-in in TheApplication.
struct Host
{
    Host();
    ~Host();
    std::unique_ptr<QWidget> frame;
    std::unique_ptr<CKwFEModel> model;
    std::unique_ptr<KW_UOM> units;
    std::unique_ptr<CKwiCKAddin> addin;
    std::unique_ptr<CFMView> view;
    DialogLaunchRequest Request(unsigned kind) const;
};

} // namespace kwtest
