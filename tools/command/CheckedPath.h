#ifndef XMLDOM_TOOLS_COMMAND_CHECKEDPATH_H
#define XMLDOM_TOOLS_COMMAND_CHECKEDPATH_H

#include <tools/document/PathSyntax.h>

#include <string>

namespace tool {

/// Takes a path apart. Result: the path. `what` names it in messages.
/// Effects: throws a UsageError that shows what is wrong with it.
SearchPath CheckedPath(const std::string& text, PathPurpose purpose,
                       const std::string& what = "path");

/// Does so with a path that has to select an element. `reason` is the message for one that ends in
/// an attribute.
SearchPath CheckedElementPath(const std::string& text, PathPurpose purpose,
                              const std::string& reason);

}  // namespace tool

#endif
