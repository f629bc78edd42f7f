#include "Quanda/DateMasks/QuandaOccurrences.h"

#include <algorithm>
#include <type_traits>
#include <utility>

#include "Keel/KeelPrecondition.h"
#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/FoundationAdapting/QuandaCalendarAdapting.h"

namespace {

constexpr std::string_view path = "Quanda/DateMasks/QuandaOccurrences";

// The margin, in days, around an instant's wall date within which the occurrence next to it is
// sought: a date's occurrence lies on its own wall date or, moved by a gap, on the next one.
constexpr std::uint32_t searchMargin = 2;

// The result, or its failure wrapped once with the operation's signature text
// ("next(count:date:calendarAdapter:)") and arguments, made only then.
template <class T, class Position>
KeelResult<T> named(KeelResult<T> result, const QuandaOccurrences& occurrences,
                    std::string_view operation, Position position,
                    std::optional<std::size_t> count = std::nullopt,
                    std::uint32_t line = __builtin_LINE()) {
  if (result) return result;
  const std::string key =
      std::is_same_v<Position, QuandaAbstractDate> ? "date" : "logicTimeInterval";
  KeelArguments arguments{{"occurrences", occurrences.description()}};
  if (count) arguments.emplace_back("count", *count);
  arguments.emplace_back(key, position);
  const std::string function =
      std::string(operation) + (count ? "(count:" : "(") + key + ":calendarAdapter:)";
  return KeelError::wrap(result.error(), std::move(arguments), path, function, line);
}

}  // namespace

QuandaOccurrences::QuandaOccurrences(std::shared_ptr<const QuandaDateMasking> mask,
                                     QuandaAbstractNaturalTimeOfDay timeOfDay,
                                     std::optional<std::string> timezoneIdentifier,
                                     QuandaDayOfGregorianWeek firstDayOfWeek)
    : mask_(std::move(mask)),
      timeOfDay_(timeOfDay),
      timezoneIdentifier_(std::move(timezoneIdentifier)),
      firstDayOfWeek_(firstDayOfWeek) {
  KEEL_PRECONDITION(mask_ != nullptr, "occurrences of a null mask");
}

std::string QuandaOccurrences::resolvedTimezoneIdentifier(Adapter& calendarAdapter) const {
  return timezoneIdentifier_ ? *timezoneIdentifier_ : calendarAdapter.currentTimezoneIdentifier();
}

std::string QuandaOccurrences::description() const {
  return "QuandaOccurrences(mask: " + mask_->description() +
         ", timeOfDay: " + timeOfDay_.description() +
         ", timezoneIdentifier: " + keel::describe(timezoneIdentifier_) +
         ", firstDayOfWeek: " + std::string(caseName(firstDayOfWeek_)) + ")";
}

// ---- Placing one date ---------------------------------------------------------------------------

KeelResult<QuandaAbstractNaturalDateTime> QuandaOccurrences::wallClock(
    QuandaLogicTimeInterval instant, Adapter& calendarAdapter) const {
  const auto components =
      timezoneIdentifier_
          ? calendarAdapter.makeTimezoneDiscreteDateTimeComponents(instant, *timezoneIdentifier_)
          : calendarAdapter.makeLocalTimezoneDiscreteDateTimeComponents(instant);
  if (!components) return components.error();
  return QuandaAbstractNaturalDateTime::make(components.value());
}

KeelResult<QuandaOccurrence> QuandaOccurrences::place(QuandaAbstractDate date,
                                                      Adapter& calendarAdapter) const {
  const auto components = QuandaAbstractNaturalDateTime(date, timeOfDay_).components();
  const KeelResult<QuandaLogicTimeInterval> instant =
      timezoneIdentifier_
          ? calendarAdapter.makeGregorianLogicTimeInterval(components, *timezoneIdentifier_)
          : calendarAdapter.makeLocalGregorianLogicTimeInterval(components);
  if (!instant) return instant.error();
  const auto wall = wallClock(instant.value(), calendarAdapter);
  if (!wall) return wall.error();
  const auto wallSeconds = wall.value().localSeconds().time_since_epoch().count();
  const auto instantSeconds = static_cast<std::int64_t>(instant.value().unixEpoch());
  return QuandaOccurrence{date, wall.value(), instant.value(),
                          static_cast<std::int32_t>(wallSeconds - instantSeconds)};
}

KeelResult<QuandaOccurrence> QuandaOccurrences::occurrence(QuandaAbstractDate date,
                                                           Adapter& calendarAdapter) const {
  return named(place(date, calendarAdapter), *this, "occurrence", date);
}

// ---- Searches -----------------------------------------------------------------------------------

KeelResult<std::optional<QuandaOccurrence>> QuandaOccurrences::beside(
    QuandaAbstractDate date, Direction direction, Adapter& calendarAdapter) const {
  const std::optional<QuandaAbstractDate> match = direction == Direction::forward
                                                      ? mask_->nextMatch(date, firstDayOfWeek_)
                                                      : mask_->previousMatch(date, firstDayOfWeek_);
  if (!match) return std::optional<QuandaOccurrence>();
  auto placed = place(*match, calendarAdapter);
  if (!placed) return placed.error();
  return std::optional(placed.value());
}

KeelResult<std::optional<QuandaOccurrence>> QuandaOccurrences::beside(
    QuandaLogicTimeInterval instant, Direction direction, Adapter& calendarAdapter) const {
  const auto wall = wallClock(instant, calendarAdapter);
  if (!wall) return wall.error();
  const std::uint32_t day = wall.value().date().daysSinceDatum();
  const bool forward = direction == Direction::forward;
  // Dates further than the margin from the wall date have their occurrences on the far side of
  // the instant; the walk starts there and stops at the first occurrence past the instant.
  std::optional<QuandaAbstractDate> match =
      forward ? mask_->firstMatch(KeelDomain(QuandaAbstractDate::makeFromDaysSinceDatum(
                                                 day - std::min(day, searchMargin)),
                                             QuandaAbstractDate::validRange.max()),
                                  firstDayOfWeek_)
              : mask_->lastMatch(
                    KeelDomain(QuandaAbstractDate::validRange.min(),
                               QuandaAbstractDate::makeFromDaysSinceDatum(day + searchMargin)),
                    firstDayOfWeek_);
  while (match) {
    auto placed = place(*match, calendarAdapter);
    if (!placed) return placed.error();
    QuandaOccurrence found = placed.value();
    if (forward ? found.logicTimeInterval > instant : found.logicTimeInterval < instant) {
      // Of dates that share an instant, the earliest names it, as the forward walk finds it.
      for (auto earlier = forward ? std::nullopt : mask_->previousMatch(*match, firstDayOfWeek_);
           earlier; earlier = mask_->previousMatch(*earlier, firstDayOfWeek_)) {
        auto other = place(*earlier, calendarAdapter);
        if (!other) return other.error();
        if (other.value().logicTimeInterval != found.logicTimeInterval) break;
        found = other.value();
      }
      return std::optional(found);
    }
    match = forward ? mask_->nextMatch(*match, firstDayOfWeek_)
                    : mask_->previousMatch(*match, firstDayOfWeek_);
  }
  return std::optional<QuandaOccurrence>();
}

template <class Position>
KeelResult<std::vector<QuandaOccurrence>> QuandaOccurrences::list(std::size_t count, Position start,
                                                                  Direction direction,
                                                                  Adapter& calendarAdapter) const {
  std::vector<QuandaOccurrence> found;
  Position position = start;
  while (found.size() < count) {
    auto occurrence = beside(position, direction, calendarAdapter);
    if (!occurrence) return occurrence.error();
    if (!occurrence.value()) break;
    found.push_back(*occurrence.value());
    if constexpr (std::is_same_v<Position, QuandaAbstractDate>) {
      position = found.back().date;
    } else {
      position = found.back().logicTimeInterval;
    }
  }
  return found;
}

// ---- The public searches: each wraps its failure once -------------------------------------------

KeelResult<std::optional<QuandaOccurrence>> QuandaOccurrences::nextAfter(
    QuandaLogicTimeInterval logicTimeInterval, Adapter& calendarAdapter) const {
  return named(beside(logicTimeInterval, Direction::forward, calendarAdapter), *this, "nextAfter",
               logicTimeInterval);
}

KeelResult<std::optional<QuandaOccurrence>> QuandaOccurrences::previousBefore(
    QuandaLogicTimeInterval logicTimeInterval, Adapter& calendarAdapter) const {
  return named(beside(logicTimeInterval, Direction::backward, calendarAdapter), *this,
               "previousBefore", logicTimeInterval);
}

KeelResult<std::optional<QuandaOccurrence>> QuandaOccurrences::nextAfter(
    QuandaAbstractDate date, Adapter& calendarAdapter) const {
  return named(beside(date, Direction::forward, calendarAdapter), *this, "nextAfter", date);
}

KeelResult<std::optional<QuandaOccurrence>> QuandaOccurrences::previousBefore(
    QuandaAbstractDate date, Adapter& calendarAdapter) const {
  return named(beside(date, Direction::backward, calendarAdapter), *this, "previousBefore", date);
}

KeelResult<std::vector<QuandaOccurrence>> QuandaOccurrences::next(
    std::size_t count, QuandaLogicTimeInterval logicTimeInterval, Adapter& calendarAdapter) const {
  return named(list(count, logicTimeInterval, Direction::forward, calendarAdapter), *this, "next",
               logicTimeInterval, count);
}

KeelResult<std::vector<QuandaOccurrence>> QuandaOccurrences::next(std::size_t count,
                                                                  QuandaAbstractDate date,
                                                                  Adapter& calendarAdapter) const {
  return named(list(count, date, Direction::forward, calendarAdapter), *this, "next", date, count);
}

KeelResult<std::vector<QuandaOccurrence>> QuandaOccurrences::previous(
    std::size_t count, QuandaLogicTimeInterval logicTimeInterval, Adapter& calendarAdapter) const {
  return named(list(count, logicTimeInterval, Direction::backward, calendarAdapter), *this,
               "previous", logicTimeInterval, count);
}

KeelResult<std::vector<QuandaOccurrence>> QuandaOccurrences::previous(
    std::size_t count, QuandaAbstractDate date, Adapter& calendarAdapter) const {
  return named(list(count, date, Direction::backward, calendarAdapter), *this, "previous", date,
               count);
}

// ---- QuandaOccurrence ---------------------------------------------------------------------------

std::string QuandaOccurrence::describeOffset(std::int32_t secondsFromGMT) {
  const std::int32_t magnitude = secondsFromGMT < 0 ? -secondsFromGMT : secondsFromGMT;
  const auto twoDigits = [](std::int32_t value) {
    return std::string{static_cast<char>('0' + value / 10), static_cast<char>('0' + value % 10)};
  };
  std::string text = secondsFromGMT < 0 ? "-" : "+";
  text += twoDigits(magnitude / 3600) + ":" + twoDigits(magnitude / 60 % 60);
  if (magnitude % 60 != 0) text += ":" + twoDigits(magnitude % 60);
  return text;
}

std::string QuandaOccurrence::description() const {
  const auto utc = QuandaAbstractNaturalDateTime::make(std::chrono::local_seconds(
      localDateTime.localSeconds().time_since_epoch() - std::chrono::seconds(secondsFromGMT)));
  return localDateTime.serializedToRfc3339String() + describeOffset(secondsFromGMT) + " (" +
         (utc ? utc.value().serializedToRfc3339String() + "Z" : logicTimeInterval.description()) +
         ")";
}
