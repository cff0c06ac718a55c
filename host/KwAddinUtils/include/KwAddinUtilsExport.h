#pragma once
// Export macro of the host utility library (language texts, settings, logging, number helpers).
#if defined(_WIN32)
#  if defined(KWADDINUTILS_BUILD)
#    define KWADDINUTILS_EXPORT __declspec(dllexport)
#  else
#    define KWADDINUTILS_EXPORT __declspec(dllimport)
#  endif
#else
#  define KWADDINUTILS_EXPORT __attribute__((visibility("default")))
#endif
