#include "bench/Comparison.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <time.h>

namespace {

// Time of the processor, not of the clock: what else the machine does is left out.
double processorMilliseconds() {
  timespec time = {};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

double millisecondsOf(const std::function<void()>& work) {
  const double start = processorMilliseconds();
  work();
  return processorMilliseconds() - start;
}

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

std::vector<double> mediansOf(const std::vector<Contender>& contenders, int rounds) {
  std::vector<std::vector<double>> times(contenders.size());
  for (int round = -1; round < rounds; ++round) {  // the first one warms up
    for (std::size_t i = 0; i < contenders.size(); ++i) {
      if (contenders[i].prepare) {
        contenders[i].prepare();
      }
      const double time = millisecondsOf(contenders[i].work);
      if (round >= 0) {
        times[i].push_back(time);
      }
    }
  }
  std::vector<double> medians;
  std::transform(times.begin(), times.end(), std::back_inserter(medians), median);
  return medians;
}

}  // namespace

bool compare(const std::string& title, const std::vector<Contender>& contenders,
             const std::vector<Goal>& goals, int rounds) {
  const std::vector<double> medians = mediansOf(contenders, rounds);
  std::printf("\n%s (medians of %d rounds)\n", title.c_str(), rounds);
  for (std::size_t i = 0; i < contenders.size(); ++i) {
    std::printf("  %-62s %9.3f ms\n", contenders[i].name.c_str(), medians[i]);
  }
  bool allMet = true;
  for (const Goal& goal : goals) {
    const double ratio =
        goal.isAtLeast ? medians[goal.yardstick] / medians[0] : medians[0] / medians[goal.yardstick];
    const bool isMet = goal.isAtLeast ? ratio >= goal.limit : ratio <= goal.limit;
    std::printf("  %s / %s = %.2f, wanted at %s %.1f: %s\n",
                contenders[goal.isAtLeast ? goal.yardstick : 0].name.c_str(),
                contenders[goal.isAtLeast ? 0 : goal.yardstick].name.c_str(), ratio,
                goal.isAtLeast ? "least" : "most", goal.limit, isMet ? "met" : "MISSED");
    allMet = allMet && isMet;
  }
  return allMet;
}
