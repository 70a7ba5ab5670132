// The four panes as a viewer's user feels them: from a file to the first picture, from slice to slice, with a
// full set on one slice, and when the crosshair moves in all of them. Beside each stands a plain copy of what
// one pane of this size is made of, samples and pixels.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <time.h>
#include <utility>
#include <vector>

#include "bench/Benchmarks.h"
#include "bench/Comparison.h"
#include "bench/SilentOperator.h"
#include "bench/host/BenchHead.h"
#include "host/head/HeadFile.h"
#include "host/panes/ScenePane.h"
#include "host/panes/SlicePane.h"

namespace {

using host::SlicePane;
using host::View;

constexpr int side = 700;  // pixels of a pane

double processorMilliseconds() {
  timespec time = {};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

// All within 3 mm of the axial plane through the origin, half of them below it.
std::unique_ptr<CDipoleFace9File> fullSlice(bool withArrows) {
  auto set = std::make_unique<CDipoleFace9File>();
  std::mt19937 random(17);
  std::uniform_real_distribution<float> place(-90.0F, 90.0F);
  std::uniform_real_distribution<float> depth(-3.0F, 3.0F);
  std::uniform_real_distribution<double> direction(-1.0, 1.0);
  for (int i = 0; i < DipoleTable::capacity; ++i) {
    set->addDipoleF(place(random), depth(random), place(random));
    CDipoleszq& dipole = *set->getDipole(i);
    dipole.setDipoleOrientation(direction(random), direction(random), direction(random));
    dipole.m_showOrientation = withArrows ? 1 : 0;
  }
  return set;
}

// Slightly turned, as a head in a scanner is.
host::Fiducials fiducials() {
  return {{4, 92, -8}, {-74, -6, -3}, {76, 5, 1}};
}

host::Head headOf(const CString& path) {
  host::Head head = host::openHead(path).head;
  if (!head.isRegistered()) {
    registerHead(head, fiducials());
  }
  return head;
}

struct Window {
  Window() {
    for (SlicePane* pane : {&axial, &coronal, &sagittal}) {
      pane->resize(side, side);
    }
    scene.resize(side, side);
  }

  void paint(const host::PaneContents& contents) {
    for (SlicePane* pane : {&axial, &coronal, &sagittal}) {
      keep(pane->paint(contents));
    }
    keep(scene.paint(contents));
  }

  void paint(const host::Head& head) {
    CDipoleFace9File none;
    const host::ViewSettings settings;
    paint({none, head, settings, {}, head.volume->window(), nullptr});
  }

  SlicePane axial{View::axial};
  SlicePane coronal{View::coronal};
  SlicePane sagittal{View::sagittal};
  host::ScenePane scene;
};

double plainCopy() {
  std::vector<float> values(std::size_t{side} * side, 1.0F);
  std::vector<host::Rgb> pixels(values.size());
  std::vector<float> otherValues(values.size());
  std::vector<host::Rgb> otherPixels(values.size());
  const double start = processorMilliseconds();
  constexpr int rounds = 20;
  for (int round = 0; round < rounds; ++round) {
    std::copy(values.begin(), values.end(), otherValues.begin());
    std::copy(pixels.begin(), pixels.end(), otherPixels.begin());
    keep(otherValues);
    keep(otherPixels);
  }
  return (processorMilliseconds() - start) / rounds;
}

bool tell(const char* what, double ms, double copyMs, double most) {
  const bool isMet = ms <= most;
  std::printf("  %-48s %8.2f ms %8.1f copies  wanted at most %6.0f ms: %s\n", what, ms, ms / copyMs, most,
              isMet ? "met" : "MISSED");
  return isMet;
}

double medianOf(int rounds, const std::function<void(int)>& work) {
  std::vector<double> times;
  for (int round = 0; round < rounds; ++round) {
    const double start = processorMilliseconds();
    work(round);
    times.push_back(processorMilliseconds() - start);
  }
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

bool tellMoves(const host::Head& head, double copyMs) {
  constexpr int rounds = 31;
  CDipoleFace9File none;
  host::ViewSettings settings;
  host::PaneContents contents{none, head, settings, {}, head.volume->window(), nullptr};
  bool allMet = true;
  for (const View view : {View::axial, View::coronal, View::sagittal}) {
    SlicePane pane(view);
    pane.resize(side, side);
    const double ms = medianOf(rounds, [&](int round) {
      contents.crosshair[axesOf(view).slab] = round - rounds / 2.0;
      keep(pane.paint(contents));
    });
    allMet &= tell((std::string(nameOf(view)) + ": another slice").c_str(), ms, copyMs, 16.0);
  }
  Window window;
  allMet &= tell("the crosshair moves, four panes",
                 medianOf(rounds,
                          [&](int round) {
                            const double mm = round - rounds / 2.0;
                            contents.crosshair = {mm, -mm, mm * 0.5};
                            window.paint(contents);
                          }),
                 copyMs, 50.0);
  allMet &= tell("another grey window, four panes",
                 medianOf(rounds,
                          [&](int round) {
                            contents.window.high += round;
                            window.paint(contents);
                          }),
                 copyMs, 50.0);
  return allMet;
}

bool tellFullSlice(const host::Head& head, bool withArrows, double copyMs) {
  const auto set = fullSlice(withArrows);
  host::ViewSettings settings;
  SlicePane pane(View::axial);
  pane.resize(side, side);
  const host::PaneContents contents{*set, head, settings, {}, head.volume->window(), nullptr};
  const double ms = medianOf(15, [&](int) { keep(pane.paint(contents)); });
  return tell(withArrows ? "30000 dipoles with arrows on one slice" : "30000 dipoles on one slice", ms,
              copyMs, 30.0);
}

}  // namespace

bool benchPanes() {
  const TemporaryFile file("dipole-bench-head.nii", benchHead(BenchHeadFormat::nifti));
  const double copyMs = plainCopy();
  std::printf("\nFour panes of %d x %d, head of 256 x 256 x 256 (a plain copy of one pane: %.2f ms)\n", side,
              side, copyMs);
  const double start = processorMilliseconds();
  const host::Head head = headOf(file.path());
  const double read = processorMilliseconds();
  Window window;
  window.paint(head);
  const double end = processorMilliseconds();
  bool allMet = tell("first pictures, from the file", end - start, copyMs, 1000.0);
  allMet &= tell("first pictures, from memory", end - read, copyMs, 300.0);
  allMet &= tellMoves(head, copyMs);
  allMet &= tellFullSlice(head, false, copyMs);
  allMet &= tellFullSlice(head, true, copyMs);
  return allMet;
}

// From a file of each format to the first pictures of four panes, beside the same bytes read at once and,
// where they are packed, unpacked by zlib alone.
bool benchHeads() {
  constexpr int rounds = 5;
  std::printf("\nFirst pictures of a head of 256 x 256 x 256, 16 bits (medians of %d)\n", rounds);
  bool allMet = true;
  for (const auto& [name, format] : {std::pair{"nii", BenchHeadFormat::nifti},
                                     {"mri", BenchHeadFormat::ctf},
                                     {"mgh", BenchHeadFormat::mgh}}) {
    const std::string bytes = benchHead(format);
    for (const bool isPacked : {false, true}) {
      const std::string stored = isPacked ? gzipped(bytes) : bytes;
      const std::string ending = std::string(name) + (isPacked ? ".gz" : "");
      const TemporaryFile file(("dipole-bench-head." + ending).c_str(), stored);
      const double plain = medianOf(rounds, [&](int) {
        std::ifstream in(toUtf8(file.path()), std::ios::binary);
        std::string copy(stored.size(), '\0');
        in.read(copy.data(), static_cast<std::streamsize>(copy.size()));
        keep(isPacked ? gunzipped(copy, bytes.size()) : copy);
      });
      const double ms = medianOf(rounds, [&](int) {
        const host::Head head = headOf(file.path());
        Window window;
        window.paint(head);
      });
      allMet &= tell(ending.c_str(), ms, plain, 500.0);
    }
  }
  return allMet;
}
