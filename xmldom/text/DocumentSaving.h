#ifndef XMLDOM_TEXT_DOCUMENTSAVING_H
#define XMLDOM_TEXT_DOCUMENTSAVING_H

#include <xmldom/base/Export.h>
#include <xmldom/base/FileReplacement.h>
#include <xmldom/base/TextArgument.h>
#include <xmldom/dom/NodeArgument.h>
#include <xmldom/text/NodeXml.h>

#include <string>
#include <system_error>

namespace xmldom {

/// What stands before the root element of a file.
enum class Prolog {
  kNone,        ///< Nothing.
  kDeclaration  ///< An XML declaration, in a line of its own: version 1.0, UTF-8.
};

/// Saves a document, or a single element, as a file. It is written to another file in the same
/// folder (see FileSuccessor), brought to the disk and renamed. So every reader finds either the
/// old file or the new one, in full, at any time and after a crash, and a save that fails leaves
/// the old file as it was and nothing else. What is written is Xml(node).
///
/// Owner, mode and extended attributes of a file that exists are kept as far as the system allows;
/// a POSIX access control list that cannot be kept is an error. Where the path is a symbolic link,
/// the file that it leads to is replaced. Hard links, which are other names of the old file, keep
/// the old contents.
/// Result: no error when the new file is on the disk; otherwise the reason. When only the last step
/// fails, to bring the renaming to the disk, the new file is in place already.
/// Bad input: invalid_argument for a null node, a document without root element, a node that has no
/// XML alone, and a path that holds a NUL byte; an error also for a path that leads to something
/// else than a regular file, that is read-only, or whose folder may not be written to.
/// Effects: std::bad_alloc when memory is out, std::length_error for more than 4 GiB; the old file
/// is then as it was. Cost: that of Xml, and the time that the disk takes.
XMLDOM_NODISCARD inline std::error_code Save(ConstNodeArgument node, TextArgument path,
                                             Prolog prolog = Prolog::kNone) {
  const std::string name(path.Data(), path.Size());
  std::string text = xmldom::Xml(node);
  if (text.empty() || name.find('\0') != std::string::npos) {
    return std::make_error_code(std::errc::invalid_argument);
  }
  if (prolog == Prolog::kDeclaration) {
    text.insert(0, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
  }
  return ReplaceFile(name, text);
}

}  // namespace xmldom

#endif
