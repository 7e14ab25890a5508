#include "FileCommand.h"

#include "Diagnostics.h"
#include "Output.h"

#include <xmldom/support/LogException.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <new>

namespace tool {

void FileCommand::Describe(CLI::App& arguments) {
  DescribeOptions(arguments);
  if (m_kind == kResults) {
    arguments.add_flag(
        "--no-filename", m_withoutNames,
        "Leave out the file name that begins each line when there are several files");
  }
  arguments.add_option("FILE", m_files, "XML files; standard input when there is none, or for -")
      ->option_text(" ");
}

ExitStatus FileCommand::Run(const Session& session) {
  if (m_files.empty()) m_files.push_back("-");
  ExitStatus status = TryFile(m_files.front(), session);
  for (auto file = m_files.begin() + 1; file != m_files.end(); ++file) {
    status = Combine(status, TryFile(*file, session));
  }
  return status;
}

ExitStatus FileCommand::TryFile(const std::string& file, const Session& session) {
  Input input;
  input.name = DisplayName(file);
  std::string reason;
  try {
    if (ReadWhole(file, input.text, reason)) {
      const bool named = m_files.size() > 1 && !m_withoutNames;
      ResultWriter results(session.output, named ? input.name + ":" : std::string());
      const ExitStatus status = RunOn(input, results, session);
      // Before the next file, so that its messages do not overtake these results.
      session.output.Flush();
      return status;
    }
  } catch (CLogException* raised) {
    const std::unique_ptr<CLogException> exception(raised);
    reason = std::string(exception->GetWhere()) + ": " + exception->GetMessage();
  } catch (const std::length_error&) {
    reason = "the result is too large";
  } catch (const std::bad_alloc&) {
    reason = "out of memory";
  }
  ComplainAbout(input.name, reason);
  return ExitStatus::kTrouble;
}

ExitStatus FileCommand::Combine(ExitStatus sofar, ExitStatus next) const {
  const auto order = std::minmax(sofar, next);
  if (m_kind == kVerdict || order.second == ExitStatus::kTrouble) return order.second;
  return order.first;
}

}  // namespace tool
