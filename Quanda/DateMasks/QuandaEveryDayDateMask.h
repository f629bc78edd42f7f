// QuandaEveryDayDateMask: the rule that every date matches.
//
// Archived as a keyed record with no fields: {}.
#pragma once

#include <cstddef>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <string_view>

#include "Quanda/DateMasks/QuandaDateMaskBase.h"

class QuandaEveryDayDateMask final : public QuandaDateMaskBase<QuandaEveryDayDateMask> {
 public:
  static constexpr std::string_view kind = "everyDay";

  QuandaEveryDayDateMask() noexcept { setMonthDaySets(quanda_detail::MonthDaySets::everyDay()); }

  bool matches(QuandaAbstractDate, QuandaDayOfGregorianWeek) const override { return true; }
  std::uint64_t answerWord(const quanda_detail::DayBlock&, std::uint64_t) const override {
    return ~std::uint64_t{0};
  }

 protected:
  std::optional<std::uint32_t> findEarliest(bool matching, std::uint32_t first, std::uint32_t last,
                                            QuandaDayOfGregorianWeek) const override {
    return matching && first <= last ? std::optional(first) : std::nullopt;
  }
  std::optional<std::uint32_t> findLatest(bool matching, std::uint32_t first, std::uint32_t last,
                                          QuandaDayOfGregorianWeek) const override {
    return matching && first <= last ? std::optional(last) : std::nullopt;
  }

 public:
  friend bool operator==(const QuandaEveryDayDateMask&, const QuandaEveryDayDateMask&) noexcept {
    return true;
  }
};

template <>
struct std::hash<QuandaEveryDayDateMask> {
  std::size_t operator()(const QuandaEveryDayDateMask&) const noexcept { return 0; }
};

// Any keyed record decodes (it has no fields to read); other JSON kinds are a type_error.
template <>
struct nlohmann::adl_serializer<QuandaEveryDayDateMask> {
  static void to_json(nlohmann::json& json, const QuandaEveryDayDateMask& mask);
  static QuandaEveryDayDateMask from_json(const nlohmann::json& json);
};
