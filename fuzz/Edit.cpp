// Bytes that name edits, one after the other, on one document; what comes out is asked for all that
// it holds, written, loaded again and compared.

#include <cstdint>

#include "fuzz/Check.h"
#include "fuzz/Input.h"
#include "fuzz/Questions.h"
#include "fuzz/Trees.h"

using fuzz::Document;
using fuzz::Input;

namespace {

const char* const kNames[] = {"a", "b", "c", "n:d", "e-f"};
const char* const kValues[] = {"v", "1 &amp; 2", "&#65;&lt;", " x ", "]]", "<![CDATA[ ]]>"};
const char* const kTexts[] = {"", "v", " ", "<&>\"'", "]]>", "\t\r\n x", "\xc3\xa9", "\x01"};
const char* const kPaths[] = {"/",     "/a",   "/a/b",         "//c",  "//b[@a='v']", "*",
                              "//b/.", "a/..", "//*[b='v']/c", "none", "/*",          "//e-f"};
const char* const kFragments[] = {"<b/>",
                                  "<c a='v'>t<b>v</b></c>",
                                  "<n:d><!-- c --><e-f/>&amp;</n:d>",
                                  "<a><a><a>&#66;</a></a></a>",
                                  "<b>",
                                  "<![CDATA[x]]>",
                                  "<b a='&apos;' b='\"'>  </b>",
                                  ""};

/// What a step can be, in the order of the bytes that stand for it.
enum Choice : unsigned int {
  REMOVE_AT_PATH,
  APPEND_AT_PATH,
  INSERT_AT_PATH,
  REPLACE_AT_PATH,
  ADD_CHILD,
  ADD_SIBLING,
  ADD_TEXT,
  SET_VALUE,
  ADD_ATTRIBUTE,
  SET_ATTRIBUTE,
  REMOVE,
  APPEND,
  INSERT,
  REPLACE,
  STORE_TEXT,
  STORE_ATTRIBUTE,
  ADD_ELEMENT,
  APPEND_NEW,
  TAKE_OUT,
  REMOVE_IN_LOOP,
  CHOICES
};

class Editing {
 public:
  explicit Editing(Input& input) : m_input(input) {
    FUZZ_CHECK(m_document.Load("<a a='1'>t<b a='v'>v</b><c><b/><e-f>&lt;</e-f></c></a>"));
  }

  Editing(const Editing&) = delete;
  Editing& operator=(const Editing&) = delete;

  const Document& Edited() const { return m_document; }

  void Step() {
    const Choice choice = static_cast<Choice>(m_input.Byte() % CHOICES);
    if (choice <= REPLACE_AT_PATH) {
      EditAtPath(choice);
    } else if (choice <= SET_ATTRIBUTE) {
      Grow(choice);
    } else if (choice <= REPLACE) {
      Move(choice);
    } else if (choice <= ADD_ELEMENT) {
      Store(choice);
    } else {
      MoveByHand(choice);
    }
    DropLeftReferences();
  }

 private:
  void EditAtPath(Choice choice) {
    const std::string path = m_input.OneOfOrAny(kPaths);
    if (choice == REMOVE_AT_PATH) {
      m_document->RemoveChildAtXPath(path.c_str());
      return;
    }
    const std::string fragment = m_input.OneOfOrAny(kFragments);
    if (choice == APPEND_AT_PATH) {
      m_document->AppendChildAtXPath(path.c_str(), fragment.c_str());
    } else if (choice == INSERT_AT_PATH) {
      m_document->InsertBeforeXPath(path.c_str(), fragment.c_str());
    } else {
      m_document->ReplaceChildAtXPath(path.c_str(), fragment.c_str());
    }
  }

  void Grow(Choice choice) {
    IXMLDOMNode* node = AnyElement();
    if (node == nullptr) return;
    const std::string name = m_input.OneOf(kNames);
    const std::string value = m_input.OneOf(kValues);
    const char* plain = value[0] == '<' ? "" : value.c_str();  // markup is not for attributes
    if (choice == ADD_CHILD) xmldom::Adopt(node->AddChild(name.c_str(), value.c_str()));
    if (choice == ADD_SIBLING) xmldom::Adopt(node->AddSibling(name.c_str(), value.c_str()));
    if (choice == ADD_TEXT) node->AddTextChild(value.c_str());
    if (choice == SET_VALUE) node->SetValue(value.c_str());
    if (choice == ADD_ATTRIBUTE) node->AddAttribute(name.c_str(), plain);
    if (choice == SET_ATTRIBUTE) node->SetAttribute(name.c_str(), plain);
  }

  void Move(Choice choice) {
    IXMLDOMNode* parent = AnyElement();
    if (parent == nullptr) return;
    IXMLDOMNode* child = AnyChildOf(parent);
    if (choice == REMOVE) {
      XMLPtr<IXMLDOMNode> removed;
      if (parent->removeChild(child, removed.Out()) == S_OK) m_removed.push_back(removed);
      return;
    }

    const bool comesBack = !m_removed.empty() && m_input.Byte() % 2 == 0;
    IXMLDOMNode* moved = comesBack ? m_removed.back().Get() : AnyElement();
    IXMLDOMNode* out = nullptr;
    HRESULT result = E_FAIL;
    if (choice == APPEND) result = parent->appendChild(moved, nullptr);
    if (choice == INSERT) result = parent->insertBefore(moved, child, nullptr);
    if (choice == REPLACE) result = parent->replaceChild(moved, child, &out);
    FUZZ_CHECK(result == S_OK || result == E_ARGUMENT);
    if (result != S_OK) return;
    if (comesBack) {
      m_removed.back().Detach();
      m_removed.pop_back();
    }
    if (out != nullptr && out != moved) m_removed.push_back(xmldom::Adopt(out));
  }

  /// What is stored is read back the same; what is refused changes nothing.
  void Store(Choice choice) {
    IXMLDOMNode* node = AnyElement();
    if (node == nullptr) return;
    const std::string name = m_input.OneOfOrAny(kNames);
    if (choice == ADD_ELEMENT) {
      const std::string text = xmldom::Text(node);
      const XMLPtr<IXMLDOMNode> added = xmldom::AddElement(node, name.c_str());
      FUZZ_CHECK((added != nullptr) == xmldom::IsXmlName(name.c_str()));
      FUZZ_CHECK(xmldom::Text(node) == text);
      return;
    }
    const std::string text = m_input.OneOfOrAny(kTexts);
    const std::string before = fuzz::XmlOf(node);
    const bool isAttribute = choice == STORE_ATTRIBUTE;
    const bool hadAttribute = isAttribute && xmldom::HasAttribute(node, name.c_str());
    const xmldom::StoreResult result =
        isAttribute ? xmldom::SetAttribute(node, name.c_str(), text) : xmldom::SetText(node, text);
    if (result) {
      const bool isText = !isAttribute && node->CountChildNodes() == 0;
      if (isText) FUZZ_CHECK(xmldom::Text(node) == text);
      if (isAttribute) FUZZ_CHECK(xmldom::Attribute(node, name.c_str()) == text);
      return;
    }
    FUZZ_CHECK(fuzz::XmlOf(node) == before);
    FUZZ_CHECK(*result.Reason() != '\0' && result.offset <= text.size());
    const bool isBadName = result.problem == xmldom::StoreResult::kNoName;
    FUZZ_CHECK(isBadName ? !hadAttribute : xmldom::FindForbidden(text) == result.offset);
  }

  void MoveByHand(Choice choice) {
    IXMLDOMNode* parent = AnyElement();
    if (parent == nullptr) return;
    if (choice == APPEND_NEW) {
      VARIANT type;
      VariantInit(&type);
      type.vt = VT_I4;
      type.lVal = NODE_ELEMENT;
      std::string name = m_input.OneOf(kNames);
      XMLPtr<IXMLDOMNode> created;
      FUZZ_CHECK(m_document->createNode(type, &name[0], nullptr, created.Out()) == S_OK);
      FUZZ_CHECK(parent->appendChild(created.Get(), nullptr) == S_OK);
      created.Detach();
    } else if (choice == TAKE_OUT) {
      parent->RemoveNodeFromTree();
      xmldom::Adopt(parent);
    } else {
      // A loop over the children may take any of them out.
      const unsigned int which = m_input.Byte();
      unsigned int at = 0;
      for (const XMLPtr<IXMLDOMNode>& child : xmldom::Children(parent)) {
        XMLPtr<IXMLDOMNode> removed;
        if ((which >> (at++ % 8) & 1) != 0) parent->removeChild(child.Get(), removed.Out());
      }
    }
  }

  /// An element of the document; null when it has none.
  IXMLDOMNode* AnyElement() {
    std::vector<IXMLDOMNode*> elements;
    for (IXMLDOMNode* node : fuzz::NodesOf(m_document.Get())) {
      if (node->m_eNodeType == NODE_ELEMENT) elements.push_back(node);
    }
    return elements.empty() ? nullptr : elements[m_input.Byte() % elements.size()];
  }

  /// A child, or null.
  IXMLDOMNode* AnyChildOf(IXMLDOMNode* parent) {
    IXMLDOMNode* child = parent->m_pFirstChild;
    for (unsigned int i = m_input.Byte() % 8; i > 0 && child != nullptr; --i) {
      child = child->m_pNextSibling;
    }
    return child;
  }

  /// Some calls leave a node with one reference more, as their comments say; none leaves two.
  void DropLeftReferences() {
    int left = 0;
    for (IXMLDOMNode* node : fuzz::NodesOf(m_document.Get())) {
      for (; node->GetRefCount() > 1; ++left) node->RealRelease();
    }
    FUZZ_CHECK(left <= 1);
  }

  Input& m_input;
  Document m_document;
  std::vector<XMLPtr<IXMLDOMNode>> m_removed;  // nodes that hang nowhere
};

bool HasOneRoot(const Document& document) {
  const IXMLDOMNode* root = document->m_pFirstChild;
  return root != nullptr && root->m_eNodeType == NODE_ELEMENT && root->m_pNextSibling == nullptr;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Hush();
  const fuzz::BalanceCheck balance;
  Input input(data, size);
  Editing editing(input);
  while (!input.IsEmpty()) editing.Step();
  fuzz::AskAll(editing.Edited());
  if (HasOneRoot(editing.Edited())) {
    fuzz::CheckRewriting(editing.Edited());
  } else {
    fuzz::XmlOf(editing.Edited().Get());
  }
  return 0;
}
