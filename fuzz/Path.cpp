// Any text as a path, on one document: the path is cut, its steps are matched, and the two ways to
// select agree.

#include <cstdint>

#include "fuzz/Check.h"
#include "fuzz/Trees.h"

using fuzz::Document;

namespace {

const char kXml[] =
    "<a id='1' n='x'>"
    "<b id='2'>one</b><b id='3' q='&apos;&quot;'>two &lt; three</b>"
    "<c><b id='2'><a id='10'>12</a><d/></b><c n=''><b>one</b>&#65;&unknown2;</c></c>"
    "<d n='7'><e><f><b id='2'>7</b></f></e></d>"
    "</a>";

/// The document that all paths meet.
const Document& TheDocument() {
  static Document document;
  static const bool loaded =
      document.Load("<!DOCTYPE a [<!ENTITY unknown2 'u'>]>" + std::string(kXml));
  FUZZ_CHECK(loaded);
  return document;
}

/// Cuts the path; every step is in the index, in order. Result: how many of them move.
int CheckCutting(const char* path) {
  CXPathList list;
  FUZZ_CHECK(list.ParsePath(path) == (*path == '\0' ? 0 : 1));
  FUZZ_CHECK(list.m_bAbsolute == (*path == '/'));
  list.CreateIndex();
  int moves = 0;
  int count = 0;
  for (const CStrListElt* step = list.m_pFirst; step != nullptr; step = step->m_pNext) {
    FUZZ_CHECK(count < list.m_nCount && list.m_ppIndex[count] == step->m_pszString);
    FUZZ_CHECK((step->m_pNext == nullptr) == (step == list.m_pLast));
    if (*step->m_pszString == '.') ++moves;
    ++count;
  }
  FUZZ_CHECK(count == list.m_nCount);
  return moves;
}

/// Splits and matches the path as if it were one step, and one predicate.
void CheckMatching(IXMLDOMNode* node, const char* path) {
  XMLHeapStr name;
  XMLHeapStr rest;
  FUZZ_CHECK(node->ParseXPathQuery(path, name.Out(), rest.Out()) == 1);
  FUZZ_CHECK(std::string(name.c_str()) + rest.c_str() == path);

  bool hasPath = false;
  bool quoted = false;
  XMLHeapStr attribute;
  XMLHeapStr value;
  FUZZ_CHECK(node->ParseXPathSubquery(path, &hasPath, name.Out(), attribute.Out(), value.Out(),
                                      &quoted) == 1);

  const int matches = node->MatchesSubquery(path);
  FUZZ_CHECK(matches == 0 || matches == 1);
  const int step = node->MatchQuery(path);
  FUZZ_CHECK(step == 0 || step == 1);
}

/// The COM-style searches give what the plain ones do, and so do those with a string.
void CheckForms(IXMLDOMNode* node, const std::string& path, bool selectsAlike) {
  const XMLPtr<IXMLDOMNode> single = xmldom::Adopt(node->SelectSingleNode(path.c_str()));
  XMLPtr<IXMLDOMNode> out;
  const HRESULT found = node->selectSingleNode2(path.c_str(), out.Out());
  FUZZ_CHECK(found == (single == nullptr ? S_FALSE : S_OK));
  FUZZ_CHECK(out == single);
  FUZZ_CHECK(xmldom::SelectOne(node, path.c_str()) == single);
  FUZZ_CHECK(xmldom::Adopt(node->SelectSingleNode(_bstr_t(path.c_str()))) == single);
  if (!selectsAlike) return;
  const XMLPtr<IXMLDOMNodeList> list = xmldom::Adopt(node->SelectNodes(_bstr_t(path.c_str())));
  XMLPtr<IXMLDOMNodeList> outList;
  std::string copy = path;
  node->selectNodes2(&copy[0], outList.Out());
  FUZZ_CHECK(outList != nullptr && outList->m_nCount == list->m_nCount);
}

/// The check of a path knows what it is for. A path that makes sense for all nodes makes sense for
/// one of them.
void CheckJudging(const std::string& path) {
  const xmldom::PathProblem ofAll = xmldom::CheckPath(path, xmldom::PathUse::kSelect);
  const xmldom::PathProblem ofOne = xmldom::CheckPath(path, xmldom::PathUse::kSelectOne);
  const xmldom::PathProblem strict =
      xmldom::CheckPathBy(path, {xmldom::PathUse::kSelectOne, true, true, "here"});
  for (const xmldom::PathProblem& problem : {ofAll, ofOne, strict}) {
    FUZZ_CHECK(problem.offset <= path.size());
  }
  if (!ofAll) FUZZ_CHECK(!ofOne);
  if (!strict) FUZZ_CHECK(!ofOne);
}

/// What SelectSingleNode finds is what SelectNodes lists, and lists first unless the path is
/// searched for at every depth: the list goes element by element then.
void CheckSelecting(IXMLDOMNode* node, const std::string& path) {
  const XMLPtr<IXMLDOMNodeList> list = xmldom::Adopt(node->SelectNodes(path.c_str()));
  const XMLPtr<IXMLDOMNode> single = xmldom::Adopt(node->SelectSingleNode(path.c_str()));
  const XMLNodes range = xmldom::Select(node, path.c_str());
  FUZZ_CHECK(range.Count() == list->m_nCount);
  const IXMLDOMNodeListElt* at = list->m_pHead;
  for (const XMLPtr<IXMLDOMNode>& selected : range) {
    FUZZ_CHECK(selected == at->m_pNode);
    at = at->m_pNext;
  }
  bool listed = single == nullptr && list->m_nCount == 0;
  for (const IXMLDOMNodeListElt* link = list->m_pHead; link != nullptr && !listed;
       link = path.compare(0, 2, "//") == 0 ? link->m_pNext : nullptr) {
    listed = link->m_pNode == single;
  }
  FUZZ_CHECK(listed);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Hush();
  const Document& document = TheDocument();
  const fuzz::BalanceCheck balance;
  const std::string path(reinterpret_cast<const char*>(data), size);
  const std::string before = fuzz::XmlOf(document.Get());
  CheckJudging(path.c_str());

  // Steps "." and "..", and "/" for the node itself, are SelectSingleNode's alone.
  const int moves = CheckCutting(path.c_str());
  const bool selectsAlike = moves == 0 && path.c_str() != std::string("/");
  // A search that logs is repeated with all that it says, which many moves multiply.
  const bool takesLong = moves > 5;
  if (!takesLong) CheckForms(document->m_pFirstChild, path.c_str(), selectsAlike);
  for (IXMLDOMNode* node : fuzz::NodesOf(document.Get())) {
    CheckMatching(node, path.c_str());
    if (selectsAlike) {
      CheckSelecting(node, path.c_str());
    } else if (!takesLong) {
      xmldom::Adopt(node->SelectSingleNode(path.c_str()));
    }
  }

  for (IXMLDOMNode* node : fuzz::NodesOf(document.Get())) FUZZ_CHECK(node->GetRefCount() == 1);
  FUZZ_CHECK(fuzz::XmlOf(document.Get()) == before);
  return 0;
}
