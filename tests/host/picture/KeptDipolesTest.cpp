// A picture over kept dipoles is the one that would be painted anew, pixel by pixel and depth by depth,
// whatever has changed in between.
#include <array>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <new>
#include <random>

#include "host/picture/ScenePainter.h"
#include "tests/host/head/Phantom.h"
#include "tests/support/FailingNew.h"
#include "tests/support/Thrown.h"

namespace {

using host::DepthPicture;
using host::DipoleScene;
using host::SceneCamera;
using host::ScenePainter;
using host::SceneStyle;
using host::SlicePlane;
using host::View;

// Everything that a picture is painted from.
struct Subject {
  DipoleScene scene;
  std::vector<SlicePlane> planes;
  SceneCamera camera{90, 70};
  SceneStyle style;
};

using Paint = void (ScenePainter::*)(DepthPicture&, const DipoleScene&, const std::vector<SlicePlane>&,
                                     const SceneCamera&, const SceneStyle&);

DepthPicture painted(ScenePainter& painter, Paint paint, const Subject& subject) {
  DepthPicture picture(subject.camera.width(), subject.camera.height(), {});
  (painter.*paint)(picture, subject.scene, subject.planes, subject.camera, subject.style);
  return picture;
}

DepthPicture anew(const Subject& subject) {
  ScenePainter painter;
  return painted(painter, &ScenePainter::paint, subject);
}

DepthPicture kept(ScenePainter& painter, const Subject& subject) {
  return painted(painter, &ScenePainter::paintKeeping, subject);
}

bool isSame(const DepthPicture& one, const DepthPicture& other) {
  if (one.image().pixels() != other.image().pixels()) {
    return false;
  }
  for (int row = 0; row < one.height(); ++row) {
    for (int column = 0; column < one.width(); ++column) {
      if (one.depth(column, row) != other.depth(column, row)) {
        return false;
      }
    }
  }
  return true;
}

SlicePlane planeAt(View view, double position) {
  static const host::Volume volume = phantom(tiltedFrame(), {30, 10, 20});
  static const host::HeadBox box = findHead(volume, tiltedFrame());
  return SlicePlane(volume, tiltedFrame(), box, view, position);
}

// Dipoles before and behind a slice, two of them in one place: the lower slot hides the other.
Subject someSubject() {
  Subject subject;
  subject.scene.dipoles = {{0, {10, 20, 30}, {230, 0, 0}, {0, 15, 0}},
                           {1, {-15, 5, -20}, {0, 200, 40}, {12, 3, 4}},
                           {2, {-15, 5, -20}, {20, 60, 240}, {}},
                           {3, {5, -20, -10}, {200, 200, 0}, {}}};
  subject.scene.currentSlot = 1;
  subject.scene.sphere = host::SceneSphere{{0, 0, 0}, 30.0};
  subject.scene.fiducials = {{'L', {20, 0, 20}}};
  subject.planes.push_back(planeAt(View::coronal, 0.0));
  subject.camera.lookFrom({20.0, 15.0});
  subject.camera.setScale(1.0);
  subject.style.seeThrough = 0.45;
  return subject;
}

struct Change {
  const char* what;
  std::function<void(Subject&)> make;
};

// One for each member that the painted dipoles hang on.
const std::vector<Change>& changes() {
  static const std::vector<Change> all = {
      {"one dipole less", [](Subject& s) { s.scene.dipoles.pop_back(); }},
      {"one dipole more",
       [](Subject& s) {
         s.scene.dipoles.push_back({5, {0, -9, 9}, {9, 9, 240}, {}});
       }},
      {"slot", [](Subject& s) { std::swap(s.scene.dipoles[1].slot, s.scene.dipoles[2].slot); }},
      {"place", [](Subject& s) { s.scene.dipoles[0].place.y += 1.0; }},
      {"depth", [](Subject& s) { s.scene.dipoles[0].place.z -= 1.0; }},
      {"colour", [](Subject& s) { s.scene.dipoles[0].colour.blue = 90; }},
      {"arrow",
       [](Subject& s) {
         s.scene.dipoles[1].arrow = {-12, 3, 4};
       }},
      {"standpoint", [](Subject& s) { s.camera.turn(5.0, 0.0); }},
      {"height of the standpoint", [](Subject& s) { s.camera.turn(0.0, 5.0); }},
      {"centre",
       [](Subject& s) {
         s.camera.setCentre({3, 0, 0});
       }},
      {"scale", [](Subject& s) { s.camera.zoom(1.1); }},
      {"moved across", [](Subject& s) { s.camera.pan(2, 0); }},
      {"moved down", [](Subject& s) { s.camera.pan(0, 2); }},
      {"width", [](Subject& s) { s.camera.resize(94, 70); }},
      {"height", [](Subject& s) { s.camera.resize(90, 74); }},
      {"background", [](Subject& s) { s.style.background.red += 40; }},
      {"ball", [](Subject& s) { s.style.ballRadius += 1.0; }},
      {"no arrows", [](Subject& s) { s.style.showArrows = false; }},
      {"fade", [](Subject& s) { s.style.fade = 0.9; }},
      {"reach of the fade", [](Subject& s) { s.style.fadeReach = 25.0; }},
  };
  return all;
}

// What is drawn over the dipoles, or below them.
const std::vector<Change>& changesAround() {
  static const std::vector<Change> all = {
      {"no slices", [](Subject& s) { s.planes.clear(); }},
      {"another slice", [](Subject& s) { s.planes[0] = planeAt(View::coronal, 15.0); }},
      {"one slice more", [](Subject& s) { s.planes.push_back(planeAt(View::sagittal, 5.0)); }},
      {"slices that hide", [](Subject& s) { s.style.seeThrough = 0.0; }},
      {"slices that hide less", [](Subject& s) { s.style.seeThrough = 0.8; }},
      {"no sphere", [](Subject& s) { s.style.showSphere = false; }},
      {"another sphere", [](Subject& s) { s.scene.sphere->radius = 25.0; }},
      {"no fiducials", [](Subject& s) { s.scene.fiducials.clear(); }},
      {"thicker lines", [](Subject& s) { s.style.lineWidth = 3.0; }},
  };
  return all;
}

}  // namespace

TEST(KeptDipoles, EachThingThatChangesThePictureChangesTheKeptOneAlike) {
  const Subject before = someSubject();
  for (const std::vector<Change>& all : {changes(), changesAround()}) {
    for (const Change& change : all) {
      Subject after = before;
      change.make(after);
      ScenePainter painter;
      ASSERT_TRUE(isSame(kept(painter, before), anew(before)));
      EXPECT_TRUE(isSame(kept(painter, after), anew(after))) << change.what;
      EXPECT_FALSE(isSame(anew(after), anew(before))) << change.what << " changes nothing";
      EXPECT_TRUE(isSame(kept(painter, before), anew(before))) << change.what << ", and back";
    }
  }
}

TEST(KeptDipoles, IsThePictureMadeAnewThroughAnyChanges) {
  std::mt19937 random(12);
  const auto below = [&](std::size_t count) { return static_cast<std::size_t>(random()) % count; };
  ScenePainter painter;
  const Subject first = someSubject();
  Subject subject = first;
  for (int round = 0; round < 400; ++round) {
    const std::vector<Change>& all = below(3) == 0 ? changesAround() : changes();
    if (below(4) == 0) {
      subject = first;
    }
    if (subject.planes.size() == 1 && subject.scene.dipoles.size() >= 3 && subject.scene.sphere) {
      all[below(all.size())].make(subject);
    } else {
      subject = first;
    }
    subject.scene.currentSlot = static_cast<int>(below(3));
    ASSERT_TRUE(isSame(kept(painter, subject), anew(subject))) << "round " << round;
  }
}

TEST(KeptDipoles, WhatFailedOnTheWayIsPaintedAnew) {
  const Subject before = someSubject();
  Subject after = before;
  for (const Change& change : {changes()[1], changes()[4], changes()[13]}) {
    change.make(after);
    int nth = 1;
    for (bool hasFailed = true; hasFailed; ++nth) {
      ScenePainter painter;
      static_cast<void>(kept(painter, before));
      DepthPicture picture(after.camera.width(), after.camera.height(), {});
      {
        const FailingNew failing(nth);
        (void)runsOutOfMemory(
            [&] { painter.paintKeeping(picture, after.scene, after.planes, after.camera, after.style); });
        hasFailed = failing.failed();
      }
      ASSERT_TRUE(isSame(kept(painter, before), anew(before))) << nth;
      ASSERT_TRUE(isSame(kept(painter, after), anew(after))) << nth;
    }
    EXPECT_GT(nth, 2) << change.what;
  }
}
