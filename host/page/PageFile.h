// The file of a page: a template that others build, filled with data.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "host/exchange/Json.h"

namespace host {

struct PageParts {
  Json data;
  std::string head;   // NIfTI, packed; empty: none
  std::string atlas;  // likewise
};

// The template with its three elements filled: data as JSON of ASCII in which nothing is markup, volumes as
// base64. Throws std::runtime_error when an element is missing, not empty or there twice.
std::string filledPage(std::string_view page, const PageParts& parts);

// JSON in one line, of ASCII without <, > and &, so that it ends no element of a page.
std::string jsonForPage(const Json& json);

std::string base64Of(std::string_view bytes);

// share/dipole/page.html beside the folder that a program stands in. Throws std::runtime_error, with what to
// do, when it is not there.
std::string readPageTemplate(const std::filesystem::path& programFolder);

}  // namespace host
