// What the viewer works on: one head with its MRI, one dipole set, and what the user does with them.
//
// No operation leaves half of its work behind: one that throws has changed nothing, but for what the module
// itself may have shown in message boxes. Failures are std::runtime_error, of points that make no head
// std::invalid_argument, with a text (UTF-8) for the user; exhausted memory is "not enough memory".
//
// Lengths are mm. Dipoles and the crosshair are in the head frame (x left, y up, z front), fiducial points in
// the scanner's (right, anterior, superior positive).
#pragma once

#include <afxwin.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/dipoles/DipoleColors.h"
#include "host/dipoles/ViewSettings.h"
#include "host/exchange/SetExport.h"
#include "host/head/Atlas.h"
#include "host/head/Head.h"
#include "host/session/Answers.h"
#include "host/session/AuditedSet.h"
#include "host/text/RecentFiles.h"
#include "host/undo/UndoHistory.h"
#include "module/dipole.h"

namespace host {

class JoinedSet;

enum class FiducialName { nasion, leftEar, rightEar };

class Session {
 public:
  // The collection outlives the session, and is its set as it is. The head is the phantom, registered. Throws
  // what an allocation throws.
  explicit Session(CDipoleFace9File& dipoles);

  CDipoleFace9File& dipoles() { return m_dipoles; }
  const Head& head() const { return m_head; }
  ViewSettings& view() { return m_view; }
  const ViewSettings& view() const { return m_view; }
  void resetView();

  // The MRI. Opening takes the fiducial points beside the file (see host/head/HeadFile.h); without them
  // the head is not registered, whatever was before. Points that were placed are forgotten, and the notice
  // says so when some of them were not the head's. What a user has to say is asked once while a file is
  // open: CTF MRI 2.1, points in the file that are no usual head's, dipoles of another head; without a yes
  // the file is not opened (false), its points are not taken, the head is not registered.
  bool openMri(const CString& path, const Ask& ask = {});
  void usePhantom();
  // What the user should know about the MRI that was opened last, such as fiducial points that do not fit;
  // one line for each matter.
  const std::string& notice() const { return m_notice; }

  // The grey values shown as black and white. Numbers that are not finite, or a white that is not above the
  // black, are ignored.
  GreyWindow window() const { return m_window; }
  void setWindow(const GreyWindow& window);
  void resetWindow();  // to the volume's own

  // Registration: where the head frame lies in the MRI. The crosshair stays where it is in the MRI.
  void registerHead(const Fiducials& points);  // throws std::invalid_argument, see frameIn
  void unregister();
  Fiducials fiducialsOfSet() const;  // see host/dipoles/SetFiducials.h; throws

  // Points that the user picks: each at the crosshair, then all of them at once.
  void placeFiducial(FiducialName name);
  std::array<bool, 3> placedFiducials() const;  // in the order of FiducialName
  // Those of them that are not points of the head already, in the head frame as it is now.
  std::array<std::optional<Vector3>, 3> placedPoints() const;
  void registerPlaced();  // throws std::invalid_argument also when one is missing

  // What is known of the head for frames other than its own; nothing of the phantom, which is nobody's.
  KnownHead knownHead() const;
  // The way from the scanner to MNI, as the user has given it for this head; nothing of a new one, and of one
  // that has no scanner coordinates. Nothing is ever guessed. setMni throws std::runtime_error for such a
  // head.
  const std::optional<MniMap>& mni() const { return m_mni; }
  void setMni(const MniMap& map);
  void readMni(const CString& path);  // a file, see host/exchange/SetFrame.h
  void forgetMni() { m_mni.reset(); }
  // Or millimetres of the MRI that its file states otherwise (host/head/MriSpace.h).
  bool hasScannerFrame() const;
  // The atlas whose labels are told of places, null: none. It stays when another head is opened.
  const std::shared_ptr<const Atlas>& atlas() const { return m_atlas; }
  void readAtlas(const std::string& argument);  // see host/head/AtlasFile.h; throws std::runtime_error
  void forgetAtlas() { m_atlas.reset(); }

  // A warning when the set brings fiducial points that cannot be of this head; empty when there is nothing to
  // say, when the head is not registered, and for the phantom.
  std::string headMismatch() const;

  // The point that all slices run through: each coordinate from -300 to 300; not finite: ignored.
  const Vector3& crosshair() const { return m_crosshair; }
  void setCrosshair(const Vector3& point);
  // False when there is no current dipole, or it lies nowhere within the crosshair's reach.
  bool goToCurrentDipole();

  // Files of dipoles.
  struct Failed {
    CString path;
    std::string cause;  // UTF-8, such as "it holds no dipoles"
  };
  struct ImportResult {
    int files = 0;               // those that brought dipoles
    int dipoles = 0;             // that came
    bool cancelled = false;      // by the progress function
    std::vector<Failed> failed;  // those that brought none, or broke off; the set has nothing of these
    // Whom the set, unless it was empty, and the files that brought dipoles name, see
    // host/dipoles/HeaderText.h; each once, in that order.
    std::vector<std::string> patients;
    bool mixesPatients = false;  // there is more than one of them
    // What the module told of the files, each with its file, without totals; and what found no room.
    std::vector<std::string> told;
    bool openedMri = false;  // one that a file names; notice() is about it
    // What is no trouble, a sentence each: the MRI that was opened, MRIs that are not beside their files.
    std::vector<std::string> notes;
  };
  // Called before each file; false: stop before it. `done` files of `total` are behind.
  using Progress = std::function<bool(int done, int total, const CString& path)>;
  // Adds the dipoles of CTF and Neuromag files (.dip, .bdip), 4D/MSI tables (.txt), tables of this program
  // (.csv, .tsv, .json) and sets to the set, as one step to undo, each file whole or not at all. What
  // belongs to the whole set stays that of a set with dipoles, see host/exchange/JoinedSet.h; its moments
  // count as nAm only when those it had do and every file with dipoles says so. The current folder stays.
  // What a progress function throws ends the import, and nothing has come.
  //
  // The MRI that a CTF file names is opened when it lies beside that file (host/dipoles/NamedMri.h) and no
  // other is open, else when the user says so. A file whose fiducial points are those of another head than
  // the one that is open then brings nothing unless the user says so. Each is asked once while a head is
  // open.
  ImportResult importFiles(const std::vector<CString>& paths, const Progress& progress, const Ask& ask = {});

  // What is to be said of the files that the dipoles of the set came from, as they are now, and of the
  // dipoles in this head; see host/session/AuditedSet.h. Valid until the next operation. Throws.
  const std::vector<StandingFinding>& findings() const;
  std::vector<Finding> shownFindings() const;  // those that bear on what is shown
  // Applies remedies of a file that a finding names, as one step to undo. Returns a sentence (UTF-8) for each
  // thing that was changed. Throws also when the dipoles have been changed since, see there.
  std::vector<std::string> repair(std::size_t file, const Repairs& repairs);

  // Replaces the set by that of a file; what belongs to the old one, the history too, is gone. A file that is
  // not there any more leaves the list of recent ones.
  void openSet(const CString& path);
  void saveSet(const CString& path);
  // What a set file does not keep of the set, see host/exchange/SetFile.h; empty: nothing is lost.
  std::string lossOfSaving() const;
  // A file for other programs, see host/exchange/SetExport.h; places by the head as it is registered. Returns
  // what the file cannot hold, and what was assumed, a sentence each.
  std::vector<std::string> exportSet(const CString& path, ExportFormat format);
  void newSet();  // empty, everything in it as in a new collection

  const CString& setPath() const { return m_setPath; }  // empty: it has none yet
  // Whether the set differs from what was last opened, saved or emptied. Undo back to that makes it saved
  // again.
  bool isUnsaved() const;
  RecentFiles& recentSets() { return m_recentSets; }
  RecentFiles& recentHeads() { return m_recentHeads; }

  // Values that are unknown from now on, by slots, beside those that are already; for noteChange to take note
  // of. They follow their dipoles, see host/dipoles/UnknownDipoles.h. Throws.
  void markUnknown(const UnknownValues& values);
  const UnknownDipoles& unknown() const { return m_history.unknown(); }

  // Takes note of what a command did to the set, for undo; true when there was a change. The viewer calls
  // it after each of its commands, and whenever the module asks for its views to be drawn anew. Without a
  // name it is found, see host/undo/ChangeName.h.
  bool noteChange(const CString& command = CString());
  UndoHistory::Moved undo() { return moveBy(&UndoHistory::undo); }
  UndoHistory::Moved redo() { return moveBy(&UndoHistory::redo); }
  const UndoHistory& history() const { return m_history; }

  // As the view settings say; null when dipoles have their own colours. Valid until the next operation.
  const DipoleColors* colours();

 private:
  // Where a registered head is looked at first: off the midline.
  static constexpr Vector3 amidTheBrain{15.0, 45.0, 0.0};

  // What of the view settings colours hang on.
  struct ColoursOf {
    ColourBy colourBy = ColourBy::own;
    DipoleFilter filter;
    ClusterRule clusters;

    friend bool operator==(const ColoursOf&, const ColoursOf&) = default;
  };
  struct NextHead;
  struct Importing;
  const Head& headOf(const Importing& import) const;
  NextHead nextHead(CString path, Head head, std::string notice) const;
  std::optional<NextHead> readHead(const CString& path, const Ask& ask, const JoinedSet* joined) const;
  void setHead(NextHead next) noexcept;
  void replaceSet(CDipoleFace9File& source, CString path);
  ImportResult importAll(const std::vector<CString>& paths, const Progress& progress, const Ask& ask);
  void importNext(const CString& path, Importing& import);
  void followMri(const ImportedFile& file, Importing& import) const;
  void takeOver(const JoinedSet& joined, std::vector<AuditedFile> files);
  template <typename Change>
  void changeWhole(Change change);
  UndoHistory::Moved moveBy(UndoHistory::Moved (UndoHistory::*move)());
  void markSaved();

  CDipoleFace9File& m_dipoles;
  Head m_head;
  CString m_headPath;  // empty: the phantom
  Answers m_answers;   // while it is open
  std::string m_notice;
  std::optional<MniMap> m_mni;
  std::shared_ptr<const Atlas> m_atlas;
  GreyWindow m_window;
  std::array<std::optional<Vector3>, 3> m_placed;  // scanner mm, in the order of FiducialName
  Vector3 m_crosshair;
  ViewSettings m_view;
  UndoHistory m_history;
  AuditedSet m_audited;
  mutable std::optional<std::vector<StandingFinding>> m_findings;  // none: to be looked for anew
  std::uint64_t m_savedState;
  bool m_isUncertain = false;  // there was no memory to look for a change
  CString m_setPath;
  RecentFiles m_recentSets;
  RecentFiles m_recentHeads;
  std::optional<DipoleColors> m_colours;
  ColoursOf m_coloursOf;
};

}  // namespace host
