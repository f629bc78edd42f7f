// quanda zones: lists the zone identifiers the library knows (the system's tz database), each
// with its offset from UTC, its abbreviation and whether it keeps daylight saving time, now or at
// a given instant.
//
//   quanda zones                              every zone, now
//   quanda zones berlin                       the zones whose identifier contains "berlin"
//   quanda zones america/ --at 2024-07-01T12:00:00
//
// The pattern matches any part of an identifier, whatever its case. The present comes from the
// library's time provider; --at takes a UTC wall time or seconds since 1970.
#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/FoundationAdapting/QuandaTimezoneDatabase.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaDevice.h"
#include "tools/quanda/QuandaOptions.h"

namespace {

constexpr std::string_view path = "tools/quanda/ZonesCommand";

struct Arguments {
  std::string pattern;
  std::string at;
};

std::string lowerCase(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return lower;
}

// The instant asked about: --at as seconds or as a UTC wall time, else the provider's present.
KeelResult<KeelDate> instantAsked(const Arguments& arguments, QuandaCalendarAdapting& adapter) {
  if (arguments.at.empty()) return makeQuandaTimeProvider()->currentLogicDate(adapter);
  if (const std::optional<double> seconds = readQuandaNumber<double>(arguments.at)) {
    return adapter.makeFoundationDate(QuandaLogicTimeInterval(*seconds));
  }
  const auto wallTime = QuandaAbstractNaturalDateTime::makeFromRfc3339String(arguments.at);
  if (!wallTime) return wallTime.error();
  return wallTime.value().makeUtcFoundationDate(adapter);
}

QuandaOutcome run(const Arguments& arguments, std::ostream& out) {
  const auto adapter = makeQuandaAdapter("");
  const KeelResult<KeelDate> at = instantAsked(arguments, *adapter);
  if (!at) return KeelError::wrap(at.error(), {{"--at", arguments.at}}, path, "zones");
  const std::string pattern = lowerCase(arguments.pattern);
  std::vector<std::string_view> matches;
  for (const std::string& identifier : QuandaTimezoneDatabase::identifiers()) {
    if (lowerCase(identifier).find(pattern) != std::string::npos) matches.push_back(identifier);
  }
  if (matches.empty()) {
    out << "No zone identifier contains \"" << arguments.pattern << "\".\n";
    return quandaDone;
  }
  std::size_t width = 0;
  for (const std::string_view identifier : matches) width = std::max(width, identifier.size());
  for (const std::string_view identifier : matches) {
    const auto offset = QuandaTimezoneDatabase::offset(identifier, at.value());
    if (!offset) {
      return KeelError::wrap(offset.error(), {{"zone", identifier}, {"--at", arguments.at}}, path,
                             "zones");
    }
    out << identifier << std::string(width - identifier.size() + 2, ' ')
        << quandaOffsetText(offset.value().secondsFromGMT) << "  " << offset.value().abbreviation
        << (offset.value().isDaylightSavingTime ? "  daylight saving" : "") << '\n';
  }
  return quandaDone;
}

QuandaRun declare(CLI::App& command) {
  auto arguments = std::make_shared<Arguments>();
  command.add_option("pattern", arguments->pattern, "Part of the identifiers to list, any case")
      ->type_name("");
  command
      .add_option("--at", arguments->at,
                  "The instant: yyyy-mm-ddThh:mm:ss in UTC or seconds since 1970 (now)")
      ->type_name("TIME");
  return [arguments](std::ostream& out) { return run(*arguments, out); };
}

const bool registered = registerQuandaCommand({
    .name = "zones",
    .summary = "Lists the zone identifiers with their offset from UTC, now or at --at.",
    .detail =
        "Each line: the identifier, its offset from UTC, its abbreviation, and\n"
        "\"daylight saving\" while it keeps summer time. The zones are those of the system's\n"
        "tz database.\n",
    .declare = declare,
    .demonstrations =
        {
            {.args = {"berlin", "--at", "2024-07-01T12:00:00"}},
            {.args = {"kolkata", "--at", "1709211909"}},
            {.args = {"america/new_", "--at", "2024-01-15T12:00:00"}},
            {.args = {"europe/", "--at", "2024-02-30T12:00:00"}, .refused = true},
        },
});

}  // namespace
