#pragma once
// The user's custom colours of the colour chooser, kept in the per-user settings from one use
// to the next. Sixteen 0x00BBGGRR values; unset slots are white.
#include "KwiCADExport.h"

#include <array>

using KwCustomColors = std::array<unsigned, 16>;

KWICAD_EXPORT KwCustomColors LoadCustomColors();
KWICAD_EXPORT void SaveCustomColors(const KwCustomColors& colors);
