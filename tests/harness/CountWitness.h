#ifndef XMLDOM_TESTS_HARNESS_COUNTWITNESS_H
#define XMLDOM_TESTS_HARNESS_COUNTWITNESS_H

#include <xmldom/xmldom.h>

/// A node of an application whose destructor notes what a counter of live objects says then.
class CountWitness : public IXMLDOMNode {
 public:
  CountWitness(const int& counter, int& noted) : m_counter(counter), m_noted(noted) {}
  ~CountWitness() override { m_noted = m_counter; }

 private:
  const int& m_counter;
  int& m_noted;
};

#endif
