// Every pane tells when its head is none that the dipoles could belong to, or may be mirrored.
#include <gtest/gtest.h>

#include "host/paint/PictureText.h"
#include "host/panes/PaneWarnings.h"
#include "host/panes/ScenePane.h"
#include "tests/host/panes/SlicePaneFixture.h"

namespace {

using Texts = std::vector<std::string>;

Texts textsOf(const host::Head& head, int dipoles) {
  Texts texts;
  for (const host::CaptionLine& line : host::headWarnings(head, dipoles)) {
    EXPECT_EQ(line.colour, host::warningInk);
    texts.push_back(line.text);
  }
  return texts;
}

struct PaneWarnings : SlicePaneFixture {};

}  // namespace

TEST_F(PaneWarnings, DipolesInThePhantomAreWarnedOf) {
  const char* const phantomText = "Phantom: not this patient's head";
  EXPECT_EQ(textsOf(head, 1), Texts{});
  head.isPhantom = true;
  EXPECT_EQ(textsOf(head, 0), Texts{});
  EXPECT_EQ(textsOf(head, 1), Texts{phantomText});
  head.volume =
      std::make_shared<host::Volume>(std::array<int, 3>{2, 2, 2}, std::vector<float>(8),
                                     host::Affine({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}), false);
  EXPECT_EQ(textsOf(head, 1), (Texts{phantomText, "The MRI file does not say which side is left"}));
}

TEST_F(PaneWarnings, StandInEverySliceAndIn3D) {
  const auto warned = [&] {
    std::vector<bool> panes;
    for (const host::View view : allViews) {
      panes.push_back(count(paneOf(view).paint(contents()), host::warningInk) > 50);
    }
    host::ScenePane scene;
    scene.resize(400, 360);
    panes.push_back(count(scene.paint(contents()), host::warningInk) > 50);
    return panes;
  };
  head.isPhantom = true;
  EXPECT_EQ(warned(), (std::vector<bool>{false, false, false, false}));
  put({0, 0, 0}).m_show = 0;
  EXPECT_EQ(warned(), (std::vector<bool>{true, true, true, true}));
  head.isPhantom = false;
  EXPECT_EQ(warned(), (std::vector<bool>{false, false, false, false}));
}
