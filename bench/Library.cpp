#include "Library.h"

#include <stdexcept>

#include "libraries/Libraries.h"

namespace bench {

namespace {

[[noreturn]] void NotOffered() { throw std::logic_error("an operation that is not offered"); }

std::vector<std::unique_ptr<Library>> MakeAll() {
  std::vector<std::unique_ptr<Library>> libraries;
  libraries.push_back(MakeXmldom());
  libraries.push_back(MakePlainTree());
  libraries.push_back(MakeExpatOnly());
  libraries.push_back(MakePugixml());
  libraries.push_back(MakeLibxml2());
  libraries.push_back(MakeTinyxml2());
  libraries.push_back(MakeXercesC());
  return libraries;
}

}  // namespace

bool Tree::Write() { NotOffered(); }
bool Tree::Text() { NotOffered(); }
std::size_t Tree::SelectAll(const char*) { NotOffered(); }
bool Tree::SelectFirst(const char*) { NotOffered(); }
bool Tree::Equals(Tree&) { NotOffered(); }
void Tree::Append(const char*, std::size_t) { NotOffered(); }
void Tree::InsertFirst(const char*, std::size_t) { NotOffered(); }
void Tree::RemoveFirst(std::size_t) { NotOffered(); }

const std::vector<std::unique_ptr<Library>>& AllLibraries() {
  static const std::vector<std::unique_ptr<Library>> libraries = MakeAll();
  return libraries;
}

const Library* FindLibrary(const std::string& name) {
  for (const std::unique_ptr<Library>& library : AllLibraries()) {
    if (library->Name() == name) return library.get();
  }
  return nullptr;
}

}  // namespace bench
