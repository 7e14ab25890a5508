// The options -i and --in-place of the commands that can replace a file by their result.
// Tested by tests/tool/edit_in_place_test.bash and tests/tool/replacement_test.bash.

#include <tools/command/InPlace.h>

#include <tools/command/Arguments.h>
#include <tools/command/AttachedSuffix.h>
#include <tools/io/Diagnostics.h>
#include <tools/io/Input.h>

#include <algorithm>

namespace tool {

namespace {

const char kRename[] = "rename";
const char kWrite[] = "write";

}  // namespace

void InPlace::DeclareOptions(Arguments& arguments) {
  arguments.AddFlag(
      kInPlaceFlag, m_isAsked,
      "Replace the file by the result; -i with a suffix attached, as in -i.old, keeps the old file "
      "under its name with that suffix");
  arguments.AddHiddenText(kSuffixOption, m_suffix);
  arguments.Require(kSuffixOption, kInPlaceFlag);
  arguments.AddChoice("--in-place", {kRename, kWrite}, m_how,
                      "How -i replaces the file: 'rename' (unless given) puts a new file in its "
                      "place, at once; 'write' writes into the file itself, also where it has "
                      "hard links or is mounted, and a crash meanwhile can destroy it");
}

void InPlace::Check(const std::vector<std::string>& files) const {
  if (!IsAsked()) return;
  if (files.empty() || std::count(files.begin(), files.end(), "-") > 0) {
    throw UsageError("-i needs a file; standard input cannot be replaced");
  }
  if (m_suffix.find('/') != std::string::npos) {
    throw UsageError("'/' cannot stand in the suffix of -i");
  }
}

ExitStatus InPlace::Replace(const Input& input, const std::string& result) const {
  std::string reason;
  const ReplacementWay way = {m_suffix, m_how == kWrite};
  if (ReplaceFile(*input.lock, input.Bytes(), result, way, reason)) return ExitStatus::kDone;
  ComplainAbout(input.name, reason);
  return ExitStatus::kTrouble;
}

}  // namespace tool
