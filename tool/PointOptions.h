// The arguments that tell where the fiducial points of a head lie, with one meaning in every command.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/audit/Finding.h"
#include "host/exchange/SetFrame.h"
#include "host/head/FramedPoints.h"
#include "host/head/HeadFile.h"
#include "tool/ImportSession.h"
#include "tool/InputFile.h"

namespace tool {

// What an MRI stands for that is left out.
inline constexpr const char* noMri = "none";

// Why a head that was opened has no points, for a sentence.
std::string whyWithoutPoints(const host::OpenedHead& opened);

// Takes points of a head that are no usual head's. Throws std::runtime_error when the user did not say so.
void takeUnusualPoints(host::OpenedHead& opened, const std::string& mri, bool takesUnusual);

// Whether positions of a file are in a head frame that takes fiducial points to carry to the host's.
bool needsPoints(const std::vector<InputFile>& files);

// The switch that lets CTF MRIs of version 2.1 in.
void addCtf21(CLI::App& command, bool& isTaken);

class PointOptions {
 public:
  // Adds the arguments to the command; this object has to live as long as the command.
  void addTo(CLI::App& command);

  bool hasPoints() const { return !m_points.empty(); }
  bool hasTransform() const { return !m_transform.empty(); }
  bool isGiven() const { return hasPoints() || hasTransform(); }
  // How the MRI is to be read.
  host::HeadReading reading() const { return {m_takesCtf21}; }
  // What excludes the points may refer to them.
  CLI::Option* fiducials() const { return m_option; }
  // The files that are named.
  std::vector<std::string> files() const { return {m_points, m_transform}; }

  // Where what is given comes from: "by the fiducial points of a.fiducials".
  std::string about() const;

  // The points that are given, mm, from either
  //   - three triples "nx,ny,nz lx,ly,lz rx,ry,rz": nasion, left ear, right ear; or
  //   - the name of a fiducial file, see host/head/FiducialFile.h.
  // Nothing when none are. Throws std::exception that names the file, the line and the cause, also when they
  // are no head's.
  std::optional<host::FramedPoints> points() const;

  // Registers the head by what is given; without points a transform takes those that the head has. Returns
  // what is to be said of it. Throws std::exception with the cause; what is given has to be something.
  std::vector<host::Finding> registerHead(host::Head& head) const;

  struct Known {
    host::KnownHead head;
    std::optional<host::Head> mri;  // registered
    std::vector<host::Finding> findings;
  };
  // What they tell of a head with an MRI, which may be empty or noMri: then of distances alone. Without any,
  // what the MRI tells. Throws std::exception with the cause, also when the MRI gives no points, or such as
  // are no usual head's and the choices do not accept them.
  Known known(const std::string& mri, const ImportChoices& choices) const;

 private:
  std::string m_points;
  std::string m_transform;
  bool m_takesCtf21 = false;
  CLI::Option* m_option = nullptr;
};

// For an import of the files: no points when none of them needs any. Throws std::runtime_error when a
// transform alone is known and a file is not Neuromag's.
host::CarryingHead headToImport(const host::KnownHead& head, const std::vector<InputFile>& files);

}  // namespace tool
