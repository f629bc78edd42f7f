// QuandaDurationDecomposition: the units and amounts in which a duration is written under a
// duration style's settings. The adapter localizes each piece and joins them; the rules that
// decide which pieces there are live here, once, and every text follows from them.
//
//   decomposeDuration(3725, durationFormatSettings(QuandaDurationFormatStyle::shortDelta))
//       // {hour 1, minute 2, second 5}: "1h 2m 5s"
//   decomposeDuration(400 * 86400.0,
//                     durationFormatSettings(QuandaDurationFormatStyle::longTermCompact))
//       // {year 1, month 1}: "1y 1m" (400 days are 1 year, 1 month and 4 days)
//
// The rules:
// - Units are taken from the largest allowed down. Settings that leave the allowed units to the
//   platform allow year, month, week, day, hour, minute and second.
// - Years and months are counted in the Gregorian calendar forward from 2001-01-01T00:00:00Z, so
//   their lengths vary as the calendar's do; weeks, days, hours, minutes and seconds are fixed.
// - Fractions of the smallest allowed unit are dropped, never rounded.
// - Zero units: dropAll (and the default of labelled styles) drops every zero unit; a duration
//   whose units are all zero shows its smallest allowed unit as 0. pad keeps every unit. The
//   default of the positional style drops leading zero units only.
// - A maximum unit count keeps that many consecutive units from the largest one shown (the first
//   non-zero one, or the largest allowed when padding); smaller units are dropped, never rounded,
//   and zero units inside the kept run are then dropped as above ("1h" for 3,605 s with two
//   units, not "1h 5s").
// - The sign is kept apart: a negative duration is marked negative when any amount shown is not
//   zero, and the amounts are those of its magnitude.
//
// Nothing for a duration that is not finite or whose whole seconds do not fit 64 bits.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "Quanda/Formatting/QuandaDurationFormatSettings.h"

struct QuandaDurationDecomposition {
  struct Piece {
    QuandaDurationFormatSettings::Unit unit;
    std::int64_t amount;

    friend constexpr bool operator==(const Piece&, const Piece&) = default;
  };

  bool isNegative = false;
  std::array<Piece, 7> storage{};
  std::uint8_t count = 0;

  // The pieces to show, largest unit first.
  std::span<const Piece> pieces() const noexcept { return {storage.data(), count}; }
};

std::optional<QuandaDurationDecomposition> decomposeDuration(
    double seconds, const QuandaDurationFormatSettings& settings) noexcept;
