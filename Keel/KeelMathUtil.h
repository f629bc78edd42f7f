// KeelMathUtil: rounding a double to a multiple of a step (the library passes steps such as 60,
// 3600 and 86400 seconds). Halves round away from zero, as std::round does.
#pragma once

#include <cmath>

class KeelMathUtil {
 public:
  KeelMathUtil() = delete;

  static double roundTo(double subject, double nearest) {
    return std::round(subject / nearest) * nearest;
  }
  static double floor(double subject, double toNearest) {
    return std::floor(subject / toNearest) * toNearest;
  }
  static double ceil(double subject, double toNearest) {
    return std::ceil(subject / toNearest) * toNearest;
  }
};
