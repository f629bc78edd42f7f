// quanda convert: places a wall time in one zone and reads the same instant in another, or goes
// between wall times and the logic clock's seconds since 1970.
//
//   quanda convert 2024-03-10T02:30:00 --from America/New_York --to Europe/Berlin
//   quanda convert 2024-03-10T02:30:00 --from America/New_York --to utc
//   quanda convert 1709211909 --to Asia/Kolkata          (seconds since 1970 in, a wall time out)
//   quanda convert 2024-02-29T13:05:09 --from utc --to seconds
//
// A zone is a name of the system's tz database, "utc", or "local" (the system's own zone, the
// default for --from); --to also takes "seconds". A wall time that the zone skips or repeats is
// placed as the library places it. An instant whose wall time would fall outside the years
// 1...9999 in the zone it is read in is refused with the library's error.
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

#include "Quanda/Abstract/QuandaAbstractNaturalDateTime.h"
#include "Quanda/QuandaLogicTimeInterval.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaCommandSupport.h"
#include "tools/quanda/QuandaDevice.h"
#include "tools/quanda/QuandaOptions.h"

namespace {

using DateTime = QuandaAbstractNaturalDateTime;
using Adapter = QuandaFoundationCalendarAdapter;

constexpr std::string_view path = "tools/quanda/ConvertCommand";
constexpr std::string_view utc = "utc";
constexpr std::string_view local = "local";
constexpr std::string_view seconds = "seconds";

struct Arguments {
  std::string value;
  std::string from;
  std::string to = std::string(utc);
};

// The zone identifier a zone argument stands for: "UTC" for utc, the device's for local.
std::string zoneIdentifier(const std::string& zone, const Adapter& adapter) {
  if (zone == utc) return "UTC";
  if (zone == local) return adapter.currentTimezoneIdentifier();
  return zone;
}

// How a zone argument is shown beside a wall time.
std::string zoneLabel(const std::string& zone, const Adapter& adapter) {
  if (zone == local) return zoneIdentifier(zone, adapter) + " (local)";
  return zoneIdentifier(zone, adapter);
}

// The instant of the wall time in the zone, through the library's operation for that zone.
KeelResult<KeelDate> placed(const DateTime& wallTime, const std::string& zone, Adapter& adapter) {
  if (zone == utc) return wallTime.makeUtcFoundationDate(adapter);
  if (zone == local) return wallTime.makeLocalFoundationDate(adapter);
  return wallTime.makeFoundationDate(adapter, zone);
}

// The wall time of the instant in the zone; the instant is checked first, since reading an
// instant far outside the calendar's years is not a question the library answers.
KeelResult<DateTime> read(QuandaLogicTimeInterval instant, const std::string& zone,
                          Adapter& adapter) {
  const KeelResult<KeelDate> checked = adapter.checkedFoundationDate(
      adapter.makeFoundationDate(instant), zoneIdentifier(zone, adapter));
  if (!checked) return checked.error();
  if (zone == utc) return DateTime::makeUsingUtcTimezone(instant, adapter);
  if (zone == local) return DateTime::makeUsingLocalTimezone(instant, adapter);
  return DateTime::makeUsingTimezone(instant, adapter, zone);
}

QuandaOutcome run(const Arguments& arguments, std::ostream& out) {
  const std::shared_ptr<Adapter> adapter = makeQuandaAdapter("");
  const auto refused = [&](const KeelError& error) {
    return KeelError::wrap(error,
                           {{"value", arguments.value},
                            {"from", arguments.from.empty() ? "-" : arguments.from},
                            {"to", arguments.to}},
                           path, "convert");
  };
  KeelArguments rows;
  std::optional<QuandaLogicTimeInterval> instant;
  if (const std::optional<double> number = readQuandaNumber<double>(arguments.value)) {
    if (!arguments.from.empty()) {
      throw CLI::ValidationError("--from", "seconds since 1970 belong to no zone");
    }
    instant = QuandaLogicTimeInterval(*number);
  } else {
    if (arguments.value.find('T') == std::string::npos) {
      throw CLI::ValidationError(
          "value", "expected yyyy-mm-ddThh:mm:ss or seconds since 1970, not " + arguments.value);
    }
    const std::string from = arguments.from.empty() ? std::string(local) : arguments.from;
    if (from == seconds) throw CLI::ValidationError("--from", "a wall time is not seconds");
    const KeelResult<DateTime> wallTime = DateTime::makeFromRfc3339String(arguments.value);
    if (!wallTime) return refused(wallTime.error());
    const KeelResult<KeelDate> date = placed(wallTime.value(), from, *adapter);
    if (!date) return refused(date.error());
    instant = QuandaLogicTimeInterval(date.value());
    rows.emplace_back(
        "from", wallTime.value().serializedToRfc3339String() + " " + zoneLabel(from, *adapter));
  }
  rows.emplace_back("seconds since 1970", *instant);
  if (arguments.to != seconds) {
    const KeelResult<DateTime> wallTime = read(*instant, arguments.to, *adapter);
    if (!wallTime) return refused(wallTime.error());
    rows.emplace_back("to", wallTime.value().serializedToRfc3339String() + " " +
                                zoneLabel(arguments.to, *adapter));
  }
  printQuandaTable(rows, out);
  return quandaDone;
}

QuandaRun declare(CLI::App& command) {
  auto arguments = std::make_shared<Arguments>();
  command
      .add_option("value", arguments->value,
                  "yyyy-mm-ddThh:mm:ss, or seconds since 1970 (the logic clock)")
      ->type_name("")
      ->required();
  command.add_option("--from", arguments->from, "The wall time's zone: a tz name, utc or local")
      ->type_name("ZONE");
  command.add_option("--to", arguments->to, "A tz name, utc, local or seconds (utc by default)")
      ->type_name("ZONE");
  return [arguments](std::ostream& out) { return run(*arguments, out); };
}

const bool registered = registerQuandaCommand({
    .name = "convert",
    .summary = "Reads a wall time or seconds since 1970 as the same instant elsewhere.",
    .detail = "Zones are names of the system's tz database (Europe/Berlin), utc, or local, the\n"
              "system's zone and the default for --from. Seconds since 1970 belong to no zone.\n"
              "A wall time that a zone skips moves forward by the gap, one it repeats is the\n"
              "earlier of its two instants.\n",
    .declare = declare,
    .demonstrations =
        {
            {.args = {"2024-03-10T02:30:00", "--from", "America/New_York", "--to",
                      "Europe/Berlin"}},
            {.args = {"2024-11-03T01:30:00", "--from", "America/New_York", "--to", "utc"}},
            {.args = {"1709211909", "--to", "Asia/Kolkata"}},
            {.args = {"2024-02-29T13:05:09", "--from", "utc", "--to", "seconds"}},
            {.args = {"2024-02-29T13:05:09", "--from", "Mars/Olympus_Mons"}, .refused = true},
            {.args = {"1e15", "--to", "utc"}, .refused = true},
        },
});

}  // namespace
