#ifndef XMLDOM_TOOLS_COMMANDS_EDIT_H
#define XMLDOM_TOOLS_COMMANDS_EDIT_H

#include <xmldom/xmldom_ptr.h>

#include <stdexcept>
#include <string>
#include <vector>

class IXMLDOMDocument2;
class IXMLDOMNode;

namespace tool {

/// An edit cannot be made in a document; the text says why.
class EditRefusal : public std::runtime_error {
 public:
  explicit EditRefusal(const std::string& reason) : std::runtime_error(reason) {}
};

/// A document while it is edited.
struct EditedDocument {
  /// What the XML of edits was loaded into. These documents have to live as long as the edited one:
  /// attributes that have moved from them still refer to them as owner documents.
  std::vector<XMLPtr<IXMLDOMDocument2>> contents;
  XMLPtr<IXMLDOMDocument2> document;
  bool isCareful;  ///< Whether nothing may be lost or moved.
};

struct EditKind;

/// One edit that the command line asks for.
struct Edit {
  const EditKind* kind;
  std::vector<std::string> operands;  ///< The first is the path.
};

/// A kind of edit, and the option of the command line for it.
struct EditKind {
  const char* option;
  const char* operands;  ///< The names of the operands, as help shows them.
  int operandCount;
  const char* summary;
  /// Checks the operands behind the path. `isCareful`: XML that the library would change is
  /// refused. Effects: throws a UsageError.
  void (*check)(const Edit& edit, bool isCareful);
  /// Makes the edit at the element `target`. Effects: throws an EditRefusal when that cannot be
  /// done; the document is then unchanged.
  void (*apply)(const Edit& edit, IXMLDOMNode* target, EditedDocument& edited);
};

/// All kinds, in the order in which help lists them.
const std::vector<EditKind>& EditKinds();

/// Checks the operands of an edit before any file is read. `isCareful`: XML that the library would
/// change when it loads and writes it is refused.
/// Effects: throws a UsageError.
void CheckEdit(const Edit& edit, bool isCareful);

/// Makes an edit at the first element that its path selects; the path "/" selects the root element.
/// Result: false when the path selects nothing; nothing is changed then.
/// Effects: throws an EditRefusal when the edit cannot be made; nothing is changed then either.
bool ApplyEdit(const Edit& edit, EditedDocument& edited);

}  // namespace tool

#endif
