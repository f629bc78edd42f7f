#include "Quanda/FoundationAdapting/QuandaDurationDecomposition.h"

#include <cmath>

#include "Quanda/FoundationAdapting/QuandaCivilDayCountPrivate.h"

namespace {

using Settings = QuandaDurationFormatSettings;
using Unit = Settings::Unit;
using quanda_detail::daysFromCivil;

// Every unit, largest first, with its fixed length in seconds (0 for the calendar units).
struct UnitLength {
  Unit unit;
  std::int64_t seconds;
};
constexpr std::array<UnitLength, 7> units{{
    {Unit::year, 0},
    {Unit::month, 0},
    {Unit::weekOfMonth, 604800},
    {Unit::day, 86400},
    {Unit::hour, 3600},
    {Unit::minute, 60},
    {Unit::second, 1},
}};

constexpr std::uint32_t defaultAllowedUnits = Unit::year | Unit::month | Unit::weekOfMonth |
                                              Unit::day | Unit::hour | Unit::minute | Unit::second;

constexpr std::int64_t referenceYear = 2001;

// The largest count n >= 0 with begins(n) <= endDay, for a day count begins that grows with n;
// guess is a close estimate of it.
template <class Begins>
std::int64_t lastStartingBefore(std::int64_t guess, std::int64_t endDay, Begins begins) {
  std::int64_t count = guess < 0 ? 0 : guess;
  while (count > 0 && begins(count) > endDay) --count;
  while (begins(count + 1) <= endDay) ++count;
  return count;
}

}  // namespace

std::optional<QuandaDurationDecomposition> decomposeDuration(
    double seconds, const QuandaDurationFormatSettings& settings) noexcept {
  // 2^63 seconds and beyond do not fit the count; NaN fails the comparison too.
  if (!(std::fabs(seconds) < 9223372036854775808.0)) return std::nullopt;
  std::int64_t remaining = static_cast<std::int64_t>(std::floor(std::fabs(seconds)));

  const std::uint32_t allowed = settings.allowedUnits.value_or(0) & defaultAllowedUnits;
  const std::uint32_t shownUnits = allowed == 0 ? defaultAllowedUnits : allowed;

  // The amount of every allowed unit, largest first. Years and months step through the calendar
  // from the reference date; what is left after them is counted in fixed lengths.
  std::array<QuandaDurationDecomposition::Piece, 7> amounts{};
  std::size_t allowedCount = 0;
  const std::int64_t referenceDay = daysFromCivil(referenceYear, 1, 1);
  const std::int64_t endDay = referenceDay + remaining / 86400;
  std::int64_t months = 0;  // whole months from the reference date taken so far
  const auto monthBegins = [&](std::int64_t count) {
    return daysFromCivil(referenceYear + count / 12, static_cast<unsigned>(count % 12) + 1, 1);
  };
  for (const UnitLength& unit : units) {
    if ((shownUnits & unit.unit) == 0) continue;
    std::int64_t amount = 0;
    if (unit.unit == Unit::year || unit.unit == Unit::month) {
      const std::int64_t step = unit.unit == Unit::year ? 12 : 1;
      const std::int64_t startDay = monthBegins(months);
      // 4800 months are 146097 days.
      const std::int64_t guess = (endDay - startDay) * 4800 / (146097 * step);
      amount = lastStartingBefore(
          guess, endDay, [&](std::int64_t count) { return monthBegins(months + count * step); });
      months += amount * step;
      remaining -= (monthBegins(months) - startDay) * 86400;
    } else {
      amount = remaining / unit.seconds;
      remaining -= amount * unit.seconds;
    }
    amounts[allowedCount++] = {unit.unit, amount};
  }

  // Which run of units is shown: from the first non-zero one (or the first, when padding), at
  // most maximumUnitCount of them, without their zeros unless padding.
  using Zero = Settings::ZeroFormattingBehavior;
  const bool positional = settings.unitsStyle == Settings::UnitsStyle::positional;
  const bool pads = settings.zeroFormattingBehavior == Zero::pad;
  const bool dropsMiddleZeros = !pads && !(positional && !settings.zeroFormattingBehavior);
  std::size_t first = 0;
  if (!pads) {
    while (first < allowedCount && amounts[first].amount == 0) ++first;
    if (first == allowedCount) first = allowedCount - 1;  // all zero: the smallest unit shows 0
  }
  std::size_t last = allowedCount;
  if (settings.maximumUnitCount && *settings.maximumUnitCount > 0 &&
      first + *settings.maximumUnitCount < last) {
    last = first + *settings.maximumUnitCount;
  }

  QuandaDurationDecomposition result;
  for (std::size_t index = first; index < last; ++index) {
    // The first unit is non-zero unless every unit is zero, when it alone shows 0.
    if (dropsMiddleZeros && amounts[index].amount == 0 && index != first) continue;
    result.storage[result.count++] = amounts[index];
    if (amounts[index].amount != 0) result.isNegative = seconds < 0;
  }
  return result;
}
