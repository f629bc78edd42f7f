// A warm conversion allocates nothing: the zone and calendar caches are looked up by the
// identifier's view, never by a key string built per call, and a success carries no error chain.
// The test binary's operator new counts the allocations of the calling thread.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <new>

#include "Quanda/FoundationAdapting/AdapterTestSupport.h"

namespace {
thread_local std::size_t allocationsOfThisThread = 0;
}  // namespace

void* operator new(std::size_t size) {
  ++allocationsOfThisThread;
  if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return ::operator new(size); }
// Every form that a replaced delete frees is replaced too, so that a sanitizer sees one pair.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  ++allocationsOfThisThread;
  return std::malloc(size == 0 ? 1 : size);
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
  return ::operator new(size, tag);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

// The allocations made by one call of body.
template <class Body>
std::size_t allocationsOf(Body&& body) {
  const std::size_t before = allocationsOfThisThread;
  body();
  return allocationsOfThisThread - before;
}

TEST(QuandaAdapterAllocation, WarmConversionsAllocateNothing) {
  TestAdapter test("en_US", "America/New_York");
  QuandaFoundationCalendarAdapter& adapter = test.adapter;
  const NaturalDateTimeComponents wallTime = dateTime(2024, 3, 10, 2, 30);
  const auto roundTrip = [&](std::string_view zone) {
    const KeelResult<KeelDate> instant = adapter.makeGregorianFoundationDate(wallTime, zone);
    ASSERT_TRUE(instant.hasValue());
    EXPECT_TRUE(adapter.makeTimezoneDiscreteDateTimeComponents(instant.value(), zone).hasValue());
  };
  const auto local = [&] {
    const KeelResult<KeelDate> instant = adapter.makeLocalGregorianFoundationDate(wallTime);
    ASSERT_TRUE(instant.hasValue());
    EXPECT_TRUE(adapter.makeLocalTimezoneDiscreteDateTimeComponents(instant.value()).hasValue());
  };
  const auto utc = [&] {
    const KeelResult<KeelDate> instant = adapter.makeUtcGregorianFoundationDate(wallTime);
    ASSERT_TRUE(instant.hasValue());
    EXPECT_TRUE(adapter.makeUtcTimezoneDiscreteDateTimeComponents(instant.value()).hasValue());
  };

  // The first calls load the zones and fill the caches.
  roundTrip("Europe/Berlin");
  roundTrip("Asia/Kathmandu");
  local();
  utc();

  EXPECT_EQ(allocationsOf([&] { roundTrip("Europe/Berlin"); }), 0u);
  // Alternating zones misses the one-entry memo and goes to the cache itself.
  EXPECT_EQ(allocationsOf([&] {
              roundTrip("Asia/Kathmandu");
              roundTrip("Europe/Berlin");
            }),
            0u);
  EXPECT_EQ(allocationsOf(local), 0u);
  EXPECT_EQ(allocationsOf(utc), 0u);
}

}  // namespace
