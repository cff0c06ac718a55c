#pragma once
// The module-wide windows a host drives by dialog id through CreateKwDialog, DeleteKwDialog
// and CallKwDialogFunction: 41 the nonlinear status window, 42 the transient status window,
// 89 the mesh convergence plot (also opened by launch kind 89).
#include <cstdint>

class CFMView;
class CKwMFCUIMeshConvergencePlot;

namespace KwStatusWindows {
void Create(std::uint32_t id);
void Delete(std::uint32_t id);
std::int32_t Call(std::uint32_t id, std::uint32_t function, const wchar_t* text,
                  std::int32_t value, CFMView* view, void* data);

// Launch kind 89: the one convergence plot, created on `view` the first time and reused
// thereafter; a plot whose window function 1 destroyed gets its window back.
CKwMFCUIMeshConvergencePlot* ConvergencePlotFor(CFMView* view);
} // namespace KwStatusWindows
