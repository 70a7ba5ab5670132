// The Dipole Edit dialog, opened by the host, and its user.
#pragma once

#include <gtest/gtest.h>

#include "platform/Utf.h"
#include "tests/ui/windows/DialogUser.h"
#include "tests/ui/windows/Host.h"
#include "ui/resource.h"

class EditorTest : public testing::Test {
 protected:
  // With so many dipoles, see Host.
  void open(int dipoles) {
    make(dipoles);
    show();
  }
  void make(int dipoles) { host = std::make_unique<Host>(dipoles); }
  void show() {
    EXPECT_EQ(host->face->dipoleEdit(&host->window), 1);
    pump();
    host->forget();
    window = host->editor();
  }
  // The manager with its own editor.
  void openFromManager(int dipoles) {
    make(dipoles);
    host->openManager();
    host->choose(ID_DIPOLE_EDIT);
    host->forget();
    window = host->editor();
  }

  std::string caption() const { return captionOf(window); }
  std::string field(int id) const { return longTextOf(window, id); }
  void enter(int id, const std::string& text) {
    type(window, id, text);
    pump();
  }
  void push(int button) {
    press(window, button);
    pump();
  }

  CDipoleFacezq& face() const { return *host->face; }
  CDipoleszq& dipole(int slot) const { return host->dipole(slot); }

  Messages messages;
  std::unique_ptr<Host> host;
  HWND window = nullptr;
};
