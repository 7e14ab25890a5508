#ifndef XMLDOM_PARSE_FILETEXT_H
#define XMLDOM_PARSE_FILETEXT_H

#include <cstddef>

namespace xmldom {

/// The contents of a file, read as a whole into one block of memory: the caller's, or one of this
/// object's own.
class FileText {
 public:
  /// No file is open, and the text is empty.
  FileText();
  /// Closes the file and frees the object's own memory.
  ~FileText();

  FileText(const FileText&) = delete;
  FileText& operator=(const FileText&) = delete;

  /// Opens a file for reading. Result: whether it could be opened; false for a null `path`. A
  /// directory can be opened, and reads as an empty text. Bad input: to be called once.
  bool Open(const char* path);

  /// Reads the file up to its end or to the first error; a file of more than `most` bytes is not
  /// read to its end. The text comes into `memory`, which has Size() bytes. When it needs more, or
  /// `memory` is null, it comes into the object's own memory, all of it. Effects: std::bad_alloc
  /// when memory is out. Bad input: a file must be open.
  void Read(std::size_t most, char* memory);

  /// Closes the file and keeps the text; does nothing when no file is open.
  void Close();

  /// Result: the text, without a terminator; borrowed from this object, or the `memory` that was
  /// given to Read. It may be null when it is empty.
  const char* Text() const { return m_text; }

  /// Result: the length of the text, which the first NUL byte in the file ends.
  std::size_t Length() const;

  /// Result: before the file is read, its size, or 0 when the system does not tell it beforehand.
  /// Afterwards the number of bytes that were read; for a file of more than `most` bytes, a number
  /// above `most`.
  unsigned long long Size() const { return m_size; }

  /// Result: why the file could not be opened or not be read to its end, as the system numbers
  /// errors; EFBIG for one of more than `most` bytes. 0 when nothing has failed.
  int Error() const { return m_error; }

 private:
  void Reserve(std::size_t capacity);

  int m_file;              // the file descriptor; -1 when no file is open
  char* m_own;             // the object's own memory; null until it is needed
  char* m_text;            // m_own, or the memory of the caller
  std::size_t m_length;    // how many bytes were read
  std::size_t m_capacity;  // of m_text
  unsigned long long m_size;
  int m_error;
};

}  // namespace xmldom

#endif
