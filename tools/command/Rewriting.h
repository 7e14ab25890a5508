#ifndef XMLDOM_TOOLS_COMMAND_REWRITING_H
#define XMLDOM_TOOLS_COMMAND_REWRITING_H

#include <tools/command/Command.h>

#include <string>
#include <vector>

namespace tool {

struct Input;

/// Replaces a file by what a command makes of it (the option -i).
class Rewriting {
 public:
  /// Declares the options. They expect arguments from which SplitSuffixes has split a suffix.
  void DeclareOptions(Arguments& arguments);

  /// Effects: throws a UsageError when -i is given and one of the files cannot be replaced.
  void Check(const std::vector<std::string>& files) const;

  /// Whether -i is given.
  bool IsAsked() const { return m_isAsked; }

  /// Replaces the file of the input by `result`. Result: kDone, or kTrouble when nothing is
  /// replaced. Effects: writes the reason to standard error then.
  ExitStatus Replace(const Input& input, const std::string& result) const;

 private:
  bool m_isAsked = false;
  std::string m_suffix;
};

}  // namespace tool

#endif
