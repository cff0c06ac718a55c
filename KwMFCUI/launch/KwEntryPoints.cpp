// The four C entry points. Each enters the module scope first, and nothing thrown inside may
// cross into the host.
#include "CKwMFCUIApp.h"
#include "KwMFCUIEntry.h"
#include "KwStatusWindows.h"

#include <QDebug>
#include <exception>

namespace {
template <class F> auto guarded(const char* entry, F&& f) noexcept -> decltype(f())
{
    try {
        return f();
    } catch (const std::exception& e) {
        qWarning("%s: %s", entry, e.what());
    } catch (...) {
        qWarning("%s: unexpected failure", entry);
    }
    return decltype(f())();
}
} // namespace

extern "C" {

KWMFCUI_EXPORT void LaunchDialog(DialogLaunchRequest* request) noexcept
{
    guarded("LaunchDialog", [&] {
        KwModuleScope scope;
        if (scope.IsUsable())
            CKwMFCUIApp::Instance().LaunchDialog(request);
    });
}

KWMFCUI_EXPORT void CreateKwDialog(std::uint32_t id) noexcept
{
    guarded("CreateKwDialog", [&] {
        KwModuleScope scope;
        if (scope.IsUsable())
            KwStatusWindows::Create(id);
    });
}

KWMFCUI_EXPORT void DeleteKwDialog(std::uint32_t id) noexcept
{
    guarded("DeleteKwDialog", [&] {
        KwModuleScope scope;
        if (scope.IsUsable())
            KwStatusWindows::Delete(id);
    });
}

KWMFCUI_EXPORT std::int32_t CallKwDialogFunction(std::uint32_t id, std::uint32_t function,
                                                 const wchar_t* text, std::int32_t value,
                                                 CFMView* view, void* data) noexcept
{
    return guarded("CallKwDialogFunction", [&]() -> std::int32_t {
        KwModuleScope scope;
        if (!scope.IsUsable())
            return 0;
        return KwStatusWindows::Call(id, function, text, value, view, data);
    });
}

} // extern "C"
