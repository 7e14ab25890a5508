// Runs a fuzz target once for each file in the folders named, so that every build of the project
// repeats what fuzzing has found, with any compiler.

#include <dirent.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::string> FilesOf(const std::string& folder) {
  std::vector<std::string> files;
  DIR* open = opendir(folder.c_str());
  if (open == nullptr) return files;
  while (const dirent* entry = readdir(open)) {
    if (entry->d_name[0] != '.') files.push_back(folder + "/" + entry->d_name);
  }
  closedir(open);
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

int main(int count, char** folders) {
  int replayed = 0;
  for (int i = 1; i < count; ++i) {
    for (const std::string& file : FilesOf(folders[i])) {
      std::fprintf(stderr, "%s\n", file.c_str());
      std::ifstream stream(file, std::ios::binary);
      const std::vector<char> bytes((std::istreambuf_iterator<char>(stream)),
                                    std::istreambuf_iterator<char>());
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++replayed;
    }
  }
  std::fprintf(stderr, "%d files\n", replayed);
  return replayed > 0 ? 0 : 1;
}
