// A user without a plan, on the whole viewer: mouse and keys in the panes, every command of the menu, the
// view panel, files good and bad, the module's windows, sizes of all kinds. After each action what the viewer
// shows must agree with what it holds; at the end of each block of actions it must hold no more than before.
//
// The run ends with the first thing that is not as it must be. The same seed is the same user.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tests/host/viewer/endurance/HastyOperator.h"
#include "tests/host/viewer/windows/ViewerUser.h"
#include "tests/support/TempFolder.h"
#include "tests/ui/endurance/MonkeyWork.h"

class ViewerMonkey {
 public:
  // `examples`: the folder of the example files; `head`: a NIfTI head, both UTF-8. A head that is not there
  // is one more bad file.
  ViewerMonkey(unsigned seed, std::string examples, std::string head);
  ~ViewerMonkey();

  // Ends behind so many actions or minutes, whatever comes first. Returns whether everything was as it must
  // be; tells on standard output what was done.
  bool run(int count, int minutes);

 private:
  static const MonkeyAction<ViewerMonkey> actions[];

  void runAction(int number);
  void endBlock(int done);
  static void compareUse(const MonkeyUse& now, const MonkeyUse& first, const char* when, int done);
  void checkViewer();
  void checkCounts();
  void checkManager();

  // In the panes.
  void clickPane();
  void dragPane();
  void dragGreyOrZoom();
  void panPane();
  void wheelPane();
  void doubleClickPane();
  void keyInPane();
  void pointInPane();

  // In the menu and the panel.
  void viewCommand();
  void registerCommand();
  void dipoleCommand();
  void helpCommand();
  void undoOrRedo();
  void undoThenRedo();
  void typeInPanel();
  void moveSlider();
  void colourBy();
  void checkBoxOfPanel();
  void clearFilter();

  // Files.
  void importFiles();
  void openMri();
  void newSet();
  void openSet();
  void openRecent();
  void openLargeSet();
  void saveSet();
  void exportSet();
  void savePicture();
  void dropFiles();

  // The module's windows.
  void openManager();
  void openEditor();
  void openCoordinates();
  void chooseRow();
  void commandOfManager();
  void checkBoxOfManager();
  void nameSelected();
  void sortByHeading();
  void pressInEditor();
  void typeInEditor();
  void pressInCoordinates();
  void closeModuleWindow();

  // The window itself.
  void resize();
  void minimiseAndRestore();
  void closeViewer();
  void waitQuiet();

  void chooseIfEnabled(UINT command);
  int anyPane();
  CPoint anyPoint(int pane);
  void send(int pane, UINT message, WPARAM keys, CPoint at);
  HWND moduleWindow(const char* caption);  // null when it is not open
  bool isManagerOpen();
  std::vector<std::string> someDipoleFiles();
  std::string setBytes();
  void makeFiles();
  void toStandard();
  void showAllPanes();

  Chance m_chance;
  std::string m_examples;
  std::string m_head;
  TempFolder m_folder;
  HastyOperator m_operator;
  std::unique_ptr<ViewerUser> m_user;
  std::unique_ptr<MonkeyUse> m_firstOpen;    // with one small set and all windows open
  std::unique_ptr<MonkeyUse> m_firstClosed;  // without a viewer
  Efforts m_done;
};
