#include <gnu/libc-version.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <ctime>
#include <fstream>

#include "Library.h"
#include "results/Sections.h"

namespace bench {

namespace {

std::string ProcessorName() {
  std::ifstream file("/proc/cpuinfo");
  std::string line;
  while (std::getline(file, line)) {
    const std::size_t colon = line.find(": ");
    if (line.compare(0, 10, "model name") == 0 && colon != std::string::npos) {
      return line.substr(colon + 2);
    }
  }
  return "unknown processor";
}

std::string Today() {
  const std::time_t now = std::time(nullptr);
  char text[32];
  std::strftime(text, sizeof text, "%Y-%m-%d", std::localtime(&now));
  return text;
}

std::string Kernel() {
  utsname name = {};
  uname(&name);
  return std::string(name.sysname) + " " + name.release + " " + name.machine;
}

}  // namespace

void WriteMachine(std::ostream& out) {
  const long pages = sysconf(_SC_PHYS_PAGES);
  const long pageSize = sysconf(_SC_PAGESIZE);
  out << "- Date: " << Today() << "\n- Machine: " << ProcessorName() << ", "
      << sysconf(_SC_NPROCESSORS_ONLN) << " cores, " << pages / 1024 * pageSize / 1024 / 1024
      << " GiB of memory; " << Kernel() << "\n- Compiler: " XMLDOM_BENCH_COMPILER
      << "\n- C library: glibc " << gnu_get_libc_version() << "\n- Measured:";
  std::string separator = " ";
  for (const std::unique_ptr<Library>& library : AllLibraries()) {
    out << separator << library->Version();
    separator = ", ";
  }
  out << '\n';
}

}  // namespace bench
