#ifndef XMLDOM_FUZZ_QUESTIONS_H
#define XMLDOM_FUZZ_QUESTIONS_H

#include "fuzz/Trees.h"

namespace fuzz {

/// Asks each node of a document, and the document itself, all that can be asked without a change of
/// the tree, and checks that the answers agree with the public fields and with each other.
/// Cost: that of its slowest question for each node: quadratic in the siblings.
void AskAll(const Document& document);

}  // namespace fuzz

#endif
