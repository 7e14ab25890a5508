#ifndef XMLDOM_BENCH_LIBRARIES_LIBRARIES_H
#define XMLDOM_BENCH_LIBRARIES_LIBRARIES_H

#include <memory>

#include "Library.h"

// Each is defined in the file of its name.

namespace bench {

std::unique_ptr<Library> MakeExpatOnly();
std::unique_ptr<Library> MakeLibxml2();
std::unique_ptr<Library> MakePlainTree();
std::unique_ptr<Library> MakePugixml();
std::unique_ptr<Library> MakeTinyxml2();
std::unique_ptr<Library> MakeXercesC();
std::unique_ptr<Library> MakeXmldom();

}  // namespace bench

#endif
