#include "bench/Bench.h"

#include <windows.h>
#include <objbase.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <vector>

#include "foundation/values/Error.h"
#include "tests/support/Packages.h"

namespace tavio::bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr double kRoundSeconds = 0.004;
constexpr double kLineSeconds = 6;
constexpr std::size_t kFewestRounds = 5;
constexpr std::size_t kMostRounds = 51;

double Elapsed(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

double Quantile(std::vector<double> values, double share) {
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1) + 0.5)];
}

std::string Readable(double seconds) {
  char text[32];
  const char* const units[] = {"s ", "ms", "us", "ns"};
  std::size_t unit = 0;
  for (; unit < 3 && seconds < 1; ++unit) seconds *= 1000;
  std::snprintf(text, sizeof text, "%.3g %s", seconds, units[unit]);
  return text;
}

}  // namespace

void Bench::Heading(const char* text) const {
  if (checksOnly_) return;
  std::printf("\n%-106s %9s %9s %6s %13s %6s %5s\n", text, "ours", "beside", "ratio", "middle half", "best", "goal");
}

void Bench::UseAt(const void* result) noexcept {
  static std::atomic<const void*> used;
  used.store(result, std::memory_order_relaxed);
}

void Bench::Require(bool same, const Work& work) {
  if (!same) throw std::runtime_error(std::string(work.name) + ": the results differ from " + work.beside);
}

double Bench::SecondsPerCall(const Side& side, double atLeast) {
  double seconds = 0;
  int calls = 0;
  do {
    if (side.prepare) side.prepare();
    const auto start = Clock::now();
    // Without preparation a few calls share two looks at the clock.
    const int together = side.prepare || calls == 0 ? 1 : calls;
    for (int i = 0; i < together; ++i) side.run();
    seconds += Elapsed(start);
    calls += together;
  } while (seconds < atLeast);
  return seconds / calls;
}

void Bench::Measure(const Work& work, const Side& ours, const Side& plain) {
  std::vector<double> ourTimes, plainTimes, ratios;
  const auto start = Clock::now();
  while (ratios.size() < kMostRounds && (ratios.size() < kFewestRounds || Elapsed(start) < kLineSeconds)) {
    ourTimes.push_back(SecondsPerCall(ours, kRoundSeconds));
    plainTimes.push_back(SecondsPerCall(plain, kRoundSeconds));
    ratios.push_back(ourTimes.back() / plainTimes.back());
  }
  const double ratio = Quantile(ratios, 0.5);
  char goal[16] = "";
  if (work.goal > 0) std::snprintf(goal, sizeof goal, "%g%s", work.goal, ratio > work.goal ? " missed" : "");
  std::printf("%-52s / %-51s %9s %9s %6.2f %6.2f-%-6.2f %6.2f %5s\n", work.name, work.beside,
              Readable(Quantile(ourTimes, 0.5)).c_str(), Readable(Quantile(plainTimes, 0.5)).c_str(), ratio,
              Quantile(ratios, 0.25), Quantile(ratios, 0.75), Quantile(ourTimes, 0) / Quantile(plainTimes, 0), goal);
  std::fflush(stdout);
}

void Bench::MeasureRow(const char* name, const std::vector<Side>& sides) {
  std::vector<std::vector<double>> times(sides.size());
  for (std::size_t round = 0; round < kFewestRounds; ++round) {
    for (std::size_t i = 0; i < sides.size(); ++i) times[i].push_back(SecondsPerCall(sides[i], kRoundSeconds));
  }
  std::printf("%-52s", name);
  for (const auto& column : times) std::printf(" %12s", Readable(Quantile(column, 0.5)).c_str());
  std::puts("");
  std::fflush(stdout);
}

void Bench::MeasureLimit(const char* name, double seconds, const Side& ours) {
  std::vector<double> times;
  while (times.size() < kFewestRounds) times.push_back(SecondsPerCall(ours, kRoundSeconds));
  const double time = Quantile(times, 0.5);
  std::printf("%-52s   %-51s %9s %9s %6.2f %6.2f-%-6.2f %6.2f %5s\n", name, "at most", Readable(time).c_str(),
              Readable(seconds).c_str(), time / seconds, Quantile(times, 0.25) / seconds,
              Quantile(times, 0.75) / seconds, Quantile(times, 0) / seconds, time > seconds ? "1 missed" : "1");
  std::fflush(stdout);
}

int RunBench(const char* program, int count, char** arguments, const std::function<void(Bench&)>& measure) try {
  Check(CoInitialize(nullptr));
  const std::string asked = count > 1 ? arguments[1] : "";
  const bool checksOnly = asked == "--check";
  Bench bench(checksOnly, checksOnly ? "" : asked);
  measure(bench);
  std::puts("finished");
  return 0;
} catch (const Error& error) {
  std::fprintf(stderr, "%s: %s\n", program, test::Utf8(error.Description()).c_str());
  return 1;
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s: %s\n", program, error.what());
  return 1;
}

}  // namespace tavio::bench
