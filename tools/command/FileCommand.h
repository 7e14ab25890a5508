#ifndef XMLDOM_TOOLS_COMMAND_FILECOMMAND_H
#define XMLDOM_TOOLS_COMMAND_FILECOMMAND_H

#include <tools/command/Command.h>
#include <tools/io/Input.h>
#include <tools/io/ResultWriter.h>

#include <string>
#include <vector>

namespace tool {

/// A command that does the same with each of its files, or with standard input when it has none.
/// A file with which something goes wrong does not keep it from the files that follow.
class FileCommand : public Command {
 public:
  void DeclareArguments(Arguments& arguments) final;
  ExitStatus Run(const Session& session) final;

 protected:
  /// What a command does with its files, which decides how the exit statuses for several files
  /// become one. kTrouble for any file is always kTrouble for all.
  enum Kind {
    kResults,  ///< Writes what it finds: kDone when something is found in any of the files.
    kChanges,  ///< Writes what it makes of each file: kDone when each is kDone.
    kVerdict   ///< Writes nothing: kDone when each file is kDone.
  };

  explicit FileCommand(Kind kind) : m_kind(kind) {}

  /// Declares the options, and the operands that stand before the files.
  virtual void DeclareOptions(Arguments& arguments) = 0;
  /// Whether RunOn is going to replace the file, which then is locked before it is read.
  virtual bool ReplacesFiles() const { return false; }
  /// Whether RunOn gets the bytes of the file as they are. Otherwise a file in UTF-16 is turned
  /// into UTF-8 before.
  virtual bool KeepsEncoding() const { return false; }
  /// Reads a file and does the work on it. Result: the exit status for that file; kTrouble when it
  /// cannot be read, and a message then says why.
  virtual ExitStatus RunOnFile(const std::string& file, const Session& session);
  /// Does the work on one file that has been read whole. Result: the exit status for that file.
  virtual ExitStatus RunOn(const Input& input, ResultWriter& results, const Session& session) = 0;

  /// The operands, as the user gave them.
  const std::vector<std::string>& Files() const { return m_files; }

 private:
  /// Runs on a file. Result: kTrouble when that fails; a message then says why.
  ExitStatus TryFile(const std::string& file, const Session& session);
  ExitStatus Combine(ExitStatus sofar, ExitStatus next) const;

  const Kind m_kind;
  std::vector<std::string> m_files;
  bool m_withNames = false;
  bool m_withoutNames = false;
};

}  // namespace tool

#endif
