#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tavio::bench {

// A line of the table: what is done, beside what, and the ratio that is aimed at; 0 if none is.
struct Work {
  const char* name;
  const char* beside;
  double goal = 0;
};

// One side of a comparison whose work needs something new each time: `prepare` makes it, untimed.
template <class Prepare, class Run>
struct Prepared {
  Prepare prepare;
  Run run;

  decltype(auto) operator()() {
    prepare();
    return run();
  }
};

// Compares pieces of work in turns, so that whatever else the machine does meets both sides, and prints a line for each.
class Bench {
 public:
  // Only checks results, with a hundredth of the sizes, and prints nothing but what failed; or times the lines whose
  // work's name holds `part`.
  Bench(bool checksOnly, std::string part) noexcept : checksOnly_(checksOnly), part_(std::move(part)) {}

  bool ChecksOnly() const noexcept { return checksOnly_; }
  // A size of some work, as it is in this run.
  std::int32_t Size(std::int32_t full) const noexcept { return checksOnly_ ? (full + 99) / 100 : full; }
  void Heading(const char* text) const;
  bool IsAsked(const Work& work) const { return std::string(work.name).find(part_) != std::string::npos; }

  // Throws std::runtime_error if the results of both sides differ.
  static void Require(bool same, const Work& work);
  // Requires that the results are the same, and times both sides.
  template <class Ours, class Plain>
  void Compare(const Work& work, Ours&& ours, Plain&& plain) {
    if (!IsAsked(work)) return;
    const auto wanted = plain();
    Require(ours() == wanted, work);
    Time(work, ours, plain);
  }
  // Times two sides whose results were compared before, or are not the same: ten times the work, and once the work.
  template <class Ours, class Plain>
  void Time(const Work& work, Ours&& ours, Plain&& plain) {
    if (!checksOnly_ && IsAsked(work)) Measure(work, AsSide(ours), AsSide(plain));
  }
  // Times the same work on packages of three makers, in turns; their results were compared before.
  template <class Ours, class Published, class ByName>
  void Row(const char* name, Ours&& ours, Published&& published, ByName&& byName) {
    if (!checksOnly_ && IsAsked({name, ""})) MeasureRow(name, {AsSide(ours), AsSide(published), AsSide(byName)});
  }
  // Times one side, whose results were checked before, against the time that it may take.
  template <class Ours>
  void Limit(const char* name, double seconds, Ours&& ours) {
    if (!checksOnly_ && IsAsked({name, ""})) MeasureLimit(name, seconds, AsSide(ours));
  }

 private:
  struct Side {
    std::function<void()> prepare;  // none if nothing is to be made
    std::function<void()> run;
  };

  template <class Call>
  static Side AsSide(Call& call) {
    if constexpr (requires { call.prepare(); }) {
      return {std::ref(call.prepare), [&call] { Use(call.run()); }};
    } else {
      return {nullptr, [&call] { Use(call()); }};
    }
  }
  // Keeps a result from being left out.
  template <class Result>
  static void Use(const Result& result) noexcept {
    UseAt(&result);
  }
  static void UseAt(const void* result) noexcept;
  static double SecondsPerCall(const Side& side, double atLeast);
  static void Measure(const Work& work, const Side& ours, const Side& plain);
  static void MeasureRow(const char* name, const std::vector<Side>& sides);
  static void MeasureLimit(const char* name, double seconds, const Side& ours);

  bool checksOnly_;
  std::string part_;
};

template <class Prepare, class Run>
Prepared<Prepare, Run> OnNew(Prepare prepare, Run run) {
  return {std::move(prepare), std::move(run)};
}

// A program of measurements, for its arguments: measures everything, or the lines whose work's name holds the first, or
// checks for "--check". Answers its exit code, and says what failed.
int RunBench(const char* program, int count, char** arguments, const std::function<void(Bench&)>& measure);

// The measured parts, a file each.
void MeasureSending(Bench& bench);  // first: logging is off for good once the log has said so
void MeasureTranslation(Bench& bench);
void MeasureVariables(Bench& bench);
void MeasurePackages(Bench& bench);
void MeasureEditing(Bench& bench);
void MeasureCatalogues(Bench& bench);
void MeasureDispatch(Bench& bench);

}  // namespace tavio::bench
