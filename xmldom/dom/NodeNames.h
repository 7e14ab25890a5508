#ifndef XMLDOM_DOM_NODENAMES_H
#define XMLDOM_DOM_NODENAMES_H

namespace xmldom {

/// The name of every text node that the library makes.
const char* const kTextName = "#Text";

}  // namespace xmldom

#endif
