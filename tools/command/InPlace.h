#ifndef XMLDOM_TOOLS_COMMAND_INPLACE_H
#define XMLDOM_TOOLS_COMMAND_INPLACE_H

#include <tools/command/Command.h>
#include <tools/io/FileReplacement.h>

#include <string>
#include <vector>

namespace tool {

class Arguments;
struct Input;

/// Replaces a file by what a command makes of it (the options -i and --in-place). A command that
/// has these options returns IsAsked() from FileCommand::ReplacesFiles, so that each file is locked
/// before it is read, and then calls Replace with the input.
class InPlace {
 public:
  /// Declares the options. They expect arguments from which SplitSuffixes has split a suffix.
  void DeclareOptions(Arguments& arguments);

  /// Effects: throws a UsageError when files are to be replaced and one of them cannot be.
  void Check(const std::vector<std::string>& files) const;

  /// Whether files are to be replaced.
  bool IsAsked() const { return m_isAsked || !m_how.empty(); }

  /// Replaces the file of an input, which has been locked, by `result`. Result: kDone, or kTrouble
  /// when nothing is replaced. Effects: writes the reason to standard error then.
  ExitStatus Replace(const Input& input, const std::string& result) const;

 private:
  bool m_isAsked = false;
  std::string m_suffix;
  std::string m_how;  // empty unless it is given
};

}  // namespace tool

#endif
