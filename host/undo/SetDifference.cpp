#include "host/undo/SetDifference.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace host {

namespace {

constexpr std::uint16_t madeAnew = 0xFFFF;  // more than the slots of a table
static_assert(DipoleTable::capacity < madeAnew);

DipoleImage imageOfNew() {
  DipoleImage image;
  readDipole(CDipoleszq(), 0, image);
  return image;
}

// The entries in which one column differs, and their values.
struct ColumnNotes {
  std::vector<std::uint16_t> entries;
  std::vector<std::byte> values;

  void add(std::size_t entry, const std::byte* value, std::size_t width) {
    entries.push_back(static_cast<std::uint16_t>(entry));
    values.insert(values.end(), value, value + width);
  }
};

struct TextNotes {
  std::vector<std::uint16_t> entries;
  std::vector<const CString*> values;
};

struct DipoleNotes {
  std::array<ColumnNotes, dipoleColumns.count> numbers;
  std::array<TextNotes, 3> texts;

  void addNumbers(std::size_t entry, const DipoleImage& kept, const DipoleImage& other) {
    if (kept.numbers == other.numbers) {
      return;
    }
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      const auto [offset, width] = dipoleColumns.all[i];
      const std::byte* value = kept.numbers.data() + offset;
      if (std::memcmp(value, other.numbers.data() + offset, width) != 0) {
        numbers[i].add(entry, value, width);
      }
    }
  }

  void addTexts(std::size_t entry, const DipoleImage& kept, const DipoleImage& other) {
    for (std::size_t i = 0; i < texts.size(); ++i) {
      if (!isSameText(kept.texts[i], other.texts[i])) {
        texts[i].entries.push_back(static_cast<std::uint16_t>(entry));
        texts[i].values.push_back(&kept.texts[i]);
      }
    }
  }
};

}  // namespace

SetDifference::SetDifference(const SetImage& kept, const SetImage& other) {
  const std::vector<int> sources = entriesFor(kept, other);
  noteSetWide(kept, other);
  noteOrder(kept, other, sources);
  noteDipoles(kept, other, sources);
}

SetDifference::Shared SetDifference::share(PackedColumn column) {
  for (const Shared& known : m_columns) {
    if (*known == column) {
      return known;
    }
  }
  m_columns.push_back(std::make_shared<const PackedColumn>(std::move(column)));
  return m_columns.back();
}

void SetDifference::noteSetWide(const SetImage& kept, const SetImage& other) {
  if (kept.wide.numbers != other.wide.numbers || !areSameTexts(kept.wide.texts, other.wide.texts)) {
    m_wide = std::make_unique<const SetWideImage>(kept.wide);
  }
}

void SetDifference::noteOrder(const SetImage& kept, const SetImage& other, const std::vector<int>& sources) {
  bool isSame = kept.slots == other.slots;
  for (std::size_t i = 0; i < sources.size() && isSame; ++i) {
    isSame = sources[i] == static_cast<int>(i);
  }
  if (isSame) {
    return;
  }
  std::vector<std::uint16_t> packed;
  packed.reserve(sources.size());
  for (const int source : sources) {
    packed.push_back(source < 0 ? madeAnew : static_cast<std::uint16_t>(source));
  }
  m_slots = share(PackedColumn::of(kept.slots));
  m_sources = share(PackedColumn::of(packed));
}

void SetDifference::noteDipoles(const SetImage& kept, const SetImage& other,
                                const std::vector<int>& sources) {
  const DipoleImage fresh = imageOfNew();
  const auto notes = std::make_unique<DipoleNotes>();
  for (std::size_t i = 0; i < sources.size(); ++i) {
    const DipoleImage& source = sources[i] < 0 ? fresh : other.dipoles[static_cast<std::size_t>(sources[i])];
    notes->addNumbers(i, kept.dipoles[i], source);
    notes->addTexts(i, kept.dipoles[i], source);
  }
  for (std::size_t i = 0; i < notes->numbers.size(); ++i) {
    ColumnNotes& column = notes->numbers[i];
    if (column.entries.empty()) {
      continue;
    }
    Shared entries = share(PackedColumn::of(column.entries));
    m_numbers.push_back({i, std::move(entries), share({column.values, dipoleColumns.all[i].width})});
    column = {};
  }
  for (std::size_t i = 0; i < notes->texts.size(); ++i) {
    const TextNotes& column = notes->texts[i];
    if (column.entries.empty()) {
      continue;
    }
    m_texts.push_back({i, share(PackedColumn::of(column.entries)), PackedTexts(column.values)});
  }
}

SetImage SetDifference::orderedFrom(const SetImage& other) const {
  if (!m_slots) {
    return other;
  }
  SetImage image;
  image.wide = other.wide;
  image.slots = m_slots->values<std::uint16_t>();
  image.dipoles.reserve(image.slots.size());
  image.objects.reserve(image.slots.size());
  const DipoleImage fresh = imageOfNew();
  for (const std::uint16_t source : m_sources->values<std::uint16_t>()) {
    image.dipoles.push_back(source == madeAnew ? fresh : other.dipoles[source]);
    image.objects.push_back(source == madeAnew ? nullptr : other.objects[source]);
  }
  return image;
}

SetImage SetDifference::appliedTo(const SetImage& other) const {
  SetImage image = orderedFrom(other);
  if (m_wide) {
    image.wide = *m_wide;
  }
  for (const Numbers& numbers : m_numbers) {
    const auto [offset, width] = dipoleColumns.all[numbers.column];
    const std::vector<std::byte> values = numbers.values->bytes();
    const std::byte* from = values.data();
    for (const std::uint16_t entry : numbers.entries->values<std::uint16_t>()) {
      std::memcpy(image.dipoles[entry].numbers.data() + offset, from, width);
      from += width;
    }
  }
  for (const Texts& texts : m_texts) {
    std::vector<CString> values = texts.values.texts();
    auto from = values.begin();
    for (const std::uint16_t entry : texts.entries->values<std::uint16_t>()) {
      image.dipoles[entry].texts[texts.text] = std::move(*from++);
    }
  }
  return image;
}

std::size_t SetDifference::bytes() const {
  std::size_t bytes = sizeof *this + m_numbers.capacity() * sizeof(Numbers) +
                      m_texts.capacity() * sizeof(Texts) + m_columns.capacity() * sizeof(Shared);
  for (const Shared& column : m_columns) {
    bytes += column->memory();
  }
  for (const Texts& texts : m_texts) {
    bytes += texts.values.memory();
  }
  if (m_wide) {
    bytes += sizeof *m_wide;
    for (const CString& text : m_wide->texts) {
      bytes += static_cast<std::size_t>(text.GetLength() + 1) * sizeof(TCHAR);
    }
  }
  return bytes;
}

}  // namespace host
