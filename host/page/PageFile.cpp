#include "host/page/PageFile.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>
#include <system_error>

#include "host/text/FileBytes.h"
#include "host/text/PathText.h"

namespace host {

namespace {

// Where the content of an empty element goes.
std::size_t placeIn(std::string_view page, const std::string& type, const std::string& id) {
  const std::string start = "<script type=\"" + type + "\" id=\"" + id + "\">";
  const std::string element = start + "</script>";
  const std::size_t at = page.find(element);
  if (at == std::string_view::npos || page.find(element, at + 1) != std::string_view::npos) {
    throw std::runtime_error("the template of the page is not one: it has no single empty element " + id);
  }
  return at + start.size();
}

}  // namespace

std::string jsonForPage(const Json& json) {
  const std::string text = json.dump(-1, ' ', true, Json::error_handler_t::replace);
  std::string safe;
  safe.reserve(text.size());
  for (const char c : text) {
    switch (c) {
      case '<':
        safe += "\\u003c";
        break;
      case '>':
        safe += "\\u003e";
        break;
      case '&':
        safe += "\\u0026";
        break;
      default:
        safe += c;
    }
  }
  return safe;
}

std::string base64Of(std::string_view bytes) {
  constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t at = 0; at < bytes.size(); at += 3) {
    std::uint32_t bits = 0;
    const std::size_t count = bytes.size() - at < 3 ? bytes.size() - at : 3;
    for (std::size_t i = 0; i < 3; ++i) {
      bits = bits << 8U | (i < count ? static_cast<unsigned char>(bytes[at + i]) : 0U);
    }
    for (std::size_t i = 0; i < 4; ++i) {
      text += i <= count ? digits[bits >> (18U - 6U * static_cast<unsigned>(i)) & 63U] : '=';
    }
  }
  return text;
}

std::string filledPage(std::string_view page, const PageParts& parts) {
  struct Filling {
    std::size_t at;
    std::string text;
  };
  std::array<Filling, 3> fillings = {
      {{placeIn(page, "application/json", "page-data"), jsonForPage(parts.data)},
       {placeIn(page, "text/plain", "page-head"), base64Of(parts.head)},
       {placeIn(page, "text/plain", "page-atlas"), base64Of(parts.atlas)}}};
  std::sort(fillings.begin(), fillings.end(), [](const Filling& a, const Filling& b) { return a.at < b.at; });
  std::string filled;
  std::size_t done = 0;
  for (const Filling& filling : fillings) {
    filled += page.substr(done, filling.at - done);
    filled += filling.text;
    done = filling.at;
  }
  return filled += page.substr(done);
}

std::string readPageTemplate(const std::filesystem::path& programFolder) {
  const std::filesystem::path file = programFolder.parent_path() / "share" / "dipole" / "page.html";
  std::error_code error;
  if (!std::filesystem::exists(file, error)) {
    throw std::runtime_error("this build has no page: it needs nodejs and npm when it is built (" +
                             utf8Of(textOf(file)) + " is missing)");
  }
  try {
    return bytesOfFile(file);
  } catch (const std::runtime_error& failure) {
    throw std::runtime_error(utf8Of(textOf(file)) + ": " + failure.what());
  }
}

}  // namespace host
