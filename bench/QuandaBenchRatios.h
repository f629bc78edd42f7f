// QuandaBenchRatios: speed goals stated as ratios between two benchmarks of one run.
//
// A time on its own says little on a shared machine; the time of the library's operation beside
// a peer's doing the same work, measured in the same process a moment apart, says whether the
// library is as fast as it means to be. A bench file states each goal next to its benchmarks:
//
//   BENCHMARK(BM_Quanda_DaysSinceDatum);
//   BENCHMARK(BM_Chrono_DaysSinceEpoch);
//   QUANDA_BENCH_RATIO("date -> day count vs libstdc++ chrono", "BM_Quanda_DaysSinceDatum",
//                      "BM_Chrono_DaysSinceEpoch", QuandaBenchGoal::atMost(1.1));
//
// The names are the benchmarks' full names as the console shows them ("BM_Format/8" for an
// argument). After the benchmarks ran, bench/BenchMain.cpp prints one table row per ratio: both
// CPU times in ns, the measured ratio, the goal and PASS or MISS. Ratios whose benchmarks were
// left out by --benchmark_filter are skipped.
#pragma once

#include <string>
#include <string_view>
#include <vector>

class QuandaBenchGoal {
 public:
  // The library's time is at most `factor` times the peer's (quanda / peer <= factor).
  static constexpr QuandaBenchGoal atMost(double factor) { return {Kind::atMost, factor}; }
  // The library is at least `factor` times faster than the peer (peer / quanda >= factor).
  static constexpr QuandaBenchGoal atLeastFaster(double factor) {
    return {Kind::atLeastFaster, factor};
  }

  // The ratio in this goal's own terms: quanda / peer for atMost, peer / quanda for
  // atLeastFaster.
  constexpr double measured(double quandaNanoseconds, double peerNanoseconds) const {
    return kind_ == Kind::atMost ? quandaNanoseconds / peerNanoseconds
                                 : peerNanoseconds / quandaNanoseconds;
  }
  constexpr bool isMet(double quandaNanoseconds, double peerNanoseconds) const {
    const double ratio = measured(quandaNanoseconds, peerNanoseconds);
    return kind_ == Kind::atMost ? ratio <= factor_ : ratio >= factor_;
  }
  // "quanda/peer <= 1.10" or "peer/quanda >= 15.00".
  std::string description() const;

 private:
  enum class Kind { atMost, atLeastFaster };
  constexpr QuandaBenchGoal(Kind kind, double factor) : kind_(kind), factor_(factor) {}

  Kind kind_;
  double factor_;
};

struct QuandaBenchRatio {
  std::string_view name;
  std::string_view quandaBenchmark;
  std::string_view peerBenchmark;
  QuandaBenchGoal goal;
};

// Adds a ratio to the table; always returns true, so that it can initialise a static constant.
bool registerQuandaBenchRatio(const QuandaBenchRatio& ratio);

// Every registered ratio, in registration order.
const std::vector<QuandaBenchRatio>& quandaBenchRatios();

#define QUANDA_BENCH_RATIO_CONCAT_(a, b) a##b
#define QUANDA_BENCH_RATIO_CONCAT(a, b) QUANDA_BENCH_RATIO_CONCAT_(a, b)
#define QUANDA_BENCH_RATIO(name, quandaBenchmark, peerBenchmark, goal)                           \
  [[maybe_unused]] static const bool QUANDA_BENCH_RATIO_CONCAT(quandaBenchRatio_, __COUNTER__) = \
      registerQuandaBenchRatio({name, quandaBenchmark, peerBenchmark, goal})
