#include "Quanda/DateMasks/QuandaDateMaskSyntax.h"

#include <algorithm>
#include <cctype>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Keel/KeelDecodingError.h"
#include "Quanda/Abstract/QuandaTextParsing.h"
#include "Quanda/DateMasks/QuandaDateMaskArchive.h"
#include "Quanda/DateMasks/QuandaDateRangeDateMask.h"
#include "Quanda/DateMasks/QuandaDateRangesDateMask.h"
#include "Quanda/DateMasks/QuandaDayCycleDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfWeekDateMask.h"
#include "Quanda/DateMasks/QuandaDaysOfWeeksDateMask.h"
#include "Quanda/DateMasks/QuandaEveryDayDateMask.h"
#include "Quanda/DateMasks/QuandaJunctionDateMask.h"
#include "Quanda/DateMasks/QuandaMonthCycleDateMask.h"
#include "Quanda/DateMasks/QuandaMonthsOfYearDateMask.h"
#include "Quanda/DateMasks/QuandaNotDateMask.h"
#include "Quanda/DateMasks/QuandaReverseDaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaReverseWeekdaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaReverseWeeksOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaWeekCycleDateMask.h"
#include "Quanda/DateMasks/QuandaWeekdaysOfMonthDateMask.h"
#include "Quanda/DateMasks/QuandaWeeksOfMonthDateMask.h"

namespace {

constexpr std::string_view path = "Quanda/Date Masks/QuandaDateMaskSyntax";
constexpr std::string_view signature = "makeDateMask(syntax:)";

using Mask = std::shared_ptr<const QuandaDateMasking>;
using Words = std::vector<std::string>;

// A mask read so far, with how deep its combinations nest (1 for a single rule), as the tagged
// archive counts them.
struct Rule {
  Mask mask;
  std::size_t nesting = 1;
};
using Result = KeelResult<Rule>;

using quanda_detail::splitKeepingEmpty;

std::string joined(const Words& words, std::size_t from = 0, std::size_t to = SIZE_MAX) {
  std::string text;
  for (std::size_t index = from; index < words.size() && index < to; ++index) {
    if (!text.empty()) text += ' ';
    text += words[index];
  }
  return text;
}

std::optional<std::uint32_t> number(std::string_view text) {
  return quanda_detail::parseUnsignedDecimal<std::uint32_t>(text);
}

std::optional<QuandaDayOfGregorianWeek> dayNamed(std::string word) {
  if (word.size() > 3 && word.back() == 's') word.pop_back();  // "mondays"
  for (QuandaDayOfGregorianWeek day : allCases<QuandaDayOfGregorianWeek>) {
    const std::string_view name = caseName(day);
    if (word == name || word == name.substr(0, 3)) return day;
  }
  return std::nullopt;
}

// "mon,wed", "weekdays", "weekends", "fridays".
std::optional<QuandaDayOfGregorianWeekSet> daysNamed(std::string_view word) {
  using Day = QuandaDayOfGregorianWeek;
  if (word == "weekdays" || word == "weekday") {
    return QuandaDayOfGregorianWeekSet{Day::monday, Day::tuesday, Day::wednesday, Day::thursday,
                                       Day::friday};
  }
  if (word == "weekends" || word == "weekend") {
    return QuandaDayOfGregorianWeekSet{Day::saturday, Day::sunday};
  }
  std::set<QuandaDayOfGregorianWeek> days;
  for (const std::string& part : splitKeepingEmpty(word, ',')) {
    const auto day = dayNamed(part);
    if (!day) return std::nullopt;
    days.insert(*day);
  }
  return QuandaDayOfGregorianWeekSet(days);
}

// "mar", "march", "jan,jul": month numbers 1...12.
std::optional<QuandaOrdinalSet> monthsNamed(std::string_view word) {
  constexpr std::string_view names[] = {"january",   "february", "march",    "april",
                                        "may",       "june",     "july",     "august",
                                        "september", "october",  "november", "december"};
  std::set<std::uint8_t> months;
  for (const std::string& part : splitKeepingEmpty(word, ',')) {
    const auto named = std::find_if(std::begin(names), std::end(names), [&](std::string_view name) {
      return part == name || part == name.substr(0, 3) || (name == "september" && part == "sept");
    });
    if (named == std::end(names)) return std::nullopt;
    months.insert(static_cast<std::uint8_t>(named - std::begin(names) + 1));
  }
  return QuandaOrdinalSet(months);
}

bool startsWithDigit(std::string_view word) {
  return !word.empty() && std::isdigit(static_cast<unsigned char>(word[0]));
}

class Parser {
 public:
  explicit Parser(std::string_view syntax) : syntax_(syntax) {
    std::string text;
    for (char character : syntax) {
      const char lower = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
      if (lower == '(' || lower == ')') {
        text += ' ';
        text += lower;
        text += ' ';
      } else {
        text += lower;
      }
    }
    // "mon, wed" and "mon ,wed" read as "mon,wed".
    std::string tight;
    for (std::size_t index = 0; index < text.size(); ++index) {
      if (std::isspace(static_cast<unsigned char>(text[index]))) {
        std::size_t next = index;
        while (next < text.size() && std::isspace(static_cast<unsigned char>(text[next]))) ++next;
        const bool besideComma =
            (!tight.empty() && tight.back() == ',') || (next < text.size() && text[next] == ',');
        if (!besideComma && !tight.empty() && next < text.size()) tight += ' ';
        index = next - 1;
      } else {
        tight += text[index];
      }
    }
    for (std::string& word : splitKeepingEmpty(tight, ' ')) {
      if (!word.empty()) tokens_.push_back(std::move(word));
    }
  }

  KeelResult<Mask> parse() {
    if (tokens_.empty()) return unreadable("", "there is no rule");
    Result rule = parseExcept();
    if (!rule) return rule.error();
    if (position_ != tokens_.size()) {
      return unreadable(joined(tokens_, position_),
                        "\"and\", \"or\", \"except\" or the end expected");
    }
    return rule.value().mask;
  }

 private:
  static bool isKeyword(const std::string& token) {
    return token == "and" || token == "or" || token == "except" || token == "not" || token == "(" ||
           token == ")";
  }
  bool accept(std::string_view token) {
    if (position_ < tokens_.size() && tokens_[position_] == token) {
      ++position_;
      return true;
    }
    return false;
  }

  // The part that could not be read, and why.
  KeelError unreadable(const std::string& part,
                       const std::string& reason = "not a rule this syntax knows") const {
    return KeelError::fault("Unreadable date mask",
                            {{"syntax", syntax_}, {"part", part}, {"reason", reason}}, path,
                            signature);
  }
  KeelError tooDeep() const {
    return KeelError::fault("Date masks nested too deeply",
                            {{"syntax", syntax_}, {"maximumNesting", maximumDateMaskNesting}}, path,
                            signature);
  }

  // A combination of rules already read, or the error of one nested too deeply.
  template <class Combination, class Masks>
  Result combined(Masks&& masks, std::size_t nesting) const {
    if (nesting + 1 > maximumDateMaskNesting) return tooDeep();
    return Rule{std::make_shared<Combination>(std::forward<Masks>(masks)), nesting + 1};
  }

  Result parseExcept() {
    Result rule = parseOr();
    while (rule && accept("except")) {
      Result excluded = parseOr();
      if (!excluded) return excluded;
      Result negated = combined<QuandaNotDateMask>(excluded.value().mask, excluded.value().nesting);
      if (!negated) return negated;
      rule =
          combined<QuandaAllOfDateMask>(std::vector<Mask>{rule.value().mask, negated.value().mask},
                                        std::max(rule.value().nesting, negated.value().nesting));
    }
    return rule;
  }

  template <class Junction>
  Result parseJunction(std::string_view word, Result (Parser::*operand)()) {
    Result first = (this->*operand)();
    if (!first) return first;
    std::vector<Mask> masks{first.value().mask};
    std::size_t nesting = first.value().nesting;
    while (accept(word)) {
      Result next = (this->*operand)();
      if (!next) return next;
      masks.push_back(next.value().mask);
      nesting = std::max(nesting, next.value().nesting);
    }
    if (masks.size() == 1) return first;
    return combined<Junction>(std::move(masks), nesting);
  }
  Result parseOr() { return parseJunction<QuandaAnyOfDateMask>("or", &Parser::parseAnd); }
  Result parseAnd() { return parseJunction<QuandaAllOfDateMask>("and", &Parser::parseUnary); }

  // "not" and parentheses are where the reading recurses: each opens a level, and no more levels
  // than a mask may nest are opened, so that the depth of the reading stays bounded.
  Result parseUnary() {
    const bool negated = position_ < tokens_.size() && tokens_[position_] == "not";
    if (negated || (position_ < tokens_.size() && tokens_[position_] == "(")) {
      if (openLevels_ == maximumDateMaskNesting) return tooDeep();
      ++position_;
      ++openLevels_;
      Result inner = negated ? parseUnary() : parseExcept();
      --openLevels_;
      if (!inner) return inner;
      if (negated) return combined<QuandaNotDateMask>(inner.value().mask, inner.value().nesting);
      if (!accept(")")) return unreadable(joined(tokens_, position_), "\")\" expected");
      return inner;
    }
    Words words;
    while (position_ < tokens_.size() && !isKeyword(tokens_[position_])) {
      words.push_back(tokens_[position_++]);
    }
    if (words.empty()) return unreadable(joined(tokens_, position_), "a rule expected");
    return parseAtom(words);
  }

  template <class Kind, class... Arguments>
  static Result single(Arguments&&... arguments) {
    return Rule{std::make_shared<Kind>(std::forward<Arguments>(arguments)...)};
  }
  Result allOf(const Result& lhs, const Result& rhs) const {
    if (!lhs) return lhs;
    if (!rhs) return rhs;
    return combined<QuandaAllOfDateMask>(std::vector<Mask>{lhs.value().mask, rhs.value().mask},
                                         std::max(lhs.value().nesting, rhs.value().nesting));
  }

  // A date, or a month ("2024-03" for its 1st).
  KeelResult<QuandaAbstractDate> date(std::string text) const {
    if (text.size() == 7 && text[4] == '-') text += "-01";
    auto parsed = QuandaAbstractDate::makeFromIso8601String(text);
    if (!parsed) {
      return KeelError::wrap(parsed.error(), {{"syntax", syntax_}}, path, signature);
    }
    return parsed;
  }

  // "1,15": numbers 0...255 (a day or week a month does not reach is kept and never matches).
  KeelResult<QuandaOrdinalSet> numbers(std::string_view word) const {
    std::set<std::uint8_t> values;
    for (const std::string& part : splitKeepingEmpty(word, ',')) {
      const auto value = number(part);
      if (!value) return unreadable(part, "not a number");
      if (*value > 255) return unreadable(part, "no such day or week of a month");
      values.insert(static_cast<std::uint8_t>(*value));
    }
    return QuandaOrdinalSet(values);
  }

  // "1st,3rd", "second", "5th".
  KeelResult<QuandaOrdinalSet> ordinals(std::string_view word) const {
    constexpr std::string_view names[] = {"first", "second", "third", "fourth", "fifth"};
    std::set<std::uint8_t> values;
    for (const std::string& part : splitKeepingEmpty(word, ',')) {
      const auto named = std::find(std::begin(names), std::end(names), part);
      if (named != std::end(names)) {
        values.insert(static_cast<std::uint8_t>(named - std::begin(names) + 1));
        continue;
      }
      const std::string_view suffix =
          part.size() < 3 ? std::string_view() : std::string_view(part).substr(part.size() - 2);
      const auto value = number(std::string_view(part).substr(0, part.size() - suffix.size()));
      if (suffix != "st" && suffix != "nd" && suffix != "rd" && suffix != "th") {
        return unreadable(part, "not an ordinal (1st, 2nd, ..., first, second, ...)");
      }
      if (!value || *value > 255) return unreadable(part, "no such ordinal");
      values.insert(static_cast<std::uint8_t>(*value));
    }
    return QuandaOrdinalSet(values);
  }

  KeelResult<std::vector<bool>> bits(std::string_view word) const {
    std::vector<bool> pattern;
    for (char character : word) {
      if (character != '0' && character != '1') {
        return unreadable(std::string(word), "a pattern is made of 0s and 1s");
      }
      pattern.push_back(character == '1');
    }
    return pattern;
  }

  static std::vector<bool> onThenOff(std::uint32_t length) {
    std::vector<bool> pattern(length, false);
    pattern[0] = true;
    return pattern;
  }

  // "... of mar", "... of jan,jul": the rule within those months. Otherwise "<cycle> on ...", or
  // a rule alone.
  Result parseAtom(const Words& words) {
    const std::size_t count = words.size();
    if (count >= 3 && words[count - 2] == "of") {
      if (const auto months = monthsNamed(words[count - 1])) {
        return allOf(parseAtom(Words(words.begin(), words.end() - 2)),
                     single<QuandaMonthsOfYearDateMask>(*months));
      }
    }
    if ((words[0] == "every" && joined(words) != "every day") ||
        (count > 1 && words[1] == "every")) {
      return parseCycle(words);
    }
    return parseSimple(words);
  }

  Result parseSimple(const Words& words) {
    const std::string whole = joined(words);
    const std::size_t count = words.size();
    if (whole == "every day" || whole == "daily" || whole == "everyday") {
      return single<QuandaEveryDayDateMask>();
    }
    if (count == 1) {
      if (const auto days = daysNamed(words[0])) return single<QuandaDaysOfWeekDateMask>(*days);
      if (const auto months = monthsNamed(words[0])) {
        return single<QuandaMonthsOfYearDateMask>(*months);
      }
    }
    // mar 14 | jan,jul 1,15
    if (count == 2 && startsWithDigit(words[1])) {
      if (const auto months = monthsNamed(words[0])) {
        const auto days = numbers(words[1]);
        if (!days) return days.error();
        return allOf(single<QuandaMonthsOfYearDateMask>(*months),
                     single<QuandaDaysOfMonthDateMask>(days.value()));
      }
    }
    if (whole == "last day") return single<QuandaReverseDaysOfMonthDateMask>(QuandaOrdinalSet{1});
    if (whole == "last week") return single<QuandaReverseWeeksOfMonthDateMask>(QuandaOrdinalSet{1});
    // day 15 | days 1,15 | days 1,2 from end | week 2 | weeks 1,3 from end
    if ((count == 2 || (count == 4 && words[2] == "from" && words[3] == "end")) &&
        (words[0] == "day" || words[0] == "days" || words[0] == "week" || words[0] == "weeks")) {
      const auto values = numbers(words[1]);
      if (!values) return values.error();
      const bool fromEnd = count == 4;
      if (words[0][0] == 'd') {
        if (fromEnd) return single<QuandaReverseDaysOfMonthDateMask>(values.value());
        return single<QuandaDaysOfMonthDateMask>(values.value());
      }
      if (fromEnd) return single<QuandaReverseWeeksOfMonthDateMask>(values.value());
      return single<QuandaWeeksOfMonthDateMask>(values.value());
    }
    // last fri | 2nd last sun | 2nd tue | 1st,3rd mon,wed
    if (count == 2 && words[0] == "last") {
      if (const auto days = daysNamed(words[1])) {
        return single<QuandaReverseWeekdaysOfMonthDateMask>(*days, QuandaOrdinalSet{1});
      }
    }
    if (count == 2 || (count == 3 && words[1] == "last")) {
      if (const auto days = daysNamed(words[count - 1])) {
        const auto weeks = ordinals(words[0]);
        if (!weeks) return weeks.error();
        if (count == 3) {
          return single<QuandaReverseWeekdaysOfMonthDateMask>(*days, weeks.value());
        }
        return single<QuandaWeekdaysOfMonthDateMask>(*days, weeks.value());
      }
    }
    // pattern 1101 from D | week pattern 10 from D | month pattern 100 from D
    const std::size_t at = words[0] == "week" || words[0] == "month" ? 1 : 0;
    if (count > at && words[at] == "pattern") {
      if (count != at + 4 || words[at + 2] != "from") {
        return unreadable(whole, "a pattern reads \"pattern 1101 from <date>\"");
      }
      const auto pattern = bits(words[at + 1]);
      if (!pattern) return pattern.error();
      if (pattern.value().empty()) return unreadable(whole, "a pattern needs at least one entry");
      return cycleFrom(at == 0 ? "day" : words[0], pattern.value(), words[at + 3]);
    }
    if (startsWithDigit(words[0]) || words[0] == "dates" || words[0] == "holidays") {
      return parseDates(words);
    }
    return unreadable(whole);
  }

  // The cycle of a unit ("day", "week", "month") with this pattern from the date `anchor`, of
  // weeks on some days of the week when `days` are given.
  Result cycleFrom(std::string_view unit, const std::vector<bool>& pattern,
                   const std::string& anchor,
                   std::optional<QuandaDayOfGregorianWeekSet> days = std::nullopt) const {
    const auto start = date(anchor);
    if (!start) return start.error();
    if (days) return single<QuandaDaysOfWeeksDateMask>(start.value(), *days, pattern);
    if (unit == "week") return single<QuandaWeekCycleDateMask>(start.value(), pattern);
    if (unit == "month") return single<QuandaMonthCycleDateMask>(start.value(), pattern);
    return single<QuandaDayCycleDateMask>(start.value().daysSinceDatum(), pattern);
  }

  // [mon,thu] every (3 | other) (days | weeks | months | years | mondays) from D [on <rule>]:
  // the length may be left out ("every year from 2024-03 on 14"); "on" narrows a cycle of months
  // or years to a rule within the month ("on 15", "on 1,15", "on last fri").
  Result parseCycle(const Words& words) {
    constexpr std::uint32_t longest = 100000;
    const std::size_t count = words.size();
    std::optional<QuandaDayOfGregorianWeekSet> days;
    std::size_t at = 0;
    if (words[0] != "every") {
      days = daysNamed(words[0]);
      if (!days) return unreadable(words[0], "days of the week expected before \"every\"");
      at = 1;
    }
    if (count < at + 2)
      return unreadable(joined(words), "a cycle reads \"every 3 days from <date>\"");
    std::size_t unitAt = at + 1;
    std::uint32_t length = 1;
    if (words[at + 1] == "other" || startsWithDigit(words[at + 1])) {
      unitAt = at + 2;
      const auto parsed =
          words[at + 1] == "other" ? std::optional<std::uint32_t>(2) : number(words[at + 1]);
      if (!parsed) return unreadable(words[at + 1], "not a number");
      length = *parsed;
    }
    if (unitAt >= count)
      return unreadable(joined(words), "a cycle needs a unit (days, weeks, months, years)");
    std::string unit = words[unitAt];
    const auto weekdays = daysNamed(unit);  // "every other monday"
    if (weekdays && !days) {
      days = weekdays;
      unit = "week";
    }
    if (unit.size() > 1 && unit.back() == 's') unit.pop_back();
    if (unit != "day" && unit != "week" && unit != "month" && unit != "year") {
      return unreadable(words[unitAt], "not a unit of a cycle (days, weeks, months, years)");
    }
    if (days && unit != "week") {
      return unreadable(joined(words, 0, unitAt + 1), "days of the week repeat in weeks");
    }
    const std::string phrase = joined(words, at, unitAt + 1);
    if (length == 0) return unreadable(phrase, "a cycle needs at least one " + unit);
    if (length > longest || (unit == "year" && length > longest / 12)) {
      return unreadable(phrase, "a cycle is at most 100000 of its units long");
    }
    if (unit == "year") {
      unit = "month";
      length *= 12;
    }
    // "every monday": no cycle, the days themselves.
    if (days && length == 1 && unitAt + 1 == count) return single<QuandaDaysOfWeekDateMask>(*days);
    if (unitAt + 2 >= count || words[unitAt + 1] != "from") {
      return unreadable(joined(words), "a cycle needs a start: \"from\" and a date");
    }
    const std::string& anchor = words[unitAt + 2];
    const std::vector<bool> pattern = onThenOff(length);
    Result cycle = cycleFrom(unit, pattern, anchor, days);
    const std::size_t rest = unitAt + 3;
    if (rest == count || !cycle) return cycle;
    if (words[rest] != "on" || rest + 1 == count || unit != "month") {
      return unreadable(joined(words, rest),
                        "the end of the cycle, or \"on\" and a rule within the month, expected");
    }
    const Words within(words.begin() + static_cast<std::ptrdiff_t>(rest + 1), words.end());
    if (within.size() == 1 && startsWithDigit(within[0])) {
      const auto dayNumbers = numbers(within[0]);
      if (!dayNumbers) return dayNumbers.error();
      return allOf(cycle, single<QuandaDaysOfMonthDateMask>(dayNumbers.value()));
    }
    return allOf(cycle, parseSimple(within));
  }

  // [dates | holidays] 2024-07-01..2024-07-14, 2024-12-25
  Result parseDates(const Words& words) {
    const std::size_t from = words[0] == "dates" || words[0] == "holidays" ? 1 : 0;
    if (from >= words.size()) return unreadable(joined(words), "dates expected");
    std::vector<QuandaDateRangesDateMask::Range> ranges;
    for (std::size_t index = from; index < words.size(); ++index) {
      for (const std::string& item : splitKeepingEmpty(words[index], ',')) {
        if (!startsWithDigit(item)) return unreadable(item, "a date expected");
        const std::size_t dots = item.find("..");
        const auto low = date(item.substr(0, dots));
        if (!low) return low.error();
        auto high = low;
        if (dots != std::string::npos) {
          high = date(item.substr(dots + 2));
          if (!high) return high.error();
        }
        if (high.value() < low.value()) return unreadable(item, "the range is reversed");
        ranges.emplace_back(low.value(), high.value());
      }
    }
    if (ranges.size() == 1) {
      return single<QuandaDateRangeDateMask>(
          KeelDomain(ranges[0].lowerBound(), ranges[0].upperBound()));
    }
    return single<QuandaDateRangesDateMask>(std::move(ranges));
  }

  std::string syntax_;
  Words tokens_;
  std::size_t position_ = 0;
  std::size_t openLevels_ = 0;  // "not"s and parentheses being read
};

}  // namespace

KeelResult<std::shared_ptr<const QuandaDateMasking>> makeDateMaskFromSyntax(
    std::string_view syntax) {
  return Parser(syntax).parse();
}

KeelResult<std::shared_ptr<const QuandaDateMasking>> makeDateMaskFromSyntaxOrArchive(
    std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t\r\n");
  if (start == std::string_view::npos || text[start] != '{') return makeDateMaskFromSyntax(text);
  std::string reason;
  try {
    return decodeTaggedDateMask(nlohmann::json::parse(text));
  } catch (const nlohmann::json::exception& error) {
    reason = error.what();
  } catch (const KeelDecodingError& error) {
    reason = error.what();
  }
  return KeelError::fault("Undecodable date mask archive", {{"archive", text}, {"reason", reason}},
                          path, "makeDateMask(syntaxOrArchive:)");
}

KeelResult<QuandaDayOfGregorianWeek> makeDayOfGregorianWeekFromSyntax(std::string_view syntax) {
  std::string lower;
  for (char character : syntax) {
    lower += static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
  }
  if (const auto day = dayNamed(lower)) return *day;
  return KeelError::fault("Unreadable day of week", {{"syntax", syntax}}, path,
                          "makeDayOfGregorianWeek(syntax:)");
}
