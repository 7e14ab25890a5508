#ifndef XMLDOM_TOOLS_EDIT_EDIT_H
#define XMLDOM_TOOLS_EDIT_EDIT_H

#include <tools/document/PathSyntax.h>

#include <cstddef>
#include <string>
#include <vector>

namespace tool {

class EditStep;
struct EditKind;

/// One edit that the command line asks for.
struct Edit {
  const EditKind* kind;
  std::vector<std::string> operands;  ///< The first is the path.
};

/// A kind of edit, and the option of the command line for it. It is made twice: `splice` makes it
/// in the bytes of the text, and `change` in the tree, with the calls of the library. The text that
/// has been spliced has to give the tree that has been changed.
struct EditKind {
  const char* option;
  const char* operands;  ///< The names of the operands, as help shows them.
  int operandCount;
  const char* summary;

  /// Whether all that an element holds goes with it, so that an element inside another one that is
  /// edited is not edited itself.
  bool takesContent;
  /// Whether texts before and behind the element are joined.
  bool joinsTexts;

  /// Checks the operands behind the path. Effects: throws a UsageError.
  void (*check)(const Edit& edit);
  /// Gathers what is to be replaced in the text, for all targets. Effects: throws an EditRefusal
  /// when the edit cannot be made.
  void (*splice)(EditStep& step);
  /// Changes the tree, at all targets.
  void (*change)(EditStep& step);
};

/// All kinds, in the order in which help lists them.
const std::vector<EditKind>& EditKinds();

/// Checks the operands of an edit before any file is read. `all`: it is to be made at all elements
/// that its path selects.
/// Effects: throws a UsageError.
void CheckEdit(const Edit& edit, bool all);

/// The path of an edit, which must not be kRootPath. `all`: as for CheckEdit.
/// Effects: throws a UsageError when something is wrong with it.
SearchPath PathOf(const Edit& edit, bool all);

/// For an edit, this path means the root element, whatever its name; a search of the library would
/// select the document.
extern const char kRootPath[];

}  // namespace tool

#endif
