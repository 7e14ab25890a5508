#include "tool/WrittenForm.h"

#include <tools/document/DocumentFrame.h>
#include <tools/document/DocumentLoad.h>
#include <tools/document/LossCheck.h>
#include <xmldom/xmldom.h>

std::string WrittenForm(const std::string& text) {
  tool::LoadProblem problem;
  const auto document = tool::LoadText(text, problem);
  if (document == nullptr) return std::string();
  const tool::LossReport report = tool::FindLoss(text, tool::Surroundings::kKept);
  return tool::Frame(text, report, std::string(document->Getxml()));
}
