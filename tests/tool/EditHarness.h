#ifndef XMLDOM_TESTS_TOOL_EDITHARNESS_H
#define XMLDOM_TESTS_TOOL_EDITHARNESS_H

#include <tools/edit/Edit.h>
#include <tools/edit/EditedText.h>

#include <string>
#include <vector>

/// The edit that an option with these operands asks for.
tool::Edit MakeEdit(const std::string& option, const std::vector<std::string>& operands);

/// A document that is well-formed, to be edited.
tool::EditedText MakeEdited(const std::string& bytes);

#endif
