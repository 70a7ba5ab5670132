// What the monkey knows of a set and its list: how they were before an action, and how they must be after it.
#pragma once

#include <string>
#include <vector>

#include "tests/ui/windows/Host.h"

struct SetModel {
  explicit SetModel(const Host& host);

  // The order of the dipoles, whether each is shown, its label and colour.
  std::vector<const CDipoleszq*> dipoles;
  std::vector<int> shown;
  std::vector<std::string> labels;
  std::vector<COLORREF> colors;
  int current;

  std::vector<int> rows;    // those that are selected in the list
  std::vector<int> chosen;  // the slots whose list item is one of them

  // As it is when these have gone, or one has come; a new one is not compared.
  void removeChosen();
  void addNew();
  // Fails the run where the set is not like this. Its current dipole is not compared.
  void expect(const Host& host) const;
};

// The rows that are selected, by asking the list.
std::vector<int> rowsSelected(const Host& host);

// Holds for every set, after every action.
void expectWhole(const CDipoleFacezq& face);
// The list was just filled: one row for each dipole, in order, with its texts and image, none selected.
void expectFilled(const Host& host);
// The selection flags are those of the rows.
void expectFlags(const Host& host, const SetModel& before);
// Whether the open editor tells the current dipole and the total; also when none is open.
bool isCaptionRight(const Host& host);
void expectCaption(const Host& host);
