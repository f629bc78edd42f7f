#include "Quanda/DateMasks/QuandaRecurrenceRule.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <set>

#include "Quanda/Abstract/QuandaTextParsing.h"
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
#include "Quanda/DateMasks/QuandaWeekCycleDateMask.h"
#include "Quanda/DateMasks/QuandaWeekdaysOfMonthDateMask.h"

namespace {

constexpr std::string_view path = "Quanda/Date Masks/QuandaRecurrenceRule";
constexpr std::string_view exportSignature = "exporting(mask:start:firstDayOfWeek:)";
constexpr std::string_view importSignature = "importing(text:start:)";
constexpr std::size_t mostListedDates = 1000;

using Mask = std::shared_ptr<const QuandaDateMasking>;
using Masks = std::vector<Mask>;

// The two-letter weekday codes, by ordinal (monday 0).
constexpr std::array<std::string_view, 7> weekdayCodes = {"MO", "TU", "WE", "TH", "FR", "SA", "SU"};

std::string compactDate(QuandaAbstractDate date) {
  std::string text(8, '0');
  quanda_detail::writeDigits(text.data(), date.year(), 4);
  quanda_detail::writeDigits(text.data() + 4, date.month(), 2);
  quanda_detail::writeDigits(text.data() + 6, date.day(), 2);
  return text;
}

std::vector<bool> oneOnThenOff(std::uint32_t length, std::uint32_t on = 1) {
  std::vector<bool> pattern(length, false);
  std::fill(pattern.begin(), pattern.begin() + on, true);
  return pattern;
}

bool isOneOnThenOff(const QuandaCyclePattern& pattern) {
  if (!pattern[0]) return false;
  for (std::uint32_t index = 1; index < pattern.length(); ++index) {
    if (pattern[index]) return false;
  }
  return true;
}

Mask anyOfOrSingle(Masks masks) {
  if (masks.size() == 1) return masks[0];
  return std::make_shared<QuandaAnyOfDateMask>(std::move(masks));
}

// ---- Export ------------------------------------------------------------------------------------

// The rule's parts gathered from the mask, as the RRULE says them.
struct Plan {
  std::string_view frequency;  // empty until a cycle or the parts decide
  std::uint32_t interval = 1;
  std::optional<QuandaAbstractDate> until;
  std::optional<QuandaAbstractDate> rangeStart;
  const QuandaDateMasking* range = nullptr;
  std::optional<QuandaDayOfGregorianWeekSet> weekdays;
  std::vector<std::pair<int, std::uint32_t>> ordinalWeekdays;  // (week, weekday ordinal)
  bool hasOrdinalWeekdays = false;
  std::vector<int> monthDays;
  bool hasMonthDays = false;
  std::optional<QuandaOrdinalSet> months;
  const QuandaDateMasking* cycle = nullptr;
  Masks exclusions;  // ranges whose rule dates are excluded
  Masks ruleParts;   // the parts other than the exclusions
};

KeelError inexpressible(const QuandaDateMasking& part, std::string_view reason) {
  return KeelError::fault("Date mask not expressible as a recurrence rule",
                          {{"part", part.description()}, {"reason", std::string(reason)}}, path,
                          exportSignature);
}

bool isRanges(const QuandaDateMasking& mask) {
  return dynamic_cast<const QuandaDateRangeDateMask*>(&mask) != nullptr ||
         dynamic_cast<const QuandaDateRangesDateMask*>(&mask) != nullptr;
}

// Adds one part of an all of to the plan.
std::optional<KeelError> plan(Plan& plan, const Mask& part) {
  const QuandaDateMasking& mask = *part;
  const auto twice = [&] { return inexpressible(mask, "a second part of its kind"); };
  const auto setCycle = [&](std::string_view frequency,
                            const QuandaCyclePattern& pattern) -> std::optional<KeelError> {
    if (plan.cycle != nullptr) return inexpressible(mask, "a second cycle");
    if (!isOneOnThenOff(pattern)) {
      return inexpressible(mask, "a cycle whose pattern is not one entry on then the rest off");
    }
    if (pattern.length() == 1) return std::nullopt;  // every day, week or month: no cycle
    plan.cycle = &mask;
    plan.frequency = frequency;
    plan.interval = pattern.length();
    return std::nullopt;
  };
  if (const auto* all = dynamic_cast<const QuandaAllOfDateMask*>(&mask)) {
    for (const Mask& inner : all->masks()) {
      if (auto error = ::plan(plan, inner)) return error;
    }
    return std::nullopt;
  }
  plan.ruleParts.push_back(part);
  if (dynamic_cast<const QuandaEveryDayDateMask*>(&mask) != nullptr) return std::nullopt;
  if (const auto* days = dynamic_cast<const QuandaDaysOfWeekDateMask*>(&mask)) {
    if (plan.weekdays) return twice();
    plan.weekdays = days->daysOfWeekSet();
    return std::nullopt;
  }
  const auto addMonthDays = [&](const QuandaOrdinalSet& set, int sign) -> std::optional<KeelError> {
    if (plan.hasMonthDays) return twice();
    plan.hasMonthDays = true;
    for (int day = 1; day <= 31; ++day) {
      if (set.contains(static_cast<std::uint8_t>(day))) plan.monthDays.push_back(sign * day);
    }
    return std::nullopt;
  };
  if (const auto* days = dynamic_cast<const QuandaDaysOfMonthDateMask*>(&mask)) {
    return addMonthDays(days->positionSet(), 1);
  }
  if (const auto* days = dynamic_cast<const QuandaReverseDaysOfMonthDateMask*>(&mask)) {
    return addMonthDays(days->positionSet(), -1);
  }
  const auto addOrdinals = [&](QuandaDayOfGregorianWeekSet days, const QuandaOrdinalSet& weeks,
                               int sign) -> std::optional<KeelError> {
    if (plan.hasOrdinalWeekdays) return twice();
    plan.hasOrdinalWeekdays = true;
    for (std::uint32_t weekday = 0; weekday < 7; ++weekday) {
      for (int week = 1; week <= 5; ++week) {
        if (days.containsOrdinal(weekday) && weeks.contains(static_cast<std::uint8_t>(week))) {
          plan.ordinalWeekdays.emplace_back(sign * week, weekday);
        }
      }
    }
    return std::nullopt;
  };
  if (const auto* days = dynamic_cast<const QuandaWeekdaysOfMonthDateMask*>(&mask)) {
    return addOrdinals(days->daysOfWeekSet(), days->positionSet(), 1);
  }
  if (const auto* days = dynamic_cast<const QuandaReverseWeekdaysOfMonthDateMask*>(&mask)) {
    return addOrdinals(days->daysOfWeekSet(), days->positionSet(), -1);
  }
  if (const auto* months = dynamic_cast<const QuandaMonthsOfYearDateMask*>(&mask)) {
    if (plan.months) return twice();
    plan.months = months->monthSet();
    return std::nullopt;
  }
  if (const auto* range = dynamic_cast<const QuandaDateRangeDateMask*>(&mask)) {
    if (plan.until) return twice();
    plan.until = range->dateRangeInc().trueMax();
    plan.rangeStart = range->dateRangeInc().trueMin();
    plan.range = &mask;
    return std::nullopt;
  }
  if (const auto* cycle = dynamic_cast<const QuandaDayCycleDateMask*>(&mask)) {
    return setCycle("DAILY", cycle->dayPattern());
  }
  if (const auto* cycle = dynamic_cast<const QuandaMonthCycleDateMask*>(&mask)) {
    return setCycle("MONTHLY", cycle->monthPattern());
  }
  if (const auto* cycle = dynamic_cast<const QuandaWeekCycleDateMask*>(&mask)) {
    return setCycle("WEEKLY", cycle->cycle().pattern());
  }
  if (const auto* cycle = dynamic_cast<const QuandaDaysOfWeeksDateMask*>(&mask)) {
    if (plan.weekdays) return twice();
    plan.weekdays = QuandaDayOfGregorianWeekSet(cycle->daysOfWeek());
    return setCycle("WEEKLY", cycle->cycle().pattern());
  }
  if (const auto* negation = dynamic_cast<const QuandaNotDateMask*>(&mask)) {
    if (isRanges(*negation->mask())) {
      plan.ruleParts.pop_back();
      plan.exclusions.push_back(negation->mask());
      return std::nullopt;
    }
    return inexpressible(mask, "only dates (EXDATE) can be left out of a rule");
  }
  return inexpressible(mask, "no part of a recurrence rule says it");
}

// Whether the cycle's rule, anchored at `start`, runs as the mask's cycle does from it on.
bool cycleRunsFrom(const QuandaDateMasking& cycle, QuandaAbstractDate start,
                   QuandaDayOfGregorianWeek firstDayOfWeek) {
  if (const auto* days = dynamic_cast<const QuandaDayCycleDateMask*>(&cycle)) {
    return start.daysSinceDatum() >= days->anchorDaysSinceDatum() % days->dayCycleLength() &&
           days->matches(start, firstDayOfWeek);
  }
  if (const auto* months = dynamic_cast<const QuandaMonthCycleDateMask*>(&cycle)) {
    return QuandaMonthCycleDateMask::monthCount(start) >=
               QuandaMonthCycleDateMask::monthCount(months->anchorDate()) %
                   months->monthCycleLength() &&
           months->matches(start, firstDayOfWeek);
  }
  const QuandaWeekCycle& weeks =
      dynamic_cast<const QuandaWeekCycleDateMask*>(&cycle) != nullptr
          ? dynamic_cast<const QuandaWeekCycleDateMask&>(cycle).cycle()
          : dynamic_cast<const QuandaDaysOfWeeksDateMask&>(cycle).cycle();
  return weeks.entryOf(start.daysSinceDatum(), firstDayOfWeek);
}

std::string joinedCodes(const std::vector<std::string>& codes) {
  std::string text;
  for (const std::string& code : codes) text += (text.empty() ? "" : ",") + code;
  return text;
}

// The RRULE value of a plan, or the part that cannot be said.
KeelResult<std::string> ruleText(Plan& plan, QuandaDayOfGregorianWeek firstDayOfWeek) {
  if (plan.hasOrdinalWeekdays && plan.weekdays) {
    return inexpressible(*plan.ruleParts.front(), "days of the week beside weekdays of the month");
  }
  if (plan.frequency.empty()) {
    plan.frequency = plan.hasOrdinalWeekdays || plan.hasMonthDays ? "MONTHLY"
                     : plan.weekdays                              ? "WEEKLY"
                                                                  : "DAILY";
  }
  if (plan.frequency == "DAILY" && plan.hasOrdinalWeekdays) {
    return inexpressible(*plan.cycle, "a day cycle with a weekday of the month");
  }
  if (plan.frequency == "WEEKLY" && (plan.hasOrdinalWeekdays || plan.hasMonthDays)) {
    return inexpressible(*plan.cycle, "a week cycle with a day or weekday of the month");
  }
  std::string text = "FREQ=" + std::string(plan.frequency);
  if (plan.interval > 1) text += ";INTERVAL=" + std::to_string(plan.interval);
  if (plan.until) text += ";UNTIL=" + compactDate(*plan.until);
  text += ";WKST=" + std::string(weekdayCodes[ordinal(firstDayOfWeek)]);
  std::vector<std::string> byDay;
  if (plan.frequency == "WEEKLY" && !plan.weekdays)
    plan.weekdays = QuandaDayOfGregorianWeekSet::all();
  for (std::uint32_t weekday = 0; weekday < 7 && plan.weekdays; ++weekday) {
    if (plan.weekdays->containsOrdinal(weekday)) byDay.emplace_back(weekdayCodes[weekday]);
  }
  for (const auto& [week, weekday] : plan.ordinalWeekdays) {
    byDay.push_back(std::to_string(week) + std::string(weekdayCodes[weekday]));
  }
  if (!byDay.empty()) text += ";BYDAY=" + joinedCodes(byDay);
  if (plan.frequency == "MONTHLY" && !plan.hasMonthDays && !plan.hasOrdinalWeekdays &&
      !plan.weekdays) {
    // Every day of the months: a monthly rule otherwise keeps to its start's day.
    plan.hasMonthDays = true;
    for (int day = 1; day <= 31; ++day) plan.monthDays.push_back(day);
  }
  std::vector<std::string> days;
  for (int day : plan.monthDays) days.push_back(std::to_string(day));
  if (!days.empty()) text += ";BYMONTHDAY=" + joinedCodes(days);
  std::vector<std::string> months;
  for (int month = 1; month <= 12 && plan.months; ++month) {
    if (plan.months->contains(static_cast<std::uint8_t>(month))) {
      months.push_back(std::to_string(month));
    }
  }
  if (!months.empty()) text += ";BYMONTH=" + joinedCodes(months);
  return text;
}

// The dates of `mask` from `from` on, at most mostListedDates of them, appended to `dates`.
std::optional<KeelError> listDates(const QuandaDateMasking& mask, const QuandaDateMasking& named,
                                   QuandaAbstractDate from, QuandaDayOfGregorianWeek firstDayOfWeek,
                                   std::vector<QuandaAbstractDate>& dates) {
  for (QuandaAbstractDate date :
       mask.matchingDates(KeelDomain(from, QuandaAbstractDate::validRange.max()), firstDayOfWeek)) {
    if (dates.size() == mostListedDates) {
      return inexpressible(named, "more than 1000 dates to add or leave out");
    }
    dates.push_back(date);
  }
  return std::nullopt;
}

// ---- Import ------------------------------------------------------------------------------------

KeelError unreadable(std::string_view text, std::string_view part, std::string_view reason) {
  return KeelError::fault(
      "Unreadable recurrence rule",
      {{"rule", std::string(text)}, {"part", std::string(part)}, {"reason", std::string(reason)}},
      path, importSignature);
}
KeelError unsupported(std::string_view part, std::string_view reason) {
  return KeelError::fault("Unsupported recurrence rule part",
                          {{"part", std::string(part)}, {"reason", std::string(reason)}}, path,
                          importSignature);
}

std::optional<int> signedNumber(std::string_view text) {
  const bool negative = !text.empty() && text[0] == '-';
  if (!text.empty() && (text[0] == '-' || text[0] == '+')) text.remove_prefix(1);
  if (text.empty() || text[0] == '+' || text[0] == '-') return std::nullopt;
  const auto value = quanda_detail::parseUnsignedDecimal<std::uint32_t>(text);
  if (!value || *value > 100000) return std::nullopt;
  return negative ? -static_cast<int>(*value) : static_cast<int>(*value);
}

std::optional<std::uint32_t> weekdayOfCode(std::string_view code) {
  const auto found = std::find(weekdayCodes.begin(), weekdayCodes.end(), code);
  if (found == weekdayCodes.end()) return std::nullopt;
  return static_cast<std::uint32_t>(found - weekdayCodes.begin());
}

QuandaDayOfGregorianWeek weekdayOfOrdinal(std::uint32_t weekday) {
  return makeDayOfGregorianWeek(static_cast<std::uint8_t>(weekday));
}

struct RuleParts {
  std::string frequency;
  std::uint32_t interval = 1;
  std::optional<std::uint32_t> count;
  std::optional<QuandaAbstractDate> until;
  std::vector<std::pair<int, std::uint32_t>> byDay;  // (ordinal or 0, weekday ordinal)
  std::vector<int> byMonthDay;
  std::vector<int> byMonth;
  std::vector<int> bySetPos;
  QuandaDayOfGregorianWeek firstDayOfWeek = QuandaDayOfGregorianWeek::monday;
};

KeelResult<QuandaAbstractDate> compactDateOf(std::string_view text, std::string_view part) {
  if (text.size() != 8) {
    return unsupported(part, "a date-time or a date not written yyyymmdd: only dates are read");
  }
  auto date = QuandaAbstractDate::makeFromIso8601StringWithoutSeparators(text);
  if (!date)
    return KeelError::wrap(date.error(), {{"part", std::string(part)}}, path, importSignature);
  return date;
}

// The list of numbers of a BY part, each within -most...most and not 0.
KeelResult<std::vector<int>> numberList(std::string_view text, std::string_view name,
                                        std::string_view value, int least, int most) {
  std::vector<int> numbers;
  for (const std::string& item : quanda_detail::splitKeepingEmpty(value, ',')) {
    const auto number = signedNumber(item);
    if (!number || *number == 0 || *number < least || *number > most) {
      return unreadable(text, std::string(name) + "=" + std::string(value),
                        "\"" + item + "\" is not one of its numbers");
    }
    numbers.push_back(*number);
  }
  return numbers;
}

KeelResult<RuleParts> readRule(std::string_view text, std::string_view value) {
  RuleParts parts;
  std::set<std::string> seen;
  for (const std::string& item : quanda_detail::splitKeepingEmpty(value, ';')) {
    const std::size_t equals = item.find('=');
    if (equals == std::string::npos) return unreadable(text, item, "NAME=value expected");
    const std::string name = item.substr(0, equals);
    const std::string_view setting = std::string_view(item).substr(equals + 1);
    if (!seen.insert(name).second) return unreadable(text, name, "given twice");
    if (name == "FREQ") {
      if (setting != "DAILY" && setting != "WEEKLY" && setting != "MONTHLY" &&
          setting != "YEARLY") {
        return unsupported(item, "only DAILY, WEEKLY, MONTHLY and YEARLY rules are dates");
      }
      parts.frequency = setting;
    } else if (name == "INTERVAL" || name == "COUNT") {
      const auto number = signedNumber(setting);
      if (!number || *number < 1 || setting[0] == '-' || setting[0] == '+') {
        return unreadable(text, item, "a whole number of at least 1 expected");
      }
      if (name == "INTERVAL") {
        parts.interval = static_cast<std::uint32_t>(*number);
      } else {
        parts.count = static_cast<std::uint32_t>(*number);
      }
    } else if (name == "UNTIL") {
      auto until = compactDateOf(setting, item);
      if (!until) return until.error();
      parts.until = until.value();
    } else if (name == "WKST") {
      const auto weekday = weekdayOfCode(setting);
      if (!weekday) return unreadable(text, item, "a weekday code (MO ... SU) expected");
      parts.firstDayOfWeek = weekdayOfOrdinal(*weekday);
    } else if (name == "BYDAY") {
      for (const std::string& entry : quanda_detail::splitKeepingEmpty(setting, ',')) {
        const auto weekday = entry.size() >= 2
                                 ? weekdayOfCode(std::string_view(entry).substr(entry.size() - 2))
                                 : std::nullopt;
        const std::string_view prefix = std::string_view(entry).substr(0, entry.size() - 2);
        const auto week = prefix.empty() ? std::optional<int>(0) : signedNumber(prefix);
        if (!weekday || !week || (!prefix.empty() && (*week == 0 || std::abs(*week) > 53))) {
          return unreadable(text, item, "\"" + entry + "\" is not a weekday (MO, 2TU, -1FR)");
        }
        parts.byDay.emplace_back(*week, *weekday);
      }
    } else if (name == "BYMONTHDAY") {
      auto days = numberList(text, name, setting, -31, 31);
      if (!days) return days.error();
      parts.byMonthDay = days.value();
    } else if (name == "BYMONTH") {
      auto months = numberList(text, name, setting, 1, 12);
      if (!months) return months.error();
      parts.byMonth = months.value();
    } else if (name == "BYSETPOS") {
      auto positions = numberList(text, name, setting, -366, 366);
      if (!positions) return positions.error();
      parts.bySetPos = positions.value();
    } else {
      return unsupported(name, "a rule part whose occurrences are not whole dates of this library");
    }
  }
  if (parts.frequency.empty()) return unreadable(text, value, "FREQ is missing");
  if (parts.count && parts.until) return unreadable(text, value, "COUNT and UNTIL together");
  return parts;
}

// The weekdays of the month of a BYDAY (and BYSETPOS) list: any of its parts.
KeelResult<Mask> weekdaysOf(const RuleParts& parts) {
  std::map<std::uint32_t, std::pair<std::set<std::uint8_t>, std::set<std::uint8_t>>> ordinals;
  std::set<QuandaDayOfGregorianWeek> plain;
  std::vector<std::pair<int, std::uint32_t>> entries = parts.byDay;
  if (!parts.bySetPos.empty()) {
    if (parts.byDay.size() != 1 || parts.byDay[0].first != 0 || !parts.byMonthDay.empty()) {
      return unsupported("BYSETPOS", "only beside a BYDAY of one weekday without ordinal");
    }
    entries.clear();
    for (int position : parts.bySetPos) entries.emplace_back(position, parts.byDay[0].second);
  }
  for (const auto& [week, weekday] : entries) {
    if (week == 0) {
      plain.insert(weekdayOfOrdinal(weekday));
    } else if (std::abs(week) <= 5) {  // a month holds no sixth weekday of a kind
      auto& sets = ordinals[weekday];
      (week > 0 ? sets.first : sets.second).insert(static_cast<std::uint8_t>(std::abs(week)));
    }
  }
  Masks masks;
  if (!plain.empty()) masks.push_back(std::make_shared<QuandaDaysOfWeekDateMask>(plain));
  for (const auto& [weekday, sets] : ordinals) {
    const QuandaDayOfGregorianWeekSet day{weekdayOfOrdinal(weekday)};
    if (!sets.first.empty()) {
      masks.push_back(std::make_shared<QuandaWeekdaysOfMonthDateMask>(day, sets.first));
    }
    if (!sets.second.empty()) {
      masks.push_back(std::make_shared<QuandaReverseWeekdaysOfMonthDateMask>(day, sets.second));
    }
  }
  if (masks.empty())
    return Mask(
        std::make_shared<QuandaDateRangesDateMask>(std::vector<QuandaDateRangesDateMask::Range>{}));
  return anyOfOrSingle(std::move(masks));
}

Mask monthDaysOf(const std::vector<int>& days) {
  std::set<std::uint8_t> fromStart;
  std::set<std::uint8_t> fromEnd;
  for (int day : days)
    (day > 0 ? fromStart : fromEnd).insert(static_cast<std::uint8_t>(std::abs(day)));
  Masks masks;
  if (!fromStart.empty()) masks.push_back(std::make_shared<QuandaDaysOfMonthDateMask>(fromStart));
  if (!fromEnd.empty())
    masks.push_back(std::make_shared<QuandaReverseDaysOfMonthDateMask>(fromEnd));
  return anyOfOrSingle(std::move(masks));
}

KeelResult<Mask> maskOf(const RuleParts& parts, QuandaAbstractDate start) {
  Masks all;
  const bool hasOrdinal = std::any_of(parts.byDay.begin(), parts.byDay.end(),
                                      [](const auto& entry) { return entry.first != 0; });
  const bool daily = parts.frequency == "DAILY";
  const bool weekly = parts.frequency == "WEEKLY";
  const bool yearly = parts.frequency == "YEARLY";
  if ((daily || weekly) && (hasOrdinal || !parts.bySetPos.empty())) {
    return unsupported(hasOrdinal ? "BYDAY" : "BYSETPOS",
                       "an ordinal weekday in a daily or weekly rule");
  }
  if (yearly && hasOrdinal && parts.byMonth.empty()) {
    return unsupported("BYDAY", "an ordinal weekday of the year (a yearly rule without BYMONTH)");
  }
  if (yearly && !parts.bySetPos.empty() && parts.byMonth.size() != 1) {
    return unsupported("BYSETPOS", "a position in a year of more than one month");
  }
  if (weekly && !parts.byMonthDay.empty()) {
    return unsupported("BYMONTHDAY", "days of the month in a weekly rule");
  }
  if (!parts.bySetPos.empty() && daily) return unsupported("BYSETPOS", "in a daily rule");
  const std::uint32_t interval = parts.interval;
  if (daily) {
    if (interval > 1) {
      all.push_back(
          std::make_shared<QuandaDayCycleDateMask>(start.daysSinceDatum(), oneOnThenOff(interval)));
    }
  } else if (weekly) {
    QuandaDayOfGregorianWeekSet days{start.dayOfWeek()};
    if (!parts.byDay.empty()) {
      std::set<QuandaDayOfGregorianWeek> named;
      for (const auto& entry : parts.byDay) named.insert(weekdayOfOrdinal(entry.second));
      days = QuandaDayOfGregorianWeekSet(named);
    }
    if (interval > 1) {
      all.push_back(
          std::make_shared<QuandaDaysOfWeeksDateMask>(start, days, oneOnThenOff(interval)));
    } else {
      all.push_back(std::make_shared<QuandaDaysOfWeekDateMask>(days));
    }
  } else {
    if (interval > 1) {
      // Every n-th month from the start's, or every n-th year from January of the start's.
      all.push_back(
          yearly ? std::make_shared<QuandaMonthCycleDateMask>(
                       QuandaAbstractDateFieldsAccess::makeFromValidFields(start.year(), 1, 1),
                       oneOnThenOff(12 * interval, 12))
                 : std::make_shared<QuandaMonthCycleDateMask>(start, oneOnThenOff(interval)));
    }
    const bool dayLevel = !parts.byDay.empty() || !parts.byMonthDay.empty();
    // A yearly rule keeps to its start's month unless BYMONTH, or BYDAY alone, says otherwise.
    if (yearly && parts.byMonth.empty() && (parts.byDay.empty() || !parts.byMonthDay.empty())) {
      all.push_back(std::make_shared<QuandaMonthsOfYearDateMask>(QuandaOrdinalSet{start.month()}));
    }
    if (!dayLevel)
      all.push_back(std::make_shared<QuandaDaysOfMonthDateMask>(QuandaOrdinalSet{start.day()}));
  }
  if (!weekly && !parts.byDay.empty()) {
    auto weekdays = weekdaysOf(parts);
    if (!weekdays) return weekdays.error();
    all.push_back(weekdays.value());
  }
  if (!parts.byMonthDay.empty()) all.push_back(monthDaysOf(parts.byMonthDay));
  if (!parts.byMonth.empty()) {
    std::set<std::uint8_t> months;
    for (int month : parts.byMonth) months.insert(static_cast<std::uint8_t>(month));
    all.push_back(std::make_shared<QuandaMonthsOfYearDateMask>(months));
  }
  if (parts.until && *parts.until < start) {
    return Mask(
        std::make_shared<QuandaDateRangesDateMask>(std::vector<QuandaDateRangesDateMask::Range>{}));
  }
  all.push_back(std::make_shared<QuandaDateRangeDateMask>(
      KeelDomain(start, parts.until.value_or(QuandaAbstractDate::validRange.max()))));
  return Mask(std::make_shared<QuandaAllOfDateMask>(std::move(all)));
}

// Unfolds continuation lines (a line break followed by a space or a tab).
std::string unfolded(std::string_view text) {
  std::string result;
  for (std::size_t index = 0; index < text.size(); ++index) {
    const bool crlf = text[index] == '\r' && index + 1 < text.size() && text[index + 1] == '\n';
    const std::size_t next = index + (crlf ? 2 : 1);
    if ((crlf || text[index] == '\n') && next < text.size() &&
        (text[next] == ' ' || text[next] == '\t')) {
      index = next;
      continue;
    }
    result += text[index];
  }
  return result;
}

}  // namespace

std::string foldVCalendarLine(std::string_view line) {
  constexpr std::size_t octets = 75;
  std::string folded;
  folded.reserve(line.size() + line.size() / 70 * 3 + 2);
  std::size_t limit = octets;  // the first line has 75 octets, the others a space and 74
  while (line.size() > limit) {
    std::size_t cut = limit;
    while (cut > 0 && (static_cast<unsigned char>(line[cut]) & 0xC0U) == 0x80U) --cut;
    folded.append(line.substr(0, cut));
    folded += "\r\n ";
    line.remove_prefix(cut);
    limit = octets - 1;
  }
  folded.append(line);
  folded += "\r\n";
  return folded;
}

std::string QuandaRecurrenceRule::text() const {
  std::string result = "DTSTART;VALUE=DATE:" + compactDate(start) + "\r\nRRULE:" + rule + "\r\n";
  const auto addLine = [&](std::string_view name, const std::vector<QuandaAbstractDate>& dates) {
    if (dates.empty()) return;
    std::string line = std::string(name) + ";VALUE=DATE:";
    for (std::size_t index = 0; index < dates.size(); ++index) {
      line += (index == 0 ? "" : ",") + compactDate(dates[index]);
    }
    result += foldVCalendarLine(line);
  };
  addLine("RDATE", additions);
  addLine("EXDATE", exclusions);
  return result;
}

KeelResult<QuandaRecurrenceRule> QuandaRecurrenceRule::exporting(
    const QuandaDateMasking& mask, QuandaAbstractDate start,
    QuandaDayOfGregorianWeek firstDayOfWeek) {
  const auto whole = KeelDomain(start, QuandaAbstractDate::validRange.max());
  const auto first = mask.firstMatch(whole, firstDayOfWeek);
  if (!first) {
    return KeelError::fault("Date mask has no occurrence",
                            {{"mask", mask.description()}, {"start", start}}, path,
                            exportSignature);
  }
  // any of (a rule, dates ...): the dates complete the rule as RDATE.
  Mask rule;
  Masks added;
  if (const auto* any = dynamic_cast<const QuandaAnyOfDateMask*>(&mask)) {
    for (const Mask& part : any->masks()) {
      if (isRanges(*part)) {
        added.push_back(part);
      } else if (rule != nullptr) {
        return inexpressible(*part, "any of two rules");
      } else {
        rule = part;
      }
    }
    // Dates alone: a rule of the first date only, the others added.
    if (rule == nullptr) {
      rule = std::make_shared<QuandaDateRangeDateMask>(KeelDomain(*first, *first));
    }
  }
  Plan plan;
  if (rule != nullptr) {
    if (auto error = ::plan(plan, rule)) return *error;
  } else {
    // The mask itself, held without ownership for the planning.
    if (auto error = ::plan(plan, Mask(Mask(), &mask))) return *error;
  }
  auto text = ruleText(plan, firstDayOfWeek);
  if (!text) return text.error();
  QuandaRecurrenceRule result{*first, text.value(), {}, {}};
  const Mask ruleMask = std::make_shared<QuandaAllOfDateMask>(plan.ruleParts);
  if (plan.cycle != nullptr && !cycleRunsFrom(*plan.cycle, *first, firstDayOfWeek)) {
    return inexpressible(*plan.cycle,
                         "the first date lies off the cycle or before its first period");
  }
  if (plan.rangeStart && *first < *plan.rangeStart) {
    return inexpressible(*plan.range, "the first date is an added date before the range");
  }
  for (const Mask& excluded : plan.exclusions) {
    const QuandaAllOfDateMask inside({ruleMask, excluded});
    if (auto error = listDates(inside, *excluded, *first, firstDayOfWeek, result.exclusions)) {
      return *error;
    }
  }
  for (const Mask& dates : added) {
    const QuandaAllOfDateMask outside({dates, std::make_shared<QuandaNotDateMask>(ruleMask)});
    if (auto error = listDates(outside, *dates, *first, firstDayOfWeek, result.additions)) {
      return *error;
    }
  }
  // The recurrence set is (RRULE and RDATE) less EXDATE, so a date that an added range brings
  // back is not left out.
  std::erase_if(result.exclusions, [&](QuandaAbstractDate date) {
    return std::any_of(added.begin(), added.end(),
                       [&](const Mask& dates) { return dates->matches(date, firstDayOfWeek); });
  });
  if (result.exclusions.size() + result.additions.size() > mostListedDates) {
    return inexpressible(mask, "more than 1000 dates to add or leave out");
  }
  // DTSTART is an occurrence in any case; the lists hold each date once, in order.
  const auto tidy = [&](std::vector<QuandaAbstractDate>& dates) {
    std::sort(dates.begin(), dates.end());
    dates.erase(std::unique(dates.begin(), dates.end()), dates.end());
  };
  tidy(result.exclusions);
  tidy(result.additions);
  std::erase(result.additions, *first);
  return result;
}

KeelResult<QuandaImportedRecurrence> QuandaRecurrenceRule::importing(
    std::string_view text, std::optional<QuandaAbstractDate> start) {
  std::optional<std::string> rule;
  const std::string lines = unfolded(text);
  for (std::string line : quanda_detail::splitKeepingEmpty(lines, '\n')) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty()) continue;
    // Names and values of these lines are case-insensitive (the dates are digits).
    std::transform(line.begin(), line.end(), line.begin(), [](unsigned char character) {
      return static_cast<char>(std::toupper(character));
    });
    const std::size_t colon = line.find(':');
    const std::string name = line.substr(0, std::min(colon, line.find(';')));
    if (name == "DTSTART") {
      const std::string parameters = line.substr(name.size(), colon - name.size());
      if (colon == std::string::npos || (!parameters.empty() && parameters != ";VALUE=DATE")) {
        return unsupported(line, "a DTSTART other than a date");
      }
      auto date = compactDateOf(std::string_view(line).substr(colon + 1), line);
      if (!date) return date.error();
      start = date.value();
    } else if (name == "RRULE" && colon == 5 && !rule) {
      rule = line.substr(colon + 1);
    } else if (line.starts_with("FREQ=") && !rule) {
      rule = line;
    } else {
      return unreadable(text, line, "a DTSTART line and one RRULE line expected");
    }
  }
  if (!rule) return unreadable(text, "", "no RRULE");
  if (!start) {
    return KeelError::fault("Recurrence rule without start", {{"rule", *rule}}, path,
                            importSignature);
  }
  auto parts = readRule(text, *rule);
  if (!parts) return parts.error();
  auto mask = maskOf(parts.value(), *start);
  if (!mask) return mask.error();
  QuandaImportedRecurrence imported{mask.value(), parts.value().firstDayOfWeek, *start};
  if (const auto count = parts.value().count) {
    // The range ends on the COUNT-th occurrence.
    std::uint32_t seen = 0;
    for (QuandaAbstractDate date : imported.mask->matchingDates(
             KeelDomain(*start, QuandaAbstractDate::validRange.max()), imported.firstDayOfWeek)) {
      if (++seen == *count) {
        imported.mask = std::make_shared<QuandaAllOfDateMask>(Masks{
            imported.mask, std::make_shared<QuandaDateRangeDateMask>(KeelDomain(*start, date))});
        break;
      }
    }
  }
  return imported;
}
