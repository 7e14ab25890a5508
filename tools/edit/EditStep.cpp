// Finds the elements at which an edit is made, in the tree and in the text.
// Tested by tests/tool/Edit_test.cpp.

#include <tools/edit/EditStep.h>

#include <tools/document/PathSearch.h>

#include <xmldom/dom/XMLDocument.h>

#include <algorithm>
#include <vector>

namespace tool {

const char kRootPath[] = "/";

EditStep::EditStep(const Edit& madeEdit, const std::string& source, IXMLDOMDocument2& document,
                   const SourceEncoding& sourceEncoding)
    : edit(madeEdit),
      text(source),
      tree(document),
      encoding(sourceEncoding),
      map(source, document) {}

void EditStep::SelectTargets(bool all) {
  const std::string& path = edit.operands.front();
  if (path == kRootPath) {
    targets.push_back({xmldom::Adopt(tree.GetfirstChild()), nullptr});
  } else {
    for (IXMLDOMNode* node : Select(PathOf(edit, all), &tree, all)) {
      node->AddRef();
      targets.push_back({xmldom::Adopt(node), nullptr});
    }
  }
  for (EditTarget& target : targets) {
    target.place = map.Find(target.node.Get());
    if (target.node->m_eNodeType != NODE_ELEMENT) Refuse(target, "the path selects no element");
    if (!target.place->IsWritten()) {
      Refuse(target, "the element comes from this entity, and cannot be changed here");
    }
  }
  std::stable_sort(targets.begin(), targets.end(), [](const EditTarget& a, const EditTarget& b) {
    return a.place->begin < b.place->begin;
  });
  std::size_t kept = 0;
  for (const auto& target : targets) {
    const SourcePlace* last = kept == 0 ? nullptr : targets[kept - 1].place;
    if (last == target.place) continue;
    const bool isInside = last != nullptr && target.place->begin < last->end;
    if (isInside && edit.kind->takesContent) continue;
    targets[kept++] = target;
  }
  targets.resize(kept);
}

void EditStep::Refuse(const EditTarget& target, const std::string& reason) {
  throw EditRefusal(target.place->begin, reason);
}

std::string EditStep::DocumentType() const {
  const SourceRange range = map.DocumentType();
  return text.substr(range.begin, range.end - range.begin);
}

}  // namespace tool
