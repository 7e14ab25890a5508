#ifndef EXAMPLES_DATA_FILE_H
#define EXAMPLES_DATA_FILE_H

#include <unistd.h>

#include <climits>
#include <string>

/// Finds a file of the folder `data`, so that a program can be started from any folder: beside the
/// program, or else beside the source that it was compiled from.
inline std::string DataFile(const std::string& name) {
  char program[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", program, sizeof program);
  for (const std::string& beside :
       {std::string(program, length > 0 ? static_cast<std::size_t>(length) : 0),
        std::string(__FILE__)}) {
    const std::string folder = beside.substr(0, beside.rfind('/') + 1) + "data/";
    if (access(folder.c_str(), X_OK) == 0) return folder + name;
  }
  return "data/" + name;
}

#endif
