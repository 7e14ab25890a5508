// The option -i of the commands that can replace a file by their result.
// Tested by tests/tool/format_in_place_test.bash and tests/tool/edit_in_place_test.bash.

#include <tools/command/Rewriting.h>

#include <tools/command/Arguments.h>
#include <tools/command/AttachedSuffix.h>
#include <tools/io/Diagnostics.h>
#include <tools/io/FileReplacement.h>
#include <tools/io/Input.h>

#include <algorithm>

namespace tool {

void Rewriting::DeclareOptions(Arguments& arguments) {
  arguments.AddFlag(
      kInPlaceFlag, m_isAsked,
      "Replace the file by the result; -i with a suffix attached, as in -i.old, keeps the old file "
      "under its name with that suffix");
  arguments.AddHiddenText(kSuffixOption, m_suffix);
  arguments.Require(kSuffixOption, kInPlaceFlag);
}

void Rewriting::Check(const std::vector<std::string>& files) const {
  if (!m_isAsked) return;
  if (files.empty() || std::count(files.begin(), files.end(), "-") > 0) {
    throw UsageError("-i needs a file; standard input cannot be replaced");
  }
  if (m_suffix.find('/') != std::string::npos) {
    throw UsageError("'/' cannot stand in the suffix of -i");
  }
}

ExitStatus Rewriting::Replace(const Input& input, const std::string& result) const {
  std::string reason;
  if (ReplaceFile(input.name, input.text, result, m_suffix, reason)) return ExitStatus::kDone;
  ComplainAbout(input.name, reason);
  return ExitStatus::kTrouble;
}

}  // namespace tool
