// Claim: whatever gives out, memory or a file call, an operation on files has done all of its work or none of
// it, and says which.
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "host/session/Session.h"
#include "tests/host/head/NiftiFile.h"
#include "tests/host/undo/WholeSet.h"
#include "tests/support/TempFolder.h"
#include "tests/sweep/FaultSweep.h"

namespace {

using host::Session;

struct Viewer {
  Viewer() : set(filledSet(3)), session(*set) {}

  Set set;
  Session session;
  ScriptedOperator user;
  TempFolder folder;
};

// What a work is to leave: nothing new when it threw, else all.
using Check = std::function<void(bool isThrown, const WholeSet& before)>;

// Lets the work fail at each of its points, each time on the same set, of a name and with one step to undo.
FailurePoints sweepWork(const char* name, const std::vector<FaultKind>& kinds, Viewer& viewer,
                        const std::function<void()>& work, const Check& check) {
  const CString mine = viewer.folder.path("mine.dipset");
  const CString changed = _T("changed");
  viewer.session.saveSet(mine);
  const auto begin = [&] {
    viewer.session.openSet(mine);
    viewer.set->m_dipoles[0]->m_label = changed;
    viewer.session.noteChange();
  };
  begin();
  return sweep(name, kinds, [&](Fault& fault) {
    begin();
    (void)std::exchange(viewer.user.messages, std::vector<ScriptedOperator::Message>());
    const WholeSet before = wholeSet(*viewer.set);
    bool isThrown = false;
    std::string wrong;
    fault.during([&] {
      try {
        work();
      } catch (const std::runtime_error&) {
        isThrown = true;
      } catch (...) {
        isThrown = true;
        wrong = "not an exception for users";
      }
    });
    EXPECT_EQ(wrong, "");
    EXPECT_TRUE(fault.happened() || !isThrown);
    if (isThrown) {
      EXPECT_TRUE(isSame(wholeSet(*viewer.set), before));
      EXPECT_EQ(viewer.session.setPath(), mine);
      EXPECT_EQ(viewer.session.history().undoSteps(), 1U);
      EXPECT_TRUE(viewer.session.isUnsaved());
    }
    check(isThrown, before);
    (void)std::exchange(viewer.user.messages, std::vector<ScriptedOperator::Message>());
    begin();
  });
}

}  // namespace

TEST(SessionSweep, OpenSet) {
  Viewer viewer;
  const Set other = filledSet(5);
  const std::string bytes = currentBytes(*other);
  const CString path = viewer.folder.write("other.dipset", bytes);
  sweepWork(
      "open a set", allFaults(), viewer, [&] { viewer.session.openSet(path); },
      [&](bool isThrown, const WholeSet&) {
        if (!isThrown) {
          EXPECT_EQ(currentBytes(*viewer.set), bytes);
          EXPECT_EQ(viewer.session.setPath(), path);
          EXPECT_FALSE(viewer.session.isUnsaved());
        }
      });
}

TEST(SessionSweep, NewSet) {
  Viewer viewer;
  sweepWork(
      "new set", memoryFaults(), viewer, [&] { viewer.session.newSet(); },
      [&](bool isThrown, const WholeSet&) { EXPECT_EQ(viewer.set->m_totalDipoles == 0, !isThrown); });
}

TEST(SessionSweep, UsePhantom) {
  Viewer viewer;
  NiftiFile file;
  file.count();
  const CString path = viewer.folder.write("head.nii", file.version1());
  const auto begin = [&] {
    viewer.session.openMri(path);
    viewer.session.openMri(path);  // the first one's notice may tell of a point
    viewer.session.placeFiducial(host::FiducialName::nasion);
  };
  begin();
  const FailurePoints points = sweep("use the phantom", memoryFaults(), [&](Fault& fault) {
    begin();
    const auto volume = viewer.session.head().volume;
    bool isTold = false;
    fault.during([&] {
      try {
        viewer.session.usePhantom();
      } catch (const std::runtime_error& error) {
        isTold = std::string_view(error.what()) == "not enough memory";
      }
    });
    EXPECT_EQ(isTold, fault.happened());
    EXPECT_EQ(viewer.session.head().volume == volume, fault.happened());
    EXPECT_EQ(viewer.session.head().isRegistered(), !fault.happened());
    EXPECT_EQ(viewer.session.placedFiducials()[0], fault.happened());
    EXPECT_EQ(viewer.session.notice().empty(), fault.happened());
    begin();
  });
  EXPECT_GE(points.allocations, 3);
}

TEST(SessionSweep, SaveSet) {
  Viewer viewer;
  const CString path = viewer.folder.path("saved.dipset");
  sweepWork(
      "save a set", allFaults(), viewer,
      [&] {
        {
          const MemoryTruce truce;
          viewer.folder.write("saved.dipset", "old");
        }
        viewer.session.saveSet(path);
      },
      [&](bool isThrown, const WholeSet& before) {
        EXPECT_TRUE(isSame(wholeSet(*viewer.set), before));
        const std::string saved = viewer.folder.read("saved.dipset");
        EXPECT_TRUE(saved == (isThrown ? "old" : before.current)) << saved.size() << " bytes";
        EXPECT_EQ(viewer.folder.names(), (Texts{"mine.dipset", "saved.dipset"}));
      });
}

TEST(SessionSweep, Exports) {
  for (const auto& [name, format] :
       {std::pair{"a.csv", host::ExportFormat::csv}, std::pair{"a.txt", host::ExportFormat::text},
        std::pair{"a.bdip", host::ExportFormat::bdip}}) {
    Viewer viewer;
    const CString path = viewer.folder.path(name);
    std::string whole;  // as it is without a fault
    sweepWork(
        name, allFaults(), viewer,
        [&, as = format, file = std::string(name)] {
          {
            const MemoryTruce truce;
            viewer.folder.write(file, "old");
          }
          viewer.session.exportSet(path, as);
        },
        [&, file = std::string(name)](bool isThrown, const WholeSet&) {
          const std::string now = viewer.folder.read(file);
          whole = whole.empty() ? now : whole;
          EXPECT_TRUE(now == (isThrown ? "old" : whole)) << now.size() << " bytes";
          EXPECT_GT(whole.size(), 300U);
        });
  }
}

TEST(SessionSweep, Import) {
  Viewer viewer;
  const CString path = viewer.folder.write(
      "a.dip",
      "Dipoles\n{\n// xp (cm) yp (cm) zp (cm) xo yo zo Mom(nAm) Label\n"
      "\t1:\t1.0\t2.0\t3.0\t1.0\t0.0\t0.0\t12.0\tlabel\n\t2:\t1.5\t2.0\t3.0\t1.0\t0.0\t0.0\t12.0\tx\n}\n");
  const std::vector<CString> paths = {path};
  Session::ImportResult result;
  sweepWork(
      "import", allFaults(), viewer,
      [&] {
        result = {};
        result = viewer.session.importFiles(paths, nullptr);
      },
      [&](bool isThrown, const WholeSet& before) {
        const int come = viewer.set->m_totalDipoles - 3;
        EXPECT_EQ(come, isThrown ? 0 : result.dipoles);
        if (result.dipoles == 0) {
          EXPECT_TRUE(isSame(wholeSet(*viewer.set), before));
        }
        const bool isWhole = result.dipoles == 2 || !viewer.user.messages.empty();
        EXPECT_TRUE(isThrown || isWhole || result.failed.size() == 1U);
        result = {};
      });
}
