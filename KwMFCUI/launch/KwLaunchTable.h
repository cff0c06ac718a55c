#pragma once
// The kind table of LaunchDialog: for every known dialog kind, how it opens, which factory
// builds it and the kind's own condition. A row without a factory names a dialog this build
// does not have; such kinds show the "not available" message as unknown kinds do.
#include <cstdint>

class CFMView;
class CKwAnalysis;
class CKwMFCDialog;
class KW_UOM;

// What a factory gets: the request's fields with the unit system already chosen.
struct KwLaunchArgs
{
    std::uint32_t kind;
    std::uint32_t option;
    void* object;
    CFMView* view;
    CKwAnalysis* analysis;
    void* context;
    void* extra;
    KW_UOM* units;
    bool createHidden;
};

enum class KwLaunchHow {
    Modeless,          // created, then the common ending records the kind and shows it
    ModelessHoldOwner, // created, shown at once whatever createHidden says, owner held
    Modal,             // run modally, deleted when it closes
    Ignored,           // accepted and ignored
    Special,           // the factory does everything (the module's one window of a kind, or
                       // no window at all); nothing of the common ending applies
    Message,           // answered before the view is prepared (82, 83); the factory does it
};

// Builds the dialog (construct, then Create for modeless kinds) and returns it. May return
// nullptr when there is nothing to open (the request's object is not what the kind needs) or
// when the kind opens no window of its own and has done its work.
using KwDialogFactory = CKwMFCDialog* (*)(const KwLaunchArgs&);

// A kind's own condition, asked once the view is prepared and before the factory. false ends
// the request there: the check has already said or done what the kind needs instead.
using KwLaunchCheck = bool (*)(const KwLaunchArgs&);

struct KwLaunchEntry
{
    std::uint32_t kind;
    const char* className;
    // The template the dialog is built on; the dispatch checks it against the dialog.
    std::uint32_t templateId;
    KwLaunchHow how;
    KwDialogFactory factory;
    KwLaunchCheck check = nullptr;
    // The kind shows results itself: opening it leaves the view's result display alone.
    bool keepsResultDisplay = false;
};

// The row of a kind, or nullptr for a kind that is not in the table.
const KwLaunchEntry* KwFindLaunchEntry(std::uint32_t kind);
