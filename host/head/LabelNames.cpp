#include "host/head/LabelNames.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <optional>
#include <set>
#include <stdexcept>
#include <system_error>
#include <vector>

#include "host/text/Blanks.h"
#include "host/text/FileBytes.h"
#include "host/text/PathText.h"
#include "host/text/Utf8.h"

namespace host {

namespace {

constexpr std::size_t mostBytes = std::size_t{1} << 20U;
constexpr std::size_t longestName = 200;                    // bytes
constexpr long long leastCode = 1000;                       // shorter numbers may be a part of a name
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";  // some editors begin a file with it

struct NameLine {
  std::size_t number = 0;
  Label value = 0;
  std::string_view rest;  // behind the value
  bool isTabbed = false;
};

[[noreturn]] void fail(std::size_t line, const std::string& cause) {
  throw std::runtime_error("line " + std::to_string(line) + ": " + cause);
}

std::optional<long long> wholeNumber(std::string_view text) {
  long long number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isWhole = error == std::errc() && end == text.data() + text.size();
  return isWhole ? std::optional(number) : std::nullopt;
}

NameLine lineOf(std::string_view text, std::size_t number) {
  const std::string_view word = firstWord(text);
  const std::optional<long long> value = wholeNumber(word);
  if (!value || *value < 0 || *value > std::numeric_limits<Label>::max()) {
    fail(number, "it does not begin with a label, a whole number from 0 to 65535");
  }
  if (utf8Length(text) != text.size()) {
    fail(number, "this is no UTF-8");
  }
  const bool hasControls = std::any_of(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) < 0x20 && c != '\t') || c == 0x7F;
  });
  if (hasControls) {
    fail(number, "there is a control character in it");
  }
  const std::string_view rest = text.substr(word.size());
  return {number, static_cast<Label>(*value), withoutBlanks(rest), rest.starts_with('\t')};
}

std::vector<NameLine> linesOf(std::string_view text) {
  std::vector<NameLine> lines;
  text.remove_prefix(text.starts_with(byteOrderMark) ? byteOrderMark.size() : 0);
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::size_t end = text.find('\n');
    const std::string_view line = withoutBlanks(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (!line.empty() && !line.starts_with('#')) {
      lines.push_back(lineOf(line, number));
    }
  }
  return lines;
}

// The whole numbers of a text; nothing when there is anything else in it, or none.
std::vector<long long> numbersIn(std::string_view text) {
  std::vector<long long> numbers;
  for (text = withoutBlanks(text); !text.empty(); text = withoutBlanks(text)) {
    const std::string_view word = firstWord(text);
    const std::optional<long long> number = wholeNumber(word);
    if (!number) {
      return {};
    }
    numbers.push_back(*number);
    text.remove_prefix(word.size());
  }
  return numbers;
}

// Whether the numbers behind the first words can be no part of names: three or four parts of a color; codes
// of four digits or more; or any one behind words that have underscores, and so no blanks. Others are the
// names': "Crus 1", "Vermis 3".
bool areCodes(const std::set<std::string_view>& words, const std::vector<std::vector<long long>>& numbers) {
  const std::size_t columns = numbers.front().size();
  const bool isTable =
      std::all_of(numbers.begin(), numbers.end(), [&](const auto& line) { return line.size() == columns; });
  if (!isTable || columns != 1) {
    return isTable && (columns == 3 || columns == 4);
  }
  const bool areLong =
      std::all_of(numbers.begin(), numbers.end(), [](const auto& line) { return line.front() >= leastCode; });
  return areLong || std::all_of(words.begin(), words.end(), [](std::string_view word) {
           return word.find('_') != std::string_view::npos;
         });
}

// Whether each line is a value, a word and codes. Names that end in numbers of their own, such as "Area 4",
// are not all different without them.
bool haveCodes(const std::vector<NameLine>& lines) {
  std::set<std::string_view> words;
  std::vector<std::vector<long long>> numbers;
  for (const NameLine& line : lines) {
    const std::string_view word = firstWord(line.rest);
    numbers.push_back(numbersIn(line.rest.substr(word.size())));
    if (line.isTabbed || numbers.back().empty() || !words.insert(word).second) {
      return false;
    }
  }
  return !lines.empty() && areCodes(words, numbers);
}

std::string_view nameOf(const NameLine& line, bool hasCodes) {
  if (line.isTabbed) {
    return withoutBlanks(line.rest.substr(0, line.rest.find('\t')));
  }
  return hasCodes ? firstWord(line.rest) : line.rest;
}

}  // namespace

LabelNames labelNamesOf(std::string_view text) {
  const std::vector<NameLine> lines = linesOf(text);
  const bool hasCodes = haveCodes(lines);
  LabelNames names;
  for (const NameLine& line : lines) {
    const std::string_view name = nameOf(line, hasCodes);
    if (name.empty()) {
      fail(line.number, "the name is missing");
    }
    if (name.size() > longestName) {
      fail(line.number, "a name of more than " + std::to_string(longestName) + " bytes");
    }
    if (line.value != 0 && !names.emplace(line.value, name).second) {
      fail(line.number, "the label " + std::to_string(line.value) + " is there twice");
    }
  }
  return names;
}

LabelNames readLabelNames(const std::filesystem::path& path) {
  const std::string file = utf8Of(textOf(path));
  try {
    const std::string text = bytesOfFile(path, mostBytes);
    if (text.size() > mostBytes) {
      throw std::runtime_error("there is more than 1 MiB of it");
    }
    return labelNamesOf(text);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(file + ": " + error.what());
  }
}

}  // namespace host
