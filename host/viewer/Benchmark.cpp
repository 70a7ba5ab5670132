#include "host/viewer/Benchmark.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "host/text/PathText.h"
#include "host/text/SafeFile.h"
#include "host/viewer/MainFrame.h"

namespace host {

namespace {

constexpr int side = 256;  // voxels
constexpr int half = side / 2;
constexpr int rounds = 60;
constexpr int manyDipoles = 30000;

double millisecondsOf(const std::function<void()>& work) {
  LARGE_INTEGER frequency;
  LARGE_INTEGER before;
  LARGE_INTEGER after;
  ::QueryPerformanceFrequency(&frequency);
  ::QueryPerformanceCounter(&before);
  work();
  ::QueryPerformanceCounter(&after);
  return 1000.0 * static_cast<double>(after.QuadPart - before.QuadPart) /
         static_cast<double>(frequency.QuadPart);
}

// That this thread has had so far, ms.
double processorMilliseconds() {
  FILETIME unused = {};
  FILETIME kernel = {};
  FILETIME user = {};
  ::GetThreadTimes(::GetCurrentThread(), &unused, &unused, &kernel, &user);
  const auto ticks = [](const FILETIME& time) {
    return static_cast<double>(ULARGE_INTEGER{{time.dwLowDateTime, time.dwHighDateTime}}.QuadPart);
  };
  return (ticks(kernel) + ticks(user)) * 1e-4;
}

class Report {
 public:
  void add(const char* what, int times, const std::function<void()>& work) {
    std::vector<double> spent;
    spent.reserve(static_cast<std::size_t>(times));
    const double before = processorMilliseconds();
    for (int i = 0; i < times; ++i) {
      spent.push_back(millisecondsOf(work));
    }
    const double processor = (processorMilliseconds() - before) / times;
    std::sort(spent.begin(), spent.end());
    std::array<char, 200> line{};
    static_cast<void>(std::snprintf(line.data(), line.size(),
                                    "%s: median %.1f ms, longest %.1f ms, of the processor %.1f ms\r\n", what,
                                    spent[spent.size() / 2], spent.back(), processor));
    m_text += line.data();
  }
  const std::string& text() const { return m_text; }

 private:
  std::string m_text;
};

// A ball of grey in a volume of 1 mm, as a NIfTI-1 file of 16-bit voxels.
void writeHead(const std::filesystem::path& path) {
  std::array<char, 352> header{};
  const auto put = [&](std::size_t at, auto value) { std::memcpy(header.data() + at, &value, sizeof value); };
  put(0, std::int32_t{348});
  const std::array<std::int16_t, 8> dimensions{3, side, side, side, 1, 1, 1, 1};
  put(40, dimensions);
  put(70, std::int16_t{4});  // signed 16 bits
  put(72, std::int16_t{16});
  const std::array<float, 8> spacing{1, 1, 1, 1, 1, 1, 1, 1};
  put(76, spacing);
  put(108, 352.0F);  // where the voxels begin
  put(112, 1.0F);
  put(254, std::int16_t{1});  // the rows below give the scanner's frame
  const std::array<std::array<float, 4>, 3> rows{{{1, 0, 0, -half}, {0, 1, 0, -half}, {0, 0, 1, -half}}};
  put(280, rows);
  std::memcpy(header.data() + 344, "n+1", 4);
  std::vector<std::int16_t> voxels;
  voxels.reserve(std::size_t{side} * side * side);
  for (int k = 0; k < side; ++k) {
    for (int j = 0; j < side; ++j) {
      for (int i = 0; i < side; ++i) {
        const double distance = std::hypot(i - half, j - half, k - half);
        voxels.push_back(distance < 95.0 ? static_cast<std::int16_t>(600 + (i * 7 + j * 5 + k * 3) % 200)
                                         : 0);
      }
    }
  }
  std::ofstream file(path, std::ios::binary);
  file.write(header.data(), header.size());
  file.write(reinterpret_cast<const char*>(voxels.data()),
             static_cast<std::streamsize>(voxels.size() * sizeof(std::int16_t)));
}

void fillSet(CDipoleFacezq& set) {
  std::mt19937 chance(20050629);
  std::uniform_real_distribution<float> place(-65.0F, 65.0F);
  set.cleanDipoles();
  while (set.m_totalDipoles < manyDipoles &&
         set.addDipoleF(place(chance), place(chance) + 40.0F, place(chance)) != 0) {
    set.getCurrentDipole()->setDipoleOrientation(place(chance), place(chance), place(chance));
  }
}

void draw(MainFrame& frame) {
  for (int pane = 0; pane < MainFrame::paneCount; ++pane) {
    frame.pane(pane).UpdateWindow();
  }
}

}  // namespace

void writeBenchmark(MainFrame& frame, const CString& path, const std::vector<CString>& heads) {
  Report report;
  const std::filesystem::path head = std::filesystem::temp_directory_path() / "dipole-viewer-benchmark.nii";
  writeHead(head);
  report.add("first picture of a head of 256 x 256 x 256 (wanted: 1000)", 5, [&] {
    frame.openMri(textOf(head));
    draw(frame);
  });
  std::filesystem::remove(head);
  for (const CString& given : heads) {
    const std::string what = "first picture of " + utf8Of(given) + " (wanted: 1000)";
    report.add(what.c_str(), 5, [&] {
      frame.openMri(given);
      draw(frame);
    });
  }
  frame.session().usePhantom();

  // As the user's wheel does, with all that hangs on it.
  const auto turnWheel = [&] {
    CRect place;
    frame.pane(0).GetWindowRect(&place);
    frame.pane(0).SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA),
                              MAKELPARAM(place.left + 5, place.top + 5));
  };
  const auto turnSlice = [&] {
    turnWheel();
    frame.pane(0).UpdateWindow();
  };
  const auto turnAll = [&] {
    turnWheel();
    draw(frame);
  };
  const auto goBack = [&] {
    frame.session().setCrosshair({});
    draw(frame);
  };
  goBack();
  report.add("change of slice, until it is drawn (wanted: 16)", rounds, turnSlice);
  goBack();
  report.add("change of slice, until all panes are drawn", rounds, turnAll);

  fillSet(frame.dipoles());
  frame.session().noteChange();
  goBack();
  report.add("change of slice, 30000 dipoles, until it is drawn", rounds, turnSlice);
  report.add("turn in 3D, 30000 dipoles (wanted: 50)", rounds, [&] {
    frame.pane(3).SendMessage(WM_KEYDOWN, VK_RIGHT);
    frame.pane(3).UpdateWindow();
  });
  const auto goToNext = [&] { frame.SendMessage(WM_COMMAND, ID_DIPOLES_NEXT); };
  report.add("next dipole, 30000 dipoles", rounds, [&] {
    goToNext();
    draw(frame);
  });
  frame.SendMessage(WM_COMMAND, ID_DIPOLES_MANAGER);
  report.add("next dipole, 30000 dipoles, manager open, nothing drawn", rounds, goToNext);
  draw(frame);
  report.add("next dipole, 30000 dipoles, manager open (wanted: 50)", rounds, [&] {
    goToNext();
    draw(frame);
  });
  writeSafely(
      path, [&](CFile& file) { file.Write(report.text().data(), static_cast<UINT>(report.text().size())); });
}

}  // namespace host
