// "Import CTF" and "Export Excel" through the system's own file dialogs.
#include <gtest/gtest.h>

#include "platform/Utf.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPlaces.h"
#include "tests/ui/windows/Host.h"
#include "tests/ui/windows/Spy.h"
#include "ui/resource.h"

namespace {

using Texts = std::vector<std::string>;

constexpr auto openCaption = "Open";
constexpr auto saveCaption = "Save As";
constexpr int fileName = 0x47C;

const std::string examples = examplesFolder();

// A name, or several in quotes, and the dialog's own button.
Robot::Step giveName(const std::string& name) {
  return [name](HWND dialog) {
    ::SetDlgItemTextW(dialog, fileName, fromUtf8(name));
    ::PostMessageW(dialog, WM_COMMAND, IDOK, 0);
  };
}

void cancel(HWND dialog) {
  ::PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
}

std::string exampleFile(const char* name) {
  std::string path = examples + name;
  for (char& character : path) {
    character = character == '/' ? '\\' : character;
  }
  return path;
}

std::string ctfFile(int number) {
  const std::string label = "f" + std::to_string(number);
  return "File_Info\n{\n\tVERSION:\tCTF_DIPOLE_FILE_VERSION_5.0\n\tPATIENT:\tP\n}\n"
         "MEG_Sphere\n{\n\tORIGIN_X:\t0\n\tORIGIN_Y:\t0\n\tORIGIN_Z:\t5\n\tRADIUS:\t8\n}\n"
         "Dipoles\n{\n\t// xp (cm)\typ (cm)\tzp (cm)\txo\tyo\tzo\tMom(nAm)\tLabel\n"
         "\t1:\t1.00\t2.00\t3.00\t1\t0\t0\t5\t" +
         label + "\n}\n";
}

std::string total(int count, int first, int end) {
  return "Total imported dipoles:" + std::to_string(count) + " (" + std::to_string(first) + "-" +
         std::to_string(end) + ")\n";
}

TEST(ManagerImport, AddsTheDipolesOfTheChosenFile) {
  Host host(1);
  host.openManager();
  Robot robot;
  robot.when(openCaption, giveName(exampleFile("auditory.dip")));
  robot.when(messageCaption, answer(total(2, 1, 3)));
  host.choose(ID_DIPOLE_IMPORT_CTF);
  EXPECT_EQ(host.labels(), (Texts{"d1", "N100m_left", "N100m_right"}));
  EXPECT_EQ(host.column(10), host.labels());
  EXPECT_EQ(host.cell(1, 2), "52.0000");  // x of the host is y of the file, in mm
  EXPECT_EQ(host.cell(1, 3), "58.0000");
  EXPECT_EQ(host.cell(1, 4), "10.0000");
  EXPECT_EQ(host.cell(1, 9), "27.3000");
  EXPECT_EQ(host.updates(), 1);
}

TEST(ManagerImport, CancelAddsNothingAndTellsTheHost) {
  Host host(1);
  host.openManager();
  Robot robot;
  robot.when(openCaption, [&](HWND dialog) {
    EXPECT_FALSE(::IsWindowEnabled(host.manager()));
    cancel(dialog);
  });
  host.choose(ID_DIPOLE_IMPORT_CTF);
  EXPECT_EQ(host.labels(), Texts{"d1"});
  EXPECT_EQ(host.updates(), 1);
  EXPECT_TRUE(::IsWindowEnabled(host.manager()));
}

TEST(ManagerImport, TakesHundredsOfFilesChosenAtOnce) {
  const TempFolder folder;
  std::string names;
  for (int number = 1; number <= 400; ++number) {
    const std::string name = "patient with a long name, spike " + std::to_string(number) + ".dip";
    folder.write(name, ctfFile(number));
    names += '"' + name + "\" ";
  }
  Host host;
  host.openManager();
  Robot robot;
  // First into the folder, then the names.
  robot.when(openCaption, giveName(toUtf8(folder.path())));
  robot.when(openCaption, giveName(names));
  robot.when(messageCaption, answer(total(400, 0, 400)));
  host.choose(ID_DIPOLE_IMPORT_CTF);
  ASSERT_EQ(host.rows(), 400);
  Texts labels;
  for (int number = 1; number <= 400; ++number) {
    labels.push_back("f" + std::to_string(number));
  }
  EXPECT_EQ(host.labels(), labels);
  EXPECT_EQ(host.updates(), 1);
}

TEST(ManagerExport, WritesTheChosenFile) {
  const TempFolder folder;
  Host host(2);
  host.openManager();
  host.click(1);
  host.forget();
  Robot robot;
  robot.when(saveCaption, giveName(toUtf8(folder.path()) + "\\set.txt"));
  host.choose(ID_DIPOLE_EXPORT_EXCEL);
  const std::string bytes = folder.read("set.txt");
  ASSERT_EQ(bytes.size() % 2, 0U);
  std::string text;
  for (std::size_t at = 0; at < bytes.size(); at += 2) {
    ASSERT_EQ(bytes[at + 1], 0);
    text += bytes[at];
  }
  EXPECT_EQ(text,
            "The following data were exported from Veyrant for Microsoft Excel\n"
            "ID\t Latency\t Xp  Yp  Zp\t\tXo  Yo  Zo\t\tFitError  Moment  Lable \n"
            "0  0.50   1.00 10.00 100.00   1.00 0.00 1.00   0.25  0.12  d1 \n"
            "0  1.00   2.00 20.00 200.00   1.00 0.00 1.00   0.50  0.25  d2 \n");
  EXPECT_EQ(host.updates(), 0);
  EXPECT_EQ(host.selectedRows(), std::vector<int>{1});  // no refill
}

TEST(ManagerExport, CancelWritesNothing) {
  Host host(2);
  host.openManager();
  Robot robot;
  robot.when(saveCaption, &cancel);
  host.choose(ID_DIPOLE_EXPORT_EXCEL);
  EXPECT_EQ(host.updates(), 0);
}

TEST(ManagerExport, AsksBeforeItReplacesAFile) {
  const TempFolder folder;
  folder.write("old.txt", std::string_view("old"));
  Host host(1);
  host.openManager();
  Robot robot;
  robot.when(saveCaption, giveName(toUtf8(folder.path()) + "\\old.txt"));
  robot.when("Error", [](HWND box) {  // the system's question; it has no better caption
    EXPECT_NE(messageOf(box).find("already exists"), std::string::npos) << messageOf(box);
    press(box, IDNO);
  });
  robot.when(saveCaption, &cancel);
  host.choose(ID_DIPOLE_EXPORT_EXCEL);
  EXPECT_EQ(folder.read("old.txt"), "old");
}

TEST(ManagerExport, SaysWhenTheFileCannotBeWritten) {
  const TempFolder folder;
  folder.makeFolder("taken.txt");
  Host host(1);
  host.openManager();
  Robot robot;
  robot.when(saveCaption, giveName(toUtf8(folder.path()) + "\\missing\\set.txt"));
  robot.when(messageCaption, answer("File could not be opened "));
  host.choose(ID_DIPOLE_EXPORT_EXCEL);
  EXPECT_FALSE(folder.has("missing"));
}

}  // namespace
