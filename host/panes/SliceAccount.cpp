#include "host/panes/SliceAccount.h"

namespace host {

namespace {

std::string dipolesText(int count) {
  return std::to_string(count) + (count == 1 ? " dipole" : " dipoles");
}

}  // namespace

std::string countText(const SliceAccount& account) {
  return "dipoles: " + std::to_string(account.onSlice) + " of " + std::to_string(account.total) +
         " on this slice";
}

std::string choiceText(const SliceAccount& account) {
  std::string text;
  if (account.switchedOff > 0)
    text = std::to_string(account.switchedOff) + " switched off";
  if (account.filtered > 0)
    text += (text.empty() ? "" : ", ") + std::to_string(account.filtered) + " filtered out";
  return text;
}

std::vector<std::string> warningTexts(const SliceAccount& account) {
  std::vector<std::string> texts;
  if (!account.isRegistered)
    texts.emplace_back("Not registered: dipoles are not drawn on this MRI");
  if (account.offPane > 0)
    texts.push_back(dipolesText(account.offPane) + " on this slice beyond the borders of this view");
  if (account.outside > 0)
    texts.push_back(dipolesText(account.outside) + " more than 300 mm away, not drawn");
  if (account.nowhere > 0)
    texts.push_back(dipolesText(account.nowhere) + " without a valid location");
  return texts;
}

}  // namespace host
