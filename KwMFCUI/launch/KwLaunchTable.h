#pragma once
// The kind table of LaunchDialog: for every known dialog kind, how it opens and which factory
// builds it. A row without a factory names a dialog this build does not have; such kinds show
// the "not available" message as unknown kinds do.
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
    Modeless,        // created, then the common ending shows it
    ModelessHoldOwner, // created, shown at once whatever createHidden says, owner held
    Modal,           // run modally, deleted when it closes
    Ignored,         // accepted and ignored
    Special,         // handled by the dispatch itself (7, 26, 40, 82, 83, 89, ...)
};

// Builds the dialog (construct, then Create for modeless kinds). May return nullptr when
// there is nothing to open (the request's object is not what the kind needs).
using KwDialogFactory = CKwMFCDialog* (*)(const KwLaunchArgs&);

struct KwLaunchEntry
{
    std::uint32_t kind;
    const char* className;
    std::uint32_t templateId;
    KwLaunchHow how;
    KwDialogFactory factory;
};

// The row of a kind, or nullptr for a kind that is not in the table.
const KwLaunchEntry* KwFindLaunchEntry(std::uint32_t kind);
