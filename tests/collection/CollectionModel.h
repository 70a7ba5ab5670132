// A simple model of the collection: what it must hold after any sequence of operations.
//
// Dipoles are shared between models as they are between collections: a model of a copy holds the same ones.
// A dipole that no model holds any more must have been released.
#pragma once

#include <afx.h>

#include <array>
#include <memory>
#include <vector>

#include "record/Dipoleszq.h"

struct ModelDipole {
  const CDipoleszq* object = nullptr;  // the dipole of the collection under test
  int id = 0;
  int number = 0;
  int listItemId = -1;
  bool selected = false;
  COLORREF color = 65535;
  std::array<float, 3> colorF = {1.0F, 1.0F, 0.0F};
  std::array<double, 3> location = {100.0, 100.0, 100.0};
  std::array<double, 3> orientation = {1.0, 0.0, 1.0};
  double moment = 1.0;
  double fitError = 0.2;
  double latency = 0.0;
  int fitTag = 0;
  int display = 1;
  CString label = _T("Non");
  bool backedUp = false;
  std::array<double, 3> rawLocation = {};
  std::array<double, 3> rawOrientation = {};

  // Whether the object has exactly these values; numbers that are none equal each other.
  bool describesItsObject() const;
};

class CollectionModel {
 public:
  using Dipole = std::shared_ptr<ModelDipole>;

  static constexpr int slotCount = 160;  // as many as a sweep ever fills

  // The dipole that an index names, -1 for the current one; null when there is none.
  Dipole named(int index) const;

  int add(Dipole dipole);  // the new count
  void deleteCurrent();
  void deleteAt(int index, int shift);
  void clean();
  void reOrder();
  void reSort();
  Dipole step(int by);  // to the next (1) or the previous (-1) one
  void select(int index);
  void sort(int key);     // as sortDipoles does, pass by pass
  void backUp(int from);  // every dipole from a slot on, each once
  float range() const;

  std::vector<Dipole> slots = std::vector<Dipole>(slotCount);
  int total = 0;
  int current = 0;

 private:
  void closeGap(int slot);
  void compact();
};
