// A user without a plan: does one thing after the other with the windows of a set, by chance, while the host
// does things by chance too, and compares what comes of each with a simple model.
//
// Everything is operated on real windows. Questions are mostly answered by an operator, now and then in the
// real dialog. The run ends with the first thing that is not as it must be.
#pragma once

#include <memory>
#include <string>

#include "tests/support/TempFolder.h"
#include "tests/ui/endurance/MonkeyWork.h"
#include "tests/ui/endurance/ReadyOperator.h"
#include "tests/ui/endurance/SetModel.h"
#include "tests/ui/windows/Host.h"

class Monkey {
 public:
  // `examples`: the folder of the example files, with a separator at its end.
  Monkey(unsigned seed, std::string examples);
  ~Monkey();

  // Returns whether everything was as it must be; tells on standard output what was done.
  bool run(int count);

 private:
  static const MonkeyAction<Monkey> actions[];

  void countUse(int done);

  // On the list and the manager.
  void clickRow();
  void doubleClickRow();
  void rightClickRow();
  void pressKey();
  void selectAll();
  void typeNumber();
  void clickHeading();
  void showOrHide();
  void showOrHideAll();
  void deleteSelected();
  void toggleCurrentOnly();
  void checkBox();
  void average();
  void averageZip();
  void nameSelected();
  void colorSelected();
  void import();
  void exportSet();
  void closeManager();
  void openManager();
  void resizeManager();

  // On the editor and the coordinates.
  void openEditor();
  void stepEditor();
  void addInEditor();
  void deleteInEditor();
  void typeInEditor();
  void typeRadius();
  void pressInEditor();
  void useCoordinates();

  // By the host.
  void addByHost();
  void changeByHost();
  void cleanByHost();
  void newSet();
  void newSetInDialog();
  void copySet();
  void swapCopies();
  void dropCopy();

  bool isListOpen() const;
  HWND editor();  // opens it when none is open
  void command(UINT id);
  void expectRefilled();
  void makeSet(int dipoles);
  int sizeOfNextSet();
  void hideDialogs() const;
  int anyRow();  // -1: there is none
  bool isFresh() const;
  bool isCurrentOnly() const;
  bool isDynamic() const;
  void expectAfterChoice(const SetModel& before, bool captionWasRight);

  Chance m_chance;
  std::string m_examples;
  TempFolder m_folder;
  ReadyOperator m_operator;
  Host m_host;
  std::unique_ptr<CDipoleFacezq> m_copy;
  int m_copyTotal = 0;
  int m_setsMade = 0;
  std::unique_ptr<MonkeyUse> m_use;
  Efforts m_done;
};
