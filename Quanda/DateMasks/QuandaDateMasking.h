// QuandaDateMasking: a recurrence rule over calendar dates.
//
// A date mask answers whether an abstract date belongs to the rule, given the user's preferred
// first day of the week (which only the week-cycle masks consult): every Monday, the 15th, the
// last Friday of the month, every third day from a date, the summer holidays. Masks are small
// immutable values, archived with the data that uses them.
//
// matches(date, firstDayOfWeek) is the hot path. Every mask of the library is a `final` class that
// defines matches inline, so a caller that holds a concrete mask pays no virtual call and the test
// compiles down to a few bit operations on the date's fields or day count.
//
// Beyond the single test, a mask finds its occurrences by reasoning about its own rule rather than
// by trying every day: nextMatch / previousMatch jump to the next wanted weekday, day of month,
// week block, cycle entry or range, and a rule that can never match says so at once.
//
//   QuandaDaysOfWeekDateMask mondays({QuandaDayOfGregorianWeek::monday});
//   mondays.nextMatch(date, QuandaDayOfGregorianWeek::monday);   // the next Monday after date
//   for (QuandaAbstractDate monday : mondays.matchingDates(march, firstDay)) ...
//
// Most rules are month-local: whether a date matches depends only on its place in its month (the
// day, the weekday, the month's length, which month of the year it is): every weekday,
// day-of-month, week-of-month rule, and every combination of them. Such a mask keeps, from its
// construction, the days it selects in each of the 91 kinds of month (month of the year, February
// of 28 or 29 days, weekday of the 1st), and its searches walk month by month through a table of
// the 400-year calendar cycle: the next "Friday the 13th" costs about a nanosecond per month
// visited, with no date conversion inside the walk.
//
// All of that rests on two search primitives over day counts (0 is 0001-01-01), which every
// library mask overrides: the earliest and the latest day of a window whose answer is a given one.
// A combination (all of, any of, not; see QuandaJunctionDateMask and QuandaNotDateMask) that is
// not month-local searches word-parallel instead: every mask also writes its answers for 64
// consecutive days into one word (answerWord) and says over which runs of days its answers repeat
// and with what period (answerRun), so a combination reads 64 days per step, at no more cost than
// a plain day-by-day reading of matches, and knows after one period that a run holds no answer. A
// mask written outside the library only has to define matches and the archive members; its
// searches then fall back to testing day by day.
//
// The domain. A mask answers matches on every valid date, except the week cycles, whose rule
// starts at the first week of their anchor's residue (QuandaWeekCycle): asking them about a date
// before it is a programming error. A combination's domain is the intersection of its parts'
// (so it starts at the latest of their starts), and its matches checks it first, whatever the
// order of its parts. The searches never report a day outside the domain, for either answer.
//
// A mask archives itself in its own JSON form (encode), and in a tagged form that also names its
// kind ({"kind": "daysOfWeek", "mask": [...]}) so that a list of masks of different kinds can be
// archived and restored (QuandaDateMaskArchive.h). Masks compare and hash by kind and stored
// fields through isEqual and hashValue, which the combinations use for their children.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <iterator>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "Keel/KeelDomain.h"
#include "Quanda/Abstract/QuandaAbstractDate.h"
#include "Quanda/DateMasks/QuandaDateMaskSearch.h"
#include "Quanda/DateMasks/QuandaDayBlock.h"
#include "Quanda/QuandaDayOfGregorianWeek.h"

class QuandaDateMasking {
 public:
  class Matches;

  virtual ~QuandaDateMasking() = default;

  // ---- The rule ------------------------------------------------------------------------------

  // Whether the date belongs to the rule. No side effects; never fails. A date outside the
  // domain (below) is a programming error that stops the process.
  virtual bool matches(QuandaAbstractDate date, QuandaDayOfGregorianWeek firstDayOfWeek) const = 0;

  // The dates on which matches may be asked, for a preferred first day of the week: every valid
  // date, or for a week cycle and the combinations holding one, those from the first day of the
  // cycle's first residue week on.
  KeelDomain<QuandaAbstractDate> domain(QuandaDayOfGregorianWeek firstDayOfWeek) const {
    return KeelDomain<QuandaAbstractDate>(
        QuandaAbstractDate::makeFromDaysSinceDatum(domainStart(firstDayOfWeek)),
        QuandaAbstractDate::validRange.max());
  }

  // ---- Occurrences ---------------------------------------------------------------------------
  //
  // Every occurrence reported lies in the domain; the dates given need not.

  // The first matching date strictly after `after`, or nothing up to 9999-12-31.
  std::optional<QuandaAbstractDate> nextMatch(QuandaAbstractDate after,
                                              QuandaDayOfGregorianWeek firstDayOfWeek) const {
    if (isMonthLocal_) return quanda_detail::nextMonthDay(monthDaySets_, after);
    return nextMatchByDayCount(after, firstDayOfWeek);
  }
  // The last matching date strictly before `before`, or nothing down to 0001-01-01.
  std::optional<QuandaAbstractDate> previousMatch(QuandaAbstractDate before,
                                                  QuandaDayOfGregorianWeek firstDayOfWeek) const {
    if (isMonthLocal_) return quanda_detail::previousMonthDay(monthDaySets_, before);
    return previousMatchByDayCount(before, firstDayOfWeek);
  }
  // The earliest and the latest matching date of a range (both ends included; a range given
  // with reversed bounds means the same dates).
  std::optional<QuandaAbstractDate> firstMatch(const KeelDomain<QuandaAbstractDate>& range,
                                               QuandaDayOfGregorianWeek firstDayOfWeek) const;
  std::optional<QuandaAbstractDate> lastMatch(const KeelDomain<QuandaAbstractDate>& range,
                                              QuandaDayOfGregorianWeek firstDayOfWeek) const;
  // The matching dates of a range in increasing order, found lazily one search at a time. The
  // view refers to this mask, which must outlive it.
  Matches matchingDates(const KeelDomain<QuandaAbstractDate>& range,
                        QuandaDayOfGregorianWeek firstDayOfWeek) const;

  // ---- Search primitives ---------------------------------------------------------------------

  // The earliest (latest) day count in first...last, inside the domain, whose answer to matches
  // is `matching`, or nothing. The window must satisfy first <= last <= 3652058 (9999-12-31);
  // anything else is a programming error.
  std::optional<std::uint32_t> earliestDayCount(bool matching, std::uint32_t first,
                                                std::uint32_t last,
                                                QuandaDayOfGregorianWeek firstDayOfWeek) const;
  std::optional<std::uint32_t> latestDayCount(bool matching, std::uint32_t first,
                                              std::uint32_t last,
                                              QuandaDayOfGregorianWeek firstDayOfWeek) const;

  // The days the mask selects in each kind of month, for a month-local mask (see above); null for
  // a mask whose answer depends on more than the date's place in its month (cycles, ranges).
  const quanda_detail::MonthDaySets* monthDaySets() const noexcept {
    return isMonthLocal_ ? &monthDaySets_ : nullptr;
  }

  // ---- Word-parallel reading -----------------------------------------------------------------

  // The answers of matches on the 64 days of a block (bit i for day block.start() + i). Only the
  // bits set in `care` need be right; the days of the other bits may lie past 9999-12-31 or
  // outside the domain and are never tested. The default reads a month-local mask's day sets and
  // tests any other mask day by day.
  virtual std::uint64_t answerWord(const quanda_detail::DayBlock& block, std::uint64_t care) const;
  // A rough cost of answerWord: 1 for a month-local mask or a range (a few loads), 2 for a cycle
  // (a remainder too), the sum of the parts for a combination that is not month-local, 64 for a
  // mask tested day by day. The combinations read their cheapest parts first.
  virtual std::uint32_t answerWordCost() const { return isMonthLocal_ ? 1 : 64; }
  // The longest run of days around `day` over which the answers repeat with one period (see
  // QuandaDayBlock.h). The default: a month-local mask's period over the whole range, and no
  // known period for any other mask.
  virtual quanda_detail::AnswerRun answerRun(std::uint32_t day,
                                             QuandaDayOfGregorianWeek firstDayOfWeek) const;

  // ---- Identity and archive ------------------------------------------------------------------

  // The tag of the mask's kind in the tagged archive: "daysOfWeek", "dayCycle", "allOf", ...
  virtual std::string_view archiveKind() const = 0;
  // Writes the mask's own archive form (without the tag).
  virtual void encode(nlohmann::json& json) const = 0;
  // Same kind and equal stored fields.
  virtual bool isEqual(const QuandaDateMasking& other) const = 0;
  // The std::hash of the concrete mask.
  virtual std::size_t hashValue() const = 0;

  // The kind and the archive form: `daysOfWeek ["monday","friday"]`.
  std::string description() const;

 protected:
  QuandaDateMasking() = default;
  QuandaDateMasking(const QuandaDateMasking&) = default;
  QuandaDateMasking& operator=(const QuandaDateMasking&) = default;

  // Declares the mask month-local, selecting `sets`; called once by the constructors.
  void setMonthDaySets(const quanda_detail::MonthDaySets& sets) noexcept {
    monthDaySets_ = sets;
    isMonthLocal_ = true;
  }
  // Declares the first day count of the domain for each first day of the week (by ordinal); called
  // once by the constructors of the masks whose domain is not the whole range.
  void setDomainStarts(const std::array<std::uint32_t, 7>& starts) noexcept {
    domainStarts_ = starts;
  }
  std::uint32_t domainStart(QuandaDayOfGregorianWeek firstDayOfWeek) const noexcept {
    return domainStarts_[ordinal(firstDayOfWeek)];
  }
  static const std::array<std::uint32_t, 7>& domainStartsOf(
      const QuandaDateMasking& mask) noexcept {
    return mask.domainStarts_;
  }

  // What earliestDayCount and latestDayCount answer, for a window already checked. The defaults
  // walk month by month for a month-local mask and test day by day otherwise; the other masks of
  // the library override them with a search over their own rule.
  virtual std::optional<std::uint32_t> findEarliest(bool matching, std::uint32_t first,
                                                    std::uint32_t last,
                                                    QuandaDayOfGregorianWeek firstDayOfWeek) const;
  virtual std::optional<std::uint32_t> findLatest(bool matching, std::uint32_t first,
                                                  std::uint32_t last,
                                                  QuandaDayOfGregorianWeek firstDayOfWeek) const;

  // findEarliest and findLatest by answerWord, 64 days a step, run by run (answerRun): a run
  // whose period has been read through without the answer is left at once. For the
  // combinations.
  std::optional<std::uint32_t> findEarliestByWords(bool matching, std::uint32_t first,
                                                   std::uint32_t last,
                                                   QuandaDayOfGregorianWeek firstDayOfWeek) const;
  std::optional<std::uint32_t> findLatestByWords(bool matching, std::uint32_t first,
                                                 std::uint32_t last,
                                                 QuandaDayOfGregorianWeek firstDayOfWeek) const;

 private:
  std::optional<QuandaAbstractDate> nextMatchByDayCount(
      QuandaAbstractDate after, QuandaDayOfGregorianWeek firstDayOfWeek) const;
  std::optional<QuandaAbstractDate> previousMatchByDayCount(
      QuandaAbstractDate before, QuandaDayOfGregorianWeek firstDayOfWeek) const;

  quanda_detail::MonthDaySets monthDaySets_;
  std::array<std::uint32_t, 7> domainStarts_{};
  bool isMonthLocal_ = false;
};

namespace quanda_detail {
// What matches says when it stops on a date outside the domain.
inline constexpr const char* dateBeforeDomainMessage = "week before the week cycle's first residue";
}  // namespace quanda_detail

std::ostream& operator<<(std::ostream& stream, const QuandaDateMasking& mask);

// The matching dates of a range: a forward range of QuandaAbstractDate.
class QuandaDateMasking::Matches {
 public:
  class iterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = QuandaAbstractDate;
    using difference_type = std::ptrdiff_t;
    using reference = QuandaAbstractDate;
    using pointer = void;

    iterator() = default;

    QuandaAbstractDate operator*() const {
      return QuandaAbstractDate::makeFromDaysSinceDatum(*current_);
    }
    iterator& operator++() {
      current_ = *current_ < last_
                     ? mask_->earliestDayCount(true, *current_ + 1, last_, firstDayOfWeek_)
                     : std::nullopt;
      return *this;
    }
    iterator operator++(int) {
      iterator old = *this;
      ++*this;
      return old;
    }
    friend bool operator==(const iterator& lhs, const iterator& rhs) noexcept {
      return lhs.current_ == rhs.current_;
    }

   private:
    friend class Matches;
    iterator(const QuandaDateMasking* mask, std::optional<std::uint32_t> current,
             std::uint32_t last, QuandaDayOfGregorianWeek firstDayOfWeek)
        : mask_(mask), current_(current), last_(last), firstDayOfWeek_(firstDayOfWeek) {}

    const QuandaDateMasking* mask_ = nullptr;
    std::optional<std::uint32_t> current_;
    std::uint32_t last_ = 0;
    QuandaDayOfGregorianWeek firstDayOfWeek_ = QuandaDayOfGregorianWeek::monday;
  };
  using const_iterator = iterator;

  iterator begin() const {
    return iterator(mask_, mask_->earliestDayCount(true, first_, last_, firstDayOfWeek_), last_,
                    firstDayOfWeek_);
  }
  iterator end() const { return iterator(mask_, std::nullopt, last_, firstDayOfWeek_); }

 private:
  friend class QuandaDateMasking;
  Matches(const QuandaDateMasking* mask, std::uint32_t first, std::uint32_t last,
          QuandaDayOfGregorianWeek firstDayOfWeek)
      : mask_(mask), first_(first), last_(last), firstDayOfWeek_(firstDayOfWeek) {}

  const QuandaDateMasking* mask_;
  std::uint32_t first_;
  std::uint32_t last_;
  QuandaDayOfGregorianWeek firstDayOfWeek_;
};
