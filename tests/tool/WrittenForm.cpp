#include "tool/WrittenForm.h"

#include <tools/document/DocumentFrame.h>
#include <tools/document/LossCheck.h>
#include <xmldom/xmldom.h>

#include "tool/Loading.h"

std::string WrittenForm(const std::string& text) {
  const XMLPtr<IXMLDOMDocument2> document = TryLoad(text);
  if (document == nullptr) return std::string();
  const tool::LossReport report = tool::FindLoss(text, tool::Surroundings::kKept);
  return tool::Frame(text, report, std::string(document->Getxml()));
}
