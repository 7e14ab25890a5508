#ifndef XMLDOM_TOOLS_COMMAND_LOSSNOTICE_H
#define XMLDOM_TOOLS_COMMAND_LOSSNOTICE_H

namespace tool {

class Arguments;
struct Input;
struct LossReport;

/// What a command that writes the library's form of a document says of all that this form lacks.
class LossNotice {
 public:
  /// Declares the option --quiet, with which nothing is said.
  void DeclareOptions(Arguments& arguments);

  /// Tells on standard error the first thing of an input that was lost or moved, with its place,
  /// and how many places more there are. Says nothing when nothing was.
  void Say(const Input& input, const LossReport& report) const;

 private:
  bool m_isQuiet = false;
};

}  // namespace tool

#endif
