// The styles and templates callers pass to the adapter: their cases in order with their names, and
// the date-time style's two parts. What each gives the platform is checked by the adapter's exact
// texts.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <unordered_set>

#include "Quanda/Formatting/QuandaDateFormatStyle.h"
#include "Quanda/Formatting/QuandaDateRangeFormatStyle.h"
#include "Quanda/Formatting/QuandaDateTimeFormatStyle.h"
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

}  // namespace
