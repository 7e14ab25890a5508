#ifndef XMLDOM_QUERY_XPATHLIST_H
#define XMLDOM_QUERY_XPATHLIST_H

#include <xmldom/base/Export.h>
#include <xmldom/support/bstr.h>

#include <cstddef>

/// One step of a parsed path, in a linked list of all its steps.
class XMLDOM_API CStrListElt {
 public:
  /// Copies the first `length` bytes of `text`. Effects: std::bad_alloc when memory is out.
  CStrListElt(const char* text, std::size_t length);
  /// Destroys the steps behind this one too.
  ~CStrListElt();

  CStrListElt(const CStrListElt&) = delete;
  CStrListElt& operator=(const CStrListElt&) = delete;

  char* m_pszString;     ///< Name and predicates; C heap.
  CStrListElt* m_pNext;  ///< The step behind it, or null.

  static int m_iObjCount;  ///< Live steps.
};

/// A parsed path. The slashes that it begins with are its prefix. The rest is cut into steps at
/// every '/' outside square brackets. Each cut makes a step, also an empty one, so that `a//b` has
/// three. Quotes have no meaning here: the first ']' ends the brackets, even within quotes.
class XMLDOM_API CXPathList {
 public:
  /// An empty list, without steps and without prefix.
  CXPathList();
  ~CXPathList();

  CXPathList(const CXPathList&) = delete;
  CXPathList& operator=(const CXPathList&) = delete;

  /// Appends the steps of `path`. When `path` has a prefix, that replaces the earlier one.
  /// Result: 1; 0 for a null or empty path, which changes nothing. Cost: linear in all steps.
  /// Effects: std::bad_alloc when memory is out; the steps that were appended before that stay.
  int ParsePath(const char* path);
  int ParsePath(_bstr_t path);

  /// Builds the index anew. Call it after you have changed the steps or their count yourself. When
  /// the count is greater than the number of steps, the entries beyond the last step are null.
  /// Effects: std::bad_alloc when memory is out; there is no index then. Cost: linear in the steps
  /// and in the count.
  void CreateIndex();

  char* m_pszPrefix;      ///< C heap; null when the path does not begin with '/'.
  CStrListElt* m_pFirst;  ///< The first step, or null.
  CStrListElt* m_pLast;   ///< The last step, or null.
  int m_nCount;           ///< How many steps there are.
  char** m_ppIndex;       ///< The texts of the steps in order, borrowed; null before it is built.
  bool m_bDescendant;     ///< The prefix has two slashes or more.
  bool m_bAbsolute;       ///< There is a prefix.

  static int m_iObjCount;  ///< Live lists.

 private:
  XMLDOM_HIDDEN void AppendStep(const char* text, std::size_t length);
};

#endif
