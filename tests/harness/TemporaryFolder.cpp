#include "harness/TemporaryFolder.h"

#include <dirent.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <set>

TemporaryFolder::TemporaryFolder(const std::string& parent)
    : m_path(parent + "/xmldom-folder-XXXXXX") {
  if (mkdtemp(&m_path[0]) == nullptr) std::abort();
}

TemporaryFolder::~TemporaryFolder() {
  const std::string names = Names();
  for (std::size_t at = 0; at < names.size(); at = names.find(' ', at) + 1) {
    const std::string path = Path(names.substr(at, names.find(' ', at) - at));
    if (unlink(path.c_str()) != 0) rmdir(path.c_str());
  }
  rmdir(m_path.c_str());
}

std::string TemporaryFolder::Write(const std::string& name, const std::string& contents) const {
  std::ofstream stream(Path(name), std::ios_base::binary);
  if (!stream.write(contents.data(), static_cast<std::streamsize>(contents.size()))) std::abort();
  return Path(name);
}

std::string TemporaryFolder::Read(const std::string& name) const {
  std::ifstream stream(Path(name), std::ios_base::binary);
  if (!stream) return "(none)";
  return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

std::string TemporaryFolder::Names() const {
  std::set<std::string> names;
  DIR* folder = opendir(m_path.c_str());
  if (folder == nullptr) std::abort();
  while (const dirent* entry = readdir(folder)) names.insert(entry->d_name);
  closedir(folder);
  std::string all;
  for (const std::string& name : names) {
    if (name != "." && name != "..") all += name + " ";
  }
  return all;
}
