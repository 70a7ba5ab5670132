// What a user has answered, so that nobody is asked the same twice.
#pragma once

#include <functional>
#include <map>
#include <string>

namespace host {

// Asks the user whether something shall be done that is refused otherwise. Nobody to ask says no.
using Ask = std::function<bool(const std::string& question)>;  // UTF-8

class Answers {
 public:
  // The answer that was given already, else the one that is given now. `file`: what the question is about,
  // whatever names it gives.
  bool ask(const std::string& file, const std::string& question, const Ask& ask);

 private:
  std::map<std::string, bool> m_given;
};

}  // namespace host
