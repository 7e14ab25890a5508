#ifndef XMLDOM_TOOLS_COMMAND_REWRITING_H
#define XMLDOM_TOOLS_COMMAND_REWRITING_H

#include <tools/command/Command.h>
#include <tools/document/LossCheck.h>

#include <string>
#include <vector>

namespace tool {

struct Input;

/// The replacement of a file by what a command makes of it: only when the user asks for it, and
/// without losing anything unless the user says so.
class Rewriting {
 public:
  /// Declares the options. On the command line, a suffix attached to "-i" has been split off.
  void DeclareOptions(Arguments& arguments);

  /// Effects: throws a UsageError for what cannot be replaced.
  void Check(const std::vector<std::string>& files) const;

  /// Whether the user asks for it.
  bool IsAsked() const { return m_isAsked; }
  /// Whether nothing may be lost.
  bool IsCareful() const { return m_isAsked && !m_isLossy; }

  /// Whether the input may be replaced. Effects: says why not, with the place.
  bool Allows(const Input& input, const LossReport& report) const;

  /// Replaces the input's file by `result`, which has to be well-formed, and without loss where
  /// nothing may be lost. Effects: says what goes wrong.
  ExitStatus Replace(const Input& input, const std::string& result) const;

 private:
  bool m_isAsked = false;
  bool m_isLossy = false;
  std::string m_suffix;
};

}  // namespace tool

#endif
