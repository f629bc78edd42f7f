// QuandaDateRangeDateMask: the dates of one closed date range (a holiday period).
//
// Both the first and the last date of the range match. A range given with its bounds reversed
// means the same dates (the domain's contains works on its true minimum and maximum); the bounds
// are kept as given for equality and the archive. The first day of the week plays no part.
//
//   QuandaDateRangeDateMask march({first, last});
//   // archived as {"dateRangeInc": {"min": 20240301, "max": 20240331}}
#pragma once

#include <cstddef>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <string_view>

#include "Keel/KeelDomain.h"
#include "Quanda/DateMasks/QuandaDateMaskBase.h"

class QuandaDateRangeDateMask final : public QuandaDateMaskBase<QuandaDateRangeDateMask> {
 public:
  static constexpr std::string_view kind = "dateRange";

  explicit QuandaDateRangeDateMask(KeelDomain<QuandaAbstractDate> dateRangeInc) noexcept
      : dateRangeInc_(dateRangeInc),
        low_(dateRangeInc.trueMin().daysSinceDatum()),
        high_(dateRangeInc.trueMax().daysSinceDatum()) {}

  const KeelDomain<QuandaAbstractDate>& dateRangeInc() const noexcept { return dateRangeInc_; }

  bool matches(QuandaAbstractDate date, QuandaDayOfGregorianWeek) const override {
    return dateRangeInc_.contains(date, KeelBoundsEligibility::inclusiveMinInclusiveMax);
  }

  std::uint64_t answerWord(const quanda_detail::DayBlock& block, std::uint64_t) const override;
  std::uint32_t answerWordCost() const override { return 1; }
  // One answer before the range, inside it and after it.
  quanda_detail::AnswerRun answerRun(std::uint32_t day, QuandaDayOfGregorianWeek) const override;

 protected:
  std::optional<std::uint32_t> findEarliest(bool matching, std::uint32_t first, std::uint32_t last,
                                            QuandaDayOfGregorianWeek) const override;
  std::optional<std::uint32_t> findLatest(bool matching, std::uint32_t first, std::uint32_t last,
                                          QuandaDayOfGregorianWeek) const override;

 public:
  friend bool operator==(const QuandaDateRangeDateMask& lhs,
                         const QuandaDateRangeDateMask& rhs) noexcept {
    return lhs.dateRangeInc_ == rhs.dateRangeInc_;
  }

 private:
  KeelDomain<QuandaAbstractDate> dateRangeInc_;
  std::uint32_t low_;  // the day counts of the true minimum and maximum, for the searches
  std::uint32_t high_;
};

template <>
struct std::hash<QuandaDateRangeDateMask> {
  std::size_t operator()(const QuandaDateRangeDateMask& mask) const noexcept {
    return keel::hashFields(mask.dateRangeInc());
  }
};

// {"dateRangeInc": {"min": yyyymmdd, "max": yyyymmdd}}.
template <>
struct nlohmann::adl_serializer<QuandaDateRangeDateMask> {
  static void to_json(nlohmann::json& json, const QuandaDateRangeDateMask& mask);
  static QuandaDateRangeDateMask from_json(const nlohmann::json& json);
};
