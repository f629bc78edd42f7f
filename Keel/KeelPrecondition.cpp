#include "Keel/KeelPrecondition.h"

#include <cstdio>
#include <cstdlib>

namespace keel_detail {

void preconditionFailure(const char* message, const char* file, int line,
                         const char* function) noexcept {
  std::fprintf(stderr, "Precondition failed: %s\n  in %s (%s:%d)\n", message, function, file, line);
  std::fflush(stderr);
  std::abort();
}

}  // namespace keel_detail
