#ifndef XMLDOM_FUZZ_EDITEDEVENTS_H
#define XMLDOM_FUZZ_EDITEDEVENTS_H

#include <tools/edit/Edit.h>

#include <cstddef>
#include <set>
#include <vector>

#include "fuzz/ParserEvents.h"

namespace fuzz {

/// What a parser has to tell of a text behind an edit. It is made of nothing but what the parser
/// tells of the text before the edit, so that it shares no code with what makes the edit.
///
/// `targets`: where the start tags stand of the elements at which the edit is made. `fragment`:
/// what the parser tells of the XML of an edit that has some.
std::vector<Event> EditedEvents(const std::vector<Event>& before, const tool::Edit& edit,
                                const std::set<std::size_t>& targets,
                                const std::vector<Event>& fragment);

}  // namespace fuzz

#endif
