// Ratios: measures a piece of work beside a peer's and prints how they compare.
//
//   int main(int argc, char** argv) {
//     bench::Ratios ratios(argc, argv);
//     ratios.compare("find", "std::unordered_map", 1.0,
//                    [&] { benchmark::DoNotOptimize(table.find(name)); },
//                    [&] { benchmark::DoNotOptimize(map.find(text)); });
//   }
//
// prints "find: 8.1 ns, std::unordered_map 9.9 ns, ratio 0.82 (bar 1.00)". The two run in turn,
// hundreds of short rounds (fewer where one operation is long), and the medians are shown, so that
// a busy machine harms neither more than the other. Understands --benchmark_filter=REGEX. One
// thread; the work may start others.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

namespace bench {

class Ratios {
 public:
  Ratios(int argc, char** argv) {
    constexpr std::string_view option = "--benchmark_filter=";
    for (int i = 1; i < argc; ++i) {
      const std::string_view argument = argv[i];
      if (argument.starts_with(option)) filter_ = std::string(argument.substr(option.size()));
    }
  }

  // Whether a comparison of this name would run; its data may be dear to make.
  bool wants(const std::string& name) const { return std::regex_search(name, std::regex(filter_)); }

  // Runs `ours` against `peer`, each one operation, as often as it takes. `bar` is the ratio that
  // must not be passed; 0 where there is none.
  template <class Ours, class Peer>
  void compare(const std::string& name, const std::string& peerName, double bar, const Ours& ours,
               const Peer& peer) {
    compareSessions(
        name, peerName, bar, [&]() -> const Ours& { return ours; },
        [&]() -> const Peer& { return peer; });
  }

  // The same for work that needs something around it, a second thread, say: `ours` and `peer` make
  // an object that lives for one round, and each call of that object is one operation.
  template <class Ours, class Peer>
  void compareSessions(const std::string& name, const std::string& peerName, double bar,
                       const Ours& ours, const Peer& peer) {
    if (!wants(name)) return;
    const int64_t ourCount = operationsPerRound(ours);
    const int64_t peerCount = operationsPerRound(peer);
    std::vector<double> ourTimes;
    std::vector<double> peerTimes;
    std::vector<double> quotients;
    double taken = 0;
    for (int round = 0; round < leastRounds || (round < rounds && taken < mostNanoseconds);
         ++round) {
      ourTimes.push_back(nanoseconds(ours, ourCount));
      peerTimes.push_back(nanoseconds(peer, peerCount));
      quotients.push_back(ourTimes.back() / peerTimes.back());
      taken += ourTimes.back() * static_cast<double>(ourCount) +
               peerTimes.back() * static_cast<double>(peerCount);
    }
    const double ratio = median(quotients);
    std::printf("%s: %.4g ns, %s %.4g ns, ratio %.2f", name.c_str(), median(ourTimes),
                peerName.c_str(), median(peerTimes), ratio);
    if (bar > 0) std::printf(" (bar %.2f%s)", bar, ratio > bar ? ": above" : "");
    std::printf("\n");
    std::fflush(stdout);
  }

 private:
  using Clock = std::chrono::steady_clock;
  // Short and many: most rounds pass without another process in between.
  static constexpr int rounds = 501;
  static constexpr double roundNanoseconds = 2e5;
  // Operations that are long by themselves run fewer times.
  static constexpr int leastRounds = 15;
  static constexpr double mostNanoseconds = 2e10;

  template <class Session>
  static double nanoseconds(const Session& session, int64_t count) {
    auto&& work = session();
    const Clock::time_point start = Clock::now();
    for (int64_t i = 0; i < count; ++i) work();
    const std::chrono::duration<double, std::nano> taken = Clock::now() - start;
    return taken.count() / static_cast<double>(count);
  }

  // Doubled until a round is long enough; this warms everything up as well. The fastest try counts:
  // one that another process stretches would make all rounds short, and what is measured of a short
  // round is its beginning.
  template <class Session>
  static int64_t operationsPerRound(const Session& session) {
    for (int64_t count = 1;; count *= 2) {
      double each = nanoseconds(session, count);
      for (int again = 0; again < 4; ++again) each = std::min(each, nanoseconds(session, count));
      if (each * static_cast<double>(count) < roundNanoseconds / 4) continue;
      return std::max<int64_t>(1, static_cast<int64_t>(roundNanoseconds / each));
    }
  }

  static double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
  }

  std::string filter_;
};

}  // namespace bench
