#include "Quanda/FoundationAdapting/QuandaTimezoneDatabase.h"

#include <absl/time/time.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <unordered_set>

#include "Quanda/FoundationAdapting/QuandaFoundationAdaptingPrivate.h"

namespace {

constexpr std::string_view path = "Quanda/Foundation Adapting/QuandaTimezoneDatabase";

struct StringViewHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const noexcept {
    return std::hash<std::string_view>{}(text);
  }
};

// The names of the system's database, read once from its compact source: "Z <name> ..." lines
// are zones, "L <target> <name>" lines links. "Factory" is a zone in the file but no place.
struct Database {
  std::vector<std::string> identifiers;
  std::unordered_set<std::string, StringViewHash, std::equal_to<>> known;
  std::string version;

  Database() {
    const char* directory = std::getenv("TZDIR");
    std::ifstream source(std::string(directory != nullptr && *directory != '\0'
                                         ? directory
                                         : "/usr/share/zoneinfo") +
                         "/tzdata.zi");
    std::string line;
    while (std::getline(source, line)) {
      std::istringstream words(line);
      std::string kind, first, second;
      words >> kind >> first;
      if (kind == "#" && first == "version") {
        words >> version;
      } else if (kind == "Z" && first != "Factory") {
        known.insert(first);
      } else if (kind == "L" && words >> second) {
        known.insert(second);
      }
    }
    known.insert("UTC");
    identifiers.assign(known.begin(), known.end());
    std::sort(identifiers.begin(), identifiers.end());
  }
};

const Database& database() {
  static const Database shared;
  return shared;
}

}  // namespace

const std::vector<std::string>& QuandaTimezoneDatabase::identifiers() {
  return database().identifiers;
}

bool QuandaTimezoneDatabase::contains(std::string_view identifier) {
  const auto& known = database().known;
  return known.find(identifier) != known.end();
}

const std::string& QuandaTimezoneDatabase::version() { return database().version; }

KeelResult<QuandaTimezoneDatabase::Offset> QuandaTimezoneDatabase::offset(
    std::string_view timezoneIdentifier, KeelDate foundationDate) {
  constexpr std::string_view function = "offset(timezoneIdentifier:foundationDate:)";
  const std::optional<absl::TimeZone> zone =
      quanda_adapting::loadSystemTimezone(timezoneIdentifier);
  if (!zone) {
    return KeelError::fault("Failed to create timezone", {{"identifier", timezoneIdentifier}}, path,
                            function);
  }
  const double seconds = foundationDate.time_since_epoch().count();
  if (!std::isfinite(seconds)) {
    return KeelError::fault("Foundation date is not finite",
                            {{"timezoneIdentifier", timezoneIdentifier},
                             {"foundationDate", quanda_adapting::describeInstant(foundationDate)}},
                            path, function);
  }
  const absl::TimeZone::CivilInfo info = zone->At(absl::UnixEpoch() + absl::Seconds(seconds));
  return Offset{info.offset, info.is_dst, info.zone_abbr};
}

KeelResult<std::vector<QuandaTimezoneDatabase::Transition>> QuandaTimezoneDatabase::transitions(
    std::string_view timezoneIdentifier, KeelDate from, KeelDate to) {
  constexpr std::string_view function = "transitions(timezoneIdentifier:from:to:)";
  for (const KeelDate end : {from, to}) {
    if (const auto checked = offset(timezoneIdentifier, end); !checked) {
      return KeelError::wrap(checked.error(),
                             {{"timezoneIdentifier", timezoneIdentifier},
                              {"from", quanda_adapting::describeInstant(from)},
                              {"to", quanda_adapting::describeInstant(to)}},
                             path, function);
    }
  }
  const absl::TimeZone zone = *quanda_adapting::loadSystemTimezone(timezoneIdentifier);
  const auto instant = [](KeelDate date) {
    return absl::UnixEpoch() + absl::Seconds(date.time_since_epoch().count());
  };
  const auto offsetAt = [&zone](absl::Time time) {
    const absl::TimeZone::CivilInfo info = zone.At(time);
    return Offset{info.offset, info.is_dst, info.zone_abbr};
  };
  const absl::Time first = instant(std::min(from, to));
  const absl::Time last = instant(std::max(from, to));
  std::vector<Transition> found;
  absl::TimeZone::CivilTransition civil;
  // The search starts just before the last change at or before `first` (PrevTransition looks
  // strictly before the time it is given), or before the zone's first change when it has none.
  absl::Time cursor = absl::InfinitePast();
  if (zone.PrevTransition(first + absl::Seconds(1), &civil)) {
    cursor = zone.At(civil.to).trans - absl::Seconds(1);
  }
  while (zone.NextTransition(cursor, &civil)) {
    const absl::Time change = zone.At(civil.to).trans;
    if (change > last || change <= cursor) break;
    found.push_back(
        {KeelDate(KeelDate::duration(absl::ToDoubleSeconds(change - absl::UnixEpoch()))),
         offsetAt(change - absl::Seconds(1)), offsetAt(change)});
    cursor = change;
  }
  return found;
}

std::optional<absl::TimeZone> quanda_adapting::loadSystemTimezone(std::string_view identifier) {
  // Checked first: the loader would also read paths, "localtime" and "posixrules".
  if (!QuandaTimezoneDatabase::contains(identifier)) return std::nullopt;
  absl::TimeZone zone;
  if (!absl::LoadTimeZone(absl::string_view(identifier.data(), identifier.size()), &zone)) {
    return std::nullopt;
  }
  return zone;
}
