// Random sequences of all operations on three collections that are copied to and from each other, held
// against a simple model after each one. DIPOLE_SWEEP_OPERATIONS sets how many operations there are.
#include <climits>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <random>

#include "import/DipoleFace8Import01_CTF.h"
#include "tests/collection/CollectionModel.h"
#include "tests/collection/FaceFixture.h"
#include "tests/collection/ModelImport.h"
#include "tests/support/FailingNew.h"
#include "tests/support/FreeLog.h"
#include "tests/support/TempFolder.h"

namespace {

constexpr unsigned seed = 20061206;
constexpr int mostDipoles = 60;
constexpr int importOperation = -1;

using Face = CDipoleFace8Import01_CTF;
using Dipole = CollectionModel::Dipole;

int operations() {
  const char* text = std::getenv("DIPOLE_SWEEP_OPERATIONS");
  return text != nullptr ? static_cast<int>(std::strtol(text, nullptr, 10)) : 1000000;
}

struct Pair {
  std::unique_ptr<Face> face = std::make_unique<Face>();
  CollectionModel model;
};

class Sweep {
 public:
  // One operation on one of the collections; false: the model disagrees, and the test has failed.
  bool step() {
    m_log.clear();
    m_user.messages.clear();
    m_user.fileQuestions.clear();
    m_expectedTexts.clear();
    m_knownCount = m_alive.size();
    Pair& pair = m_pairs[whole(0, 2)];
    const int choice = whole(0, 999);
    m_operation = choice;
    if (whole(0, 1999) == 0) {
      m_operation = importOperation;
      importFile(pair);
    } else if (choice < 4) {
      copyBetween(pair);
    } else if (choice < 6) {
      EXPECT_EQ(pair.face->cleanDipoles(), 1);
      pair.model.clean();
    } else if (choice < 350) {
      pair.model.total < mostDipoles ? add(pair) : remove(pair);
    } else if (choice < 550) {
      remove(pair);
    } else if (choice < 580) {
      compact(pair);
    } else if (choice < 600) {
      leaveObjects(pair);
    } else if (choice < 700) {
      navigate(pair);
    } else if (choice < 705) {
      sort(pair);
    } else if (choice < 900) {
      set(pair);
    } else {
      query(pair);
    }
    return agrees();
  }

  int operation() const { return m_operation; }
  int imports() const { return m_imports; }

  // Every slot of the tables, behind the ones that the sweep uses too.
  bool restIsEmpty() const {
    for (const Pair& pair : m_pairs) {
      for (int slot = CollectionModel::slotCount; slot < DipoleTable::capacity; ++slot) {
        if (pair.face->m_dipoles[slot] != nullptr) {
          return false;
        }
      }
    }
    return true;
  }

 private:
  int whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_random); }
  bool chance(int percent) { return whole(1, 100) <= percent; }
  float coordinate() { return static_cast<float>(whole(-1000, 1000)) / 8.0F; }

  int anyIndex(const CollectionModel& model) {
    if (chance(25)) {
      const int odd[] = {-1, -1, -1, -2, INT_MIN, model.total, model.total + 1, 29999, 30000, INT_MAX};
      return odd[whole(0, 9)];
    }
    return model.total > 0 ? whole(0, model.total - 1) : 0;
  }

  // Takes over a dipole that the collection under test has just made.
  Dipole born(const ModelDipole& like, const CDipoleszq* object) {
    auto dipole = std::make_shared<ModelDipole>(like);
    dipole->object = object;
    m_alive.push_back({object, dipole});
    return dipole;
  }

  void added(Pair& pair, const ModelDipole& like, int result) {
    EXPECT_EQ(result, pair.model.total + 1);
    pair.model.add(born(like, pair.face->m_dipoles[pair.model.total]));
  }

  void add(Pair& pair) {
    ModelDipole like;
    switch (whole(0, 3)) {
      case 0:
        added(pair, like, pair.face->addDipole());
        break;
      case 1: {
        const float x[3] = {coordinate(), coordinate(), coordinate()};
        like.location = {static_cast<double>(x[0]), static_cast<double>(x[1]), static_cast<double>(x[2])};
        added(pair, like, pair.face->addDipoleF(x[0], x[1], x[2]));
        break;
      }
      case 2:
        addFromMoment(pair);
        break;
      default:
        addFromTemplate(pair);
        break;
    }
  }

  void addFromMoment(Pair& pair) {
    double p[3];
    double m[3];
    for (int axis = 0; axis < 3; ++axis) {
      p[axis] = static_cast<double>(coordinate());
      m[axis] = static_cast<double>(whole(-2, 2));
    }
    if (chance(5)) {
      EXPECT_EQ(
          chance(50) ? pair.face->addDipolePME(nullptr, m, 1.0) : pair.face->addDipolePME(p, nullptr, 1.0),
          0);
      return;
    }
    ModelDipole like;
    like.location = {p[0], p[1], p[2]};
    like.moment = std::sqrt(m[0] * m[0] + m[1] * m[1] + m[2] * m[2]);
    like.orientation = {m[0] / like.moment, m[1] / like.moment, m[2] / like.moment};
    like.fitError = static_cast<double>(whole(0, 100));
    added(pair, like, pair.face->addDipolePME(p, m, like.fitError));
  }

  // From a dipole of any collection, counted or left behind; the object in the very slot is one of them.
  void addFromTemplate(Pair& pair) {
    const CollectionModel& from = m_pairs[whole(0, 2)].model;
    const Dipole source = from.slots[static_cast<std::size_t>(whole(0, (std::min)(from.total + 2, 159)))];
    if (source == nullptr) {
      EXPECT_EQ(pair.face->addDipolex(nullptr), 0);
      return;
    }
    ModelDipole like = *source;
    like.selected = false;
    like.backedUp = false;
    like.rawLocation = {};
    like.rawOrientation = {};
    added(pair, like, pair.face->addDipolex(source->object));
  }

  void remove(Pair& pair) {
    if (chance(30)) {
      EXPECT_EQ(pair.face->deleteCurrentDipole(), 1);
      pair.model.deleteCurrent();
      return;
    }
    const int index = anyIndex(pair.model);
    const int shift = whole(-1, 2);
    EXPECT_EQ(pair.face->deleteDipole(index, shift), 1);
    pair.model.deleteAt(index, shift);
  }

  void compact(Pair& pair) {
    if (chance(50)) {
      EXPECT_EQ(pair.face->reOrderDipoles(), 1);
      pair.model.reOrder();
    } else {
      EXPECT_EQ(pair.face->reSortDipoles(), 1);
      pair.model.reSort();
    }
  }

  // As imports leave them: by lowering the count, or by an object in a slot behind it.
  void leaveObjects(Pair& pair) {
    CollectionModel& model = pair.model;
    if (chance(60)) {
      model.total -= whole(0, (std::min)(model.total, 4));
      pair.face->m_totalDipoles = model.total;
      return;
    }
    const int slot = model.total + whole(0, 4);
    pair.face->m_dipoles.store(slot, std::make_unique<CDipoleszq>());
    model.slots[static_cast<std::size_t>(slot)] = born(ModelDipole(), pair.face->m_dipoles[slot]);
  }

  void copyBetween(Pair& pair) {
    Pair& other = m_pairs[whole(0, 2)];
    const int kind = whole(0, 9);
    if (kind == 0) {
      pair = Pair();
      return;
    }
    if (kind < 5) {
      pair.face = std::make_unique<Face>(*other.face);
    } else {
      *pair.face = *other.face;
    }
    const CollectionModel copy = other.model;
    pair.model = copy;
  }

  void sort(Pair& pair) {
    const int key = whole(-1, 10);
    EXPECT_EQ(pair.face->sortDipoles(key), 1);
    if (key >= 0 && key <= 9) {
      pair.model.sort(key);
    }
  }

  void importFile(Pair& pair) {
    ++m_imports;
    ModelImport import(pair.model, m_random);
    m_expectedTexts = import.texts();
    if (import.asks()) {
      m_user.answer(import.isAccepted() ? IDYES : IDNO);
    }
    m_user.answerFiles({m_folder.write("set.dip", import.fileText())});
    EXPECT_EQ(pair.face->importCTFDipoles(), 1);
    EXPECT_EQ(m_user.answersLeft(), 0U);
    for (const auto& [slot, dipole] : import.born()) {
      dipole->object = pair.face->m_dipoles[slot];
      m_alive.push_back({dipole->object, dipole});
    }
  }

  void navigate(Pair& pair) {
    CollectionModel& model = pair.model;
    if (model.total < 1) {
      m_expectedTexts.emplace_back("No dipole available");
    }
    switch (whole(0, 3)) {
      case 0:
        EXPECT_EQ(pair.face->getNextDipole(), objectOf(model.step(1)));
        break;
      case 1:
        EXPECT_EQ(pair.face->getPreviousDipole(), objectOf(model.step(-1)));
        break;
      case 2: {
        const int index = anyIndex(model);
        EXPECT_EQ(pair.face->setCurrentDipole(index), model.total < 1 ? 0 : 1);
        model.select(index);
        break;
      }
      default:
        m_expectedTexts.clear();
        model.current = pair.face->m_currentDipole = chance(50) ? -1 : model.current;
        break;
    }
  }

  void set(Pair& pair) {
    const int index = anyIndex(pair.model);
    const Dipole dipole = pair.model.named(index);
    const int found = dipole != nullptr ? 1 : 0;
    ModelDipole nobody;
    ModelDipole& d = dipole != nullptr ? *dipole : nobody;
    switch (whole(0, 6)) {
      case 0: {
        d.color = static_cast<COLORREF>(whole(0, 0xFFFFFF));
        d.colorF = {static_cast<float>(d.color & 0xFF) / 256.0F,
                    static_cast<float>(d.color >> 8 & 0xFF) / 256.0F,
                    static_cast<float>(d.color >> 16 & 0xFF) / 256.0F};
        EXPECT_EQ(pair.face->setDipoleColor(index, d.color), 1);
        break;
      }
      case 1:
        d.listItemId = whole(-5, 5000);
        EXPECT_EQ(pair.face->setDipoleListItemID(index, d.listItemId), 1);
        break;
      case 2:
        d.label = m_labels[whole(0, 2)];
        EXPECT_EQ(pair.face->setDipoleName(index, d.label), 1);
        break;
      case 3: {
        const float x[3] = {coordinate(), coordinate(), coordinate()};
        d.location = {static_cast<double>(x[0]), static_cast<double>(x[1]), static_cast<double>(x[2])};
        EXPECT_EQ(pair.face->setDipoleLocation(index, x[0], x[1], x[2]), found);
        break;
      }
      case 4: {
        const float x[3] = {coordinate(), coordinate(), coordinate()};
        d.orientation = {static_cast<double>(x[0]), static_cast<double>(x[1]), static_cast<double>(x[2])};
        EXPECT_EQ(pair.face->setDipoleOrientation(index, x[0], x[1], x[2]), found);
        break;
      }
      case 5:
        setSelection(pair, index);
        break;
      default:
        backUp(pair);
        break;
    }
  }

  void setSelection(Pair& pair, int index) {
    const bool selected = chance(50);
    const bool inRange = index >= 0 && index < pair.model.total;
    EXPECT_EQ(pair.face->setDipoleSelection(index, selected), inRange ? 1 : 0);
    if (inRange && pair.model.named(index) != nullptr) {
      pair.model.named(index)->selected = selected;
    }
  }

  void backUp(Pair& pair) {
    EXPECT_EQ(pair.face->backupLocationRotationRaw(), 1);
    pair.model.backUp(0);
  }

  void query(Pair& pair) {
    const Face& face = *pair.face;
    const int index = anyIndex(pair.model);
    const Dipole dipole = pair.model.named(index);
    const ModelDipole* d = dipole.get();
    EXPECT_EQ(face.getDipole(index), objectOf(dipole));
    EXPECT_EQ(face.getCurrentDipole(), objectOf(pair.model.named(-1)));
    EXPECT_EQ(face.getDipoleListItemID(index),
              d != nullptr && pair.model.current >= 0 && index >= 0 ? d->listItemId : -1);
    double p[3] = {1.0, 1.0, 1.0};
    float f[3] = {1.0F, 1.0F, 1.0F};
    EXPECT_EQ(face.getDipoleLocation(index, p[0], p[1], p[2]), d != nullptr ? 1 : 0);
    EXPECT_EQ(p[2], d != nullptr ? d->location[2] : 0.0);
    EXPECT_EQ(face.getDipoleOrientation(index, f[0], f[1], f[2]), d != nullptr ? 1 : 0);
    EXPECT_EQ(face.getDipoleOrientationD(index, p[0], p[1], p[2]), d != nullptr ? 1 : 0);
    if (d == nullptr || !std::isnan(d->orientation[1])) {
      EXPECT_EQ(f[1], d != nullptr ? static_cast<float>(d->orientation[1]) : 0.0F);
      EXPECT_EQ(p[1], d != nullptr ? d->orientation[1] : 0.0);
    }
    EXPECT_EQ(face.getDipoleOrientationLength(index), d != nullptr ? 30.0 : 0.0);
    EXPECT_EQ(face.getMaxDipoleRange(), pair.model.range());
  }

  static const CDipoleszq* objectOf(const Dipole& dipole) {
    return dipole != nullptr ? dipole->object : nullptr;
  }

  bool agrees() {
    for (std::size_t i = 0; i < std::size(m_pairs); ++i) {
      const Pair& pair = m_pairs[i];
      EXPECT_EQ(pair.face->getTotalDipoles(), static_cast<unsigned long>(pair.model.total)) << i;
      EXPECT_EQ(pair.face->getCurrentDipoleID(), pair.model.current) << i;
      for (int slot = 0; slot < CollectionModel::slotCount; ++slot) {
        const ModelDipole* dipole = pair.model.slots[static_cast<std::size_t>(slot)].get();
        if (pair.face->m_dipoles[slot] != (dipole != nullptr ? dipole->object : nullptr)) {
          ADD_FAILURE() << "another dipole in slot " << slot << " of collection " << i;
        } else if (dipole != nullptr && !dipole->describesItsObject()) {
          ADD_FAILURE() << "other values in slot " << slot << " of collection " << i;
        }
      }
    }
    if (!m_expectedTexts.empty() || !m_user.messages.empty()) {
      EXPECT_EQ(m_user.texts(), m_expectedTexts);
    }
    expectReleases();
    return !testing::Test::HasFailure();
  }

  // What nobody holds any more has been released in this operation, and nothing else.
  void expectReleases() {
    EXPECT_FALSE(m_log.overflowed());
    std::size_t kept = 0;
    for (std::size_t i = 0; i < m_alive.size(); ++i) {
      if (m_alive[i].model.expired()) {
        EXPECT_GE(m_log.timesFreed(m_alive[i].object), 1);
        continue;
      }
      if (i < m_knownCount && m_log.timesFreed(m_alive[i].object) != 0) {
        ADD_FAILURE() << "a dipole was released that a collection still holds";
      }
      m_alive[kept++] = m_alive[i];
    }
    m_alive.resize(kept);
  }

  struct Alive {
    const void* object = nullptr;
    std::weak_ptr<ModelDipole> model;
  };

  std::mt19937 m_random{seed};
  ScriptedOperator m_user;
  TempFolder m_folder;
  const CString m_labels[3] = {_T(""), _T("L1"), _T("a label that is far too long to be kept inside")};
  std::vector<std::string> m_expectedTexts;
  std::vector<Alive> m_alive;
  std::size_t m_knownCount = 0;
  int m_operation = 0;
  int m_imports = 0;
  Pair m_pairs[3];
  FreeLog m_log;
};

}  // namespace

TEST(CollectionModel, AgreesWithTheCollectionsAfterEveryOperation) {
  const int count = operations();
  std::cout << "seed " << seed << ", " << count << " operations\n";
  const long long before = liveAllocations();
  {
    const auto sweep = std::make_unique<Sweep>();
    for (int i = 0; i < count; ++i) {
      ASSERT_TRUE(sweep->step()) << "operation " << i << " of kind " << sweep->operation();
      if (i % 4096 == 0) {
        ASSERT_TRUE(sweep->restIsEmpty()) << "operation " << i;
      }
    }
    EXPECT_GE(sweep->imports(), count / 4000);
  }
  EXPECT_EQ(liveAllocations(), before);
}
