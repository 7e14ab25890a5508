#ifndef XMLDOM_PARSE_ENTITYNESTING_H
#define XMLDOM_PARSE_ENTITYNESTING_H

#include <xmldom/parse/EntityChains.h>

#include <cstddef>
#include <string>

namespace xmldom {

/// Watches the entity declarations of a document for how deep their expansion can nest.
///
/// Before its release 2.7, Expat expands an entity inside an entity by a call inside a call, so
/// that a chain of a thousand declarations, a few KiB of text, exhausts a stack of 256 KiB. All
/// that this class knows of a document is the text before its root element, which Expat has found
/// well-formed piece by piece. It makes no difference where a piece ends.
class EntityNesting {
 public:
  EntityNesting();

  /// Whether the Expat in use expands entities by recursion.
  static bool IsPossible();

  /// Reads on. Result: false once a chain of more than EntityChains::kMost entities has been
  /// declared; nothing is read any more then. Effects: std::bad_alloc when memory is out.
  bool Observe(const char* text, int length);

  bool IsTooDeep() const { return m_chains.AreTooLong(); }

 private:
  enum Place {
    OUTSIDE,       // of all that begins with '<'
    MARKUP,        // behind the '<'
    INSTRUCTION,   // or the XML declaration
    COMMENT,       // behind "<!--"
    KEYWORD,       // behind "<!"
    NAME,          // behind "<!ENTITY"
    BEFORE_VALUE,  // behind the name of an entity
    VALUE,         // of an entity
    REST           // of a declaration
  };

  void Read(char c);
  void ReadKeyword(char c);
  void ReadName(char c);
  void ReadRest(char c);
  void ReadValue(char c);
  void ReadCharacterReference(char c);
  void ReadReplacementText(char c);

  EntityChains m_chains;
  Place m_place;
  char m_quote;        // which ends the literal; NUL outside of literals
  int m_run;           // how many of the characters that end a comment or an instruction stand here
  std::string m_word;  // keyword, or name of an entity behind its kind
  char m_kind;         // '&' or '%': with what an entity of the declared kind is referred to
  bool m_isReference;  // m_word is the name in a reference
  bool m_hasAmpersand;  // in a value, which may begin a reference to a character
  int m_base;           // of the number of such a reference; 0 outside
  unsigned long m_number;
};

}  // namespace xmldom

#endif
