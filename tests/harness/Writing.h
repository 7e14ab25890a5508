#ifndef XMLDOM_TESTS_HARNESS_WRITING_H
#define XMLDOM_TESTS_HARNESS_WRITING_H

#include <xmldom/xmldom.h>

#include <string>

/// What GetXMLHelper is asked for; by default what GetXML asks for.
struct Writing {
  int depth = 0;
  IXMLDOMNode* paged = nullptr;
  int first = 0;
  int count = 0;
  int currentPage = -1;
  int numPages = -1;
  const char* padTemplate = nullptr;
  bool masked = false;
  bool indexed = false;
  int index = 0;
};

/// What GetXMLHelper writes for a node.
inline std::string Write(const IXMLDOMNode* node, const Writing& how = Writing()) {
  CMemFile out(16);
  node->GetXMLHelper(out, how.depth, how.paged, how.first, how.count, how.currentPage, how.numPages,
                     how.padTemplate, how.masked, how.indexed, how.index);
  return std::string(out.GetAsStr(), out.m_uLength);
}

#endif
