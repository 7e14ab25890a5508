// Two documents, with a byte of 0 between them: the comparison answers alike from both sides,
// changes neither, and a document equals itself and what is loaded from the same text.

#include <cstdint>

#include "fuzz/Check.h"
#include "fuzz/Input.h"
#include "fuzz/Trees.h"

using fuzz::Document;
using fuzz::Input;

namespace {

/// The answer of a comparison; a report is made exactly for a difference. Only depth 0 takes away
/// what was reported before.
bool AreEqual(IXMLDOMNode* first, IXMLDOMNode* second, int depth = 0) {
  CMemFile report(16);
  if (depth == 0) report.Write("left from before", 16);
  const int answer = CompareXMLNodes(first, second, report, depth);
  FUZZ_CHECK(answer == 0 || answer == 1);
  FUZZ_CHECK((answer == 0) == (report.m_uLength != 0));
  return answer == 1;
}

void CheckBothSides(IXMLDOMNode* first, IXMLDOMNode* second) {
  const bool isEqual = AreEqual(first, second);
  FUZZ_CHECK(isEqual == AreEqual(second, first));
  // At another depth a document does not stand for its first child.
  if (first != nullptr && first->m_eNodeType == NODE_DOCUMENT) return;
  if (second != nullptr && second->m_eNodeType == NODE_DOCUMENT) return;
  for (int depth : {-1, 1, 1000}) FUZZ_CHECK(isEqual == AreEqual(first, second, depth));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Hush();
  const fuzz::BalanceCheck balance;
  Input input(data, size);
  const std::string firstText = input.UpToNul();
  const std::string secondText = input.Rest();
  Document first;
  Document again;
  Document second;
  first.Load(firstText);
  again.Load(firstText);
  second.Load(secondText);
  const std::string firstXml = fuzz::XmlOf(first.Get());
  const std::string secondXml = fuzz::XmlOf(second.Get());

  FUZZ_CHECK(AreEqual(first.Get(), first.Get()));
  FUZZ_CHECK(AreEqual(first.Get(), again.Get()));
  CheckBothSides(first.Get(), second.Get());
  CheckBothSides(first.Get(), nullptr);
  const std::vector<IXMLDOMNode*> nodes = fuzz::NodesOf(first.Get());
  const std::vector<IXMLDOMNode*> others = fuzz::NodesOf(second.Get());
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    CheckBothSides(nodes[i], others[i % others.size()]);
    FUZZ_CHECK(AreEqual(nodes[i], nodes[i]));
  }

  FUZZ_CHECK(fuzz::XmlOf(first.Get()) == firstXml);
  FUZZ_CHECK(fuzz::XmlOf(second.Get()) == secondXml);
  return 0;
}
