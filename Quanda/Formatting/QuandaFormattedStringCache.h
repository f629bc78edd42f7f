// QuandaFormattedStringCache<Key>: what the formatted-value caches share, a bounded cache of
// finished strings with the library's error context on both sides of it.
//
// Each formatted-value cache (QuandaFormattedAbstractDateCache and its siblings) maps a key record
// of (value, style or template, locale identifier) to the string a formatter or the calendar
// adapter makes of it, in a KeelLazyFiniteCountCache made with the same settings everywhere: the
// current platform date as its date producer, thread safety off, the cache type's maxCount as
// its threshold. The producer is the cache type's own; a failure of it is wrapped here with the
// key under "key", the cache type's constructor signature and its path, since the producer is
// defined in that constructor. A failed lookup is wrapped once more by value() with the
// operation's own arguments and signature, so it reports the operation outside and the
// constructor one level in.
//
// Failures are never stored; a later lookup of the key asks the producer again. Not synchronized:
// one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "Keel/KeelDate.h"
#include "Keel/KeelError.h"
#include "Keel/KeelFiniteCacheThreshold.h"
#include "Keel/KeelLazyFiniteCountCache.h"
#include "Keel/KeelPrecondition.h"
#include "Keel/KeelResult.h"

namespace quanda_detail {

// How errors name a key record: "CacheKey(date: 2024-02-29, localeIdentifier: en_US, style:
// full)".
inline std::string describeKeyRecord(std::string_view name, const KeelArguments& fields) {
  std::string text(name);
  text += '(';
  for (const KeelArgument& field : fields) {
    if (&field != &fields.front()) text += ", ";
    text += field.key + ": " + field.value;
  }
  text += ')';
  return text;
}

// The calendar adapter a cache's producer holds; a null one is a programming error.
template <class Adapter>
std::shared_ptr<Adapter> requiredAdapter(std::shared_ptr<Adapter> calendarAdapter) {
  KEEL_PRECONDITION(calendarAdapter != nullptr, "a formatted-value cache needs a calendar adapter");
  return calendarAdapter;
}

// std::hash of the key, looked up only when a key is hashed, so that a cache type can name its
// nested key record before the record's std::hash specialisation is declared after the type.
// The call is deliberately not noexcept: the standard library's map then keeps each key's hash
// beside it, so that walking a bucket compares stored hashes instead of hashing every key's text
// again.
struct DeferredHash {
  template <class Key>
  std::size_t operator()(const Key& key) const {
    return std::hash<Key>{}(key);
  }
};
}  // namespace quanda_detail

template <class Key>
class QuandaFormattedStringCache {
 public:
  using Producer = std::function<KeelResult<std::string>(const Key&)>;

  QuandaFormattedStringCache(Producer producer, KeelFiniteCacheThreshold<unsigned> maxCount,
                             std::string_view path, std::string_view constructorSignature,
                             std::uint32_t constructorLine = __builtin_LINE())
      : path_(path),
        cache_(
            keelNow, false,
            [producer = std::move(producer), path, constructorSignature,
             constructorLine](const Key& key) -> KeelResult<std::string> {
              KeelResult<std::string> text = producer(key);
              if (!text) {
                return KeelError::wrap(text.error(), {{"key", key}}, path, constructorSignature,
                                       constructorLine);
              }
              return text;
            },
            maxCount) {}

  // The stored string for the key, else the producer's; a failure wrapped with args(), the
  // operation's signature and the cache type's path.
  template <class Args>
  KeelResult<std::string> value(const Key& key, const Args& args, std::string_view function,
                                std::uint32_t lineNumber = __builtin_LINE()) {
    // One named result returned on every path, so that a hit's text is never moved on the way.
    KeelResult<std::string> text = cache_.value(key);
    if (!text) text = KeelError::wrap(text.error(), args(), path_, function, lineNumber);
    return text;
  }

  // The number of strings stored now, and the bound.
  std::size_t count() const { return cache_.count(); }
  KeelFiniteCacheThreshold<unsigned> threshold() const noexcept { return cache_.threshold(); }

 private:
  std::string_view path_;
  KeelLazyFiniteCountCache<Key, std::string, quanda_detail::DeferredHash> cache_;
};
