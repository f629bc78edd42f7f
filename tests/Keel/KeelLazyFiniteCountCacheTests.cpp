#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <list>
#include <map>
#include <random>
#include <thread>
#include <vector>

#include "Keel/KeelLazyFiniteCountCache.h"

namespace {

// A cache of int -> int whose producer doubles the key, fails for negative keys, and counts calls;
// its clock is a number the test sets.
struct CacheFixture {
  explicit CacheFixture(unsigned maxCount, bool threadSafe = false)
      : cache([this] { return KeelDate(std::chrono::duration<double>(now)); }, threadSafe,
              [this](const int& key) -> KeelResult<int> {
                ++calls;
                if (key < 0)
                  return KeelResult<int>("negative key", {{"key", key}}, "Test", "f(key:)", 1);
                return key * 2;
              },
              KeelFiniteCacheThreshold(maxCount)) {}

  // Whether a lookup of key ran the producer; also checks the value.
  bool missed(int key) {
    const int before = calls;
    EXPECT_EQ(cache.value(key).value(), key * 2);
    return calls != before;
  }

  double now = 0;
  std::atomic<int> calls = 0;
  KeelLazyFiniteCountCache<int, int> cache;
};

TEST(KeelLazyFiniteCountCache, EvictsTheLeastRecentlyUsedEntryLikeAReferenceModel) {
  for (unsigned maxCount : {1u, 2u, 5u}) {
    CacheFixture fixture(maxCount);
    std::list<int> model;  // most recent first
    std::mt19937 random(maxCount);
    for (int step = 0; step < 3000; ++step) {
      const int key = std::uniform_int_distribution<int>(0, 7)(random);
      const auto found = std::find(model.begin(), model.end(), key);
      const bool modelMisses = found == model.end();
      if (!modelMisses) model.erase(found);
      model.push_front(key);
      if (model.size() > maxCount) model.pop_back();
      ASSERT_EQ(fixture.missed(key), modelMisses) << "step " << step << " key " << key;
      ASSERT_EQ(fixture.cache.count(), model.size());
    }
  }
}

TEST(KeelLazyFiniteCountCache, FailuresAreReturnedButNotStored) {
  CacheFixture fixture(4);
  for (int attempt = 1; attempt <= 2; ++attempt) {
    const KeelResult<int> result = fixture.cache.value(-3);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().message(), "negative key");
    EXPECT_EQ(result.error().argument("key"), "-3");
    EXPECT_EQ(fixture.calls.load(), attempt);
  }
  EXPECT_EQ(fixture.cache.count(), 0u);
}

TEST(KeelLazyFiniteCountCache, ThresholdZeroKeepsNothing) {
  CacheFixture fixture(0);
  EXPECT_TRUE(fixture.missed(1));
  EXPECT_TRUE(fixture.missed(1));
  EXPECT_EQ(fixture.cache.count(), 0u);
}

TEST(KeelLazyFiniteCountCache, RemovesByInsertionDateAndRemovesAll) {
  CacheFixture fixture(8);
  fixture.now = 10;
  fixture.missed(1);
  fixture.now = 20;
  fixture.missed(2);
  fixture.now = 30;
  EXPECT_FALSE(fixture.missed(1));  // a hit does not refresh the insertion date
  fixture.cache.removeEntriesInsertedBefore(KeelDate(std::chrono::duration<double>(20)));
  EXPECT_EQ(fixture.cache.count(), 1u);
  EXPECT_FALSE(fixture.missed(2));
  EXPECT_TRUE(fixture.missed(1));

  fixture.cache.removeAll();
  EXPECT_EQ(fixture.cache.count(), 0u);
  EXPECT_TRUE(fixture.missed(2));  // the recency list is usable again after clearing
  EXPECT_TRUE(fixture.missed(3));
  EXPECT_FALSE(fixture.missed(2));
}

TEST(KeelLazyFiniteCountCache, ProducerMayUseTheCacheItself) {
  // Would deadlock if the producer ran under the cache's lock.
  std::function<KeelResult<int>(const int&)> produce;
  KeelLazyFiniteCountCache<int, int> cache(
      keelNow, true, [&](const int& key) { return produce(key); }, KeelFiniteCacheThreshold(16u));
  produce = [&](const int& key) -> KeelResult<int> {
    return key == 0 ? 1 : key * cache.value(key - 1).value();
  };
  EXPECT_EQ(cache.value(6).value(), 720);
  EXPECT_EQ(cache.count(), 7u);
}

TEST(KeelLazyFiniteCountCache, ThreadSafeCacheSurvivesConcurrentUse) {
  CacheFixture fixture(16, true);
  std::vector<std::thread> threads;
  std::atomic<int> wrongValues = 0;
  for (unsigned seed = 0; seed < 4; ++seed) {
    threads.emplace_back([&, seed] {
      std::mt19937 random(seed);
      for (int step = 0; step < 20000; ++step) {
        const int key = std::uniform_int_distribution<int>(0, 40)(random);
        if (fixture.cache.value(key).value() != key * 2) ++wrongValues;
        if (step % 5000 == 0) fixture.cache.removeEntriesInsertedBefore(keelNow());
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(wrongValues, 0);
  EXPECT_LE(fixture.cache.count(), 16u);
}

}  // namespace
