// The JSON archive of every mask: the exact archived shapes, round trips through the tagged form,
// and the decoding errors of bad input.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <random>

#include "DateMaskTestSupport.h"
#include "Keel/KeelDecodingError.h"
#include "Quanda/DateMasks/QuandaDateMaskArchive.h"
#include "Quanda/DateMasks/QuandaDateRangeDateMask.h"
#include "Quanda/DateMasks/QuandaDateRangesDateMask.h"
#include "Quanda/DateMasks/QuandaDayCycleDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfWeekDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfWeeksDateMask.h"
#include "Quanda/DateMasks/QuandaEveryDayDateMask.h"
#include "Quanda/DateMasks/QuandaJunctionDateMask.h"
#include "Quanda/DateMasks/QuandaNotDateMask.h"
#include "Quanda/DateMasks/QuandaReverseWeekdaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaWeekCycleDateMask.h"

namespace {

using nlohmann::json;
using Day = QuandaDayOfGregorianWeek;

QuandaAbstractDate date(std::uint16_t year, std::uint8_t month, std::uint8_t day) {
  return QuandaAbstractDate::make(year, month, day).value();
}

TEST(QuandaDateMaskArchive, EachMaskWritesItsOwnShape) {
  const auto mondays =
      std::make_shared<QuandaDaysOfWeekDateMask>(QuandaDayOfGregorianWeekSet{Day::monday});
  const std::vector<std::pair<std::shared_ptr<const QuandaDateMasking>, const char*>> cases = {
      {std::make_shared<QuandaEveryDayDateMask>(), R"({})"},
      {std::make_shared<QuandaDaysOfWeekDateMask>(
           QuandaDayOfGregorianWeekSet{Day::sunday, Day::monday}),
       R"(["monday","sunday"])"},
      {std::make_shared<QuandaDaysOfMonthDateMask>(QuandaOrdinalSet{31, 0, 1}),
       R"({"oneBasedOrdinals":[0,1,31]})"},
      {std::make_shared<QuandaReverseWeekdaysOfMonthDateMask>(
           QuandaDayOfGregorianWeekSet{Day::friday, Day::tuesday}, QuandaOrdinalSet{2, 1}),
       R"({"daysOfWeek":["tuesday","friday"],"oneBasedWeeks":[1,2]})"},
      {std::make_shared<QuandaDayCycleDateMask>(10, std::vector<bool>{true, false}),
       R"({"anchorDaysSinceDatum":10,"days":[true,false]})"},
      {std::make_shared<QuandaWeekCycleDateMask>(date(2024, 1, 3), std::vector<bool>{true, false}),
       R"({"anchorDate":20240103,"weeks":[true,false]})"},
      {std::make_shared<QuandaDaysOfWeeksDateMask>(
           date(2024, 1, 3), QuandaDayOfGregorianWeekSet{Day::thursday, Day::monday},
           std::vector<bool>{true, false, false}),
       R"({"anchorDate":20240103,"daysOfWeek":["monday","thursday"],"weeks":[true,false,false]})"},
      {std::make_shared<QuandaDateRangeDateMask>(KeelDomain(date(2024, 3, 31), date(2024, 3, 1))),
       R"({"dateRangeInc":{"max":20240301,"min":20240331}})"},
      {std::make_shared<QuandaDateRangesDateMask>(std::vector<QuandaDateRangesDateMask::Range>{
           {date(2024, 12, 24), date(2024, 12, 26)}, {date(2024, 7, 1), date(2024, 7, 14)}}),
       R"({"dateRanges":[{"lowerBound":20240701,"upperBound":20240714},)"
       R"({"lowerBound":20241224,"upperBound":20241226}]})"},
      {std::make_shared<QuandaNotDateMask>(mondays),
       R"({"mask":{"kind":"daysOfWeek","mask":["monday"]}})"},
      {std::make_shared<QuandaAnyOfDateMask>(
           std::vector<std::shared_ptr<const QuandaDateMasking>>{mondays}),
       R"({"masks":[{"kind":"daysOfWeek","mask":["monday"]}]})"},
  };
  for (const auto& [mask, expected] : cases) {
    json own;
    mask->encode(own);
    EXPECT_EQ(own.dump(), expected) << mask->archiveKind();
    const json tagged = encodeTaggedDateMask(*mask);
    EXPECT_EQ(tagged.at("kind"), mask->archiveKind());
    EXPECT_EQ(tagged.at("mask"), own);
    EXPECT_TRUE(decodeTaggedDateMask(tagged)->isEqual(*mask)) << tagged.dump();
  }
}

TEST(QuandaDateMaskArchive, ConcreteMasksDecodeTheirOwnForm) {
  const auto mask = json::parse(R"({"anchorDaysSinceDatum": 7, "days": [true, false, false]})")
                        .get<QuandaDayCycleDateMask>();
  EXPECT_EQ(mask, QuandaDayCycleDateMask(7, {true, false, false}));
  EXPECT_EQ(mask.dayCycleLength(), 3U);  // derived again, never archived
  EXPECT_EQ(QuandaDaysOfWeekDateMask::decode(json::parse(R"(["friday", "friday"])")),
            QuandaDaysOfWeekDateMask({Day::friday}));
}

TEST(QuandaDateMaskArchive, RandomMasksSurviveTheTaggedForm) {
  std::mt19937_64 random(42);
  for (date_mask_test::Kind kind :
       {date_mask_test::Kind::allOf, date_mask_test::Kind::anyOf, date_mask_test::Kind::negation}) {
    for (int round = 0; round < 100; ++round) {
      const auto maskCase = date_mask_test::randomMask(kind, random, 738000);
      const json archived = maskCase.mask;  // through adl_serializer<shared_ptr<const ...>>
      const auto restored =
          json::parse(archived.dump()).get<std::shared_ptr<const QuandaDateMasking>>();
      ASSERT_TRUE(restored->isEqual(*maskCase.mask)) << archived.dump();
      ASSERT_EQ(restored->hashValue(), maskCase.mask->hashValue());
      ASSERT_EQ(encodeTaggedDateMask(*restored), archived);
    }
  }
}

struct BadInput {
  const char* what;
  const char* text;
  const char* description;  // the KeelDecodingError text, or null for a JSON exception
};

TEST(QuandaDateMaskArchive, BadInputIsADecodingErrorNeverACrash) {
  const std::vector<BadInput> cases = {
      {"unknown kind", R"({"kind": "weekly", "mask": {}})", "Unknown date mask kind 'weekly'"},
      {"kind not a string", R"({"kind": 3, "mask": {}})", nullptr},
      {"missing mask", R"({"kind": "everyDay"})", nullptr},
      {"unknown day name", R"({"kind": "daysOfWeek", "mask": ["Monday"]})",
       "Unexpected value 'Monday'"},
      {"day not a string", R"({"kind": "daysOfWeek", "mask": [1]})", nullptr},
      {"ordinal too large", R"({"kind": "daysOfMonth", "mask": {"oneBasedOrdinals": [256]}})",
       nullptr},
      {"missing weeks", R"({"kind": "weekdaysOfMonth", "mask": {"daysOfWeek": []}})", nullptr},
      {"empty day cycle",
       R"({"kind": "dayCycle", "mask": {"anchorDaysSinceDatum": 1, "days": []}})",
       "Empty 'days' list: a day cycle needs at least one day"},
      {"empty week cycle",
       R"({"kind": "weekCycle", "mask": {"anchorDate": 20240101, "weeks": []}})",
       "Empty 'weeks' list: a week cycle needs at least one week"},
      {"empty days of weeks",
       R"({"kind": "daysOfWeeks", "mask": {"anchorDate": 20240101, "daysOfWeek": [], "weeks": []}})",
       "Empty 'weeks' list: a week cycle needs at least one week"},
      {"anchor out of range",
       R"({"kind": "dayCycle", "mask": {"anchorDaysSinceDatum": 4294967296, "days": [true]}})",
       nullptr},
      {"invalid anchor date",
       R"({"kind": "weekCycle", "mask": {"anchorDate": 20230229, "weeks": [true]}})",
       "Failed to create date from int"},
      {"range without max", R"({"kind": "dateRange", "mask": {"dateRangeInc": {"min": 20240101}}})",
       nullptr},
      {"reversed closed range",
       R"({"kind": "dateRanges", "mask": {"dateRanges": [{"lowerBound": 20240102, "upperBound": 20240101}]}})",
       "Date range with lowerBound after upperBound"},
      {"bad inner mask", R"({"kind": "not", "mask": {"mask": {"kind": "nope", "mask": 1}}})",
       "Unknown date mask kind 'nope'"},
      {"masks not a list", R"({"kind": "allOf", "mask": {"masks": {}}})", nullptr},
  };
  for (const BadInput& test : cases) {
    const json input = json::parse(test.text);
    try {
      (void)decodeTaggedDateMask(input);
      ADD_FAILURE() << test.what << ": decoded";
    } catch (const KeelDecodingError& error) {
      EXPECT_NE(test.description, nullptr) << test.what << ": " << error.what();
      if (test.description) {
        EXPECT_STREQ(error.what(), test.description) << test.what;
      }
    } catch (const json::exception& error) {
      EXPECT_EQ(test.description, nullptr) << test.what << ": " << error.what();
    }
  }
}

TEST(QuandaDateMaskArchive, NestingIsBounded) {
  json nested = {{"kind", "everyDay"}, {"mask", json::object()}};
  for (std::size_t level = 0; level < maximumDateMaskNesting; ++level) {
    nested = {{"kind", "not"}, {"mask", {{"mask", nested}}}};
  }
  EXPECT_THROW((void)decodeTaggedDateMask(nested), KeelDecodingError);
  EXPECT_NO_THROW((void)decodeTaggedDateMask(nested["mask"]["mask"]));
}

}  // namespace
