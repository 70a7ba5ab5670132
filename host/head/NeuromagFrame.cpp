#include "host/head/NeuromagFrame.h"

namespace host {

namespace {

Vector3 unit(const Vector3& direction) {
  return direction * (1.0 / length(direction));
}

// The inverse of a map that turns and shifts alone, without the rounding of a general one.
Affine inverseOfRigid(const Affine& map) {
  const Vector3 rows[3] = {{map.column(0).x, map.column(1).x, map.column(2).x},
                           {map.column(0).y, map.column(1).y, map.column(2).y},
                           {map.column(0).z, map.column(1).z, map.column(2).z}};
  const Vector3 back = rows[0] * map.shift().x + rows[1] * map.shift().y + rows[2] * map.shift().z;
  return {rows[0], rows[1], rows[2], back * -1.0};
}

}  // namespace

Affine neuromagToScanner(const Fiducials& points) {
  const Vector3 x = unit(points.rightEar - points.leftEar);
  const Vector3 origin = points.leftEar + x * dot(points.nasion - points.leftEar, x);
  const Vector3 y = unit(points.nasion - origin);
  return {x, y, cross(x, y), origin};
}

Affine neuromagToHead(const Fiducials& points) {
  return HeadFrame(points).fromScanner().after(neuromagToScanner(points));
}

Affine headToNeuromag(const Fiducials& points) {
  return inverseOfRigid(neuromagToHead(points));
}

Affine symmetricNeuromagToHead() {
  return {{-1, 0, 0}, {0, 0, 1}, {0, 1, 0}, {0, 0, 0}};
}

Affine headToSymmetricNeuromag() {
  return inverseOfRigid(symmetricNeuromagToHead());
}

}  // namespace host
