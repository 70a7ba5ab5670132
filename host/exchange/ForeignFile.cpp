#include "host/exchange/ForeignFile.h"

#include <stdexcept>
#include <utility>

#include "host/exchange/CtfText.h"
#include "host/exchange/NeuromagBinary.h"
#include "host/exchange/NeuromagSet.h"
#include "host/exchange/SlicerMarkups.h"
#include "host/exchange/VtpFile.h"

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

void refuseOther(std::optional<FrameName> frame, FrameName own, const char* cause) {
  if (frame && *frame != own) {
    throw std::runtime_error(std::string(cause) + ", no other --frame");
  }
}

void tellFrame(ForeignFile& file, const SetFrame& frame, bool isChosen) {
  if (!isChosen && frame.name != FrameName::scanner) {
    file.told.emplace_back(
        "Where the head lies in the scanner is not known: places are in the head frame, x right, y front, z "
        "up, "
        "and fit no MRI as they are.");
  }
  if (!isChosen && frame.name == FrameName::scanner && frame.space == MriSpace::middle) {
    file.told.emplace_back(
        "The MRI has no scanner coordinates: places are in mm around its middle, x right, y front, z up, "
        "as in the NIfTI file that \"dipole head\" makes of it.");
  } else if (!isChosen && frame.name == FrameName::scanner && frame.space != MriSpace::scanner) {
    file.told.push_back("Places are in mm of the MRI, " + textOf(frame.space) +
                        " as its file says: x right, y front, z up.");
  }
  if (frame.isSymmetric) {
    file.told.emplace_back(
        "The fiducial points of the head are not known: in the Neuromag head frame of this file its ears "
        "were "
        "taken as symmetric.");
  }
}

ForeignFile vtpOf(const CDipoleFace9File& set, const UnknownValues& unknown, const SetFrame& frame,
                  bool isChosen, const SetPlaces* places) {
  VtpFile vtp = vtpFile(set, unknown, frame, places);
  ForeignFile file;
  file.bytes = std::move(vtp.xml);
  tellFrame(file, frame, isChosen);
  tellLosses(file, vtp.losses);
  return file;
}

ForeignFile slicerOf(ForeignFormat format, const CDipoleFace9File& set, const UnknownValues& unknown,
                     const SetFrame& frame, bool isChosen, const SetPlaces* places) {
  if (!frame.isRightFrontUp()) {
    throw std::runtime_error("3D Slicer takes places as right, front, up: not in the frame " +
                             frame.description);
  }
  SlicerMarkups markups = slicerMarkups(
      set, unknown, frame, format == ForeignFormat::slicer ? SlicerKind::points : SlicerKind::arrows, places);
  ForeignFile file;
  file.bytes = std::move(markups.json);
  tellFrame(file, frame, isChosen);
  tellLosses(file, markups.losses);
  return file;
}

}  // namespace

ForeignFile foreignFile(ForeignFormat format, const CDipoleFace9File& set, const UnknownValues& unknown,
                        const KnownHead& head, std::optional<FrameName> frame, const SetPlaces* places) {
  const bool hasRoom = format == ForeignFormat::slicer || format == ForeignFormat::slicerArrows ||
                       format == ForeignFormat::vtp;
  if (places != nullptr && !hasRoom) {
    throw std::runtime_error(noRoomForPlaces);
  }
  switch (format) {
    case ForeignFormat::neuromag:
    case ForeignFormat::bdip:
      refuseOther(frame, FrameName::neuromag, "a file of Neuromag is in the Neuromag head frame");
      return neuromagFile(format == ForeignFormat::bdip, set, unknown, head.points);
    case ForeignFormat::ctf:
      refuseOther(frame, FrameName::ctf, "a CTF file is in the CTF head frame");
      return ctfFile(set, unknown);
    default:
      break;
  }
  const SetFrame chosen = frame ? frameNamed(*frame, head) : patientFrame(head);
  return format == ForeignFormat::vtp ? vtpOf(set, unknown, chosen, frame.has_value(), places)
                                      : slicerOf(format, set, unknown, chosen, frame.has_value(), places);
}

}  // namespace host
