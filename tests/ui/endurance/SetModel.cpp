#include "tests/ui/endurance/SetModel.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "platform/Utf.h"

namespace {

constexpr int most = 30000;
constexpr int rowsToRead = 12;  // of a list with more rows, this many are read

std::vector<int> slotsOf(const CDipoleFacezq& face, const std::vector<int>& rows) {
  std::vector<int> slots;
  if (face.getCurrentDipoleID() < 0) {
    return slots;
  }
  for (int slot = 0; slot < face.m_totalDipoles; ++slot) {
    if (std::binary_search(rows.begin(), rows.end(), face.getDipole(slot)->m_listItemId)) {
      slots.push_back(slot);
    }
  }
  return slots;
}

template <typename Value>
void removeAt(std::vector<Value>& values, const std::vector<int>& places) {
  for (auto place = places.rbegin(); place != places.rend(); ++place) {
    values.erase(values.begin() + *place);
  }
}

void expectRow(const Host& host, int row) {
  const CDipoleszq& dipole = host.dipole(row);
  CString latency;
  latency.Format(_T("%.4f"), dipole.m_latency);
  EXPECT_EQ(host.cell(row, 0), std::to_string(dipole.m_number));
  EXPECT_EQ(host.cell(row, 1), toUtf8(latency));
  EXPECT_EQ(host.cell(row, 10), toUtf8(dipole.m_label));
  EXPECT_EQ(host.image(row), dipole.m_show != 0 ? 0 : 1);
}

std::string rightCaption(const Host& host) {
  return "Current dipole (Total dipoles):" + std::to_string(host.face->getCurrentDipoleID()) + '(' +
         std::to_string(host.face->m_totalDipoles) + ')';
}

}  // namespace

std::vector<int> rowsSelected(const Host& host) {
  std::vector<int> rows;
  const HWND list = host.list();
  const auto next = [list](int row) {
    return static_cast<int>(::SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED));
  };
  for (int row = next(-1); row >= 0; row = next(row)) {
    rows.push_back(row);
  }
  return rows;
}

SetModel::SetModel(const Host& host) : current(host.face->getCurrentDipoleID()) {
  for (int slot = 0; slot < host.face->m_totalDipoles; ++slot) {
    const CDipoleszq& dipole = host.dipole(slot);
    dipoles.push_back(&dipole);
    shown.push_back(dipole.m_show);
    labels.push_back(toUtf8(dipole.m_label));
    colors.push_back(dipole.m_color);
  }
  if (host.face->getDlgDipoleList() != nullptr) {
    rows = rowsSelected(host);
    chosen = slotsOf(*host.face, rows);
  }
}

void SetModel::removeChosen() {
  removeAt(dipoles, chosen);
  removeAt(shown, chosen);
  removeAt(labels, chosen);
  removeAt(colors, chosen);
}

void SetModel::addNew() {
  if (dipoles.size() < most) {
    dipoles.push_back(nullptr);
    shown.push_back(0);
    labels.emplace_back();
    colors.push_back(0);
  }
}

void SetModel::expect(const Host& host) const {
  ASSERT_EQ(static_cast<std::size_t>(host.face->m_totalDipoles), dipoles.size());
  for (std::size_t i = 0; i < dipoles.size(); ++i) {
    if (dipoles[i] != nullptr) {
      const CDipoleszq& dipole = host.dipole(static_cast<int>(i));
      ASSERT_EQ(&dipole, dipoles[i]) << i;
      ASSERT_EQ(dipole.m_show, shown[i]) << i;
      ASSERT_EQ(toUtf8(dipole.m_label), labels[i]) << i;
      ASSERT_EQ(dipole.m_color, colors[i]) << i;
    }
  }
}

void expectWhole(const CDipoleFacezq& face) {
  ASSERT_GE(face.m_totalDipoles, 0);
  ASSERT_LE(face.m_totalDipoles, most);
  for (int slot = 0; slot < face.m_totalDipoles; ++slot) {
    ASSERT_NE(face.getDipole(slot), nullptr) << slot;
  }
  const int current = face.getCurrentDipoleID();
  if (face.m_totalDipoles > 0) {
    ASSERT_GE(current, 0);
    ASSERT_LT(current, face.m_totalDipoles);
  } else {
    ASSERT_TRUE(current == 0 || current == -1) << current;
  }
}

void expectFilled(const Host& host) {
  const int total = host.face->m_totalDipoles;
  ASSERT_EQ(host.rows(), total);
  EXPECT_EQ(rowsSelected(host), std::vector<int>());
  for (int slot = 0; slot < total; ++slot) {
    ASSERT_EQ(host.dipole(slot).m_listItemId, slot);
  }
  const int step = (std::max)(1, total / rowsToRead);
  for (int row = 0; row < total; row += step) {
    expectRow(host, row);
  }
}

void expectFlags(const Host& host, const SetModel& before) {
  const std::vector<int> rows = rowsSelected(host);
  if (rows == before.rows) {
    return;  // perhaps nobody was told of anything
  }
  EXPECT_EQ(host.selected(), slotsOf(*host.face, rows))
      << testing::PrintToString(before.rows) << " were selected";
}

bool isCaptionRight(const Host& host) {
  return host.editor() == nullptr || captionOf(host.editor()) == rightCaption(host);
}

void expectCaption(const Host& host) {
  if (host.editor() != nullptr) {
    EXPECT_EQ(captionOf(host.editor()), rightCaption(host));
  }
}
