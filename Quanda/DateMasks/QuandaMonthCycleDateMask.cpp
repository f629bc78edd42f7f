#include "Quanda/DateMasks/QuandaMonthCycleDateMask.h"

#include <nlohmann/json.hpp>
#include <numeric>

#include "Keel/KeelDecodingError.h"
#include "Quanda/DateMasks/QuandaDateMaskJson.h"

namespace {
// The day counts of the first and the last day of a month count.
std::uint32_t firstDayOfMonth(std::uint32_t month) noexcept {
  return QuandaAbstractDateFieldsAccess::makeFromValidFields(month / 12 + 1, month % 12 + 1, 1)
      .daysSinceDatum();
}
std::uint32_t lastDayOfMonth(std::uint32_t month) noexcept {
  const auto first =
      QuandaAbstractDateFieldsAccess::makeFromValidFields(month / 12 + 1, month % 12 + 1, 1);
  return first.daysSinceDatum() + first.daysInMonth() - 1U;
}
std::uint32_t monthCountOfDay(std::uint32_t day) noexcept {
  return QuandaMonthCycleDateMask::monthCount(QuandaAbstractDate::makeFromDaysSinceDatum(day));
}
}  // namespace

QuandaMonthCycleDateMask::QuandaMonthCycleDateMask(QuandaAbstractDate anchorDate,
                                                   const std::vector<bool>& months)
    : anchorDate_(anchorDate),
      months_(monthCount(anchorDate), months,
              "a month cycle mask needs at least one entry in months") {}

std::optional<std::uint32_t> QuandaMonthCycleDateMask::findEarliest(
    bool matching, std::uint32_t first, std::uint32_t last, QuandaDayOfGregorianWeek) const {
  const std::uint32_t firstMonth = monthCountOfDay(first);
  const auto month = months_.earliest(matching, firstMonth, monthCountOfDay(last));
  if (!month) return std::nullopt;
  return *month == firstMonth ? first : firstDayOfMonth(*month);
}

std::optional<std::uint32_t> QuandaMonthCycleDateMask::findLatest(bool matching,
                                                                  std::uint32_t first,
                                                                  std::uint32_t last,
                                                                  QuandaDayOfGregorianWeek) const {
  const std::uint32_t lastMonth = monthCountOfDay(last);
  const auto month = months_.latest(matching, monthCountOfDay(first), lastMonth);
  if (!month) return std::nullopt;
  return *month == lastMonth ? last : lastDayOfMonth(*month);
}

quanda_detail::AnswerRun QuandaMonthCycleDateMask::answerRun(std::uint32_t day,
                                                             QuandaDayOfGregorianWeek) const {
  const std::uint32_t start = firstDayOfMonth(months_.residue());
  if (day < start) return {0, start - 1, 1};
  // Whole calendar cycles of 4800 months and 146097 days, as many as make a whole number of
  // pattern periods.
  const std::uint64_t cycles =
      monthCycleLength() / std::gcd(monthCycleLength(), quanda_detail::monthsInCalendarCycle);
  return {start, QuandaAbstractDate::validDaysSinceDatumRange.max(),
          quanda_detail::periodWithin(cycles * quanda_detail::daysInCalendarCycle)};
}

void nlohmann::adl_serializer<QuandaMonthCycleDateMask>::to_json(
    nlohmann::json& json, const QuandaMonthCycleDateMask& mask) {
  json = {{"anchorDate", mask.anchorDate()}, {"months", mask.months()}};
}

QuandaMonthCycleDateMask nlohmann::adl_serializer<QuandaMonthCycleDateMask>::from_json(
    const nlohmann::json& json) {
  const auto anchor = quanda_detail::requireJsonKey(json, "anchorDate").get<QuandaAbstractDate>();
  const auto months = quanda_detail::requireJsonKey(json, "months").get<std::vector<bool>>();
  if (months.empty()) {
    throw KeelDecodingError("Empty 'months' list: a month cycle needs at least one month");
  }
  return QuandaMonthCycleDateMask(anchor, months);
}
