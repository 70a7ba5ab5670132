// The affine map and its inverse.
#include <gtest/gtest.h>
#include <limits>

#include "host/head/Affine.h"

namespace {

using host::Affine;
using host::Vector3;

void expectNear(const Vector3& found, const Vector3& expected) {
  EXPECT_NEAR(found.x, expected.x, 1e-12);
  EXPECT_NEAR(found.y, expected.y, 1e-12);
  EXPECT_NEAR(found.z, expected.z, 1e-12);
}

const Affine skew({2, 1, 0}, {0, 3, 1}, {1, 0, 4}, {5, 6, 7});

}  // namespace

TEST(Affine, CarriesThePointByColumnsAndShift) {
  expectNear(skew({1, 10, 100}), {107, 37, 417});
}

TEST(Affine, GoesBackByItsInverse) {
  const Affine back = skew.inverse().value();
  expectNear(back({107, 37, 417}), {1, 10, 100});
  expectNear(back(skew({-0.5, 0.25, 3})), {-0.5, 0.25, 3});
}

TEST(Affine, DoesTheFirstMapFirst) {
  const Affine twice({2, 0, 0}, {0, 2, 0}, {0, 0, 2}, {1, 0, 0});
  expectNear(twice.after(skew)({1, 10, 100}), {215, 74, 834});
}

TEST(Affine, HasNoInverseWhenFlat) {
  EXPECT_FALSE(Affine({1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {}).inverse());
  EXPECT_FALSE(Affine({1, 0, 0}, {0, 0, 0}, {0, 0, 1}, {}).inverse());
  EXPECT_FALSE(Affine({1, 0, 0}, {0, 1, 0}, {1, 1, 1e-7}, {}).inverse());
}

TEST(Affine, HasAnInverseWhateverTheUnit) {
  EXPECT_TRUE(Affine({1e-4, 0, 0}, {0, 1e-4, 0}, {0, 0, 1e-4}, {}).inverse());
  EXPECT_TRUE(Affine({1e4, 0, 0}, {0, 1e4, 0}, {0, 0, 1e4}, {}).inverse());
}

TEST(Affine, HasNoInverseWhenANumberIsNotFinite) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(Affine({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {nan, 0, 0}).inverse());
  EXPECT_FALSE(Affine({1, 0, nan}, {0, 1, 0}, {0, 0, 1}, {}).inverse());
  EXPECT_FALSE(Affine({1e200, 0, 0}, {0, 1e200, 0}, {0, 0, 1e200}, {}).inverse());
}
