// Where the crosshair is, in every frame that is known of the head, as a user reads it.
#pragma once

#include <string>

#include "host/session/Session.h"

namespace host {

// UTF-8; empty: not known.
struct PlaceTexts {
  std::string head;         // "L 15.0  S 45.0  A 0.0 mm": the patient's sides instead of signs
  std::string scanner;      // "R 15.0  A 20.0  S 30.0 mm"
  std::string scannerName;  // what these millimetres are: "Scanner", or "MRI" when its file says others
  std::string mni;          // "MNI152  -15.0  20.0  30.0 mm": right, front, up positive, as MNI is quoted
  std::string label;        // "aal: Precentral_L", and whether it may be off; or why an atlas says nothing
};
PlaceTexts placeTexts(const Session& session);

// Of a place in mm of the head frame. Never "R 0.0".
std::string headPlaceText(const Vector3& head);

// What an MNI space is called, also one that nobody named.
std::string mniName(const MniMap& map);

}  // namespace host
