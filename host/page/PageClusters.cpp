#include "host/page/PageClusters.h"

namespace host {

Json pageClusters(const PageSource& source, const PageWorld& /*world*/, Json& dipoles) {
  Json rows = Json::array();
  int passing = 0;
  for (int slot = 0; slot < source.set.m_totalDipoles; ++slot) {
    if (const CDipoleszq* const dipole = source.set.m_dipoles[slot]) {
      rows.push_back(0);
      passing += source.settings.filter.passes(*dipole, source.unknown.of(slot)) ? 1 : 0;
    }
  }
  dipoles["clusters"] = std::move(rows);
  return {{"text", ""}, {"scattered", passing}, {"removed", Json::array()}, {"clusters", Json::array()}};
}

}  // namespace host
