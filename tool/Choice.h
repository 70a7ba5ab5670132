// Options of which the argument is one of some words. The words stand in the option's help, from where shells
// complete them.
#pragma once

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string>

namespace tool {

// `choices` are pairs of a word and what it means, and outlive the command. Large letters count as small.
template <typename Choices>
CLI::Option* addChoice(CLI::App& command, const std::string& name, std::string& word, const std::string& text,
                       const Choices& choices) {
  std::string words;
  for (const auto& [choice, meaning] : choices) {
    words += (words.empty() ? "" : "|") + std::string(choice);
  }
  return command.add_option(name, word, text)
      ->type_name(words)
      ->transform(CLI::IsMember(&choices, CLI::ignore_case).description(""));
}

// What a word means that the parser took.
template <typename Choices>
auto chosen(const Choices& choices, const std::string& word) {
  return std::find_if(choices.begin(), choices.end(),
                      [&](const auto& choice) { return choice.first == word; })
      ->second;
}

}  // namespace tool
