#include "Quanda/Abstract/QuandaTextParsing.h"

#include <unicode/brkiter.h>
#include <unicode/unistr.h>

#include <memory>

namespace quanda_detail {

std::vector<std::string> splitKeepingEmpty(std::string_view text, char separator) {
  std::vector<std::string> pieces;
  std::size_t start = 0;
  while (true) {
    const std::size_t end = text.find(separator, start);
    if (end == std::string_view::npos) {
      pieces.emplace_back(text.substr(start));
      return pieces;
    }
    pieces.emplace_back(text.substr(start, end - start));
    start = end + 1;
  }
}

namespace {

bool isAscii(std::string_view text) {
  for (const char byte : text) {
    if (static_cast<unsigned char>(byte) >= 0x80) return false;
  }
  return true;
}

// ASCII text has one character per byte except for "\r\n", which is one grapheme cluster.
std::vector<std::string> asciiCharacters(std::string_view text) {
  std::vector<std::string> result;
  for (std::size_t index = 0; index < text.size(); ++index) {
    if (text[index] == '\r' && index + 1 < text.size() && text[index + 1] == '\n') {
      result.emplace_back("\r\n");
      ++index;
    } else {
      result.emplace_back(1, text[index]);
    }
  }
  return result;
}

std::vector<std::string> unicodeCharacters(std::string_view text) {
  const icu::UnicodeString unicode = icu::UnicodeString::fromUTF8(
      icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::BreakIterator> iterator(
      icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  std::vector<std::string> result;
  if (U_FAILURE(status) || !iterator) {
    // Without segmentation data, fall back to code points.
    for (int32_t index = 0; index < unicode.length();) {
      const int32_t next = unicode.moveIndex32(index, 1);
      std::string piece;
      unicode.tempSubStringBetween(index, next).toUTF8String(piece);
      result.push_back(std::move(piece));
      index = next;
    }
    return result;
  }
  iterator->setText(unicode);
  int32_t start = iterator->first();
  for (int32_t end = iterator->next(); end != icu::BreakIterator::DONE;
       start = end, end = iterator->next()) {
    std::string piece;
    unicode.tempSubStringBetween(start, end).toUTF8String(piece);
    result.push_back(std::move(piece));
  }
  return result;
}

}  // namespace

std::vector<std::string> characters(std::string_view text) {
  return isAscii(text) ? asciiCharacters(text) : unicodeCharacters(text);
}

std::size_t characterCount(std::string_view text) {
  if (isAscii(text)) {
    std::size_t count = text.size();
    for (std::size_t index = 0; index + 1 < text.size(); ++index) {
      if (text[index] == '\r' && text[index + 1] == '\n') --count;
    }
    return count;
  }
  return unicodeCharacters(text).size();
}

}  // namespace quanda_detail
