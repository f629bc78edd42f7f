#include "Quanda/DateMasks/QuandaDateMaskSyntax.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <vector>

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

std::vector<std::string> split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  while (true) {
    const std::size_t end = text.find(separator, start);
    parts.emplace_back(text.substr(start, end - start));
    if (end == std::string_view::npos) return parts;
    start = end + 1;
  }
}

std::string joined(const Words& words, std::size_t from = 0) {
  std::string text;
  for (std::size_t index = from; index < words.size(); ++index) {
    if (!text.empty()) text += ' ';
    text += words[index];
  }
  return text;
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
  if (word == "weekdays") {
    return QuandaDayOfGregorianWeekSet{Day::monday, Day::tuesday, Day::wednesday, Day::thursday,
                                       Day::friday};
  }
  if (word == "weekends" || word == "weekend") {
    return QuandaDayOfGregorianWeekSet{Day::saturday, Day::sunday};
  }
  std::set<QuandaDayOfGregorianWeek> days;
  for (const std::string& part : split(word, ',')) {
    const auto day = dayNamed(part);
    if (!day) return std::nullopt;
    days.insert(*day);
  }
  return QuandaDayOfGregorianWeekSet(days);
}

std::optional<std::uint32_t> number(std::string_view text) {
  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || text.empty()) return std::nullopt;
  return value;
}

std::optional<QuandaOrdinalSet> numbers(std::string_view word) {
  std::set<std::uint8_t> values;
  for (const std::string& part : split(word, ',')) {
    const auto value = number(part);
    if (!value || *value > 255) return std::nullopt;
    values.insert(static_cast<std::uint8_t>(*value));
  }
  return QuandaOrdinalSet(values);
}

// "1st,3rd", "second", "5th".
std::optional<QuandaOrdinalSet> ordinals(std::string_view word) {
  constexpr std::string_view names[] = {"first", "second", "third", "fourth", "fifth"};
  std::set<std::uint8_t> values;
  for (const std::string& part : split(word, ',')) {
    const auto named = std::find(std::begin(names), std::end(names), part);
    if (named != std::end(names)) {
      values.insert(static_cast<std::uint8_t>(named - std::begin(names) + 1));
      continue;
    }
    if (part.size() < 3) return std::nullopt;
    const std::string suffix = part.substr(part.size() - 2);
    if (suffix != "st" && suffix != "nd" && suffix != "rd" && suffix != "th") return std::nullopt;
    const auto value = number(std::string_view(part).substr(0, part.size() - 2));
    if (!value || *value > 255) return std::nullopt;
    values.insert(static_cast<std::uint8_t>(*value));
  }
  return QuandaOrdinalSet(values);
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
    for (std::string& word : split(tight, ' ')) {
      if (!word.empty()) tokens_.push_back(std::move(word));
    }
  }

  KeelResult<Mask> parse() {
    if (tokens_.empty()) return unreadable("");
    Result rule = parseExcept();
    if (!rule) return rule.error();
    if (position_ != tokens_.size()) return unreadable(joined(tokens_, position_));
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

  KeelError unreadable(const std::string& part) const {
    return KeelError::fault("Unreadable date mask", {{"syntax", syntax_}, {"part", part}}, path,
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
      if (!accept(")")) return unreadable(joined(tokens_, position_));
      return inner;
    }
    Words words;
    while (position_ < tokens_.size() && !isKeyword(tokens_[position_])) {
      words.push_back(tokens_[position_++]);
    }
    if (words.empty()) return unreadable(joined(tokens_, position_));
    KeelResult<Mask> atom = parseAtom(words);
    if (!atom) return atom.error();
    return Rule{atom.value()};
  }

  KeelResult<QuandaAbstractDate> date(const std::string& text) const {
    auto parsed = QuandaAbstractDate::makeFromIso8601String(text);
    if (!parsed) {
      return KeelError::wrap(parsed.error(), {{"syntax", syntax_}}, path, signature);
    }
    return parsed;
  }

  // "... from <date>" at the end of words, starting at index `from`.
  std::optional<std::string> anchorText(const Words& words, std::size_t from) const {
    if (words.size() != from + 2 || words[from] != "from") return std::nullopt;
    return words[from + 1];
  }

  static std::optional<std::vector<bool>> bits(std::string_view word) {
    std::vector<bool> pattern;
    for (char character : word) {
      if (character != '0' && character != '1') return std::nullopt;
      pattern.push_back(character == '1');
    }
    if (pattern.empty()) return std::nullopt;
    return pattern;
  }

  // "every 3 days", "every other week": the cycle length and whether it counts weeks, from
  // words[at] on ("every" itself at words[at]).
  static std::optional<std::pair<std::uint32_t, bool>> every(const Words& words, std::size_t at) {
    if (words.size() < at + 3 || words[at] != "every") return std::nullopt;
    const std::string& unit = words[at + 2];
    const bool weeks = unit == "week" || unit == "weeks";
    if (!weeks && unit != "day" && unit != "days") return std::nullopt;
    const auto length =
        words[at + 1] == "other" ? std::optional<std::uint32_t>(2) : number(words[at + 1]);
    if (!length || *length == 0 || *length > 100000) return std::nullopt;
    return std::pair(*length, weeks);
  }

  static std::vector<bool> onThenOff(std::uint32_t length) {
    std::vector<bool> pattern(length, false);
    pattern[0] = true;
    return pattern;
  }

  KeelResult<Mask> parseAtom(const Words& words) {
    const std::string whole = joined(words);
    const std::size_t count = words.size();
    if (whole == "every day" || whole == "daily" || whole == "everyday") {
      return Mask(std::make_shared<QuandaEveryDayDateMask>());
    }
    if (count == 1) {
      if (const auto days = daysNamed(words[0])) {
        return Mask(std::make_shared<QuandaDaysOfWeekDateMask>(*days));
      }
    }
    if (whole == "last day") {
      return Mask(std::make_shared<QuandaReverseDaysOfMonthDateMask>(QuandaOrdinalSet{1}));
    }
    if (whole == "last week") {
      return Mask(std::make_shared<QuandaReverseWeeksOfMonthDateMask>(QuandaOrdinalSet{1}));
    }
    // day 15 | days 1,15 | days 1,2 from end | week 2 | weeks 1,3 from end
    if ((count == 2 || (count == 4 && words[2] == "from" && words[3] == "end")) &&
        (words[0] == "day" || words[0] == "days" || words[0] == "week" || words[0] == "weeks")) {
      if (const auto values = numbers(words[1])) {
        const bool fromEnd = count == 4;
        if (words[0][0] == 'd') {
          if (fromEnd) return Mask(std::make_shared<QuandaReverseDaysOfMonthDateMask>(*values));
          return Mask(std::make_shared<QuandaDaysOfMonthDateMask>(*values));
        }
        if (fromEnd) return Mask(std::make_shared<QuandaReverseWeeksOfMonthDateMask>(*values));
        return Mask(std::make_shared<QuandaWeeksOfMonthDateMask>(*values));
      }
    }
    // last fri | 2nd last sun | 2nd tue | 1st,3rd mon,wed
    if (count == 2 && words[0] == "last") {
      if (const auto days = daysNamed(words[1])) {
        return Mask(
            std::make_shared<QuandaReverseWeekdaysOfMonthDateMask>(*days, QuandaOrdinalSet{1}));
      }
    }
    if (count == 2 || (count == 3 && words[1] == "last")) {
      const auto weeks = ordinals(words[0]);
      const auto days = daysNamed(words[count - 1]);
      if (weeks && days) {
        if (count == 3) {
          return Mask(std::make_shared<QuandaReverseWeekdaysOfMonthDateMask>(*days, *weeks));
        }
        return Mask(std::make_shared<QuandaWeekdaysOfMonthDateMask>(*days, *weeks));
      }
    }
    // every 3 days from D | every 2 weeks from D | mon,thu every 3 weeks from D
    for (std::size_t at : {std::size_t{0}, std::size_t{1}}) {
      const auto cycle = every(words, at);
      const auto anchor = anchorText(words, at + 3);
      if (!cycle || !anchor) continue;
      const auto days = at == 1 ? daysNamed(words[0]) : std::nullopt;
      if (at == 1 && (!days || !cycle->second)) continue;
      const auto start = date(*anchor);
      if (!start) return start.error();
      const std::vector<bool> pattern = onThenOff(cycle->first);
      if (days) {
        return Mask(std::make_shared<QuandaDaysOfWeeksDateMask>(start.value(), *days, pattern));
      }
      if (cycle->second)
        return Mask(std::make_shared<QuandaWeekCycleDateMask>(start.value(), pattern));
      return Mask(
          std::make_shared<QuandaDayCycleDateMask>(start.value().daysSinceDatum(), pattern));
    }
    // pattern 1101 from D | week pattern 10 from D
    for (std::size_t at : {std::size_t{0}, std::size_t{1}}) {
      if (words.size() <= at + 1 || words[at] != "pattern" || (at == 1 && words[0] != "week")) {
        continue;
      }
      const auto pattern = bits(words[at + 1]);
      const auto anchor = anchorText(words, at + 2);
      if (!pattern || !anchor) continue;
      const auto start = date(*anchor);
      if (!start) return start.error();
      if (at == 1) return Mask(std::make_shared<QuandaWeekCycleDateMask>(start.value(), *pattern));
      return Mask(
          std::make_shared<QuandaDayCycleDateMask>(start.value().daysSinceDatum(), *pattern));
    }
    return parseDates(words);
  }

  // [dates | holidays] 2024-07-01..2024-07-14, 2024-12-25
  KeelResult<Mask> parseDates(const Words& words) {
    const std::size_t from = words[0] == "dates" || words[0] == "holidays" ? 1 : 0;
    if (from >= words.size()) return unreadable(joined(words));
    std::vector<QuandaDateRangesDateMask::Range> ranges;
    for (std::size_t index = from; index < words.size(); ++index) {
      for (const std::string& item : split(words[index], ',')) {
        if (item.empty() || !std::isdigit(static_cast<unsigned char>(item[0]))) {
          return unreadable(joined(words));
        }
        const std::size_t dots = item.find("..");
        const auto low = date(item.substr(0, dots));
        if (!low) return low.error();
        auto high = low;
        if (dots != std::string::npos) {
          high = date(item.substr(dots + 2));
          if (!high) return high.error();
        }
        if (high.value() < low.value()) return unreadable(item);
        ranges.emplace_back(low.value(), high.value());
      }
    }
    if (ranges.size() == 1) {
      return Mask(std::make_shared<QuandaDateRangeDateMask>(
          KeelDomain(ranges[0].lowerBound(), ranges[0].upperBound())));
    }
    return Mask(std::make_shared<QuandaDateRangesDateMask>(std::move(ranges)));
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
