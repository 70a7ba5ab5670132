#include "host/session/Answers.h"

namespace host {

bool Answers::ask(const std::string& file, const std::string& question, const Ask& ask) {
  const std::string key = file + "\n" + question;
  const auto given = m_given.find(key);
  if (given != m_given.end()) {
    return given->second;
  }
  return ask && m_given.emplace(key, ask(question)).first->second;
}

}  // namespace host
