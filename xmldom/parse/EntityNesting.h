#ifndef XMLDOM_PARSE_ENTITYNESTING_H
#define XMLDOM_PARSE_ENTITYNESTING_H

namespace xmldom {

/// Watches the entity declarations of a document for how deep they can nest.
///
/// Expat expands an entity inside an entity by a call inside a call, so that a chain of a thousand
/// declarations, a few KiB of text, exhausts a stack of 256 KiB. A chain is no longer than the
/// number of declarations that refer to another entity; this class counts them.
class EntityNesting {
 public:
  /// Enough for every document met in practice, and a third of what a stack of 256 KiB holds.
  static const int kMost = 256;

  EntityNesting() : m_insideDeclaration(false), m_refers(false), m_count(0) {}

  /// Looks at the next piece of markup before the root element, as Expat's default handler gets it.
  /// Result: false once more than kMost declarations refer to another entity.
  bool Allows(const char* text, int length);

 private:
  bool m_insideDeclaration;
  bool m_refers;  // the declaration has been counted
  int m_count;
};

}  // namespace xmldom

#endif
