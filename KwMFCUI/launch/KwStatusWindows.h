#pragma once
// The module-wide windows a host drives by dialog id through CreateKwDialog, DeleteKwDialog
// and CallKwDialogFunction.
#include <cstdint>

class CFMView;

namespace KwStatusWindows {
void Create(std::uint32_t id);
void Delete(std::uint32_t id);
std::int32_t Call(std::uint32_t id, std::uint32_t function, const wchar_t* text,
                  std::int32_t value, CFMView* view, void* data);
} // namespace KwStatusWindows
