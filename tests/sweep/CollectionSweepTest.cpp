// Claim: what the collection does in memory is done whole or not at all when memory gives out anywhere.
#include "tests/record/Canvas.h"
#include "tests/sweep/FaultSweep.h"
#include "tests/sweep/SweptSets.h"

namespace {

const Texts notEnough = {"Not enough memory"};

// An operation that reports the lack of memory itself and gives `failure` then, `success` else.
template <class Operation>
FailurePoints sweepReported(const char* name, int failure, int success, Operation operation) {
  const Set done = sweptSet(4);
  EXPECT_EQ(operation(*done), success);
  const Lines after = linesOf(*done);
  return sweep(name, memoryFaults(), [&](Fault& fault) {
    const ScriptedOperator user;
    const Set set = sweptSet(4);
    const Lines before = linesOf(*set);
    int result = -1;
    fault.during([&] { result = operation(*set); });
    EXPECT_EQ(fault.escaped(), Escaped::nothing);
    EXPECT_EQ(result, fault.happened() ? failure : success);
    EXPECT_EQ(user.texts(), fault.happened() ? notEnough : Texts{});
    EXPECT_EQ(differences(fault.happened() ? before : after, linesOf(*set)), Lines{});
    expectUsable(*set);
  });
}

// An operation that lets the exception pass.
template <class Operation>
FailurePoints sweepThrowing(const char* name, Operation operation) {
  const Set done = sweptSet(4);
  operation(*done);
  const Lines after = linesOf(*done);
  return sweep(name, memoryFaults(), [&](Fault& fault) {
    const ScriptedOperator user;
    const Set set = sweptSet(4);
    const Lines before = linesOf(*set);
    fault.during([&] { operation(*set); });
    EXPECT_EQ(fault.escaped(), fault.happened() ? Escaped::noMemory : Escaped::nothing);
    EXPECT_EQ(user.texts(), Texts{});
    EXPECT_EQ(differences(fault.happened() ? before : after, linesOf(*set)), Lines{});
    expectUsable(*set);
  });
}

}  // namespace

TEST(CollectionSweep, AddDipole) {
  EXPECT_GE(sweepReported("addDipole", 0, 5, [](CDipoleFace& set) { return set.addDipole(); }).allocations,
            1);
}

TEST(CollectionSweep, AddDipoleF) {
  const auto operation = [](CDipoleFace& set) { return set.addDipoleF(1.0F, 2.0F, 3.0F); };
  EXPECT_GE(sweepReported("addDipoleF", 0, 5, operation).allocations, 1);
}

TEST(CollectionSweep, AddDipolePME) {
  const double place[] = {1.0, 2.0, 3.0};
  const double moment[] = {0.0, 3.0, 4.0};
  const auto operation = [&](CDipoleFace& set) { return set.addDipolePME(place, moment, 5.0); };
  EXPECT_GE(sweepReported("addDipolePME", 0, 5, operation).allocations, 1);
}

TEST(CollectionSweep, AddDipoleFromATemplate) {
  CDipoleszq source;
  fillMembers(source);
  source.m_label = _T("a label of the template that needs memory");
  const auto operation = [&](CDipoleFace& set) { return set.addDipolex(&source); };
  EXPECT_GE(sweepReported("addDipolex", 0, 5, operation).allocations, 2);
}

TEST(CollectionSweep, SortingIsDoneWithMemoryOrWithout) {
  const auto operation = [](CDipoleFace9File& set) {
    set.m_dipoles[0]->m_latency = 9000.0;
    return set.sortDipoles(1);
  };
  const Set sorted = sweptSet(4);
  operation(*sorted);
  const Lines after = linesOf(*sorted);
  const FailurePoints points = sweep("sortDipoles", memoryFaults(), [&](Fault& fault) {
    const ScriptedOperator user;
    const Set set = sweptSet(4);
    set->m_dipoles[0]->m_latency = 9000.0;
    EXPECT_NE(linesOf(*set), after);
    fault.during([&] { EXPECT_EQ(operation(*set), 1); });
    EXPECT_EQ(fault.escaped(), Escaped::nothing);
    EXPECT_EQ(user.texts(), Texts{});
    EXPECT_EQ(differences(after, linesOf(*set)), Lines{});
    expectUsable(*set);
  });
  EXPECT_GE(points.allocations, 1);
}

TEST(CollectionSweep, CopyingLeavesTheOriginalWholeAndShared) {
  const FailurePoints points = sweep("copy of a collection", memoryFaults(), [](Fault& fault) {
    Set set = sweptSet(4);
    const Lines before = linesOf(*set);
    Set copy;
    fault.during([&] { copy = std::make_unique<CDipoleFace9File>(*set); });
    EXPECT_EQ(fault.escaped(), fault.happened() ? Escaped::noMemory : Escaped::nothing);
    EXPECT_EQ(copy == nullptr, fault.happened());
    EXPECT_EQ(differences(before, linesOf(*set)), Lines{});
    expectUsable(*set);
    if (copy != nullptr) {
      set.reset();
      expectUsable(*copy);
    }
  });
  EXPECT_GE(points.allocations, 20);
}

TEST(CollectionSweep, AssigningIsDoneWholeOrNotAtAll) {
  const FailurePoints points = sweep("assignment", memoryFaults(), [](Fault& fault) {
    Set source = sweptSet(3);
    source->m_patient = _T("another patient, whose name needs memory");
    source->m_sphereCtf.m_auxText = _T("another text of the sphere that needs memory");
    const Set set = sweptSet(4);
    const Lines wanted = linesOf(*source);
    const Lines before = linesOf(*set);
    fault.during([&] { *set = *source; });
    EXPECT_EQ(fault.escaped(), fault.happened() ? Escaped::noMemory : Escaped::nothing);
    EXPECT_EQ(differences(wanted, linesOf(*source)), Lines{});
    EXPECT_EQ(differences(fault.happened() ? before : wanted, linesOf(*set)), Lines{});
    expectUsable(*source);
    source.reset();
    expectUsable(*set);
  });
  EXPECT_GE(points.allocations, 20);
}

TEST(CollectionSweep, NamingADipole) {
  const auto operation = [](CDipoleFace& set) {
    set.setDipoleName(1, _T("another name that needs memory as well"));
  };
  EXPECT_GE(sweepThrowing("setDipoleName", operation).allocations, 1);
}

// Whatever the points and the set hold, a registration is never left half done.
TEST(CollectionSweep, RegisteringNeedsNoMemory) {
  CSpherezq sphere;
  sphere.m_radius = 80.0;
  const auto operation = [&](CDipoleFace9File& set) {
    for (CFiduciaryPtzq& point : set.m_fiducialMri.m_points) {
      EXPECT_GT(point.m_label.GetLength(), 7);  // more than a text holds without memory
    }
    EXPECT_EQ(set.transferDipole3D_MRIFit(set.getMriFiducialVoxel(), true, nullptr, &sphere, 256, 256, 200,
                                          1.0F, 1.0F, 1.5F),
              1);
  };
  EXPECT_EQ(sweepThrowing("transferDipole3D_MRIFit", operation).allocations, 0);
}

TEST(CollectionSweep, DrawingAndAskingNeedNoMemory) {
  const Set set = sweptSet(4);
  set->setDimensionXYZ(128, 128, 128);
  set->setSpaceXYZ(20.0, 20.0, 20.0);
  for (int slot = 0; slot < 4; ++slot) {
    set->setDipoleLocation(slot, 10.0F, 10.0F, 10.0F);
    set->m_dipoles[slot]->m_display = 1;
  }
  Canvas canvas(256, 256);
  const FailurePoints points = sweep("drawing, asking, navigating", memoryFaults(), [&](Fault& fault) {
    canvas.clear();
    int drawn = 0;
    fault.during([&] {
      for (int slice = 60; slice < 70; ++slice) {
        drawn += set->drawDipoleAxial(canvas.dc(), slice, 2) + set->drawDipoleCoronal(canvas.dc(), slice, 2) +
                 set->drawDipoleSagittal(canvas.dc(), slice, 2);
      }
      double place[3];
      float color[3];
      set->getDipoleXYZ4Latency(-1e9, 1e9, place[0], place[1], place[2]);
      set->getDipolePtColorF(place, color);
      set->getNextDipole();
      set->getPreviousDipole();
      set->registerMRI_DimensionFit(256.0, 256.0, 256.0);
    });
    EXPECT_EQ(fault.escaped(), Escaped::nothing);
    EXPECT_FALSE(fault.happened());
    EXPECT_EQ(drawn, 30);
    EXPECT_FALSE(canvas.isEmpty());
  });
  EXPECT_EQ(points.allocations, 0);
}
