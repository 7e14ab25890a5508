#ifndef XMLDOM_TESTS_HARNESS_SEARCHOUTCOME_H
#define XMLDOM_TESTS_HARNESS_SEARCHOUTCOME_H

#include <xmldom/xmldom.h>

#include <string>
#include <vector>

#include "harness/LogCapture.h"
#include "harness/StdoutCapture.h"

typedef std::vector<IXMLDOMNode*> Nodes;

/// What a search finds, logs and prints.
struct SearchOutcome {
  Nodes nodes;
  std::vector<LoggedEvent> events;
  std::string printed;
};

/// Runs a search that returns nodes.
template <class Search>
SearchOutcome Observe(Search search) {
  SearchOutcome outcome;
  LogCapture log;
  StdoutCapture out;
  outcome.nodes = search();
  outcome.printed = out.Take();
  outcome.events = log.Events();
  return outcome;
}

/// Where a path starts at a node; null for an absolute path when the node has no owner.
IXMLDOMNode* StartOf(IXMLDOMNode* node, const CXPathList& list);

/// The result of a single selection, whose reference is given back; null is a result too.
Nodes Single(IXMLDOMNode* found);

void ExpectSame(const SearchOutcome& plain, const SearchOutcome& library);

/// Expects that SelectSingleNode finds, logs and prints what the plain search does. Result: whether
/// the plain search was short enough to be compared.
bool CompareSingle(IXMLDOMNode* node, const std::string& path, CXPathList& list);

/// Expects the same of SelectSingleNodeHelper from a step on.
bool CompareSingleFrom(IXMLDOMNode* node, CXPathList& list, int step);

#endif
