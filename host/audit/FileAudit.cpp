#include "host/audit/FileAudit.h"

#include "host/audit/AuditPass.h"
#include "host/audit/CtfAudit.h"
#include "host/audit/MsiAudit.h"

namespace host {

namespace {

void run(AuditPass& pass) {
  const TextEncoding encoding(pass.file().text);
  if (pass.file().format == DipoleTextFormat::ctf) {
    CtfAudit(pass, encoding).run();
  } else {
    MsiAudit(pass, encoding).run();
  }
}

}  // namespace

AuditReport audit(const ImportedText& file, const CDipoleFace9File& set) {
  const std::set<FindingCode> none;
  AuditPass pass(file, set, nullptr, none);
  run(pass);
  return pass.takeReport();
}

RepairReport repair(const ImportedText& file, CDipoleFace9File& set, const std::set<FindingCode>& codes) {
  AuditPass pass(file, set, &set, codes);
  run(pass);
  return {pass.takeTold(), audit(file, set)};
}

std::set<FindingCode> allFindingCodes() {
  std::set<FindingCode> codes;
  for (const FindingMeaning& meaning : findingMeanings()) {
    codes.insert(meaning.code);
  }
  return codes;
}

}  // namespace host
