#ifndef XMLDOM_TOOLS_COMMAND_REWRITING_H
#define XMLDOM_TOOLS_COMMAND_REWRITING_H

#include <tools/command/InPlace.h>
#include <tools/document/LossCheck.h>

#include <string>
#include <vector>

namespace tool {

/// Replaces a file by what a command makes of it (see InPlace), and refuses to do so when something
/// in the file would be lost or moved, unless the user allows it (the option --lossy).
class Rewriting {
 public:
  /// Declares the options.
  void DeclareOptions(Arguments& arguments);

  /// Effects: throws a UsageError when -i is given and one of the files cannot be replaced.
  void Check(const std::vector<std::string>& files) const;

  /// Whether -i is given.
  bool IsAsked() const { return m_inPlace.IsAsked(); }
  /// Whether -i is given without --lossy, so that nothing may be lost.
  bool IsCareful() const { return IsAsked() && !m_isLossy; }

  /// Whether the input may be replaced. `report` is that of FindLoss for it.
  /// Effects: writes the reason to standard error when it may not, with the place.
  bool Allows(const Input& input, const LossReport& report) const;

  /// Replaces the file of the input by `result`, which the library has written. Where nothing may
  /// be lost, `result` itself is checked too. Result: kDone, or kTrouble when nothing is replaced.
  /// Effects: writes the reason to standard error then.
  ExitStatus Replace(const Input& input, const std::string& result) const;

 private:
  InPlace m_inPlace;
  bool m_isLossy = false;
};

}  // namespace tool

#endif
