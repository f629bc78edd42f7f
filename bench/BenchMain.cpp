// main() of quanda_bench: runs the benchmarks with Google Benchmark's usual flags and output,
// then prints the table of ratio goals declared with QUANDA_BENCH_RATIO
// (bench/QuandaBenchRatios.h).
//
// Times are CPU times per iteration, the median over repetitions when --benchmark_repetitions
// asks for several. With --benchmark_format=json the table goes to stderr, so that stdout stays
// pure JSON. The exit status is 1 when a full run (no --benchmark_filter) leaves a ratio without
// its two times: a misspelt benchmark name, or a benchmark that skipped with an error.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/QuandaBenchRatios.h"

namespace {

std::vector<QuandaBenchRatio>& ratioRegistry() {
  static std::vector<QuandaBenchRatio> ratios;
  return ratios;
}

std::string fixed(double value, int decimals) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return text;
}

// The console options Google Benchmark would pick itself; they must be read before
// benchmark::Initialize takes its flags out of argv.
struct DisplayChoice {
  bool json = false;
  bool color = false;
  bool tabular = false;
};

DisplayChoice displayChoice(int argc, char** argv) {
  const auto isTrue = [](std::string_view value) {
    return value == "true" || value == "yes" || value == "1";
  };
  const char* term = std::getenv("TERM");
  DisplayChoice choice;
  choice.color = isatty(STDOUT_FILENO) && term != nullptr && std::strcmp(term, "dumb") != 0;
  for (int index = 1; index < argc; ++index) {
    const std::string_view argument = argv[index];
    const auto valueOf = [&](std::string_view flag) -> std::optional<std::string_view> {
      if (!argument.starts_with(flag) || argument.substr(flag.size(), 1) != "=") return {};
      return argument.substr(flag.size() + 1);
    };
    if (const auto value = valueOf("--benchmark_format")) choice.json = *value == "json";
    if (const auto value = valueOf("--benchmark_color"); value && *value != "auto") {
      choice.color = isTrue(*value);
    }
    if (const auto value = valueOf("--benchmark_counters_tabular")) choice.tabular = isTrue(*value);
  }
  return choice;
}

std::unique_ptr<benchmark::BenchmarkReporter> makeDisplay(const DisplayChoice& choice) {
  if (choice.json) return std::make_unique<benchmark::JSONReporter>();
  int options = benchmark::ConsoleReporter::OO_None;
  if (choice.color) options |= benchmark::ConsoleReporter::OO_Color;
  if (choice.tabular) options |= benchmark::ConsoleReporter::OO_Tabular;
  return std::make_unique<benchmark::ConsoleReporter>(
      static_cast<benchmark::ConsoleReporter::OutputOptions>(options));
}

// Passes everything on to the usual display and keeps each benchmark's times for the table.
class RatioReporter : public benchmark::BenchmarkReporter {
 public:
  explicit RatioReporter(std::unique_ptr<benchmark::BenchmarkReporter> display)
      : display_(std::move(display)) {}

  bool ReportContext(const Context& context) override { return display_->ReportContext(context); }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
      const double toNanoseconds = 1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit);
      times_[run.benchmark_name()].push_back(run.GetAdjustedCPUTime() * toNanoseconds);
    }
    display_->ReportRuns(runs);
  }

  void Finalize() override { display_->Finalize(); }

  bool ranAny() const { return !times_.empty(); }

  std::optional<double> medianNanoseconds(std::string_view name) const {
    const auto found = times_.find(name);
    if (found == times_.end()) return std::nullopt;
    std::vector<double> times = found->second;
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
  }

 private:
  std::unique_ptr<benchmark::BenchmarkReporter> display_;
  std::map<std::string, std::vector<double>, std::less<>> times_;
};

bool ranEverything() {
  const std::string filter = benchmark::GetBenchmarkFilter();
  return filter.empty() || filter == "." || filter == "all";
}

// Prints the table and returns the exit status.
int printRatioTable(const RatioReporter& reporter, std::ostream& out) {
  const std::vector<std::string> header = {"ratio",    "quanda ns", "peer ns",
                                           "measured", "goal",      "result"};
  std::vector<std::vector<std::string>> rows;
  int met = 0;
  int skipped = 0;
  std::vector<std::string> missing;
  for (const QuandaBenchRatio& ratio : quandaBenchRatios()) {
    const auto quanda = reporter.medianNanoseconds(ratio.quandaBenchmark);
    const auto peer = reporter.medianNanoseconds(ratio.peerBenchmark);
    if (!quanda || !peer) {
      ++skipped;
      if (ranEverything()) {
        missing.push_back(std::string(ratio.name) + ": no time for " +
                          std::string(!quanda ? ratio.quandaBenchmark : ratio.peerBenchmark));
      }
      continue;
    }
    const bool isMet = ratio.goal.isMet(*quanda, *peer);
    met += isMet ? 1 : 0;
    rows.push_back({std::string(ratio.name), fixed(*quanda, 2), fixed(*peer, 2),
                    fixed(ratio.goal.measured(*quanda, *peer), 2), ratio.goal.description(),
                    isMet ? "PASS" : "MISS"});
  }

  std::vector<std::size_t> widths(header.size());
  for (std::size_t column = 0; column < header.size(); ++column) {
    widths[column] = header[column].size();
    for (const auto& row : rows) widths[column] = std::max(widths[column], row[column].size());
  }
  const auto printRow = [&](const std::vector<std::string>& row) {
    for (std::size_t column = 0; column < row.size(); ++column) {
      const std::string padding(widths[column] - row[column].size(), ' ');
      // The name and the goal read left-aligned, the numbers right-aligned.
      const bool left = column == 0 || column >= 4;
      const bool last = column + 1 == row.size();
      out << (column == 0 ? "" : "  ")
          << (left ? row[column] + (last ? "" : padding) : padding + row[column]);
    }
    out << '\n';
  };
  out << '\n';
  if (!rows.empty()) {
    printRow(header);
    for (const auto& row : rows) printRow(row);
  }
  out << met << " of " << rows.size() << " ratio goals met";
  if (skipped > 0) out << ", " << skipped << " skipped";
  out << '\n';
  for (const std::string& problem : missing) std::cerr << "quanda_bench: " << problem << '\n';
  return missing.empty() ? 0 : 1;
}

}  // namespace

std::string QuandaBenchGoal::description() const {
  return kind_ == Kind::atMost ? "quanda/peer <= " + fixed(factor_, 2)
                               : "peer/quanda >= " + fixed(factor_, 2);
}

bool registerQuandaBenchRatio(const QuandaBenchRatio& ratio) {
  ratioRegistry().push_back(ratio);
  return true;
}

const std::vector<QuandaBenchRatio>& quandaBenchRatios() { return ratioRegistry(); }

int main(int argc, char** argv) {
  const DisplayChoice choice = displayChoice(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  RatioReporter reporter(makeDisplay(choice));
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  // Nothing to judge after --benchmark_list_tests, a filter that matched nothing, or no goals.
  if (!reporter.ranAny() || quandaBenchRatios().empty()) return 0;
  return printRatioTable(reporter, choice.json ? std::cerr : std::cout);
}
