// A tiny app built against the installed Quanda package, out of the library's tree.
#include <iostream>

#include "Keel/KeelResult.h"

namespace {

// Fallible work reports through KeelResult, as the library's own operations do.
KeelResult<int> checkedMonth(int month) {
  if (month < 1 || month > 12) {
    return KeelResult<int>("Month out of range", {{"month", month}}, "consumer/main",
                           "checkedMonth(_:)", __LINE__);
  }
  return month;
}

}  // namespace

int main() {
  const KeelResult<int> february = checkedMonth(2);
  const KeelResult<int> thirteenth = checkedMonth(13);
  if (!february || thirteenth) return 1;
  std::cout << "month " << february.value() << " accepted; month 13 refused: " << thirteenth.error()
            << '\n';
  return 0;
}
