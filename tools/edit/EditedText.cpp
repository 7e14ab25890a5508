// Makes one edit after the other. Each is made in the bytes first, while the tree still tells where
// they are, then in the tree, and the two are compared.
// Tested by tests/tool/Edit_test.cpp and tests/tool/EditProof_test.cpp.

#include <tools/edit/EditedText.h>

#include <tools/document/DocumentLoad.h>
#include <tools/edit/EditProof.h>
#include <tools/edit/EditStep.h>

#include <xmldom/dom/XMLDocument.h>

#include <utility>

namespace tool {

namespace {

/// The elements in which an edit joins texts. They stay in the tree, because no target is inside
/// another one.
Elements JoinedBy(const EditStep& step) {
  Elements joined;
  if (!step.edit.kind->joinsTexts) return joined;
  for (const EditTarget& target : step.targets) joined.insert(target.node->m_pParent);
  return joined;
}

}  // namespace

EditedText::EditedText(const std::string& text, XMLPtr<IXMLDOMDocument2> tree,
                       const SourceEncoding& encoding)
    : m_text(text), m_tree(std::move(tree)), m_encoding(encoding) {}

EditOutcome EditedText::Apply(const Edit& edit, bool all) {
  EditStep step(edit, m_text, *m_tree, m_encoding);
  step.SelectTargets(all);
  const std::size_t selected = step.targets.size();
  if (selected != 0) edit.kind->splice(step);
  if (step.targets.empty()) return {selected, 0};
  std::string spliced = step.splices.Apply(m_text);
  if (m_fault) m_fault(spliced);
  const Elements joined = JoinedBy(step);
  try {
    edit.kind->change(step);
    m_tree = ProveEdit(spliced, *m_tree, joined);
  } catch (...) {
    // The tree may have been changed in part, so it is made anew.
    LoadProblem problem;
    m_tree = LoadText(m_text, problem);
    throw;
  }
  m_text = std::move(spliced);
  return {selected, step.targets.size()};
}

std::string EditedText::Bytes() const {
  std::string bytes = m_encoding.Encode(m_text);
  std::string text;
  std::string reason;
  if (!m_encoding.Decode(bytes, text, reason) || text != m_text) {
    throw ProofFailure("its encoding cannot hold it");
  }
  return bytes;
}

}  // namespace tool
