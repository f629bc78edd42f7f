// The adapter's formatting and naming: the exact texts of five locales, twenty locales against
// ICU's own formatters under three device zones, dates far from now, and the errors.
#include <gtest/gtest.h>
#include <unicode/datefmt.h>
#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "Quanda/Abstract/ErrorChainExpectations.h"
#include "Quanda/FoundationAdapting/AdapterTestSupport.h"

namespace {

using DateTimeStyle = QuandaDateTimeFormatStyle;
constexpr DateComponents leapDay{2024, 2, 29};
const NaturalTimeComponents afternoon{13, 5, 9};
const NaturalDateTimeComponents leapDayAfternoon = dateTime(2024, 2, 29, 13, 5, 9);

// The texts of one locale, each line a " | "-joined list in declaration order of the styles or
// templates. Ranges: the same day, within a month, across months, across years. Durations: 0 s,
// 45 s, 90 s, 3,725 s, 36 hours and 400 days.
struct LocaleTexts {
  const char* locale;
  const char* dates;
  const char* times;
  const char* dateAndTimes[4];           // per date style, every time style
  const char* templates;                 // the date, time and date-time templates
  const char* ranges[4];                 // per range style
  std::array<const char*, 9> durations;  // per duration style
};

// clang-format off
// Every duration style in English, the same in the United States and in Britain.
constexpr std::array<const char*, 9> englishDurations{
    "0h | 0h | 0h | 1h | 36h | 9,600h",
    "0s | 45s | 1m 30s | 1h 2m | 1d 12h | 1y 1m",
    "0 seconds | 45 seconds | 1 minute, 30 seconds | 1 hour, 2 minutes | 36 hours | 9,600 hours",
    "0m | 0m | 1m | 62m | 2,160m | 576,000m",
    "0:00:00 | 0:00:45 | 0:01:30 | 1:02:05 | 36:00:00 | 9600:00:00",
    "0s | 45s | 90s | 3,725s | 129,600s | 34,560,000s",
    "0s | 45s | 1m 30s | 1h 2m | 36h | 9,600h",
    "0s | 45s | 1m 30s | 1h 2m 5s | 1d 12h | 1y 1m 4d",
    "0 seconds | 45 seconds | 90 seconds | 3,725 seconds | 129,600 seconds | 34,560,000 seconds"};
// clang-format on

// clang-format off
const LocaleTexts localeTexts[] = {
    {"en_US",
     "2/29/24 | Feb 29, 2024 | February 29, 2024 | Thursday, February 29, 2024",
     "1:05\u202FPM | 1:05:09\u202FPM | 1:05:09\u202FPM UTC | 1:05:09\u202FPM Coordinated Universal Time",
     {"2/29/24, 1:05\u202FPM | 2/29/24, 1:05:09\u202FPM | 2/29/24, 1:05:09\u202FPM UTC | 2/29/24, 1:05:09\u202FPM Coordinated Universal Time",
      "Feb 29, 2024, 1:05\u202FPM | Feb 29, 2024, 1:05:09\u202FPM | Feb 29, 2024, 1:05:09\u202FPM UTC | Feb 29, 2024, 1:05:09\u202FPM Coordinated Universal Time",
      "February 29, 2024 at 1:05\u202FPM | February 29, 2024 at 1:05:09\u202FPM | February 29, 2024 at 1:05:09\u202FPM UTC | February 29, 2024 at 1:05:09\u202FPM Coordinated Universal Time",
      "Thursday, February 29, 2024 at 1:05\u202FPM | Thursday, February 29, 2024 at 1:05:09\u202FPM | Thursday, February 29, 2024 at 1:05:09\u202FPM UTC | Thursday, February 29, 2024 at 1:05:09\u202FPM Coordinated Universal Time",
      },
     "February 2024 | 29 | Feb | 1\u202FPM | 13 | 1 | 5 | 9 | 1\u202FPM | Thursday, February 29, 2024 at 1:05\u202FPM | Thu, Feb 29, 2024, 1:05\u202FPM | Thu, 02/29/24, 1:05\u202FPM | 02/29/24, 1:05\u202FPM",
     {"2/29/24 | 2/3/24\u2009\u2013\u20092/29/24 | 2/29/24\u2009\u2013\u20093/5/24 | 12/30/24\u2009\u2013\u20091/2/25",
      "Feb 29, 2024 | Feb 3\u2009\u2013\u200929, 2024 | Feb 29\u2009\u2013\u2009Mar 5, 2024 | Dec 30, 2024\u2009\u2013\u2009Jan 2, 2025",
      "February 29, 2024 | February 3\u2009\u2013\u200929, 2024 | February 29\u2009\u2013\u2009March 5, 2024 | December 30, 2024\u2009\u2013\u2009January 2, 2025",
      "Thursday, February 29, 2024 | Saturday, February 3\u2009\u2013\u2009Thursday, February 29, 2024 | Thursday, February 29\u2009\u2013\u2009Tuesday, March 5, 2024 | Monday, December 30, 2024\u2009\u2013\u2009Thursday, January 2, 2025",
      },
     englishDurations},
    {"en_GB",
     "29/02/2024 | 29 Feb 2024 | 29 February 2024 | Thursday, 29 February 2024",
     "13:05 | 13:05:09 | 13:05:09 UTC | 13:05:09 Coordinated Universal Time",
     {"29/02/2024, 13:05 | 29/02/2024, 13:05:09 | 29/02/2024, 13:05:09 UTC | 29/02/2024, 13:05:09 Coordinated Universal Time",
      "29 Feb 2024, 13:05 | 29 Feb 2024, 13:05:09 | 29 Feb 2024, 13:05:09 UTC | 29 Feb 2024, 13:05:09 Coordinated Universal Time",
      "29 February 2024 at 13:05 | 29 February 2024 at 13:05:09 | 29 February 2024 at 13:05:09 UTC | 29 February 2024 at 13:05:09 Coordinated Universal Time",
      "Thursday, 29 February 2024 at 13:05 | Thursday, 29 February 2024 at 13:05:09 | Thursday, 29 February 2024 at 13:05:09 UTC | Thursday, 29 February 2024 at 13:05:09 Coordinated Universal Time",
      },
     "February 2024 | 29 | Feb | 13 | 13 | 1 | 5 | 9 | 13 | Thursday, 29 February 2024 at 13:05 | Thu, 29 Feb 2024, 13:05 | Thu, 29/02/24, 13:05 | 29/02/24, 13:05",
     {"29/02/2024 | 03/02/2024\u2009\u2013\u200929/02/2024 | 29/02/2024\u2009\u2013\u200905/03/2024 | 30/12/2024\u2009\u2013\u200902/01/2025",
      "29 Feb 2024 | 3\u201329 Feb 2024 | 29 Feb\u2009\u2013\u20095 Mar 2024 | 30 Dec 2024\u2009\u2013\u20092 Jan 2025",
      "29 February 2024 | 3\u201329 February 2024 | 29 February\u2009\u2013\u20095 March 2024 | 30 December 2024\u2009\u2013\u20092 January 2025",
      "Thursday, 29 February 2024 | Saturday, 3\u2009\u2013\u2009Thursday, 29 February 2024 | Thursday, 29 February\u2009\u2013\u2009Tuesday, 5 March 2024 | Monday, 30 December 2024\u2009\u2013\u2009Thursday, 2 January 2025",
      },
     englishDurations},
    {"de_DE",
     "29.02.24 | 29.02.2024 | 29. Februar 2024 | Donnerstag, 29. Februar 2024",
     "13:05 | 13:05:09 | 13:05:09 UTC | 13:05:09 Koordinierte Weltzeit",
     {"29.02.24, 13:05 | 29.02.24, 13:05:09 | 29.02.24, 13:05:09 UTC | 29.02.24, 13:05:09 Koordinierte Weltzeit",
      "29.02.2024, 13:05 | 29.02.2024, 13:05:09 | 29.02.2024, 13:05:09 UTC | 29.02.2024, 13:05:09 Koordinierte Weltzeit",
      "29. Februar 2024 um 13:05 | 29. Februar 2024 um 13:05:09 | 29. Februar 2024 um 13:05:09 UTC | 29. Februar 2024 um 13:05:09 Koordinierte Weltzeit",
      "Donnerstag, 29. Februar 2024 um 13:05 | Donnerstag, 29. Februar 2024 um 13:05:09 | Donnerstag, 29. Februar 2024 um 13:05:09 UTC | Donnerstag, 29. Februar 2024 um 13:05:09 Koordinierte Weltzeit",
      },
     "Februar 2024 | 29 | Feb | 13 Uhr | 13 | 1 | 5 | 9 | 13 Uhr | Donnerstag, 29. Februar 2024 um 13:05 | Do., 29. Feb. 2024, 13:05 | Do., 29.02.24, 13:05 | 29.02.24, 13:05",
     {"29.02.24 | 03.\u201329.02.24 | 29.02. \u2013 05.03.24 | 30.12.24\u2009\u2013\u200902.01.25",
      "29.02.2024 | 03.\u201329.02.2024 | 29.02. \u2013 05.03.2024 | 30.12.2024\u2009\u2013\u200902.01.2025",
      "29. Februar 2024 | 3.\u201329. Februar 2024 | 29. Februar\u2009\u2013\u20095. März 2024 | 30. Dezember 2024\u2009\u2013\u20092. Januar 2025",
      "Donnerstag, 29. Februar 2024 | Samstag, 3. \u2013 Donnerstag, 29. Februar 2024 | Donnerstag, 29. Februar\u2009\u2013\u2009Dienstag, 5. März 2024 | Montag, 30. Dezember 2024\u2009\u2013\u2009Donnerstag, 2. Januar 2025",
      },
     {"0 Std. | 0 Std. | 0 Std. | 1 Std. | 36 Std. | 9.600 Std.",
      "0 Sek. | 45 Sek. | 1 Min., 30 Sek. | 1 Std., 2 Min. | 1 T, 12 Std. | 1 J, 1 M",
      "0 Sekunden | 45 Sekunden | 1 Minute, 30 Sekunden | 1 Stunde, 2 Minuten | 36 Stunden | 9.600 Stunden",
      "0 Min. | 0 Min. | 1 Min. | 62 Min. | 2.160 Min. | 576.000 Min.",
      "0:00:00 | 0:00:45 | 0:01:30 | 1:02:05 | 36:00:00 | 9600:00:00",
      "0 Sek. | 45 Sek. | 90 Sek. | 3.725 Sek. | 129.600 Sek. | 34.560.000 Sek.",
      "0 Sek. | 45 Sek. | 1 Min., 30 Sek. | 1 Std., 2 Min. | 36 Std. | 9.600 Std.",
      "0 Sek. | 45 Sek. | 1 Min., 30 Sek. | 1 Std., 2 Min. und 5 Sek. | 1 T, 12 Std. | 1 J, 1 M und 4 T",
      "0 Sekunden | 45 Sekunden | 90 Sekunden | 3.725 Sekunden | 129.600 Sekunden | 34.560.000 Sekunden",
      }},
    {"fr_FR",
     "29/02/2024 | 29 févr. 2024 | 29 février 2024 | jeudi 29 février 2024",
     "13:05 | 13:05:09 | 13:05:09 UTC | 13:05:09 temps universel coordonné",
     {"29/02/2024 13:05 | 29/02/2024 13:05:09 | 29/02/2024 13:05:09 UTC | 29/02/2024 13:05:09 temps universel coordonné",
      "29 févr. 2024, 13:05 | 29 févr. 2024, 13:05:09 | 29 févr. 2024, 13:05:09 UTC | 29 févr. 2024, 13:05:09 temps universel coordonné",
      "29 février 2024 à 13:05 | 29 février 2024 à 13:05:09 | 29 février 2024 à 13:05:09 UTC | 29 février 2024 à 13:05:09 temps universel coordonné",
      "jeudi 29 février 2024 à 13:05 | jeudi 29 février 2024 à 13:05:09 | jeudi 29 février 2024 à 13:05:09 UTC | jeudi 29 février 2024 à 13:05:09 temps universel coordonné",
      },
     "février 2024 | 29 | févr. | 13 h | 13 | 1 | 5 | 9 | 13 h | jeudi 29 février 2024 à 13:05 | jeu. 29 févr. 2024, 13:05 | jeu. 29/02/24 13:05 | 29/02/24 13:05",
     {"29/02/2024 | 03/02/2024\u2009\u2013\u200929/02/2024 | 29/02/2024\u2009\u2013\u200905/03/2024 | 30/12/2024\u2009\u2013\u200902/01/2025",
      "29 févr. 2024 | 3\u201329 févr. 2024 | 29 févr.\u2009\u2013\u20095 mars 2024 | 30 déc. 2024\u2009\u2013\u20092 janv. 2025",
      "29 février 2024 | 3\u201329 février 2024 | 29 février\u2009\u2013\u20095 mars 2024 | 30 décembre 2024\u2009\u2013\u20092 janvier 2025",
      "jeudi 29 février 2024 | samedi 3\u2009\u2013\u2009jeudi 29 février 2024 | jeudi 29 février\u2009\u2013\u2009mardi 5 mars 2024 | lundi 30 décembre 2024\u2009\u2013\u2009jeudi 2 janvier 2025",
      },
     {"0h | 0h | 0h | 1h | 36h | 9\u202F600h",
      "0s | 45s | 1min 30s | 1h 2min | 1j 12h | 1a 1m.",
      "0\u00A0seconde | 45\u00A0secondes | 1 minute et 30\u00A0secondes | 1\u00A0heure et 2 minutes | 36\u00A0heures | 9\u202F600\u00A0heures",
      "0min | 0min | 1min | 62min | 2\u202F160min | 576\u202F000min",
      "0:00:00 | 0:00:45 | 0:01:30 | 1:02:05 | 36:00:00 | 9600:00:00",
      "0s | 45s | 90s | 3\u202F725s | 129\u202F600s | 34\u202F560\u202F000s",
      "0s | 45s | 1min 30s | 1h 2min | 36h | 9\u202F600h",
      "0s | 45s | 1min 30s | 1h 2min 5s | 1j 12h | 1a 1m. 4j",
      "0\u00A0seconde | 45\u00A0secondes | 90\u00A0secondes | 3\u202F725\u00A0secondes | 129\u202F600\u00A0secondes | 34\u202F560\u202F000\u00A0secondes",
      }},
    {"ja_JP",
     "2024/02/29 | 2024/02/29 | 2024年2月29日 | 2024年2月29日木曜日",
     "13:05 | 13:05:09 | 13:05:09 UTC | 13時05分09秒 協定世界時",
     {"2024/02/29 13:05 | 2024/02/29 13:05:09 | 2024/02/29 13:05:09 UTC | 2024/02/29 13時05分09秒 協定世界時",
      "2024/02/29 13:05 | 2024/02/29 13:05:09 | 2024/02/29 13:05:09 UTC | 2024/02/29 13時05分09秒 協定世界時",
      "2024年2月29日 13:05 | 2024年2月29日 13:05:09 | 2024年2月29日 13:05:09 UTC | 2024年2月29日 13時05分09秒 協定世界時",
      "2024年2月29日木曜日 13:05 | 2024年2月29日木曜日 13:05:09 | 2024年2月29日木曜日 13:05:09 UTC | 2024年2月29日木曜日 13時05分09秒 協定世界時",
      },
     "2024年2月 | 29日 | 2月 | 13時 | 13 | 1 | 5 | 9 | 13時 | 2024年2月29日木曜日 13:05 | 2024年2月29日(木) 13:05 | 24/02/29(木) 13:05 | 24/02/29 13:05",
     {"2024/02/29 | 2024/02/03～2024/02/29 | 2024/02/29～2024/03/05 | 2024/12/30～2025/01/02",
      "2024/02/29 | 2024/02/03～2024/02/29 | 2024/02/29～2024/03/05 | 2024/12/30～2025/01/02",
      "2024/2/29 | 2024/02/03～2024/02/29 | 2024/02/29～2024/03/05 | 2024/12/30～2025/01/02",
      "2024/2/29木曜日 | 2024/02/03(土曜日)～2024/02/29(木曜日) | 2024/02/29(木曜日)～2024/03/05(火曜日) | 2024/12/30(月曜日)～2025/01/02(木曜日)",
      },
     {"0h | 0h | 0h | 1h | 36h | 9,600h",
      "0s | 45s | 1m30s | 1h2m | 1d12h | 1y1m",
      "0 秒 | 45 秒 | 1 分 30 秒 | 1 時間 2 分 | 36 時間 | 9,600 時間",
      "0m | 0m | 1m | 62m | 2,160m | 576,000m",
      "0:00:00 | 0:00:45 | 0:01:30 | 1:02:05 | 36:00:00 | 9600:00:00",
      "0s | 45s | 90s | 3,725s | 129,600s | 34,560,000s",
      "0s | 45s | 1m30s | 1h2m | 36h | 9,600h",
      "0s | 45s | 1m30s | 1h2m5s | 1d12h | 1y1m4d",
      "0 秒 | 45 秒 | 90 秒 | 3,725 秒 | 129,600 秒 | 34,560,000 秒",
      }},
};
// clang-format on

std::string joined(const std::vector<std::string>& texts) {
  std::string text;
  for (const std::string& piece : texts) text += (text.empty() ? "" : " | ") + piece;
  return text;
}

template <class Format>
std::string every(const auto& cases, Format format) {
  std::vector<std::string> texts;
  for (const auto& value : cases) {
    const KeelResult<std::string> text = format(value);
    texts.push_back(text ? text.value() : "<" + text.error().innermost().message() + ">");
  }
  return joined(texts);
}

TEST(QuandaAdapterFormatting, ExactTextsOfFiveLocales) {
  TestAdapter test("en_US", "America/New_York");
  QuandaFoundationCalendarAdapter& adapter = test.adapter;
  for (const LocaleTexts& expected : localeTexts) {
    SCOPED_TRACE(expected.locale);
    const std::string_view locale = expected.locale;
    const auto dateStyles = allCases<QuandaDateFormatStyle>;
    const auto timeStyles = allCases<QuandaTimeFormatStyle>;
    EXPECT_EQ(every(dateStyles, [&](auto style) { return adapter.format(leapDay, style, locale); }),
              expected.dates);
    EXPECT_EQ(
        every(timeStyles, [&](auto style) { return adapter.format(afternoon, locale, style); }),
        expected.times);
    // A date-time style with one part writes what the date or time style alone writes.
    EXPECT_EQ(every(dateStyles,
                    [&](auto style) {
                      return adapter.format(leapDayAfternoon, DateTimeStyle::dateOnly(style),
                                            locale);
                    }),
              expected.dates);
    EXPECT_EQ(every(timeStyles,
                    [&](auto style) {
                      return adapter.format(leapDayAfternoon, DateTimeStyle::timeOnly(style),
                                            locale);
                    }),
              expected.times);
    for (const auto dateStyle : dateStyles) {
      EXPECT_EQ(every(timeStyles,
                      [&](auto timeStyle) {
                        return adapter.format(leapDayAfternoon,
                                              DateTimeStyle::dateAndTime(dateStyle, timeStyle),
                                              locale);
                      }),
                expected.dateAndTimes[static_cast<int>(dateStyle)]);
    }
    const std::string templates =
        every(allCases<QuandaKnownDateFormatTemplate>,
              [&](auto known) { return adapter.format(leapDay, known, locale); }) +
        " | " +
        every(allCases<QuandaKnownTimeFormatTemplate>,
              [&](auto known) { return adapter.format(afternoon, known, locale); }) +
        " | " + every(allCases<QuandaKnownDateTimeFormatTemplate>, [&](auto known) {
          return adapter.format(leapDayAfternoon, known, locale);
        });
    EXPECT_EQ(templates, expected.templates);
    const std::pair<DateComponents, DateComponents> ranges[] = {{leapDay, leapDay},
                                                                {{2024, 2, 3}, leapDay},
                                                                {leapDay, {2024, 3, 5}},
                                                                {{2024, 12, 30}, {2025, 1, 2}}};
    for (const auto style : allCases<QuandaDateRangeFormatStyle>) {
      EXPECT_EQ(every(ranges,
                      [&](const auto& range) {
                        return adapter.format(range.first, range.second, style, locale);
                      }),
                expected.ranges[static_cast<int>(style)]);
    }
    constexpr double durations[] = {0, 45, 90, 3725, 36 * 3600.0, 400 * 86400.0};
    for (const auto style : allCases<QuandaDurationFormatStyle>) {
      EXPECT_EQ(every(durations,
                      [&](double duration) -> KeelResult<std::string> {
                        const auto text = adapter.format(duration, locale, style);
                        if (!text) return text.error();
                        return text.value().formattedDuration;
                      }),
                expected.durations[static_cast<int>(style)]);
    }
  }
}

// ICU's own formatter of a style or pattern, set up apart from the adapter as its platform does
// it: the calendar of the locale, proleptic where it is Gregorian-based, in UTC.
std::unique_ptr<icu::DateFormat> icuFormatter(icu::DateFormat* created) {
  std::unique_ptr<icu::Calendar> calendar(created->getCalendar()->clone());
  if (auto* gregorian = dynamic_cast<icu::GregorianCalendar*>(calendar.get())) {
    UErrorCode status = U_ZERO_ERROR;
    gregorian->setGregorianChange(-std::numeric_limits<double>::infinity(), status);
  }
  calendar->adoptTimeZone(icu::TimeZone::createTimeZone("UTC"));
  created->adoptCalendar(calendar.release());
  return std::unique_ptr<icu::DateFormat>(created);
}

std::string icuText(icu::DateFormat& formatter, double seconds) {
  icu::UnicodeString text;
  formatter.format(seconds * 1000, text);
  std::string utf8;
  return text.toUTF8String(utf8);
}

constexpr const char* twentyLocales[] = {
    "en_US", "en_GB", "de_DE", "fr_FR", "ja_JP", "ar_EG", "th_TH", "fa_IR", "he_IL", "zh_CN",
    "ko_KR", "ru_RU", "es_ES", "pt_BR", "it_IT", "hi_IN", "tr_TR", "pl_PL", "nl_NL", "sv_SE"};

TEST(QuandaAdapterFormatting, TwentyLocalesAsIcuWritesThemWhateverTheDevicesZone) {
  TestAdapter tokyo("en_US", "Asia/Tokyo");
  TestAdapter losAngeles("en_US", "America/Los_Angeles");
  TestAdapter chatham("en_US", "Pacific/Chatham");
  // Late in the UTC day, so that a formatter in the device's zone would write another date.
  const NaturalDateTimeComponents late = dateTime(2024, 2, 29, 23, 30, 0);
  const double lateSeconds = 1709249400;
  for (const char* locale : twentyLocales) {
    SCOPED_TRACE(locale);
    const auto texts = [&](QuandaFoundationCalendarAdapter& adapter) {
      std::vector<std::string> all;
      const auto add = [&all](const auto& result) {
        if constexpr (requires { result.value().formattedDuration; }) {
          all.push_back(result ? result.value().formattedDuration : "");
        } else {
          all.push_back(result ? result.value() : "");
        }
      };
      for (auto date : allCases<QuandaDateFormatStyle>) {
        add(adapter.format(late, DateTimeStyle::dateOnly(date), locale));
        for (auto time : allCases<QuandaTimeFormatStyle>) {
          add(adapter.format(late, DateTimeStyle::dateAndTime(date, time), locale));
        }
      }
      for (auto time : allCases<QuandaTimeFormatStyle>) {
        add(adapter.format(late, DateTimeStyle::timeOnly(time), locale));
      }
      for (auto known : allCases<QuandaKnownDateFormatTemplate>)
        add(adapter.format(leapDay, known, locale));
      for (auto known : allCases<QuandaKnownTimeFormatTemplate>)
        add(adapter.format(afternoon, known, locale));
      for (auto known : allCases<QuandaKnownDateTimeFormatTemplate>)
        add(adapter.format(late, known, locale));
      for (auto style : allCases<QuandaDateRangeFormatStyle>) {
        add(adapter.format(leapDay, DateComponents{2024, 3, 5}, style, locale));
      }
      for (auto style : allCases<QuandaDurationFormatStyle>)
        add(adapter.format(3725.0, locale, style));
      return all;
    };
    const std::vector<std::string> written = texts(tokyo.adapter);
    for (const std::string& text : written) EXPECT_FALSE(text.empty());
    EXPECT_EQ(texts(losAngeles.adapter), written);
    EXPECT_EQ(texts(chatham.adapter), written);

    // The style formatters write what ICU's own writes.
    const icu::Locale icuLocale(locale);
    std::size_t index = 0;
    for (auto date : allCases<QuandaDateFormatStyle>) {
      const auto dateStyle = static_cast<icu::DateFormat::EStyle>(3 - static_cast<int>(date));
      EXPECT_EQ(written[index++], icuText(*icuFormatter(icu::DateFormat::createDateTimeInstance(
                                              dateStyle, icu::DateFormat::kNone, icuLocale)),
                                          lateSeconds));
      for (auto time : allCases<QuandaTimeFormatStyle>) {
        const auto timeStyle = static_cast<icu::DateFormat::EStyle>(3 - static_cast<int>(time));
        EXPECT_EQ(written[index++], icuText(*icuFormatter(icu::DateFormat::createDateTimeInstance(
                                                dateStyle, timeStyle, icuLocale)),
                                            lateSeconds));
      }
    }
  }
}

TEST(QuandaAdapterFormatting, FarDatesKeepTheirCalendarDate) {
  TestAdapter test;
  QuandaFoundationCalendarAdapter& adapter = test.adapter;
  const DateComponents dates[] = {{1, 1, 1}, {1582, 10, 10}, {9999, 12, 31}};
  EXPECT_EQ(
      every(dates,
            [&](auto date) { return adapter.format(date, QuandaDateFormatStyle::full, "en_US"); }),
      "Monday, January 1, 1 | Sunday, October 10, 1582 | Friday, December 31, 9999");
  // In every locale whose calendar is Gregorian, as ICU writes the date from its own proleptic
  // calendar's fields.
  for (const char* locale : twentyLocales) {
    if (std::string_view(locale) == "th_TH" || std::string_view(locale) == "fa_IR") continue;
    SCOPED_TRACE(locale);
    const std::unique_ptr<icu::DateFormat> icu =
        icuFormatter(icu::DateFormat::createDateTimeInstance(
            icu::DateFormat::kFull, icu::DateFormat::kNone, icu::Locale(locale)));
    for (const DateComponents& date : dates) {
      icu::Calendar& calendar = *const_cast<icu::Calendar*>(icu->getCalendar());
      calendar.clear();
      calendar.set(date.year, date.month - 1, date.day);
      UErrorCode status = U_ZERO_ERROR;
      const double seconds = calendar.getTime(status) / 1000;
      EXPECT_EQ(adapter.format(date, QuandaDateFormatStyle::full, locale).value(),
                icuText(*icu, seconds));
    }
  }
  // A Thai locale writes the Buddhist year.
  EXPECT_EQ(
      adapter.format(leapDay, QuandaKnownDateFormatTemplate::fullMonthAndYear, "th_TH").value(),
      "กุมภาพันธ์ 2567");
}

TEST(QuandaAdapterFormatting, NamesAndSymbols) {
  TestAdapter test("ar_EG", "Asia/Tokyo");
  QuandaFoundationCalendarAdapter& adapter = test.adapter;
  using Style = QuandaStandaloneDayNameFormatStyle;
  const auto week = allCases<QuandaDayOfGregorianWeek>;
  EXPECT_EQ(every(week, [&](auto day) { return adapter.format(day, "en_US", Style::full); }),
            "Monday | Tuesday | Wednesday | Thursday | Friday | Saturday | Sunday");
  EXPECT_EQ(every(week, [&](auto day) { return adapter.format(day, "de_DE", Style::short_); }),
            "Mo | Di | Mi | Do | Fr | Sa | So");
  EXPECT_EQ(every(week, [&](auto day) { return adapter.format(day, "en_US", Style::veryShort); }),
            "M | T | W | T | F | S | S");
  // Columns from the override, or from the device's first weekday (Saturday in Egypt).
  EXPECT_EQ(
      joined(adapter.calendarColumnNames("en_US", QuandaDayOfGregorianWeek::monday, Style::short_)
                 .value()),
      "Mon | Tue | Wed | Thu | Fri | Sat | Sun");
  EXPECT_EQ(joined(adapter.calendarColumnNames("en_US", std::nullopt, Style::short_).value()),
            "Sat | Sun | Mon | Tue | Wed | Thu | Fri");
  EXPECT_EQ(adapter.amSymbol("ja_JP").value(), "午前");
  EXPECT_EQ(adapter.pmSymbol("en_US").value(), "PM");
  EXPECT_EQ(adapter.pmSymbol(std::nullopt).value(), "م");

  // Durations come with the language code of the locale that wrote them.
  EXPECT_EQ(adapter.format(90.0, "de_DE", QuandaDurationFormatStyle::shortDelta).value(),
            (QuandaFormattedDuration{"1 Min., 30 Sek.", "de"}));
  EXPECT_EQ(adapter.format(-3725.0, "en_US", QuandaDurationFormatStyle::positional).value(),
            (QuandaFormattedDuration{"-1:02:05", "en"}));
  EXPECT_EQ(adapter.format(5.0, "", QuandaDurationFormatStyle::secondsOnly).value().languageCode,
            std::nullopt);
}

TEST(QuandaAdapterFormatting, FailuresNameEveryLayer) {
  TestAdapter test;
  QuandaFoundationCalendarAdapter& adapter = test.adapter;
  const std::string refused = "Failed to create local foundation date from dateComponents";
  expectErrorChain(
      adapter.format(DateComponents{2023, 2, 29}, QuandaDateFormatStyle::long_, "de_DE").error(),
      {{"format(abstractDateComponents:dateStyle:localeIdentifierOverride:)",
        {"abstractDateComponents", "dateStyle=long", "localeIdentifierOverride=de_DE"}},
       {"makeUtcGregorianFoundationDate(from:)",
        {"components", "calendar", "dateComponents"},
        refused}},
      adapterPath);
  // A time of day is placed on 2019-08-10 before it is converted.
  const auto hour24 =
      adapter.format(NaturalTimeComponents{24, 0, 0}, {}, QuandaTimeFormatStyle::short_);
  EXPECT_EQ(hour24.error().functionName(),
            "format(abstractDiscreteTimeComponents:localeIdentifierOverride:timeStyle:)");
  EXPECT_EQ(hour24.error().error()->argument("dateComponents"),
            "DateComponents(year: 2019, month: 8, day: 10, hour: 24, minute: 0, second: 0)");
  for (double duration : {std::nan(""), std::numeric_limits<double>::infinity(), 1e19}) {
    expectErrorChain(
        adapter.format(duration, "en_US", QuandaDurationFormatStyle::shortDelta).error(),
        {{"format(duration:localeIdentifierOverride:style:)",
          {"duration", "localeIdentifierOverride", "style=shortDelta"},
          "Formatter produced no string"}},
        adapterPath);
  }
  // An instant the platform's calendars cannot hold has no text.
  expectErrorChain(
      adapter.format(instant(std::nan("")), QuandaDateFormatStyle::full, {}).error(),
      {{"format(foundationDate:dateStyle:localeIdentifierOverride:)",
        {"foundationDate", "dateStyle", "localeIdentifierOverride"}},
       {"formatUsingUtcTimezone(foundationDate:dateStyle:localeIdentifierOverride:"
        "timeStyle:)",
        {"foundationDate", "dateStyle=full", "localeIdentifierOverride", "timeStyle=none"},
        "Formatter produced no string"}},
      adapterPath);
  // Names come from a calendar of the device's zone, which must exist.
  test.device->setTimezoneIdentifier("Nowhere");
  expectErrorChain(adapter.amSymbol("en_US").error(),
                   {{"amSymbol(localeIdentifierOverride:)", {"localeIdentifierOverride=en_US"}},
                    {"getGregorianCalendarBy(localeIdentifier:timezoneIdentifier:)",
                     {"localeIdentifier", "timezoneIdentifier=Nowhere"}},
                    {"getTimezoneBy(identifier:)", {"identifier"}, "Failed to create timezone"}},
                   adapterPath);
}

}  // namespace
