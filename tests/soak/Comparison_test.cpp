#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include "plain/PlainComparison.h"
#include "soak/Cases.h"
#include "soak/Forest.h"

namespace {

typedef int (*Compare)(IXMLDOMNode*, IXMLDOMNode*, CMemFile&, int);

std::string Compared(Observer& observer, Compare compare, IXMLDOMNode* node1, IXMLDOMNode* node2,
                     int depth) {
  return observer.Observe([&](std::string& results) {
    CMemFile report(16);
    const BufferResult reported(report, results);
    report.Write("before", 6);
    results += "result " + std::to_string(compare(node1, node2, report, depth)) + "\n";
  });
}

/// Compares two forests that are alike but for a few changes: the documents, nodes of one number,
/// or any nodes.
std::string CompareNearlyEqual(Random random, Observer& observer) {
  ForestShape shape;
  shape.nodes = 3 + random.Below(16);
  shape.changesByHand = random.Below(4) * random.Below(3);
  const Random source = random;
  random.Next();
  Forest first(source, shape);
  // The further changes come last, so that everything before them is alike.
  if (!random.OneIn(8)) shape.changesByHand += 1 + random.Below(3);
  Forest second(source, shape);

  IXMLDOMNode* node1 = first.Document(0);
  IXMLDOMNode* node2 = second.Document(0);
  if (random.OneIn(2)) {
    const int number = random.Below(first.Count());
    node1 = first.At(number);
    node2 = second.At(number);
  } else if (random.OneIn(4)) {
    node1 = AnyNode(first, random, 8);
    node2 = AnyNode(random.OneIn(2) ? first : second, random, 8);
  }
  const int depth = random.OneIn(3) ? random.Below(6) - 3 : 0;
  const std::string before = first.State() + second.State();
  const std::string library = Compared(observer, CompareXMLNodes, node1, node2, depth);
  const std::string after = first.State() + second.State();
  const std::string same = Compared(observer, plain::CompareXMLNodes, node1, node2, depth);
  return Difference(library + after, same + before);
}

TEST(SoakComparison, A_comparison_reports_as_the_plain_one) {
  RunCases("comparison", CompareNearlyEqual);
}

}  // namespace
