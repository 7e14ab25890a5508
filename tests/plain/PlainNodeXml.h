#ifndef XMLDOM_TESTS_PLAIN_PLAINNODEXML_H
#define XMLDOM_TESTS_PLAIN_PLAINNODEXML_H

#include <string>

namespace plain {

/// Does what xmldom::LoadableXml does, one character after the other.
std::string LoadableXml(const std::string& xml);

}  // namespace plain

#endif
