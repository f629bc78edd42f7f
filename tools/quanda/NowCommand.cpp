// quanda now: the present in the device's zone (or --zone), as a person reads it in their locale
// and in the forms the program reads back, with the zone's offset and the logic clock's seconds.
//
//   quanda now
//   quanda now --zone Asia/Tokyo --locale ja_JP
#include <memory>
#include <ostream>
#include <string>

#include "Quanda/FoundationAdapting/QuandaTimezoneDatabase.h"
#include "Quanda/QuandaMockTimeProvider.h"
#include "tools/quanda/QuandaCommand.h"
#include "tools/quanda/QuandaCommandSupport.h"
#include "tools/quanda/QuandaDevice.h"

namespace {

constexpr std::string_view path = "tools/quanda/NowCommand";

struct Arguments {
  std::string locale;
  std::string zone;
};

QuandaOutcome run(const Arguments& arguments, std::ostream& out) {
  const std::string locale = quandaLocale(arguments.locale);
  const auto adapter = makeQuandaAdapter(locale, arguments.zone);
  const std::string zone = adapter->currentTimezoneIdentifier();
  const auto refused = [&](const KeelError& error) {
    return KeelError::wrap(error, {{"zone", zone}, {"locale", locale}}, path, "now");
  };
  // The clock is read once, so that every line shows the same instant.
  QuandaMockTimeProvider provider;
  provider.setCurrentLogicTimeIntervalOverride(
      makeQuandaTimeProvider()->currentLogicTimeInterval());
  const auto now = quandaNow(*adapter, provider);
  if (!now) return refused(now.error());
  const KeelDate instant = provider.currentLogicDate(*adapter);
  // The wall time is written as it stands, so the time's style names no zone.
  const auto text =
      now.value().formatWith(QuandaDateTimeFormatStyle::dateAndTime(QuandaDateFormatStyle::full,
                                                                    QuandaTimeFormatStyle::medium),
                             *adapter, locale);
  if (!text) return refused(text.error());
  const auto offset = QuandaTimezoneDatabase::offset(zone, instant);
  if (!offset) return refused(offset.error());
  printQuandaTable({{"now", text.value()},
                    {"RFC 3339", now.value().serializedToRfc3339String()},
                    {"zone", zone + ' ' + quandaOffsetText(offset.value().secondsFromGMT) + ' ' +
                                 offset.value().abbreviation},
                    {"seconds since 1970", *provider.currentLogicTimeIntervalOverride()}},
                   out);
  return quandaDone;
}

QuandaRun declare(CLI::App& command) {
  auto arguments = std::make_shared<Arguments>();
  addQuandaLocaleOption(command, arguments->locale);
  addQuandaZoneOption(command, arguments->zone);
  return [arguments](std::ostream& out) { return run(*arguments, out); };
}

const bool registered = registerQuandaCommand({
    .name = "now",
    .summary = "Shows the present date and time in the device's zone, or in --zone.",
    .detail = "The text follows --locale or LC_ALL/LANG; the RFC 3339 form is the one\n"
              "`quanda datetime` reads. For tests, QUANDA_NOW pins the clock to a UTC wall time\n"
              "(2024-07-14T10:00:00Z) or to seconds since 1970; every command reading the\n"
              "present (cal, date today, datetime now, time now, mask) then sees it.\n",
    .declare = declare,
    .demonstrations = {{.args = {}},
                       {.args = {"--zone", "Asia/Tokyo", "--locale", "ja_JP"}},
                       {.args = {"--zone", "Mars/Olympus_Mons"}, .refused = true}},
});

}  // namespace
