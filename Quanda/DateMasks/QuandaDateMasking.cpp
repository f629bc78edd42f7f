#include "Quanda/DateMasks/QuandaDateMasking.h"

#include <algorithm>
#include <bit>
#include <nlohmann/json.hpp>
#include <ostream>

#include "Keel/KeelPrecondition.h"

namespace {
using quanda_detail::AnswerRun;
using quanda_detail::DayBlock;

constexpr std::uint32_t lastDay = QuandaAbstractDate::validDaysSinceDatumRange.max();

void requireWindow(std::uint32_t first, std::uint32_t last) {
  KEEL_PRECONDITION(first <= last && last <= lastDay,
                    "a date mask search window needs first <= last <= 3652058");
}

// The bits of a word's days 0...through (through >= 63: all of them).
constexpr std::uint64_t bitsThrough(std::uint32_t through) noexcept {
  return through >= 63 ? ~std::uint64_t{0} : (std::uint64_t{2} << through) - 1;
}
}  // namespace

std::optional<QuandaAbstractDate> QuandaDateMasking::nextMatchByDayCount(
    QuandaAbstractDate after, QuandaDayOfGregorianWeek firstDayOfWeek) const {
  const std::uint32_t day = after.daysSinceDatum();
  if (day >= lastDay) return std::nullopt;
  const auto found = earliestDayCount(true, day + 1, lastDay, firstDayOfWeek);
  if (!found) return std::nullopt;
  return QuandaAbstractDate::makeFromDaysSinceDatum(*found);
}

std::optional<QuandaAbstractDate> QuandaDateMasking::previousMatchByDayCount(
    QuandaAbstractDate before, QuandaDayOfGregorianWeek firstDayOfWeek) const {
  const std::uint32_t day = before.daysSinceDatum();
  if (day == 0) return std::nullopt;
  const auto found = latestDayCount(true, 0, day - 1, firstDayOfWeek);
  if (!found) return std::nullopt;
  return QuandaAbstractDate::makeFromDaysSinceDatum(*found);
}

std::optional<QuandaAbstractDate> QuandaDateMasking::firstMatch(
    const KeelDomain<QuandaAbstractDate>& range, QuandaDayOfGregorianWeek firstDayOfWeek) const {
  const auto found = earliestDayCount(true, range.trueMin().daysSinceDatum(),
                                      range.trueMax().daysSinceDatum(), firstDayOfWeek);
  if (!found) return std::nullopt;
  return QuandaAbstractDate::makeFromDaysSinceDatum(*found);
}

std::optional<QuandaAbstractDate> QuandaDateMasking::lastMatch(
    const KeelDomain<QuandaAbstractDate>& range, QuandaDayOfGregorianWeek firstDayOfWeek) const {
  const auto found = latestDayCount(true, range.trueMin().daysSinceDatum(),
                                    range.trueMax().daysSinceDatum(), firstDayOfWeek);
  if (!found) return std::nullopt;
  return QuandaAbstractDate::makeFromDaysSinceDatum(*found);
}

QuandaDateMasking::Matches QuandaDateMasking::matchingDates(
    const KeelDomain<QuandaAbstractDate>& range, QuandaDayOfGregorianWeek firstDayOfWeek) const {
  return Matches(this, range.trueMin().daysSinceDatum(), range.trueMax().daysSinceDatum(),
                 firstDayOfWeek);
}

std::optional<std::uint32_t> QuandaDateMasking::earliestDayCount(
    bool matching, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  requireWindow(first, last);
  const std::uint32_t start = std::max(first, domainStart(firstDayOfWeek));
  if (start > last) return std::nullopt;
  return findEarliest(matching, start, last, firstDayOfWeek);
}

std::optional<std::uint32_t> QuandaDateMasking::latestDayCount(
    bool matching, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  requireWindow(first, last);
  const std::uint32_t start = std::max(first, domainStart(firstDayOfWeek));
  if (start > last) return std::nullopt;
  return findLatest(matching, start, last, firstDayOfWeek);
}

std::optional<std::uint32_t> QuandaDateMasking::findEarliest(
    bool matching, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  if (isMonthLocal_) return quanda_detail::earliestMonthDay(monthDaySets_, matching, first, last);
  for (std::uint32_t day = first;; ++day) {
    if (matches(QuandaAbstractDate::makeFromDaysSinceDatum(day), firstDayOfWeek) == matching) {
      return day;
    }
    if (day == last) return std::nullopt;
  }
}

std::optional<std::uint32_t> QuandaDateMasking::findLatest(
    bool matching, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  if (isMonthLocal_) return quanda_detail::latestMonthDay(monthDaySets_, matching, first, last);
  for (std::uint32_t day = last;; --day) {
    if (matches(QuandaAbstractDate::makeFromDaysSinceDatum(day), firstDayOfWeek) == matching) {
      return day;
    }
    if (day == first) return std::nullopt;
  }
}

std::uint64_t QuandaDateMasking::answerWord(const DayBlock& block, std::uint64_t care) const {
  if (isMonthLocal_) return block.monthDays(monthDaySets_);
  std::uint64_t answers = 0;
  for (std::uint64_t rest = care; rest != 0; rest &= rest - 1) {
    const auto bit = static_cast<std::uint32_t>(std::countr_zero(rest));
    const auto date = QuandaAbstractDate::makeFromDaysSinceDatum(block.start() + bit);
    if (matches(date, block.firstDayOfWeek())) answers |= std::uint64_t{1} << bit;
  }
  return answers;
}

AnswerRun QuandaDateMasking::answerRun(std::uint32_t, QuandaDayOfGregorianWeek) const {
  return {0, lastDay, isMonthLocal_ ? monthDaySets_.period() : 0};
}

// Both searches read the first 64 days before anything else, since most searches end there; then
// run by run, each up to its end or through one period, whichever comes first.
std::optional<std::uint32_t> QuandaDateMasking::findEarliestByWords(
    bool matching, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  const std::uint64_t flip = matching ? 0 : ~std::uint64_t{0};
  // The earliest answer in day...through, a window of the run being read.
  const auto scan = [&](std::uint32_t day, std::uint32_t through) -> std::optional<std::uint32_t> {
    DayBlock block = DayBlock::at(day, firstDayOfWeek);
    while (true) {
      const std::uint32_t span = through - block.start();
      const std::uint64_t care = bitsThrough(span);
      const std::uint64_t found = (answerWord(block, care) ^ flip) & care;
      if (found != 0) return block.start() + static_cast<std::uint32_t>(std::countr_zero(found));
      if (span < DayBlock::size) return std::nullopt;
      block.advance();
    }
  };
  const std::uint32_t firstBlockEnd = last - first < DayBlock::size ? last : first + 63;
  if (const auto found = scan(first, firstBlockEnd)) return found;
  for (std::uint32_t day = firstBlockEnd; day != last;) {
    ++day;
    const AnswerRun run = answerRun(day, firstDayOfWeek);
    const std::uint32_t runEnd = std::min(run.last, last);
    const std::uint32_t through =
        run.period != 0 && runEnd - day >= run.period ? day + (run.period - 1) : runEnd;
    if (const auto found = scan(day, through)) return found;
    day = runEnd;
  }
  return std::nullopt;
}

std::optional<std::uint32_t> QuandaDateMasking::findLatestByWords(
    bool matching, std::uint32_t first, std::uint32_t last,
    QuandaDayOfGregorianWeek firstDayOfWeek) const {
  const std::uint64_t flip = matching ? 0 : ~std::uint64_t{0};
  // The latest answer in from...day, a window of the run being read.
  const auto scan = [&](std::uint32_t from, std::uint32_t day) -> std::optional<std::uint32_t> {
    for (std::uint32_t end = day;; end -= DayBlock::size) {
      const std::uint32_t start = end - from >= DayBlock::size ? end - 63 : from;
      const DayBlock block = DayBlock::at(start, firstDayOfWeek);
      const std::uint64_t care = bitsThrough(end - start);
      const std::uint64_t found = (answerWord(block, care) ^ flip) & care;
      if (found != 0) return start + static_cast<std::uint32_t>(std::bit_width(found) - 1);
      if (start == from) return std::nullopt;
    }
  };
  const std::uint32_t firstBlockStart = last - first < DayBlock::size ? first : last - 63;
  if (const auto found = scan(firstBlockStart, last)) return found;
  for (std::uint32_t day = firstBlockStart; day != first;) {
    --day;
    const AnswerRun run = answerRun(day, firstDayOfWeek);
    const std::uint32_t runStart = std::max(run.first, first);
    const std::uint32_t from =
        run.period != 0 && day - runStart >= run.period ? day - (run.period - 1) : runStart;
    if (const auto found = scan(from, day)) return found;
    day = runStart;
  }
  return std::nullopt;
}

std::string QuandaDateMasking::description() const {
  nlohmann::json json;
  encode(json);
  return std::string(archiveKind()) + " " + json.dump();
}

std::ostream& operator<<(std::ostream& stream, const QuandaDateMasking& mask) {
  return stream << mask.description();
}
