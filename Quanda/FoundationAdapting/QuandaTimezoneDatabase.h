// QuandaTimezoneDatabase: the time zones the library knows, which are those of the system's tz
// database (the zoneinfo files the platform's own clocks use, kept up to date with the system).
//
// A zone identifier is valid when it is a Zone or Link name of that database, as its compact
// source (tzdata.zi, in TZDIR or /usr/share/zoneinfo) lists them: "Europe/Berlin", "UTC",
// "US/Eastern", "Etc/GMT+5". Names are compared exactly, so "europe/berlin" is unknown, as are
// offsets ("+05:30", "UTC+01:00"), paths ("/etc/localtime", "posix/Europe/Berlin", "localtime",
// "posixrules") and the "Factory" placeholder, which stands for no place. "UTC" is always known,
// even on a system without the database.
//
//   QuandaTimezoneDatabase::contains("America/New_York");                   // true
//   QuandaTimezoneDatabase::offset("Asia/Kolkata", keelNow())->secondsFromGMT;  // 19800
//   QuandaTimezoneDatabase::transitions("Europe/Berlin", from, to);  // CET -> CEST -> CET ...
//
// The list is read once per process, on first use, and is safe to use from any thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Keel/KeelDate.h"
#include "Keel/KeelResult.h"

class QuandaTimezoneDatabase {
 public:
  // A zone's offset from UTC at one instant.
  struct Offset {
    std::int32_t secondsFromGMT;
    bool isDaylightSavingTime;
    std::string abbreviation;  // "CET", "EDT", "+0545"

    friend bool operator==(const Offset&, const Offset&) = default;
  };

  // A change of a zone's offset (or of its daylight-saving flag or abbreviation): the first
  // instant of the new offset, and the offsets in force just before and from it on.
  struct Transition {
    KeelDate instant;
    Offset before;
    Offset after;

    friend bool operator==(const Transition&, const Transition&) = default;
  };

  // Every known identifier, sorted.
  static const std::vector<std::string>& identifiers();
  static bool contains(std::string_view identifier);
  // The database's version, such as "2025b"; empty when it does not say.
  static const std::string& version();

  // Fails with "Failed to create timezone" for an unknown identifier and with "Foundation date is
  // not finite" for a NaN or infinite instant.
  static KeelResult<Offset> offset(std::string_view timezoneIdentifier, KeelDate foundationDate);

  // The transitions that say which offset holds at each instant of from...to (a reversed span
  // means the same): the last one at or before `from`, when the zone has one, then every later
  // one up to `to`, in order. A zone whose offset never changed ("UTC", "Etc/GMT+5") has none;
  // offset() then tells its one offset. What the database records before 1900 or projects after
  // 2037 comes from its own rules, as for offset(). Fails as offset() does, for either instant.
  static KeelResult<std::vector<Transition>> transitions(std::string_view timezoneIdentifier,
                                                         KeelDate from, KeelDate to);
};
