#pragma once
// The module object: one per loaded library. It gives the module its own name for message
// boxes, makes sure its resources are registered, and dispatches launch requests.
#include "KwMFCUIExport.h"

#include <QString>

struct DialogLaunchRequest;

class KWMFCUI_EXPORT CKwMFCUIApp
{
public:
    // Runs once, as soon as an application object exists. Always succeeds.
    bool InitInstance();
    bool IsInitialised() const { return m_initialised; }

    // The product's display name: caption of the module's message boxes.
    static QString ProductDisplayName();

    // Routes one request to its dialog.
    void LaunchDialog(DialogLaunchRequest* request);

    static CKwMFCUIApp& Instance();

private:
    bool m_initialised = false;
};

// Entered first by every exported entry: initialises the module on first use.
class KwModuleScope
{
public:
    KwModuleScope();
    KwModuleScope(const KwModuleScope&) = delete;
    KwModuleScope& operator=(const KwModuleScope&) = delete;
    // False when no application object exists; the entries then do nothing.
    bool IsUsable() const { return m_usable; }

private:
    bool m_usable;
};
