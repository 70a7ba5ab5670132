// Claim: whatever gives out while the text is exported, the set stays as it is, one message says so, and an
// export without a message is whole.
#include "tests/support/TempFolder.h"
#include "tests/sweep/FaultSweep.h"
#include "tests/sweep/SweptSets.h"

namespace {

Set exportedSet() {
  Set set = sweptSet(4);
  set->deleteDipole(1, 0);
  set->m_dipoles[2]->m_label = CString(_T('x'), 33000);  // more bytes than an archive holds back
  return set;
}

}  // namespace

TEST(ExportSweep, TextExport) {
  const TempFolder folder;
  const std::vector<CString> chosen = {folder.path("table")};
  {
    ScriptedOperator user;
    user.answerFiles(chosen);
    EXPECT_EQ(exportedSet()->exportExelFile(), 1);
  }
  const std::string whole = folder.read("table.txt");
  ASSERT_GT(whole.size(), 66000U);
  const FailurePoints points = sweep("text export", allFaults(), [&](Fault& fault) {
    folder.write("table.txt", "an older table");
    ScriptedOperator user;
    user.answerFiles(chosen);
    const Set set = exportedSet();
    const Lines before = linesOf(*set);
    int result = -1;
    fault.during([&] { result = set->exportExelFile(); });
    EXPECT_EQ(fault.escaped(), Escaped::nothing);
    EXPECT_EQ(differences(before, linesOf(*set)), Lines{});
    EXPECT_EQ(folder.names(), Texts{"table.txt"});
    if (result == 1) {
      EXPECT_EQ(user.texts(), Texts{});
      EXPECT_EQ(folder.read("table.txt"), whole);
    } else {
      EXPECT_TRUE(fault.happened());
      EXPECT_EQ(result, 0);
      EXPECT_EQ(user.texts(), Texts{fault.isMemory() ? "Not enough memory" : "File could not be opened "});
    }
  });
  EXPECT_GE(points.allocations, 60);
  EXPECT_GE(points.fileCalls, 6);
}
