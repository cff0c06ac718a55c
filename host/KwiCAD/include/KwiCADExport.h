#pragma once
// Export macro of the host model library.
#if defined(_WIN32)
#  if defined(KWICAD_BUILD)
#    define KWICAD_EXPORT __declspec(dllexport)
#  else
#    define KWICAD_EXPORT __declspec(dllimport)
#  endif
#else
#  define KWICAD_EXPORT __attribute__((visibility("default")))
#endif
