// What the layers above the base give their members.
#include <gtest/gtest.h>
#include <memory>
#include <type_traits>

#include "collection/DipoleFace3On3DView.h"

TEST(DipoleFace1Process, StartsWithAZeroRotation) {
  const auto face = std::make_unique<CDipoleFace1Process>();
  EXPECT_EQ(face->m_sphereRotation.m_center[0], 0.0);
  EXPECT_EQ(face->m_sphereRotation.m_center[1], 0.0);
  EXPECT_EQ(face->m_sphereRotation.m_center[2], 0.0);
  EXPECT_EQ(face->m_sphereRotation.m_radius, 0.0);
}

TEST(DipoleFaceLayers, FormAChain) {
  EXPECT_TRUE((std::is_base_of_v<CDipoleFace, CDipoleFace1Process>));
  EXPECT_TRUE((std::is_base_of_v<CDipoleFace1Process, CDipoleFace2On2DView>));
  EXPECT_TRUE((std::is_base_of_v<CDipoleFace2On2DView, CDipoleFace3On3DView>));
}
