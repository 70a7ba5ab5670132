// The text export, byte by byte, and the choice of an importer by a path's ending.
#include <afxdlgs.h>

#include <limits>

#include "platform/Utf.h"
#include "tests/file/SetFixture.h"
#include "tests/support/CurrentFolder.h"
#include "tests/support/FailingOs.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Thrown.h"

namespace {

// UTF-16LE of UTF-8 text.
std::string wide(const std::string& text) {
  const CString units = fromUtf8(text);
  std::string bytes;
  for (int i = 0; i < units.GetLength(); ++i) {
    const auto unit = static_cast<unsigned>(units[i]);
    bytes += static_cast<char>(unit & 0xFFU);
    bytes += static_cast<char>(unit >> 8U & 0xFFU);
  }
  return bytes;
}

const std::string heading =
    "The following data were exported from Veyrant for Microsoft Excel\n"
    "ID\t Latency\t Xp  Yp  Zp\t\tXo  Yo  Zo\t\tFitError  Moment  Lable \n";
const std::string newDipole = "0  0.00   100.00 100.00 100.00   1.00 0.00 1.00   0.20  1.00  Non \n";

class DipoleExport : public testing::Test {
 protected:
  DipoleExport() : set(std::make_unique<CDipoleFace9File>()) {}

  // Exports to a file of this name; gives what that file then holds.
  std::string exported(const std::string& name = "out.txt") {
    user.answerFiles({folder.path(name)});
    EXPECT_EQ(set->exportExelFile(), 1);
    EXPECT_EQ(user.texts(), Texts{});
    return folder.read(name);
  }

  CDipoleszq& add() {
    set->addDipole();
    return *set->getCurrentDipole();
  }

  ScriptedOperator user;
  TempFolder folder;
  Set set;
};

class ImportDispatch : public DipoleExport {
 protected:
  // What an importer makes of a file of this name: it answers with how far it knew the file.
  int import(const std::string& name, bool offerFolder = false) {
    CString path = folder.write(name,
                                "Dipoles\n{\n(cm)\n1: 1 2 3 1 0 0 3 ctf\n}\n"
                                "Latency\n1 1 2 3 1 0 0 3 1 1 1 1 1 a b c 1 msi\n");
    return set->importDipoleX(path, offerFolder);
  }
  Texts labels() const {
    Texts all;
    for (int slot = 0; slot < set->m_totalDipoles; ++slot) {
      all.push_back(toUtf8(set->m_dipoles[slot]->m_label));
    }
    return all;
  }

 private:
  KeptCurrentFolder m_currentFolder;
};

}  // namespace

TEST_F(DipoleExport, AnEmptySetGivesTheTwoHeadingLines) {
  EXPECT_EQ(exported(), wide(heading));
}

TEST_F(DipoleExport, ANewDipoleIsOneLineOfItsInitialValues) {
  add();
  EXPECT_EQ(exported(), wide(heading + newDipole));
}

TEST_F(DipoleExport, EveryColumnHoldsItsMemberAsStored) {
  CDipoleszq& dipole = add();
  fillMembers(dipole);
  dipole.m_id = -7;
  dipole.m_latency = -0.004;
  dipole.m_orientation[0] = 0.125;
  dipole.m_label = fromUtf8("\"ä,\tb\n€\xF0\x9F\xA7\xA0");
  EXPECT_EQ(exported(),
            wide(heading + "-7  -0.00   1015.00 1015.25 1015.50   0.12 1018.25 1018.50   1012.50  1019.50  "
                           "\"ä,\tb\n€\xF0\x9F\xA7\xA0 \n"));
}

TEST_F(DipoleExport, HiddenDipolesAreWrittenAndEmptySlotsLeftOut) {
  for (int id = 0; id < 4; ++id) {
    CDipoleszq& dipole = add();
    dipole.m_id = id;
    dipole.m_show = dipole.m_display = 0;
  }
  set->deleteDipole(1, 0);
  std::string lines;
  for (const char* id : {"0", "2", "3"}) {
    lines += id + newDipole.substr(1);
  }
  EXPECT_EQ(exported(), wide(heading + lines));
}

TEST_F(DipoleExport, HugeAndMissingValuesAreWrittenOut) {
  CDipoleszq& dipole = add();
  dipole.m_latency = std::numeric_limits<double>::infinity();
  dipole.m_fitError = -std::numeric_limits<double>::infinity();
  dipole.m_location[0] = 1e15;
  dipole.m_location[1] = -0x1p80;
  EXPECT_EQ(exported(), wide(heading + "0  inf   1000000000000000.00 -1208925819614629174706176.00 100.00   "
                                       "1.00 0.00 1.00   -inf  1.00  Non \n"));
}

TEST_F(DipoleExport, ALabelEndsAtAZeroAndItsLineGoesOn) {
  add().m_label = CString(_T("ab\0cd"), 5);
  add().m_label.Empty();
  const std::string start = newDipole.substr(0, newDipole.find("Non"));
  EXPECT_EQ(exported(), wide(heading + start + "ab \n" + start + " \n"));
}

TEST_F(DipoleExport, ALabelLongerThanTheBufferIsWrittenWhole) {
  add().m_label = CString(_T('x'), 70000);
  const std::string start = newDipole.substr(0, newDipole.find("Non"));
  EXPECT_EQ(exported(), wide(heading + start + std::string(70000, 'x') + " \n"));
}

TEST_F(DipoleExport, TheQuestionIsForAFileToSaveThatMayBeReplaced) {
  user.cancelFiles();
  set->exportExelFile();
  ASSERT_EQ(user.fileQuestions.size(), 1U);
  const FileQuestion& question = user.fileQuestions[0];
  EXPECT_FALSE(question.open);
  EXPECT_EQ(toUtf8(question.filter), "Text file(*.txt)|*.txt|All Files(*.*)|*.*||");
  EXPECT_EQ(question.filterIndex, 1U);
  EXPECT_TRUE(question.name.IsEmpty());
  EXPECT_TRUE(question.extension.IsEmpty());
  EXPECT_EQ(question.flags & ~DWORD{OFN_EXPLORER}, DWORD{OFN_OVERWRITEPROMPT});
}

TEST_F(DipoleExport, CancelledGivesZeroSilentlyAndWritesNothing) {
  user.cancelFiles();
  EXPECT_EQ(set->exportExelFile(), 0);
  EXPECT_EQ(user.texts(), Texts{});
  EXPECT_EQ(folder.names(), Texts{});
}

TEST_F(DipoleExport, TheEndingIsAddedUnlessTheNameHoldsItSomewhere) {
  struct Case {
    const char* chosen;
    const char* written;
  };
  for (const Case& c : {Case{"out", "out.txt"}, Case{"out.TXT", "out.TXT.txt"}, Case{"out.txt", "out.txt"},
                        Case{"a.txt.old", "a.txt.old"}, Case{"b.csv", "b.csv.txt"}}) {
    const TempFolder fresh;
    user.answerFiles({fresh.path(c.chosen)});
    EXPECT_EQ(set->exportExelFile(), 1);
    EXPECT_EQ(fresh.names(), Texts{c.written});
  }
}

TEST_F(DipoleExport, AFolderWhoseNameHoldsTheEndingCountsForTheFile) {
  folder.makeFolder("x.txt");
  user.answerFiles({folder.path("x.txt/out")});
  EXPECT_EQ(set->exportExelFile(), 1);
  EXPECT_TRUE(folder.has("x.txt/out"));
  EXPECT_FALSE(folder.has("x.txt/out.txt"));
}

TEST_F(DipoleExport, APathLongerThanAnySystemTakesIsReportedAndGivesZero) {
  const CString start = folder.path("x");
  for (const int length : {32767, 32768, 70000}) {  // the longest of the dialog, one more, many more
    user.messages.clear();
    user.answerFiles({start + CString(_T('x'), length - start.GetLength())});
    EXPECT_EQ(set->exportExelFile(), 0);
    EXPECT_EQ(user.texts(), Texts{"File could not be opened "}) << length;
  }
  EXPECT_EQ(folder.names(), Texts{});
}

TEST_F(DipoleExport, APathOfManyFoldersIsWritten) {
  std::string name;
  while (folder.pathUtf8(name).size() < 200) {
    name += name.empty() ? "a folder" : "/a folder";
    folder.makeFolder(name);
  }
  EXPECT_EQ(exported(name + "/out.txt"), wide(heading));
}

TEST_F(DipoleExport, ALongerFileIsReplacedWhole) {
  folder.write("out.txt", std::string(10000, 'x'));
  EXPECT_EQ(exported(), wide(heading));
}

TEST_F(DipoleExport, AFileThatCannotBeCreatedIsReportedAndGivesZero) {
  user.answerFiles({folder.path("missing") + CString(_T("/out.txt"))});
  EXPECT_EQ(set->exportExelFile(), 0);
  EXPECT_EQ(user.messages, (std::vector<ScriptedOperator::Message>{{"File could not be opened ", MB_OK}}));
}

TEST_F(DipoleExport, AFullDiskIsReportedAndWhatWasWrittenStays) {
  for (int i = 0; i < 1000; ++i) {
    add();
  }
  user.answerFiles({folder.path("out.txt")});
  {
    FailingOs os(FailingOs::Call::write, 2, CFileException::diskFull);
    EXPECT_EQ(set->exportExelFile(), 0);
    EXPECT_TRUE(os.failed);
  }
  EXPECT_EQ(user.texts(), Texts{"File could not be opened "});
  user.messages.clear();
  const std::string start = folder.read("out.txt");
  EXPECT_GT(start.size(), 0U);
  EXPECT_EQ(start, exported("whole.txt").substr(0, start.size()));
}

TEST_F(DipoleExport, ToANamedFileWritesTheSameTableUnderExactlyThisName) {
  add();
  add().m_label = _T("second");
  set->deleteDipole(0, 0);
  const std::string table = exported();
  folder.write("out.csv", std::string(10000, 'x'));
  for (const char* name : {"table", "table.TXT", "out.csv"}) {
    EXPECT_EQ(set->exportExelFileX(folder.path(name)), 1);
    EXPECT_EQ(folder.read(name), table) << name;
  }
  EXPECT_EQ(folder.names(), (Texts{"out.csv", "out.txt", "table", "table.TXT"}));
  EXPECT_EQ(user.fileQuestions.size(), 1U);  // that of exported()
  EXPECT_EQ(user.texts(), Texts{});
}

TEST_F(DipoleExport, ToANamedFileThatCannotBeWrittenRaisesTheFaultAndSaysNothing) {
  add();
  const CString missing = folder.path("missing") + CString(_T("/out.txt"));
  EXPECT_EQ(fileCause([&] { set->exportExelFileX(missing); }), CFileException::badPath);
  EXPECT_GT(fileCause([&] { set->exportExelFileX(CString()); }), CFileException::none);
  {
    const FailingOs os(FailingOs::Call::write, 1, CFileException::diskFull);
    EXPECT_EQ(fileCause([&] { set->exportExelFileX(folder.path("out.txt")); }), CFileException::diskFull);
  }
  EXPECT_EQ(user.texts(), Texts{});
  EXPECT_EQ(set->m_totalDipoles, 1);
}

TEST_F(ImportDispatch, TheEndingChoosesTheImporter) {
  for (const char* name : {"a.dip", "b.DIP"}) {
    set->cleanDipoles();
    EXPECT_EQ(import(name), 1) << name;
    EXPECT_EQ(labels(), Texts{"ctf"}) << name;
  }
  for (const char* name : {"a.txt", "b.TXT", "c.dip.txt"}) {
    set->cleanDipoles();
    EXPECT_EQ(import(name), 1) << name;
    EXPECT_EQ(labels(), Texts{"msi"}) << name;
  }
}

TEST_F(ImportDispatch, AnyOtherEndingGivesZeroSilently) {
  for (const char* name : {"a.Dip", "a.Txt", "a.dip.bak", "a.dipset", "a.tx", "dip", "txt", "a.txt ", "atxt",
                           "a.dix", "a.DIX", "a.txx", "a.TXX"}) {
    EXPECT_EQ(import(name), 0) << name;
  }
  for (const LPCTSTR text : {_T(""), _T("dip"), _T(".di"), _T("a.b")}) {
    CString path = text;
    EXPECT_EQ(set->importDipoleX(path, true), 0);
  }
  EXPECT_EQ(set->m_totalDipoles, 0);
  EXPECT_EQ(user.texts(), Texts{});
}

TEST_F(ImportDispatch, APathOfNothingButTheEndingIsTakenToItsImporter) {
  CString path = _T(".dip");
  EXPECT_EQ(set->importDipoleX(path, false), 0);
  EXPECT_EQ(user.texts(), Texts{"Find file:.dip error \n"});
}

TEST_F(ImportDispatch, TheOfferIsPassedOn) {
  for (const char* name : {"a.dip", "a.txt"}) {
    user.answer(IDNO);
    import(name, true);
    EXPECT_EQ(user.answersLeft(), 0U) << name;
  }
}
