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
  const struct {
    Domain domain;
    std::vector<QuandaAbstractDate> expected;
    std::int32_t increment;
  } cases[] = {
      {{makeDate(2024, 3, 5), makeDate(2024, 3, 5)}, {makeDate(2024, 3, 5)}, -1},
      {{makeDate(2024, 3, 5), makeDate(2024, 3, 1)},
       {makeDate(2024, 3, 5), makeDate(2024, 3, 4), makeDate(2024, 3, 3), makeDate(2024, 3, 2),
        makeDate(2024, 3, 1)},
       -1},
      {{makeDate(2024, 2, 27), makeDate(2024, 3, 1)},
       {makeDate(2024, 2, 27), makeDate(2024, 2, 28), makeDate(2024, 2, 29), makeDate(2024, 3, 1)},
       1},
      {{makeDate(2023, 12, 31), makeDate(2024, 1, 1)},
       {makeDate(2023, 12, 31), makeDate(2024, 1, 1)},
       1},
      // At the ends of the valid range the walk stops without stepping past them.
      {{makeDate(9999, 12, 30), makeDate(9999, 12, 31)},
       {makeDate(9999, 12, 30), makeDate(9999, 12, 31)},
       1},
      {{makeDate(1, 1, 2), QuandaAbstractDate::zero},
       {makeDate(1, 1, 2), QuandaAbstractDate::zero},
       -1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.domain.min().description() + "..." + c.domain.max().description());
    const QuandaAbstractDateIterator walk = datesInclusive(c.domain);
    EXPECT_EQ(walk.current(), c.domain.min());
    EXPECT_EQ(walk.max(), c.domain.max());
    EXPECT_EQ(walk.dayIncrement(), c.increment);
    EXPECT_EQ(walkWithNext(walk), c.expected);
    EXPECT_EQ(walkWithRangeFor(walk), c.expected);
    EXPECT_EQ(datesInclusiveCount(c.domain), c.expected.size());
    EXPECT_EQ(static_cast<std::size_t>(std::ranges::distance(walk)), c.expected.size());
  }
  EXPECT_EQ(datesInclusiveCount(QuandaAbstractDate::validRange), 3652059u);
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

TEST(QuandaAbstractDateDomain, SplitCasesAtTheEdges) {
  const Domain domain{makeDate(2024, 3, 10), makeDate(2024, 3, 20)};
  const auto d = [](int day) { return makeDate(2024, 3, static_cast<std::uint8_t>(day)); };
  const struct {
    Split split;
    Split expected;
  } cases[] = {
      {splitAtLesserMax(domain, d(20)), Split::lesserOnly(domain)},
      {splitAtLesserMax(domain, d(9)), Split::greaterOnly(domain)},
      {splitAtLesserMax(domain, d(10)), Split::lesserAndGreater({d(10), d(10)}, {d(11), d(20)})},
      {splitAtGreaterMin(domain, d(10)), Split::greaterOnly(domain)},
      {splitAtGreaterMin(domain, d(21)), Split::lesserOnly(domain)},
      {splitAtGreaterMin(domain, d(20)), Split::lesserAndGreater({d(10), d(19)}, {d(20), d(20)})},
      // A reversed range comes back ascending.
      {splitAtLesserMax({d(20), d(10)}, d(25)), Split::lesserOnly(domain)},
      // Cuts at the ends of the valid range never step past them.
      {splitAtLesserMax(QuandaAbstractDate::validRange, QuandaAbstractDate::validRange.max()),
       Split::lesserOnly(QuandaAbstractDate::validRange)},
      {splitAtGreaterMin(QuandaAbstractDate::validRange, QuandaAbstractDate::zero),
       Split::greaterOnly(QuandaAbstractDate::validRange)},
  };
  for (const auto& c : cases) EXPECT_EQ(c.split, c.expected);
}

TEST(QuandaAbstractDateDomain, SplitAccessorsDescriptionAndHash) {
  const Domain lesser{makeDate(2024, 3, 1), makeDate(2024, 3, 2)};
  const Domain greater{makeDate(2024, 3, 3), makeDate(2024, 3, 5)};
  const Split both = Split::lesserAndGreater(lesser, greater);
  EXPECT_EQ(both.kind(), Split::Kind::lesserAndGreater);
  EXPECT_EQ(both.lesser(), lesser);
  EXPECT_EQ(both.greater(), greater);
  EXPECT_EQ(Split::lesserOnly(lesser).greater(), std::nullopt);
  EXPECT_EQ(Split::greaterOnly(greater).lesser(), std::nullopt);
  EXPECT_EQ(Split::greaterOnly(greater).greater(), greater);

  std::ostringstream stream;
  stream << both << ' ' << Split::lesserOnly(lesser) << ' ' << Split::greaterOnly(greater);
  EXPECT_EQ(stream.str(),
            "lesserAndGreater(2024-03-01...2024-03-02, 2024-03-03...2024-03-05) "
            "lesserOnly(2024-03-01...2024-03-02) greaterOnly(2024-03-03...2024-03-05)");

  const std::hash<Split> hash;
  EXPECT_EQ(hash(both), hash(Split::lesserAndGreater(lesser, greater)));
  EXPECT_NE(hash(Split::lesserOnly(lesser)), hash(Split::greaterOnly(lesser)));
  EXPECT_NE(Split::lesserOnly(lesser), Split::greaterOnly(lesser));
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
