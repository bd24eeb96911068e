// How the persistent arrays report misuse: one line on standard error, and execution goes on.
#ifndef CLS_REPORT_H
#define CLS_REPORT_H

#include <cstdio>

inline void cls_Report(const char* text) {
  std::fprintf(stderr, "%s\n", text);
}

#endif  // CLS_REPORT_H
