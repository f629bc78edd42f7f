// Walking, counting and splitting date ranges.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <ranges>
#include <sstream>
#include <vector>

#include "Quanda/Abstract/QuandaAbstractDateDomain.h"

namespace {

using Domain = KeelDomain<QuandaAbstractDate>;
using Split = QuandaAbstractDateDomainSplit;

QuandaAbstractDate makeDate(std::uint16_t year, std::uint8_t month, std::uint8_t day) {
  return QuandaAbstractDate::make(year, month, day).value();
}

std::vector<QuandaAbstractDate> walkWithNext(QuandaAbstractDateIterator walk) {
  std::vector<QuandaAbstractDate> dates;
  while (const auto date = walk.next()) dates.push_back(*date);
  EXPECT_EQ(walk.next(), std::nullopt);  // and stays over
  return dates;
}

std::vector<QuandaAbstractDate> walkWithRangeFor(const QuandaAbstractDateIterator& walk) {
  std::vector<QuandaAbstractDate> dates;
  for (const QuandaAbstractDate date : walk) dates.push_back(date);
  return dates;
}

static_assert(std::ranges::forward_range<QuandaAbstractDateIterator>);
static_assert(std::is_trivially_copyable_v<QuandaAbstractDateIterator>);
static_assert(std::is_trivially_copyable_v<QuandaAbstractDateDomainSplit>);

TEST(QuandaAbstractDateDomain, WalksAndCountsEveryDateBothWays) {
  // At the ends of the valid range the walk stops without stepping past them.
  for (const Domain domain : {Domain{makeDate(2024, 3, 5), makeDate(2024, 3, 5)},
                              Domain{makeDate(2024, 3, 5), makeDate(2024, 2, 27)},
                              Domain{makeDate(2023, 12, 31), makeDate(2024, 1, 1)},
                              Domain{makeDate(9999, 12, 30), makeDate(9999, 12, 31)},
                              Domain{makeDate(1, 1, 2), QuandaAbstractDate::zero}}) {
    SCOPED_TRACE(domain.min().description() + "..." + domain.max().description());
    const std::int32_t step = domain.min() <= domain.max() ? 1 : -1;
    std::vector<QuandaAbstractDate> expected{domain.min()};
    while (expected.back() != domain.max()) expected.push_back(expected.back().addingDays(step));
    const QuandaAbstractDateIterator walk = datesInclusive(domain);
    EXPECT_EQ(walk.dayIncrement(), domain.min() == domain.max() ? -1 : step);
    EXPECT_EQ(walkWithNext(walk), expected);
    EXPECT_EQ(walkWithRangeFor(walk), expected);
    EXPECT_EQ(datesInclusiveCount(domain), expected.size());
    EXPECT_EQ(static_cast<std::size_t>(std::ranges::distance(walk)), expected.size());
  }
  static_assert(datesInclusiveCount(Domain{QuandaAbstractDate::validRange.max(),
                                           QuandaAbstractDate::validRange.min()}) == 3652059);
}

TEST(QuandaAbstractDateDomain, RangeForStartsWhereNextLeftOff) {
  QuandaAbstractDateIterator walk = datesInclusive({makeDate(2024, 3, 1), makeDate(2024, 3, 4)});
  EXPECT_EQ(walk.next(), makeDate(2024, 3, 1));
  const QuandaAbstractDateIterator copy = walk;
  EXPECT_EQ(walkWithRangeFor(walk),
            (std::vector{makeDate(2024, 3, 2), makeDate(2024, 3, 3), makeDate(2024, 3, 4)}));
  // begin() works on a copy: the walk itself has not moved, and a copy moves on its own.
  EXPECT_EQ(walk, copy);
  EXPECT_EQ(walk.next(), makeDate(2024, 3, 2));
  EXPECT_EQ(copy.current(), makeDate(2024, 3, 2));

  const auto found = std::ranges::find(copy, makeDate(2024, 3, 3));
  ASSERT_NE(found, copy.end());
  EXPECT_EQ(*std::next(found), makeDate(2024, 3, 4));
  EXPECT_EQ(std::next(found, 2), copy.end());
}

// Every split of a range, with its bounds in either order, at every cut from before the range to
// after it: each date goes to exactly the side its comparison with the cut says.
TEST(QuandaAbstractDateDomain, SplitsPutEachDateOnItsSide) {
  const QuandaAbstractDate first = makeDate(2024, 2, 26);
  const QuandaAbstractDate last = makeDate(2024, 3, 3);
  const auto contains = [](const std::optional<Domain>& part, QuandaAbstractDate date) {
    return part.has_value() && part->contains(date);
  };
  for (const Domain domain : {Domain{first, last}, Domain{last, first}}) {
    for (auto cut = first.addingDays(-2); cut <= last.addingDays(2); cut = cut.nextDay()) {
      SCOPED_TRACE(cut.description());
      const Split byLesserMax = splitAtLesserMax(domain, cut);
      const Split byGreaterMin = splitAtGreaterMin(domain, cut);
      for (const Split& split : {byLesserMax, byGreaterMin}) {
        // Each part is ascending, and the parts are what their sides say.
        for (const auto& part : {split.lesser(), split.greater()}) {
          if (part) {
            EXPECT_LE(part->min(), part->max());
          }
        }
        EXPECT_EQ(split.kind() == Split::Kind::lesserOnly, !split.greater().has_value());
        EXPECT_EQ(split.kind() == Split::Kind::greaterOnly, !split.lesser().has_value());
      }
      for (const QuandaAbstractDate date :
           datesInclusive({first.addingDays(-3), last.addingDays(3)})) {
        const bool inside = domain.contains(date);
        EXPECT_EQ(contains(byLesserMax.lesser(), date), inside && date <= cut) << date;
        EXPECT_EQ(contains(byLesserMax.greater(), date), inside && date > cut) << date;
        EXPECT_EQ(contains(byGreaterMin.lesser(), date), inside && date < cut) << date;
        EXPECT_EQ(contains(byGreaterMin.greater(), date), inside && date >= cut) << date;
      }
    }
  }
}

TEST(QuandaAbstractDateDomain, SplitsAtTheEndsOfTheValidRangeAndTheirForms) {
  // Cuts at the ends of the valid range never step past them.
  const Domain all = QuandaAbstractDate::validRange;
  EXPECT_EQ(splitAtLesserMax(all, all.max()), Split::lesserOnly(all));
  EXPECT_EQ(splitAtGreaterMin(all, all.min()), Split::greaterOnly(all));

  const Domain lesser{makeDate(2024, 3, 1), makeDate(2024, 3, 2)};
  const Domain greater{makeDate(2024, 3, 3), makeDate(2024, 3, 5)};
  std::ostringstream stream;
  stream << Split::lesserAndGreater(lesser, greater) << ' ' << Split::lesserOnly(lesser) << ' '
         << Split::greaterOnly(greater);
  EXPECT_EQ(stream.str(),
            "lesserAndGreater(2024-03-01...2024-03-02, 2024-03-03...2024-03-05) "
            "lesserOnly(2024-03-01...2024-03-02) greaterOnly(2024-03-03...2024-03-05)");
  // The kind is part of the value.
  EXPECT_NE(Split::lesserOnly(lesser), Split::greaterOnly(lesser));
  EXPECT_NE(std::hash<Split>{}(Split::lesserOnly(lesser)),
            std::hash<Split>{}(Split::greaterOnly(lesser)));
}

TEST(QuandaAbstractDateDomainDeathTest, ReadingAFinishedWalkStops) {
  const QuandaAbstractDateIterator walk =
      datesInclusive({makeDate(2024, 3, 5), makeDate(2024, 3, 5)});
  auto iterator = walk.begin();
  ++iterator;
  ASSERT_EQ(iterator, walk.end());
  EXPECT_DEATH((void)*iterator, "dereferencing a finished date walk");
}

}  // namespace
