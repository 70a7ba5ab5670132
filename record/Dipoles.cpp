#include "record/Dipoles.h"

#include <afxdlgs.h>

#include <cmath>
#include <initializer_list>

#include "headmodel/Triple.h"

namespace {

// 1/256, not 1/255: full intensity becomes 0.99609375, as the host's 3D view expects.
constexpr double colorFraction = 0.00390625;

float colorByteToFraction(COLORREF color, unsigned shift) {
  return static_cast<float>(static_cast<double>((color >> shift) & 0xFFU) * colorFraction);
}

void takeBackupOnce(CSpherezq& backup, const double (&values)[3]) {
  if (backup.m_radius == 0.0) {
    setTriple(backup.m_center, tripleOf(values));
    backup.m_radius = 1.0;
  }
}

}  // namespace

CDipoles::CDipoles() : m_label(_T("Non")) {}

CDipoles::CDipoles(const CDipoles&) = default;
CDipoles& CDipoles::operator=(const CDipoles&) = default;
CDipoles::~CDipoles() = default;

int CDipoles::getDipoleLocation(float& x, float& y, float& z) const {
  x = static_cast<float>(m_location[0]);
  y = static_cast<float>(m_location[1]);
  z = static_cast<float>(m_location[2]);
  return 1;
}

int CDipoles::getDipoleLocationD(double& x, double& y, double& z) const {
  x = m_location[0];
  y = m_location[1];
  z = m_location[2];
  return 1;
}

int CDipoles::getDipoleOrientation(double& x, double& y, double& z) const {
  x = m_orientation[0];
  y = m_orientation[1];
  z = m_orientation[2];
  return 1;
}

int CDipoles::setDipoleOrientation(double x, double y, double z) {
  setTriple(m_orientation, {x, y, z});
  return 1;
}

double CDipoles::getDipoleMoment() const {
  return m_moment;
}

int CDipoles::setDipoleMoment(double moment) {
  m_moment = moment;
  return 1;
}

int CDipoles::minusDipoleLocational(double dx, double dy, double dz) {
  m_location[0] -= dx;
  m_location[1] -= dy;
  m_location[2] -= dz;
  return 1;
}

int CDipoles::positionCM2MM(float factor) {
  for (double& coordinate : m_location) {
    coordinate *= static_cast<double>(factor);
  }
  return 1;
}

int CDipoles::normalizeOrientation1() {
  double& x = m_orientation[0];
  double& y = m_orientation[1];
  double& z = m_orientation[2];
  const auto length = static_cast<float>(std::sqrt(x * x + y * y + z * z));
  if (length > 0.0F && std::isfinite(length)) {
    const auto divisor = static_cast<double>(length);
    x /= divisor;
    y /= divisor;
    z /= divisor;
  }
  return 0;  // on purpose in every case, see the header
}

int CDipoles::backUpLocationRotationRaw() {
  takeBackupOnce(m_rawLocation, m_location);
  takeBackupOnce(m_rawOrientation, m_orientation);
  return 1;
}

float CDipoles::getMaxDipoleRange() const {
  auto largest = static_cast<float>(m_location[0]);
  for (const double coordinate : {m_location[1], m_location[2]}) {
    if (coordinate > static_cast<double>(largest)) {
      largest = static_cast<float>(coordinate);
    }
  }
  return largest;
}

bool CDipoles::chooseColor(COLORREF& color) {
  CColorDialog dialog;
  if (dialog.DoModal() != IDOK) {
    return false;
  }
  color = dialog.GetColor();
  return true;
}

int CDipoles::setColor() {
  COLORREF color = 0;
  if (chooseColor(color)) {
    setColorValue(color);
  }
  return 1;
}

void CDipoles::setColorValue(COLORREF color) {
  m_colorF[0] = colorByteToFraction(color, 0);
  m_colorF[1] = colorByteToFraction(color, 8);
  m_colorF[2] = colorByteToFraction(color, 16);
  m_color = color;
}

int CDipoles::getDipoleXYZ(CSpherezq* translation, CSpherezq* rotation, double& x, double& y, double& z) {
  return inertDisplayCoordinates(*this, translation, rotation, x, y, z);
}

int CDipoles::drawDipole(CSpherezq* /*translation*/, CSpherezq* /*rotation*/, int checkShow) {
  return checkShow != 0 && m_show == 0 ? 0 : 1;
}

int CDipoles::traceDipole() {
  return 1;
}

int CDipoles::drawCube(double /*x*/, double /*y*/, double /*z*/, double /*size*/) {
  return 1;
}

int CDipoles::drawCylinder(double /*x1*/, double /*y1*/, double /*z1*/, double /*x2*/, double /*y2*/,
                           double /*z2*/, double /*radius1*/, double /*radius2*/, double /*segments*/) {
  return 1;
}

int CDipoles::drawOrientation(double /*x*/, double /*y*/, double /*z*/) {
  return 1;
}

int CDipoles::drawPt(double /*x*/, double /*y*/, double /*z*/) {
  return 1;
}

int CDipoles::drawSphere(double /*x*/, double /*y*/, double /*z*/, double /*radius*/) {
  return 1;
}
