#include "DateMaskTestSupport.h"

#include <algorithm>

#include "Quanda/DateMasks/QuandaDateRangeDateMask.h"
#include "Quanda/DateMasks/QuandaDateRangesDateMask.h"
#include "Quanda/DateMasks/QuandaDayCycleDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfWeekDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfWeeksDateMask.h"
#include "Quanda/DateMasks/QuandaEveryDayDateMask.h"
#include "Quanda/DateMasks/QuandaJunctionDateMask.h"
#include "Quanda/DateMasks/QuandaMonthCycleDateMask.h"
#include "Quanda/DateMasks/QuandaMonthsOfYearDateMask.h"
#include "Quanda/DateMasks/QuandaNotDateMask.h"
#include "Quanda/DateMasks/QuandaReverseDaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaReverseWeekdaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaReverseWeeksOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaWeekCycleDateMask.h"
#include "Quanda/DateMasks/QuandaWeekdaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaWeeksOfMonthDateMask.h"

namespace date_mask_test {
namespace {

constexpr std::uint32_t lastDay = 3652058;
using Mask = std::shared_ptr<const QuandaDateMasking>;

std::uint32_t noRestriction(QuandaDayOfGregorianWeek) { return 0; }

bool chance(std::mt19937_64& random, double probability) {
  return std::bernoulli_distribution(probability)(random);
}

std::set<QuandaDayOfGregorianWeek> randomDays(std::mt19937_64& random) {
  std::set<QuandaDayOfGregorianWeek> days;
  const double density = std::uniform_real_distribution<double>(0.0, 1.0)(random);
  for (auto day : allCases<QuandaDayOfGregorianWeek>) {
    if (chance(random, density)) days.insert(day);
  }
  return days;
}

// Mostly meaningful numbers, now and then ones that can never match.
std::set<std::uint8_t> randomNumbers(std::mt19937_64& random, unsigned meaningfulMax) {
  std::set<std::uint8_t> numbers;
  const double density = std::uniform_real_distribution<double>(0.0, 0.6)(random);
  for (unsigned value = 1; value <= meaningfulMax; ++value) {
    if (chance(random, density)) numbers.insert(static_cast<std::uint8_t>(value));
  }
  if (chance(random, 0.2)) numbers.insert(0);
  if (chance(random, 0.2)) numbers.insert(static_cast<std::uint8_t>(meaningfulMax + 1));
  if (chance(random, 0.1)) numbers.insert(200);
  if (chance(random, 0.05)) {
    for (unsigned value = 1; value <= meaningfulMax; ++value) {
      numbers.insert(static_cast<std::uint8_t>(value));
    }
  }
  return numbers;
}

std::vector<bool> randomPattern(std::mt19937_64& random) {
  std::uint32_t length = std::uniform_int_distribution<std::uint32_t>(1, 9)(random);
  if (chance(random, 0.1)) length = std::uniform_int_distribution<std::uint32_t>(60, 140)(random);
  std::vector<bool> pattern(length);
  const int shape = std::uniform_int_distribution<int>(0, 9)(random);
  for (std::uint32_t index = 0; index < length; ++index) {
    pattern[index] = shape == 0 ? false : shape == 1 ? true : chance(random, 0.4);
  }
  return pattern;
}

std::uint32_t randomDayNear(std::mt19937_64& random, std::uint32_t near, std::uint32_t spread) {
  const std::int64_t low = std::max<std::int64_t>(0, std::int64_t{near} - spread);
  const std::int64_t high = std::min<std::int64_t>(lastDay, std::int64_t{near} + spread);
  return static_cast<std::uint32_t>(std::uniform_int_distribution<std::int64_t>(low, high)(random));
}

bool contains(const std::set<QuandaDayOfGregorianWeek>& days, unsigned weekday) {
  return days.count(makeDayOfGregorianWeek(static_cast<std::uint8_t>(weekday))) != 0;
}
bool contains(const std::set<std::uint8_t>& numbers, unsigned value) {
  return value < 256 && numbers.count(static_cast<std::uint8_t>(value)) != 0;
}

// The week-cycle entry of a day, or nothing before the first residue.
std::function<std::uint32_t(QuandaDayOfGregorianWeek)> weekCycleStart(QuandaAbstractDate anchor,
                                                                      std::size_t length) {
  return [anchor, length](QuandaDayOfGregorianWeek first) {
    const std::int64_t residue = ReferenceDay::of(anchor).week(first) % std::int64_t(length);
    const std::int64_t start = 7 * residue - (7 - ordinal(first)) % 7;
    return static_cast<std::uint32_t>(std::max<std::int64_t>(0, start));
  };
}
bool weekEntry(const std::vector<bool>& weeks, QuandaAbstractDate anchor, const ReferenceDay& day,
               QuandaDayOfGregorianWeek first) {
  const std::int64_t n = static_cast<std::int64_t>(weeks.size());
  const std::int64_t residue = ReferenceDay::of(anchor).week(first) % n;
  return weeks[static_cast<std::size_t>((day.week(first) - residue) % n)];
}

MaskCase negationOf(const MaskCase& part) {
  return {std::make_shared<QuandaNotDateMask>(part.mask),
          [reference = part.reference](const ReferenceDay& day, QuandaDayOfGregorianWeek first) {
            return !reference(day, first);
          },
          part.firstDayWithAnswer};
}

// All of (any of) the parts; the domain starts where the last of theirs does.
MaskCase junctionOf(bool all, const std::vector<MaskCase>& parts) {
  std::vector<Mask> masks;
  for (const MaskCase& part : parts) masks.push_back(part.mask);
  return {all ? Mask(std::make_shared<QuandaAllOfDateMask>(masks))
              : Mask(std::make_shared<QuandaAnyOfDateMask>(masks)),
          [parts, all](const ReferenceDay& day, QuandaDayOfGregorianWeek first) {
            for (const auto& part : parts) {
              if (part.reference(day, first) != all) return !all;
            }
            return all;
          },
          [parts](QuandaDayOfGregorianWeek first) {
            std::uint32_t start = 0;
            for (const auto& part : parts) start = std::max(start, part.firstDayWithAnswer(first));
            return start;
          }};
}

}  // namespace

MaskCase randomMask(Kind kind, std::mt19937_64& random, std::uint32_t near, int depth) {
  switch (kind) {
    case Kind::everyDay:
      return {std::make_shared<QuandaEveryDayDateMask>(),
              [](const ReferenceDay&, QuandaDayOfGregorianWeek) { return true; }, noRestriction};
    case Kind::daysOfWeek: {
      const auto days = randomDays(random);
      return {std::make_shared<QuandaDaysOfWeekDateMask>(days),
              [days](const ReferenceDay& day, QuandaDayOfGregorianWeek) {
                return contains(days, day.weekday);
              },
              noRestriction};
    }
    case Kind::daysOfMonth:
    case Kind::reverseDaysOfMonth: {
      const auto numbers = randomNumbers(random, 31);
      const bool reverse = kind == Kind::reverseDaysOfMonth;
      const Mask mask = reverse ? Mask(std::make_shared<QuandaReverseDaysOfMonthDateMask>(numbers))
                                : Mask(std::make_shared<QuandaDaysOfMonthDateMask>(numbers));
      return {mask,
              [numbers, reverse](const ReferenceDay& day, QuandaDayOfGregorianWeek) {
                return contains(numbers, reverse ? day.monthLength - day.day + 1 : day.day);
              },
              noRestriction};
    }
    case Kind::weeksOfMonth:
    case Kind::reverseWeeksOfMonth:
    case Kind::weekdaysOfMonth:
    case Kind::reverseWeekdaysOfMonth: {
      const auto weeks = randomNumbers(random, 5);
      const bool reverse =
          kind == Kind::reverseWeeksOfMonth || kind == Kind::reverseWeekdaysOfMonth;
      const bool withDays = kind == Kind::weekdaysOfMonth || kind == Kind::reverseWeekdaysOfMonth;
      const auto days = withDays ? randomDays(random) : std::set<QuandaDayOfGregorianWeek>{};
      const Mask mask =
          kind == Kind::weeksOfMonth ? Mask(std::make_shared<QuandaWeeksOfMonthDateMask>(weeks))
          : kind == Kind::reverseWeeksOfMonth
              ? Mask(std::make_shared<QuandaReverseWeeksOfMonthDateMask>(weeks))
          : reverse ? Mask(std::make_shared<QuandaReverseWeekdaysOfMonthDateMask>(days, weeks))
                    : Mask(std::make_shared<QuandaWeekdaysOfMonthDateMask>(days, weeks));
      return {mask,
              [weeks, days, reverse, withDays](const ReferenceDay& day, QuandaDayOfGregorianWeek) {
                if (withDays && !contains(days, day.weekday)) return false;
                const unsigned week =
                    reverse ? (day.monthLength - day.day) / 7 + 1 : (day.day - 1) / 7 + 1;
                return contains(weeks, week);
              },
              noRestriction};
    }
    case Kind::dayCycle: {
      const auto days = randomPattern(random);
      const std::uint32_t anchor =
          chance(random, 0.2) ? std::uniform_int_distribution<std::uint32_t>(0, 300)(random)
                              : randomDayNear(random, near, 4000);
      return {std::make_shared<QuandaDayCycleDateMask>(anchor, days),
              [days, anchor](const ReferenceDay& day, QuandaDayOfGregorianWeek) {
                const std::int64_t n = static_cast<std::int64_t>(days.size());
                const std::int64_t residue = anchor % n;
                const std::int64_t index =
                    day.daysSinceDatum < residue ? 0 : (day.daysSinceDatum - residue) % n;
                return bool(days[static_cast<std::size_t>(index)]);
              },
              noRestriction};
    }
    case Kind::monthsOfYear: {
      const auto months = randomNumbers(random, 12);
      return {std::make_shared<QuandaMonthsOfYearDateMask>(months),
              [months](const ReferenceDay& day, QuandaDayOfGregorianWeek) {
                return contains(months, day.month);
              },
              noRestriction};
    }
    case Kind::monthCycle: {
      const auto months = randomPattern(random);
      const auto anchor = QuandaAbstractDate::makeFromDaysSinceDatum(
          chance(random, 0.2) ? std::uniform_int_distribution<std::uint32_t>(0, 3000)(random)
                              : randomDayNear(random, near, 8000));
      const std::int64_t anchorMonth = ReferenceDay::of(anchor).monthsSinceDatum;
      return {std::make_shared<QuandaMonthCycleDateMask>(anchor, months),
              [months, anchorMonth](const ReferenceDay& day, QuandaDayOfGregorianWeek) {
                const std::int64_t n = static_cast<std::int64_t>(months.size());
                const std::int64_t residue = anchorMonth % n;
                const std::int64_t index =
                    day.monthsSinceDatum < residue ? 0 : (day.monthsSinceDatum - residue) % n;
                return bool(months[static_cast<std::size_t>(index)]);
              },
              noRestriction};
    }
    case Kind::weekCycle:
    case Kind::daysOfWeeks: {
      const auto weeks = randomPattern(random);
      const auto anchor =
          QuandaAbstractDate::makeFromDaysSinceDatum(randomDayNear(random, near, 4000));
      const auto start = weekCycleStart(anchor, weeks.size());
      if (kind == Kind::weekCycle) {
        return {std::make_shared<QuandaWeekCycleDateMask>(anchor, weeks),
                [weeks, anchor](const ReferenceDay& day, QuandaDayOfGregorianWeek first) {
                  return weekEntry(weeks, anchor, day, first);
                },
                start};
      }
      const auto days = randomDays(random);
      return {std::make_shared<QuandaDaysOfWeeksDateMask>(anchor, days, weeks),
              [weeks, anchor, days](const ReferenceDay& day, QuandaDayOfGregorianWeek first) {
                return weekEntry(weeks, anchor, day, first) && contains(days, day.weekday);
              },
              start};
    }
    case Kind::dateRange: {
      const std::uint32_t a = randomDayNear(random, near, 400);
      const std::uint32_t b = chance(random, 0.2) ? a : randomDayNear(random, a, 60);
      const auto low = QuandaAbstractDate::makeFromDaysSinceDatum(a);
      const auto high = QuandaAbstractDate::makeFromDaysSinceDatum(b);
      const std::int64_t lo = std::min(a, b), hi = std::max(a, b);
      return {std::make_shared<QuandaDateRangeDateMask>(KeelDomain(low, high)),
              [lo, hi](const ReferenceDay& day, QuandaDayOfGregorianWeek) {
                return day.daysSinceDatum >= lo && day.daysSinceDatum <= hi;
              },
              noRestriction};
    }
    case Kind::dateRanges: {
      // Ranges given in random order, some overlapping, touching or repeated.
      const int count = std::uniform_int_distribution<int>(0, 6)(random);
      std::vector<KeelClosedRange<QuandaAbstractDate>> ranges;
      std::vector<std::pair<std::int64_t, std::int64_t>> bounds;
      for (int index = 0; index < count; ++index) {
        std::uint32_t low = randomDayNear(random, near, 300);
        if (!bounds.empty() && chance(random, 0.2))
          low = static_cast<std::uint32_t>(bounds.back().second + 1);
        const std::uint32_t high =
            std::min(lastDay, low + std::uniform_int_distribution<std::uint32_t>(0, 40)(random));
        ranges.emplace_back(QuandaAbstractDate::makeFromDaysSinceDatum(low),
                            QuandaAbstractDate::makeFromDaysSinceDatum(high));
        bounds.emplace_back(low, high);
        if (chance(random, 0.1)) {
          ranges.push_back(ranges.back());
          bounds.push_back(bounds.back());
        }
      }
      return {std::make_shared<QuandaDateRangesDateMask>(ranges),
              [bounds](const ReferenceDay& day, QuandaDayOfGregorianWeek) {
                return std::any_of(bounds.begin(), bounds.end(), [&](const auto& range) {
                  return day.daysSinceDatum >= range.first && day.daysSinceDatum <= range.second;
                });
              },
              noRestriction};
    }
    case Kind::allOf:
    case Kind::anyOf:
    case Kind::monthLocalCombination: {
      const bool monthLocal = kind == Kind::monthLocalCombination;
      const int junction = monthLocal            ? std::uniform_int_distribution<int>(0, 2)(random)
                           : kind == Kind::allOf ? 0
                                                 : 1;
      const int count = junction == 2 ? 1
                                      : std::uniform_int_distribution<int>(
                                            depth > 1 ? 1 : 0, monthLocal ? 4 : 3)(random);
      std::vector<MaskCase> parts;
      for (int index = 0; index < count; ++index) {
        Kind inner;
        if (monthLocal) {
          // Deeper levels only from the plain month-local kinds.
          const std::size_t kinds = std::size(monthLocalKinds) - (depth < 2 ? 0 : 1);
          inner = monthLocalKinds[std::uniform_int_distribution<std::size_t>(0, kinds - 1)(random)];
        } else {
          inner = depth < 1 && chance(random, 0.25)
                      ? (chance(random, 0.5) ? Kind::negation : Kind::anyOf)
                      : simpleKinds[std::uniform_int_distribution<std::size_t>(
                            0, std::size(simpleKinds) - 1)(random)];
        }
        parts.push_back(randomMask(inner, random, near, depth + 1));
      }
      if (junction == 2) return negationOf(parts[0]);
      return junctionOf(junction == 0, parts);
    }
    case Kind::negation: {
      const Kind inner = depth < 1 && chance(random, 0.3)
                             ? Kind::allOf
                             : simpleKinds[std::uniform_int_distribution<std::size_t>(
                                   0, std::size(simpleKinds) - 1)(random)];
      return negationOf(randomMask(inner, random, near, depth + 1));
    }
    case Kind::mixedTree: {
      // Up to four levels of all of and any of, one part in five negated, over every kind of
      // rule, month-local combinations included.
      const bool all = chance(random, 0.5);
      const int count = std::uniform_int_distribution<int>(1, 4)(random);
      std::vector<MaskCase> parts;
      for (int index = 0; index < count; ++index) {
        const std::size_t draw =
            std::uniform_int_distribution<std::size_t>(0, std::size(simpleKinds) + 2)(random);
        const Kind inner = draw < std::size(simpleKinds)    ? simpleKinds[draw]
                           : draw == std::size(simpleKinds) ? Kind::dateRanges
                           : draw == std::size(simpleKinds) + 1 || depth >= 3
                               ? Kind::monthLocalCombination
                               : Kind::mixedTree;
        MaskCase part = randomMask(inner, random, near, depth + 1);
        parts.push_back(chance(random, 0.2) ? negationOf(part) : part);
      }
      return junctionOf(all, parts);
    }
  }
  return randomMask(Kind::everyDay, random, near, depth);
}

}  // namespace date_mask_test
