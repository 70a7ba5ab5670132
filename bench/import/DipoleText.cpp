#include "bench/import/DipoleText.h"

#include <cstdio>
#include <random>
#include <utility>

namespace {

// Writes fields and remembers where the converted ones stand.
class RowWriter {
 public:
  explicit RowWriter(DipoleText& file) : m_file(file) {}

  void text(const char* words) { m_file.text += words; }

  void integer(int value) { number(m_integers, "%d", value); }

  void real(const char* format, double value) { number(m_reals, format, value); }

  template <typename Distribution>
  void reals(int count, const char* format, Distribution& values, std::mt19937& random) {
    for (int i = 0; i < count; ++i) {
      text("\t");
      real(format, values(random));
    }
  }

  // Only now does the text no longer move.
  void finish() {
    for (const auto& [start, length] : m_integers) {
      m_file.integers.push_back(std::string_view(m_file.text).substr(start, length));
    }
    for (const auto& [start, length] : m_reals) {
      m_file.reals.push_back(std::string_view(m_file.text).substr(start, length));
    }
  }

 private:
  using Places = std::vector<std::pair<std::size_t, std::size_t>>;

  template <typename Value>
  void number(Places& places, const char* format, Value value) {
    char digits[64];
    const int length = std::snprintf(digits, sizeof digits, format, value);
    places.emplace_back(m_file.text.size(), static_cast<std::size_t>(length));
    m_file.text.append(digits, static_cast<std::size_t>(length));
  }

  DipoleText& m_file;
  Places m_integers;
  Places m_reals;
};

constexpr const char* sphere =
    "MEG_Sphere\n{\n\tORIGIN_X:\t0.5\n\tORIGIN_Y:\t0.1\n\tORIGIN_Z:\t5.0\n\tRADIUS:\t8.0\n}\n\n";

}  // namespace

void makeDipolesFile(int rows, DipoleText& file) {
  std::mt19937 random(20060511);
  std::uniform_real_distribution<double> place(-8.0, 8.0);
  std::uniform_real_distribution<double> direction(-1.0, 1.0);
  std::uniform_real_distribution<double> moment(10.0, 400.0);
  RowWriter row(file);
  row.text(sphere);
  row.text("Dipoles\n{\n\t// Dipole parameters ...\n");
  row.text("\t// xp (cm)\typ (cm)\tzp (cm)\txo\tyo\tzo\tMom(nAm)\tLabel\n");
  for (int i = 1; i <= rows; ++i) {
    row.text("\t");
    row.integer(i);
    row.text(":");
    row.reals(3, "%.2f", place, random);
    row.reals(3, "%.4f", direction, random);
    row.text("\t");
    row.real("%.6f", moment(random));
    row.text("\tspike_");
    row.text(std::to_string(i).c_str());
    row.text("\n");
  }
  row.text("}\n");
  row.finish();
}

void makeFitResultsFile(int rows, DipoleText& file) {
  std::mt19937 random(20060512);
  std::uniform_real_distribution<double> place(-8.0, 8.0);
  std::uniform_real_distribution<double> direction(-1.0, 1.0);
  std::uniform_real_distribution<double> moment(10.0, 400.0);
  std::uniform_real_distribution<double> percent(2.0, 30.0);
  RowWriter row(file);
  row.text(sphere);
  row.text(
      "Fit_Results\n{\n\t// \tTrial\tSample\tLatency (s)\txp (cm)\typ (cm)\tzp (cm)\txo\tyo\tzo\tMom(nAm)\n");
  for (int i = 1; i <= rows; ++i) {
    row.text("\t");
    row.integer(i);
    row.text(":\t");
    row.integer(1 + i / 100);
    row.text("\t");
    row.integer(i % 100);
    row.text("\t");
    row.real("%.4f", i % 100 / 1250.0);
    row.reals(3, "%.4f", place, random);
    row.reals(3, "%.4f", direction, random);
    row.text("\t");
    row.real("%.4f", moment(random));
    row.text("\t");
    row.real("%.4f", direction(random));  // the first ellipsoid axis, which is taken for the fit error
    for (int field = 0; field < 11; ++field) {
      char digits[32];
      std::snprintf(digits, sizeof digits, "\t%.4f", direction(random));
      row.text(digits);
    }
    for (int field = 0; field < 4; ++field) {
      char digits[32];
      std::snprintf(digits, sizeof digits, "\t%.2f", percent(random));
      row.text(digits);
    }
    row.text("\tmoving\n");
  }
  row.text("}\n");
  row.finish();
}

void makeMsiFile(int rows, DipoleText& file) {
  std::mt19937 random(20060513);
  std::uniform_real_distribution<double> place(-8.0, 8.0);
  std::uniform_real_distribution<double> direction(-1.0, 1.0);
  std::uniform_real_distribution<double> moment(10.0, 400.0);
  std::uniform_real_distribution<double> fraction(0.7, 1.0);
  RowWriter row(file);
  row.text("Latency\tx (cm)\ty\tz\tQx\tQy\tQz\tQ (nAm)\t...\n");
  for (int i = 1; i <= rows; ++i) {
    row.real("%.3f", i % 100 / 1.25);
    row.reals(3, "%.4f", place, random);
    row.reals(3, "%.4f", direction, random);
    row.reals(2, "%.4f", moment, random);
    row.reals(3, "%.4f", fraction, random);
    row.text("\t");
    row.integer(i % 7);
    row.text("\tall\tLT\tgood\t");
    row.integer(i);
    row.text("\tspike_");
    row.text(std::to_string(i).c_str());
    row.text("\n");
  }
  row.finish();
}
