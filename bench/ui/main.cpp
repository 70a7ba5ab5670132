// dipole_ui_bench [keys]: how long the manager makes its user wait with a full set of 30000 dipoles, in one
// run beside lists that are filled row by row; with `keys` the arrow keys alone. Each number is the median of
// some repetitions, in ms, until everything has been drawn. Exits with 1 when a list has not all its rows.
#include <algorithm>
#include <cstdio>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "bench/ui/Lists.h"
#include "tests/ui/endurance/ReadyOperator.h"
#include "tests/ui/windows/Host.h"
#include "ui/resource.h"

namespace {

constexpr int dipoles = 30000;
constexpr int repetitions = 5;
constexpr int keyRounds = 101;
constexpr double mostKeyRatio = 1.3;

using Action = std::function<void()>;

double seconds() {
  LARGE_INTEGER now = {};
  LARGE_INTEGER frequency = {};
  ::QueryPerformanceCounter(&now);
  ::QueryPerformanceFrequency(&frequency);
  return static_cast<double>(now.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// Of this process, in s. It stays what it is on a machine that is busy with other things.
double processorTime() {
  FILETIME unused = {};
  FILETIME kernel = {};
  FILETIME user = {};
  ::GetProcessTimes(::GetCurrentProcess(), &unused, &unused, &kernel, &user);
  const auto ticks = [](const FILETIME& time) {
    return static_cast<double>(time.dwHighDateTime) * 4294967296.0 + time.dwLowDateTime;
  };
  return (ticks(kernel) + ticks(user)) * 1e-7;
}

struct Measured {
  double median;     // ms
  double processor;  // ms, the mean
};

class Times {
 public:
  void take(const Action& action) {
    const double start = seconds();
    const double processorStart = processorTime();
    action();
    pump();
    m_processor += processorTime() - processorStart;
    m_all.push_back((seconds() - start) * 1000.0);
  }
  Measured measured() {
    const auto middle = m_all.begin() + static_cast<std::ptrdiff_t>(m_all.size() / 2);
    std::nth_element(m_all.begin(), middle, m_all.end());
    return {*middle, m_processor * 1000.0 / static_cast<double>(m_all.size())};
  }

 private:
  std::vector<double> m_all;  // ms
  double m_processor = 0.0;   // s
};

// What has to come before each action is not counted.
Measured measure(int times, const Action& before, const Action& action) {
  Times all;
  for (int i = 0; i < times; ++i) {
    before();
    pump();
    all.take(action);
  }
  return all.measured();
}

// An empty list is fast, and says nothing.
void mustHaveAllRows(HWND list) {
  const int rows = ListView_GetItemCount(list);
  if (rows != dipoles) {
    throw std::runtime_error("a list has " + std::to_string(rows) + " rows");
  }
}

void nothing() {}

// Numbers without an order, the same in every run.
class Numbers {
 public:
  float next() {
    m_state = m_state * 1664525U + 1013904223U;
    return static_cast<float>(m_state >> 8) / 65536.0F - 128.0F;
  }

 private:
  unsigned m_state = 1;
};

void fillUp(Host& host) {
  host.face->cleanDipoles();
  host.addDipoles(dipoles);
  Numbers numbers;
  for (int slot = 0; slot < dipoles; ++slot) {
    CDipoleszq& dipole = host.dipole(slot);
    for (int axis = 0; axis < 3; ++axis) {
      dipole.m_location[axis] = numbers.next();
      dipole.m_orientation[axis] = numbers.next() / 128.0F;
    }
    dipole.m_latency = numbers.next();
    dipole.m_fitError = numbers.next();
    dipole.m_moment = numbers.next();
  }
  host.face->setCurrentDipole(0);
  host.face->updateDipoleList();
  mustHaveAllRows(host.list());
}

class Table {
 public:
  // `most`: what is wanted at most, ms; 0: nothing is.
  void add(const std::string& what, const Measured& value, double most = 0.0) {
    const bool isMissed = most > 0.0 && value.median > most;
    char wanted[32] = "";
    if (most > 0.0) {
      std::snprintf(wanted, sizeof wanted, "<= %.0f %s", most, isMissed ? "NO" : "yes");
    }
    std::printf("%-44s %10.2f %10.2f %9.3f   %s\n", what.c_str(), value.median, value.processor,
                m_unit == 0.0 ? 1.0 : value.median / m_unit, wanted);
    std::fflush(stdout);
    m_missed += isMissed ? 1 : 0;
  }
  // Beside a yardstick of its own. The processor's times count: what the clock tells hangs on the rest of the
  // machine. `most`: their ratio that is wanted at most; 0: none is.
  void addRatio(const std::string& what, const Measured& value, const Measured& yardstick, double most) {
    const double ratio = value.processor / yardstick.processor;
    const bool isMissed = most > 0.0 && ratio > most;
    char wanted[32] = "";
    if (most > 0.0) {
      std::snprintf(wanted, sizeof wanted, ", <= %.1f %s", most, isMissed ? "NO" : "yes");
    }
    std::printf("%-44s %10.2f %10.2f %9s   %.2f times that%s; on the clock %.2f\n", what.c_str(),
                value.median, value.processor, "", ratio, wanted, value.median / yardstick.median);
    std::fflush(stdout);
    m_missed += isMissed ? 1 : 0;
  }
  void head() const {
    std::printf("%-44s %10s %10s %9s   %s\n", "30000 dipoles, ms", "median", "processor", "of (a)", "wanted");
  }
  void setUnit(double unit) { m_unit = unit; }
  int missed() const { return m_missed; }

 private:
  double m_unit = 0.0;
  int m_missed = 0;
};

void pressDown(CWnd& window) {
  window.SendMessage(WM_KEYDOWN, VK_DOWN, 1);
}

// What the system alone needs, where nobody listens.
void measureOwnerData(Table& table) {
  ComparedList list(LVS_OWNERDATA);
  table.add("(c) the number of rows alone", measure(repetitions, nothing, [&] { list.setCount(dipoles); }));
  mustHaveAllRows(list);
  table.add("    select all, with nobody to tell",
            measure(
                repetitions, [&] { list.setCount(dipoles); },
                [&] { list.SetItemState(-1, LVIS_SELECTED, LVIS_SELECTED); }));
}

void compareLists(Host& host, Table& table) {
  double naive = 0.0;
  {
    ComparedList list;
    const Measured texts = measure(repetitions, nothing, [&] { list.fillWithTexts(*host.face); });
    mustHaveAllRows(list);
    naive = texts.median;
    table.setUnit(naive);
    table.add("(a) a row and ten texts, one after the other", texts);
    table.add("(b) rows whose texts are asked for",
              measure(repetitions, nothing, [&] { list.fillWithCallbacks(*host.face); }));
    mustHaveAllRows(list);
  }
  measureOwnerData(table);
  table.add("(d) the manager's refill", measure(repetitions, nothing, [&] { host.face->updateDipoleList(); }),
            naive / 10.0);
}

void selectAll(Host& host) {
  host.key('A', true);
}

void command(Host& host, Table& table, const std::string& what, UINT id, const Action& before = nothing) {
  const auto prepare = [&] {
    before();
    selectAll(host);
  };
  table.add(what, measure(repetitions, prepare, [&] { host.choose(id); }), 1000.0);
}

void commands(Host& host, Table& table) {
  const auto deselect = [&] { host.face->updateDipoleList(); };
  table.add("(e) select all by Ctrl+A", measure(repetitions, deselect, [&] { selectAll(host); }), 1000.0);
  table.add("(e) select all by Home, Shift+End",
            measure(repetitions, deselect,
                    [&] {
                      host.key(VK_HOME);
                      host.key(VK_END, false, true);
                    }),
            1000.0);
  const ReadyOperator colors;
  command(host, table, "(f) hide all of them", ID_DIPOLE_HIDE);
  command(host, table, "(f) show all of them", ID_DIPOLE_SHOW);
  command(host, table, "(f) colour all of them", ID_DIPOLE_COLOR_SELECTED);
  command(host, table, "(f) delete all of them", ID_DIPOLE_DELETE, [&] { fillUp(host); });
  fillUp(host);
}

// The manager's arrow key and that of a list which looks alike and to whose choices nobody listens, each from
// the middle of its rows, in turn: what else the machine does meets both.
void compareKeys(Host& host, ComparedList& alone, Table& table, const std::string& what, double most) {
  Times ofList;
  Times ofManager;
  for (int round = 0; round < keyRounds; ++round) {
    ofList.take([&] { pressDown(alone); });
    ofManager.take([&] { pressDown(*CWnd::FromHandle(host.list())); });
  }
  table.add("    arrow down, with nobody to tell", ofList.measured());
  table.addRatio(what, ofManager.measured(), ofList.measured(), most);
}

void keys(Host& host, Table& table) {
  TextOwner owner;
  ComparedList alone(LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS, &owner);
  alone.setCount(dipoles);
  mustHaveAllRows(alone);
  alone.lookLike(host.list());
  alone.chooseRow(dipoles / 2);
  host.click(dipoles / 2);
  compareKeys(host, alone, table, "(g) arrow down in the middle", mostKeyRatio);
  host.choose(ID_DIPOLE_EDIT);
  compareKeys(host, alone, table, "(g) arrow down with the editor open", 0.0);
  ::ShowWindow(host.editor(), SW_HIDE);
}

// Every column after every other one, so that none finds its own order.
void columns(Host& host, Table& table) {
  for (int column = 0; column < 11; ++column) {
    const auto disorder = [&] { host.clickHeading((column + 3) % 10); };
    table.add("(h) heading \"" + host.heading(column) + '"',
              measure(repetitions, disorder, [&] { host.clickHeading(column); }), 300.0);
  }
}

void run(Table& table, bool keysAlone) {
  Host host;
  host.openManager();
  fillUp(host);
  table.head();
  if (!keysAlone) {
    compareLists(host, table);
    commands(host, table);
    columns(host, table);
  }
  keys(host, table);
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  Table table;
  try {
    run(table, argc > 1 && std::string_view(argv[1]) == "keys");
  } catch (const std::runtime_error& error) {
    std::printf("nothing was measured: %s\n", error.what());
    return 1;
  }
  std::printf("%d of them are not what is wanted\n", table.missed());
  return testing::UnitTest::GetInstance()->Failed() ? 1 : 0;
}
