// The bar that tells where the crosshair is, and the commands that tell the viewer of frames beyond the
// head's.
#include <afxdlgs.h>

#include <algorithm>
#include <array>
#include <commctrl.h>
#include <stdexcept>

#include "host/session/PlaceTexts.h"
#include "host/text/PathText.h"
#include "host/text/Utf8.h"
#include "host/viewer/MainFrame.h"
#include "host/viewer/ScreenScale.h"

namespace host {

namespace {

constexpr LPCTSTR mniFilter =
    _T("Transforms to MNI (*.xfm; *.txt; *.mat; *.tfm)|*.xfm;*.txt;*.mat;*.tfm|All files (*.*)|*.*||");

// In the order of the menu.
constexpr std::array<const char*, 4> spaces = {"MNI152", "MNI305", "Colin27", ""};

// The widest place of a crosshair.
constexpr const char* widest = "L 188.8  S 188.8  A 188.8 mm";

}  // namespace

void MainFrame::showPlaces() {
  const PlaceTexts places = placeTexts(*m_session);
  const auto labelled = [](const std::string& label, const std::string& text) {
    return text.empty() ? CString() : fromUtf8(label + "  " + text);
  };
  const std::array<CString, placeParts> texts = {labelled("Crosshair", places.head),
                                                 labelled(places.scannerName, places.scanner),
                                                 fromUtf8(places.mni), fromUtf8(places.label)};
  bool isNew = false;  // what is known, not where it is
  for (int part = 0; part < placeParts; ++part) {
    const CString& text = texts.at(static_cast<std::size_t>(part));
    isNew = isNew || text.IsEmpty() != statusText(crosshairPart + part).IsEmpty() ||
            (part != labelPart - crosshairPart && widthOfText(text) > placeWidth(part));
    m_placeBar.SendMessage(SB_SETTEXTW, static_cast<WPARAM>(part),
                           reinterpret_cast<LPARAM>(text.GetString()));
  }
  if (isNew) {
    placePlaceParts();
  }
}

int MainFrame::placeWidth(int part) const {
  RECT place = {};
  m_placeBar.SendMessage(SB_GETRECT, static_cast<WPARAM>(part), reinterpret_cast<LPARAM>(&place));
  return static_cast<int>(place.right - place.left);
}

// Each part is as wide as it ever gets, so that nothing moves with the crosshair; the last has the rest.
void MainFrame::placePlaceParts() {
  const auto room = [this](const CString& text, const char* label) {
    const int widestPlace = widthOfText(fromUtf8(std::string(label) + "  " + widest));
    return text.IsEmpty() ? 0 : (std::max)(widthOfText(text), widestPlace);
  };
  const int crosshair = room(statusText(crosshairPart), "Crosshair");
  const int scanner = crosshair + room(statusText(scannerPart), "Scanner");
  const int mni = scanner + room(statusText(mniPart), "Colin27");
  const int edges[placeParts] = {crosshair, scanner, mni, -1};
  m_placeBar.SendMessage(SB_SETPARTS, placeParts, reinterpret_cast<LPARAM>(edges));
}

template <typename Statement>
void MainFrame::stateFrame(Statement statement) {
  try {
    statement();
  } catch (const std::exception& problem) {
    tell(problem);
  }
  showStatus();
}

void MainFrame::OnMniFile() {
  const CString path = askForName(true, nullptr, mniFilter);
  if (!path.IsEmpty()) {
    stateFrame([&] { m_session->readMni(path); });
  }
}

void MainFrame::OnIsInMni(UINT id) {
  stateFrame([&] { m_session->setMni({Affine(), spaces.at(id - ID_MNI_IS_152)}); });
}

void MainFrame::OnNoMni() {
  stateFrame([&] { m_session->forgetMni(); });
}

void MainFrame::OnUpdateMni(CCmdUI* item) {
  const std::optional<MniMap>& map = m_session->mni();
  const bool isStated = map && map->fromScanner == Affine();
  bool isChecked = false;
  if (item->m_nID == ID_MNI_NONE) {
    isChecked = !map;
  } else if (item->m_nID == ID_MNI_FILE) {
    isChecked = map && !isStated;
  } else {
    isChecked = isStated && map->space == spaces.at(item->m_nID - ID_MNI_IS_152);
  }
  item->SetCheck(isChecked ? 1 : 0);
  item->Enable(m_session->hasScannerFrame() ? TRUE : FALSE);
}

void MainFrame::OnAtlas(UINT id) {
  std::string argument = id == ID_ATLAS_AAL ? "aal" : "brodmann";
  if (id == ID_ATLAS_NONE) {
    m_session->forgetAtlas();
    showStatus();
    return;
  }
  if (id == ID_ATLAS_FILE) {
    const CString path = askForName(
        true, nullptr, _T("Images of labels (*.nii; *.nii.gz)|*.nii;*.nii.gz|All files (*.*)|*.*||"));
    if (path.IsEmpty()) {
      return;
    }
    argument = utf8Of(path);
  }
  stateFrame([&] { m_session->readAtlas(argument); });
}

void MainFrame::OnUpdateAtlas(CCmdUI* item) {
  const std::shared_ptr<const Atlas>& atlas = m_session->atlas();
  const std::string name = atlas ? atlas->name() : std::string();
  const bool isNamed = name == "aal" || name == "brodmann";
  const bool isChecked = item->m_nID == ID_ATLAS_AAL        ? name == "aal"
                         : item->m_nID == ID_ATLAS_BRODMANN ? name == "brodmann"
                         : item->m_nID == ID_ATLAS_FILE     ? atlas != nullptr && !isNamed
                                                            : atlas == nullptr;
  item->SetCheck(isChecked ? 1 : 0);
}

}  // namespace host
