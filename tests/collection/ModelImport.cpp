#include "tests/collection/ModelImport.h"

#include <array>
#include <memory>

ModelImport::ModelImport(CollectionModel& model, std::mt19937& random) : m_model(model), m_random(random) {
  const int first = m_model.total;
  m_text = "Dipoles\n{\n// xp (cm)\n";
  for (int rows = whole(0, 4), row = 1; row <= rows; ++row) {
    addStatic(row);
  }
  m_text += "}\nFit_Results\n{\n// Latency (s) xp (cm)\n";
  // A collection that is empty behind a section ends the reading of the file.
  m_asks = m_model.total > 0;
  m_isAccepted = m_asks && whole(1, 100) <= 80;
  if (m_asks) {
    m_shown.emplace_back("This is moving dipoles, would you like to import?");
  }
  m_model.total = m_isAccepted ? first : m_model.total;
  for (int rows = whole(0, 4), row = 1; row <= rows; ++row) {
    addMoving(row);
  }
  m_text += "}\n";
  if (m_asks && m_model.total > 0 && whole(1, 100) <= 80) {
    addFlags(first);
  }
  m_model.backUp(first);
  m_shown.emplace_back("Can't set CTF dipole fiducial points without MEG sphere");
  m_shown.push_back("Total imported dipoles:" + std::to_string(m_model.total - first) + " (" +
                    std::to_string(first) + "-" + std::to_string(m_model.total) + ")\n");
}

ModelImport::Dipole ModelImport::bear(int slot) {
  auto dipole = std::make_shared<ModelDipole>();
  m_model.slots[static_cast<std::size_t>(slot)] = dipole;
  m_born[slot] = dipole;
  return dipole;
}

void ModelImport::addStatic(int row) {
  ModelDipole& dipole = *bear(m_model.total);
  m_text += std::to_string(row) + ": ";
  addPlace(dipole);
  dipole.label = _T("static");
  m_text += "static\n";
  m_model.current = m_model.total++;
  dipole.number = m_model.total;
}

// An object that is in the slot keeps what a row does not name.
void ModelImport::addMoving(int row) {
  ModelDipole skipped;
  ModelDipole* dipole = &skipped;
  if (m_isAccepted) {
    const Dipole held = m_model.slots[static_cast<std::size_t>(m_model.total)];
    dipole = held != nullptr ? held.get() : bear(m_model.total).get();
    m_model.current = m_model.total++;
    dipole->number = m_model.total;
  }
  dipole->id = whole(1, 9);
  dipole->fitTag = whole(1, 99);
  const int eighths = whole(0, 16);
  dipole->latency = eighths * 125.0;  // s to ms
  m_text += std::to_string(row) + ": " + std::to_string(dipole->id) + " " + std::to_string(dipole->fitTag) +
            " " + std::to_string(eighths * 0.125) + " ";
  addPlace(*dipole);
  dipole->fitError = whole(0, 100);
  dipole->label = _T("moving");
  m_text += std::to_string(dipole->fitError) + " moving\n";
}

// Nose, left, up in the file become left, up, nose; cm become mm.
void ModelImport::addPlace(ModelDipole& dipole) {
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const int quarters = whole(-80, 80);
    dipole.location[(axis + 2) % 3] = quarters * 2.5;
    m_text += std::to_string(quarters * 0.25) + " ";
  }
  for (std::size_t axis = 0; axis < 3; ++axis) {
    dipole.orientation[(axis + 2) % 3] = whole(-2, 2);
    m_text += std::to_string(dipole.orientation[(axis + 2) % 3]) + " ";
  }
  dipole.moment = whole(0, 100);
  m_text += std::to_string(dipole.moment) + " ";
}

// As many flags as there may or may not be dipoles; a flag for an empty slot makes one.
void ModelImport::addFlags(int first) {
  static constexpr std::array<float, 3> colors[] = {{1, 1, 0}, {0, 1, 0}, {1, 0, 0}, {0, 1, 1}};
  static constexpr int displays[] = {1, 2, 0, 1, 2};
  m_text += "Dipole_Flags\n{\n";
  const int rows = whole(0, 6);
  bool wasEmpty = false;
  for (int row = 0; row < rows; ++row) {
    const int slot = first + row;
    const Dipole held = m_model.slots[static_cast<std::size_t>(slot)];
    wasEmpty = wasEmpty || held == nullptr;
    ModelDipole& dipole = held != nullptr ? *held : *bear(slot);
    const int color = whole(0, 3);
    const int shape = whole(0, 4);
    dipole.colorF = colors[color];
    dipole.display = displays[shape];
    m_text +=
        std::to_string(row + 1) + ": " + std::to_string(color) + " " + std::to_string(shape) + " 1 1 1\n";
  }
  m_text += "}\n";
  if (first + rows != m_model.total || wasEmpty) {
    m_shown.emplace_back("It seems the CTF dipole file is not correct!");
  }
}
