#pragma once
// Export macro of the dialog library: only the C entry points and the exported dialog classes
// are visible outside it.
#if defined(_WIN32)
#  if defined(KWMFCUI_BUILD)
#    define KWMFCUI_EXPORT __declspec(dllexport)
#  else
#    define KWMFCUI_EXPORT __declspec(dllimport)
#  endif
#else
#  define KWMFCUI_EXPORT __attribute__((visibility("default")))
#endif
