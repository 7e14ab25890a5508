#ifndef XMLDOM_PARSE_FILETEXT_H
#define XMLDOM_PARSE_FILETEXT_H

#include <cstddef>

namespace xmldom {

/// The contents of a file, read whole into one block.
class FileText {
 public:
  FileText();
  /// Closes the file and frees the text.
  ~FileText();

  FileText(const FileText&) = delete;
  FileText& operator=(const FileText&) = delete;

  /// Opens a file for reading. Result: whether that worked; a directory opens and has no text.
  bool Open(const char* path);

  /// Reads the file to its end, to the first error, or to where it holds more than `most` bytes.
  /// Effects: std::bad_alloc when memory is out.
  void Read(std::size_t most);

  void Close();

  /// The text, borrowed; it ends at the first NUL byte, and at its end there is one.
  const char* Text() const;

  /// How long the file is, in bytes: for one that was cut off at `most`, what is known of that.
  unsigned long long Size() const { return m_size; }

 private:
  void Reserve(std::size_t capacity);
  std::size_t ExpectedSize(std::size_t most);

  int m_file;  // -1 when closed
  char* m_text;
  std::size_t m_length;
  std::size_t m_capacity;  // without the byte for the terminator
  unsigned long long m_size;
};

}  // namespace xmldom

#endif
