// The picture that File, Save Picture keeps.
#include "host/dipoles/HeaderText.h"
#include "host/paint/PngFile.h"
#include "host/panes/ShownDipoles.h"
#include "host/text/PathText.h"
#include "host/text/Utf8.h"
#include "host/viewer/MainFrame.h"
#include "host/viewer/ScreenScale.h"

namespace host {

PageTexts MainFrame::pictureTexts() {
  const PaneContents contents = paneContents();
  PageTexts texts;
  texts.patientId = patientOf(*m_dipoles);
  const CString& path = m_session->setPath();
  texts.files = {(contents.head.isPhantom ? "" : "MRI ") + contents.head.name,
                 path.IsEmpty() ? std::string() : utf8Of(fileNameOf(path))};
  texts.settings = filterTexts(contents);
  texts.settings.push_back(toleranceText(contents));
  texts.settings.push_back(utf8Of(statusText(dipolePart)));
  texts.settings.push_back(utf8Of(statusText(countPart)));
  texts.wrong = wrongTexts(m_session->shownFindings());
  return texts;
}

Image MainFrame::currentPicture() {
  return fourPanes(pane(0).picture(), pane(1).picture(), pane(2).picture(), pane(3).picture(), pictureTexts(),
                   screenScale());
}

void MainFrame::OnSavePicture() {
  const CString path = askForName(false, _T("png"), _T("PNG pictures (*.png)|*.png|All files (*.*)|*.*||"));
  if (path.IsEmpty()) {
    return;
  }
  try {
    writePng(currentPicture(), path);
  } catch (const std::exception& problem) {
    tell(problem);
  }
}

}  // namespace host
