// The weekdays: order, names, successor and the archived form.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>

#include "Abstract/ErrorChainExpectations.h"
#include "Quanda/QuandaDayOfGregorianWeek.h"

namespace {

using Day = QuandaDayOfGregorianWeek;

TEST(QuandaDayOfGregorianWeek, CasesOrdinalsAndNames) {
  const struct {
    Day day;
    int ordinal;
    const char* title;
    const char* archived;
  } cases[] = {
      {Day::monday, 0, "Monday", "monday"},          {Day::tuesday, 1, "Tuesday", "tuesday"},
      {Day::wednesday, 2, "Wednesday", "wednesday"}, {Day::thursday, 3, "Thursday", "thursday"},
      {Day::friday, 4, "Friday", "friday"},          {Day::saturday, 5, "Saturday", "saturday"},
      {Day::sunday, 6, "Sunday", "sunday"},
  };
  ASSERT_EQ(allCases<Day>.size(), 7u);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.title);
    EXPECT_EQ(allCases<Day>[static_cast<std::size_t>(c.ordinal)], c.day);
    EXPECT_EQ(ordinal(c.day), c.ordinal);
    EXPECT_EQ(encodingSortKey(c.day), c.ordinal);
    EXPECT_EQ(makeDayOfGregorianWeek(static_cast<std::uint8_t>(c.ordinal)), c.day);
    EXPECT_EQ(developmentLanguageTitleCaseName(c.day), c.title);
    EXPECT_EQ(caseName(c.day), c.archived);
    EXPECT_EQ(makeDayOfGregorianWeek(std::string_view(c.archived)), c.day);
    EXPECT_EQ(makeDayOfGregorianWeek(std::string_view(c.title)), std::nullopt);
    std::ostringstream stream;
    stream << c.day;
    EXPECT_EQ(stream.str(), c.archived);
  }
}

TEST(QuandaDayOfGregorianWeek, NextDayOfWeekCyclesThroughTheWeek) {
  for (Day day : allCases<Day>) {
    Day walked = day;
    for (int step = 1; step <= 7; ++step) {
      walked = nextDayOfWeek(walked);
      EXPECT_EQ(ordinal(walked), (ordinal(day) + step) % 7);
    }
  }
}

TEST(QuandaDayOfGregorianWeek, SetsOfDaysOrderByTheSortKey) {
  const std::set<Day> days{Day::sunday, Day::monday};
  EXPECT_EQ(*days.begin(), Day::monday);
  EXPECT_EQ(nlohmann::json(days).dump(), R"(["monday","sunday"])");
}

TEST(QuandaDayOfGregorianWeek, JsonArchiveIsTheLowerCaseName) {
  for (Day day : allCases<Day>) {
    const nlohmann::json json = day;
    EXPECT_EQ(json, std::string(caseName(day)));
    EXPECT_EQ(json.get<Day>(), day);
  }
  for (const char* text : {"Monday", "", " monday", "monday ", "MONDAY", "mon", "sunday\n"}) {
    expectDecodingError<Day>(nlohmann::json(text).dump(),
                             "Unexpected value '" + std::string(text) + "'");
  }
  for (const char* json : {"0", "null", "[\"monday\"]", "{\"day\": \"monday\"}"}) {
    EXPECT_THROW((void)nlohmann::json::parse(json).get<Day>(), nlohmann::json::type_error) << json;
  }
}

TEST(QuandaDayOfGregorianWeekDeathTest, OrdinalBeyondSundayStops) {
  volatile std::uint8_t seven = 7;
  EXPECT_DEATH((void)makeDayOfGregorianWeek(static_cast<std::uint8_t>(seven)),
               "weekday ordinal outside");
}

}  // namespace
