// The manager's own icon, that of a dipole.
#include <gtest/gtest.h>

#include "tests/ui/windows/DrawnPixels.h"
#include "tests/ui/windows/Host.h"
#include "ui/resource.h"

namespace {

// As large as it is.
std::vector<COLORREF> picture(HICON icon, int size) {
  return drawnPixels(size,
                     [&](HDC context) { ::DrawIconEx(context, 0, 0, icon, 0, 0, 0, nullptr, DI_NORMAL); });
}

std::vector<COLORREF> resource(int id, int size) {
  const auto icon = static_cast<HICON>(::LoadImageW(::GetModuleHandleW(L"dipole.dll"), MAKEINTRESOURCEW(id),
                                                    IMAGE_ICON, size, size, LR_DEFAULTCOLOR));
  const std::vector<COLORREF> colors = picture(icon, size);
  ::DestroyIcon(icon);
  return colors;
}

TEST(ManagerIcon, IsTheDipoleThatIsShownInBothSizes) {
  Host host(1);
  host.openManager();
  for (const auto& [which, metric] : {std::pair{ICON_BIG, SM_CXICON}, std::pair{ICON_SMALL, SM_CXSMICON}}) {
    const auto icon =
        reinterpret_cast<HICON>(::SendMessageW(host.manager(), WM_GETICON, static_cast<WPARAM>(which), 0));
    ASSERT_NE(icon, nullptr) << which;
    const int size = ::GetSystemMetrics(metric);
    EXPECT_EQ(picture(icon, size), resource(IDI_DIPOLE_SHOWN, size)) << which;
    EXPECT_NE(picture(icon, size), resource(IDI_DIPOLE_HIDDEN, size)) << which;
  }
}

}  // namespace
