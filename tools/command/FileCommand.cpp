// Runs a command on each of its files and combines the exit statuses.
// Results are flushed behind each file, so that they and messages on a terminal keep their order.
// Tested by tests/tool/input_test.bash.

#include <tools/command/FileCommand.h>

#include <tools/command/Arguments.h>
#include <tools/command/Trouble.h>
#include <tools/document/DocumentLoad.h>
#include <tools/io/Output.h>

#include <algorithm>

namespace tool {

void FileCommand::DeclareArguments(Arguments& arguments) {
  DeclareOptions(arguments);
  if (m_kind != kVerdict) {
    arguments.AddFlag("-H,--with-filename", m_withNames,
                      "Begin each line with the file name, also when there is only one file");
    arguments.AddFlag("--no-filename", m_withoutNames,
                      "Leave out the file name that begins each line when there are several files");
    arguments.Exclude("--with-filename", "--no-filename");
  }
  arguments.AddOperands("FILE", m_files, "XML files; standard input when there is none, or for -");
}

ExitStatus FileCommand::Run(const Session& session) {
  if (m_files.empty()) m_files.emplace_back("-");
  ExitStatus status = TryFile(m_files.front(), session);
  for (auto file = m_files.begin() + 1; file != m_files.end(); ++file) {
    status = Combine(status, TryFile(*file, session));
  }
  return status;
}

ExitStatus FileCommand::TryFile(const std::string& file, const Session& session) {
  return SayTrouble(DisplayName(file), [&] {
    const ExitStatus status = RunOnFile(file, session);
    session.output.Flush();
    return status;
  });
}

ExitStatus FileCommand::RunOnFile(const std::string& file, const Session& session) {
  Input input;
  const bool isRead = ReplacesFiles() ? ReadInputToReplace(file, input) : ReadInput(file, input);
  if (!isRead) return ExitStatus::kTrouble;
  if (!KeepsEncoding() && !DecodeUtf16(input)) return ExitStatus::kTrouble;
  const bool named = (m_files.size() > 1 || m_withNames) && !m_withoutNames;
  ResultWriter results(session.output, named ? input.name + ":" : std::string());
  return RunOn(input, results, session);
}

ExitStatus FileCommand::Combine(ExitStatus sofar, ExitStatus next) const {
  const auto order = std::minmax(sofar, next);
  const bool isSearch = m_kind == kResults && order.second != ExitStatus::kTrouble;
  return isSearch ? order.first : order.second;
}

}  // namespace tool
