#include "host/panes/PaneAccount.h"

#include <cmath>

#include "host/head/Limits.h"

namespace host {

namespace {

std::string dipolesText(int count, const std::string& what) {
  return std::to_string(count) + (count == 1 ? " dipole " : " dipoles ") + what;
}

std::string partText(int part, int total) {
  return "dipoles: " + std::to_string(part) + " of " + std::to_string(total);
}

void addNowhere(std::vector<std::string>& texts, const VisibleCount& count) {
  if (count.nowhere > 0) {
    texts.push_back(dipolesText(count.nowhere, "without a valid location"));
  }
}

}  // namespace

std::string countText(const SliceAccount& account) {
  return partText(account.onSlice, account.total) + " on this slice";
}

std::string countText(const SceneAccount& account) {
  return partText(account.shown, account.total);
}

std::string choiceText(const VisibleCount& count) {
  std::string text;
  if (count.switchedOff > 0) {
    text = std::to_string(count.switchedOff) + " switched off";
  }
  if (count.filtered > 0) {
    text += (text.empty() ? "" : ", ") + std::to_string(count.filtered) + " filtered out";
  }
  return text;
}

std::string behindText(const SceneAccount& account) {
  return account.behindSlice > 0 ? dipolesText(account.behindSlice, "behind a slice, seen through it") : "";
}

std::vector<std::string> warningTexts(const SliceAccount& account) {
  std::vector<std::string> texts;
  if (!account.isRegistered) {
    texts.emplace_back("Not registered: dipoles are not drawn on this MRI");
  }
  if (account.withheld > 0) {
    texts.push_back(
        dipolesText(account.withheld, "close to this slice not drawn: below the level of the ears"));
  }
  if (account.offPane > 0) {
    texts.push_back(dipolesText(account.offPane, "on this slice beyond the borders of this view"));
  }
  if (account.outside > 0) {
    texts.push_back(dipolesText(
        account.outside, "more than " + std::to_string(std::lround(headReach)) + " mm away, not drawn"));
  }
  addNowhere(texts, account);
  return texts;
}

std::vector<std::string> warningTexts(const SceneAccount& account) {
  std::vector<std::string> texts;
  if (account.offPane > 0) {
    texts.push_back(dipolesText(account.offPane, "beyond the borders of this view"));
  }
  addNowhere(texts, account);
  return texts;
}

}  // namespace host
