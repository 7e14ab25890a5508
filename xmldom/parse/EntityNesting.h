#ifndef XMLDOM_PARSE_ENTITYNESTING_H
#define XMLDOM_PARSE_ENTITYNESTING_H

#include <xmldom/parse/EntityChains.h>

#include <cstddef>
#include <string>

namespace xmldom {

/// Reads the entity declarations of a document, to find out how deep the expansion of its entities
/// can nest.
///
/// Before its release 2.7, Expat expands an entity inside another by recursion: a chain of a
/// thousand declarations, which takes a few KiB of text, exhausts a stack of 256 KiB. This class
/// reads the text before the root element as Expat passes it on, in pieces that may end anywhere.
/// Expat has found each piece well-formed, so that no syntax has to be checked here.
class EntityNesting {
 public:
  EntityNesting();

  /// Result: whether the Expat in use expands entities by recursion, going by its version.
  static bool IsPossible();

  /// Reads the next piece of text. Result: false once a chain of more than EntityChains::kMost
  /// entities has been declared; whatever follows is not read then. Effects: std::bad_alloc when
  /// memory is out. Cost: linear in the text, see EntityChains.
  bool Observe(const char* text, int length);

  bool IsTooDeep() const { return m_chains.AreTooLong(); }

 private:
  /// Where in the syntax the next character stands.
  enum Place {
    OUTSIDE,       // outside of everything that begins with '<'
    MARKUP,        // right after a '<'
    INSTRUCTION,   // in a processing instruction or the XML declaration
    COMMENT,       // after "<!--"
    KEYWORD,       // after "<!"
    NAME,          // after "<!ENTITY"
    BEFORE_VALUE,  // after the name of an entity
    VALUE,         // in the value of an entity
    REST           // in what is left of a declaration, which is not looked at
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
  char m_quote;         // the quote that ends the current literal; NUL outside of literals
  int m_run;            // number of '-' in a comment, or '?' in an instruction, right before here
  std::string m_word;   // a keyword; or the kind of an entity, '&' or '%', followed by its name
  char m_kind;          // '&' or '%': how the entity that is being declared is referred to
  bool m_isReference;   // m_word is being read from a reference in a value
  bool m_hasAmpersand;  // the last character of a value was '&', which has not been looked at
  int m_base;           // 10 or 16 in a character reference; 0 outside
  unsigned long m_number;  // what the digits of the character reference say so far
};

}  // namespace xmldom

#endif
