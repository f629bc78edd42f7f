// A tiny app built against the installed Quanda package, out of the library's tree: it plans a
// weekly meeting with the library's values and prints them, so that linking proves the whole
// package (the library, its foundation and ICU, which writes fractional seconds).
#include <iostream>

#include "Quanda/Quanda.h"

int main() {
  const KeelResult<QuandaAbstractDate> start =
      QuandaAbstractDate::makeFromIso8601String("2024-02-29");
  const KeelResult<QuandaAbstractDate> refused =
      QuandaAbstractDate::makeFromIso8601String("2024-02-30");
  if (!start || refused) return 1;

  const auto time = QuandaAbstractRealTimeOfDay::make(9, 30, 15.25);
  if (!time) return 1;
  const QuandaAbstractDate nextWeek = start.value().addingDays(7);
  std::cout << "first meeting " << start.value() << " at " << time.value() << ", then " << nextWeek
            << " (" << nextWeek.dayOfWeek() << ")\n";
  std::cout << "refused: " << refused.error() << '\n';
  return 0;
}
