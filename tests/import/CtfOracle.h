// A second importer of CTF files, for tests: the described procedure step by step on plain bytes with sscanf,
// without regard to speed. It must run in the "C" locale.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "tests/import/CtfImportTest.h"

// sscanf is the point of this file.
// NOLINTBEGIN(cert-err34-c, cert-err33-c)

struct OracleDipole {
  int number = 0;
  int id = 0;
  int fitTag = 0;
  double latency = 0;
  double fitError = 0.2;
  std::array<double, 3> location = {100, 100, 100};
  std::array<double, 3> orientation = {1, 0, 1};
  double moment = 1;
  std::string label = "Non";
  int display = 1;
  std::array<float, 3> color = {1, 1, 0};
  bool backedUp = false;
};

class CtfOracle {
 public:
  // Yes or no to the questions, in turn.
  std::vector<bool> answers;

  std::map<int, OracleDipole> slots;  // those that hold a dipole
  int total = 0;
  int current = 0;
  int importFirst = 0;
  int importEnd = 0;
  std::string version = "non";
  std::string patient = "non";
  std::string mri = "non";
  int megOnly = 0;
  int coordinateType = 0;
  int momentInNAm = 0;
  bool sphereSet = false;
  std::array<double, 3> sphereOrigin = {};
  double sphereRadius = 0;
  std::map<int, std::array<double, 3>> mriPoints;   // by place: nasion, left ear, right ear
  std::map<int, std::array<double, 3>> headPoints;  // likewise
  std::vector<std::string> messages;

  void importFiles(const std::vector<std::string>& files) {
    importFirst = total;
    for (const std::string& file : files) {
      parse(file);
    }
    setFiducials();
    importEnd = total;
    for (int slot = importFirst; slot < importEnd; ++slot) {
      slots[slot].backedUp = true;
    }
    messages.push_back(totalMessage(importFirst, importEnd));
  }

 private:
  static constexpr int capacity = 30000;

  std::string m_bytes;
  std::size_t m_at = 0;
  std::size_t m_asked = 0;

  static bool has(const std::string& line, const char* words) {
    return line.find(words) != std::string::npos;
  }
  static bool isPassedOver(const std::string& line) { return has(line, "{") || has(line, "//"); }

  bool ask(const std::string& question) {
    messages.push_back(question);
    return answers.at(m_asked++);
  }

  bool readLine(std::string& line) {
    line.clear();
    while (m_at < m_bytes.size()) {
      const char c = m_bytes[m_at++];
      const bool isEnd = c == '\n' || c == '\r';
      if (isEnd && line.empty()) {
        continue;
      }
      if (!isEnd) {
        line += c;
      }
      if (isEnd || line.size() == 2048) {
        line.resize(std::strlen(line.c_str()));  // up to the first zero
        return true;
      }
    }
    return false;
  }

  static bool sameName(const std::string& line, const std::string& name) {
    bool same = line.size() == name.size();
    for (std::size_t i = 0; same && i < name.size(); ++i) {
      const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
      same = lower(line[i]) == lower(name[i]);
    }
    return same;
  }

  void parse(const std::string& bytes) {
    m_bytes = bytes;
    m_at = 0;
    const int first = total;
    std::string line;
    while (readLine(line)) {
      if (sameName(line, "File_Info")) {
        if (!readFileInfo()) {
          return;
        }
      } else if (sameName(line, "Model")) {
        if (!readModel()) {
          return;
        }
      } else if (sameName(line, "MEG_Sphere")) {
        readSphere();
      } else if (sameName(line, "Dipoles")) {
        if (readDipoles() == 0) {
          return;
        }
      } else if (sameName(line, "Fit_Results")) {
        if (ask(movingQuestion)) {
          total = first;
          if (readMoving() == 0) {
            return;
          }
        }
      } else if (sameName(line, "Dipole_Flags")) {
        readDetails(first, true);
      } else if (sameName(line, "Dipole_FitInfo")) {
        readDetails(first, false);
      } else if (sameName(line, "Fid_Points")) {
        readPoints();
      }
    }
  }

  bool readFileInfo() {
    std::string line;
    while (readLine(line)) {
      if (isPassedOver(line)) {
        continue;
      }
      if (has(line, "}")) {
        return true;
      }
      if (has(line, "VERSION:")) {
        version = line = line.substr(8);
      }
      if (has(line, "PATIENT:")) {
        patient = line = line.substr(8);
      }
    }
    return false;
  }

  bool readModel() {
    std::string line;
    while (readLine(line)) {
      if (isPassedOver(line)) {
        continue;
      }
      if (has(line, "}")) {
        return true;
      }
      if (has(line, "MODEL_TYPE:") && has(line, "MEG_ONLY")) {
        megOnly = 1;
      }
      if (has(line, "MRI_FILE:")) {
        mri = line = line.substr(9);
      }
    }
    return false;
  }

  void readSphere() {
    float values[4] = {};  // x, y, z, radius
    int count = 0;
    std::string line;
    while (readLine(line)) {
      if (isPassedOver(line)) {
        continue;
      }
      if (has(line, "}")) {
        break;
      }
      const int which = has(line, "ORIGIN_X:")   ? 0
                        : has(line, "ORIGIN_Y:") ? 1
                        : has(line, "ORIGIN_Z:") ? 2
                        : has(line, "RADIUS:")   ? 3
                                                 : -1;
      if (which < 0) {
        continue;
      }
      char token[2049];
      std::sscanf(line.c_str(), "%s  %f", token, &values[which]);
      values[which] *= 10.0F;
      ++count;
    }
    if (count < 4) {
      messages.push_back(fewSphereValues);
    }
    const std::array<double, 3> origin = {values[1], values[2], values[0]};
    const double radius = values[3];
    if (!sphereSet) {
      sphereOrigin = origin;
      sphereRadius = radius;
      sphereSet = true;
      return;
    }
    bool differs = std::fabs(radius - sphereRadius) > 6.0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      differs = differs || std::fabs(origin[axis] - sphereOrigin[axis]) > 3.0;
    }
    if (differs) {
      messages.push_back(sphereDiffers);
    }
  }

  // New axes from the file's.
  static std::array<double, 3> turned(const float (&v)[3]) { return {v[1], v[2], v[0]}; }

  int readDipoles() {
    bool cm = false;
    std::string line;
    char label[2049] = "Non";
    while (readLine(line)) {
      if (has(line, "(cm)")) {
        cm = true;
        coordinateType = 3;
        if (has(line, "(nAm)")) {
          momentInNAm = 1;
        }
        continue;
      }
      if (isPassedOver(line)) {
        continue;
      }
      if (has(line, "}")) {
        return endDipoles(cm);
      }
      int number;
      float p[3], q[3], moment;
      const int fields = std::sscanf(line.c_str(), "%d : %f %f %f   %f %f %f   %f  %s", &number, &p[0], &p[1],
                                     &p[2], &q[0], &q[1], &q[2], &moment, label);
      if (fields != 8 && fields != 9) {
        continue;
      }
      if (total >= capacity) {
        messages.push_back(noSpace);
        return endDipoles(cm);
      }
      for (float& value : p) {
        value = cm ? value * 10.0F : value;
      }
      if (p[0] > 300.0F || p[1] > 300.0F || p[2] > 300.0F) {
        char question[512];
        std::snprintf(question, sizeof question,
                      "It seems the dipole location is wrong (%.3f x %.3f x %.3f), do you like to import?",
                      double{p[0]}, double{p[1]}, double{p[2]});
        if (!ask(question)) {
          continue;
        }
      }
      OracleDipole dipole;
      current = total++;
      dipole.number = total;
      dipole.location = turned(p);
      dipole.orientation = turned(q);
      dipole.moment = moment;
      dipole.label = label;
      slots[current] = dipole;
    }
    return 0;
  }

  int endDipoles(bool cm) {
    if (!cm) {
      messages.push_back(unitMissing);
    }
    return total;
  }

  int readMoving() {
    bool cm = false;
    bool seconds = false;
    std::string line;
    while (readLine(line)) {
      if (has(line, "(cm)")) {
        cm = true;
        coordinateType = 3;
        if (has(line, "(nAm)")) {
          momentInNAm = 1;
        }
        if (has(line, "(s)")) {
          seconds = true;
        }
        continue;
      }
      if (isPassedOver(line)) {
        continue;
      }
      if (has(line, "}")) {
        return endMoving(cm, seconds);
      }
      int number, id, tag;
      float latency, p[3], q[3], moment, error;
      char label[2049];
      const int fields =
          std::sscanf(line.c_str(), "%d: %d %d %f  %f %f %f   %f %f %f   %f  %f %s", &number, &id, &tag,
                      &latency, &p[0], &p[1], &p[2], &q[0], &q[1], &q[2], &moment, &error, label);
      if (fields != 12 && fields != 13) {
        continue;
      }
      if (total >= capacity) {
        messages.push_back(noSpace);
        return endMoving(cm, seconds);
      }
      OracleDipole& dipole = slots[total];  // the one that is there, or a new one
      current = total++;
      for (float& value : p) {
        value = cm ? value * 10.0F : value;
      }
      dipole.number = total;
      dipole.id = id;
      dipole.fitTag = tag;
      dipole.latency = seconds ? latency * 1000.0F : latency;
      dipole.location = turned(p);
      dipole.orientation = turned(q);
      dipole.moment = moment;
      dipole.fitError = error;
      dipole.label = fields == 12 ? "Non" : label;
    }
    return 0;
  }

  int endMoving(bool cm, bool seconds) {
    if (!cm) {
      messages.push_back(unitMissing);
    }
    if (!seconds) {
      messages.push_back(latencyUnitMissing);
    }
    return total;
  }

  // Dipole_Flags or Dipole_FitInfo.
  void readDetails(int first, bool areFlags) {
    int slot = first;
    bool made = false;
    bool isOpen = true;
    std::string line;
    while (isOpen && readLine(line)) {
      if (isPassedOver(line)) {
        continue;
      }
      if (has(line, "}")) {
        isOpen = false;
        continue;
      }
      int a[7];
      float latency, error;
      char text[2049];
      const int fields =
          areFlags ? std::sscanf(line.c_str(), "%d: %d %d %d %d %d", &a[0], &a[1], &a[2], &a[3], &a[4], &a[5])
                   : std::sscanf(line.c_str(), "%d: %d %d %f %d %f %d %d %d %s", &a[0], &a[1], &a[2],
                                 &latency, &a[3], &error, &a[4], &a[5], &a[6], text);
      if (areFlags ? fields != 6 : fields != 9 && fields != 10) {
        continue;
      }
      if (slot >= capacity) {
        messages.push_back(noSpace);
        isOpen = false;
        continue;
      }
      made = made || slots.count(slot) == 0;
      OracleDipole& dipole = slots[slot++];
      if (areFlags) {
        static constexpr float colors[8][3] = {{1, 1, 0}, {0, 1, 0}, {1, 0, 0}, {0, 1, 1},
                                               {1, 0, 1}, {1, 1, 1}, {0, 0, 0}, {0, 0, 1}};
        const float(&color)[3] = colors[a[1] >= 0 && a[1] <= 6 ? a[1] : 7];
        dipole.color = {color[0], color[1], color[2]};
        dipole.display = a[2] == 0 || a[2] == 3 ? 1 : a[2] == 1 || a[2] == 4 ? 2 : 0;
      } else {
        dipole.id = a[1];
        dipole.fitTag = a[2];
        dipole.latency = latency * 1000.0F;
        dipole.fitError = error;
      }
    }
    if (!isOpen && (slot != total || made)) {
      messages.push_back(fileNotCorrect);
    }
  }

  void readPoints() {
    mriPoints.clear();
    std::string line;
    while (readLine(line)) {
      if (isPassedOver(line)) {
        continue;
      }
      if (has(line, "}")) {
        return;
      }
      if (!has(line, ":")) {
        continue;
      }
      const int which = has(line, "NASION:")     ? 0
                        : has(line, "LEFT_EAR")  ? 1
                        : has(line, "RIGHT_EAR") ? 2
                                                 : -1;
      if (which < 0) {
        continue;
      }
      int a, b, c;
      if (std::sscanf(line.substr(line.find(':') + 1).c_str(), "%d %d %d", &a, &b, &c) < 3) {
        messages.push_back("MRI fiducial point reading error: three integers expected");
        continue;
      }
      mriPoints[which] = {256.0 - a, 256.0 - c, 256.0 - b};
    }
  }

  void setFiducials() {
    if (!sphereSet) {
      messages.push_back(noSphere);
      return;
    }
    headPoints.clear();
    if (mriPoints.size() < 3) {
      headPoints = {{0, {0, 0, sphereRadius}}, {1, {sphereRadius, 0, 0}}, {2, {-sphereRadius, 0, 0}}};
      return;
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const double c = (mriPoints[1][axis] + mriPoints[2][axis] - 256) * 0.859375 * 0.5;
      for (int point = 0; point < 3; ++point) {
        headPoints[point][axis] =
            static_cast<double>(static_cast<float>((mriPoints[point][axis] - 128) * 0.859375 - c));
      }
    }
  }
};

// NOLINTEND(cert-err34-c, cert-err33-c)
