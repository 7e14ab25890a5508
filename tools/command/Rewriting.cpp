// The option --lossy beside -i, for commands that write what the library makes of a file.
// A file is replaced only when nothing of it is lost, both before and after the command's work.
// Tested by tests/tool/format_in_place_test.bash and tests/tool/edit_in_place_test.bash.

#include <tools/command/Rewriting.h>

#include <tools/command/Arguments.h>
#include <tools/io/Diagnostics.h>
#include <tools/io/Input.h>

namespace tool {

void Rewriting::DeclareOptions(Arguments& arguments) {
  m_inPlace.DeclareOptions(arguments);
  arguments.AddFlag("--lossy", m_isLossy,
                    "Replace the file even if something of it is lost or moved");
}

void Rewriting::Check(const std::vector<std::string>& files) const {
  m_inPlace.Check(files);
  if (m_isLossy && !IsAsked()) throw UsageError("--lossy is for -i");
}

bool Rewriting::Allows(const Input& input, const LossReport& report) const {
  if (!IsCareful() || report.reason == nullptr) return true;
  ComplainAt(input, report.offset, report.reason);
  Complain("nothing is replaced; --lossy does it all the same");
  return false;
}

ExitStatus Rewriting::Replace(const Input& input, const std::string& result) const {
  // An edit can bring together what the library would move when it loads the file the next time,
  // such as text beside elements.
  if (IsCareful() &&
      !Allows({input.name + " (result)", result}, FindLoss(result, Surroundings::kKept))) {
    return ExitStatus::kTrouble;
  }
  return m_inPlace.Replace(input, result);
}

}  // namespace tool
