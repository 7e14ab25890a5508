#include "commands/Options.h"

#include <algorithm>
#include <stdexcept>

namespace bench {

Options::Options(const std::vector<std::string>& words, const std::vector<std::string>& known) {
  for (std::size_t i = 0; i < words.size(); i += 2) {
    const std::string name = words[i].compare(0, 2, "--") == 0 ? words[i].substr(2) : "";
    if (std::find(known.begin(), known.end(), name) == known.end()) {
      throw std::runtime_error("unknown option: " + words[i]);
    }
    if (i + 1 == words.size()) throw std::runtime_error(words[i] + " needs a value");
    m_values[name] = words[i + 1];
  }
}

const std::string& Options::Get(const std::string& name) const {
  const auto found = m_values.find(name);
  if (found == m_values.end()) throw std::runtime_error("missing option: --" + name);
  return found->second;
}

std::string Options::Get(const std::string& name, const std::string& otherwise) const {
  const auto found = m_values.find(name);
  return found == m_values.end() ? otherwise : found->second;
}

}  // namespace bench
