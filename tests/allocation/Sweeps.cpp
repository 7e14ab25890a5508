#include "allocation/Sweeps.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "harness/Trees.h"

namespace {

/// A list of parts as a device might keep one, behind what kDeepXml has.
std::string RealisticXml() {
  std::string xml =
      "<!DOCTYPE r [<!ENTITY maker 'Works &amp; Sons'><!ATTLIST part unit CDATA 'mm'>]>\n";
  xml += kDeepXml.substr(0, kDeepXml.rfind("</r>")) + "\n";
  for (int i = 0; i < 24; ++i) {
    const std::string number = std::to_string(i);
    xml += "  <part number='" + number + "' name=\"A &lt; B &quot;" + number + "&quot;\">\n" +
           "    <!-- checked --><maker>&maker;</maker>\n    <size>" + std::to_string(i * 37) +
           "</size>\n    <note>two lines\n of text &#233; \xc3\xa9 <b>bold</b> rest</note>\n" +
           (i % 3 == 0 ? "    <script><![CDATA[a < b]]></script>\n" : "    <empty/>\n") +
           (i % 4 == 0 ? "    <part number='0'><size>1</size></part>\n" : "") + "  </part>\n";
  }
  return xml + "</r>\n";
}

struct Row {
  std::string room;
  std::string operation;
  int points[2][2];  // by tree, and alone before from there on
};

int Sum(const Row& row) {
  return row.points[0][0] + row.points[0][1] + row.points[1][0] + row.points[1][1];
}

/// Prints what was done when all is done.
class Table : public testing::Environment {
 public:
  void Add(const Row& row) { m_rows.push_back(row); }

  void TearDown() override {
    const Row* previous = nullptr;
    long all = 0;
    std::printf("%-56s %21s %21s\n%-56s %10s %10s %10s %10s\n", "", "small tree", "realistic tree",
                "operation", "alone", "and after", "alone", "and after");
    for (const Row& row : m_rows) {
      if (previous == nullptr || previous->room != row.room) std::printf("%s\n", row.room.c_str());
      std::printf("  %-54s %10d %10d %10d %10d\n", row.operation.c_str(), row.points[0][0],
                  row.points[0][1], row.points[1][0], row.points[1][1]);
      all += Sum(row);
      previous = &row;
    }
    std::printf("%d operations, %ld failing allocations\n", static_cast<int>(m_rows.size()), all);
  }

 private:
  std::vector<Row> m_rows;
};

Table* const l_pTable =
    static_cast<Table*>(testing::AddGlobalTestEnvironment(new Table));  // which owns it

int MostPoints() {
  const char* text = std::getenv("XMLDOM_POINTS");
  const int points = text == nullptr ? 6 : std::atoi(text);
  return points == 0 ? INT_MAX : points;
}

}  // namespace

void FailEverywhere(const char* room, const FailingCall& call, FailingCall::Guarantee guarantee,
                    On on, AllocationFailure::Reach reach) {
  static const std::string realisticXml = RealisticXml();
  const std::string* const texts[] = {&kDeepXml, &realisticXml};
  Row row = {room, call.name, {{0, 0}, {0, 0}}};
  for (int tree = 0; tree < (on == On::TREES ? 2 : 1); ++tree) {
    for (AllocationFailure::Extent extent :
         {AllocationFailure::ONCE, AllocationFailure::FROM_THERE_ON}) {
      SCOPED_TRACE(tree == 0 ? "small tree" : "realistic tree");
      SCOPED_TRACE(extent == AllocationFailure::ONCE ? "alone" : "and all after");
      Failing how;
      how.guarantee = guarantee;
      how.extent = extent;
      how.xml = texts[tree];
      how.mostPoints = MostPoints();
      how.reach = reach;
      const int isFromThereOn = extent == AllocationFailure::ONCE ? 0 : 1;
      row.points[tree][isFromThereOn] = ExpectWholeTreeAfterEachFailure(call, how);
    }
  }
  l_pTable->Add(row);
}

void NoteAndFree(BSTR text) {
  Note(text);
  SysFreeString(text);
}

void NoteAndDrop(IXMLDOMNode* node) {
  Note(node == nullptr ? "(none)" : node->m_pszNodeName);
  Drop(node);
}

void NoteAndDrop(IXMLDOMNodeList* list) {
  Note(list == nullptr ? -1 : list->m_nCount);
  Drop(list);
}

void Drop(CRefCountedObject* object) {
  if (object != nullptr) object->RealRelease();
}
