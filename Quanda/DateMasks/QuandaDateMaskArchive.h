// The tagged archive of date masks: a mask whose kind is known only at run time, archived and
// restored.
//
// A scheduling app keeps masks of many kinds in one list. The tagged form wraps a mask's own
// archive form, unchanged, with the name of its kind:
//
//   {"kind": "daysOfWeek", "mask": ["monday", "friday"]}
//   {"kind": "allOf", "mask": {"masks": [{"kind": "daysOfWeek", ...}, {"kind": "not", ...}]}}
//
// Kinds: everyDay, daysOfWeek, daysOfMonth, reverseDaysOfMonth, weeksOfMonth, reverseWeeksOfMonth,
// weekdaysOfMonth, reverseWeekdaysOfMonth, dayCycle, weekCycle, daysOfWeeks, dateRange,
// dateRanges, allOf, anyOf, not, monthsOfYear, monthCycle. Decoding fails with KeelDecodingError
// for an unknown kind
// ("Unknown date mask kind 'weekly'"), for masks nested more than maximumNesting deep, and with
// each mask's own errors; JSON of the wrong kind or missing keys fail with nlohmann's exceptions.
// Decoding never yields a mask that stops the process on a date its searches return: they stay
// inside its domain (QuandaDateMasking::domain).
//
// std::shared_ptr<const QuandaDateMasking> archives in the tagged form through nlohmann's
// adl_serializer, so a std::vector of them converts to and from JSON directly.
#pragma once

#include <cstddef>
#include <memory>
#include <nlohmann/json_fwd.hpp>

#include "Quanda/DateMasks/QuandaDateMasking.h"

inline constexpr std::size_t maximumDateMaskNesting = 64;

nlohmann::json encodeTaggedDateMask(const QuandaDateMasking& mask);
std::shared_ptr<const QuandaDateMasking> decodeTaggedDateMask(const nlohmann::json& json);

template <>
struct nlohmann::adl_serializer<std::shared_ptr<const QuandaDateMasking>> {
  // A null mask is a programming error.
  static void to_json(nlohmann::json& json, const std::shared_ptr<const QuandaDateMasking>& mask);
  static std::shared_ptr<const QuandaDateMasking> from_json(const nlohmann::json& json);
};
