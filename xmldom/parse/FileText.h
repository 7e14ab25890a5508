#ifndef XMLDOM_PARSE_FILETEXT_H
#define XMLDOM_PARSE_FILETEXT_H

#include <cstddef>

namespace xmldom {

/// The contents of a file, read as a whole into one block of memory.
class FileText {
 public:
  /// No file is open, and the text is empty.
  FileText();
  /// Closes the file and frees the text.
  ~FileText();

  FileText(const FileText&) = delete;
  FileText& operator=(const FileText&) = delete;

  /// Opens a file for reading. Result: whether it could be opened; false for a null `path`. A
  /// directory can be opened, and reads as an empty text.
  bool Open(const char* path);

  /// Reads the file up to its end or to the first error; a file of more than `most` bytes is not
  /// read to its end. Effects: std::bad_alloc when memory is out.
  /// Bad input: a file must be open.
  void Read(std::size_t most);

  /// Closes the file and keeps the text; does nothing when no file is open.
  void Close();

  /// Result: the text, NUL-terminated; a NUL byte in the file ends it too. Borrowed from this
  /// object.
  const char* Text() const;

  /// Result: the number of bytes that were read. For a file of more than `most` bytes, a number
  /// above `most`: its size where the system tells that beforehand.
  unsigned long long Size() const { return m_size; }

 private:
  void Reserve(std::size_t capacity);
  std::size_t ExpectedSize(std::size_t most);

  int m_file;    // the file descriptor; -1 when no file is open
  char* m_text;  // null until memory was taken
  std::size_t m_length;
  std::size_t m_capacity;  // of m_text, without the byte for the terminator
  unsigned long long m_size;
};

}  // namespace xmldom

#endif
