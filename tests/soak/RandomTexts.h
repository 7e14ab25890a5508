#ifndef XMLDOM_TESTS_SOAK_RANDOMTEXTS_H
#define XMLDOM_TESTS_SOAK_RANDOMTEXTS_H

#include <xmldom/xmldom.h>

#include <string>

#include "soak/Random.h"

/// A text of pieces that begin, end or stand in references.
std::string AnyPieces(Random& random);

/// Hangs up to 200 nodes below each other, texts in front of elements and behind them.
void GrowLateTexts(IXMLDOMNode* root, Random& random);

/// Grows a tree that is deep, with many nodes beside its longest branch.
void NestTexts(IXMLDOMNode* root, Random& random);

#endif
