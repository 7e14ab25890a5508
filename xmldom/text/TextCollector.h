#ifndef XMLDOM_TEXT_TEXTCOLLECTOR_H
#define XMLDOM_TEXT_TEXTCOLLECTOR_H

#include <xmldom/base/Stack.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/support/MemFile.h>

#include <cstddef>

namespace xmldom {

/// Collects the decoded texts below a node, with blanks between them. The texts that are children
/// of a node, its group, come before those below its other children.
///
/// The walk goes in document order, because that is how a loaded tree lies in memory, and looking
/// for the later texts of each chain first would take two to three times as long. A text that
/// comes late, behind elements with text of their own, is moved to the end of its group, in front
/// of theirs. This is done in a buffer of the collector, where nobody can see it.
///
/// From some place on, the walk takes the texts in the order of the result instead, the group of a
/// node before anything below the node. This plain walk begins in three cases:
///   - A text would log an event or print a debug line, which shows all that stands before it.
///   - A text is empty. Whether there is a blank behind it depends on what stands before it.
///   - More has been moved than kMostMoves times what has been collected.
/// For that, the missing texts of the open chains are put in their places, once, while the buffer
/// is copied to the file; what follows is written to the file directly. So each walk takes linear
/// time: one way over the tree to each place where the plain walk begins, one copy of the buffer,
/// the moves, and the plain walk itself.
class TextCollector {
 public:
  /// Collects the text of a node. `file` gets what the plain walk writes, behind what it holds;
  /// null stands for an empty one. Effects: std::length_error for more than 4 GiB, std::bad_alloc
  /// when memory is out, and what a sink of log events throws. `file` then holds the beginning of
  /// the text, or nothing of it.
  explicit TextCollector(const IXMLDOMNode* node, CMemFile* file = nullptr);
  ~TextCollector();

  TextCollector(const TextCollector&) = delete;
  TextCollector& operator=(const TextCollector&) = delete;

  /// Gives the file what is still in the buffer.
  void Flush();

  /// The text, when there was no file or an empty one; NUL-terminated, borrowed.
  char* Data();
  std::size_t Length() const;

  /// The text on the C heap, the caller's; null when it is empty.
  char* TakeText();

 private:
  /// A chain of children that is open while one of its nodes is walked through.
  struct Level {
    IXMLDOMNode* node;
    std::size_t groupEnd;  // where in the buffer the next text of the chain belongs
  };

  static const std::size_t kMostMoves = 8;
  static const std::size_t kInlineSize = 1024;

  explicit TextCollector(CMemFile* file);

  void CollectBelow(const IXMLDOMNode* top);
  void Reserve(std::size_t size);
  void Grow(std::size_t size);
  bool Append(const char* value);
  bool MoveToGroup(std::size_t length);
  void GoOnPlainly(IXMLDOMNode* text);
  void WriteBuffer(std::size_t* begin, std::size_t end);

  CMemFile m_ownFile;
  CMemFile& m_file;
  bool m_isPlain;
  char* m_text;  // the buffer: texts with a blank behind each; it begins in m_inlineText
  std::size_t m_length;
  std::size_t m_capacity;
  std::size_t m_groupEnd;  // of the innermost chain
  std::size_t m_moved;     // bytes
  Stack<Level, 32> m_levels;
  char m_inlineText[kInlineSize];
};

}  // namespace xmldom

#endif
