// Says what the written form of a document lacks. Tested by tests/tool/format_test.bash and
// tests/tool/mask_test.bash.

#include <tools/command/LossNotice.h>

#include <tools/command/Arguments.h>
#include <tools/document/LossCheck.h>
#include <tools/io/Input.h>

#include <string>

namespace tool {

namespace {

/// Turns what would happen to a file into what has happened.
std::string InPast(std::string reason) {
  // "would be" is also how "would become" begins.
  static const char* const kVerbs[][2] = {
      {"would become", "became"}, {"would be", "was"}, {"would change", "changed"}};
  for (const auto& verb : kVerbs) {
    const std::size_t at = reason.find(verb[0]);
    if (at != std::string::npos) reason.replace(at, std::string(verb[0]).size(), verb[1]);
  }
  return reason;
}

}  // namespace

void LossNotice::DeclareOptions(Arguments& arguments) {
  arguments.AddFlag("--quiet", m_isQuiet, "Do not say what of the file is lost or moved");
}

void LossNotice::Say(const Input& input, const LossReport& report) const {
  if (m_isQuiet || report.reason == nullptr) return;
  std::string text = InPast(report.reason);
  const std::size_t others = report.count - 1;
  if (others != 0) {
    text += "; and " + std::to_string(others) + (others == 1 ? " other place" : " other places");
  }
  ComplainAt(input, report.offset, text);
}

}  // namespace tool
