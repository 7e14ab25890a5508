#ifndef XMLDOM_SUPPORT_MEMFILE_H
#define XMLDOM_SUPPORT_MEMFILE_H

#include <xmldom/base/Export.h>

#include <cstdarg>
#include <cstddef>

/// A growable byte buffer that text is written into.
///
/// Every write appends behind the contents and sets the position to the new end. To use a buffer
/// again, set length and position to 0; its memory is kept. Effects of every write:
/// std::length_error when the contents would be longer than 4 GiB - 1 bytes, std::bad_alloc when
/// memory is out; the contents are unchanged then.
class XMLDOM_API CMemFile {
 public:
  /// Makes an empty buffer. The first write allocates `size` bytes, or more if it needs them.
  explicit CMemFile(unsigned int size);
  ~CMemFile();

  CMemFile(const CMemFile&) = delete;
  CMemFile& operator=(const CMemFile&) = delete;

  /// Appends `size` bytes. Cost: amortised linear in `size`.
  void Write(const void* data, unsigned int size) { Append(data, size); }

  /// Appends text formatted as by printf. A text of more than INT_MAX bytes is a std::length_error.
  void WriteF(const char* format, ...) XMLDOM_PRINTF(2, 3);
  void WriteFV(const char* format, va_list arguments) XMLDOM_PRINTF(2, 0);

  /// Appends `text` with & < > " and ' replaced by their predefined entities; null appends nothing.
  void WriteStrEntities(const char* text);

  /// Copies up to `size` bytes, from the position on, into `data`, and moves the position behind
  /// them. Result: how many bytes were copied; 0 at the end.
  unsigned int Read(void* data, unsigned int size);

  /// The contents, NUL-terminated; never null. Borrowed until the next write or the end of the
  /// buffer.
  const char* GetAsStr();

  unsigned int m_uPosition;  ///< Where Read goes on, in bytes.
  unsigned int m_uLength;    ///< How many bytes the buffer holds.

 private:
  void Append(const void* data, std::size_t size);
  char* Reserve(std::size_t size);

  unsigned int m_uInitialSize;
  std::size_t m_uCapacity;  // of m_pData, without the byte for the terminator
  char* m_pData;            // null before the first write
};

#endif
