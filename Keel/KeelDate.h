// KeelDate: a platform instant, seconds since 1970-01-01T00:00:00Z as a double.
#pragma once

#include <chrono>

using KeelDate = std::chrono::time_point<std::chrono::system_clock, std::chrono::duration<double>>;

// The current platform instant.
inline KeelDate keelNow() {
  return std::chrono::time_point_cast<KeelDate::duration>(std::chrono::system_clock::now());
}
