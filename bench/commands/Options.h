#ifndef XMLDOM_BENCH_COMMANDS_OPTIONS_H
#define XMLDOM_BENCH_COMMANDS_OPTIONS_H

#include <map>
#include <string>
#include <vector>

namespace bench {

/// The words behind a command: "--name value" each.
class Options {
 public:
  /// Effects: std::runtime_error when a value is missing, or a name is not among the known ones.
  Options(const std::vector<std::string>& words, const std::vector<std::string>& known);

  /// Effects: std::runtime_error when the option is not given.
  const std::string& Get(const std::string& name) const;
  std::string Get(const std::string& name, const std::string& otherwise) const;

 private:
  std::map<std::string, std::string> m_values;
};

}  // namespace bench

#endif
