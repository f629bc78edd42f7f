// Invariants shared by the date-mask fuzz targets. A broken invariant aborts, which libFuzzer
// reports as a crash with the input that caused it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <vector>

#include "FuzzDateInvariants.h"
#include "Quanda/DateMasks/QuandaDateMaskArchive.h"

namespace fuzz {

// The tagged archive of a mask decodes to an equal mask with the same hash.
inline void requireArchiveRoundTrip(const QuandaDateMasking& mask) {
  const auto again = decodeTaggedDateMask(nlohmann::json::parse(encodeTaggedDateMask(mask).dump()));
  require(again->isEqual(mask), "the archive does not decode to an equal mask");
  require(again->hashValue() == mask.hashValue(), "an equal mask hashes differently");
}

// The searches agree with matches read day by day inside the domain, and never leave it: from
// each start day, over a window of `span` days after it and one before it, for both answers and
// both directions. matches is only ever asked about days of the domain.
inline void requireSearchesAgreeWithMatches(const QuandaDateMasking& mask,
                                            QuandaDayOfGregorianWeek firstDay,
                                            std::initializer_list<std::uint32_t> starts,
                                            std::uint32_t span = 200) {
  constexpr std::uint32_t lastDay = QuandaAbstractDate::validDaysSinceDatumRange.max();
  const std::uint32_t domainStart = mask.domain(firstDay).min().daysSinceDatum();
  const auto date = [](std::uint32_t day) {
    return QuandaAbstractDate::makeFromDaysSinceDatum(day);
  };
  const auto inDomain = [&](std::optional<std::uint32_t> day) {
    return !day || (*day >= domainStart && *day <= lastDay);
  };
  for (std::uint32_t start : starts) {
    start = std::min(start, lastDay);
    // Searches from anywhere, the days before the domain included, land inside it.
    for (bool answer : {true, false}) {
      require(inDomain(mask.earliestDayCount(answer, start, lastDay, firstDay)),
              "a forward search left the domain");
      require(inDomain(mask.latestDayCount(answer, 0, start, firstDay)),
              "a backward search left the domain");
    }
    const std::uint32_t first = std::max(start, domainStart);
    if (first > lastDay) continue;
    const std::uint32_t last = first + std::min(span, lastDay - first);
    std::vector<bool> answers;
    for (std::uint32_t day = first; day <= last; ++day) {
      answers.push_back(mask.matches(date(day), firstDay));
    }
    const auto earliest = [&](bool answer, std::uint32_t from) -> std::optional<std::uint32_t> {
      for (std::uint32_t day = from; day <= last; ++day) {
        if (answers[day - first] == answer) return day;
      }
      return std::nullopt;
    };
    const auto latest = [&](bool answer, std::uint32_t through) -> std::optional<std::uint32_t> {
      for (std::uint32_t day = through + 1; day-- > first;) {
        if (answers[day - first] == answer) return day;
      }
      return std::nullopt;
    };
    for (bool answer : {true, false}) {
      require(mask.earliestDayCount(answer, first, last, firstDay) == earliest(answer, first),
              "earliestDayCount disagrees with matches");
      require(mask.latestDayCount(answer, first, last, firstDay) == latest(answer, last),
              "latestDayCount disagrees with matches");
    }
    // nextMatch after the first day: the first match of the window, or one past it.
    const auto next = mask.nextMatch(date(first), firstDay);
    const auto expectedNext = first < last ? earliest(true, first + 1) : std::nullopt;
    if (expectedNext) {
      require(next == date(*expectedNext), "nextMatch disagrees with matches");
    } else if (next) {
      require(next->daysSinceDatum() > last && mask.matches(*next, firstDay),
              "nextMatch found a date that does not match");
    }
    // previousMatch before the last day: the last match of the window, or one before it in the
    // domain.
    const auto previous = mask.previousMatch(date(last), firstDay);
    const auto expectedPrevious = first < last ? latest(true, last - 1) : std::nullopt;
    if (expectedPrevious) {
      require(previous == date(*expectedPrevious), "previousMatch disagrees with matches");
    } else if (previous) {
      require(previous->daysSinceDatum() < first && previous->daysSinceDatum() >= domainStart &&
                  mask.matches(*previous, firstDay),
              "previousMatch found a date outside the domain or that does not match");
    }
  }
}

}  // namespace fuzz
