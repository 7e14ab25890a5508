#ifndef XMLDOM_QUERY_XPATHLIST_H
#define XMLDOM_QUERY_XPATHLIST_H

#include <xmldom/base/Export.h>
#include <xmldom/support/bstr.h>

#include <cstddef>

/// One step of a parsed path.
class XMLDOM_API CStrListElt {
 public:
  /// Copies the first `length` bytes of `text`.
  CStrListElt(const char* text, std::size_t length);
  /// Destroys the steps behind this one too.
  ~CStrListElt();

  CStrListElt(const CStrListElt&) = delete;
  CStrListElt& operator=(const CStrListElt&) = delete;

  char* m_pszString;     ///< Name and predicates; C heap.
  CStrListElt* m_pNext;  ///< The step behind it, or null.

  static int m_iObjCount;  ///< Live steps.
};

/// A path, cut into steps at each '/' outside square brackets; the run of '/' that it begins with
/// is its prefix. Quotes do not protect brackets. Every cut makes a step, also an empty one.
class XMLDOM_API CXPathList {
 public:
  /// No steps, no prefix.
  CXPathList();
  ~CXPathList();

  CXPathList(const CXPathList&) = delete;
  CXPathList& operator=(const CXPathList&) = delete;

  /// Appends the steps of `path`; its prefix, if it has one, replaces the earlier one.
  /// Result: 1; 0 for a null or empty path, which changes nothing. Cost: linear in all steps.
  /// Effects: std::bad_alloc when memory is out; the steps appended by then stay.
  int ParsePath(const char* path);
  int ParsePath(_bstr_t path);

  /// Builds the index anew; to be called after the steps or their count were changed by hand.
  /// Entries that the count has beyond the last step are null. Effects: std::bad_alloc when memory
  /// is out; there is no index then. Cost: linear in the steps and in the count.
  void CreateIndex();

  char* m_pszPrefix;      ///< C heap; null when the path does not begin with '/'.
  CStrListElt* m_pFirst;  ///< The first step, or null.
  CStrListElt* m_pLast;   ///< The last step, or null.
  int m_nCount;           ///< How many steps there are.
  char** m_ppIndex;       ///< The texts of the steps, not copied; null before it is built.
  bool m_bDescendant;     ///< The prefix holds "//".
  bool m_bAbsolute;       ///< There is a prefix.

  static int m_iObjCount;  ///< Live lists.

 private:
  XMLDOM_HIDDEN void AppendStep(const char* text, std::size_t length);
};

#endif
