#include "tests/sweep/FaultSweep.h"

namespace {

constexpr FaultKind memoryOnce = {"memory once", true};
constexpr FaultKind memoryForGood = {"memory from then on", true, FailingOs::Call::none, 0,
                                     Lasting::fromThenOn};

constexpr FaultKind fileFault(const char* name, int cause, Lasting lasting) {
  return {name, false, FailingOs::Call::any, cause, lasting};
}

}  // namespace

const std::vector<FaultKind>& memoryFaults() {
  static const std::vector<FaultKind> kinds = {memoryOnce, memoryForGood};
  return kinds;
}

const std::vector<FaultKind>& allFaults() {
  static const std::vector<FaultKind> kinds = {
      memoryOnce,
      memoryForGood,
      fileFault("a generic fault once", CFileException::genericException, Lasting::once),
      fileFault("generic faults from then on", CFileException::genericException, Lasting::fromThenOn),
      fileFault("disk full once", CFileException::diskFull, Lasting::once),
      fileFault("disk full from then on", CFileException::diskFull, Lasting::fromThenOn),
      fileFault("access denied once", CFileException::accessDenied, Lasting::once),
      fileFault("in use once", CFileException::sharingViolation, Lasting::once),
      {"a read without bytes", false, FailingOs::Call::read},
      {"reads without bytes from then on", false, FailingOs::Call::read, CFileException::none,
       Lasting::fromThenOn},
      {"a write without bytes", false, FailingOs::Call::write},
      {"writes without bytes from then on", false, FailingOs::Call::write, CFileException::none,
       Lasting::fromThenOn},
  };
  return kinds;
}

void report(const char* scenario, const FailurePoints& points) {
  std::cout << "fault sweep: " << scenario << ": " << points.allocations << " allocations, "
            << points.fileCalls << " file calls\n";
  testing::Test::RecordProperty("allocations", points.allocations);
  testing::Test::RecordProperty("fileCalls", points.fileCalls);
}
