// KeelLazyFiniteCountCache<Key, Value>: a bounded cache that computes a missing value on demand.
//
// A lookup, value(key), returns the stored value on a hit. On a miss it calls the item producer;
// a success is stored and returned, a failure is returned and NOT stored, so the next lookup of
// that key asks the producer again. The cache holds at most threshold.maxCount() entries: when
// storing one more would exceed that, the least recently used entry (the one whose last lookup,
// hit or insertion, lies furthest back) is evicted first. A threshold of 0 keeps nothing: every
// lookup calls the producer.
//
// Each entry records the date producer's date at its insertion, so that a caller can drop stale
// entries with removeEntriesInsertedBefore(date); a hit does not refresh that date.
//
// A hit costs one hash lookup and relinks the entry at the recent end of an intrusive recency
// list: constant time, no allocation (the returned Value is a copy). The map's nodes never move,
// so the list links are plain pointers into them.
//
// Thread safety: built with enforceThreadSafety true, every operation takes an internal mutex, so
// the cache may be used from several threads at once; built with false it takes no lock at all and
// must be used from one thread at a time. Either way the producers run OUTSIDE the lock, so a slow
// producer never blocks other keys' lookups and a producer may itself use the cache. The price:
// two threads that miss the same key at once may both run the producer; the first result stored
// wins and the later one is returned to its own caller but not stored. With thread safety
// enforced, the producers must therefore be safe to call concurrently.
//
// The cache is an object with identity (it owns a mutex and hands out nothing by reference): it is
// neither copyable nor movable; share it by reference or through a smart pointer.
#pragma once

#include <cstddef>
#include <functional>
#include <mutex>
#include <unordered_map>
#include <utility>

#include "Keel/KeelDate.h"
#include "Keel/KeelFiniteCacheThreshold.h"
#include "Keel/KeelPrecondition.h"
#include "Keel/KeelResult.h"

template <class Key, class Value, class Hash = std::hash<Key>>
class KeelLazyFiniteCountCache {
 public:
  using DateProducer = std::function<KeelDate()>;
  using ItemProducer = std::function<KeelResult<Value>(const Key&)>;

  KeelLazyFiniteCountCache(DateProducer dateProducer, bool enforceThreadSafety,
                           ItemProducer itemProducer, KeelFiniteCacheThreshold<unsigned> threshold)
      : dateProducer_(std::move(dateProducer)),
        itemProducer_(std::move(itemProducer)),
        threshold_(threshold),
        enforceThreadSafety_(enforceThreadSafety) {
    KEEL_PRECONDITION(dateProducer_ != nullptr, "a cache needs a date producer");
    KEEL_PRECONDITION(itemProducer_ != nullptr, "a cache needs an item producer");
  }

  KeelLazyFiniteCountCache(const KeelLazyFiniteCountCache&) = delete;
  KeelLazyFiniteCountCache& operator=(const KeelLazyFiniteCountCache&) = delete;

  // The stored value for key, else the item producer's result (stored when it is a success).
  KeelResult<Value> value(const Key& key) {
    {
      const auto lock = lockIfShared();
      if (const auto found = entries_.find(key); found != entries_.end()) {
        Entry& entry = found->second;
        unlink(entry);
        linkAsNewest(entry);
        return entry.value;
      }
    }
    KeelResult<Value> produced = itemProducer_(key);
    if (!produced.hasValue() || threshold_.maxCount() == 0) return produced;
    const KeelDate insertionDate = dateProducer_();
    const auto lock = lockIfShared();
    store(key, produced.value(), insertionDate);
    return produced;
  }

  // The number of entries stored now.
  std::size_t count() const {
    const auto lock = lockIfShared();
    return entries_.size();
  }

  void removeAll() {
    const auto lock = lockIfShared();
    entries_.clear();
    newest_ = nullptr;
    oldest_ = nullptr;
  }

  // Drops every entry whose insertion date lies strictly before date.
  void removeEntriesInsertedBefore(KeelDate date) {
    const auto lock = lockIfShared();
    for (auto position = entries_.begin(); position != entries_.end();) {
      if (position->second.insertionDate < date) {
        unlink(position->second);
        position = entries_.erase(position);
      } else {
        ++position;
      }
    }
  }

  KeelFiniteCacheThreshold<unsigned> threshold() const noexcept { return threshold_; }
  bool enforcesThreadSafety() const noexcept { return enforceThreadSafety_; }

 private:
  struct Entry {
    Entry(const Value& value, KeelDate insertionDate)
        : value(value), insertionDate(insertionDate) {}

    Value value;
    KeelDate insertionDate;
    const Key* key = nullptr;  // the map's own copy of this entry's key
    Entry* newer = nullptr;
    Entry* older = nullptr;
  };

  // Holds the mutex only for a cache built thread-safe; otherwise an empty lock that costs nothing.
  std::unique_lock<std::mutex> lockIfShared() const {
    return enforceThreadSafety_ ? std::unique_lock<std::mutex>(mutex_)
                                : std::unique_lock<std::mutex>();
  }

  void linkAsNewest(Entry& entry) noexcept {
    entry.older = newest_;
    entry.newer = nullptr;
    if (newest_ != nullptr) newest_->newer = &entry;
    newest_ = &entry;
    if (oldest_ == nullptr) oldest_ = &entry;
  }

  void unlink(Entry& entry) noexcept {
    (entry.newer != nullptr ? entry.newer->older : newest_) = entry.older;
    (entry.older != nullptr ? entry.older->newer : oldest_) = entry.newer;
    entry.newer = nullptr;
    entry.older = nullptr;
  }

  // Stores a produced value, evicting the least recently used entry when the cache is full. A key
  // that another thread stored while this one was producing keeps its first value.
  void store(const Key& key, const Value& value, KeelDate insertionDate) {
    if (const auto found = entries_.find(key); found != entries_.end()) {
      unlink(found->second);
      linkAsNewest(found->second);
      return;
    }
    if (entries_.size() >= threshold_.maxCount()) {
      Entry& victim = *oldest_;
      unlink(victim);
      entries_.erase(entries_.find(*victim.key));
    }
    const auto position = entries_.try_emplace(key, value, insertionDate).first;
    position->second.key = &position->first;
    linkAsNewest(position->second);
  }

  DateProducer dateProducer_;
  ItemProducer itemProducer_;
  KeelFiniteCacheThreshold<unsigned> threshold_;
  bool enforceThreadSafety_;
  mutable std::mutex mutex_;
  std::unordered_map<Key, Entry, Hash> entries_;
  Entry* newest_ = nullptr;
  Entry* oldest_ = nullptr;
};
