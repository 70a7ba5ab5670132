// Undo and redo on a full set: time and memory of the steps, beside a plain copy of all dipoles. Every member
// that a fit gives is random to the last bit, which packs worst.
#include <algorithm>
#include <cstdio>
#include <functional>
#include <malloc.h>
#include <memory>
#include <random>
#include <string>
#include <time.h>
#include <vector>

#include "bench/Benchmarks.h"
#include "bench/Comparison.h"
#include "collection/SelectedDipoles.h"
#include "host/undo/UndoHistory.h"

namespace {

using host::UndoHistory;

using host::DipoleSet;

constexpr double mebibyte = 1024.0 * 1024.0;
constexpr double longestPause = 50.0;  // ms
constexpr double mostMemory = 256.0;   // MiB

double heapMebibytes() {
  const struct mallinfo2 heap = mallinfo2();
  return static_cast<double>(heap.uordblks + heap.hblkhd) / mebibyte;
}

double millisecondsOf(const std::function<void()>& work) {
  const auto now = [] {
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
  };
  const double start = now();
  work();
  return now() - start;
}

class FullSet {
 public:
  FullSet() : m_set(std::make_unique<DipoleSet>()) { fill(); }

  DipoleSet& set() { return *m_set; }

  void fill() {
    while (m_set->m_totalDipoles < DipoleTable::capacity) {
      addOne();
    }
  }

  void moveAll() {
    for (const int slot : all()) {
      setRandom(m_set->m_dipoles[slot]->m_location, 80.0);
      setRandom(m_set->m_dipoles[slot]->m_orientation, 1.0);
    }
  }

  // Every so many a dipole, and no other one.
  void select(int step) {
    for (const int slot : all()) {
      m_set->setDipoleSelection(slot, slot % step == 0);
    }
  }

  DipoleSlots all(int step = 1) const {
    DipoleSlots slots;
    for (int slot = 0; slot < m_set->m_totalDipoles; slot += step) {
      slots.push_back(slot);
    }
    return slots;
  }

  int number() { return static_cast<int>(m_random() % 1'000'000); }

 private:
  void addOne() {
    m_set->addDipole();
    CDipoleszq& dipole = *m_set->getCurrentDipole();
    setRandom(dipole.m_location, 80.0);
    setRandom(dipole.m_orientation, 1.0);
    dipole.m_number = m_set->m_totalDipoles;
    dipole.m_id = number();
    dipole.m_latency = random(300.0);
    dipole.m_moment = random(100.0);
    dipole.m_fitError = random(30.0);
    dipole.m_label.Format(_T("left temporal spike %d"), number());
    dipole.backUpLocationRotationRaw();
  }

  double random(double range) { return std::uniform_real_distribution<double>(-range, range)(m_random); }
  void setRandom(double (&values)[3], double range) {
    std::generate(std::begin(values), std::end(values), [&] { return random(range); });
  }

  std::mt19937_64 m_random{1};
  std::unique_ptr<DipoleSet> m_set;
};

struct Command {
  const char* name;
  std::function<void(FullSet&)> prepare;  // its own step, not measured; may be empty
  std::function<void(FullSet&)> run;
};

struct Times {
  double record = 0.0;
  double undo = 0.0;
  double redo = 0.0;
};

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

double copyTime(FullSet& full) {
  std::vector<double> times;
  for (int round = 0; round < 7; ++round) {
    times.push_back(millisecondsOf([&] {
      std::vector<CDipoleszq> copy;
      copy.reserve(DipoleTable::capacity);
      for (const int slot : full.all()) {
        copy.push_back(*full.set().m_dipoles[slot]);
      }
      keep(copy);
    }));
  }
  return median(times);
}

double copyMemory(FullSet& full) {
  const double before = heapMebibytes();
  std::vector<CDipoleszq> copy;
  copy.reserve(DipoleTable::capacity);
  for (const int slot : full.all()) {
    copy.push_back(*full.set().m_dipoles[slot]);
  }
  return heapMebibytes() - before;
}

bool measure(const Command& command, double copyMs, double copyMib) {
  constexpr int rounds = 5;
  std::vector<double> record;
  std::vector<double> undo;
  std::vector<double> redo;
  double stepMib = 0.0;
  FullSet full;
  UndoHistory history(full.set());
  for (int round = 0; round < rounds; ++round) {
    if (command.prepare) {
      command.prepare(full);
      history.record(_T("Prepare"));
    }
    const auto before = static_cast<double>(history.bytes());
    command.run(full);
    record.push_back(millisecondsOf([&] { history.record(_T("Step")); }));
    stepMib = (std::max)(stepMib, (static_cast<double>(history.bytes()) - before) / mebibyte);
    undo.push_back(millisecondsOf([&] { history.undo(); }));
    stepMib = (std::max)(stepMib, (static_cast<double>(history.bytes()) - before) / mebibyte);
    redo.push_back(millisecondsOf([&] { history.redo(); }));
  }
  const Times times{median(record), median(undo), median(redo)};
  const bool isMet = (std::max)({times.record, times.undo, times.redo}) < longestPause;
  std::printf("  %-26s %6.1f %6.1f %6.1f ms  %5.2f %5.2f %5.2f  %8.3f MiB %6.3f  %s\n", command.name,
              times.record, times.undo, times.redo, times.record / copyMs, times.undo / copyMs,
              times.redo / copyMs, stepMib, stepMib / copyMib, isMet ? "met" : "MISSED");
  return isMet;
}

double countedMebibytes(const UndoHistory& history) {
  return static_cast<double>(history.bytes()) / mebibyte;
}

// The longest way: between two undos the user has selected something, so that also the step back to there
// must be worked out anew.
bool measureSelectionBetween(double copyMs) {
  FullSet full;
  UndoHistory history(full.set());
  std::vector<double> times;
  for (int round = 0; round < 5; ++round) {
    for (int step = 0; step < 2; ++step) {
      full.moveAll();
      history.record(_T("Move"));
    }
    history.undo();
    full.select(2 + round);
    times.push_back(millisecondsOf([&] { history.undo(); }));
  }
  const double time = median(times);
  const bool isMet = time < longestPause;
  std::printf("  %-26s        %6.1f        ms         %5.2f%33s\n", "undo behind a selection", time,
              time / copyMs, isMet ? "met" : "MISSED");
  return isMet;
}

// A hundred steps of one kind: what the heap holds for them. Then all of them undone: what the history counts
// for itself, since the heap of the set changes with each. No step may be dropped.
bool measureHundred(const Command& command) {
  FullSet full;
  double start = heapMebibytes();
  UndoHistory history(full.set());
  double heap = heapMebibytes() - start;
  double most = heap;
  for (int step = 0; step < 100; ++step) {
    if (command.prepare && step % 2 == 0) {
      command.prepare(full);
    } else {
      command.run(full);
    }
    start = heapMebibytes();
    history.record(_T("Step"));
    heap += heapMebibytes() - start;
    most = (std::max)(most, heap);
  }
  const std::size_t steps = history.undoSteps();
  const double counted = countedMebibytes(history);
  double mostCounted = counted;
  while (history.undo() == UndoHistory::Moved::done) {
    mostCounted = (std::max)(mostCounted, countedMebibytes(history));
  }
  const bool isMet = (std::max)(most, mostCounted) <= mostMemory && history.droppedSteps() == 0;
  std::printf("  %-26s %7.1f MiB on the heap, at most %6.1f; counted %7.1f, at most %6.1f; %zu steps: %s\n",
              command.name, heap, most, counted, mostCounted, steps, isMet ? "met" : "MISSED");
  return isMet;
}

std::vector<Command> commands() {
  const auto everyOther = [](FullSet& full) { deleteDipoles(full.set(), full.all(2)); };
  const auto refill = [](FullSet& full) { full.fill(); };
  return {
      {"hide all, show all", {}, [](FullSet& f) { f.set().setShowAllDipole(f.number() % 1000); }},
      {"colour all",
       {},
       [](FullSet& f) { colorDipoles(f.set(), f.all(), static_cast<COLORREF>(f.number())); }},
      {"name all",
       {},
       [](FullSet& f) {
         CString name;
         name.Format(_T("right temporal spike %d"), f.number());
         nameDipoles(f.set(), f.all(), name);
       }},
      {"name each differently",
       {},
       [](FullSet& f) {
         for (const int slot : f.all()) {
           f.set().m_dipoles[slot]->m_label.Format(_T("right temporal spike %d"), f.number());
         }
       }},
      {"delete half", refill, everyOther},
      {"add half", everyOther, refill},
      {"delete one", {}, [](FullSet& f) { f.set().deleteDipole(f.number() % f.set().m_totalDipoles, 1); }},
      {"add an average", [](FullSet& f) { f.set().deleteDipole(0, 1); },
       [](FullSet& f) { addAverage(f.set(), f.all(3)); }},
      {"sort", {}, [](FullSet& f) { f.set().sortDipoles(1 + f.number() % 9); }},
      {"move and turn all", {}, [](FullSet& f) { f.moveAll(); }},
      {"clear", refill, [](FullSet& f) { f.set().cleanDipoles(); }},
      {"import of 30000", [](FullSet& f) { f.set().cleanDipoles(); }, refill},
  };
}

}  // namespace

bool benchHistory() {
  FullSet full;
  const double copyMs = copyTime(full);
  const double copyMib = copyMemory(full);
  std::printf("\nUndo and redo of %d dipoles; a plain copy takes %.1f ms and %.1f MiB\n",
              DipoleTable::capacity, copyMs, copyMib);
  std::printf("  %-26s record   undo   redo     ratios to the copy    most a step\n", "");
  bool allMet = true;
  for (const Command& command : commands()) {
    allMet &= measure(command, copyMs, copyMib);
  }
  allMet &= measureSelectionBetween(copyMs);
  std::printf("\nA hundred such steps, at most %.0f MiB wanted\n", mostMemory);
  for (const Command& command : commands()) {
    allMet &= measureHundred(command);
  }
  return allMet;
}
