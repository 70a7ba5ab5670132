// A random dipole file, and what its import must make of a model.
//
// The file holds static dipoles, moving ones that may replace them, and flags; it has no head sphere.
#pragma once

#include <map>
#include <random>
#include <string>
#include <vector>

#include "tests/collection/CollectionModel.h"

class ModelImport {
 public:
  using Dipole = CollectionModel::Dipole;

  // Makes up the file and carries it out on the model. The new dipoles of the model have no object yet.
  ModelImport(CollectionModel& model, std::mt19937& random);

  const std::string& fileText() const { return m_text; }
  bool asks() const { return m_asks; }                               // about the moving dipoles
  bool isAccepted() const { return m_isAccepted; }                   // what is to be answered
  const std::vector<std::string>& texts() const { return m_shown; }  // every message, in order
  const std::map<int, Dipole>& born() const { return m_born; }       // by slot: what the import has to make

 private:
  int whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_random); }
  Dipole bear(int slot);
  void addStatic(int row);
  void addMoving(int row);
  void addPlace(ModelDipole& dipole);
  void addFlags(int first);

  CollectionModel& m_model;
  std::mt19937& m_random;
  std::string m_text;
  std::vector<std::string> m_shown;
  std::map<int, Dipole> m_born;
  bool m_asks = false;
  bool m_isAccepted = false;
};
