// Claim: whatever gives out while an import runs, no exception leaves it, the dipoles that were there stay as
// they were, every new one is one of the file, the total that is shown is true, and an import that says
// nothing of a fault is whole.
#include <algorithm>
#include <functional>
#include <initializer_list>
#include <string_view>

#include "tests/import/CtfImportTest.h"
#include "tests/support/CurrentFolder.h"
#include "tests/support/Thrown.h"
#include "tests/sweep/FaultSweep.h"
#include "tests/sweep/SweptSets.h"

namespace {

constexpr int present = 2;  // dipoles in front of the import

std::string joined(std::initializer_list<std::string_view> parts) {
  std::string all;
  for (const std::string_view part : parts) {
    all += part;
  }
  return all;
}

std::string everySection(const std::string& name) {
  std::string rows;
  std::string moving;
  std::string flags;
  std::string fits;
  for (int k = 1; k <= 4; ++k) {
    const std::string number = std::to_string(k);
    const std::string x = k == 3 ? "35" : number;  // cm: the third is questioned
    rows += joined({number, ": ", x, " 0.5 0.25 1 0 0 7 ", name, "-static-", number, "\n"});
    moving += joined({number, ": 1 ", number, " 0.125 -", number, " 0.5 0.25 0 1 0 20 5 "});
    moving += joined({name, "-moving-with-a-longer-label-", number, "\n"});
    flags += joined({number, ": 2 1 1 1 1\n"});
    fits += joined({number, ": 7 8 0.25 1 12.5 1 1 1 x\n"});
  }
  const std::string info = joined({"VERSION:\tversion of ", name, "\nPATIENT:\tthe patient of ", name, "\n"});
  const std::string model = joined({"MODEL_TYPE:\tMEG_ONLY\nMRI_FILE:\tan MRI file of ", name, "\n"});
  const std::string points = "NASION:\t128 40 128\nLEFT_EAR:\t60 128 128\nRIGHT_EAR:\t200 128 128\n";
  return joined({section("File_Info", info), section("Model", model), oneSphere,
                 section("Dipoles", unitHeader + rows), section("Dipole_Flags", flags),
                 section("Dipole_FitInfo", fits), section("Fit_Results", movingHeader + moving),
                 section("Fid_Points", points)});
}

std::string table(const std::string& name) {
  std::string text = joined({"Disk Media:\tdisk\nMRI/CT Patient: the patient of ", name,
                             "\nDipole File: a file of ", name, "\nDate of File:\ttoday\nLatency (ms)\n"});
  for (const char* place : {"1 2 3", "301 2 3", "4 5 6"}) {  // cm: the second is questioned
    text += joined({"12.5 ", place, " 0.5 0.25 -1 20.5 1.5 9 0.75 2.5 7 a b c 8 ", name, "-table\n"});
  }
  return text;
}

// What an import does, of what, and how the user answers. With `otherAnswers` the same files give the dipoles
// that may be left when the import stops on its way.
struct Import {
  const char* name;
  std::function<int(CDipoleFace9File&)> run;
  std::vector<CString> paths;
  std::vector<int> answers;
  std::vector<int> otherAnswers;
  bool isChosen = false;  // in the dialog
};

// What an import without a fault gives, and what it may leave when it stops on its way.
struct Whole {
  Texts texts;
  Lines lines;
  std::vector<Lines> places;       // of the new dipoles, by either answers
  std::vector<std::string> files;  // what the folder holds
};

class ImportSweep : public testing::Test {
 protected:
  // An import by path. The path is copied in advance: that is the caller's memory.
  Import byPath(const char* name, const CString& path, bool offerFolder) {
    m_path = path;
    return {name,
            [this, offerFolder](CDipoleFace9File& set) { return set.importDipoleX(m_path, offerFolder); },
            {path},
            {},
            {}};
  }

  FailurePoints sweepImport(const Import& import) {
    Whole whole = wholeImport(import, import.answers);
    const std::vector<Lines> others = wholeImport(import, import.otherAnswers).places;
    EXPECT_FALSE(whole.places.empty());
    whole.places.insert(whole.places.end(), others.begin(), others.end());
    return sweep(import.name, allFaults(), [&](Fault& fault) { importUnder(fault, import, whole); });
  }

  TempFolder folder;

 private:
  static void prepare(ScriptedOperator& user, const Import& import, const std::vector<int>& answers) {
    if (import.isChosen) {
      user.answerFiles(import.paths);
    }
    for (const int answer : answers) {
      user.answer(answer);
    }
  }

  Whole wholeImport(const Import& import, const std::vector<int>& answers) {
    ScriptedOperator user;
    const Set set = sweptSet(present);
    prepare(user, import, answers);
    EXPECT_EQ(import.run(*set), 1);
    EXPECT_EQ(user.answersLeft(), 0U);
    Whole whole = {user.texts(), linesOf(*set), {}, contents()};
    for (int slot = present; slot < set->m_totalDipoles; ++slot) {
      whole.places.push_back(placeOf(*set->m_dipoles[slot]));
    }
    return whole;
  }

  void importUnder(Fault& fault, const Import& import, const Whole& whole) {
    ScriptedOperator user;
    const Set set = sweptSet(present);
    const Lines before = linesOf(*set);
    const std::vector<Lines> slots = {slotLines(*set, 0), slotLines(*set, 1)};
    prepare(user, import, import.answers);
    int result = -1;
    fault.during([&] { result = import.run(*set); });
    EXPECT_EQ(fault.escaped(), Escaped::nothing);
    EXPECT_EQ(contents(), whole.files);
    expectDipoles(*set, slots, whole);
    const Texts shown = user.texts();
    if (!fault.happened()) {
      EXPECT_EQ(shown, whole.texts);
      EXPECT_EQ(differences(whole.lines, linesOf(*set)), Lines{});
    }
    const bool isFound = std::ranges::count(shown, notFound(import)) == 0;
    EXPECT_EQ(result, isFound ? 1 : 0);
    if (!isFound) {
      EXPECT_EQ(differences(before, linesOf(*set)), Lines{});
    }
    expectDocumented(fault, import, shown, whole, *set);
    expectUsable(*set);
  }

  // Those that were there are as they were, and each new one is one of the file.
  static void expectDipoles(const CDipoleFace& set, const std::vector<Lines>& before, const Whole& whole) {
    ASSERT_GE(set.m_totalDipoles, present);
    for (int slot = 0; slot < present; ++slot) {
      EXPECT_EQ(differences(before[static_cast<std::size_t>(slot)], slotLines(set, slot)), Lines{});
    }
    for (int slot = present; slot < set.m_totalDipoles; ++slot) {
      ASSERT_NE(set.m_dipoles[slot], nullptr);
      const Lines place = placeOf(*set.m_dipoles[slot]);
      EXPECT_GT(std::ranges::count(whole.places, place), 0) << testing::PrintToString(place);
    }
  }

  std::vector<std::string> contents() const {
    std::vector<std::string> all;
    for (const std::string& name : folder.names()) {
      all.push_back(name);
      all.push_back(folder.read(name));
    }
    return all;
  }

  static std::string notFound(const Import& import) {
    return "Find file:" + toUtf8(import.paths[0]) + " error \n";
  }

  // The folder that was wanted cannot be listed.
  static bool isFolderNotFound(const Import& import, const std::string& text) {
    const CString& path = import.paths[0];
    const CString folder = path.Left(path.ReverseFind(pathSeparator) + 1);
    return import.paths.size() > 1 &&
           text == "Find file:" + toUtf8(folder + _T("*") + path.Right(4)) + " error \n";
  }

  static std::string reportOf(int cause, const CString& path) {
    return ::reportOf(CFileException(cause, 12345, path));
  }

  // The framework's own box on a file fault: of a file of the import, or of one that was not opened.
  static bool isReport(const Fault& fault, const Import& import, const std::string& text) {
    return text == reportOf(CFileException::invalidFile, CString()) ||
           std::ranges::any_of(
               import.paths, [&](const CString& path) { return text == reportOf(fault.kind().cause, path); });
  }

  static bool isOpenFailure(const Fault& fault, const Import& import, const std::string& text) {
    return std::ranges::any_of(
        import.paths, [&](const CString& path) { return text == openFailure(path, fault.kind().cause); });
  }

  static void expectDocumented(const Fault& fault, const Import& import, const Texts& shown,
                               const Whole& whole, const CDipoleFace& set) {
    bool isToldOf = false;  // that something is missing
    bool isFinished = false;
    auto next = whole.texts.begin();
    for (const std::string& text : shown) {
      if (text.rfind("Total imported", 0) == 0) {
        EXPECT_EQ(text, totalMessage(present, set.m_totalDipoles));
        EXPECT_EQ(text, shown.back());
        isFinished = true;
        continue;
      }
      const auto found = std::find(next, whole.texts.end(), text);
      if (found != whole.texts.end()) {
        next = found + 1;
        continue;
      }
      const bool isOfMemory = text == notEnoughMemory || (isToldOf && text == fileNotCorrect);
      const bool isOfFile = text == notFound(import) || isFolderNotFound(import, text) ||
                            isOpenFailure(fault, import, text) ||
                            (isReport(fault, import, text) && text == shown.back());
      const bool isOfMissingFile = text == noSphere && (isToldOf || fault.isSilent());
      EXPECT_TRUE((fault.isMemory() ? isOfMemory : isOfFile) || isOfMissingFile) << text;
      isToldOf = true;
    }
    if (isFinished && !isToldOf && !fault.isSilent()) {
      EXPECT_EQ(differences(whole.lines, linesOf(set)), Lines{});
    }
    if (!isFinished && !fault.isMemory()) {
      EXPECT_TRUE(isToldOf);
    }
  }

  KeptCurrentFolder m_currentFolder;
  CString m_path;
};

}  // namespace

TEST_F(ImportSweep, CtfFileWithEverySectionAndItsMovingDipolesTaken) {
  Import import = byPath("CTF, moving dipoles taken", folder.write("a.dip", everySection("first")), false);
  import.answers = {IDYES, IDYES};
  import.otherAnswers = {IDYES, IDNO};
  const FailurePoints points = sweepImport(import);
  EXPECT_GE(points.allocations, 50);
  EXPECT_GE(points.fileCalls, 8);
}

TEST_F(ImportSweep, CtfFileWithEverySectionAndItsQuestionsDenied) {
  Import import = byPath("CTF, questions denied", folder.write("a.dip", everySection("first")), false);
  import.answers = import.otherAnswers = {IDNO, IDNO};
  const FailurePoints points = sweepImport(import);
  EXPECT_GE(points.allocations, 40);
  EXPECT_GE(points.fileCalls, 8);
}

TEST_F(ImportSweep, CtfFileLongerThanAnyBuffer) {
  // The readers pass over comments.
  std::string comment;
  for (int line = 0; line < 50; ++line) {
    comment += "//" + std::string(1500, 'x') + "\n";
  }
  std::string text = everySection("first");
  const std::string::size_type secondRow = text.find("2: 2 0.5");
  text.insert(secondRow, comment).insert(text.find("3: 35 0.5"), comment);
  Import import = byPath("CTF, a long file", folder.write("a.dip", text), false);
  import.answers = {IDYES, IDNO};
  import.otherAnswers = {IDYES, IDYES};
  const FailurePoints points = sweepImport(import);
  EXPECT_GE(points.fileCalls, 10);
}

TEST_F(ImportSweep, WholeCtfFolder) {
  const CString first = folder.write("a.dip", everySection("first"));
  Import import = byPath("CTF folder", first, true);
  import.paths.push_back(folder.write("b.dip", everySection("second")));
  folder.write("c.txt", "no CTF file");
  import.answers = {IDYES, IDYES, IDNO, IDYES, IDNO};
  import.otherAnswers = {IDYES, IDYES, IDYES, IDYES, IDYES};
  const FailurePoints points = sweepImport(import);
  EXPECT_GE(points.allocations, 100);
  EXPECT_GE(points.fileCalls, 12);
}

TEST_F(ImportSweep, CtfFilesChosenInTheDialog) {
  const Import import = {
      "CTF files chosen",
      [](CDipoleFace9File& set) { return set.importCTFDipoles(); },
      {folder.write("a.dip", everySection("first")), folder.write("b.dip", everySection("second"))},
      {IDYES, IDNO, IDYES, IDNO},
      {IDYES, IDYES, IDYES, IDYES},
      true};
  const FailurePoints points = sweepImport(import);
  EXPECT_GE(points.allocations, 80);
  EXPECT_GE(points.fileCalls, 8);
}

TEST_F(ImportSweep, MsiTable) {
  Import import = byPath("4D/MSI table", folder.write("a.txt", table("first")), false);
  import.answers = import.otherAnswers = {IDYES};
  const FailurePoints points = sweepImport(import);
  EXPECT_GE(points.allocations, 15);
  EXPECT_GE(points.fileCalls, 8);
}

TEST_F(ImportSweep, WholeMsiFolder) {
  Import import = byPath("4D/MSI folder", folder.write("a.txt", table("first")), true);
  import.paths.push_back(folder.write("b.txt", table("second")));
  import.answers = {IDYES, IDYES, IDNO};
  import.otherAnswers = {IDYES, IDYES, IDYES};
  const FailurePoints points = sweepImport(import);
  EXPECT_GE(points.allocations, 25);
  EXPECT_GE(points.fileCalls, 10);
}

// The framework's box needs memory itself.
TEST_F(ImportSweep, AFileFaultThatNoMemoryIsLeftToReport) {
  for (const char* name : {"a.dip", "a.txt"}) {
    CString path = folder.write(name, everySection("first"));
    const std::string report = ::reportOf(CFileException(CFileException::hardIO, 12345, path));
    const FailurePoints points = sweep("read fault without memory", memoryFaults(), [&](Fault& fault) {
      const ScriptedOperator user;
      const Set set = sweptSet(present);
      const Lines before = linesOf(*set);
      fault.during([&] {
        const FailingOs os(FailingOs::Call::read, 1, CFileException::hardIO);
        EXPECT_EQ(set->importDipoleX(path, false), 1);
      });
      EXPECT_EQ(fault.escaped(), Escaped::nothing);
      if (!fault.happened() || !user.messages.empty()) {
        EXPECT_EQ(user.texts(), Texts{report});
      }
      set->m_importFirst = 0;
      EXPECT_EQ(differences(before, linesOf(*set)), Lines{});
      expectUsable(*set);
    });
    EXPECT_GE(points.allocations, 5);
  }
}
