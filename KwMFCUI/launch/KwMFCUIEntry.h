#pragma once
// The dialog library's C interface: the launch request, the message record, and the four
// entry points a host calls. Both records are laid out byte for byte as hosts fill them.
#include "KwMFCUIExport.h"

#include <cstddef>
#include <cstdint>

class CFMView;
class CKwAnalysis;
class KW_UOM;

struct DialogLaunchRequest
{
    std::uint32_t kind;       // dialog kind, 0..89
    std::uint32_t option;     // last constructor argument of kinds 1, 4, 12 and 34
    void* object;             // entity to edit, table (36), message record (82, 83); may be null
    CFMView* view;            // the host view; may be null
    void* reserved24;
    CKwAnalysis* analysis;    // analysis whose results are shown
    void* context;            // secondary object of kinds 0, 1, 7, 16, 17
    void* reserved48;
    void* extra;              // auxiliary data of kinds 3, 6, 23, 24, 45, 46, 54
    void* reserved64;
    KW_UOM* units;            // used only when the view has no unit holder
    void* reserved80;
    std::int32_t keepResults; // 0: close the view's result toolbar before opening
    std::int32_t createHidden; // non-zero: create a modeless dialog without showing it
};

struct MessageRequest
{
    const wchar_t* text;      // the message, zero-terminated
    void* reserved8;
    std::uint32_t buttons;    // 83: 0 OK, 1 Yes/No, 2 OK/Cancel; 82: first message code
    std::uint32_t code;       // 82: second message code
    std::uint32_t icon;       // 0 question, 1 information, 2 error, 3 and 4 warning
    std::uint32_t reserved28;
    std::uint32_t result;     // 83: the button that closed the box (0 OK .. 7 Close)
    std::uint32_t reserved36;
};

static_assert(offsetof(DialogLaunchRequest, kind) == 0);
static_assert(offsetof(DialogLaunchRequest, option) == 4);
static_assert(offsetof(DialogLaunchRequest, object) == 8);
static_assert(offsetof(DialogLaunchRequest, view) == 16);
static_assert(offsetof(DialogLaunchRequest, analysis) == 32);
static_assert(offsetof(DialogLaunchRequest, context) == 40);
static_assert(offsetof(DialogLaunchRequest, extra) == 56);
static_assert(offsetof(DialogLaunchRequest, units) == 72);
static_assert(offsetof(DialogLaunchRequest, keepResults) == 88);
static_assert(offsetof(DialogLaunchRequest, createHidden) == 92);
static_assert(sizeof(DialogLaunchRequest) == 96);
static_assert(offsetof(MessageRequest, text) == 0);
static_assert(offsetof(MessageRequest, buttons) == 16);
static_assert(offsetof(MessageRequest, code) == 20);
static_assert(offsetof(MessageRequest, icon) == 24);
static_assert(offsetof(MessageRequest, result) == 32);

extern "C" {
// Opens the dialog a request names. A null request does nothing.
KWMFCUI_EXPORT void LaunchDialog(DialogLaunchRequest* request) noexcept;
// Creates a module-wide status window by dialog id (41 nonlinear, 42 transient).
KWMFCUI_EXPORT void CreateKwDialog(std::uint32_t id) noexcept;
// Deletes a module-wide window by dialog id (41, 42, 89).
KWMFCUI_EXPORT void DeleteKwDialog(std::uint32_t id) noexcept;
// Calls a function of a module-wide window; returns 0 unless the function answers a value.
KWMFCUI_EXPORT std::int32_t CallKwDialogFunction(std::uint32_t id, std::uint32_t function,
                                                 const wchar_t* text, std::int32_t value,
                                                 CFMView* view, void* data) noexcept;
}
