#include "KwStatusWindows.h"

// The status windows and the convergence plot are not part of this build yet: every id is
// unknown, which the entries answer by doing nothing.
void KwStatusWindows::Create(std::uint32_t) {}
void KwStatusWindows::Delete(std::uint32_t) {}
std::int32_t KwStatusWindows::Call(std::uint32_t, std::uint32_t, const wchar_t*, std::int32_t,
                                   CFMView*, void*)
{
    return 0;
}
