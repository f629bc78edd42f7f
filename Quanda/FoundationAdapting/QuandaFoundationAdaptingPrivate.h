// Internal to the calendar adapter's sources: its state, its caches and the platform objects
// behind them. Not installed, and included by no public header, so that ICU and Abseil stay out
// of the library's interface.
#pragma once

#include <absl/time/time.h>
#include <unicode/calendar.h>
#include <unicode/datefmt.h>
#include <unicode/dtfmtsym.h>
#include <unicode/dtitvfmt.h>
#include <unicode/dtptngen.h>
#include <unicode/listformatter.h>
#include <unicode/locid.h>
#include <unicode/numberformatter.h>
#include <unicode/unistr.h>
#include <unicode/utypes.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <unordered_map>
#include <utility>

#include "Keel/KeelHash.h"
#include "Keel/KeelResult.h"
#include "Quanda/Formatting/QuandaDurationFormatSettings.h"
#include "Quanda/FoundationAdapting/QuandaFoundationCalendarAdapter.h"
#include "Quanda/FoundationAdapting/QuandaZoneOffsetsPrivate.h"

namespace quanda_adapting {

inline constexpr std::string_view adapterPath =
    "Quanda/Foundation Adapting/QuandaFoundationCalendarAdapter";

// The zone of the system's tz database with this identifier; nothing for an identifier that the
// database does not list (checked before any file is touched).
std::optional<absl::TimeZone> loadSystemTimezone(std::string_view identifier);

// The ICU zone the formatters write in.
std::unique_ptr<icu::TimeZone> makeUtcIcuTimezone();

// Makes a formatter's calendar proleptic where it is Gregorian-based, and sets it to UTC.
void makeProlepticUtc(icu::Calendar& calendar);

std::string utf8(const icu::UnicodeString& text);

// ICU's name of a failure ("U_ILLEGAL_ARGUMENT_ERROR"), the platform error an error carries.
inline std::optional<std::string> errorName(UErrorCode status) {
  return U_FAILURE(status) ? std::optional<std::string>(u_errorName(status)) : std::nullopt;
}

// An instant as its seconds since 1970, the form errors name it in.
std::string describeInstant(KeelDate instant);

// "none", "short", "medium", "long", "full": a platform style as errors name it.
std::string_view platformStyleName(icu::DateFormat::EStyle style);

// The platform's twin of a library style: the platform numbers its styles the other way round
// (full 0 ... short 3), with none as -1.
template <class Style>
concept LengthStyle =
    std::is_same_v<Style, QuandaDateFormatStyle> || std::is_same_v<Style, QuandaTimeFormatStyle> ||
    std::is_same_v<Style, QuandaDateRangeFormatStyle>;
template <LengthStyle Style>
constexpr icu::DateFormat::EStyle platformTwin(Style style) noexcept {
  return static_cast<icu::DateFormat::EStyle>(icu::DateFormat::kShort - static_cast<int>(style));
}
template <LengthStyle Style>
constexpr icu::DateFormat::EStyle platformTwin(std::optional<Style> style) noexcept {
  return style ? platformTwin(*style) : icu::DateFormat::kNone;
}
static_assert(platformTwin(QuandaDateFormatStyle::short_) == icu::DateFormat::kShort &&
              platformTwin(QuandaDateFormatStyle::full) == icu::DateFormat::kFull);

// The one failure of the platform that the original platform could not have: an ICU object
// that could not be made (out of memory, missing data).
inline constexpr std::string_view platformObjectFailure = "Failed to create platform object";

// ---- Cache keys ------------------------------------------------------------------------------
//
// Every key exists in two forms over the same fields: one owning its texts (stored) and one
// viewing them (looked up with), so that a warm look-up builds no string. Both give their fields
// as a tuple of views, which the transparent hash and equality below compare.

inline std::tuple<std::string_view> keyFields(std::string_view text) noexcept { return {text}; }
template <class Key>
auto keyFields(const Key& key) noexcept -> decltype(key.fields()) {
  return key.fields();
}

struct KeyFieldsHash {
  using is_transparent = void;
  template <class Key>
  std::size_t operator()(const Key& key) const noexcept {
    return std::apply([](const auto&... fields) { return keel::hashFields(fields...); },
                      keyFields(key));
  }
};

struct KeyFieldsEqual {
  using is_transparent = void;
  template <class Lhs, class Rhs>
  bool operator()(const Lhs& lhs, const Rhs& rhs) const noexcept {
    return keyFields(lhs) == keyFields(rhs);
  }
};

template <class Text>
struct DateFormatterFormatStringKeyOf {
  Text formatStringTemplate;
  Text localeIdentifier;
  bool shouldLocalizeFormatStringTemplate;
  Text timezoneIdentifier;
  auto fields() const noexcept {
    return std::tuple<std::string_view, std::string_view, bool, std::string_view>(
        formatStringTemplate, localeIdentifier, shouldLocalizeFormatStringTemplate,
        timezoneIdentifier);
  }
};

// The style keys of the date and the interval formatters have the same fields.
template <class Text>
struct StyleKeyOf {
  icu::DateFormat::EStyle dateStyle;
  Text localeIdentifier;
  icu::DateFormat::EStyle timeStyle;
  Text timezoneIdentifier;
  auto fields() const noexcept {
    return std::tuple<int, std::string_view, int, std::string_view>(dateStyle, localeIdentifier,
                                                                    timeStyle, timezoneIdentifier);
  }
};
template <class Text>
using DateFormatterStyleKeyOf = StyleKeyOf<Text>;
template <class Text>
using DateIntervalFormatterStyleKeyOf = StyleKeyOf<Text>;

template <class Text>
struct DurationFormatterKeyOf {
  Text localeIdentifier;
  QuandaDurationFormatStyle style;
  auto fields() const noexcept {
    return std::tuple<std::string_view, QuandaDurationFormatStyle>(localeIdentifier, style);
  }
};

template <class Text>
struct GregorianCalendarCacheKeyOf {
  Text localeIdentifier;
  Text timezoneIdentifier;
  auto fields() const noexcept {
    return std::tuple<std::string_view, std::string_view>(localeIdentifier, timezoneIdentifier);
  }
};

template <class Text>
struct LocalizedFormatStringKeyOf {
  Text localeIdentifier;
  Text formatStringTemplate;
  auto fields() const noexcept {
    return std::tuple<std::string_view, std::string_view>(localeIdentifier, formatStringTemplate);
  }
};

// A lazily filled dictionary that never evicts, counting the values it was given. The entry found
// last is tried first: a run of calls most often asks for the same one, and comparing its fields
// costs less than hashing them.
template <class Key, class Value>
class Cache {
 public:
  template <class Lookup>
  Value* find(const Lookup& key) {
    if (last_ != nullptr && keyFields(last_->first) == keyFields(key)) return &last_->second;
    const auto found = entries_.find(key);
    if (found == entries_.end()) return nullptr;
    last_ = &*found;
    return &found->second;
  }
  // Stores a newly built value; entries never move, so the reference stays valid.
  Value& store(Key key, Value value) {
    ++builtCount_;
    last_ = &*entries_.emplace(std::move(key), std::move(value)).first;
    return last_->second;
  }
  std::size_t builtCount() const noexcept { return builtCount_; }

 private:
  std::unordered_map<Key, Value, KeyFieldsHash, KeyFieldsEqual> entries_;
  std::pair<const Key, Value>* last_ = nullptr;
  std::size_t builtCount_ = 0;
};

// ---- Cached values ---------------------------------------------------------------------------

struct Timezone {
  absl::TimeZone zone;
  bool isUtc;
  ZoneOffsets offsets;  // of the years around now, for the conversions
};

// A locale and what it brings along, each built on first use.
struct Locale {
  std::string identifier;
  icu::Locale locale;
  std::unique_ptr<icu::DateTimePatternGenerator> patternGenerator{};
  std::unique_ptr<icu::DateFormatSymbols> symbols{};  // of the Gregorian calendar
  std::optional<UCalendarDaysOfWeek> firstDayOfWeek{};
};

// A Gregorian calendar: a locale (for its week data and symbols) and a zone (for conversions).
struct GregorianCalendar {
  std::string localeIdentifier;
  std::string timezoneIdentifier;
  Locale* locale;
  const Timezone* timezone;  // null only for the UTC calendar of an error's text

  // "Calendar(identifier: gregorian, localeIdentifier: en_US, timezoneIdentifier: UTC)".
  std::string description() const;
};

struct DateIntervalFormatter {
  std::unique_ptr<icu::DateIntervalFormat> formatter;
  // Proleptic calendars of the formatter's kind in UTC, set to the two ends at each call.
  std::unique_ptr<icu::Calendar> fromCalendar;
  std::unique_ptr<icu::Calendar> toCalendar;
};

struct DurationFormatter {
  QuandaDurationFormatSettings settings;
  std::optional<std::string> languageCode;
  // One formatter per unit, in the order of QuandaDurationFormatSettings' units, largest first.
  std::array<std::optional<icu::number::LocalizedNumberFormatter>, 7> unitFormatters;
  std::unique_ptr<icu::ListFormatter> listFormatter;
  // Positional text: the leading number as it is, the others with two digits.
  std::optional<icu::number::LocalizedNumberFormatter> leadingNumber;
  std::optional<icu::number::LocalizedNumberFormatter> paddedNumber;
};

// Which zone a conversion works in.
struct ZoneChoice {
  enum class Kind : std::uint8_t { local, utc, named };
  Kind kind;
  std::string_view identifier{};  // for named
};

}  // namespace quanda_adapting

struct QuandaFoundationCalendarAdapter::Implementation {
  using EStyle = icu::DateFormat::EStyle;
  using LocaleIdentifierOverride = QuandaCalendarAdapting::LocaleIdentifierOverride;
  explicit Implementation(std::shared_ptr<const QuandaDeviceSettings> deviceSettings)
      : device(std::move(deviceSettings)) {}

  std::shared_ptr<const QuandaDeviceSettings> device;

  // The caches, by the names their errors and counts use.
  quanda_adapting::Cache<quanda_adapting::DateFormatterFormatStringKeyOf<std::string>,
                         std::unique_ptr<icu::DateFormat>>
      dateFormattersByFormatString;
  quanda_adapting::Cache<quanda_adapting::DateFormatterStyleKeyOf<std::string>,
                         std::unique_ptr<icu::DateFormat>>
      dateFormattersByStyles;
  quanda_adapting::Cache<quanda_adapting::DateIntervalFormatterStyleKeyOf<std::string>,
                         quanda_adapting::DateIntervalFormatter>
      dateIntervalFormattersByStyles;
  quanda_adapting::Cache<quanda_adapting::DurationFormatterKeyOf<std::string>,
                         quanda_adapting::DurationFormatter>
      durationFormattersByStyle;
  quanda_adapting::Cache<quanda_adapting::GregorianCalendarCacheKeyOf<std::string>,
                         quanda_adapting::GregorianCalendar>
      gregorianCalendarsByTimezoneIdentifier;
  quanda_adapting::Cache<std::string, quanda_adapting::Locale> localesByIdentifier;
  quanda_adapting::Cache<quanda_adapting::LocalizedFormatStringKeyOf<std::string>,
                         icu::UnicodeString>
      localizedFormatStrings;
  std::optional<QuandaPreferredTimeFormat> cachedPreferredTimeFormat;
  quanda_adapting::Cache<std::string, quanda_adapting::Timezone> timezonesByIdentifier;
  std::size_t patternGeneratorBuilds = 0;
  std::size_t dateFormatSymbolsBuilds = 0;
  std::size_t weekDataBuilds = 0;
  // The calendar of the last conversion in a zone other than UTC: the next one is most often in
  // the same zone and locale.
  quanda_adapting::GregorianCalendar* lastCalendar = nullptr;

  std::string_view resolvedLocaleIdentifier(
      LocaleIdentifierOverride localeIdentifierOverride) const {
    return localeIdentifierOverride ? *localeIdentifierOverride : device->currentLocaleIdentifier();
  }

  // ---- The getters ---------------------------------------------------------------------------

  KeelResult<const quanda_adapting::Timezone*> getTimezoneBy(std::string_view identifier);
  quanda_adapting::Locale& getLocaleBy(std::string_view identifier);
  KeelResult<icu::UnicodeString> getLocalizedFormatString(std::string_view formatStringTemplate,
                                                          std::string_view localeIdentifier,
                                                          bool shouldLocalizeFormatStringTemplate);
  KeelResult<quanda_adapting::GregorianCalendar*> getGregorianCalendarBy(
      std::string_view localeIdentifier, std::string_view timezoneIdentifier);
  KeelResult<quanda_adapting::GregorianCalendar*> getLocalGregorianCalendar();
  KeelResult<icu::DateFormat*> getUtcTimezoneGregorianDateFormatter(
      EStyle dateStyle, LocaleIdentifierOverride localeIdentifierOverride, EStyle timeStyle);
  KeelResult<icu::DateFormat*> getUtcTimezoneGregorianDateFormatter(
      std::string_view formatStringTemplate, LocaleIdentifierOverride localeIdentifierOverride,
      bool shouldLocalizeFormatStringTemplate);
  KeelResult<quanda_adapting::DateIntervalFormatter*> getUtcTimezoneGregorianDateIntervalFormatter(
      EStyle dateStyle, LocaleIdentifierOverride localeIdentifierOverride, EStyle timeStyle);
  KeelResult<quanda_adapting::DurationFormatter*> geDurationFormatter(
      LocaleIdentifierOverride localeIdentifierOverride, QuandaDurationFormatStyle style);

  // What a locale brings along, built on first use.
  icu::DateTimePatternGenerator* patternGenerator(quanda_adapting::Locale& locale);
  icu::DateFormatSymbols* symbols(quanda_adapting::Locale& locale);
  std::optional<UCalendarDaysOfWeek> firstDayOfWeek(quanda_adapting::Locale& locale);

  KeelResult<std::string> dayPeriodSymbol(LocaleIdentifierOverride localeIdentifierOverride,
                                          bool pm, std::string_view function);

  // ---- The formatting helpers ----------------------------------------------------------------

  KeelResult<std::string> formatUsingUtcTimezone(KeelDate foundationDate, EStyle dateStyle,
                                                 LocaleIdentifierOverride localeIdentifierOverride,
                                                 EStyle timeStyle);
  KeelResult<std::string> formatUsingUtcTimezone(KeelDate foundationDate,
                                                 std::string_view formatStringTemplate,
                                                 LocaleIdentifierOverride localeIdentifierOverride,
                                                 bool shouldLocalizeFormatStringTemplate);
  KeelResult<std::string> formatUsingUtcTimezone(KeelDate fromDate, KeelDate toDate,
                                                 EStyle dateStyle,
                                                 LocaleIdentifierOverride localeIdentifierOverride,
                                                 EStyle timeStyle);

  // ---- Conversions (QuandaFoundationCalendarAdapterConversions.cpp) --------------------------

  // The calendar of a zone choice. Conversions in UTC are day arithmetic and skip it.
  KeelResult<quanda_adapting::GregorianCalendar*> calendarFor(quanda_adapting::ZoneChoice zone);
  // The calendar of the last conversion when it is the one the zone choice asks for, without a
  // look-up: a run of conversions in one zone and locale compares two texts and nothing more.
  quanda_adapting::GregorianCalendar* rememberedCalendar(quanda_adapting::ZoneChoice zone) const {
    if (lastCalendar == nullptr) return nullptr;
    const std::string_view timezoneIdentifier =
        zone.kind == quanda_adapting::ZoneChoice::Kind::local ? device->currentTimezoneIdentifier()
        : zone.kind == quanda_adapting::ZoneChoice::Kind::utc ? std::string_view("UTC")
                                                              : zone.identifier;
    return lastCalendar->timezoneIdentifier == timezoneIdentifier &&
                   lastCalendar->localeIdentifier == device->currentLocaleIdentifier()
               ? lastCalendar
               : nullptr;
  }

  template <class Components>
  KeelResult<KeelDate> makeFoundationDate(const Components& components,
                                          quanda_adapting::ZoneChoice zone,
                                          std::string_view function);
  template <class Components>
  KeelResult<QuandaLogicTimeInterval> makeLogicTimeInterval(const Components& components,
                                                            quanda_adapting::ZoneChoice zone,
                                                            std::string_view function);
  template <class Components>
  KeelResult<Components> readComponents(KeelDate foundationDate, quanda_adapting::ZoneChoice zone,
                                        std::string_view function);
  template <class Components>
  KeelResult<Components> readComponents(QuandaLogicTimeInterval logicTimeInterval,
                                        quanda_adapting::ZoneChoice zone, std::string_view function,
                                        std::string_view readerFunction);
};
