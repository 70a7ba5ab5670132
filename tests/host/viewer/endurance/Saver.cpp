// Saves one set again and again by the viewer's own command, until somebody kills it:
//
//   dipole_viewer_saver FILE DIPOLES GENERATION
//
// Before each save every dipole gets the number of the save, GENERATION first, as its moment. "saving N" is
// printed before the command and "saved N" behind it.
#include <cstdio>
#include <cstdlib>

#include "platform/Utf.h"
#include "tests/host/viewer/windows/ViewerUser.h"
#include "tests/ui/endurance/ReadyOperator.h"

namespace {

void tell(const char* what, int generation) {
  std::printf("%s %d\n", what, generation);
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("usage: dipole_viewer_saver FILE DIPOLES GENERATION\n", stderr);
    return 2;
  }
  ReadyOperator user;
  user.file = fromUtf8(argv[1]);
  ViewerUser viewer;
  CDipoleFacezq& set = viewer.dipoles();
  const int dipoles = std::atoi(argv[2]);
  for (int i = 0; i < dipoles; ++i) {
    const int column = i / 100;
    set.addDipoleF(static_cast<float>(i % 100), static_cast<float>(column), 7.0F);
  }
  for (int generation = std::atoi(argv[3]);; ++generation) {
    for (int slot = 0; slot < dipoles; ++slot) {
      set.getDipole(slot)->m_moment = generation;
    }
    viewer.session().noteChange();  // so that most of what follows is the file
    tell("saving", generation);
    viewer.frame().SendMessage(WM_COMMAND, ID_FILE_SAVE_SET);  // asks for the name once
    if (viewer.session().isUnsaved()) {
      std::printf("refused: %s\n", toUtf8(user.message).c_str());
      return 1;
    }
    tell("saved", generation);
    viewer.wait();
  }
}
