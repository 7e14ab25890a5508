#ifndef XMLDOM_TOOLS_DOCUMENT_FORMCHECK_H
#define XMLDOM_TOOLS_DOCUMENT_FORMCHECK_H

#include <tools/io/SourceText.h>

#include <expat.h>

#include <cstddef>
#include <memory>
#include <string>
#include <type_traits>

namespace tool {

/// What is wrong with a text that is not well-formed, where, and how that place looks.
struct FormProblem {
  SourcePosition position;
  std::string reason;
  std::string excerpt;  ///< As SourceExcerpt makes it; empty when the place cannot be shown.
};

/// Finds out whether a text is well-formed. The text comes piece by piece, and only its end is
/// kept, so that a text of any size takes little memory.
class FormCheck {
 public:
  /// Effects: std::bad_alloc when there is no memory for a parser.
  FormCheck();

  FormCheck(const FormCheck&) = delete;
  FormCheck& operator=(const FormCheck&) = delete;

  /// Takes the next piece. Result: whether more may follow; false when the text is known not to be
  /// well-formed and enough of it has come to show the place.
  /// Effects: std::bad_alloc. Cost: linear in the piece, with what entities expand to, which the
  /// parser limits. Memory: some 200 KiB, and that of the longest tag, comment or declaration.
  bool Take(const char* piece, std::size_t size);

  /// Ends the text. Result: whether it is well-formed. Out: otherwise `problem` says why not.
  bool Finish(FormProblem& problem);

 private:
  bool Parse(const char* piece, std::size_t size, bool isLast);
  void Keep(const char* piece, std::size_t size);
  bool FindPlace(std::size_t& at) const;

  std::unique_ptr<std::remove_pointer<XML_Parser>::type, void (*)(XML_Parser)> m_parser;
  bool m_isWellFormed;   // so far
  bool m_isWide;         // whether it is in UTF-16, of which nothing is shown
  std::size_t m_keptAt;  // where in the text m_kept begins
  std::string m_kept;    // the end of what has come
};

}  // namespace tool

#endif
