#include "harness/LoadOutcome.h"

#include "harness/TemporaryFile.h"

bool operator==(const LoadOutcome& a, const LoadOutcome& b) {
  return a.result == b.result && a.flag == b.flag;
}

std::ostream& operator<<(std::ostream& out, const LoadOutcome& outcome) {
  return out << "(" << outcome.result << ", " << outcome.flag << ")";
}

LoadOutcome LoadText(IXMLDOMDocument2* document, std::string xml) {
  LoadOutcome outcome = {S_OK, kFlagUntouched};
  outcome.result = document->loadXML(&xml[0], &outcome.flag);
  return outcome;
}

LoadOutcome LoadPath(IXMLDOMDocument2* document, std::string path) {
  LoadOutcome outcome = {S_OK, kFlagUntouched};
  outcome.result = document->load(&path[0], &outcome.flag);
  return outcome;
}

LoadOutcome LoadFile(IXMLDOMDocument2* document, const std::string& contents) {
  TemporaryFile file(contents);
  return LoadPath(document, file.Path());
}
