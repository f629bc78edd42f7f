#include "Quanda/DateMasks/QuandaDaysOfWeekDateMask.h"

#include <nlohmann/json.hpp>

#include "Quanda/DateMasks/QuandaDateMaskSearch.h"

namespace {
std::uint8_t wantedBits(QuandaDayOfGregorianWeekSet days, bool matching) {
  return matching ? days.bits() : days.complement().bits();
}
}  // namespace

std::optional<std::uint32_t> QuandaDaysOfWeekDateMask::findEarliest(
    bool matching, std::uint32_t first, std::uint32_t last, QuandaDayOfGregorianWeek) const {
  return quanda_detail::earliestWeekday(wantedBits(daysOfWeek_, matching), first, last);
}

std::optional<std::uint32_t> QuandaDaysOfWeekDateMask::findLatest(bool matching,
                                                                  std::uint32_t first,
                                                                  std::uint32_t last,
                                                                  QuandaDayOfGregorianWeek) const {
  return quanda_detail::latestWeekday(wantedBits(daysOfWeek_, matching), first, last);
}

void nlohmann::adl_serializer<QuandaDaysOfWeekDateMask>::to_json(
    nlohmann::json& json, const QuandaDaysOfWeekDateMask& mask) {
  json = mask.daysOfWeekSet();
}

QuandaDaysOfWeekDateMask nlohmann::adl_serializer<QuandaDaysOfWeekDateMask>::from_json(
    const nlohmann::json& json) {
  return QuandaDaysOfWeekDateMask(json.get<QuandaDayOfGregorianWeekSet>());
}
