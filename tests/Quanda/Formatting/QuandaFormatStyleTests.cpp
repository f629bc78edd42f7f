// The styles and templates callers pass to the adapter: their cases and names, the template
// strings and flags the adapter hands the platform, the date-time style's two parts and the
// duration styles' settings.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <unordered_set>

#include "Quanda/Formatting/QuandaDateFormatStyle.h"
#include "Quanda/Formatting/QuandaDateRangeFormatStyle.h"
#include "Quanda/Formatting/QuandaDateTimeFormatStyle.h"
#include "Quanda/Formatting/QuandaDurationFormatSettings.h"
#include "Quanda/Formatting/QuandaDurationFormatStyle.h"
#include "Quanda/Formatting/QuandaKnownDateFormatTemplate.h"
#include "Quanda/Formatting/QuandaKnownDateTimeFormatTemplate.h"
#include "Quanda/Formatting/QuandaKnownTimeFormatTemplate.h"
#include "Quanda/Formatting/QuandaStandaloneDayNameFormatStyle.h"
#include "Quanda/Formatting/QuandaTimeFormatStyle.h"
#include "Quanda/FoundationAdapting/QuandaPreferredTimeFormat.h"

namespace {

// Every case in order, by the names the library prints.
template <class Enumeration>
std::string listed() {
  std::ostringstream text;
  for (Enumeration value : allCases<Enumeration>) text << value << ' ';
  return text.str();
}

TEST(QuandaFormatStyles, CasesInDeclarationOrder) {
  EXPECT_EQ(listed<QuandaDateFormatStyle>(), "short medium long full ");
  EXPECT_EQ(listed<QuandaTimeFormatStyle>(), "short medium long full ");
  EXPECT_EQ(listed<QuandaDateRangeFormatStyle>(), "short medium long full ");
  EXPECT_EQ(listed<QuandaStandaloneDayNameFormatStyle>(), "full short veryShort ");
  EXPECT_EQ(listed<QuandaDurationFormatStyle>(),
            "hoursOnly longTermCompact mediumAbsoluteSubDay minutesOnly positional secondsOnly "
            "shortAbsoluteSubDay shortDelta totalWholeSeconds ");
  EXPECT_EQ(listed<QuandaKnownDateFormatTemplate>(),
            "fullMonthAndYear standaloneDayOfMonth standaloneShortMonth ");
  EXPECT_EQ(listed<QuandaKnownTimeFormatTemplate>(),
            "standaloneHourRespecting12or24Hour standalone24HourHourOnlyWithoutUnit "
            "standalone12HourHourOnlyWithoutUnit standaloneMinuteWithoutUnit "
            "standaloneSecondWithoutUnit ");
  EXPECT_EQ(listed<QuandaKnownDateTimeFormatTemplate>(),
            "standaloneHour fullDateToMinuteLong fullDateToMinuteMedium fullDateToMinuteShort "
            "fullDateToMinuteVeryShort ");
  EXPECT_EQ(listed<QuandaPreferredTimeFormat>(), "twelveHour twentyFourHour ");
  EXPECT_EQ(static_cast<int>(QuandaDateFormatStyle::full), 3);
}

// The template and flag of every case, in declaration order: only the lone-field time patterns
// bypass localization.
template <class Template>
std::string templates() {
  std::string text;
  for (Template value : allCases<Template>) {
    text += std::string(unlocalizedFormatStringTemplate(value)) +
            (shouldLocalizeFormatStringTemplate(value) ? "" : " (verbatim)") + "; ";
  }
  return text;
}

TEST(QuandaFormatStyles, KnownTemplatesAndWhetherTheyAreLocalized) {
  EXPECT_EQ(templates<QuandaKnownDateFormatTemplate>(), "MMMMyyyy; d; MMM; ");
  EXPECT_EQ(templates<QuandaKnownTimeFormatTemplate>(),
            "jj; H (verbatim); h (verbatim); m (verbatim); s (verbatim); ");
  EXPECT_EQ(templates<QuandaKnownDateTimeFormatTemplate>(),
            "jj; j:mma EEEE d MMMM yyyy; j:mma EEE d MMM yyyy; j:mma E d/MM/yy; j:mma d/MM/yy; ");
}

TEST(QuandaFormatStyles, DateTimeStyleCarriesItsParts) {
  using Style = QuandaDateTimeFormatStyle;
  const Style dateOnly = Style::dateOnly(QuandaDateFormatStyle::full);
  const Style timeOnly = Style::timeOnly(QuandaTimeFormatStyle::short_);
  const Style both =
      Style::dateAndTime(QuandaDateFormatStyle::long_, QuandaTimeFormatStyle::short_);
  EXPECT_EQ(dateOnly.dateStyle(), QuandaDateFormatStyle::full);
  EXPECT_EQ(dateOnly.timeStyle(), std::nullopt);
  EXPECT_EQ(timeOnly.dateStyle(), std::nullopt);
  EXPECT_EQ(timeOnly.timeStyle(), QuandaTimeFormatStyle::short_);
  EXPECT_EQ(both.dateStyle(), QuandaDateFormatStyle::long_);
  EXPECT_EQ(both.timeStyle(), QuandaTimeFormatStyle::short_);
  EXPECT_EQ(dateOnly.description(), "dateOnly(full)");
  EXPECT_EQ(timeOnly.description(), "timeOnly(short)");
  EXPECT_EQ(both.description(), "dateAndTime(dateStyle: long, timeStyle: short)");

  // Every one of the 24 styles is distinct and hashes apart from the others.
  std::unordered_set<Style> styles;
  for (auto date : allCases<QuandaDateFormatStyle>) {
    styles.insert(Style::dateOnly(date));
    for (auto time : allCases<QuandaTimeFormatStyle>) styles.insert(Style::dateAndTime(date, time));
  }
  for (auto time : allCases<QuandaTimeFormatStyle>) styles.insert(Style::timeOnly(time));
  EXPECT_EQ(styles.size(), 24u);
  EXPECT_EQ(Style::dateOnly(QuandaDateFormatStyle::short_),
            Style::dateOnly(QuandaDateFormatStyle::short_));
  EXPECT_NE(Style::dateOnly(QuandaDateFormatStyle::short_),
            Style::dateAndTime(QuandaDateFormatStyle::short_, QuandaTimeFormatStyle::short_));
}

TEST(QuandaFormatStyles, DurationSettingsInThePlatformsValues) {
  using Settings = QuandaDurationFormatSettings;
  using Units = Settings::UnitsStyle;
  using Zero = Settings::ZeroFormattingBehavior;
  const struct {
    QuandaDurationFormatStyle style;
    Units units;
    std::optional<std::uint32_t> allowed;
    std::optional<std::uint8_t> maximum;
    std::optional<Zero> zero;
    bool setsFlags;
  } cases[] = {
      {QuandaDurationFormatStyle::hoursOnly, Units::abbreviated, 0x20, {}, {}, false},
      {QuandaDurationFormatStyle::longTermCompact, Units::abbreviated, 0xFC, 2, Zero::dropAll,
       true},
      {QuandaDurationFormatStyle::mediumAbsoluteSubDay, Units::full, 0xE0, 2, Zero::dropAll, true},
      {QuandaDurationFormatStyle::minutesOnly, Units::abbreviated, 0x40, {}, {}, false},
      {QuandaDurationFormatStyle::positional, Units::positional, 0xE0, {}, Zero::pad, true},
      {QuandaDurationFormatStyle::secondsOnly, Units::abbreviated, 0x80, {}, {}, false},
      {QuandaDurationFormatStyle::shortAbsoluteSubDay, Units::abbreviated, 0xE0, 2, Zero::dropAll,
       true},
      {QuandaDurationFormatStyle::shortDelta, Units::abbreviated, {}, {}, Zero::dropAll, true},
      {QuandaDurationFormatStyle::totalWholeSeconds, Units::full, 0x80, {}, {}, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(caseName(c.style));
    const Settings settings = durationFormatSettings(c.style);
    EXPECT_EQ(settings.unitsStyle, c.units);
    EXPECT_EQ(settings.allowedUnits, c.allowed);
    EXPECT_EQ(settings.maximumUnitCount, c.maximum);
    EXPECT_EQ(settings.zeroFormattingBehavior, c.zero);
    const std::optional<bool> flag = c.setsFlags ? std::optional<bool>(false) : std::nullopt;
    EXPECT_EQ(settings.allowsFractionalUnits, flag);
    EXPECT_EQ(settings.collapsesLargestUnit, flag);
    EXPECT_EQ(settings.includesApproximationPhrase, flag);
    EXPECT_EQ(settings.includesTimeRemainingPhrase, flag);
  }
  EXPECT_EQ(static_cast<int>(Units::full), 3);
  EXPECT_EQ(static_cast<std::uint32_t>(Zero::dropAll), 0x0Eu);
  EXPECT_EQ(static_cast<std::uint32_t>(Zero::pad), 0x10000u);
}

}  // namespace
