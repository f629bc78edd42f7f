#include "tools/quanda/QuandaMaskOccurrences.h"

#include <algorithm>
#include <functional>
#include <ostream>
#include <string_view>
#include <vector>

#include "Quanda/DateMasks/QuandaCalendarExport.h"
#include "Quanda/DateMasks/QuandaOccurrences.h"
#include "Quanda/DateMasks/QuandaRecurrenceRule.h"
#include "tools/quanda/QuandaDevice.h"

namespace {

constexpr std::string_view path = "tools/quanda/QuandaMaskOccurrences";

// The zone identifier a --zone argument stands for: none (the device's) for local.
std::optional<std::string> zoneIdentifier(const std::string& zone) {
  if (zone == "local") return std::nullopt;
  if (zone == "utc") return "UTC";
  return zone;
}

KeelResult<std::vector<QuandaOccurrence>> listed(const QuandaOccurrences& occurrences,
                                                 const QuandaMaskOccurrencesRequest& request,
                                                 QuandaCalendarAdapting& adapter) {
  if (request.after) return occurrences.next(request.count, *request.after, adapter);
  if (request.before) return occurrences.previous(request.count, *request.before, adapter);
  return occurrences.next(request.count, QuandaLogicTimeInterval(keelNow()), adapter);
}

KeelResult<std::string> calendarFile(const QuandaOccurrences& occurrences,
                                     const std::vector<QuandaOccurrence>& found,
                                     const QuandaMaskOccurrencesRequest& request,
                                     QuandaCalendarAdapting& adapter) {
  const QuandaAbstractDate first = std::min(found.front().date, found.back().date);
  const QuandaAbstractDate last = std::max(found.front().date, found.back().date);
  const QuandaCalendarEvent event{
      .uid = first.serializeToIso8601String() + "-" + occurrences.timeOfDay().description() + "-" +
             std::to_string(std::hash<std::string>{}(occurrences.description())) + "@quanda",
      .stamp = QuandaLogicTimeInterval(keelNow()),
      .summary = request.rule,
  };
  const auto rule =
      QuandaRecurrenceRule::exporting(occurrences.mask(), first, occurrences.firstDayOfWeek());
  if (!rule) return rule.error();
  return makeVCalendar(occurrences, rule.value(), last, event, adapter);
}

}  // namespace

QuandaOutcome printQuandaMaskOccurrences(const QuandaMaskOccurrencesRequest& request,
                                         std::ostream& out) {
  const auto refused = [&](const KeelError& error) {
    return KeelError::wrap(error,
                           {{"rule", request.rule}, {"--at", request.at}, {"--zone", request.zone}},
                           path, "mask");
  };
  const std::string time =
      std::count(request.at.begin(), request.at.end(), ':') == 1 ? request.at + ":00" : request.at;
  const auto timeOfDay = QuandaAbstractNaturalTimeOfDay::makeFromIso8601String(time);
  if (!timeOfDay) return refused(timeOfDay.error());
  const auto adapter = makeQuandaAdapter("");
  const QuandaOccurrences occurrences(request.mask, timeOfDay.value(), zoneIdentifier(request.zone),
                                      request.firstDay);
  const auto found = listed(occurrences, request, *adapter);
  if (!found) return refused(found.error());

  if (request.ics) {
    if (found.value().empty()) {
      return refused(KeelError::fault("No occurrence to write", {}, path, "mask"));
    }
    const auto file = calendarFile(occurrences, found.value(), request, *adapter);
    if (!file) return refused(file.error());
    out << file.value();
    return quandaDone;
  }
  for (const QuandaOccurrence& occurrence : found.value()) {
    const auto utc =
        QuandaAbstractNaturalDateTime::makeUsingUtcTimezone(occurrence.logicTimeInterval, *adapter);
    if (!utc) return refused(utc.error());
    out << occurrence.localDateTime.serializedToRfc3339String() << "  "
        << developmentLanguageTitleCaseName(occurrence.localDateTime.date().dayOfWeek()) << "  "
        << utc.value().serializedToRfc3339String() << "Z  "
        << QuandaOccurrence::describeOffset(occurrence.secondsFromGMT) << "\n";
  }
  if (found.value().size() < request.count) {
    out << (request.before ? "(no earlier occurrence down to 0001-01-01)\n"
                           : "(no later occurrence up to 9999-12-31)\n");
  }
  return quandaDone;
}
