// Applications make some of the library's objects themselves, and derive from others: how large
// they are is built into them. Where this fails because a record has changed on purpose,
// XMLDOM_SOVERSION has to be raised; docs/releasing.md tells more.

#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <cstddef>

namespace {

struct Row {
  const char* record;
  std::size_t found;
  std::size_t with64Bits;
  std::size_t with32Bits;
};

#define RECORD(type) #type, sizeof(type)

const Row kRows[] = {
    {RECORD(VARIANT), 16, 8},
    {RECORD(_bstr_t), 8, 4},
    {RECORD(CMemFile), 32, 20},
    {RECORD(CLogEvent), 24, 16},
    {RECORD(CLogException), 24, 12},
    {RECORD(CRefCountedObject), 16, 8},
    {RECORD(IXMLDOMNode), 80, 40},
    {RECORD(IXMLDOMDocument2), 104, 56},
    {RECORD(IXMLDOMNodeList), 80, 48},
    {RECORD(IXMLDOMNamedNodeMap), 80, 48},
    {RECORD(IXMLDOMNodeListElt), 16, 8},
    {RECORD(IXMLDOMParseError), 64, 32},
    {RECORD(CXPathList), 48, 24},
    {RECORD(CStrListElt), 16, 8},
    {RECORD(CXMLSax), 80, 56},
    {RECORD(CNodeStack), 8, 4},
    {RECORD(CNodeStackElt), 16, 8},
};

TEST(RecordSize, Records_are_as_large_as_in_every_library_of_this_so_version) {
  const bool has64Bits = sizeof(void*) == 8;
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.record);
    EXPECT_EQ(has64Bits ? row.with64Bits : row.with32Bits, row.found);
  }
}

}  // namespace
