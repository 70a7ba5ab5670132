// The fault sweep: a piece of work is done again and again, and its first, second, third ... allocation or
// file call fails, until it comes through without meeting its fault. Each point fails in several ways: once
// and from then on, and file calls for several causes, or silently, as a disk without room and a file that
// ends early do.
//
// A scenario is a function that prepares what it needs, does the work inside Fault::during, and then says
// what must hold, of the whole result when the fault did not happen. The sweep itself checks that nothing
// leaked: neither memory nor an open file.
#pragma once

#include <gtest/gtest.h>
#include <iostream>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/FailingNew.h"
#include "tests/support/FailingOs.h"
#include "tests/support/Thrown.h"

// One way to fail.
struct FaultKind {
  const char* name;
  bool isMemory;
  FailingOs::Call call = FailingOs::Call::none;  // of a file fault
  int cause = CFileException::none;              // likewise
  Lasting lasting = Lasting::once;
};

// What a piece of work threw.
enum class Escaped { nothing, noMemory, fileException, endOfArchive, somethingElse };

class Fault {
 public:
  Fault(const FaultKind& kind, int nth) : m_kind(kind), m_nth(nth) {}

  // Does the work while its fault lies in wait. What the work throws ends here.
  template <class Work>
  void during(Work work) {
    FailingOs os;
    std::optional<FailingNew> memory;
    if (m_kind.isMemory) {
      memory.emplace(m_nth, m_kind.lasting);
    } else {
      os.failAt(m_kind.call, m_nth, m_kind.cause, m_kind.lasting);
    }
    try {
      work();
    } catch (const std::bad_alloc&) {
      m_escaped = Escaped::noMemory;
    } catch (CMemoryException* exception) {
      exception->Delete();
      m_escaped = Escaped::noMemory;
    } catch (CFileException* exception) {
      m_cause = exception->m_cause;
      exception->Delete();
      m_escaped = Escaped::fileException;
    } catch (CArchiveException* exception) {
      m_escaped =
          exception->m_cause == CArchiveException::endOfFile ? Escaped::endOfArchive : Escaped::somethingElse;
      exception->Delete();
    } catch (...) {
      m_escaped = Escaped::somethingElse;
    }
    m_happened = m_kind.isMemory ? memory->failed() : os.failed;
    m_openFiles = os.openFiles;
  }

  const FaultKind& kind() const { return m_kind; }
  bool isMemory() const { return m_kind.isMemory; }
  bool isSilent() const { return !m_kind.isMemory && m_kind.cause == CFileException::none; }
  bool happened() const { return m_happened; }
  Escaped escaped() const { return m_escaped; }
  int cause() const { return m_cause; }  // of the file exception that escaped
  int openFiles() const { return m_openFiles; }

 private:
  FaultKind m_kind;
  int m_nth;
  bool m_happened = false;
  Escaped m_escaped = Escaped::nothing;
  int m_cause = CFileException::none;
  int m_openFiles = 0;
};

// How many places of a scenario can fail.
struct FailurePoints {
  int allocations = 0;
  int fileCalls = 0;
};

// The ways to fail, memory first.
const std::vector<FaultKind>& allFaults();
const std::vector<FaultKind>& memoryFaults();

// Prints the points and notes them down as properties of the test.
void report(const char* scenario, const FailurePoints& points);

// Lets every point of a scenario, void(Fault&), fail in each of the ways. Ends at the first that does not
// behave: the ones behind it would say the same.
template <class Scenario>
FailurePoints sweep(const char* name, const std::vector<FaultKind>& kinds, Scenario scenario) {
  FailurePoints points;
  {
    SCOPED_TRACE(testing::Message() << name << ", without a fault");
    Fault warmUp({"no fault", true}, 0);  // what is made once and kept must not look like a leak
    scenario(warmUp);
  }
  for (const FaultKind& kind : kinds) {
    int point = 0;
    for (bool happened = true; happened && !testing::Test::HasFailure(); point += happened ? 1 : 0) {
      const long long before = liveAllocations();
      {
        SCOPED_TRACE(testing::Message() << name << ", " << kind.name << ", point " << point + 1);
        Fault fault(kind, point + 1);
        scenario(fault);
        happened = fault.happened();
        EXPECT_EQ(fault.openFiles(), 0);
      }
      EXPECT_EQ(liveAllocations(), before) << name << ", " << kind.name << ", point " << point + 1;
    }
    if (kind.isMemory) {
      points.allocations = point;
    } else if (kind.call == FailingOs::Call::any) {
      points.fileCalls = point;
    }
  }
  report(name, points);
  return points;
}
