#include "bench/Bench.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <limits>

namespace tavio::bench {
namespace {

using Clock = std::chrono::steady_clock;

double Elapsed(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

}  // namespace

double Seconds(const std::function<void()>& call) {
  constexpr int kRounds = 7;
  constexpr double kRoundSeconds = 0.03;
  double best = std::numeric_limits<double>::max();
  for (int round = 0; round < kRounds; ++round) {
    const auto start = Clock::now();
    int calls = 0;
    do {
      call();
      ++calls;
    } while (Elapsed(start) < kRoundSeconds);
    best = std::min(best, Elapsed(start) / calls);
  }
  return best;
}

double SecondsOnce(const std::function<void()>& call) {
  const auto start = Clock::now();
  call();
  return Elapsed(start);
}

void PrintRatio(const std::string& name, double seconds, double baseline, double limit) {
  std::printf("%-66s %7.2fx", name.c_str(), seconds / baseline);
  if (limit > 0) std::printf("  (at most %gx)", limit);
  std::printf("  %.3f ms / %.3f ms\n", seconds * 1e3, baseline * 1e3);
  std::fflush(stdout);
}

Dictionary Actions(std::int32_t count) {
  const auto actions = Dictionary::New();
  for (std::int32_t i = 1; i <= count; ++i) {
    const auto code = L"Action" + std::to_wstring(i);
    const auto action = Dictionary::New();
    action.Set(L"FID"_key, Value(i));
    action.Set(L"FCode"_key, Value(TextView(code)));
    action.Set(L"FStatus"_key, Value(std::int32_t{0}));
    action.Set(L"FEnvironment"_key, Value(std::int32_t{1}));
    actions.Set(Key(TextView(code)), action);
  }
  return actions;
}

}  // namespace tavio::bench
