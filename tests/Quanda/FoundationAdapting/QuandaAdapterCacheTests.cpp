// The adapter's caches and preferences: every platform object built once per key, nothing kept
// from a failure, the preferences read from the device, and the device and zone database seams.
#include <date/tz.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>

#include "Quanda/Abstract/ErrorChainExpectations.h"
#include "Quanda/FoundationAdapting/AdapterTestSupport.h"
#include "Quanda/FoundationAdapting/QuandaSystemDeviceSettings.h"
#include "Quanda/FoundationAdapting/QuandaTimezoneDatabase.h"

namespace {

using Counts = QuandaFoundationCalendarAdapter::CacheBuildCounts;

TEST(QuandaAdapterCaches, EveryPlatformObjectIsBuiltOncePerKey) {
  TestAdapter test("de_DE", "Europe/Berlin");
  QuandaFoundationCalendarAdapter& adapter = test.adapter;
  const DateComponents date{2024, 2, 29};
  // Twice each, and with an override equal to the current locale's identifier, which shares the
  // entry of the call without one.
  for (int round = 0; round < 2; ++round) {
    for (std::optional<std::string_view> locale : {std::optional<std::string_view>(), {"de_DE"}}) {
      ASSERT_TRUE(adapter.format(date, QuandaDateFormatStyle::short_, locale));
      ASSERT_TRUE(adapter.format(date, QuandaKnownDateFormatTemplate::fullMonthAndYear, locale));
      ASSERT_TRUE(adapter.format(NaturalTimeComponents{13, 5, 0},
                                 QuandaKnownTimeFormatTemplate::standaloneMinuteWithoutUnit,
                                 locale));
      ASSERT_TRUE(adapter.format(date, DateComponents{2024, 3, 5},
                                 QuandaDateRangeFormatStyle::medium, locale));
      ASSERT_TRUE(adapter.format(90.0, locale, QuandaDurationFormatStyle::shortDelta));
      ASSERT_TRUE(adapter.amSymbol(locale));
      ASSERT_TRUE(adapter.format(QuandaDayOfGregorianWeek::monday, locale,
                                 QuandaStandaloneDayNameFormatStyle::full));
      ASSERT_TRUE(adapter.makeLocalGregorianFoundationDate(date));
      ASSERT_TRUE(adapter.makeGregorianFoundationDate(date, "Asia/Tokyo"));
      ASSERT_TRUE(adapter.preferredFirstDayOfWeek());
      ASSERT_TRUE(adapter.preferredTimeFormat());
    }
  }
  Counts expected;
  expected.dateFormattersByFormatString = 2;  // "MMMMyyyy" localized, "m" verbatim
  expected.dateFormattersByStyles = 2;        // the short date, and the medium one behind the range
  expected.dateIntervalFormattersByStyles = 1;
  expected.durationFormattersByStyle = 1;
  expected.gregorianCalendarsByTimezoneIdentifier = 2;  // Berlin (local) and Tokyo
  expected.localesByIdentifier = 1;
  expected.localizedFormatStrings = 1;  // only the localized template is stored
  expected.timezonesByIdentifier = 3;   // UTC (the formatters'), Berlin, Tokyo
  expected.patternGenerators = 1;
  expected.dateFormatSymbols = 1;
  expected.weekData = 1;
  EXPECT_EQ(adapter.cacheBuildCounts(), expected);

  // Another locale or zone is another key.
  test.device->setLocaleIdentifier("fr_FR");
  ASSERT_TRUE(adapter.makeLocalGregorianFoundationDate(date));
  ASSERT_TRUE(adapter.format(date, QuandaDateFormatStyle::short_, std::nullopt));
  const Counts after = adapter.cacheBuildCounts();
  EXPECT_EQ(after.gregorianCalendarsByTimezoneIdentifier, 3u);
  EXPECT_EQ(after.localesByIdentifier, 2u);
  EXPECT_EQ(after.dateFormattersByStyles, 3u);
  EXPECT_EQ(after.timezonesByIdentifier, 3u);
}

TEST(QuandaAdapterPreferences, TimeFormatIsTheCurrentLocalesAndDecidedOnce) {
  for (const auto& [locale, expected] :
       {std::pair{"en_US", QuandaPreferredTimeFormat::twelveHour},
        std::pair{"de_DE", QuandaPreferredTimeFormat::twentyFourHour},
        std::pair{"ja_JP", QuandaPreferredTimeFormat::twentyFourHour},
        std::pair{"ko_KR", QuandaPreferredTimeFormat::twelveHour},
        std::pair{"en_GB", QuandaPreferredTimeFormat::twentyFourHour}}) {
    TestAdapter test(locale);
    EXPECT_EQ(test.adapter.preferredTimeFormat().value(), expected) << locale;
    // Later changes of the device's locale are not seen by the same adapter.
    test.device->setLocaleIdentifier(expected == QuandaPreferredTimeFormat::twelveHour ? "de_DE"
                                                                                       : "en_US");
    EXPECT_EQ(test.adapter.preferredTimeFormat().value(), expected) << locale;
  }
}

TEST(QuandaAdapterPreferences, FirstDayOfWeekIsTheLocalesUnlessTheUserChose) {
  for (const auto& [locale, expected] :
       {std::pair{"en_US", QuandaDayOfGregorianWeek::sunday},
        std::pair{"de_DE", QuandaDayOfGregorianWeek::monday},
        std::pair{"ar_EG", QuandaDayOfGregorianWeek::saturday},
        std::pair{"he_IL", QuandaDayOfGregorianWeek::sunday},
        std::pair{"garbage!!", QuandaDayOfGregorianWeek::monday}}) {
    TestAdapter test(locale, "Asia/Tokyo");
    EXPECT_EQ(test.adapter.preferredFirstDayOfWeek().value(), expected) << locale;
  }
  // The locale's fw keyword is no help to the platform; the device's override is, at every call.
  TestAdapter test("en_US@fw=mon");
  EXPECT_EQ(test.adapter.preferredFirstDayOfWeek().value(), QuandaDayOfGregorianWeek::sunday);
  test.device->setFirstDayOfWeekOverride(QuandaDayOfGregorianWeek::monday);
  EXPECT_EQ(test.adapter.preferredFirstDayOfWeek().value(), QuandaDayOfGregorianWeek::monday);
  test.device->setFirstDayOfWeekOverride(std::nullopt);
  EXPECT_EQ(test.adapter.preferredFirstDayOfWeek().value(), QuandaDayOfGregorianWeek::sunday);

  test.device->setTimezoneIdentifier("");
  expectErrorChain(test.adapter.preferredFirstDayOfWeek().error(),
                   {{"preferredFirstDayOfWeek()", {}},
                    {"getLocalGregorianCalendar()", {}},
                    {"getGregorianCalendarBy(localeIdentifier:timezoneIdentifier:)",
                     {"localeIdentifier", "timezoneIdentifier"}},
                    {"getTimezoneBy(identifier:)", {"identifier="}, "Failed to create timezone"}},
                   adapterPath);
}

// Sets TZ for one test and puts the old value back.
class ScopedTimezoneVariable {
 public:
  explicit ScopedTimezoneVariable(const char* value) {
    if (const char* old = std::getenv("TZ")) saved_ = old;
    set(value);
  }
  ~ScopedTimezoneVariable() { set(saved_ ? saved_->c_str() : nullptr); }
  static void set(const char* value) {
    if (value == nullptr) {
      ::unsetenv("TZ");
    } else {
      ::setenv("TZ", value, 1);
    }
  }

 private:
  std::optional<std::string> saved_;
};

TEST(QuandaSystemDeviceSettings, TheZoneIsATzNameReadAtEachCall) {
  const ScopedTimezoneVariable scope(nullptr);
  QuandaSystemDeviceSettings settings;
  // Whatever the host says without TZ: a name of the database, never "localtime".
  const std::string host(settings.currentTimezoneIdentifier());
  EXPECT_TRUE(QuandaTimezoneDatabase::contains(host)) << host;
  ScopedTimezoneVariable::set("Asia/Tokyo");
  EXPECT_EQ(settings.currentTimezoneIdentifier(), "Asia/Tokyo");
  ScopedTimezoneVariable::set(":Europe/Berlin");
  EXPECT_EQ(settings.currentTimezoneIdentifier(), "Europe/Berlin");
  ScopedTimezoneVariable::set("/usr/share/zoneinfo/America/New_York");
  EXPECT_EQ(settings.currentTimezoneIdentifier(), "America/New_York");
  // A TZ that names no zone is passed over for the host's own.
  for (const char* unnamed : {"", "Not/AZone", "CET-1CEST", "localtime", ":"}) {
    ScopedTimezoneVariable::set(unnamed);
    EXPECT_EQ(settings.currentTimezoneIdentifier(), host) << unnamed;
  }
  // The default adapter reads the process's settings.
  ScopedTimezoneVariable::set("Pacific/Chatham");
  QuandaFoundationCalendarAdapter adapter;
  EXPECT_EQ(adapter.currentTimezoneIdentifier(), "Pacific/Chatham");
}

TEST(QuandaTimezoneDatabase, NamesAndOffsetsAreTheSystemDatabases) {
  const std::vector<std::string>& identifiers = QuandaTimezoneDatabase::identifiers();
  EXPECT_TRUE(std::is_sorted(identifiers.begin(), identifiers.end()));
  EXPECT_GT(identifiers.size(), 400u);
  EXPECT_FALSE(QuandaTimezoneDatabase::version().empty());
  for (const char* known : {"UTC", "Europe/Berlin", "US/Eastern", "Asia/Calcutta", "EST5EDT"}) {
    EXPECT_TRUE(QuandaTimezoneDatabase::contains(known)) << known;
  }
  for (const char* unknown : {"Factory", "posixrules", "localtime", "utc", "Europe"}) {
    EXPECT_FALSE(QuandaTimezoneDatabase::contains(unknown)) << unknown;
  }
  // Every zone's offset, daylight flag and abbreviation at two instants, against the oracle.
  for (const date::sys_seconds moment : {date::sys_seconds(std::chrono::seconds(1719835200)),
                                         date::sys_seconds(std::chrono::seconds(1704110400))}) {
    const KeelDate when = instant(static_cast<double>(moment.time_since_epoch().count()));
    for (const std::string& identifier : identifiers) {
      const date::sys_info expected = date::locate_zone(identifier)->get_info(moment);
      const auto offset = QuandaTimezoneDatabase::offset(identifier, when);
      ASSERT_TRUE(offset) << identifier;
      EXPECT_EQ(offset.value().secondsFromGMT, expected.offset.count()) << identifier;
      EXPECT_EQ(offset.value().isDaylightSavingTime, expected.save.count() != 0) << identifier;
      EXPECT_EQ(offset.value().abbreviation, expected.abbrev) << identifier;
    }
  }
  EXPECT_EQ(QuandaTimezoneDatabase::offset("Nowhere", instant(0)).error().message(),
            "Failed to create timezone");
  EXPECT_EQ(QuandaTimezoneDatabase::offset("UTC", instant(std::nan(""))).error().message(),
            "Foundation date is not finite");
}

}  // namespace
