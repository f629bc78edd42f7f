#include "Quanda/DateMasks/QuandaDayOfGregorianWeekSet.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "Keel/KeelError.h"
#include "Quanda/DateMasks/QuandaDateMaskJson.h"

std::set<QuandaDayOfGregorianWeek> QuandaDayOfGregorianWeekSet::toSet() const {
  std::set<QuandaDayOfGregorianWeek> days;
  for (QuandaDayOfGregorianWeek day : allCases<QuandaDayOfGregorianWeek>) {
    if (contains(day)) days.insert(days.end(), day);
  }
  return days;
}

std::string QuandaDayOfGregorianWeekSet::description() const {
  std::string text = "[";
  for (QuandaDayOfGregorianWeek day : allCases<QuandaDayOfGregorianWeek>) {
    if (!contains(day)) continue;
    if (text.size() > 1) text += ", ";
    text += caseName(day);
  }
  return text + "]";
}

std::ostream& operator<<(std::ostream& stream, QuandaDayOfGregorianWeekSet set) {
  return stream << set.description();
}

void nlohmann::adl_serializer<QuandaDayOfGregorianWeekSet>::to_json(
    nlohmann::json& json, QuandaDayOfGregorianWeekSet set) {
  // allCases is in encodingSortKey order.
  json = nlohmann::json::array();
  for (QuandaDayOfGregorianWeek day : allCases<QuandaDayOfGregorianWeek>) {
    if (set.contains(day)) json.push_back(day);
  }
}

QuandaDayOfGregorianWeekSet nlohmann::adl_serializer<QuandaDayOfGregorianWeekSet>::from_json(
    const nlohmann::json& json) {
  std::uint8_t bits = 0;
  for (const nlohmann::json& element : quanda_detail::requireJsonArray(json)) {
    bits |= static_cast<std::uint8_t>(1U << ordinal(element.get<QuandaDayOfGregorianWeek>()));
  }
  return QuandaDayOfGregorianWeekSet::makeFromBits(bits);
}
