// What the monkey does by the commands of the menu, and with files.
#include <gtest/gtest.h>

#include "host/exchange/SetFile.h"
#include "platform/Utf.h"
#include "tests/host/viewer/endurance/ViewerMonkey.h"

namespace {

constexpr int large = 30000;

}  // namespace

// A user cannot choose what is grey.
void ViewerMonkey::chooseIfEnabled(UINT command) {
  if (m_user->isEnabled(command)) {
    m_user->choose(command);
  }
}

void ViewerMonkey::viewCommand() {
  constexpr UINT last = ID_VIEW_FROM_BOTTOM;
  chooseIfEnabled(ID_VIEW_SHOW_DIPOLES +
                  static_cast<UINT>(m_chance.below(static_cast<int>(last - ID_VIEW_SHOW_DIPOLES + 1))));
}

void ViewerMonkey::registerCommand() {
  const UINT command =
      ID_REGISTER_FROM_SET + static_cast<UINT>(m_chance.below(ID_REGISTER_NONE - ID_REGISTER_FROM_SET + 1));
  constexpr const char* files[] = {"ch2.fiducials", "README.md", "missing.fiducials"};
  m_operator.files = {fromUtf8(m_examples + files[m_chance.below(3)])};
  chooseIfEnabled(command);
}

void ViewerMonkey::dipoleCommand() {
  constexpr UINT commands[] = {ID_DIPOLES_NEXT, ID_DIPOLES_NEXT, ID_DIPOLES_PREVIOUS, ID_DIPOLES_GO_TO};
  chooseIfEnabled(commands[m_chance.below(4)]);
}

void ViewerMonkey::helpCommand() {
  m_user->choose(m_chance.oneIn(2) ? ID_HELP_KEYS : ID_HELP_ABOUT);
}

void ViewerMonkey::undoOrRedo() {
  const UINT command = m_chance.oneIn(3) ? ID_DIPOLES_REDO : ID_DIPOLES_UNDO;
  for (int times = m_chance.oneIn(8) ? 20 : 1; times > 0; --times) {
    chooseIfEnabled(command);
  }
}

std::string ViewerMonkey::setBytes() {
  CMemFile file;
  {
    CArchive archive(&file, CArchive::store);
    EXPECT_NE(m_user->dipoles().serializeDipolesFace(archive), 0);
    archive.Close();
  }
  std::string bytes(static_cast<std::size_t>(file.GetLength()), '\0');
  file.SeekToBegin();
  file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
  return bytes;
}

void ViewerMonkey::undoThenRedo() {
  const std::size_t steps = m_user->session().history().undoSteps();
  if (steps == 0) {
    return;
  }
  m_user->session().noteChange();  // what the module has not told of yet
  const std::size_t stepsThen = m_user->session().history().undoSteps();
  const std::string before = setBytes();
  m_user->choose(ID_DIPOLES_UNDO);
  EXPECT_EQ(m_user->session().history().undoSteps() + 1, stepsThen);
  m_user->choose(ID_DIPOLES_REDO);
  EXPECT_TRUE(setBytes() == before) << "undo and redo changed the set";
  EXPECT_EQ(m_user->session().history().undoSteps(), stepsThen);
}

// Examples and what is none, one to three of them.
std::vector<std::string> ViewerMonkey::someDipoleFiles() {
  const std::string files[] = {
      m_examples + "auditory.dip",     m_examples + "auditory.dip",      m_examples + "spikes.dip",
      m_examples + "moving.dip",       m_examples + "median.txt",        m_examples + "README.md",
      m_examples + "no such file.dip", m_folder.pathUtf8("bad.dip"),     m_folder.pathUtf8("bad.txt"),
      m_folder.pathUtf8("empty.dip"),  m_folder.pathUtf8("large.dipset")};
  std::vector<std::string> chosen;
  for (int count = 1 + m_chance.below(3); count > 0; --count) {
    chosen.push_back(files[m_chance.below(static_cast<int>(std::size(files)) - 1)]);
  }
  return chosen;
}

void ViewerMonkey::importFiles() {
  for (const std::string& file : someDipoleFiles()) {
    m_operator.files.push_back(fromUtf8(file));
  }
  m_user->choose(ID_FILE_IMPORT);
}

void ViewerMonkey::openMri() {
  if (m_chance.oneIn(3)) {
    m_user->choose(ID_FILE_PHANTOM);
    return;
  }
  const std::string heads[] = {m_head, m_folder.pathUtf8("bad.nii"), m_folder.pathUtf8("missing.nii.gz")};
  m_operator.files = {fromUtf8(heads[m_chance.below(3)])};
  m_user->choose(ID_FILE_OPEN_MRI);
}

void ViewerMonkey::newSet() {
  m_user->choose(ID_FILE_NEW_SET);
}

void ViewerMonkey::openSet() {
  const std::string sets[] = {m_folder.pathUtf8("saved 0.dipset"), m_folder.pathUtf8("saved 1.dipset"),
                              m_folder.pathUtf8("saved 2.dipset"), m_folder.pathUtf8("bad.dipset"),
                              m_folder.pathUtf8("half.dipset"),    m_folder.pathUtf8("missing.dipset"),
                              m_examples + "auditory.dip"};
  m_operator.files = {fromUtf8(sets[m_chance.below(static_cast<int>(std::size(sets)))])};
  m_user->choose(ID_FILE_OPEN_SET);
}

void ViewerMonkey::openRecent() {
  chooseIfEnabled(ID_FILE_RECENT_FIRST + static_cast<UINT>(m_chance.below(8)));
}

void ViewerMonkey::openLargeSet() {
  m_operator.files = {m_folder.path("large.dipset")};
  m_user->choose(ID_FILE_OPEN_SET);
}

void ViewerMonkey::saveSet() {
  m_user->choose(m_chance.oneIn(3) ? ID_FILE_SAVE_SET_AS : ID_FILE_SAVE_SET);
}

void ViewerMonkey::exportSet() {
  chooseIfEnabled(ID_FILE_EXPORT);
}

void ViewerMonkey::savePicture() {
  m_user->choose(ID_FILE_SAVE_PICTURE);
}

void ViewerMonkey::dropFiles() {
  std::vector<std::string> files = someDipoleFiles();
  if (m_chance.oneIn(4)) {
    files.push_back(m_folder.pathUtf8("saved 0.dipset"));
  }
  if (m_chance.oneIn(8)) {
    files.push_back(m_folder.pathUtf8("bad.nii"));
  }
  m_user->drop(files);
}

// Files that are no good, and one set with all the dipoles that there can be.
void ViewerMonkey::makeFiles() {
  m_folder.write("bad.dip", "DIPOLES 3\n1 2 three\n\x01\x02");
  m_folder.write("bad.txt", "latency x y z\n1 2 3\nnan inf -\n");
  m_folder.write("empty.dip", "");
  m_folder.write("bad.nii", std::string(400, 'n'));
  m_folder.write("bad.dipset", "this is no set of dipoles");
  CDipoleFace9File set;
  for (int i = 0; i < large; ++i) {
    set.addDipoleF(static_cast<float>(m_chance.below(140) - 70), static_cast<float>(m_chance.below(140) - 30),
                   static_cast<float>(m_chance.below(180) - 90));
    set.getDipole(i)->m_latency = i * 0.1;
    set.getDipole(i)->m_fitError = i % 100;
  }
  set.setCurrentDipole(0);
  host::writeSet(set, m_folder.path("large.dipset"));
  const std::string whole = m_folder.read("large.dipset");
  m_folder.write("half.dipset", std::string_view(whole).substr(0, whole.size() / 2));
}
