#include "harness/TemporaryFile.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>

TemporaryFile::TemporaryFile(const std::string& contents) : m_path("/tmp/xmldom-file-XXXXXX") {
  const int file = mkstemp(Path());
  if (file < 0) std::abort();
  close(file);
  std::ofstream stream(m_path, std::ios_base::binary);
  if (!stream.write(contents.data(), static_cast<std::streamsize>(contents.size()))) std::abort();
}

TemporaryFile::~TemporaryFile() { unlink(Path()); }
