#include "host/exchange/ForeignFile.h"

#include <utility>

#include "host/exchange/CtfText.h"
#include "host/exchange/NeuromagBinary.h"
#include "host/exchange/NeuromagSet.h"

namespace host {

namespace {

void tellLosses(ForeignFile& file, const Losses& losses) {
  if (!losses.isEmpty()) {
    file.told.push_back(losses.sentence());
  }
}

ForeignFile neuromagFile(bool isBinary, const CDipoleFace9File& set, const UnknownValues& unknown,
                         const std::optional<Fiducials>& points) {
  const NeuromagExport neuromag = exportNeuromag(set, unknown, points, isBinary);
  ForeignFile file;
  file.bytes = isBinary ? neuromagBinary(neuromag.file) : neuromagText(neuromag.file);
  if (!points) {
    file.told.emplace_back(
        "The fiducial points of the head are not known: in the Neuromag head frame of this file its ears "
        "were "
        "taken as symmetric.");
  }
  if (set.m_momentInNAm == 0) {
    file.told.emplace_back(
        "The unit of the moments is not known; other programs take those of this file for nAm.");
  }
  tellLosses(file, neuromag.losses);
  return file;
}

ForeignFile ctfFile(const CDipoleFace9File& set, const UnknownValues& unknown) {
  CtfText ctf = ctfText(set, unknown);
  ForeignFile file;
  file.bytes = std::move(ctf.text);
  tellLosses(file, ctf.losses);
  return file;
}

}  // namespace

ForeignFile foreignFile(ForeignFormat format, const CDipoleFace9File& set, const UnknownValues& unknown,
                        const std::optional<Fiducials>& points) {
  if (format == ForeignFormat::ctf) {
    return ctfFile(set, unknown);
  }
  return neuromagFile(format == ForeignFormat::bdip, set, unknown, points);
}

}  // namespace host
