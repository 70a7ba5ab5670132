// The head whose MRI is on the screen, and where the head frame of the dipoles lies in it.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "host/head/HeadFrame.h"
#include "host/head/HeadSource.h"
#include "host/head/Volume.h"

namespace host {

struct Head {
  std::string name;                      // UTF-8, for captions: the file's name, or that of the phantom
  std::shared_ptr<const Volume> volume;  // never null
  HeadFrame frame;                       // provisional while there are no fiducials: good for looking around
  std::optional<Fiducials> fiducials;    // scanner mm
  // The points are made up, on the axes of a Neuromag head frame that is known: right for its files alone.
  bool arePointsAssumed = false;
  bool isPhantom = false;  // made up: nobody's head, so none that dipoles could belong to
  bool isAbsent = false;   // there is no MRI; the volume is one dark voxel
  HeadSource source{};     // what its file says of itself

  // Dipoles are drawn over the MRI only when it is: in a provisional frame they would lie in wrong places.
  bool isRegistered() const { return fiducials.has_value(); }
};

}  // namespace host
