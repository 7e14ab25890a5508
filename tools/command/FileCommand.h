#ifndef XMLDOM_TOOLS_COMMAND_FILECOMMAND_H
#define XMLDOM_TOOLS_COMMAND_FILECOMMAND_H

#include <tools/command/Command.h>
#include <tools/io/Input.h>
#include <tools/io/ResultWriter.h>

#include <string>
#include <vector>

namespace tool {

/// A command that does the same with each of its files, or with standard input when it has none.
/// Trouble with one file does not keep it from the others.
class FileCommand : public Command {
 public:
  void DeclareArguments(Arguments& arguments) final;
  ExitStatus Run(const Session& session) final;

 protected:
  enum Kind {
    kResults,  ///< Writes what it finds in any of the files.
    kChanges,  ///< Writes what it makes of each file, and says yes when it does for every file.
    kVerdict   ///< Writes nothing and says yes when it does for every file.
  };

  explicit FileCommand(Kind kind) : m_kind(kind) {}

  /// Declares the options, and the operands that stand before the files.
  virtual void DeclareOptions(Arguments& arguments) = 0;
  virtual ExitStatus RunOn(const Input& input, ResultWriter& results, const Session& session) = 0;

  /// The operands, as the user gave them.
  const std::vector<std::string>& Files() const { return m_files; }

 private:
  ExitStatus TryFile(const std::string& file, const Session& session);
  ExitStatus Combine(ExitStatus sofar, ExitStatus next) const;

  const Kind m_kind;
  std::vector<std::string> m_files;
  bool m_withoutNames = false;
};

}  // namespace tool

#endif
