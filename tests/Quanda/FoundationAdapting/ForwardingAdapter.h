// A calendar adapter written outside the library: it forwards each of the 58 requirements to
// another adapter, counts the calls of each position, and can fail chosen positions or stand in
// for the duration text, so that tests see exactly what the library asks of an adapter and how it
// passes an adapter's failure on.
#pragma once

#include <array>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Quanda/FoundationAdapting/QuandaCalendarAdapting.h"

inline constexpr std::string_view injectedFailure = "Injected failure";
inline constexpr std::string_view forwardingAdapterPath = "tests/ForwardingAdapter";
inline constexpr std::string_view injectedFunction = "injected(position:)";

class ForwardingAdapter final : public QuandaCalendarAdapting {
 public:
  explicit ForwardingAdapter(QuandaCalendarAdapting& inner) : inner_(inner) {}

  // Calls of each requirement by its position in the interface (0 ... 57), in order (the one
  // const requirement counts too).
  mutable std::vector<int> calls;
  // Positions that fail with injectedFailure instead of forwarding.
  std::set<int> failing;
  // When set, the duration text answered in place of the inner adapter's.
  std::optional<QuandaFormattedDuration> durationAnswer;
  // The durations asked for, in seconds.
  std::vector<double> durations;

  int count(int position) const {
    int total = 0;
    for (const int call : calls) total += call == position;
    return total;
  }

  // clang-format off
#define FORWARD(position, Result, name, parameters, arguments)                              \
  Result name parameters override {                                                         \
    calls.push_back(position);                                                              \
    if (failing.contains(position)) {                                                       \
      return KeelError::fault(injectedFailure, {{"position", position}},                    \
                              forwardingAdapterPath, injectedFunction);                     \
    }                                                                                       \
    return inner_.name arguments;                                                           \
  }
  using Override = LocaleIdentifierOverride;
  using Day = QuandaDayOfGregorianWeek;
  using Interval = QuandaLogicTimeInterval;
  using Zone = std::string_view;
  FORWARD(0, KeelResult<Day>, preferredFirstDayOfWeek, (), ())
  FORWARD(1, KeelResult<QuandaPreferredTimeFormat>, preferredTimeFormat, (), ())
  FORWARD(2, KeelResult<std::vector<std::string>>, calendarColumnNames, (Override l, std::optional<Day> f, QuandaStandaloneDayNameFormatStyle s), (l, f, s))
  FORWARD(3, KeelResult<std::string>, amSymbol, (Override l), (l))
  FORWARD(4, KeelResult<std::string>, pmSymbol, (Override l), (l))
  std::string currentTimezoneIdentifier() const override { calls.push_back(5); return inner_.currentTimezoneIdentifier(); }
  FORWARD(6, KeelResult<std::string>, format, (DateComponents c, QuandaDateFormatStyle s, Override l), (c, s, l))
  FORWARD(7, KeelResult<std::string>, format, (DateComponents c, QuandaKnownDateFormatTemplate t, Override l), (c, t, l))
  FORWARD(8, KeelResult<std::string>, format, (KeelDate d, QuandaDateFormatStyle s, Override l), (d, s, l))
  FORWARD(9, KeelResult<std::string>, format, (KeelDate d, QuandaKnownDateFormatTemplate t, Override l), (d, t, l))
  FORWARD(10, KeelResult<std::string>, format, (DateComponents a, DateComponents b, QuandaDateRangeFormatStyle s, Override l), (a, b, s, l))
  FORWARD(11, KeelResult<std::string>, format, (DiscreteTimeComponents c, Override l, QuandaTimeFormatStyle s), (c, l, s))
  FORWARD(12, KeelResult<std::string>, format, (RealTimeComponents c, Override l, QuandaTimeFormatStyle s), (c, l, s))
  FORWARD(13, KeelResult<std::string>, format, (DiscreteTimeComponents c, QuandaKnownTimeFormatTemplate t, Override l), (c, t, l))
  FORWARD(14, KeelResult<std::string>, format, (RealTimeComponents c, QuandaKnownTimeFormatTemplate t, Override l), (c, t, l))
  FORWARD(15, KeelResult<std::string>, format, (DiscreteDateTimeComponents c, QuandaDateTimeFormatStyle s, Override l), (c, s, l))
  FORWARD(16, KeelResult<std::string>, format, (RealDateTimeComponents c, QuandaDateTimeFormatStyle s, Override l), (c, s, l))
  FORWARD(17, KeelResult<std::string>, format, (DiscreteDateTimeComponents c, QuandaKnownDateTimeFormatTemplate t, Override l), (c, t, l))
  FORWARD(18, KeelResult<std::string>, format, (RealDateTimeComponents c, QuandaKnownDateTimeFormatTemplate t, Override l), (c, t, l))
  KeelResult<QuandaFormattedDuration> format(double d, Override l, QuandaDurationFormatStyle s) override {
    durations.push_back(d);
    if (durationAnswer && !failing.contains(19)) { calls.push_back(19); return *durationAnswer; }
    return formatDuration(d, l, s);
  }
  FORWARD(20, KeelResult<std::string>, format, (Day d, Override l, QuandaStandaloneDayNameFormatStyle s), (d, l, s))
  FORWARD(21, KeelResult<KeelDate>, makeLocalGregorianFoundationDate, (DateComponents c), (c))
  FORWARD(22, KeelResult<KeelDate>, makeUtcGregorianFoundationDate, (DateComponents c), (c))
  FORWARD(23, KeelResult<KeelDate>, makeGregorianFoundationDate, (DateComponents c, Zone z), (c, z))
  FORWARD(24, KeelResult<KeelDate>, makeLocalGregorianFoundationDate, (DiscreteDateTimeComponents c), (c))
  FORWARD(25, KeelResult<KeelDate>, makeLocalGregorianFoundationDate, (RealDateTimeComponents c), (c))
  FORWARD(26, KeelResult<KeelDate>, makeUtcGregorianFoundationDate, (DiscreteDateTimeComponents c), (c))
  FORWARD(27, KeelResult<KeelDate>, makeUtcGregorianFoundationDate, (RealDateTimeComponents c), (c))
  FORWARD(28, KeelResult<KeelDate>, makeGregorianFoundationDate, (DiscreteDateTimeComponents c, Zone z), (c, z))
  FORWARD(29, KeelResult<KeelDate>, makeGregorianFoundationDate, (RealDateTimeComponents c, Zone z), (c, z))
  FORWARD(30, KeelResult<Interval>, makeLocalGregorianLogicTimeInterval, (DiscreteDateTimeComponents c), (c))
  FORWARD(31, KeelResult<Interval>, makeLocalGregorianLogicTimeInterval, (RealDateTimeComponents c), (c))
  FORWARD(32, KeelResult<Interval>, makeUtcGregorianLogicTimeInterval, (DiscreteDateTimeComponents c), (c))
  FORWARD(33, KeelResult<Interval>, makeUtcGregorianLogicTimeInterval, (RealDateTimeComponents c), (c))
  FORWARD(34, KeelResult<Interval>, makeGregorianLogicTimeInterval, (DiscreteDateTimeComponents c, Zone z), (c, z))
  FORWARD(35, KeelResult<Interval>, makeGregorianLogicTimeInterval, (RealDateTimeComponents c, Zone z), (c, z))
  FORWARD(36, KeelResult<DateComponents>, makeLocalTimezoneDateComponents, (KeelDate d), (d))
  FORWARD(37, KeelResult<DateComponents>, makeUtcTimezoneDateComponents, (KeelDate d), (d))
  FORWARD(38, KeelResult<DateComponents>, makeTimezoneDateComponents, (KeelDate d, Zone z), (d, z))
  FORWARD(39, KeelResult<DiscreteTimeComponents>, makeLocalTimezoneDiscreteTimeComponents, (KeelDate d), (d))
  FORWARD(40, KeelResult<RealTimeComponents>, makeLocalTimezoneRealTimeComponents, (KeelDate d), (d))
  FORWARD(41, KeelResult<DiscreteTimeComponents>, makeUtcTimezoneDiscreteTimeComponents, (KeelDate d), (d))
  FORWARD(42, KeelResult<RealTimeComponents>, makeUtcTimezoneRealTimeComponents, (KeelDate d), (d))
  FORWARD(43, KeelResult<DiscreteTimeComponents>, makeTimezoneDiscreteTimeComponents, (KeelDate d, Zone z), (d, z))
  FORWARD(44, KeelResult<RealTimeComponents>, makeTimezoneRealTimeComponents, (KeelDate d, Zone z), (d, z))
  FORWARD(45, KeelResult<DiscreteDateTimeComponents>, makeLocalTimezoneDiscreteDateTimeComponents, (KeelDate d), (d))
  FORWARD(46, KeelResult<RealDateTimeComponents>, makeLocalTimezoneRealDateTimeComponents, (KeelDate d), (d))
  FORWARD(47, KeelResult<DiscreteDateTimeComponents>, makeUtcTimezoneDiscreteDateTimeComponents, (KeelDate d), (d))
  FORWARD(48, KeelResult<RealDateTimeComponents>, makeUtcTimezoneRealDateTimeComponents, (KeelDate d), (d))
  FORWARD(49, KeelResult<DiscreteDateTimeComponents>, makeTimezoneDiscreteDateTimeComponents, (KeelDate d, Zone z), (d, z))
  FORWARD(50, KeelResult<RealDateTimeComponents>, makeTimezoneRealDateTimeComponents, (KeelDate d, Zone z), (d, z))
  FORWARD(51, KeelResult<DiscreteDateTimeComponents>, makeLocalTimezoneDiscreteDateTimeComponents, (Interval i), (i))
  FORWARD(52, KeelResult<RealDateTimeComponents>, makeLocalTimezoneRealDateTimeComponents, (Interval i), (i))
  FORWARD(53, KeelResult<DiscreteDateTimeComponents>, makeUtcTimezoneDiscreteDateTimeComponents, (Interval i), (i))
  FORWARD(54, KeelResult<RealDateTimeComponents>, makeUtcTimezoneRealDateTimeComponents, (Interval i), (i))
  FORWARD(55, KeelResult<DiscreteDateTimeComponents>, makeTimezoneDiscreteDateTimeComponents, (Interval i, Zone z), (i, z))
  FORWARD(56, KeelResult<RealDateTimeComponents>, makeTimezoneRealDateTimeComponents, (Interval i, Zone z), (i, z))
  KeelDate makeFoundationDate(Interval i) override { calls.push_back(57); return inner_.makeFoundationDate(i); }

 private:
#undef FORWARD
  KeelResult<QuandaFormattedDuration> formatDuration(double d, Override l, QuandaDurationFormatStyle s) {
    calls.push_back(19);
    if (failing.contains(19)) return KeelError::fault(injectedFailure, {{"position", 19}}, forwardingAdapterPath, injectedFunction);
    return inner_.format(d, l, s);
  }
  // clang-format on

  QuandaCalendarAdapting& inner_;
};
