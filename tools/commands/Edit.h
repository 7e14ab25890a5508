#ifndef XMLDOM_TOOLS_COMMANDS_EDIT_H
#define XMLDOM_TOOLS_COMMANDS_EDIT_H

#include <xmldom/xmldom_ptr.h>

#include <stdexcept>
#include <string>
#include <vector>

class IXMLDOMDocument2;
class IXMLDOMNode;

namespace tool {

/// An edit cannot be done to a document; the text says why.
class EditRefusal : public std::runtime_error {
 public:
  explicit EditRefusal(const std::string& reason) : std::runtime_error(reason) {}
};

/// A document while it is edited.
struct EditedDocument {
  // Attributes of content that was put in belong to the document that it was loaded into.
  std::vector<XMLPtr<IXMLDOMDocument2>> contents;
  XMLPtr<IXMLDOMDocument2> document;
  bool isCareful;  ///< Nothing may be lost or moved.
};

struct EditKind;

/// One change that the command line asks for.
struct Edit {
  const EditKind* kind;
  std::vector<std::string> operands;  ///< The first is the path.
};

/// What an option of the command line does.
struct EditKind {
  const char* option;
  const char* operands;  ///< Their names, as help shows them.
  int operandCount;
  const char* summary;
  /// Looks at the operands behind the path. Effects: throws a UsageError.
  void (*check)(const Edit& edit, bool isCareful);
  /// Effects: throws an EditRefusal, the document unchanged.
  void (*apply)(const Edit& edit, IXMLDOMNode* target, EditedDocument& edited);
};

/// All kinds, in the order in which help lists them.
const std::vector<EditKind>& EditKinds();

/// Looks an edit over before any file is read. `isCareful`: none of its content may be lost.
/// Effects: throws a UsageError.
void CheckEdit(const Edit& edit, bool isCareful);

/// Does an edit to the first node that its path selects; "/" is the root element.
/// Result: false, with nothing changed, when the path selects nothing.
/// Effects: throws an EditRefusal, the document unchanged.
bool ApplyEdit(const Edit& edit, EditedDocument& edited);

}  // namespace tool

#endif
