// The rows of the manager's list: what each cell says, without a window.
//
// A row shows its dipole as it was when the list was filled. Rows and columns count from 0. The columns,
// which are also the keys of CDipoleFace1Process::sortDipoles:
//   0 number, 1 latency (ms), 2..4 location x, y, z (mm), 5..7 orientation x, y, z, 8 fit error (percent),
//   9 moment, 10 label
#pragma once

#include <afxwin.h>

#include <vector>

#include "collection/DipoleFace.h"

class DipoleRows {
 public:
  static constexpr int columns = 11;
  static constexpr int shownImage = 0;
  static constexpr int hiddenImage = 1;

  static LPCTSTR heading(int column);

  DipoleRows() = default;
  // A row for each slot of the collection, up to the first empty one.
  explicit DipoleRows(const CDipoleFace& face);

  // Makes the rows' numbers the list items of the dipoles that they were made from; a dipole behind an empty
  // slot, which has no row, gets -1.
  void giveItemIds(CDipoleFace& face) const;

  int count() const { return static_cast<int>(m_rows.size()); }
  bool has(int row) const { return row >= 0 && row < count(); }
  bool isOf(int row, const CDipoleszq* dipole) const;  // whether there is such a row, made from this dipole

  // Of a row that there is. Numbers with four decimals.
  CString text(int row, int column) const;
  int image(int row) const;

  // The first row, from `start` on and around the end, whose first cell begins like this (or is this); -1:
  // none.
  int find(const CString& beginning, bool whole, int start) const;

 private:
  struct Row {
    explicit Row(const CDipoleszq& source);
    const CDipoleszq* dipole;  // compared only: it may be gone
    int number;
    bool shown;
    double values[9];  // columns 1 to 9
    CString label;
  };

  std::vector<Row> m_rows;
};
